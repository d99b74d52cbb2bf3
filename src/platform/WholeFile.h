// platform/WholeFile.h: files read and written as a whole, and their state in one question.
//
// Shapes  Paths and contents are ANSI bytes.
// Errors  a call that fails records the pending error (PathNotFound where the folder is not there) and returns its
//         neutral value. That a file is not there is an answer, not a failure, for the calls that only ask.
// Owns    nothing between calls.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// What tells one state of a file from another. Two writes within the same second differ in it.
struct FileStamp {
    bool exists = false;  // a folder is no file
    std::uint64_t size = 0;
    std::uint64_t modified = 0;  // units of 100 nanoseconds
    [[nodiscard]] bool operator==(const FileStamp&) const = default;
};
[[nodiscard]] FileStamp StampOf(const std::string& path) noexcept;

[[nodiscard]] bool FolderIsThere(const std::string& path) noexcept;

// None where the file cannot be opened or read. Others may read, write and delete the file meanwhile.
[[nodiscard]] std::optional<std::string> ReadWhole(const std::string& path);

enum class Opening { Replacing, Appending };
bool WriteWhole(const std::string& path, std::string_view bytes, Opening opening) noexcept;

// Writes so that whatever happens meanwhile, the file is the old or the new one: beside it (path + ".new"), flushed,
// and put in its place. Where old and new differ within one sector of the disk only, that sector is written where it
// stands. Where the folder does not allow a file beside, the file itself is overwritten, once the space for it is
// reserved. Returns the stamp that the file then has; of a file put in place it is that of these bytes even if
// somebody has already written others. None where nothing was written. A file marked read-only is not written.
[[nodiscard]] std::optional<FileStamp> ReplaceWhole(const std::string& path, std::string_view bytes);

bool DuplicateFile(const std::string& from, const std::string& to) noexcept;
bool MakeFolder(const std::string& path) noexcept;

// For tests of what a crash or a full disk does: `watch` is asked before each step that reaches the disk. It may end
// the process; a number other than 0 makes the step fail with that status. Returns the watch that was there.
using FileWatch = std::uint32_t (*)(const char* step);
FileWatch WatchFiles(FileWatch watch) noexcept;

}  // namespace platform
