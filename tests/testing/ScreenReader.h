// testing/ScreenReader.h: what a screen reader is told of a window, by Windows' own accessibility library.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <oleacc.h>

#include <string>

// The name of a control; of a field it is that of the label before it. Access marks are left out.
inline std::string NameAsRead(HWND window) {
    const HMODULE library = LoadLibraryA("oleacc.dll");
    REQUIRE(library);
    using FromWindow = HRESULT(WINAPI*)(HWND, DWORD, REFIID, void**);
    const auto fromWindow =
        reinterpret_cast<FromWindow>(reinterpret_cast<void*>(GetProcAddress(library, "AccessibleObjectFromWindow")));
    REQUIRE((fromWindow != nullptr));
    constexpr IID accessible{0x618736e0, 0x3c3d, 0x11cf, {0x81, 0x0c, 0x00, 0xaa, 0x00, 0x38, 0x9b, 0x71}};
    IAccessible* object = nullptr;
    REQUIRE(
        SUCCEEDED(fromWindow(window, static_cast<DWORD>(OBJID_CLIENT), accessible, reinterpret_cast<void**>(&object))));
    VARIANT self{};
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    BSTR name = nullptr;
    std::string text;
    if (object->get_accName(self, &name) == S_OK && name) {
        text.resize(SysStringLen(name));
        for (std::size_t i = 0; i < text.size(); ++i) text[i] = static_cast<char>(name[i]);
        SysFreeString(name);
    }
    object->Release();
    FreeLibrary(library);
    return text;
}
