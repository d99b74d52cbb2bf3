#include <doctest.h>

#include "bridge/ProfileNames.h"

using namespace ProfileNames;

TEST_CASE("a profile is named by its file without the ending, which is not case-sensitive") {
    CHECK(ProfileOf("corvella.ini") == "corvella");
    CHECK(ProfileOf("My Phone.INI") == "My Phone");
    CHECK(ProfileOf("no ending") == "no ending");
    CHECK(ProfileOf("ini").ends_with("ini"));
    CHECK(ProfileOf(".ini").empty());
}

TEST_CASE("a file whose name ends in .ini twice is named whole, so that the profile is that file and no other") {
    for (const char* file : {"x.ini.ini", "X.INI.ini", "x.ini.INI"}) {
        CAPTURE(file);
        CHECK(ProfileOf(file) == file);
    }
    CHECK(PathOf("C:\\s\\", ProfileOf("x.ini.ini")) == "C:\\s\\x.ini.ini");
}

TEST_CASE("the path of a profile ends in .ini, which is not added twice") {
    CHECK(PathOf("C:\\s\\", "corvella") == "C:\\s\\corvella.ini");
    CHECK(PathOf("C:\\s\\", "x.ini") == "C:\\s\\x.ini");
    CHECK(PathOf("C:\\s\\", "x.INI") == "C:\\s\\x.INI.ini");
}

TEST_CASE("the defaults are no profile, but a file that is named like them in another case may be") {
    CHECK(IsNone("C:\\s\\defaults.ini"));
    CHECK_FALSE(IsNone("C:\\s\\Defaults.ini"));
    CHECK_FALSE(IsNone("C:\\s\\mydefaults.ini"));
}

TEST_CASE("files of the earlier product are no profiles, in any case and anywhere in the path") {
    CHECK(IsNone("C:\\s\\Kestrelbox.ini"));
    CHECK(IsNone("C:\\KESTRELBOX data\\corvella.ini"));
    CHECK_FALSE(IsNone("C:\\s\\my kestrelbox.ini"));
}

TEST_CASE("files that belong to another profile are no profiles") {
    CHECK(IsNone("C:\\s\\phone_2.ini"));
    CHECK(IsNone("C:\\s\\phone_3.ini"));
    CHECK_FALSE(IsNone("C:\\s\\phone_4.ini"));
    CHECK_FALSE(IsNone("C:\\s\\phone_2.INI"));
    CHECK_FALSE(IsNone("C:\\s\\phone2.ini"));
}

TEST_CASE("settings are a section of that name in any case") {
    CHECK(HasSettings("[Settings]\r\nx=1"));
    CHECK(HasSettings("; comment\r\n[SETTINGS]"));
    CHECK_FALSE(HasSettings("[Setting]"));
    CHECK_FALSE(HasSettings(""));
}

TEST_CASE("settings have to stand as a whole within the first 500 characters, a byte-order mark not counted") {
    CHECK(HasSettings(std::string(490, 'x') + "[Settings]"));
    CHECK_FALSE(HasSettings(std::string(491, 'x') + "[Settings]"));
    CHECK(HasSettings("\xFF\xFE" + std::string(490, 'x') + "[Settings]"));
    CHECK((std::string("\xFF\xFE") + std::string(490, 'x') + "[Settings]").size() == bytesToRead);
}
