#include <doctest.h>

#include <limits>

#include "platform/Text.h"

using namespace platform;

TEST_CASE("the leading number of a text is read and the rest is not") {
    CHECK(Val("5 seconds") == 5);
    CHECK(Val("  17") == 17);
    CHECK(Val("-1") == -1);
    CHECK(Val("+3") == 3);
    CHECK(Val("2.5") == 2.5);
    CHECK(Val(".5x") == 0.5);
    CHECK(Val("7.") == 7);
    CHECK(Val("00000407") == 407);
    CHECK(Val("1e3") == 1000);
    CHECK(Val("2e12") == 2e12);
    CHECK(Val("25e-12x") == 25e-12);
}

TEST_CASE("an exponent that is not complete does not belong to the number") {
    CHECK(Val("5e") == 5);
    CHECK(Val("5e+") == 5);
    CHECK(Val("5east") == 5);
}

TEST_CASE("a text that begins with no number reads as 0") {
    for (const char* text : {"", " ", "x5", "-", "+", ".", "-.", "e5", "abc"}) CHECK(Val(text) == 0);
}

TEST_CASE("a number beyond all limits reads as the nearest one") {
    CHECK(Val("1e999") == std::numeric_limits<double>::max());
    CHECK(Val("-1e999") == -std::numeric_limits<double>::max());
    CHECK(Val("1e-999") == 0);
    CHECK(ValLong("99999999999") == std::numeric_limits<std::int32_t>::max());
    CHECK(ValLong("-99999999999") == std::numeric_limits<std::int32_t>::min());
}

TEST_CASE("a whole number is one only when nothing else stands beside it") {
    CHECK(WholeNumber(" 2.7 ") == 2.7);
    CHECK_FALSE(WholeNumber("2.7x").has_value());
    CHECK(WholeNumber("5e3") == 5000);  // the exponent belongs to it, where it is complete
    CHECK(WholeNumber("5e-1 ") == 0.5);
    CHECK_FALSE(WholeNumber("5e").has_value());
    CHECK_FALSE(WholeNumber("5e3x").has_value());
    CHECK_FALSE(WholeNumber("").has_value());
    CHECK_FALSE(WholeNumber("seven").has_value());
}

TEST_CASE("halves are rounded to the even neighbour") {
    CHECK(RoundHalfEven(0.5) == 0);
    CHECK(RoundHalfEven(1.5) == 2);
    CHECK(RoundHalfEven(2.5) == 2);
    CHECK(RoundHalfEven(-0.5) == 0);
    CHECK(RoundHalfEven(-1.5) == -2);
    CHECK(RoundHalfEven(2.51) == 3);
    CHECK(RoundHalfEven(std::numeric_limits<double>::quiet_NaN()) == 0);
}

TEST_CASE("numbers are written in decimal and in upper-case hexadecimal") {
    CHECK(Decimal(-2147483647 - 1) == "-2147483648");
    CHECK(Decimal(0) == "0");
    CHECK(UpperHex(0x80000001u) == "80000001");
    CHECK(UpperHex(0xABCDEFu) == "ABCDEF");
}

TEST_CASE("every occurrence is replaced, what the replacement brings is not looked at again") {
    CHECK(Replace("a%fb%f", "%f", "%f%f") == "a%f%fb%f%f");
    CHECK(Replace("text", "", "x") == "text");
    CHECK(Replace("", "a", "b").empty());
}

TEST_CASE("case is folded in the letters A to Z alone") {
    CHECK(SameIgnoringCase("CorVella", "cOrvELLA"));
    CHECK_FALSE(SameIgnoringCase("\xC4", "\xE4"));
    CHECK_FALSE(SameIgnoringCase("a", "ab"));
    CHECK(ContainsIgnoringCase("SYNCDLG", "sync"));
    CHECK(FindIgnoringCase("abcABC", "ABC", 1) == 3);
    CHECK(FindIgnoringCase("abc", "x") == std::string_view::npos);
    CHECK(FindIgnoringCase("abc", "", 3) == 3);
    CHECK(FindIgnoringCase("abc", "a", 4) == std::string_view::npos);
}

TEST_CASE("a folder gets one backslash at its end and the empty text none") {
    CHECK(WithBackslash("C:\\x") == "C:\\x\\");
    CHECK(WithBackslash("C:\\x\\") == "C:\\x\\");
    CHECK(WithBackslash("").empty());
}

TEST_CASE("a backslash that is the second byte of a letter ends no folder") {
    TellLeadBytes([](char byte) { return byte == '\x83'; });  // as in code page 932
    CHECK_FALSE(EndsWithBackslash("C:\\\x83\\"));
    CHECK(WithBackslash("C:\\\x83\\") == "C:\\\x83\\\\");
    CHECK(EndsWithBackslash("C:\\\x83\\\\"));
    CHECK(WithBackslash("C:\\\x83\\\\") == "C:\\\x83\\\\");
    TellLeadBytes(nullptr);
    CHECK(EndsWithBackslash("C:\\\x83\\"));
}
