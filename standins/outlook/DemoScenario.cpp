// The main job, from a contact in its window to Corvella: each line that this prints was observed just then - in the
// host, in the registry, or in the record that the started program wrote.
#include <optional>
#include <string>

#include "outlook/Scenarios.h"

namespace program {
namespace {

using standin::ItemClass;

constexpr const char* productKey = "Software\\Quillmark\\Corvella";
constexpr const char* addInKey = "Software\\Quillmark\\Corvella\\OlAddIn";
constexpr const char* outlookKey = "Software\\Quillmark\\Corvella\\Outlook";

std::optional<std::string> Value(const char* key, const char* name) {
    HKEY opened = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, key, &opened) != ERROR_SUCCESS) return std::nullopt;
    std::string text(4096, '\0');
    DWORD size = static_cast<DWORD>(text.size());
    const LONG status = RegQueryValueExA(opened, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()), &size);
    RegCloseKey(opened);
    if (status != ERROR_SUCCESS) return std::nullopt;
    text.resize(size);
    while (!text.empty() && text.back() == '\0') text.pop_back();
    return text;
}

std::string Shown(const std::optional<std::string>& value) {
    if (!value) return "missing";
    return value->size() <= 24
               ? "\"" + *value + "\""
               : "\"" + value->substr(0, 20) + "...\" (" + std::to_string(value->size()) + " characters)";
}

std::string RecordOfCorvella() {
    const std::string file = Value(productKey, "Path").value_or("") + "\\Corvella.record.txt";
    const HANDLE handle =
        CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return {};
    std::string text(16384, '\0');
    DWORD size = 0;
    ReadFile(handle, text.data(), static_cast<DWORD>(text.size()), &size, nullptr);
    CloseHandle(handle);
    text.resize(size);
    return text;
}

// Lets the program run until it is so, for some seconds at most; how long it took, or nothing.
template <class Condition>
std::optional<DWORD> WaitUntil(const Stage& stage, Condition condition) {
    constexpr DWORD longest = 8000;
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start > longest) return std::nullopt;
        stage.Pump(10);
    }
    return GetTickCount() - start;
}

void ShowConnection(const Stage& stage) {
    const standin::Outlook& outlook = stage.Outlook();
    stage.Say("== The add-in");
    for (const standin::AddInView& addIn : outlook.AddIns()) {
        stage.Say("   found: " + addIn.progId + ", \"" + addIn.friendlyName + "\", LoadBehavior " +
                  std::to_string(addIn.loadBehavior));
        stage.Check("it was created through COM and is connected", addIn.connected);
    }
    stage.Say("   OnConnection made " + std::to_string(outlook.Calls()) + " calls of the host, of which it now holds " +
              std::to_string(outlook.References()) + " references and " + std::to_string(outlook.Advises()) +
              " event sinks");
    stage.Check("the registry value \"Active\" is \"1\"", Value(addInKey, "Active") == "1");
}

standin::Window OpenAndEdit(const Stage& stage, standin::Item contact) {
    stage.Say("== A contact is opened in a window of its own and edited");
    const standin::Window window = stage.Outlook().OpenInspector(contact);
    stage.Type(window, "JobTitle", "Head of sales");
    stage.Check("the contact has unsaved changes", !stage.Outlook().IsSaved(contact));
    return window;
}

void SaveAndSend(const Stage& stage, standin::Item contact, standin::Window window) {
    standin::Outlook& outlook = stage.Outlook();
    const standin::ControlView button = stage.TagBeginning(window, "10");
    if (!stage.Check("its toolbar has the save-and-send button", static_cast<bool>(button))) return;
    stage.Say("   button: \"" + button.caption + "\", tag " + button.tag + ", position " +
              std::to_string(button.index) + ", OnAction " + button.onAction);
    stage.Picture("contact");

    stage.Say("== The button is clicked");
    stage.Click(window, button);
    const std::optional<std::string> list = Value(outlookKey, "ChangedC");
    stage.Check("the contact is saved", outlook.IsSaved(contact));
    stage.Check("its window is closed", !outlook.Exists(window));
    stage.Say("   \"ChangedC\" in the registry: " + Shown(list));
    stage.Check("that is the contact's entry id", list == ";" + outlook.EntryId(contact));
}

void AwaitCorvella(const Stage& stage) {
    stage.Say("== The change-watch timer runs");
    const std::optional<DWORD> started = WaitUntil(stage, [] { return !RecordOfCorvella().empty(); });
    if (!stage.Check("Corvella was started", started.has_value())) return;
    stage.Say("   after about " + std::to_string(*started) + " ms (300 ms of them the timer, the rest its own start)");
    const std::string record = RecordOfCorvella();
    stage.Say("   its own record: " + record.substr(0, record.find_last_not_of("\r\n") + 1));
    stage.Check("its argument was \"update\"", record.find("Corvella.exe\" update") != std::string::npos);
    stage.Check("it was told to start minimised", record.find("show=2") != std::string::npos);
    stage.Check("it has read and cleared the list",
                WaitUntil(stage, [] { return Value(outlookKey, "ChangedC").value_or("").empty(); }).has_value());
    stage.Picture("sent");
}

void Quit(const Stage& stage) {
    standin::Outlook& outlook = stage.Outlook();
    stage.Say("== Outlook quits");
    const standin::Ending ending = outlook.Quit();
    stage.Check("the host ended and told the add-in", ending == standin::Ending::AddInsTold);
    stage.Say("   references still held: " + std::to_string(outlook.References()) +
              ", event sinks: " + std::to_string(outlook.Advises()));
    for (const std::string& line : outlook.ReferenceList()) stage.Say("   held: " + line);
    stage.Check("no reference and no sink is left", outlook.References() == 0 && outlook.Advises() == 0);
    stage.Say("   \"Active\" in the registry: " + Shown(Value(addInKey, "Active")));
    stage.Check("\"Active\" is gone", !Value(addInKey, "Active"));
    for (const std::string& line : outlook.Complaints()) stage.Say("   remark of the host: " + line);
}

}  // namespace

void PlayDemo(const Stage& stage) {
    ShowConnection(stage);
    const standin::Item contact = stage.Outlook().ItemsIn(standin::FolderKind::Contacts).front();
    const standin::Window window = OpenAndEdit(stage, contact);
    SaveAndSend(stage, contact, window);
    AwaitCorvella(stage);
    Quit(stage);
}

}  // namespace program
