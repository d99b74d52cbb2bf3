// question/QuestionBox.h: every message, question and input that the user sees.
//
// Shapes  Answers are the standard numbers of a message box (1 OK, 2 Cancel, 4 Retry, 6 Yes, 7 No) and 9 for the
//         fourth button. Identifiers, `buttons` and the fields of a prompt are those of question/QuestionRules.h.
//         Captions may be empty: the standard ones.
// Errors  All end here: they are logged with the step reached, and the answer is empty, or 0.
// Owns    The memory of answers that are not asked for again, for the life of the library.
// Effects Modal over the window in front; pumps messages. Remembered answers and counts go to the settings file.
//         While a box is shown, further ones return empty at once.
#pragma once
#include <cstdint>
#include <string>

#include "question/FormQuestion.h"
#include "question/QuestionRules.h"
#include "support/Prompt.h"

namespace QuestionBox {

extern QuestionRules::Memory memory;

// The central operation. The answer is a number as text; of an input (identifiers -2 to -5) what was entered.
//   prompt        comes back as its first field
//   defaultText   an input's first content; else 1 makes the first button the preselected one
//   layoutOption  the width at which the prompt is broken, in pixels at 96 dots an inch; 0: as it reads well
//   cancelled     whether the answer was Cancel
//   extraText     the choices of identifier -4, one a line
//   extraOption   the help page that the help button opens; empty: no such button
std::string MsgInputBox(std::int32_t questionId, std::string& prompt, std::int32_t buttons, const std::string& title,
                        const std::string& defaultText, std::int32_t layoutOption, bool& cancelled,
                        const std::string& extraText, const std::string& caption1, const std::string& caption2,
                        const std::string& caption3, const std::string& extraOption);

// `inputFlag` is the default text, as a number. The answer is the leading number of the central operation's.
std::int32_t QuestionMsgBox(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                            const std::string& title, std::int16_t inputFlag = -1, std::int32_t layoutOption = 0,
                            const std::string& caption1 = {}, const std::string& caption2 = {},
                            const std::string& caption3 = {}, const std::string& extraOption = {});

// Message `number` of the language file with two texts replaced. Asked more than `askLimit` times (0: no limit), it
// shows nothing and returns 1.
std::int32_t MsgBoxMessage(std::int32_t questionId, std::int32_t number, std::int32_t buttons,
                           const std::string& search1, const std::string& replace1, const std::string& search2,
                           const std::string& replace2, const std::string& extraOption, std::int32_t askLimit);

std::int32_t MsgBoxMessagePlain(std::int32_t number, std::int32_t buttons, const std::string& search1,
                                const std::string& replace1, const std::string& search2, const std::string& replace2,
                                const std::string& extraOption);

// The form that is shown, or null.
[[nodiscard]] FormQuestion* ShownForm();

// By which the lower floors ask through this box.
[[nodiscard]] Prompt::Port& PortOfPrompt();

}  // namespace QuestionBox
