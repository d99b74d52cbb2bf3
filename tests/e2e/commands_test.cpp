// What each entry and button of an Explorer window does, observed where it arrives: at the started program, in the
// registry, on the screen.
#include <doctest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "e2e/RecordedCorvella.h"
#include "e2e/Session.h"
#include "e2e/User.h"
#include "testing/ImportPatch.h"
#include "testing/MenuTable.h"
#include "testing/Pump.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"
#include "testing/Versions.h"
#include "testing/WindowsFolders.h"
#include "unit/standins/outlook/client.h"

using Corvella = e2e::RecordedCorvella;
using e2e::productKey;
using e2e::Session;
using e2e::User;
using standin::ClickedControl;
using standin::ControlView;
using standin::FolderKind;
using standin::Window;

namespace {

constexpr std::size_t editor = MenuPlace("mEditor"), synchronise = MenuPlace("mSync"), contacts = MenuPlace("mSync0"),
                      calendar = MenuPlace("mSync1"), newSms = MenuPlace("mNewSMS"), settings = MenuPlace("mSettings"),
                      options = MenuPlace("mOptions"), logFile = MenuPlace("mLogFile"), info = MenuPlace("mAbout");
// What the commands that only start Corvella hand it.
struct Start {
    std::size_t entry;
    const char* arguments;
};
constexpr Start starts[] = {
    {editor, ""},       {synchronise, "syncdlg ol"}, {contacts, "sync 0 ol"}, {calendar, "sync 1 ol"},
    {newSms, "smsnew"}, {settings, "settings"}};

using Lines = std::vector<std::string>;

ControlView Button(Session& session, Window window, const char* tag) {
    const std::vector<ControlView> found = session.OwnControls(window, tag);
    REQUIRE(found.size() == 1);
    return found.front();
}

ControlView EntryOf(Session& session, Window window, std::size_t number) {
    const std::vector<ControlView> entries = session.Entries(window);
    REQUIRE(entries.size() == std::size(menuTable));
    return entries[number];
}

// The windows that have a menu: in Outlook 2000 the first one alone.
std::vector<Window> WindowsWithMenu(Session& session) {
    std::vector<Window> windows = session.host.Windows();
    if (session.host.Version() < 10) windows.resize(1);
    return windows;
}

// A window whose send-to-phone button comes and goes: in Outlook 2000 only later ones have it.
Window WindowForSending(Session& session) {
    return session.host.Version() < 10 ? session.host.OpenExplorer() : session.FirstWindow();
}

// The controls of a bar as the host's own object model gives them.
client::Object ControlsOf(Session& session, int explorer, const char* bar) {
    const client::Object application(session.host.Application());
    const client::Object explorers = client::Get(application, "Explorers").AsObject();
    const client::Object window = client::Call(explorers, "Item", {explorer}).AsObject();
    const client::Object bars = client::Get(window, "CommandBars").AsObject();
    return client::Get(client::Get(bars, "Item", {bar}).AsObject(), "Controls").AsObject();
}

client::Object EntryObject(Session& session, std::size_t number) {
    const client::Object controls = ControlsOf(session, 1, "Menu Bar");
    const int popup = session.Popups(session.FirstWindow()).front().index;
    const client::Object inside = client::Get(client::Get(controls, "Item", {popup}).AsObject(), "Controls").AsObject();
    return client::Get(inside, "Item", {static_cast<int>(number) + 1}).AsObject();
}

const char* const infoText[] = {"Corvella AddIn for Outlook 2000/02(XP)/03/2007 beta 2",
                                "(c) 2026 the Corvella developers", "Version 2.0.0"};

BOOL CALLBACK AddDialog(HWND window, LPARAM dialogs) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    if (std::string(name) == "#32770" && IsWindowVisible(window))
        reinterpret_cast<std::vector<HWND>*>(dialogs)->push_back(window);
    return TRUE;
}

std::vector<HWND> ShownDialogs() {
    std::vector<HWND> dialogs;
    EnumThreadWindows(GetCurrentThreadId(), &AddDialog, reinterpret_cast<LPARAM>(&dialogs));
    return dialogs;
}

// What stands between line ends of any kind.
Lines LinesOf(const std::string& text) {
    Lines lines;
    std::string line;
    for (const char letter : text + "\n") {
        if (letter != '\r' && letter != '\n') {
            line += letter;
        } else if (!line.empty()) {
            lines.push_back(std::exchange(line, {}));
        }
    }
    return lines;
}

// --- what the library asks of Windows, noted where it goes out

UINT timersArmed = 0;
UINT lastInterval = 0;
UINT_PTR WINAPI NoteTimer(HWND window, UINT_PTR id, UINT interval, TIMERPROC procedure) {
    ++timersArmed;
    lastInterval = interval;
    return SetTimer(window, id, interval, procedure);
}

std::vector<std::string> shownByWindows;
int WINAPI NoteBox(HWND, LPCSTR text, LPCSTR, UINT) {
    shownByWindows.emplace_back(text);
    return IDOK;
}

std::vector<std::string> keysSent;
void WINAPI NoteKey(BYTE key, BYTE, DWORD flags, ULONG_PTR) {
    const char* name = key == VK_CONTROL ? "Ctrl" : key == VK_END ? "End" : "?";
    keysSent.push_back(std::string(name) + ((flags & KEYEVENTF_KEYUP) != 0 ? " up" : " down"));
}

BOOL WINAPI LeadsInJapan(BYTE byte) { return byte == 0x83; }

// It is in the process already.
HMODULE Library() { return GetModuleHandleA("CVOutlookAddIn.dll"); }

// Replaces one import of the library.
class Noted {
  public:
    Noted(const char* name, void* instead) {
        const ImportPatch::Import import[] = {{"USER32.dll", name, instead}};
        REQUIRE(patch_.Replace(Library(), import) == 1);
    }

  private:
    ImportPatch patch_;
};

// The library's own folder holds a log of Corvella's, or none.
class LogFile {
  public:
    explicit LogFile(bool exists) {
        if (!exists) return;
        std::FILE* file = std::fopen(Path().c_str(), "wb");
        REQUIRE(file);
        for (int line = 0; line < 500; ++line) std::fputs("a line of the log\r\n", file);
        std::fclose(file);
    }
    ~LogFile() { DeleteFileA(Path().c_str()); }
    LogFile(const LogFile&) = delete;
    LogFile& operator=(const LogFile&) = delete;
    static std::string Path() { return e2e::AddInFolder() + "Corvella.log"; }
};

// Windows looks for a program that is named without its folder here before it looks in its own.
class CurrentFolder {
  public:
    explicit CurrentFolder(const TempFolder& folder) {
        GetCurrentDirectoryA(sizeof former_, former_);
        SetCurrentDirectoryA(folder.Path().c_str());
    }
    ~CurrentFolder() { SetCurrentDirectoryA(former_); }
    CurrentFolder(const CurrentFolder&) = delete;
    CurrentFolder& operator=(const CurrentFolder&) = delete;

  private:
    char former_[MAX_PATH] = "";
};

}  // namespace

IN_EVERY_VERSION(
    "a click on any entry or button starts Corvella once, with its own argument, whichever window it is in") {
    for (const ClickedControl clicked : {ClickedControl::AnotherObject, ClickedControl::AdvisedObject}) {
        CAPTURE(static_cast<int>(clicked));
        Corvella corvella;
        Session session({.version = version, .clicked = clicked});
        corvella.Install();
        session.host.Start();
        session.host.OpenExplorer();
        for (const Window window : WindowsWithMenu(session)) {
            for (const Start& start : starts) {
                CHECK(session.host.Click(EntryOf(session, window, start.entry)).sinks > 0);
                CHECK(corvella.Starts(1) == Lines{corvella.Line(start.arguments)});
            }
            CHECK(session.host.Click(Button(session, window, "103")).sinks > 0);
            CHECK(corvella.Starts(1) == Lines{corvella.Line("syncdlg ol")});
        }
        CHECK(corvella.StartsLater().empty());
    }
}

IN_EVERY_VERSION("NoDlg of 1 synchronises at once; 0, no number and no value show Corvella's dialog first") {
    const std::pair<const char*, const char*> values[] = {
        {"1", "sync ol"}, {"2", "sync ol"}, {"0", "syncdlg ol"}, {"no", "syncdlg ol"}, {nullptr, "syncdlg ol"}};
    Corvella corvella;
    Session session({.version = version});
    corvella.Install();
    session.host.Start();
    const Window window = session.FirstWindow();
    for (const auto& row : values) {
        const char *value = row.first, *argument = row.second;
        CAPTURE(argument);
        if (value) {
            e2e::WriteValue(e2e::outlookKey, "NoDlg", value);
        } else {
            HKEY key = nullptr;
            RegOpenKeyA(HKEY_CURRENT_USER, e2e::outlookKey, &key);
            RegDeleteValueA(key, "NoDlg");
            RegCloseKey(key);
        }
        session.host.Click(EntryOf(session, window, synchronise));
        CHECK(corvella.Starts(1) == Lines{corvella.Line(argument)});
        session.host.Click(Button(session, window, "103"));
        CHECK(corvella.Starts(1) == Lines{corvella.Line(argument)});
    }
}

IN_EVERY_VERSION("three selected contacts are three entry ids in the list, one armed timer and one start") {
    Corvella corvella;
    Session session({.version = version});
    corvella.Install();
    session.host.Start();
    const Window window = WindowForSending(session);
    std::vector<standin::Item> items;
    std::string expected;
    for (const char* name : {"Ann", "Bob", "Cec"}) {
        items.push_back(session.host.AddItem(FolderKind::Contacts, {{"FullName", name}}));
        expected += ";" + session.host.EntryId(items.back());
    }
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, items);
    {
        const Noted noted("SetTimer", reinterpret_cast<void*>(&NoteTimer));
        timersArmed = 0;
        session.host.Click(Button(session, window, "107"));
        CHECK(timersArmed == 1);
        CHECK(lastInterval == 300);
    }
    CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") == expected);
    Lines seen = corvella.Starts(1);
    for (const std::string& more : corvella.StartsLater()) seen.push_back(more);
    REQUIRE(seen.size() == 1);
    CHECK(seen.front().ends_with("\\Corvella.exe\" update"));
}

IN_EVERY_VERSION("a click on send-to-phone with nothing selected lists nothing and starts nothing") {
    Corvella corvella;
    Session session({.version = version});
    corvella.Install();
    session.host.Start();
    const Window window = WindowForSending(session);
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Click(Button(session, window, "107"));
    CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("").empty());
    CHECK(corvella.StartsLater().empty());
}

IN_EVERY_VERSION("an entry whose mark is not the add-in's does nothing when it is clicked, and works with it again") {
    const LogFile log(true);
    TempFolder folder;
    const Recorder notepad(folder, "notepad.exe");
    Corvella corvella;
    Session session({.version = version});
    corvella.Install();
    session.host.Start();
    const WindowsFolders windows(folder, Library());
    User user("Escape");  // should a window come after all
    for (const std::size_t number :
         {editor, synchronise, contacts, calendar, newSms, settings, options, logFile, info}) {
        CAPTURE(number);
        const client::Object entry = EntryObject(session, number);
        for (const char* mark : {"", "<!Other.AddIn>", "!<CVOutlookAddIn.Connect>", "<!cvoutlookaddin.connect>"}) {
            REQUIRE_FALSE(client::Put(entry, "OnAction", mark).Failed());
            CHECK(session.host.Click(EntryOf(session, session.FirstWindow(), number)).sinks > 0);
        }
    }
    CHECK(user.boxes.empty());
    CHECK(corvella.StartsLater().empty());
    CHECK(notepad.StartsAfter(0).empty());
    REQUIRE_FALSE(client::Put(EntryObject(session, contacts), "OnAction", e2e::OwnOnAction()).Failed());
    session.host.Click(EntryOf(session, session.FirstWindow(), contacts));
    CHECK(corvella.Starts(1) == Lines{corvella.Line("sync 0 ol")});
}

IN_EVERY_VERSION("a toolbar button whose mark is not the add-in's does nothing when it is clicked") {
    Corvella corvella;
    Session session({.version = version});
    corvella.Install();
    session.host.Start();
    const Window window = WindowForSending(session);
    const standin::Item ann = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    session.host.SwitchFolder(window, FolderKind::Contacts);
    session.host.Select(window, {ann});
    const ControlView send = Button(session, window, "107");
    const ControlView sync = Button(session, session.FirstWindow(), "103");
    const int place = version < 10 ? 2 : 1;  // of the window among the Explorers
    const auto mark = [&](int explorer, const ControlView& button) {
        const client::Object control =
            client::Get(ControlsOf(session, explorer, "Standard"), "Item", {button.index}).AsObject();
        REQUIRE_FALSE(client::Put(control, "OnAction", "<!Other.AddIn>").Failed());
    };
    mark(place, send);
    mark(1, sync);
    CHECK(session.host.Click(send).sinks > 0);
    CHECK(session.host.Click(sync).sinks > 0);
    CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or("").empty());
    CHECK(corvella.StartsLater().empty());
}

TEST_CASE("a folder that ends in a letter whose second byte is a backslash gets a backslash of its own") {
    ImportPatch patch;
    const ImportPatch::Import import[] = {{"KERNEL32.dll", "IsDBCSLeadByte", reinterpret_cast<void*>(&LeadsInJapan)}};
    TempFolder folder;
    REQUIRE(CreateDirectoryA(folder.Path("\x83").c_str(), nullptr));
    const Recorder corvella(folder, "\x83\\Corvella.exe");
    Session session({.version = 11});
    e2e::WriteValue(productKey, "Path", folder.Path("\x83\\"));
    session.host.Start();
    REQUIRE(patch.Replace(Library(), import) == 1);
    session.host.Click(EntryOf(session, session.FirstWindow(), settings));
    std::string recorded;
    PumpUntil(20000, [&] { return (recorded = folder.Read("\x83\\recorded.txt")).ends_with("\r\n"); });
    CHECK(recorded == "2 \"" + folder.Path("\x83\\\\Corvella.exe") + "\" settings\r\n");
}

TEST_CASE("a button of another add-in with the same tag and mark runs nothing of ours") {
    Corvella corvella;
    Session session({.version = 11});
    corvella.Install();
    session.host.Start();
    const ControlView stranger =
        session.host.AddCustomButton(session.FirstWindow(), "Standard", "Theirs", "103", e2e::OwnOnAction());
    CHECK(session.host.Click(stranger).sinks == 1);
    CHECK(corvella.StartsLater().empty());
}

IN_EVERY_VERSION("the info box has three lines: the product, the maker's notice, and the version") {
    Session session({.version = version});
    session.host.Start();
    User user("OK");
    session.host.Click(EntryOf(session, session.FirstWindow(), info));
    REQUIRE(user.boxes.size() == 1);
    const User::Box& box = user.boxes.front();
    CHECK(box.ofWindows == (version < 10));  // else the add-in's own question box
    CHECK(box.buttons == Lines{"OK"});
    CHECK(LinesOf(box.text) == Lines(std::begin(infoText), std::end(infoText)));
}

IN_EVERY_VERSION("with two windows open the info box and the options dialog come once for each click") {
    for (const ClickedControl clicked : {ClickedControl::AnotherObject, ClickedControl::AdvisedObject}) {
        CAPTURE(static_cast<int>(clicked));
        Session session({.version = version, .clicked = clicked});
        session.host.Start();
        session.host.OpenExplorer();
        for (const Window window : WindowsWithMenu(session)) {
            for (const auto& [entry, button] : {std::pair(info, "OK"), std::pair(options, "Cancel")}) {
                User user(button);
                session.host.Click(EntryOf(session, window, entry));
                e2e::Pump(60);
                CHECK(user.boxes.size() == 1);
            }
        }
    }
}

IN_EVERY_VERSION("of two windows with a send-to-phone button the one that is clicked hands over its own selection") {
    for (const ClickedControl clicked : {ClickedControl::AnotherObject, ClickedControl::AdvisedObject}) {
        CAPTURE(static_cast<int>(clicked));
        Session session({.version = version, .clicked = clicked});
        session.host.Start();
        const standin::Item ann = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
        const standin::Item bob = session.host.AddItem(FolderKind::Contacts, {{"FullName", "Bob"}});
        const Window first = WindowForSending(session);
        const Window second = session.host.OpenExplorer();
        for (const auto& [window, item] : {std::pair(first, ann), std::pair(second, bob)}) {
            session.host.SwitchFolder(window, FolderKind::Contacts);
            session.host.Select(window, {item});
        }
        CHECK(session.host.Click(Button(session, first, "107")).sinks == 2);
        CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") == ";" + session.host.EntryId(ann));
        CHECK(session.host.Click(Button(session, second, "107")).sinks == 2);
        CHECK(e2e::ReadValue(e2e::outlookKey, "ChangedC") ==
              ";" + session.host.EntryId(ann) + ";" + session.host.EntryId(bob));
    }
}

TEST_CASE("the lines of the info box are separated by one carriage return each") {
    Session session({.version = 9});
    session.host.Start();
    const Noted noted("MessageBoxA", reinterpret_cast<void*>(&NoteBox));
    shownByWindows.clear();
    session.host.Click(EntryOf(session, session.FirstWindow(), info));
    const std::string text = std::string(infoText[0]) + "\r" + infoText[1] + "\r" + infoText[2];
    CHECK(shownByWindows == Lines{text});
}

IN_EVERY_VERSION("the options entry opens one dialog in front of all windows, and a second click the same one") {
    Session session({.version = version});
    session.host.Start();
    User user("Cancel");
    user.beforeAnswer = [&](const User::Box& box) {
        // Another click while it is open comes back at once, and no second dialog is there.
        session.host.Click(EntryOf(session, session.FirstWindow(), options));
        CHECK(ShownDialogs() == std::vector<HWND>{box.window});
    };
    for (int round = 0; round < 2; ++round) session.host.Click(EntryOf(session, session.FirstWindow(), options));
    REQUIRE(user.boxes.size() == 2);
    for (const User::Box& box : user.boxes) {
        CHECK(box.title == "Corvella Add-In Options");
        CHECK(box.topmost);
    }
}

IN_EVERY_VERSION("the log file entry opens Corvella's log in Notepad") {
    const LogFile log(true);
    TempFolder folder, strangers;
    const Recorder notepad(folder, "notepad.exe"), stranger(strangers, "notepad.exe");
    const CurrentFolder current(strangers);
    Session session({.version = version});
    session.host.Start();
    const WindowsFolders windows(folder, Library());
    session.host.OpenExplorer();  // whose entries hear the click too
    session.host.Click(EntryOf(session, session.FirstWindow(), logFile));
    CHECK(notepad.Starts(1) == Lines{"1 \"" + folder.Path("notepad.exe") + "\" " + LogFile::Path()});
    CHECK(notepad.StartsAfter(200).size() == 1);
    CHECK(stranger.StartsAfter(0).empty());
}

IN_EVERY_VERSION("without a log file its entry starts nothing") {
    const LogFile log(false);
    TempFolder folder;
    const Recorder notepad(folder, "notepad.exe");
    Session session({.version = version});
    session.host.Start();
    const WindowsFolders windows(folder, Library());
    User user("Escape");
    session.host.Click(EntryOf(session, session.FirstWindow(), logFile));
    CHECK(notepad.StartsAfter(300).empty());
    CHECK(user.boxes.empty());
}

TEST_CASE("a program that is not in front gets no keys, and neither does the host") {
    const LogFile log(true);
    TempFolder folder;
    const Recorder notepad(folder, "notepad.exe");  // which shows no window
    Session session({.version = 11});
    session.host.Start();
    const WindowsFolders windows(folder, Library());
    const Noted noted("keybd_event", reinterpret_cast<void*>(&NoteKey));
    keysSent.clear();
    session.host.Click(EntryOf(session, session.FirstWindow(), logFile));
    CHECK(keysSent.empty());
}

TEST_CASE("Notepad shows the end of the log") {
    const LogFile log(true);
    Session session({.version = 11});
    session.host.Start();
    session.host.Click(EntryOf(session, session.FirstWindow(), logFile));
    HWND window = nullptr;
    REQUIRE(PumpUntil(5000, [&] { return (window = FindWindowA("Notepad", nullptr)) != nullptr; }));
    const HWND text = FindWindowExA(window, nullptr, nullptr, nullptr);
    const LRESULT length = SendMessageA(text, WM_GETTEXTLENGTH, 0, 0);
    CHECK(length > 500);
    const bool atEnd = PumpUntil(5000, [&] {
        const LRESULT selection = SendMessageA(text, EM_GETSEL, 0, 0);
        return LOWORD(selection) == length && HIWORD(selection) == length;
    });
    CHECK(atEnd);
    PostMessageA(window, WM_CLOSE, 0, 0);
    CHECK(PumpUntil(5000, [&] { return !IsWindow(window); }));
}
