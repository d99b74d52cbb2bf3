// platform/forms/FormView.h: a form as the rules see it: a name, a caption, a font and named controls. No windows.
//
// Shapes  Names are not case-sensitive. A name is one control, or a control array whose elements are found by
//         their index. A form made of its table alone is complete: everything can be set and read back.
// Errors  Asking for a control that is not there returns null and leaves nothing pending.
#pragma once
#include <cstdint>
#include <deque>
#include <exception>
#include <span>
#include <string>
#include <string_view>

#include "platform/forms/Control.h"

namespace platform {

struct NoSuchControl : std::exception {
    [[nodiscard]] const char* what() const noexcept override { return "a form was asked for a control it has not"; }
};

class FormView {
  public:
    // `controls` in tab order: a label stands before the control that it names.
    FormView(std::string_view name, std::span<const ControlSpec> controls);
    virtual ~FormView() = default;
    FormView(const FormView&) = delete;
    FormView& operator=(const FormView&) = delete;

    // The name of its section in the settings and language files; caption and font as last set.
    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] const std::string& Caption() const { return caption_; }
    [[nodiscard]] const FontStyle& Font() const { return font_; }
    void SetCaption(std::string_view caption);
    void SetFont(const FontStyle& font);
    void SetFontCharSet(std::int32_t charSet);

    [[nodiscard]] Control* Find(std::string_view name);                      // null for a control array too
    [[nodiscard]] Control* Find(std::string_view name, std::int32_t index);  // an element of a control array
    // A control that the form's own code knows to be in its table; throws NoSuchControl where it is not.
    [[nodiscard]] Control& The(std::string_view name);

    // All controls, in the order of the table.
    [[nodiscard]] std::deque<Control>& Controls() { return controls_; }
    [[nodiscard]] const std::deque<Control>& Controls() const { return controls_; }

  protected:
    void Attach(ControlPeer* peer);  // null: the form has no windows any more
    virtual void CaptionChanged() {}
    virtual void FontChanged() {}

  private:
    Control* FindListed(std::string_view name, std::int32_t index);

    std::string name_, caption_;
    FontStyle font_;
    std::deque<Control> controls_;
};

}  // namespace platform
