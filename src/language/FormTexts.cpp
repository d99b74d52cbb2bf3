#include "language/FormTexts.h"

#include <algorithm>

#include "language/LanguageText.h"
#include "platform/Text.h"

namespace FormTexts {
namespace {

using platform::Property;

Control* FindControl(FormView& form, std::string_view key) {
    if (Control* control = form.Find(key)) return control;
    const auto element = LanguageText::AsElement(key);
    return element ? form.Find(element->array, element->index) : nullptr;
}

void ApplyLine(FormView& form, const LanguageText::Line& line, const PictureFile& pictureFile) {
    Control* control = FindControl(form, line.key);
    if (!control || LanguageText::IsLeftAlone(control->Name())) return;
    const LanguageText::Texts texts = LanguageText::Split(line.value);
    const std::string caption = LanguageText::Unescape(texts.caption);
    control->SetCaption(caption);
    if (!control->Has(Property::Picture) || caption.empty()) {
        control->SetToolTip(texts.toolTip.value_or(std::string_view()));
        return;
    }
    const std::string file = pictureFile(caption);
    if (!file.empty()) control->SetPicture(file);
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

bool HideEntry(FormView& form, std::string_view entry) {
    if (Restrict(form, entry, &Control::SetVisible)) return true;
    const auto mask = LanguageText::AsTabMask(entry);
    return mask && RemoveTabs(form, *mask);
}

bool DisableEntry(FormView& form, std::string_view entry) { return Restrict(form, entry, &Control::SetEnabled); }

std::vector<std::string> ApplyList(FormView& form, std::string_view list, bool (*apply)(FormView&, std::string_view)) {
    std::vector<std::string> refused;
    for (const std::string_view entry : LanguageText::Entries(list)) {
        if (!apply(form, entry)) refused.emplace_back(entry);
    }
    return refused;
}

}  // namespace

std::string TextOf(const Control& control, std::string_view suffix, const Lookup& lookup) {
    if (!suffix.empty()) return lookup(LanguageText::ElementKey(control.Name(), suffix));
    std::string text = lookup(control.Name());
    if (!text.empty() || control.Index() == platform::ControlSpec::NoIndex) return text;
    return lookup(LanguageText::ElementKey(control.Name(), platform::Decimal(control.Index())));
}

void SetText(Control& control, std::string_view text) {
    if (text.empty() || LanguageText::IsLeftAlone(control.Name())) return;
    const LanguageText::Texts texts = LanguageText::Split(text);
    if (texts.toolTip) control.SetToolTip(*texts.toolTip);
    control.SetCaption(texts.caption);
}

void SetFonts(FormView& form, std::int32_t charSet, const std::string& face) {
    form.SetFontCharSet(charSet);
    for (Control& control : form.Controls()) {
        platform::FontStyle font = control.Font();
        font.charSet = charSet;
        if (!face.empty()) font.face = face;
        control.SetFont(font);
    }
}

void ApplySection(FormView& form, std::string_view languageFile, std::string_view section,
                  const PictureFile& pictureFile) {
    for (const LanguageText::Line& line : LanguageText::SectionLines(languageFile, section)) {
        ApplyLine(form, line, pictureFile);
    }
}

std::vector<std::string> Hide(FormView& form, std::string_view list) { return ApplyList(form, list, HideEntry); }
std::vector<std::string> Disable(FormView& form, std::string_view list) { return ApplyList(form, list, DisableEntry); }

}  // namespace FormTexts
