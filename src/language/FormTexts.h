// language/FormTexts.h: how texts reach the controls of a form, and how a settings file takes controls from it.
// Knows forms without windows only, no files and no globals.
//
// Shapes  Texts, keys and entries are those of language/LanguageText.h; positions of tabs count from 0.
//         A text may name a control that the form lacks, and set what a control lacks: that is passed over.
//         A control whose name ends in "_" keeps what it was made with.
// Errors  none; what a control refuses leaves the pending error of platform/Control.h, which callers drop.
#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms/FormView.h"

namespace FormTexts {

using platform::Control;
using platform::FormView;

// The text of a key, empty where there is none.
using Lookup = std::function<std::string(std::string_view key)>;

// The file that a text names for a picture, empty where there is no such file.
using PictureFile = std::function<std::string(const std::string& text)>;

// The text of one control: "Name(suffix)", or without a suffix its name and, for an element of a control array that
// has none of its own, "Name(index)".
[[nodiscard]] std::string TextOf(const Control& control, std::string_view suffix, const Lookup& lookup);

// Caption, and tool tip where the text has one. The empty text changes nothing.
void SetText(Control& control, std::string_view text);

// The form's character set, and each control's; a face that is not empty as well.
void SetFonts(FormView& form, std::int32_t charSet, const std::string& face);

// Every line of the section in a whole language file. A control that shows pictures gets the file that its text
// names and keeps its tool tip; any other gets caption and tool tip, even empty ones.
void ApplySection(FormView& form, std::string_view languageFile, std::string_view section,
                  const PictureFile& pictureFile);

// Entries separated by ";": "Name", "Name(2)" and, to remove pages of a tab control by a mask, "Tabs:5". The tool tips
// of the pages that stay end before their "+". Returns the entries that name nothing of the form.
[[nodiscard]] std::vector<std::string> Hide(FormView& form, std::string_view list);

// The same without masks.
[[nodiscard]] std::vector<std::string> Disable(FormView& form, std::string_view list);

}  // namespace FormTexts
