// question/QuestionLayout.h: where everything stands on the question form. Pure: asks
// for the size of texts, knows no windows.
//
// Shapes  Pixels of the form's inside. Window metrics are in the registry's unit (twips as negative numbers).
//         Lengths of the design are those at 96 dots an inch.
// Rules   Everything that is shown is wholly inside and nothing covers anything else. The form is as large as its texts
//         need, up to `largest`; then the prompt scrolls. Only where captions are so long that not even three lines of
//         the prompt are left beside them are captions cut off.
#pragma once
#include <cstdint>
#include <vector>

#include "platform/forms/Control.h"

namespace QuestionLayout {

using platform::Rect;
using platform::Size;

enum class Part : std::uint8_t { Caption, Prompt, Link, Check, First, No, Cancel, All, Help };

class TextMeasure {
  public:
    // What the text of a part needs, broken into lines at `width` (0: only where the text itself breaks).
    [[nodiscard]] virtual Size Of(Part part, std::int32_t width) const = 0;

  protected:
    ~TextMeasure() = default;
};

// Pixels of a metric.
[[nodiscard]] std::int32_t Pixels(float metric, std::int32_t dotsAnInch);

enum class Input : std::uint8_t { None, Line, List };

struct Request {
    Size largest;
    std::int32_t dotsAnInch = 96;
    std::int32_t border = 1, captionHeight = 20, scrollBar = 16;
    std::int32_t sides = 23;       // left and right margin together
    std::int32_t lineHeight = 13;  // of the form's font
    std::int32_t textWidth = 0;    // at which the prompt is broken, at 96 dots an inch; 0: as it looks well
    bool picture = false, link = false, check = false;
    Input input = Input::None;
    std::vector<Part> buttons;  // from left to right
    Size wanted;                // chosen by the user; 0: computed
};

struct Layout {
    Size inside;
    Rect captionBar, captionImage, caption;  // the bar, and on it the image and the text
    Rect picture, prompt, link, input, check, grip;
    std::vector<Rect> buttons;
    bool promptScrolls = false;
    bool captionsCut = false;
};

[[nodiscard]] Layout Arrange(const Request& request, const TextMeasure& measure);

}  // namespace QuestionLayout
