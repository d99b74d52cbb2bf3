// A stand-in for the main application at work beside the add-in: saves settings into the shared file, and takes entries
// from the list of changed contacts, again and again, as chance has it.
//
//   main_application <settings file> <registry key> <record file> <seed>
//
// It ends when <record file>.stop is there, after a minute at the latest, and writes what it did into the record file, a
// line each; times are QueryPerformanceCounter's:
//   saved <number> <begin> <end>            key m<number> of section "Main", once each
//   took <begin> <end> <id>[;<id>...]       between the two it read the list and wrote it back without these
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

std::mt19937 chance;

bool OneIn(unsigned count) { return chance() % count == 0; }

void PauseSometimes() {
    if (OneIn(3)) Sleep(chance() % 3);
}

std::string Now() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return std::to_string(now.QuadPart);
}

// Alone with the file from loading to saving: nobody else may write or replace it meanwhile.
class Settings {
  public:
    explicit Settings(const char* path)
        : file_(CreateFileA(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr)) {}
    ~Settings() {
        if (IsOpen()) CloseHandle(file_);
    }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    [[nodiscard]] bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] std::string Load() const {
        std::string text(GetFileSize(file_, nullptr), '\0');
        DWORD count = 0;
        ReadFile(file_, text.data(), static_cast<DWORD>(text.size()), &count, nullptr);
        text.resize(count);
        return text;
    }
    // Sometimes the file is empty for a moment, and sometimes half of the text is there.
    void Save(const std::string& text) const {
        SetFilePointer(file_, 0, nullptr, FILE_BEGIN);
        if (OneIn(2)) SetEndOfFile(file_);
        PauseSometimes();
        const std::size_t half = OneIn(2) ? text.size() / 2 : 0;
        Write(text.substr(0, half));
        PauseSometimes();
        Write(text.substr(half));
        SetEndOfFile(file_);
    }

  private:
    void Write(const std::string& part) const {
        DWORD count = 0;
        WriteFile(file_, part.data(), static_cast<DWORD>(part.size()), &count, nullptr);
    }

    HANDLE file_;
};

bool SaveSetting(const char* path, int number, std::string& record) {
    const Settings settings(path);
    if (!settings.IsOpen()) return false;
    const std::string begin = Now();
    const std::string head = "[Main]\r\n";
    std::string text = settings.Load();
    const std::size_t section = text.find(head);
    if (section == std::string::npos) return false;
    const std::string line = "m" + std::to_string(number) + "=" + std::to_string(number * 7) + "\r\n";
    settings.Save(text.insert(section + head.size(), line));
    record += "saved " + std::to_string(number) + " " + begin + " " + Now() + "\n";
    return true;
}

std::string ReadList(HKEY key) {
    for (;;) {
        DWORD size = 0;
        if (RegQueryValueExA(key, "ChangedC", nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) return {};
        std::string list(size, '\0');
        if (RegQueryValueExA(key, "ChangedC", nullptr, nullptr, reinterpret_cast<BYTE*>(list.data()), &size) != 0)
            continue;  // it has grown
        list.resize(size);
        while (!list.empty() && list.back() == '\0') list.pop_back();
        return list;
    }
}

std::vector<std::string> Entries(const std::string& list) {
    std::vector<std::string> entries;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(';', begin), list.size());
        if (end > begin) entries.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return entries;
}

std::string Joined(const std::vector<std::string>& entries) {
    std::string list;
    for (const std::string& entry : entries) list += (list.empty() ? "" : ";") + entry;
    return list;
}

// Takes the first few entries, or all.
void TakeEntries(HKEY key, std::string& record) {
    const std::string begin = Now();
    std::vector<std::string> entries = Entries(ReadList(key));
    if (entries.empty()) return;
    PauseSometimes();
    const auto count = static_cast<std::ptrdiff_t>(OneIn(2) ? entries.size() : 1 + chance() % entries.size());
    const std::vector<std::string> taken(entries.begin(), entries.begin() + count);
    entries.erase(entries.begin(), entries.begin() + count);
    const std::string rest = Joined(entries);
    RegSetValueExA(key, "ChangedC", 0, REG_SZ, reinterpret_cast<const BYTE*>(rest.c_str()),
                   static_cast<DWORD>(rest.size() + 1));
    record += "took " + begin + " " + Now() + " " + Joined(taken) + "\n";
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 5) return 2;
    chance.seed(static_cast<unsigned>(std::strtoul(arguments[4], nullptr, 10)));
    const std::string recordFile = arguments[3];
    const std::string stop = recordFile + ".stop";
    HKEY key = nullptr;
    if (RegCreateKeyA(HKEY_CURRENT_USER, arguments[2], &key) != ERROR_SUCCESS) return 3;
    std::string record;
    const DWORD begin = GetTickCount();
    for (int number = 0; GetTickCount() - begin < 60000; Sleep(2 + chance() % 8)) {
        if (GetFileAttributesA(stop.c_str()) != INVALID_FILE_ATTRIBUTES) break;
        if (OneIn(2)) {
            TakeEntries(key, record);
        } else if (SaveSetting(arguments[1], number, record)) {
            ++number;
        }
    }
    RegCloseKey(key);
    std::FILE* file = std::fopen(recordFile.c_str(), "wb");
    if (!file) return 4;
    std::fwrite(record.data(), 1, record.size(), file);
    return std::fclose(file);
}
