// A process of this program whose stack is written over, as by a text that is longer than its buffer.
#include <doctest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>

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
DWORD EndOfProcessThatWrites(const char* name) {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string line = std::string("\"") + path + "\" --no-skip --test-case=\"" + name + "\"";
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started{};
    REQUIRE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &started));
    REQUIRE(WaitForSingleObject(started.hProcess, 60000) == WAIT_OBJECT_0);
    DWORD code = 0;
    GetExitCodeProcess(started.hProcess, &code);
    CloseHandle(started.hThread);
    CloseHandle(started.hProcess);
    return code;
}

}  // namespace

// The case below runs these two in a process of their own.
TEST_CASE("writes within a buffer" * doctest::skip()) { CHECK(Write(32) == 'x'); }
TEST_CASE("writes beyond a buffer" * doctest::skip()) { CHECK(Write(48) == 'x'); }

TEST_CASE("a process whose stack was written over ends before the function returns") {
    CHECK(EndOfProcessThatWrites("writes within a buffer") == 0);
    CHECK(EndOfProcessThatWrites("writes beyond a buffer") == stackOverrun);
}
