// The list of profiles, read from real folders.
#include <doctest.h>
#include <windows.h>

#include <algorithm>

#include "bridge/Profiles.h"
#include "config/IniFile.h"
#include "config/InifileCV.h"
#include "platform/Err.h"
#include "testing/DebugLog.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"

namespace {

struct Fixture {
    Fixture() {
        platform::Err().Clear();
        InifileCV::state = {};
        InifileCV::state.IniFiles = folder.Path();
        InifileCV::state.IniFilesRead = true;
    }
    ~Fixture() {
        InifileCV::state = {};
        IniFile::location = {};
    }
    // In the order of their names; Windows lists files as the disk does.
    [[nodiscard]] static std::vector<std::string> All() {
        std::vector<std::string> list{"left over"};
        Profiles::GetProfiles(list);
        std::sort(list.begin(), list.end());
        return list;
    }
    [[nodiscard]] static std::vector<std::string> Named() {
        std::vector<std::string> list = All();
        std::erase(list, "");
        return list;
    }
    void Profile(const std::string& file) const { folder.Write(file, "[Settings]\r\nPhone=1\r\n"); }

    PrivateRegistry registry;
    DebugLog log;
    TempFolder folder;
};

using Names = std::vector<std::string>;

}  // namespace

TEST_CASE_FIXTURE(Fixture, "every ini file with a settings section is a profile, corvella.ini like any other") {
    Profile("corvella.ini");
    Profile("My Phone.ini");
    Profile("\xC4pfel.INI");
    Profile("letter.txt");
    CHECK(Named() == Names{"My Phone", "corvella", "\xC4pfel"});
    CHECK(log.Text().starts_with("<GetProfiles>_\r\n "));
    CHECK(log.Text().ends_with("\r\n</GetProfiles>\r\n"));
}

TEST_CASE_FIXTURE(Fixture, "what is no profile stays in the list as an empty text") {
    Profile("corvella.ini");
    folder.Write("other.ini", "[Other]\r\n");
    Profile("defaults.ini");
    Profile("phone_2.ini");
    Profile("phone_3.ini");
    Profile("kestrelbox.ini");
    CHECK(All() == Names{"", "", "", "", "", "corvella"});
}

TEST_CASE_FIXTURE(Fixture, "Defaults.ini with a capital letter is a profile if it has settings") {
    Profile("Defaults.ini");
    CHECK(Named() == Names{"Defaults"});
    folder.Write("Defaults.ini", "[Other]\r\n");
    CHECK(Named().empty());
}

TEST_CASE_FIXTURE(Fixture, "a file whose settings begin after the first 500 characters is not listed") {
    folder.Write("late.ini", std::string(500, ';') + "[Settings]\r\n");
    folder.Write("split.ini", std::string(495, ';') + "[Settings]\r\n");
    folder.Write("early.ini", std::string(490, ';') + "[Settings]\r\n");
    CHECK(Named() == Names{"early"});
}

TEST_CASE_FIXTURE(Fixture, "a file that cannot be read is passed over, and those behind it are listed") {
    for (const char* file : {"a.ini", "b.ini", "c.ini"}) Profile(file);
    const HANDLE locked =
        CreateFileA(folder.Path("b.ini").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(locked != INVALID_HANDLE_VALUE);
    CHECK(Named() == Names{"a", "c"});
    CloseHandle(locked);
    CHECK(Named() == Names{"a", "b", "c"});
    CHECK_FALSE(platform::Err());
}

TEST_CASE_FIXTURE(Fixture, "a folder that is named like a profile is none") {
    Profile("a.ini");
    CreateDirectoryA(folder.Path("b.ini").c_str(), nullptr);
    CHECK(All() == Names{"a"});
}

TEST_CASE_FIXTURE(Fixture, "profiles are files also where the settings are kept in the registry") {
    Profile("a.ini");
    IniFile::location.StorageMode = IniFile::inRegistry;
    CHECK(Named() == Names{"a"});
}

TEST_CASE_FIXTURE(Fixture, "a settings folder without ini files, and one that is gone, hold no profiles") {
    CHECK(All().empty());
    InifileCV::state.IniFiles = folder.Path("gone\\");
    CHECK(All().empty());
}
