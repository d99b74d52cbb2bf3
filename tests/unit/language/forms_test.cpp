// How a language file and the settings change a form; without windows.
#include <doctest.h>

#include <map>
#include <string>
#include <vector>

#include "language/FormTexts.h"
#include "platform/Err.h"

using namespace platform;
using namespace FormTexts;

namespace {

constexpr ControlSpec table[] = {
    {"Label1", ControlKind::Label},
    {"Label1_", ControlKind::Label},
    {"Save", ControlKind::Button},
    {"TextDelay", ControlKind::TextBox},
    {"Option", ControlKind::OptionButton, 0, "", 0},
    {"Option", ControlKind::OptionButton, 0, "", 2},
    {"Picture1", ControlKind::PictureBox},
    {"Image1", ControlKind::Image},
    {"Picture", ControlKind::PictureBox, 0, "", 1},
    {"NavBar", ControlKind::TabStrip},
    {"Timer1", ControlKind::Timer},
};

struct TestForm : FormView {
    TestForm() : FormView("FormTest", table) {
        The("Label1").SetCaption("designed");
        The("Label1_").SetCaption("designed");
        The("Save").SetCaption("designed");
        The("Save").SetToolTip("designed");
        The("Picture1").SetToolTip("designed");
        The("NavBar").SetTabs({{"A", "first+more"}, {"B", "second"}, {"C", "third+x+y"}, {"D", "+fourth"}});
        Err().Clear();
    }
    void Apply(std::string_view section) {
        const std::string file = "[FormTest]\r\n" + std::string(section) + "\r\n[Next]\r\nLabel1=not this\r\n";
        ApplySection(*this, file, "FormTest",
                     [](const std::string& text) { return text == "logo.bmp" ? "C:\\app\\logo.bmp" : std::string(); });
    }
    const Control& Element(std::int32_t index) { return *Find("Option", index); }
};

std::vector<std::string> TabNames(FormView& form) {
    std::vector<std::string> names;
    for (const TabPage& page : form.The("NavBar").Tabs()) names.push_back(page.caption);
    return names;
}

}  // namespace

TEST_CASE("a value with a bar sets caption and tool tip") {
    TestForm form;
    form.Apply("Save=Save|Saves the item");
    CHECK(form.The("Save").Caption() == "Save");
    CHECK(form.The("Save").ToolTip() == "Saves the item");
}

TEST_CASE("a value with two bars keeps the second one inside the tool tip") {
    TestForm form;
    form.Apply("Save=Save|Saves|the item");
    CHECK(form.The("Save").Caption() == "Save");
    CHECK(form.The("Save").ToolTip() == "Saves|the item");
}

TEST_CASE("a value without a bar takes the tool tip away") {
    TestForm form;
    form.Apply("Save=&Save");
    CHECK(form.The("Save").Caption() == "&Save");
    CHECK(form.The("Save").ToolTip().empty());
}

TEST_CASE("escapes are read in a caption and stay as they are in a tool tip of a form") {
    TestForm form;
    form.Apply("Label1=Line 1\\nLine 2\\tend|tip\\nhere");
    CHECK(form.The("Label1").Caption() == "Line 1\rLine 2\tend");
    CHECK(form.The("Label1").ToolTip() == "tip\\nhere");
}

TEST_CASE("the key Option(2) reaches element 2 of the control array Option") {
    TestForm form;
    form.Apply("Option(2)=Second|tip");
    CHECK(form.Element(2).Caption() == "Second");
    CHECK(form.Element(2).ToolTip() == "tip");
    CHECK(form.Element(0).Caption().empty());
}

TEST_CASE("the plain name of a control array, a wrong index and a name without a form's control are passed over") {
    TestForm form;
    form.Apply("Option=All\r\nOption(1)=First\r\nLabel1(0)=Label\r\nNothing=x\r\nNothing(3)=y\r\n(=z\r\n=q\r\nnoise");
    CHECK(form.Element(0).Caption().empty());
    CHECK(form.Element(2).Caption().empty());
    CHECK(form.The("Label1").Caption() == "designed");
}

TEST_CASE("a negative index reaches no control, not even a single one") {
    TestForm form;
    form.Apply("Label1(-1)=Label\r\nLabel1(-1=Label\r\nOption(-2)=Option");
    CHECK(form.The("Label1").Caption() == "designed");
    CHECK(Hide(form, "Label1(-1);Save(-1)") == std::vector<std::string>{"Label1(-1)", "Save(-1)"});
    CHECK(form.The("Label1").Visible());
    CHECK(form.The("Save").Visible());
}

TEST_CASE("a control named Label1_ keeps its design-time caption") {
    TestForm form;
    form.Apply("Label1_=changed|tip");
    CHECK(form.The("Label1_").Caption() == "designed");
    CHECK(form.The("Label1_").ToolTip().empty());
    SetText(form.The("Label1_"), "changed|tip");
    CHECK(form.The("Label1_").Caption() == "designed");
    CHECK(form.The("Label1_").ToolTip().empty());
}

TEST_CASE("a text box takes no caption but the tool tip") {
    TestForm form;
    form.Apply("TextDelay=ignored|in seconds");
    CHECK(form.The("TextDelay").ToolTip() == "in seconds");
    CHECK(form.The("TextDelay").Text().empty());
}

TEST_CASE("a picture box shows the file that its text names when there is one, and keeps its tool tip") {
    TestForm form;
    form.Apply("Picture1=logo.bmp|tip\r\nImage1=absent.bmp|tip\r\nPicture(1)=logo.bmp");
    CHECK(form.The("Picture1").Picture() == "C:\\app\\logo.bmp");
    CHECK(form.The("Picture1").ToolTip() == "designed");
    CHECK(form.The("Image1").Picture().empty());
    CHECK(form.The("Image1").ToolTip().empty());
    CHECK(form.Find("Picture", 1)->Picture() == "C:\\app\\logo.bmp");
}

TEST_CASE("a picture box with an empty caption takes the tool tip") {
    TestForm form;
    form.Apply("Picture1=|the logo");
    CHECK(form.The("Picture1").ToolTip() == "the logo");
    CHECK(form.The("Picture1").Picture().empty());
}

TEST_CASE("of two lines for a control the later one counts") {
    TestForm form;
    form.Apply("Save=one\r\nSave=two");
    CHECK(form.The("Save").Caption() == "two");
}

TEST_CASE("a form whose section is missing stays as it is") {
    TestForm form;
    ApplySection(form, "[Other]\r\nSave=x\r\n", "FormTest", [](const std::string&) { return std::string(); });
    CHECK(form.The("Save").Caption() == "designed");
}

TEST_CASE("the text of a control is looked up under its name, that of an element under its number as well") {
    TestForm form;
    std::vector<std::string> asked;
    const Lookup nothing = [&](std::string_view key) {
        asked.emplace_back(key);
        return std::string();
    };
    CHECK(TextOf(form.The("Save"), "", nothing).empty());
    CHECK(TextOf(form.Element(2), "", nothing).empty());
    CHECK(TextOf(form.Element(2), "5", nothing).empty());
    CHECK(asked == std::vector<std::string>{"Save", "Option", "Option(2)", "Option(5)"});
}

TEST_CASE("a control array whose name has a text takes it for all its elements") {
    TestForm form;
    const Lookup all = [](std::string_view key) { return key == "Option" ? std::string("All") : std::string("One"); };
    CHECK(TextOf(form.Element(2), "", all) == "All");
}

TEST_CASE("a single control is not looked for under a number") {
    TestForm form;
    const Lookup numbered = [](std::string_view key) { return std::string(key == "Save" ? "" : key); };
    CHECK(TextOf(form.The("Save"), "", numbered).empty());
    CHECK(TextOf(form.The("Save"), "2", numbered) == "Save(2)");
}

TEST_CASE("one text sets caption and tool tip, and without a bar the tool tip stays") {
    TestForm form;
    SetText(form.The("Save"), "&Save");
    CHECK(form.The("Save").Caption() == "&Save");
    CHECK(form.The("Save").ToolTip() == "designed");
    SetText(form.The("Save"), "&Save|now|here");
    CHECK(form.The("Save").ToolTip() == "now|here");
}

TEST_CASE("a control without a text keeps its own") {
    TestForm form;
    SetText(form.The("Save"), "");
    CHECK(form.The("Save").Caption() == "designed");
}

TEST_CASE("a character set reaches the form and every control that has a font") {
    TestForm form;
    SetFonts(form, 238, "");
    CHECK(form.Font().charSet == 238);
    CHECK(form.The("Save").Font().charSet == 238);
    CHECK(form.The("NavBar").Font().charSet == 238);
    CHECK(form.Element(2).Font().charSet == 238);
    CHECK(form.The("Save").Font().face.empty());
    CHECK(form.The("Timer1").Font() == FontStyle());
}

TEST_CASE("the face of a font reaches the controls and not the form") {
    TestForm form;
    SetFonts(form, 0, "Arial");
    CHECK(form.The("Save").Font().face == "Arial");
    CHECK(form.Font().face.empty());
}

TEST_CASE("what else a font has stays as it was") {
    TestForm form;
    FontStyle bold;
    bold.bold = true;
    bold.points = 12;
    form.The("Save").SetFont(bold);
    SetFonts(form, 238, "Arial");
    CHECK(form.The("Save").Font().bold);
    CHECK(form.The("Save").Font().points == 12);
}

TEST_CASE("a list of names hides these controls and elements and no others") {
    TestForm form;
    CHECK(Hide(form, ";Save;Option(2);;textdelay").empty());
    CHECK_FALSE(form.The("Save").Visible());
    CHECK_FALSE(form.The("TextDelay").Visible());
    CHECK_FALSE(form.Element(2).Visible());
    CHECK(form.Element(0).Visible());
    CHECK(form.The("Label1").Visible());
    CHECK(form.The("Save").Enabled());
}

TEST_CASE("a list of names disables these controls and elements, and hides none") {
    TestForm form;
    CHECK(Disable(form, "Save;Option(0)").empty());
    CHECK_FALSE(form.The("Save").Enabled());
    CHECK_FALSE(form.Element(0).Enabled());
    CHECK(form.The("Save").Visible());
}

TEST_CASE("the empty list changes nothing") {
    TestForm form;
    CHECK(Hide(form, "").empty());
    CHECK(Disable(form, "").empty());
    for (const Control& control : form.Controls()) CHECK(control.Visible());
}

TEST_CASE("entries that name nothing of the form are returned, and the others still count") {
    TestForm form;
    const std::vector<std::string> refused = Hide(form, "Absent;Option;Option(7);Option(;Timer1;Save");
    CHECK(refused == std::vector<std::string>{"Absent", "Option", "Option(7)", "Option(", "Timer1"});
    CHECK_FALSE(form.The("Save").Visible());
}

TEST_CASE("a mask takes the pages away whose bits are set, counted from 0") {
    TestForm form;
    CHECK(Hide(form, "NavBar:5").empty());
    CHECK(TabNames(form) == std::vector<std::string>{"B", "D"});
    CHECK(form.The("NavBar").Visible());
}

TEST_CASE("the tool tips of the pages that stay end before their plus") {
    TestForm form;
    CHECK(Hide(form, "NavBar:2").empty());
    const auto& pages = form.The("NavBar").Tabs();
    REQUIRE(pages.size() == 3);
    CHECK(pages[0].toolTip == "first");
    CHECK(pages[1].toolTip == "third");
    CHECK(pages[2].toolTip.empty());
}

TEST_CASE("a mask of all bits, of none and of more bits than pages") {
    TestForm none;
    CHECK(Hide(none, "NavBar:0").empty());
    CHECK(TabNames(none).size() == 4);
    CHECK(none.The("NavBar").Tabs()[0].toolTip == "first");
    TestForm all;
    CHECK(Hide(all, "NavBar:65535").empty());
    CHECK(TabNames(all).empty());
    CHECK(Hide(all, "NavBar:1").empty());
}

TEST_CASE("a mask is nothing for a control without pages, and none disables anything") {
    TestForm form;
    CHECK(Hide(form, "Save:1;Absent:1;NavBar(0):1").size() == 3);
    CHECK(form.The("Save").Visible());
    CHECK(Disable(form, "NavBar:1").size() == 1);
    CHECK(TabNames(form).size() == 4);
    CHECK(form.The("NavBar").Enabled());
}
