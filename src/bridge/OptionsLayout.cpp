#include "bridge/OptionsLayout.h"

#include <algorithm>

#include "platform/forms/Design.h"

namespace OptionsLayout {
namespace {

// The design, at 96 dots an inch.
constexpr std::int32_t margin = 12;     // around everything
constexpr std::int32_t groupGap = 10;   // between groups
constexpr std::int32_t inset = 12;      // inside a group, left, right and below
constexpr std::int32_t captionGap = 8;  // below the caption of a group
constexpr std::int32_t rowGap = 6;
constexpr std::int32_t columnGap = 8;  // between a label and its field
constexpr std::int32_t pictureSide = 32;
constexpr std::int32_t pictureGap = 12;
constexpr std::int32_t fieldEdges = 6;    // pixels at any resolution, as Windows draws them
constexpr std::int32_t fieldPadding = 2;  // and what a field is higher than edges and line
constexpr std::int32_t numberWidth = 60;
constexpr std::int32_t leastNumberWidth = 30;  // five digits, where the screen is narrow
constexpr std::int32_t fieldWidth = 160;       // at least
constexpr std::int32_t mark = 20;              // of an option, in front of its text
constexpr std::int32_t optionPadding = 4;
constexpr std::int32_t captionEnds = 24;  // of a group's frame, beside its caption
constexpr std::int32_t buttonPadding = 24;
constexpr std::int32_t buttonHeight = 10;  // more than its line
constexpr std::int32_t buttonGap = 6;
constexpr std::int32_t contentWidth = 300;  // at least

class Arrangement {
  public:
    Arrangement(const Request& request, std::span<const Place> places, const TextMeasure& measure, bool tight)
        : request_(request), places_(places), measure_(measure), tight_(tight) {}

    Layout Compute() {
        layout_.at.resize(places_.size());
        labels_ = Widest(Place::Label) + Scaled(columnGap);
        width_ = ContentWidth();
        top_ = Gap(margin);
        PlaceHead();
        for (std::size_t control = 0; control < places_.size(); ++control) PlaceInGroups(control);
        EndGroup();
        PlaceButtons();
        layout_.inside = {width_ + 2 * Scaled(margin), top_ + Gap(margin)};
        return layout_;
    }

  private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    [[nodiscard]] std::int32_t Scaled(std::int32_t length) const {
        return platform::Scaled(length, request_.dotsAnInch);
    }
    // Between two things that stand below each other.
    [[nodiscard]] std::int32_t Gap(std::int32_t length) const { return Scaled(length) / (tight_ ? 2 : 1); }
    [[nodiscard]] std::int32_t FieldHeight() const { return request_.lineHeight + fieldEdges + Scaled(fieldPadding); }
    [[nodiscard]] std::int32_t InsideLeft() const { return Scaled(margin) + Scaled(inset); }
    [[nodiscard]] std::int32_t InsideRight() const { return Scaled(margin) + width_ - Scaled(inset); }
    [[nodiscard]] std::int32_t FieldLeft() const { return InsideLeft() + labels_; }

    // The first control of a kind, `none` where there is none.
    [[nodiscard]] std::size_t Find(Place place) const {
        const auto found = std::find(places_.begin(), places_.end(), place);
        return found == places_.end() ? none : static_cast<std::size_t>(found - places_.begin());
    }
    [[nodiscard]] std::int32_t Widest(Place place) const {
        std::int32_t width = 0;
        for (std::size_t control = 0; control < places_.size(); ++control) {
            if (places_[control] == place) width = std::max(width, measure_.Of(control, 0).width);
        }
        return width;
    }
    [[nodiscard]] std::int32_t ButtonWidth() const {
        return std::max(Scaled(platform::buttonWidthAt96), Widest(Place::Button) + Scaled(buttonPadding));
    }
    // Of all buttons in their row.
    [[nodiscard]] std::int32_t ButtonsWidth() const {
        const auto buttons = static_cast<std::int32_t>(std::count(places_.begin(), places_.end(), Place::Button));
        return buttons * ButtonWidth() + std::max(buttons - 1, 0) * Scaled(buttonGap);
    }

    // Narrower where the text behind it would be cut off.
    [[nodiscard]] std::int32_t NumberWidth() const {
        const std::int32_t room = width_ - 2 * Scaled(inset) - labels_ - Scaled(columnGap) - Widest(Place::Unit);
        return std::clamp(room, Scaled(leastNumberWidth), Scaled(numberWidth));
    }

    // Of the groups; the introduction is broken to fit.
    [[nodiscard]] std::int32_t ContentWidth() const {
        const std::int32_t numberLine = labels_ + Scaled(numberWidth) + Scaled(columnGap) + Widest(Place::Unit);
        const std::int32_t fieldLine = labels_ + Scaled(fieldWidth);
        const std::int32_t option = Scaled(mark) + Widest(Place::Option);
        const std::int32_t lines = std::max({numberLine, fieldLine, option}) + 2 * Scaled(inset);
        const std::int32_t groups = Widest(Place::Group) + Scaled(captionEnds);
        const std::int32_t width = std::max({lines, groups, Scaled(contentWidth), ButtonsWidth()});
        const std::int32_t room = request_.widest - 2 * Scaled(margin);
        return request_.widest > 0 ? std::min(width, room) : width;
    }

    void PlaceHead() {
        const std::size_t picture = Find(Place::Picture), introduction = Find(Place::Introduction);
        if (picture == none || introduction == none) return;
        const std::int32_t side = Scaled(pictureSide);
        const std::int32_t left = Scaled(margin) + side + Scaled(pictureGap);
        const std::int32_t width = Scaled(margin) + width_ - left;
        const std::int32_t height = measure_.Of(introduction, width).height;
        const std::int32_t line = std::max(side, height);
        layout_.at[picture] = {Scaled(margin), top_ + (line - side) / 2, side, side};
        layout_.at[introduction] = {left, top_ + (line - height) / 2, width, height};
        top_ += line + Gap(groupGap);
    }

    void PlaceInGroups(std::size_t control) {
        switch (places_[control]) {
            case Place::Group: return BeginGroup(control);
            case Place::Label: return BeginLine(control);
            case Place::Number: return PlaceNumber(control);
            case Place::Unit: return PlaceUnit(control);
            case Place::Field: return PlaceField(control);
            case Place::Option: return PlaceOption(control);
            default: return;
        }
    }

    void BeginGroup(std::size_t frame) {
        EndGroup();
        group_ = frame;
        layout_.at[frame] = {Scaled(margin), top_, width_, 0};
        top_ += request_.lineHeight + Gap(captionGap);
        groupIsEmpty_ = true;
    }
    void EndGroup() {
        if (group_ == none) return;
        Rect& frame = layout_.at[group_];
        top_ += Gap(inset);
        frame.height = top_ - frame.top;
        top_ += Gap(groupGap);
        group_ = none;
    }
    // Above everything in a group but its first line.
    void LeaveRoom(std::int32_t gap) {
        if (!groupIsEmpty_) top_ += gap;
        groupIsEmpty_ = false;
    }

    // A text on the line of its field.
    void PlaceOnLine(std::size_t text, std::int32_t left, std::int32_t width) {
        const std::int32_t above = (FieldHeight() - request_.lineHeight) / 2;
        layout_.at[text] = {left, line_ + above, width, request_.lineHeight};
    }
    void BeginLine(std::size_t label) {
        LeaveRoom(Gap(rowGap));
        line_ = top_;
        top_ += FieldHeight();
        PlaceOnLine(label, InsideLeft(), labels_ - Scaled(columnGap));
    }
    void PlaceNumber(std::size_t field) { layout_.at[field] = {FieldLeft(), line_, NumberWidth(), FieldHeight()}; }
    void PlaceUnit(std::size_t text) {
        const std::int32_t left = FieldLeft() + NumberWidth() + Scaled(columnGap);
        PlaceOnLine(text, left, InsideRight() - left);
    }
    void PlaceField(std::size_t field) {
        layout_.at[field] = {FieldLeft(), line_, InsideRight() - FieldLeft(), FieldHeight()};
    }
    void PlaceOption(std::size_t option) {
        LeaveRoom(Gap(rowGap) / 2);
        const std::int32_t width = InsideRight() - InsideLeft();
        const std::int32_t height = measure_.Of(option, width - Scaled(mark)).height + Scaled(optionPadding);
        layout_.at[option] = {InsideLeft(), top_, width, height};
        top_ += height;
    }

    // To the right, in the order in which one reads.
    void PlaceButtons() {
        const std::int32_t width = ButtonWidth();
        const std::int32_t height = request_.lineHeight + Scaled(buttonHeight);
        std::int32_t left = Scaled(margin) + width_ - ButtonsWidth();
        for (std::size_t control = 0; control < places_.size(); ++control) {
            if (places_[control] != Place::Button) continue;
            layout_.at[control] = {left, top_, width, height};
            left += width + Scaled(buttonGap);
        }
        top_ += height;
    }

    const Request& request_;
    std::span<const Place> places_;
    const TextMeasure& measure_;
    bool tight_;
    Layout layout_;
    std::int32_t labels_ = 0;  // the width of the labels' column
    std::int32_t width_ = 0;   // of the groups
    std::int32_t top_ = 0;     // where the next thing goes
    std::int32_t line_ = 0;    // the top of the line that a label has begun
    std::size_t group_ = none;
    bool groupIsEmpty_ = true;
};

}  // namespace

Layout Arrange(const Request& request, std::span<const Place> places, const TextMeasure& measure) {
    const Layout layout = Arrangement(request, places, measure, false).Compute();
    const bool tooHigh = request.tallest > 0 && layout.inside.height > request.tallest;
    return tooHigh ? Arrangement(request, places, measure, true).Compute() : layout;
}

}  // namespace OptionsLayout
