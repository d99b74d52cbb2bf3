// support/RegEdit.h: the add-in's only door to the registry, and its channel to the main application.
//
// Shapes  Text in the system's ANSI code page. Subkeys stand below `root`, levels separated by "\", without one in
//         front. All values of the add-in's own keys are texts, numbers and flags too.
// Errors  A missing key or value, and one of a type that is not read, is the empty text. A write that fails shows
//         as false and is logged ("RegEdit error: ..."); the caller's pending error stays as it was.
// Effects Each call opens, uses and closes its key; nothing is held or locked between calls. Nothing here reports its
//         entry and exit to the debug log, which itself reads and writes through this module.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Registry.h"

namespace RegEdit {

using platform::Root;

// Type codes; a value of any other is not written.
enum ValueType : std::int32_t { TypeText = 1, TypeNumber = 4 };

// A text without one NUL at its end, if it has any there; bytes as they are; a 32-bit number in decimal. Nothing in
// it is expanded.
[[nodiscard]] std::string GetRegString(Root root, std::string_view subkey, std::string_view name) noexcept;

// The same where "missing" and "unreadable" must not be mixed up, because a write follows: the empty text where Windows
// says that the value is not there, none where there is one that cannot be read now, or is of a type that is not read.
// Tried again a few times before that.
[[nodiscard]] std::optional<std::string> ReadRegString(Root root, std::string_view subkey,
                                                       std::string_view name) noexcept;

// True when the value reads as `text` afterwards. The empty text, and the number 0, remove the value. One backslash
// before the subkey is removed from it, in the caller's variable too; without a subkey nothing is written.
bool SaveRegValue(Root root, std::string& subkey, std::string_view name, std::string_view text,
                  std::int32_t type) noexcept;
bool SaveRegValue(Root root, std::string_view subkey, std::string_view name, std::string_view text,
                  std::int32_t type) noexcept;

// Removes the value, or the key itself where the name is empty (not one that has subkeys; then it is true all the
// same). True when nothing is left of the value.
bool DeleteRegValue(Root root, std::string_view subkey, std::string_view name) noexcept;

// Removes the default value of the key, and the key itself where nothing else is in it.
void DeleteDefaultValue(Root root, std::string_view subkey) noexcept;

}  // namespace RegEdit
