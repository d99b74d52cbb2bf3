#include <doctest.h>

#include "support/FilePaths.h"

using Files::AppFolderOf;

TEST_CASE("the add-in's folder ends in one backslash") {
    CHECK(AppFolderOf("C:\\Programs\\Corvella") == "C:\\Programs\\Corvella\\");
    CHECK(AppFolderOf("C:\\Programs\\Corvella\\") == "C:\\Programs\\Corvella\\");
}
TEST_CASE("a development tree is its parent folder") {
    CHECK(AppFolderOf("C:\\work\\j Projects\\addin\\bin") == "C:\\work\\");
    CHECK(AppFolderOf("C:\\work\\j Projects") == "C:\\work\\");
    CHECK(AppFolderOf("C:\\j Projects\\x\\j Projects\\y") == "C:\\");
}
TEST_CASE("a folder whose name only resembles the development tree's is left whole") {
    CHECK(AppFolderOf("C:\\work\\j ProjectsOld\\x") == "C:\\work\\j ProjectsOld\\x\\");
    CHECK(AppFolderOf("C:\\work\\my j Projects\\x") == "C:\\work\\my j Projects\\x\\");
    CHECK(AppFolderOf("C:\\work\\J projects\\x") == "C:\\work\\J projects\\x\\");
}
TEST_CASE("where no application path is known there is no folder") { CHECK(AppFolderOf("").empty()); }
