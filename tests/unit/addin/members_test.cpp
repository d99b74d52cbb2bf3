// Each member that the add-in calls is known to the host under its name as well, with the same id: the name is what is
// asked for where an id is refused.
#include <doctest.h>

#include <string>

#include "addin/Members.h"
#include "outlook/Outlook.h"
#include "platform/com/Com.h"

using platform::Dispatch;
using platform::Member;

namespace {

void CheckKnown(const Dispatch& object, std::initializer_list<Member> members) {
    REQUIRE(object);
    for (const Member& member : members) {
        CAPTURE(std::string(member.Name()));
        std::wstring name = platform::Widen(member.Name());
        LPOLESTR names = name.data();
        DISPID id = DISPID_UNKNOWN;
        CHECK(object.Get()->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id) == S_OK);
        CHECK(id == member.Id());
    }
}

void CheckBars(const Dispatch& window, bool takesPictures) {
    using namespace Members;
    const Dispatch bars = window.Object("CommandBars");
    CheckKnown(bars, {Bars::Item});
    const Dispatch bar = bars.Object("Item", "Standard");
    CheckKnown(bar, {Bar::Controls, Bar::Name});
    const Dispatch controls = bar.Object("Controls");
    CheckKnown(controls, {Controls::Add, Controls::Count, Controls::Item});
    const Dispatch button = controls.Object("Item", 2);  // the first one has a menu
    CheckKnown(button, {Control::BeginGroup, Control::BuiltIn, Control::Caption, Control::Delete, Control::Enabled,
                        Control::InstanceId, Control::OLEUsage, Control::OnAction, Control::Parameter, Control::Tag,
                        Control::Visible, Button::FaceId, Button::PasteFace, Button::Style});
    if (takesPictures) CheckKnown(button, {Button::Picture, Button::Mask});
    const Dispatch popup = bars.Object("Item", "Menu Bar").Object("Controls").Object("Item", 1);
    CheckKnown(popup, {Popup::CommandBar, Popup::Controls});
}

}  // namespace

TEST_CASE("every member is known by its name, under the id that it is called by") {
    using namespace Members;
    for (const int version : {9, 10, 11, 12}) {
        CAPTURE(version);
        standin::Outlook host({.version = version});
        host.IgnoreRegistry();
        host.Start();
        host.OpenInspector(host.NewItem(standin::ItemClass::Contact));
        const Dispatch application = Dispatch::Attach(host.Application());
        CheckKnown(application, {Outlook::Name, Outlook::Version, Outlook::ActiveExplorer, Outlook::Explorers,
                                 Outlook::Inspectors, Class, Members::Application, Parent});
        const Dispatch explorers = application.Object("Explorers");
        CheckKnown(explorers, {Collection::Count, Collection::Item});
        const Dispatch explorer = explorers.Object("Item", 1);
        CheckKnown(explorer, {Window::CommandBars, Window::CurrentFolder, Window::Selection});
        CheckKnown(explorer.Object("Selection"), {Collection::Count, Collection::Item});
        CheckKnown(explorer.Object("CurrentFolder"), {Folder::DefaultItemType});
        const Dispatch inspector = application.Object("Inspectors").Object("Item", 1);
        CheckKnown(inspector, {Window::CommandBars, Window::CurrentItem});
        CheckKnown(inspector.Object("CurrentItem"), {Item::EntryID, Item::Close, Class});
        CheckBars(explorer, version >= 10);
    }
}
