// check/Resiliency.h: the entries of Outlook's lists of disabled items. Pure.
//
// Shapes  An entry is three numbers of 32 bits, little-endian (kind, length of the path, length of the name, both in
//         bytes), then path and name in UTF-16, each with a NUL at its end and in small letters. Known from samples of
//         Office 2013 and later; that 2002 to 2010 have the same is assumed.
// Errors  none where the bytes are of another shape: they may be of a version that nobody here has seen.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Resiliency {

inline constexpr std::uint32_t slowAddIn = 0x40000001;  // switched off by Outlook without a crash

struct Entry {
    std::uint32_t kind = 0;
    std::u16string path, name;  // without their NUL
};
[[nodiscard]] std::optional<Entry> Parse(std::string_view bytes);

// The entry as Outlook would write it.
[[nodiscard]] std::string Bytes(const Entry& entry);

// Whether `left` and `right` are the same text; A to Z count as their small letters.
[[nodiscard]] bool SameFolded(std::u16string_view left, std::u16string_view right);

// Whether bytes of any shape hold that text in UTF-16 somewhere, compared the same way.
[[nodiscard]] bool Holds(std::string_view bytes, std::u16string_view text);

}  // namespace Resiliency
