#include "support/Files.h"

#include <optional>
#include <utility>

#include "platform/Clock.h"
#include "platform/Environment.h"
#include "platform/Err.h"
#include "platform/File.h"
#include "platform/Module.h"
#include "platform/Process.h"
#include "platform/Text.h"
#include "platform/Unicode.h"
#include "platform/WholeFile.h"
#include "support/Debug.h"
#include "support/LogLine.h"
#include "support/Prompt.h"

using Debug::WriteDebug;
using platform::Dispatch;

namespace Files {
namespace {

constexpr int firstReader = 15;  // the numbers under which a file is tried to be opened for reading
constexpr int lastReader = 30;
constexpr int triesWithInvalidCall = 2;

constexpr int pausesForWriters = 6;
constexpr std::uint32_t pauseForWriters = 5;  // milliseconds, which Windows may make 16

constexpr int triesAfterRegistration = 20;
constexpr std::uint32_t pauseAfterRegistration = 100;  // milliseconds

// Without a destructor that acts: where the process ends before the library is let go of, COM is long gone.
struct State {
    Ports ports;
    Dispatch* fileSystem = nullptr;
    bool registrationTried = false;
    bool userTold = false;
    double windowsVersion = 0;
};
State state;

void Show(std::string text) { Prompt::Ask(Prompt::Id::Plain, text, Prompt::Style::Warning, {}); }

bool CreateFileSystem() {
    Dispatch created = state.ports.createFileSystem ? state.ports.createFileSystem()
                                                    : platform::CreateObject("Scripting.FileSystemObject");
    if (!created) return false;
    delete state.fileSystem;
    state.fileSystem = new Dispatch(std::move(created));
    return true;
}

// The program that registers works on its own, so its result is waited for.
bool CreateAfterRegistration() {
    const std::string library = platform::EnvironmentVariable("windir") + "\\system32\\scrrun.dll";
    if (state.registrationTried || !platform::PathExists(library)) return false;
    state.registrationTried = true;
    const std::string system = platform::SystemFolder();
    if (system.empty()) return false;
    const std::string command = "\"" + system + "regsvr32.exe\" /s \"" + library + "\"";
    const bool started =
        state.ports.start ? state.ports.start(command) : platform::StartProcess(command, platform::Show::Minimised);
    if (!started) return false;
    for (int tries = 0; tries < triesAfterRegistration; ++tries) {
        if (CreateFileSystem()) return true;
        platform::Pause(pauseAfterRegistration);
    }
    return false;
}

std::optional<std::string> ReadWithRetries(const std::string& path) {
    for (int number = firstReader; number <= lastReader; ++number) {
        if (std::optional<std::string> bytes = platform::ReadWhole(path)) return bytes;
    }
    return std::nullopt;
}

std::optional<std::string> ReadBetweenWrites(const std::string& path, bool waiting) {
    for (int tries = 0;; ++tries) {
        if (auto bytes = platform::ReadWhole(path, platform::Others::MayNotWrite)) return bytes;
        if (!waiting || tries == pausesForWriters) return std::nullopt;
        platform::Pause(pauseForWriters);
    }
}

std::string Encode(const std::string& text, std::int32_t encoding) {
    if (encoding != Utf16LittleEndian && encoding != Utf16BigEndian) return text;
    std::string bytes = platform::Utf16Bytes(text);
    if (encoding == Utf16LittleEndian) return "\xFF\xFE" + bytes;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) std::swap(bytes[i], bytes[i + 1]);
    return bytes;
}

bool WriteWithRetries(const std::string& path, const std::string& bytes, platform::Opening opening) {
    bool folderMade = false;
    for (int again = 0;;) {
        platform::Err().Clear();
        if (platform::WriteWhole(path, bytes, opening)) return true;
        const std::int32_t error = platform::Err().Number();
        if (error == platform::PathNotFound && !folderMade) {
            folderMade = true;
            MkDir_(std::string(FolderPart(path)));
        } else if (error != platform::InvalidProcedureCall || again++ == triesWithInvalidCall) {
            return false;
        }
    }
}

}  // namespace

std::string AppFolder() {
    return AppFolderOf(state.ports.applicationPath ? state.ports.applicationPath() : platform::ModuleFolder());
}

Ports Plug(const Ports& ports) {
    delete std::exchange(state.fileSystem, nullptr);
    state.registrationTried = false;
    state.userTold = false;
    state.windowsVersion = 0;
    return std::exchange(state.ports, ports);
}

bool FileExists(const std::string& path) { return platform::PathExists(WithoutQuotesAround(path)); }

bool FolderExists(const std::string& path) { return platform::FolderIsThere(path); }

std::string GetFileDate(const std::string& path, bool force) {
    const platform::ErrorScope ownErrors;
    if (!force && !FileExists(path)) return {};
    return FileSystem().Object("GetFile", path).Text("DateLastModified");
}

std::string GetFileFolderPath(const std::string& path) {
    const platform::ErrorScope ownErrors;
    const std::string reported = FileSystem().Object("GetFile", path).Text("Path");
    return reported.empty() ? path : reported;
}

void MkDir_(const std::string& folder, std::int32_t flags) {
    const platform::ErrorScope ownErrors;
    const Debug::Trace trace("MkDir_");
    const std::string parent = FileSystem().Text("GetParentFolderName", folder);
    if (parent.size() > 2 && !FolderExists(parent)) MkDir_(parent, flags);
    platform::MakeFolder(folder);
}

void CopyFileIfChanged(const std::string& source, std::string destination, bool onlyIfChanged) {
    const platform::ErrorScope ownErrors;
    if (!FileExists(source)) return;
    if (LooksLikeFolder(destination))
        destination = platform::WithBackslash(destination).append(GetFileNamePart(source));
    if (FileExists(destination)) {
        if (onlyIfChanged && GetFileDate(source) == GetFileDate(destination)) return;
        platform::RemoveFile(destination);
    }
    platform::DuplicateFile(source, destination);
}

std::string GetFileContents(const std::string& path, std::int32_t flags, std::int32_t* result) {
    const platform::ErrorScope ownErrors;
    std::optional<std::string> text;
    if (FileExists(path)) {
        text =
            (flags & nobodyWriting) != 0 ? ReadBetweenWrites(path, (flags & notWaiting) == 0) : ReadWithRetries(path);
        if (!text) WriteDebug("GetFileContents", LogLine::FreeText);
    } else {
        WriteDebug("File not found:" + path, LogLine::FreeText);
    }
    const std::int32_t mark = text ? CheckByteOrderMark(*text) : unreadable;
    if (result != nullptr) *result = mark;
    return text ? std::move(*text) : std::string();
}

bool WriteFileConents(const std::string& path, const std::string& text, bool append, std::int32_t encoding,
                      bool showError) {
    const platform::ErrorScope ownErrors;
    const Debug::Trace trace("WriteFileConents");
    if (path.empty()) return false;
    const std::string writable = WritablePath(path);
    const auto opening = append ? platform::Opening::Appending : platform::Opening::Replacing;
    if (WriteWithRetries(writable, Encode(text, encoding), opening)) return true;
    if (showError && !platform::ToLower(writable).starts_with("m:")) {
        Show("Error writing file: " + writable + ", " + platform::Err().Description());
    }
    return false;
}

bool EnsureFileSystemObject() {
    if (state.windowsVersion == 0) {
        state.windowsVersion = state.ports.windowsVersion ? state.ports.windowsVersion() : platform::WindowsVersion();
    }
    if (state.fileSystem != nullptr) return true;
    const platform::ErrorScope ownErrors;
    if (CreateFileSystem() || CreateAfterRegistration()) return true;
    if (!std::exchange(state.userTold, true) && platform::EnvironmentVariable("KDEHOME").empty()) {
        Show("Make sure the file scrrun.dll is in your Windows System32 directory and registered!");
    }
    return false;
}

const Dispatch& FileSystem() {
    static const Dispatch none;
    return EnsureFileSystemObject() ? *state.fileSystem : none;
}

void LetGo() { delete std::exchange(state.fileSystem, nullptr); }

double WindowsVersion() { return state.windowsVersion; }

}  // namespace Files
