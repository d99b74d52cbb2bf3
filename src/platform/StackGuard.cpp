// What functions with a buffer on the stack check before they return (-fstack-protector): a value behind the buffer that
// nobody can guess. Where it has changed, the process ends at once instead of running on where the overflow says. The
// compiler's own runtime for this would ask Windows' cryptography for a number at every start of the host.
#include <windows.h>

#include <cstdint>
#include <initializer_list>

namespace {

constexpr UINT stackOverrun = 0xC0000409;  // as Windows' own check ends a process

[[noreturn]] void End() noexcept {
    // Without an exception: its handlers stand on the stack that was written over.
    for (;;) TerminateProcess(GetCurrentProcess(), stackOverrun);
}

}  // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the compiler uses
extern "C" {

std::uintptr_t __stack_chk_guard = 0;
[[noreturn]] void __stack_chk_fail() { End(); }

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier)

namespace {

// Before all other constructors: those may have buffers. Time, cycles and addresses are hard to guess together; no
// text can be written over a value with a NUL in it and leave it as it was.
[[gnu::constructor(101)]] void SetGuard() noexcept {
    FILETIME now;
    GetSystemTimeAsFileTime(&now);
    std::uint64_t mixed = std::uint64_t{now.dwHighDateTime} << 32 | now.dwLowDateTime;
    for (const std::uint64_t part : {std::uint64_t{__builtin_ia32_rdtsc()}, std::uint64_t{GetCurrentThreadId()},
                                     std::uint64_t{reinterpret_cast<std::uintptr_t>(&now)}}) {
        mixed = (mixed ^ part) * 0x9E3779B97F4A7C15u;
        mixed ^= mixed >> 29;
    }
    __stack_chk_guard = static_cast<std::uintptr_t>(mixed) & ~std::uintptr_t{0xFF};
}

}  // namespace
