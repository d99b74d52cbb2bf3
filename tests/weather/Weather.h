// tests/weather/Weather.h: Windows failing in turn. Between the loaded library and each function of Windows that it
// imports and that can fail stands a place, which counts the calls and makes one of them fail as Windows documents it.
//
// Shapes  A call point is a function and a number, from 1 on: the k-th call of that function while the weather counts.
// Owns    one weather for the process; the library's imports as long as it is over it.
// Effects The counting changes neither the last error nor anything else; what fails is not done at all.
#pragma once
#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace weather {

struct Place {
    const char* library;
    const char* function;
    void* instead;         // what the library calls while the weather is over it
    void* real = nullptr;  // what it called before
    int calls = 0;         // since the counting began
};

// A function that the library imports and that has no failing: why.
struct Fair {
    const char* library;
    const char* function;
    const char* reason;
};

enum class Way { Once, FromThenOn };

struct Point {
    std::string function;
    int number = 0;
    Way way = Way::Once;
};

// All functions that can fail, and all that cannot. Each import of the library has to be in one of them.
[[nodiscard]] std::vector<Place>& Places();
[[nodiscard]] const std::vector<Fair>& Fairs();

// Imports of the library that neither list knows, "KERNEL32.dll Beep".
[[nodiscard]] std::vector<std::string> Unlisted(HMODULE library);

// Stands between the library and what it calls now, until the library is gone.
void Over(HMODULE library);

// Counts from 0 and makes that call fail; none: only counts.
void Begin(const Point* point);
// Is told of the first call that fails, from inside it; null: nobody.
void Watch(void (*told)());
void End();
// How often a call was made to fail since Begin.
[[nodiscard]] int Failed();

// For the places alone: counts a call of it; true where it shall fail.
[[nodiscard]] bool IsToFail(Place& place) noexcept;

}  // namespace weather
