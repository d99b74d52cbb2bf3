// language/LanguageText.h: the rules of language files and of the choice among them. Pure text: no Windows
// header, no globals.
//
// Shapes  A language file is ini text (config/IniText.h) in the ANSI code page that its "CharSet" names.
//         In a value "\n" stands for one carriage return and "\t" for a tab; there are no other escapes.
//         "|" parts a caption from the tool tip behind it; a second "|" belongs to the tool tip.
//         "Name(2)" is element 2 of the control array "Name".
// Errors  none: every text has a reading.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace LanguageText {

// --- values

[[nodiscard]] std::string Unescape(std::string_view value);

struct Texts {
    std::string_view caption;
    std::optional<std::string_view> toolTip;  // none where there is no "|"
};
[[nodiscard]] Texts Split(std::string_view value);

// What stands before and behind the "(" of a key; none where there is no "(".
struct Element {
    std::string_view array;
    std::int32_t index;
};
[[nodiscard]] std::optional<Element> AsElement(std::string_view key);

// "Name(2)"
[[nodiscard]] std::string ElementKey(std::string_view name, std::string_view index);

// Controls of such names keep what they were made with.
[[nodiscard]] bool IsLeftAlone(std::string_view controlName);

// --- a section of a form

struct Line {
    std::string_view key, value;
};
// The lines of a section that hold a "=", in their order; `text` has CR LF at its line ends.
[[nodiscard]] std::vector<Line> SectionLines(std::string_view text, std::string_view section);

// `text` with CR LF at the end of every line, whatever stood there: CR LF, LF, CR or nothing.
[[nodiscard]] std::string WithLineEnds(std::string_view text);

// --- what a settings file takes from a form

// The parts between the ";", empty ones left out.
[[nodiscard]] std::vector<std::string_view> Entries(std::string_view list);

struct TabMask {
    std::string_view tabControl;
    std::uint32_t mask;
    // Positions count from 0.
    [[nodiscard]] bool Removes(std::size_t position) const { return position < 32 && (mask >> position & 1) != 0; }
};
// "Tabs:5"; none where there is no ":".
[[nodiscard]] std::optional<TabMask> AsTabMask(std::string_view entry);

// The element that an entry such as "Option(2)" names; none without a "(" and a ")" behind it, or with a ":".
[[nodiscard]] std::optional<Element> AsRestrictedElement(std::string_view entry);

// --- the choice of the language

// Windows' code of the user's language, such as "DEU". `userValue` reads a text below HKEY_CURRENT_USER, `nameOfLocale`
// tells the code of a locale's number, or nothing.
[[nodiscard]] std::string CodeOfSystem(std::string (*userValue)(const char* key, const char* name),
                                       std::string (*nameOfLocale)(std::int32_t locale));
// The language for a system's language code such as "DEU". Some carry the extension of the file already.
[[nodiscard]] std::string_view LanguageForSystem(std::string_view systemCode);
[[nodiscard]] std::string FileName(std::string_view language);  // "Deutsch.lng"
// `path` with the accents of its file name folded away, as far as languages have them: "Français", "Español".
[[nodiscard]] std::string WithPlainFileName(std::string_view path);
[[nodiscard]] std::string HelpCode(std::string_view language);  // "de"

}  // namespace LanguageText
