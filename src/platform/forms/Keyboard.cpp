#include "platform/forms/Keyboard.h"

#include <windows.h>

namespace platform {
namespace {

void Key(BYTE key, DWORD flags) { keybd_event(key, static_cast<BYTE>(MapVirtualKeyA(key, 0)), flags, 0); }

}  // namespace

void SendControlEnd() {
    Key(VK_CONTROL, 0);
    Key(VK_END, KEYEVENTF_EXTENDEDKEY);
    Key(VK_END, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP);
    Key(VK_CONTROL, KEYEVENTF_KEYUP);
}

}  // namespace platform
