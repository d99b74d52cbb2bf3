// program/RibbonMenu.h: an open menu of the ribbon: pictures, lines between groups, key tips. It takes no focus and
// closes with a click anywhere.
#pragma once
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "outlook/program/Drawing.h"
#include "outlook/program/Pane.h"

namespace program {

class RibbonMenu : public Pane {
  public:
    // `chosen` gets the id of the clicked entry, or "" when the menu was closed without one.
    RibbonMenu(HWND owner, std::vector<standin::RibbonControlView> entries, POINT corner, bool keyTips,
               std::function<void(const std::string&)> chosen);
    ~RibbonMenu() override;

    bool OnKey(WPARAM key);  // Up, Down, Enter, Escape and key tips; false for any other
    [[nodiscard]] std::optional<RECT> PlaceOf(const std::string& id) const;

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    struct Row {
        RECT place{};
        standin::RibbonControlView control;
        bool line = false;
    };
    void Paint();
    [[nodiscard]] int RowAt(POINT point) const;  // -1 beside every entry
    void Choose(const std::string& id);
    void ChooseRow(int number);

    std::vector<Row> rows_;
    int hot_ = -1;
    bool keyTips_;
    std::function<void(const std::string&)> chosen_;
};

}  // namespace program
