#include "platform/File.h"

#include <windows.h>

#include "platform/SystemError.h"

namespace platform {
namespace {

constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace

bool PathExists(const std::string& path) noexcept {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

std::optional<std::uint64_t> FileSize(const std::string& path) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::nullopt;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

bool RemoveFile(const std::string& path) noexcept {
    if (DeleteFileA(path.c_str())) return true;
    RecordLastError();
    return false;
}

bool AppendToFile(const std::string& path, std::string_view bytes) noexcept {
    const HANDLE file =
        CreateFileA(path.c_str(), FILE_APPEND_DATA, shareAll, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        RecordLastError();
        return false;
    }
    DWORD written = 0;
    const bool done =
        WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) && written == bytes.size();
    if (!done) RecordLastError();
    CloseHandle(file);
    return done;
}

}  // namespace platform
