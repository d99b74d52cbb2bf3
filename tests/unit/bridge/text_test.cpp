#include <doctest.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "bridge/ChangedItems.h"
#include "bridge/MainAppCommand.h"

using namespace ChangedItems;

TEST_CASE("a list that begins with its first item begins with a separator and has none at its end") {
    CHECK(Add("", "0A") == ";0A");
    CHECK(Add(";0A", "0B") == ";0A;0B");
}

TEST_CASE("a list without a separator in front keeps having none") { CHECK(Add("0A", "0B") == "0A;0B"); }

TEST_CASE("an item is listed wherever it stands in the list") {
    for (const char* list : {";0A", ";0A;0B", ";0B;0A", ";0B;0A;0C", "0A", "0A;0B", "0B;0A;", ";;0A;;"}) {
        CAPTURE(list);
        CHECK(IsListed(list, "0A"));
    }
}

TEST_CASE("an item that is only part of another one's id is not listed") {
    for (const char* list : {"", ";", ";0AB", ";B0A", "0A0A", ";0a", "0B;0C"}) {
        CAPTURE(list);
        CHECK_FALSE(IsListed(list, "0A"));
    }
}

TEST_CASE("an id of a long list is found and added without a limit") {
    std::string list;
    for (int i = 0; i < 5000; ++i) list = Add(list, std::to_string(i));
    CHECK(IsListed(list, "4999"));
    CHECK_FALSE(IsListed(list, "5000"));
    CHECK(list.starts_with(";0;1;2;"));
    CHECK(list.ends_with(";4998;4999"));
}

TEST_CASE("many items are added as one after the other would be") {
    std::uint32_t seed = 1;
    const auto below = [&](std::uint32_t limit) { return (seed = seed * 1664525u + 1013904223u) / 65536 % limit; };
    const char* const texts[] = {"0A", "0B", "0AB", "0a", "", "A;B", "A", "B", ";", "0A0B"};
    const char* const lists[] = {"", ";0A", "0B;0A", ";;", ";A;B", "0A;", ";0AB;0a;B"};
    for (int round = 0; round < 5000; ++round) {
        const std::string list = lists[below(std::size(lists))];
        std::vector<std::string> ids;
        for (std::uint32_t count = below(8); count > 0; --count) ids.emplace_back(texts[below(std::size(texts))]);
        std::string expected = list;
        for (const std::string& id : ids) {
            if (!id.empty() && !IsListed(expected, id)) expected = Add(expected, id);
        }
        CAPTURE(round);
        REQUIRE(AddAll(list, ids) == expected);
    }
}

TEST_CASE("a list is split into its ids in their order, without the empty ones") {
    std::vector<std::string> ids{"0"};
    Split(";A;B;;C", ids);
    CHECK(ids == std::vector<std::string>{"0", "A", "B", "C"});
    Split("", ids);
    CHECK(ids.size() == 4);
}

TEST_CASE("ten thousand items are added to ten thousand others in no more than a moment") {
    std::vector<std::string> first, second;
    for (int i = 0; i < 10000; ++i) {
        first.push_back(std::string(130, '0') + std::to_string(1000000000 + i));
        second.push_back(std::string(130, '0') + std::to_string(1000005000 + i));  // half of them are listed
    }
    const std::string list = AddAll("", first);
    CHECK(list.size() == 10000 * 141);
    const auto start = std::chrono::steady_clock::now();
    CHECK(AddAll(list, second).size() == 15000 * 141);
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(5));  // one search each takes minutes
}

TEST_CASE("a delay in seconds is an interval in milliseconds, halves to the even neighbour") {
    CHECK(IntervalOf("1") == 1000);
    CHECK(IntervalOf("2.5") == 2500);
    CHECK(IntervalOf("5 seconds") == 5000);
    CHECK(IntervalOf("0.0005") == 0);
    CHECK(IntervalOf("0.0015") == 2);
    CHECK(IntervalOf("0.0025") == 2);
    CHECK(IntervalOf("65.535") == 65535);
}

TEST_CASE("no delay, and one that is no number, is an interval of 0") {
    for (const char* delay : {"", "0", "soon", " "}) CHECK(IntervalOf(delay) == 0);
}

TEST_CASE("a delay that the timer does not take has no interval") {
    for (const char* delay : {"65.536", "66", "3600", "-1", "-0.001", "99999999999", "1e300"}) {
        CHECK_FALSE(IntervalOf(delay).has_value());
    }
}

TEST_CASE("a folder with and one without a backslash at its end give the same command line") {
    CHECK(MainAppCommand::Call("C:\\Programs\\Corvella", "smsnew") ==
          "\"C:\\Programs\\Corvella\\Corvella.exe\" smsnew");
    CHECK(MainAppCommand::Call("C:\\Programs\\Corvella\\", "smsnew") ==
          "\"C:\\Programs\\Corvella\\Corvella.exe\" smsnew");
}

TEST_CASE("an argument with sync in it, in any case, is marked as Outlook's") {
    for (const std::string argument : {"sync", "syncdlg", "sync 0", "sync 1", "SYNC", "Sync", "nosync"}) {
        CHECK(MainAppCommand::Call("C:\\x", argument) == "\"C:\\x\\Corvella.exe\" " + argument + " ol");
    }
}

TEST_CASE("other arguments are not") {
    for (const std::string argument : {"settings", "smsnew", "syn c", "update"}) {
        CHECK(MainAppCommand::Call("C:\\x", argument) == "\"C:\\x\\Corvella.exe\" " + argument);
    }
}

TEST_CASE("an empty argument leaves the closing quote and one blank") {
    CHECK(MainAppCommand::Call("C:\\x", "") == "\"C:\\x\\Corvella.exe\" ");
}

TEST_CASE("the update's folder gets its backslash whether it has one or not") {
    CHECK(MainAppCommand::Update("C:\\x") == "\"C:\\x\\Corvella.exe\" update");
    CHECK(MainAppCommand::Update("C:\\x\\") == "\"C:\\x\\\\Corvella.exe\" update");
}
