// A long day: nothing grows with the number of connections or windows.
#include <doctest.h>

#include "e2e/Session.h"
#include "testing/HandleCount.h"
#include "testing/MenuTable.h"
#include "testing/Versions.h"

using e2e::Session;

namespace {

struct Held {
    std::uint32_t gdi = 0;
    std::uint32_t user = 0;
    std::uint32_t kernel = 0;
    int references = 0;
    int advises = 0;
};

Held HeldNow(Session& session) {
    e2e::Pump(0);
    return {handles::GdiObjects(), handles::UserObjects(), handles::KernelHandles(), session.host.References(),
            session.host.Advises()};
}

void CheckNotMore(const Held& now, const Held& before) {
    CHECK(now.gdi <= before.gdi);
    CHECK(now.user <= before.user);
    CHECK(now.kernel <= before.kernel);
    CHECK(now.references <= before.references);
    CHECK(now.advises <= before.advises);
}

constexpr int settled = 10;
// A leak shows after a hundred rounds as well as after a thousand; the whole run takes the longer day.
int Rounds() { return versions::Whole() ? 1000 : 100; }

}  // namespace

// Pasted faces (10) and faces given as pictures (11) take different ways.
IN_VERSIONS("connection after connection leaves no more held than the tenth", 10, 11) {
    Session session({.version = version});
    session.host.Start();
    Held before;
    for (int round = 1; round <= Rounds(); ++round) {
        REQUIRE(session.host.UnloadAddIn(e2e::progId));
        REQUIRE(session.host.LoadAddIn(e2e::progId));
        if (round == settled) before = HeldNow(session);
    }
    CheckNotMore(HeldNow(session), before);
}

IN_VERSIONS("item window after item window leaves no more held than the tenth", 10, 11) {
    Session session({.version = version});
    session.host.Start();
    const standin::Item contact = session.host.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
    Held before;
    for (int round = 1; round <= Rounds(); ++round) {
        session.host.CloseWindow(session.host.OpenInspector(contact));
        if (round == settled) before = HeldNow(session);
    }
    CheckNotMore(HeldNow(session), before);
}

IN_EVERY_VERSION("Explorer after Explorer, with its menu and buttons, leaves no more held than the tenth") {
    const int explorers = versions::Whole() ? 200 : 50;
    Session session({.version = version});
    session.host.Start();
    const standin::Item ann = session.host.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
    Held before;
    for (int round = 1; round <= explorers; ++round) {
        const standin::Window window = session.host.OpenExplorer();
        REQUIRE(session.Entries(window).size() == (version < 10 ? 0 : std::size(menuTable)));
        session.host.SwitchFolder(window, standin::FolderKind::Contacts);
        session.host.Select(window, {ann});
        REQUIRE(session.OwnControls(window, "107").size() == 1);
        session.host.CloseWindow(window);
        if (round == settled) before = HeldNow(session);
    }
    CheckNotMore(HeldNow(session), before);
    CHECK(session.Entries(session.FirstWindow()).size() == std::size(menuTable));
}

IN_EVERY_VERSION("fifty Explorers open at once have a menu each, and closing them leaves what was held before") {
    Session session({.version = version});
    session.host.Start();
    session.host.CloseWindow(session.host.OpenExplorer());
    const Held before = HeldNow(session);
    std::vector<standin::Window> windows;
    for (int number = 0; number < 50; ++number) windows.push_back(session.host.OpenExplorer());
    for (const standin::Window window : windows) {
        CHECK(session.Popups(window).size() == (version < 10 ? 0 : 1));
        CHECK(session.OwnControls(window, "103").size() == (version < 10 ? 0 : 1));
    }
    for (const standin::Window window : windows) session.host.CloseWindow(window);
    CheckNotMore(HeldNow(session), before);
}

IN_VERSIONS("round after round with the ribbon and its pictures leaves no more held than the tenth", 14, 16) {
    Session session({.version = version}, e2e::RibbonIs::Asked);
    session.host.Start();
    const standin::Item ann = session.host.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
    Held before;
    for (int round = 1; round <= Rounds() / 2; ++round) {
        const standin::Window window = session.host.OpenExplorer(standin::FolderKind::Contacts);
        session.host.Select(window, {ann});
        REQUIRE(session.host.FindRibbon(window, "TabContacts_ButtonSendToPhone").image.width > 0);
        REQUIRE(session.host.ContextMenu(window).size() == 1);
        const standin::Window contact = session.host.OpenInspector(ann);
        REQUIRE(session.host.FindRibbon(contact, "TabContact_ButtonUpdate").image.width > 0);
        session.host.CloseWindow(contact);
        session.host.CloseWindow(window);
        REQUIRE(session.host.UnloadAddIn(e2e::progId));
        REQUIRE(session.host.LoadAddIn(e2e::progId));
        if (round == settled) before = HeldNow(session);
    }
    CheckNotMore(HeldNow(session), before);
}
