// bridge/ProfileNames.h: which ini files are profiles of the main application.
// Pure text: no Windows header, no globals.
//
// Shapes  ANSI bytes. A profile is named by its file without ".ini".
// Errors  none: every name and every content has an answer.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace ProfileNames {

// How far into a file its settings have to begin, in characters behind a byte-order
// mark, and how many bytes that takes to read.
inline constexpr std::size_t searched = 500;
inline constexpr std::uint32_t bytesToRead = searched + 2;

[[nodiscard]] std::string ProfileOf(std::string_view fileName);
[[nodiscard]] std::string PathOf(std::string_view folder, std::string_view profile);

// Files that are no profiles whatever they hold: the defaults, those of an earlier product, and
// those that belong to another profile.
[[nodiscard]] bool IsNone(std::string_view path);

// `front`: the first `bytesToRead` bytes of a file.
[[nodiscard]] bool HasSettings(std::string front);

}  // namespace ProfileNames
