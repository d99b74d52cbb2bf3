// outlook/Words.h: text between the ANSI outside and the Unicode inside, and texts for the transcript.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <string>
#include <string_view>

namespace standin {

[[nodiscard]] std::wstring Wide(std::string_view ansi);
[[nodiscard]] std::string Ansi(std::wstring_view wide);
[[nodiscard]] bool SameText(std::wstring_view left, std::wstring_view right);  // letters of any case
[[nodiscard]] bool SameName(std::string_view left, std::string_view right);    // the same, of plain English ones

// A caption without its access key: "&" goes, "&&" is one "&".
[[nodiscard]] std::wstring Readable(std::wstring_view caption);

[[nodiscard]] std::string Hex(unsigned long value);  // "0x80070057"
[[nodiscard]] std::string Quote(std::string_view text);

}  // namespace standin
