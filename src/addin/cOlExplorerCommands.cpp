// The commands: what a click on each menu entry, toolbar button and ribbon control of an Explorer does.
#include "addin/Members.h"
#include "addin/Names.h"
#include "addin/cOlExplorer.h"
#include "bridge/CVOutlAddIn.h"
#include "bridge/FormOlAddInOptions.h"
#include "bridge/OlVersion.h"
#include "platform/Environment.h"
#include "platform/Guard.h"
#include "platform/MessageBox.h"
#include "platform/Process.h"
#include "platform/Text.h"
#include "platform/forms/Keyboard.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using platform::Dispatch;

namespace {

// Straight away, or through Corvella's dialog where the user did not switch it off.
const char* SynchroniseArgument() {
    const std::string noDialog = RegEdit::GetRegString(platform::Root::CurrentUser, RegistryKeys::Outlook, "NoDlg");
    return platform::Val(noDialog) != 0 ? "sync" : "syncdlg";
}

std::string InfoText() {
    return std::string("Corvella AddIn for Outlook 2000/02(XP)/03/2007 beta 2") + "\r" + Names::MakersNotice + "\r" +
           "Version " + CV_VERSION;
}

}  // namespace

void cOlExplorer::SyncIt_Click() { CVOutlAddIn::CallMainApp(""); }

void cOlExplorer::SyncItBoth_Click() { CVOutlAddIn::CallMainApp(SynchroniseArgument()); }

void cOlExplorer::SyncItButton_Click() { SyncItBoth_Click(); }

void cOlExplorer::SyncItContacts_Click() { CVOutlAddIn::CallMainApp("sync 0"); }

void cOlExplorer::SyncItCalendar_Click() { CVOutlAddIn::CallMainApp("sync 1"); }

void cOlExplorer::ButtonSMSNew_Click() { CVOutlAddIn::CallMainApp("smsnew"); }

void cOlExplorer::SyncItSettings_Click() { CVOutlAddIn::CallMainApp("settings"); }

void cOlExplorer::MenuOptions_Click() { FormOlAddInOptions::Shared().Show(); }

void cOlExplorer::SyncItLogFile_Click() {
    const Debug::Trace trace("ButtonLogFile_Click");
    const std::string path = platform::WithBackslash(Files::AppFolder()) + "Corvella.log";
    const std::string system = platform::SystemFolder();
    if (system.empty() || !Files::FileExists(path)) return;
    // Only what Notepad will get: the keys must not end up in Outlook.
    const std::string command = "\"" + system + "notepad.exe\" " + path;
    if (platform::StartProcessForInput(command, platform::Show::Normal)) platform::SendControlEnd();
}

void cOlExplorer::ButtonInfo_Click() {
    std::string text = InfoText();
    if (OlVersion >= Outlook2002) {
        Prompt::Ask(Prompt::Id::Plain, text, Prompt::Style::OK, {});
    } else {
        platform::ShowMessageBox(text, Prompt::Style::OK);
    }
}

void cOlExplorer::SendToPhone_Click() { SendToPhone(window_.Object(Members::Window::Selection)); }

// Every selected item in turn; the timer is armed once, with the last.
void cOlExplorer::SendToPhone(const Dispatch& selection) {
    const std::int32_t count = selection.Long(Members::Collection::Count);
    if (count < 1) return;
    CVOutlAddIn::HandOff handOff('C');
    for (std::int32_t number = 1; number <= count; ++number) {
        platform::Attempt([&] {  // one that memory does not suffice for keeps none of the others back
            const Dispatch item = selection.Object(Members::Collection::Item, number);
            handOff.Add(item.Text(Members::Item::EntryID));
        });
    }
    handOff.Finish();
}
