#include "outlook/UserObjects.h"

#include "outlook/Handlers.h"
#include "outlook/Host.h"
#include "outlook/RibbonHost.h"
#include "outlook/WindowObjects.h"
#include "outlook/Words.h"

namespace standin {
namespace {

constexpr GUID userId = {0x5F1B83C2, 0x60D4, 0x4E0A, {0x8B, 0x27, 0x91, 0x3C, 0xD5, 0x4E, 0x70, 0xAF}};
constexpr GUID viewId = {0x5F1B83C3, 0x60D4, 0x4E0A, {0x8B, 0x27, 0x91, 0x3C, 0xD5, 0x4E, 0x70, 0xAF}};

constexpr Member userMembers[] = {
    Method<&UserObject::CallFindRibbon>("FindRibbon", 1, "Id"),
    Method<&UserObject::CallClickRibbon>("ClickRibbon", 2, "Id"),
    Method<&UserObject::CallClickContextMenu>("ClickContextMenu", 3, "Id"),
    Get<&UserObject::GetRibbonsAsked>("RibbonsAsked", 4),
};
constexpr Member viewMembers[] = {
    Get<&RibbonViewObject::GetKind>("Kind", 1),
    Get<&RibbonViewObject::GetId>("Id", 2),
    Get<&RibbonViewObject::GetTag>("Tag", 3),
    Get<&RibbonViewObject::GetLabel>("Label", 4),
    Get<&RibbonViewObject::GetScreenTip>("ScreenTip", 5),
    Get<&RibbonViewObject::GetKeyTip>("KeyTip", 6),
    Get<&RibbonViewObject::GetVisible>("Visible", 7),
    Get<&RibbonViewObject::GetEnabled>("Enabled", 8),
};

// The window in front; Outlook's own words where there is none.
WindowObject& ActiveWindow(Host& host) {
    auto* window = dynamic_cast<WindowObject*>(host.TopWindow(WindowKind::Any).get());
    if (!window) RefuseWords(E_FAIL, L"There is no active window.");
    return *window;
}

}  // namespace

const TypeDescription& UserObject::Type() const {
    static const TypeDescription type{"User", userId, {userMembers}};
    return type;
}

Result UserObject::CallFindRibbon(Call& call) {
    const RibbonControlView found = FindControl(TheHost().Ribbons().Tabs(ActiveWindow(TheHost())), Ansi(call.Text(0)));
    return found ? Result(Make<RibbonViewObject>(SharedGate(), found)) : Result();
}

bool UserObject::CallClickRibbon(Call& call) {
    return TheHost().Ribbons().Click(ActiveWindow(TheHost()), call.Text(0));
}

bool UserObject::CallClickContextMenu(Call& call) {
    WindowObject& window = ActiveWindow(TheHost());
    return window.IsExplorer() && TheHost().Ribbons().ClickInContextMenu(window, call.Text(0));
}

std::wstring UserObject::GetRibbonsAsked() {
    std::wstring ids;
    for (const std::string& id : TheHost().Ribbons().Asked()) ids += Wide(id) + L" ";
    return ids;
}

const TypeDescription& RibbonViewObject::Type() const {
    static const TypeDescription type{"RibbonView", viewId, {viewMembers}};
    return type;
}

std::wstring RibbonViewObject::GetKind() { return Wide(view_.kind); }
std::wstring RibbonViewObject::GetId() { return Wide(view_.id); }
std::wstring RibbonViewObject::GetTag() { return Wide(view_.tag); }
std::wstring RibbonViewObject::GetLabel() { return Wide(view_.label); }
std::wstring RibbonViewObject::GetScreenTip() { return Wide(view_.screentip); }
std::wstring RibbonViewObject::GetKeyTip() { return Wide(view_.keytip); }

}  // namespace standin
