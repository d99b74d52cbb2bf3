// bridge/OlVersion.h: Outlook's major version: 9 = Outlook 2000, 10 = 2002, 11 = 2003, 12 = 2007.
//
// Set once at connection; 0 before, and where the host does not tell.
#pragma once
#include <cstdint>

inline std::int32_t OlVersion = 0;
