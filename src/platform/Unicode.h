// platform/Unicode.h: text of the system's ANSI code page in the encodings of Unicode, and back.
//
// Errors  text that cannot be converted, or for which there is no memory, is the empty text; a letter that the code page
//         lacks becomes a similar one or "?".
#pragma once
#include <string>
#include <string_view>

namespace platform {

// UTF-16, as Windows takes it.
[[nodiscard]] std::wstring Widen(std::string_view text);
[[nodiscard]] std::string Narrow(std::wstring_view text);

// The bytes of UTF-16, little-endian, without a mark.
[[nodiscard]] std::string Utf16Bytes(std::string_view text);

[[nodiscard]] std::string Utf8(std::string_view text);

}  // namespace platform
