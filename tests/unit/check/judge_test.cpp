// What the check program concludes from what it has read; pure.
#include <doctest.h>

#include <algorithm>

#include "Healthy.h"
#include "check/Texts.h"

using namespace check_test;

namespace {

ListedItem Listed(int version, std::uint32_t kind, const std::string& path, bool atStart = false) {
    const std::string bytes = Resiliency::Bytes({kind, Wide(platform::ToLower(path)), u"cvoutlookaddin.connect"});
    return {version, atStart, "1A2B", {Found::There, platform::RegistryBinary, bytes}};
}

VersionFacts& FactsOf(Snapshot& snapshot, int version) {
    return *std::find_if(snapshot.versions.begin(), snapshot.versions.end(),
                         [&](const VersionFacts& facts) { return facts.version == version; });
}

Value& LoadBehavior(Snapshot& snapshot) { return snapshot.entries.front().loadBehavior; }

ClassEntry& ClassOf32(Snapshot& snapshot) { return snapshot.classes.front(); }

void NameLibrary(Snapshot& snapshot, const std::string& path) {
    ClassOf32(snapshot).library = Text(path);
    ClassOf32(snapshot).path = path;
}

}  // namespace

TEST_CASE("a healthy machine has neither hints nor faults, in any version, scope and bitness") {
    for (const int version : {9, 10, 11, 12, 14, 15, 16}) {
        for (const Scope scope : {Scope::User, Scope::Machine}) {
            CHECK(Troubles(Healthy(version, scope)) == "");
            if (version >= 14) CHECK(Troubles(Healthy(version, scope, 64)) == "");
        }
    }
}

TEST_CASE("each check of a healthy machine says one fine thing") {
    const std::vector<Finding> findings = Judge(Healthy());
    CHECK(findings.size() == 13);
    CHECK(Worst(findings) == Sign::Fine);
}

TEST_CASE("every finding that a test here has seen has its two sentences in English") {
    for (const std::string_view key : AllKeys()) CHECK_FALSE(TextFor({}, key).empty());
    Snapshot broken = Healthy();
    broken.outlooks.clear();
    for (const Finding& finding : Judge(broken)) {
        const Sentences sentences = SentencesOf({}, finding);
        CHECK(sentences.found != finding.key);
        CHECK_FALSE(sentences.meaning.empty());
    }
}

// --- Outlook

TEST_CASE("there is no menu because there is no Outlook") {
    Snapshot snapshot = Healthy();
    snapshot.outlooks.clear();
    CHECK(Troubles(snapshot) == "OutlookMissing");
}

TEST_CASE("there is no menu because only the new Outlook is installed") {
    Snapshot snapshot = Healthy();
    snapshot.outlooks.clear();
    snapshot.newOutlook = true;
    CHECK(Troubles(snapshot) == "OutlookNew");
}

TEST_CASE("an Outlook whose program is gone is a fault") {
    Snapshot snapshot = Healthy();
    snapshot.FileToFill("c:\\office\\outlook.exe").found = Found::Missing;
    CHECK(Troubles(snapshot) == "OutlookGone");
}

TEST_CASE("the newest Outlook whose program is there is the one that is meant") {
    Snapshot snapshot = Healthy(11);
    snapshot.outlooks.push_back({16, 64, 0, "C:\\Gone\\OUTLOOK.EXE", false});
    CHECK(MainOutlook(snapshot)->version == 11);
    PutFile(snapshot, "C:\\Gone\\OUTLOOK.EXE", 64);
    CHECK(MainOutlook(snapshot)->version == 16);
    CHECK(BitsOf(snapshot, *MainOutlook(snapshot)) == 64);
}

TEST_CASE("where the program tells no bitness the registry's word is taken, and before 2010 there are 32 bits") {
    Snapshot snapshot = Healthy(14);
    snapshot.FileToFill("c:\\office\\outlook.exe").bits = 0;
    snapshot.outlooks.front().statedBits = 64;
    CHECK(BitsOf(snapshot, snapshot.outlooks.front()) == 64);
    snapshot.outlooks.front().version = 12;
    CHECK(BitsOf(snapshot, snapshot.outlooks.front()) == 32);
}

// --- the class

TEST_CASE("the menu is missing because the class is not registered, and the library beside the program is") {
    Snapshot snapshot = Healthy();
    snapshot.classes.clear();
    const Finding finding = Trouble(snapshot);
    CHECK(Troubles(snapshot) == "ClassMissing");
    REQUIRE(finding.mend.size() == 4);
    CHECK(finding.mend[1].bytes == library32 + '\0');
    CHECK(finding.mend[1].view == RegistryView::Bits32);
}

TEST_CASE("nothing registers a library that is not there") {
    Snapshot snapshot = Healthy();
    snapshot.classes.clear();
    snapshot.FileToFill(library32).found = Found::Missing;
    CHECK(Trouble(snapshot).mend.empty());
}

TEST_CASE("a 64-bit Outlook finds no menu where only the 32-bit class is registered") {
    Snapshot snapshot = Healthy(16, Scope::User, 64);
    snapshot.classes.pop_back();
    CHECK(Troubles(snapshot) == "ClassMissing");
    CHECK(Trouble(snapshot).mend[1].bytes == library64 + '\0');
    CHECK(Trouble(snapshot).mend[1].view == RegistryView::Bits64);
}

TEST_CASE("the menu is missing because the registered file is gone") {
    Snapshot snapshot = Healthy();
    NameLibrary(snapshot, "C:\\Old\\CVOutlookAddIn.dll");
    CHECK(Troubles(snapshot) == "LibraryMissing");
    CHECK(Trouble(snapshot).mend.front().bytes == library32 + '\0');
}

TEST_CASE("the menu is missing because the registered file has the other bitness") {
    Snapshot snapshot = Healthy();
    NameLibrary(snapshot, library64);
    CHECK(Troubles(snapshot) == "LibraryBits");
}

TEST_CASE("the menu is missing because the library is damaged") {
    Snapshot snapshot = Healthy();
    SUBCASE("it is cut off") { snapshot.FileToFill(library32).whole = false; }
    SUBCASE("it is no program") { snapshot.FileToFill(library32).bits = 0; }
    SUBCASE("it is a program that cannot be loaded") { snapshot.FileToFill(library32).isLibrary = false; }
    CHECK(Troubles(snapshot) == "LibraryDamaged");
    CHECK(Trouble(snapshot).mend.empty());
}

TEST_CASE("a library that cannot be read is not taken for one that is missing") {
    Snapshot snapshot = Healthy();
    snapshot.FileToFill(library32).found = Found::Unreadable;
    CHECK(Troubles(snapshot) == "LibraryUnreadable");
}

TEST_CASE("another file is registered under the add-in's class") {
    Snapshot snapshot = Healthy();
    NameLibrary(snapshot, "C:\\Other\\Other.dll");
    PutFile(snapshot, "C:\\Other\\Other.dll", 32, true);
    CHECK(Troubles(snapshot) == "LibraryOther");
}

TEST_CASE("another add-in has taken the name") {
    Snapshot snapshot = Healthy();
    snapshot.names.front().classId = Text("{00000000-0000-0000-0000-000000000001}");
    CHECK(Troubles(snapshot) == "NameOther");
    CHECK(Trouble(snapshot).mend.size() == 2);
}

TEST_CASE("the name leads to no class") {
    Snapshot snapshot = Healthy();
    snapshot.names.front().classId = {};
    CHECK(Troubles(snapshot) == "NameMissing");
    snapshot.names.front().classId = Unreadable();
    CHECK(Troubles(snapshot) == "NameUnreadable");
}

TEST_CASE("a registration of a strange type is unreadable, and is left alone") {
    Snapshot snapshot = Healthy();
    ClassOf32(snapshot).library = Number(7);
    CHECK(Troubles(snapshot) == "ClassUnreadable");
    CHECK(Trouble(snapshot).mend.empty());
}

TEST_CASE("two scopes with two files are a hint, with one file they are fine") {
    Snapshot snapshot = Healthy();
    snapshot.classes.push_back({Scope::Machine, 32, Text(library32), library32});
    CHECK(Troubles(snapshot) == "");
    snapshot.classes.back() = {Scope::Machine, 32, Text("D:\\CVOutlookAddIn.dll"), "D:\\CVOutlookAddIn.dll"};
    CHECK(Troubles(snapshot) == "LibraryTwice");
}

TEST_CASE("an add-in of another version than this program is a hint") {
    Snapshot snapshot = Healthy();
    snapshot.FileToFill(library32).version = "1.9.0.0";
    CHECK(Troubles(snapshot) == "LibraryVersion");
}

// --- the entry

TEST_CASE("each value of LoadBehavior but 3 is told apart and mended") {
    struct Row {
        std::uint32_t number;
        const char* key;
    };
    for (const Row& row : {Row{0, "Load0"}, Row{1, "Load1"}, Row{2, "Load2"}, Row{8, "Load8"}, Row{9, "Load9"},
                           Row{16, "Load16"}, Row{77, "LoadOther"}}) {
        Snapshot snapshot = Healthy();
        LoadBehavior(snapshot) = Number(row.number);
        CHECK(Troubles(snapshot) == row.key);
        REQUIRE(Trouble(snapshot).mend.size() == 1);
        CHECK(Trouble(snapshot).mend.front().bytes == Number(3).bytes);
    }
}

TEST_CASE("a LoadBehavior that is missing or no number is mended, an unreadable one is not") {
    Snapshot snapshot = Healthy();
    LoadBehavior(snapshot) = {};
    CHECK(Troubles(snapshot) == "LoadMissing");
    LoadBehavior(snapshot) = Text("3");
    CHECK(Troubles(snapshot) == "LoadNoNumber");
    LoadBehavior(snapshot) = Unreadable();
    CHECK(Troubles(snapshot) == "EntryUnreadable");
    CHECK(Trouble(snapshot).mend.empty());
}

TEST_CASE("Outlook follows the user's entry, which hides the machine's") {
    Snapshot snapshot = Healthy();
    snapshot.entries.push_back({Scope::Machine, 32, false, Found::There, Number(3)});
    LoadBehavior(snapshot) = Number(2);
    CHECK(Troubles(snapshot) == "Load2");
    LoadBehavior(snapshot) = Number(3);
    snapshot.entries.back().loadBehavior = Number(2);
    CHECK(Troubles(snapshot) == "");
}

TEST_CASE("a machine's entry that is switched off gets a whole entry of the user in front of it") {
    Snapshot snapshot = Healthy(11, Scope::Machine);
    LoadBehavior(snapshot) = Number(2);
    CHECK(Troubles(snapshot) == "Load2");
    REQUIRE(Trouble(snapshot).mend.size() == 3);
    CHECK(Trouble(snapshot).mend.back().root == Root::CurrentUser);
}

TEST_CASE("the menu is missing because the add-in is in no list of Outlook's") {
    Snapshot snapshot = Healthy();
    snapshot.entries.clear();
    CHECK(Troubles(snapshot) == "EntryMissing");
    snapshot.entries.push_back({Scope::Machine, 64, false, Found::There, Number(3)});
    CHECK(Troubles(snapshot) == "EntryOtherView");
}

TEST_CASE("an old entry in the private list of Click-to-Run hides the machine's, not the user's") {
    Snapshot snapshot = Healthy(16, Scope::Machine);
    snapshot.entries.push_back({Scope::Machine, 32, true, Found::There, Number(2)});
    CHECK(Troubles(snapshot) == "EntryPrivate");
    snapshot.entries.front().scope = Scope::User;
    CHECK(Troubles(snapshot) == "");
}

// --- Outlook's lists

TEST_CASE("the menu is missing because Outlook disabled the DLL after a crash") {
    for (const int version : {10, 11, 12, 14, 15, 16}) {
        Snapshot snapshot = Healthy(version);
        snapshot.listed.push_back(Listed(version, 1, library32));
        CHECK(Troubles(snapshot) == "DisabledCrash");
        REQUIRE(Trouble(snapshot).mend.size() == 1);
        CHECK(Trouble(snapshot).mend.front().removes);
        CHECK(Trouble(snapshot).mend.front().name == "1A2B");
    }
}

TEST_CASE("a slow add-in is told from one that crashed") {
    Snapshot snapshot = Healthy(16);
    snapshot.listed.push_back(Listed(16, Resiliency::slowAddIn, library32));
    CHECK(Troubles(snapshot) == "DisabledSlow");
}

TEST_CASE("disabled items of others, of other folders and of versions that are not installed are left alone") {
    Snapshot snapshot = Healthy(16);
    snapshot.listed.push_back(Listed(16, 1, "C:\\Other\\Other.dll"));
    snapshot.listed.push_back(Listed(16, 1, "C:\\Elsewhere\\CVOutlookAddIn.dll"));
    snapshot.listed.push_back(Listed(15, 1, library32));
    snapshot.listed.push_back({16, false, "noise", {Found::There, platform::RegistryBinary, "noise"}});
    CHECK(Troubles(snapshot) == "");
}

TEST_CASE("an entry of an unknown shape that names the library is a hint, and is not removed") {
    Snapshot snapshot = Healthy(16);
    ListedItem item = Listed(16, 1, library32);
    item.value.bytes += "more";
    snapshot.listed.push_back(item);
    CHECK(Troubles(snapshot) == "DisabledUnclear");
    CHECK(Trouble(snapshot).mend.empty());
}

TEST_CASE("an entry left of a start that did not end counts only while Outlook does not run") {
    Snapshot snapshot = Healthy(11);
    snapshot.listed.push_back(Listed(11, 1, library32, true));
    CHECK(Troubles(snapshot) == "DisabledAtStart");
    snapshot.outlookRuns = true;
    CHECK(Troubles(snapshot) == "");
}

TEST_CASE("Outlook's list of crashing add-ins and a managed list that blocks are faults") {
    Snapshot snapshot = Healthy(16);
    FactsOf(snapshot, 16).crashing = Number(1);
    CHECK(Troubles(snapshot) == "Crashing");
    FactsOf(snapshot, 16).crashing = {};
    FactsOf(snapshot, 16).managed = Text("0");
    CHECK(Troubles(snapshot) == "Blocked");
    FactsOf(snapshot, 16).managed = Number(0);
    CHECK(Troubles(snapshot) == "Blocked");
    FactsOf(snapshot, 16).managed = Text("1");
    CHECK(Troubles(snapshot) == "");
}

TEST_CASE("policies that keep the add-in out are faults that only an administrator mends") {
    for (const std::size_t scope : {std::size_t{0}, std::size_t{1}}) {
        Snapshot snapshot = Healthy(16);
        VersionFacts& facts = FactsOf(snapshot, 16);
        facts.onlySigned[scope] = Number(1);
        CHECK(Troubles(snapshot) == "PolicyOnlySigned");
        facts.onlySigned[scope] = {};
        facts.onlyListed[scope] = Number(1);
        CHECK(Troubles(snapshot) == "PolicyOnlyListed");
        facts.policy[scope] = Text("1");
        CHECK(Troubles(snapshot) == "");
        facts.policy[scope] = Text("0");
        CHECK(Troubles(snapshot) == "PolicyBlocked");
        facts = {};
        facts.version = 16;
        facts.noAddIns[scope] = Number(1);
        CHECK(Troubles(snapshot) == "PolicyNoAddIns");
        CHECK(Trouble(snapshot).mend.empty());
    }
}

TEST_CASE("a session that did not end leaves a mark, which counts only while Outlook does not run") {
    Snapshot snapshot = Healthy();
    snapshot.active = Text("1");
    CHECK(Troubles(snapshot) == "SessionLeft");
    CHECK(Trouble(snapshot).mend.front().name == "Active");
    snapshot.outlookRuns = true;
    CHECK(Troubles(snapshot) == "");
}

// --- Corvella

TEST_CASE("commands and sending look for Corvella in their own ways") {
    Snapshot snapshot = Healthy();
    SUBCASE("both find nothing") {
        snapshot.userPath = Text("C:\\Nowhere");
        CHECK(Troubles(snapshot) == "CorvellaMissing");
        CHECK(Trouble(snapshot).mend.empty());
    }
    SUBCASE("nobody has written a path, and it is not beside the add-in either") {
        snapshot.userPath = {};
        CHECK(Troubles(snapshot) == "CorvellaMissing");
        snapshot.classes.clear();
        CHECK(Troubles(snapshot) == "ClassMissing CorvellaUnknown");
    }
    SUBCASE("commands find nothing, sending finds the machine's") {
        snapshot.userPath = Text("C:\\Nowhere");
        snapshot.machinePath[0] = Text("C:\\Corvella");
        CHECK(Troubles(snapshot) == "CorvellaCommands");
        CHECK(Trouble(snapshot).mend.front().bytes == std::string("C:\\Corvella\\") + '\0');
    }
    SUBCASE("the machine's path is wrong and hides the user's from sending") {
        snapshot.machinePath[0] = Text("C:\\Nowhere");
        CHECK(Troubles(snapshot) == "CorvellaSending");
        REQUIRE(Trouble(snapshot).mend.size() == 1);
        CHECK(Trouble(snapshot).mend.front().root == Root::LocalMachine);
    }
    SUBCASE("beside the add-in commands find it without a path, sending does not") {
        snapshot.userPath = {};
        PutFile(snapshot, "C:\\Corvella for Outlook\\Corvella.exe");
        CHECK(Troubles(snapshot) == "CorvellaSending");
        CHECK(Trouble(snapshot).mend.front().root == Root::CurrentUser);
    }
    SUBCASE("they find two") {
        snapshot.machinePath[0] = Text("D:\\Corvella\\");
        PutFile(snapshot, "D:\\Corvella\\Corvella.exe");
        CHECK(Troubles(snapshot) == "CorvellaTwice");
    }
    SUBCASE("the path is of a type that the add-in does not read") {
        snapshot.userPath = {Found::There, 7, "x"};
        CHECK(Troubles(snapshot) == "CorvellaUnreadable");
    }
}

TEST_CASE("changed items that wait for more than an hour are a hint") {
    Snapshot snapshot = Healthy();
    snapshot.lists[1] = Text(";00AB;00CD");
    snapshot.lists[2] = Text(";00EF");
    snapshot.listsWritten = 1;
    snapshot.time = 30'000'000'000;
    CHECK(Troubles(snapshot) == "");
    snapshot.time = 40'000'000'000;
    CHECK(Troubles(snapshot) == "ListsWaiting");
    CHECK(Trouble(snapshot).fill[0] == "3");
    snapshot.lists[0] = Unreadable();
    CHECK(Troubles(snapshot) == "ListsUnreadable");
}

// --- texts, settings, log

TEST_CASE("the language file can be missing, unreadable, incomplete, or of another code page") {
    Snapshot snapshot = Healthy();
    snapshot.language.wantedFound = Found::Missing;
    CHECK(Troubles(snapshot) == "LanguageMissing");
    snapshot.language.english = Found::Missing;
    CHECK(Troubles(snapshot) == "LanguageNone");
    snapshot.language.wantedFound = Found::Unreadable;
    CHECK(Troubles(snapshot) == "LanguageUnreadable");
    snapshot.language.wantedFound = Found::There;
    snapshot.language.missing = 4;
    CHECK(Troubles(snapshot) == "LanguageIncomplete");
    snapshot.language.missing = 0;
    snapshot.language.codePage = 1250;
    CHECK(Troubles(snapshot) == "LanguageLetters");
}

TEST_CASE("the settings can be missing, which is fine, or unreadable, or read-only, or of a profile that is gone") {
    Snapshot snapshot = Healthy();
    SettingsFacts& settings = snapshot.settings;
    settings.folderTakesFiles = false;
    CHECK(Troubles(snapshot) == "SettingsFolder");
    settings.fileFound = Found::Unreadable;
    CHECK(Troubles(snapshot) == "SettingsUnreadable");
    settings.fileFound = Found::There;
    CHECK(Troubles(snapshot) == "");
    settings.fileIsWritable = false;
    CHECK(Troubles(snapshot) == "SettingsReadOnly");
    settings.fileIsWritable = true;
    settings.profile = "C:\\x\\Work.ini";
    settings.profileFound = Found::Missing;
    CHECK(Troubles(snapshot) == "SettingsProfile");
    settings.storage = Text("2");
    CHECK(Troubles(snapshot) == "");
    settings.storage = Unreadable();
    CHECK(Troubles(snapshot) == "SettingsModeUnreadable");
}

TEST_CASE("controls that the settings take away are hints") {
    Snapshot snapshot = Healthy();
    snapshot.settings.hidden = {"Frame3", "ComboProfiles"};
    CHECK(Troubles(snapshot) == "ControlsHidden");
    CHECK(Trouble(snapshot).fill[0] == "Frame3, ComboProfiles");
    snapshot.settings.disabled = {"TextDelay"};
    CHECK(Troubles(snapshot) == "ControlsHidden ControlsDisabled");
}

TEST_CASE("debug mode is a hint, whether its log can be written or not") {
    Snapshot snapshot = Healthy();
    snapshot.log.number = 1;
    CHECK(Troubles(snapshot) == "LogUnwritable");
    snapshot.log.isWritable = true;
    CHECK(Troubles(snapshot) == "LogOnEmpty");
    snapshot.log.fileFound = Found::There;
    CHECK(Troubles(snapshot) == "LogOn");
    snapshot.log.number = -1;
    CHECK(Troubles(snapshot) == "LogRegistry");
}

TEST_CASE("places where Outlook has no bar, or where no button fits, are mended only when asked for") {
    Snapshot snapshot = Healthy();
    snapshot.placements.push_back({103, Text("Corvella"), Text("2"), Text("3")});
    CHECK(Troubles(snapshot) == "PlacementBar");
    CHECK(Trouble(snapshot).chosenByUser);
    CHECK(Trouble(snapshot).mend.front().name == "103Bar");
    snapshot.placements.front().bar = Text("advanced");
    CHECK(Troubles(snapshot) == "PlacementHiddenBar");
    snapshot.placements.front().bar = Text("menu bar");
    CHECK(Troubles(snapshot) == "");
    snapshot.placements.front().position = Text("99");
    CHECK(Troubles(snapshot) == "PlacementPosition");
    snapshot.placements.front().position = Text("-5");
    snapshot.placements.front().style = Text("44");
    CHECK(Troubles(snapshot) == "PlacementStyle");
}

TEST_CASE("what follows from a fault is not found again") {
    Snapshot snapshot;  // nothing at all
    snapshot.settings.folderTakesFiles = true;
    CHECK(Troubles(snapshot) == "OutlookMissing ClassMissing EntryMissing CorvellaUnknown LanguageNone");
}
