// outlook/ribbon/Narrow.h: Unicode as ANSI text, for messages.
#pragma once
#include <windows.h>

#include <string>

namespace standin::ribbon {

[[nodiscard]] inline std::string Narrow(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text.data(), size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

}  // namespace standin::ribbon
