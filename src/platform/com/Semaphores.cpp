// The C++ runtime makes a semaphore for each of its locks and never closes it: every load of the library would leave some
// in the host. Here they are made for it, and closed when the library goes. Nobody waits for them by then: a lock that
// is free is taken without its semaphore.
#include <windows.h>

#include <array>
#include <cstddef>

namespace {

class Semaphores {
  public:
    ~Semaphores() {
        for (std::size_t i = 0; i < count_; ++i) CloseHandle(made_[i]);
    }
    HANDLE Make(LONG initial, LONG most) noexcept {
        const HANDLE made = CreateSemaphoreA(nullptr, initial, most, nullptr);
        if (made && count_ < made_.size()) made_[count_++] = made;
        return made;
    }

  private:
    std::array<HANDLE, 16> made_{};  // more than the runtime has locks
    std::size_t count_ = 0;
};

constinit Semaphores semaphores;

HANDLE WINAPI MakeSemaphore(LPSECURITY_ATTRIBUTES, LONG initial, LONG most, LPCWSTR) {
    return semaphores.Make(initial, most);
}

}  // namespace

// What the runtime calls through, in place of the import from Windows.
#ifdef _WIN64
#define IMPORT "__imp_CreateSemaphoreW"
#else
#define IMPORT "__imp__CreateSemaphoreW@16"
#endif
extern "C" {
extern decltype(&CreateSemaphoreW) const runtimesSemaphore asm(IMPORT);
decltype(&CreateSemaphoreW) const runtimesSemaphore = &MakeSemaphore;
}
