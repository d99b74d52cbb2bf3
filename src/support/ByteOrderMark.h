// support/ByteOrderMark.h: the mark with which a text of two-byte characters begins. Pure text.
//
// Shapes  The text is bytes as they were read from a file; only the mark is taken off, nothing is converted.
// Errors  none: a text without a mark stays as it is.
#pragma once
#include <cstdint>
#include <string>

namespace Files {

inline constexpr std::int32_t noMark = 0;
inline constexpr std::int32_t littleEndianMark = 2;  // FF FE
inline constexpr std::int32_t bigEndianMark = 4;     // FE FF

// The mark that `text` began with; it is removed.
std::int32_t CheckByteOrderMark(std::string& text);

}  // namespace Files
