// addin/MenuEntries.h: the commands of the Corvella menu, top to bottom. One row is one command: everything that
// shows or runs the commands reads this table, and so do the checks of the language files and of the manual.
//
// Shapes  `languageKey` names a text of section "OutlookAddIn" in the language files; where that is empty, the default
//         caption is shown, which may be empty too. A "&" stands before the access key.
#pragma once
#include <cstdint>
#include <span>

class cOlExplorer;

struct MenuEntry {
    const char* languageKey;
    const char* defaultCaption;
    const char* ribbonCaption;  // the default on a ribbon, which has no entries without a caption
    const char* keyWord;        // what Office is given as the entry's key; nothing reads it
    std::int32_t picture;       // the number of a bitmap, 0 for none
    std::int16_t faceId;        // one of Office's own pictures, -1 for none
    bool beginsGroup;
    void (cOlExplorer::*click)();  // runs the command
};

[[nodiscard]] std::span<const MenuEntry> MenuEntries();
