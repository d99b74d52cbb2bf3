#include "e2e/Session.h"

#include <array>

#include "testing/OwnProgram.h"

namespace e2e {

namespace {

constexpr const char* outlookEntry = "Software\\Microsoft\\Office\\Outlook\\Addins\\CVOutlookAddIn.Connect";

void WriteEntry() {
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, outlookEntry, &key);
    const DWORD loadBehavior = 3;
    RegSetValueExA(key, "LoadBehavior", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&loadBehavior),
                   sizeof loadBehavior);
    RegSetValueExA(key, "FriendlyName", 0, REG_SZ, reinterpret_cast<const BYTE*>("Corvella"), 9);
    RegCloseKey(key);
}

void Collect(const std::vector<standin::ControlView>& controls, const std::string& tag,
             std::vector<standin::ControlView>& found) {
    for (const standin::ControlView& control : controls) {
        if (control.onAction == OwnOnAction() && (tag.empty() || control.tag == tag)) found.push_back(control);
        Collect(control.entries, tag, found);
    }
}

}  // namespace

std::optional<std::string> ReadValue(const std::string& key, const std::string& name) {
    HKEY opened = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, key.c_str(), &opened) != ERROR_SUCCESS) return std::nullopt;
    DWORD size = 0;
    std::optional<std::string> text;
    if (RegQueryValueExA(opened, name.c_str(), nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS) {
        text.emplace(size, '\0');
        RegQueryValueExA(opened, name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(text->data()), &size);
        while (!text->empty() && text->back() == '\0') text->pop_back();
    }
    RegCloseKey(opened);
    return text;
}

void WriteValue(const std::string& key, const std::string& name, const std::string& text) {
    HKEY opened = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, key.c_str(), &opened);
    RegSetValueExA(opened, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>(text.size() + 1));
    RegCloseKey(opened);
}

void Pump(DWORD milliseconds) {
    const DWORD start = GetTickCount();
    DWORD passed = 0;
    do {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - passed, QS_ALLINPUT);
        for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        passed = GetTickCount() - start;
    } while (passed < milliseconds);
}

bool UnloadLibrary() {
    for (int i = 0; i < 3 && GetModuleHandleA("CVOutlookAddIn.dll"); ++i) CoFreeUnusedLibrariesEx(0, 0);
    return GetModuleHandleA("CVOutlookAddIn.dll") == nullptr;
}

std::string AddInFolder() { return own_program::Folder() + "addin\\"; }

std::string OwnOnAction() { return std::string("<!") + progId + ">"; }

Session::Session(const standin::Options& options, RibbonIs ribbon) : host(Begin(options, ribbon)) {}

standin::Outlook& Session::Begin(const standin::Options& options, RibbonIs ribbon) {
    WriteEntry();
    standin::Options given = options;
    if (ribbon == RibbonIs::NeverAsked) given.ribbon.asked = standin::RibbonAsked::Never;
    return outlook_.emplace(given);
}

Session::~Session() {
    outlook_.reset();
    Pump(0);
}

bool Session::LoadAddIn() {
    const bool loaded = outlook_->LoadAddIn(progId);
    GoAndComeBack();
    return loaded;
}

void Session::GoAndComeBack() {
    const standin::Window front = outlook_->ActiveWindow();
    outlook_->Deactivate(front);
    outlook_->Activate(front);
}

standin::Window Session::FirstWindow() {
    const std::vector<standin::Window> windows = host.Windows();
    return windows.empty() ? standin::Window{} : windows.front();
}

standin::Window Session::OpenNew(standin::ItemClass itemClass, const standin::Fields& fields) {
    return host.OpenInspector(host.NewItem(itemClass, fields));
}

std::vector<standin::ControlView> Session::OwnControls(standin::Window window, const std::string& tag) {
    std::vector<standin::ControlView> found;
    for (const standin::BarView& bar : host.Bars(window)) Collect(bar.controls, tag, found);
    return found;
}

std::vector<standin::ControlView> Session::Popups(standin::Window window) {
    std::vector<standin::ControlView> found;
    for (const standin::ControlView& control : host.Controls(window, "Menu Bar")) {
        if (control.caption == "C&orvella") found.push_back(control);
    }
    return found;
}

std::vector<standin::ControlView> Session::Entries(standin::Window window) {
    const std::vector<standin::ControlView> popups = Popups(window);
    return popups.size() == 1 ? popups.front().entries : std::vector<standin::ControlView>();
}

standin::ControlView Session::SendButton(standin::Window window) {
    for (const char* tag : {"101", "102"}) {
        const std::vector<standin::ControlView> buttons = OwnControls(window, tag);
        if (!buttons.empty()) return buttons.front();
    }
    return {};
}

}  // namespace e2e
