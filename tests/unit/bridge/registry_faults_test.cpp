// What becomes of a registry that fails: this program puts functions of its own before Windows' registry functions,
// which count the calls and fail when a test says so.
#include <doctest.h>
#include <windows.h>

#include <string>
#include <utility>

#include "bridge/CVOutlAddIn.h"
#include "bridge/FormOlAddInTimer.h"
#include "platform/Err.h"
#include "support/Debug.h"
#include "support/RegEdit.h"
#include "testing/ImportName.h"
#include "testing/PrivateRegistry.h"
#include "testing/RealFunction.h"
#include "testing/TempFolder.h"

using namespace RegEdit;
using platform::Err;

namespace {

struct Faults {
    int failCreates = 0;  // so many of the next calls fail
    int failSets = 0;
    int failDeletes = 0;
    int failReads = 0;
    bool growBetweenReads = false;
    std::string longerMeanwhile;  // what another process writes once between the question for the size and the read
    int creates = 0;
    int sets = 0;
    int deletes = 0;
    int opened = 0;
    int closed = 0;
};
Faults faults;

bool Fails(int& count) { return count > 0 && count-- > 0; }

LONG WINAPI Open(HKEY root, LPCSTR subkey, PHKEY key) {
    const LONG status = Real<decltype(&RegOpenKeyA)>("advapi32.dll", "RegOpenKeyA")(root, subkey, key);
    if (status == ERROR_SUCCESS) ++faults.opened;
    return status;
}
LONG WINAPI Create(HKEY root, LPCSTR subkey, PHKEY key) {
    ++faults.creates;
    if (Fails(faults.failCreates)) return ERROR_ACCESS_DENIED;
    const LONG status = Real<decltype(&RegCreateKeyA)>("advapi32.dll", "RegCreateKeyA")(root, subkey, key);
    if (status == ERROR_SUCCESS) ++faults.opened;
    return status;
}
LONG WINAPI Close(HKEY key) {
    ++faults.closed;
    return Real<decltype(&RegCloseKey)>("advapi32.dll", "RegCloseKey")(key);
}
LONG WINAPI Query(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (data != nullptr && Fails(faults.failReads)) return ERROR_ACCESS_DENIED;
    if (data != nullptr && faults.growBetweenReads) *size /= 2;  // as if the value had become longer meanwhile
    if (data != nullptr && !faults.longerMeanwhile.empty()) {
        const std::string text = std::exchange(faults.longerMeanwhile, {});
        Real<decltype(&RegSetValueExA)>("advapi32.dll", "RegSetValueExA")(
            key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.data()), static_cast<DWORD>(text.size()));
    }
    return Real<decltype(&RegQueryValueExA)>("advapi32.dll", "RegQueryValueExA")(key, name, reserved, type, data, size);
}
LONG WINAPI Set(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    ++faults.sets;
    if (Fails(faults.failSets)) return ERROR_ACCESS_DENIED;
    return Real<decltype(&RegSetValueExA)>("advapi32.dll", "RegSetValueExA")(key, name, reserved, type, data, size);
}
LONG WINAPI DeleteOne(HKEY key, LPCSTR name) {
    ++faults.deletes;
    if (Fails(faults.failDeletes)) return ERROR_ACCESS_DENIED;
    return Real<decltype(&RegDeleteValueA)>("advapi32.dll", "RegDeleteValueA")(key, name);
}

}  // namespace

// The names under which calls of imported functions are linked; these come before the import library's.
extern "C" {
extern decltype(&Open) importOpen __asm__(IMPORT_NAME("RegOpenKeyA", "12"));
extern decltype(&Create) importCreate __asm__(IMPORT_NAME("RegCreateKeyA", "12"));
extern decltype(&Close) importClose __asm__(IMPORT_NAME("RegCloseKey", "4"));
extern decltype(&Query) importQuery __asm__(IMPORT_NAME("RegQueryValueExA", "24"));
extern decltype(&Set) importSet __asm__(IMPORT_NAME("RegSetValueExA", "24"));
extern decltype(&DeleteOne) importDelete __asm__(IMPORT_NAME("RegDeleteValueA", "8"));
decltype(&Open) importOpen = Open;
decltype(&Create) importCreate = Create;
decltype(&Close) importClose = Close;
decltype(&Query) importQuery = Query;
decltype(&Set) importSet = Set;
decltype(&DeleteOne) importDelete = DeleteOne;
}

namespace {

const std::string subkey = "Software\\Quillmark\\Corvella\\Test";
const std::string listKey = "Software\\Quillmark\\Corvella\\Outlook";

bool Save(std::string_view text, std::int32_t type) {
    return SaveRegValue(Root::CurrentUser, std::string_view(subkey), "name", text, type);
}

std::string Read() { return GetRegString(Root::CurrentUser, subkey, "name"); }

struct Fixture {
    Fixture() {
        Debug::state = {};
        Debug::state.DebugFile = folder.Path("log");
        Debug::state.DebugActive = true;
        Debug::state.DebugLevel = 1;
        Err().Clear();
        faults = {};
    }
    ~Fixture() {
        faults = {};
        FormOlAddInTimer::Unload();
        Debug::state = {};
    }
    [[nodiscard]] int ErrorEntries() const {
        const std::string log = folder.Read("log");
        int count = 0;
        for (std::size_t at = 0; (at = log.find("RegEdit error: 80000001: " + subkey + " name\r\n", at)) != log.npos;
             ++at) {
            ++count;
        }
        return count;
    }

    PrivateRegistry registry;
    TempFolder folder;
};

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the functions of this program stand before Windows' own") {
    REQUIRE(Save("x", TypeText));
    CHECK(faults.creates == 1);
    CHECK(faults.sets == 1);
}

TEST_CASE_FIXTURE(Fixture, "a write that fails returns false and is logged once") {
    faults.failSets = 1;
    CHECK_FALSE(Save("x", TypeText));
    CHECK(ErrorEntries() == 1);
    CHECK(folder.Read("log").find("5:") == 0);
    CHECK(Err().Number() == 0);
}

TEST_CASE_FIXTURE(Fixture, "a key that cannot be made is not written to, and logged once with the reason") {
    faults.failCreates = 1;
    CHECK_FALSE(Save("x", TypeText));
    CHECK(faults.sets == 0);
    CHECK(ErrorEntries() == 1);
    CHECK(folder.Read("log").find("5:") == 0);
}

TEST_CASE_FIXTURE(Fixture, "a value that cannot be deleted returns false and is logged") {
    REQUIRE(Save("x", TypeText));
    faults.failDeletes = 2;
    CHECK_FALSE(DeleteRegValue(Root::CurrentUser, subkey, "name"));
    CHECK(ErrorEntries() == 2);
    CHECK(Read() == "x");
}

TEST_CASE_FIXTURE(Fixture, "a number whose write fails is deleted and written once more") {
    faults.failSets = 1;
    CHECK(Save("7", TypeNumber));
    CHECK(faults.sets == 2);
    CHECK(faults.deletes == 1);
    CHECK(ErrorEntries() == 0);
    CHECK(Read() == "7");
}

TEST_CASE_FIXTURE(Fixture, "a number whose second write fails too returns false and is logged once") {
    faults.failSets = 2;
    CHECK_FALSE(Save("7", TypeNumber));
    CHECK(faults.sets == 2);
    CHECK(ErrorEntries() == 1);
}

TEST_CASE_FIXTURE(Fixture, "a text whose write fails is not written once more") {
    faults.failSets = 1;
    CHECK_FALSE(Save("x", TypeText));
    CHECK(faults.sets == 1);
    CHECK(faults.deletes == 0);
}

TEST_CASE_FIXTURE(Fixture, "a value that fails between its size and its data reads as the empty text") {
    REQUIRE(Save("text", TypeText));
    faults.failReads = 1;
    CHECK(Read().empty());
    faults.growBetweenReads = true;
    CHECK(Read().empty());
    REQUIRE(folder.Read("log").empty());
    faults.growBetweenReads = false;
    REQUIRE(Save("7", TypeNumber));
    faults.failReads = 1;
    CHECK(Read().empty());
}

TEST_CASE_FIXTURE(Fixture, "deleting a value that does not exist does not touch the registry") {
    CHECK(DeleteRegValue(Root::CurrentUser, subkey, "name"));
    CHECK(faults.creates == 0);
    CHECK(faults.deletes == 0);
    CHECK(faults.sets == 0);
}

TEST_CASE_FIXTURE(Fixture, "a value that exists is deleted twice") {
    REQUIRE(Save("x", TypeText));
    CHECK(DeleteRegValue(Root::CurrentUser, subkey, "name"));
    CHECK(faults.deletes == 2);
}

TEST_CASE_FIXTURE(Fixture, "every key that is opened is closed again") {
    Save("x", TypeText);
    Save("7", TypeNumber);
    Save("seven", TypeNumber);
    faults.failSets = 1;
    Save("x", TypeText);
    faults.failReads = 1;
    Read();
    DeleteRegValue(Root::CurrentUser, subkey, "name");
    CHECK(faults.opened > 5);
    CHECK(faults.opened == faults.closed);
}

TEST_CASE_FIXTURE(Fixture, "a hand-off whose write fails leaves the list as it was and still arms the timer") {
    const std::string outlookKey = "Software\\Quillmark\\Corvella\\Outlook";
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    faults.failSets = 1000;
    CVOutlAddIn::AddChangedItem("0B", 'C', true, true);
    CHECK(GetRegString(Root::CurrentUser, outlookKey, "ChangedC") == ";0A");
    CHECK(FormOlAddInTimer::Load().TimerUpdate.Enabled());
    CHECK(Err().Number() == 0);
}

TEST_CASE_FIXTURE(Fixture, "a hand-off whose write fails once is written the second time") {
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    faults.failSets = 1;
    CVOutlAddIn::AddChangedItem("0B", 'C', true, false);
    CHECK(GetRegString(Root::CurrentUser, listKey, "ChangedC") == ";0A;0B");
}

TEST_CASE_FIXTURE(Fixture, "a switch that cannot be read is neither asked for anew nor overwritten") {
    REQUIRE(SaveRegValue(Root::CurrentUser, std::string_view(listKey), "AutoC", "1", TypeText));
    faults.failReads = 1000;
    faults.sets = 0;
    CVOutlAddIn::AddChangedItem("0A", 'C', false, true);
    faults.failReads = 0;
    CHECK(faults.sets == 0);
    CHECK(GetRegString(Root::CurrentUser, listKey, "AutoC") == "1");
    CVOutlAddIn::AddChangedItem("0A", 'C', false, true);
    CHECK(GetRegString(Root::CurrentUser, listKey, "ChangedC") == ";0A");
}

TEST_CASE_FIXTURE(Fixture, "a value that another process makes longer between its size and its data is read whole") {
    REQUIRE(Save("short", TypeText));
    faults.longerMeanwhile = "a text that is much longer than the one before";
    CHECK(Read() == "a text that is much longer than the one before");
}

TEST_CASE_FIXTURE(Fixture, "a list that cannot be read once is read again, and the item added to it") {
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    faults.failReads = 1;
    CVOutlAddIn::AddChangedItem("0B", 'C', true, false);
    faults.failReads = 0;
    CHECK(GetRegString(Root::CurrentUser, listKey, "ChangedC") == ";0A;0B");
}

TEST_CASE_FIXTURE(Fixture, "a list that cannot be read is not overwritten, and the timer is armed") {
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    faults.failReads = 1000;
    CVOutlAddIn::AddChangedItem("0B", 'C', true, true);
    faults.failReads = 0;
    CHECK(GetRegString(Root::CurrentUser, listKey, "ChangedC") == ";0A");
    CHECK(FormOlAddInTimer::Load().TimerUpdate.Enabled());
}

TEST_CASE_FIXTURE(Fixture, "a list that another process makes longer meanwhile keeps all entries") {
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    faults.longerMeanwhile = ";0A;0B;0C;0D;0E";
    CVOutlAddIn::AddChangedItem("0F", 'C', true, false);
    CHECK(GetRegString(Root::CurrentUser, listKey, "ChangedC") == ";0A;0B;0C;0D;0E;0F");
}

TEST_CASE_FIXTURE(Fixture, "a list of a type that is not read is not overwritten") {
    HKEY key = nullptr;
    REQUIRE(RegCreateKeyA(HKEY_CURRENT_USER, listKey.c_str(), &key) == ERROR_SUCCESS);
    REQUIRE(RegSetValueExA(key, "ChangedC", 0, REG_MULTI_SZ, reinterpret_cast<const BYTE*>("a\0b\0"), 5) == 0);
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    DWORD type = 0;
    CHECK(RegQueryValueExA(key, "ChangedC", nullptr, &type, nullptr, nullptr) == ERROR_SUCCESS);
    CHECK(type == REG_MULTI_SZ);
    RegCloseKey(key);
}

TEST_CASE_FIXTURE(Fixture, "a hand-off of an item that is already listed writes nothing") {
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    faults.sets = 0;
    CVOutlAddIn::AddChangedItem("0A", 'C', true, false);
    CHECK(faults.sets == 0);
}

TEST_CASE_FIXTURE(Fixture, "a note of a sending that was written and could not be read back goes with the others") {
    CVOutlAddIn::HandOff sending('C');
    for (std::size_t i = 1; i < CVOutlAddIn::HandOff::itemsABlock; ++i) sending.Add(std::to_string(i));
    faults.failReads = 1;
    sending.Add("last");
    REQUIRE(faults.failReads == 0);
    REQUIRE(GetRegString(Root::CurrentUser, listKey + "\\Sending", "C1").ends_with(";last"));
    sending.Finish();
    CHECK(GetRegString(Root::CurrentUser, listKey, "ChangedC").ends_with(";last"));
    CHECK(GetRegString(Root::CurrentUser, listKey + "\\Sending", "C1").empty());
}
