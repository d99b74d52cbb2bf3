#include "platform/ClipboardText.h"

#include <windows.h>

#include <cstring>

namespace platform {

bool PutTextOnClipboard(std::string_view text) noexcept {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    void* const bytes = memory ? GlobalLock(memory) : nullptr;
    if (!bytes) return false;
    std::memcpy(bytes, text.data(), text.size());
    static_cast<char*>(bytes)[text.size()] = '\0';
    GlobalUnlock(memory);
    bool put = false;
    if (OpenClipboard(nullptr)) {
        put = EmptyClipboard() && SetClipboardData(CF_TEXT, memory);
        CloseClipboard();
    }
    if (!put) GlobalFree(memory);
    return put;
}

}  // namespace platform
