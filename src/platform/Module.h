// platform/Module.h: the module that this code is linked into - the add-in library, or a test program.
//
// Shapes  Paths are whole and in ANSI text; the folder ends in a backslash.
// Errors  a path that Windows does not tell is the empty text.
#pragma once
#include <string>

struct HINSTANCE__;

namespace platform {

// Of this module, wherever it was loaded from.
[[nodiscard]] HINSTANCE__* ModuleHandle() noexcept;
[[nodiscard]] std::string ModulePath();
[[nodiscard]] std::string ModuleFolder();

// As long as one of these lives, the library tells the host that it is in use (DllCanUnloadNow): for
// whatever Windows may call on its own account, like the window procedure of a hidden form.
class KeepLoaded {
  public:
    KeepLoaded() noexcept;
    ~KeepLoaded();
    KeepLoaded(const KeepLoaded&) = delete;
    KeepLoaded& operator=(const KeepLoaded&) = delete;
};

// Whether one of them lives.
[[nodiscard]] bool IsKeptLoaded() noexcept;

}  // namespace platform
