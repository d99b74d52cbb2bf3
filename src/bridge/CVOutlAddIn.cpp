#include "bridge/CVOutlAddIn.h"

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "bridge/ChangedItems.h"
#include "bridge/FormOlAddInTimer.h"
#include "bridge/MainAppCommand.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "platform/Guard.h"
#include "platform/MessageBox.h"
#include "platform/Process.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"
#include "support/RegistryKeys.h"

using platform::Root;

namespace CVOutlAddIn {
namespace {

constexpr const char* texts = "OutlookAddIn";

constexpr std::int32_t commandInterval = 300;
constexpr std::int32_t shortestDelay = 1000;

std::string Value(const std::string& name) {
    return RegEdit::GetRegString(Root::CurrentUser, RegistryKeys::Outlook, name);
}

bool SaveValue(std::string_view key, const std::string& name, std::string_view text) {
    return RegEdit::SaveRegValue(Root::CurrentUser, key, name, text, RegEdit::TypeText);
}

// "1" or "0", stored for good; empty, and nothing stored, where the user could not be asked.
std::string AskForAutomaticHandOff(const std::string& switchName, char typeLetter) {
    const std::string kind = Language::GetLanguageString(texts, std::string(1, typeLetter));
    std::string question = Language::GetLanguageStringReplaced(texts, "Msg1", "%i", kind);
    const std::int32_t answer =
        Prompt::Ask(Prompt::Id::Plain, question, Prompt::Style::YesNo, "Corvella Outlook AddIn");
    // While another box is open, the question box returns OK for Yes.
    const bool yes = answer == Prompt::Answer::Yes || answer == Prompt::Answer::OK;
    if (!yes && answer != Prompt::Answer::No) return {};
    const char* text = yes ? "1" : "0";
    SaveValue(RegistryKeys::Outlook, switchName, text);
    return text;
}

bool IsHandedOffAutomatically(char typeLetter) {
    const std::string switchName = std::string("Auto") + typeLetter;
    auto text = RegEdit::ReadRegString(Root::CurrentUser, RegistryKeys::Outlook, switchName);
    if (!text) return false;  // the user has chosen, but nobody knows what
    if (text->empty()) text = AskForAutomaticHandOff(switchName, typeLetter);
    return platform::Val(*text) != 0;
}

// False where an item is not in the list afterwards.
bool ListItems(std::span<const std::string> entryIds, char typeLetter) {
    const std::string listName = std::string("Changed") + typeLetter;
    const auto list = RegEdit::ReadRegString(Root::CurrentUser, RegistryKeys::Outlook, listName);
    if (!list) return false;  // a list that cannot be read is not overwritten
    const std::string longer = ChangedItems::AddAll(*list, entryIds);
    return longer == *list || SaveValue(RegistryKeys::Outlook, listName, longer);
}

// What lacked memory, or met another program, works a moment later.
template <class Step>
bool AttemptTwice(Step step) {
    bool done = false;
    for (int attempt = 0; !done && attempt < 2; ++attempt) platform::Attempt([&] { done = step(); });
    return done;
}

bool List(std::span<const std::string> entryIds, char typeLetter) {
    return AttemptTwice([&] { return ListItems(entryIds, typeLetter); });
}

std::string BlockName(char typeLetter, std::int32_t block) {
    return std::string(1, typeLetter) + platform::Decimal(block);
}

bool ForgetNotedItems() { return RegEdit::DeleteRegValue(Root::CurrentUser, RegistryKeys::Sending, {}); }

void Arm(FormOlAddInTimer::TimerControl& timer, bool explicitly) {
    if (explicitly) {
        timer.SetInterval(commandInterval);
    } else {
        if (const auto interval = ChangedItems::IntervalOf(Value("Delay"))) timer.SetInterval(*interval);
        if (timer.Interval() == 0) timer.SetInterval(shortestDelay);
    }
    // A form that never fires would keep the library loaded; the next hand-off makes another one.
    if (!timer.Enable()) FormOlAddInTimer::Unload();
}

void SetTimer(bool explicitly, bool startTimer) {
    AttemptTwice([&] {
        FormOlAddInTimer::TimerControl& timer = FormOlAddInTimer::Load().TimerUpdate;
        timer.Disable();
        if (startTimer) Arm(timer, explicitly);
        return FormOlAddInTimer::IsLoaded();
    });
}

std::string MainAppFolder() {
    const std::string folder = RegEdit::GetRegString(Root::CurrentUser, RegistryKeys::Product, "Path");
    return folder.empty() ? Files::AppFolder() : folder;
}

}  // namespace

void AddChangedItem(std::string_view entryId, char typeLetter, bool explicitly, bool startTimer) {
    const Debug::Trace trace("AddChangedItem");
    if (!explicitly && !IsHandedOffAutomatically(typeLetter)) return;
    AttemptTwice([&] { return ListItems({{std::string(entryId)}}, typeLetter); });
    SetTimer(explicitly, startTimer);
}

bool ListNotedItems(char typeLetter) {
    std::vector<std::string> entryIds;
    for (std::int32_t block = 1;; ++block) {
        const auto ids = RegEdit::ReadRegString(Root::CurrentUser, RegistryKeys::Sending, BlockName(typeLetter, block));
        if (!ids) return false;
        if (ids->empty()) break;
        ChangedItems::Split(*ids, entryIds);
    }
    if (entryIds.empty()) return true;
    return List(entryIds, typeLetter) && ForgetNotedItems();
}

void HandOff::Add(std::string entryId) {
    const Debug::Trace trace("AddChangedItem");
    if (entryIds_.empty()) SetTimer(true, false);
    AttemptTwice([&] {
        entryIds_.push_back(std::move(entryId));
        return true;
    });
    if (entryIds_.size() % itemsABlock == 0) platform::Attempt([this] { Note(); });
}

// What an earlier sending has noted is listed first; where it cannot be, it stays and nothing is noted beside it.
void HandOff::Note() {
    if (blocks_ == 0 && !ListNotedItems(typeLetter_)) return;
    const std::span<const std::string> block = std::span(entryIds_).subspan(noted_);
    const std::string ids = ChangedItems::AddAll({}, block);
    mayHaveNoted_ = true;
    if (!SaveValue(RegistryKeys::Sending, BlockName(typeLetter_, blocks_ + 1), ids)) return;
    ++blocks_;
    noted_ += block.size();
}

void HandOff::Finish() {
    const bool listed = entryIds_.empty() || List(entryIds_, typeLetter_);
    if (!listed) platform::Attempt([this] { Note(); });
    if (listed && mayHaveNoted_) ForgetNotedItems();
    SetTimer(true, true);
}

void CallMainApp(std::string_view argument) {
    const std::string folder = MainAppFolder();
    if (folder.empty()) {
        platform::ShowMessageBox("Unable to find Corvella.exe", Prompt::Style::OK);
        return;
    }
    platform::StartProcess(MainAppCommand::Call(folder, argument), platform::Show::Minimised);
    platform::Err().Clear();
}

}  // namespace CVOutlAddIn
