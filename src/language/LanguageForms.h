// language/LanguageForms.h: the texts of whole forms, and what a settings file takes from a form.
//
// Shapes  The section of a form is named after it, but "FormPropCal" takes "FormProperties". A key is the name of a
//         control, or "Name(2)" for an element of a control array; the form's own caption stands under its own name.
//         A section may name controls that the form lacks, and set what a control lacks: that is passed over.
//         A control whose name ends in "_" keeps what it was made with, and so does one that has no text.
// Errors  none; the caller's pending error stays as it was.
#pragma once
#include <string>
#include <string_view>

#include "platform/forms/FormView.h"

namespace Language {

using platform::Control;
using platform::FormView;

// The caption and tool tip of one control of `form`, or of the form itself. The key is its name, with a suffix
// "Name(suffix)"; an element of a control array is looked for under both its name and "Name(index)".
void GetLanguageString2(const FormView& form, Control& control, std::string_view suffix = {});
void GetLanguageString2(FormView& form, std::string_view suffix = {});
void GetLanguageStringForControl(std::string_view section, Control& control, std::string_view suffix);

// Caption, fonts, standard buttons, then every line of the section, and at last the
// restrictions. No section: the form's own.
//   A picture box or image shows the file that its text names in the add-in's folder, if there is one.
void GetLanguageStringsForForm(FormView& form, std::string_view section = {});

// Hides and disables what the form's section of the base settings file lists, separated by ";":
//   Hide=Name;Name(2);Tabs:5     a control, an element, and by a mask of their positions pages of a tab control
//   Disable=Name;Name(2)
// An entry that names nothing of the form goes to the debug log where `reportErrors` is set.
void ApplyFormRestrictions(FormView& form, std::string_view section, bool reportErrors);

}  // namespace Language
