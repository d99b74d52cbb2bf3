#include <doctest.h>

#include "support/ByteOrderMark.h"

namespace {

struct Checked {
    std::string text;
    std::int32_t mark;
};
Checked Check(std::string text) {
    const std::int32_t mark = Files::CheckByteOrderMark(text);
    return {text, mark};
}

}  // namespace

TEST_CASE("a little-endian mark is taken off and gives 2") {
    CHECK(Check("\xFF\xFE[").text == "[");
    CHECK(Check("\xFF\xFE[").mark == 2);
    CHECK(Check("\xFF\xFE").text == "");
}

TEST_CASE("a big-endian mark is taken off and gives 4") {
    CHECK(Check(std::string("\xFE\xFF\0[", 4)).text == std::string("\0[", 2));
    CHECK(Check("\xFE\xFF").mark == 4);
}

TEST_CASE("a text without a mark stays as it is and gives 0") {
    for (const char* text : {"", "\xFF", "\xFE", "[A]", "\xEF\xBB\xBF[A]", "x\xFF\xFE", "\xFF\xFF", "\xFE\xFE"}) {
        CHECK(Check(text).text == text);
        CHECK(Check(text).mark == 0);
    }
}

TEST_CASE("only one mark is taken off") { CHECK(Check("\xFF\xFE\xFE\xFF").text == "\xFE\xFF"); }
