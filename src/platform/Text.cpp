#include "platform/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace platform {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::size_t PastDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at;
}

std::size_t PastBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && IsBlank(text[at])) ++at;
    return at;
}

struct Leading {
    double value = 0;
    std::size_t end = 0;  // just past the number; 0 where there is none
};

// std::from_chars refuses a leading "+" and tells nothing of a number like ".", so the extent of
// the number is found here and only its value there.
Leading LeadingNumber(std::string_view text) {
    const std::size_t sign = PastBlanks(text, 0);
    const bool signedNumber = sign < text.size() && (text[sign] == '-' || text[sign] == '+');
    const std::size_t whole = sign + (signedNumber ? 1 : 0);
    std::size_t end = PastDigits(text, whole);
    std::size_t digits = end - whole;
    if (end < text.size() && text[end] == '.') {
        const std::size_t fraction = PastDigits(text, end + 1);
        digits += fraction - (end + 1);
        if (digits > 0) end = fraction;
    }
    if (digits == 0) return {};
    if (end < text.size() && Lower(text[end]) == 'e') {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '-' || text[exponent] == '+')) ++exponent;
        if (const std::size_t past = PastDigits(text, exponent); past > exponent) end = past;
    }
    Leading number{0, end};
    const char* first = text.data() + whole;
    const auto [stop, error] = std::from_chars(first, text.data() + end, number.value);
    if (error == std::errc::result_out_of_range) {
        const bool tiny = std::string_view(first, end - whole).find("e-") != std::string_view::npos ||
                          std::string_view(first, end - whole).find("E-") != std::string_view::npos;
        number.value = tiny ? 0 : std::numeric_limits<double>::max();
    }
    if (signedNumber && text[sign] == '-') number.value = -number.value;
    return number;
}

}  // namespace

double Val(std::string_view text) { return LeadingNumber(text).value; }

std::int32_t ValLong(std::string_view text) { return RoundHalfEven(Val(text)); }

std::optional<double> WholeNumber(std::string_view text) {
    const Leading number = LeadingNumber(text);
    if (number.end == 0 || PastBlanks(text, number.end) != text.size()) return std::nullopt;
    return number.value;
}

std::int32_t RoundHalfEven(double value) {
    if (std::isnan(value)) return 0;
    const double below = std::floor(value);
    const double rest = value - below;
    const bool up = rest > 0.5 || (rest == 0.5 && std::fmod(below, 2.0) != 0.0);
    const double rounded = up ? below + 1 : below;
    constexpr double lowest = std::numeric_limits<std::int32_t>::min();
    constexpr double highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(rounded, lowest, highest));
}

std::string Decimal(std::int32_t value) {
    char digits[16];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value);
    return std::string(digits, end);
}

std::string UpperHex(std::uint32_t value) {
    char digits[16];
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value, 16);
    std::transform(digits, end, digits, [](char c) { return c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c; });
    return std::string(digits, end);
}

std::string Replaced(std::string_view text, std::string_view sought, std::string_view replacement) {
    if (sought.empty()) return std::string(text);
    std::string result;
    std::size_t from = 0;
    for (std::size_t hit; (hit = text.find(sought, from)) != std::string_view::npos; from = hit + sought.size()) {
        result.append(text.substr(from, hit - from)).append(replacement);
    }
    return result.append(text.substr(from));
}

char Lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), Lower);
    return lowered;
}

bool SameIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return Lower(a) == Lower(b); });
}

bool Contains(std::string_view text, std::string_view sought) { return text.find(sought) != std::string_view::npos; }

bool ContainsIgnoringCase(std::string_view text, std::string_view sought) {
    return FindIgnoringCase(text, sought) != std::string_view::npos;
}

std::size_t FindIgnoringCase(std::string_view text, std::string_view sought, std::size_t start) {
    if (start > text.size()) return std::string_view::npos;
    const auto hit = std::search(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), sought.begin(),
                                 sought.end(), [](char a, char b) { return Lower(a) == Lower(b); });
    if (hit == text.end() && !sought.empty()) return std::string_view::npos;
    return static_cast<std::size_t>(hit - text.begin());
}

std::string WithBackslash(std::string_view folder) {
    std::string path(folder);
    if (!path.empty() && path.back() != '\\') path.push_back('\\');
    return path;
}

}  // namespace platform
