// program/AddInsWindow.h: the dialog "COM Add-Ins": a tick loads an add-in, taking it away unloads it.
#pragma once
#include "outlook/program/Desk.h"
#include "outlook/program/Pane.h"

namespace program {

class AddInsWindow : public Pane {
  public:
    AddInsWindow(Desk& desk, const RECT& place);
    void ShowContents();

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    void OnTick(int row);

    Desk& desk_;
    HWND label_, list_, location_, close_;
    bool filling_ = false;
};

}  // namespace program
