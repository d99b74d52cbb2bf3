// What a program of windows writes for whoever started it.
#include "platform/Console.h"

#include <doctest.h>
#include <windows.h>

#include <string>

namespace {

// Standard output is that handle for as long as the object lives.
class Output {
  public:
    explicit Output(HANDLE handle) { SetStdHandle(STD_OUTPUT_HANDLE, handle); }
    ~Output() { SetStdHandle(STD_OUTPUT_HANDLE, former_); }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

  private:
    HANDLE former_ = GetStdHandle(STD_OUTPUT_HANDLE);
};

}  // namespace

TEST_CASE("text reaches the program that reads the output, byte for byte") {
    HANDLE reading = nullptr, writing = nullptr;
    REQUIRE(CreatePipe(&reading, &writing, nullptr, 0));
    const std::string text = "B\xFCro\r\n";
    {
        const Output output(writing);
        CHECK(platform::WriteToConsole(text));
    }
    char bytes[64] = {};
    DWORD count = 0;
    CHECK(ReadFile(reading, bytes, sizeof bytes, &count, nullptr));
    CHECK(std::string(bytes, count) == text);
    CloseHandle(writing);
    CloseHandle(reading);
}

TEST_CASE("without an output and without a console nothing is written, and the caller is told") {
    FreeConsole();
    for (const HANDLE none : {static_cast<HANDLE>(nullptr), INVALID_HANDLE_VALUE}) {
        const Output output(none);
        CHECK_FALSE(platform::WriteToConsole("text"));
    }
}

TEST_CASE("where whoever reads the output has gone the caller is told") {
    HANDLE reading = nullptr, writing = nullptr;
    REQUIRE(CreatePipe(&reading, &writing, nullptr, 0));
    CloseHandle(reading);
    const Output output(writing);
    CHECK_FALSE(platform::WriteToConsole("text"));
    CloseHandle(writing);
}
