#include "language/LanguageForms.h"

#include <optional>
#include <vector>

#include "config/IniFile.h"
#include "language/FormTexts.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "support/Debug.h"
#include "support/Files.h"

namespace Language {
namespace {

// Reports only to a log of a level above 1, because it stands in the way of every caption.
class DetailTrace {
  public:
    explicit DetailTrace(const char* name) {
        if (Debug::state.DebugLevel > 1) trace_.emplace(name);
    }

  private:
    std::optional<Debug::Trace> trace_;
};

void CaptionStandardButtons(FormView& form, std::string_view key, std::string_view name, std::string_view otherName) {
    const std::string caption = GetLanguageString("Misc", key);
    if (caption.empty()) return;
    for (const std::string_view button : {name, otherName}) {
        if (Control* control = form.Find(button)) control->SetCaption(caption);
    }
}

std::string PictureFile(const std::string& text) {
    std::string file = ApplicationFolder() + text;
    return Files::FileExists(file) ? file : std::string();
}

using Restriction = std::vector<std::string> (*)(FormView&, std::string_view);

void Restrict(FormView& form, std::string_view section, std::string_view key, Restriction restrict, bool reportErrors) {
    const std::string list = IniFile::GetIniSettingDefault(section, key);
    std::vector<std::string> refused;
    {
        const platform::ErrorScope ignored;
        refused = restrict(form, list);
    }
    if (!reportErrors) return;
    for (const std::string& entry : refused) {
        std::string report = std::string(" ").append(section).append(":").append(key).append("?").append(entry);
        Debug::WriteDebug(report, -1);
    }
}

}  // namespace

void GetLanguageString2(const FormView& form, Control& control, std::string_view suffix) {
    const DetailTrace trace("GetLanguageString2");
    GetLanguageStringForControl(form.Name().empty() ? control.Name() : form.Name(), control, suffix);
}

void GetLanguageString2(FormView& form, std::string_view suffix) {
    const DetailTrace trace("GetLanguageString2");
    // A form takes its caption as a control does; it has no tool tip, and none is shown.
    Control caption({form.Name().c_str(), platform::ControlKind::Label});
    caption.SetCaption(form.Caption());
    GetLanguageStringForControl(form.Name(), caption, suffix);
    form.SetCaption(caption.Caption());
}

void GetLanguageStringForControl(std::string_view section, Control& control, std::string_view suffix) {
    const std::string text =
        FormTexts::TextOf(control, suffix, [section](std::string_view key) { return GetLanguageString(section, key); });
    const platform::ErrorScope ignored;
    FormTexts::SetText(control, text);
}

void GetLanguageStringsForForm(FormView& form, std::string_view section) {
    const Debug::Trace trace("GetLanguageStringsForForm");
    GetLanguageString2(form);
    if (section.empty()) section = form.Name();
    if (section == "FormPropCal") section = "FormProperties";
    {
        const platform::ErrorScope ignored;
        if (state.LangFormCharSet != 0 || !state.LangFont.empty()) {
            FormTexts::SetFonts(form, state.LangCharSet, state.LangFont);
        }
    }
    {
        const platform::ErrorScope ignored;
        CaptionStandardButtons(form, "Ok", "ButtonOK", "Ok");
        CaptionStandardButtons(form, "Cancel", "ButtonCancel", "Cancel");
        FormTexts::ApplySection(form, state.LangText, section, PictureFile);
    }
    ApplyFormRestrictions(form, section, true);
}

void ApplyFormRestrictions(FormView& form, std::string_view section, bool reportErrors) {
    const Debug::Trace trace("ApplyFormRestrictions");
    if (section.empty()) section = form.Name();
    Restrict(form, section, "Hide", FormTexts::Hide, reportErrors);
    Restrict(form, section, "Disable", FormTexts::Disable, reportErrors);
}

}  // namespace Language
