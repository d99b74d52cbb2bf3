#include "question/QuestionBox.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "config/IniFile.h"
#include "language/FormTexts.h"
#include "language/Language.h"
#include "language/LanguageForms.h"
#include "platform/Err.h"
#include "platform/Guard.h"
#include "platform/Locale.h"
#include "platform/MessageBox.h"
#include "platform/Text.h"
#include "question/StandardInput.h"
#include "support/Debug.h"
#include "support/LogLine.h"
#include "support/Prompt.h"

namespace QuestionBox {
namespace {

using Debug::Trace;
using Debug::WriteDebug;
using platform::Control;
using QuestionRules::ButtonPlan;
using QuestionRules::ButtonSet;
using QuestionRules::Identity;

constexpr char procedure[] = "MsgInputBox";
constexpr std::int32_t overflow = 6;  // an error's number
constexpr std::string_view formSection = "FormQuestion", messageSection = "Messages", settingsSection = "Settings",
                           countSection = "Msg";
constexpr std::string_view noCaptionSuffix = "2";  // of Yes, No, Cancel

FormQuestion* current = nullptr;  // on top of those that are shown

constexpr const char* answerButtons[] = {"ButtonOKYes", "ButtonNo", "ButtonCancel", "ButtonAll"};

bool IsShown() { return ShownForm() != nullptr; }

// What was asked, and how far the answer has come.
struct Call {
    std::int32_t questionId;
    std::string& prompt;
    std::int32_t buttons;
    std::string title, defaultText;
    std::int32_t layoutOption;
    bool& cancelled;
    std::string extraText;
    std::array<std::string, 3> captions;
    std::string extraOption;

    std::int32_t step = 0;
    bool finished = false;  // else an error ended it
    std::string result;

    [[nodiscard]] ButtonSet Set() const { return QuestionRules::SetOf(buttons); }
    void Reach(std::int32_t reached) {
        step = reached;
        WriteDebug(procedure, reached);
    }
    void Finish(std::string answer) {
        result = std::move(answer);
        finished = true;
    }
};

// --- the captions

// English where the language file lacks a text.
struct Caption {
    std::string_view key, english;
};
constexpr Caption englishCaptions[] = {
    {"ButtonOKYes", "OK"}, {"ButtonOKYes2", "&Yes"}, {"ButtonOKYes3", "&Abort"},
    {"ButtonNo", "&No"},   {"ButtonNo3", "&Retry"},  {"ButtonCancel", "Cancel"},
};

std::string StandardCaption(std::string_view key) {
    std::string caption = Language::GetLanguageString(formSection, key);
    for (const Caption& row : englishCaptions) {
        if (caption.empty() && row.key == key) caption = row.english;
    }
    return caption;
}

void SetStandardCaption(Control& button, std::string_view key) {
    if (!key.empty()) FormTexts::SetText(button, StandardCaption(key));
}

void SetButtons(FormQuestion& form, const Call& call) {
    const ButtonPlan& plan = QuestionRules::PlanOf(call.Set());
    Control &first = form.The("ButtonOKYes"), &no = form.The("ButtonNo"), &cancel = form.The("ButtonCancel");
    no.SetVisible(plan.showsNo);
    cancel.SetVisible(plan.showsCancel);
    form.The("buttonyes").SetValue(plan.firstMeansYes);
    SetStandardCaption(first, plan.firstKey);
    SetStandardCaption(no, plan.secondKey);
    SetStandardCaption(cancel, plan.thirdKey);
    if (call.Set() == ButtonSet::YesNoCancel) Language::GetLanguageString2(form, no, noCaptionSuffix);
}

void SetOwnCaptions(FormQuestion& form, const QuestionRules::Fields& fields) {
    const char* const names[] = {"ButtonOKYes", "ButtonNo", "ButtonCancel"};
    for (std::size_t i = 0; i < fields.captions.size(); ++i) {
        if (!fields.captions[i].empty()) form.The(names[i]).SetCaption(fields.captions[i]);
    }
    if (!fields.fourthCaption.empty()) form.The("ButtonAll").SetCaption(fields.fourthCaption);
}

// --- the rest of the form

struct Picture {
    std::int32_t style;
    const char* name;
};
constexpr Picture pictures[] = {{Prompt::Style::Error, "*error"},
                                {Prompt::Style::Question, "*question"},
                                {Prompt::Style::Warning, "*warning"},
                                {Prompt::Style::Information, "*information"}};

void SetPicture(FormQuestion& form, std::int32_t buttons) {
    for (const Picture& picture : pictures) {
        if ((buttons & Prompt::Style::PictureBits) != picture.style) continue;
        form.The("Im").SetPicture(picture.name);
        form.The("Im").SetVisible(true);
    }
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
        if (end > start) lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

void SetInput(FormQuestion& form, const Call& call, const Identity& question) {
    Control& input = form.The(question.id == Prompt::Id::ListInput ? "Combo1" : "TextInput");
    if (question.id == Prompt::Id::ListInput) input.SetList(Lines(call.extraText));
    input.SetVisible(true);
    input.SetText(call.defaultText);
    if (question.id != Prompt::Id::ListInput && QuestionRules::IsMasked(call.buttons)) form.SetMasked();
    input.TakeFocus();
}

// What a settings file hides or disables, one button answers.
void KeepAnswerable(FormQuestion& form) {
    const auto answers = [&](const char* name) { return form.The(name).Visible() && form.The(name).Enabled(); };
    if (std::any_of(std::begin(answerButtons), std::end(answerButtons), answers)) return;
    form.The("ButtonOKYes").SetVisible(true);
    form.The("ButtonOKYes").SetEnabled(true);
}

// The second or third of the buttons shown where the style word says so, unless the first one is preselected.
void SetDefaultButton(FormQuestion& form, const Call& call, bool takesFocus) {
    std::vector<Control*> visible;
    for (const char* name : answerButtons) {
        if (form.The(name).Visible() && form.The(name).Enabled()) visible.push_back(&form.The(name));
    }
    std::size_t chosen = static_cast<std::size_t>((call.buttons & Prompt::Style::DefaultButtonBits) >> 8);
    if (chosen >= visible.size() || platform::Val(call.defaultText) == Prompt::Answer::OK) chosen = 0;
    form.SetDefaultButton(*visible[chosen]);
    if (takesFocus) visible[chosen]->TakeFocus();
}

// --- the steps

// While another box is shown, or where the form cannot be. The standard box's Yes is taken as OK.
void AskOtherwise(Call& call, const Identity& question) {
    WriteDebug(" box2", LogLine::FreeText);
    if (question.IsInput()) {
        call.Finish(StandardInput(call.prompt, call.title, call.defaultText, call.cancelled));
        return;
    }
    const std::int32_t answer = platform::ShowMessageBox(call.prompt, call.buttons, call.title);
    call.cancelled = answer == Prompt::Answer::Cancel;
    call.Finish(platform::Decimal(answer == Prompt::Answer::Yes ? Prompt::Answer::OK : answer));
}

void Prepare(FormQuestion& form, Call& call, const Identity& question) {
    if (!call.title.empty()) form.SetCaption(call.title);
    call.Reach(7);
    form.The("ButtonAll").SetVisible((call.buttons & Prompt::Style::FourthButton) != 0);
    SetButtons(form, call);
    call.Reach(9);
    QuestionRules::Fields fields = QuestionRules::SplitPrompt(call.prompt, call.captions, platform::IsLeadByte);
    call.prompt = fields.prompt;
    SetOwnCaptions(form, fields);
    call.Reach(10);
    form.HelpTopic = call.extraOption;
    form.The("ButtonHelp").SetVisible(!form.HelpTopic.empty());
    SetPicture(form, call.buttons);
    const bool mayBeRemembered = question.id > 0 && (call.buttons & Prompt::Style::NeverRemembered) == 0;
    form.The("Check1").SetVisible(mayBeRemembered);
    if (question.IsInput()) SetInput(form, call, question);
    KeepAnswerable(form);
    SetDefaultButton(form, call, !question.IsInput());
    call.Reach(11);
    form.SetPrompt(call.prompt, QuestionRules::OfferedLink(call.prompt, platform::IsLeadByte));
    call.Reach(12);
}

std::string ResultOf(FormQuestion& form, const Call& call, const Identity& question, std::int32_t answer) {
    if (question.id == Prompt::Id::ListInput) return form.The("Combo1").Text();
    if (question.IsInput()) return answer == Prompt::Answer::Cancel ? std::string() : form.The("TextInput").Text();
    return answer == Prompt::Answer::None ? std::string() : QuestionRules::ResultOf(answer, call.Set());
}

void RememberAnswer(FormQuestion& form, const Call& call, const Identity& question, std::int32_t answer) {
    const bool asksAgain = form.The("Check1").Value();
    if (asksAgain || answer == Prompt::Answer::None || (call.buttons & Prompt::Style::NeverRemembered) != 0) return;
    QuestionRules::Remember(memory, question, answer);
    for (const QuestionRules::Setting& setting : QuestionRules::SettingsOf(memory, question)) {
        IniFile::SetIniSetting(settingsSection, setting.key, setting.value, true);
    }
}

void AskOnForm(FormQuestion& form, Call& call, const Identity& question) {
    Prepare(form, call, question);
    form.SetSizes(0, 0, call.layoutOption, 0, 0);
    FormQuestion* const outer = std::exchange(current, &form);
    const bool seen = form.ShowModal();
    current = outer;
    if (!seen) return AskOtherwise(call, question);
    call.Reach(13);
    const std::int32_t answer = platform::ValLong(form.The("RetVal").TextSet());
    call.cancelled = answer == Prompt::Answer::Cancel;
    std::string result = ResultOf(form, call, question, answer);
    call.Reach(14);
    RememberAnswer(form, call, question, answer);
    call.Finish(std::move(result));
}

// The steps of the central operation; ends early at an error.
void Ask(Call& call) {
    call.cancelled = false;
    if (formLoaded && IsShown()) return call.Finish({});
    call.Reach(3);
    const std::optional<Identity> question = QuestionRules::Decode(call.questionId);
    if (!question) return platform::Err().Set(platform::SubscriptOutOfRange, "Subscript out of range");
    call.Reach(4);
    if (std::optional<std::string> recalled = QuestionRules::Recall(memory, *question, call.Set())) {
        call.cancelled = platform::ValLong(*recalled) == Prompt::Answer::Cancel;
        return call.Finish(std::move(*recalled));
    }
    call.Reach(5);
    if (IsShown()) return AskOtherwise(call, *question);
    FormQuestion form;
    if (!form.Load()) return AskOtherwise(call, *question);
    AskOnForm(form, call, *question);
}

std::int32_t AskMessage(std::int32_t questionId, std::int32_t buttons, std::string text, const std::string& extraOption,
                        std::int32_t askLimit) {
    if (askLimit > 0) {
        const std::string key = QuestionRules::CountKey(questionId);
        const std::optional<std::int32_t> count = QuestionRules::NextCount(IniFile::GetIniSetting(countSection, key));
        if (!count) {
            platform::Err().Set(overflow, "Overflow");
            WriteDebug("MsgBoxMessage", 3);
            return 0;
        }
        if (*count > askLimit) return Prompt::Answer::OK;
        IniFile::SetIniSetting(countSection, key, platform::Decimal(*count), true);
    }
    return QuestionMsgBox(questionId, text, buttons, {}, -1, 0, {}, {}, {}, extraOption);
}

class PromptPort final : public Prompt::Port {
  public:
    std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                     const std::string& title) override {
        return QuestionMsgBox(questionId, prompt, buttons, title);
    }
    std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText,
                      bool& cancelled) override {
        std::string text = prompt;
        return MsgInputBox(Prompt::Id::TextInput, text, Prompt::Style::OKCancel, title, defaultText, 0, cancelled, {},
                           {}, {}, {}, {});
    }
    std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons, const std::string& search1,
                         const std::string& replace1, const std::string& search2, const std::string& replace2,
                         std::int32_t askLimit) override {
        return MsgBoxMessage(questionId, number, buttons, search1, replace1, search2, replace2, {}, askLimit);
    }
};

PromptPort port;

}  // namespace

QuestionRules::Memory memory;

std::string MsgInputBox(std::int32_t questionId, std::string& prompt, std::int32_t buttons, const std::string& title,
                        const std::string& defaultText, std::int32_t layoutOption, bool& cancelled,
                        const std::string& extraText, const std::string& caption1, const std::string& caption2,
                        const std::string& caption3, const std::string& extraOption) {
    WriteDebug(procedure, LogLine::Entry);
    Call call{questionId,  prompt,      buttons,
              title,       defaultText, layoutOption,
              cancelled,   extraText,   {caption1, caption2, caption3},
              extraOption, 0,           false,
              {}};
    {
        const platform::ErrorScope outer;
        platform::RunGuarded([&] { Ask(call); });
        if (!call.finished) WriteDebug(procedure, call.step);
    }
    WriteDebug(procedure, LogLine::Exit);
    return call.result;
}

std::int32_t QuestionMsgBox(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                            const std::string& title, std::int16_t inputFlag, std::int32_t layoutOption,
                            const std::string& caption1, const std::string& caption2, const std::string& caption3,
                            const std::string& extraOption) {
    const Trace trace("QuestionMsgBox");
    bool cancelled = false;
    return platform::ValLong(MsgInputBox(questionId, prompt, buttons, title, platform::Decimal(inputFlag), layoutOption,
                                         cancelled, {}, caption1, caption2, caption3, extraOption));
}

std::int32_t MsgBoxMessage(std::int32_t questionId, std::int32_t number, std::int32_t buttons,
                           const std::string& search1, const std::string& replace1, const std::string& search2,
                           const std::string& replace2, const std::string& extraOption, std::int32_t askLimit) {
    const Trace trace("MsgBoxMessage:");
    const platform::ErrorScope outer;
    std::int32_t answer = Prompt::Answer::None;
    platform::RunGuarded([&] {
        std::string text = Language::GetLanguageString(messageSection, platform::Decimal(number) + "Msg");
        text = platform::Replace(platform::Replace(text, search1, replace1), search2, replace2);
        answer = AskMessage(questionId, buttons, std::move(text), extraOption, askLimit);
    });
    return answer;
}

std::int32_t MsgBoxMessagePlain(std::int32_t number, std::int32_t buttons, const std::string& search1,
                                const std::string& replace1, const std::string& search2, const std::string& replace2,
                                const std::string& extraOption) {
    const Trace trace("MsgBoxMessagePlain");
    return MsgBoxMessage(Prompt::Id::Plain, number, buttons, search1, replace1, search2, replace2, extraOption, 0);
}

FormQuestion* ShownForm() { return current && current->Visible() ? current : nullptr; }

Prompt::Port& PortOfPrompt() { return port; }

}  // namespace QuestionBox
