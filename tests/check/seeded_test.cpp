// One fault each, seeded into a healthy machine: the real program finds exactly this one, and where it can be mended,
// mends it, after which the stand-in shows the menu.
#include <doctest.h>

#include "World.h"
#include "testing/ChildProcess.h"

using namespace check_test;

namespace {

// Found alone; the menu is gone; mended, all is fine and the menu there.
void FindAndMend(World& world, const std::string& key) {
    CHECK(world.Check() == "2 " + key);
    CHECK_FALSE(world.ShowsMenu());
    CHECK(world.Repair() == 0);
    CHECK(world.Check() == "0");
    CHECK(world.ShowsMenu());
}

// Found alone, and not mended: nothing that this program may do helps.
void FindOnly(World& world, const std::string& found) {
    CHECK(world.Check() == found);
    const auto before = World::Registry();
    world.Repair();
    CHECK(World::Registry() == before);
    CHECK(world.Check() == found);
}

void FindAndMendLoadBehavior(DWORD number) {
    World world;
    PutNumber(HKEY_CURRENT_USER, addIns, "LoadBehavior", number);
    FindAndMend(world, "Load" + std::to_string(number));
}

const std::string beside = "AddIn\\CVOutlookAddIn.dll";

}  // namespace

TEST_CASE("on a healthy machine there is neither hint nor fault, in all versions and both scopes") {
    for (const int version : {9, 10, 11, 12, 14, 15, 16}) {
        for (const World::For scope : {World::For::User, World::For::AllUsers}) {
            World world(version, scope);
            CAPTURE(version);
            CHECK(world.Check() == "0");
            if (version == 9 || version == 16) CHECK(world.ShowsMenu());
        }
    }
}

TEST_CASE("on a healthy machine with an Outlook of 64 bits there is neither hint nor fault") {
    World world(16, World::For::User, 64);
    CHECK(world.Check() == "0");
}

TEST_CASE("looking changes nothing: no value, no key, no file, no time of one") {
    World world(16);
    world.Disable(1);
    PutText(HKEY_CURRENT_USER, addInKey, "Active", "1");
    RemoveValue(HKEY_CURRENT_USER, product + "\\Settings", "SaveIn");
    DeleteFileA(world.Path("AppData\\Corvella\\corvella.ini").c_str());
    const auto registry = World::Registry();
    const auto files = world.Files();
    CHECK(registry.size() > 20);
    CHECK(files.size() > 10);
    world.Check();
    CHECK(World::Registry() == registry);
    CHECK(world.Files() == files);
}

TEST_CASE("the menu is missing because Outlook disabled the DLL after a crash") {
    for (const int version : {10, 11, 12, 14, 15, 16}) {
        World world(version);
        world.Disable(1);
        FindAndMend(world, "DisabledCrash");
    }
}

TEST_CASE("the menu is missing because Outlook found the add-in too slow") {
    World world(16);
    world.Disable(0x40000001);
    FindAndMend(world, "DisabledSlow");
}

TEST_CASE("repair takes only our DLL off the disabled items") {
    World world(16);
    world.Disable(1);
    const std::string other = "not of ours";
    Put(HKEY_CURRENT_USER, world.Resiliency("DisabledItems"), "Other", REG_BINARY, other);
    CHECK(world.Repair() == 0);
    const auto registry = World::Registry();
    CHECK(registry.contains(world.Resiliency("DisabledItems") + "\\\\Other"));
    CHECK_FALSE(registry.contains(world.Resiliency("DisabledItems") + "\\\\12EF23A9"));
}

TEST_CASE("Outlook was ended while it loaded the add-in") {
    World world(11);
    world.Disable(1, "StartupItems");
    CHECK(world.Check() == "1 DisabledAtStart");
    CHECK(world.Repair() == 0);
}

TEST_CASE("Outlook lists the add-in among those that crash") {
    World world(16);
    PutNumber(HKEY_CURRENT_USER, world.Resiliency("CrashingAddinList"), "CVOutlookAddIn.Connect", 1);
    CHECK(world.Check() == "2 Crashing");
    CHECK(world.Repair() == 0);
    CHECK(world.ShowsMenu());
}

TEST_CASE("the menu is missing because the user's managed list blocks the add-in") {
    World world(15);
    PutText(HKEY_CURRENT_USER, world.Resiliency("AddinList"), "CVOutlookAddIn.Connect", "0");
    FindAndMend(world, "Blocked");
}

TEST_CASE("the menu is missing because LoadBehavior is 0") { FindAndMendLoadBehavior(0); }
TEST_CASE("the menu is missing because LoadBehavior is 1") { FindAndMendLoadBehavior(1); }

TEST_CASE("the menu is missing because LoadBehavior is 2, which Outlook writes after a failed start") {
    FindAndMendLoadBehavior(2);
}

TEST_CASE("the menu is missing because LoadBehavior is 8") { FindAndMendLoadBehavior(8); }
TEST_CASE("the menu is missing because LoadBehavior is 9") { FindAndMendLoadBehavior(9); }

TEST_CASE("the menu will come once only because LoadBehavior is 16") {
    World world;
    PutNumber(HKEY_CURRENT_USER, addIns, "LoadBehavior", 16);
    CHECK(world.Check() == "2 Load16");
    CHECK(world.Repair() == 0);
    CHECK(world.ShowsMenu());
}

TEST_CASE("the menu is missing because LoadBehavior is a text") {
    World world;
    PutText(HKEY_CURRENT_USER, addIns, "LoadBehavior", "3");
    FindAndMend(world, "LoadNoNumber");
}

TEST_CASE("the menu is missing because LoadBehavior is not there") {
    World world;
    RemoveValue(HKEY_CURRENT_USER, addIns, "LoadBehavior");
    FindAndMend(world, "LoadMissing");
}

TEST_CASE("the menu is missing because the add-in for all users is switched off") {
    World world(14, World::For::AllUsers);
    PutNumber(HKEY_LOCAL_MACHINE, addIns, "LoadBehavior", 2);
    FindAndMend(world, "Load2");
}

TEST_CASE("the menu is missing because the add-in is not in Outlook's list") {
    World world;
    RemoveTree(HKEY_CURRENT_USER, addIns);
    FindAndMend(world, "EntryMissing");
}

TEST_CASE("the menu is missing because the class is not registered") {
    World world;
    RemoveTree(HKEY_CURRENT_USER, "Software\\Classes\\CLSID\\" + classId);
    FindAndMend(world, "ClassMissing");
}

TEST_CASE("the menu is missing because neither class nor name is registered") {
    World world(16, World::For::AllUsers);
    RemoveTree(HKEY_LOCAL_MACHINE, "Software\\Classes\\CLSID\\" + classId);
    RemoveTree(HKEY_LOCAL_MACHINE, nameKey);
    FindAndMend(world, "ClassMissing");
}

TEST_CASE("the menu is missing because the name leads to no class") {
    World world;
    RemoveTree(HKEY_CURRENT_USER, nameKey);
    FindAndMend(world, "NameMissing");
}

TEST_CASE("the menu is missing because another add-in has taken the name") {
    World world;
    PutText(HKEY_CURRENT_USER, nameKey + "\\CLSID", "", "{00000000-0000-0000-0000-000000000001}");
    FindAndMend(world, "NameOther");
}

TEST_CASE("the menu is missing because the registered file is gone") {
    World world;
    PutText(HKEY_CURRENT_USER, classKey, "", world.Path("Gone\\CVOutlookAddIn.dll"));
    FindAndMend(world, "LibraryMissing");
}

TEST_CASE("the menu is missing because another file is registered") {
    World world;
    world.Write("Corvella\\Other.dll", world.Read("Corvella\\Corvella.exe"));
    PutText(HKEY_CURRENT_USER, classKey, "", world.Path("Corvella\\Other.dll"));
    FindAndMend(world, "LibraryOther");
}

TEST_CASE("the menu is missing because the registered file has the other bitness") {
    World world;
    PutText(HKEY_CURRENT_USER, classKey, "", world.Path("AddIn\\x64\\CVOutlookAddIn.dll"));
    FindAndMend(world, "LibraryBits");
}

TEST_CASE("the menu is missing because the registered file is cut off") {
    World world;
    CreateDirectoryA(world.Path("Cut").c_str(), nullptr);
    world.Write("Cut\\CVOutlookAddIn.dll", world.Read(beside).substr(0, 100000));
    PutText(HKEY_CURRENT_USER, classKey, "", world.Path("Cut\\CVOutlookAddIn.dll"));
    FindAndMend(world, "LibraryDamaged");
}

TEST_CASE("two files are registered, for the user and for all") {
    World world;
    PutText(HKEY_LOCAL_MACHINE, classKey, "", world.Path("Other\\CVOutlookAddIn.dll"));
    FindOnly(world, "1 LibraryTwice");
}

TEST_CASE("policies keep the add-in out") {
    World world(16);
    const std::string policies = "Software\\Policies\\Microsoft\\Office\\16.0\\Outlook\\";
    SUBCASE("the menu is missing because a policy blocks this add-in") {
        PutText(HKEY_CURRENT_USER, policies + "Resiliency\\AddinList", "CVOutlookAddIn.Connect", "0");
        FindOnly(world, "2 PolicyBlocked");
    }
    SUBCASE("the menu is missing because a policy allows only listed add-ins") {
        PutNumber(HKEY_CURRENT_USER, policies + "Resiliency", "RestrictToList", 1);
        FindOnly(world, "2 PolicyOnlyListed");
    }
    SUBCASE("the menu is missing because a policy of the machine asks for signatures") {
        PutNumber(HKEY_LOCAL_MACHINE, policies + "Security", "RequireAddinSig", 1);
        FindOnly(world, "2 PolicyOnlySigned");
    }
    SUBCASE("the menu is missing because a policy forbids all add-ins") {
        PutNumber(HKEY_CURRENT_USER, policies + "Security", "DisableAllAddins", 1);
        FindOnly(world, "2 PolicyNoAddIns");
    }
    CHECK_FALSE(world.ShowsMenu());
}

TEST_CASE("there is no Outlook") {
    World world;
    RemoveTree(HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Office\\11.0");
    FindOnly(world, "2 OutlookMissing");
}

TEST_CASE("Outlook is registered, but its program is gone") {
    World world;
    DeleteFileA(world.Path("Office\\OUTLOOK.EXE").c_str());
    FindOnly(world, "2 OutlookGone");
}

TEST_CASE("the last session did not end properly") {
    World world;
    PutText(HKEY_CURRENT_USER, addInKey, "Active", "1");
    CHECK(world.Check() == "1 SessionLeft");
    CHECK(world.Repair() == 0);
}

TEST_CASE("nothing happens on a command because Corvella.exe is not where Path says") {
    World world;
    PutText(HKEY_CURRENT_USER, product, "Path", world.Path("Gone"));
    FindOnly(world, "2 CorvellaMissing");
}

TEST_CASE("commands start nothing because the user's path is wrong and the machine's right") {
    World world;
    PutText(HKEY_CURRENT_USER, product, "Path", world.Path("Gone"));
    PutText(HKEY_LOCAL_MACHINE, product, "Path", world.Path("Corvella"));
    CHECK(world.Check() == "2 CorvellaCommands");
    CHECK(world.Repair() == 0);
}

TEST_CASE("nothing is sent because the machine's path is wrong") {
    World world;
    PutText(HKEY_LOCAL_MACHINE, product, "Path", world.Path("Gone"));
    CHECK(world.Check() == "2 CorvellaSending");
    CHECK(world.Repair() == 0);
}

TEST_CASE("a list of changed items has a type that nobody reads") {
    World world;
    Put(HKEY_CURRENT_USER, product + "\\Outlook", "ChangedC", REG_MULTI_SZ, std::string("a\0b\0", 4));
    FindOnly(world, "1 ListsUnreadable");
}

TEST_CASE("the report counts waiting items, and names none") {
    World world;
    PutText(HKEY_CURRENT_USER, product + "\\Outlook", "ChangedC", ";000000001A447390AA66;000000001A447390AA67");
    CHECK(world.Check() == "0");
    CHECK(world.Report().find("2 changed items wait") != std::string::npos);
    CHECK(world.Report().find("1A447390AA66") == std::string::npos);
}

TEST_CASE("the texts are English because the language file is missing") {
    World world;
    world.Write("AppData\\Corvella\\corvella.ini", "[Settings]\r\nLanguage=Suomi\r\n");
    FindOnly(world, "1 LanguageMissing");
}

TEST_CASE("most texts are missing because there is no language file at all") {
    World world;
    for (const char* name : {"AddIn\\English.lng", "AddIn\\Deutsch.lng", "AddIn\\Polski.lng"}) {
        DeleteFileA(world.Path(name).c_str());
    }
    FindOnly(world, "2 LanguageNone");
}

TEST_CASE("texts are missing because the language file is incomplete") {
    World world;
    world.Write("AppData\\Corvella\\corvella.ini", "[Settings]\r\nLanguage=Part\r\n");
    world.Write("AddIn\\Part.lng", "[Misc]\r\nOk=OK\r\n");
    FindOnly(world, "1 LanguageIncomplete");
    DeleteFileA(world.Path("AddIn\\Part.lng").c_str());
}

TEST_CASE("letters look wrong because the language needs another code page") {
    World world;
    world.Write("AppData\\Corvella\\corvella.ini", "[Settings]\r\nLanguage=Polski\r\n");
    FindOnly(world, "1 LanguageLetters");
}

TEST_CASE("settings are lost because their file is read-only") {
    World world;
    SetFileAttributesA(world.Path("AppData\\Corvella\\corvella.ini").c_str(), FILE_ATTRIBUTE_READONLY);
    FindOnly(world, "1 SettingsReadOnly");
}

TEST_CASE("the profile that the settings choose has no file") {
    World world;
    world.Write("AppData\\Corvella\\corvella.ini", "[Settings]\r\nLanguage=English\r\nCurProfile=Work\r\n");
    FindOnly(world, "1 SettingsProfile");
}

TEST_CASE("controls are hidden and disabled by the settings file") {
    World world;
    world.Write("AppData\\Corvella\\corvella.ini",
                "[Settings]\r\nLanguage=English\r\n[FormOlAddInOptions]\r\nHide=Frame3\r\nDisable=TextDelay\r\n");
    FindOnly(world, "1 ControlsHidden ControlsDisabled");
}

TEST_CASE("debug mode is on, with a log and without one") {
    World world;
    PutText(HKEY_CURRENT_USER, addInKey, "DebugMode", "1");
    FindOnly(world, "1 LogOnEmpty");
    world.Write("AddIn\\CorvellaAddIn.dbg.xml", "<start>_\r\n");
    FindOnly(world, "1 LogOn");
    SetFileAttributesA(world.Path("AddIn\\CorvellaAddIn.dbg.xml").c_str(), FILE_ATTRIBUTE_READONLY);
    FindOnly(world, "1 LogUnwritable");
    SetFileAttributesA(world.Path("AddIn\\CorvellaAddIn.dbg.xml").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_CASE("the button is missing because its position is one that no bar has") {
    World world;
    PutText(HKEY_CURRENT_USER, addInKey, "103Pos", "99");
    CHECK(world.Check() == "2 PlacementPosition");
    CHECK_FALSE(world.ShowsButton());
    CHECK(world.Repair() == 2);  // somebody may have wanted it so
    CHECK(world.Repair("/all") == 0);
    CHECK(world.ShowsButton());
}

TEST_CASE("the button is on the usual bar because the bar that is named does not exist") {
    World world;
    PutText(HKEY_CURRENT_USER, addInKey, "103Bar", "No such bar");
    CHECK(world.Check() == "1 PlacementBar");
    CHECK(world.Repair("/all") == 0);
}

TEST_CASE("two faults at once are both found and both mended") {
    World world(16);
    world.Disable(1);
    PutNumber(HKEY_CURRENT_USER, addIns, "LoadBehavior", 2);
    FindAndMend(world, "Load2 DisabledCrash");
}

TEST_CASE("what was repaired can be taken back with the file that was written") {
    World world;
    PutNumber(HKEY_CURRENT_USER, addIns, "LoadBehavior", 2);
    const auto before = World::Registry();
    CHECK(world.Repair() == 0);
    WIN32_FIND_DATAA found{};
    const HANDLE search = FindFirstFileA(world.Path("AppData\\Corvella\\CorvellaCheck *.reg").c_str(), &found);
    REQUIRE(search != INVALID_HANDLE_VALUE);
    FindClose(search);
    const ChildProcess regedit("regedit /S \"" + world.Path(std::string("AppData\\Corvella\\") + found.cFileName) +
                               "\"");
    CHECK(regedit.End() == 0);
    CHECK(World::Registry() == before);
}

TEST_CASE("the report speaks the user's language") {
    World world;
    world.Write("AppData\\Corvella\\corvella.ini", "[Settings]\r\nLanguage=Deutsch\r\n");
    world.Check();
    CHECK(world.Report().find("Outlook 2003") != std::string::npos);
    CHECK(world.Report().find("Everything is fine.") == std::string::npos);
}
