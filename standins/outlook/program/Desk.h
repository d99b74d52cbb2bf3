// program/Desk.h: what the windows of the program may ask of it. The program (Program.h) knows every window; a window
// knows the program only through this.
#pragma once
#include <windows.h>

#include "outlook/Outlook.h"

namespace program {

class Desk {
  public:
    // Messages that a window sends to itself, to be dealt with once the present one is over.
    enum Message : UINT { refresh = WM_APP + 1, forgetMenu, readSelection, readTick, reap };

    Desk() = default;
    virtual ~Desk() = default;
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    [[nodiscard]] virtual standin::Outlook& Host() = 0;

    // What a user does in a window of the host.
    virtual void Click(standin::Window window, int instance) = 0;
    virtual void ClickRibbon(standin::Window window, const std::string& id) = 0;
    virtual void ClickContextMenu(standin::Window explorer, const std::string& id) = 0;
    virtual void UserActivated(standin::Window window) = 0;
    virtual void UserLeft(standin::Window window) = 0;
    virtual void CloseByUser(standin::Window window) = 0;
};

}  // namespace program
