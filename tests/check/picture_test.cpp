// A picture of the check program's window, for the documentation (scripts/screenshots.sh): into the folder CV_PICTURES.
#include <doctest.h>
#include <windows.h>

#include <cstdlib>
#include <string>

#include "check/World.h"
#include "testing/WindowPicture.h"

namespace {

std::string file;
bool saved = false;

// The window comes with the first look at the machine, which takes a moment.
DWORD WINAPI TakePictureAndClose(void*) {
    for (int tries = 0; tries < 200; ++tries) {
        Sleep(100);
        const HWND window = FindWindowA(nullptr, "Corvella for Outlook: why is it not there?");
        const HWND list = window ? FindWindowExA(window, nullptr, "ListBox", nullptr) : nullptr;
        if (!list || SendMessageA(list, LB_GETCOUNT, 0, 0) < 2) continue;
        Sleep(1000);
        saved = SaveWindowPicture(window, file);
        PostMessageA(window, WM_CLOSE, 0, 0);
        return 0;
    }
    return 1;
}

}  // namespace

TEST_CASE("picture of a disabled add-in" * doctest::skip()) {
    const char* folder = std::getenv("CV_PICTURES");
    REQUIRE(folder);
    file = std::string(folder) + "/check.bmp";
    check_test::World world;
    world.Disable(1);
    check_test::PutText(HKEY_CURRENT_USER, check_test::addInKey, "Active", "1");
    const HANDLE thread = CreateThread(nullptr, 0, &TakePictureAndClose, nullptr, 0, nullptr);
    world.Run({});
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
    CHECK(saved);
}
