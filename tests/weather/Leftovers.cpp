#include "weather/Leftovers.h"

#include <ole2.h>

#include <cstdlib>
#include <set>

#include "testing/HandleCount.h"
#include "testing/ImportPatch.h"

namespace weather {
namespace {

// --- the library's memory; this program's own calls lead to the same runtime

std::set<void*> blocks;  // of those that have gone, too
void* Noted(void* block) {
    if (block) blocks.insert(block);
    return block;
}
void* Malloc(std::size_t size) { return Noted(std::malloc(size)); }
void* Calloc(std::size_t count, std::size_t size) { return Noted(std::calloc(count, size)); }
void* Realloc(void* block, std::size_t size) {
    void* const moved = std::realloc(block, size);
    if (moved || size == 0) blocks.erase(block);
    return Noted(moved);
}
void Free(void* block) {
    blocks.erase(block);
    std::free(block);
}

// --- COM's memory

class Spy final : public IMallocSpy {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        const bool known = id == IID_IUnknown || id == IID_IMallocSpy;
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }  // as long as the process
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    SIZE_T STDMETHODCALLTYPE PreAlloc(SIZE_T size) override { return size; }
    void* STDMETHODCALLTYPE PostAlloc(void* block) override {
        if (block) InterlockedIncrement(&blocks_);
        return block;
    }
    void* STDMETHODCALLTYPE PreFree(void* block, BOOL isCounted) override {
        if (block && isCounted) InterlockedDecrement(&blocks_);
        return block;
    }
    void STDMETHODCALLTYPE PostFree(BOOL) override {}
    SIZE_T STDMETHODCALLTYPE PreRealloc(void* block, SIZE_T size, void** moved, BOOL) override {
        *moved = block;
        return size;
    }
    void* STDMETHODCALLTYPE PostRealloc(void* block, BOOL) override { return block; }
    void* STDMETHODCALLTYPE PreGetSize(void* block, BOOL) override { return block; }
    SIZE_T STDMETHODCALLTYPE PostGetSize(SIZE_T size, BOOL) override { return size; }
    void* STDMETHODCALLTYPE PreDidAlloc(void* block, BOOL) override { return block; }
    int STDMETHODCALLTYPE PostDidAlloc(void*, BOOL, int isOurs) override { return isOurs; }
    void STDMETHODCALLTYPE PreHeapMinimize() override {}
    void STDMETHODCALLTYPE PostHeapMinimize() override {}

    [[nodiscard]] int Blocks() const { return static_cast<int>(blocks_); }

  private:
    volatile LONG blocks_ = 0;
};
Spy spy;

// --- windows

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
    ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int Windows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), &CountWindow, reinterpret_cast<LPARAM>(&count));
    for (HWND window = nullptr; (window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
        if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) ++count;
    }
    return count;
}

}  // namespace

void CountComMemory() { CoRegisterMallocSpy(&spy); }

void CountMemory(HMODULE library) {
    const ImportPatch::Import imports[] = {
        {"msvcrt.dll", "malloc", reinterpret_cast<void*>(&Malloc)},
        {"msvcrt.dll", "calloc", reinterpret_cast<void*>(&Calloc)},
        {"msvcrt.dll", "realloc", reinterpret_cast<void*>(&Realloc)},
        {"msvcrt.dll", "free", reinterpret_cast<void*>(&Free)},
    };
    ImportPatch patch;
    patch.Replace(library, imports);
    patch.Keep();  // it counts until the library has gone
}

Leftovers CountLeftovers() {
    return {static_cast<int>(blocks.size()), spy.Blocks(), static_cast<int>(handles::KernelHandles()),
            static_cast<int>(handles::GdiObjects()), Windows()};
}

std::string Growth(const Leftovers& before, const Leftovers& now) {
    std::string growth;
    const auto compare = [&](int Leftovers::*count, const char* name) {
        const int more = now.*count - before.*count;
        if (more > 0) growth += (growth.empty() ? "" : ", ") + std::to_string(more) + " " + name;
    };
    compare(&Leftovers::memoryBlocks, "blocks of memory");
    compare(&Leftovers::comBlocks, "blocks of COM's memory");
    compare(&Leftovers::kernelHandles, "kernel handles");
    compare(&Leftovers::gdiObjects, "GDI objects");
    compare(&Leftovers::windows, "windows");
    return growth;
}

}  // namespace weather
