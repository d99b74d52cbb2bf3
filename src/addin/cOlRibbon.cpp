#include "addin/cOlRibbon.h"

#include <array>
#include <vector>

#include "addin/Members.h"
#include "addin/MenuEntries.h"
#include "addin/Names.h"
#include "addin/RibbonPicture.h"
#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Desktop.h"
#include "platform/Text.h"
#include "platform/Unicode.h"
#include "platform/com/Picture.h"
#include "support/Debug.h"

using platform::Argument;
using platform::Dispatch;
using platform::EventArguments;
using platform::Missing;
using RibbonXml::Kind;

namespace {

constexpr std::int32_t inspectorClass = 35;
constexpr std::int32_t selectionClass = 74;

struct FixedButton {
    const char* tag;  // also its key in the language file, but for the menu
    const char* caption;
    std::int32_t picture;
};
constexpr FixedButton menuButton{RibbonXml::MenuTag, "C&orvella", 104};
constexpr FixedButton synchroniseButton{RibbonXml::SynchroniseTag, "Synchronize", 103};
constexpr FixedButton sendToPhoneButton{RibbonXml::SendToPhoneTag, "Send to Phone", 107};
constexpr FixedButton saveAndSendButton{RibbonXml::SaveAndSendTag, "Save and Send to Phone", 102};
constexpr FixedButton fixedButtons[] = {menuButton, synchroniseButton, sendToPhoneButton, saveAndSendButton};

// The text of that key in the user's language, or the preset.
std::string TextOr(const char* key, const char* preset) {
    const std::string text = Language::GetLanguageString(Names::LanguageSection, key);
    return platform::Utf8(text.empty() ? preset : text);
}

RibbonXml::Command CommandOf(const FixedButton& button) {
    return {button.tag, TextOr(button.tag, button.caption), button.picture, false};
}

std::vector<RibbonXml::Command> MenuCommands() {
    std::vector<RibbonXml::Command> commands;
    for (const MenuEntry& entry : MenuEntries()) {
        commands.push_back(
            {entry.languageKey, TextOr(entry.languageKey, entry.ribbonCaption), entry.picture, entry.beginsGroup});
    }
    return commands;
}

RibbonXml::Commands AllCommands() {
    return {.menu = {menuButton.tag, menuButton.caption, menuButton.picture, false},
            .entries = MenuCommands(),
            .synchronise = CommandOf(synchroniseButton),
            .sendToPhone = CommandOf(sendToPhoneButton),
            .saveAndSend = CommandOf(saveAndSendButton)};
}

std::int32_t PictureNumber(std::string_view tag) {
    for (const FixedButton& button : fixedButtons) {
        if (button.tag == tag) return button.picture;
    }
    for (const MenuEntry& entry : MenuEntries()) {
        if (entry.languageKey == tag) return entry.picture;
    }
    return 0;
}

Argument PictureOf(std::string_view tag, int side) {
    const std::int32_t number = PictureNumber(tag);
    if (number == 0) return Missing;
    const Dispatch picture = platform::PictureOf(RibbonPicture::Draw(
        platform::ReadBitmapResource(number), platform::ReadBitmapResource(number + Names::MaskOffset), side));
    return picture ? Argument(picture) : Argument(Missing);
}

Dispatch CurrentItem(const Dispatch& inspector) { return inspector.Object(Members::Window::CurrentItem); }

// Whether those are items of a contacts folder: the folder of the window in which they are selected.
bool AreContacts(const Dispatch& selection) { return cOlExplorer::ShowsContacts(selection.Object(Members::Parent)); }

// What a callback is about.
struct Control {
    std::string tag;
    Dispatch object;
    std::shared_ptr<cOutlookAddIn> handler;

    [[nodiscard]] bool Is(const char* wanted) const { return tag == wanted; }
};

struct Context {
    Dispatch window;
    std::int32_t windowClass = 0;

    explicit Context(const Control& control)
        : window(control.object.Object(Members::RibbonControl::Context)), windowClass(window.Long(Members::Class)) {}
};

bool CanBeSaved(const Control& control, const Context& context) {
    if (context.windowClass != inspectorClass) return false;
    return control.handler->WrapperFor(CurrentItem(context.window).Long(Members::Class)) != nullptr;
}

bool IsVisible(const Control& control) {
    const Context context(control);
    if (control.Is(RibbonXml::SaveAndSendTag)) return CanBeSaved(control, context);
    if (context.windowClass == selectionClass) return AreContacts(context.window);
    return context.windowClass == Members::explorerClass && cOlExplorer::ShowsContacts(context.window);
}

bool IsEnabled(const Control& control) {
    if (!control.Is(RibbonXml::SendToPhoneTag)) return false;  // no other control asks
    const Context context(control);
    const bool selection = context.windowClass == selectionClass;
    if (!selection && context.windowClass != Members::explorerClass) return false;
    const Dispatch selected = selection ? context.window : context.window.Object(Members::Window::Selection);
    return selected.Long(Members::Collection::Count) != 0;
}

void SaveAndSend(const Control& control, const Context& context) {
    if (context.windowClass != inspectorClass) return;
    const Dispatch item = CurrentItem(context.window);
    const std::shared_ptr<cOlItem> wrapper = control.handler->WrapperFor(item.Long(Members::Class));
    if (!wrapper) return;
    wrapper->OpenItem(context.window, item, {}, {});
    wrapper->SaveAndSendToPhone_Click({});
}

void Click(const Control& control) {
    const Context context(control);
    if (control.Is(RibbonXml::SaveAndSendTag)) return SaveAndSend(control, context);
    const bool sends = control.Is(RibbonXml::SendToPhoneTag);
    if (sends && context.windowClass == selectionClass) return cOlExplorer::SendToPhone(context.window);
    if (context.window && context.windowClass != Members::explorerClass) return;
    const auto explorer = std::make_shared<cOlExplorer>(control.handler->Ribbon());
    explorer->ClickedIn(context.window);
    if (sends) return explorer->SendToPhone_Click();
    if (control.Is(RibbonXml::SynchroniseTag)) return explorer->SyncItButton_Click();
    for (const MenuEntry& entry : MenuEntries()) {
        if (control.Is(entry.languageKey)) return ((*explorer).*entry.click)();
    }
}

// Whether the host has taken a ribbon that has the control with that tag.
bool IsTaken(const RibbonUi& ribbon, std::string_view tag) {
    if (tag != RibbonXml::SaveAndSendTag) return ribbon.Serves(Kind::Explorer);
    return ribbon.Serves(Kind::Contact) || ribbon.Serves(Kind::Task) || ribbon.Serves(Kind::Appointment);
}

struct Callback {
    const char* name;
    bool tellsFlag;  // false is its neutral result, else nothing
    Argument (*run)(const Control& control);
};

constexpr std::array<Callback, 5> callbacks{{
    {RibbonXml::Action, false, [](const Control& control) { return Click(control), Argument(Missing); }},
    {RibbonXml::Enabled, true, [](const Control& control) { return Argument(IsEnabled(control)); }},
    {RibbonXml::Visible, true, [](const Control& control) { return Argument(IsVisible(control)); }},
    {RibbonXml::SmallImage, false,
     [](const Control& control) { return PictureOf(control.tag, RibbonPicture::SmallSide(platform::DotsPerInch())); }},
    {RibbonXml::LargeImage, false,
     [](const Control& control) { return PictureOf(control.tag, RibbonPicture::LargeSide(platform::DotsPerInch())); }},
}};

// The callbacks by which the host tells that it has taken a ribbon are numbered from 0 on, in the order of the kinds;
// the others follow.
constexpr auto loads = static_cast<std::int32_t>(RibbonXml::kindCount);

}  // namespace

std::string cOlRibbon::GetCustomUI(std::string_view ribbonId) {
    const Debug::Trace trace("GetCustomUI");
    const std::optional<Kind> kind = RibbonXml::KindOf(ribbonId);
    const std::shared_ptr<cOutlookAddIn> handler = handler_.lock();
    if (!kind || !handler || !handler->Ribbon()->Offered()) return {};
    IniFile::IniInit(false);  // the captions come from what the files say now
    handler->Ribbon()->Given(*kind);
    return RibbonXml::Xml(*kind, AllCommands());
}

std::int32_t cOlRibbon::FindCallback(std::string_view name) const {
    for (std::int32_t kind = 0; kind < loads; ++kind) {
        if (platform::SameIgnoringCase(RibbonXml::LoadCallback(static_cast<Kind>(kind)), name)) return kind;
    }
    std::int32_t number = loads;
    for (const Callback& callback : callbacks) {
        if (platform::SameIgnoringCase(callback.name, name)) return number;
        ++number;
    }
    return unknown;
}

Argument cOlRibbon::RunCallback(std::int32_t number, const EventArguments& arguments) {
    const std::shared_ptr<cOutlookAddIn> handler = handler_.lock();
    if (number < loads) {
        if (handler) handler->RibbonLoaded(static_cast<Kind>(number), arguments.Object(0));
        return Missing;
    }
    const auto place = static_cast<std::size_t>(number - loads);
    if (place >= callbacks.size()) return Missing;
    const Callback& callback = callbacks[place];
    const Control control{arguments.Object(0).Text(Members::RibbonControl::Tag), arguments.Object(0), handler};
    if (!handler || !IsTaken(*handler->Ribbon(), control.tag))
        return callback.tellsFlag ? Argument(false) : Argument(Missing);
    return callback.run(control);
}
