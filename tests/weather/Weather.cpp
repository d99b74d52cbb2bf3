#include "weather/Weather.h"

#include <algorithm>

namespace weather {
namespace {

const Point* planned = nullptr;
const Place* target = nullptr;
bool counting = false;
int failed = 0;
void (*watcher)() = nullptr;

// Every import of a module: its library, its name and the place of its address. Those without a name are left out.
template <class See>
void ForEachImport(HMODULE module, See&& see) {
    auto* base = reinterpret_cast<BYTE*>(module);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos->e_lfanew);
    const DWORD table = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); from->Name; ++from) {
        const auto* library = reinterpret_cast<const char*>(base + from->Name);
        const auto* names = reinterpret_cast<const DWORD*>(base + from->OriginalFirstThunk);
        auto* places = reinterpret_cast<void**>(base + from->FirstThunk);
        for (; *names; ++names, ++places) {
            if ((*names & IMAGE_ORDINAL_FLAG32) != 0) continue;
            const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + *names);
            see(library, reinterpret_cast<const char*>(name->Name), places);
        }
    }
}

template <class Entry>
Entry* Find(std::vector<Entry>& entries, const char* library, const char* function) {
    for (Entry& entry : entries) {
        if (lstrcmpA(entry.function, function) == 0 && lstrcmpiA(entry.library, library) == 0) return &entry;
    }
    return nullptr;
}

}  // namespace

std::vector<std::string> Unlisted(HMODULE library) {
    std::vector<std::string> unlisted;
    std::vector<Fair> fairs = Fairs();
    ForEachImport(library, [&](const char* from, const char* name, void**) {
        if (!Find(Places(), from, name) && !Find(fairs, from, name)) unlisted.push_back(std::string(from) + " " + name);
    });
    return unlisted;
}

void Over(HMODULE library) {
    ForEachImport(library, [](const char* from, const char* name, void** address) {
        Place* place = Find(Places(), from, name);
        if (!place) return;
        place->real = *address;
        DWORD former = 0;
        VirtualProtect(address, sizeof *address, PAGE_READWRITE, &former);
        *address = place->instead;
    });
}

void Begin(const Point* point) {
    for (Place& place : Places()) place.calls = 0;
    failed = 0;
    planned = point;
    target = nullptr;
    for (const Place& place : Places()) {
        if (point && point->function == place.function) target = &place;
    }
    counting = true;
}

void Watch(void (*told)()) { watcher = told; }

void End() { counting = false; }

int Failed() { return failed; }

bool IsToFail(Place& place) noexcept {
    if (!counting) return false;
    ++place.calls;
    if (target != &place) return false;
    const bool fails = planned->way == Way::Once ? place.calls == planned->number : place.calls >= planned->number;
    if (fails && ++failed == 1 && watcher) watcher();
    return fails;
}

}  // namespace weather
