// Windows of contacts, tasks and appointments: their button and what a click on it does.
#include <doctest.h>

#include "e2e/Session.h"
#include "testing/Versions.h"

using e2e::Session;

namespace {

std::string List(const char* kind) {
    return e2e::ReadValue(e2e::outlookKey, std::string("Changed") + kind).value_or("");
}

}  // namespace

IN_EVERY_VERSION("opening a mail makes no button; a contact, a task and an appointment get one each") {
    using enum standin::ItemClass;
    Session session({.version = version});
    session.host.Start();
    for (const standin::ItemClass kind : {Mail, Post, DistList, Journal, Document}) {
        CAPTURE(static_cast<int>(kind));
        CHECK(session.OwnControls(session.OpenNew(kind)).empty());
    }
    for (const standin::ItemClass kind : {Contact, Task, Appointment}) {
        CAPTURE(static_cast<int>(kind));
        CHECK(session.OwnControls(session.OpenNew(kind)).size() == 1);
    }
}

IN_EVERY_VERSION("the command bars of a note's window are left alone") {
    Session session({.version = version});
    session.host.Start();
    session.host.Record();
    session.OpenNew(standin::ItemClass::Note);
    for (const std::string& line : session.host.Transcript()) {
        CAPTURE(line);
        CHECK(line.find("CommandBars") == std::string::npos);
    }
}

IN_EVERY_VERSION("a contact, a task and an appointment are saved, closed and handed over under their own letter") {
    const std::pair<standin::ItemClass, const char*> kinds[] = {
        {standin::ItemClass::Contact, "C"}, {standin::ItemClass::Task, "T"}, {standin::ItemClass::Appointment, "A"}};
    for (const auto& row : kinds) {
        const char* const letter = row.second;
        CAPTURE(letter);
        Session session({.version = version});
        session.host.Start();
        const standin::Item item = session.host.NewItem(row.first, {{"Subject", "Something new"}});
        const standin::Window window = session.host.OpenInspector(item);
        const standin::ClickResult click = session.host.Click(session.SendButton(window));
        CHECK(click.sinks == 1);
        CHECK(session.host.IsSaved(item));
        CHECK_FALSE(session.host.Exists(window));
        REQUIRE_FALSE(session.host.EntryId(item).empty());
        CHECK(List(letter) == ";" + session.host.EntryId(item));
    }
}

IN_EVERY_VERSION("a new contact that was never saved gets its entry id through the click and is handed over with it") {
    Session session({.version = version});
    session.host.Start();
    const standin::Item contact = session.host.NewItem(standin::ItemClass::Contact, {{"FullName", "Ann Smith"}});
    REQUIRE(session.host.EntryId(contact).empty());
    session.host.Click(session.SendButton(session.host.OpenInspector(contact)));
    CHECK(List("C") == ";" + session.host.EntryId(contact));
}

IN_EVERY_VERSION("Outlook 2000 and 2002 show picture 101 pasted, 2003 and 2007 picture 102 with its mask") {
    Session session({.version = version});
    session.host.Start();
    const standin::Window window = session.OpenNew(standin::ItemClass::Contact);
    const bool pasted = version < 11;
    CHECK(session.OwnControls(window, "101").size() == (pasted ? 1 : 0));
    CHECK(session.OwnControls(window, "102").size() == (pasted ? 0 : 1));
    const standin::ControlView button = session.SendButton(window);
    CHECK(button.hasFace == pasted);
    CHECK(button.hasPicture == !pasted);
    CHECK(button.hasMask == !pasted);
    CHECK(session.host.FaceOf(button.instance).width == 16);
}

IN_EVERY_VERSION("the button stands second on the window's standard bar unless the registry says otherwise") {
    const std::string number = version < 11 ? "101" : "102";
    Session session({.version = version});
    session.host.Start();
    const standin::Window first = session.OpenNew(standin::ItemClass::Contact);
    CHECK(session.SendButton(first).index == 2);
    CHECK(session.host.Controls(first, "Standard").at(1).tag == number);
    e2e::WriteValue(e2e::addInKey, number + "Pos", "4");
    CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)).index == 4);
    e2e::WriteValue(e2e::addInKey, number + "Bar", "Formatting");
    const standin::Window third = session.OpenNew(standin::ItemClass::Task);
    for (const standin::ControlView& control : session.host.Controls(third, "Standard")) CHECK(control.tag != number);
    CHECK(session.host.Controls(third, "Formatting").at(3).tag == number);
}

IN_EVERY_VERSION("the button has its caption from the language file, icon and caption as style and no separator") {
    Session session({.version = version});
    session.host.Start();
    const standin::ControlView button = session.SendButton(session.OpenNew(standin::ItemClass::Contact));
    CHECK_FALSE(button.caption.empty());
    CHECK(button.style == 3);
    CHECK_FALSE(button.beginGroup);
    CHECK(button.temporary);
    CHECK(button.visible);
    CHECK(button.oleUsage == 3);
    CHECK(button.onAction == e2e::OwnOnAction());
    CHECK(button.parameter == "CorvellaAddIn.Main");
}

IN_EVERY_VERSION("a click in one of two windows with the same button acts once, in the window that was clicked") {
    Session session({.version = version});
    session.host.Start();
    const standin::Item ann = session.host.NewItem(standin::ItemClass::Contact, {{"FullName", "Ann"}});
    const standin::Item bob = session.host.NewItem(standin::ItemClass::Contact, {{"FullName", "Bob"}});
    const standin::Window first = session.host.OpenInspector(ann);
    const standin::Window second = session.host.OpenInspector(bob);
    CHECK(session.host.Click(session.SendButton(second)).sinks == 2);  // the host asks both
    CHECK(session.host.Exists(first));
    CHECK_FALSE(session.host.Exists(second));
    CHECK_FALSE(session.host.IsSaved(ann));
    CHECK(List("C") == ";" + session.host.EntryId(bob));
}

IN_EVERY_VERSION("where the host has no InstanceId, the same COM object tells whose click it was") {
    Session session({.version = version, .clicked = standin::ClickedControl::AdvisedObject});
    session.host.Start();
    const standin::Window first = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
    const standin::Window second = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Bob"}});
    session.host.FailMember("CommandBarButton.InstanceId", standin::Fault::Fails(DISP_E_UNKNOWNNAME));
    session.host.Click(session.SendButton(first));
    CHECK_FALSE(session.host.Exists(first));
    CHECK(session.host.Exists(second));
}

IN_EVERY_VERSION("a button that the host refused before the window was shown is made when it is activated") {
    Session session({.version = version});
    session.host.Start();
    session.host.FailMember("Inspector.CommandBars", standin::Fault::Fails(E_FAIL), 1);
    const standin::Window contact = session.OpenNew(standin::ItemClass::Contact);
    if (version >= 14) session.GoAndComeBack();  // the first activation was the one that was refused
    CHECK(session.SendButton(contact));
}

IN_EVERY_VERSION("the item that the window shows at the time of the click is the one that is sent") {
    Session session({.version = version});
    session.host.Start();
    const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
    session.host.Record();
    session.host.Click(session.SendButton(window));
    bool asked = false;
    for (const std::string& line : session.host.Transcript())
        asked = asked || line.find(".CurrentItem ->") != std::string::npos;
    CHECK(asked);
}

IN_EVERY_VERSION("a window that has gone on to an item of another kind hands over what it shows, under its letter") {
    using enum standin::ItemClass;
    const std::pair<standin::ItemClass, const char*> kinds[] = {{Contact, "C"}, {Task, "T"}, {Appointment, "A"}};
    for (const auto& openedKind : kinds) {
        for (const auto& shownKind : kinds) {
            const auto opened = openedKind.first, shown = shownKind.first;
            const char *letter = openedKind.second, *itsLetter = shownKind.second;
            if (opened == shown) continue;
            CAPTURE(letter);
            CAPTURE(itsLetter);
            Session session({.version = version});
            session.host.Start();
            const standin::Window window = session.OpenNew(opened, {{"Subject", "First"}});
            const standin::Item next = session.host.NewItem(shown, {{"Subject", "Next"}});
            REQUIRE(session.host.ShowOther(window, next));
            CHECK(session.host.Click(session.SendButton(window)).sinks == 1);
            CHECK(List(letter).empty());
            CHECK(List(itsLetter) == ";" + session.host.EntryId(next));
        }
    }
}

IN_EVERY_VERSION("an item window that was closed lets go of everything of its window") {
    Session session({.version = version});
    session.host.Start();
    const int references = session.host.References();
    const int advises = session.host.Advises();
    const standin::Item contact = session.host.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
    for (int round = 0; round < 2; ++round) {  // the same contact twice
        const standin::Window window = session.host.OpenInspector(contact);
        CHECK(session.host.References() > references);
        session.host.CloseWindow(window);
        CHECK(session.host.References() == references);
        CHECK(session.host.Advises() == advises);
    }
}

IN_EVERY_VERSION("the order of a click: close with saving, then the entry id, then the hand-off") {
    Session session({.version = version});
    session.host.Start();
    const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
    session.host.Record();
    session.host.Click(session.SendButton(window));
    std::size_t close = 0;
    std::size_t entryId = 0;
    const std::vector<std::string> lines = session.host.Transcript();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        if (lines[line].find(".Close(0)") != std::string::npos) close = line;
        if (lines[line].find(".EntryID") != std::string::npos) entryId = line;
    }
    CHECK(close > 0);
    CHECK(entryId > close);
}

IN_EVERY_VERSION("an item whose entry id the host does not tell leaves the list as Corvella left it") {
    Session session({.version = version});
    e2e::WriteValue(e2e::outlookKey, "ChangedC", "ABC");  // without the separator in front
    session.host.Start();
    const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
    session.host.FailMember("ContactItem.EntryID", standin::Fault::Fails(E_FAIL));
    session.host.Click(session.SendButton(window));
    CHECK(List("C") == "ABC");
}
