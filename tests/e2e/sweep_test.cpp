// Every scenario again with each single host call failing in turn: nothing crashes, the host is always answered with a
// success, and nothing of it stays held once the session is over.
#include <doctest.h>

#include <functional>

#include "e2e/Session.h"

using e2e::Session;
using standin::Fault;

namespace {

struct Scenario {
    const char* name;
    std::function<void(Session&)> play;
};

void SendContact(Session& session) {
    session->Start();
    const standin::Window window = session.OpenNew(standin::ItemClass::Contact, {{"FullName", "Ann Smith"}});
    if (const standin::ControlView button = session.SendButton(window)) session->Click(button);
    session->Quit();
}

void OpenAndCloseEverything(Session& session) {
    session->Start();
    const standin::Window task = session.OpenNew(standin::ItemClass::Task);
    const standin::Window mail = session.OpenNew(standin::ItemClass::Mail);
    const standin::Window second = session->OpenExplorer(standin::FolderKind::Contacts);
    session->CloseWindow(session.FirstWindow());
    for (const standin::Window window : {second, task, mail}) {
        session->CloseWindow(window, standin::SaveMode::Discard);
    }
}

void SwitchFolders(Session& session) {
    session->Start();
    const standin::Item ann = session->AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
    const standin::Window window = session.FirstWindow();
    session->SwitchFolder(window, standin::FolderKind::Contacts);
    session->Select(window, {ann});
    for (const standin::ControlView& button : session.OwnControls(window, "107")) session->Click(button);
    session->SwitchFolder(window, standin::FolderKind::Inbox);
    session->Quit();
}

void UnloadAndLoad(Session& session) {
    session->Start();
    session->UnloadAddIn(e2e::progId);
    session->LoadAddIn(e2e::progId);
    session->Quit();
}

const Scenario scenarios[] = {
    {"a contact is saved and sent", SendContact},
    {"windows of all kinds are opened and closed", OpenAndCloseEverything},
    {"the contacts folder is shown, a selection sent, and left again", SwitchFolders},
    {"the add-in is unloaded and loaded again", UnloadAndLoad},
};

const Fault faults[] = {Fault::Fails(E_FAIL), Fault::Exception(E_ACCESSDENIED), Fault::Fails(RPC_E_DISCONNECTED),
                        Fault::Empty()};

int CallsOf(const Scenario& scenario, int version) {
    Session session({.version = version});
    scenario.play(session);
    return session->Calls();
}

void SweepVersion(int version) {
    CAPTURE(version);
    for (const Scenario& scenario : scenarios) {
        CAPTURE(std::string(scenario.name));
        const int calls = CallsOf(scenario, version);
        REQUIRE(calls > 50);
        for (const Fault& fault : faults) {
            CAPTURE(static_cast<int>(fault.kind));
            CAPTURE(fault.code);
            for (int number = 1; number <= calls; ++number) {
                CAPTURE(number);
                Session session({.version = version});
                session->FailCall(number, fault);
                scenario.play(session);
                for (const standin::AddInView& addIn : session->AddIns()) CHECK(addIn.loadBehavior == 3);
                CHECK(session->References() == 0);
                CHECK(session->Advises() == 0);
            }
        }
    }
}

}  // namespace

TEST_CASE("with any one host call failing, Outlook 2000 is left with nothing held") { SweepVersion(9); }
TEST_CASE("with any one host call failing, Outlook 2002 is left with nothing held") { SweepVersion(10); }
TEST_CASE("with any one host call failing, Outlook 2003 is left with nothing held") { SweepVersion(11); }
TEST_CASE("with any one host call failing, Outlook 2007 is left with nothing held") { SweepVersion(12); }
