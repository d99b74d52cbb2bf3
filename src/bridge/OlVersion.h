// bridge/OlVersion.h: Outlook's major version, and the versions by name.
//
// Set once at connection; 0 before, and where the host does not tell.
#pragma once
#include <cstdint>

inline constexpr std::int32_t Outlook2000 = 9;
inline constexpr std::int32_t Outlook2002 = 10;
inline constexpr std::int32_t Outlook2003 = 11;
inline constexpr std::int32_t Outlook2007 = 12;
inline constexpr std::int32_t Outlook2010 = 14;
inline constexpr std::int32_t Outlook2013 = 15;
inline constexpr std::int32_t Outlook2016 = 16;  // and everything later

inline std::int32_t OlVersion = 0;
