#include "platform/Locale.h"

#include <windows.h>

namespace platform {

std::string DecimalSeparator() {
    char separator[8] = {};
    if (GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, sizeof separator) <= 1) return ".";
    return separator;
}

std::string AbbreviatedLanguageName(std::int32_t locale) {
    char name[255];
    const int count = GetLocaleInfoA(static_cast<LCID>(locale), LOCALE_SABBREVLANGNAME, name, sizeof name);
    return count > 0 ? std::string(name, static_cast<std::size_t>(count)) : std::string();
}

char LowerLetter(char letter) {
    CharLowerBuffA(&letter, 1);
    return letter;
}

std::uint32_t AnsiCodePage() { return GetACP(); }

bool IsLeadByte(char byte) { return IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE; }

}  // namespace platform
