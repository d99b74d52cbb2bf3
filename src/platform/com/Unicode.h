// platform/com/Unicode.h: text of the system's ANSI code page in the encodings of Unicode.
#pragma once
#include <string>
#include <string_view>

namespace platform {

// The bytes of UTF-16, little-endian, without a mark.
[[nodiscard]] std::string Utf16Bytes(std::string_view text);

[[nodiscard]] std::string Utf8(std::string_view text);

}  // namespace platform
