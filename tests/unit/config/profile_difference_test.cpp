// The same files read by this engine and by Windows' own function. A model that can follow either of them, rule by
// rule, says which rules a difference comes from: every rule below is on purpose, and a difference that needs
// another one fails the test.
#include <doctest.h>
#include <windows.h>

#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "config/IniFile.h"
#include "config/IniText.h"
#include "platform/Text.h"
#include "testing/TempFolder.h"
#include "testing/Versions.h"

namespace {

// What Windows' function does and this engine does not.
enum Rule : unsigned {
    AnyCase = 1u << 0,
    Blanks = 1u << 1,
    Quotes = 1u << 2,
    LoneBreaks = 1u << 3,
    HeadAtLineStart = 1u << 4,
    HeadNeedsClosing = 1u << 5,
    NulEnds = 1u << 6,
    UnnamedSection = 1u << 7,
    KeyWithoutValue = 1u << 8,
    WideText = 1u << 9,
    NameAsItStands = 1u << 10,
    EqualsInKey = 1u << 11,
};
constexpr unsigned all = (1u << 12) - 1;

struct Sentence {
    Rule rule;
    std::string_view text;
};
constexpr Sentence sentences[] = {
    {AnyCase, "names are case-sensitive; to Windows they are not (Wine: from A to Z)"},
    {Blanks, "blanks belong to names and values; Windows takes them off lines, names and values"},
    {Quotes, "quotes belong to a value; Windows takes a pair of them off"},
    {LoneBreaks, "only CR LF ends a line; for Windows a CR or LF alone does"},
    {HeadAtLineStart, "the first [name] anywhere is the section; for Windows it must begin its line, up to the last ]"},
    {HeadNeedsClosing, "every line that begins with [ ends a section; for Windows one without ] is a key"},
    {NulEnds, "a NUL is a character like others; Windows' texts end at it"},
    {UnnamedSection, "lines before the first head belong to no section; for Windows they are the one without a name"},
    {KeyWithoutValue, "a line without = is passed over; for Windows it is a key without a value, which hides others"},
    {WideText, "a byte-order mark is taken off and the bytes stay; Windows converts the text"},
    {NameAsItStands, "a section asked for with its [ is also looked for as it stands"},
    {EqualsInKey, "a key may hold a =; for Windows a key ends at the first"},
};

using Texts = std::vector<std::string>;

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\x1A'; }

std::string Trim(std::string text) {
    while (!text.empty() && IsBlank(text.back())) text.pop_back();
    while (!text.empty() && IsBlank(text.front())) text.erase(0, 1);
    return text;
}

std::string UpToNul(const std::string& text) { return text.substr(0, text.find('\0')); }

// One reader for both: with no rule it is this engine, with all of them Windows.
class Model {
  public:
    Model(const std::string& text, unsigned rules) : rules_(rules) {
        std::string plain = Has(WideText) ? Narrow(text) : WithoutMark(text);
        lines_ = Has(LoneBreaks) ? SplitAtEveryBreak(plain) : SplitAt(plain, "\r\n");
        if (Has(Blanks)) std::transform(lines_.begin(), lines_.end(), lines_.begin(), Trim);
    }

    [[nodiscard]] std::optional<std::string> Read(const std::string& section, const std::string& key) const {
        const std::size_t head = FindHead(Has(Blanks) ? Trim(section) : section);
        if (head == lines_.size()) return std::nullopt;
        const std::string sought = Has(Blanks) ? Trim(key) : key;
        const bool unnamed = Has(UnnamedSection) && section.empty();
        for (std::size_t i = head + (unnamed ? 0 : 1); i < lines_.size() && !EndsSection(lines_[i]); ++i) {
            if (Has(LoneBreaks) && Has(Blanks) && lines_[i].empty()) continue;
            const std::size_t equals = EqualsOf(lines_[i], sought);
            if (equals == std::string::npos) {
                if (Has(KeyWithoutValue) && SameName(Name(lines_[i]), sought)) return std::nullopt;
                continue;
            }
            if (SameName(Name(lines_[i].substr(0, equals)), sought)) return Value(lines_[i].substr(equals + 1));
        }
        return std::nullopt;
    }

  private:
    [[nodiscard]] bool Has(Rule rule) const { return (rules_ & rule) != 0; }

    static std::string WithoutMark(const std::string& text) {
        return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF") ? text.substr(2) : text;
    }
    // The files here hold two-byte characters below 256 only.
    static std::string Narrow(const std::string& text) {
        if (text.starts_with("\xEF\xBB\xBF")) return text.substr(3);
        const bool little = text.starts_with("\xFF\xFE");
        if (!little && !text.starts_with("\xFE\xFF")) return text;
        std::string narrow;
        for (std::size_t i = 2; i + 1 < text.size(); i += 2) narrow += text[little ? i : i + 1];
        return narrow;
    }
    static Texts SplitAt(const std::string& text, const std::string& separator) {
        Texts lines;
        std::size_t from = 0;
        for (std::size_t end; (end = text.find(separator, from)) != std::string::npos; from = end + separator.size()) {
            lines.push_back(text.substr(from, end - from));
        }
        lines.push_back(text.substr(from));
        return lines;
    }
    static Texts SplitAtEveryBreak(std::string text) {
        std::replace(text.begin(), text.end(), '\r', '\n');
        return SplitAt(text, "\n");
    }

    [[nodiscard]] bool SameName(const std::string& left, const std::string& right) const {
        return Has(AnyCase) ? platform::SameIgnoringCase(left, right) : left == right;
    }
    [[nodiscard]] std::string Name(std::string name) const {
        if (Has(Blanks)) name = Trim(name);
        return Has(NulEnds) ? UpToNul(name) : name;
    }
    [[nodiscard]] std::string Value(std::string value) const {
        if (Has(Blanks)) value = Trim(value);
        if (Has(NulEnds)) value = UpToNul(value);
        const bool quoted = value.size() > 1 && value.front() == value.back() && (value[0] == '"' || value[0] == '\'');
        return Has(Quotes) && quoted ? value.substr(1, value.size() - 2) : value;
    }
    // Where the name of a line ends that may be `key`.
    [[nodiscard]] std::size_t EqualsOf(const std::string& line, const std::string& key) const {
        if (Has(EqualsInKey)) return line.find('=');
        for (std::size_t at = line.find('='); at != std::string::npos; at = line.find('=', at + 1)) {
            if (SameName(Name(line.substr(0, at)), key)) return at;
        }
        return std::string::npos;
    }
    [[nodiscard]] bool EndsSection(const std::string& line) const {
        if (!line.starts_with('[')) return false;
        return !Has(HeadNeedsClosing) || line.find(']') != std::string::npos;
    }
    [[nodiscard]] bool IsHead(const std::string& line, const std::string& name) const {
        if (Has(HeadAtLineStart)) {
            if (!line.starts_with('[') || line.find(']') == std::string::npos) return false;
            const std::string found = line.substr(1, line.rfind(']') - 1);
            return SameName(Name(found), name);
        }
        return Holds(line, "[" + name + "]");
    }
    [[nodiscard]] bool Holds(const std::string& line, const std::string& part) const {
        for (std::size_t at = 0; at + part.size() <= line.size(); ++at) {
            if (SameName(line.substr(at, part.size()), part)) return true;
        }
        return false;
    }
    [[nodiscard]] std::size_t FindHead(const std::string& name) const {
        if (Has(UnnamedSection) && name.empty()) return 0;
        const auto first = [&](auto&& is) {
            return static_cast<std::size_t>(std::find_if(lines_.begin(), lines_.end(), is) - lines_.begin());
        };
        const std::size_t head = first([&](const std::string& line) { return IsHead(line, name); });
        if (head < lines_.size() || Has(NameAsItStands) || !name.starts_with('[')) return head;
        return first([&](const std::string& line) { return Holds(line, name); });
    }

    unsigned rules_;
    Texts lines_;
};

const std::string missing = "(missing)";

std::string Ours(const std::string& file, const std::string& section, const std::string& key) {
    return IniFile::ReadFromIniFile(file, section, key, missing);
}
std::string Theirs(const std::string& file, const std::string& section, const std::string& key) {
    static std::vector<char> buffer(700000);
    const DWORD length = GetPrivateProfileStringA(section.c_str(), key.c_str(), missing.c_str(), buffer.data(),
                                                  static_cast<DWORD>(buffer.size()), file.c_str());
    return std::string(buffer.data(), length);
}

// The rules without any of which the model no longer reads what Windows does.
unsigned RulesOf(const std::string& text, const std::string& section, const std::string& key,
                 const std::string& theirs) {
    unsigned rules = all;
    for (const Sentence& sentence : sentences) {
        const unsigned fewer = rules & ~sentence.rule;
        if (Model(text, fewer).Read(section, key).value_or(missing) == theirs) rules = fewer;
    }
    return rules;
}

std::string Repeat(const std::string& text, int times) {
    std::string repeated;
    while (times-- > 0) repeated += text;
    return repeated;
}

std::string Filled(std::size_t size) {
    std::string text = "[S]\r\na=1\r\nfill=";
    text.append(size - text.size() - 7, 'x');
    return text + "\r\nb=2\r\n";
}

std::string Wide(const std::string& text, bool little) {
    std::string wide = little ? "\xFF\xFE" : "\xFE\xFF";
    for (const char c : text) {
        if (little) wide += c;
        wide += '\0';
        if (!little) wide += c;
    }
    return wide;
}

Texts UglyFiles() {
    const std::string nul(1, '\0');
    return {
        "",
        " ",
        "\r\n",
        "[S]",
        "[S]\r\na=1",
        "a=0\r\n[S]\r\na=1\r\n",
        "[S]\na=1\nb=2\n",
        "[S]\ra=1\rb=2\r",
        "[S]\r\na=1\nb=2\r\n",
        "[S]\r\na=1\rb=2\r\nc=3",
        "[S]\r\n a = 1 \r\n\tb\t=\t2\t\r\n",
        "  [S]  \r\na=1\r\n",
        "[ S ]\r\na=1\r\n",
        "[s]\r\nA=1\r\n[S]\r\na=2\r\n",
        "[S]\r\na=1\r\na=2\r\n[T]\r\n[S]\r\na=3\r\nb=4\r\n",
        "[S]\r\na=\"1\"\r\nb='2'\r\nc=\"3\r\nab=\"\r\n",
        "[S]\r\na=see [T]\r\nb=1\r\n[T]\r\nb=2\r\n",
        "[S] trailing\r\na=1\r\n[T] ] x\r\nb=2\r\n",
        "[S]\r\na=1\r\n[broken\r\nb=2\r\n[T]\r\na=3\r\n",
        "[]\r\n=1\r\na=2\r\n",
        "=1\r\na=2\r\n[S]\r\n=3\r\n",
        "[S]\r\na\r\na=1\r\nb\r\n",
        "[S]\r\n;a=1\r\n#b=2\r\na=3\r\n",
        "[S]\r\na=x;y\r\nb==\r\nx=y=z\r\n",
        "[S]\r\na=1" + nul + "2\r\nb" + nul + "x=3\r\nc=4\r\n",
        "[S]\r\na=\xE4\xF6\xFC\r\n\xC4=1\r\n\xE4=2\r\n",
        "[\xC4]\r\na=1\r\n[\xE4]\r\na=2\r\n",
        "[S]\r\na=\x1A\r\nb=\xA0 2 \xA0\r\n",
        "[S]\r\na=" + std::string(100000, 'y') + "\r\nb=2\r\n",
        "[" + std::string(3000, 'S') + "]\r\na=1\r\n[S]\r\na=2\r\n",
        "[S]\r\n" + std::string(3000, 'a') + "=1\r\na=2\r\n",
        "[S]\r\n" + Repeat("filler=1\r\n", 2000) + "a=1\r\n",
        Repeat("[T]\r\na=1\r\n\r\n", 500) + "[S]\r\na=2\r\n",
        "\r\n\r\n\r\n[S]\r\n\r\n\r\n\r\na=1\r\n\r\n\r\n",
        "\xEF\xBB\xBF[S]\r\na=1\r\n",
        Wide("[S]\r\na=1\r\n[T]\r\nb=2\r\n", true),
        Wide("[S]\r\na=1\r\n[T]\r\nb=2\r\n", false),
        "[[S]]\r\na=1\r\n[S]\r\na=2\r\n",
        "[S]]\r\na=1\r\n]\r\nb=2\r\n",
        Filled(512000),
        Filled(512001),
    };
}

std::string AnyFile(std::minstd_rand& random) {
    static const Texts pieces = {
        "[S]\r\n",     "[S]\r\n",    "[T]\r\n",   "[s]\r\n",  "[]\r\n",    "[S\r\n",    "a=1\r\n",  "a=2\r\n",
        "A=3\r\n",     "b=\r\n",     "b= 4 \r\n", " b=5\r\n", "b =6\r\n",  "x=y=z\r\n", "=7\r\n",   "a\r\n",
        "c=\"8\"\r\n", "c='9\r\n",   "c=[T]\r\n", "\r\n",     "\r\n",      ";a=0\r\n",  "a=lone\n", "\xE4=10\r\n",
        "\xC4=11\r\n", "c=\xFC\r\n", "[ T ]\r\n", "b=no end", "x[S]y\r\n", "[T] x\r\n", "\t\r\n",   "c=1\t\r\n"};
    std::string text;
    for (auto count = random() % 14; count > 0; --count) text += pieces[random() % pieces.size()];
    return text;
}

}  // namespace

TEST_CASE("the reader and Windows' own function differ by the rules that are on purpose, and by no others") {
    const TempFolder folder;
    std::minstd_rand random(7);
    Texts files = UglyFiles();
    const std::size_t count = versions::Whole() ? 300 : 100;
    while (files.size() < count) files.push_back(AnyFile(random));
    const Texts sections = {"S", "s", "T", "", "[S]", " S ", "\xE4", "missing"};
    const Texts keys = {"a", "A", "b", "c", "", "x", "x=y", " b", "\xE4", "missing"};

    std::map<unsigned, int> differencesBy;
    std::map<unsigned, std::string> examples;  // that come with one rule alone
    int reads = 0, differences = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        CAPTURE(i);
        folder.Write(std::to_string(i) + ".ini", files[i]);
        const std::string file = folder.Path(std::to_string(i) + ".ini");
        const bool big = files[i].size() > 512000;
        // Each read of Windows' own function reads the whole file anew.
        const bool slow = files[i].size() > 400000 && !versions::Whole();
        for (const std::string& section : slow ? Texts{"S", "missing"} : sections) {
            for (const std::string& key : slow ? Texts{"a", "b", "missing"} : keys) {
                ++reads;
                const std::string ours = Ours(file, section, key), theirs = Theirs(file, section, key);
                CAPTURE(section);
                CAPTURE(key);
                if (big) {
                    CHECK(ours == theirs);  // read through Windows' function
                    continue;
                }
                const std::string shown = files[i].substr(0, 200);
                CAPTURE(shown);
                CHECK(ours == Model(files[i], 0).Read(section, key).value_or(missing));
                CHECK(theirs == Model(files[i], all).Read(section, key).value_or(missing));
                if (ours == theirs) continue;
                ++differences;
                const unsigned rules = RulesOf(files[i], section, key, theirs);
                CHECK(rules != 0);
                for (const Sentence& sentence : sentences) {
                    if ((rules & sentence.rule) != 0) ++differencesBy[sentence.rule];
                    if (rules == sentence.rule && examples[rules].empty()) {
                        examples[rules] = "\n  file " + std::to_string(i) + ", [" + section + "] " + key + ": here \"" +
                                          ours.substr(0, 30) + "\", Windows \"" + theirs.substr(0, 30) + "\"";
                    }
                }
            }
        }
    }
    MESSAGE(files.size() << " files, " << reads << " reads, " << differences << " differences");
    for (const Sentence& sentence : sentences) {
        const std::string rule(sentence.text);
        MESSAGE(differencesBy[sentence.rule] << " with this rule: " << rule << examples[sentence.rule]);
        CHECK_MESSAGE(differencesBy[sentence.rule] > 0, rule);
    }
}
