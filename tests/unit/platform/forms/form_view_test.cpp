// A form without windows: its controls and what they keep.
#include <doctest.h>

#include <stdexcept>

#include "platform/Err.h"
#include "platform/forms/FormView.h"

using namespace platform;

namespace {

constexpr ControlSpec table[] = {
    {"Label1", ControlKind::Label},
    {"TextDelay", ControlKind::TextBox},
    {"Option", ControlKind::OptionButton, 0, "", 0},
    {"Option", ControlKind::OptionButton, 0, "", 2},
    {"Combo1", ControlKind::ComboBox},
    {"Picture1", ControlKind::PictureBox},
    {"Image1", ControlKind::Image, ControlStyle::Hidden},
    {"Tabs", ControlKind::TabStrip},
    {"Timer1", ControlKind::Timer},
};

struct TestForm : FormView {
    TestForm() : FormView("FormTest", table) { Err().Clear(); }
};

}  // namespace

TEST_CASE("a control is found by its name in any case") {
    TestForm form;
    REQUIRE(form.Find("textdelay"));
    CHECK(form.Find("TEXTDELAY") == form.Find("TextDelay"));
    CHECK(form.Find("TextDelay")->Name() == "TextDelay");
    CHECK_FALSE(form.Find("TextDelays"));
    CHECK_FALSE(form.Find(""));
}

TEST_CASE("a control array is found by name and index only") {
    TestForm form;
    CHECK_FALSE(form.Find("Option"));
    REQUIRE(form.Find("Option", 2));
    CHECK(form.Find("Option", 2)->Index() == 2);
    CHECK_FALSE(form.Find("Option", 1));
    CHECK_FALSE(form.Find("Label1", 0));
}

TEST_CASE("no index reaches a control that is no element of an array") {
    TestForm form;
    for (std::int32_t index = -3; index <= 3; ++index) CHECK_FALSE(form.Find("Label1", index));
    CHECK_FALSE(form.Find("Label1", ControlSpec::NoIndex));
}

TEST_CASE("asking the form's own code for a control that is not there is an error") {
    TestForm form;
    CHECK(&form.The("Label1") == form.Find("Label1"));
    CHECK_THROWS_AS((void)form.The("Label9"), platform::NoSuchControl);
}

TEST_CASE("a control begins enabled, not ticked, with nothing chosen and no text") {
    TestForm form;
    for (Control* const control : {form.Find("Option", 0), form.Find("Combo1"), form.Find("TextDelay")}) {
        REQUIRE(control);
        CHECK(control->Enabled());
        CHECK_FALSE(control->ValueSet());
        CHECK_FALSE(control->Value());
        CHECK(control->ListIndexSet() == -1);
        CHECK(control->TextSet().empty());
        CHECK(control->Interval() == 0);
        CHECK(control->PasswordChar() == 0);
    }
}

TEST_CASE("a property that a control has is set and read back without windows") {
    TestForm form;
    Control& label = form.The("Label1");
    CHECK(label.SetCaption("&Delay"));
    CHECK(label.SetToolTip("Seconds"));
    CHECK(label.SetFontName("Tahoma"));
    CHECK(label.SetFontCharSet(238));
    CHECK(label.SetVisible(false));
    CHECK(label.SetEnabled(false));
    CHECK(label.SetPosition({1, 2, 30, 40}));
    CHECK(label.Caption() == "&Delay");
    CHECK(label.ToolTip() == "Seconds");
    CHECK(label.Font() == FontStyle{.face = "Tahoma", .charSet = 238});
    CHECK_FALSE(label.Visible());
    CHECK_FALSE(label.Enabled());
    CHECK(label.Position() == Rect{1, 2, 30, 40});
    CHECK_FALSE(Err());
}

TEST_CASE("a property that a control lacks is refused, reported and left alone") {
    TestForm form;
    const auto refused = [](bool answer) {
        const bool reported = Err().Number() == PropertyNotSupported;
        Err().Clear();
        return !answer && reported;
    };
    CHECK(refused(form.The("TextDelay").SetCaption("x")));
    CHECK(form.The("TextDelay").Caption().empty());
    CHECK(refused(form.The("Timer1").SetToolTip("x")));
    CHECK(refused(form.The("Timer1").SetVisible(true)));
    CHECK(refused(form.The("Image1").SetFontName("Tahoma")));
    CHECK(refused(form.The("Picture1").SetCaption("x")));
    CHECK(refused(form.The("Label1").SetPicture("x.bmp")));
    CHECK(refused(form.The("Label1").SetText("x")));
    CHECK(refused(form.The("Label1").SetTabs({{"a", "b"}})));
    CHECK(form.The("Label1").Tabs().empty());
    CHECK(refused(form.The("Label1").RemoveTab(0)));
    CHECK(refused(form.The("TextDelay").SetListIndex(0)));
}

TEST_CASE("a hidden control starts hidden and a timer starts at rest") {
    TestForm form;
    CHECK_FALSE(form.The("Image1").Visible());
    CHECK(form.The("Label1").Visible());
    CHECK_FALSE(form.The("Timer1").Enabled());
    CHECK(form.The("Label1").Enabled());
}

TEST_CASE("the text of a combo box need not be in its list") {
    TestForm form;
    Control& combo = form.The("Combo1");
    combo.SetList({"auto", "Anna"});
    CHECK(combo.SetText("Anna"));
    CHECK(combo.ListIndex() == 1);
    CHECK(combo.SetText("gone"));
    CHECK(combo.Text() == "gone");
    CHECK(combo.ListIndex() == -1);
}

TEST_CASE("choosing a line of a list makes it the text") {
    TestForm form;
    Control& combo = form.The("Combo1");
    combo.SetList({"auto", "Anna"});
    CHECK(combo.SetListIndex(0));
    CHECK(combo.Text() == "auto");
    CHECK(combo.SetListIndex(7));
    CHECK(combo.ListIndex() == -1);
    CHECK(combo.Text().empty());
}

TEST_CASE("tabs are removed by their position and the others move up") {
    TestForm form;
    Control& tabs = form.The("Tabs");
    tabs.SetTabs({{"One", "1"}, {"Two", "2"}, {"Three", "3"}});
    CHECK(tabs.RemoveTab(1));
    REQUIRE(tabs.Tabs().size() == 2);
    CHECK(tabs.Tabs()[1].caption == "Three");
    CHECK(tabs.SetTabToolTip(0, "first"));
    CHECK(tabs.Tabs()[0].toolTip == "first");
    CHECK_FALSE(tabs.RemoveTab(2));
    CHECK_FALSE(tabs.SetTabToolTip(2, "none"));
    CHECK(tabs.Tabs().size() == 2);
}

TEST_CASE("a form keeps its caption and the character set of its font") {
    TestForm form;
    form.SetCaption("Options");
    form.SetFontCharSet(238);
    CHECK(form.Name() == "FormTest");
    CHECK(form.Caption() == "Options");
    CHECK(form.Font().charSet == 238);
}
