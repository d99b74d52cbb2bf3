// tests/testing/Keys.h: the keys below HKEY_CURRENT_USER that the add-in shares with Corvella, as an installed Corvella
// knows them. They are not taken from the product: a name that changes there is a fault.
#pragma once

namespace keys {

inline constexpr const char* productKey = "Software\\Quillmark\\Corvella";
inline constexpr const char* addInKey = "Software\\Quillmark\\Corvella\\OlAddIn";
inline constexpr const char* outlookKey = "Software\\Quillmark\\Corvella\\Outlook";
inline constexpr const char* settingsKey = "Software\\Quillmark\\Corvella\\Settings";

}  // namespace keys
