// platform/File.h: files by their path, each call opening and closing what it needs.
//
// Shapes  Paths and contents are ANSI bytes; nothing is added to what is written.
// Errors  a call that fails records the pending error and answers its neutral value. That a file or folder is not
//         there is an answer, not a failure, for the calls that only ask.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// True when the attributes of the file or folder can be read.
[[nodiscard]] bool PathExists(const std::string& path) noexcept;

// In bytes; none where there is no such file.
[[nodiscard]] std::optional<std::uint64_t> FileSize(const std::string& path) noexcept;

bool RemoveFile(const std::string& path) noexcept;

// Adds `bytes` to the end of the file, which is made when it is not there. Others may read, write, rename and
// delete the file meanwhile.
bool AppendToFile(const std::string& path, std::string_view bytes) noexcept;

}  // namespace platform
