#include "platform/WholeFile.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/Err.h"
#include "platform/Sharing.h"
#include "platform/SystemError.h"

namespace platform {
namespace {

constexpr std::size_t block = 65536;
constexpr std::size_t sector = 512;  // what a disk writes whole or not at all

FileWatch watching = nullptr;

// False, with that status as the last error, where the watch makes the step fail.
bool MayDo(const char* step) noexcept {
    if (watching == nullptr) return true;
    const std::uint32_t status = watching(step);
    if (status == 0) return true;
    SetLastError(status);
    return false;
}

void RecordFileError() noexcept {
    if (GetLastError() == ERROR_PATH_NOT_FOUND) return Err().Set(PathNotFound, "Path not found");
    RecordLastError();
}

class OpenFile {
  public:
    OpenFile() noexcept = default;
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() { Close(); }

    bool Open(const std::string& path, DWORD access, DWORD share, DWORD disposition,
              DWORD attributes = FILE_ATTRIBUTE_NORMAL) noexcept {
        file_ = CreateFileA(path.c_str(), access, share, nullptr, disposition, attributes, nullptr);
        return file_ != INVALID_HANDLE_VALUE;
    }
    void Close() noexcept {
        if (file_ == INVALID_HANDLE_VALUE) return;
        const DWORD lastError = GetLastError();
        CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE));
        SetLastError(lastError);
    }

    [[nodiscard]] std::uint32_t Size() const noexcept { return GetFileSize(file_, nullptr); }
    bool Read(std::string& bytes) const noexcept {
        DWORD count = 0;
        const bool done = ReadFile(file_, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) != 0;
        bytes.resize(done ? count : 0);
        return done;
    }
    bool Write(std::string_view bytes) const noexcept {
        while (!bytes.empty()) {
            const std::string_view part = bytes.substr(0, block);
            DWORD count = 0;
            if (!MayDo("write")) return false;
            if (!WriteFile(file_, part.data(), static_cast<DWORD>(part.size()), &count, nullptr)) return false;
            if (count == 0) {
                SetLastError(ERROR_DISK_FULL);
                return false;
            }
            bytes.remove_prefix(count);
        }
        return true;
    }
    bool Flush() const noexcept { return MayDo("flush") && FlushFileBuffers(file_); }
    bool EndAt(std::size_t size) const noexcept {
        return SetFilePointer(file_, static_cast<LONG>(size), nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER &&
               MayDo("end") && SetEndOfFile(file_);
    }
    // The time is set to now: else Windows may still change it when the file is closed.
    [[nodiscard]] FileStamp StampNow() const noexcept {
        FILETIME now;
        GetSystemTimeAsFileTime(&now);
        SetFileTime(file_, nullptr, nullptr, &now);
        GetFileTime(file_, nullptr, nullptr, &now);
        return {true, Size(), std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime};
    }
    void GoTo(std::size_t position) const noexcept {
        SetFilePointer(file_, static_cast<LONG>(position), nullptr, FILE_BEGIN);
    }

  private:
    HANDLE file_ = INVALID_HANDLE_VALUE;
};

void RemoveQuietly(const std::string& path) noexcept {
    const DWORD lastError = GetLastError();
    if (MayDo("remove")) DeleteFileA(path.c_str());
    SetLastError(lastError);
}

struct FileState {
    FileStamp stamp;
    DWORD attributes = FILE_ATTRIBUTE_NORMAL;
};

FileState StateOf(const std::string& path) noexcept {
    FileState state;
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) {
        state.stamp.unknown = !MeansMissing(GetLastError());
        return state;
    }
    state.attributes = data.dwFileAttributes;
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return state;
    state.stamp = {true, std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow,
                   std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime};
    return state;
}

enum class Outcome { Done, Changed, NotPossibleHere, Failed };

// What kept a file from being opened or made that was as expected before.
bool MeansChanged(DWORD status) noexcept {
    return status == ERROR_SHARING_VIOLATION || status == ERROR_LOCK_VIOLATION || status == ERROR_FILE_EXISTS ||
           status == ERROR_ALREADY_EXISTS || status == ERROR_FILE_NOT_FOUND;
}

// Where the file differs from bytes of the same number in one sector only, that one is written where it stands.
// Nobody else writes the file while it is open here.
Outcome WriteOneSector(const std::string& path, std::string_view bytes, FileStamp& stamp) {
    OpenFile file;
    if (!MayDo("open") || !file.Open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING)) {
        return Outcome::NotPossibleHere;
    }
    if (StampOf(path) != stamp) return Outcome::Changed;
    std::string old(file.Size(), '\0');
    if (old.size() != bytes.size() || !file.Read(old) || old.size() != bytes.size()) return Outcome::NotPossibleHere;
    const std::string_view there = old;
    std::size_t at = 0;
    while (at < bytes.size() && there.substr(at, sector) == bytes.substr(at, sector)) at += sector;
    if (at >= bytes.size()) return Outcome::Done;
    const std::size_t behind = std::min(at + sector, bytes.size());
    if (there.substr(behind) != bytes.substr(behind)) return Outcome::NotPossibleHere;
    file.GoTo(at);
    const bool done = file.Write(bytes.substr(at, sector)) && file.Flush();
    stamp = file.StampNow();
    return done ? Outcome::Done : Outcome::NotPossibleHere;
}

// Made anew: what a crash has left under that name goes first.
bool OpenBeside(OpenFile& file, const std::string& beside, DWORD attributes) {
    if (!MayDo("make")) return false;
    if (file.Open(beside, GENERIC_WRITE, 0, CREATE_NEW, attributes)) return true;
    return DeleteFileA(beside.c_str()) && file.Open(beside, GENERIC_WRITE, 0, CREATE_NEW, attributes);
}

// The whole bytes on the disk, under a name of their own.
Outcome WriteBeside(const std::string& beside, std::string_view bytes, DWORD attributes) {
    OpenFile file;
    if (!OpenBeside(file, beside, attributes)) return Outcome::NotPossibleHere;
    if (file.Write(bytes) && file.Flush()) return Outcome::Done;
    file.Close();
    RemoveQuietly(beside);
    return Outcome::Failed;
}

// A second name of the old file, where the disk has such: whatever is saved in it until it is replaced can be read there.
class SecondName {
  public:
    SecondName(const std::string& path, bool exists) : name_(std::string(path).append(keptEnding)) {
        if (!exists) return;
        DeleteFileA(name_.c_str());  // what a crash has left
        made_ = MayDo("keep") && CreateHardLinkA(name_.c_str(), path.c_str(), nullptr);
        taken_ = !made_ && GetLastError() == ERROR_ALREADY_EXISTS;
    }
    ~SecondName() {
        if (made_) RemoveQuietly(name_);
    }
    SecondName(const SecondName&) = delete;
    SecondName& operator=(const SecondName&) = delete;

    [[nodiscard]] bool Taken() const noexcept { return taken_; }  // by a file that somebody has open
    // The first name is that of the old file again, where it is not as it was.
    [[nodiscard]] bool PutBackIfChanged(const std::string& path, const FileStamp& stamp) const noexcept {
        return made_ && StampOf(name_) != stamp &&
               MoveFileExA(name_.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    }

  private:
    std::string name_;
    bool made_ = false;
    bool taken_ = false;
};

// Windows does not replace a file that somebody has open, but it does where somebody has just saved and closed it.
Outcome PutInPlace(const std::string& beside, const std::string& path, FileStamp& stamp) {
    const FileStamp ours = StampOf(beside);
    const DWORD how = MOVEFILE_WRITE_THROUGH | (stamp.exists ? MOVEFILE_REPLACE_EXISTING : 0u);
    const SecondName kept(path, stamp.exists);
    Outcome outcome = Outcome::NotPossibleHere;
    if (!kept.Taken() && MayDo("replace")) {
        if (StampOf(path) != stamp) {
            outcome = Outcome::Changed;
        } else if (MoveFileExA(beside.c_str(), path.c_str(), how)) {
            if (kept.PutBackIfChanged(path, stamp)) return Outcome::Changed;
            stamp = ours;
            return Outcome::Done;
        }
    }
    RemoveQuietly(beside);
    return outcome;
}

// A full disk shows when the space is reserved, before anything of the old text is gone.
Outcome Overwrite(const std::string& path, std::string_view bytes, DWORD attributes, FileStamp& stamp) {
    OpenFile file;
    if (!MayDo("open")) return Outcome::Failed;
    if (!file.Open(path, GENERIC_WRITE, FILE_SHARE_READ, stamp.exists ? OPEN_EXISTING : CREATE_NEW, attributes)) {
        return MeansChanged(GetLastError()) ? Outcome::Changed : Outcome::Failed;
    }
    if (stamp.exists && StampOf(path) != stamp) return Outcome::Changed;
    const std::size_t oldSize = file.Size();
    if (bytes.size() > oldSize && !file.EndAt(bytes.size())) {
        const DWORD lastError = GetLastError();
        file.EndAt(oldSize);
        SetLastError(lastError);
        return Outcome::Failed;
    }
    file.GoTo(0);
    if (!file.Write(bytes) || (bytes.size() < oldSize && !file.EndAt(bytes.size())) || !file.Flush())
        return Outcome::Failed;
    stamp = file.StampNow();
    return Outcome::Done;
}

// `stamp`: the expected one, and then that of these bytes.
Outcome Replace(const std::string& path, std::string_view bytes, FileStamp& stamp) {
    const FileState old = StateOf(path);
    if (old.stamp != stamp) return Outcome::Changed;
    if ((old.attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return Outcome::Failed;
    }
    const bool standsInSectors = (old.attributes & FILE_ATTRIBUTE_COMPRESSED) == 0;
    if (stamp.exists && stamp.size == bytes.size() && standsInSectors) {
        const Outcome outcome = WriteOneSector(path, bytes, stamp);
        if (outcome != Outcome::NotPossibleHere) return outcome;
    }
    const std::string beside = std::string(path).append(besideEnding);
    Outcome outcome = WriteBeside(beside, bytes, old.attributes);
    if (outcome == Outcome::Done) outcome = PutInPlace(beside, path, stamp);
    return outcome == Outcome::NotPossibleHere ? Overwrite(path, bytes, old.attributes, stamp) : outcome;
}

}  // namespace

FileStamp StampOf(const std::string& path) noexcept { return StateOf(path).stamp; }

bool FolderIsThere(const std::string& path) noexcept {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::optional<std::string> ReadWhole(const std::string& path, Others others) {
    const DWORD share = others == Others::MayWrite ? shareAll : FILE_SHARE_READ | FILE_SHARE_DELETE;
    OpenFile file;
    if (MayDo("read") && file.Open(path, GENERIC_READ, share, OPEN_EXISTING)) {
        std::string bytes(file.Size(), '\0');
        if (file.Read(bytes)) return bytes;
    }
    RecordFileError();
    return std::nullopt;
}

bool WriteWhole(const std::string& path, std::string_view bytes, Opening opening) noexcept {
    const bool appending = opening == Opening::Appending;
    OpenFile file;
    if (MayDo("open") && file.Open(path, appending ? FILE_APPEND_DATA : GENERIC_WRITE, FILE_SHARE_READ,
                                   appending ? OPEN_ALWAYS : CREATE_ALWAYS)) {
        if (file.Write(bytes)) return true;
    }
    RecordFileError();
    return false;
}

Replacement ReplaceWhole(const std::string& path, std::string_view bytes, const FileStamp& expected) {
    FileStamp stamp = expected;
    switch (Replace(path, bytes, stamp)) {
        case Outcome::Done: return {Replacing::Done, stamp};
        case Outcome::Changed: return {Replacing::Changed, {}};
        default: RecordFileError(); return {Replacing::Failed, {}};
    }
}

bool DuplicateFile(const std::string& from, const std::string& to) noexcept {
    if (CopyFileA(from.c_str(), to.c_str(), FALSE)) return true;
    RecordFileError();
    return false;
}

bool MakeFolder(const std::string& path) noexcept {
    if (CreateDirectoryA(path.c_str(), nullptr)) return true;
    RecordFileError();
    return false;
}

FileWatch WatchFiles(FileWatch watch) noexcept { return std::exchange(watching, watch); }

}  // namespace platform
