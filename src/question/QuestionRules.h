// question/QuestionRules.h: what the question box decides: which question it is, whether it was answered already, what
// stands on the buttons, what an answer means. Pure text: no Windows header, no globals.
//
// Shapes  Text is ANSI. Identifiers, styles (`buttons`) and answers are those of support/Prompt.h; results are answers
// as
//         texts, or nothing.
//         Where a second byte may look like a sign of its own, `LeadByte` tells which bytes have one; `SmallLetter`
//         knows the letters beyond A to Z.
// Errors  none: every text has a reading; an identifier without a place in the memory is none.
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/Prompt.h"

namespace QuestionRules {

using LeadByte = bool (*)(char);
using SmallLetter = char (*)(char);

// --- which question it is

struct Identity {
    std::int32_t id;        // the identifier without its slot: -1 plain, -2 to -5 an input, else the question's bits
    std::int32_t slot = 0;  // of the memory
    std::string_view code;  // the slot in a setting's name

    [[nodiscard]] bool IsInput() const { return id < Prompt::Id::Plain; }
};

// None for an identifier that names a slot that the memory does not have.
[[nodiscard]] std::optional<Identity> Decode(std::int32_t questionId);

// --- buttons

enum class ButtonSet : std::int32_t {
    OK = Prompt::Style::OK,
    OKCancel = Prompt::Style::OKCancel,
    AbortRetryIgnore = Prompt::Style::AbortRetryIgnore,
    YesNoCancel = Prompt::Style::YesNoCancel,
    YesNo = Prompt::Style::YesNo,
    RetryCancel = Prompt::Style::RetryCancel,
};

// The low four bits, which need not be one of the sets.
[[nodiscard]] ButtonSet SetOf(std::int32_t buttons);
[[nodiscard]] bool IsMasked(std::int32_t buttons);  // an input shows dots

// What a set shows. A key names a text of the form's section; an empty key leaves the form's own caption.
struct ButtonPlan {
    bool showsNo, showsCancel;
    std::string_view firstKey, secondKey, thirdKey;
    bool firstMeansYes;
};
[[nodiscard]] const ButtonPlan& PlanOf(ButtonSet set);  // a set that does not exist: OK

// --- answers

[[nodiscard]] std::string ResultOf(std::int32_t answer, ButtonSet set);

// The answers that are not asked for again, a mask a slot.
struct Memory {
    static constexpr std::size_t slots = 8;
    std::array<std::int32_t, slots> AnswerYesMask{}, AnswerNoMask{};
};

// The result of a question that was answered before; none: it is to be asked.
[[nodiscard]] std::optional<std::string> Recall(const Memory& memory, const Identity& question, ButtonSet set);

void Remember(Memory& memory, const Identity& question, std::int32_t answer);

struct Setting {
    std::string key, value;
};
// What is written of a question's slot, below section "Settings".
[[nodiscard]] std::vector<Setting> SettingsOf(const Memory& memory, const Identity& question);

// The next count of how often a message was asked; none where it does not fit.
[[nodiscard]] std::optional<std::int32_t> NextCount(std::string_view count);
[[nodiscard]] std::string CountKey(std::int32_t questionId);  // "90000010Asked"

// --- the prompt

struct Fields {
    std::string prompt;
    std::array<std::string, 3> captions;  // empty: the standard one
    std::string fourthCaption;
};
// `captions` are the caller's own; with any of them the prompt is not divided.
[[nodiscard]] Fields SplitPrompt(std::string_view prompt, const std::array<std::string, 3>& captions,
                                 LeadByte leads = nullptr);

struct Link {
    std::size_t start, length;
};
// "http", else "www.", else what stands around "@", up to the next blank.
[[nodiscard]] std::optional<Link> FindLink(std::string_view prompt, LeadByte leads = nullptr);

// What the form offers of it: up to the end of its line and without the sign that ends a sentence; "mailto:" before an
// address. Empty where nothing of use is left.
[[nodiscard]] std::string OfferedLink(std::string_view prompt, LeadByte leads = nullptr);

// --- keys

// Does `caption` have `letter` as its access key? "&&" has none.
[[nodiscard]] bool HasAccessKey(std::string_view caption, char letter, SmallLetter small = nullptr);

enum class Choice { None, First, No, Cancel };
struct Captions {
    std::string_view first, no, cancel;  // empty: not shown
};
[[nodiscard]] Choice ChosenBy(char letter, const Captions& captions,
                              SmallLetter small = nullptr);  // No before Cancel before the first

}  // namespace QuestionRules
