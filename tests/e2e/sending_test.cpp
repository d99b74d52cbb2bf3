// Sending many selected contacts at once: the list is written once for 256 of them, and comes out as if each had been
// written by itself.
#include <doctest.h>

#include <string>
#include <utility>
#include <vector>

#include "e2e/Session.h"
#include "testing/ImportPatch.h"
#include "testing/Versions.h"

using e2e::Session;
using standin::FolderKind;

namespace {

constexpr int selected = 600;
constexpr std::size_t idLength = 140;
constexpr std::size_t mostUnlisted = 256;

std::string List() { return e2e::ReadValue(e2e::outlookKey, "ChangedC").value_or(""); }

// What is seen, and done, at each write of the list.
struct Writes {
    standin::Outlook* host = nullptr;
    std::vector<std::size_t> walked;  // items that the host was asked for before it, at most
    std::vector<std::size_t> listed;  // entries with it
    int fail = 0;                     // the next so many are refused
    bool cleared = false;             // the main application clears the list behind the first
};
Writes writes;

LONG WINAPI Write(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    const bool list = std::string(name) == "ChangedC";
    if (list && writes.fail > 0 && writes.fail--) return ERROR_ACCESS_DENIED;
    const LONG status = RegSetValueExA(key, name, reserved, type, data, size);
    if (!list) return status;
    writes.walked.push_back(static_cast<std::size_t>(writes.host->Calls()) / 2);  // Item and EntryID
    writes.listed.push_back(size / (idLength + 1));
    return status;
}

LONG WINAPI ClearBeforeRead(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    const bool between = std::string(name) == "ChangedC" && writes.listed.size() == 1 &&
                         writes.walked.front() < static_cast<std::size_t>(writes.host->Calls()) / 2;
    if (between && !std::exchange(writes.cleared, true)) RegDeleteValueA(key, name);
    return RegQueryValueExA(key, name, reserved, type, data, size);
}

struct Sending {
    explicit Sending(int version) : session({.version = version}) {
        session.host.Start();
        window = version < 10 ? session.host.OpenExplorer() : session.FirstWindow();
        for (int i = 0; i < selected; ++i) items.push_back(session.host.AddItem(FolderKind::Contacts));
        session.host.SwitchFolder(window, FolderKind::Contacts);
        session.host.Select(window, items);
        writes = {};
        writes.host = &session.host;
    }
    // `replaced`: another function of the registry's, beside the one that writes.
    void Click(std::vector<ImportPatch::Import> replaced = {}) {
        replaced.push_back({"ADVAPI32.dll", "RegSetValueExA", reinterpret_cast<void*>(&Write)});
        ImportPatch patch;
        REQUIRE(patch.Replace(GetModuleHandleA("CVOutlookAddIn.dll"), replaced) == static_cast<int>(replaced.size()));
        const standin::ControlView button = session.OwnControls(window, "107").front();
        session.host.ResetCalls();
        session.host.Click(button);
    }
    // The ids of the items from `first` on, but that of `without`, as they stand in a list.
    [[nodiscard]] std::string Ids(std::size_t first = 0, std::size_t without = selected) const {
        std::string ids;
        for (std::size_t i = first; i < items.size(); ++i) {
            if (i != without) ids += ";" + session.host.EntryId(items[i]);
        }
        return ids;
    }

    Session session;
    standin::Window window;
    std::vector<standin::Item> items;
};

}  // namespace

IN_EVERY_VERSION("six hundred selected contacts are listed in their order, by a write for every 256") {
    Sending sending(version);
    sending.Click();
    CHECK(List() == sending.Ids());
    CHECK(writes.listed == std::vector<std::size_t>{256, 512, 600});
}

IN_EVERY_VERSION("at no time are more than 256 items that were asked for not on the list") {
    Sending sending(version);
    sending.Click();
    REQUIRE(writes.walked.size() == 3);
    std::size_t before = 0;
    for (std::size_t i = 0; i < writes.walked.size(); ++i) {
        CHECK(writes.walked[i] - before <= mostUnlisted + 4);  // a few calls belong to the click itself
        before = writes.listed[i];
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
    CHECK(writes.listed.size() == 3);  // nothing was new the second time
}

IN_EVERY_VERSION("items of which a write fails come with the next write") {
    Sending sending(version);
    writes.fail = 2;  // it is tried twice
    sending.Click();
    CHECK(writes.fail == 0);
    CHECK(List() == sending.Ids());
}

IN_EVERY_VERSION("what Corvella takes from the list between two writes stays taken") {
    Sending sending(version);
    sending.Click({{"ADVAPI32.dll", "RegQueryValueExA", reinterpret_cast<void*>(&ClearBeforeRead)}});
    CHECK(writes.cleared);
    CHECK(List() == sending.Ids(256));
}

IN_EVERY_VERSION("an item that does not tell its id keeps no other one off the list") {
    Sending sending(version);
    sending.session.host.FailMember("ContactItem.EntryID", standin::Fault::Fails(E_FAIL), 1);
    sending.Click();
    CHECK(List() == sending.Ids(1));
}

IN_EVERY_VERSION("a list that cannot be read is left alone by a whole selection") {
    Sending sending(version);
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, e2e::outlookKey, &key);
    const char several[] = "one\0two\0";
    RegSetValueExA(key, "ChangedC", 0, REG_MULTI_SZ, reinterpret_cast<const BYTE*>(several), sizeof several);
    sending.Click();
    CHECK(writes.listed.empty());
    DWORD type = 0;
    CHECK(RegQueryValueExA(key, "ChangedC", nullptr, &type, nullptr, nullptr) == ERROR_SUCCESS);
    CHECK(type == REG_MULTI_SZ);
    RegCloseKey(key);
}
