// program/Ribbon.h: the ribbon at the top of an item window since 2007: a row of tabs and, below it, the groups of the tab
// that is open. Where it has no tabs it is not there.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "outlook/program/Drawing.h"
#include "outlook/program/Pane.h"
#include "outlook/program/RibbonTabs.h"

namespace program {

class Ribbon : public Pane {
  public:
    Ribbon(HWND parent, const standin::Outlook& outlook);

    // The tab that is open stays open where there is still one of its caption, else the first one is.
    void Show(std::vector<RibbonTab> tabs);
    [[nodiscard]] int Height() const;
    void Open(const std::string& tab);  // nothing where there is none of that caption
    [[nodiscard]] const std::string& OpenTab() const { return open_; }

    // Inside the ribbon: where a control of the open tab is, and where a tab is.
    [[nodiscard]] std::optional<RECT> PlaceOf(int instance) const;
    [[nodiscard]] std::optional<RECT> PlaceOfTab(const std::string& tab) const;
    [[nodiscard]] POINT Below(int instance) const;                               // on the screen
    [[nodiscard]] const standin::ControlView* WithAccessKey(char letter) const;  // of the open tab; null: none

    // The keyboard: Left and Right go through the tabs, Down and Tab to the controls and through them, Enter chooses,
    // Escape leaves. Begin with TakeKeys; false for a key that ends it.
    void TakeKeys();
    bool OnKey(WPARAM key);

    std::function<void(const standin::ControlView&)> onPress;

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    struct TabCell {
        std::string caption;
        RECT place{};
    };
    struct Cell {
        standin::ControlView control;
        RECT place{};
        bool large = false, icon = false;
    };
    struct GroupCell {
        std::string caption;
        RECT place{};
    };
    enum class Keys { None, OnTabs, OnControls };

    void LayOut();
    void LayOutGroup(const RibbonGroup& group, int& x);
    void Paint();
    void PaintTabs(HDC dc) const;
    void PaintGroup(HDC dc, const GroupCell& group) const;
    void PaintCell(HDC dc, const Cell& cell, bool hot) const;
    void OnMove(POINT point);
    void OnClick(POINT point);
    void StepTab(int steps);
    [[nodiscard]] int CellAt(POINT point) const;
    [[nodiscard]] int TabAt(POINT point) const;

    const standin::Outlook& outlook_;
    Look look_;
    std::vector<RibbonTab> tabs_;
    std::string open_;
    std::vector<TabCell> tabCells_;
    std::vector<GroupCell> groups_;
    std::vector<Cell> cells_;
    int hot_ = -1, hotTab_ = -1;
    Keys keys_ = Keys::None;
};

}  // namespace program
