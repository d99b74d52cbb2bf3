// platform/forms/Keyboard.h: keystrokes for the program in front.
//
// Effects the keys go to whatever window has the focus when Windows delivers them.
#pragma once

namespace platform {

void SendControlEnd();

}  // namespace platform
