#include "weather/Leftovers.h"

#include <doctest.h>
#include <ole2.h>

using namespace weather;

TEST_CASE("what has come since the count before is named with its number, and what has gone is not") {
    const Leftovers before{.memoryBlocks = 3, .comBlocks = 2, .kernelHandles = 40, .gdiObjects = 9, .windows = 4};
    CHECK(Growth(before, before).empty());
    CHECK(Growth(before, {}).empty());
    CHECK(Growth({}, before) ==
          "3 blocks of memory, 2 blocks of COM's memory, 40 kernel handles, 9 GDI objects, 4 windows");
}

TEST_CASE("memory of COM's, a handle, a bitmap and a hidden window for messages are found, and found to be gone") {
    CountComMemory();
    CoTaskMemFree(CoTaskMemAlloc(10));
    DestroyWindow(CreateWindowA("STATIC", "", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr));
    const Leftovers before = CountLeftovers();
    void* const block = CoTaskMemAlloc(10);
    const HANDLE event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    const HBITMAP bitmap = CreateBitmap(4, 4, 1, 32, nullptr);
    const HWND window = CreateWindowA("STATIC", "", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
    CHECK(Growth(before, CountLeftovers()) == "1 blocks of COM's memory, 1 kernel handles, 1 GDI objects, 1 windows");
    DestroyWindow(window);
    DeleteObject(bitmap);
    CloseHandle(event);
    CoTaskMemFree(block);
    CHECK(Growth(before, CountLeftovers()).empty());
}
