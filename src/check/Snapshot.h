// check/Snapshot.h: everything that the checks judge, read in one go. Plain values: whoever fills one by hand needs no
// Windows. What is missing, unreadable and empty stays told apart (platform::Found).
//
// Shapes  Versions are Outlook's major numbers (9 to 16). Bits are 32 or 64, 0 where nobody knows. Folders end in a
//         backslash. Times are those of platform/Look.h; a time as text is local.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Look.h"

namespace Check {

using platform::Found;
using platform::RegistryView;
using platform::Root;
using Value = platform::StoredValue;

enum class Scope : std::uint8_t { User, Machine };
[[nodiscard]] inline Root RootOf(Scope scope) { return scope == Scope::User ? Root::CurrentUser : Root::LocalMachine; }
[[nodiscard]] inline RegistryView ViewOf(int bits) { return bits == 64 ? RegistryView::Bits64 : RegistryView::Bits32; }

// A program or library, or what should be one.
struct Program {
    Found found = Found::Missing;
    int bits = 0;            // 0: it is no program of Windows
    bool isLibrary = false;  // a DLL
    bool whole = true;       // no byte of it is missing at its end
    std::string version;     // empty: the file tells none
    std::string modified;
    std::uint64_t size = 0;
};

struct Outlook {
    int version = 0;
    int view = 32;        // of the registry, in which it was found
    int statedBits = 0;   // what the registry calls its bitness
    std::string program;  // the whole path of OUTLOOK.EXE
    bool clickToRun = false;
};

// The class in one view of one scope.
struct ClassEntry {
    Scope scope = Scope::User;
    int view = 32;
    Value library;     // as stored
    std::string path;  // the file that it names: without quotes, variables replaced
};
struct NameEntry {
    Scope scope = Scope::User;
    Value classId;  // to which the name of the add-in leads
};

// The add-in in a list of Outlook's. The user's list is one for both views.
struct AddInEntry {
    Scope scope = Scope::User;
    int view = 32;
    bool clickToRun = false;  // in the private list of Click-to-Run
    Found found = Found::Missing;
    Value loadBehavior;
};

struct ListedItem {
    int version = 0;
    bool atStart = false;  // of StartupItems, else of DisabledItems
    std::string name;      // of the value
    Value value;
};

// What a version of Outlook keeps, and is told, about add-ins.
struct VersionFacts {
    int version = 0;
    Value crashing;       // CrashingAddinList
    Value managed;        // AddinList, the user's own
    Value policy[2];      // the same as a policy, by Scope
    Value onlyListed[2];  // RestrictToList
    Value onlySigned[2];  // RequireAddinSig
    Value noAddIns[2];    // DisableAllAddins
};

struct LanguageFacts {
    std::string chosen;  // "Deutsch", by the settings or by Windows
    std::string file;    // that is read for it
    std::string wanted;  // that it should be
    Found wantedFound = Found::Missing;
    Found english = Found::Missing;
    int missing = 0;             // keys that English has and this one has not
    std::string text;            // all of it, lines ending with CR LF
    std::uint32_t codePage = 0;  // that the letters need; 0: nobody says
    std::uint32_t systemPage = 1252;
};

struct SettingsFacts {
    Value storage;  // "SaveIn"
    Value iniFiles;
    std::string appData;  // empty: Windows names none
    std::string folder;
    bool folderTakesFiles = false;  // it, or the nearest one above it that exists
    std::string file;               // corvella.ini
    Found fileFound = Found::Missing;
    bool fileIsWritable = true;
    std::string profile;  // empty: the base file itself
    Found profileFound = Found::There;
    std::vector<std::string> hidden, disabled;  // controls of forms, as the settings file names them
};

struct LogFacts {
    Value mode;               // "DebugMode" of the registry
    std::int32_t number = 0;  // in force, from there or from the settings file
    std::string file;
    Found fileFound = Found::Missing;
    std::string lastWritten;
    bool isWritable = false;  // or can be made
};

// Where a button is put, by its number.
struct Placement {
    int button = 0;
    Value bar, position, style;
};

struct Snapshot {
    // the machine
    std::string windows, now, userName;
    bool has64Bits = false;
    // this program
    std::string ownFolder, ownVersion;
    // Outlook
    std::vector<Outlook> outlooks;
    bool newOutlook = false;  // the one that loads no add-ins
    bool outlookRuns = false;
    std::vector<ListedItem> listed;
    std::vector<VersionFacts> versions;
    // the add-in
    std::vector<ClassEntry> classes;
    std::vector<NameEntry> names;
    std::vector<AddInEntry> entries;
    std::vector<std::u16string> lowerPaths;  // of libraries, as Outlook keeps them in its lists
    Value active;
    // Corvella
    Value userPath, machinePath[2];  // [0]: in the view of 32 bits, [1]: of 64
    Value lists[3];                  // changed appointments, contacts, tasks
    std::uint64_t listsWritten = 0, time = 0;
    std::string listsWrittenText;

    LanguageFacts language;
    SettingsFacts settings;
    LogFacts log;
    std::vector<Placement> placements;
    std::vector<std::pair<std::string, Program>> files;  // every one that was looked at, by its path

    [[nodiscard]] Program FileAt(std::string_view path) const;
    // The place for what is found there.
    Program& FileToFill(std::string_view path);
};

// --- values

// A text up to its first NUL; none where the value is anything else.
[[nodiscard]] std::optional<std::string> TextOf(const Value& value);
[[nodiscard]] std::optional<std::uint32_t> NumberOf(const Value& value);
// As the add-in reads its own values: texts, bytes and numbers all as text, and anything else as empty.
[[nodiscard]] std::string AddInText(const Value& value);
// It is there, but the add-in cannot read it.
[[nodiscard]] bool IsUnreadable(const Value& value);

// "C:\x\" of "C:\x\y.dll"; empty where there is no folder.
[[nodiscard]] std::string FolderOf(const std::string& path);

// --- what follows from it

// The Outlook that the checks are about: the newest one whose program is there; null where there is none.
[[nodiscard]] const Outlook* MainOutlook(const Snapshot& snapshot);
[[nodiscard]] int BitsOf(const Snapshot& snapshot, const Outlook& outlook);
// The class that an Outlook of so many bits gets; null: none.
[[nodiscard]] const ClassEntry* ClassFor(const Snapshot& snapshot, int bits);
// The add-in's library in this program's own folder, of so many bits.
[[nodiscard]] std::string LibraryBeside(const std::string& folder, int bits);
// Where the menu's commands, and the sending of saved items, look for Corvella.exe; empty: nowhere.
[[nodiscard]] std::string FolderOfCommands(const Snapshot& snapshot, int bits);
[[nodiscard]] std::string FolderOfSending(const Snapshot& snapshot, int bits);
// Every folder in which Corvella.exe may be, the likeliest first; some may be empty texts.
[[nodiscard]] std::vector<std::string> FoldersOfCorvella(const Snapshot& snapshot, int bits);
// The entries of a list of changed items.
[[nodiscard]] std::int32_t EntriesIn(const Value& list);

}  // namespace Check
