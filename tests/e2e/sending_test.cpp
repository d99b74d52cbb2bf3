// Sending many selected contacts at once: the list is written once, and comes out as if each of them had been written
// by itself. What is not listed yet is noted in the registry for every 256 of them.
#include <doctest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "e2e/Session.h"
#include "testing/ImportPatch.h"
#include "testing/PrivateRegistry.h"
#include "testing/Versions.h"

using e2e::Session;
using standin::FolderKind;

namespace {

constexpr int selected = 600;
constexpr std::size_t idLength = 140;
constexpr std::size_t mostUnsafe = 256;
const std::string sendingKey = std::string(e2e::outlookKey) + "\\Sending";

std::string List() { return e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or(""); }

// What the registry has of a sending.
struct Kept {
    std::string list;
    std::vector<std::string> noted;

    static Kept Now() {
        Kept kept{List(), {}};
        for (int block = 1;; ++block) {
            const auto ids = e2e::ReadValue(sendingKey, "C" + std::to_string(block));
            if (!ids) return kept;
            kept.noted.push_back(*ids);
        }
    }
    void Restore() const {
        e2e::WriteValue(e2e::outlookKey, "ChangedC", list);
        for (std::size_t i = 0; i < noted.size(); ++i)
            e2e::WriteValue(sendingKey, "C" + std::to_string(i + 1), noted[i]);
    }
    [[nodiscard]] std::size_t Entries() const {
        std::size_t letters = list.size();
        for (const std::string& ids : noted) letters += ids.size();
        return letters / (idLength + 1);
    }
};

// What is seen, and done, at each write of the list or of a note.
struct Writes {
    standin::Outlook* host = nullptr;
    std::vector<std::size_t> walked;  // items that the host was asked for before it, at most
    std::vector<Kept> kept;           // what there is behind it
    std::vector<std::size_t> listed;  // entries of the list with it
    int failNotes = 0;                // the next so many are refused
    bool failList = false;
    bool clears = false;  // the main application clears the list behind each note
};
Writes writes;

LONG WINAPI Write(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    const bool list = std::string(name) == "ChangedC", note = std::string(name).starts_with('C') && !list;
    if (note && writes.failNotes > 0 && writes.failNotes--) return ERROR_ACCESS_DENIED;
    if (list && writes.failList) return ERROR_ACCESS_DENIED;
    const LONG status = RegSetValueExA(key, name, reserved, type, data, size);
    if (!list && !note) return status;
    if (note && writes.clears) e2e::WriteValue(e2e::outlookKey, "ChangedC", "");
    writes.walked.push_back(static_cast<std::size_t>(writes.host->Calls()) / 2);  // Item and EntryID
    if (list) writes.listed.push_back(size / (idLength + 1));
    writes.kept.push_back(Kept::Now());
    return status;
}

// Functions of the registry of which one call fails, or each from one on.
enum Function { Open, Create, Query, Set, DeleteKey, Functions };
struct Failing {
    int calls[Functions] = {};
    Function function = Functions;
    int number = 0;  // from 1
    bool forGood = false;

    bool Fails(Function called) {
        const int call = ++calls[called];
        return called == function && (forGood ? call >= number : call == number);
    }
};
Failing failing;

LONG WINAPI OpenOrFail(HKEY root, LPCSTR path, PHKEY key) {
    return failing.Fails(Open) ? ERROR_ACCESS_DENIED : RegOpenKeyA(root, path, key);
}
LONG WINAPI CreateOrFail(HKEY root, LPCSTR path, PHKEY key) {
    return failing.Fails(Create) ? ERROR_ACCESS_DENIED : RegCreateKeyA(root, path, key);
}
LONG WINAPI QueryOrFail(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    return failing.Fails(Query) ? ERROR_ACCESS_DENIED : RegQueryValueExA(key, name, reserved, type, data, size);
}
LONG WINAPI SetOrFail(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    return failing.Fails(Set) ? ERROR_ACCESS_DENIED : RegSetValueExA(key, name, reserved, type, data, size);
}
LONG WINAPI DeleteKeyOrFail(HKEY root, LPCSTR path) {
    return failing.Fails(DeleteKey) ? ERROR_ACCESS_DENIED : RegDeleteKeyA(root, path);
}
const ImportPatch::Import orFail[] = {{"ADVAPI32.dll", "RegOpenKeyA", reinterpret_cast<void*>(&OpenOrFail)},
                                      {"ADVAPI32.dll", "RegCreateKeyA", reinterpret_cast<void*>(&CreateOrFail)},
                                      {"ADVAPI32.dll", "RegQueryValueExA", reinterpret_cast<void*>(&QueryOrFail)},
                                      {"ADVAPI32.dll", "RegSetValueExA", reinterpret_cast<void*>(&SetOrFail)},
                                      {"ADVAPI32.dll", "RegDeleteKeyA", reinterpret_cast<void*>(&DeleteKeyOrFail)}};

struct Sending {
    explicit Sending(int version, int count = selected) : session({.version = version}) {
        session.host.Start();
        window = version < 10 ? session.host.OpenExplorer() : session.FirstWindow();
        for (int i = 0; i < count; ++i) items.push_back(session.host.AddItem(FolderKind::Contacts));
        session.host.SwitchFolder(window, FolderKind::Contacts);
        session.host.Select(window, items);
        writes = {};
        writes.host = &session.host;
    }
    void Click() {
        const ImportPatch::Import replaced[] = {{"ADVAPI32.dll", "RegSetValueExA", reinterpret_cast<void*>(&Write)}};
        ImportPatch patch;
        REQUIRE(patch.Replace(GetModuleHandleA("CVOutlookAddIn.dll"), replaced) == 1);
        const standin::ControlView button = session.OwnControls(window, "107").front();
        session.host.ResetCalls();
        session.host.Click(button);
    }
    void ClickWhile(const Failing& which) {
        ImportPatch patch;
        REQUIRE(patch.Replace(GetModuleHandleA("CVOutlookAddIn.dll"), orFail) == Functions);
        const standin::ControlView button = session.OwnControls(window, "107").front();
        failing = which;
        session.host.Click(button);
    }
    void StartAgain() {
        session.host.UnloadAddIn(e2e::progId);
        REQUIRE(session.LoadAddIn());
    }
    // The ids of the items from `first` on, but that of `without`, as they stand in a list.
    [[nodiscard]] std::string Ids(std::size_t first = 0, std::size_t without = selected) const {
        return IdsUpTo(items.size(), first, without);
    }
    [[nodiscard]] std::string IdsUpTo(std::size_t end, std::size_t first = 0, std::size_t without = selected) const {
        std::string ids;
        for (std::size_t i = first; i < end; ++i) {
            if (i != without) ids += ";" + session.host.EntryId(items[i]);
        }
        return ids;
    }

    Session session;
    standin::Window window;
    std::vector<standin::Item> items;
};

bool NothingIsNoted() { return Kept::Now().noted.empty(); }

// A value of a type that the add-in does not read.
void PutUnreadable(const std::string& path, const char* name) {
    PrivateRegistry::Put(HKEY_CURRENT_USER, path, name, REG_MULTI_SZ, std::string("one\0two\0\0", 9));
}
bool IsUnreadable(const std::string& path, const char* name) {
    return PrivateRegistry::Raw(HKEY_CURRENT_USER, path, name).type == REG_MULTI_SZ;
}

}  // namespace

IN_EVERY_VERSION("six hundred selected contacts are listed in their order by one write, and nothing stays noted") {
    Sending sending(version);
    sending.Click();
    CHECK(List() == sending.Ids());
    CHECK(writes.listed == std::vector<std::size_t>{600});
    CHECK(NothingIsNoted());
}

IN_EVERY_VERSION("at no time are more than 256 items that were asked for neither noted nor listed") {
    Sending sending(version);
    sending.Click();
    REQUIRE(writes.walked.size() == 3);
    std::size_t before = 0;
    for (std::size_t i = 0; i < writes.walked.size(); ++i) {
        CHECK(writes.walked[i] - before <= mostUnsafe + 4);  // a few calls belong to the click itself
        before = writes.kept[i].Entries();
    }
}

IN_EVERY_VERSION("whenever the host ends while it sends, the next start lists what was noted, each item once") {
    std::vector<Kept> moments;
    std::vector<std::string> expected;
    {
        Sending sending(version);
        sending.Click();
        REQUIRE(writes.kept.size() == 3);
        moments = writes.kept;
        expected = {sending.IdsUpTo(256), sending.IdsUpTo(512), sending.Ids()};
    }
    for (std::size_t i = 0; i < moments.size(); ++i) {
        Session session({.version = version});
        moments[i].Restore();
        session.host.Start();
        CHECK(List() == expected[i]);
        CHECK(NothingIsNoted());
    }
}

IN_EVERY_VERSION("an item that is selected and on the list already is not listed again") {
    Sending sending(version);
    const std::string earlier = ";" + sending.session.host.EntryId(sending.items[400]);
    e2e::WriteValue(e2e::outlookKey, "ChangedC", earlier);
    sending.Click();
    CHECK(List() == earlier + sending.Ids(0, 400));
    sending.Click();
    CHECK(List() == earlier + sending.Ids(0, 400));
    CHECK(writes.listed.size() == 1);  // nothing was new the second time
}

IN_EVERY_VERSION("items that could not be noted are noted with the next ones") {
    Sending sending(version);
    writes.failNotes = 1;
    sending.Click();
    CHECK(writes.failNotes == 0);
    REQUIRE(writes.kept.size() == 2);
    CHECK(writes.kept.front().noted == std::vector<std::string>{sending.IdsUpTo(512)});
    CHECK(List() == sending.Ids());
    CHECK(NothingIsNoted());
}

IN_EVERY_VERSION("a list that cannot be written keeps all items noted until it can") {
    Sending sending(version);
    writes.failList = true;
    sending.Click();
    CHECK(List().empty());
    CHECK(Kept::Now().Entries() == selected);
    sending.StartAgain();
    CHECK(List() == sending.Ids());
    CHECK(NothingIsNoted());
}

IN_EVERY_VERSION("what Corvella takes from the list meanwhile stays taken") {
    Sending sending(version);
    e2e::WriteValue(e2e::outlookKey, "ChangedC", ";EARLIER");
    writes.clears = true;
    sending.Click();
    CHECK(List() == sending.Ids());
}

IN_EVERY_VERSION("an item that does not tell its id keeps no other one off the list") {
    Sending sending(version);
    sending.session.host.FailMember("ContactItem.EntryID", standin::Fault::Fails(E_FAIL), 1);
    sending.Click();
    CHECK(List() == sending.Ids(1));
}

IN_EVERY_VERSION("a list that cannot be read is left alone by a whole selection, which stays noted") {
    Sending sending(version);
    PutUnreadable(e2e::outlookKey, "ChangedC");
    sending.Click();
    CHECK(writes.listed.empty());
    CHECK(IsUnreadable(e2e::outlookKey, "ChangedC"));
    CHECK(Kept::Now().Entries() == selected);
    e2e::WriteValue(e2e::outlookKey, "ChangedC", {});
    sending.StartAgain();
    CHECK(List() == sending.Ids());
    CHECK(NothingIsNoted());
}

IN_EVERY_VERSION("notes that cannot be read stay, and what is sent beside them is listed") {
    Sending sending(version);
    e2e::WriteValue(sendingKey, "C1", ";EARLIER");
    PutUnreadable(sendingKey, "C2");
    sending.Click();
    CHECK(List() == sending.Ids());
    CHECK(e2e::ReadValue(sendingKey, "C1") == ";EARLIER");
    CHECK(IsUnreadable(sendingKey, "C2"));
}

IN_EVERY_VERSION("notes of an earlier sending are listed before a later one is noted") {
    Sending sending(version);
    e2e::WriteValue(sendingKey, "C1", ";EARLIER");
    sending.Click();
    CHECK(List() == ";EARLIER" + sending.Ids());
    CHECK(NothingIsNoted());
}

TEST_CASE(
    "whichever call of the registry fails while many are sent, none is lost or listed twice, and nothing earlier") {
    constexpr int count = 300;
    Failing none;
    {
        Sending sending(11, count);
        sending.ClickWhile({});
        none = failing;
    }
    const std::string earlier = ";EARLIER";
    for (int function = 0; function < Functions; ++function) {
        REQUIRE(none.calls[function] > 0);
        for (int number = 1; number <= none.calls[function]; ++number) {
            for (const bool forGood : {false, true}) {
                CAPTURE(function);
                CAPTURE(number);
                CAPTURE(forGood);
                Sending sending(11, count);
                e2e::WriteValue(e2e::outlookKey, "ChangedC", earlier);
                Failing which;
                which.function = static_cast<Function>(function), which.number = number, which.forGood = forGood;
                sending.ClickWhile(which);
                sending.StartAgain();
                const std::string list = List();
                if (!forGood) CHECK(list == earlier + sending.Ids());
                // Where nothing can be read or written any more, what was written before is there.
                const bool whole =
                    list == earlier || list == earlier + sending.IdsUpTo(256) || list == earlier + sending.Ids();
                CHECK(whole);
                CHECK(NothingIsNoted());
            }
        }
    }
}
