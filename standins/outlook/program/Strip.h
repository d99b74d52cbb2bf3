// program/Strip.h: one command bar as a window below the caption: the menu bar or a toolbar.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "outlook/program/Drawing.h"
#include "outlook/program/Pane.h"

namespace program {

class Strip : public Pane {
  public:
    enum class Kind { Menu, Toolbar };
    Strip(HWND parent, const standin::Outlook& outlook, Kind kind);

    void Show(std::vector<standin::ControlView> controls);
    [[nodiscard]] int Height() const;
    // Where a menu of this control opens, on the screen.
    [[nodiscard]] POINT Below(int instance) const;
    [[nodiscard]] bool Has(int instance) const;
    [[nodiscard]] std::optional<RECT> PlaceOf(int instance) const;               // inside the strip
    [[nodiscard]] const standin::ControlView* At(POINT onScreen) const;          // null when there is none
    [[nodiscard]] const standin::ControlView* WithAccessKey(char letter) const;  // null when there is none
    void MarkOpen(int instance);
    // For the keyboard: the control beside the one that is open or marked, and marking one as the mouse does.
    [[nodiscard]] const standin::ControlView* Beside(int steps) const;  // null for an empty bar
    void MarkHot(int instance);                                         // 0: none
    [[nodiscard]] const standin::ControlView* Hot() const;              // null when there is none

    std::function<void(const standin::ControlView&)> onPress;
    std::function<void(const standin::ControlView&)> onHover;  // a control under the mouse; the empty view when none

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    struct Cell {
        standin::ControlView control;
        RECT place{};
        bool separated = false, icon = false, text = false;
    };
    void LayOut();
    void Paint();
    void PaintCell(HDC dc, const Cell& cell, bool hot) const;
    void PaintGrip(HDC dc) const;
    void OnMove(POINT point);
    [[nodiscard]] int CellAt(POINT point) const;

    const standin::Outlook& outlook_;
    Kind kind_;
    Look look_;
    std::vector<Cell> cells_;
    int hot_ = -1, open_ = 0;
    bool pressed_ = false;
};

}  // namespace program
