// platform/OpenedClipboard.h: the clipboard, open as long as this lives. Only for platform/: needs windows.h.
//
// Errors  others hold it for milliseconds, so it is tried again for a tenth of a second; where it stays closed, false.
#pragma once
#include <windows.h>

#include "platform/Module.h"
#include "platform/SystemError.h"

namespace platform {

// A window of our own as owner: without one, Windows refuses what is put on an emptied clipboard.
class OpenedClipboard {
  public:
    OpenedClipboard() {
        owner_ = CreateWindowExA(0, "STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, ModuleHandle(), nullptr);
        for (int tries = 0; owner_ && !open_ && tries < mostTries; ++tries) {
            if (tries > 0) Sleep(pauseBetween);
            open_ = OpenClipboard(owner_) != FALSE;
        }
        if (!open_) RecordLastError();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard() {
        if (open_) CloseClipboard();
        if (owner_) DestroyWindow(owner_);
    }
    explicit operator bool() const { return open_; }

  private:
    static constexpr int mostTries = 10;
    static constexpr DWORD pauseBetween = 10;  // milliseconds

    HWND owner_ = nullptr;
    bool open_ = false;
};

}  // namespace platform
