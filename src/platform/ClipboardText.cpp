#include "platform/ClipboardText.h"

#include <windows.h>

#include <cstring>

#include "platform/OpenedClipboard.h"

namespace platform {

bool PutTextOnClipboard(std::string_view text) noexcept {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    void* const bytes = memory ? GlobalLock(memory) : nullptr;
    if (!bytes) return false;
    std::memcpy(bytes, text.data(), text.size());
    static_cast<char*>(bytes)[text.size()] = '\0';
    GlobalUnlock(memory);
    const OpenedClipboard clipboard;
    const bool put = clipboard && EmptyClipboard() && SetClipboardData(CF_TEXT, memory);
    if (!put) GlobalFree(memory);
    return put;
}

}  // namespace platform
