// testing/MenuTable.h: the Corvella menu as every test expects it, top to bottom. It is not the product's own table:
// the two have to agree.
#pragma once
#include <cstddef>
#include <iterator>
#include <string_view>

struct MenuRow {
    const char* key;        // of the language files
    const char* caption;    // in the English one
    const char* otherwise;  // where a language file has none
    int picture;            // 0 for none
    int faceId;
    bool beginsGroup;
};

inline constexpr MenuRow menuTable[] = {
    {"mEditor", "Corvella &Editor", "Corvella &Editor", 104, 0, false},
    {"mSync", "S&ynchronize", "S&ynchronize", 103, 0, true},
    {"mSync0", "Synchronize &Contacts", "", 0, 0, false},
    {"mSync1", "Synchronize Ca&lendar", "", 0, 0, false},
    {"mNewSMS", "&New SMS", "&New SMS", 105, 0, true},
    {"mSettings", "Se&ttings...", "Se&ttings", 106, 65, true},
    {"mOptions", "Add-In &Options...", "", 0, 0, false},
    {"mLogFile", "Lo&g File", "", 0, 0, true},
    {"mAbout", "&About Corvella", "&Info", 0, 0, true},
};

// Where the entry stands, from 0; behind the last one where there is none of that key.
constexpr std::size_t MenuPlace(std::string_view key) {
    std::size_t place = 0;
    while (place < std::size(menuTable) && menuTable[place].key != key) ++place;
    return place;
}
