#include "config/PathRules.h"

#include <doctest.h>

#include <set>

using namespace WindowsMisc;

namespace {

std::string Temporary(const std::string& named, const std::set<std::string>& folders = {},
                      const std::string& windows = "D:\\WINNT\\") {
    return TemporaryFolderFrom(
        named, windows,
        [](const std::string& name) { return name == "TEMP"  ? "C:\\Temp"
                                             : name == "BAD" ? "%WORSE%\\x"
                                                             : ""; },
        [&](const std::string& folder) { return folders.contains(folder); });
}

}  // namespace

TEST_CASE("the user name stands between the second and the third backslash of the AppData path") {
    CHECK(UserNameIn("C:\\Users\\Maria\\AppData\\Roaming\\") == "Maria");
    CHECK(UserNameIn("C:\\Documents and Settings\\Tom\\Application Data\\") == "Tom");
}

TEST_CASE("an AppData path whose user folder name has two characters gives the user name Tobrin") {
    CHECK(UserNameIn("C:\\Users\\Al\\AppData\\Roaming\\") == "Tobrin");
    CHECK(UserNameIn("C:\\Users\\Ali\\AppData\\Roaming\\") == "Ali");
}

TEST_CASE("an AppData path of too few folders gives the user name Tobrin") {
    CHECK(UserNameIn("C:\\Users\\Maria") == "Tobrin");
    CHECK(UserNameIn("C:\\Data\\") == "Tobrin");
    CHECK(UserNameIn("") == "Tobrin");
}

TEST_CASE("the temporary folder is the one named, with one backslash at its end") {
    CHECK(Temporary("C:\\Users\\Maria\\Temp") == "C:\\Users\\Maria\\Temp\\");
    CHECK(Temporary("C:\\Users\\Maria\\Temp\\") == "C:\\Users\\Maria\\Temp\\");
}

TEST_CASE("a variable that nobody expanded is replaced by its value") {
    CHECK(Temporary("%TEMP%") == "C:\\Temp\\");
    CHECK(Temporary("%TEMP%\\") == "C:\\Temp\\");
}

TEST_CASE("where a percent sign is left, temp in the Windows folder takes its place, or else in the drive's root") {
    CHECK(Temporary("%BAD%", {"D:\\WINNT\\temp", "D:\\temp"}) == "D:\\WINNT\\temp\\");
    CHECK(Temporary("%BAD%", {"D:\\temp"}) == "D:\\temp\\");
    CHECK(Temporary("%TEMP%\\sub%X%", {"D:\\temp"}) == "D:\\temp\\");
}

TEST_CASE("where neither is there, the drive's root is the temporary folder") { CHECK(Temporary("%BAD%") == "D:\\"); }

TEST_CASE("where not even the Windows folder is known there is no temporary folder") {
    CHECK(Temporary("%BAD%", {"temp", "\\temp"}, "").empty());
    CHECK(Temporary("C:\\x", {}, "") == "C:\\x\\");
}

TEST_CASE("where the system names no temporary folder, or a variable without a value, the same replaces it") {
    CHECK(Temporary("", {"D:\\WINNT\\temp"}) == "D:\\WINNT\\temp\\");
    CHECK(Temporary("%UNSET%", {"D:\\temp"}) == "D:\\temp\\");
}
