#include "question/StandardInput.h"

#include <algorithm>

#include "platform/forms/Design.h"
#include "platform/forms/Form.h"

namespace QuestionBox {
namespace {

using platform::ControlKind;
using platform::ControlSpec;
using platform::Rect;
using platform::Size;
namespace Style = platform::ControlStyle;

constexpr ControlSpec controls[] = {
    {"LabelPrompt", ControlKind::Label, Style::Verbatim},
    {"TextAnswer", ControlKind::TextBox},
    {"ButtonOK", ControlKind::Button, Style::Default, "OK"},
    {"ButtonCancel", ControlKind::Button, Style::Cancel, "Cancel"},
};

// At 96 dots an inch.
constexpr std::int32_t margin = 11, textWidth = 300, fieldHeight = 21, buttonHeight = 23;

class InputForm : public platform::Form {
  public:
    InputForm(const std::string& prompt, const std::string& title, const std::string& defaultText)
        : Form("InputBox", controls) {
        SetCaption(title);
        The("LabelPrompt").SetCaption(prompt);
        The("TextAnswer").SetText(defaultText);
        The("ButtonOK").on.click = [this] {
            Hide();
            answer = The("TextAnswer").Text();
            cancelled = false;
        };
        The("ButtonCancel").on.click = [this] { Hide(); };
    }

    std::string answer;
    bool cancelled = true;

  protected:
    void OnLoad() override {
        const std::int32_t side = Scaled(margin), width = Scaled(textWidth);
        const std::int32_t most = WorkArea().height / 2;
        const std::int32_t promptHeight =
            std::min(most, TextSize(The("LabelPrompt"), The("LabelPrompt").Caption(), width).height);
        const Rect prompt{side, side, width, promptHeight};
        const Rect field{side, prompt.Bottom() + side, width, Scaled(fieldHeight)};
        const std::int32_t top = field.Bottom() + side;
        const Size button{Scaled(platform::buttonWidthAt96), Scaled(buttonHeight)};
        const std::int32_t cancelLeft = side + width - button.width;
        The("LabelPrompt").SetPosition(prompt);
        The("TextAnswer").SetPosition(field);
        The("ButtonCancel").SetPosition({cancelLeft, top, button.width, button.height});
        The("ButtonOK").SetPosition({cancelLeft - side - button.width, top, button.width, button.height});
        SetInsideSize({width + 2 * side, top + button.height + side});
        Center();
        The("TextAnswer").TakeFocus();
    }
};

}  // namespace

std::string StandardInput(const std::string& prompt, const std::string& title, const std::string& defaultText,
                          bool& cancelled) {
    InputForm form(prompt, title, defaultText);
    form.ShowModal();
    cancelled = form.cancelled;
    return form.answer;
}

}  // namespace QuestionBox
