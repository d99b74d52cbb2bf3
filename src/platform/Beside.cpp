#include "platform/Beside.h"

#include <windows.h>

#include <memory>

namespace platform {
namespace {

using Work = std::function<void()>;

DWORD WINAPI Thread(void* parameter) {
    const std::unique_ptr<Work> work(static_cast<Work*>(parameter));
    try {
        (*work)();
    } catch (...) {  // nobody is left to hear of it
    }
    return 0;
}

}  // namespace

void RunBeside(std::function<void()> work) {
    auto kept = std::make_unique<Work>(std::move(work));
    const HANDLE thread = CreateThread(nullptr, 0, Thread, kept.get(), 0, nullptr);
    if (!thread) return (*kept)();
    static_cast<void>(kept.release());  // the thread has it
    CloseHandle(thread);
}

void EndProgram(int code) noexcept {
    ExitProcess(static_cast<UINT>(code));
    __builtin_unreachable();
}

}  // namespace platform
