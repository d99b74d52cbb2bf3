#include "Fuzz.h"
#include "support/ByteOrderMark.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string given(reinterpret_cast<const char*>(data), size);
    std::string text = given;
    const std::int32_t mark = Files::CheckByteOrderMark(text);
    const std::string taken = mark == 2 ? "\xFF\xFE" : mark == 4 ? "\xFE\xFF" : "";
    fuzz::Expect(mark == 0 || mark == 2 || mark == 4, "the mark is one of those there are");
    fuzz::Expect(taken + text == given, "the mark and the rest are what was given");
    const bool marked = size >= 2 && data[0] + data[1] == 0xFF + 0xFE && (data[0] == 0xFF || data[0] == 0xFE);
    fuzz::Expect(marked == (mark != 0), "a mark is seen where one stands, and nowhere else");
    return 0;
}
