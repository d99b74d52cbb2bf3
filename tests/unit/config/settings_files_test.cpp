#include <doctest.h>

#include "config/SettingsFiles.h"

using namespace SettingsFiles;

TEST_CASE("the base settings file has another name in a folder that is called PageRelay") {
    CHECK(BaseFileIn("C:\\x\\PageRelay\\") == "C:\\x\\PageRelay\\settings.ini");
    CHECK(BaseFileIn("C:\\x\\pagerelay\\") == "C:\\x\\pagerelay\\settings.ini");
    CHECK(BaseFileIn("C:\\Data\\Corvella\\") == "C:\\Data\\Corvella\\corvella.ini");
}

TEST_CASE("no profile, the default one and the standard one are the base settings file") {
    for (const char* profile : {"", "Corvella", "standard", "Standard.INI"}) CHECK(IsBaseProfile(profile, "Corvella"));
    for (const char* profile : {"corvella", "Work", "C:\\standard.ini"})
        CHECK_FALSE(IsBaseProfile(profile, "Corvella"));
}

TEST_CASE("a profile's file has the ending of settings files once, and a folder of its own where it names one") {
    CHECK(ProfileFileIn("C:\\x\\", "Work") == "C:\\x\\Work.ini");
    CHECK(ProfileFileIn("C:\\x\\", "Home.INI") == "C:\\x\\Home.INI");
    CHECK(ProfileFileIn("C:\\x\\", "D:\\Home") == "D:\\Home.ini");
}
