// support/Files.h: tolerant file operations: they return what they can and raise nothing.
//
// Shapes  Paths and contents are ANSI bytes; folders that these procedures return end in a backslash.
// Errors  trapped, logged under the procedure's name, and the result is false, the empty text or no action. The
//         caller's pending error stays as it was. Only WriteFileConents, when asked to, and EnsureFileSystemObject
//         speak to the user.
// Owns    one file-system scripting object for the process, made when it is first needed and kept until LetGo.
#pragma once
#include <cstdint>
#include <string>

#include "platform/com/Dispatch.h"
#include "support/ByteOrderMark.h"
#include "support/FilePaths.h"

namespace Files {

// The folder of the add-in's library; empty where it is not known.
[[nodiscard]] std::string AppFolder();

// Files and folders, also in double quotes without blanks between them.
[[nodiscard]] bool FileExists(const std::string& path);
[[nodiscard]] bool FolderExists(const std::string& path);

// The last-modified date as the scripting object tells it, to the second; empty where the file is missing. With
// `force` the scripting object is asked even then.
[[nodiscard]] std::string GetFileDate(const std::string& path, bool force = false);

// The path as the scripting object reports it, or as it is.
[[nodiscard]] std::string GetFileFolderPath(const std::string& path);

// Makes the folder and what is missing above it.
void MkDir_(const std::string& folder, std::int32_t flags = 0);

// Into `destination`, or into the folder that it names. With `onlyIfChanged` a file of the same date stays.
void CopyFileIfChanged(const std::string& source, std::string destination, bool onlyIfChanged);

// The whole file without its byte-order mark. `result`: the mark found (ByteOrderMark.h), or `unreadable`.
// Flags: `nobodyWriting` is for a text that must not be half of one; while somebody writes the file this waits, some
// tens of milliseconds at most, and then takes it for unreadable. `notWaiting` with it leaves out the wait.
inline constexpr std::int32_t unreadable = -1;
enum ReadingFlags : std::int32_t { nobodyWriting = 1, notWaiting = 2 };
[[nodiscard]] std::string GetFileContents(const std::string& path, std::int32_t flags = 0,
                                          std::int32_t* result = nullptr);

enum Encoding : std::int32_t {
    AsGiven = 0,
    Ansi = 1,               // as given as well
    Utf16LittleEndian = 2,  // the mark FF FE in front
    Utf16BigEndian = 3,     // no mark
};
// Writes `text` as it is, or adds it to what is there; missing folders are made. "?" and "/" in the path become "_".
bool WriteFileConents(const std::string& path, const std::string& text, bool append = false,
                      std::int32_t encoding = AsGiven, bool showError = false);

// True when there is one, which FileSystem() then returns. A library that is not registered is registered once, and a
// user whose system has none is told once.
bool EnsureFileSystemObject();
[[nodiscard]] const platform::Dispatch& FileSystem();

// Lets go of it, for a library that is about to leave; who needs one later makes one.
void LetGo();

// As EnsureFileSystemObject found it; 0 before. Major + minor / 10.
[[nodiscard]] double WindowsVersion();

// What this module needs of the system; null stands for the real thing.
struct Ports {
    std::string (*applicationPath)() = nullptr;  // of the module that this code is linked into
    platform::Dispatch (*createFileSystem)() = nullptr;
    bool (*start)(const std::string& commandLine) = nullptr;  // minimised
    double (*windowsVersion)() = nullptr;
};

// Begins anew, without object and version. Returns what was plugged in before.
Ports Plug(const Ports& ports);

}  // namespace Files
