#include "support/LogLine.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/Text.h"

namespace LogLine {
namespace {

constexpr std::size_t deepestIndent = 50;
constexpr std::string_view umlauts = "\xE4\xF6\xFC\xC4\xD6\xDC\xDF";
constexpr std::string_view folded = "oeaeuaAeOeUess";
static_assert(folded.size() == 2 * umlauts.size());

constexpr int significantDigits = 7;

}  // namespace

std::string EntryText(std::string_view text, std::int32_t code) {
    std::string entry;
    entry.reserve(text.size() + 12);
    switch (code) {
        case Entry: return entry.append("<").append(text).append(">_");
        case Exit: return entry.append("</").append(text).append(">");
        case FreeText: return entry.append(text);
        default: return entry.append(text).append(platform::Decimal(code));
    }
}

void FoldUmlauts(std::string& text) {
    for (std::size_t i = 0; i < umlauts.size(); ++i) {
        const std::size_t at = text.find(umlauts[i]);
        if (at != std::string::npos) text.replace(at, 1, folded.substr(2 * i, 2));
    }
}

std::string ErrorText(std::int32_t number, std::string_view description) {
    return platform::Decimal(number).append(":").append(description);
}

void IndentAfter(std::int32_t code, std::string& indent) {
    if (code != Entry) return;
    indent.push_back(' ');
    if (indent.size() > deepestIndent) indent.resize(1);
}

void IndentBefore(std::int32_t code, std::string& indent) {
    if (code == Exit && !indent.empty()) indent.pop_back();
}

std::string TimeStamp(float seconds, std::string_view decimalSeparator) {
    const auto whole = static_cast<std::int32_t>(seconds);
    const int wholeDigits = whole == 0 ? 0 : static_cast<int>(platform::Decimal(whole).size());
    const int decimals = std::max(0, significantDigits - wholeDigits);
    std::int32_t scale = 1;
    for (int i = 0; i < decimals; ++i) scale *= 10;
    const auto scaled = static_cast<std::int64_t>(std::floor(double{seconds} * scale + 0.5));
    std::string fraction = platform::Decimal(static_cast<std::int32_t>(scaled % scale));
    fraction.insert(
        0, static_cast<std::size_t>(decimals) - std::min(fraction.size(), static_cast<std::size_t>(decimals)), '0');
    fraction.resize(fraction.find_last_not_of('0') + 1);
    std::string stamp = platform::Decimal(static_cast<std::int32_t>(scaled / scale));
    if (!fraction.empty()) stamp.append(decimalSeparator).append(fraction);
    return stamp.append(":");
}

}  // namespace LogLine
