#include <doctest.h>
#include <windows.h>

#include "support/Files.h"

TEST_CASE("the add-in's folder is that of the module that the code is linked into") {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string folder = Files::AppFolder();
    CHECK(folder == std::string(path).substr(0, std::string(path).rfind('\\') + 1));
    CHECK(folder.back() == '\\');
}

TEST_CASE("another application path can be plugged in, and taken out again") {
    const std::string own = Files::AppFolder();
    const bool hadOne =
        Files::Plug({.applicationPath = [] { return std::string("C:\\work\\j Projects\\x"); }}).applicationPath !=
        nullptr;
    CHECK_FALSE(hadOne);
    CHECK(Files::AppFolder() == "C:\\work\\");
    const bool hadThis = Files::Plug({}).applicationPath != nullptr;
    CHECK(hadThis);
    CHECK(Files::AppFolder() == own);
}
