// Where everything stands on the options dialog, in any language and resolution; without windows.
#include <doctest.h>

#include <string>
#include <string_view>
#include <vector>

#include "bridge/OptionsControls.h"

using namespace OptionsLayout;

namespace {

using Names = std::vector<std::string_view>;

// The number of a control in the dialog's own table.
std::size_t NumberOf(std::string_view name) {
    for (std::size_t i = 0; i < OptionsControls::specs.size(); ++i) {
        if (OptionsControls::specs[i].name == name) return i;
    }
    FAIL("no control is called " << name);
    return 0;
}

// Texts of so many characters, each 6 pixels wide at 96 dots an inch.
struct Texts final : TextMeasure {
    explicit Texts(std::int32_t dots) : dotsAnInch(dots), lengths(OptionsControls::places.size(), 12) {
        Set("Label6", 60);
        Set("OptionDlg", 50);
    }
    void Set(std::string_view name, std::int32_t length) { lengths[NumberOf(name)] = length; }
    [[nodiscard]] std::int32_t Letter() const { return 6 * dotsAnInch / 96; }
    [[nodiscard]] std::int32_t Line() const { return 13 * dotsAnInch / 96; }
    [[nodiscard]] Size Of(std::size_t control, std::int32_t width) const override {
        const std::int32_t whole = lengths[control] * Letter();
        if (width == 0 || whole <= width) return {whole, Line()};
        return {width, (whole + width - 1) / width * Line()};
    }

    std::int32_t dotsAnInch;
    std::vector<std::int32_t> lengths;
};

struct Arranged : Layout {
    [[nodiscard]] const Rect& Of(std::string_view name) const { return at[NumberOf(name)]; }
};

Arranged ArrangedAt(const Texts& texts, std::int32_t widest = 0, std::int32_t tallest = 0) {
    return {Arrange({texts.dotsAnInch, texts.Line(), widest, tallest}, OptionsControls::places, texts)};
}

const std::vector<Names> groups{
    {"Frame1", "Label1", "TextDelay", "Label2", "Label3", "TextRemain", "Label4"},
    {"Frame2", "OptionSync", "OptionDlg"},
    {"Frame3", "Label5", "ComboProfiles"},
};
const Names outside{"Picture1", "Label6", "Frame1", "Frame2", "Frame3", "ButtonOK", "ButtonCancel", "ButtonHelp"};

bool Meet(const Rect& a, const Rect& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}
bool Holds(const Rect& outer, const Rect& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.Right() <= outer.Right() &&
           inner.Bottom() <= outer.Bottom();
}
int Faults(const Arranged& layout, const Names& neighbours) {
    int faults = 0;
    for (std::size_t i = 0; i < neighbours.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) faults += Meet(layout.Of(neighbours[i]), layout.Of(neighbours[j])) ? 1 : 0;
    }
    return faults;
}

// Everything is inside, every group holds what belongs to it, and nothing covers anything else.
void CheckSound(const Arranged& layout) {
    for (std::size_t i = 0; i < layout.at.size(); ++i) {
        if (OptionsControls::places[i] == Place::Nowhere) continue;
        const Rect& place = layout.at[i];
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
    for (const char* const item : {"Label1", "Label5", "Label4", "Frame2", "ButtonHelp", "OptionSync"}) {
        texts.Set(item, 70);
        const Arranged layout = ArrangedAt(texts);
        CheckSound(layout);
        CHECK(layout.Of(item).width >= 70 * texts.Letter());
        texts.Set(item, 12);
    }
}

TEST_CASE("the fields of all groups begin in one column, and the groups are as wide as each other") {
    const Arranged layout = ArrangedAt(Texts(96));
    CHECK(layout.Of("TextRemain").left == layout.Of("TextDelay").left);
    CHECK(layout.Of("ComboProfiles").left == layout.Of("TextDelay").left);
    CHECK(layout.Of("Label3").left == layout.Of("Label1").left);
    CHECK(layout.Of("Label5").left == layout.Of("OptionSync").left);
    for (const char* const frame : {"Frame2", "Frame3"}) {
        CHECK(layout.Of(frame).left == layout.Of("Frame1").left);
        CHECK(layout.Of(frame).width == layout.Of("Frame1").width);
    }
    CHECK(layout.Of("ButtonHelp").Right() == layout.Of("Frame1").Right());
}

TEST_CASE("a label stands in the middle of the line of its field") {
    const Arranged layout = ArrangedAt(Texts(120));
    const auto middle = [&](std::string_view item) { return 2 * layout.Of(item).top + layout.Of(item).height; };
    for (const auto& [label, field] : {std::pair<const char*, const char*>{"Label1", "TextDelay"},
                                       {"Label2", "TextDelay"},
                                       {"Label3", "TextRemain"},
                                       {"Label5", "ComboProfiles"}}) {
        CHECK(std::abs(middle(label) - middle(field)) <= 1);
    }
}

// A screen reader names a field by the text before it, and an access key goes to what comes next.
TEST_CASE("every field is listed right behind its label, and every unit behind its number") {
    const auto& places = OptionsControls::places;
    for (std::size_t i = 1; i < places.size(); ++i) {
        CAPTURE(std::string(OptionsControls::specs[i].name));
        if (places[i] == Place::Number || places[i] == Place::Field) CHECK(places[i - 1] == Place::Label);
        if (places[i] == Place::Unit) CHECK(places[i - 1] == Place::Number);
    }
}

TEST_CASE("the three buttons are equal and stand in a row") {
    Texts texts(96);
    texts.Set("ButtonCancel", 30);
    const Arranged layout = ArrangedAt(texts);
    for (const char* const button : {"ButtonCancel", "ButtonHelp"}) {
        CHECK(layout.Of(button).width == layout.Of("ButtonOK").width);
        CHECK(layout.Of(button).top == layout.Of("ButtonOK").top);
    }
}

TEST_CASE("at twice the resolution the dialog is twice the size but for the edges of its fields") {
    const Arranged once = ArrangedAt(Texts(96)), twice = ArrangedAt(Texts(192));
    CHECK(twice.inside.width == 2 * once.inside.width);
    const auto fields = std::count(OptionsControls::places.begin(), OptionsControls::places.end(), Place::Label);
    CHECK(twice.inside.height == 2 * once.inside.height - fields * 6);
}

TEST_CASE("where the screen is narrow options are broken into lines") {
    Texts texts(96);
    texts.Set("OptionDlg", 120);
    const Arranged layout = ArrangedAt(texts, 500);
    CheckSound(layout);
    CHECK(layout.inside.width == 500);
    CHECK(layout.Of("OptionDlg").height > layout.Of("OptionSync").height);
    CHECK(ArrangedAt(texts).inside.width > 700);
}

TEST_CASE("where the screen is low everything moves closer together, and where it is not it does not") {
    const Texts texts(192);
    const Arranged roomy = ArrangedAt(texts);
    CHECK(roomy.inside.height > 540);
    CHECK(ArrangedAt(texts, 0, roomy.inside.height).inside.height == roomy.inside.height);
    const Arranged low = ArrangedAt(texts, 0, 540);
    CheckSound(low);
    CHECK(low.inside.height <= 540);
    CHECK(low.inside.width == roomy.inside.width);
}

namespace {

struct Row {
    const char* name;
    Rect place;
};

template <std::size_t count>
void CheckPlaces(const Arranged& layout, const Row (&expected)[count]) {
    CHECK(count == OptionsControls::places.size());
    for (const Row& row : expected) {
        CAPTURE(std::string(row.name));
        const Rect& place = layout.Of(row.name);
        CHECK(place.left == row.place.left);
        CHECK(place.top == row.place.top);
        CHECK(place.width == row.place.width);
        CHECK(place.height == row.place.height);
    }
}

}  // namespace

TEST_CASE("every control of the options dialog stands in its own place") {
    const Arranged layout = ArrangedAt(Texts(96));
    constexpr Row expected[] = {
        {"Picture1", {12, 12, 32, 32}},
        {"Label6", {56, 15, 300, 26}},
        {"Frame1", {12, 54, 344, 81}},
        {"Label1", {24, 79, 72, 13}},
        {"TextDelay", {104, 75, 60, 21}},
        {"Label2", {172, 79, 172, 13}},
        {"Label3", {24, 106, 72, 13}},
        {"TextRemain", {104, 102, 60, 21}},
        {"Label4", {172, 106, 172, 13}},
        {"CheckT", {}},
        {"CheckA", {}},
        {"CheckC", {}},
        {"Frame2", {12, 145, 344, 70}},
        {"OptionSync", {24, 166, 320, 17}},
        {"OptionDlg", {24, 186, 320, 17}},
        {"Frame3", {12, 225, 344, 54}},
        {"Label5", {24, 250, 72, 13}},
        {"ComboProfiles", {104, 246, 240, 21}},
        {"ButtonOK", {56, 289, 96, 23}},
        {"ButtonCancel", {158, 289, 96, 23}},
        {"ButtonHelp", {260, 289, 96, 23}},
    };
    CheckPlaces(layout, expected);
    CHECK(layout.inside.width == 368);
    CHECK(layout.inside.height == 324);
}

TEST_CASE("where the screen is low every gap between two lines is half as high, and nothing else changes") {
    const Arranged layout = ArrangedAt(Texts(96), 0, 323);
    constexpr Row expected[] = {
        {"Picture1", {12, 6, 32, 32}},
        {"Label6", {56, 9, 300, 26}},
        {"Frame1", {12, 43, 344, 68}},
        {"Label1", {24, 64, 72, 13}},
        {"TextDelay", {104, 60, 60, 21}},
        {"Label2", {172, 64, 172, 13}},
        {"Label3", {24, 88, 72, 13}},
        {"TextRemain", {104, 84, 60, 21}},
        {"Label4", {172, 88, 172, 13}},
        {"CheckT", {}},
        {"CheckA", {}},
        {"CheckC", {}},
        {"Frame2", {12, 116, 344, 58}},
        {"OptionSync", {24, 133, 320, 17}},
        {"OptionDlg", {24, 151, 320, 17}},
        {"Frame3", {12, 179, 344, 44}},
        {"Label5", {24, 200, 72, 13}},
        {"ComboProfiles", {104, 196, 240, 21}},
        {"ButtonOK", {56, 228, 96, 23}},
        {"ButtonCancel", {158, 228, 96, 23}},
        {"ButtonHelp", {260, 228, 96, 23}},
    };
    CheckPlaces(layout, expected);
    CHECK(layout.inside.width == 368);
    CHECK(layout.inside.height == 257);
    CHECK(ArrangedAt(Texts(96), 0, 324).inside.height == 324);
}

TEST_CASE("the widest of all lines decides how wide the dialog is, and short texts leave it a width of its own") {
    Texts texts(96);
    for (std::int32_t& length : texts.lengths) length = 1;
    CHECK(ArrangedAt(texts).inside.width == 12 + 300 + 12);
    texts.Set("Frame2", 70);  // with the frame's ends beside it
    CHECK(ArrangedAt(texts).inside.width == 12 + 70 * 6 + 24 + 12);
    texts.Set("Label4", 70);  // behind a label, a number and the gaps between them
    CHECK(ArrangedAt(texts).inside.width == 12 + 12 + 6 + 8 + 60 + 8 + 70 * 6 + 12 + 12);
    texts.Set("OptionDlg", 90);
    CHECK(ArrangedAt(texts).inside.width == 12 + 12 + 20 + 90 * 6 + 12 + 12);
}

TEST_CASE("of the picture and the introduction the lower one stands in the middle of the other") {
    Texts texts(96);
    texts.Set("Label6", 200);
    const Arranged high = ArrangedAt(texts);
    CHECK(high.Of("Label6").height == 52);
    CHECK(high.Of("Label6").top == 12);
    CHECK(high.Of("Picture1").top == 12 + (52 - 32) / 2);
    texts.Set("Label6", 10);
    CHECK(ArrangedAt(texts).Of("Label6").top == 12 + (32 - 13) / 2);
}

TEST_CASE("where the screen is narrow a number's field gives way to the text behind it, as far as five digits need") {
    Texts texts(96);
    texts.Set("Label3", 40);
    texts.Set("Label4", 20);
    const std::int32_t whole = ArrangedAt(texts).inside.width;
    CHECK(ArrangedAt(texts).Of("TextRemain").width == 60);
    for (const std::int32_t missing : {1, 14, 30}) {
        CAPTURE(missing);
        const Arranged layout = ArrangedAt(texts, whole - missing);
        CheckSound(layout);
        CHECK(layout.Of("Label4").width >= 20 * texts.Letter());
        CHECK(layout.Of("TextRemain").width == 60 - missing);
        CHECK(layout.Of("Label4").left == layout.Of("TextRemain").Right() + 8);
    }
    CHECK(ArrangedAt(texts, whole - 31).Of("TextDelay").width == 30);
}

TEST_CASE("what has no place in the options dialog is hidden, and nothing else is") {
    for (std::size_t i = 0; i < OptionsControls::specs.size(); ++i) {
        CAPTURE(std::string(OptionsControls::specs[i].name));
        const bool hidden = (OptionsControls::specs[i].style & platform::ControlStyle::Hidden) != 0;
        CHECK(hidden == (OptionsControls::places[i] == Place::Nowhere));
    }
}
