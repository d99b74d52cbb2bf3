// The file in which started programs note themselves, as the windowed stand-in reads it.
#include "outlook/program/StartRecord.h"

#include <doctest.h>

#include "testing/TempFolder.h"

using program::NotedStart;
using program::ReadStarts;

TEST_CASE("a start that a program noted is read with its command line, show state and note") {
    const TempFolder folder;
    folder.Write("record.txt",
                 "show=2\tlist=;1;2\tnote=2 things\tcommand=\"C:\\\\a.exe\" go\r\nshow=-1\tcommand=b\r\n");
    const std::vector<NotedStart> starts = ReadStarts(folder.Path("record.txt"));
    REQUIRE(starts.size() == 2);
    CHECK(starts[0].commandLine == "\"C:\\a.exe\" go");
    CHECK(starts[0].show == 2);
    CHECK(starts[0].note == "2 things");
    CHECK(starts[0].fields.at("list") == ";1;2");
    CHECK(starts[1].commandLine == "b");
    CHECK(starts[1].show == -1);
    CHECK(starts[1].note.empty());
}

TEST_CASE("tabs, line breaks and backslashes of a noted value are read as they were") {
    const TempFolder folder;
    folder.Write("record.txt", "command=a\\tb\\r\\nc\\\\d\r\n");
    const std::vector<NotedStart> starts = ReadStarts(folder.Path("record.txt"));
    REQUIRE(starts.size() == 1);
    CHECK(starts[0].commandLine == "a\tb\r\nc\\d");
    CHECK(starts[0].show == -1);
}

TEST_CASE("a line that is still being written is no start yet") {
    const TempFolder folder;
    folder.Write("record.txt", "command=a\r\ncommand=b");
    CHECK(ReadStarts(folder.Path("record.txt")).size() == 1);
}

TEST_CASE("no record has no starts, and neither has a missing or an empty one") {
    const TempFolder folder;
    folder.Write("empty.txt", "");
    CHECK(ReadStarts("").empty());
    CHECK(ReadStarts(folder.Path("missing.txt")).empty());
    CHECK(ReadStarts(folder.Path("empty.txt")).empty());
}
