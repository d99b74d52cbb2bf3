// testing/Pump.h: lets Windows deliver this thread's messages until something is so, or a deadline has passed.
#pragma once
#include <windows.h>

inline void PumpMessages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

// True as soon as `done` is; false when it is not within `milliseconds`.
template <class Done>
bool PumpUntil(DWORD milliseconds, Done&& done) {
    const DWORD start = GetTickCount();
    for (;;) {
        PumpMessages();
        if (done()) return true;
        const DWORD passed = GetTickCount() - start;
        if (passed >= milliseconds) return false;
        const DWORD rest = milliseconds - passed;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, rest < 10 ? rest : 10, QS_ALLINPUT);
    }
}

inline void PumpFor(DWORD milliseconds) {
    PumpUntil(milliseconds, [] { return false; });
}
