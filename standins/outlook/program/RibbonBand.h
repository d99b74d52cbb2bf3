// program/RibbonBand.h: the ribbon of a window, in the place of its command bars: tabs, groups, large and small buttons,
// and key tips by Alt. The host's own buttons are one group of its first tab; what add-ins have put on the command bars
// is on the tab "Add-Ins".
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "outlook/program/Drawing.h"
#include "outlook/program/Pane.h"
#include "outlook/program/RibbonMenu.h"

namespace program {

class RibbonBand : public Pane {
  public:
    RibbonBand(HWND parent, const standin::Outlook& outlook);

    // `own`: the host's buttons; `added`: what add-ins have on the command bars.
    void Show(std::vector<standin::RibbonTabView> tabs, std::vector<standin::ControlView> own,
              std::vector<standin::ControlView> added);
    [[nodiscard]] static int Height();
    void CloseMenu();
    [[nodiscard]] bool HasMenu() const { return menu_ != nullptr; }
    // Shows the key tips of the tabs, or hides all.
    void ToggleKeyTips();
    // A key while key tips or a menu are shown; false for one that is not for them.
    bool OnKey(WPARAM key);
    // Where the mouse would press a control of a bar, a control of an add-in by its id, or an entry of the open menu.
    [[nodiscard]] std::optional<RECT> PlaceOf(int instance) const;
    [[nodiscard]] std::optional<RECT> PlaceOf(const std::string& id) const;
    [[nodiscard]] std::optional<RECT> PlaceOfTab(const std::string& label) const;
    [[nodiscard]] const RibbonMenu* Menu() const { return menu_.get(); }
    [[nodiscard]] POINT Below(int instance) const;  // on the screen

    std::function<void(const std::string& id)> onRibbon;     // a control of an add-in's ribbon was clicked
    std::function<void(const standin::ControlView&)> onBar;  // a control of a command bar was clicked
    std::function<void(const std::string& text)> onHover;

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    enum class Tips { None, Tabs, Controls };
    struct Cell {
        RECT place{};
        standin::RibbonControlView control;  // empty: it is `bar`
        standin::ControlView bar;
        std::string keyTip;
        bool large = false;
    };
    struct Group {
        RECT place{};
        std::string label;
    };
    struct Head {
        RECT place{};
        std::string label, keyTip;
    };
    void LayOut();
    void LayOutTabs();
    int LayOutGroup(const std::string& label, std::vector<Cell> cells, int x);
    void GiveKeyTips();
    void Paint();
    void PaintCell(HDC dc, const Cell& cell, bool hot) const;
    void PaintTip(HDC dc, const RECT& place, const std::string& text) const;
    void SelectTab(std::size_t number);
    void Press(const Cell& cell);
    void OnMove(POINT point);
    void OnClick(POINT point);
    [[nodiscard]] const Cell* CellAt(POINT point) const;
    void OnChosen(const std::string& id);

    const standin::Outlook& outlook_;
    std::vector<standin::RibbonTabView> tabs_;
    std::vector<standin::ControlView> own_, added_;
    std::string tab_;  // the name of the one that shows
    std::vector<Head> heads_;
    std::vector<Group> groups_;
    std::vector<Cell> cells_;
    const Cell* hot_ = nullptr;
    Tips tips_ = Tips::None;
    std::string typed_;
    std::unique_ptr<RibbonMenu> menu_;
    std::vector<std::unique_ptr<RibbonMenu>> leaving_;
};

}  // namespace program
