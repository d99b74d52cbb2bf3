#include "check/Resiliency.h"

#include <doctest.h>

using Resiliency::Bytes;
using Resiliency::Entry;
using Resiliency::Parse;

TEST_CASE("an entry of Outlook's disabled items reads as it was written") {
    const std::string bytes = Bytes({1, u"c:\\x\\cvoutlookaddin.dll", u"cvoutlookaddin.connect"});
    const auto entry = Parse(bytes);
    REQUIRE(entry);
    CHECK(entry->kind == 1);
    CHECK(entry->path == u"c:\\x\\cvoutlookaddin.dll");
    CHECK(entry->name == u"cvoutlookaddin.connect");
    CHECK(bytes.size() == 12 + 2 * (23 + 1) + 2 * (22 + 1));
}

TEST_CASE("an entry that is shorter, longer or otherwise made than its lengths say is none") {
    const std::string good = Bytes({1, u"c:\\a.dll", u"a"});
    for (std::size_t length = 0; length < good.size(); ++length) CHECK_FALSE(Parse(good.substr(0, length)));
    CHECK_FALSE(Parse(good + '\0'));
    std::string huge = good;
    huge[7] = '\x7F';  // the length of the path
    CHECK_FALSE(Parse(huge));
    std::string open = good;
    open[good.size() - 2] = 'x';  // no NUL at the end
    CHECK_FALSE(Parse(open));
    std::string early = good;
    early[14] = '\0';  // a NUL within
    early[15] = '\0';
    CHECK_FALSE(Parse(early));
}

TEST_CASE("paths are compared without regard to the case of A to Z") {
    CHECK(Resiliency::SameFolded(u"C:\\Ab.DLL", u"c:\\ab.dll"));
    CHECK_FALSE(Resiliency::SameFolded(u"c:\\ab.dll", u"c:\\ab.dl"));
    CHECK_FALSE(Resiliency::SameFolded(u"c:\\\u00C9", u"c:\\\u00E9"));
}

TEST_CASE("a path is found in bytes of any shape and at any place") {
    const std::string bytes = "x" + Bytes({1, u"c:\\Ab.dll", u"a"});
    CHECK(Resiliency::Holds(bytes, u"c:\\ab.dll"));
    CHECK_FALSE(Resiliency::Holds(bytes, u"c:\\ac.dll"));
    CHECK_FALSE(Resiliency::Holds(bytes, u""));
    CHECK_FALSE(Resiliency::Holds("", u"a"));
}
