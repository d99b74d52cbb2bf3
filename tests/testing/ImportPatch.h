// testing/ImportPatch.h: puts functions of a test in place of those that a loaded module imports by name, for as long
// as it lives. The module's own code stays as it is, and so does everything that Windows does for itself. The module is
// of this process, so its pointers are as long as the test's own.
#pragma once
#include <windows.h>

#include <vector>

class ImportPatch {
  public:
    struct Import {
        const char* library;
        const char* name;
        void* instead;
    };

    ImportPatch() = default;
    ~ImportPatch() {
        for (auto entry = replaced_.rbegin(); entry != replaced_.rend(); ++entry) *entry->place = entry->real;
    }
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    // Those of `imports` that `module` has; how many these are.
    template <class Imports>
    int Replace(HMODULE module, const Imports& imports) {
        int found = 0;
        for (const Import& import : imports) found += ReplaceOne(module, import);
        return found;
    }

    // What is replaced stays so, until the module goes.
    void Keep() { replaced_.clear(); }

  private:
    struct Replaced {
        void** place;
        void* real;
    };

    int ReplaceOne(HMODULE module, const Import& import) {
        auto* base = reinterpret_cast<BYTE*>(module);
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
        const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
        const DWORD table = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        int found = 0;
        for (const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); from->Name; ++from) {
            if (lstrcmpiA(reinterpret_cast<const char*>(base + from->Name), import.library) != 0) continue;
            const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
            auto* places = reinterpret_cast<void**>(base + from->FirstThunk);
            for (; names->u1.AddressOfData; ++names, ++places) {
                if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
                const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
                if (lstrcmpA(reinterpret_cast<const char*>(name->Name), import.name) != 0) continue;
                DWORD former = 0;
                VirtualProtect(places, sizeof *places, PAGE_READWRITE, &former);
                replaced_.push_back({places, *places});
                *places = import.instead;
                ++found;
            }
        }
        return found;
    }

    std::vector<Replaced> replaced_;
};
