#include "platform/Look.h"

#include <windows.h>

#include <array>

#include "platform/Processes.h"
#include "platform/Sharing.h"
#include "platform/SystemError.h"
#include "platform/Text.h"
#include "platform/Unicode.h"

namespace platform {
namespace {

// A Windows without views refuses to be asked for one.
REGSAM ViewFlag(RegistryView view) {
    if (view == RegistryView::Own || !HasRegistryViews()) return 0;
    return view == RegistryView::Bits64 ? KEY_WOW64_64KEY : KEY_WOW64_32KEY;
}

bool Is64BitWindows() {
    if (sizeof(void*) == 8) return true;
    using IsWow64 = BOOL(WINAPI*)(HANDLE, PBOOL);
    const auto ask = reinterpret_cast<IsWow64>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "IsWow64Process"));
    BOOL answer = FALSE;
    return ask && ask(GetCurrentProcess(), &answer) && answer;
}

Found FoundBy(DWORD status) { return MeansMissing(status) ? Found::Missing : Found::Unreadable; }

std::uint64_t Number(const FILETIME& time) {
    return static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

std::string TwoDigits(WORD number) { return (number < 10 ? "0" : "") + Decimal(number); }

class OpenedFile {
  public:
    OpenedFile(const std::string& path, DWORD access, DWORD flags)
        : handle_(CreateFileA(path.c_str(), access, shareAll, nullptr, OPEN_EXISTING, flags, nullptr)) {}
    ~OpenedFile() {
        if (*this) CloseHandle(handle_);
    }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;
    explicit operator bool() const { return handle_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE Get() const { return handle_; }

  private:
    HANDLE handle_;
};

}  // namespace

bool HasRegistryViews() noexcept {
    static const bool has = Is64BitWindows();
    return has;
}

LookedAtKey::LookedAtKey(Root root, const std::string& subkey, RegistryView view) noexcept {
    HKEY key = nullptr;
    const LONG status = RegOpenKeyExA(Handle(root), subkey.c_str(), 0, KEY_READ | ViewFlag(view), &key);
    if (status == ERROR_SUCCESS) key_ = key;
    found_ = status == ERROR_SUCCESS ? Found::There : FoundBy(static_cast<DWORD>(status));
}

LookedAtKey::~LookedAtKey() {
    if (key_) RegCloseKey(key_);
}

StoredValue LookedAtKey::Value(const std::string& name) const {
    StoredValue value;
    value.found = found_;
    if (!key_) return value;
    DWORD type = 0, size = 0;
    LONG status = RegQueryValueExA(key_, name.c_str(), nullptr, &type, nullptr, &size);
    value.tooLong = status == ERROR_SUCCESS && size > longest;
    if (status == ERROR_SUCCESS && !value.tooLong) {
        value.bytes.resize(size + 1);  // Windows may add a NUL
        size = static_cast<DWORD>(value.bytes.size());
        status =
            RegQueryValueExA(key_, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(value.bytes.data()), &size);
        value.bytes.resize(status == ERROR_SUCCESS ? size : 0);
    }
    value.type = type;
    if (status != ERROR_SUCCESS) value.found = FoundBy(static_cast<DWORD>(status));
    return value;
}

std::vector<std::string> LookedAtKey::ValueNames() const {
    std::vector<std::string> names;
    std::string name(16384, '\0');  // the longest that there can be
    for (DWORD i = 0; key_; ++i) {
        DWORD length = static_cast<DWORD>(name.size());
        const LONG status = RegEnumValueA(key_, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (status != ERROR_SUCCESS) break;
        names.emplace_back(name, 0, length);
    }
    return names;
}

std::uint64_t LookedAtKey::LastWritten() const noexcept {
    FILETIME time{};
    if (!key_ || RegQueryInfoKeyA(key_, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                  nullptr, &time) != ERROR_SUCCESS) {
        return 0;
    }
    return Number(time);
}

std::int32_t StoreValue(Root root, const std::string& subkey, RegistryView view, const std::string& name,
                        std::uint32_t type, std::string_view bytes) {
    HKEY key = nullptr;
    LONG status = RegCreateKeyExA(Handle(root), subkey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                  KEY_SET_VALUE | ViewFlag(view), nullptr, &key, nullptr);
    if (status != ERROR_SUCCESS) return status;
    const std::string guarded = std::string(bytes) + '.';  // Windows would count a NUL that stands behind the data
    status = RegSetValueExA(key, name.c_str(), 0, type, reinterpret_cast<const BYTE*>(guarded.data()),
                            static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
    return status;
}

std::int32_t DropValue(Root root, const std::string& subkey, RegistryView view, const std::string& name) {
    HKEY key = nullptr;
    LONG status = RegOpenKeyExA(Handle(root), subkey.c_str(), 0, KEY_SET_VALUE | ViewFlag(view), &key);
    if (status != ERROR_SUCCESS) return status;
    status = RegDeleteValueA(key, name.c_str());
    RegCloseKey(key);
    return status;
}

SeenFile LookAtFile(const std::string& path) noexcept {
    SeenFile file;
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (path.empty()) return file;
    if (!GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) {
        file.found = FoundBy(GetLastError());
        return file;
    }
    file.found = Found::There;
    file.isFolder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    file.readOnly = (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    file.size = static_cast<std::uint64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
    file.modified = Number(data.ftLastWriteTime);
    return file;
}

SeenText LookInto(const std::string& path, std::uint32_t count) {
    SeenText text;
    const OpenedFile file(path, GENERIC_READ, 0);
    if (!file) {
        text.found = FoundBy(GetLastError());
        return text;
    }
    text.bytes.resize(count);
    DWORD read = 0;
    const bool done = ReadFile(file.Get(), text.bytes.data(), count, &read, nullptr) != FALSE;
    text.found = done ? Found::There : Found::Unreadable;
    text.bytes.resize(done ? read : 0);
    return text;
}

bool MayWriteFile(const std::string& path) noexcept {
    const SeenFile seen = LookAtFile(path);
    if (seen.found != Found::There || seen.readOnly || seen.isFolder) return false;
    return static_cast<bool>(OpenedFile(path, FILE_WRITE_DATA, 0));
}

// FILE_ADD_FILE of a folder has the number of FILE_WRITE_DATA of a file.
bool MayAddFile(const std::string& folder) noexcept {
    return static_cast<bool>(OpenedFile(folder, FILE_ADD_FILE, FILE_FLAG_BACKUP_SEMANTICS));
}

bool WriteReportFile(const std::string& path, std::string_view bytes) noexcept {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const bool whole = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                       written == bytes.size() && FlushFileBuffers(file);
    CloseHandle(file);
    if (!whole) DeleteFileA(path.c_str());
    return whole;
}

bool MakeReportFolder(const std::string& folder) noexcept {
    return CreateDirectoryA(folder.c_str(), nullptr) || LookAtFile(folder).isFolder;
}

std::string FileVersion(const std::string& path) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeA(path.c_str(), &ignored);
    if (size == 0) return {};
    std::string record(size, '\0');
    void* found = nullptr;
    UINT length = 0;
    if (!GetFileVersionInfoA(path.c_str(), 0, size, record.data()) ||
        !VerQueryValueA(record.data(), "\\", &found, &length) || length < sizeof(VS_FIXEDFILEINFO)) {
        return {};
    }
    const auto& fixed = *static_cast<const VS_FIXEDFILEINFO*>(found);
    std::string text;
    for (const DWORD number : {fixed.dwFileVersionMS >> 16, fixed.dwFileVersionMS & 0xFFFF, fixed.dwFileVersionLS >> 16,
                               fixed.dwFileVersionLS & 0xFFFF}) {
        text += (text.empty() ? "" : ".") + Decimal(static_cast<std::int32_t>(number));
    }
    return text;
}

std::string Expanded(const std::string& text) {
    std::array<char, 4096> room{};
    const DWORD length = ExpandEnvironmentStringsA(text.c_str(), room.data(), static_cast<DWORD>(room.size()));
    return length == 0 || length > room.size() ? text : room.data();
}

bool ProgramRuns(std::string_view fileName) {
    return AnyProcess([&](const char* name, DWORD) { return SameIgnoringCase(name, fileName); });
}

// Newer ones tell every program that does not know them an older number, so their own library is asked.
std::string WindowsVersionText() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    using Ask = LONG(WINAPI*)(OSVERSIONINFOW*);
    const auto ask = reinterpret_cast<Ask>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlGetVersion"));
    OSVERSIONINFOW wide{};
    wide.dwOSVersionInfoSize = sizeof wide;
    if (!GetVersionExA(&version)) return {};
    if (ask && ask(&wide) == 0) {
        version.dwMajorVersion = wide.dwMajorVersion;
        version.dwMinorVersion = wide.dwMinorVersion;
        version.dwBuildNumber = wide.dwBuildNumber;
    }
    std::string text;
    for (const DWORD number : {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber & 0xFFFF}) {
        text += (text.empty() ? "" : ".") + Decimal(static_cast<std::int32_t>(number));
    }
    if (version.szCSDVersion[0] != '\0') text += std::string(" ") + version.szCSDVersion;
    return text;
}

std::uint64_t Now() noexcept {
    FILETIME time{};
    GetSystemTimeAsFileTime(&time);
    return Number(time);
}

std::string TimeText(std::uint64_t time) {
    const FILETIME stamp{static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    FILETIME local{};
    SYSTEMTIME parts{};
    if (time == 0 || !FileTimeToLocalFileTime(&stamp, &local) || !FileTimeToSystemTime(&local, &parts)) return {};
    return Decimal(parts.wYear) + "-" + TwoDigits(parts.wMonth) + "-" + TwoDigits(parts.wDay) + " " +
           TwoDigits(parts.wHour) + ":" + TwoDigits(parts.wMinute);
}

std::u16string LowerUtf16(std::string_view text) {
    std::wstring lower = Widen(text);
    CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
    return {lower.begin(), lower.end()};
}

}  // namespace platform
