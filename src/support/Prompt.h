// support/Prompt.h: the port through which the lower floors speak to the user. QuestionBox fills it.
//
// Shapes  Text is ANSI. `questionId`, `buttons` and the answers are those of the question box; the answers are the
//         standard numbers (1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No) and 9 for the fourth button.
// Errors  none. While no port is plugged in, Ask shows the standard message box, Input returns its default text as
//         cancelled, and Message shows nothing and returns 0.
// Effects modal; may pump messages, and with them whatever else the host does.
#pragma once
#include <cstdint>
#include <string>

namespace Prompt {

class Port {
  public:
    Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    virtual ~Port() = default;

    // `prompt` may hold fields separated by "|"; it comes back as its first field.
    virtual std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                             const std::string& title) = 0;

    virtual std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText,
                              bool& cancelled) = 0;

    // Message `number` of the language file, with two texts replaced; shown `askLimit` times at most (0: always).
    virtual std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons,
                                 const std::string& search1, const std::string& replace1, const std::string& search2,
                                 const std::string& replace2, std::int32_t askLimit) = 0;
};

// Plugs `port` in (null: none) and returns the one that was there.
Port* Plug(Port* port) noexcept;

std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons, const std::string& title);

std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText, bool& cancelled);

std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons,
                     const std::string& search1 = {}, const std::string& replace1 = {}, const std::string& search2 = {},
                     const std::string& replace2 = {}, std::int32_t askLimit = 0);

}  // namespace Prompt
