// Where toolbar buttons stand and how they look.
#include <doctest.h>

#include <algorithm>
#include <cstring>

#include "e2e/Session.h"
#include "testing/Versions.h"

using e2e::Session;

namespace {

// The synchronise button of the first window, with one placement value set beforehand.
standin::ControlView SynchroniseButton(Session& session) {
    session.host.Start();
    const std::vector<standin::ControlView> found = session.OwnControls(session.FirstWindow(), "103");
    return found.size() == 1 ? found.front() : standin::ControlView{};
}

bool StandsOn(Session& session, const char* bar) {
    const std::vector<standin::ControlView> controls = session.host.Controls(session.FirstWindow(), bar);
    return std::any_of(controls.begin(), controls.end(), [](const auto& control) { return control.tag == "103"; });
}

}  // namespace

IN_EVERY_VERSION("a bar in the registry that does not exist puts the button on the standard bar") {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, "103Bar", "No such bar");
    CHECK(SynchroniseButton(session));
    CHECK(StandsOn(session, "Standard"));
}

IN_EVERY_VERSION("a bar in the registry that exists gets the button") {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, "103Bar", "Advanced");
    CHECK(SynchroniseButton(session));
    CHECK(StandsOn(session, "Advanced"));
    CHECK_FALSE(StandsOn(session, "Standard"));
}

IN_EVERY_VERSION("a position of 0, below 0, or that is no number appends the button") {
    for (const char* position : {"0", "-3", "abc"}) {
        CAPTURE(position);
        Session session({.version = version});
        e2e::WriteValue(e2e::addInKey, "103Pos", position);
        const standin::ControlView button = SynchroniseButton(session);
        CHECK(button.index == static_cast<int>(session.host.Controls(session.FirstWindow(), "Standard").size()));
    }
}

IN_EVERY_VERSION("a position among the controls puts the button before the control that stood there") {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, "103Pos", "3");
    CHECK(SynchroniseButton(session).index == 3);
}

IN_EVERY_VERSION("a position beyond the controls follows the host's own rule: refused, and no button") {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, "103Pos", "100");
    CHECK_FALSE(SynchroniseButton(session));
    CHECK(session.OwnControls(session.FirstWindow(), "103").empty());
    CHECK(session.Popups(session.FirstWindow()).size() == 1);  // the rest is there all the same
}

IN_EVERY_VERSION("a separator of 0, or of a text that is no number, removes the one that the default would add") {
    Session plain({.version = version});
    CHECK(SynchroniseButton(plain).beginGroup);
    for (const char* separator : {"0", "abc"}) {
        CAPTURE(separator);
        Session session({.version = version});
        e2e::WriteValue(e2e::addInKey, "103Sep", separator);
        const standin::ControlView button = SynchroniseButton(session);
        REQUIRE(button);
        CHECK_FALSE(button.beginGroup);
    }
}

IN_EVERY_VERSION("any number but 0 as separator adds one that the default would not") {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, version < 11 ? "101Sep" : "102Sep", "-1");
    session.host.Start();
    CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)).beginGroup);
}

IN_EVERY_VERSION("a style in the registry goes before the default") {
    Session session({.version = version});
    e2e::WriteValue(e2e::addInKey, "103Style", "1");
    CHECK(SynchroniseButton(session).style == 1);
}

IN_EVERY_VERSION("setting up twice in one window leaves one synchronise button and one menu") {
    Session session({.version = version});
    session.host.Start();
    session.host.UnloadAddIn(e2e::progId);
    session.LoadAddIn();
    CHECK(session.OwnControls(session.FirstWindow(), "103").size() == 1);
    CHECK(session.Popups(session.FirstWindow()).size() == 1);
}

IN_EVERY_VERSION("a button of the same number that another add-in made is left alone") {
    Session session({.version = version});
    session.host.Start();
    const standin::Window window = session.FirstWindow();
    session.host.UnloadAddIn(e2e::progId);
    const standin::ControlView stranger =
        session.host.AddCustomButton(window, "Standard", "Theirs", "103", "<!Other.AddIn>");
    session.LoadAddIn();
    CHECK(session.host.Control(stranger.instance));
}

IN_EVERY_VERSION("a stale copy that an earlier run left is deleted before the new button is made") {
    Session session({.version = version, .startedBy = standin::StartedBy::User});
    session.host.Start();
    const standin::Window window = session.FirstWindow();
    session.host.UnloadAddIn(e2e::progId);
    const auto first = session.host.AddCustomButton(window, "Standard", "Old", "103", e2e::OwnOnAction());
    const auto second = session.host.AddCustomButton(window, "Standard", "Old", "103", e2e::OwnOnAction());
    session.LoadAddIn();
    CHECK_FALSE(session.host.Control(first.instance));
    CHECK_FALSE(session.host.Control(second.instance));
    CHECK(session.OwnControls(window, "103").size() == 1);
}

namespace {

void PutText(const std::string& text) {
    REQUIRE(OpenClipboard(nullptr));
    EmptyClipboard();
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    SetClipboardData(CF_TEXT, memory);
    CloseClipboard();
}

std::string TextOnClipboard() {
    REQUIRE(OpenClipboard(nullptr));
    HANDLE memory = GetClipboardData(CF_TEXT);
    std::string text;
    if (memory) {
        text = static_cast<const char*>(GlobalLock(memory));
        GlobalUnlock(memory);
    }
    CloseClipboard();
    return text;
}

}  // namespace

IN_EVERY_VERSION("before Outlook 2003 the face comes through the clipboard, later by picture and mask") {
    Session session({.version = version});
    const standin::ControlView button = SynchroniseButton(session);
    CHECK(button.hasFace == (version < 11));
    CHECK(button.hasPicture == (version >= 11));
}

IN_EVERY_VERSION("what the user has on the clipboard is there again after a start and an opened contact") {
    PutText("the user's text");
    Session session({.version = version});
    (void)SynchroniseButton(session);
    (void)session.OpenNew(standin::ItemClass::Contact);
    CHECK(TextOnClipboard() == "the user's text");
    CHECK_FALSE(IsClipboardFormatAvailable(CF_BITMAP));
}

IN_VERSIONS("a picture of the user's is never pasted onto a button, and stays on the clipboard", 11, 12) {
    REQUIRE(OpenClipboard(nullptr));
    EmptyClipboard();
    SetClipboardData(CF_BITMAP, CreateBitmap(5, 7, 1, 1, nullptr));
    CloseClipboard();
    Session session({.version = version});
    const standin::ControlView button = SynchroniseButton(session);
    CHECK_FALSE(button.hasFace);
    for (const standin::ControlView& entry : session.Entries(session.FirstWindow())) CHECK_FALSE(entry.hasFace);
    CHECK(IsClipboardFormatAvailable(CF_BITMAP));
    PutText("");
}

IN_VERSIONS("without the clipboard, which somebody else keeps open, a button has no face and nothing is lost", 9, 10) {
    PutText("the user's text");
    HWND other = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    REQUIRE(OpenClipboard(other));
    Session session({.version = version});
    const bool hasFace = SynchroniseButton(session).hasFace;
    CloseClipboard();
    DestroyWindow(other);
    CHECK_FALSE(hasFace);
    CHECK(TextOnClipboard() == "the user's text");
}

IN_VERSIONS("the light grey of a pasted face becomes the menu colour of the system", 9, 10) {
    Session session({.version = version});
    session.host.Start();
    const standin::ControlView button = session.SendButton(session.OpenNew(standin::ItemClass::Contact));
    const standin::Pixels face = session.host.FaceOf(button.instance);
    REQUIRE(face.width == 16);
    const DWORD menu = GetSysColor(COLOR_MENU);
    const std::uint32_t expected = (menu & 0xFFu) << 16 | (menu & 0xFF00u) | (menu >> 16 & 0xFFu);
    CHECK(face.At(0, 0) == expected);
    CHECK(std::count(face.colours.begin(), face.colours.end(), 0xC0C0C0u) == 0);
}

IN_EVERY_VERSION(
    "the order in which a button is made: stale copies, control, texts, style, mark, face, then shown and tagged") {
    Session session({.version = version});
    session.host.Start();
    session.host.Record();
    session.OpenNew(standin::ItemClass::Contact);
    std::vector<const char*> steps = {"CommandBars", ".BuiltIn", ".Add(",       ".Parameter =", ".Caption =",
                                      ".OLEUsage =", ".Style =", ".BeginGroup", ".OnAction =",  ".FaceId ="};
    if (version < 11) {
        steps.push_back(".PasteFace");
    } else {
        steps.insert(steps.end(), {".Picture =", ".Mask ="});
    }
    steps.insert(steps.end(), {".Visible =", ".Tag ="});
    std::size_t step = 0;
    for (const std::string& line : session.host.Transcript()) {
        if (step < steps.size() && line.find(steps[step]) != std::string::npos) ++step;
    }
    CAPTURE(step);
    CHECK(step == steps.size());
}
