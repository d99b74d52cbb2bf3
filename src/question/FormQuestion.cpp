#include "question/FormQuestion.h"

#include <algorithm>
#include <utility>

#include "language/LanguageForms.h"
#include "platform/Locale.h"
#include "platform/Text.h"
#include "question/QuestionRules.h"
#include "shell/WindowsMiscMetrics.h"
#include "support/Debug.h"
#include "support/Product.h"
#include "support/Prompt.h"

namespace QuestionBox {
namespace {

using Debug::Trace;
using platform::Control;
using platform::ControlKind;
using platform::ControlSpec;
using platform::Mouse;
using platform::MouseButton;
using platform::Rect;
using platform::Size;
using QuestionLayout::Input;
using QuestionLayout::Part;
namespace Style = platform::ControlStyle;

Ports plugged;

constexpr std::int32_t f1Key = 112;
constexpr std::int32_t bringToFrontAfter = 300;  // milliseconds
constexpr std::uint32_t activeCaption = 0x80000002, activeCaptionText = 0x80000009, inactiveCaption = 0x80000003,
                        inactiveCaptionText = 0x80000013;
constexpr std::int32_t linkStyle = -1;
constexpr const char* maskFont = "Wingdings";
constexpr std::int32_t symbolCharSet = 2;
constexpr char maskFontDot = 'l';
constexpr const char* generalHelp = "AddInOutl.htm";

// In tab order; Label1 stands before the inputs, which a screen reader names by it. A caption is what stands there
// where the language file has nothing. scripts/tables.py reads these rows as text: literals and names only.
constexpr ControlSpec controls[] = {
    {"Image2", ControlKind::Image},
    {"LabelCaption", ControlKind::Label, Style::Verbatim | Style::Centred},
    {"Im", ControlKind::Image, Style::Hidden},
    {"Text", ControlKind::TextBox, Style::Hidden | Style::MultiLine | Style::ReadOnly},
    {"LabelLink", ControlKind::Link, Style::Hidden},
    {"Label1", ControlKind::Label, Style::Verbatim},
    {"TextInput", ControlKind::TextBox, Style::Hidden},
    {"Combo1", ControlKind::ComboBox, Style::Hidden},
    {"Text1", ControlKind::TextBox, Style::Hidden},
    {"List1", ControlKind::ListBox, Style::Hidden},
    {"FileOpen", ControlKind::Button, Style::Hidden},
    {"Check1", ControlKind::CheckBox, Style::Hidden, "&Show this message again"},
    {"ButtonOKYes", ControlKind::Button, Style::Default, "OK"},
    {"ButtonNo", ControlKind::Button, Style::Hidden, "&No"},
    {"ButtonCancel", ControlKind::Button, Style::Hidden | Style::Cancel, "Cancel"},
    {"ButtonAll", ControlKind::Button, Style::Hidden, "A&ll"},
    {"ButtonHelp", ControlKind::Button, Style::Hidden, "&Help"},
    {"ButtonUpgrade", ControlKind::Button, Style::Hidden},
    {"buttonyes", ControlKind::CheckBox, Style::Hidden},
    {"RetVal", ControlKind::TextBox, Style::Hidden},
    {"Label3", ControlKind::Label, Style::Hidden},
    {"LabelTest", ControlKind::Label, Style::Hidden},
    {"TextDefault_", ControlKind::Label, Style::Hidden},
    {"UpgradeAction", ControlKind::Label, Style::Hidden},
    {"Buttons", ControlKind::Frame, Style::Hidden},
    {"ShapeGradB", ControlKind::PictureBox, Style::Hidden},
    {"ImageEdge", ControlKind::Image},
    {"Timer1", ControlKind::Timer},
};

struct ButtonPart {
    Part part;
    const char* control;
};
constexpr ButtonPart buttonParts[] = {
    {Part::First, "ButtonOKYes"}, {Part::No, "ButtonNo"},     {Part::Cancel, "ButtonCancel"},
    {Part::All, "ButtonAll"},     {Part::Help, "ButtonHelp"},
};

class FormMeasure final : public QuestionLayout::TextMeasure {
  public:
    explicit FormMeasure(FormQuestion& form) : form_(form) {}
    [[nodiscard]] Size Of(Part part, std::int32_t width) const override {
        const Control& control = form_.The(ControlOf(part));
        return form_.TextSize(control, control.Caption(), width);
    }

  private:
    static const char* ControlOf(Part part) {
        for (const ButtonPart& row : buttonParts) {
            if (row.part == part) return row.control;
        }
        if (part == Part::Caption) return "LabelCaption";
        if (part == Part::Link) return "LabelLink";
        return part == Part::Check ? "Check1" : "Label1";
    }
    FormQuestion& form_;
};

}  // namespace

bool formLoaded = false;

Ports Plug(const Ports& ports) noexcept { return std::exchange(plugged, ports); }

FormQuestion::FormQuestion() : Form("FormQuestion", controls, {.titleBar = false, .resizable = false}) {
    SetCaption(Product::Name);
    The("Check1").SetValue(true);
    The("LabelCaption").SetFont({.bold = true});
    The("Image2").SetPicture("*application");
    The("ImageEdge").SetPicture("*grip");
    The("Timer1").SetInterval(bringToFrontAfter);
    WireHandlers();
}

FormQuestion::~FormQuestion() { Unload(); }

void FormQuestion::WireHandlers() {
    The("ButtonOKYes").on.click = [this] { ButtonOKYes_Click(); };
    The("ButtonNo").on.click = [this] { ButtonNo_Click(); };
    The("ButtonCancel").on.click = [this] { ButtonCancel_Click(); };
    The("ButtonAll").on.click = [this] { ButtonAll_Click(); };
    The("ButtonHelp").on.click = [this] { ButtonHelp_Click(); };
    The("LabelLink").on.click = [this] { LabelLink_Click(); };
    for (const char* button : {"ButtonOKYes", "ButtonNo", "ButtonCancel"}) {
        The(button).on.keyPress = [this](char letter) { return Button_KeyPress(letter); };
    }
    The("Check1").on.keyPress = [this](char letter) { return Check1_KeyPress(letter); };
    for (const char* bar : {"Image2", "LabelCaption"}) {
        The(bar).on.mouseDown = [this](const Mouse& mouse) { Caption_MouseDown(mouse); };
        The(bar).on.mouseMove = [this](const Mouse& mouse) { Caption_MouseMove(mouse); };
    }
    The("ImageEdge").on.mouseDown = [this](const Mouse& mouse) { ImageEdge_MouseDown(mouse); };
    The("ImageEdge").on.mouseMove = [this](const Mouse& mouse) { ImageEdge_MouseMove(mouse); };
    The("ImageEdge").on.mouseUp = [this](const Mouse&) { ImageEdge_MouseUp(); };
    The("Timer1").on.tick = [this] { Timer1_Timer(); };
}

// --- the form ---------------------------------------------------------------------------------------------------

void FormQuestion::Form_Load() {
    const Trace trace("FormQuestion.Form_Load");
    Form_SetLanguage();
    answered_ = false;
    formLoaded = true;
    WindowsMisc::ReadWindowMetrics();
    WindowsMisc::PublishWindowHandle(WindowNumber(), keepKey_);
    The("Timer1").SetEnabled(true);
    SetSizes(0, 0, 0, 0, 0);
    sizing_ = false;
}

void FormQuestion::Form_Unload() {
    const Trace trace("FormQuestion.Form_Unload");
    formLoaded = false;
    The("Timer1").SetEnabled(false);
    WindowsMisc::PublishWindowHandle(0, keepKey_);
}

void FormQuestion::Form_SetLanguage() {
    const Trace trace("FormQuestion.Form_SetLanguage");
    Language::GetLanguageStringsForForm(*this);
}

// The caret goes to the end of the text, as the keys Home and End move it; the first time the text is selected.
void FormQuestion::Form_Activate() {
    deactivated_ = false;
    ShowActiveLook();
    const bool first = !std::exchange(activated_, true);
    if (first) SelectText(The("Text"), 0, 0);
    const Control* const focus = Focus();
    if (!focus || focus->Kind() != ControlKind::TextBox || focus->Is(Style::MultiLine)) return;
    const auto end = static_cast<std::int32_t>(focus->Text().size());
    SelectText(*focus, end, end);
    if (first) SelectInput();
}

void FormQuestion::Form_Deactivate() {
    deactivated_ = true;
    ShowCaptionIn(inactiveCaption, inactiveCaptionText);
}

// Another program may still be in front of the host when the question comes.
void FormQuestion::Timer1_Timer() {
    if (!Visible() || Caption().empty()) return;
    BringToFront();
    The("Timer1").SetEnabled(false);
}

void FormQuestion::SelectInput() {
    const Control* const focus = Focus();
    if (focus && focus->Kind() == ControlKind::TextBox) SelectText(*focus, 0, -1);
}

// --- texts ------------------------------------------------------------------------------------------------------

void FormQuestion::SetPrompt(const std::string& prompt, const std::string& link) {
    The("Label1").SetCaption(prompt);
    The("LabelLink").SetCaption(link);
    The("LabelLink").SetVisible(!link.empty());
}

// The dots of a font of signs, where the system has it.
void FormQuestion::SetMasked() {
    Control& input = The("TextInput");
    const platform::FontStyle earlier = input.Font();
    input.SetFont({.face = maskFont, .charSet = symbolCharSet});
    if (FontFace(input) == maskFont) {
        input.SetPasswordChar(maskFontDot);
    } else {
        input.SetFont(earlier);
        input.SetPasswordChar('*');
    }
}

// --- answers ----------------------------------------------------------------------------------------------------

void FormQuestion::ShowActiveLook() {
    if (!deactivated_) ShowCaptionIn(activeCaption, activeCaptionText);
}

void FormQuestion::ShowCaptionIn(std::uint32_t backColour, std::uint32_t textColour) {
    The("LabelCaption").SetBackColor(backColour);
    The("LabelCaption").SetForeColor(textColour);
    The("Image2").SetBackColor(backColour);
}

// The field keeps the answer even where there is no memory to show it.
void FormQuestion::Close(std::int32_t answer) {
    answered_ = false;
    Hide();
    The("RetVal").SetText(platform::Decimal(answer));
}

void FormQuestion::ButtonOKYes_Click() {
    const Trace trace("FormQuestion.ButtonOKYes_Click");
    ShowActiveLook();
    Close(The("buttonyes").Value() ? Prompt::Answer::Yes : Prompt::Answer::OK);
}

void FormQuestion::ButtonNo_Click() {
    const Trace trace("FormQuestion.ButtonNo_Click");
    ShowActiveLook();
    Close(Prompt::Answer::No);
}

void FormQuestion::ButtonCancel_Click() {
    const Trace trace("FormQuestion.ButtonCancel_Click");
    ShowActiveLook();
    Close(Prompt::Answer::Cancel);
}

void FormQuestion::ButtonAll_Click() {
    const Trace trace("FormQuestion.ButtonAll_Click");
    ShowActiveLook();
    Close(Prompt::Answer::Fourth);
}

void FormQuestion::ButtonHelp_Click() {
    const Trace trace("FormQuestion.ButtonHelp_Click");
    ShowActiveLook();
    if (plugged.callHelp) plugged.callHelp(HelpTopic.empty() ? generalHelp : HelpTopic, {}, 0);
}

void FormQuestion::LabelLink_Click() {
    const Trace trace("FormQuestion.LabelLink_Click");
    if (plugged.execApp) plugged.execApp(The("LabelLink").Caption(), linkStyle);
}

// Escape and Alt+F4: Cancel; OK where that is the only answer; else a question is not to be evaded.
void FormQuestion::OnClose() {
    if (The("ButtonCancel").Visible()) return ButtonCancel_Click();
    if (!The("ButtonNo").Visible() && !The("ButtonAll").Visible()) ButtonOKYes_Click();
}

// --- keys -------------------------------------------------------------------------------------------------------

bool FormQuestion::OnKeyDown(std::int32_t key) {
    if (key != f1Key) return false;
    ButtonHelp_Click();
    return true;
}

bool FormQuestion::Button_KeyPress(char letter) {
    const auto shown = [this](const char* name) -> std::string_view {
        const Control& button = The(name);
        return button.Visible() && button.Enabled() ? std::string_view(button.Caption()) : std::string_view();
    };
    const QuestionRules::Captions captions{shown("ButtonOKYes"), shown("ButtonNo"), shown("ButtonCancel")};
    switch (QuestionRules::ChosenBy(letter, captions, platform::LowerLetter)) {
        case QuestionRules::Choice::No: ButtonNo_Click(); return true;
        case QuestionRules::Choice::Cancel: ButtonCancel_Click(); return true;
        case QuestionRules::Choice::First: ButtonOKYes_Click(); return true;
        case QuestionRules::Choice::None: return false;
    }
    return false;
}

bool FormQuestion::Check1_KeyPress(char letter) {
    ShowActiveLook();
    return Button_KeyPress(letter);
}

// --- moving and sizing ------------------------------------------------------------------------------------------

void FormQuestion::Caption_MouseDown(const Mouse& mouse) {
    ShowActiveLook();
    if (mouse.button == MouseButton::Left) dragStart_ = {mouse.x, mouse.y};
}

void FormQuestion::Caption_MouseMove(const Mouse& mouse) {
    if (mouse.button != MouseButton::Left) return;
    Rect form = Position();
    form.left += mouse.x - dragStart_.x;
    form.top += mouse.y - dragStart_.y;
    SetPosition(form);
}

void FormQuestion::ImageEdge_MouseDown(const Mouse& mouse) {
    if (mouse.button != MouseButton::Left) return;
    sizing_ = true;
    edgeStart_ = edgeLast_ = {mouse.x, mouse.y};
}

// The grip moves with the edge, so the mouse stands where it was on it unless the form can follow no further.
void FormQuestion::ImageEdge_MouseMove(const Mouse& mouse) {
    if (busy_ || !sizing_ || mouse.button != MouseButton::Left || edgeLast_ == Point{mouse.x, mouse.y}) return;
    edgeLast_ = {mouse.x, mouse.y};
    const Size inside = InsideSize();
    const Rect form = Position();
    // Beyond the opposite edge it is as small as it can be; 0 would mean a size that is computed.
    SetSizes(std::max(1, inside.width + mouse.x - edgeStart_.x), std::max(1, inside.height + mouse.y - edgeStart_.y),
             layoutOption_, form.left, form.top);
    edgeLast_ = edgeStart_;
}

void FormQuestion::ImageEdge_MouseUp() { sizing_ = false; }

// Whatever changed the size, everything follows.
void FormQuestion::Form_Resize() {
    if (busy_ || !formLoaded) return;
    Form_Resize_(InsideSize());
}

void FormQuestion::Form_Resize_(Size inside) {
    QuestionLayout::Request request = LayoutRequest(layoutOption_);
    request.wanted = inside;
    Arrange(request);
}

void FormQuestion::SetSizes(std::int32_t width, std::int32_t height, std::int32_t layoutOption, std::int32_t left,
                            std::int32_t top) {
    if (busy_) return;
    layoutOption_ = layoutOption;
    QuestionLayout::Request request = LayoutRequest(layoutOption);
    request.wanted = {width, height};
    Arrange(request);
    if (width == 0 && height == 0 && left == 0 && top == 0) {
        Center();
    } else {
        const Rect form = Position();
        SetPosition({left, top, form.width, form.height});
    }
}

QuestionLayout::Request FormQuestion::LayoutRequest(std::int32_t layoutOption) {
    const WindowsMisc::WindowMetrics& metrics = WindowsMisc::metricsState.Metrics;
    const std::int32_t dots = Scaled(96);
    const Rect outside = Position();
    const Size inside = InsideSize();
    const Rect screen = WorkArea();
    QuestionLayout::Request request;
    request.dotsAnInch = dots;
    request.largest = {screen.width - (outside.width - inside.width), screen.height - (outside.height - inside.height)};
    request.border = QuestionLayout::Pixels(metrics.BorderWidth, dots);
    request.captionHeight = QuestionLayout::Pixels(metrics.CaptionHeight, dots);
    request.scrollBar = std::max(1, QuestionLayout::Pixels(metrics.ScrollBarWidth, dots));
    request.sides = QuestionLayout::Pixels(-metrics.FixedWidth, dots);
    request.lineHeight = TextSize(The("Label1"), " ").height;
    request.textWidth = layoutOption;
    request.picture = The("Im").Visible();
    request.link = The("LabelLink").Visible();
    request.check = The("Check1").Visible();
    if (The("TextInput").Visible() || The("Combo1").Visible()) request.input = Input::Line;
    if (The("List1").Visible()) request.input = Input::List;
    for (const ButtonPart& row : buttonParts) {
        if (The(row.control).Visible()) request.buttons.push_back(row.part);
    }
    return request;
}

void FormQuestion::Arrange(const QuestionLayout::Request& request) {
    busy_ = true;
    The("LabelCaption").SetCaption(Caption());
    const QuestionLayout::Layout layout = QuestionLayout::Arrange(request, FormMeasure(*this));
    The("LabelCaption").SetPosition(layout.caption);
    The("Image2").SetPosition(layout.captionImage);
    The("Im").SetPosition(layout.picture);
    The("LabelLink").SetPosition(layout.link);
    for (const char* input : {"TextInput", "Combo1", "List1"}) The(input).SetPosition(layout.input);
    The("Check1").SetPosition(layout.check);
    The("ImageEdge").SetPosition(layout.grip);
    ShowPromptIn(layout);
    std::size_t next = 0;
    for (const ButtonPart& row : buttonParts) {
        Control& button = The(row.control);
        if (!button.Visible()) continue;
        button.SetPosition(layout.buttons[next++]);
        if (layout.captionsCut) button.SetToolTip(button.Caption());
    }
    SetInsideSize(layout.inside);
    busy_ = false;
}

// A prompt that the screen cannot hold stands in a field that scrolls.
void FormQuestion::ShowPromptIn(const QuestionLayout::Layout& layout) {
    Control &label = The("Label1"), &field = The("Text");
    label.SetPosition(layout.prompt);
    field.SetPosition(layout.prompt);
    if (layout.promptScrolls && !field.Visible()) field.SetText(label.Caption());
    field.SetVisible(layout.promptScrolls);
    label.SetVisible(!layout.promptScrolls);
}

}  // namespace QuestionBox
