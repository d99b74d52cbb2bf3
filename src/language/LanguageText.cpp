#include "language/LanguageText.h"

#include <utility>

#include "config/IniText.h"
#include "platform/Text.h"

namespace LanguageText {
namespace {

constexpr std::string_view extension = ".lng";

struct SystemLanguage {
    std::string_view code;  // the whole code, or its first two letters
    std::string_view language;
};

constexpr SystemLanguage systemLanguages[] = {
    {"DEU", "Deutsch"},     {"FR", "Francais"},  {"ES", "Espanol"},        {"PO", "Portugues-BR"},
    {"PT", "Portugues-BR"}, {"CZ", "Cesky.lng"}, {"NL", "Nederlands.lng"}, {"PL", "Polski.lng"},
};

struct Fold {
    char accented, plain;
};

constexpr Fold folds[] = {{'\xEA', 'e'}, {'\xF1', 'n'}, {'\xE7', 'c'}};  // code page 1252

}  // namespace

std::string Unescape(std::string_view value) {
    return platform::Replace(platform::Replace(value, "\\n", "\r"), "\\t", "\t");
}

Texts Split(std::string_view value) {
    const std::size_t bar = value.find('|');
    if (bar == std::string_view::npos) return {value, std::nullopt};
    return {value.substr(0, bar), value.substr(bar + 1)};
}

std::optional<Element> AsElement(std::string_view key) {
    const std::size_t open = key.find('(');
    if (open == std::string_view::npos) return std::nullopt;
    return Element{key.substr(0, open), platform::ValLong(key.substr(open + 1))};
}

std::string ElementKey(std::string_view name, std::string_view index) {
    return std::string(name).append("(").append(index).append(")");
}

bool IsLeftAlone(std::string_view controlName) { return controlName.ends_with('_'); }

std::vector<Line> SectionLines(std::string_view text, std::string_view section) {
    std::vector<Line> lines;
    const auto span = IniText::FindSection(text, section);
    if (!span) return lines;
    std::string_view rest = text.substr(span->begin, span->end - span->begin);
    while (!rest.empty()) {
        const std::size_t lineEnd = rest.find('\r');
        const std::string_view line = rest.substr(0, lineEnd);
        rest = lineEnd == std::string_view::npos ? std::string_view() : rest.substr(lineEnd + 1);
        if (rest.starts_with('\n')) rest.remove_prefix(1);
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos) lines.push_back({line.substr(0, equals), line.substr(equals + 1)});
    }
    return lines;
}

std::string WithLineEnds(std::string_view text) {
    std::string normal;
    normal.reserve(text.size() + text.size() / 32 + 2);
    while (!text.empty()) {
        const std::size_t lineEnd = text.find_first_of("\r\n");
        normal.append(text.substr(0, lineEnd)).append(IniText::lineBreak);
        if (lineEnd == std::string_view::npos) break;
        text.remove_prefix(lineEnd + (text.substr(lineEnd).starts_with(IniText::lineBreak) ? 2 : 1));
    }
    return normal;
}

std::vector<std::string_view> Entries(std::string_view list) {
    std::vector<std::string_view> entries;
    while (!list.empty()) {
        const std::size_t end = list.find(';');
        if (end != 0) entries.push_back(list.substr(0, end));
        list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
    }
    return entries;
}

std::optional<TabMask> AsTabMask(std::string_view entry) {
    const std::size_t colon = entry.find(':');
    if (colon == std::string_view::npos) return std::nullopt;
    return TabMask{entry.substr(0, colon), static_cast<std::uint32_t>(platform::ValLong(entry.substr(colon + 1)))};
}

std::optional<Element> AsRestrictedElement(std::string_view entry) {
    const std::size_t open = entry.find('(');
    if (open == std::string_view::npos || entry.find(')', open) == std::string_view::npos ||
        entry.find(':') != std::string_view::npos)
        return std::nullopt;
    return AsElement(entry);
}

std::string_view LanguageForSystem(std::string_view systemCode) {
    for (const SystemLanguage& row : systemLanguages) {
        const bool wholeCode = row.code.size() > 2;
        if (systemCode == row.code || (!wholeCode && systemCode.starts_with(row.code))) return row.language;
    }
    return "English";
}

std::string CodeOfSystem(std::string (*userValue)(const char* key, const char* name),
                         std::string (*nameOfLocale)(std::int32_t locale)) {
    constexpr const char* international = "Control Panel\\International";
    constexpr std::int32_t germanLocale = 407;  // read as a decimal number, as all locales are here
    std::string code = userValue(international, "sLanguage");
    if (!code.empty()) return code;
    code = userValue("Control Panel\\Microsoft Input Devices\\Mouse", "Language");
    if (!code.empty()) return code;
    code = userValue(international, "Locale");
    std::string name = nameOfLocale(platform::ValLong(code));
    if (!name.empty()) code = std::move(name);
    return platform::Val(code) == germanLocale ? "DE" : code;
}

std::string FileName(std::string_view language) {
    std::string name(language);
    if (!platform::ToLower(name).ends_with(extension)) name.append(extension);
    return name;
}

std::string WithPlainFileName(std::string_view path) {
    std::string folded(path);
    const std::size_t backslash = path.rfind('\\');
    for (std::size_t i = backslash == std::string_view::npos ? 0 : backslash + 1; i < folded.size(); ++i) {
        for (const Fold& fold : folds) {
            if (folded[i] == fold.accented) folded[i] = fold.plain;
        }
    }
    return folded;
}

std::string HelpCode(std::string_view language) {
    std::string code = platform::ToLower(language.substr(0, 2));
    if (code == "po") return "pt";
    if (code == "ne") return "nl";
    return code;
}

}  // namespace LanguageText
