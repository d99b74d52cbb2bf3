// The text of a settings file: finding, changing and removing keys; pure.
#include <doctest.h>

#include <random>
#include <string>
#include <vector>

#include "config/IniText.h"

using IniText::Comparison;
using IniText::OnDisk;

namespace {

std::string ReadOr(std::string_view text, std::string_view section, std::string_view key,
                   std::string_view otherwise = "(none)", Comparison comparison = Comparison::Exact) {
    return std::string(IniText::Read(text, section, key, comparison).value_or(otherwise));
}

std::string Write(std::string text, std::string_view section, std::string_view key, std::string_view value) {
    IniText::Write(text, section, key, value);
    return text;
}

bool Changes(std::string text, std::string_view section, std::string_view key, std::string_view value) {
    return IniText::Write(text, section, key, value);
}

const std::string twoSections = "[A]\r\na=1\r\nb=2\r\n\r\n\r\n[B]\r\na=3\r\n";

}  // namespace

TEST_SUITE_BEGIN("reading a setting");

TEST_CASE("a value is the rest of its line as it stands") {
    CHECK(ReadOr("[S]\r\nk= \"v\" ; w \r\n", "S", "k") == " \"v\" ; w ");
    CHECK(ReadOr("[S]\r\nk=a=b\r\n", "S", "k") == "a=b");
    CHECK(ReadOr("[S]\r\nk=", "S", "k") == "");
}

TEST_CASE("the last line needs no line break") { CHECK(ReadOr("[S]\r\nk=v", "S", "k") == "v"); }

TEST_CASE("a line with a blank between the key and the = is not found under that key") {
    CHECK(ReadOr("[S]\r\nk =v\r\n", "S", "k") == "(none)");
    CHECK(ReadOr("[S]\r\nk =v\r\n", "S", "k ") == "v");
}

TEST_CASE("a line with a blank before the key is not found under that key") {
    CHECK(ReadOr("[S]\r\n k=v\r\n", "S", "k") == "(none)");
}

TEST_CASE("a key that only ends like the one sought is not found") {
    CHECK(ReadOr("[S]\r\nxk=1\r\nk=2\r\n", "S", "k") == "2");
}

TEST_CASE("a key that also occurs in a later section is found only in the section asked for") {
    CHECK(ReadOr(twoSections, "A", "a") == "1");
    CHECK(ReadOr(twoSections, "B", "a") == "3");
    CHECK(ReadOr(twoSections, "B", "b") == "(none)");
    CHECK(ReadOr("[A]\r\nx=1\r\n[B]\r\nk=2\r\n", "A", "k") == "(none)");
}

TEST_CASE("only the first head of a section and the first line of a key count") {
    CHECK(ReadOr("[S]\r\nk=1\r\nk=2\r\n[T]\r\n[S]\r\nk=3\r\nm=4\r\n", "S", "k") == "1");
    CHECK(ReadOr("[S]\r\nk=1\r\n[T]\r\n[S]\r\nm=4\r\n", "S", "m") == "(none)");
}

TEST_CASE("a key on the first line of the text cannot be found") {
    CHECK(ReadOr("k=1\r\n[S]\r\n", "", "k") == "(none)");
    CHECK(ReadOr("[S]k=1", "S", "k") == "(none)");
}

TEST_CASE("a section is found by plain search, also inside a line") {
    CHECK(ReadOr("[A]\r\nhint=see [S]\r\nk=1\r\n[S]\r\nk=2\r\n", "S", "k") == "1");
    CHECK(ReadOr("  [S] ; comment\r\nk=1\r\n", "S", "k") == "1");
}

TEST_CASE("a section ends where a line begins with [, whatever follows it") {
    CHECK(ReadOr("[S]\r\na=1\r\n[not a head\r\nb=2\r\n", "S", "b") == "(none)");
    CHECK(ReadOr("[S]\r\na=1\r\n [x]\r\nb=2\r\n", "S", "b") == "2");
}

TEST_CASE("a name that begins with [ is also looked for as it stands") {
    CHECK(ReadOr("[S]\r\nk=1\r\n", "[S]", "k") == "1");
    CHECK(ReadOr("[S]\r\nk=1\r\n[[S]]\r\nk=2\r\n", "[S]", "k") == "2");
}

TEST_CASE("letters compare exactly unless the caller asks otherwise") {
    const std::string text = "[Settings]\r\nCurProfile=Work\r\n";
    CHECK(ReadOr(text, "settings", "CurProfile") == "(none)");
    CHECK(ReadOr(text, "Settings", "curprofile") == "(none)");
    CHECK(ReadOr(text, "sETTINGS", "CURprofile", "", Comparison::IgnoringCase) == "Work");
    CHECK(ReadOr("[\xC4]\r\nk=1\r\n", "\xE4", "k", "(none)", Comparison::IgnoringCase) == "(none)");
}

TEST_CASE("a lone CR, a lone LF and a NUL are characters like others") {
    CHECK(ReadOr(std::string("[S]\r\nk=a\0b\r\n", 12), "S", "k") == std::string("a\0b", 3));
    CHECK(ReadOr("[S]\r\nk=a\nb=c\r\n", "S", "k") == "a\nb=c");
    CHECK(ReadOr("[S]\nk=1\n", "S", "k") == "(none)");
    CHECK(ReadOr("[S]\r\nk=a\r\r\nb=1", "S", "k") == "a\r");
    CHECK(ReadOr("[S]\r\nk=a\r", "S", "k") == "a\r");
}

TEST_CASE("empty names are names") {
    CHECK(ReadOr("[]\r\n=v\r\n", "", "") == "v");
    CHECK(ReadOr("[S]\r\nk=v\r\n", "S", "") == "(none)");
}

TEST_CASE("nothing is found in a text of one blank and in none") {
    CHECK(ReadOr(IniText::missingFile, "S", "k") == "(none)");
    CHECK(ReadOr("", "", "") == "(none)");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("where a section stands");

TEST_CASE("a section runs from its head to the line break before the next head") {
    CHECK(IniText::FindSection(twoSections, "A") == IniText::Span{0, 17});
    CHECK(IniText::FindSection(twoSections, "B") == IniText::Span{19, twoSections.size()});
    CHECK_FALSE(IniText::FindSection(twoSections, "C").has_value());
}

TEST_CASE("a remembered section is trusted only while the text still reads so") {
    using IniText::SectionStandsAt;
    const IniText::Span a{0, 17};
    CHECK(SectionStandsAt(twoSections, a, "A"));
    CHECK_FALSE(SectionStandsAt(twoSections, a, "a"));
    CHECK(SectionStandsAt(twoSections, a, "a", Comparison::IgnoringCase));
    CHECK_FALSE(SectionStandsAt(twoSections, a, "AA"));
    CHECK_FALSE(SectionStandsAt(twoSections, {1, 17}, "A"));
    CHECK_FALSE(SectionStandsAt(twoSections, {0, 16}, "A"));
    CHECK_FALSE(SectionStandsAt(twoSections, {0, 2}, "A"));
    CHECK_FALSE(SectionStandsAt(twoSections, {0, 999}, "A"));
    CHECK(SectionStandsAt(twoSections, {19, twoSections.size()}, "B"));
    CHECK(SectionStandsAt("[S]\r\nk=1", {0, 8}, "[S]"));
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("writing a setting");

TEST_CASE("a new value takes the place of the old one and all else stays") {
    CHECK(Write(twoSections, "A", "a", "new") == "[A]\r\na=new\r\nb=2\r\n\r\n\r\n[B]\r\na=3\r\n");
    CHECK(Write("[S]\r\nk=v", "S", "k", "w") == "[S]\r\nk=w");
    CHECK(Write("[S]\r\nk=\r\n", "S", "k", "w") == "[S]\r\nk=w\r\n");
}

TEST_CASE("writing the value that a key already has changes nothing") {
    CHECK_FALSE(Changes(twoSections, "A", "a", "1"));
    CHECK(Changes(twoSections, "A", "a", "1 "));
}

TEST_CASE("writing an empty value deletes the key's line") {
    CHECK(Write(twoSections, "A", "a", "") == "[A]\r\nb=2\r\n\r\n\r\n[B]\r\na=3\r\n");
    CHECK(Write(twoSections, "B", "a", "") == "[A]\r\na=1\r\nb=2\r\n\r\n\r\n[B]\r\n");
    CHECK(Write("[S]\r\nk=\r\n", "S", "k", "") == "[S]\r\n");
    CHECK(Changes(twoSections, "A", "a", ""));
}

TEST_CASE("a deleted last line that no line break ends takes the one before it along") {
    CHECK(Write("[S]\r\na=1\r\nk=v", "S", "k", "") == "[S]\r\na=1");
}

TEST_CASE("writing an empty value for a key or section that does not exist leaves the text untouched") {
    CHECK_FALSE(Changes(twoSections, "A", "c", ""));
    CHECK_FALSE(Changes(twoSections, "B", "c", ""));
    CHECK_FALSE(Changes(twoSections, "C", "a", ""));
    CHECK_FALSE(Changes(" ", "C", "a", ""));
}

TEST_CASE("writing a new key into the last section of a file that ends without a line break appends it") {
    CHECK(Write("[S]\r\na=1", "S", "k", "v") == "[S]\r\na=1\r\nk=v");
    CHECK(Write("[S]", "S", "k", "v") == "[S]\r\nk=v");
}

TEST_CASE("a new key in the last section takes the place of the line breaks at the end") {
    CHECK(Write("[S]\r\na=1\r\n\r\n\r\n", "S", "k", "v") == "[S]\r\na=1\r\nk=v");
}

TEST_CASE("a new key in a section followed by two empty lines and another section lands under the last setting") {
    CHECK(Write(twoSections, "A", "c", "9") == "[A]\r\na=1\r\nb=2\r\nc=9\r\n\r\n\r\n[B]\r\na=3\r\n");
}

TEST_CASE("a new key in an empty section lands under its head") {
    CHECK(Write("[A]\r\n\r\n[B]\r\n", "A", "k", "v") == "[A]\r\nk=v\r\n\r\n[B]\r\n");
    CHECK(Write("[]\r\n[B]\r\n", "", "k", "v") == "[]\r\nk=v\r\n[B]\r\n");
}

TEST_CASE("a tab at the end of a section's last value stays with that value when a key is added") {
    const std::string text = Write("[A]\r\na=1\t\r\n\t\r\n[B]\r\n", "A", "k", "v");
    CHECK(text == "[A]\r\na=1\t\r\nk=v\r\n\t\r\n[B]\r\n");
}

TEST_CASE("a missing section is added at the end after one empty line") {
    CHECK(Write("[A]\r\na=1", "S", "k", "v") == "[A]\r\na=1\r\n\r\n[S]\r\nk=v\r\n");
    CHECK(Write("[A]\r\na=1\r\n\r\n\r\n", "S", "k", "v") == "[A]\r\na=1\r\n\r\n[S]\r\nk=v\r\n");
}

TEST_CASE("a text of up to four characters keeps its line breaks before a new section") {
    CHECK(Write("\r\n\r\n", "S", "k", "v") == "\r\n\r\n\r\n\r\n[S]\r\nk=v\r\n");
    CHECK(Write("\r\n\r\n\r\n", "S", "k", "v") == "\r\n\r\n[S]\r\nk=v\r\n");
}

TEST_CASE("an empty or missing file gets its first section without an empty line in front") {
    CHECK(Write(" ", "S", "k", "v") == "[S]\r\nk=v\r\n");
    CHECK(Write("", "S", "k", "v") == "[S]\r\nk=v\r\n");
}

TEST_CASE("the writer compares names exactly") {
    CHECK(Write("[s]\r\nK=1\r\n", "S", "k", "v") == "[s]\r\nK=1\r\n\r\n[S]\r\nk=v\r\n");
    CHECK(Write("[S]\r\nK=1\r\n", "S", "k", "v") == "[S]\r\nK=1\r\nk=v");
}

TEST_CASE("duplicates further down are left alone") {
    CHECK(Write("[S]\r\nk=1\r\nk=2\r\n[T]\r\n[S]\r\nk=3\r\n", "S", "k", "9") ==
          "[S]\r\nk=9\r\nk=2\r\n[T]\r\n[S]\r\nk=3\r\n");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("the text on disk");

TEST_CASE("a text ending in several empty lines goes to disk ending in exactly one line break") {
    CHECK(OnDisk("[S]\r\nk=v\r\n\r\n\r\n\r\n") == "[S]\r\nk=v\r\n");
    CHECK(OnDisk("[S]\r\nk=v\r\n") == "[S]\r\nk=v\r\n");
    CHECK(OnDisk("[S]\r\nk=v") == "[S]\r\nk=v\r\n");
}

TEST_CASE("of three line breaks in a row two are left, of four three, of six four") {
    CHECK(OnDisk("a\r\n\r\nb") == "a\r\n\r\nb\r\n");
    CHECK(OnDisk("a\r\n\r\n\r\nb") == "a\r\n\r\nb\r\n");
    CHECK(OnDisk("a\r\n\r\n\r\n\r\nb") == "a\r\n\r\n\r\nb\r\n");
    CHECK(OnDisk("a\r\n\r\n\r\n\r\n\r\n\r\nb") == "a\r\n\r\n\r\n\r\nb\r\n");
}

TEST_CASE("lone line feeds are not thinned") { CHECK(OnDisk("a\n\n\n\nb\n\n") == "a\n\n\n\nb\n\n\r\n"); }

TEST_SUITE_END();
TEST_SUITE_BEGIN("properties");

namespace {

using Random = std::minstd_rand;

std::size_t Below(Random& random, std::size_t limit) { return random() % limit; }

template <class T>
const T& Any(Random& random, const std::vector<T>& choices) {
    return choices[Below(random, choices.size())];
}

// Anything may stand in such a text, the pieces only make it likely that something is found.
std::string AnyText(Random& random) {
    static const std::vector<std::string> pieces = {
        "\r\n", "\r\n", "\r\n", "\r\n[", "[A]", "[b]", "[B]",    "a=",     "b=",  "A=",      "a", "=",
        " ",    "\t",   "\n",   "\r",    "[",   "]",   "\xE4=1", "longer", "x=y", "\r\na=1", ";", std::string(1, '\0')};
    std::string text;
    for (std::size_t count = Below(random, 40); count > 0; --count) text += Any(random, pieces);
    return text;
}
std::string AnyName(Random& random) {
    static const std::vector<std::string> names = {"A", "B", "b", "a", "", "new", "[A]", "[", "a b", "\xE4", "x=y"};
    return Any(random, names);
}
std::string AnyValue(Random& random) {
    static const std::vector<std::string> values = {"1",   "2",   "a=b",   "[A]",  " ",         "\t",
                                                    "v\r", "\nv", "\"q\"", "\xFC", "long value"};
    return Any(random, values);
}
std::vector<std::string> Lines(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t end; (end = text.find("\r\n")) != std::string_view::npos; text.remove_prefix(end + 2)) {
        lines.emplace_back(text.substr(0, end));
    }
    lines.emplace_back(text);
    return lines;
}
std::vector<std::string> LinesThatShow(std::string_view text) {
    std::vector<std::string> lines = Lines(text);
    std::erase(lines, "");
    return lines;
}

}  // namespace

TEST_CASE("a write followed by a read gives the value back") {
    Random random(1);
    for (int round = 0; round < 20000; ++round) {
        std::string text = AnyText(random);
        const std::string section = AnyName(random), key = AnyName(random), value = AnyValue(random);
        CAPTURE(text);
        CAPTURE(section);
        CAPTURE(key);
        CAPTURE(value);
        // A name that names itself a head when it is written is read as that head, so it stays out here.
        if (key.starts_with('[') || section.starts_with('[')) continue;
        IniText::Write(text, section, key, value);
        CHECK(ReadOr(text, section, key) == value);
        CHECK_FALSE(Changes(text, section, key, value));
    }
}

TEST_CASE("a write leaves every other line as it was") {
    Random random(2);
    for (int round = 0; round < 20000; ++round) {
        const std::string before = AnyText(random);
        const std::string section = AnyName(random), key = AnyName(random), value = AnyValue(random);
        CAPTURE(before);
        std::string after = before;
        const bool hadSection = IniText::FindSection(before, section).has_value();
        if (section.starts_with('[') || before == " " || !IniText::Write(after, section, key, value)) continue;
        std::vector<std::string> was = LinesThatShow(before), is = LinesThatShow(after);
        const std::size_t first =
            static_cast<std::size_t>(std::mismatch(was.begin(), was.end(), is.begin(), is.end()).first - was.begin());
        const bool replaced = was.size() == is.size();
        const std::size_t added = replaced ? 1 : is.size() - was.size();
        CHECK(added == (hadSection ? 1 : 2));
        std::vector<std::string> expected = was;
        if (replaced) expected.erase(expected.begin() + static_cast<std::ptrdiff_t>(first));
        REQUIRE(first + added <= is.size());
        CHECK(is[first + added - 1] == key + "=" + value);
        is.erase(is.begin() + static_cast<std::ptrdiff_t>(first),
                 is.begin() + static_cast<std::ptrdiff_t>(first + added));
        CHECK(is == expected);
    }
}

TEST_CASE("deleting what was just added gives the old lines back") {
    Random random(3);
    for (int round = 0; round < 20000; ++round) {
        const std::string before = AnyText(random);
        const std::string section = AnyName(random);
        if (section.starts_with('[') || !IniText::FindSection(before, section)) continue;
        CAPTURE(before);
        CAPTURE(section);
        std::string text = before;
        if (IniText::Read(text, section, "added")) continue;
        IniText::Write(text, section, "added", "1");
        IniText::Write(text, section, "added", "");
        CHECK(LinesThatShow(text) == LinesThatShow(before));
    }
}

TEST_CASE("going to disk changes no line that shows anything and does not add any") {
    Random random(4);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = AnyText(random);
        CAPTURE(text);
        const std::string disk = OnDisk(text);
        CHECK(LinesThatShow(disk) == LinesThatShow(text));
        CHECK(disk.ends_with("\r\n"));
        CHECK(disk.size() <= text.size() + 2);
    }
}

TEST_CASE("the index finds what a search finds, whatever was asked before") {
    Random random(5);
    for (int round = 0; round < 4000; ++round) {
        std::string text = AnyText(random);
        IniText::Index index;
        for (int question = 0; question < 30; ++question) {
            const std::string section = AnyName(random), key = AnyName(random);
            const Comparison comparison = Below(random, 2) != 0 ? Comparison::Exact : Comparison::IgnoringCase;
            CAPTURE(text);
            CAPTURE(section);
            CAPTURE(key);
            CHECK(index.Read(text, section, key, comparison) == IniText::Read(text, section, key, comparison));
            if (Below(random, 6) == 0 && IniText::Write(text, section, key, AnyValue(random))) index.Forget();
        }
    }
}

TEST_SUITE_END();
