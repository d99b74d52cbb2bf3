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

TEST_CASE("the name part of a path without a folder is the whole path") {
    CHECK(Files::GetFileNamePart("abc") == "abc");
    CHECK(Files::GetFileNamePart("C:\\a\\b.txt") == "b.txt");
    CHECK(Files::GetFileNamePart("C:\\a\\").empty());
}

TEST_CASE("the folder part of a path has no backslash at its end and may be empty") {
    CHECK(Files::FolderPart("C:\\a\\b.txt") == "C:\\a");
    CHECK(Files::FolderPart("C:\\b.txt") == "C:");
    CHECK(Files::FolderPart("b.txt").empty());
}

TEST_CASE("quotes come off around a path without blanks only") {
    CHECK(Files::WithoutQuotesAround("\"C:\\a\"") == "C:\\a");
    CHECK(Files::WithoutQuotesAround("\"C:\\a b\"") == "\"C:\\a b\"");
    CHECK(Files::WithoutQuotesAround("\"C:\\a") == "\"C:\\a");
    CHECK(Files::WithoutQuotesAround("\"") == "\"");
    CHECK(Files::WithoutQuotesAround("\"\"").empty());
}

TEST_CASE("a path looks like a folder when no dot stands behind its last backslash") {
    CHECK(Files::LooksLikeFolder("C:\\a.b\\c"));
    CHECK(Files::LooksLikeFolder("C:\\a\\"));
    CHECK_FALSE(Files::LooksLikeFolder("C:\\a\\b.txt"));
    CHECK_FALSE(Files::LooksLikeFolder("abc"));
}

TEST_CASE("a path that can be written has _ for every ? and /") {
    CHECK(Files::WritablePath("C:\\a?b/c?.txt") == "C:\\a_b_c_.txt");
}
