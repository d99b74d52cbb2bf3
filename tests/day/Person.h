// day/Person.h: a person at the keyboard while a dialog has the program's thread: reads its windows and presses keys.
//
// The task runs in a thread of its own, from the making of the person until Wait. Keys go, as a
// keyboard's do, to the window in front.
#pragma once
#include <windows.h>

#include <functional>
#include <set>
#include <string>

#include "outlook/program/Stage.h"

namespace program::day {

class Person {
  public:
    using Task = std::function<void(Person&)>;
    Person(const Stage& stage, Task task);
    ~Person() { Wait(); }
    Person(const Person&) = delete;
    Person& operator=(const Person&) = delete;

    void Wait();  // until the task has ended; the program's messages run meanwhile

    // For the task.
    HWND AwaitDialog();                   // a window of the program that was not there before; null after some seconds
    bool AwaitGone(HWND window);          // answered; where it is not after some seconds it is closed, and false
    void Press(WORD key, WORD with = 0);  // with Shift or Alt held
    void Write(const std::string& digits);  // over what the field with the keyboard has
    [[nodiscard]] HWND Focus() const;       // the control with the keyboard
    void Picture(const std::string& name) const { stage_.PictureMeanwhile(name); }

  private:
    static DWORD WINAPI Run(void* self);
    [[nodiscard]] std::set<HWND> TopWindows() const;

    const Stage& stage_;
    Task task_;
    DWORD program_;  // the thread that shows the windows
    std::set<HWND> before_;
    HANDLE thread_;
};

}  // namespace program::day
