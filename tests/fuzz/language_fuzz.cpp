// Hostile language files and lists of restrictions over a form, held against a model that reads them a letter at a
// time and knows no forms.
#include <algorithm>
#include <map>
#include <vector>

#include "Fuzz.h"
#include "language/FormTexts.h"
#include "language/LanguageText.h"
#include "platform/Text.h"

namespace {

using platform::ControlKind;
using platform::Property;

constexpr platform::ControlSpec table[] = {
    {"A", ControlKind::Label},
    {"B_", ControlKind::Button},
    {"C", ControlKind::OptionButton, 0, "", 0},
    {"C", ControlKind::OptionButton, 0, "", 2},
    {"P", ControlKind::PictureBox},
    {"T", ControlKind::TextBox},
    {"N", ControlKind::TabStrip},
    {"M", ControlKind::Timer},
};

struct Shown {
    std::string caption, toolTip, picture;
    bool visible = true, enabled = true;
};

using Page = std::pair<std::string, std::string>;
const std::vector<Page> allPages = {{"a", "x+y"}, {"b", "x"}, {"c", "+"}, {"d", ""}};

std::string PictureOf(const std::string& text) { return text.size() % 2 == 0 ? "file " + text : std::string(); }

class Model {
  public:
    Model() : shown_(std::size(table)), pages_(allPages) {}

    void Read(const std::vector<std::string>& lines, const std::string& head) {
        bool inSection = false;
        for (const std::string& line : lines) {
            std::size_t start = 0;
            if (!inSection) {
                start = line.find(head);
                if (start == std::string::npos) continue;
                inSection = true;
            } else if (line.starts_with('[')) {
                return;
            }
            const std::size_t equals = line.find('=', start);
            if (equals != std::string::npos) Set(line.substr(start, equals - start), line.substr(equals + 1));
        }
    }

    void Restrict(const std::string& list, bool hide) {
        std::string entry;
        for (const char letter : list + ";") {
            if (letter != ';') {
                entry.push_back(letter);
                continue;
            }
            RestrictOne(entry, hide);
            entry.clear();
        }
    }

    [[nodiscard]] bool Describes(platform::FormView& form) const {
        std::size_t number = 0;
        for (const platform::Control& control : form.Controls()) {
            const Shown& said = shown_[number++];
            if (control.Caption() != said.caption || control.ToolTip() != said.toolTip ||
                control.Picture() != said.picture || control.Visible() != said.visible ||
                control.Enabled() != said.enabled) {
                return false;
            }
        }
        const auto& tabs = form.The("N").Tabs();
        return std::equal(tabs.begin(), tabs.end(), pages_.begin(), pages_.end(),
                          [](const platform::TabPage& tab, const Page& page) {
                              return tab.caption == page.first && tab.toolTip == page.second;
                          });
    }

    static std::vector<std::string> Lines(const std::string& file) {
        std::vector<std::string> lines;
        std::size_t start = 0;
        for (std::size_t i = 0; i < file.size(); ++i) {
            if (file[i] != '\r' && file[i] != '\n') continue;
            lines.push_back(file.substr(start, i - start));
            if (file[i] == '\r' && i + 1 < file.size() && file[i + 1] == '\n') ++i;
            start = i + 1;
        }
        lines.push_back(file.substr(start));
        return lines;
    }

  private:
    // The number of the control in the table; its size where there is none.
    static std::size_t Find(const std::string& name) {
        std::size_t number = 0;
        while (number < std::size(table) &&
               (table[number].index >= 0 || !platform::SameIgnoringCase(table[number].name, name))) {
            ++number;
        }
        return number;
    }
    static std::size_t FindElement(const std::string& key) {
        const std::size_t open = key.find('(');
        if (open == std::string::npos || !platform::SameIgnoringCase(key.substr(0, open), "C")) return std::size(table);
        const double index = platform::Val(key.substr(open + 1));
        if (index >= -0.5 && index <= 0.5) return 2;
        return index >= 1.5 && index <= 2.5 ? 3 : std::size(table);
    }

    void Set(const std::string& key, const std::string& value) {
        std::size_t number = Find(key);
        if (number == std::size(table)) number = FindElement(key);
        if (number == std::size(table) || std::string(table[number].name).ends_with('_')) return;
        const std::size_t bar = std::min(value.find('|'), value.size());
        std::string caption;
        for (std::size_t i = 0; i < bar; ++i) {
            const bool escape = value[i] == '\\' && i + 1 < bar && (value[i + 1] == 'n' || value[i + 1] == 't');
            caption.push_back(escape ? (value[i + 1] == 'n' ? '\r' : '\t') : value[i]);
            if (escape) ++i;
        }
        Shown& shown = shown_[number];
        const ControlKind kind = table[number].kind;
        if (kind == ControlKind::Label || kind == ControlKind::OptionButton) shown.caption = caption;
        if (kind == ControlKind::PictureBox && !caption.empty()) {
            if (caption.size() % 2 == 0) shown.picture = "file " + caption;
        } else if (kind != ControlKind::Timer) {
            shown.toolTip = value.substr(std::min(bar + 1, value.size()));
        }
    }

    void RestrictOne(const std::string& entry, bool hide) {
        std::size_t number = Find(entry);
        const std::size_t open = entry.find('('), colon = entry.find(':');
        if (number == std::size(table) && open != std::string::npos && entry.find(')', open) != std::string::npos &&
            colon == std::string::npos) {
            number = FindElement(entry);
        }
        if (number < std::size(table)) {
            if (!hide) shown_[number].enabled = false;
            if (hide && table[number].kind != ControlKind::Timer) shown_[number].visible = false;
        } else if (hide && colon != std::string::npos && platform::SameIgnoringCase(entry.substr(0, colon), "N")) {
            RemovePages(static_cast<std::uint32_t>(platform::ValLong(entry.substr(colon + 1))));
        }
    }

    void RemovePages(std::uint32_t mask) {
        for (std::size_t position = pages_.size(); position-- > 0;) {
            if ((mask >> position & 1) != 0) pages_.erase(pages_.begin() + static_cast<std::ptrdiff_t>(position));
        }
        for (Page& page : pages_) page.second = page.second.substr(0, page.second.find('+'));
    }

    std::vector<Shown> shown_;
    std::vector<Page> pages_;
};

std::string Join(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    if (lines.back().empty()) text.erase(text.size() - 2);
    return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string hide = input.Text(input.Byte() & 31), disable = input.Text(input.Byte() & 31);
    const std::string file = input.Text(size);

    const std::string text = LanguageText::WithLineEnds(file);
    const std::vector<std::string> lines = Model::Lines(file);
    fuzz::Expect(text == Join(lines), "every line ends in CR LF and nothing else is changed");
    fuzz::Expect(LanguageText::WithLineEnds(text) == text, "line ends that are right stay");

    platform::FormView form("F", table);
    form.The("B_").SetEnabled(true);
    form.The("M").SetEnabled(true);
    form.The("N").SetTabs({{"a", "x+y"}, {"b", "x"}, {"c", "+"}, {"d", ""}});
    Model model;

    FormTexts::ApplySection(form, text, "F", PictureOf);
    model.Read(lines, "[F]");
    fuzz::Expect(model.Describes(form), "the controls show what the section says");
    (void)FormTexts::Hide(form, hide);
    model.Restrict(hide, true);
    fuzz::Expect(model.Describes(form), "what the list names is hidden and nothing else");
    (void)FormTexts::Disable(form, disable);
    model.Restrict(disable, false);
    fuzz::Expect(model.Describes(form), "what the list names is disabled and nothing else");

    for (platform::Control& control : form.Controls()) {
        const std::string own =
            FormTexts::TextOf(control, hide, [&](std::string_view key) { return disable + std::string(key); });
        FormTexts::SetText(control, own);
        fuzz::Expect(control.Caption().find('|') == std::string::npos, "no caption holds a bar");
    }
    (void)LanguageText::HelpCode(file);
    fuzz::Expect(LanguageText::FileName(file).size() >= 4, "every language has a file name");
    fuzz::Expect(LanguageText::WithPlainFileName(file).size() == file.size(), "folding keeps the length");
    return 0;
}
