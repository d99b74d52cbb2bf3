// Windows of contacts, tasks and appointments: their button and what a click on it does.
#include <doctest.h>

#include "e2e/Session.h"

using e2e::Session;

namespace {

std::string List(const char* kind) {
    return e2e::ReadValue(e2e::outlookKey, std::string("Changed") + kind).value_or("");
}

}  // namespace

TEST_CASE("opening a mail makes no button; a contact, a task and an appointment get one each") {
    using enum standin::ItemClass;
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        for (const standin::ItemClass kind : {Mail, Post, DistList, Journal, Document}) {
            CAPTURE(static_cast<int>(kind));
            CHECK(session.OwnControls(session.OpenNew(kind)).empty());
        }
        for (const standin::ItemClass kind : {Contact, Task, Appointment}) {
            CAPTURE(static_cast<int>(kind));
            CHECK(session.OwnControls(session.OpenNew(kind)).size() == 1);
        }
    }
}
TEST_CASE("the command bars of a note's window are left alone") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        session->Record();
        session.OpenNew(standin::ItemClass::Note);
        for (const std::string& line : session->Transcript()) {
            CAPTURE(line);
            CHECK(line.find("CommandBars") == std::string::npos);
        }
    }
}
TEST_CASE("a contact, a task and an appointment are saved, closed and handed over under their own letter") {
    const std::pair<standin::ItemClass, const char*> kinds[] = {
        {standin::ItemClass::Contact, "C"}, {standin::ItemClass::Task, "T"}, {standin::ItemClass::Appointment, "A"}};
    for (const int version : e2e::allVersions) {
        for (const auto& [kind, letter] : kinds) {
            CAPTURE(version);
            CAPTURE(letter);
            Session session({.version = version});
            session->Start();
            const standin::Item item = session->NewItem(kind, {{"Subject", "Something new"}});
            const standin::Window window = session->OpenInspector(item);
            const standin::ClickResult click = session->Click(session.SendButton(window));
            CHECK(click.sinks == 1);
            CHECK(session->IsSaved(item));
            CHECK_FALSE(session->Exists(window));
            REQUIRE_FALSE(session->EntryId(item).empty());
            CHECK(List(letter) == ";" + session->EntryId(item));
        }
    }
}
TEST_CASE("a new contact that was never saved gets its entry id through the click and is handed over with it") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Item contact = session->NewItem(standin::ItemClass::Contact, {{"FullName", "Ann Smith"}});
        REQUIRE(session->EntryId(contact).empty());
        session->Click(session.SendButton(session->OpenInspector(contact)));
        CHECK(List("C") == ";" + session->EntryId(contact));
    }
}
TEST_CASE("Outlook 2000 and 2002 show picture 101 pasted, 2003 and 2007 picture 102 with its mask") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window window = session.OpenNew(standin::ItemClass::Contact);
        const bool pasted = version < 11;
        CHECK(session.OwnControls(window, "101").size() == (pasted ? 1 : 0));
        CHECK(session.OwnControls(window, "102").size() == (pasted ? 0 : 1));
        const standin::ControlView button = session.SendButton(window);
        CHECK(button.hasFace == pasted);
        CHECK(button.hasPicture == !pasted);
        CHECK(button.hasMask == !pasted);
        CHECK(session->FaceOf(button.instance).width == 16);
    }
}
TEST_CASE("the button stands second on the window's standard bar unless the registry says otherwise") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        const std::string number = version < 11 ? "101" : "102";
        Session session({.version = version});
        session->Start();
        const standin::Window first = session.OpenNew(standin::ItemClass::Contact);
        CHECK(session.SendButton(first).index == 2);
        CHECK(session->Controls(first, "Standard").at(1).tag == number);
        e2e::WriteValue(e2e::addInKey, number + "Pos", "4");
        CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)).index == 4);
        e2e::WriteValue(e2e::addInKey, number + "Bar", "Formatting");
        const standin::Window third = session.OpenNew(standin::ItemClass::Task);
        for (const standin::ControlView& control : session->Controls(third, "Standard")) CHECK(control.tag != number);
        CHECK(session->Controls(third, "Formatting").at(3).tag == number);
    }
}
TEST_CASE("the button has its caption from the language file, icon and caption as style and no separator") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
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
}
TEST_CASE("a click in one of two windows with the same button acts once, in the window that was clicked") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Item ann = session->NewItem(standin::ItemClass::Contact, {{"FullName", "Ann"}});
        const standin::Item bob = session->NewItem(standin::ItemClass::Contact, {{"FullName", "Bob"}});
        const standin::Window first = session->OpenInspector(ann);
        const standin::Window second = session->OpenInspector(bob);
        CHECK(session->Click(session.SendButton(second)).sinks == 2);  // the host asks both
        CHECK(session->Exists(first));
        CHECK_FALSE(session->Exists(second));
        CHECK_FALSE(session->IsSaved(ann));
        CHECK(List("C") == ";" + session->EntryId(bob));
    }
}
TEST_CASE("where the host has no InstanceId, the same COM object tells whose click it was") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version, .clicked = standin::ClickedControl::AdvisedObject});
        session->Start();
        const standin::Window first = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
        const standin::Window second = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Bob"}});
        session->FailMember("CommandBarButton.InstanceId", standin::Fault::Fails(DISP_E_UNKNOWNNAME));
        session->Click(session.SendButton(first));
        CHECK_FALSE(session->Exists(first));
        CHECK(session->Exists(second));
    }
}
TEST_CASE("a button that the host refused before the window was shown is made when it is activated") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        session->FailMember("Inspector.CommandBars", standin::Fault::Fails(E_FAIL), 1);
        CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)));
    }
}
TEST_CASE("the item that the window shows at the time of the click is the one that is sent") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
        session->Record();
        session->Click(session.SendButton(window));
        bool asked = false;
        for (const std::string& line : session->Transcript())
            asked = asked || line.find(".CurrentItem ->") != std::string::npos;
        CHECK(asked);
    }
}
TEST_CASE("an item window that was closed lets go of everything of its window") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const int references = session->References();
        const int advises = session->Advises();
        const standin::Item contact = session->AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
        for (int round = 0; round < 2; ++round) {  // the same contact twice
            const standin::Window window = session->OpenInspector(contact);
            CHECK(session->References() > references);
            session->CloseWindow(window);
            CHECK(session->References() == references);
            CHECK(session->Advises() == advises);
        }
    }
}
TEST_CASE("the order of a click: close with saving, then the entry id, then the hand-off") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
        session->Record();
        session->Click(session.SendButton(window));
        std::size_t close = 0;
        std::size_t entryId = 0;
        const std::vector<std::string> lines = session->Transcript();
        for (std::size_t line = 0; line < lines.size(); ++line) {
            if (lines[line].find(".Close(0)") != std::string::npos) close = line;
            if (lines[line].find(".EntryID") != std::string::npos) entryId = line;
        }
        CHECK(close > 0);
        CHECK(entryId > close);
    }
}
TEST_CASE("an item whose entry id the host does not tell leaves the list as Corvella left it") {
    for (const int version : e2e::allVersions) {
        CAPTURE(version);
        Session session({.version = version});
        e2e::WriteValue(e2e::outlookKey, "ChangedC", "ABC");  // without the separator in front
        session->Start();
        const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann"}});
        session->FailMember("ContactItem.EntryID", standin::Fault::Fails(E_FAIL));
        session->Click(session.SendButton(window));
        CHECK(List("C") == "ABC");
    }
}
