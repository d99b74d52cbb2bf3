// support/RegistryKeys.h: the keys below HKEY_CURRENT_USER that this system shares with Corvella, each named once.
#pragma once

namespace RegistryKeys {

inline constexpr const char* Product = "Software\\Quillmark\\Corvella";  // "Path", "IniFiles"
inline constexpr const char* AddIn = "Software\\Quillmark\\Corvella\\OlAddIn";
inline constexpr const char* Outlook = "Software\\Quillmark\\Corvella\\Outlook";  // the options and the lists of items
// Only while many items are sent, and after a sending that was interrupted: what is not in a list of items yet.
inline constexpr const char* Sending = "Software\\Quillmark\\Corvella\\Outlook\\Sending";
inline constexpr const char* Settings = "Software\\Quillmark\\Corvella\\Settings";
inline constexpr const char* DebugTrace = "Software\\Quillmark\\Corvella\\Debug";

}  // namespace RegistryKeys
