// platform/Locale.h: what the system tells of a language and of how its user writes numbers.
#pragma once
#include <cstdint>
#include <string>

namespace platform {

// The user's decimal separator; "." where Windows does not tell.
[[nodiscard]] std::string DecimalSeparator();

// Three letters such as "DEU" and a NUL, which belongs to the text; empty where Windows knows no such locale.
[[nodiscard]] std::string AbbreviatedLanguageName(std::int32_t locale);

// The small letter of the system's ANSI code page; any other sign as it is.
[[nodiscard]] char LowerLetter(char letter);

// The number of the system's ANSI code page, such as 1252.
[[nodiscard]] std::uint32_t AnsiCodePage();

// Does this byte begin a two-byte letter of the system's ANSI code page?
[[nodiscard]] bool IsLeadByte(char byte);

}  // namespace platform
