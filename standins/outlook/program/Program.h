// program/Program.h: the windowed stand-in: one host, a frame for each of its windows, and the commands that Outlook's
// own menus carry out. The frames follow the model: whatever changes it, they are told and draw it again.
#pragma once
#include <map>
#include <memory>
#include <string>

#include "outlook/Outlook.h"
#include "outlook/program/AddInsWindow.h"
#include "outlook/program/Desk.h"
#include "outlook/program/HostFrame.h"
#include "outlook/program/LogWindow.h"

namespace program {

class Program : public Pane, public Desk, public standin::Watcher {
  public:
    // `record`: the file in which started programs note themselves (StartRecord.h); empty: there is none.
    Program(const standin::Options& options, std::string record);
    ~Program() override;

    void Start();
    [[nodiscard]] standin::Outlook& Host() override { return outlook_; }
    [[nodiscard]] HostFrame* FrameOf(standin::Window window) const;  // null when it has none
    [[nodiscard]] bool Over() const;
    [[nodiscard]] bool ShowsLog() const { return IsWindowVisible(log_->Handle()) != FALSE; }
    void ShowAddIns();
    // Dispatches one message of the thread, with what the keyboard does in frames.
    void Dispatch(MSG& message);
    void Update();  // what has changed is drawn now, not with the next message

    void Click(standin::Window window, int instance) override;
    void ClickRibbon(standin::Window window, const std::string& id) override { outlook_.ClickRibbon(window, id); }
    void ClickContextMenu(standin::Window explorer, const std::string& id) override {
        outlook_.ClickContextMenu(explorer, id);
    }
    void UserActivated(standin::Window window) override;
    void UserLeft(standin::Window window) override;
    void CloseByUser(standin::Window window) override;

    void WindowShown(standin::Window window) override;
    void WindowClosed(standin::Window window) override;
    void WindowActivated(standin::Window window) override;
    void BarsChanged(standin::Window window) override;
    void RibbonChanged() override;
    void ContentsChanged() override;
    void LineWritten() override;

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    void RunBuiltIn(standin::Window window, int id);
    void Later();
    void LookForStarts();
    [[nodiscard]] RECT NextPlace(bool explorer);

    standin::Outlook outlook_;
    std::map<int, std::unique_ptr<HostFrame>> frames_;
    std::vector<std::unique_ptr<HostFrame>> leaving_;  // closed, but perhaps in the middle of a message
    std::unique_ptr<LogWindow> log_;
    std::unique_ptr<AddInsWindow> addInsWindow_;
    std::map<int, bool> barsChanged_;
    std::string record_;
    std::size_t startsBefore_ = 0, startsShown_ = 0;  // in the record before this session, and in the log
    bool contentsChanged_ = false, linesChanged_ = false, posted_ = false, following_ = false;
    int explorers_ = 0, inspectors_ = 0;
};

}  // namespace program
