// platform/Text.h: what the procedures need of text and numbers. Pure text: no Windows header, no globals.
//
// Shapes  Text is bytes of the system's ANSI code page. Letters are folded (upper, lower case) in
//         the range A to Z only, so two-byte characters and accented letters are left alone.
//         Numbers are written in decimal with "." and read the same way, whatever the locale.
// Errors  none: every text has a reading.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

// The number with which `text` begins: blanks, a sign, digits, a fraction, an exponent that is
// complete; 0 where there is none. "5 s" is 5, "-1" is -1, "2.5" is 2.5, "x" and "" are 0.
[[nodiscard]] double Val(std::string_view text);

// Val as a whole number: halves go to the even neighbour, what does not fit to the nearest limit.
[[nodiscard]] std::int32_t ValLong(std::string_view text);

// The number that `text` as a whole is, blanks around it allowed; none where anything else stands in it.
[[nodiscard]] std::optional<double> WholeNumber(std::string_view text);

// Halves go to the even neighbour; what does not fit 32 bits goes to the nearest limit, NaN to 0.
[[nodiscard]] std::int32_t RoundHalfEven(double value);

// In digits with a sign if it is negative; in hexadecimal digits without leading zeros.
[[nodiscard]] std::string Decimal(std::int32_t value);
[[nodiscard]] std::string UpperHex(std::uint32_t value);

// `text` with every `sought` replaced, from left to right; an empty `sought` replaces nothing.
[[nodiscard]] std::string Replace(std::string_view text, std::string_view sought, std::string_view replacement);

// Case is that of the letters A to Z alone.
[[nodiscard]] char Lower(char letter);
[[nodiscard]] std::string ToLower(std::string_view text);
[[nodiscard]] bool SameIgnoringCase(std::string_view left, std::string_view right);
[[nodiscard]] bool Contains(std::string_view text, std::string_view sought);
[[nodiscard]] bool ContainsIgnoringCase(std::string_view text, std::string_view sought);

// The position of `sought` in `text` from `start` on, folded in case; npos where there is none.
[[nodiscard]] std::size_t FindIgnoringCase(std::string_view text, std::string_view sought, std::size_t start = 0);

// Which bytes begin a two-byte letter of the system's code page; none until it is told. Its second byte may look like
// "\".
using LeadByte = bool (*)(char);
void TellLeadBytes(LeadByte leads) noexcept;

// Is the last letter of `folder` a "\"?
[[nodiscard]] bool EndsWithBackslash(std::string_view folder);

// `folder` with one "\" at its end; the empty text stays empty.
[[nodiscard]] std::string WithBackslash(std::string_view folder);

}  // namespace platform
