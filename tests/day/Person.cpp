#include "day/Person.h"

#include <utility>

#include "day/Observed.h"

namespace program::day {
namespace {

constexpr DWORD patience = 6000, step = 20, afterKey = 60;

bool Await(const std::function<bool()>& condition) {
    for (DWORD waited = 0; waited < patience; waited += step) {
        if (condition()) return true;
        Sleep(step);
    }
    return false;
}

INPUT KeyInput(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyA(key, 0));
    input.ki.dwFlags = flags;
    return input;
}

// Those of the grey keys: without it, Shift and an arrow are a digit of the number pad.
DWORD Extended(WORD key) {
    const bool grey = key == VK_HOME || key == VK_END || key == VK_UP || key == VK_DOWN;
    return grey ? KEYEVENTF_EXTENDEDKEY : 0;
}

// Of all windows of the program, those that are neither its frames nor tips.
BOOL CALLBACK AddDialog(HWND window, LPARAM found) {
    const std::string kind = ClassOf(window);
    if (IsWindowVisible(window) && kind != "OutlookStandInPane" && kind != "tooltips_class32")
        reinterpret_cast<std::set<HWND>*>(found)->insert(window);
    return TRUE;
}

}  // namespace

Person::Person(const Stage& stage, Task task)
    : stage_(stage), task_(std::move(task)), program_(GetCurrentThreadId()), before_(TopWindows()) {
    thread_ = CreateThread(nullptr, 0, Run, this, 0, nullptr);
}

DWORD WINAPI Person::Run(void* self) {
    auto& person = *static_cast<Person*>(self);
    person.task_(person);
    return 0;
}

void Person::Wait() {
    if (!thread_) return;
    while (WaitForSingleObject(thread_, 0) == WAIT_TIMEOUT) stage_.Pump(10);
    CloseHandle(std::exchange(thread_, nullptr));
}

std::set<HWND> Person::TopWindows() const {
    std::set<HWND> windows;
    EnumThreadWindows(program_, AddDialog, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

HWND Person::AwaitDialog() {
    HWND dialog = nullptr;
    const bool there = Await([&] {
        for (const HWND window : TopWindows())
            if (!before_.contains(window)) dialog = window;
        return dialog && GetForegroundWindow() == dialog && Focus();
    });
    return there ? dialog : nullptr;
}

bool Person::AwaitGone(HWND window) {
    if (Await([&] { return !IsWindow(window) || !IsWindowVisible(window); })) return true;
    PostMessageA(window, WM_CLOSE, 0, 0);
    return false;
}

void Person::Press(WORD key, WORD with) {
    INPUT inputs[4];
    UINT count = 0;
    if (with) inputs[count++] = KeyInput(with, 0);
    inputs[count++] = KeyInput(key, Extended(key));
    inputs[count++] = KeyInput(key, Extended(key) | KEYEVENTF_KEYUP);
    if (with) inputs[count++] = KeyInput(with, KEYEVENTF_KEYUP);
    SendInput(count, inputs, sizeof inputs[0]);
    Sleep(afterKey);
}

void Person::Write(const std::string& digits) {
    Press(VK_HOME);
    Press(VK_END, VK_SHIFT);
    Press(VK_DELETE);
    for (const char digit : digits) Press(static_cast<WORD>(digit));
}

HWND Person::Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(program_, &info) ? info.hwndFocus : nullptr;
}

}  // namespace program::day
