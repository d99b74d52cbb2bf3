#include "support/ByteOrderMark.h"

namespace Files {

std::int32_t CheckByteOrderMark(std::string& text) {
    const bool little = text.starts_with("\xFF\xFE");
    const bool big = text.starts_with("\xFE\xFF");
    if (little || big) text.erase(0, 2);
    return little ? littleEndianMark : big ? bigEndianMark : noMark;
}

}  // namespace Files
