// tests/e2e/User.h: a person before the boxes and dialogs that the add-in shows in the host: reads each that comes and
// presses one of its buttons, or Escape.
#pragma once
#include <doctest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace e2e {

class User {
  public:
    struct Box {
        HWND window = nullptr;
        std::string title;
        std::string text;  // the longest that stands on it
        std::vector<std::string> buttons;
        bool ofWindows = false;  // Windows' own message box
        bool topmost = false;
        HWND owner = nullptr;
        bool ownerWaits = false;
    };

    explicit User(std::string button) : button_(std::move(button)) {
        user = this;
        timer_ = SetTimer(nullptr, 0, 20, &User::Look);
    }
    ~User() {
        KillTimer(nullptr, timer_);
        user = nullptr;
    }
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    std::vector<Box> boxes;
    std::function<void(const Box&)> beforeAnswer;  // what else is done while a box is there

  private:
    static std::string TextOf(HWND window) {
        std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
        text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
        return text;
    }
    static std::string ClassOf(HWND window) {
        char name[64] = "";
        GetClassNameA(window, name, sizeof name);
        return name;
    }

    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
        if (user && !IsWindow(user->answered_)) user->answered_ = nullptr;  // its number may come again
        if (user) EnumThreadWindows(GetCurrentThreadId(), &User::Meet, 0);
    }
    static BOOL CALLBACK Meet(HWND window, LPARAM) {
        if (ClassOf(window) != "#32770" || !IsWindowVisible(window)) return TRUE;
        if (window == user->answered_) {
            user->AnswerAgain();
            return TRUE;
        }
        user->answered_ = window;
        user->looks_ = 0;
        user->pressed_ = user->Read(window);
        if (user->beforeAnswer) user->beforeAnswer(Box(user->boxes.back()));
        user->Answer();
        return FALSE;
    }
    // What stands on the box; the button to press.
    HWND Read(HWND window) {
        constexpr int textOfWindowsBox = 0xFFFF;
        HWND pressed = nullptr;
        Box box;
        box.window = window;
        box.title = TextOf(window);
        box.ofWindows = GetDlgItem(window, textOfWindowsBox) != nullptr;
        box.topmost = (GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
        box.owner = GetWindow(window, GW_OWNER);
        box.ownerWaits = box.owner && !IsWindowEnabled(box.owner);
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (!IsWindowVisible(child)) continue;
            const std::string text = TextOf(child);
            if (ClassOf(child) == "Static" && text.size() > box.text.size()) box.text = text;
            if (ClassOf(child) != "Button") continue;
            box.buttons.push_back(text);
            if (text == button_) pressed = child;
        }
        boxes.push_back(box);
        return pressed;
    }
    void Answer() {
        if (button_ == "Escape") {
            PostMessageA(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
            return;
        }
        REQUIRE(pressed_);
        PostMessageA(pressed_, BM_CLICK, 0, 0);
    }
    // A box that has just come may still lose what was pressed, with the focus, to another program's window.
    void AnswerAgain() {
        constexpr int patience = 25;
        if (++looks_ % patience == 0) Answer();
    }

    inline static User* user = nullptr;
    std::string button_;
    HWND answered_ = nullptr;
    HWND pressed_ = nullptr;
    int looks_ = 0;
    UINT_PTR timer_ = 0;
};

}  // namespace e2e
