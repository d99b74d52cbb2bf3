// What registration writes and takes away, also where a step fails.
#include "platform/com/Registration.h"

#include <doctest.h>
#include <windows.h>

#include <map>
#include <string>

#include "platform/Module.h"
#include "testing/PrivateRegistry.h"

namespace {

constexpr platform::ServerDescription server{
    "{0A3B5E72-6C1D-4F98-B2A4-8E90D7C6F135}",
    "CVTestAddIn.Connect",
    "CVTestAddIn.Connect",
    "Corvella",
    "Corvella Add-In for Outlook 2000, 2002 (XP), 2003",
    3,
    nullptr,
};
const std::string classKey = std::string("CLSID\\") + server.clsid;
const std::string programKey = server.progId;
const std::string userClasses = "Software\\Classes\\";
const std::string office = "Software\\Microsoft\\Office";
const std::string addinKey = office + "\\Outlook\\Addins\\" + server.progId;

using Contents = std::map<std::string, std::string>;

// Every key below `root` by its path in brackets, and every value as "type:bytes".
void Collect(HKEY root, const std::string& path, Contents& contents) {
    HKEY key = nullptr;
    REQUIRE(RegOpenKeyExA(root, path.c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS);
    contents["[" + path + "]"] = "";
    char name[256];
    BYTE data[512];
    DWORD length = sizeof name;
    DWORD size = sizeof data;
    DWORD type = 0;
    for (DWORD i = 0; RegEnumValueA(key, i, name, &length, nullptr, &type, data, &size) == ERROR_SUCCESS; ++i) {
        contents[path + "\\" + name] =
            std::to_string(type) + ":" + std::string(reinterpret_cast<const char*>(data), size);
        length = sizeof name;
        size = sizeof data;
    }
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof name) == ERROR_SUCCESS; ++i) {
        Collect(root, path.empty() ? name : path + "\\" + name, contents);
    }
    RegCloseKey(key);
}

Contents ContentsOf(HKEY root) {
    Contents contents;
    Collect(root, "", contents);
    return contents;
}

Contents Everything() {
    Contents all;
    for (HKEY root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        const std::string name = std::to_string(reinterpret_cast<std::uintptr_t>(root));
        for (const auto& [path, value] : ContentsOf(root)) all[name + path] = value;
    }
    return all;
}

std::string Text(HKEY root, const std::string& key, const char* name) {
    const auto value = PrivateRegistry::Raw(root, key, name);
    return value.present && value.type == REG_SZ ? std::string(value.bytes.c_str()) : "(none)";
}

// Lets nothing be written in a root until the private registry goes: a key that is deleted while it is open
// refuses every call.
void Refuse(HKEY root) {
    HKEY refusing = nullptr;
    REQUIRE(RegCreateKeyA(HKEY_LOCAL_MACHINE, "Refusing", &refusing) == ERROR_SUCCESS);
    REQUIRE(RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Refusing") == ERROR_SUCCESS);
    REQUIRE(RegOverridePredefKey(root, refusing) == ERROR_SUCCESS);
    HKEY none = nullptr;
    REQUIRE(RegCreateKeyA(root, "x", &none) != ERROR_SUCCESS);
}

bool Register() { return platform::RegisterServer(server, platform::ModulePath()); }

}  // namespace

// Registration.cpp needs nothing of it, but the library that it lies in does.
const platform::ServerDescription& platform::Server() { return server; }

TEST_CASE("the class is registered by its id and by its name") {
    const PrivateRegistry registry;
    REQUIRE(Register());
    CHECK(Text(HKEY_CLASSES_ROOT, classKey, "") == server.className);
    CHECK(Text(HKEY_CLASSES_ROOT, classKey + "\\InprocServer32", "") == platform::ModulePath());
    CHECK(Text(HKEY_CLASSES_ROOT, classKey + "\\InprocServer32", "ThreadingModel") == "Apartment");
    CHECK(Text(HKEY_CLASSES_ROOT, classKey + "\\ProgID", "") == server.progId);
    CHECK(Text(HKEY_CLASSES_ROOT, programKey, "") == server.className);
    CHECK(Text(HKEY_CLASSES_ROOT, programKey + "\\CLSID", "") == server.clsid);
}

TEST_CASE("Outlook finds the add-in with its names and is told to load it at its start") {
    const PrivateRegistry registry;
    REQUIRE(Register());
    CHECK(Text(HKEY_CURRENT_USER, addinKey, "FriendlyName") == "Corvella");
    CHECK(Text(HKEY_CURRENT_USER, addinKey, "Description") == "Corvella Add-In for Outlook 2000, 2002 (XP), 2003");
    const auto behaviour = PrivateRegistry::Raw(HKEY_CURRENT_USER, addinKey, "LoadBehavior");
    CHECK(behaviour.type == REG_DWORD);
    CHECK(behaviour.bytes == std::string("\3\0\0\0", 4));
}

TEST_CASE("registration writes only the class, its name and the add-in") {
    const PrivateRegistry registry;
    const Contents before = Everything();
    REQUIRE(Register());
    Contents added = Everything();
    for (const auto& [path, value] : before) added.erase(path);
    const std::size_t values = 4 + 2 + 3;
    const std::size_t keys = 4 + 2 + 6;  // from CLSID down, the name and its CLSID, from Software down to the add-in
    CHECK(added.size() == values + keys);
    for (const auto& [path, value] : added) CHECK(path.find("TypeLib") == std::string::npos);
}

TEST_CASE("where the classes of the machine are refused the user's own are taken") {
    const PrivateRegistry registry;
    Refuse(HKEY_CLASSES_ROOT);
    REQUIRE(Register());
    CHECK(Text(HKEY_CURRENT_USER, userClasses + classKey, "") == server.className);
    CHECK(Text(HKEY_CURRENT_USER, userClasses + classKey + "\\InprocServer32", "") == platform::ModulePath());
    CHECK(Text(HKEY_CURRENT_USER, userClasses + classKey + "\\InprocServer32", "ThreadingModel") == "Apartment");
    CHECK(Text(HKEY_CURRENT_USER, userClasses + classKey + "\\ProgID", "") == server.progId);
    CHECK(Text(HKEY_CURRENT_USER, userClasses + programKey + "\\CLSID", "") == server.clsid);
    CHECK(Text(HKEY_CURRENT_USER, addinKey, "FriendlyName") == "Corvella");
}

TEST_CASE("a registration for the machine leaves the user's own classes alone") {
    const PrivateRegistry registry;
    REQUIRE(Register());
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, "Software\\Classes"));
}

TEST_CASE("a registration that cannot be finished leaves nothing behind") {
    const PrivateRegistry registry;
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "CLSID\\{other}", "", "other");
    const Contents before = ContentsOf(HKEY_CLASSES_ROOT);
    Refuse(HKEY_CURRENT_USER);
    CHECK_FALSE(Register());
    CHECK(ContentsOf(HKEY_CLASSES_ROOT) == before);
}

TEST_CASE("a library that is not where its path says is not registered") {
    const PrivateRegistry registry;
    const Contents before = Everything();
    CHECK_FALSE(platform::RegisterServer(server, "C:\\no such folder\\CVOutlookAddIn.dll"));
    CHECK_FALSE(platform::RegisterServer(server, ""));
    CHECK(Everything() == before);
}

TEST_CASE("a second registration repairs what was changed after the first") {
    const PrivateRegistry registry;
    REQUIRE(Register());
    const Contents first = Everything();
    PrivateRegistry::Put(HKEY_CURRENT_USER, addinKey, "LoadBehavior", REG_DWORD, std::string("\2\0\0\0", 4));
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, classKey + "\\InprocServer32", "", "C:\\elsewhere.dll");
    REQUIRE(Register());
    CHECK(Everything() == first);
}

TEST_CASE("unregistration leaves nothing behind, not even the keys above that are empty now") {
    const PrivateRegistry registry;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Microsoft\\Other", "", "other");
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "CLSID\\{other}", "", "other");
    const Contents before = Everything();
    REQUIRE(Register());
    CHECK(Everything() != before);
    CHECK(platform::UnregisterServer(server));
    CHECK(Everything() == before);
}

TEST_CASE("unregistration removes the machine's and the user's entries alike") {
    const PrivateRegistry registry;
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "CLSID\\{other}", "", "other");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Classes\\.txt", "", "textfile");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Microsoft\\Other", "", "other");
    const Contents before = Everything();
    PrivateRegistry::PutText(HKEY_CURRENT_USER, userClasses + classKey + "\\InprocServer32", "", "C:\\old.dll");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, userClasses + programKey + "\\CLSID", "", server.clsid);
    REQUIRE(Register());
    CHECK(platform::UnregisterServer(server));
    CHECK(Everything() == before);
}

TEST_CASE("unregistration keeps a key above in which a value or another key is left") {
    const PrivateRegistry registry;
    REQUIRE(Register());
    PrivateRegistry::PutText(HKEY_CURRENT_USER, office, "Kept", "yes");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, office + "\\Outlook\\Addins\\Other.AddIn", "FriendlyName", "Other");
    CHECK(platform::UnregisterServer(server));
    CHECK(Text(HKEY_CURRENT_USER, office + "\\Outlook\\Addins\\Other.AddIn", "FriendlyName") == "Other");
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, addinKey));

    RegDeleteKeyA(HKEY_CURRENT_USER, (office + "\\Outlook\\Addins\\Other.AddIn").c_str());
    REQUIRE(Register());
    CHECK(platform::UnregisterServer(server));
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, office + "\\Outlook"));
    CHECK(Text(HKEY_CURRENT_USER, office, "Kept") == "yes");
}

TEST_CASE("unregistration also removes what the host or an installer wrote below the add-in's own keys") {
    const PrivateRegistry registry;
    REQUIRE(Register());
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, classKey + "\\Implemented Categories\\{1}\\deep", "", "x");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, addinKey + "\\More", "Value", "x");
    CHECK(platform::UnregisterServer(server));
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CLASSES_ROOT, classKey));
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, addinKey));
}

TEST_CASE("what was never registered is unregistered without a complaint") {
    const PrivateRegistry registry;
    const Contents before = Everything();
    CHECK(platform::UnregisterServer(server));
    CHECK(Everything() == before);
}

TEST_CASE("an entry that cannot be removed is told, and the others are removed all the same") {
    const PrivateRegistry registry;
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "CLSID\\{other}", "", "other");
    const Contents before = ContentsOf(HKEY_CLASSES_ROOT);
    REQUIRE(Register());
    Refuse(HKEY_CURRENT_USER);
    CHECK_FALSE(platform::UnregisterServer(server));
    CHECK(ContentsOf(HKEY_CLASSES_ROOT) == before);
}
