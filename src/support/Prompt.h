// support/Prompt.h: the port through which the lower floors speak to the user. QuestionBox fills it.
//
// Shapes  Text is ANSI. Identifiers, styles and answers have their names here; they are the numbers of Windows' own
//         message box and a few of the question box.
// Errors  none. While no port is plugged in, Ask shows the standard message box, Input returns its default text as
//         cancelled, and Message shows nothing and returns 0.
// Effects modal; may pump messages, and with them whatever else the host does.
#pragma once
#include <cstdint>
#include <string>

namespace Prompt {

// What identifies a question: one of these, or the number under which its answer may be remembered
// (question/QuestionRules.h).
namespace Id {
inline constexpr std::int32_t Plain = -1;  // nothing is remembered
inline constexpr std::int32_t TextInput = -2;
inline constexpr std::int32_t ListInput = -4;  // one of several texts, or another

// Notices that the user can switch off.
inline constexpr std::int32_t HelpInOtherLanguage = static_cast<std::int32_t>(0x90000010u);
inline constexpr std::int32_t VirusScanner = static_cast<std::int32_t>(0xD0000040u);
}  // namespace Id

// A set of buttons, with a picture and more added by "|".
namespace Style {
inline constexpr std::int32_t OK = 0;
inline constexpr std::int32_t OKCancel = 1;
inline constexpr std::int32_t AbortRetryIgnore = 2;
inline constexpr std::int32_t YesNoCancel = 3;
inline constexpr std::int32_t YesNo = 4;
inline constexpr std::int32_t RetryCancel = 5;
inline constexpr std::int32_t ButtonBits = 0x0F;

inline constexpr std::int32_t Error = 0x10;
inline constexpr std::int32_t Question = 0x20;
inline constexpr std::int32_t Warning = 0x30;
inline constexpr std::int32_t Information = 0x40;
inline constexpr std::int32_t PictureBits = 0x70;

inline constexpr std::int32_t FourthButton = 0x80;
inline constexpr std::int32_t SecondIsDefault = 0x100, ThirdIsDefault = 0x200;
inline constexpr std::int32_t DefaultButtonBits = 0x300;
inline constexpr std::int32_t NeverRemembered = 0x800000;
}  // namespace Style

namespace Answer {
inline constexpr std::int32_t None = 0;
inline constexpr std::int32_t OK = 1;
inline constexpr std::int32_t Cancel = 2;
inline constexpr std::int32_t Abort = 3;
inline constexpr std::int32_t Retry = 4;
inline constexpr std::int32_t Ignore = 5;
inline constexpr std::int32_t Yes = 6;
inline constexpr std::int32_t No = 7;
inline constexpr std::int32_t Fourth = 9;
}  // namespace Answer

class Port {
  public:
    Port() = default;
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    virtual ~Port() = default;

    // `prompt` may hold fields separated by "|"; it comes back as its first field.
    virtual std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                             const std::string& title) = 0;

    // What the user typed; empty, and `cancelled`, where it was given up.
    virtual std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText,
                              bool& cancelled) = 0;

    // Message `number` of the language file, with two texts replaced; shown `askLimit` times at most (0: always).
    virtual std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons,
                                 const std::string& search1, const std::string& replace1, const std::string& search2,
                                 const std::string& replace2, std::int32_t askLimit) = 0;
};

// Plugs `port` in (null: none) and returns the one that was there.
Port* Plug(Port* port) noexcept;

// Through the port that is plugged in. Without one: in Windows' own message box.
std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons, const std::string& title);

// Without a port: the default text, as if it were given up.
std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText, bool& cancelled);

// Without a port: 0, and nothing is shown.
std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons,
                     const std::string& search1 = {}, const std::string& replace1 = {}, const std::string& search2 = {},
                     const std::string& replace2 = {}, std::int32_t askLimit = 0);

}  // namespace Prompt
