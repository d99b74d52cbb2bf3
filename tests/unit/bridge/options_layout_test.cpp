#include <doctest.h>

#include <string>
#include <vector>

#include "bridge/OptionsLayout.h"

using namespace OptionsLayout;

namespace {

// Texts of so many characters, each 6 pixels wide at 96 dots an inch.
struct Texts final : TextMeasure {
    explicit Texts(std::int32_t dots) : dotsAnInch(dots) {
        lengths.fill(12);
        Set(Item::Label6, 60);
        Set(Item::OptionDlg, 50);
    }
    void Set(Item item, std::int32_t length) { lengths[static_cast<std::size_t>(item)] = length; }
    [[nodiscard]] std::int32_t Letter() const { return 6 * dotsAnInch / 96; }
    [[nodiscard]] std::int32_t Line() const { return 13 * dotsAnInch / 96; }
    [[nodiscard]] Size Of(Item item, std::int32_t width) const override {
        const std::int32_t whole = lengths[static_cast<std::size_t>(item)] * Letter();
        if (width == 0 || whole <= width) return {whole, Line()};
        return {width, (whole + width - 1) / width * Line()};
    }

    std::int32_t dotsAnInch;
    std::array<std::int32_t, items> lengths{};
};

Layout ArrangedAt(const Texts& texts, std::int32_t widest = 0, std::int32_t tallest = 0) {
    return Arranged({texts.dotsAnInch, texts.Line(), widest, tallest}, texts);
}

const std::vector<std::vector<Item>> groups{
    {Item::Frame1, Item::Label1, Item::TextDelay, Item::Label2, Item::Label3, Item::TextRemain, Item::Label4},
    {Item::Frame2, Item::OptionSync, Item::OptionDlg},
    {Item::Frame3, Item::Label5, Item::ComboProfiles},
};
const std::vector<Item> outside{Item::Picture1, Item::Label6,   Item::Frame1,       Item::Frame2,
                                Item::Frame3,   Item::ButtonOK, Item::ButtonCancel, Item::ButtonHelp};

bool Meet(const Rect& a, const Rect& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}
bool Holds(const Rect& outer, const Rect& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.Right() <= outer.Right() &&
           inner.Bottom() <= outer.Bottom();
}
int Faults(const Layout& layout, const std::vector<Item>& neighbours) {
    int faults = 0;
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) faults += Meet(layout.Of(neighbours[i]), layout.Of(neighbours[j])) ? 1 : 0;
    }
    return faults;
}

// Everything is inside, every group holds what belongs to it, and nothing covers anything else.
void CheckSound(const Layout& layout) {
    for (const Rect& place : layout.at) {
        CHECK(place.width > 0);
        CHECK(place.height > 0);
        CHECK(Holds({0, 0, layout.inside.width, layout.inside.height}, place));
    }
    CHECK(Faults(layout, outside) == 0);
    for (const auto& group : groups) {
        for (std::size_t i = 1; i < group.size(); ++i) CHECK(Holds(layout.Of(group[0]), layout.Of(group[i])));
        CHECK(Faults(layout, {group.begin() + 1, group.end()}) == 0);
    }
}

}  // namespace

TEST_CASE("nothing in the options dialog covers anything else, at any resolution of the screen") {
    for (const std::int32_t dots : {96, 120, 144, 192}) {
        CAPTURE(dots);
        CheckSound(ArrangedAt(Texts(dots)));
    }
}
TEST_CASE("every text of the options dialog has the room that it needs") {
    Texts texts(96);
    for (const Item item :
         {Item::Label1, Item::Label5, Item::Label4, Item::Frame2, Item::ButtonHelp, Item::OptionSync}) {
        texts.Set(item, 70);
        const Layout layout = ArrangedAt(texts);
        CheckSound(layout);
        CHECK(layout.Of(item).width >= 70 * texts.Letter());
        texts.Set(item, 12);
    }
}
TEST_CASE("the fields of all groups begin in one column, and the groups are as wide as each other") {
    const Layout layout = ArrangedAt(Texts(96));
    CHECK(layout.Of(Item::TextRemain).left == layout.Of(Item::TextDelay).left);
    CHECK(layout.Of(Item::ComboProfiles).left == layout.Of(Item::TextDelay).left);
    CHECK(layout.Of(Item::Label3).left == layout.Of(Item::Label1).left);
    CHECK(layout.Of(Item::Label5).left == layout.Of(Item::OptionSync).left);
    for (const Item frame : {Item::Frame2, Item::Frame3}) {
        CHECK(layout.Of(frame).left == layout.Of(Item::Frame1).left);
        CHECK(layout.Of(frame).width == layout.Of(Item::Frame1).width);
    }
    CHECK(layout.Of(Item::ButtonHelp).Right() == layout.Of(Item::Frame1).Right());
}
TEST_CASE("a label stands in the middle of the line of its field") {
    const Layout layout = ArrangedAt(Texts(120));
    const auto middle = [&](Item item) { return 2 * layout.Of(item).top + layout.Of(item).height; };
    for (const auto& [label, field] : {std::pair{Item::Label1, Item::TextDelay},
                                       {Item::Label2, Item::TextDelay},
                                       {Item::Label3, Item::TextRemain},
                                       {Item::Label5, Item::ComboProfiles}}) {
        CHECK(std::abs(middle(label) - middle(field)) <= 1);
    }
}
TEST_CASE("the three buttons are equal and stand in a row") {
    Texts texts(96);
    texts.Set(Item::ButtonCancel, 30);
    const Layout layout = ArrangedAt(texts);
    for (const Item button : {Item::ButtonCancel, Item::ButtonHelp}) {
        CHECK(layout.Of(button).width == layout.Of(Item::ButtonOK).width);
        CHECK(layout.Of(button).top == layout.Of(Item::ButtonOK).top);
    }
}
TEST_CASE("at twice the resolution the dialog is twice the size but for the edges of its fields") {
    const Layout once = ArrangedAt(Texts(96)), twice = ArrangedAt(Texts(192));
    CHECK(twice.inside.width == 2 * once.inside.width);
    CHECK(twice.inside.height == 2 * once.inside.height - 3 * 6);
}
TEST_CASE("where the screen is narrow options are broken into lines") {
    Texts texts(96);
    texts.Set(Item::OptionDlg, 120);
    const Layout layout = ArrangedAt(texts, 500);
    CheckSound(layout);
    CHECK(layout.inside.width == 500);
    CHECK(layout.Of(Item::OptionDlg).height > layout.Of(Item::OptionSync).height);
    CHECK(ArrangedAt(texts).inside.width > 700);
}
TEST_CASE("where the screen is low everything moves closer together, and where it is not it does not") {
    const Texts texts(192);
    const Layout roomy = ArrangedAt(texts);
    CHECK(roomy.inside.height > 540);
    CHECK(ArrangedAt(texts, 0, roomy.inside.height).inside.height == roomy.inside.height);
    const Layout low = ArrangedAt(texts, 0, 540);
    CheckSound(low);
    CHECK(low.inside.height <= 540);
    CHECK(low.inside.width == roomy.inside.width);
}
