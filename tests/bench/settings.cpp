// Settings in files against Windows' own functions for them, and against what the system needs for the bare files.
#include <windows.h>

#include <string>
#include <vector>

#include "bench/Bench.h"
#include "config/IniFile.h"

namespace {

constexpr double eightTimesFaster = 0.125;
constexpr double nearTheFloor = 1.3;
constexpr double twiceTheBytes = 2;
constexpr double halfOfWindows = 0.5;
constexpr double nearTheCalls = 1.15;

constexpr int keysInSection = 20;

struct Setting {
    std::string section;
    std::string key;
};

struct SettingsFile {
    std::string path;
    std::string text;
    std::vector<Setting> settings;  // in an order that leaps through the file
};

void Put(const std::string& path, const std::string& bytes, bool flush) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    if (flush) FlushFileBuffers(file);
    CloseHandle(file);
}

SettingsFile Make(std::size_t kilobytes) {
    char folder[MAX_PATH];
    GetTempPathA(sizeof folder, folder);
    SettingsFile file;
    file.path = std::string(folder) + "corvella bench " + std::to_string(kilobytes) + ".ini";
    std::vector<Setting> inOrder;
    while (file.text.size() < kilobytes * 1000) {
        const std::string section = "Section" + std::to_string(inOrder.size() / keysInSection);
        file.text += "[" + section + "]\r\n";
        for (int key = 0; key < keysInSection; ++key) {
            inOrder.push_back({section, "SomeSetting" + std::to_string(key)});
            file.text += inOrder.back().key + "=the value of a setting\r\n";
        }
        file.text += "\r\n";
    }
    for (std::size_t i = 0; i < 64; ++i) file.settings.push_back(inOrder[i * 7919 % inOrder.size()]);
    Put(file.path, file.text, true);
    return file;
}

// The next setting to ask for.
class Tour {
  public:
    explicit Tour(const SettingsFile& file) : file_(file) {}
    const Setting& Next() { return file_.settings[next_++ % file_.settings.size()]; }

  private:
    const SettingsFile& file_;
    std::size_t next_ = 0;
};

std::string ReadBytes(const std::string& path) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    std::string bytes(GetFileSize(file, nullptr), '\0');
    DWORD count = 0;
    ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr);
    CloseHandle(file);
    return bytes;
}

void Nothing() {}

void Lookups(Bench::Report& report, std::size_t kilobytes) {
    const SettingsFile file = Make(kilobytes);
    const std::string size = " " + std::to_string(kilobytes) + " KB";
    Tour ours(file), theirs(file);
    const auto lookup = [&] {
        const Setting& setting = ours.Next();
        (void)IniFile::ReadFromIniFile(file.path, setting.section, setting.key);
    };
    const auto windows = [&] {
        const Setting& setting = theirs.Next();
        char value[256];
        GetPrivateProfileStringA(setting.section.c_str(), setting.key.c_str(), "", value, sizeof value,
                                 file.path.c_str());
    };
    const auto attributes = [&] {
        WIN32_FILE_ATTRIBUTE_DATA data;
        GetFileAttributesExA(file.path.c_str(), GetFileExInfoStandard, &data);
    };
    for (std::size_t i = 0; i < file.settings.size(); ++i) lookup();
    report.Add("lookup," + size + ", against Windows' own",
               Bench::TakeTurnsForMinima(15, 500, Nothing, windows, lookup), eightTimesFaster);
    report.Add("lookup," + size + ", against the file's attributes",
               Bench::TakeTurns(31, 2000, Nothing, attributes, lookup), nearTheFloor);
    DeleteFileA(file.path.c_str());
}

void Loading(Bench::Report& report) {
    const SettingsFile file = Make(500);
    const auto bytes = [&] { (void)ReadBytes(file.path); };
    const auto load = [&] {
        IniFile::IniInit(false);  // forgets what was loaded
        (void)IniFile::ReadFromIniFile(file.path, "Section0", "SomeSetting0");
    };
    const auto loadAndSearch = [&] {
        IniFile::IniInit(false);
        (void)IniFile::ReadFromIniFile(file.path, "NoSuchSection", "SomeSetting0");
    };
    report.Add("loading 500 KB, against reading the bytes", Bench::TakeTurns(21, 20, Nothing, bytes, load),
               twiceTheBytes);
    report.Add("the same and a search through all of it", Bench::TakeTurns(21, 20, Nothing, bytes, loadAndSearch));
    DeleteFileA(file.path.c_str());
}

// Whole texts go beside the file and replace it; where no more than one sector differs, that sector is enough.
// Windows' own write is flushed as Windows has it, by the call without names; to the disk itself only ours goes. So
// where the disk is slow or busy its flush decides: a text of another length is held against the bare calls that
// replace a file, with those that keep what somebody else saves meanwhile. Without these it is shown as well: they count
// where a flush takes less than a millisecond. The shortest times count, because the disk is everybody's.
void FlushedWrites(Bench::Report& report) {
    const SettingsFile file = Make(100);
    Tour ours(file), theirs(file);
    int number = 100000;
    const auto oldLength = [&] { return "value " + std::to_string(++number); };
    const auto anotherLength = [&, tour = file.settings.size()] {  // than the last time that this setting was met
        return oldLength() + (static_cast<std::size_t>(number) / tour % 2 == 0 ? " and more" : "");
    };
    const auto write = [&](const std::string& value) {
        const Setting& setting = ours.Next();
        IniFile::WriteToIniFile(file.path, setting.section, setting.key, value, true);
    };
    const auto windows = [&](const std::string& value) {
        const Setting& setting = theirs.Next();
        WritePrivateProfileStringA(setting.section.c_str(), setting.key.c_str(), value.c_str(), file.path.c_str());
    };
    const auto windowsFlushed = [&](const std::string& value) {
        windows(value);
        WritePrivateProfileStringA(nullptr, nullptr, nullptr, file.path.c_str());
    };
    const auto start = [&] { Put(file.path, file.text, true); };
    const auto startWithOldLength = [&] {
        start();
        for (std::size_t i = 0; i < file.settings.size(); ++i) windows(oldLength());
    };
    const auto writeOldLength = [&] { write(oldLength()); };
    const auto windowsOldLength = [&] { windowsFlushed(oldLength()); };
    const auto writeAnotherLength = [&] { write(anotherLength()); };
    const auto windowsAnotherLength = [&] { windowsFlushed(anotherLength()); };
    const auto windowsUnflushed = [&] { windows(anotherLength()); };
    // In a file of its own: what somebody else has replaced, the system would have to read again.
    const std::string bareFile = file.path + ".other", beside = bareFile + ".bare", kept = bareFile + ".kept";
    Put(bareFile, file.text, true);
    const auto bare = [&] {
        Put(beside, file.text, true);
        MoveFileExA(beside.c_str(), bareFile.c_str(), MOVEFILE_REPLACE_EXISTING);
    };
    const auto bareWithItsLooks = [&] {
        const auto look = [](const std::string& path) {
            WIN32_FILE_ATTRIBUTE_DATA data;
            GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data);
        };
        look(bareFile);  // is the text held still that of the file
        look(bareFile);  // its attributes, for the new one
        Put(beside, file.text, true);
        look(beside);
        DeleteFileA(kept.c_str());  // what a crash may have left
        CreateHardLinkA(kept.c_str(), bareFile.c_str(), nullptr);
        look(bareFile);  // nobody has saved it meanwhile
        MoveFileExA(beside.c_str(), bareFile.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
        look(kept);  // nobody has saved it in the last moment
        DeleteFileA(kept.c_str());
        (void)GetFileAttributesA(bareFile.c_str());
        (void)ReadBytes(bareFile);
    };
    report.Add("flushed write, 100 KB, old length, against Windows'",
               Bench::TakeTurns(7, 80, startWithOldLength, windowsOldLength, writeOldLength), halfOfWindows);
    report.Add("flushed write, 100 KB, another length, the same",
               Bench::TakeTurns(15, 80, start, windowsAnotherLength, writeAnotherLength));
    report.Add("flushed write, another length, Windows' unflushed",
               Bench::TakeTurns(15, 80, start, windowsUnflushed, writeAnotherLength));
    report.Add("bare replacing of 100 KB, against Windows' unflushed",
               Bench::TakeTurns(15, 80, start, windowsUnflushed, bare));
    start();
    report.Add("flushed write, another length, against its calls",
               Bench::TakeTurnsForMinima(1000, 1, Nothing, bareWithItsLooks, writeAnotherLength), nearTheCalls);
    report.Add("flushed write, another length, against create, write, flush and replace",
               Bench::TakeTurnsForMinima(1000, 1, Nothing, bare, writeAnotherLength));
    DeleteFileA(bareFile.c_str());
    DeleteFileA(file.path.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    Bench::Report report;
    for (const std::size_t kilobytes : {10u, 100u, 500u}) Lookups(report, kilobytes);
    Loading(report);
    FlushedWrites(report);
    return report.Finish(argc, argv);
}
