// tests/weather/Leftovers.h: what the library leaves in the process when it goes: memory, kernel handles, GDI objects,
// windows, and memory of COM's allocator, which texts for the host are made of.
//
// Owns    one count for the process.
// Effects The library's calls for memory go on to what it called before. None of it changes the last error.
#pragma once
#include <windows.h>

#include <string>

namespace weather {

// Begins to count what COM's allocator hands out; before the library comes for the first time.
void CountComMemory();

// Counts the library's blocks of memory from now on, until it has gone; before anything else stands over its imports.
void CountMemory(HMODULE library);

struct Leftovers {
    int memoryBlocks = 0;  // of the library, each time that it was there
    int comBlocks = 0;     // in the process, as the rest
    int kernelHandles = 0;
    int gdiObjects = 0;
    int windows = 0;  // of this thread, hidden ones and those for messages alone too
};

// What there is now; while no library is loaded.
[[nodiscard]] Leftovers CountLeftovers();

// What there is more of than before, "2 kernel handles"; empty: nothing.
[[nodiscard]] std::string Growth(const Leftovers& before, const Leftovers& now);

}  // namespace weather
