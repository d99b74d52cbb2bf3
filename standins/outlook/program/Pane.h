// program/Pane.h: a window that an object handles. The window owns nothing; the object destroys its window.
#pragma once
#include <windows.h>

namespace program {

class Pane {
  public:
    Pane() = default;
    virtual ~Pane() { Destroy(); }
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    // Makes the window; its size is set by the caller.
    void Create(const char* title, DWORD style, DWORD extended, HWND parent, const RECT& place);
    void Destroy();
    [[nodiscard]] HWND Handle() const { return window_; }
    [[nodiscard]] RECT Client() const;
    void Redraw() const { InvalidateRect(window_, nullptr, FALSE); }

  protected:
    virtual LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) {
        return DefWindowProcA(window_, message, first, second);
    }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM first, LPARAM second);
    HWND window_ = nullptr;
};

// Paints without flicker: into a bitmap that goes to the window at the end.
class Canvas {
  public:
    explicit Canvas(HWND window);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    [[nodiscard]] HDC Get() const { return memory_; }

  private:
    HWND window_;
    PAINTSTRUCT paint_{};
    RECT all_{};
    HDC memory_;
    HBITMAP bitmap_;
    HGDIOBJ before_;
};

}  // namespace program
