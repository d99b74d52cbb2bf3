#include "platform/Module.h"

#include <windows.h>

// The linker's own symbol for the first byte of the image, whose address is the module's handle.
extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace platform {
namespace {

LONG keepers = 0;

}  // namespace

HINSTANCE__* ModuleHandle() noexcept { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

std::string ModulePath() {
    std::string path(MAX_PATH, '\0');
    for (;;) {
        const DWORD length = GetModuleFileNameA(ModuleHandle(), path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::string ModuleFolder() {
    std::string path = ModulePath();
    std::size_t end = 0;
    // The second byte of a two-byte character may look like a backslash: step from character to character.
    for (const char* at = path.c_str(); *at != '\0'; at = CharNextA(at)) {
        if (*at == '\\') end = static_cast<std::size_t>(at - path.c_str()) + 1;
    }
    path.resize(end);
    return path;
}

KeepLoaded::KeepLoaded() noexcept { InterlockedIncrement(&keepers); }

KeepLoaded::~KeepLoaded() { InterlockedDecrement(&keepers); }

bool IsKeptLoaded() noexcept { return InterlockedCompareExchange(&keepers, 0, 0) != 0; }

}  // namespace platform
