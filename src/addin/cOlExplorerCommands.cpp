// What a click on each menu entry and toolbar button of an Explorer does. Office calls every handler whose control
// has the clicked one's id and tag, so each first looks whether the clicked control carries the add-in's own mark.
#include "addin/Members.h"
#include "addin/Names.h"
#include "addin/cOlExplorer.h"
#include "bridge/CVOutlAddIn.h"
#include "bridge/FormOlAddInOptions.h"
#include "bridge/OlVersion.h"
#include "platform/MessageBox.h"
#include "platform/Process.h"
#include "platform/Text.h"
#include "platform/forms/Keyboard.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"

using platform::Dispatch;

namespace {

constexpr std::int32_t outlook2002 = 10;
constexpr std::int32_t noMemory = -1;  // a question whose answer is not remembered
constexpr std::int32_t okOnly = 0;
constexpr const char* outlookKey = "Software\\Quillmark\\Corvella\\Outlook";

// Straight away, or through Corvella's dialog where the user did not switch it off.
const char* SynchroniseArgument() {
    const std::string noDialog = RegEdit::GetRegString(platform::Root::CurrentUser, outlookKey, "NoDlg");
    return platform::Val(noDialog) != 0 ? "sync" : "syncdlg";
}

std::string InfoText() {
    return std::string("Corvella AddIn for Outlook 2000/02(XP)/03/2007 beta 2") + "\r" + Names::MakersNotice + "\r" +
           "Version " + CV_VERSION;
}

}  // namespace

void cOlExplorer::SyncIt_Click(const Dispatch& control) {
    if (IsOwn(control)) CVOutlAddIn::CallMainApp("");
}

void cOlExplorer::SyncItBoth_Click(const Dispatch& control) {
    if (IsOwn(control)) CVOutlAddIn::CallMainApp(SynchroniseArgument());
}

void cOlExplorer::SyncItButton_Click(const Dispatch& control) { SyncItBoth_Click(control); }

void cOlExplorer::SyncItContacts_Click(const Dispatch& control) {
    if (IsOwn(control)) CVOutlAddIn::CallMainApp("sync 0");
}

void cOlExplorer::SyncItCalendar_Click(const Dispatch& control) {
    if (IsOwn(control)) CVOutlAddIn::CallMainApp("sync 1");
}

void cOlExplorer::ButtonSMSNew_Click(const Dispatch& control) {
    if (IsOwn(control)) CVOutlAddIn::CallMainApp("smsnew");
}

void cOlExplorer::SyncItSettings_Click(const Dispatch& control) {
    if (IsOwn(control)) CVOutlAddIn::CallMainApp("settings");
}

void cOlExplorer::MenuOptions_Click(const Dispatch& control) {
    if (IsOwn(control)) FormOlAddInOptions::Shared().Show();
}

void cOlExplorer::SyncItLogFile_Click(const Dispatch& control) {
    if (!IsOwn(control)) return;
    const Debug::Trace trace("ButtonLogFile_Click");
    const std::string path = platform::WithBackslash(Files::AppFolder()) + "Corvella.log";
    if (!Files::FileExists(path)) return;
    // Only what Notepad will get: the keys must not end up in Outlook.
    if (platform::StartProcessForInput("notepad " + path, platform::Show::Normal)) platform::SendControlEnd();
}

void cOlExplorer::ButtonInfo_Click(const Dispatch& control) {
    if (!IsOwn(control)) return;
    std::string text = InfoText();
    if (OlVersion >= outlook2002) {
        Prompt::Ask(noMemory, text, okOnly, "");
    } else {
        platform::ShowMessageBox(text, okOnly);
    }
}

// Every selected item in turn; the timer is armed once, with the last.
void cOlExplorer::SendToPhone_Click(const Dispatch& control) {
    if (!IsOwn(control)) return;
    const Dispatch selection = window_.Object(Members::Window::Selection);
    const std::int32_t count = selection.Long(Members::Collection::Count);
    for (std::int32_t number = 1; number <= count; ++number) {
        const Dispatch item = selection.Object(Members::Collection::Item, number);
        CVOutlAddIn::AddChangedItem(item.Text(Members::Item::EntryID), 'C', true, number == count);
    }
}
