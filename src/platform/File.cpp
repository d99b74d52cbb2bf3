#include "platform/File.h"

#include <windows.h>

#include "platform/Sharing.h"
#include "platform/SystemError.h"

namespace platform {
namespace {

class OpenSearch {
  public:
    explicit OpenSearch(HANDLE search) : search_(search) {}
    OpenSearch(const OpenSearch&) = delete;
    OpenSearch& operator=(const OpenSearch&) = delete;
    ~OpenSearch() { FindClose(search_); }

  private:
    HANDLE search_;
};

}  // namespace

bool PathExists(const std::string& path) noexcept {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool PathIsMissing(const std::string& path) noexcept { return !PathExists(path) && MeansMissing(GetLastError()); }

std::optional<std::uint64_t> FileSize(const std::string& path) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return std::nullopt;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

std::string ReadFront(const std::string& path, std::uint32_t count) {
    std::string bytes(count, '\0');  // before the file is open: where memory ends, nobody would close it
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, shareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        RecordLastError();
        return {};
    }
    DWORD read = 0;
    if (!ReadFile(file, bytes.data(), count, &read, nullptr)) RecordLastError();
    CloseHandle(file);
    bytes.resize(read);
    return bytes;
}

std::vector<std::string> FileNames(const std::string& folder, const std::string& pattern) {
    std::vector<std::string> names;
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((folder + pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    const OpenSearch open(search);
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(found.cFileName);
    } while (FindNextFileA(search, &found));
    return names;
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
