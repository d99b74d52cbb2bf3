// Every scenario again with each single host call failing in turn, in four ways: nothing crashes, the host is always
// told of success, no command runs that was not asked for, and nothing stays held once the session is over.
//
// It plays some 200,000 sessions. So the registry and the clipboard are in memory, and no process is
// started: a start is noted and fails. The library itself, COM and the host's side are those of all other
// scenarios, which use the real ones.
#include <doctest.h>
#include <windows.h>
// Needs windows.h before it.
#include <commctrl.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "e2e/Session.h"
#include "e2e/User.h"
#include "testing/ImportPatch.h"
#include "testing/MemoryClipboard.h"
#include "testing/MemoryRegistry.h"
#include "testing/Versions.h"

using e2e::Session;
using standin::Fault;
using standin::FolderKind;
using standin::ItemClass;
using standin::Window;

namespace {

std::vector<std::string> startedPrograms;

BOOL WINAPI NoteStart(LPCSTR, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                      LPCSTR, LPSTARTUPINFOA, LPPROCESS_INFORMATION) {
    startedPrograms.push_back(commandLine);
    SetLastError(ERROR_FILE_NOT_FOUND);
    return FALSE;
}

// Corvella's log is there, whatever other tests make of it meanwhile.
DWORD WINAPI AttributesWithLog(LPCSTR path) {
    return std::string(path).ends_with("\\Corvella.log") ? FILE_ATTRIBUTE_NORMAL : GetFileAttributesA(path);
}

// What a bitmap shows, for copies of it that ask nothing of the screen.
class KeptBitmap {
  public:
    explicit KeptBitmap(HBITMAP bitmap) {
        if (!bitmap) return;  // the library has none of that number
        REQUIRE(GetObjectA(bitmap, sizeof form_, &form_) != 0);
        bits_.resize(static_cast<std::size_t>(form_.bmWidthBytes * form_.bmHeight));
        GetBitmapBits(bitmap, static_cast<LONG>(bits_.size()), bits_.data());
    }
    [[nodiscard]] HBITMAP Copy() const {
        if (bits_.empty()) return nullptr;
        return CreateBitmap(form_.bmWidth, form_.bmHeight, form_.bmPlanes, form_.bmBitsPixel, bits_.data());
    }

  private:
    BITMAP form_{};
    std::vector<BYTE> bits_;
};

// Each bitmap of the library is loaded once for good.
template <class Key, class Load>
HBITMAP CopyOfLoaded(std::map<Key, KeptBitmap>& loaded, const Key& key, Load load) {
    auto found = loaded.find(key);
    if (found == loaded.end()) {
        const HBITMAP bitmap = load();
        found = loaded.emplace(key, bitmap).first;
        DeleteObject(bitmap);
    }
    return found->second.Copy();
}

HBITMAP WINAPI LoadOnce(HINSTANCE library, LPCSTR resource) {
    static std::map<LPCSTR, KeptBitmap> loaded;
    return CopyOfLoaded(loaded, resource, [&] { return LoadBitmapA(library, resource); });
}

HBITMAP WINAPI LoadMappedOnce(HINSTANCE library, INT_PTR resource, UINT flags, LPCOLORMAP map, int maps) {
    static std::map<std::pair<INT_PTR, COLORREF>, KeptBitmap> loaded;
    return CopyOfLoaded(loaded, std::make_pair(resource, map->to),
                        [&] { return CreateMappedBitmap(library, resource, flags, map, maps); });
}

HANDLE WINAPI CopyBits(HANDLE picture, UINT, int, int, UINT) {
    return KeptBitmap(static_cast<HBITMAP>(picture)).Copy();
}

// What surrounds the host and the add-in, in memory.
class World {
  public:
    World() {
        // COM finds it loaded.
        HMODULE library = LoadLibraryA((e2e::AddInFolder() + "CVOutlookAddIn.dll").c_str());
        REQUIRE(library);
        HMODULE program = GetModuleHandleA(nullptr);
        const ImportPatch::Import others[] = {
            {"KERNEL32.dll", "CreateProcessA", reinterpret_cast<void*>(&NoteStart)},
            {"KERNEL32.dll", "GetFileAttributesA", reinterpret_cast<void*>(&AttributesWithLog)},
            {"USER32.dll", "LoadBitmapA", reinterpret_cast<void*>(&LoadOnce)},
            {"COMCTL32.dll", "CreateMappedBitmap", reinterpret_cast<void*>(&LoadMappedOnce)},
        };
        const ImportPatch::Import copies[] = {{"USER32.dll", "CopyImage", reinterpret_cast<void*>(&CopyBits)}};
        REQUIRE(patch_.Replace(library, MemoryRegistry::Functions()) >= 7);
        REQUIRE(patch_.Replace(program, MemoryRegistry::Functions()) >= 10);
        REQUIRE(patch_.Replace(library, MemoryClipboard::Functions()) == MemoryClipboard::functionCount);
        REQUIRE(patch_.Replace(program, MemoryClipboard::Functions()) >= 4);
        REQUIRE(patch_.Replace(library, others) == 4);
        REQUIRE(patch_.Replace(library, copies) == 1);
        REQUIRE(patch_.Replace(program, copies) == 1);
        startedPrograms.clear();
    }
    void CheckNothingOpen() const {
        CHECK(registry_.OpenHandles() == 0);
        CHECK_FALSE(clipboard_.IsOpen());
    }

  private:
    MemoryRegistry registry_;
    MemoryClipboard clipboard_;
    ImportPatch patch_;
};

// --- what a user does; a control that a fault has kept away is not clicked

void ClickIfThere(Session& session, const standin::ControlView& control) {
    if (control && session.host.Control(control.instance)) session.host.Click(control);
}

// By their captions: where a fault kept one entry away, the others have moved up.
void ClickEntries(Session& session, Window window, const std::vector<std::string>& captions) {
    for (const std::string& caption : captions) {
        for (const standin::ControlView& entry : session.Entries(window)) {
            if (entry.caption == caption) ClickIfThere(session, entry);
        }
    }
}

void ClickButtons(Session& session, Window window, const char* tag) {
    for (const standin::ControlView& button : session.OwnControls(window, tag)) ClickIfThere(session, button);
}

void SaveAndSend(Session& session, ItemClass kind) {
    const Window window = session.OpenNew(kind, {{"Subject", "Something"}});
    ClickIfThere(session, session.SendButton(window));
}

void SendThreeContacts(Session& session, Window window) {
    std::vector<standin::Item> contacts;
    for (const char* name : {"Ann", "Bob", "Cec"}) {
        contacts.push_back(session.host.AddItem(FolderKind::Contacts, {{"FullName", name}}));
    }
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, contacts);
    ClickButtons(session, window, "107");
}

// --- the scenarios

void SendContact(Session& session) {
    session.host.Start();
    SaveAndSend(session, ItemClass::Contact);
    session.host.Quit();
}

void OpenAndCloseEverything(Session& session) {
    session.host.Start();
    const Window task = session.OpenNew(ItemClass::Task);
    const Window mail = session.OpenNew(ItemClass::Mail);
    const Window second = session.host.OpenExplorer(FolderKind::Contacts);
    session.host.CloseWindow(session.FirstWindow());
    for (const Window window : {second, task, mail}) session.host.CloseWindow(window, standin::SaveMode::Discard);
}

void SwitchFolders(Session& session) {
    session.host.Start();
    const standin::Item ann = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    const Window window = session.FirstWindow();
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, {ann});
    ClickButtons(session, window, "107");
    session.host.SwitchFolder(window, FolderKind::Inbox);
    session.host.Quit();
}

void UnloadAndLoad(Session& session) {
    session.host.Start();
    session.host.UnloadAddIn(e2e::progId);
    session.host.LoadAddIn(e2e::progId);
    session.host.Quit();
}

void WorkingDay(Session& session) {
    session.host.Start();
    const Window first = session.FirstWindow();
    SendThreeContacts(session, first);
    for (const ItemClass kind : {ItemClass::Contact, ItemClass::Task, ItemClass::Appointment}) {
        SaveAndSend(session, kind);
    }
    ClickButtons(session, first, "103");
    const Window second = session.host.OpenExplorer();
    ClickEntries(session, second,  // not those that open a window of ours
                 {"Corvella &Editor", "S&ynchronize", "Synchronize &Contacts", "Synchronize Ca&lendar", "&New SMS",
                  "Se&ttings...", "Lo&g File"});
    session.host.CloseWindow(second);
    session.host.SwitchFolder(first, FolderKind::Inbox);
    session.host.Quit();
}

// The calls of a play that are made to fail: all of them, or those of what is new in it.
struct Span {
    int first = 0;
    int last = 0;
};
Span ofTheClick;

// One entry that opens a window of ours, which its user closes at once.
void ClickAndClose(Session& session, const char* entry, const char* button) {
    session.host.Start();
    e2e::User user(button);
    ofTheClick.first = session.host.Calls() + 1;
    ClickEntries(session, session.FirstWindow(), {entry});
    ofTheClick.last = session.host.Calls();
    CHECK(user.boxes.size() <= 1);
    session.host.Quit();
}

void ShowInfo(Session& session) { ClickAndClose(session, "&About Corvella", "OK"); }
void ShowOptions(Session& session) { ClickAndClose(session, "Add-In &Options...", "Cancel"); }

struct Scenario {
    const char* name;
    void (*play)(Session&);
    bool clickAlone = false;  // the rest is what the other scenarios have too
};

constexpr Scenario scenarios[] = {
    {"a contact is saved and sent", SendContact},
    {"windows of all kinds are opened and closed", OpenAndCloseEverything},
    {"the contacts folder is shown, a selection sent, and left again", SwitchFolders},
    {"the add-in is unloaded and loaded again", UnloadAndLoad},
    {"a working day", WorkingDay},
};
constexpr const Scenario& workingDay = scenarios[4];

constexpr Scenario clicks[] = {
    {"the info box is shown", ShowInfo, true},
    {"the options are shown", ShowOptions, true},
};

const Fault faults[] = {Fault::Fails(E_FAIL), Fault::Exception(E_ACCESSDENIED), Fault::Fails(RPC_E_DISCONNECTED),
                        Fault::Empty()};

// --- one play

// Sorted; without the timer's, which come whenever the thread reads its messages.
std::vector<std::string> Commands() {
    std::vector<std::string> commands;
    for (const std::string& line : std::exchange(startedPrograms, {})) {
        if (!line.ends_with(" update")) commands.push_back(line);
    }
    std::sort(commands.begin(), commands.end());
    return commands;
}

struct Played {
    int calls = 0;
    Span failing;
    std::vector<std::string> commands;
};

Played PlayUndisturbed(const Scenario& scenario, int version) {
    Session session({.version = version});
    e2e::WriteValue(e2e::productKey, "Path", "C:\\Corvella");
    scenario.play(session);
    const int calls = session.host.Calls();
    return {calls, scenario.clickAlone ? ofTheClick : Span{1, calls}, Commands()};
}

void PlayWithFault(const Scenario& scenario, int version, int number, const Fault& fault, const Played& undisturbed) {
    Session session({.version = version});
    e2e::WriteValue(e2e::productKey, "Path", "C:\\Corvella");
    session.host.FailCall(number, fault);
    scenario.play(session);
    for (const standin::AddInView& addIn : session.host.AddIns()) CHECK(addIn.loadBehavior == 3);
    CHECK(session.host.References() == 0);
    CHECK(session.host.Advises() == 0);
    // Each at most as often as without the fault.
    const std::vector<std::string> commands = Commands();
    CHECK(std::includes(undisturbed.commands.begin(), undisturbed.commands.end(), commands.begin(), commands.end()));
}

// Each fault meets every `sampled`th call; in the whole run it meets every call.
constexpr int eachCallOnce = static_cast<int>(std::size(faults)), everyFourthCall = 4 * eachCallOnce;

template <std::size_t count>
void Sweep(const Scenario (&played)[count], int version, int sampled = eachCallOnce) {
    CAPTURE(version);
    const World world;
    const int step = versions::Whole() ? 1 : sampled;
    for (const Scenario& scenario : played) {
        const std::string name = scenario.name;
        CAPTURE(name);
        const Played undisturbed = PlayUndisturbed(scenario, version);
        REQUIRE(undisturbed.failing.last - undisturbed.failing.first >= 10);
        MESSAGE(name << ": calls " << undisturbed.failing.first << " to " << undisturbed.failing.last);
        int skipped = 0;  // each fault begins with another call
        for (const Fault& fault : faults) {
            CAPTURE(static_cast<int>(fault.kind));
            CAPTURE(fault.code);
            for (int number = undisturbed.failing.first + skipped; number <= undisturbed.failing.last; number += step) {
                CAPTURE(number);
                PlayWithFault(scenario, version, number, fault, undisturbed);
                world.CheckNothingOpen();
            }
            skipped = (skipped + sampled / eachCallOnce) % step;
        }
    }
}

std::string SystemFolder() {
    char folder[MAX_PATH] = "";
    GetSystemDirectoryA(folder, sizeof folder);
    return folder;
}

}  // namespace

IN_EVERY_VERSION("the working day runs each of its commands once, where nothing fails") {
    const World world;
    const std::string corvella = "\"C:\\Corvella\\Corvella.exe\" ";
    std::vector<std::string> expected;
    expected.push_back(corvella + "syncdlg ol");  // the button's
    if (version >= 10) {                          // the second window of Outlook 2000 has no menu
        for (const char* argument : {"", "syncdlg ol", "sync 0 ol", "sync 1 ol", "smsnew", "settings"}) {
            expected.push_back(corvella + argument);
        }
        expected.push_back("\"" + SystemFolder() + "\\notepad.exe\" " + e2e::AddInFolder() + "Corvella.log");
    }
    std::sort(expected.begin(), expected.end());
    CHECK(PlayUndisturbed(workingDay, version).commands == expected);
}

// 2002 and 2007 make nearly the calls of 2003.
TEST_CASE("with any one host call failing, Outlook 2000 is left with nothing held") { Sweep(scenarios, 9); }

TEST_CASE("with any one host call failing, Outlook 2002 is left with nothing held") {
    Sweep(scenarios, 10, everyFourthCall);
}

TEST_CASE("with any one host call failing, Outlook 2003 is left with nothing held") { Sweep(scenarios, 11); }

TEST_CASE("with any one host call failing, Outlook 2007 is left with nothing held") {
    Sweep(scenarios, 12, everyFourthCall);
}

TEST_CASE("with any one host call failing, Outlook 2010 is left with nothing held") { Sweep(scenarios, 14); }

TEST_CASE("with any one host call failing, Outlook 2013 is left with nothing held") { Sweep(scenarios, 15); }

TEST_CASE("with any one host call failing, Outlook 2016 is left with nothing held") { Sweep(scenarios, 16); }

IN_EVERY_VERSION("with any one call of a click failing that opens a window of ours, nothing is held in any version") {
    Sweep(clicks, version);
}
