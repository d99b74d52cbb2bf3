// The stations of the commands in the add-in's menu that start another program.
#include <utility>

#include "day/Day.h"
#include "day/Person.h"
#include "day/Ribbon.h"

namespace program::day {
namespace {

// Real keys while the program runs its messages.
void Keys(const Stage& stage, const std::vector<std::pair<WORD, WORD>>& keys) {
    Person(stage, [&](Person& self) {
        for (const auto& [key, with] : keys) self.Press(key, with);
    });
}

void SynchroniseBoth(const Stage& stage, const std::string& arguments) {
    const standin::Window window = FirstWindow(stage);
    stage.Say("         \"NoDlg\" in the registry: " + Shown(Value(outlookKey, "NoDlg")));
    ExpectStart(stage, "the menu", arguments, [&] { Choose(stage, window, Synchronise); });
    ExpectStart(stage, HasRibbon(stage) ? "the ribbon's button" : "the toolbar button", arguments,
                [&] { Press(stage, window, Button::ToSynchronise); });
}

void ChooseEditorByKeys(const Stage& stage) {
    if (HasRibbon(stage)) {
        ExpectStart(stage, "the editor, chosen with Alt, the key tips H and O, Down and Enter,", "", [&] {
            Keys(stage, {{VK_MENU, 0}, {'H', 0}, {'O', 0}, {VK_DOWN, 0}, {VK_RETURN, 0}});
        });
        return;
    }
    ExpectStart(stage, "the editor, chosen with Alt+O, Down and Enter,", "", [&] {
        Keys(stage, {{'O', VK_MENU}, {VK_DOWN, 0}, {VK_RETURN, 0}});
    });
}

bool WriteLog(const std::string& path, const std::string& text) {
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
    return written == text.size();
}

HWND Notepad() { return WindowTitled("Notepad", ""); }

void ReadInNotepad(const Stage& stage, HWND notepad, const std::string& text) {
    stage.Say("         window \"" + TextOf(notepad) + "\" of " + ProgramOf(notepad));
    stage.Check("it is notepad, with Corvella.log",
                ProgramOf(notepad) == "notepad.exe" && TextOf(notepad).find("Corvella.log") != std::string::npos);
    const HWND field = FindWindowExA(notepad, nullptr, "Edit", nullptr);
    stage.Check("it shows what is in " + Folder() + "\\Corvella.log",
                WaitUntil(stage, [&] { return TextOf(field) == text; }).has_value());
    const auto caret = [&] { return static_cast<std::size_t>(HIWORD(SendMessageA(field, EM_GETSEL, 0, 0))); };
    stage.Check("at its end: Ctrl+End has arrived",
                WaitUntil(stage, [&] { return caret() == text.size(); }).has_value());
    stage.Picture("log");
    PostMessageA(notepad, WM_CLOSE, 0, 0);
    stage.Check("it is closed again", WaitUntil(stage, [&] { return !IsWindow(notepad); }).has_value());
}

}  // namespace

void SynchroniseWithDialog(const Stage& stage) {
    stage.Section("Synchronise, through Corvella's dialog");
    stage.Check("\"NoDlg\" is not set", !Value(outlookKey, "NoDlg"));
    SynchroniseBoth(stage, "syncdlg ol");
}

void SynchroniseAtOnce(const Stage& stage) {
    stage.Section("Synchronise, at once");
    stage.Check("\"NoDlg\" is \"1\"", Value(outlookKey, "NoDlg") == "1");
    SynchroniseBoth(stage, "sync ol");
    if (HasRibbon(stage)) {
        ExpectStart(stage, "the menu's second entry, chosen with F10, the key tips H and O, twice Down and Enter,",
                    "sync ol", [&] {
                        Keys(stage, {{VK_F10, 0}, {'H', 0}, {'O', 0}, {VK_DOWN, 0}, {VK_DOWN, 0}, {VK_RETURN, 0}});
                    });
        return;
    }
    ExpectStart(stage, "the toolbar button, chosen with F10, Tab, Left and Enter,", "sync ol", [&] {
        Keys(stage, {{VK_F10, 0}, {VK_TAB, 0}, {VK_LEFT, 0}, {VK_RETURN, 0}});
    });
}

void OtherCommands(const Stage& stage) {
    stage.Section("The other commands of the menu");
    struct Command {
        Entry entry;
        const char* name;
        const char* arguments;
    };
    ChooseEditorByKeys(stage);
    constexpr Command commands[] = {{Contacts, "synchronising the contacts", "sync 0 ol"},
                                    {Calendar, "synchronising the calendar", "sync 1 ol"},
                                    {NewSms, "a new SMS", "smsnew"},
                                    {Settings, "the settings", "settings"}};
    for (const Command& command : commands)
        ExpectStart(stage, command.name, command.arguments, [&] { Choose(stage, FirstWindow(stage), command.entry); });
}

void Log(const Stage& stage) {
    stage.Section("The log file");
    const std::string path = Folder() + "\\Corvella.log";
    stage.Check("there is none yet, and no notepad",
                GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES && !Notepad());
    ExpectNoStart(stage, "the command", [&] { Choose(stage, FirstWindow(stage), LogFile); });
    stage.Check("and no notepad", !Notepad());

    std::string text;
    for (int line = 1; line <= 40; ++line)
        text += "Entry " + std::to_string(line) + " of " + std::to_string(GetTickCount()) + "\r\n";
    stage.Check("Corvella has written its log", WriteLog(path, text));
    Choose(stage, FirstWindow(stage), LogFile);
    if (stage.Check("the command started a program", WaitUntil(stage, Notepad).has_value()))
        ReadInNotepad(stage, Notepad(), text);
    DeleteFileA(path.c_str());
    SetForegroundWindow(stage.FrameOf(FirstWindow(stage)));
    stage.Pump(200);
}

}  // namespace program::day
