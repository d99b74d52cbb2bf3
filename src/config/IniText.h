// config/IniText.h: settings in the text of an ini file: finding, reading, writing and deleting them,
// and the form in which such a text goes to disk. Pure text: no Windows header, no globals.
//
// Shapes  Bytes of the ANSI code page. Lines end in CR LF; a CR or LF alone and a NUL are ordinary characters.
//         A section begins at the first "[name]", wherever in a line it stands, and runs up to the next line
//         break that a "[" follows, or to the end. A setting is a line that begins with key + "=", without
//         blanks; its value is the rest of the line as it stands. Of two equal keys the first counts.
//         There are no comments, quotes or escapes, and what is not understood is carried along.
//         A single blank stands for a file that is empty or missing.
// Errors  none: every text has a reading, every name can be looked for. A name or value that holds a
//         line break is written as it is, and then reads as what it has become.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace IniText {

inline constexpr std::string_view lineBreak = "\r\n";
inline constexpr std::string_view missingFile = " ";

enum class Comparison { Exact, IgnoringCase };  // case is folded from A to Z

// Positions in a text, from the first byte to just past the last.
struct Span {
    std::size_t begin = 0;
    std::size_t end = 0;
    [[nodiscard]] bool operator==(const Span&) const = default;
};

// From its "[" to its end. A name that itself begins with "[" is also looked for as it stands.
[[nodiscard]] std::optional<Span> FindSection(std::string_view text, std::string_view name,
                                              Comparison comparison = Comparison::Exact);

// True while `section` still reads as a section of that name and ends where a section ends.
[[nodiscard]] bool SectionStandsAt(std::string_view text, Span section, std::string_view name,
                                   Comparison comparison = Comparison::Exact);

// The value of a key within a section that FindSection found.
[[nodiscard]] std::optional<Span> FindValue(std::string_view text, Span section, std::string_view key,
                                            Comparison comparison = Comparison::Exact);

// Both at once; the view lies in `text`.
[[nodiscard]] std::optional<std::string_view> Read(std::string_view text, std::string_view section,
                                                   std::string_view key, Comparison comparison = Comparison::Exact);

// Sets a key, comparing names exactly; true when the text was changed. An empty value deletes the line.
//   A new key follows the last line of its section that shows anything; the empty lines after it stay.
//   In the last section it ends the text, whose line breaks at the end go.
//   A new section is set apart from what stands before it by one empty line.
bool Write(std::string& text, std::string_view section, std::string_view key, std::string_view value);

// The text as it goes to disk: of three line breaks in a row two are left, counted from the front in one
// pass (of four, three), and it ends in exactly one.
[[nodiscard]] std::string OnDisk(std::string text);

// Remembers where the sections asked for lie, and the keys in them, so that further questions about the same
// text cost no search. Always gives what Read gives: whoever changes the text calls Forget.
class Index {
  public:
    [[nodiscard]] std::optional<std::string_view> Read(std::string_view text, std::string_view section,
                                                       std::string_view key, Comparison comparison = Comparison::Exact);
    void Forget() noexcept;

  private:
    struct Key {
        std::uint32_t begin;  // of the line
        std::uint32_t length;
    };
    struct Section {
        Span span;
        std::vector<Key> keys;             // the first line of every key, in the order of the text
        std::vector<std::uint32_t> slots;  // open addressing: 1 + position in `keys`, 0 where free
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const noexcept { return std::hash<std::string_view>()(name); }
    };
    using Sections = std::unordered_map<std::string, Section, Hash, std::equal_to<>>;

    [[nodiscard]] const Section* Find(std::string_view text, std::string_view name, Comparison comparison);
    static void AddKeys(std::string_view text, Section& section, Comparison comparison);
    [[nodiscard]] static std::size_t Slot(std::string_view text, const Section& section, std::string_view key,
                                          Comparison comparison);
    [[nodiscard]] static std::uint32_t KeyHash(std::string_view key, Comparison comparison) noexcept;

    Sections exact_;
    Sections ignoringCase_;
};

}  // namespace IniText
