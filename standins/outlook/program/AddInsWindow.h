// program/AddInsWindow.h: the dialog "COM Add-Ins": a tick loads an add-in, taking it away unloads it.
#pragma once
#include "outlook/program/Pane.h"

namespace program {

class Program;

class AddInsWindow : public Pane {
  public:
    AddInsWindow(Program& program, const RECT& place);
    void ShowContents();

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    void OnTick(int row);

    Program& program_;
    HWND label_, list_, location_, close_;
    bool filling_ = false;
};

}  // namespace program
