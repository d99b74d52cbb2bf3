#include "question/QuestionLayout.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/Text.h"
#include "platform/forms/Design.h"

namespace QuestionLayout {
namespace {

using Length = std::int32_t;

// At 96 dots an inch.
constexpr Length gapAt96 = 7, sectionGapAt96 = 10, pictureAt96 = 32, buttonSideAt96 = 10, buttonHeightAt96 = 23,
                 buttonEdgeAt96 = 4, tickAt96 = 18, fieldEdgeAt96 = 4, captionImageAt96 = 16, textWidthAt96 = 380,
                 inputWidthAt96 = 260, smallestWidthAt96 = 220, captionSideAt96 = 4;
constexpr Length tightGapAt96 = 3, tightButtonEdgeAt96 = 2;
constexpr Length linesOfList = 5, fewestPromptLines = 3;
constexpr Length twipsAnInch = 1440;

// How much room the parts get: first with less between them, then with fewer lines in a caption.
struct Spacing {
    Length linesOfCaption;
    bool tight;
};
constexpr Spacing spacings[] = {{4, false}, {4, true}, {3, true}, {2, true}, {1, true}};

class Arrangement {
  public:
    Arrangement(const Request& request, const TextMeasure& measure, const Spacing& spacing)
        : request_(request), measure_(measure), spacing_(spacing) {}

    // False when not even the smallest prompt is left room.
    bool Compute(Layout& layout);

  private:
    [[nodiscard]] Length Scaled(Length lengthAt96) const { return platform::Scaled(lengthAt96, request_.dotsAnInch); }
    [[nodiscard]] Length Gap() const { return Scaled(spacing_.tight ? tightGapAt96 : gapAt96); }
    [[nodiscard]] Length Side() const { return request_.sides / 2; }
    [[nodiscard]] Length PictureSpan() const { return request_.picture ? Scaled(pictureAt96) + 2 * Gap() : 0; }
    [[nodiscard]] Length CaptionImageWidth() const { return Scaled(captionImageAt96) + 2 * Scaled(captionSideAt96); }
    [[nodiscard]] Length SectionGap() const { return Scaled(spacing_.tight ? tightGapAt96 : sectionGapAt96); }
    Length Limit(Length height);
    Size ButtonSize(Part part, Length content);
    [[nodiscard]] Length ButtonsInOneRow() const;
    [[nodiscard]] Length PromptWidth() const;
    [[nodiscard]] Length FormWidth() const;
    Length CaptionBarHeight(Length width);
    [[nodiscard]] Length InputHeight() const;
    Length CheckHeight(Length content);
    [[nodiscard]] bool LookWellAlike(Length widest) const { return widest <= 2 * Scaled(platform::buttonWidthAt96); }
    [[nodiscard]] std::vector<Length> FullRows(const std::vector<Length>& widths, Length content) const;
    Length PlaceButtons(Layout& layout, Length content);  // from 0,0; returns their height

    const Request& request_;
    const TextMeasure& measure_;
    Spacing spacing_;
    bool cut_ = false;
};

// What a caption of `height` gets.
Length Arrangement::Limit(Length height) {
    const Length most = spacing_.linesOfCaption * request_.lineHeight;
    cut_ = cut_ || height > most;
    return std::min(height, most);
}

// A caption that is wider than the form is broken into lines.
Size Arrangement::ButtonSize(Part part, Length content) {
    const Length side = 2 * Scaled(buttonSideAt96),
                 edge = 2 * Scaled(spacing_.tight ? tightButtonEdgeAt96 : buttonEdgeAt96);
    Size text = measure_.Of(part, 0);
    if (text.width + side > content) text = {content - side, measure_.Of(part, content - side).height};
    return {std::min(content, std::max(Scaled(platform::buttonWidthAt96), text.width + side)),
            std::max(Limit(text.height) + edge, spacing_.tight ? 0 : Scaled(buttonHeightAt96))};
}

// All of one size, unless short captions stood on very wide buttons then, or the screen is not as wide.
Length Arrangement::ButtonsInOneRow() const {
    Length sum = 0, widest = 0;
    for (const Part part : request_.buttons) {
        const Length width =
            std::max(Scaled(platform::buttonWidthAt96), measure_.Of(part, 0).width + 2 * Scaled(buttonSideAt96));
        sum += width;
        widest = std::max(widest, width);
    }
    const auto count = static_cast<Length>(request_.buttons.size());
    const Length gaps = (count - 1) * Gap();
    const bool alike = LookWellAlike(widest) && count * widest + gaps + 2 * Side() <= request_.largest.width;
    return (alike ? count * widest : sum) + gaps;
}

// A short prompt is as wide as it is; a long one is broken at a width that is read well, a very long one at the first
// wider one that leaves half of the screen's height.
Length Arrangement::PromptWidth() const {
    const Length widest = request_.largest.width - 2 * Side() - PictureSpan();
    const Length wanted = Scaled(request_.textWidth > 0 ? request_.textWidth : textWidthAt96);
    const Length readable = std::clamp(wanted, 1, std::max(1, widest));
    const Length whole = measure_.Of(Part::Prompt, 0).width;
    if (whole <= readable) return whole;
    Length width = readable;
    while (width < widest && measure_.Of(Part::Prompt, width).height > request_.largest.height / 2) {
        width = std::min(widest, width + width / 4 + 1);
    }
    return width;
}

Length Arrangement::FormWidth() const {
    const Length margins = 2 * Side();
    const Length smallest = std::min(request_.largest.width, Scaled(smallestWidthAt96));
    if (request_.wanted.width > 0) return std::clamp(request_.wanted.width, smallest, request_.largest.width);
    Length content = std::max(PictureSpan() + PromptWidth(), ButtonsInOneRow());
    if (request_.link) content = std::max(content, PictureSpan() + measure_.Of(Part::Link, 0).width);
    if (request_.check) content = std::max(content, Scaled(tickAt96) + measure_.Of(Part::Check, 0).width);
    if (request_.input != Input::None) content = std::max(content, PictureSpan() + Scaled(inputWidthAt96));
    const Length title =
        CaptionImageWidth() + Scaled(captionSideAt96) + 2 * request_.border + measure_.Of(Part::Caption, 0).width;
    return std::clamp(std::max(content + margins, title), smallest, request_.largest.width);
}

Length Arrangement::CaptionBarHeight(Length width) {
    const Length text = width - CaptionImageWidth() - 2 * request_.border;
    return std::max({request_.captionHeight, Scaled(captionImageAt96) + 2,
                     Limit(measure_.Of(Part::Caption, text).height) + Scaled(captionSideAt96)});
}

Length Arrangement::InputHeight() const {
    const Length lines = request_.input == Input::List ? linesOfList : 1;
    return lines * request_.lineHeight + 2 * fieldEdgeAt96;  // the text stands at the top: no edge that grows
}

Length Arrangement::CheckHeight(Length content) {
    const Length text = measure_.Of(Part::Check, content - Scaled(tickAt96)).height;
    return std::max(Limit(text), request_.lineHeight) + Scaled(fieldEdgeAt96);
}

// How many of such widths stand in each row, the rows as full as they can be.
std::vector<Length> Arrangement::FullRows(const std::vector<Length>& widths, Length content) const {
    std::vector<Length> rows;
    Length used = 0;
    for (const Length width : widths) {
        if (rows.empty() || used + Gap() + width > content) {
            rows.push_back(1);
            used = width;
        } else {
            ++rows.back();
            used += Gap() + width;
        }
    }
    return rows;
}

// Each row in the middle; all buttons of one size where that takes no further row, or but one where there is room.
Length Arrangement::PlaceButtons(Layout& layout, Length content) {
    std::vector<Length> widths;
    Size largest;
    for (const Part part : request_.buttons) {
        const Size size = ButtonSize(part, content);
        widths.push_back(size.width);
        largest.width = std::max(largest.width, size.width);
        largest.height = std::max(largest.height, size.height);
    }
    std::vector<Length> rows = FullRows(widths, content);
    const std::vector<Length> alike(widths.size(), largest.width);
    const bool oneRow = rows.size() == 1;
    const std::size_t mostRows = rows.size() + (oneRow || spacing_.tight ? 0 : 1);
    const bool fits = FullRows(alike, content).size() <= mostRows;
    if (fits && (!oneRow || LookWellAlike(largest.width))) {
        widths = alike;
        rows = FullRows(widths, content);
    }
    Length top = 0;
    auto next = widths.begin();
    for (const Length count : rows) {
        const auto end = next + count;
        Length left = Side() + (content - std::accumulate(next, end, (count - 1) * Gap())) / 2;
        for (; next != end; ++next) {
            layout.buttons.push_back({left, top, *next, largest.height});
            left += *next + Gap();
        }
        top += largest.height + Gap();
    }
    return std::max(0, top - Gap());
}

bool Arrangement::Compute(Layout& layout) {
    const Length width = FormWidth();
    const Length content = width - 2 * Side();
    const Length column = content - PictureSpan();  // beside the picture
    const Length columnLeft = Side() + PictureSpan();
    const Length bottomMargin = std::max(Side(), request_.scrollBar);

    const Length bar = CaptionBarHeight(width);
    const Length link = request_.link ? Limit(measure_.Of(Part::Link, column).height) + 2 : 0;
    const Length input = request_.input != Input::None ? InputHeight() : 0;
    const Length check = request_.check ? CheckHeight(content) : 0;
    const Length buttons = PlaceButtons(layout, content);
    Length fixed = request_.border + bar + SectionGap() + SectionGap() + buttons + bottomMargin;
    for (const Length part : {link, input, check}) fixed += part > 0 ? SectionGap() + part : 0;

    const Size prompt = measure_.Of(Part::Prompt, column);
    const Length needed = std::max({prompt.height, request_.lineHeight, request_.picture ? Scaled(pictureAt96) : 0});
    const Length fewest = std::min(needed, fewestPromptLines * request_.lineHeight + 2 * Scaled(fieldEdgeAt96));
    if (fixed + fewest > request_.largest.height && spacing_.linesOfCaption > 1) return false;
    const Length most = std::max(request_.largest.height, fixed + 1);
    const Length height = std::clamp(request_.wanted.height > 0 ? request_.wanted.height : fixed + needed,
                                     std::min(fixed + fewest, most), most);

    layout.inside = {width, height};
    layout.captionBar = {request_.border, request_.border, width - 2 * request_.border, bar};
    layout.captionImage = {request_.border, request_.border, CaptionImageWidth(), bar};
    const Length captionLeft = layout.captionImage.Right();
    layout.caption = {captionLeft, request_.border, width - request_.border - captionLeft, bar};

    Length top = request_.border + bar + SectionGap();
    if (request_.picture) layout.picture = {Side(), top, Scaled(pictureAt96), Scaled(pictureAt96)};
    layout.prompt = {columnLeft, top, column, height - fixed};
    layout.promptScrolls = prompt.height > layout.prompt.height;
    top = layout.prompt.Bottom();
    if (request_.picture && prompt.height < layout.picture.height) {
        const Length lowered = (layout.picture.height - prompt.height) / 2;
        layout.prompt.top += lowered;
        layout.prompt.height -= lowered;
    }
    const auto place = [&](Rect& part, Length left, Length partWidth, Length partHeight) {
        if (partHeight == 0) return;
        part = {left, top + SectionGap(), partWidth, partHeight};
        top = part.Bottom();
    };
    place(layout.link, columnLeft, column, link);
    place(layout.input, columnLeft, column, input);
    place(layout.check, Side(), content, check);
    for (Rect& button : layout.buttons) button.top += top + SectionGap();
    layout.grip = {width - request_.scrollBar, height - request_.scrollBar, request_.scrollBar, request_.scrollBar};
    layout.captionsCut = cut_;
    return true;
}

}  // namespace

std::int32_t Pixels(float metric, std::int32_t dotsAnInch) {
    if (metric >= 0) return platform::RoundHalfEven(metric);
    return platform::RoundHalfEven(-static_cast<double>(metric) * dotsAnInch / twipsAnInch);
}

Layout Arrange(const Request& request, const TextMeasure& measure) {
    Layout layout;
    for (const Spacing& spacing : spacings) {
        layout = {};
        if (Arrangement(request, measure, spacing).Compute(layout)) break;
    }
    return layout;
}

}  // namespace QuestionLayout
