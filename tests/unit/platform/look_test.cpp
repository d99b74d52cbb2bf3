// What only a program that looks, and its mending, need of Windows.
#include <doctest.h>
#include <windows.h>

#include <string>

#include "platform/Look.h"
#include "testing/PrivateRegistry.h"

using namespace platform;

namespace {

// The process' open handles; Windows has had the function since XP.
DWORD OpenHandles() {
    using Count = BOOL(WINAPI*)(HANDLE, DWORD*);
    const auto count = reinterpret_cast<Count>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "GetProcessHandleCount")));
    DWORD handles = 0;
    REQUIRE((count != nullptr));
    REQUIRE(count(GetCurrentProcess(), &handles));
    return handles;
}

}  // namespace

TEST_CASE("a time has a text, one that nobody knows has none") {
    SYSTEMTIME parts{};
    parts.wYear = 2001, parts.wMonth = 2, parts.wDay = 3, parts.wHour = 4, parts.wMinute = 5;
    FILETIME local{}, stamp{};
    REQUIRE(SystemTimeToFileTime(&parts, &local));
    REQUIRE(LocalFileTimeToFileTime(&local, &stamp));
    CHECK(TimeText(static_cast<std::uint64_t>(stamp.dwHighDateTime) << 32 | stamp.dwLowDateTime) == "2001-02-03 04:05");
    CHECK(TimeText(0).empty());
    CHECK(TimeText(~std::uint64_t{0}).empty());
}

TEST_CASE("a value is stored and dropped, and no key stays open") {
    const PrivateRegistry registry;
    const auto storeAndDrop = [](const std::string& key) {
        CHECK(StoreValue(Root::CurrentUser, key, RegistryView::Own, "name", REG_SZ, "text") == ERROR_SUCCESS);
        CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, key, "name").bytes == "text");
        CHECK(DropValue(Root::CurrentUser, key, RegistryView::Own, "name") == ERROR_SUCCESS);
        CHECK_FALSE(PrivateRegistry::Raw(HKEY_CURRENT_USER, key, "name").present);
        CHECK(DropValue(Root::CurrentUser, key, RegistryView::Own, "name") == ERROR_FILE_NOT_FOUND);
    };
    storeAndDrop("Software\\Looked At");
    const DWORD before = OpenHandles();
    for (int i = 0; i < 20; ++i) storeAndDrop("Software\\Looked At");
    CHECK(OpenHandles() < before + 10);
}
