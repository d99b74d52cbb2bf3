#include "bridge/OptionsLayout.h"

#include <algorithm>
#include <initializer_list>

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
constexpr std::int32_t profileWidth = 160;  // at least
constexpr std::int32_t mark = 20;           // of an option, in front of its text
constexpr std::int32_t optionPadding = 4;
constexpr std::int32_t captionEnds = 24;  // of a group's frame, beside its caption
constexpr std::int32_t buttonWidth = 75;  // at least
constexpr std::int32_t buttonPadding = 24;
constexpr std::int32_t buttonHeight = 10;  // more than its line
constexpr std::int32_t buttonGap = 6;
constexpr std::int32_t contentWidth = 300;  // at least

constexpr std::initializer_list<Item> buttons{Item::ButtonOK, Item::ButtonCancel, Item::ButtonHelp};

class Arrangement {
  public:
    Arrangement(const Request& request, const TextMeasure& measure, bool tight)
        : request_(request), measure_(measure), tight_(tight) {}

    Layout Done() {
        labels_ = std::max({Width(Item::Label1), Width(Item::Label3), Width(Item::Label5)}) + Scaled(columnGap);
        width_ = ContentWidth();
        top_ = Gap(margin);
        PlaceHead();
        PlaceNumbers();
        PlaceOptions();
        PlaceProfile();
        PlaceButtons();
        layout_.inside = {width_ + 2 * Scaled(margin), top_ + Gap(margin)};
        return layout_;
    }

  private:
    [[nodiscard]] std::int32_t Scaled(std::int32_t length) const { return (length * request_.dotsAnInch + 48) / 96; }
    // Between two things that stand below each other.
    [[nodiscard]] std::int32_t Gap(std::int32_t length) const { return Scaled(length) / (tight_ ? 2 : 1); }
    [[nodiscard]] std::int32_t Width(Item item) const { return measure_.Of(item, 0).width; }
    [[nodiscard]] std::int32_t FieldHeight() const { return request_.lineHeight + fieldEdges + Scaled(fieldPadding); }
    [[nodiscard]] std::int32_t InsideLeft() const { return Scaled(margin) + Scaled(inset); }
    [[nodiscard]] std::int32_t InsideRight() const { return Scaled(margin) + width_ - Scaled(inset); }
    [[nodiscard]] std::int32_t FieldLeft() const { return InsideLeft() + labels_; }
    Rect& At(Item item) { return layout_.at[static_cast<std::size_t>(item)]; }

    [[nodiscard]] std::int32_t ButtonWidth() const {
        std::int32_t width = Scaled(buttonWidth);
        for (const Item button : buttons) width = std::max(width, Width(button) + Scaled(buttonPadding));
        return width;
    }

    // Of the groups; the text on top is broken to fit.
    [[nodiscard]] std::int32_t ContentWidth() const {
        const std::int32_t units = std::max(Width(Item::Label2), Width(Item::Label4));
        const std::int32_t numberRow = labels_ + Scaled(numberWidth) + Scaled(columnGap) + units;
        const std::int32_t profileRow = labels_ + Scaled(profileWidth);
        const std::int32_t options = Scaled(mark) + std::max(Width(Item::OptionSync), Width(Item::OptionDlg));
        std::int32_t width = std::max({numberRow, profileRow, options}) + 2 * Scaled(inset);
        for (const Item frame : {Item::Frame1, Item::Frame2, Item::Frame3}) {
            width = std::max(width, Width(frame) + Scaled(captionEnds));
        }
        width = std::max({width, Scaled(contentWidth), 3 * ButtonWidth() + 2 * Scaled(buttonGap)});
        const std::int32_t room = request_.widest - 2 * Scaled(margin);
        return request_.widest > 0 ? std::min(width, room) : width;
    }

    void PlaceHead() {
        const std::int32_t side = Scaled(pictureSide);
        const std::int32_t left = Scaled(margin) + side + Scaled(pictureGap);
        const std::int32_t width = Scaled(margin) + width_ - left;
        const std::int32_t height = measure_.Of(Item::Label6, width).height;
        const std::int32_t line = std::max(side, height);
        At(Item::Picture1) = {Scaled(margin), top_ + (line - side) / 2, side, side};
        At(Item::Label6) = {left, top_ + (line - height) / 2, width, height};
        top_ += line + Gap(groupGap);
    }

    void BeginGroup(Item frame) {
        At(frame) = {Scaled(margin), top_, width_, 0};
        top_ += request_.lineHeight + Gap(captionGap);
    }
    void EndGroup(Item frame) {
        top_ += Gap(inset);
        At(frame).height = top_ - At(frame).top;
        top_ += Gap(groupGap);
    }

    // A label on the line of its field.
    void PlaceLabel(Item label, std::int32_t left, std::int32_t width) {
        At(label) = {left, top_ + (FieldHeight() - request_.lineHeight) / 2, width, request_.lineHeight};
    }

    void PlaceNumber(Item label, Item field, Item unit) {
        PlaceLabel(label, InsideLeft(), labels_ - Scaled(columnGap));
        At(field) = {FieldLeft(), top_, Scaled(numberWidth), FieldHeight()};
        const std::int32_t left = At(field).Right() + Scaled(columnGap);
        PlaceLabel(unit, left, InsideRight() - left);
        top_ += FieldHeight();
    }

    void PlaceNumbers() {
        BeginGroup(Item::Frame1);
        PlaceNumber(Item::Label1, Item::TextDelay, Item::Label2);
        top_ += Gap(rowGap);
        PlaceNumber(Item::Label3, Item::TextRemain, Item::Label4);
        EndGroup(Item::Frame1);
    }

    void PlaceOption(Item option) {
        const std::int32_t width = InsideRight() - InsideLeft();
        const std::int32_t height = measure_.Of(option, width - Scaled(mark)).height + Scaled(optionPadding);
        At(option) = {InsideLeft(), top_, width, height};
        top_ += height;
    }

    void PlaceOptions() {
        BeginGroup(Item::Frame2);
        PlaceOption(Item::OptionSync);
        top_ += Gap(rowGap) / 2;
        PlaceOption(Item::OptionDlg);
        EndGroup(Item::Frame2);
    }

    void PlaceProfile() {
        BeginGroup(Item::Frame3);
        PlaceLabel(Item::Label5, InsideLeft(), labels_ - Scaled(columnGap));
        At(Item::ComboProfiles) = {FieldLeft(), top_, InsideRight() - FieldLeft(), FieldHeight()};
        top_ += FieldHeight();
        EndGroup(Item::Frame3);
    }

    // To the right, in the order in which one reads.
    void PlaceButtons() {
        const std::int32_t width = ButtonWidth();
        const std::int32_t height = request_.lineHeight + Scaled(buttonHeight);
        std::int32_t left = Scaled(margin) + width_ - 3 * width - 2 * Scaled(buttonGap);
        for (const Item button : buttons) {
            At(button) = {left, top_, width, height};
            left += width + Scaled(buttonGap);
        }
        top_ += height;
    }

    const Request& request_;
    const TextMeasure& measure_;
    bool tight_;
    Layout layout_;
    std::int32_t labels_ = 0;  // the width of the labels' column
    std::int32_t width_ = 0;   // of the groups
    std::int32_t top_ = 0;     // where the next thing goes
};

}  // namespace

Layout Arranged(const Request& request, const TextMeasure& measure) {
    const Layout layout = Arrangement(request, measure, false).Done();
    const bool tooHigh = request.tallest > 0 && layout.inside.height > request.tallest;
    return tooHigh ? Arrangement(request, measure, true).Done() : layout;
}

}  // namespace OptionsLayout
