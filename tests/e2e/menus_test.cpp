// The menu of every Explorer window: its place, its entries, and what becomes of menus of earlier runs.
#include <doctest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "e2e/OwnLanguage.h"
#include "e2e/Session.h"
#include "testing/MenuTable.h"
#include "testing/Versions.h"
#include "unit/standins/outlook/client.h"

using e2e::OwnLanguage;
using e2e::Session;
using standin::ControlView;
using standin::FolderKind;
using standin::Window;

namespace {

std::vector<std::string> CaptionsWith(const std::string& languageFile, int version) {
    const OwnLanguage language(languageFile);
    Session session({.version = version});
    language.Start(session);
    std::vector<std::string> captions;
    for (const ControlView& entry : session.Entries(session.FirstWindow())) captions.push_back(entry.caption);
    return captions;
}

// A bitmap of the library as it is drawn.
standin::Pixels Resource(int number) {
    const HMODULE library =
        LoadLibraryExA((e2e::AddInFolder() + "CVOutlookAddIn.dll").c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    const auto bitmap =
        static_cast<HBITMAP>(LoadImageA(library, MAKEINTRESOURCEA(number), IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION));
    REQUIRE(bitmap);
    BITMAP form{};
    GetObjectA(bitmap, sizeof form, &form);
    standin::Pixels pixels;
    pixels.width = static_cast<int>(form.bmWidth);
    pixels.height = static_cast<int>(form.bmHeight);
    const HDC device = CreateCompatibleDC(nullptr);
    SelectObject(device, bitmap);
    for (int y = 0; y < pixels.height; ++y) {
        for (int x = 0; x < pixels.width; ++x) {
            const COLORREF colour = GetPixel(device, x, y);
            pixels.colours.push_back((colour & 0xFFu) << 16 | (colour & 0xFF00u) | (colour >> 16 & 0xFFu));
        }
    }
    DeleteDC(device);
    DeleteObject(bitmap);
    FreeLibrary(library);
    return pixels;
}

// Where the colours of menus and scroll bars are the same, a picture on the wrong one of them would not show.
class DifferentColours {
  public:
    DifferentColours() : scrollBar_(GetSysColor(COLOR_SCROLLBAR)), menu_(GetSysColor(COLOR_MENU)) {
        Set(RGB(200, 10, 30), RGB(20, 190, 40));
    }
    ~DifferentColours() { Set(scrollBar_, menu_); }
    DifferentColours(const DifferentColours&) = delete;
    DifferentColours& operator=(const DifferentColours&) = delete;

  private:
    static void Set(COLORREF scrollBar, COLORREF menu) {
        const int elements[] = {COLOR_SCROLLBAR, COLOR_MENU};
        const COLORREF colours[] = {scrollBar, menu};
        SetSysColors(2, elements, colours);
    }
    COLORREF scrollBar_;
    COLORREF menu_;
};

standin::Pixels WithBackground(standin::Pixels face, int systemColour) {
    const DWORD colour = GetSysColor(systemColour);
    const std::uint32_t background = (colour & 0xFFu) << 16 | (colour & 0xFF00u) | (colour >> 16 & 0xFFu);
    std::replace(face.colours.begin(), face.colours.end(), 0xC0C0C0u, background);
    return face;
}

client::Object MenuBarControls(Session& session) {
    const client::Object application(session.host.Application());
    const client::Object explorer = client::Call(application, "ActiveExplorer").AsObject();
    const client::Object bars = client::Get(explorer, "CommandBars").AsObject();
    const client::Object bar = client::Get(bars, "Item", {"Menu Bar"}).AsObject();
    return client::Get(bar, "Controls").AsObject();
}

// What an earlier run, or another version, may have left: a popup of our caption with entries, which stays.
void LeavePopup(Session& session, const std::vector<const char*>& parameters) {
    const client::Object controls = MenuBarControls(session);
    const auto omitted = client::Variant::Omitted();
    const client::Object popup = client::Call(controls, "Add", {10, omitted, omitted, omitted, false}).AsObject();
    REQUIRE(popup);
    REQUIRE_FALSE(client::Put(popup, "Caption", "C&orvella").Failed());
    const client::Object inside = client::Get(popup, "Controls").AsObject();
    for (const char* parameter : parameters) {
        const client::Object entry = client::Call(inside, "Add", {1, omitted, omitted, omitted, false}).AsObject();
        REQUIRE_FALSE(client::Put(entry, "Parameter", parameter).Failed());
        REQUIRE_FALSE(client::Put(entry, "Caption", "Old entry").Failed());
    }
}

std::size_t CountOf(const std::vector<ControlView>& controls, const char* caption) {
    return static_cast<std::size_t>(std::count_if(
        controls.begin(), controls.end(), [&](const ControlView& control) { return control.caption == caption; }));
}

}  // namespace

IN_EVERY_VERSION("the entries have their captions, order, groups, faces and marks in every version") {
    Session session({.version = version});
    session.host.Start();
    const std::vector<ControlView> found = session.Entries(session.FirstWindow());
    REQUIRE(found.size() == std::size(menuTable));
    for (std::size_t number = 0; number < found.size(); ++number) {
        const MenuRow& entry = menuTable[number];
        CAPTURE(entry.key);
        CHECK(found[number].caption == entry.caption);
        CHECK(found[number].type == 1);
        CHECK(found[number].id == 1);
        CHECK(found[number].style == 3);
        CHECK(found[number].oleUsage == 3);
        CHECK(found[number].beginGroup == entry.beginsGroup);
        CHECK(found[number].parameter == "CVOutlookAddIn.Main");
        CHECK(found[number].onAction == e2e::OwnOnAction());
        CHECK(found[number].tag.empty());
        CHECK(found[number].temporary);
        CHECK(found[number].visible);
        CHECK(found[number].enabled);
        const bool pasted = version < 11;
        CHECK(found[number].hasFace == (pasted && entry.picture != 0));
        CHECK(found[number].hasPicture == (!pasted && entry.picture != 0));
        CHECK(found[number].hasMask == (!pasted && entry.picture != 0));
    }
}

IN_EVERY_VERSION(
    "the settings entry has the host's face 65 below its own picture, and no other entry asks for a face") {
    Session session({.version = version});
    session.host.Record();
    session.host.Start();
    std::vector<std::string> faces;
    for (const std::string& line : session.host.Transcript()) {
        const std::size_t put = line.find(".FaceId = ");
        if (put == std::string::npos) continue;
        faces.push_back(line.substr(line.find_first_not_of(' ')));
    }
    CHECK(std::count_if(faces.begin(), faces.end(), [](const std::string& line) {
              return line.find("FaceId = 65") != std::string::npos && line.find("Settings") != std::string::npos;
          }) > 0);
    for (const std::string& line : faces) {
        CAPTURE(line);
        const bool settings = line.find("Settings...") != std::string::npos;
        const bool button = line.find("Synchronize") != std::string::npos;
        CHECK((settings || button));
        CHECK(line.ends_with(settings ? "= 65" : "= 0"));
    }
}

IN_EVERY_VERSION("each entry shows the picture of its own number, with its mask from Outlook 2003 on") {
    const DifferentColours colours;
    Session session({.version = version});
    session.host.Start();
    const std::vector<ControlView> found = session.Entries(session.FirstWindow());
    REQUIRE(found.size() == std::size(menuTable));
    for (std::size_t number = 0; number < found.size(); ++number) {
        if (menuTable[number].picture == 0) continue;
        CAPTURE(menuTable[number].key);
        const standin::Pixels face = Resource(menuTable[number].picture);
        if (version < 11) {
            CHECK(session.host.FaceOf(found[number].instance).colours == WithBackground(face, COLOR_SCROLLBAR).colours);
        } else {
            CHECK(session.host.FaceOf(found[number].instance).colours == face.colours);
            CHECK(session.host.MaskOf(found[number].instance).colours ==
                  Resource(menuTable[number].picture + 100).colours);
        }
    }
}

IN_EVERY_VERSION("the synchronise button shows the same picture as its entry, on the menu colour where it is pasted") {
    const DifferentColours colours;
    Session session({.version = version});
    session.host.Start();
    const std::vector<ControlView> buttons = session.OwnControls(session.FirstWindow(), "103");
    REQUIRE(buttons.size() == 1);
    const ControlView& button = buttons.front();
    const standin::Pixels face = Resource(103);
    const standin::Pixels expected = version < 11 ? WithBackground(face, COLOR_MENU) : face;
    CHECK(session.host.FaceOf(button.instance).colours == expected.colours);
    CHECK(button.caption == "Synchronize");
    CHECK(button.style == 3);
    CHECK(button.beginGroup);
    CHECK(button.parameter == "CVOutlookAddIn.Main.Main");
    CHECK(button.oleUsage == 3);
    CHECK(button.temporary);
    CHECK(button.visible);
    CHECK(button.index == static_cast<int>(session.host.Controls(session.FirstWindow(), "Standard").size()));
}

IN_EVERY_VERSION("a language file without the texts of some entries leaves these without caption, and has the others") {
    std::string text = "[OutlookAddIn]\r\n";
    std::vector<std::string> expected;
    for (const MenuRow& entry : menuTable) {
        const bool named = entry.otherwise[0] != '\0';
        if (named) text += std::string(entry.key) + "=Text of " + entry.key + "\r\n";
        expected.push_back(named ? std::string("Text of ") + entry.key : "");
    }
    CHECK(std::count(expected.begin(), expected.end(), "") >= 4);
    CHECK(CaptionsWith(text, version) == expected);
}

IN_EVERY_VERSION("a language file without any text leaves each entry its own English caption, where it has one") {
    std::vector<std::string> expected;
    for (const MenuRow& entry : menuTable) expected.emplace_back(entry.otherwise);
    CHECK(CaptionsWith("[Info]\r\nLanguage=None\r\n", version) == expected);
}

TEST_CASE("each of the four captions is left out alone, and the log file's never stands at the options") {
    for (const char* missing : {"mSync0", "mSync1", "mOptions", "mLogFile"}) {
        CAPTURE(missing);
        std::string text = "[OutlookAddIn]\r\n";
        std::vector<std::string> expected;
        for (const MenuRow& entry : menuTable) {
            const bool left = entry.key != std::string(missing);
            if (left) text += std::string(entry.key) + "=" + entry.key + "\r\n";
            expected.emplace_back(left ? entry.key : "");
        }
        CHECK(CaptionsWith(text, 11) == expected);
    }
}

IN_EVERY_VERSION("the popup stands just before the last control of the menu bar, however many there are") {
    Session session({.version = version});
    session.host.Start();
    const Window window = session.FirstWindow();
    for (const std::size_t others : {std::size_t{7}, std::size_t{8}}) {
        session.host.UnloadAddIn(e2e::progId);
        if (others == 8) session.host.AddCustomButton(window, "Menu Bar", "The user's own", "");
        REQUIRE(session.host.Controls(window, "Menu Bar").size() == others);
        session.LoadAddIn();
        const std::vector<ControlView> controls = session.host.Controls(window, "Menu Bar");
        REQUIRE(controls.size() == others + 1);
        CHECK(controls.at(others - 1).caption == "C&orvella");
        CHECK(controls.at(others - 1).index == static_cast<int>(others));
    }
}

IN_EVERY_VERSION("a popup that an earlier run left in the user's bars is deleted and rebuilt, never duplicated") {
    std::shared_ptr<standin::SavedBars> bars;
    {
        Session earlier({.version = version});
        earlier.host.Start();
        earlier.host.UnloadAddIn(e2e::progId);
        LeavePopup(earlier, {"CVOutlookAddIn.Main", "CVOutlookAddIn.Main"});
        earlier.host.Quit();
        bars = earlier.host.Saved();
    }
    Session session({.version = version, .savedBars = bars});
    session.host.Start();
    for (const Window window : {session.FirstWindow(), session.host.OpenExplorer()}) {
        if (version == 9 && window != session.FirstWindow()) continue;  // it gets no menu, and keeps the old one
        REQUIRE(session.Popups(window).size() == 1);
        const std::vector<ControlView> found = session.Entries(window);
        CHECK(found.size() == std::size(menuTable));
        CHECK(CountOf(found, "Old entry") == 0);
        CHECK(session.Popups(window).front().temporary);
    }
}

IN_EVERY_VERSION(
    "a popup of an earlier run that cannot be deleted is used on, and entries that it has are not added again") {
    Session session({.version = version});
    session.host.Start();
    session.host.UnloadAddIn(e2e::progId);
    LeavePopup(session, {"Something", "Any.Main"});
    session.host.FailMember("CommandBarPopup.Delete", standin::Fault::Fails(E_FAIL));
    session.LoadAddIn();
    CHECK(session.Entries(session.FirstWindow()).size() == 2);
    CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);  // made on every call
}

TEST_CASE("a popup that cannot be deleted and has no entries of ours gets them") {
    for (const char* parameter : {"Main", "Any.main", "Any.Main.", ".Mai"}) {
        CAPTURE(parameter);
        Session session({.version = 11});
        session.host.Start();
        session.host.UnloadAddIn(e2e::progId);
        LeavePopup(session, {parameter});
        session.host.FailMember("CommandBarPopup.Delete", standin::Fault::Fails(E_FAIL));
        session.LoadAddIn();
        CHECK(session.Entries(session.FirstWindow()).size() == 1 + std::size(menuTable));
    }
}

IN_EVERY_VERSION("a menu whose caption only contains the product's name is left alone") {
    Session session({.version = version});
    session.host.Start();
    const Window window = session.FirstWindow();
    session.host.UnloadAddIn(e2e::progId);
    for (const char* caption : {"Corvella 2", "corvella", "My Corvella"}) {
        session.host.AddCustomButton(window, "Menu Bar", caption, "");
    }
    session.LoadAddIn();
    session.host.UnloadAddIn(e2e::progId);
    const std::vector<ControlView> controls = session.host.Controls(window, "Menu Bar");
    for (const char* caption : {"Corvella 2", "corvella", "My Corvella"}) CHECK(CountOf(controls, caption) == 1);
}

IN_EVERY_VERSION("loaded and unloaded three times in one session a window has one popup and one button, or none") {
    Session session({.version = version});
    session.host.Start();
    const Window window = session.FirstWindow();
    for (int round = 0; round < 3; ++round) {
        CHECK(session.Entries(window).size() == std::size(menuTable));
        CHECK(session.OwnControls(window, "103").size() == 1);
        REQUIRE(session.host.UnloadAddIn(e2e::progId));
        CHECK(session.Popups(window).empty());
        CHECK(session.OwnControls(window).empty());
        REQUIRE(session.LoadAddIn());
    }
}

IN_EVERY_VERSION("removing the menus deletes an old synchronise button by its caption and mark, and no other control") {
    Session session({.version = version});
    session.host.Start();
    const Window window = session.FirstWindow();
    const auto add = [&](const char* caption, const char* onAction) {
        return session.host.AddCustomButton(window, "Standard", caption, "", onAction).instance;
    };
    const int old = add("Synchronize", "MainSyncBoth");
    const int otherCaption = add("Sync", "MainSyncBoth");
    const int otherMark = add("Synchronize", "MainSync");
    session.host.UnloadAddIn(e2e::progId);
    CHECK_FALSE(session.host.Control(old));
    CHECK(session.host.Control(otherCaption));
    CHECK(session.host.Control(otherMark));
}

IN_EVERY_VERSION("removing the menus does not find the synchronise button: it goes with its window's wrapper, once") {
    Session session({.version = version});
    session.host.Start();
    session.host.Record();
    session.host.UnloadAddIn(e2e::progId);
    std::size_t asked = 0;
    std::size_t deleted = 0;
    int deletions = 0;
    const std::vector<std::string> lines = session.host.Transcript();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const bool button = lines[line].find("\"Synchronize\" of Explorer") != std::string::npos;
        if (button && lines[line].find(".OnAction ->") != std::string::npos) asked = line;
        if (!button || lines[line].find(".Delete") == std::string::npos) continue;
        deleted = line;
        ++deletions;
    }
    CHECK(asked > 0);        // it was looked at
    CHECK(deleted > asked);  // and let stand by that step
    CHECK(deletions == 1);
}

TEST_CASE("Outlook 2000: the menu stands in the Explorer that was active, and other windows get none") {
    Session session({.version = 9});
    session.host.Start();
    session.host.UnloadAddIn(e2e::progId);
    const Window first = session.FirstWindow();
    const Window second = session.host.OpenExplorer();
    session.LoadAddIn();
    CHECK(session.Popups(first).empty());
    CHECK(session.Entries(second).size() == std::size(menuTable));
    const Window third = session.host.OpenExplorer();
    session.host.Activate(first);
    session.host.Activate(third);
    CHECK(session.Popups(first).empty());
    CHECK(session.Popups(third).empty());
    CHECK(session.OwnControls(third, "103").empty());
    CHECK(session.Popups(second).size() == 1);
}

TEST_CASE("Outlook 2000: a window that came later has the send-to-phone button, the first one has not") {
    Session session({.version = 9});
    session.host.Start();
    const Window first = session.FirstWindow();
    session.host.SwitchFolder(first, FolderKind::Contacts);
    CHECK(session.OwnControls(first, "107").empty());
    const Window second = session.host.OpenExplorer();
    session.host.SwitchFolder(second, FolderKind::Contacts);
    CHECK(session.OwnControls(second, "107").size() == 1);
    session.host.SwitchFolder(second, FolderKind::Inbox);
    CHECK(session.OwnControls(second, "107").empty());
}

FROM_VERSION("a later Outlook whose application tells no events gets its menus at once, like Outlook 2000", 10) {
    Session session({.version = version});
    session.host.FailMember("Application.FindConnectionPoint", standin::Fault::Fails(E_FAIL));
    session.host.Start();
    const Window window = session.FirstWindow();
    const std::vector<ControlView> before = session.Popups(window);
    REQUIRE(before.size() == 1);
    session.host.Deactivate(window);
    session.host.Activate(window);
    REQUIRE(session.Popups(window).size() == 1);
    CHECK(session.Popups(window).front().instance == before.front().instance);
    session.host.SwitchFolder(window, FolderKind::Contacts);
    CHECK(session.OwnControls(window, "107").empty());
    CHECK(session.host.Quit() == e2e::OrderlyEnd(version));
}

IN_EVERY_VERSION("a popup that the host refuses does not keep the synchronise button away") {
    Session session({.version = version});
    session.host.FailMember("CommandBarControls.Add", standin::Fault::Fails(E_FAIL), 1);
    session.host.Start();
    CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);
}
