// Settings in real files: the cache, flushes, changes from outside, what is unreadable.
#include "config/IniFile.h"

#include <doctest.h>
#include <windows.h>

#include <map>
#include <random>
#include <string>

#include "config/IniCache.h"
#include "platform/Err.h"
#include "platform/WholeFile.h"
#include "testing/DebugLog.h"
#include "testing/PrivateRegistry.h"
#include "testing/SettingsHelper.h"
#include "testing/TempFolder.h"

using namespace IniFile;
using IniText::Comparison;

namespace {

// Every step that reaches a disk, counted by what it is.
std::map<std::string, int> steps;
std::uint32_t CountSteps(const char* step) {
    ++steps[step];
    return 0;
}

// An engine that holds nothing yet, on a settings file of its own.
class Settings {
  public:
    Settings() {
        location = {folder.Path("corvella.ini"), folder.Path("corvella.ini"), 0};
        IniInit(false);
        steps.clear();
        platform::WatchFiles(CountSteps);
    }
    ~Settings() {
        platform::WatchFiles(nullptr);
        location = {};
        IniInit(false);
    }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    void File(const std::string& bytes) const { folder.Write("corvella.ini", bytes); }
    [[nodiscard]] std::string File() const { return folder.Read("corvella.ini"); }

    TempFolder folder;
};

struct RegistryMode {
    RegistryMode() { location = {"C:\\nowhere\\corvella.ini", "C:\\nowhere\\corvella.ini", inRegistry}; }
    ~RegistryMode() { location = {}; }
    RegistryMode(const RegistryMode&) = delete;
    RegistryMode& operator=(const RegistryMode&) = delete;
    PrivateRegistry registry;
};

const std::string ownKey = "Software\\Quillmark\\Corvella\\";
const std::string legacyKey = "Software\\Wexo\\Farrowlane\\";

std::string OfSize(std::size_t size) {
    std::string text = "[S]\r\nk=v\r\nfill=";
    text.append(size - text.size() - 2, 'x');
    return text + "\r\n";
}

}  // namespace

TEST_SUITE_BEGIN("settings in a file");

TEST_CASE("a setting is read from the current settings file") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(GetIniSetting("S", "k", "other") == "v");
}

TEST_CASE("a missing or empty value gives the default") {
    const Settings settings;
    settings.File("[S]\r\nempty=\r\n");
    CHECK(GetIniSetting("S", "empty", "d") == "d");
    CHECK(GetIniSetting("S", "missing", "d") == "d");
    CHECK(GetIniSetting("T", "k", "d") == "d");
    CHECK(GetIniSetting("T", "k").empty());
}

TEST_CASE("a line with a blank between the key and the = is not found under that key") {
    const Settings settings;
    settings.File("[S]\r\nk =v\r\n");
    CHECK(GetIniSetting("S", "k", "d") == "d");
    CHECK(GetIniSetting("S", "k ", "d") == "v");
}

TEST_CASE("a key that also occurs in a later section is found only in the section asked for") {
    const Settings settings;
    settings.File("[A]\r\nx=1\r\n[B]\r\nx=2\r\nk=3\r\n");
    CHECK(GetIniSetting("A", "x") == "1");
    CHECK(GetIniSetting("B", "x") == "2");
    CHECK(GetIniSetting("A", "k", "d") == "d");
}

TEST_CASE("the text of a file yields its default only where nothing is found") {
    const Settings settings;
    settings.File("[S]\r\nempty=\r\n");
    CHECK(ReadFromIniFile(location.CurrentFile, "S", "empty", "d").empty());
    CHECK(ReadFromIniFile(location.CurrentFile, "S", "missing", "d") == "d");
}

TEST_CASE("a section whose name ends in a backslash is also looked for without it") {
    const Settings settings;
    settings.File("[A]\r\nk=1\r\n[B\\]\r\nk=2\r\n[B]\r\nk=3\r\nm=4\r\n");
    CHECK(GetIniSetting("A\\", "k") == "1");
    CHECK(GetIniSetting("B\\", "k") == "2");
    CHECK(GetIniSetting("B\\", "m") == "4");
    CHECK(GetIniSetting("A\\\\", "k") == "");
}

TEST_CASE("one backslash at the end of a section's name is removed when a setting is written") {
    const Settings settings;
    CHECK(SetIniSetting("A\\", "k", "1", true));
    CHECK(settings.File() == "[A]\r\nk=1\r\n");
    CHECK(SetIniSetting("B\\\\", "k", "2", true));
    CHECK(settings.File() == "[A]\r\nk=1\r\n\r\n[B\\]\r\nk=2\r\n");
}

TEST_CASE("names compare without regard to case when the caller asks for it") {
    const Settings settings;
    settings.File("[Settings]\r\nCurProfile=Work\r\n");
    CHECK(GetIniSetting("SETTINGS", "curprofile", "d", false, true) == "Work");
    CHECK(GetIniSetting("SETTINGS", "curprofile", "d") == "d");
    CHECK(GetIniSetting("Settings", "CurProfile", "d") == "Work");
}

TEST_CASE("a number is the whole number with which its text begins, and written as decimal text") {
    const Settings settings;
    settings.File("[S]\r\na=12 px\r\nb=x\r\nc=2.5\r\n");
    CHECK(GetIniSettingLong("S", "a", 7) == 12);
    CHECK(GetIniSettingLong("S", "b", 7) == 0);
    CHECK(GetIniSettingLong("S", "c", 7) == 2);
    CHECK(GetIniSettingLong("S", "missing", -7) == -7);
    CHECK(SetIniSettingLong("S", "a", -42, true));
    CHECK(GetIniSettingLong("S", "a", 7) == -42);
    CHECK(settings.File() == "[S]\r\na=-42\r\nb=x\r\nc=2.5\r\n");
}

TEST_CASE("the operations named Default work on the base settings file, and the current one is current again after") {
    const Settings settings;
    settings.File("[S]\r\nk=base\r\n");
    settings.folder.Write("Work.ini", "[S]\r\nk=work\r\n");
    location.CurrentFile = settings.folder.Path("Work.ini");
    CHECK(GetIniSetting("S", "k") == "work");
    CHECK(GetIniSettingDefault("S", "k") == "base");
    CHECK(SetIniSettingDefault("S", "k", "new", true));
    CHECK(settings.File() == "[S]\r\nk=new\r\n");
    CHECK(settings.folder.Read("Work.ini") == "[S]\r\nk=work\r\n");
    CHECK(location.CurrentFile == settings.folder.Path("Work.ini"));
    CHECK(GetIniSettingDefault("S", "missing", "d") == "d");
}

TEST_CASE("with an empty file name every read gives its default and nothing is written") {
    location = {};
    CHECK(GetIniSetting("S", "k", "d") == "d");
    CHECK(ReadFromIniFile("", "S", "k", "d") == "d");
    CHECK_FALSE(SetIniSetting("S", "k", "v", true));
    CHECK_FALSE(WriteToIniFile("", "S", "k", "v", true));
}

TEST_CASE("a missing file reads as empty, is logged, and the first write creates it") {
    const Settings settings;
    location.CurrentFile = settings.folder.Path("Work.ini");
    {
        const DebugLog log;
        CHECK(GetIniSetting("S", "k", "d") == "d");
        CHECK(log.Text() == "File not found4:" + location.CurrentFile + "\r\n");
        CHECK(GetIniSetting("S", "k", "d") == "d");
        CHECK(log.Text() == "File not found4:" + location.CurrentFile + "\r\n");
    }
    CHECK(SetIniSetting("S", "k", "v", true));
    CHECK(settings.folder.Read("Work.ini") == "[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k") == "v");
}

TEST_CASE("an empty file is written as a missing one is") {
    const Settings settings;
    settings.File("");
    CHECK(GetIniSetting("S", "k", "d") == "d");
    CHECK(SetIniSetting("S", "k", "v", true));
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
}

TEST_CASE("a file in a folder that does not exist is not written") {
    const Settings settings;
    location.CurrentFile = settings.folder.Path("missing\\corvella.ini");
    CHECK(SetIniSetting("S", "k", "v", true));  // there was something to write
    CHECK(GetIniSetting("S", "k", "d") == "d");
    CHECK_FALSE(settings.folder.Exists("missing"));
}

TEST_CASE("a byte-order mark is passed over and does not come back") {
    const Settings settings;
    settings.File("\xFF\xFE[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k") == "v");
    SetIniSetting("S", "k", "w", true);
    CHECK(settings.File() == "[S]\r\nk=w\r\n");
}

TEST_CASE("entry and exit of writing are logged") {
    const Settings settings;
    location.CurrentFile = settings.folder.Path("Work.ini");
    const DebugLog log;
    SetIniSetting("S", "k", "v", false);
    CHECK(log.Text() == "<SetIniSetting>_\r\n <WriteToIniFile>_\r\n  File not found4:" + location.CurrentFile +
                            "\r\n </WriteToIniFile>\r\n</SetIniSetting>\r\n");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("what reaches the disk");

TEST_CASE("a file ending in several empty lines is written back ending in exactly one line break") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n\r\n\r\n\r\n");
    CHECK(SetIniSetting("S", "k", "w", true));
    CHECK(settings.File() == "[S]\r\nk=w\r\n");
}

TEST_CASE("writing a new key into the last section of a file that ends without a line break appends it") {
    const Settings settings;
    settings.File("[S]\r\na=1");
    SetIniSetting("S", "k", "v", true);
    CHECK(settings.File() == "[S]\r\na=1\r\nk=v\r\n");
}

TEST_CASE("a new key in a section followed by two empty lines and another section lands under the last setting") {
    const Settings settings;
    settings.File("[A]\r\na=1\r\n\r\n\r\n[B]\r\nb=1\r\n");
    SetIniSetting("A", "k", "v", true);
    // Two empty lines are three line breaks, of which two go to disk.
    CHECK(settings.File() == "[A]\r\na=1\r\nk=v\r\n\r\n[B]\r\nb=1\r\n");
    CHECK(GetIniSetting("A", "k") == "v");
}

TEST_CASE("writing the value that a key already has does not mark the file changed and causes no disk write") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n\r\n\r\n\r\n[T]");
    CHECK_FALSE(SetIniSetting("S", "k", "v", true));
    CHECK(settings.File() == "[S]\r\nk=v\r\n\r\n\r\n\r\n[T]");
    IniInit(false);
    CHECK(settings.File() == "[S]\r\nk=v\r\n\r\n\r\n\r\n[T]");
    CHECK(steps["make"] + steps["write"] + steps["open"] == 0);
}

TEST_CASE("writing an empty value for a key or section that does not exist leaves the file untouched") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n\r\n\r\n");
    CHECK_FALSE(SetIniSetting("S", "missing", "", true));
    CHECK_FALSE(SetIniSetting("T", "k", "", true));
    CHECK(settings.File() == "[S]\r\nk=v\r\n\r\n\r\n");
    CHECK(steps["make"] + steps["write"] + steps["open"] == 0);
}

TEST_CASE("writing an empty value deletes the key's line") {
    const Settings settings;
    settings.File("[S]\r\na=1\r\nk=v\r\nb=2\r\n");
    CHECK(SetIniSetting("S", "k", "", true));
    CHECK(settings.File() == "[S]\r\na=1\r\nb=2\r\n");
}

TEST_CASE("without flushing the text reaches the disk at the next set-up of the engine") {
    const Settings settings;
    CHECK(SetIniSetting("S", "k", "v", false));
    CHECK_FALSE(settings.folder.Exists("corvella.ini"));
    CHECK(GetIniSetting("S", "k") == "v");
    IniInit(true);
    CHECK_FALSE(settings.folder.Exists("corvella.ini"));
    IniInit(false);
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
}

TEST_CASE("a write that changes nothing tells of the changes that wait, and flushes them") {
    const Settings settings;
    CHECK(SetIniSetting("S", "k", "v", false));
    CHECK(SetIniSetting("S", "k", "v", true));
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
    CHECK_FALSE(SetIniSetting("S", "k", "v", true));
}

TEST_CASE("a file marked read-only stays as it is, and the change is dropped") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    SetFileAttributesA(location.CurrentFile.c_str(), FILE_ATTRIBUTE_READONLY);
    SetIniSetting("S", "k", "w", true);
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
    SetFileAttributesA(location.CurrentFile.c_str(), FILE_ATTRIBUTE_NORMAL);
    CHECK(platform::Err().Number() == 0);
}

TEST_CASE("a hidden file stays hidden") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    SetFileAttributesA(location.CurrentFile.c_str(), FILE_ATTRIBUTE_HIDDEN);
    SetIniSetting("S", "k", "w", true);
    CHECK(settings.File() == "[S]\r\nk=w\r\n");
    CHECK((GetFileAttributesA(location.CurrentFile.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
}

TEST_CASE("where nothing can be made beside the file it is overwritten in place, longer or shorter") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    CreateDirectoryA(settings.folder.Path("corvella.ini.CVOutlookAddIn.tmp").c_str(), nullptr);
    SetIniSetting("S", "k", "a longer value", true);
    CHECK(settings.File() == "[S]\r\nk=a longer value\r\n");
    SetIniSetting("S", "k", "w", true);
    CHECK(settings.File() == "[S]\r\nk=w\r\n");
    CHECK(steps["replace"] == 0);
    CHECK(steps["open"] == 2);
    CHECK(GetIniSetting("S", "k") == "w");
}

TEST_CASE("a value as long as the old one is written where it stands") {
    const Settings settings;
    settings.File("[S]\r\nk=1\r\nm=2\r\n");
    SetFileAttributesA(location.CurrentFile.c_str(), FILE_ATTRIBUTE_HIDDEN);
    CHECK(SetIniSetting("S", "k", "0", true));
    CHECK(settings.File() == "[S]\r\nk=0\r\nm=2\r\n");
    CHECK((GetFileAttributesA(location.CurrentFile.c_str()) & FILE_ATTRIBUTE_HIDDEN) != 0);
    CHECK(steps["write"] == 1);
    CHECK(steps["flush"] == 1);
    CHECK(steps["make"] + steps["replace"] == 0);
    CHECK(GetIniSetting("S", "k") == "0");
    CHECK(steps["read"] == 2);  // the loading and the verifying
}

TEST_CASE("values as long as the old ones that lie in two sectors are not written where they stand") {
    const Settings settings;
    const std::string fill(512, 'x');
    settings.File("[S]\r\nk=1\r\n" + fill + "\r\nm=2\r\n");
    CHECK(SetIniSetting("S", "m", "3", false));
    CHECK(SetIniSetting("S", "k", "4", true));
    CHECK(steps["make"] == 1);
    CHECK(steps["replace"] == 1);
    CHECK(settings.File() == "[S]\r\nk=4\r\n" + fill + "\r\nm=3\r\n");
}

TEST_CASE("a value that spans the border of two sectors is not written where it stands") {
    const Settings settings;
    const std::string fill(502, 'x');
    settings.File("[S]\r\n" + fill + "\r\nk=12\r\n");
    CHECK(settings.File().substr(511, 2) == "12");
    CHECK(SetIniSetting("S", "k", "32", true));
    CHECK(SetIniSetting("S", "k", "34", true));
    CHECK(steps["make"] == 0);
    CHECK(SetIniSetting("S", "k", "56", true));
    CHECK(steps["make"] == 1);
    CHECK(steps["replace"] == 1);
    CHECK(settings.File() == "[S]\r\n" + fill + "\r\nk=56\r\n");
}

TEST_CASE("what came from outside in as many bytes stays, and ours is written into it") {
    const Settings settings;
    const std::string fill(1000, 'x');
    settings.File("[S]\r\nk=1\r\n" + fill + "\r\nm=2\r\n");
    CHECK(SetIniSetting("S", "k", "0", false));
    settings.File("[S]\r\nk=1\r\n" + fill + "\r\nm=9\r\n");
    IniInit(false);  // writes without verifying
    CHECK(settings.File() == "[S]\r\nk=0\r\n" + fill + "\r\nm=9\r\n");
}

TEST_CASE("a file that another program has open for reading is written all the same") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    const HANDLE reader = CreateFileA(location.CurrentFile.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(reader != INVALID_HANDLE_VALUE);
    SetIniSetting("S", "k", "w", true);
    CloseHandle(reader);
    CHECK(settings.File() == "[S]\r\nk=w\r\n");
    CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
}

TEST_CASE("a file that cannot be read is not taken for an empty one and not overwritten") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    const HANDLE lock =
        CreateFileA(location.CurrentFile.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(lock != INVALID_HANDLE_VALUE);
    CHECK(GetIniSetting("S", "k", "d") == "d");
    CHECK_FALSE(SetIniSetting("T", "k", "w", true));
    CloseHandle(lock);
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k", "d") == "v");
}

TEST_CASE("a written text is verified, and written once more where the disk holds something else") {
    const Settings settings;
    CacheEntry entry;
    entry.changed = true;
    entry.fileName = location.CurrentFile;
    entry.text = "[S]\r\nk=v";
    static std::string file;
    file = location.CurrentFile;
    const auto overwriteBeforeReading = [](const char* step) {
        if (std::string(step) == "read") {
            // Of the same size and time: nobody has written it, the disk has.
            const HANDLE handle =
                CreateFileA(file.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
            FILETIME time;
            GetFileTime(handle, nullptr, nullptr, &time);
            DWORD written = 0;
            WriteFile(handle, "[X]", 3, &written, nullptr);
            SetFileTime(handle, nullptr, nullptr, &time);
            CloseHandle(handle);
        }
        return std::uint32_t{0};
    };
    platform::WatchFiles(overwriteBeforeReading);
    CHECK(Cache::WriteIniFile(entry, true));
    platform::WatchFiles(nullptr);
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
    CHECK_FALSE(entry.changed);
    CHECK(entry.stamp == platform::StampOf(file));
}

TEST_CASE("a file that cannot be written leaves its entry changed") {
    const Settings settings;
    CacheEntry entry;
    entry.changed = true;
    entry.fileName = settings.folder.Path("missing\\x.ini");
    entry.text = "[S]\r\nk=v";
    CHECK_FALSE(Cache::WriteIniFile(entry, true));
    CHECK(entry.changed);
}

TEST_CASE("what cannot be flushed is dropped, and the next read loads the file again") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    platform::WatchFiles([](const char* step) {
        const std::string name = step;
        return std::uint32_t{name == "read" ? 0u : 112u};  // the disk is full
    });
    CHECK(SetIniSetting("S", "k", "w", true));  // there was something to write
    platform::WatchFiles(CountSteps);
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
    IniInit(false);
    CHECK(settings.File() == "[S]\r\nk=v\r\n");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("the cache");

TEST_CASE("a file is loaded once for many reads") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\nm=w\r\n[T]\r\nk=x\r\n");
    for (int i = 0; i < 10; ++i) {
        CHECK(GetIniSetting("S", "k") == "v");
        CHECK(GetIniSetting("T", "k") == "x");
        CHECK(GetIniSetting("S", "none").empty());
    }
    CHECK(steps["read"] == 1);
}

TEST_CASE("the path of a file is not case-sensitive") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k") == "v");
    location.CurrentFile.back() = 'I';
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(steps["read"] == 1);
}

TEST_CASE("a 13th distinct file displaces the least recently used one, which is written back first if it was changed") {
    const Settings settings;
    const auto name = [&](int i) { return settings.folder.Path("f" + std::to_string(i) + ".ini"); };
    for (int i = 1; i <= 13; ++i)
        settings.folder.Write("f" + std::to_string(i) + ".ini", "[S]\r\nk=" + std::to_string(i));
    IniInit(false);
    steps.clear();
    for (int i = 1; i <= 12; ++i) CHECK(ReadFromIniFile(name(i), "S", "k") == std::to_string(i));
    CHECK(WriteToIniFile(name(2), "S", "k", "changed", false));
    CHECK(ReadFromIniFile(name(1), "S", "k") == "1");
    for (int i = 3; i <= 12; ++i) CHECK(ReadFromIniFile(name(i), "S", "k") == std::to_string(i));
    CHECK(steps["read"] == 12);
    CHECK(steps["replace"] == 0);
    // The second file is now the one used longest ago.
    CHECK(ReadFromIniFile(name(13), "S", "k") == "13");
    CHECK(settings.folder.Read("f2.ini") == "[S]\r\nk=changed\r\n");
    CHECK(steps["replace"] == 1);
    CHECK(steps["read"] == 13);
    // All others stay.
    CHECK(ReadFromIniFile(name(1), "S", "k") == "1");
    for (int i = 3; i <= 13; ++i) CHECK(ReadFromIniFile(name(i), "S", "k") == std::to_string(i));
    CHECK(steps["read"] == 13);
    // One that was not changed is displaced without a write.
    CHECK(ReadFromIniFile(name(2), "S", "k") == "changed");
    CHECK(steps["read"] == 14);
    CHECK(steps["replace"] == 1);
}

TEST_CASE("what another process writes is seen by the next read") {
    const Settings settings;
    settings.File("[S]\r\nk=old\r\n");
    CHECK(GetIniSetting("S", "k") == "old");
    settings.folder.Write("source", "[S]\r\nk=new value\r\n");
    CHECK(RunSettingsHelper({"put", location.CurrentFile, settings.folder.Path("source")}) == 0);
    CHECK(GetIniSetting("S", "k") == "new value");
    CHECK(RunSettingsHelper({"profile", location.CurrentFile, "S", "k", "newer"}) == 0);
    CHECK(GetIniSetting("S", "k") == "newer");
}

TEST_CASE("a foreign write of the same size within the same second is seen") {
    const Settings settings;
    settings.File("[S]\r\nk=0\r\n");
    for (int i = 1; i <= 9; ++i) {
        CAPTURE(i);
        CHECK(GetIniSetting("S", "k") == std::to_string(i - 1));
        settings.File("[S]\r\nk=" + std::to_string(i) + "\r\n");
    }
    CHECK(GetIniSetting("S", "k") == "9");
}

TEST_CASE("a file that another process deletes or makes is seen as such") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n");
    CHECK(GetIniSetting("S", "k", "d") == "v");
    DeleteFileA(location.CurrentFile.c_str());
    CHECK(GetIniSetting("S", "k", "d") == "d");
    settings.File("[S]\r\nk=w\r\n");
    CHECK(GetIniSetting("S", "k", "d") == "w");
}

TEST_CASE("the add-in's own flush is not taken for a change from outside") {
    const Settings settings;
    settings.File("[S]\r\nk=v\r\n\r\n\r\n\r\nm=1");
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(steps["read"] == 1);
    CHECK(SetIniSetting("S", "k", "w", true));
    steps.clear();
    CHECK(GetIniSetting("S", "k") == "w");
    CHECK(SetIniSetting("S", "m", "2", false));
    CHECK(GetIniSetting("S", "m") == "2");
    CHECK(steps["read"] == 0);
}

TEST_CASE("a foreign write right after the add-in's own is seen even if it leaves the size") {
    const Settings settings;
    CacheEntry entry;
    entry.changed = true;
    entry.fileName = location.CurrentFile;
    entry.text = "[S]\r\nk=1";
    CHECK(Cache::WriteIniFile(entry, false));
    const platform::FileStamp own = platform::StampOf(location.CurrentFile);
    CHECK(entry.stamp == own);
    settings.File("[S]\r\nk=2\r\n");
    CHECK(entry.stamp != platform::StampOf(location.CurrentFile));
}

TEST_CASE("before a write too, a text without unwritten changes is loaded again when the file changed outside") {
    const Settings settings;
    settings.File("[S]\r\na=1\r\n");
    CHECK(GetIniSetting("S", "a") == "1");
    settings.File("[S]\r\na=1\r\nforeign=1\r\n");
    CHECK(SetIniSetting("S", "a", "2", true));
    CHECK(settings.File() == "[S]\r\na=2\r\nforeign=1\r\n");
}

TEST_CASE("a changed text that is written back overwrites what came from outside in the same keys only") {
    const Settings settings;
    settings.File("[S]\r\na=1\r\n");
    CHECK(SetIniSetting("S", "a", "2", false));
    settings.File("[S]\r\na=9\r\nforeign=1\r\n");
    CHECK(SetIniSetting("S", "b", "3", true));
    CHECK(settings.File() == "[S]\r\na=2\r\nforeign=1\r\nb=3\r\n");
}

TEST_CASE("a read after a change from outside drops what was not written") {
    const Settings settings;
    settings.File("[S]\r\na=1\r\n");
    CHECK(SetIniSetting("S", "a", "2", false));
    settings.File("[S]\r\na=3\r\nforeign=1\r\n");
    CHECK(GetIniSetting("S", "a") == "3");
    IniInit(false);
    CHECK(settings.File() == "[S]\r\na=3\r\nforeign=1\r\n");
}

TEST_CASE("asking in one case first does not change what is found in the other") {
    const Settings settings;
    settings.File("[s]\r\nk=1\r\n[S]\r\nk=2\r\n");
    for (int round = 0; round < 2; ++round) {
        CHECK(GetIniSetting("S", "k") == "2");
        CHECK(GetIniSetting("S", "k", "", false, true) == "1");
        CHECK(GetIniSetting("s", "k") == "1");
    }
}

TEST_CASE("a write does not leave a section found where it no longer stands") {
    const Settings settings;
    settings.File("[A]\r\nk=12345\r\n[B]\r\nx=1\r\n");
    CHECK(GetIniSetting("B", "x") == "1");
    CHECK(SetIniSetting("A", "k", "123", false));
    CHECK(GetIniSetting("B", "x") == "1");
    CHECK(SetIniSetting("A", "k", "[B]", false));  // the first "[B]" is now here
    CHECK(GetIniSetting("B", "x", "d") == "d");
    CHECK(GetIniSetting("A", "k") == "[B]");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("the size limit");

TEST_CASE("a file of 512000 bytes is held, one of 512001 is left to Windows' own reader") {
    const Settings settings;
    settings.File(OfSize(512000));
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(steps["read"] == 1);
    settings.File(OfSize(512001));
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(GetIniSetting("s", "K") == "v");  // to Windows it is the same key
    CHECK(GetIniSetting("S", "none", "d") == "d");
    CHECK(steps["read"] == 1);
    settings.File(OfSize(512000));
    CHECK(GetIniSetting("s", "K").empty());
    CHECK(steps["read"] == 2);
}

TEST_CASE("a long value of a big file is read whole") {
    const Settings settings;
    settings.File(OfSize(600000));
    CHECK(ReadFromBigIniFile(location.CurrentFile, "S", "k", "d") == "v");
    CHECK(ReadFromBigIniFile(location.CurrentFile, "S", "none", "d") == "d");
    settings.File("[S]\r\nlong=" + std::string(40000, 'y') + "\r\n");
    CHECK(ReadFromBigIniFile(location.CurrentFile, "S", "long", "") == std::string(40000, 'y'));
}

TEST_CASE("MaxSize in the base settings file is the limit") {
    const Settings settings;
    settings.File("[Files]\r\nMaxSize=20000\r\n");
    settings.folder.Write("Work.ini", OfSize(20001));
    location.CurrentFile = settings.folder.Path("Work.ini");
    CHECK(GetIniSetting("s", "K").empty());
    IniInit(false);
    CHECK(GetIniSetting("s", "K") == "v");
    settings.folder.Write("Work.ini", OfSize(20000));
    CHECK(GetIniSetting("s", "K").empty());
}

TEST_CASE("a MaxSize of 5000 is taken as 512000") {
    Cache cache;
    cache.SetLimit(5000);
    CHECK(cache.Limit() == 512000);
    cache.SetLimit(10239);
    CHECK(cache.Limit() == 512000);
    cache.SetLimit(10240);
    CHECK(cache.Limit() == 10240);
    cache.SetLimit(-1);
    CHECK(cache.Limit() == 512000);

    const Settings settings;
    settings.File("[Files]\r\nMaxSize=5000\r\n");
    settings.folder.Write("Work.ini", OfSize(512000));
    location.CurrentFile = settings.folder.Path("Work.ini");
    IniInit(false);
    CHECK(GetIniSetting("s", "K").empty());
    CHECK(GetIniSetting("S", "k") == "v");
}

TEST_CASE("a file above the limit is written through the cache like any other") {
    const Settings settings;
    settings.File(OfSize(600000));
    CHECK(SetIniSetting("S", "k", "w", true));
    CHECK(settings.File().size() == 600000);
    CHECK(settings.File().substr(0, 12) == "[S]\r\nk=w\r\nfi");
    CHECK(GetIniSetting("S", "k") == "w");
}

TEST_CASE("a file above the limit takes no place from another") {
    const Settings settings;
    for (int i = 1; i <= 12; ++i) {
        settings.folder.Write(std::to_string(i), "[S]\r\nk=1\r\n");
        CHECK(ReadFromIniFile(settings.folder.Path(std::to_string(i)), "S", "k") == "1");
    }
    settings.File(OfSize(600000));
    CHECK(GetIniSetting("S", "k") == "v");
    steps.clear();
    for (int i = 1; i <= 12; ++i) CHECK(ReadFromIniFile(settings.folder.Path(std::to_string(i)), "S", "k") == "1");
    CHECK(steps["read"] == 0);
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("settings in the registry");

TEST_CASE("in registry mode a setting is a text value below the product's key, and no file is looked at") {
    const RegistryMode mode;
    CHECK(SetIniSetting("S", "k", "v", true));
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, ownKey + "S", "k").bytes == "v");
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, ownKey + "S", "k").type == REG_SZ);
    CHECK(GetIniSetting("S", "k") == "v");
    CHECK(GetIniSetting("s", "K") == "v");
    CHECK(SetIniSetting("S", "k", "", true));
    CHECK(GetIniSetting("S", "k", "d") == "d");
    CHECK(SetIniSettingLong("S", "n", 5, false));
    CHECK(GetIniSettingLong("S", "n", 1) == 5);
    CHECK(GetIniSettingLong("S", "none", 1) == 1);
}

TEST_CASE("a result that equals the default is replaced by what the legacy location holds") {
    const RegistryMode mode;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, legacyKey + "S", "k", "legacy");
    CHECK(GetIniSetting("S", "k") == "");
    CHECK(GetIniSetting("S", "k", "", true) == "legacy");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, ownKey + "S", "k", "own");
    CHECK(GetIniSetting("S", "k", "", true) == "own");
    CHECK(GetIniSetting("S", "k", "own", true) == "legacy");
    CHECK(GetIniSetting("S", "k", "own", false) == "own");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, legacyKey + "S", "n", "5");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, ownKey + "S", "n", "0");
    CHECK(GetIniSettingLong("S", "n", 0) == 0);
    CHECK(GetIniSettingLong("S", "n", 0, true) == 5);
}

TEST_CASE("a missing value with a default does not equal it, so the legacy location is not asked") {
    const RegistryMode mode;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, legacyKey + "S", "k", "legacy");
    CHECK(GetIniSetting("S", "k", "d", true) == "d");
}

TEST_CASE("a result that equals the default and has nothing in the legacy location is the default") {
    const RegistryMode mode;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, ownKey + "S", "k", "d");
    CHECK(GetIniSetting("S", "k", "d", true) == "d");
}

TEST_CASE("nothing is ever written to the legacy location") {
    const RegistryMode mode;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, legacyKey + "S", "k", "legacy");
    CHECK(SetIniSetting("S", "k", "v", true));
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, legacyKey + "S", "k").bytes == "legacy");
    CHECK(SetIniSetting("T", "k", "v", true));
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, legacyKey + "T"));
}

TEST_CASE("the operations named Default use the registry too") {
    const RegistryMode mode;
    CHECK(SetIniSettingDefault("S", "k", "v", true));
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, ownKey + "S", "k").bytes == "v");
    CHECK(GetIniSettingDefault("S", "k") == "v");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("properties of files");

TEST_CASE("a flushed write gives its value back, to this engine and to a fresh one, and leaves every other line") {
    const Settings settings;
    std::minstd_rand random(11);
    const auto any = [&](std::initializer_list<const char*> choices) {
        return std::string(*(choices.begin() + static_cast<std::ptrdiff_t>(random() % choices.size())));
    };
    const auto withoutEmptyLines = [](std::string text) {
        for (std::size_t at; (at = text.find("\r\n\r\n")) != std::string::npos;) text.erase(at, 2);
        return text.starts_with("\r\n") ? text.substr(2) : text;
    };
    for (int round = 0; round < 150; ++round) {
        std::string text;
        for (int i = static_cast<int>(random() % 12); i > 0; --i) {
            text += any({"[A]\r\n", "[B]\r\n", "x=1\r\n", "y=2\r\n", "\r\n", "\r\n", ";z\r\n", "lone\nline\r\n"});
        }
        settings.File(text);
        const std::string section = any({"A", "B", "C"}), key = any({"x", "y", "z"}), value = any({"1", " v ", "\xE4"});
        CAPTURE(text);
        CAPTURE(section);
        CAPTURE(key);
        std::string expected = text.empty() ? std::string(IniText::missingFile) : text;
        const bool changes = IniText::Write(expected, section, key, value);
        CHECK(SetIniSetting(section, key, value, true) == changes);
        CHECK(GetIniSetting(section, key) == value);
        const std::string file = settings.File();
        if (!changes) {
            CHECK(file == text);
            continue;
        }
        CHECK(file == IniText::OnDisk(expected));
        CHECK(withoutEmptyLines(file) == withoutEmptyLines(expected + "\r\n"));
        IniInit(false);
        CHECK(GetIniSetting(section, key) == value);
        const platform::FileStamp before = platform::StampOf(location.CurrentFile);
        CHECK_FALSE(SetIniSetting(section, key, value, true));
        CHECK(platform::StampOf(location.CurrentFile) == before);
    }
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("a crash or a full disk while writing");

namespace {

// Long enough to take several blocks, with two values for the one key that is written.
std::string LongText(const std::string& value) {
    std::string text = "[Fill]\r\n";
    for (int i = 0; text.size() < 200000; ++i) text += "key" + std::to_string(i) + "=some value of it\r\n";
    return text + "\r\n[Kill]\r\nk=" + value + "\r\n";
}

int failAt = 0;
int stepsSeen = 0;
std::uint32_t FailAtStep(const char*) { return ++stepsSeen == failAt ? 112u : 0u; }
std::uint32_t FailFromStep(const char*) { return ++stepsSeen >= failAt ? 112u : 0u; }

}  // namespace

namespace {

struct KilledAtEachStep {
    int oldOnes = 0;
    int newOnes = 0;
};
KilledAtEachStep KillAtEachStep(const std::string& value) {
    const Settings settings;
    const std::string before = LongText("old"), after = LongText(value);
    KilledAtEachStep left;
    int step = 0;
    for (DWORD ended = 99; ended == 99;) {
        ++step;
        CAPTURE(step);
        REQUIRE(step < 100);
        settings.File(before);
        ended = RunSettingsHelper({"kill", std::to_string(step), location.CurrentFile, value});
        const bool isOld = settings.File() == before, isNew = settings.File() == after;
        CHECK((isOld || isNew));
        ++(isOld ? left.oldOnes : left.newOnes);
        CHECK(RunSettingsHelper({"kill", "0", location.CurrentFile, "healed"}) == 0);
        CHECK(settings.File() == LongText("healed"));
        CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
        if (ended != 99) CHECK(ended == 0);
    }
    return left;
}

}  // namespace

TEST_CASE("killed at any step of writing, a process leaves the old or the new file, and the next write works") {
    const KilledAtEachStep left = KillAtEachStep("a new value");
    // Reading, making, four blocks, flushing and replacing come before the new file, reading it back after.
    CHECK(left.oldOnes == 9);
    CHECK(left.newOnes == 3);
}

TEST_CASE("killed at any step of writing a value as long as the old one, a process leaves the old or the new file") {
    const KilledAtEachStep left = KillAtEachStep("new");
    // Reading, opening and the one write come before the new file, flushing and reading it back after.
    CHECK(left.oldOnes == 3);
    CHECK(left.newOnes == 3);
}

TEST_CASE("killed at any step of writing a file that is not there yet, a process leaves none or the new one") {
    const Settings settings;
    int step = 0, none = 0;
    for (DWORD ended = 99; ended == 99;) {
        ++step;
        REQUIRE(step < 100);
        DeleteFileA(location.CurrentFile.c_str());
        ended = RunSettingsHelper({"kill", std::to_string(step), location.CurrentFile, "v"});
        const bool isThere = settings.folder.Exists("corvella.ini");
        if (isThere) CHECK(settings.File() == "[Kill]\r\nk=v\r\n");
        none += isThere ? 0 : 1;
    }
    CHECK(none == 4);
    CHECK(step == 6);
}

TEST_CASE("a disk that refuses any one step leaves the old or the new file and nothing beside it") {
    const Settings settings;
    const std::string before = LongText("old");
    // A longer text is given up where a block or the flush is refused, one of the same length is then put beside.
    for (const auto& row : {std::pair{"a new value", 5}, std::pair{"new", 0}}) {
        const char* const value = row.first;
        CAPTURE(value);
        const std::string after = LongText(value);
        int oldOnes = 0;
        for (failAt = 1, stepsSeen = failAt; stepsSeen >= failAt; ++failAt) {
            CAPTURE(failAt);
            REQUIRE(failAt < 100);
            settings.File(before);
            IniInit(false);
            CHECK(GetIniSetting("Kill", "k") == "old");
            stepsSeen = 0;
            platform::WatchFiles(FailAtStep);
            SetIniSetting("Kill", "k", value, true);
            platform::WatchFiles(nullptr);
            const std::string left = settings.File();
            CHECK((left == before || left == after));
            oldOnes += left == before ? 1 : 0;
            CHECK(GetIniSetting("Kill", "k") == (left == before ? "old" : value));
            CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
        }
        CHECK(failAt > 4);
        CHECK(oldOnes == row.second);
    }
}

TEST_CASE("a disk that refuses every step from one on leaves the old or the new file") {
    const Settings settings;
    const std::string before = LongText("old");
    for (const char* const value : {"a new value", "new"}) {
        CAPTURE(value);
        const std::string after = LongText(value);
        for (failAt = 1, stepsSeen = failAt; stepsSeen >= failAt; ++failAt) {
            CAPTURE(failAt);
            REQUIRE(failAt < 100);
            settings.File(before);
            IniInit(false);
            CHECK(GetIniSetting("Kill", "k") == "old");
            stepsSeen = 0;
            platform::WatchFiles(FailFromStep);
            SetIniSetting("Kill", "k", value, true);
            platform::WatchFiles(nullptr);
            const std::string left = settings.File();
            CHECK((left == before || left == after));
            CHECK(GetIniSetting("Kill", "k") == (left == before ? "old" : value));
            DeleteFileA(settings.folder.Path("corvella.ini.CVOutlookAddIn.tmp").c_str());
        }
        CHECK(failAt > 4);
    }
}

TEST_CASE("where a file must be overwritten in place, a disk too full for the longer text leaves the old one") {
    const Settings settings;
    CreateDirectoryA(settings.folder.Path("corvella.ini.CVOutlookAddIn.tmp").c_str(), nullptr);
    const std::string before = LongText("old");
    settings.File(before);
    CHECK(GetIniSetting("Kill", "k") == "old");
    platform::WatchFiles([](const char* step) { return std::string(step) == "end" ? 112u : std::uint32_t{0}; });
    SetIniSetting("Kill", "k", "a new value", true);
    platform::WatchFiles(nullptr);
    CHECK(settings.File() == before);
    CHECK(GetIniSetting("Kill", "k") == "old");
}

TEST_SUITE_END();
