// question/StandardInput.h: a plain input box, for when the question form is in use.
//
// Shapes  Text is ANSI. The answer is what was entered, and nothing when it was cancelled or could not be shown.
// Effects modal over the window in front; pumps messages.
#pragma once
#include <string>

namespace QuestionBox {

[[nodiscard]] std::string StandardInput(const std::string& prompt, const std::string& title,
                                        const std::string& defaultText, bool& cancelled);

}  // namespace QuestionBox
