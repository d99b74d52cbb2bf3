// Sequences of reads, writes and deletions over any text, held against a model that knows lines only.
#include <algorithm>
#include <optional>
#include <vector>

#include "Fuzz.h"
#include "config/IniText.h"

namespace {

using IniText::Comparison;

bool SameLetter(char a, char b, Comparison comparison) {
    if (a == b) return true;
    const bool letter = (a >= 'A' && a <= 'Z') || (a >= 'a' && a <= 'z');
    return comparison == Comparison::IgnoringCase && letter && (a ^ b) == 0x20;
}

bool StandsAt(const std::string& line, std::size_t at, const std::string& sought, Comparison comparison) {
    if (line.size() - at < sought.size()) return false;
    std::size_t i = 0;
    while (i < sought.size() && SameLetter(line[at + i], sought[i], comparison)) ++i;
    return i == sought.size();
}

// The text as lines, looked through from top to bottom, without any cleverness.
class Model {
  public:
    explicit Model(const std::string& text) { Split(text); }

    [[nodiscard]] std::string Text() const {
        std::string text = lines_[0];
        for (std::size_t i = 1; i < lines_.size(); ++i) text += "\r\n" + lines_[i];
        return text;
    }

    [[nodiscard]] std::optional<std::string> Read(const std::string& section, const std::string& key,
                                                  Comparison comparison) const {
        std::size_t head = LineThatHolds("[" + section + "]", comparison);
        if (head == lines_.size() && section.starts_with('[')) head = LineThatHolds(section, comparison);
        if (head == lines_.size()) return std::nullopt;
        const std::size_t line = LineOfKey(head, key, comparison);
        if (line == SectionEnd(head)) return std::nullopt;
        return lines_[line].substr(key.size() + 1);
    }

    void Write(const std::string& section, const std::string& key, const std::string& value) {
        const std::size_t head = LineThatHolds("[" + section + "]", Comparison::Exact);
        const std::string setting = key + "=" + value;
        if (head == lines_.size()) {
            if (!value.empty()) AddSection(section, setting);
        } else if (const std::size_t line = LineOfKey(head, key, Comparison::Exact); line != SectionEnd(head)) {
            if (value.empty()) {
                lines_.erase(At(line));
            } else {
                lines_[line] = setting;
            }
        } else if (!value.empty()) {
            AddKey(head, setting);
        }
        if (value.find("\r\n") != std::string::npos) Split(Text());
    }

    [[nodiscard]] std::string OnDisk() const {
        std::string text;
        std::size_t breaks = 0;
        for (std::size_t i = 0; i < lines_.size(); ++i, ++breaks) {
            if (lines_[i].empty()) continue;
            for (std::size_t left = breaks - breaks / 3; left > 0; --left) text += "\r\n";
            text += lines_[i];
            breaks = 0;
        }
        return text + "\r\n";
    }

    [[nodiscard]] const std::string& Line(std::size_t i) const { return lines_[i % lines_.size()]; }

  private:
    void Split(const std::string& text) {
        lines_.assign(1, "");
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text.compare(i, 2, "\r\n") == 0) {
                lines_.emplace_back();
                ++i;
            } else {
                lines_.back().push_back(text[i]);
            }
        }
    }
    std::vector<std::string>::iterator At(std::size_t line) {
        return lines_.begin() + static_cast<std::ptrdiff_t>(line);
    }
    [[nodiscard]] std::size_t LineThatHolds(const std::string& sought, Comparison comparison) const {
        for (std::size_t line = 0; line < lines_.size(); ++line) {
            for (std::size_t at = 0; at < lines_[line].size(); ++at) {
                if (StandsAt(lines_[line], at, sought, comparison)) return line;
            }
        }
        return lines_.size();
    }
    [[nodiscard]] std::size_t SectionEnd(std::size_t head) const {
        std::size_t line = head + 1;
        while (line < lines_.size() && !lines_[line].starts_with('[')) ++line;
        return line;
    }
    [[nodiscard]] std::size_t LineOfKey(std::size_t head, const std::string& key, Comparison comparison) const {
        const std::size_t end = SectionEnd(head);
        const std::string sought = key + "=";
        std::size_t line = head + 1;
        while (line < end && !StandsAt(lines_[line], 0, sought, comparison)) ++line;
        return std::min(line, end);
    }
    void DropEmptyLinesAtEnd() {
        while (lines_.size() > 1 && lines_.back().empty()) lines_.pop_back();
    }
    void AddSection(const std::string& section, const std::string& setting) {
        const std::string text = Text();
        if (text.empty() || text == " ") {
            lines_.clear();
        } else {
            if (text.size() > 4) DropEmptyLinesAtEnd();
            lines_.emplace_back();
        }
        lines_.insert(lines_.end(), {"[" + section + "]", setting, ""});
    }
    void AddKey(std::size_t head, const std::string& setting) {
        const std::size_t end = SectionEnd(head);
        if (end == lines_.size()) {
            DropEmptyLinesAtEnd();
            lines_.push_back(setting);
            return;
        }
        std::size_t line = end;
        const auto shows = [](char c) { return static_cast<unsigned char>(c) >= 32; };
        while (std::none_of(lines_[line - 1].begin(), lines_[line - 1].end(), shows)) --line;
        lines_.insert(At(line), setting);
    }

    std::vector<std::string> lines_;
};

// A name of the input's own or one that the text holds, so that not only strangers are asked for.
std::string Name(fuzz::Input& input, const Model& model) {
    const std::uint8_t choice = input.Byte();
    std::string name;
    if (choice < 0x40) {
        name = input.Text(choice & 7);
    } else if (choice < 0xA0) {
        name = model.Line(choice);
        name.resize(std::min(name.size(), name.find('=')));
    } else {
        name = model.Line(choice);
        const std::size_t open = name.find('['), close = name.find(']', open);
        name = open == std::string::npos ? "" : name.substr(open + 1, close - open - 1);
    }
    // Names with line breaks read as what they have become; there is no model of that.
    std::erase(name, '\r');
    return name;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    std::string text = input.Text(input.Byte() * std::size_t{2});
    Model model(text);
    IniText::Index index;
    fuzz::Expect(model.Text() == text, "the model holds the text");
    while (!input.Empty()) {
        const std::uint8_t operation = input.Byte();
        const std::string section = Name(input, model), key = Name(input, model);
        const Comparison comparison = (operation & 1) != 0 ? Comparison::IgnoringCase : Comparison::Exact;
        if (operation < 0x80) {
            const auto read = IniText::Read(text, section, key, comparison);
            fuzz::Expect(read == model.Read(section, key, comparison), "a read gives what the lines say");
            fuzz::Expect(index.Read(text, section, key, comparison) == read, "the index finds what the search finds");
            continue;
        }
        const std::string before = text;
        const std::string value = operation < 0xB0 ? "" : input.Text(operation & 15);
        const bool changed = IniText::Write(text, section, key, value);
        model.Write(section, key, value);
        fuzz::Expect(text == model.Text(), "a write does to the text what it does to the lines");
        fuzz::Expect(changed == (text != before), "a write tells whether it changed the text");
        if (changed) index.Forget();
    }
    const std::string disk = IniText::OnDisk(text);
    fuzz::Expect(disk == model.OnDisk(), "the text goes to disk thinned by the two rules");
    return 0;
}
