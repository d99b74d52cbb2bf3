#include "platform/WholeFile.h"

#include <windows.h>

#include <algorithm>
#include <utility>

#include "platform/Err.h"
#include "platform/SystemError.h"

namespace platform {
namespace {

constexpr std::size_t block = 65536;
constexpr std::size_t sector = 512;  // what a disk writes whole or not at all
constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

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

// Where the file differs from bytes of the same number in one sector only, that one is written where it stands.
bool WriteOneSector(const std::string& path, std::string_view bytes) {
    OpenFile file;
    if (!MayDo("open") || !file.Open(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING)) return false;
    std::string old(file.Size(), '\0');
    if (old.size() != bytes.size() || !file.Read(old) || old.size() != bytes.size()) return false;
    const std::string_view there = old;
    std::size_t at = 0;
    while (at < bytes.size() && there.substr(at, sector) == bytes.substr(at, sector)) at += sector;
    if (at >= bytes.size()) return true;
    const std::size_t behind = std::min(at + sector, bytes.size());
    if (there.substr(behind) != bytes.substr(behind)) return false;
    file.GoTo(at);
    return file.Write(bytes.substr(at, sector)) && file.Flush();
}

enum class Outcome { Done, NotPossibleHere, Failed };

// The whole bytes on the disk, under a name of their own.
Outcome WriteBeside(const std::string& beside, std::string_view bytes, DWORD attributes) {
    OpenFile file;
    if (!MayDo("make") || !file.Open(beside, GENERIC_WRITE, 0, CREATE_ALWAYS, attributes)) {
        return Outcome::NotPossibleHere;
    }
    if (file.Write(bytes) && file.Flush()) return Outcome::Done;
    file.Close();
    RemoveQuietly(beside);
    return Outcome::Failed;
}

Outcome PutInPlace(const std::string& beside, const std::string& path) {
    if (MayDo("replace") &&
        MoveFileExA(beside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        return Outcome::Done;
    }
    RemoveQuietly(beside);
    return Outcome::NotPossibleHere;
}

// A full disk shows when the space is reserved, before anything of the old text is gone.
bool Overwrite(const std::string& path, std::string_view bytes, DWORD attributes) {
    OpenFile file;
    if (!MayDo("open") || !file.Open(path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_ALWAYS, attributes)) return false;
    const std::size_t oldSize = file.Size();
    if (bytes.size() > oldSize && !file.EndAt(bytes.size())) {
        const DWORD lastError = GetLastError();
        file.EndAt(oldSize);
        SetLastError(lastError);
        return false;
    }
    file.GoTo(0);
    return file.Write(bytes) && (bytes.size() >= oldSize || file.EndAt(bytes.size())) && file.Flush();
}

}  // namespace

FileStamp StampOf(const std::string& path) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) return {};
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {};
    return {true, std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow,
            std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 | data.ftLastWriteTime.dwLowDateTime};
}

bool FolderIsThere(const std::string& path) noexcept {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::optional<std::string> ReadWhole(const std::string& path) {
    OpenFile file;
    if (MayDo("read") && file.Open(path, GENERIC_READ, shareAll, OPEN_EXISTING)) {
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

std::optional<FileStamp> ReplaceWhole(const std::string& path, std::string_view bytes) {
    WIN32_FILE_ATTRIBUTE_DATA old;
    const bool isThere = GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &old) != 0;
    const DWORD attributes = isThere ? old.dwFileAttributes : FILE_ATTRIBUTE_NORMAL;
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) {
        RecordStatus(ERROR_ACCESS_DENIED);
        return std::nullopt;
    }
    const bool asLong = isThere && old.nFileSizeHigh == 0 && old.nFileSizeLow == bytes.size();
    const bool standsInSectors = (attributes & FILE_ATTRIBUTE_COMPRESSED) == 0;
    if (asLong && standsInSectors && WriteOneSector(path, bytes)) return StampOf(path);
    const std::string beside = path + ".new";
    Outcome outcome = WriteBeside(beside, bytes, attributes);
    FileStamp stamp;
    if (outcome == Outcome::Done) {
        stamp = StampOf(beside);
        outcome = PutInPlace(beside, path);
    }
    if (outcome == Outcome::NotPossibleHere) {
        outcome = Overwrite(path, bytes, attributes) ? Outcome::Done : Outcome::Failed;
        stamp = StampOf(path);
    }
    if (outcome == Outcome::Done) return stamp;
    RecordFileError();
    return std::nullopt;
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
