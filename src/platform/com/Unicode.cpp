#include "platform/com/Unicode.h"

#include "platform/com/Com.h"

namespace platform {

std::string Utf16Bytes(std::string_view text) {
    const std::wstring wide = Widened(text);
    static_assert(sizeof(wchar_t) == 2);
    return std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t));
}

}  // namespace platform
