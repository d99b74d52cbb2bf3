// The question box in real windows, used as a person would.
#include <doctest.h>
#include <windows.h>

#include <cstdlib>
#include <map>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "config/IniFile.h"
#include "platform/Text.h"
#include "question/QuestionBox.h"
#include "shell/WindowsMiscMetrics.h"
#include "support/Prompt.h"
#include "testing/AddInHouse.h"
#include "testing/BoxAnswerer.h"
#include "testing/FormDriver.h"
#include "testing/HandleCount.h"
#include "testing/ImportPatch.h"
#include "testing/RealFunction.h"
#include "testing/ScreenReader.h"
#include "testing/WholeForm.h"

using namespace QuestionBox;
using platform::Control;
using platform::Rect;

namespace {

constexpr std::int32_t Id(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }

HWND At(const char* name) { return ShownForm()->Window(ShownForm()->The(name)); }
bool Visible(const char* name) { return ShownForm() && IsWindowVisible(At(name)); }
std::string Caption(const char* name) { return ShownForm()->The(name).Caption(); }

std::vector<std::string> opened, helped;

// The add-in's house with the box plugged in and a window of the host in front.
class House : public AddInHouse {
  public:
    explicit House(const std::string& language = "English") : AddInHouse(language) {
        memory = {};
        opened.clear();
        helped.clear();
        Plug({.execApp = [](const std::string& command,
                            std::int32_t style) { opened.push_back(command + "," + platform::Decimal(style)); },
              .callHelp =
                  [](const std::string& page, const std::string& htmlPage, std::int32_t flags) {
                      helped.push_back(page + "," + htmlPage + "," + platform::Decimal(flags));
                  }});
        host = CreateWindowExA(0, "STATIC", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 500, 400, nullptr,
                               nullptr, nullptr, nullptr);
        field = CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 10, 10, 100, 20, host, nullptr, nullptr, nullptr);
        SetActiveWindow(host);
        SetFocus(field);
    }
    ~House() {
        DestroyWindow(host);
        Plug({});
    }
    [[nodiscard]] static std::string Setting(const std::string& key) {
        return IniFile::GetIniSetting("Settings", key, "none");
    }

    HWND host = nullptr, field = nullptr;
};

// What a call asks for; its fields are the arguments.
struct Question {
    std::int32_t id = -1;
    std::string prompt = "Text";
    std::int32_t buttons = 0;
    std::string title;
    std::string defaultText = "-1";
    std::int32_t layoutOption = 0;
    std::string extraText, caption1, caption2, caption3, extraOption;
    bool cancelled = false;
    bool shown = false;    // the box was seen
    bool finished = true;  // it went away by itself

    // Asks and takes the steps while the box is shown.
    std::string Ask(std::vector<FormDriver::Step> steps) {
        steps.insert(steps.begin(), [this] { shown = true; });
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); }, std::move(steps));
        std::string result = MsgInputBox(id, prompt, buttons, title, defaultText, layoutOption, cancelled, extraText,
                                         caption1, caption2, caption3, extraOption);
        finished = !shown || driver.Finished();
        return result;
    }
};

const FormDriver::Step pressEnter = [] { FormDriver::Key(VK_RETURN); };
const FormDriver::Step pressEscape = [] { FormDriver::Key(VK_ESCAPE); };
FormDriver::Step Click(const char* name) {
    return [name] { FormDriver::Click(At(name)); };
}
FormDriver::Step Type(char letter) {
    return [letter] { PostMessageA(GetFocus(), WM_CHAR, static_cast<WPARAM>(static_cast<unsigned char>(letter)), 1); };
}
const FormDriver::Step untick = [] { FormDriver::Click(At("Check1")); };

int refusedBoxes = 0;

HWND WINAPI RefuseCheckBox(DWORD exStyle, LPCWSTR kind, LPCWSTR title, DWORD style, int x, int y, int width, int height,
                           HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
    const DWORD type = style & BS_TYPEMASK;
    if (lstrcmpiW(kind, L"BUTTON") == 0 && (type == BS_CHECKBOX || type == BS_AUTOCHECKBOX)) {
        ++refusedBoxes;
        SetLastError(ERROR_NO_SYSTEM_RESOURCES);
        return nullptr;
    }
    return Real<decltype(&CreateWindowExW)>("user32.dll", "CreateWindowExW")(exStyle, kind, title, style, x, y, width,
                                                                             height, parent, menu, instance, parameter);
}

BOOL WINAPI RunOutOfMemory(HWND, LPCSTR) { throw std::bad_alloc(); }

}  // namespace

// --- answers

TEST_CASE("each button returns its number") {
    const House house;
    struct Row {
        std::int32_t buttons;
        const char *button, *answer;
    };
    for (const Row& row :
         {Row{0, "ButtonOKYes", "1"}, Row{1, "ButtonOKYes", "1"}, Row{1, "ButtonCancel", "2"},
          Row{2, "ButtonOKYes", "1"}, Row{2, "ButtonNo", "7"}, Row{2, "ButtonCancel", "2"}, Row{3, "ButtonOKYes", "6"},
          Row{3, "ButtonNo", "7"}, Row{3, "ButtonCancel", "2"}, Row{4, "ButtonOKYes", "6"}, Row{4, "ButtonNo", "7"},
          Row{5, "ButtonOKYes", "4"}, Row{5, "ButtonCancel", "2"}, Row{0x84, "ButtonAll", "9"}}) {
        CAPTURE(row.buttons);
        CAPTURE(row.button);
        Question question;
        question.buttons = row.buttons;
        CHECK(question.Ask({Click(row.button)}) == row.answer);
        CHECK(question.finished);
        CHECK(question.cancelled == (row.answer == std::string("2")));
    }
}

TEST_CASE("a button closes the box even where memory has ended since it was shown") {
    const House house;
    struct Row {
        std::int32_t id, buttons;
        const char *button, *answer;
    };
    for (const Row& row : {Row{-1, 3, "ButtonOKYes", "6"}, Row{-1, 3, "ButtonNo", "7"}, Row{-1, 3, "ButtonCancel", "2"},
                           Row{-1, 0x84, "ButtonAll", "9"}, Row{Prompt::Id::TextInput, 1, "ButtonOKYes", "typed"},
                           Row{Prompt::Id::TextInput, 1, "ButtonCancel", ""}}) {
        CAPTURE(row.id);
        CAPTURE(row.button);
        ImportPatch patch;
        const FormDriver::Step endMemory = [&patch] {
            const ImportPatch::Import imports[] = {
                {"USER32.dll", "SetWindowTextA", reinterpret_cast<void*>(&RunOutOfMemory)}};
            REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 1);
        };
        Question question;
        question.id = row.id;
        question.buttons = row.buttons;
        question.defaultText = "typed";
        CHECK(question.Ask({endMemory, Click(row.button)}) == row.answer);
        CHECK(question.finished);
        CHECK(question.cancelled == (row.button == std::string("ButtonCancel")));
    }
}

TEST_CASE("a box whose buttons the settings hide or disable can still be answered") {
    for (const char* restriction : {"Hide", "Disable"}) {
        for (const std::int32_t buttons : {0, 1, 3, 4}) {
            CAPTURE(restriction);
            CAPTURE(buttons);
            const House house;
            IniFile::SetIniSettingDefault("FormQuestion", restriction, "ButtonOKYes;ButtonNo;ButtonCancel;ButtonAll",
                                          true);
            Question question;
            question.buttons = buttons;
            CHECK_FALSE(question.Ask({pressEnter}).empty());
            CHECK(question.shown);
            CHECK(question.finished);
        }
    }
}
TEST_CASE("with the first button hidden the others answer, and Enter presses one that is shown") {
    const House house;
    IniFile::SetIniSettingDefault("FormQuestion", "Hide", "ButtonOKYes", true);
    Question question;
    question.buttons = 4;
    bool first = true;
    CHECK(question.Ask({[&] { first = Visible("ButtonOKYes"); }, pressEnter}) == "7");
    CHECK_FALSE(first);
}
TEST_CASE("the language file's text of a button holds its caption and its tool tip") {
    const House house;
    house.folder.Write("English.lng", "[FormQuestion]\r\nButtonOKYes2=&Sure|Does it at once\r\nButtonNo=&Never\r\n");
    Question question;
    question.buttons = 4;
    std::string caption, toolTip;
    CHECK(question.Ask({[&] {
                            caption = Caption("ButtonOKYes");
                            toolTip = ShownForm()->The("ButtonOKYes").ToolTip();
                        },
                        Click("ButtonOKYes")}) == "6");
    CHECK(caption == "&Sure");
    CHECK(toolTip == "Does it at once");
}

TEST_CASE("with Retry/Cancel, pressing the first button returns 4") {
    const House house;
    Question question;
    question.buttons = 5;
    CHECK(question.Ask({Click("ButtonOKYes")}) == "4");
}

TEST_CASE("Enter presses the first button, or the one that the style word names") {
    const House house;
    Question first;
    first.buttons = 3;
    CHECK(first.Ask({pressEnter}) == "6");
    Question second;
    second.buttons = 3 | 0x100;
    CHECK(second.Ask({pressEnter}) == "7");
    Question third;
    third.buttons = 3 | 0x200;
    CHECK(third.Ask({pressEnter}) == "2");
    Question preselected;
    preselected.buttons = 3 | 0x100;
    preselected.defaultText = "1";
    CHECK(preselected.Ask({pressEnter}) == "6");
}

TEST_CASE("Escape cancels, accepts a message, and does not evade a question") {
    const House house;
    Question cancel;
    cancel.buttons = 1;
    CHECK(cancel.Ask({pressEscape}) == "2");
    Question message;
    CHECK(message.Ask({pressEscape}) == "1");
    Question question;
    question.buttons = 4;
    bool stayed = false;
    CHECK(question.Ask({pressEscape, [&] { stayed = ShownForm() != nullptr; }, Click("ButtonNo")}) == "7");
    CHECK(stayed);
}

TEST_CASE("closing the window does what Escape does") {
    const House house;
    Question question;
    question.buttons = 3;
    CHECK(question.Ask({[] { PostMessageA(ShownForm()->Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }}) == "2");
    CHECK(question.cancelled);
}

TEST_CASE("with the captions &Yes and &No, pressing N returns 7 and pressing Y returns 6") {
    const House house;
    for (const char letter : {'n', 'N'}) {
        Question question;
        question.buttons = 4;
        CHECK(question.Ask({Type(letter)}) == "7");
    }
    Question yes;
    yes.buttons = 4;
    CHECK(yes.Ask({Type('y')}) == "6");
}

TEST_CASE("with the captions &Yes and &No on OK and Cancel, pressing Y returns 1 where the marker is not set") {
    const House house;
    Question question;
    question.buttons = 1;
    question.caption1 = "&Yes";
    question.caption3 = "&No";
    CHECK(question.Ask({Type('y')}) == "1");
    Question no = question;
    CHECK(no.Ask({Type('n')}) == "2");
}

TEST_CASE("a letter that two captions share presses No before Cancel before the first button") {
    const House house;
    Question question;
    question.buttons = 3;
    question.caption1 = "&All";
    question.caption2 = "&Any";
    question.caption3 = "&Abort";
    CHECK(question.Ask({Type('a')}) == "7");
    question.buttons = 1;
    CHECK(question.Ask({Type('a')}) == "2");
}

TEST_CASE("a letter with an umlaut presses its button, small or capital") {
    const House house;
    for (const char letter : {'\xFC', '\xDC'}) {
        for (const char* caption : {"&\xDC\x62\x65rnehmen", "\xFC\x62\x65r&\xFC\x62\x65n"}) {
            Question question;
            question.buttons = 4;
            question.caption2 = caption;
            CHECK(question.Ask({Type(letter)}) == "7");
        }
    }
}

TEST_CASE("a letter presses a button from the check box too") {
    const House house;
    Question question;
    question.id = Id(0x90000010);
    question.buttons = 4;
    CHECK(question.Ask({[] { ShownForm()->The("Check1").TakeFocus(); }, Type('n')}) == "7");
}

TEST_CASE("a letter does not press a button that is not shown") {
    const House house;
    Question question;
    question.buttons = 0;
    bool stayed = false;
    CHECK(question.Ask({Type('n'), [&] { stayed = ShownForm() != nullptr; }, pressEnter}) == "1");
    CHECK(stayed);
}

TEST_CASE("Alt and a letter press a button, from the input too") {
    const House house;
    Question question;
    question.id = -2;
    question.buttons = 1;
    question.caption1 = "&Save";
    question.defaultText = "x";
    CHECK(question.Ask({[] { PostMessageA(GetFocus(), WM_SYSCHAR, 's', 0x20000001); }}) == "x");
    CHECK(question.finished);
}

TEST_CASE("Tab moves from button to button and Enter presses the one with the focus") {
    const House house;
    Question question;
    question.buttons = 3;
    CHECK(question.Ask({[] { FormDriver::Key(VK_TAB); }, pressEnter}) == "7");
}

// --- what is shown

TEST_CASE("the fourth button shows with bit 128 only") {
    const House house;
    for (const std::int32_t set : {0, 1, 2, 3, 4, 5}) {
        for (const std::int32_t bit : {0, 0x80}) {
            Question question;
            question.buttons = set | bit;
            bool visible = false;
            question.Ask({[&] { visible = Visible("ButtonAll"); }, Click("ButtonOKYes")});
            CHECK(visible == (bit != 0));
        }
    }
}
namespace {

// One row for each of the tables' dimensions; what the box is to do is said here once more, apart from its own rules.
struct SetRow {
    std::int32_t buttons;
    bool no, cancel;
    const char *first, *second, *third;  // standard captions
    const char* yes;                     // what the first button returns
    const char *recalledYes, *recalledNo;
};
constexpr SetRow setRows[] = {
    {0, false, false, "OK", "", "", "1", "", "asked"},
    {1, false, true, "OK", "", "Cancel", "1", "1", "2"},
    {2, true, true, "&Abort", "&Retry", "Cancel", "1", "", "asked"},
    {3, true, true, "&Yes", "&No", "Cancel", "6", "6", "7"},
    {4, true, false, "&Yes", "&No", "", "6", "6", "7"},
    {5, false, true, "&Retry", "", "Cancel", "4", "", "asked"},
};
struct CaptionRow {
    const char *prompt, *own[3];  // the arguments
    const char *first, *second, *third, *fourth;
};
constexpr CaptionRow captionRows[] = {
    {"Text", {"", "", ""}, nullptr, nullptr, nullptr, "A&ll"},
    {"Text", {"Go", "Stay", "Leave"}, "Go", "Stay", "Leave", "A&ll"},
    {"Text|Go||Leave|Every", {"", "", ""}, "Go", nullptr, "Leave", "Every"},
};
struct SlotRow {
    std::uint32_t id;
    const char* keys;  // what stands in front of "ShowMessageBox..."; null: nothing is written
};
constexpr SlotRow slotRows[] = {{0x00000010, ""},  {0x80000010, "2"}, {0x90000010, "3"}, {0xA0000010, nullptr},
                                {0xB0000010, "5"}, {0xC0000010, "6"}, {0xD0000010, ""}};

// The memory's settings that are written, in the order of their names.
using Written = std::vector<std::string>;
constexpr const char* keyFronts[] = {"", "-1", "2", "3", "5", "6", "_"};
Written WrittenNow() {
    Written written;
    for (const char* front : keyFronts) {
        for (const char* back : {"ShowMessageBoxNo", "ShowMessageBoxYes"}) {
            const std::string value = House::Setting(std::string(front) + back);
            if (value != "none") written.push_back(front + std::string(back) + "=" + value);
        }
    }
    return written;
}
Written BothKeys(const char* front, const char* no, const char* yes) {
    if (!front) return {};
    return {front + std::string("ShowMessageBoxNo=") + no, front + std::string("ShowMessageBoxYes=") + yes};
}
void Forget() {
    memory = {};
    for (const char* front : keyFronts) {
        for (const char* back : {"ShowMessageBoxNo", "ShowMessageBoxYes"})
            IniFile::SetIniSetting("Settings", front + std::string(back), "", false);
    }
}

// One combination of the three tables, with and without the fourth button.
struct Combination {
    const SetRow& set;
    bool fourth;
    const CaptionRow& captions;
    const SlotRow& slot;

    [[nodiscard]] Question Asked() const {
        Question question;
        question.id = Id(slot.id);
        question.buttons = set.buttons | (fourth ? 0x80 : 0);
        question.prompt = captions.prompt;
        question.caption1 = captions.own[0];
        question.caption2 = captions.own[1];
        question.caption3 = captions.own[2];
        return question;
    }
    void Look() const {
        const auto reads = [](const char* name, const char* own, const char* standard) {
            CHECK(Caption(name) == (own ? own : standard));
        };
        CHECK(Caption("Label1") == "Text");
        CHECK(Visible("ButtonOKYes"));
        CHECK(Visible("ButtonNo") == set.no);
        CHECK(Visible("ButtonCancel") == set.cancel);
        CHECK(Visible("ButtonAll") == fourth);
        CHECK(Visible("Check1"));
        reads("ButtonOKYes", captions.first, set.first);
        if (set.no) reads("ButtonNo", captions.second, set.second);
        if (set.cancel) reads("ButtonCancel", captions.third, set.third);
        CHECK(Caption("ButtonAll") == captions.fourth);
    }
    // Answers by one button with the box unticked, so that it is remembered.
    [[nodiscard]] std::string AnswerFor(const char* button) const {
        Question question = Asked();
        std::string answer = question.Ask({[this, button] {
            Look();
            untick();
            FormDriver::Click(At(button));
        }});
        CHECK(question.shown);
        CHECK(question.finished);
        CHECK(question.prompt == "Text");
        CHECK(question.cancelled == (answer == "2"));
        return answer;
    }
    // The answer to a question whose answer may be known; "asked" where the box is seen.
    [[nodiscard]] std::string Recall() const {
        Question question = Asked();
        const std::string answer = question.Ask({Click("ButtonOKYes")});
        if (!question.shown) CHECK(question.cancelled == (answer == "2"));
        return question.shown ? "asked" : answer;
    }
    // A button whose answer is remembered as No, and that answer.
    [[nodiscard]] std::pair<const char*, const char*> Refusal() const {
        if (set.no) return {"ButtonNo", "7"};
        if (set.cancel) return {"ButtonCancel", "2"};
        return {fourth ? "ButtonAll" : nullptr, "9"};
    }

    void Check() const {
        const bool forgetsNo = slot.id == 0xC0000010;
        Forget();
        CHECK(AnswerFor("ButtonOKYes") == set.yes);
        CHECK(WrittenNow() == BothKeys(slot.keys, "0", "16"));
        CHECK(Recall() == set.recalledYes);

        Forget();
        const auto [button, answer] = Refusal();
        if (button) {
            CHECK(AnswerFor(button) == answer);
            CHECK(WrittenNow() == BothKeys(slot.keys, forgetsNo ? "0" : "16", "0"));
            CHECK(memory.AnswerNoMask[forgetsNo ? 0 : Index()] == 0x10);
        } else {
            memory.AnswerNoMask[Index()] = 0x10;
        }
        CHECK(Recall() == (forgetsNo ? "asked" : set.recalledNo));
    }

  private:
    [[nodiscard]] std::size_t Index() const {
        return static_cast<std::size_t>(QuestionRules::Decode(Id(slot.id))->slot);
    }
};

}  // namespace

// What the rules say of every set in every slot is tested on the rules themselves (rules_test.cpp). Here each set is
// shown with each kind of captions, the slots and the fourth button taking turns.
TEST_CASE("each button set with any captions is shown, answered and remembered as Yes, No or not at all") {
    const House house;
    std::size_t turn = 0;
    for (const SetRow& set : setRows) {
        for (const CaptionRow& captions : captionRows) {
            const SlotRow& slot = slotRows[turn % std::size(slotRows)];
            const bool fourth = turn++ % 2 != 0;
            CAPTURE(set.buttons);
            CAPTURE(captions.prompt);
            CAPTURE(captions.own[0]);
            CAPTURE(slot.id);
            CAPTURE(fourth);
            Combination{set, fourth, captions, slot}.Check();
        }
    }
}

TEST_CASE("a prompt of fields shows its text and captions, the empty one standing for the standard caption") {
    const House house;
    Question question;
    question.prompt = "Text|Go|Stay||All";
    question.buttons = 0x83;
    std::vector<std::string> seen;
    CHECK(
        question.Ask({[&] {
                          for (const char* name : {"Label1", "ButtonOKYes", "ButtonNo", "ButtonCancel", "ButtonAll"}) {
                              seen.push_back(Caption(name));
                          }
                          CHECK(Visible("ButtonAll"));
                      },
                      Click("ButtonAll")}) == "9");
    CHECK(seen == std::vector<std::string>{"Text", "Go", "Stay", "Cancel", "All"});
    CHECK(question.prompt == "Text");
}

TEST_CASE("the fourth caption of a prompt shows only with bit 128") {
    const House house;
    Question question;
    question.prompt = "Text|Go|Stay||All";
    question.buttons = 3;
    bool visible = true;
    question.Ask({[&] { visible = Visible("ButtonAll"); }, pressEnter});
    CHECK_FALSE(visible);
}

TEST_CASE("with a caption of the caller's own a bar is shown as it is") {
    const House house;
    Question question;
    question.prompt = "a|b";
    question.caption1 = "Go";
    std::string text;
    question.Ask({[&] { text = Caption("Label1"); }, pressEnter});
    CHECK(text == "a|b");
    CHECK(question.prompt == "a|b");
}

TEST_CASE("a title replaces the form's own caption") {
    const House house;
    Question own, other;
    other.title = "Phone locked";
    std::string caption, drawn;
    own.Ask({[&] { caption = ShownForm()->Caption(); }, pressEnter});
    CHECK(caption == "Corvella");
    other.Ask({[&] {
                   caption = ShownForm()->Caption();
                   drawn = Caption("LabelCaption");
               },
               pressEnter});
    CHECK(caption == "Phone locked");
    CHECK(drawn == "Phone locked");
}

// The first and the last line of the window that has a letter's colour in it.
std::pair<int, int> LettersIn(HWND window, COLORREF colour) {
    RECT area{};
    GetClientRect(window, &area);
    const HDC device = GetDC(window);
    std::pair<int, int> lines{-1, -1};
    for (int y = 0; y < area.bottom; ++y) {
        for (int x = 0; x < area.right; ++x) {
            if (GetPixel(device, x, y) != colour) continue;
            lines.second = y;
            if (lines.first < 0) lines.first = y;
        }
    }
    ReleaseDC(window, device);
    return lines;
}

TEST_CASE("the caption is bold and has the picture of a program, the text is not bold") {
    const House house;
    const auto weightOf = [](const char* name) {
        LOGFONTA font{};
        GetObjectA(reinterpret_cast<HGDIOBJ>(SendMessageA(At(name), WM_GETFONT, 0, 0)), sizeof font, &font);
        return font.lfWeight;
    };
    LONG caption = 0, text = 0;
    std::string picture;
    Question question;
    question.Ask({[&] {
                      caption = weightOf("LabelCaption");
                      text = weightOf("Label1");
                      picture = ShownForm()->The("Image2").Picture();
                  },
                  pressEnter});
    CHECK(picture == "*application");
    CHECK(caption == FW_BOLD);
    CHECK(text == FW_NORMAL);
}

TEST_CASE("a title is drawn in the middle of the caption, an ampersand in it as text") {
    const House house;
    Question question;
    question.title = "R&D";
    std::string window;
    std::pair<int, int> lines;
    int height = 0;
    question.Ask({[] { UpdateWindow(ShownForm()->Window()); },
                  [&] {
                      char text[32] = "";
                      GetWindowTextA(At("LabelCaption"), text, sizeof text);
                      window = text;
                      RECT area{};
                      GetClientRect(At("LabelCaption"), &area);
                      height = area.bottom;
                      lines = LettersIn(At("LabelCaption"), GetSysColor(COLOR_CAPTIONTEXT));
                  },
                  pressEnter});
    CHECK(window == "R&&D");
    REQUIRE(lines.first >= 0);
    CHECK(std::abs(lines.first - (height - 1 - lines.second)) <= 4);
}

TEST_CASE("the texts are those of the language file") {
    const House house("Deutsch");
    Question question;
    question.id = Id(0x90000010);
    question.buttons = 3;
    std::vector<std::string> seen;
    question.Ask({[&] {
                      for (const char* name : {"ButtonOKYes", "ButtonNo", "ButtonCancel", "Check1"}) {
                          seen.push_back(Caption(name));
                      }
                  },
                  pressEnter});
    CHECK(seen == std::vector<std::string>{"&Ja", "&Nein", "Abbrechen", "Diese &Meldung weiterhin anzeigen"});
}

TEST_CASE("without a language file the box is shown in English") {
    const House house;
    DeleteFileA(house.folder.Path("English.lng").c_str());
    const BoxAnswerer user(IDOK);  // the empty language file is told once
    Question question;
    question.buttons = 2;
    std::vector<std::string> seen;
    CHECK(question.Ask({[&] {
                            for (const char* name : {"ButtonOKYes", "ButtonNo", "ButtonCancel"})
                                seen.push_back(Caption(name));
                        },
                        Click("ButtonNo")}) == "7");
    CHECK(seen == std::vector<std::string>{"&Abort", "&Retry", "Cancel"});
}

TEST_CASE("the check box shows for a question with a memory only, ticked") {
    const House house;
    struct Row {
        std::int32_t id, buttons;
        bool shows;
    };
    for (const Row& row : {Row{-1, 4, false}, Row{0, 4, false}, Row{0x10, 4, true}, Row{Id(0x90000010), 4, true},
                           Row{0x10, 4 | 0x800000, false}, Row{-2, 1, false}}) {
        CAPTURE(row.id);
        Question question;
        question.id = row.id;
        question.buttons = row.buttons;
        bool visible = !row.shows, ticked = false;
        question.Ask({[&] {
                          visible = Visible("Check1");
                          ticked = ShownForm()->The("Check1").Value();
                      },
                      pressEnter});
        CHECK(visible == row.shows);
        CHECK(ticked);
    }
}

TEST_CASE("the style word's picture is shown") {
    const House house;
    for (const std::int32_t style : {0, 0x10, 0x20, 0x30, 0x40, 0xC0}) {
        CAPTURE(style);
        Question question;
        question.buttons = style;
        bool visible = false;
        question.Ask({[&] { visible = Visible("Im"); }, pressEnter});
        CHECK(visible == (style != 0));
    }
}

// --- memory

TEST_CASE("identifier -1 never causes a question to be skipped") {
    const House house;
    memory.AnswerYesMask.fill(-1);
    memory.AnswerNoMask.fill(-1);
    Question question;
    question.buttons = 4;
    CHECK(question.Ask({Click("ButtonNo")}) == "7");
    CHECK(question.shown);
}

TEST_CASE("a Yes-remembered question with the OK-only button set returns the empty text and is not shown") {
    const House house;
    memory.AnswerYesMask[0] = 0x10;
    Question question;
    question.id = 0x10;
    question.cancelled = true;
    CHECK(question.Ask({pressEnter}).empty());
    CHECK_FALSE(question.shown);
    CHECK_FALSE(question.cancelled);
    std::string prompt = "Text";
    CHECK(QuestionMsgBox(0x10, prompt, 0, "") == 0);
}

TEST_CASE("a No-remembered question with button set 0, 2 or 5 is shown again") {
    const House house;
    memory.AnswerNoMask[0] = 0x10;
    for (const auto& [set, answer] : {std::pair{0, "1"}, std::pair{2, "1"}, std::pair{5, "4"}}) {
        Question question;
        question.id = 0x10;
        question.buttons = set;
        CHECK(question.Ask({Click("ButtonOKYes")}) == answer);
        CHECK(question.shown);
    }
}

TEST_CASE("an answer is remembered only when the check box is unticked as the form closes") {
    const House house;
    Question question;
    question.id = 0x10;
    question.buttons = 4;
    question.Ask({Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask[0] == 0);
    question.Ask({untick, untick, Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask[0] == 0);
    question.Ask({untick, Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask[0] == 0x10);
    CHECK(House::Setting("ShowMessageBoxYes") == "16");
    CHECK(House::Setting("ShowMessageBoxNo") == "0");
}

TEST_CASE("nothing is remembered where the check box could not be shown, so that nobody unticked it") {
    const House house;
    ImportPatch patch;
    const ImportPatch::Import imports[] = {{"USER32.dll", "CreateWindowExW", reinterpret_cast<void*>(&RefuseCheckBox)}};
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 1);
    const std::string before = house.Settings();
    Question question;
    question.id = 0x10;
    question.buttons = 4;
    for (const char* button : {"ButtonOKYes", "ButtonNo"}) {
        CAPTURE(button);
        refusedBoxes = 0;
        question.shown = false;
        bool made = true;
        question.Ask({[&] { made = At("Check1") != nullptr; }, Click(button)});
        CHECK(refusedBoxes > 0);
        CHECK_FALSE(made);
        CHECK(question.shown);
        CHECK(question.finished);
    }
    CHECK(memory.AnswerYesMask[0] == 0);
    CHECK(memory.AnswerNoMask[0] == 0);
    CHECK(house.Settings() == before);
}

TEST_CASE("0x90000010 answered Yes with Check1 unticked sets its bit and writes the key 3ShowMessageBoxYes") {
    const House house;
    Question question;
    question.id = Id(0x90000010);
    question.buttons = 4;
    CHECK(question.Ask({untick, Click("ButtonOKYes")}) == "6");
    CHECK(memory.AnswerYesMask[3] == 0x10);
    CHECK(house.Settings().find("[Settings]\r\n") != std::string::npos);
    CHECK(house.Settings().find("\r\n3ShowMessageBoxYes=16\r\n") != std::string::npos);
}

TEST_CASE("a slot-6 question answered No is recorded in slot 0, not in slot 6") {
    const House house;
    Question question;
    question.id = Id(0xC0000010);
    question.buttons = 4;
    CHECK(question.Ask({untick, Click("ButtonNo")}) == "7");
    CHECK(memory.AnswerNoMask[0] == 0x10);
    CHECK(memory.AnswerNoMask[6] == 0);
    CHECK(House::Setting("6ShowMessageBoxNo") == "0");
    CHECK(question.Ask({Click("ButtonNo")}) == "7");
    CHECK(question.shown);
}

TEST_CASE("a question with slot code -1 is remembered in memory and nothing is written for it") {
    const House house;
    const std::string before = house.Settings();
    Question question;
    question.id = Id(0xA0000010);
    question.buttons = 4;
    question.Ask({untick, Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask[4] == 0x10);
    CHECK(house.Settings() == before);
    question.shown = false;
    CHECK(question.Ask({Click("ButtonNo")}) == "6");
    CHECK_FALSE(question.shown);
}

TEST_CASE("identifier 0 is never skipped, and remembering it changes nothing") {
    const House house;
    Question question;
    question.id = 0;
    question.buttons = 4;
    question.Ask({[] { ShownForm()->The("Check1").SetValue(false); }, Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask == QuestionRules::Memory().AnswerYesMask);
    question.shown = false;
    question.Ask({Click("ButtonNo")});
    CHECK(question.shown);
}

TEST_CASE("with bit 23 an answer is never remembered") {
    const House house;
    Question question;
    question.id = 0x10;
    question.buttons = 4 | 0x800000;
    question.Ask({[] { ShownForm()->The("Check1").SetValue(false); }, Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask[0] == 0);
}

TEST_CASE("a plain question whose check box were unticked fills slot 0 in memory and does not write it") {
    const House house;
    Question question;
    question.buttons = 4;
    question.Ask({[] { ShownForm()->The("Check1").SetValue(false); }, Click("ButtonOKYes")});
    CHECK(memory.AnswerYesMask[0] == -1);
    CHECK(House::Setting("ShowMessageBoxYes") == "none");
}

TEST_CASE("an identifier of slot 8 or 9 is an error: nothing is shown, the error and its step are logged") {
    const House house;
    Debug::state.DebugActive = true;
    Debug::state.DebugLevel = 1;
    Debug::state.DebugFile = house.folder.Path("log.xml");
    Question question;
    question.id = Id(0xE0000010);
    question.cancelled = true;
    CHECK(question.Ask({pressEnter}).empty());
    CHECK_FALSE(question.shown);
    CHECK_FALSE(question.cancelled);
    CHECK_FALSE(platform::Err());
    const std::string log = house.folder.Read("log.xml");
    CHECK(log.find("9:Subscript out of range\r\n") != std::string::npos);
    CHECK(log.find("MsgInputBox3\r\n") != std::string::npos);
    CHECK(log.find("</MsgInputBox>\r\n") != std::string::npos);
}

TEST_CASE("the log tells of each step") {
    const House house;
    Debug::state.DebugActive = true;
    Debug::state.DebugLevel = 1;
    Debug::state.DebugFile = house.folder.Path("log.xml");
    Question question;
    question.Ask({pressEnter});
    const std::string log = house.folder.Read("log.xml");
    std::size_t at = log.find("<MsgInputBox>_\r\n");
    for (const char* step : {"3", "4", "5", "7", "9", "10", "11", "12", "13", "14"}) {
        CAPTURE(step);
        REQUIRE(at != std::string::npos);
        at = log.find(std::string("MsgInputBox") + step + "\r\n", at);
    }
    REQUIRE(at != std::string::npos);
    CHECK(log.find("</MsgInputBox>\r\n", at) != std::string::npos);
}

// --- inputs

TEST_CASE("an input returns what was typed, its first content selected") {
    const House house;
    Question question;
    question.id = -2;
    question.buttons = 1;
    question.defaultText = "old";
    bool focused = false;
    CHECK(question.Ask({[&] { focused = GetFocus() == At("TextInput"); }, Type('n'), Type('e'), Type('w'),
                        pressEnter}) == "new");
    CHECK(focused);
    CHECK_FALSE(question.cancelled);
}

TEST_CASE("Cancel on an input prompt returns an empty text even when text had been typed") {
    const House house;
    for (const FormDriver::Step& cancel : {Click("ButtonCancel"), pressEscape}) {
        Question question;
        question.id = -2;
        question.buttons = 1;
        question.defaultText = "old";
        CHECK(question.Ask({Type('x'), cancel}).empty());
        CHECK(question.cancelled);
    }
}

TEST_CASE("an empty entry is not a cancelled one") {
    const House house;
    Question question;
    question.id = -2;
    question.buttons = 1;
    question.defaultText = "";
    CHECK(question.Ask({pressEnter}).empty());
    CHECK_FALSE(question.cancelled);
}

TEST_CASE("the second input offers the choices of the extra text and takes others") {
    const House house;
    Question question;
    question.id = -4;
    question.buttons = 1;
    question.defaultText = "two";
    question.extraText = "one\rtwo\rthree";
    std::vector<std::string> choices;
    bool onlyCombo = false;
    CHECK(question.Ask({[&] {
                            choices = ShownForm()->The("Combo1").List();
                            onlyCombo = Visible("Combo1") && !Visible("TextInput");
                        },
                        pressEnter}) == "two");
    CHECK(choices == std::vector<std::string>{"one", "two", "three"});
    CHECK(onlyCombo);
    CHECK(question.Ask({[] { SetWindowTextA(At("Combo1"), "four"); }, pressEnter}) == "four");
    CHECK(question.Ask({pressEscape}) == "two");
    CHECK(question.cancelled);
}

TEST_CASE("the further input modes return the free text") {
    const House house;
    for (const std::int32_t id : {-3, -5}) {
        Question question;
        question.id = id;
        question.buttons = 1;
        question.defaultText = "text";
        CHECK(question.Ask({pressEnter}) == "text");
    }
}

TEST_CASE("an input is masked with bit 23 alone") {
    const House house;
    for (const std::int32_t bits : {0, 0x800000, 0xC00000, 0x400000}) {
        CAPTURE(bits);
        Question question;
        question.id = -2;
        question.buttons = 1 | bits;
        question.defaultText = "secret";
        LRESULT sign = 0;
        std::string face;
        CHECK(question.Ask({[&] {
                                sign = SendMessageA(At("TextInput"), EM_GETPASSWORDCHAR, 0, 0);
                                face = ShownForm()->FontFace(ShownForm()->The("TextInput"));
                            },
                            pressEnter}) == "secret");
        if (bits == 0x800000) {
            CHECK(sign == (face == "Wingdings" ? 'l' : '*'));
        } else {
            CHECK(sign == 0);
        }
    }
}

TEST_CASE("a screen reader names every control that Tab comes to, an input by the question") {
    const House house;
    std::map<std::string, std::string> names;
    const FormDriver::Step listen = [&names] {
        for (const platform::Control& control : ShownForm()->Controls()) {
            const HWND window = ShownForm()->Window(control);
            const bool tabComesTo = window && (GetWindowLongA(window, GWL_STYLE) & WS_TABSTOP) != 0;
            if (tabComesTo && IsWindowVisible(window)) names[std::string(control.Name())] = NameAsRead(window);
        }
    };
    Question input;
    input.id = -2;
    input.buttons = 1;
    input.prompt = "How long?";
    input.defaultText = "five";
    input.Ask({listen, pressEscape});
    CHECK(names == std::map<std::string, std::string>{
                       {"ButtonCancel", "Cancel"}, {"ButtonOKYes", "OK"}, {"TextInput", "How long?"}});

    names.clear();
    Question question;
    question.id = 0x10000010;
    question.buttons = 3;
    question.Ask({listen, pressEscape});
    CHECK(names.size() >= 4);  // three buttons and Check1
    for (const auto& row : names) {
        CAPTURE(row.first);
        CHECK_FALSE(row.second.empty());
    }
}

TEST_CASE("in message modes the inputs stay hidden") {
    const House house;
    Question question;
    bool hidden = false;
    question.Ask({[&] {
                      hidden = !Visible("TextInput") && !Visible("Combo1") && !Visible("Text1") && !Visible("List1") &&
                               !Visible("FileOpen") && !Visible("RetVal");
                  },
                  pressEnter});
    CHECK(hidden);
}

// --- links and help

TEST_CASE("a link is offered, and a click passes it on") {
    const House house;
    Question question;
    question.prompt = "See http://www.corvella.com/help now";
    CHECK(question.Ask({[] { CHECK(Visible("LabelLink")); }, Click("LabelLink"), Click("ButtonOKYes")}) == "1");
    CHECK(opened == std::vector<std::string>{"http://www.corvella.com/help,-1"});
}

TEST_CASE("an address is offered as mail") {
    const House house;
    Question question;
    question.prompt = "Write to help@corvella.com";
    question.Ask({Click("LabelLink"), pressEscape});
    CHECK(opened == std::vector<std::string>{"mailto:help@corvella.com,-1"});
}

TEST_CASE("a prompt without a link shows none") {
    const House house;
    Question question;
    bool visible = true;
    question.Ask({[&] { visible = Visible("LabelLink"); }, pressEnter});
    CHECK_FALSE(visible);
}

TEST_CASE("the help button never closes the form and opens the topic") {
    const House house;
    Question question;
    question.extraOption = "Sync.htm";
    bool stayed = false;
    CHECK(question.Ask({Click("ButtonHelp"), [&] { stayed = ShownForm() != nullptr; }, pressEnter}) == "1");
    CHECK(stayed);
    CHECK(helped == std::vector<std::string>{"Sync.htm,,0"});
}

TEST_CASE("F1 opens the help, with or without a topic, and the form stays") {
    const House house;
    Question question;
    bool hidden = false;
    CHECK(question.Ask({[&] {
                            hidden = !Visible("ButtonHelp");
                            FormDriver::Key(VK_F1);
                        },
                        pressEnter}) == "1");
    CHECK(hidden);
    CHECK(helped == std::vector<std::string>{"AddInOutl.htm,,0"});
}

// --- moving and sizing

TEST_CASE("the form is dragged by its caption and the image on it") {
    const House house;
    for (const char* bar : {"LabelCaption", "Image2"}) {
        Question question;
        Rect before, after;
        question.Ask({[&] {
                          before = ShownForm()->Position();
                          PostMessageA(At(bar), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
                          PostMessageA(At(bar), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(25, -6));
                          PostMessageA(At(bar), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
                      },
                      [&] { after = ShownForm()->Position(); }, pressEnter});
        CHECK(after == Rect{before.left + 20, before.top - 11, before.width, before.height});
    }
}

TEST_CASE("dragging with the right mouse button does not move the form") {
    const House house;
    Question question;
    Rect before, after;
    question.Ask({[&] {
                      before = ShownForm()->Position();
                      PostMessageA(At("LabelCaption"), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
                      PostMessageA(At("LabelCaption"), WM_MOUSEMOVE, MK_RBUTTON, MAKELPARAM(25, -6));
                      PostMessageA(At("LabelCaption"), WM_RBUTTONUP, 0, MAKELPARAM(25, -6));
                  },
                  [&] { after = ShownForm()->Position(); }, pressEnter});
    CHECK(after == before);
}

TEST_CASE("the form is sized by its edge, left button only, and everything follows") {
    const House house;
    Question question;
    question.prompt = std::string(300, 'x');
    const auto drag = [](UINT down, WPARAM held, UINT up, int x, int y) {
        PostMessageA(At("ImageEdge"), down, held, MAKELPARAM(5, 5));
        PostMessageA(At("ImageEdge"), WM_MOUSEMOVE, held, MAKELPARAM(5 + x, 5 + y));
        PostMessageA(At("ImageEdge"), up, 0, MAKELPARAM(5, 5));
    };
    Rect before, grown, same, small;
    Rect grip;
    platform::Size inside;
    question.Ask({[&] {
                      before = ShownForm()->Position();
                      drag(WM_LBUTTONDOWN, MK_LBUTTON, WM_LBUTTONUP, 40, 30);
                  },
                  [&] {
                      grown = ShownForm()->Position();
                      grip = ShownForm()->The("ImageEdge").Position();
                      inside = ShownForm()->InsideSize();
                      drag(WM_RBUTTONDOWN, MK_RBUTTON, WM_RBUTTONUP, 40, 30);
                  },
                  [&] {
                      same = ShownForm()->Position();
                      drag(WM_LBUTTONDOWN, MK_LBUTTON, WM_LBUTTONUP, -2000, -2000);
                  },
                  [&] { small = ShownForm()->Position(); }, pressEnter});
    CHECK(grown == Rect{before.left, before.top, before.width + 40, before.height + 30});
    CHECK(grip.Right() == inside.width);
    CHECK(grip.Bottom() == inside.height);
    CHECK(same == grown);
    CHECK(small.width > 100);
    CHECK(small.height > 60);
    CHECK(small.left == before.left);
}

TEST_CASE("the edge that is dragged beyond the form's left edge makes it as narrow as it can be") {
    const House house;
    Question question;
    question.prompt = "A prompt of some length that could be broken into lines of its own if it had to";
    const auto drag = [](int x) {
        PostMessageA(At("ImageEdge"), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
        PostMessageA(At("ImageEdge"), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(5 + x, 5));
        PostMessageA(At("ImageEdge"), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    };
    Rect narrow, beyond;
    std::int32_t width = 0;
    question.Ask({[&] {
                      width = ShownForm()->InsideSize().width;
                      drag(-width + 1);
                  },
                  [&] {
                      narrow = ShownForm()->Position();
                      drag(-ShownForm()->InsideSize().width - 40);
                  },
                  [&] { beyond = ShownForm()->Position(); }, pressEnter});
    CHECK(narrow.width < width);
    CHECK(beyond == narrow);
}

TEST_CASE("after the edge is let go the mouse no longer sizes the form") {
    const House house;
    Question question;
    Rect before, after;
    question.Ask({[&] {
                      PostMessageA(At("ImageEdge"), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
                      PostMessageA(At("ImageEdge"), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
                  },
                  [&] {
                      before = ShownForm()->Position();
                      PostMessageA(At("ImageEdge"), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(50, 50));
                  },
                  [&] { after = ShownForm()->Position(); }, pressEnter});
    CHECK(after == before);
}

TEST_CASE("the caption has the colours of an active window while the form is active, and the others else") {
    const House house;
    Question question;
    std::uint32_t active = 0, text = 0, inactive = 0, inactiveText = 0, again = 0;
    const auto look = [](std::uint32_t& back, std::uint32_t& fore) {
        back = ShownForm()->The("LabelCaption").BackColor();
        fore = ShownForm()->The("LabelCaption").ForeColor();
    };
    std::uint32_t unused = 0;
    question.Ask({[] {}, [&] { look(active, text); }, [&] { SetActiveWindow(house.host); },
                  [&] { look(inactive, inactiveText); }, [&] { SetActiveWindow(ShownForm()->Window()); }, [] {},
                  [&] { look(again, unused); }, pressEnter});
    CHECK(active == 0x80000002);
    CHECK(text == 0x80000009);
    CHECK(inactive == 0x80000003);
    CHECK(inactiveText == 0x80000013);
    CHECK(again == 0x80000002);
}

TEST_CASE("the timer brings the form to the front once and never closes it") {
    const House house;
    // A window of the same program that has come between.
    const HWND other = CreateWindowExA(0, "STATIC", "Other", WS_POPUP | WS_VISIBLE | WS_BORDER, 0, 0, 900, 700, nullptr,
                                       nullptr, nullptr, nullptr);
    const auto raiseOther = [&] {
        EnableWindow(other, TRUE);
        SetForegroundWindow(other);
    };
    const auto isInFront = [&] {
        for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
            if (window == other) return false;
            if (window == ShownForm()->Window()) return true;
        }
        return false;
    };
    Question question;
    bool runs = false, behind = false, ended = false, inFront = false, stays = false;
    const FormDriver::Step wait = [] { Sleep(10); };
    std::vector<FormDriver::Step> steps = {wait, wait, raiseOther, [&] {
                                               runs = ShownForm()->The("Timer1").Enabled();
                                               behind = !isInFront();
                                           }};
    steps.insert(steps.end(), 60, wait);
    steps.emplace_back([&] {
        ended = !ShownForm()->The("Timer1").Enabled();
        inFront = isInFront();
        raiseOther();
    });
    steps.insert(steps.end(), 60, wait);
    steps.emplace_back([&] { stays = ShownForm() && !isInFront(); });
    steps.push_back(Click("ButtonOKYes"));
    CHECK(question.Ask(std::move(steps)) == "1");
    CHECK(runs);
    CHECK(behind);
    CHECK(ended);
    CHECK(inFront);
    CHECK(stays);
    DestroyWindow(other);
}

// --- the window

TEST_CASE("the box belongs to the window in front and gives the focus back to where it was") {
    const House house;
    Question question;
    HWND owner = nullptr;
    bool disabled = false, focused = false;
    question.Ask({[&] {
                      owner = GetWindow(ShownForm()->Window(), GW_OWNER);
                      disabled = !IsWindowEnabled(house.host);
                      focused = GetFocus() == At("ButtonOKYes");
                  },
                  pressEnter});
    CHECK(owner == house.host);
    CHECK(disabled);
    CHECK(focused);
    CHECK(IsWindowEnabled(house.host));
    CHECK(GetFocus() == house.field);
}

TEST_CASE("the form's window handle is published while it is loaded") {
    const House house;
    const std::string key = "Software\\Quillmark\\Corvella\\OlAddIn";
    Question question;
    std::string published, own;
    question.Ask({[&] {
                      published = PrivateRegistry::Raw(HKEY_CURRENT_USER, key, "hWnd").bytes.c_str();
                      own = platform::Decimal(ShownForm()->WindowNumber());
                  },
                  pressEnter});
    CHECK(published == own);
    CHECK_FALSE(PrivateRegistry::Raw(HKEY_CURRENT_USER, key, "hWnd").present);
}

TEST_CASE("everything that is shown lies wholly inside the form, whose whole is on the screen, and covers nothing") {
    for (const char* language : {"English", "Deutsch", "Polski"}) {
        const House house(language);
        for (const std::size_t length : {5u, 100u, 2000u, 20000u}) {
            CAPTURE(language);
            CAPTURE(length);
            Question question;
            question.id = Id(0x90000010);
            question.buttons = 0xB3;
            for (int i = 0; question.prompt.size() < length; ++i) question.prompt += i % 9 == 8 ? "\r" : " Erinnerung";
            question.prompt += " http://www.corvella.com/download/help/index.html";
            question.caption1 = "Synchronisierung jetzt starten und warten";
            question.caption2 = "Synchronisierung sp\xE4ter starten";
            question.caption3 = "Abbrechen und nichts \xE4ndern";
            const auto look = [&] {
                CheckFormIsWhole(*ShownForm());
                CHECK(Visible("Text") == (length == 20000));
                CHECK(Visible("Label1") == (length != 20000));
            };
            CHECK(question.Ask({look, Click("ButtonCancel")}) == "2");
        }
    }
}

TEST_CASE("a prompt that scrolls is shown from its beginning") {
    const House house;
    Question question;
    for (int i = 0; i < 900; ++i) question.prompt += " Erinnerung\r";
    LRESULT first = -1;
    question.Ask(
        {[] {}, [] {}, [&] { first = SendMessageA(At("Text"), EM_GETFIRSTVISIBLELINE, 0, 0); }, Click("ButtonOKYes")});
    CHECK(first == 0);
}

TEST_CASE("a prompt that scrolls is scrolled with the keyboard and ends in the same answer") {
    const House house;
    Question question;
    for (int i = 0; i < 900; ++i) question.prompt += " Erinnerung\r";
    LRESULT first = 0;
    CHECK(question.Ask({[] { ShownForm()->The("Text").TakeFocus(); },
                        [] {
                            SendMessageA(At("Text"), EM_SETSEL, 0, 0);
                            FormDriver::Key(VK_NEXT);
                        },
                        [&] {
                            first = SendMessageA(At("Text"), EM_GETFIRSTVISIBLELINE, 0, 0);
                            FormDriver::Key(VK_RETURN);
                        }}) == "1");
    CHECK(first > 0);
    CHECK(question.finished);
}

// --- one at a time

TEST_CASE("no second box is stacked on the first") {
    const House house;
    Question outer, inner;
    inner.buttons = 4;
    std::string answer = "not asked";
    CHECK(outer.Ask({[&] {
                         bool cancelled = true;
                         answer = MsgInputBox(-1, inner.prompt, 4, "", "-1", 0, cancelled, "", "", "", "", "");
                     },
                     pressEnter}) == "1");
    CHECK(answer.empty());
}

TEST_CASE("a box that finds the form in use falls back to the standard one, whose Yes is 1") {
    const House house;
    for (const int answer : {IDYES, IDNO}) {
        Question outer;
        std::string prompt = "Inner|Go";
        std::string given;
        std::size_t boxes = 0;
        CHECK(outer.Ask({[&] {
                             const BoxAnswerer user(answer);
                             formLoaded = false;  // as after the end of another form
                             bool cancelled = false;
                             given = MsgInputBox(-1, prompt, 4, "Title", "-1", 0, cancelled, "", "", "", "", "");
                             formLoaded = true;
                             for (const BoxAnswerer::Box& box : user.Seen()) boxes += box.title == "Title" ? 1u : 0u;
                         },
                         pressEnter}) == "1");
        CHECK(boxes == 1);
        CHECK(given == (answer == IDYES ? "1" : "7"));
    }
}

TEST_CASE("an input that finds the form in use is asked for in a plain box") {
    const House house;
    Question outer;
    outer.prompt = "http://www.corvella.com";
    static std::string prompt, given;
    static bool cancelled;
    prompt = "Inner";
    cancelled = true;
    Plug({.execApp = [](const std::string&, std::int32_t) {
        formLoaded = false;
        given = MsgInputBox(-2, prompt, 1, "Title", "old", 0, cancelled, "", "", "", "", "");
        formLoaded = true;
    }});
    std::vector<RECT> controls;
    RECT inside{};
    const FormDriver::Step look = [&] {
        const HWND form = GetAncestor(GetFocus(), GA_ROOT);
        GetClientRect(form, &inside);
        for (HWND child = GetWindow(form, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            RECT& area = controls.emplace_back();
            GetWindowRect(child, &area);
            MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&area), 2);
        }
        FormDriver::Key(VK_RETURN);
    };
    CHECK(outer.Ask({Click("LabelLink"), look, Click("ButtonOKYes")}) == "1");
    CHECK(given == "old");
    CHECK(controls.size() == 4);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        RECT shared{};
        CHECK(IntersectRect(&shared, &controls[i], &inside));
        CHECK(EqualRect(&shared, &controls[i]));
        for (std::size_t j = 0; j < i; ++j) CHECK_FALSE(IntersectRect(&shared, &controls[i], &controls[j]));
    }
    CHECK_FALSE(cancelled);
}

TEST_CASE("a form that goes away without an answer returns nothing and remembers nothing") {
    const House house;
    Question question;
    question.id = 0x10;
    question.buttons = 4;
    CHECK(question.Ask({untick, [] { ShownForm()->Hide(); }}).empty());
    CHECK(memory.AnswerNoMask[0] == 0);
    CHECK_FALSE(formLoaded);
}

// --- the other entries

TEST_CASE("QuestionMsgBox returns the number of the button, and 0 for an empty answer") {
    const House house;
    const auto ask = [](std::int32_t id, std::int32_t buttons, std::vector<FormDriver::Step> steps) {
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); }, std::move(steps));
        std::string prompt = "Text";
        return QuestionMsgBox(id, prompt, buttons, "");
    };
    CHECK(ask(-1, 4, {Click("ButtonNo")}) == 7);
    CHECK(ask(-1, 0x80, {Click("ButtonAll")}) == 9);
    memory.AnswerYesMask[0] = 0x10;
    CHECK(ask(0x10, 0, {pressEnter}) == 0);
    CHECK(ask(Id(0xF0000010), 0, {pressEnter}) == 0);
}

TEST_CASE("a message of the language file is shown with its texts replaced, whatever stands in them") {
    const House house;
    std::string shownText;
    FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                      {[&] { shownText = Caption("Label1"); }, pressEnter});
    CHECK(MsgBoxMessage(-1, 139, 0, "%f", "C:\\a%fb", "Corvella", "Kitchen", "", 0) == 1);
    CHECK(shownText == "The profile file C:\\a%fb was not found.\r\rKitchen will use the default settings instead.");
}

TEST_CASE("a message without a text is shown all the same") {
    const House house;
    bool seen = false;
    FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                      {[&] { seen = true; }, pressEnter});
    CHECK(MsgBoxMessagePlain(99999, 0, "", "", "", "", "") == 1);
    CHECK(seen);
}

TEST_CASE("MsgBoxMessage with ask limit 2 shows the message twice and returns 1 silently from the third call on") {
    const House house;
    int shownTimes = 0;
    for (int call = 1; call <= 4; ++call) {
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                          {[&] { ++shownTimes; }, Click("ButtonCancel")});
        CHECK(MsgBoxMessage(Id(0x90000010), 139, 1, "", "", "", "", "", 2) == (call <= 2 ? 2 : 1));
    }
    CHECK(shownTimes == 2);
    CHECK(IniFile::GetIniSetting("Msg", "90000010Asked") == "2");
}

TEST_CASE("a count that cannot grow further is an error: nothing is shown, the answer 0") {
    const House house;
    IniFile::SetIniSetting("Msg", "FFFFFFFFAsked", "2147483647", true);
    bool seen = false;
    FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                      {[&] { seen = true; }, pressEnter});
    CHECK(MsgBoxMessage(-1, 139, 0, "", "", "", "", "", 5) == 0);
    CHECK_FALSE(seen);
    CHECK_FALSE(platform::Err());
}

TEST_CASE("the extra option of a message is the page of its help") {
    const House house;
    FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                      {Click("ButtonHelp"), pressEnter});
    MsgBoxMessagePlain(139, 0, "", "", "", "", "Profiles.htm");
    CHECK(helped == std::vector<std::string>{"Profiles.htm,,0"});
}

TEST_CASE("what the lower floors ask is broken at the usual width") {
    const House house;
    Prompt::Plug(&PortOfPrompt());
    std::string prompt = std::string(60, 'x') + " " + std::string(60, 'y');
    std::vector<std::int32_t> widths;
    const FormDriver::Step measure = [&] { widths.push_back(ShownForm()->The("Label1").Position().width); };
    {
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); }, {measure, pressEnter});
        Prompt::Ask(-1, prompt, 0, "Title");
    }
    Question question;
    question.prompt = prompt;
    question.title = "Title";
    question.Ask({measure, pressEnter});
    question.layoutOption = 1;
    question.Ask({measure, pressEnter});
    REQUIRE(widths.size() == 3);
    CHECK(widths[0] == widths[1]);
    CHECK(widths[0] != widths[2]);
    Prompt::Plug(nullptr);
}

TEST_CASE("what the lower floors ask comes through the box once it is plugged in") {
    const House house;
    Prompt::Plug(&PortOfPrompt());
    std::string prompt = "Text|&Go", text;
    {
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                          {[&] { text = Caption("ButtonOKYes"); }, pressEnter});
        CHECK(Prompt::Ask(-1, prompt, 0, "Title") == 1);
    }
    CHECK(text == "&Go");
    CHECK(prompt == "Text");
    {
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); }, {pressEnter});
        bool cancelled = true;
        CHECK(Prompt::Input("Name", "Title", "Anna", cancelled) == "Anna");
        CHECK_FALSE(cancelled);
    }
    {
        FormDriver driver([] { return ShownForm() != nullptr; }, [] { ShownForm()->Hide(); },
                          {[&] { text = Caption("Label1"); }, pressEnter});
        CHECK(Prompt::Message(-1, 139, 0, "%f", "x") == 1);
    }
    CHECK(text.starts_with("The profile file x was not found."));
    Prompt::Plug(nullptr);
}

TEST_CASE("a box leaves no window, no drawing object and no error behind") {
    const House house;
    const auto once = [] {
        Question question;
        question.id = Id(0x90000010);
        question.buttons = 0xB3;
        question.prompt = "http://www.corvella.com";
        question.Ask({Click("ButtonNo")});
    };
    once();
    const std::uint32_t windows = handles::UserObjects();
    const std::uint32_t objects = handles::GdiObjects();
    for (int i = 0; i < 10; ++i) once();
    CHECK(handles::UserObjects() <= windows);
    CHECK(handles::GdiObjects() <= objects);
    CHECK_FALSE(platform::Err());
}
