// Hostile prompts and identifiers: the fields and the link against a model that reads a letter at a time, the memory
// against one that keeps a list of what was answered, and the layout against the rules that it promises.
#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "Fuzz.h"
#include "question/QuestionLayout.h"
#include "question/QuestionRules.h"

namespace {

using fuzz::Expect;
using QuestionLayout::Part;
using QuestionLayout::Rect;
using QuestionLayout::Size;

bool Leads(char letter) { return static_cast<unsigned char>(letter) >= 0xF0; }

// --- prompts

std::vector<std::string> FieldsOf(const std::string& prompt) {
    std::vector<std::string> fields(1);
    bool second = false;
    for (const char letter : prompt) {
        if (letter == '|' && !second) {
            fields.emplace_back();
        } else {
            fields.back().push_back(letter);
        }
        second = !second && Leads(letter);
    }
    fields.resize(std::max<std::size_t>(fields.size(), 5));
    return fields;
}

void CheckPrompt(const std::string& prompt, const std::string& ownCaption) {
    const std::array<std::string, 3> captions = {"", ownCaption, ""};
    const QuestionRules::Fields fields = QuestionRules::SplitPrompt(prompt, captions, Leads);
    if (!ownCaption.empty()) {
        Expect(fields.prompt == prompt && fields.captions == captions && fields.fourthCaption.empty(),
               "a prompt is not divided beside the caller's own captions");
    } else {
        const std::vector<std::string> parts = FieldsOf(prompt);
        Expect(fields.prompt == parts[0], "the first field is the prompt");
        for (std::size_t i = 0; i < 3; ++i) Expect(fields.captions[i] == parts[i + 1], "the next fields are captions");
        Expect(fields.fourthCaption == parts[4], "the fifth field is the fourth button's caption");
    }

    const std::string text = fields.prompt;
    const std::optional<QuestionRules::Link> link = QuestionRules::FindLink(text, Leads);
    const std::string offered = QuestionRules::OfferedLink(text, Leads);
    Expect(link || offered.empty(), "what is not there is not offered");
    if (link) {
        Expect(link->length > 0 && link->start + link->length <= text.size(), "a link lies inside the prompt");
        const std::string found = text.substr(link->start, link->length);
        Expect(found.find(' ') == std::string::npos, "a link ends at a blank");
        const std::size_t end = link->start + link->length;
        Expect(end == text.size() || text[end] == ' ', "a link goes up to a blank or the end");
        const bool http = text.find("http") != std::string::npos, www = text.find("www.") != std::string::npos;
        Expect(!http || (link->start == text.find("http")), "http goes first");
        Expect(http || !www || link->start == text.find("www."), "www. goes second");
        Expect(http || www || found.find('@') != std::string::npos, "else it is an address");
        std::string plain = offered;
        if (plain.starts_with("mailto:") && !found.starts_with("mailto:")) plain.erase(0, 7);
        Expect(found.starts_with(plain), "what is offered stands in the prompt");
        Expect(offered.find_first_of("\r\n\t ") == std::string::npos, "what is offered is one line");
    }
}

// --- identifiers

// All bits of all questions that were answered, by slot.
struct Answers {
    std::set<std::pair<int, int>> yes, no;  // slot, bit
};

int SlotOf(std::uint32_t id) { return (id & 0x80000000u) == 0 ? 0 : static_cast<int>(id >> 28) - 6; }

bool Holds(const std::set<std::pair<int, int>>& answers, int slot, std::uint32_t bits) {
    for (int bit = 0; bit < 31; ++bit) {
        if ((bits >> bit & 1) != 0 && answers.contains({slot, bit})) return true;
    }
    return false;
}

void Add(std::set<std::pair<int, int>>& answers, int slot, std::uint32_t bits) {
    for (int bit = 0; bit < 31; ++bit) {
        if ((bits >> bit & 1) != 0) answers.insert({slot, bit});
    }
}

void CheckQuestion(std::uint32_t id, int set, int answer, QuestionRules::Memory& memory, Answers& model) {
    const auto number = static_cast<std::int32_t>(id);
    const std::optional<QuestionRules::Identity> question = QuestionRules::Decode(number);
    if (number >= -5 && number <= -1) {
        Expect(question && question->IsInput() == (number < -1), "-2 to -5 are inputs, -1 is plain");
        Expect(!QuestionRules::Recall(memory, *question, QuestionRules::SetOf(set)), "neither is recalled");
        return;
    }
    const int slot = SlotOf(id);
    const std::uint32_t bits = slot == 0 ? id : id & 0x0FFFFFFFu;
    Expect(question.has_value() == (slot < 8), "slots 8 and 9 have no place");
    if (!question) return;
    Expect(question->slot == slot && question->id == static_cast<std::int32_t>(bits), "slot and bits");

    std::string expected = "asked";
    const int buttons = set & 15;
    const bool yesNo = buttons == 3 || buttons == 4;
    if (Holds(model.yes, slot, bits)) {
        expected = buttons == 1 ? "1" : yesNo ? "6" : "";
    } else if (slot != 6 && Holds(model.no, slot, bits) && (buttons == 1 || yesNo)) {
        expected = yesNo ? "7" : "2";
    }
    Expect(QuestionRules::Recall(memory, *question, QuestionRules::SetOf(set)).value_or("asked") == expected,
           "what was answered is recalled");

    QuestionRules::Remember(memory, *question, answer);
    const bool yes = answer == 1 || answer == 6;
    Add(yes ? model.yes : model.no, !yes && slot == 6 ? 0 : slot, bits);
    const std::vector<QuestionRules::Setting> settings = QuestionRules::SettingsOf(memory, *question);
    Expect(settings.empty() == (slot == 4), "slot 4 alone is not written");
    for (const QuestionRules::Setting& setting : settings) Expect(setting.value != "-1", "-1 is never written");
}

// --- layouts

class Measure final : public QuestionLayout::TextMeasure {
  public:
    std::int32_t lengths[9] = {};
    [[nodiscard]] Size Of(Part part, std::int32_t width) const override {
        const std::int32_t length = lengths[static_cast<std::size_t>(part)];
        if (width <= 0 || length * 6 <= width) return {length * 6, 13};
        const std::int32_t letters = std::max(1, width / 6);
        return {letters * 6, (length + letters - 1) / letters * 13};
    }
};

bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

void CheckLayout(fuzz::Input& input) {
    Measure measure;
    for (std::int32_t& length : measure.lengths) length = input.Byte() * (input.Byte() % 8 == 0 ? 16 : 1);
    QuestionLayout::Request request;
    const std::uint8_t shape = input.Byte();
    request.largest = {400 + 8 * input.Byte(), 300 + 8 * input.Byte()};
    request.picture = (shape & 1) != 0;
    request.link = (shape & 2) != 0;
    request.check = (shape & 4) != 0;
    request.input = static_cast<QuestionLayout::Input>(shape / 8 % 3);
    request.buttons = {Part::First};
    for (const Part part : {Part::No, Part::Cancel, Part::All, Part::Help}) {
        if ((input.Byte() & 1) != 0) request.buttons.push_back(part);
    }
    if ((shape & 64) != 0) request.wanted = {16 * input.Byte(), 16 * input.Byte()};
    const QuestionLayout::Layout layout = QuestionLayout::Arrange(request, measure);
    Expect(layout.inside.width <= request.largest.width, "the form is no wider than the screen");
    std::vector<Rect> parts = layout.buttons;
    Expect(parts.size() == request.buttons.size(), "every button has its place");
    parts.insert(parts.end(), {layout.captionBar, layout.prompt, layout.grip});
    if (request.picture) parts.push_back(layout.picture);
    if (request.link) parts.push_back(layout.link);
    if (request.check) parts.push_back(layout.check);
    if (request.input != QuestionLayout::Input::None) parts.push_back(layout.input);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        Expect(parts[i].width > 0 && parts[i].height > 0, "everything shown has a size");
        Expect(parts[i].left >= 0 && parts[i].top >= 0 && parts[i].Right() <= layout.inside.width &&
                   parts[i].Bottom() <= layout.inside.height,
               "everything lies inside");
        for (std::size_t other = 0; other < i; ++other) Expect(!Overlap(parts[i], parts[other]), "nothing overlaps");
    }
    Expect(layout.promptScrolls || measure.Of(Part::Prompt, layout.prompt.width).height <= layout.prompt.height,
           "a prompt that does not scroll is whole");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::uint8_t kind = input.Byte();
    if (kind % 3 == 0) {
        const std::string caption = input.Text(input.Byte() & 3);
        CheckPrompt(input.Text(size), caption);
    } else if (kind % 3 == 1) {
        QuestionRules::Memory memory;
        Answers model;
        while (!input.Empty()) {
            std::uint32_t id = 0;
            for (int i = 0; i < 4; ++i) id = id << 8 | input.Byte();
            const int set = input.Byte();
            CheckQuestion(id, set, input.Byte() % 10, memory, model);
        }
    } else {
        CheckLayout(input);
    }
    return 0;
}
