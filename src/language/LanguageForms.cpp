#include "language/LanguageForms.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "config/IniFile.h"
#include "language/Language.h"
#include "language/LanguageText.h"
#include "platform/Err.h"
#include "support/Debug.h"
#include "support/Files.h"

namespace Language {
namespace {

using platform::Property;

std::string TextFor(std::string_view section, const Control& control, std::string_view suffix) {
    if (!suffix.empty()) return GetLanguageString(section, LanguageText::ElementKey(control.Name(), suffix));
    std::string text = GetLanguageString(section, control.Name());
    if (!text.empty() || control.Index() == platform::ControlSpec::NoIndex) return text;
    return GetLanguageString(section,
                             LanguageText::ElementKey(control.Name(), platform::Decimal(control.Index())));
}

void ApplyFonts(FormView& form) {
    if (state.LangFormCharSet == 0 && state.LangFont.empty()) return;
    form.SetFontCharSet(state.LangCharSet);
    for (Control& control : form.Controls()) {  // "NavBar" among them, where a form has one
        platform::FontStyle font = control.Font();
        font.charSet = state.LangCharSet;
        if (!state.LangFont.empty()) font.face = state.LangFont;
        control.SetFont(font);
    }
}

void CaptionStandardButtons(FormView& form, std::string_view key, std::initializer_list<std::string_view> buttons) {
    const std::string caption = GetLanguageString("Misc", key);
    if (caption.empty()) return;
    for (const std::string_view name : buttons) {
        if (Control* button = form.Find(name)) button->SetCaption(caption);
    }
}

Control* Named(FormView& form, std::string_view key) {
    if (Control* control = form.Find(key)) return control;
    const auto element = LanguageText::AsElement(key);
    return element ? form.Find(element->array, element->index) : nullptr;
}

void ApplyLine(FormView& form, const LanguageText::Line& line) {
    Control* control = Named(form, line.key);
    if (!control || LanguageText::IsLeftAlone(control->Name())) return;
    const LanguageText::Texts texts = LanguageText::Split(line.value);
    const std::string caption = LanguageText::Unescaped(texts.caption);
    control->SetCaption(caption);
    if (control->Has(Property::Picture) && !caption.empty()) {
        const std::string file = ApplicationFolder() + caption;
        if (Files::FileExists(file)) control->SetPicture(file);
        return;
    }
    control->SetToolTip(texts.toolTip.value_or(std::string_view()));
}

bool RemoveTabs(FormView& form, const LanguageText::TabMask& mask) {
    Control* control = form.Find(mask.tabControl);
    if (!control || !control->Has(Property::Tabs)) return false;
    std::vector<platform::TabPage> kept;
    for (std::size_t position = 0; position < control->Tabs().size(); ++position) {
        if (!mask.Removes(position)) kept.push_back(control->Tabs()[position]);
    }
    for (platform::TabPage& page : kept) page.toolTip.resize(std::min(page.toolTip.find('+'), page.toolTip.size()));
    return control->SetTabs(std::move(kept));
}

using Setter = bool (Control::*)(bool);

bool Restrict(FormView& form, std::string_view entry, Setter set) {
    if (Control* control = form.Find(entry); control && (control->*set)(false)) return true;
    const auto element = LanguageText::AsRestrictedElement(entry);
    Control* control = element ? form.Find(element->array, element->index) : nullptr;
    return control && (control->*set)(false);
}

bool Hide(FormView& form, std::string_view entry) {
    if (Restrict(form, entry, &Control::SetVisible)) return true;
    const auto mask = LanguageText::AsTabMask(entry);
    return mask && RemoveTabs(form, *mask);
}

bool Disable(FormView& form, std::string_view entry) { return Restrict(form, entry, &Control::SetEnabled); }

void ApplyRestriction(FormView& form, std::string_view section, std::string_view key, bool reportErrors,
                      bool (*apply)(FormView&, std::string_view)) {
    const std::string list = IniFile::GetIniSettingDefault(section, key);
    for (const std::string_view entry : LanguageText::Entries(list)) {
        const platform::ErrorScope ignored;
        if (apply(form, entry) || !reportErrors) continue;
        platform::Err().Clear();
        std::string report = form.Name() + ": " + std::string(key) + " names nothing: " + std::string(entry);
        Debug::WriteDebug(report, -1);
    }
}

}  // namespace

void GetLanguageString2(const FormView& form, Control& control, std::string_view suffix) {
    std::optional<Debug::Trace> trace;
    if (Debug::state.DebugLevel > 1) trace.emplace("GetLanguageString2");
    GetLanguageStringForControl(form.Name().empty() ? control.Name() : form.Name(), control, suffix);
}

void GetLanguageString2(FormView& form, std::string_view suffix) {
    std::optional<Debug::Trace> trace;
    if (Debug::state.DebugLevel > 1) trace.emplace("GetLanguageString2");
    if (LanguageText::IsLeftAlone(form.Name())) return;
    const std::string key = suffix.empty() ? form.Name() : LanguageText::ElementKey(form.Name(), suffix);
    const std::string text = GetLanguageString(form.Name(), key);
    if (!text.empty()) form.SetCaption(LanguageText::Split(text).caption);
}

void GetLanguageStringForControl(std::string_view section, Control& control, std::string_view suffix) {
    if (LanguageText::IsLeftAlone(control.Name())) return;
    const std::string text = TextFor(section, control, suffix);
    if (text.empty()) return;
    const platform::ErrorScope ignored;
    const LanguageText::Texts texts = LanguageText::Split(text);
    if (texts.toolTip) control.SetToolTip(*texts.toolTip);
    control.SetCaption(texts.caption);
}

void GetLanguageStringsForForm(FormView& form, std::string_view section) {
    const Debug::Trace trace("GetLanguageStringsForForm");
    const platform::ErrorScope ignored;
    GetLanguageString2(form);
    if (section.empty()) section = form.Name();
    if (section == "FormPropCal") section = "FormProperties";
    ApplyFonts(form);
    platform::Err().Clear();
    CaptionStandardButtons(form, "Ok", {"ButtonOK", "Ok"});
    CaptionStandardButtons(form, "Cancel", {"ButtonCancel", "Cancel"});
    for (const LanguageText::Line& line : LanguageText::SectionLines(state.LangText, section)) ApplyLine(form, line);
    platform::Err().Clear();
    ApplyFormRestrictions(form, section, true);
}

void ApplyFormRestrictions(FormView& form, std::string_view section, bool reportErrors) {
    const Debug::Trace trace("ApplyFormRestrictions");
    if (section.empty()) section = form.Name();
    ApplyRestriction(form, section, "Hide", reportErrors, Hide);
    ApplyRestriction(form, section, "Disable", reportErrors, Disable);
}

}  // namespace Language
