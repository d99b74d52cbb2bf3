// support/AddInNames.h: the names under which the add-in is registered, each once.
#pragma once
#include <cstdint>

namespace AddInNames {

inline constexpr const char* ProgId = "CVOutlookAddIn.Connect";
inline constexpr const char* ClassId = "{6B0C1E52-3D8F-4C0A-9A5E-7F21C7B4D913}";
inline constexpr const char* Library = "CVOutlookAddIn.dll";
inline constexpr const char* FriendlyName = "Corvella";
inline constexpr const char* Description = "Corvella Add-In for Outlook 2000, 2002 (XP), 2003";
inline constexpr std::uint32_t LoadBehavior = 3;  // at Outlook's start

}  // namespace AddInNames
