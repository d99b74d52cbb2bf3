#include "platform/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace platform {
namespace {

LeadByte leadByte = nullptr;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::size_t PastBlanks(std::string_view text, std::size_t at) {
    while (at < text.size() && IsBlank(text[at])) ++at;
    return at;
}

struct Leading {
    double value = 0;
    std::size_t end = 0;  // just past the number; 0 where there is none
};

struct Digits {
    double value = 0;
    int scale = 0;  // digits behind the point
    std::size_t end = 0;
    bool any = false;
};

Digits ReadDigits(std::string_view text, std::size_t at) {
    Digits read;
    bool point = false;
    for (; at < text.size(); ++at) {
        if (text[at] == '.' && !point) {
            point = true;
        } else if (IsDigit(text[at])) {
            read.value = read.value * 10 + (text[at] - '0');
            read.scale += point ? 1 : 0;
            read.any = true;
        } else {
            break;
        }
    }
    read.end = at;
    return read;
}

// The power of ten behind an "e" at `at`, with where it ends; `at` itself where it is not complete.
int ReadExponent(std::string_view text, std::size_t& at) {
    if (at >= text.size() || Lower(text[at]) != 'e') return 0;
    std::size_t digits = at + 1;
    const bool negative = digits < text.size() && text[digits] == '-';
    if (digits < text.size() && (text[digits] == '-' || text[digits] == '+')) ++digits;
    int power = 0;
    std::size_t end = digits;
    for (; end < text.size() && IsDigit(text[end]); ++end) power = std::min(power * 10 + (text[end] - '0'), 9999);
    if (end == digits) return 0;
    at = end;
    return negative ? -power : power;
}

double TimesPowerOfTen(double value, int power) {
    if (value == 0) return 0;
    for (; power > 0 && value < std::numeric_limits<double>::infinity(); --power) value *= 10;
    double divisor = 1;  // one division keeps a short fraction exact
    for (; power < 0 && divisor < 1e300; ++power) divisor *= 10;
    return power < 0 ? 0 : std::min(value / divisor, std::numeric_limits<double>::max());
}

// Written out because the standard library's reader of floating-point text is a tenth of the whole add-in.
Leading LeadingNumber(std::string_view text) {
    const std::size_t sign = PastBlanks(text, 0);
    const bool signedNumber = sign < text.size() && (text[sign] == '-' || text[sign] == '+');
    const Digits digits = ReadDigits(text, sign + (signedNumber ? 1 : 0));
    if (!digits.any) return {};
    Leading number{0, digits.end};
    const int exponent = ReadExponent(text, number.end);
    number.value = TimesPowerOfTen(digits.value, exponent - digits.scale);
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

std::string Replace(std::string_view text, std::string_view sought, std::string_view replacement) {
    if (sought.empty()) return std::string(text);
    std::string result;
    std::size_t from = 0;
    for (std::size_t hit; (hit = text.find(sought, from)) != std::string_view::npos; from = hit + sought.size()) {
        result.append(text.substr(from, hit - from)).append(replacement);
    }
    return result.append(text.substr(from));
}

char Lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

std::string ToLower(std::string_view text) {
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

void TellLeadBytes(LeadByte leads) noexcept { leadByte = leads; }

bool EndsWithBackslash(std::string_view folder) {
    if (!folder.ends_with('\\')) return false;
    std::size_t letter = 0;
    for (std::size_t next = 0; next < folder.size(); next += leadByte && leadByte(folder[next]) ? 2u : 1u)
        letter = next;
    return letter == folder.size() - 1;
}

std::string WithBackslash(std::string_view folder) {
    std::string path(folder);
    if (!path.empty() && !EndsWithBackslash(path)) path.push_back('\\');
    return path;
}

}  // namespace platform
