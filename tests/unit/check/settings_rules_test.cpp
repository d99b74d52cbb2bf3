#include "check/SettingsRules.h"

#include <doctest.h>

#include <cstdint>
#include <string>

using namespace Check;

TEST_CASE("the settings' folder is the registered one, else that in AppData, else another") {
    CHECK(SettingsFolder(0, "D:\\Ini", "C:\\Data", "C:\\Sys\\") == "D:\\Ini\\");
    CHECK(SettingsFolder(0, "Ini", "C:\\Data", "C:\\Sys\\") == "C:\\Data\\Corvella\\");
    CHECK(SettingsFolder(2, "D:\\Ini", "C:\\Data", "C:\\Sys\\") == "C:\\Data\\Corvella\\");
    CHECK(SettingsFolder(0, "", "", "C:\\Sys\\") == "C:\\Sys\\");
    CHECK(SettingsFolder(1, "", "C:\\Data", "C:\\Sys\\") == "C:\\Sys\\");
}

TEST_CASE("a profile is a file in the settings' folder, or the base file itself") {
    const std::string folder = "C:\\Data\\Corvella\\";
    CHECK(ProfileFile("[Settings]\r\nCurProfile=Work\r\n", folder) == folder + "Work.ini");
    CHECK(ProfileFile("[Settings]\r\nLastProfile=Home.INI\r\n", folder) == folder + "Home.INI");
    CHECK(ProfileFile("[Settings]\r\ncurprofile=D:\\Home.ini\r\n", folder) == "D:\\Home.ini");
    CHECK(ProfileFile("[Settings]\r\nCurProfile=Standard\r\n", folder) == "");
    CHECK(ProfileFile("[Settings]\r\nCurProfile=Corvella\r\n", folder) == "");
    CHECK(ProfileFile("", folder) == "");
}

TEST_CASE("what the settings take from the forms is listed by name") {
    const std::string text =
        "[FormOlAddInOptions]\r\nHide=Frame3;ComboProfiles\r\nDisable=TextDelay\r\n[FormQuestion]\r\nHide=Check1\r\n";
    CHECK(RestrictedControls(text, "Hide") == std::vector<std::string>{"Frame3", "ComboProfiles", "Check1"});
    CHECK(RestrictedControls(text, "Disable") == std::vector<std::string>{"TextDelay"});
    CHECK(RestrictedControls("", "Hide").empty());
}

TEST_CASE("missing texts are those that only the English file has") {
    const std::string english = "head\r\n[A]\r\nx=1\r\ny=2\r\n[B]\r\nx=3\r\n";
    CHECK(MissingKeys(english, english) == 0);
    CHECK(MissingKeys(english, "[A]\r\nx=\r\n[B]\r\n") == 2);
    CHECK(MissingKeys(english, "") == 3);
    CHECK(MissingKeys("", english) == 0);
}

TEST_CASE("a language file needs its code page only for letters beyond ASCII") {
    CHECK(CodePageOf("[Info]\r\nCharSet=238\r\n") == 0);
    CHECK(CodePageOf("[Info]\r\nCharSet=238\r\nx=\xB3\r\n") == 1250);
    CHECK(CodePageOf("[Info]\r\nCharSet=0\r\nx=\xE4\r\n") == 1252);
    CHECK(CodePageOf("x=\xE4\r\n") == 0);
}

TEST_CASE("each character set of a language file has its code page, and another one has none") {
    struct Known {
        const char* charSet;
        std::uint32_t page;
    };
    for (const Known& known : {Known{"0", 1252},
                               {"238", 1250},
                               {"204", 1251},
                               {"161", 1253},
                               {"162", 1254},
                               {"186", 1257},
                               {"1", 0},
                               {"", 0}}) {
        CAPTURE(known.charSet);
        CHECK(CodePageOf(std::string("[Info]\r\nCharSet=") + known.charSet + "\r\nx=\xE4\r\n") == known.page);
    }
}
