#include "bridge/FormOlAddInTimer.h"

#include <string>
#include <utility>

#include "bridge/ChangedItems.h"
#include "bridge/MainAppCommand.h"
#include "platform/Err.h"
#include "platform/Process.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using platform::Root;

namespace {

bool HasChangedItems() {
    std::string waiting;
    for (const char* list : {"ChangedA", "ChangedC", "ChangedT"}) {
        waiting += RegEdit::GetRegString(Root::CurrentUser, RegistryKeys::Outlook, list);
    }
    return !waiting.empty();
}

std::string MainAppFolder() {
    const std::string folder = RegEdit::GetRegString(Root::LocalMachine, RegistryKeys::Product, "Path");
    return folder.empty() ? RegEdit::GetRegString(Root::CurrentUser, RegistryKeys::Product, "Path") : folder;
}

void StartUpdate() {
    const std::string folder = MainAppFolder();
    if (!folder.empty()) platform::StartProcess(MainAppCommand::Update(folder), platform::Show::Minimised);
}

}  // namespace

FormOlAddInTimer* FormOlAddInTimer::loaded = nullptr;

FormOlAddInTimer::FormOlAddInTimer() : TimerUpdate([this] { TimerUpdate_Timer(); }) {}

FormOlAddInTimer& FormOlAddInTimer::Load() {
    if (loaded == nullptr) loaded = new FormOlAddInTimer;
    return *loaded;
}

bool FormOlAddInTimer::IsLoaded() noexcept { return loaded != nullptr; }

void FormOlAddInTimer::Unload() noexcept { delete std::exchange(loaded, nullptr); }

void FormOlAddInTimer::TimerUpdate_Timer() {
    // Also where memory is short: a form that stays loaded keeps the library. The items stay on their lists.
    struct UnloadUnlessArmed {
        FormOlAddInTimer& form;
        ~UnloadUnlessArmed() {
            if (!form.TimerUpdate.Enabled()) Unload();
        }
    };
    const platform::ErrorScope ignored;
    TimerUpdate.Disable();
    const UnloadUnlessArmed end{*this};
    if (HasChangedItems()) StartUpdate();
}

bool FormOlAddInTimer::TimerControl::Enable() noexcept {
    enabled_ = true;
    return Restart();
}

void FormOlAddInTimer::TimerControl::Disable() noexcept {
    enabled_ = false;
    Restart();
}

bool FormOlAddInTimer::TimerControl::SetInterval(std::int32_t milliseconds) noexcept {
    if (milliseconds < 0 || milliseconds > ChangedItems::longestInterval) return false;
    interval_ = milliseconds;
    Restart();
    return true;
}

bool FormOlAddInTimer::TimerControl::Restart() noexcept {
    timer_.Stop();
    return !enabled_ || interval_ <= 0 || timer_.Start(static_cast<std::uint32_t>(interval_));
}
