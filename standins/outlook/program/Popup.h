// program/Popup.h: an open menu: the entries of a popup control, drawn and clicked as Office does it. It takes no focus
// and closes with a click anywhere, with Escape, or when another menu opens.
#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "outlook/program/Drawing.h"
#include "outlook/program/Pane.h"

namespace program {

class Popup : public Pane {
  public:
    // `chosen` gets the InstanceId of the clicked entry, or 0 when the menu was closed without one; `outside` where the
    // mouse is on the screen when it is beside the menu.
    Popup(HWND owner, const standin::Outlook& outlook, std::vector<standin::ControlView> entries, POINT corner,
          std::function<void(int)> chosen, std::function<void(POINT)> outside);
    ~Popup() override;

    // Up, Down, Enter and access keys; false for any other.
    bool OnKey(WPARAM key);

    [[nodiscard]] std::optional<RECT> PlaceOf(int instance) const;  // of an entry, inside the menu

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;

  private:
    struct Row {
        standin::ControlView control;
        RECT place{};
        bool separated = false;
    };
    void LayOut();
    void Paint();
    void PaintRow(HDC dc, const Row& row, bool hot) const;
    void OnMove(POINT point);
    void OnClick(POINT point);
    void ChooseRow(int number);
    void OpenInner(const Row& row);
    [[nodiscard]] int RowAt(POINT point) const;  // -1 beside every row
    void Choose(int instance);

    const standin::Outlook& outlook_;
    Look look_;
    std::vector<Row> rows_;
    SIZE size_{};
    int hot_ = -1;
    std::function<void(int)> chosen_;
    std::function<void(POINT)> outside_;
    std::unique_ptr<Popup> inner_;
    HWND owner_;
};

}  // namespace program
