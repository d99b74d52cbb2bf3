#include "config/IniText.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "platform/Text.h"

namespace IniText {
namespace {

constexpr std::size_t none = std::string_view::npos;
constexpr std::string_view nextSection = "\r\n[";
constexpr std::string_view threeBreaks = "\r\n\r\n\r\n";
constexpr std::size_t twoBreaks = 4;  // bytes
constexpr std::size_t shortText = 4;  // a text of no more bytes keeps its line breaks before a new section

unsigned char Byte(char c) { return static_cast<unsigned char>(c); }

bool Same(std::string_view left, std::string_view right, Comparison comparison) {
    return comparison == Comparison::Exact ? left == right : platform::SameIgnoringCase(left, right);
}

// The first place of `sought` at or after `from`. It begins with "[" or a line break, which have no case.
std::size_t Find(std::string_view text, std::string_view sought, std::size_t from,
                 Comparison comparison = Comparison::Exact) {
    if (comparison == Comparison::Exact) return text.find(sought, from);
    std::size_t at = text.find(sought.front(), from);
    while (at != none && !Same(text.substr(at, sought.size()), sought, comparison)) {
        at = text.find(sought.front(), at + 1);
    }
    return at;
}

std::string Head(std::string_view name) { return std::string("[").append(name).append("]"); }

std::string Line(std::string_view key, std::string_view value) { return std::string(key).append("=").append(value); }

// Where the line that `from` stands in ends: at its line break, or at the end of the text.
std::size_t LineEnd(std::string_view text, std::size_t from) {
    return std::min(text.find(lineBreak, from), text.size());
}

std::optional<Span> FindHead(std::string_view text, std::string_view head, Comparison comparison) {
    const std::size_t begin = Find(text, head, 0, comparison);
    if (begin == none) return std::nullopt;
    return Span{begin, std::min(Find(text, nextSection, begin + head.size()), text.size())};
}

// The first such run at or after `from`. One of its six bytes stands at every sixth place, so only these are looked at.
std::size_t FindThreeBreaks(std::string_view text, std::size_t from) {
    constexpr std::size_t length = threeBreaks.size();
    for (std::size_t last = from + length - 1; last < text.size(); last += length) {
        if (text[last] != '\r' && text[last] != '\n') continue;
        const std::size_t first = last - (length - 1);
        const std::size_t hit = text.substr(first, 2 * length - 1).find(threeBreaks);
        if (hit != none) return first + hit;
    }
    return none;
}

std::string_view WithoutBreaksAtEnd(std::string_view text) {
    while (text.ends_with(lineBreak)) text.remove_suffix(lineBreak.size());
    return text;
}

void AppendSection(std::string& text, std::string_view section, std::string_view key, std::string_view value) {
    if (text.empty() || text == missingFile) {
        text.clear();
    } else {
        if (text.size() > shortText) text.resize(WithoutBreaksAtEnd(text).size());
        text.append(lineBreak).append(lineBreak);
    }
    text.append(Head(section)).append(lineBreak).append(Line(key, value)).append(lineBreak);
}

// The new line goes behind the line that holds the last character that shows: what trails that
// character on its own line (a tab, a lone line feed) is part of a value and stays with it.
void InsertBeforeNextSection(std::string& text, Span section, std::string_view line) {
    std::size_t at = section.end;
    while (at > section.begin && Byte(text[at - 1]) < ' ') --at;
    text.insert(LineEnd(text, at), std::string(lineBreak).append(line));
}

void AppendToLastSection(std::string& text, std::string_view line) {
    text.resize(WithoutBreaksAtEnd(text).size());
    text.append(lineBreak).append(line);
}

// A last line that no line break ends takes the one before it along.
void RemoveLine(std::string& text, std::size_t begin, std::size_t end) {
    if (end < text.size()) {
        end += lineBreak.size();
    } else {
        begin -= lineBreak.size();
    }
    text.erase(begin, end - begin);
}

}  // namespace

std::optional<Span> FindSection(std::string_view text, std::string_view name, Comparison comparison) {
    std::optional<Span> section = FindHead(text, Head(name), comparison);
    if (!section && name.starts_with('[')) section = FindHead(text, name, comparison);
    return section;
}

bool SectionStandsAt(std::string_view text, Span section, std::string_view name, Comparison comparison) {
    if (section.begin > section.end || section.end > text.size()) return false;
    const std::string_view found = text.substr(section.begin, section.end - section.begin);
    const auto reads = [&](std::size_t at) { return Same(found.substr(at, name.size()), name, comparison); };
    const std::size_t close = name.size() + 1;
    const bool headed = found.size() > close && found.front() == '[' && reads(1) && found[close] == ']';
    const bool asItStands = name.starts_with('[') && reads(0);
    return (headed || asItStands) && (section.end == text.size() || text.substr(section.end).starts_with(nextSection));
}

std::optional<Span> FindValue(std::string_view text, Span section, std::string_view key, Comparison comparison) {
    const std::string sought = std::string(lineBreak).append(key).append("=");
    const std::size_t hit = Find(text.substr(0, section.end), sought, section.begin, comparison);
    if (hit == none) return std::nullopt;
    const std::size_t begin = hit + sought.size();
    return Span{begin, LineEnd(text, begin)};
}

std::optional<std::string_view> Read(std::string_view text, std::string_view section, std::string_view key,
                                     Comparison comparison) {
    const std::optional<Span> found = FindSection(text, section, comparison);
    if (!found) return std::nullopt;
    const std::optional<Span> value = FindValue(text, *found, key, comparison);
    if (!value) return std::nullopt;
    return text.substr(value->begin, value->end - value->begin);
}

bool Write(std::string& text, std::string_view section, std::string_view key, std::string_view value) {
    const std::optional<Span> found = FindHead(text, Head(section), Comparison::Exact);
    const std::optional<Span> old = found ? FindValue(text, *found, key) : std::nullopt;
    if (old && value.empty()) {
        RemoveLine(text, old->begin - key.size() - 1, old->end);
    } else if (old) {
        if (std::string_view(text).substr(old->begin, old->end - old->begin) == value) return false;
        text.replace(old->begin, old->end - old->begin, value);
    } else if (value.empty()) {
        return false;
    } else if (!found) {
        AppendSection(text, section, key, value);
    } else if (found->end < text.size()) {
        InsertBeforeNextSection(text, *found, Line(key, value));
    } else {
        AppendToLastSection(text, Line(key, value));
    }
    return true;
}

std::string OnDisk(std::string text) {
    text.resize(WithoutBreaksAtEnd(text).size());
    std::size_t run = FindThreeBreaks(text, 0);
    if (run == none) return std::move(text.append(lineBreak));
    std::string thinned;
    thinned.reserve(text.size());
    std::size_t from = 0;
    for (; run != none; run = FindThreeBreaks(text, from)) {
        thinned.append(text, from, run + twoBreaks - from);
        from = run + threeBreaks.size();
    }
    return thinned.append(text, from).append(lineBreak);
}

std::optional<std::string_view> Index::Read(std::string_view text, std::string_view section, std::string_view key,
                                            Comparison comparison) {
    const Section* found = Find(text, section, comparison);
    if (found == nullptr) return std::nullopt;
    if (platform::Contains(key, "=") || platform::Contains(key, lineBreak)) {
        // Such a key is none of those that the index knows a line by.
        const std::optional<Span> value = FindValue(text, found->span, key, comparison);
        if (!value) return std::nullopt;
        return text.substr(value->begin, value->end - value->begin);
    }
    const std::size_t position = Slot(text, *found, key, comparison);
    if (found->slots.empty() || found->slots[position] == 0) return std::nullopt;
    const Key& line = found->keys[found->slots[position] - 1];
    const std::size_t begin = line.begin + line.length + 1;
    return text.substr(begin, LineEnd(text, begin) - begin);
}

void Index::Forget() noexcept {
    exact_.clear();
    ignoringCase_.clear();
}

const Index::Section* Index::Find(std::string_view text, std::string_view name, Comparison comparison) {
    Sections& known = comparison == Comparison::Exact ? exact_ : ignoringCase_;
    if (const auto entry = known.find(name); entry != known.end()) {
        if (SectionStandsAt(text, entry->second.span, name, comparison)) return &entry->second;
        known.erase(entry);
    }
    const std::optional<Span> span = FindSection(text, name, comparison);
    if (!span) return nullptr;
    Section& section = known.try_emplace(std::string(name)).first->second;
    section.span = *span;
    AddKeys(text, section, comparison);
    return &section;
}

void Index::AddKeys(std::string_view text, Section& section, Comparison comparison) {
    const std::string_view upToEnd = text.substr(0, section.span.end);
    std::vector<Key> keys;
    for (std::size_t at = section.span.begin; (at = upToEnd.find(lineBreak, at)) != none;) {
        at += lineBreak.size();
        const std::string_view line = upToEnd.substr(at, LineEnd(upToEnd, at) - at);
        if (const std::size_t equals = line.find('='); equals != none) {
            keys.push_back({static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(equals)});
        }
    }
    if (keys.empty()) return;
    section.slots.assign(std::bit_ceil(keys.size() * 2), 0);
    for (const Key& key : keys) {
        std::uint32_t& slot = section.slots[Slot(text, section, text.substr(key.begin, key.length), comparison)];
        if (slot != 0) continue;  // of equal keys the first counts
        section.keys.push_back(key);
        slot = static_cast<std::uint32_t>(section.keys.size());
    }
}

// The slot where the key is, or would be.
std::size_t Index::Slot(std::string_view text, const Section& section, std::string_view key, Comparison comparison) {
    if (section.slots.empty()) return 0;
    const std::size_t mask = section.slots.size() - 1;
    std::size_t position = KeyHash(key, comparison) & mask;
    while (section.slots[position] != 0) {
        const Key& known = section.keys[section.slots[position] - 1];
        if (Same(text.substr(known.begin, known.length), key, comparison)) break;
        position = (position + 1) & mask;
    }
    return position;
}

// FNV-1a over the letters as they compare.
std::uint32_t Index::KeyHash(std::string_view key, Comparison comparison) noexcept {
    std::uint32_t hash = 2166136261u;
    for (const char c : key) {
        hash = (hash ^ Byte(comparison == Comparison::Exact ? c : platform::Lower(c))) * 16777619u;
    }
    return hash;
}

}  // namespace IniText
