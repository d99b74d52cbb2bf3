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
    bool unknown = false;        // Windows does not tell (a share that reconnects): the file may be there
    [[nodiscard]] bool operator==(const FileStamp&) const = default;
};
// Asks for the file's attributes only: it is not opened.
[[nodiscard]] FileStamp StampOf(const std::string& path) noexcept;

// A file of that name is no folder.
[[nodiscard]] bool FolderIsThere(const std::string& path) noexcept;

// None where the file cannot be opened or read. Others may read and delete the file meanwhile. Where they may not write
// it, a file that somebody has open for writing cannot be opened, and what is read is never half of a text.
enum class Others { MayWrite, MayNotWrite };
[[nodiscard]] std::optional<std::string> ReadWhole(const std::string& path, Others others = Others::MayWrite);

enum class Opening { Replacing, Appending };
// Writes into the file itself, which is made if need be; a crash may leave a part.
bool WriteWhole(const std::string& path, std::string_view bytes, Opening opening) noexcept;

// Writes so that whatever happens meanwhile, the file is the old or the new one: beside it (path + besideEnding),
// flushed, and put in its place. Where old and new differ within one sector of the disk only, that sector is written
// where it stands. Where the folder does not allow a file beside, the file itself is overwritten, once the space for it
// is reserved. A file marked read-only is not written.
//
// Nothing is written over a file that is not, or not any more, the one of the stamp `expected`, nor over one that
// somebody else is writing: the outcome is then Changed, and the caller loads it again. What somebody saves in the very
// moment of the replacement is put back, where the disk gives a file a second name (path + keptEnding).
enum class Replacing { Done, Changed, Failed };  // Failed: the error is pending
struct Replacement {
    Replacing outcome = Replacing::Failed;
    FileStamp stamp;  // once it is done: of these bytes, even if somebody has already written others
};
[[nodiscard]] Replacement ReplaceWhole(const std::string& path, std::string_view bytes, const FileStamp& expected);

// No user's own file is called so: one that is there is what a crash has left, and is replaced.
inline constexpr std::string_view besideEnding = ".CVOutlookAddIn.tmp";
inline constexpr std::string_view keptEnding = ".CVOutlookAddIn.old";

// DuplicateFile replaces a file that is there. MakeFolder fails where the folder is there already, or has no parent.
bool DuplicateFile(const std::string& from, const std::string& to) noexcept;
bool MakeFolder(const std::string& path) noexcept;

// For tests of what a crash or a full disk does: `watch` is asked before each step that reaches the disk. It may end
// the process; a number other than 0 makes the step fail with that status. Returns the watch that was there.
using FileWatch = std::uint32_t (*)(const char* step);
FileWatch WatchFiles(FileWatch watch) noexcept;

}  // namespace platform
