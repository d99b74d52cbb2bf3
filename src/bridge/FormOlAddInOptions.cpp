#include "bridge/FormOlAddInOptions.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "bridge/OlVersion.h"
#include "bridge/OptionsControls.h"
#include "bridge/OptionsLayout.h"
#include "bridge/Profiles.h"
#include "language/Language.h"
#include "language/LanguageForms.h"
#include "platform/Desktop.h"
#include "platform/Guard.h"
#include "platform/Text.h"
#include "platform/com/Picture.h"
#include "shell/WindowsMiscHelp.h"
#include "support/Debug.h"
#include "support/Product.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using platform::Control;
using RegEdit::Root;

namespace {

constexpr const char* helpPage = "AddInOutl.htm";
constexpr std::int32_t helpKey = 112;  // F1
constexpr std::string_view baseProfile = "corvella";
constexpr const char* automatic = "Automatic";

using OptionsControls::Row;

[[nodiscard]] std::string Value(const char* name) {
    return RegEdit::GetRegString(Root::CurrentUser, RegistryKeys::Outlook, name);
}

void SaveValue(const char* name, std::string_view text) {
    RegEdit::SaveRegValue(Root::CurrentUser, std::string_view(RegistryKeys::Outlook), name, text, RegEdit::TypeText);
}

class Captions : public OptionsLayout::TextMeasure {
  public:
    explicit Captions(FormOlAddInOptions& form) : form_(form) {}
    [[nodiscard]] platform::Size Of(std::size_t number, std::int32_t width) const override {
        const Control& control = form_.Controls()[number];
        return form_.TextSize(control, control.Caption(), width);
    }

  private:
    FormOlAddInOptions& form_;
};

}  // namespace

FormOlAddInOptions::FormOlAddInOptions() : Form("FormOlAddInOptions", OptionsControls::specs) {
    ShowDesignTexts();
    The("Picture1").SetPicture("*information");
    The("ButtonOK").on.click = [this] { ButtonOK_Click(); };
    The("ButtonCancel").on.click = [this] { ButtonCancel_Click(); };
    The("ButtonHelp").on.click = [this] { ButtonHelp_Click(); };
    for (const Row& row : OptionsControls::rows) {
        if (row.value) NoteTouches(row.control.name);
    }
    NoteTouches("ComboProfiles");
    NoteTouches("OptionSync");
    The("OptionDlg").on.click = The("OptionSync").on.click;
}

FormOlAddInOptions::~FormOlAddInOptions() { Unload(); }

FormOlAddInOptions& FormOlAddInOptions::Shared() {
    static FormOlAddInOptions shared;
    return shared;
}

void FormOlAddInOptions::NoteTouches(const char* control) {
    The(control).on.change = The(control).on.click = [this, control] { touched_.insert(control); };
}

void FormOlAddInOptions::Show() {
    if (Visible()) return BringToFront();
    platform::Attempt([this] { ShowModal(); });
    Unload();
}

bool FormOlAddInOptions::OnKeyDown(std::int32_t key) {
    if (key != helpKey) return false;
    ButtonHelp_Click();
    return true;
}

void FormOlAddInOptions::Form_Load() {
    const Debug::Trace trace("FormOlAddInOptions.Form_Load");
    platform::MakeTopmost(Window());  // before there are tool tips: Wine takes a window below one for topmost already
    ShowValues();
    Language::GetLanguageStringsForForm(*this);
    if (OlVersion >= Outlook2003) ShowMenuColour();
    Arrange();
    The("TextDelay").TakeFocus();
    shown_ = Settings();
    touched_.clear();
}

void FormOlAddInOptions::ShowDesignTexts() {
    SetCaption("Corvella Add-In Options");
    for (Control& control : Controls()) {
        control.ShowDesignCaption();
        control.SetToolTip({});
    }
}

void FormOlAddInOptions::ShowValues() {
    for (const Row& row : OptionsControls::rows) {
        if (row.value) The(row.control.name).SetText(Value(row.value));
    }
    ListProfiles();
    const bool direct = platform::Val(Value("NoDlg")) != 0;
    The(direct ? "OptionSync" : "OptionDlg").SetValue(true);
}

void FormOlAddInOptions::ListProfiles() {
    std::vector<std::string> found;
    Profiles::GetProfiles(found);
    std::vector<std::string> list{Language::GetLanguageString("FormSMSPortSettings", "auto")};
    if (list[0].empty()) list[0] = automatic;
    for (std::string& profile : found) {
        if (profile == baseProfile) profile = Product::Name;
        if (!profile.empty()) list.push_back(std::move(profile));
    }
    Control& profiles = The("ComboProfiles");
    profiles.SetList(std::move(list));
    const std::string chosen = Value("Profile");
    if (chosen.empty()) {
        profiles.SetListIndex(0);
    } else {
        profiles.SetText(chosen);
    }
}

void FormOlAddInOptions::ShowMenuColour() {
    const std::uint32_t colour = platform::ColourOf(platform::SystemColour::Menu);
    for (const char* name : {"Frame1", "Frame2", "Frame3", "Picture1"}) The(name).SetBackColor(colour);
}

void FormOlAddInOptions::Arrange() {
    OptionsLayout::Request request;
    request.dotsAnInch = Scaled(request.dotsAnInch);
    request.lineHeight = TextSize(The("Label1"), "X").height;
    request.widest = WorkArea().width - Scaled(16);  // the form's border
    request.tallest = WorkArea().height - (Position().height - InsideSize().height);
    const OptionsLayout::Layout layout = OptionsLayout::Arrange(request, OptionsControls::places, Captions(*this));
    for (std::size_t i = 0; i < layout.at.size(); ++i) Controls()[i].SetPosition(layout.at[i]);
    SetInsideSize(layout.inside);
    Center();
}

std::vector<FormOlAddInOptions::Setting> FormOlAddInOptions::Settings() {
    std::vector<Setting> settings;
    for (const Row& row : OptionsControls::rows) {
        if (row.value) settings.push_back({row.value, row.control.name, The(row.control.name).Text()});
    }
    settings.push_back({"NoDlg", "OptionSync", The("OptionSync").Value() ? "1" : ""});
    const Control& profiles = The("ComboProfiles");
    settings.push_back({"Profile", "ComboProfiles", profiles.ListIndex() == 0 ? std::string() : profiles.Text()});
    return settings;
}

// Only what the user has changed. What could not be read or shown stays, and so does what cannot be read back from a
// control that nobody has touched.
void FormOlAddInOptions::SaveValues() {
    const std::vector<Setting> settings = Settings();
    for (std::size_t i = 0; i < settings.size() && i < shown_.size(); ++i) {
        if (touched_.contains(settings[i].control) && settings[i].text != shown_[i].text)
            SaveValue(settings[i].name, settings[i].text);
    }
}

void FormOlAddInOptions::ButtonOK_Click() {
    const Debug::Trace trace("FormOlAddInOptions.ButtonOK_Click");
    SaveValues();
    ButtonCancel_Click();
}

// Ends Show, which unloads the form.
void FormOlAddInOptions::ButtonCancel_Click() {
    const Debug::Trace trace("FormOlAddInOptions.ButtonCancel_Click");
    Hide();
}

void FormOlAddInOptions::ButtonHelp_Click() {
    const Debug::Trace trace("FormOlAddInOptions.ButtonHelp_Click");
    if (std::exchange(helpOpens_, true)) return;
    WindowsMisc::CallHelp(helpPage);
    helpOpens_ = false;
}
