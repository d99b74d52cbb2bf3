#include "check/ProgramFile.h"

#include <algorithm>
#include <optional>

namespace Check {
namespace {

constexpr std::uint32_t machine32 = 0x014C, machine64 = 0x8664, dllFlag = 0x2000;
constexpr std::size_t headerLength = 24, sectionLength = 40;

// Little-endian; none beyond the end.
std::optional<std::uint32_t> NumberAt(std::string_view bytes, std::size_t at, std::size_t length) {
    if (at > bytes.size() || length > bytes.size() - at) return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = length; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

// Where the last section ends in the file.
std::uint64_t EndOfSections(std::string_view front, std::size_t first, std::uint32_t count) {
    std::uint64_t end = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto length = NumberAt(front, first + i * sectionLength + 16, 4);
        const auto start = NumberAt(front, first + i * sectionLength + 20, 4);
        if (!length || !start) break;
        end = std::max(end, std::uint64_t{*start} + *length);
    }
    return end;
}

}  // namespace

void ReadHeader(std::string_view front, std::uint64_t size, Program& program) {
    program.bits = 0;
    if (!front.starts_with("MZ")) return;
    const auto at = NumberAt(front, 0x3C, 4);
    if (!at || NumberAt(front, *at, 4) != 0x00004550u) return;  // "PE"
    const auto machine = NumberAt(front, *at + 4, 2), sections = NumberAt(front, *at + 6, 2);
    const auto optional = NumberAt(front, *at + 20, 2), flags = NumberAt(front, *at + 22, 2);
    if (!machine || !sections || !optional || !flags) return;
    program.bits = *machine == machine32 ? 32 : *machine == machine64 ? 64 : 0;
    program.isLibrary = (*flags & dllFlag) != 0;
    program.whole = size >= EndOfSections(front, *at + headerLength + *optional, *sections);
}

}  // namespace Check
