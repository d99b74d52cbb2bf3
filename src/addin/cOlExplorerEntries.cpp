// The rows of the menu. The table stands apart from MenuEntries.h, which knows nothing of the Explorer.
#include "addin/MenuEntries.h"
#include "addin/cOlExplorer.h"

// scripts/tables.py reads these rows as text: literals only, in the order of the struct.
std::span<const MenuEntry> MenuEntries() {
    static constexpr MenuEntry entries[] = {
        {"mEditor", "Corvella &Editor", "Corvella &Editor", "Main_", 104, -1, false, &cOlExplorer::SyncIt_Click},
        {"mSync", "S&ynchronize", "S&ynchronize", "MainSyncBoth", 103, -1, true, &cOlExplorer::SyncItBoth_Click},
        {"mSync0", "", "Synchronize &Contacts", "MainSyncContacts", 0, -1, false, &cOlExplorer::SyncItContacts_Click},
        {"mSync1", "", "Synchronize Ca&lendar", "MainSyncCalendar", 0, -1, false, &cOlExplorer::SyncItCalendar_Click},
        {"mNewSMS", "&New SMS", "&New SMS", "SmsNew", 105, -1, true, &cOlExplorer::ButtonSMSNew_Click},
        {"mSettings", "Se&ttings", "Se&ttings", "SettingsMain", 106, 65, true, &cOlExplorer::SyncItSettings_Click},
        {"mOptions", "", "&Options", "Options", 0, -1, false, &cOlExplorer::MenuOptions_Click},
        {"mLogFile", "", "Lo&g File", "LogFile", 0, -1, true, &cOlExplorer::SyncItLogFile_Click},
        {"mAbout", "&Info", "&Info", "Info", 0, -1, true, &cOlExplorer::ButtonInfo_Click},
    };
    return entries;
}
