// A hand-off against the calls of Windows that it must make: the list read, written, and read back; and the timer
// stopped and started where it is armed.
#include <windows.h>

#include <vector>

#include "bench/Bench.h"
#include "bench/PrivateKey.h"
#include "bridge/CVOutlAddIn.h"
#include "bridge/FormOlAddInTimer.h"

namespace {

constexpr int rounds = 101;
constexpr int calls = 20;  // so short that a busy machine disturbs few of the rounds
constexpr double target = 1.3;
constexpr const char* subkey = "Software\\Quillmark\\Corvella\\Outlook";
constexpr const char* listName = "ChangedC";

// As long as Outlook's own.
std::string EntryId(int number) {
    char id[141];
    std::snprintf(id, sizeof id, "%0140X", static_cast<unsigned>(number));
    return id;
}

void Read() {
    HKEY key = nullptr;
    DWORD type = 0;
    DWORD size = 0;
    RegOpenKeyA(HKEY_CURRENT_USER, subkey, &key);
    RegQueryValueExA(key, listName, nullptr, &type, nullptr, &size);
    static std::vector<BYTE> data(100000);
    RegQueryValueExA(key, listName, nullptr, nullptr, data.data(), &size);
    RegCloseKey(key);
}

void Write(const std::string& list) {
    HKEY key = nullptr;
    RegCreateKeyA(HKEY_CURRENT_USER, subkey, &key);
    RegSetValueExA(key, listName, 0, REG_SZ, reinterpret_cast<const BYTE*>(list.c_str()),
                   static_cast<DWORD>(list.size()));
    RegCloseKey(key);
}

std::size_t StoredSize() {
    HKEY key = nullptr;
    DWORD size = 0;
    RegOpenKeyA(HKEY_CURRENT_USER, subkey, &key);
    RegQueryValueExA(key, listName, nullptr, nullptr, nullptr, &size);
    RegCloseKey(key);
    return size;
}

}  // namespace

int main(int argc, char** argv) {
    const PrivateKey privateKey;
    std::vector<std::string> ids;
    std::vector<std::string> lists{""};
    for (int i = 0; i < calls; ++i) {
        ids.push_back(EntryId(i));
        lists.push_back(lists.back() + ";" + ids.back());
    }
    std::size_t next = 0;
    const auto prepare = [&] {
        next = 0;
        Write(";");
    };
    const auto bare = [&] {
        Read();
        Write(lists[++next]);
        Read();
    };
    Bench::Report report;
    report.Add("AddChangedItem",
               Bench::TakeTurns(rounds, calls, prepare, bare,
                                [&] { CVOutlAddIn::AddChangedItem(ids[next++], 'C', true, false); }),
               target);
    const HWND window = CreateWindowExA(0, "Static", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    const auto bareAndTimer = [&] {
        bare();
        KillTimer(window, 1);
        SetTimer(window, 1, 300, nullptr);
    };
    report.Add("AddChangedItem that arms the timer",
               Bench::TakeTurns(rounds, calls, prepare, bareAndTimer,
                                [&] { CVOutlAddIn::AddChangedItem(ids[next++], 'C', true, true); }),
               target);
    DestroyWindow(window);
    if (StoredSize() < lists.back().size()) return 2;  // nothing was listed, and nothing measured
    FormOlAddInTimer::Unload();
    return report.Finish(argc, argv);
}
