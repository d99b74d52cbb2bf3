#include "check/Resiliency.h"

#include <algorithm>

namespace Resiliency {
namespace {

constexpr std::size_t headLength = 12;

std::uint32_t NumberAt(std::string_view bytes, std::size_t at) {
    std::uint32_t number = 0;
    for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

char16_t UnitAt(std::string_view bytes, std::size_t at) {
    const unsigned low = static_cast<unsigned char>(bytes[at]), high = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char16_t>(low | high << 8);
}

char16_t Folded(char16_t unit) { return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit; }

// None where it is not text with one NUL at its end.
std::optional<std::u16string> TextOf(std::string_view bytes) {
    if (bytes.size() < 2 || bytes.size() % 2 != 0) return std::nullopt;
    std::u16string text;
    for (std::size_t at = 0; at < bytes.size(); at += 2) text.push_back(UnitAt(bytes, at));
    if (text.find(u'\0') != text.size() - 1) return std::nullopt;
    text.pop_back();
    return text;
}

void Append(std::string& bytes, std::uint32_t number) {
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(number >> shift & 0xFF));
}

void Append(std::string& bytes, std::u16string_view text) {
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    bytes.append(2, '\0');
}

std::uint32_t LengthOf(std::u16string_view text) { return static_cast<std::uint32_t>(2 * (text.size() + 1)); }

}  // namespace

std::optional<Entry> Parse(std::string_view bytes) {
    if (bytes.size() < headLength) return std::nullopt;
    const std::size_t pathLength = NumberAt(bytes, 4), nameLength = NumberAt(bytes, 8);
    const std::size_t left = bytes.size() - headLength;
    if (pathLength > left || nameLength != left - pathLength) return std::nullopt;
    auto path = TextOf(bytes.substr(headLength, pathLength));
    auto name = TextOf(bytes.substr(headLength + pathLength));
    if (!path || !name) return std::nullopt;
    return Entry{NumberAt(bytes, 0), std::move(*path), std::move(*name)};
}

std::string Bytes(const Entry& entry) {
    std::string bytes;
    Append(bytes, entry.kind);
    Append(bytes, LengthOf(entry.path));
    Append(bytes, LengthOf(entry.name));
    Append(bytes, entry.path);
    Append(bytes, entry.name);
    return bytes;
}

bool SameFolded(std::u16string_view left, std::u16string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char16_t one, char16_t other) { return Folded(one) == Folded(other); });
}

bool Holds(std::string_view bytes, std::u16string_view text) {
    const std::size_t length = 2 * text.size();
    for (std::size_t at = 0; length > 0 && at + length <= bytes.size(); ++at) {
        std::size_t same = 0;
        while (same < text.size() && Folded(UnitAt(bytes, at + 2 * same)) == Folded(text[same])) ++same;
        if (same == text.size()) return true;
    }
    return false;
}

}  // namespace Resiliency
