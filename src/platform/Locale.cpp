#include "platform/Locale.h"

#include <windows.h>

namespace platform {

std::string DecimalSeparator() {
    char separator[8] = {};
    if (GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, sizeof separator) <= 1) return ".";
    return separator;
}

}  // namespace platform
