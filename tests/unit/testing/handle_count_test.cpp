#include <doctest.h>

#include "testing/HandleCount.h"

TEST_CASE("ten bitmaps that stay are ten more objects, and none more once they are gone") {
    const std::uint32_t before = handles::GdiObjects();
    std::array<HBITMAP, 10> kept{};
    for (HBITMAP& bitmap : kept) bitmap = CreateBitmap(4, 4, 1, 32, nullptr);
    CHECK(handles::GdiObjects() == before + 10);
    for (const HBITMAP bitmap : kept) DeleteObject(bitmap);
    CHECK(handles::GdiObjects() == before);
}

TEST_CASE("a window and a menu that stay are two more objects") {
    const std::uint32_t before = handles::UserObjects();
    const HWND window = CreateWindowA("STATIC", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    const HMENU menu = CreateMenu();
    CHECK(handles::UserObjects() >= before + 2);
    DestroyWindow(window);
    DestroyMenu(menu);
    CHECK(handles::UserObjects() <= before + 1);  // the first window may bring one of the system's own
}

TEST_CASE("ten events that stay are ten more kernel handles") {
    const std::uint32_t before = handles::KernelHandles();
    REQUIRE(before > 0);
    std::array<HANDLE, 10> kept{};
    for (HANDLE& event : kept) event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
    CHECK(handles::KernelHandles() == before + 10);
    for (const HANDLE event : kept) CloseHandle(event);
    CHECK(handles::KernelHandles() == before);
}
