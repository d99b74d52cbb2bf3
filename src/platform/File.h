// platform/File.h: files by their path, each call opening and closing what it needs.
//
// Shapes  Paths and contents are ANSI bytes; nothing is added to what is written.
// Errors  a call that fails records the pending error and returns its neutral value. That a file or folder is not
//         there is an answer, not a failure, for the calls that only ask.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// True when the attributes of the file or folder can be read.
[[nodiscard]] bool PathExists(const std::string& path) noexcept;

// True only when Windows says that there is nothing of that name. What cannot be looked at is neither there nor missing.
[[nodiscard]] bool PathIsMissing(const std::string& path) noexcept;

// In bytes; none where there is no such file.
[[nodiscard]] std::optional<std::uint64_t> FileSize(const std::string& path) noexcept;

// The first `count` bytes of the file, fewer where it is shorter; empty where it cannot be read. Never waits for others
// to close the file.
[[nodiscard]] std::string ReadFront(const std::string& path, std::uint32_t count);

// The names of the files in `folder` (with a backslash at its end) that match, in the order in
// which Windows lists them; no folders.
[[nodiscard]] std::vector<std::string> FileNames(const std::string& folder, const std::string& pattern);

bool RemoveFile(const std::string& path) noexcept;

// Adds `bytes` to the end of the file, which is made when it is not there. Others may read, write, rename and
// delete the file meanwhile.
bool AppendToFile(const std::string& path, std::string_view bytes) noexcept;

}  // namespace platform
