// The profiles among 2,000 ini files, some of them locked, against reading the first 500 bytes of every file.
#include <objbase.h>
#include <windows.h>

#include "bench/Bench.h"
#include "bridge/Profiles.h"
#include "config/InifileCV.h"

namespace {

constexpr int files = 2000, lockedFiles = 20;
constexpr int rounds = 11;
constexpr double target = 2;

// A folder of its own with the files in it.
class Folder {
  public:
    Folder() {
        char temp[MAX_PATH];
        GetTempPathA(sizeof temp, temp);
        path_ = std::string(temp) + "Corvella Bench " + std::to_string(GetCurrentProcessId()) + "\\";
        CreateDirectoryA(path_.c_str(), nullptr);
        const std::string text = "[Phone]\r\nName=Phone\r\n[Settings]\r\n" + std::string(3000, ';');
        for (int i = 0; i < files; ++i) {
            const HANDLE file = CreateFileA(Path(i).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
            DWORD written = 0;
            WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
            if (i < lockedFiles) {
                locked_.push_back(file);
            } else {
                CloseHandle(file);
            }
        }
    }
    ~Folder() {
        for (const HANDLE file : locked_) CloseHandle(file);
        for (int i = 0; i < files; ++i) DeleteFileA(Path(i).c_str());
        RemoveDirectoryA(path_.c_str());
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    [[nodiscard]] const std::string& Path() const { return path_; }
    [[nodiscard]] std::string Path(int number) const { return path_ + "profile" + std::to_string(number) + ".ini"; }

  private:
    std::string path_;
    std::vector<HANDLE> locked_;
};

void ReadFront(const std::string& path) {
    const HANDLE file =
        CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return;
    char bytes[500];
    DWORD read = 0;
    ReadFile(file, bytes, sizeof bytes, &read, nullptr);
    CloseHandle(file);
}

}  // namespace

int main(int argc, char** argv) {
    CoInitialize(nullptr);
    const Folder folder;
    InifileCV::state.IniFiles = folder.Path();
    InifileCV::state.IniFilesRead = true;
    std::vector<std::string> paths;
    for (int i = 0; i < files; ++i) paths.push_back(folder.Path(i));
    std::vector<std::string> list;
    const auto all = [&] {
        for (const std::string& path : paths) ReadFront(path);
    };

    Bench::Report report;
    report.Add("GetProfiles / first 500 bytes of 2000 files",
               Bench::TakeTurns(
                   rounds, 1, [] {}, all, [&] { Profiles::GetProfiles(list); }),
               target);
    if (list.size() != files || std::count(list.begin(), list.end(), std::string()) != lockedFiles) return 2;
    return report.Finish(argc, argv);
}
