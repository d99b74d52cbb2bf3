// bench/ImportCounter.h: counts the calls that a loaded library makes of functions it imports by name from another.
//
// Each such entry of its import table is replaced by a few instructions that count and go on to the real function, and
// put back at the end of this object's life. 32-bit code only.
#pragma once
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

class ImportCounter {
  public:
    ImportCounter(HMODULE library, const char* imported, std::string_view prefix) {
        thunks_ = static_cast<BYTE*>(VirtualAlloc(nullptr, 0x1000, MEM_COMMIT, PAGE_EXECUTE_READWRITE));
        auto* base = reinterpret_cast<BYTE*>(library);
        const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
        const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS32*>(base + dos->e_lfanew);
        const DWORD table = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + table); from->Name; ++from) {
            if (lstrcmpiA(reinterpret_cast<const char*>(base + from->Name), imported) != 0) continue;
            const auto* names = reinterpret_cast<const DWORD*>(base + from->OriginalFirstThunk);
            auto* entries = reinterpret_cast<void**>(base + from->FirstThunk);
            for (; *names; ++names, ++entries) {
                const auto* name = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + *names);
                if (std::string_view(reinterpret_cast<const char*>(name->Name)).starts_with(prefix)) Replace(entries);
            }
        }
    }
    ~ImportCounter() {
        for (const Replaced& entry : replaced_) *entry.place = entry.real;
        VirtualFree(thunks_, 0, MEM_RELEASE);
    }
    ImportCounter(const ImportCounter&) = delete;
    ImportCounter& operator=(const ImportCounter&) = delete;

    [[nodiscard]] std::uint32_t Calls() const { return calls_; }

  private:
    struct Replaced {
        void** place;
        void* real;
    };

    void Replace(void** place) {
        DWORD former = 0;
        VirtualProtect(place, sizeof *place, PAGE_READWRITE, &former);
        BYTE* code = thunks_ + replaced_.size() * 16;
        const auto counter = reinterpret_cast<std::uintptr_t>(&calls_);
        const auto distance = reinterpret_cast<std::uintptr_t>(*place) - reinterpret_cast<std::uintptr_t>(code + 11);
        code[0] = 0xFF;  // inc dword ptr [counter]
        code[1] = 0x05;
        std::memcpy(code + 2, &counter, 4);
        code[6] = 0xE9;  // jmp to the real function
        std::memcpy(code + 7, &distance, 4);
        replaced_.push_back({place, *place});
        *place = code;
    }

    std::uint32_t calls_ = 0;
    BYTE* thunks_;
    std::vector<Replaced> replaced_;
};
