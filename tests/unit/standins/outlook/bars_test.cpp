// The stand-in's command bars.
#include <doctest.h>
#include <olectl.h>

#include "testing/Versions.h"
#include "unit/standins/outlook/client.h"

using namespace client;

namespace {

const Variant none = Variant::Omitted();

Object AddButton(const Object& controls, bool temporary = true) {
    return Call(controls, "Add", {1, none, none, none, temporary}).AsObject();
}

HBITMAP ColouredBitmap(COLORREF colour) {
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 16, 16);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    const RECT all{0, 0, 16, 16};
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(memory, &all, brush);
    DeleteObject(brush);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

Object Picture(COLORREF colour) {
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = ColouredBitmap(colour);
    IDispatch* picture = nullptr;
    OleCreatePictureIndirect(&description, IID_IDispatch, TRUE, reinterpret_cast<void**>(&picture));
    return Object(picture);
}

void PutOnClipboard(HBITMAP bitmap) {
    REQUIRE(OpenClipboard(nullptr));
    EmptyClipboard();
    if (bitmap) SetClipboardData(CF_BITMAP, bitmap);
    CloseClipboard();
}

}  // namespace

TEST_CASE("an Explorer has a menu bar of seven menus and a Standard bar of a dozen buttons") {
    const Host host;
    CHECK(Get(host.Controls("Menu Bar"), "Count").AsNumber() == 7);
    CHECK(Get(host.Controls("Standard"), "Count").AsNumber() == 12);
    const Object last = Get(host.Controls("Menu Bar"), "Item", {7}).AsObject();
    CHECK(Get(last, "Caption").AsText() == "&Help");
    CHECK(Get(last, "Type").AsNumber() == 10);
    CHECK(Get(last, "Id").AsNumber() == 30010);
    CHECK(Get(last, "BuiltIn").AsNumber() == VARIANT_TRUE);
}

IN_EVERY_VERSION("the fourth menu of an Explorer is Favorites until 2002 and Go from 2003 on") {
    const Host host({.version = version});
    const Object menu = Get(host.Controls("Menu Bar"), "Item", {4}).AsObject();
    CHECK(Get(menu, "Caption").AsText() == (version < 11 ? "F&avorites" : "&Go"));
}

TEST_CASE("an Inspector has bars of its own, and that of a note has none that can be used") {
    Host host;
    const standin::Window contact = host.outlook.OpenInspector(host.outlook.NewItem(standin::ItemClass::Contact));
    const standin::Window note = host.outlook.OpenInspector(host.outlook.NewItem(standin::ItemClass::Note));
    CHECK(host.outlook.Controls(contact, "Menu Bar").size() == 8);
    CHECK(host.outlook.Controls(contact, "Standard").front().caption == "&Save and Close");
    CHECK(host.outlook.Bars(note).empty());
    const Object inspectors = Get(host.application, "Inspectors").AsObject();
    CHECK_FALSE(Get(Call(inspectors, "Item", {1}).AsObject(), "CommandBars").Failed());
    CHECK(Get(Call(inspectors, "Item", {2}).AsObject(), "CommandBars").Failed());
}

TEST_CASE("a control is inserted before the position that Before names") {
    const Host host;
    const Object controls = host.Controls("Menu Bar");
    const Object popup = Call(controls, "Add", {10, none, none, 7, true}).AsObject();
    REQUIRE(popup);
    CHECK(Get(popup, "Index").AsNumber() == 7);
    CHECK(Get(Get(controls, "Item", {8}).AsObject(), "Caption").AsText() == "&Help");
}

TEST_CASE("without Before a control comes at the end, and so it does before one more than the count") {
    const Host host;
    CHECK(Get(AddButton(host.Controls("Standard")), "Index").AsNumber() == 13);
    const Object second = Call(host.Controls("Standard"), "Add", {1, none, none, 14, true}).AsObject();
    CHECK(Get(second, "Index").AsNumber() == 14);
}

TEST_CASE("Before out of range is a bad index and adds nothing") {
    const Host host;
    const Object controls = host.Controls("Standard");
    for (const int before : {0, -1, 14, 100}) {
        CAPTURE(before);
        CHECK(Call(controls, "Add", {1, none, none, before, true}).code == DISP_E_BADINDEX);
    }
    CHECK(Get(controls, "Count").AsNumber() == 12);
}

TEST_CASE("without a type a button is added, and kinds that only the host can make are refused") {
    const Host host;
    const Object button = Call(host.Controls("Standard"), "Add").AsObject();
    CHECK(Get(button, "Type").AsNumber() == 1);
    CHECK(Get(button, "Id").AsNumber() == 1);
    CHECK(Get(button, "BuiltIn").AsNumber() == VARIANT_FALSE);
    for (const int type : {0, 5, 9, 11, 22}) CHECK(Call(host.Controls("Standard"), "Add", {type}).code == E_INVALIDARG);
    CHECK(Call(host.Controls("Standard"), "Add", {1, 0}).code == E_INVALIDARG);
}

TEST_CASE("a bar of an unknown name is an invalid argument, not an empty object") {
    const Host host;
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    CHECK(Get(bars, "Item", {"No such bar"}).code == E_INVALIDARG);
    CHECK(Get(bars, "Item", {0}).code == E_INVALIDARG);
    CHECK(Get(bars, "Item", {4}).code == E_INVALIDARG);
    CHECK(Get(Get(bars, "Item", {"standard"}).AsObject(), "Name").AsText() == "Standard");
}

TEST_CASE("a control of an unknown caption or index fails, a known caption is read without its access key") {
    const Host host;
    const Object controls = host.Controls("Menu Bar");
    CHECK(Get(controls, "Item", {"No such menu"}).code == E_INVALIDARG);
    CHECK(Get(controls, "Item", {0}).code == DISP_E_BADINDEX);
    CHECK(Get(controls, "Item", {8}).code == DISP_E_BADINDEX);
    CHECK(Get(Get(controls, "Item", {"tools"}).AsObject(), "Id").AsNumber() == 30007);
}

TEST_CASE("FindControl returns S_OK and nothing when nothing matches") {
    const Host host;
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    const Answer nothing = Call(bars, "FindControl", {none, none, "no such tag"});
    CHECK(nothing.code == S_OK);
    CHECK(nothing.value.vt == VT_DISPATCH);
    CHECK(nothing.value.pdispVal == nullptr);
}

TEST_CASE("FindControl of the bars looks into popups, that of a bar only when Recursive is set") {
    const Host host;
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    CHECK(Call(bars, "FindControl", {none, 752}).AsObject());  // File, Exit
    const Object menuBar = host.Bar("Menu Bar");
    CHECK_FALSE(Call(menuBar, "FindControl", {none, 752}).AsObject());
    CHECK(Call(menuBar, "FindControl", {none, 752, none, none, true}).AsObject());
}

TEST_CASE("FindControl finds by tag, type and visibility together") {
    const Host host;
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    const Object button = host.Button("mark");
    const Object found = Call(bars, "FindControl", {1, 1, "mark", true}).AsObject();
    REQUIRE(found);
    CHECK(Get(found, "InstanceId").AsNumber() == Get(button, "InstanceId").AsNumber());
    CHECK_FALSE(Call(bars, "FindControl", {10, none, "mark"}).AsObject());
    Put(button, "Visible", false);
    CHECK_FALSE(Call(bars, "FindControl", {none, none, "mark", true}).AsObject());
    CHECK(Call(bars, "FindControl", {none, none, "mark"}).AsObject());
}

TEST_CASE("the strings of a control come back as they were put") {
    const Host host;
    const Object button = host.Button("mark");
    for (const char* name :
         {"Parameter", "Tag", "OnAction", "DescriptionText", "ShortcutText", "TooltipText", "Caption"}) {
        CAPTURE(name);
        CHECK(Put(button, name, "<!A.B> & c").code == S_OK);
        CHECK(Get(button, name).AsText() == "<!A.B> & c");
    }
    CHECK(Put(button, "OLEUsage", 3).code == S_OK);
    CHECK(Get(button, "OLEUsage").AsNumber() == 3);
}

TEST_CASE("the caption is the default tooltip") {
    const Host host;
    const Object button = host.Button("mark");
    Put(button, "Caption", "S&ynchronise");
    CHECK(Get(button, "TooltipText").AsText() == "Synchronise");
    Put(button, "TooltipText", "now");
    CHECK(Get(button, "TooltipText").AsText() == "now");
}

TEST_CASE("a caption of 200 characters is taken and a longer one is an invalid argument") {
    const Host host;
    const Object button = host.Button("mark");
    CHECK(Put(button, "Caption", std::string(200, 'x')).code == S_OK);
    CHECK(Put(button, "Caption", std::string(201, 'y')).code == E_INVALIDARG);
    CHECK(Get(button, "Caption").AsText() == std::string(200, 'x'));
}

TEST_CASE("a built-in control with OnAction set no longer counts as built in") {
    const Host host;
    const Object built = Get(host.Controls("Standard"), "Item", {2}).AsObject();
    CHECK(Get(built, "BuiltIn").AsNumber() == VARIANT_TRUE);
    Put(built, "OnAction", "<!A.B>");
    CHECK(Get(built, "BuiltIn").AsNumber() == VARIANT_FALSE);
}

TEST_CASE("a style that Office does not know is an invalid argument") {
    const Host host;
    const Object button = host.Button("mark");
    CHECK(Put(button, "Style", 3).code == S_OK);
    for (const int style : {-1, 4, 8, 100}) CHECK(Put(button, "Style", style).code == E_INVALIDARG);
    CHECK(Get(button, "Style").AsNumber() == 3);
}

TEST_CASE("a built-in bar keeps its name, a popup's bar takes a new one") {
    const Host host;
    CHECK(Put(host.Bar("Standard"), "NameLocal", "x").Failed());
    const Object popup = Call(host.Controls("Menu Bar"), "Add", {10, none, none, none, true}).AsObject();
    const Object bar = Get(popup, "CommandBar").AsObject();
    CHECK(Put(bar, "Name", "Corner").code == S_OK);
    CHECK(Get(Get(popup, "CommandBar").AsObject(), "Name").AsText() == "Corner");
    CHECK(Get(bar, "Type").AsNumber() == 2);
}

TEST_CASE("a deleted control stays an object whose every member fails") {
    const Host host;
    const Object button = host.Button("mark");
    CHECK(Call(button, "Delete").code == S_OK);
    CHECK(Get(host.Controls("Standard"), "Count").AsNumber() == 12);
    CHECK(Get(button, "Caption").Failed());
    CHECK(Put(button, "Caption", "x").Failed());
    CHECK(Call(button, "Delete").Failed());
    Sink sink(button, buttonEvents);
    CHECK(FAILED(sink.Advised()));
}

TEST_CASE("what a popup held goes with the popup") {
    const Host host;
    const Object popup = Call(host.Controls("Menu Bar"), "Add", {10, none, none, none, true}).AsObject();
    const Object entry = AddButton(Get(popup, "Controls").AsObject());
    CHECK(Get(entry, "Index").AsNumber() == 1);
    Call(popup, "Delete");
    CHECK(Get(entry, "Index").Failed());
}

TEST_CASE("a control moves before another, in its own bar and to another one") {
    const Host host;
    const Object button = host.Button("mark");
    CHECK(Call(button, "Move", {none, 2}).code == S_OK);
    CHECK(Get(button, "Index").AsNumber() == 2);
    CHECK(Call(button, "Move", {host.Bar("Advanced"), 1}).code == S_OK);
    CHECK(Get(Get(button, "Parent").AsObject(), "Name").AsText() == "Advanced");
    CHECK(Get(host.Controls("Standard"), "Count").AsNumber() == 12);
    CHECK(Call(button, "Move", {none, 99}).code == DISP_E_BADINDEX);
}

TEST_CASE("a temporary control does not come back in the next window, another one does") {
    Host host;
    const standin::Window second = host.outlook.OpenExplorer();
    const Object controls = host.Controls("Standard", 2);
    Put(AddButton(controls, true), "Tag", "temporary");
    Put(AddButton(controls, false), "Tag", "kept");
    host.outlook.CloseWindow(second);
    const standin::Window third = host.outlook.OpenExplorer();
    CHECK(host.outlook.FindTag(third, "kept"));
    CHECK_FALSE(host.outlook.FindTag(third, "temporary"));
}

TEST_CASE("a control that is not temporary is back in the next session, without its sink") {
    std::shared_ptr<standin::SavedBars> saved;
    {
        Host host;
        Put(AddButton(host.Controls("Standard"), false), "Tag", "kept");
        const Object popup = Call(host.Controls("Menu Bar"), "Add", {10, none, none, 7, false}).AsObject();
        Put(popup, "Caption", "Left &over");
        host.outlook.Quit();
        saved = host.outlook.Saved();
    }
    Host next({.savedBars = saved});
    const standin::Window window = next.outlook.Windows().front();
    CHECK(next.outlook.FindCaption(window, "Left over").index == 7);
    const standin::ControlView kept = next.outlook.FindTag(window, "kept");
    CHECK(kept.index == 13);
    CHECK(next.outlook.Click(kept).sinks == 0);
}

TEST_CASE("a control deleted for this session only is back in the next one") {
    std::shared_ptr<standin::SavedBars> saved;
    {
        Host host;
        const Object kept = AddButton(host.Controls("Standard"), false);
        Put(kept, "Tag", "back");
        Call(kept, "Delete", {true});
        const Object gone = AddButton(host.Controls("Standard"), false);
        Put(gone, "Tag", "gone");
        Call(gone, "Delete", {false});
        host.outlook.Quit();
        saved = host.outlook.Saved();
    }
    Host next({.savedBars = saved});
    CHECK(next.outlook.FindTag(next.outlook.Windows().front(), "back"));
    CHECK_FALSE(next.outlook.FindTag(next.outlook.Windows().front(), "gone"));
}

IN_EVERY_VERSION("Picture and Mask are unknown names in 2000 and take bitmaps afterwards") {
    const Object picture = Picture(RGB(255, 0, 0)), mask = Picture(RGB(0, 0, 0));
    REQUIRE(picture);
    Host host({.version = version});
    const Object button = host.Button("mark");
    DISPID id = 0;
    CHECK(LookUp(button, "Picture", id) == (version == 9 ? DISP_E_UNKNOWNNAME : S_OK));
    CHECK(LookUp(button, "Mask", id) == (version == 9 ? DISP_E_UNKNOWNNAME : S_OK));
    CHECK(Invoke(button, 0x6005000E, DISPATCH_PROPERTYPUT, {picture}).code ==
          (version == 9 ? DISP_E_MEMBERNOTFOUND : S_OK));
    Put(button, "Mask", mask);
    const standin::ControlView view = host.outlook.FindTag(host.outlook.Windows().front(), "mark");
    CHECK(view.hasPicture == (version > 9));
    CHECK(view.hasMask == (version > 9));
    if (version > 9) CHECK(host.outlook.FaceOf(view.instance).At(3, 3) == 0xFF0000);
}

TEST_CASE("Picture refuses what is no bitmap") {
    const Host host;
    const Object button = host.Button("mark");
    CHECK(Put(button, "Picture", host.application).code == E_INVALIDARG);
    CHECK(Put(button, "Picture", "a text").code == DISP_E_TYPEMISMATCH);
    CHECK(Put(button, "Picture", Variant(static_cast<IDispatch*>(nullptr))).code == E_INVALIDARG);
}

IN_VERSIONS("from 2010 on, what add-ins put on menus and bars shows on the tab Add-Ins", 12, 14, 16) {
    Host host({.version = version});
    const standin::Window window = host.outlook.Windows().front();
    CHECK(host.outlook.AddInsTab(window).empty());
    const Object button = host.Button("mark"), hidden = host.Button("hidden");
    Put(hidden, "Visible", false);
    const Object entry = Call(host.Controls("Menu Bar"), "Add", {10}).AsObject();
    Put(entry, "Caption", "M&ine");
    const std::vector<standin::BarView> groups = host.outlook.AddInsTab(window);
    REQUIRE(groups.size() == (version < 14 ? 0 : 2));
    if (groups.empty()) return;
    CHECK(groups[0].name == "Menu Commands");
    REQUIRE(groups[0].controls.size() == 1);
    CHECK(groups[0].controls[0].caption == "M&ine");
    CHECK(groups[1].name == "Toolbar Commands");
    REQUIRE(groups[1].controls.size() == 1);
    CHECK(groups[1].controls[0].tag == "mark");
    CHECK(host.outlook.Click(groups[1].controls[0]).reached);
}

TEST_CASE("PasteFace takes the clipboard's bitmap and fails without one") {
    Host host({.version = 10});
    const Object button = host.Button("mark");
    PutOnClipboard(nullptr);
    CHECK(Call(button, "PasteFace").Failed());
    CHECK_FALSE(host.outlook.FindTag(host.outlook.Windows().front(), "mark").hasFace);
    PutOnClipboard(ColouredBitmap(RGB(0, 128, 255)));
    CHECK(Call(button, "PasteFace").code == S_OK);
    PutOnClipboard(nullptr);  // it has a copy
    const standin::ControlView view = host.outlook.FindTag(host.outlook.Windows().front(), "mark");
    CHECK(view.hasFace);
    const standin::Pixels face = host.outlook.FaceOf(view.instance);
    CHECK(face.width == 16);
    CHECK(face.At(8, 8) == 0x0080FF);
}

TEST_CASE("CopyFace puts the face on the clipboard, and fails for a button without one") {
    const Host host;
    const Object button = host.Button("mark");
    CHECK(Call(button, "CopyFace").Failed());
    PutOnClipboard(ColouredBitmap(RGB(1, 2, 3)));
    Call(button, "PasteFace");
    PutOnClipboard(nullptr);
    CHECK(Call(button, "CopyFace").code == S_OK);
    CHECK(IsClipboardFormatAvailable(CF_BITMAP));
}

TEST_CASE("a face number of a built-in picture takes the place of an own face") {
    Host host;
    const Object button = host.Button("mark");
    PutOnClipboard(ColouredBitmap(RGB(1, 2, 3)));
    Call(button, "PasteFace");
    CHECK(Get(button, "BuiltInFace").AsNumber() == VARIANT_FALSE);
    CHECK(Put(button, "FaceId", 65).code == S_OK);
    CHECK(Get(button, "BuiltInFace").AsNumber() == VARIANT_TRUE);
    CHECK(Get(button, "FaceId").AsNumber() == 65);
    CHECK_FALSE(host.outlook.FindTag(host.outlook.Windows().front(), "mark").hasFace);
}

TEST_CASE("two Explorers have collections of bars that do not touch each other") {
    Host host;
    const standin::Window first = host.outlook.Windows().front();
    const standin::Window second = host.outlook.OpenExplorer();
    const Object button = host.Button("second only", 2);
    CHECK_FALSE(host.outlook.FindTag(first, "second only"));
    CHECK(host.outlook.FindTag(second, "second only"));
}

TEST_CASE("a user's own bar is added by name, refused when the name is taken, and can be deleted") {
    const Host host;
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    const Object bar = Call(bars, "Add", {"My bar", 1, false, true}).AsObject();
    REQUIRE(bar);
    CHECK(Get(bars, "Count").AsNumber() == 4);
    CHECK(Call(bars, "Add", {"My bar"}).code == E_INVALIDARG);
    CHECK(Get(bar, "BuiltIn").AsNumber() == VARIANT_FALSE);
    CHECK(Call(bar, "Delete").code == S_OK);
    CHECK(Get(bars, "Count").AsNumber() == 3);
    CHECK(Call(host.Bar("Standard"), "Delete").Failed());
}
