#include "platform/forms/FormView.h"

#include "platform/Text.h"

namespace platform {

FormView::FormView(std::string_view name, std::span<const ControlSpec> controls) : name_(name) {
    for (const ControlSpec& spec : controls) controls_.emplace_back(spec);
}

void FormView::SetCaption(std::string_view caption) {
    caption_ = caption;
    CaptionChanged();
}

void FormView::SetFont(const FontStyle& font) {
    font_ = font;
    FontChanged();
}

void FormView::SetFontCharSet(std::int32_t charSet) {
    FontStyle font = font_;
    font.charSet = charSet;
    SetFont(font);
}

Control* FormView::Find(std::string_view name) { return FindListed(name, ControlSpec::NoIndex); }

Control* FormView::Find(std::string_view name, std::int32_t index) {
    return index == ControlSpec::NoIndex ? nullptr : FindListed(name, index);
}

Control* FormView::FindListed(std::string_view name, std::int32_t index) {
    for (Control& control : controls_) {
        if (control.Index() == index && SameIgnoringCase(control.Name(), name)) return &control;
    }
    return nullptr;
}

Control& FormView::The(std::string_view name) {
    if (Control* control = Find(name)) return *control;
    throw NoSuchControl();
}

void FormView::Attach(ControlPeer* peer) {
    for (Control& control : controls_) control.peer_ = peer;
}

}  // namespace platform
