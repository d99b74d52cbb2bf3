// program/LogWindow.h: the transcript as it grows: what the host tells its add-ins, and what they ask of it.
#pragma once
#include <string>
#include <vector>

#include "outlook/program/Pane.h"

namespace program {

class LogWindow : public Pane {
  public:
    explicit LogWindow(const RECT& place);
    void Show(const std::vector<std::string>& lines);  // those that are new, and the last one again

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    HWND list_;
    std::vector<std::string> shown_;
};

}  // namespace program
