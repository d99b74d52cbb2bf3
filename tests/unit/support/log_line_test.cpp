// How a line of the log looks; pure.
#include <doctest.h>

#include <string>

#include "support/LogLine.h"

using namespace LogLine;

namespace {

std::string Fold(std::string text) {
    FoldUmlauts(text);
    return text;
}

}  // namespace

TEST_CASE("an entry's code chooses its form") {
    CHECK(EntryText("Name", 0) == "<Name>_");
    CHECK(EntryText("Name", 999) == "</Name>");
    CHECK(EntryText("some text", -1) == "some text");
    CHECK(EntryText("x", 5) == "x5");
    CHECK(EntryText("x", -2) == "x-2");
    CHECK(EntryText("", 0) == "<>_");
}

TEST_CASE("only the first of each umlaut is folded, the lower-case ones to oe, ae and ua") {
    CHECK(Fold("\xC4nderung f\xFCr M\xFCller") == "Aenderung fuar M\xFCller");
    CHECK(Fold("\xE4\xF6\xFC\xC4\xD6\xDC\xDF") == "oeaeuaAeOeUess");
    CHECK(Fold("\xE4\xE4\xDF\xDF") == "oe\xE4ss\xDF");
    CHECK(Fold("\xDF\xDC\xD6\xC4\xFC\xF6\xE4") == "ssUeOeAeuaaeoe");
    CHECK(Fold("").empty());
    CHECK(Fold("plain \xE9") == "plain \xE9");
}

TEST_CASE("an error is its number, a colon and its description") {
    CHECK(ErrorText(13, "Type mismatch") == "13:Type mismatch");
    CHECK(ErrorText(-2147467259, "") == "-2147467259:");
}

TEST_CASE("the 51st nested entry resets the indentation to a single blank") {
    std::string indent;
    for (std::size_t depth = 1; depth <= 50; ++depth) {
        IndentAfter(Entry, indent);
        CHECK(indent == std::string(depth, ' '));
    }
    IndentAfter(Entry, indent);
    CHECK(indent == " ");
}

TEST_CASE("exits without an entry never make the indentation negative") {
    std::string indent = " ";
    IndentBefore(Exit, indent);
    IndentBefore(Exit, indent);
    IndentBefore(Exit, indent);
    CHECK(indent.empty());
}

TEST_CASE("only entries deepen the indentation and only exits take it back") {
    std::string indent = "  ";
    for (const std::int32_t code : {-1, 1, 5, 1000}) {
        IndentBefore(code, indent);
        IndentAfter(code, indent);
    }
    IndentBefore(Entry, indent);
    IndentAfter(Exit, indent);
    CHECK(indent == "  ");
}

TEST_CASE("a time stamp has the seconds with at most seven digits and the system's separator") {
    CHECK(TimeStamp(45296.13F, ".") == "45296.13:");
    CHECK(TimeStamp(45296.13F, ",") == "45296,13:");
    CHECK(TimeStamp(86399.99F, ".") == "86399.99:");
    CHECK(TimeStamp(3600, ".") == "3600:");
    CHECK(TimeStamp(0, ".") == "0:");
    CHECK(TimeStamp(0.5F, ".") == "0.5:");
    CHECK(TimeStamp(0.001F, ".") == "0.001:");
    CHECK(TimeStamp(0.016F, ",") == "0,016:");
    CHECK(TimeStamp(9.999F, ".") == "9.999:");
    CHECK(TimeStamp(100.05F, ".") == "100.05:");
    CHECK(TimeStamp(1234.5F, "") == "12345:");
}

TEST_CASE("the log file is the product's name and AddIn without blanks, beside the add-in") {
    CHECK(FilePath("C:\\Programs\\", "Corvella") == "C:\\Programs\\CorvellaAddIn.dbg.xml");
    CHECK(FilePath("C:\\My Programs\\", "A b c") == "C:\\My Programs\\AbcAddIn.dbg.xml");
}

TEST_CASE("a path wrapped in double quotes loses all of them") {
    CHECK(WithoutQuotes("\"C:\\a \"b\"\\c\"") == "C:\\a b\\c");
    CHECK(WithoutQuotes("\"\"").empty());
}

TEST_CASE("a path that is not wrapped in double quotes keeps those that it has") {
    CHECK(WithoutQuotes("C:\\a\"b") == "C:\\a\"b");
    CHECK(WithoutQuotes("\"C:\\a") == "\"C:\\a");
    CHECK(WithoutQuotes("\"") == "\"");
    CHECK(WithoutQuotes("").empty());
}

TEST_CASE("the log's earlier name has no .xml at its end") {
    CHECK(OldFilePath("C:\\x\\CorvellaAddIn.dbg.xml") == "C:\\x\\CorvellaAddIn.dbg");
    CHECK(OldFilePath("C:\\x.xml\\log") == "C:\\x.xml\\log");
}
