// tests/weather/Person.h: the user before the boxes and dialogs that the add-in shows: does with each what the scenario
// says, then tries Escape and the close button. A box that withstands both stays, and the play hangs.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <utility>

namespace weather {

class Person {
  public:
    // What to do with a box; it may come again while the box is there.
    using Deed = std::function<void(HWND box)>;

    explicit Person(Deed deed) : deed_(std::move(deed)), former_(person) {
        person = this;
        timer_ = SetTimer(nullptr, 0, 10, &Person::Look);
    }
    ~Person() {
        KillTimer(nullptr, timer_);
        person = former_;
    }
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    static std::string TextOf(HWND window) {
        char text[512] = "";
        GetWindowTextA(window, text, sizeof text);
        return text;
    }
    static std::string ClassOf(HWND window) {
        char name[64] = "";
        GetClassNameA(window, name, sizeof name);
        return name;
    }
    // The visible child of that class with that text; null where there is none.
    static HWND Child(HWND box, const char* className, const std::string& text) {
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            if (IsWindowVisible(child) && ClassOf(child) == className && TextOf(child) == text) return child;
        }
        return nullptr;
    }
    static void Press(HWND box, const std::string& button) {
        if (HWND found = Child(box, "Button", button)) PostMessageA(found, BM_CLICK, 0, 0);
    }

  private:
    static constexpr int untilEscape = 25, untilClose = 50;  // looks

    static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
        if (person) EnumThreadWindows(GetCurrentThreadId(), &Person::Meet, 0);
    }
    static BOOL CALLBACK Meet(HWND window, LPARAM) {
        if (!person || ClassOf(window) != "#32770" || !IsWindowVisible(window) || !IsWindowEnabled(window)) return TRUE;
        if (window != person->seen_) {
            person->seen_ = window;
            person->looks_ = 0;
        }
        const int look = ++person->looks_;
        if (look % 10 == 1 && look < untilEscape) person->deed_(window);
        if (look == untilEscape) PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
        if (look == untilEscape + 5) PostMessageA(window, WM_KEYDOWN, VK_ESCAPE, 1);
        if (look >= untilClose && look % 10 == 0) PostMessageA(window, WM_CLOSE, 0, 0);
        return FALSE;
    }

    inline static Person* person = nullptr;
    Deed deed_;
    Person* former_;  // who acts again once this one has gone
    HWND seen_ = nullptr;
    int looks_ = 0;
    UINT_PTR timer_ = 0;
};

}  // namespace weather
