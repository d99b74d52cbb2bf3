#include "question/QuestionRules.h"

#include <algorithm>
#include <limits>

#include "platform/Text.h"

namespace QuestionRules {
namespace {

constexpr std::uint32_t slotBits = 0xF0000000u;
constexpr std::int32_t slotUnit = 268435456;  // 2 to the 28th
constexpr std::int32_t lastInput = -6;        // input identifiers lie above it
constexpr std::int32_t noSlot = 6;            // its "No" answers stand in slot 0
constexpr std::int32_t slotWithoutSettings = 4;
constexpr std::int32_t seen = 0x400000;  // in a style: what is typed is shown even though it is not remembered
constexpr std::string_view yesKey = "ShowMessageBoxYes", noKey = "ShowMessageBoxNo";

// By slot; slot 1 is never used.
constexpr std::string_view slotCodes[Memory::slots] = {"", "", "2", "3", "-1", "5", "6", "_"};
constexpr std::string_view plainCode = "_";

// By set.
constexpr ButtonPlan plans[] = {
    {false, false, "ButtonOKYes", {}, {}, false},         {false, true, "ButtonOKYes", {}, {}, false},
    {true, true, "ButtonOKYes3", "ButtonNo3", {}, false}, {true, true, "ButtonOKYes2", {}, {}, true},
    {true, false, "ButtonOKYes2", "ButtonNo", {}, true},  {false, true, "ButtonNo3", {}, "ButtonCancel", false},
};

constexpr std::string_view addressLetters = "abcdefghijklmnopqrstuvwxyz1234567890_.";
constexpr std::string_view sentenceEnds = ".,;:!?)\"'>";

// Where `letter` stands by itself, not as a second byte.
std::size_t FindLetter(std::string_view text, char letter, std::size_t start, LeadByte leads) {
    for (std::size_t i = start; i < text.size(); ++i) {
        if (leads && leads(text[i])) {
            ++i;
        } else if (text[i] == letter) {
            return i;
        }
    }
    return std::string_view::npos;
}

std::size_t AddressStart(std::string_view prompt, std::size_t at) {
    while (at >= 1 && addressLetters.find(platform::Lower(prompt[at - 1])) != std::string_view::npos) --at;
    return at;
}

std::size_t Index(std::int32_t slot) { return static_cast<std::size_t>(slot); }

bool AllEmpty(const std::array<std::string, 3>& captions) {
    return std::all_of(captions.begin(), captions.end(), [](const std::string& caption) { return caption.empty(); });
}

}  // namespace

std::optional<Identity> Decode(std::int32_t questionId) {
    if (questionId > lastInput) return Identity{questionId, 0, slotCodes[0]};
    const auto bits = static_cast<std::uint32_t>(questionId);
    const std::int32_t slot = (static_cast<std::int32_t>(bits & slotBits) / slotUnit & 7) + 2;
    if (Index(slot) >= Memory::slots) return std::nullopt;
    return Identity{static_cast<std::int32_t>(bits & ~slotBits), slot, slotCodes[slot]};
}

ButtonSet SetOf(std::int32_t buttons) { return static_cast<ButtonSet>(buttons & Prompt::Style::ButtonBits); }

bool IsMasked(std::int32_t buttons) {
    return (buttons & (Prompt::Style::NeverRemembered | seen)) == Prompt::Style::NeverRemembered;
}

const ButtonPlan& PlanOf(ButtonSet set) {
    const auto row = static_cast<std::size_t>(set);
    return row < std::size(plans) ? plans[row] : plans[0];
}

std::string ResultOf(std::int32_t answer, ButtonSet set) {
    const bool retry = answer == Prompt::Answer::OK && set == ButtonSet::RetryCancel;
    return platform::Decimal(retry ? Prompt::Answer::Retry : answer);
}

std::optional<std::string> Recall(const Memory& memory, const Identity& question, ButtonSet set) {
    if (question.id <= Prompt::Id::Plain) return std::nullopt;
    const bool yesNo = set == ButtonSet::YesNo || set == ButtonSet::YesNoCancel;
    const std::int32_t noMask = question.slot == noSlot ? 0 : memory.AnswerNoMask[Index(question.slot)];
    if ((memory.AnswerYesMask[Index(question.slot)] & question.id) >= 1) {
        if (set == ButtonSet::OKCancel) return platform::Decimal(Prompt::Answer::OK);
        return yesNo ? platform::Decimal(Prompt::Answer::Yes) : std::string();
    }
    if ((noMask & question.id) <= 0 || (set != ButtonSet::OKCancel && !yesNo)) return std::nullopt;
    return platform::Decimal(yesNo ? Prompt::Answer::No : Prompt::Answer::Cancel);
}

void Remember(Memory& memory, const Identity& question, std::int32_t answer) {
    if (answer == Prompt::Answer::OK || answer == Prompt::Answer::Yes) {
        memory.AnswerYesMask[Index(question.slot)] |= question.id;
    } else {
        memory.AnswerNoMask[Index(question.slot == noSlot ? 0 : question.slot)] |= question.id;
    }
}

std::vector<Setting> SettingsOf(const Memory& memory, const Identity& question) {
    std::vector<Setting> settings;
    if (question.slot == slotWithoutSettings) return settings;
    const std::string prefix(question.code == plainCode ? std::string_view() : question.code);
    const auto add = [&](std::string_view key, std::int32_t mask) {
        if (mask != -1) settings.push_back({prefix + std::string(key), platform::Decimal(mask)});
    };
    add(yesKey, memory.AnswerYesMask[Index(question.slot)]);
    add(noKey, memory.AnswerNoMask[Index(question.slot)]);
    return settings;
}

std::optional<std::int32_t> NextCount(std::string_view count) {
    const std::int32_t number = platform::ValLong(count);
    if (number == std::numeric_limits<std::int32_t>::max()) return std::nullopt;
    return number + 1;
}

std::string CountKey(std::int32_t questionId) {
    return platform::UpperHex(static_cast<std::uint32_t>(questionId)) + "Asked";
}

Fields SplitPrompt(std::string_view prompt, const std::array<std::string, 3>& captions, LeadByte leads) {
    Fields fields{std::string(prompt), captions, {}};
    if (!AllEmpty(captions)) return fields;
    std::vector<std::string> parts;
    for (std::size_t start = 0;;) {
        const std::size_t bar = FindLetter(prompt, '|', start, leads);
        parts.emplace_back(prompt.substr(start, bar - start));
        if (bar == std::string_view::npos) break;
        start = bar + 1;
    }
    parts.resize(std::max<std::size_t>(parts.size(), 5));
    fields.prompt = parts[0];
    std::copy_n(parts.begin() + 1, fields.captions.size(), fields.captions.begin());
    fields.fourthCaption = parts[4];
    return fields;
}

std::optional<Link> FindLink(std::string_view prompt, LeadByte leads) {
    std::size_t start = prompt.find("http");
    if (start == std::string_view::npos) start = prompt.find("www.");
    if (start == std::string_view::npos) {
        const std::size_t at = FindLetter(prompt, '@', 0, leads);
        if (at == std::string_view::npos) return std::nullopt;
        start = AddressStart(prompt, at);
    }
    const std::size_t end = std::min(prompt.find(' ', start), prompt.size());
    return Link{start, end - start};
}

std::string OfferedLink(std::string_view prompt, LeadByte leads) {
    const std::optional<Link> link = FindLink(prompt, leads);
    if (!link) return {};
    std::string_view text = prompt.substr(link->start, link->length);
    text = text.substr(0, text.find_first_of("\r\n\t"));
    while (!text.empty() && sentenceEnds.find(text.back()) != std::string_view::npos) text.remove_suffix(1);
    if (text.starts_with("http")) {
        const std::size_t host = text.find("://");
        return host != std::string_view::npos && host + 3 < text.size() ? std::string(text) : std::string();
    }
    if (text.starts_with("www.")) return text.size() > 4 ? std::string(text) : std::string();
    const std::size_t at = text.find('@');
    const bool whole = at != std::string_view::npos && at > 0 && at + 1 < text.size();
    return whole ? "mailto:" + std::string(text) : std::string();
}

bool HasAccessKey(std::string_view caption, char letter, SmallLetter small) {
    const auto isLetter = [&](char key) {
        return small ? small(key) == small(letter) : platform::Lower(key) == platform::Lower(letter);
    };
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') continue;
        ++i;
        if (caption[i] != '&' && isLetter(caption[i])) return true;
    }
    return false;
}

Choice ChosenBy(char letter, const Captions& captions, SmallLetter small) {
    if (HasAccessKey(captions.no, letter, small)) return Choice::No;
    if (HasAccessKey(captions.cancel, letter, small)) return Choice::Cancel;
    if (HasAccessKey(captions.first, letter, small)) return Choice::First;
    return Choice::None;
}

}  // namespace QuestionRules
