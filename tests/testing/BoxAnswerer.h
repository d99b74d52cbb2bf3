// testing/BoxAnswerer.h: answers the standard message boxes that this thread shows, and remembers them.
#pragma once
#include <windows.h>

#include <string>
#include <vector>

class BoxAnswerer {
  public:
    struct Box {
        std::string title;
        std::string text;
        bool icon = false;
        std::vector<int> buttons;  // the standard answer numbers
    };

    // `answer`: the standard number of the button to press.
    explicit BoxAnswerer(int answer) : answer_(answer), former_(current) {
        current = this;
        timer_ = SetTimer(nullptr, 0, 20, Tick);
    }
    ~BoxAnswerer() {
        KillTimer(nullptr, timer_);
        current = former_;
    }
    BoxAnswerer(const BoxAnswerer&) = delete;
    BoxAnswerer& operator=(const BoxAnswerer&) = delete;

    [[nodiscard]] const std::vector<Box>& Seen() const { return seen_; }

  private:
    static std::string TextOf(HWND window) {
        std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
        text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
        return text;
    }

    static BOOL CALLBACK Read(HWND child, LPARAM box) {
        auto& found = *reinterpret_cast<Box*>(box);
        char kind[32] = {};
        GetClassNameA(child, kind, sizeof kind);
        const int id = GetDlgCtrlID(child);
        if (lstrcmpiA(kind, "Button") == 0) {
            if (IsWindowVisible(child)) found.buttons.push_back(id);
        } else if ((GetWindowLongA(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
            found.icon = SendMessageA(child, STM_GETICON, 0, 0) != 0;
        } else if (id == 0xFFFF || id == -1) {
            found.text = TextOf(child);
        }
        return TRUE;
    }

    static BOOL CALLBACK Answer(HWND window, LPARAM) {
        char kind[32] = {};
        GetClassNameA(window, kind, sizeof kind);
        if (std::string(kind) != "#32770" || !IsWindowVisible(window) || window == current->last_) return TRUE;
        current->last_ = window;
        Box box;
        box.title = TextOf(window);
        EnumChildWindows(window, Read, reinterpret_cast<LPARAM>(&box));
        current->seen_.push_back(box);
        PostMessageA(window, WM_COMMAND, static_cast<WPARAM>(current->answer_), 0);
        return TRUE;
    }

    static void CALLBACK Tick(HWND, UINT, UINT_PTR, DWORD) {
        if (current == nullptr) return;
        if (!IsWindow(current->last_)) current->last_ = nullptr;
        EnumThreadWindows(GetCurrentThreadId(), Answer, 0);
    }

    static inline BoxAnswerer* current = nullptr;
    int answer_;
    BoxAnswerer* former_;
    UINT_PTR timer_ = 0;
    HWND last_ = nullptr;
    std::vector<Box> seen_;
};
