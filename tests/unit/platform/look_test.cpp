// What only a program that looks, and its mending, need of Windows.
#include <doctest.h>
#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/Look.h"
#include "testing/ImportPatch.h"
#include "testing/PrivateRegistry.h"
#include "testing/RealFunction.h"

using namespace platform;

namespace {

int opened = 0;

LONG WINAPI CountOpen(HKEY root, LPCSTR path, DWORD options, REGSAM rights, PHKEY key) {
    const LONG status =
        Real<decltype(&RegOpenKeyExA)>("advapi32.dll", "RegOpenKeyExA")(root, path, options, rights, key);
    opened += status == ERROR_SUCCESS ? 1 : 0;
    return status;
}
LONG WINAPI CountCreate(HKEY root, LPCSTR path, DWORD reserved, LPSTR kind, DWORD options, REGSAM rights,
                        LPSECURITY_ATTRIBUTES security, PHKEY key, LPDWORD disposition) {
    const LONG status = Real<decltype(&RegCreateKeyExA)>("advapi32.dll", "RegCreateKeyExA")(
        root, path, reserved, kind, options, rights, security, key, disposition);
    opened += status == ERROR_SUCCESS ? 1 : 0;
    return status;
}
LONG WINAPI CountClose(HKEY key) {
    --opened;
    return Real<decltype(&RegCloseKey)>("advapi32.dll", "RegCloseKey")(key);
}

}  // namespace

TEST_CASE("a time has a text, one that nobody knows has none") {
    const auto textOf = [](WORD month, WORD day, WORD hour, WORD minute) {
        SYSTEMTIME parts{};
        parts.wYear = 2001, parts.wMonth = month, parts.wDay = day, parts.wHour = hour, parts.wMinute = minute;
        FILETIME local{}, stamp{};
        REQUIRE(SystemTimeToFileTime(&parts, &local));
        REQUIRE(LocalFileTimeToFileTime(&local, &stamp));
        return TimeText(static_cast<std::uint64_t>(stamp.dwHighDateTime) << 32 | stamp.dwLowDateTime);
    };
    CHECK(textOf(2, 3, 4, 5) == "2001-02-03 04:05");
    CHECK(textOf(10, 10, 10, 10) == "2001-10-10 10:10");
    CHECK(textOf(9, 11, 0, 59) == "2001-09-11 00:59");
    CHECK(TimeText(0).empty());
    CHECK(TimeText(~std::uint64_t{0}).empty());
}

TEST_CASE("a value is stored and dropped, and no key stays open") {
    const PrivateRegistry registry;
    const std::string key = "Software\\Looked At";
    const ImportPatch::Import counted[] = {{"ADVAPI32.dll", "RegOpenKeyExA", reinterpret_cast<void*>(&CountOpen)},
                                           {"ADVAPI32.dll", "RegCreateKeyExA", reinterpret_cast<void*>(&CountCreate)},
                                           {"ADVAPI32.dll", "RegCloseKey", reinterpret_cast<void*>(&CountClose)}};
    ImportPatch patch;
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), counted) == 3);
    CHECK(StoreValue(Root::CurrentUser, key, RegistryView::Own, "name", REG_SZ, "text") == ERROR_SUCCESS);
    CHECK(opened == 0);
    CHECK(DropValue(Root::CurrentUser, key, RegistryView::Own, "none") == ERROR_FILE_NOT_FOUND);
    CHECK(opened == 0);
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, key, "name").bytes == "text");
    CHECK(DropValue(Root::CurrentUser, key, RegistryView::Own, "name") == ERROR_SUCCESS);
    CHECK_FALSE(PrivateRegistry::Raw(HKEY_CURRENT_USER, key, "name").present);
}
