// program/HostFrame.h: what the frames of Explorers and Inspectors have in common: the two strips or the ribbon, open menus,
// activation, and the way from a click to the host.
#pragma once
#include <memory>
#include <string>

#include "outlook/program/Desk.h"
#include "outlook/program/Popup.h"
#include "outlook/program/Ribbon.h"
#include "outlook/program/RibbonBand.h"
#include "outlook/program/Strip.h"

namespace program {

class HostFrame : public Pane {
  public:
    enum class Top { Bars, Ribbon };  // menu bar and toolbar, or a ribbon instead of both
    HostFrame(Desk& desk, standin::Window window, Top top, const RECT& place);
    ~HostFrame() override;

    [[nodiscard]] standin::Window TheWindow() const { return window_; }
    void ShowBars();                  // again, from the model
    virtual void ShowContents() = 0;  // likewise
    virtual void CommitEdits() {}     // what was typed goes to the item
    virtual bool AskClose() { return true; }
    [[nodiscard]] bool HasRibbon() const { return ribbon_ != nullptr; }
    // Opens the menu of a popup control; false when it is none of this window's.
    bool OpenMenu(const standin::ControlView& popup);
    void CloseMenu();
    // Opens the menu with that access key; false when there is none.
    bool OnAccessKey(char letter);
    [[nodiscard]] bool HasMenu() const { return popup_ != nullptr || (band_ && band_->HasMenu()); }
    // The keyboard in menus and bars: F10 opens the first menu, arrows move, Tab goes from the menus to the toolbar,
    // Enter and access keys choose, Escape leaves. False for a key that is not for them.
    bool OnBarKey(WPARAM key);
    virtual bool OnEnter(HWND) { return false; }  // in a control of the frame
    // Where the mouse would press a control of a bar that is shown, or of the open menu; none: it is not to be seen.
    struct Spot {
        HWND window = nullptr;
        POINT point{};
    };
    [[nodiscard]] Spot SpotOf(int instance) const;
    // A control of the ribbon, or of the open menu or context menu.
    [[nodiscard]] Spot SpotOf(const std::string& ribbonId) const;
    // The menu of a right click on what is selected; nothing where it is empty.
    void OpenContextMenu(POINT corner);
    [[nodiscard]] Spot SpotOfTab(const std::string& tab) const;  // likewise a tab of the ribbon

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    virtual void LayOut(RECT inside) = 0;  // what is left below the strips
    virtual void OnCommand(int id, int code) = 0;
    virtual LRESULT OnNotify(const NMHDR&) { return 0; }
    virtual void ShowHint(const std::string&) {}
    [[nodiscard]] virtual HWND FirstField() const = 0;  // where the keyboard goes at first
    void Arrange();
    void SetTitle(const std::string& caption);  // and the version

    Desk& desk_;

  private:
    void OnPress(const standin::ControlView& control);
    void OnChosen(int instance);
    void OnRibbon(const std::string& id);
    void ShowBand(const std::vector<standin::BarView>& bars);
    void OnOutside(POINT point);
    bool OnToolbarKey(WPARAM key);
    bool OnRibbonKey(WPARAM key);
    void OnActivate(WPARAM first);

    standin::Window window_;
    std::unique_ptr<Strip> menu_, toolbar_;  // both, or the ribbon
    std::vector<Strip*> strips_;
    std::unique_ptr<Ribbon> ribbon_;
    std::unique_ptr<RibbonBand> band_;  // the ribbon of versions that ask add-ins for theirs
    std::unique_ptr<RibbonMenu> contextMenu_;
    HBRUSH face_;
    std::unique_ptr<Popup> popup_;
    std::vector<std::unique_ptr<Popup>> leaving_;  // closed, but perhaps in the middle of a message
    int openMenu_ = 0;
    bool onToolbar_ = false, onRibbon_ = false;  // the keyboard is there
    HWND focus_ = nullptr;                       // where the keyboard was when the frame was left
};

}  // namespace program
