// program/LogWindow.h: what happens, as it happens: on the left the transcript, what the host tells its add-ins and
// what they ask of it; on the right the starts of other programs that note themselves.
#pragma once
#include <string>
#include <vector>

#include "outlook/program/Pane.h"
#include "outlook/program/StartRecord.h"

namespace program {

class LogWindow : public Pane {
  public:
    explicit LogWindow(const RECT& place);
    void Show(const std::vector<std::string>& lines);  // those that are new, and the last one again

    void ShowStarts(const std::vector<NotedStart>& starts);  // all of this session

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    void LayOut();

    HWND list_, starts_;
    std::vector<std::string> shown_;
};

}  // namespace program
