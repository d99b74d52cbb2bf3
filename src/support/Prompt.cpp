#include "support/Prompt.h"

#include <algorithm>
#include <utility>

#include "platform/MessageBox.h"

namespace Prompt {
namespace {

Port* plugged = nullptr;

}  // namespace

Port* Plug(Port* port) noexcept { return std::exchange(plugged, port); }

std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons, const std::string& title) {
    if (plugged != nullptr) return plugged->Ask(questionId, prompt, buttons, title);
    prompt.resize(std::min(prompt.find('|'), prompt.size()));
    return platform::ShowMessageBox(prompt, buttons, title);
}

std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText,
                  bool& cancelled) {
    if (plugged != nullptr) return plugged->Input(prompt, title, defaultText, cancelled);
    cancelled = true;
    return defaultText;
}

std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons, const std::string& search1,
                     const std::string& replace1, const std::string& search2, const std::string& replace2,
                     std::int32_t askLimit) {
    if (plugged == nullptr) return 0;
    return plugged->Message(questionId, number, buttons, search1, replace1, search2, replace2, askLimit);
}

}  // namespace Prompt
