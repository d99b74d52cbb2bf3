// A process of this program whose stack is written over, as by a text that is longer than its buffer.
#include <doctest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>

#include "testing/ChildProcess.h"

namespace {

constexpr DWORD stackOverrun = 0xC0000409;

// Writes so many bytes to a buffer of 32, and returns the last one.
[[gnu::stack_protect, gnu::noinline]] char Write(std::size_t count) {
    char buffer[32];
    char* volatile to = buffer;
    std::memset(to, 'x', count);
    return to[count - 1];
}

// How a process ends that does so.
DWORD EndOfProcessThatWrites(const char* name) { return ChildProcess(CommandLineOfCase(name)).End(); }

}  // namespace

// The case below runs these two in a process of their own.
TEST_CASE("writes within a buffer" * doctest::skip()) { CHECK(Write(32) == 'x'); }
TEST_CASE("writes beyond a buffer" * doctest::skip()) { CHECK(Write(48) == 'x'); }

TEST_CASE("a process whose stack was written over ends before the function returns") {
    CHECK(EndOfProcessThatWrites("writes within a buffer") == 0);
    CHECK(EndOfProcessThatWrites("writes beyond a buffer") == stackOverrun);
}
