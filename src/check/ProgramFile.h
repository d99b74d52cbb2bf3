// check/ProgramFile.h: what the front of a file tells of the program in it. Pure.
#pragma once
#include <cstdint>
#include <string_view>

#include "check/Snapshot.h"

namespace Check {

inline constexpr std::uint32_t frontOfProgram = 4096;  // bytes that are enough

// `front` is the file's first bytes, `size` that of the whole. Sets bits, isLibrary and whole.
void ReadHeader(std::string_view front, std::uint64_t size, Program& program);

}  // namespace Check
