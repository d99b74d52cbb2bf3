// Real windows of a form: keyboard, focus, fonts, lists, size and place.
#include <doctest.h>
#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/Err.h"
#include "platform/Module.h"
#include "platform/forms/Form.h"
#include "testing/FormDriver.h"
#include "testing/HandleCount.h"

using namespace platform;

namespace {

constexpr ControlSpec table[] = {
    {"LabelName", ControlKind::Label},
    {"TextName", ControlKind::TextBox},
    {"CheckKeep", ControlKind::CheckBox},
    {"Option", ControlKind::OptionButton, ControlStyle::GroupStart, "", 0},
    {"Option", ControlKind::OptionButton, 0, "", 1},
    {"Combo", ControlKind::ComboBox},
    {"List", ControlKind::ListBox},
    {"Frame", ControlKind::Frame},
    {"Inner", ControlKind::Label},
    {"Picture", ControlKind::PictureBox},
    {"Link", ControlKind::Link},
    {"Tabs", ControlKind::TabStrip},
    {"ButtonOK", ControlKind::Button, ControlStyle::Default},
    {"ButtonCancel", ControlKind::Button, ControlStyle::Cancel},
    {"Timer", ControlKind::Timer},
};

class TestForm : public Form {
  public:
    explicit TestForm(FormStyle style = {}) : Form("FormTest", table, style) {
        std::int32_t top = 4;
        for (Control& control : Controls()) {
            control.SetPosition({10, top, 120, 24});
            control.SetCaption(control.Name());
            top += 28;
        }
        The("Inner").SetPosition({12, The("Frame").Position().top + 2, 50, 12});
        The("ButtonOK").SetCaption("&OK");
        The("ButtonCancel").SetCaption("&Cancel");
        for (const char* name : {"ButtonOK", "ButtonCancel", "CheckKeep", "Link", "LabelName"}) {
            The(name).on.click = [this, name] { Note(name); };
        }
        SetCaption("Form under test");
        Err().Clear();
    }
    ~TestForm() override { Unload(); }

    void Note(std::string what) {
        log.push_back(std::move(what));
        if (hideOnButton && log.back().starts_with("Button")) Hide();
    }
    HWND At(const char* name) { return Window(The(name)); }

    std::vector<std::string> log;
    bool hideOnButton = true;
    std::int32_t loads = 0, unloads = 0, activations = 0, deactivations = 0;

  protected:
    void OnLoad() override {
        SetInsideSize({300, 460});
        ++loads;
    }
    void OnUnload() override { ++unloads; }
    void OnActivate() override { ++activations; }
    void OnDeactivate() override { ++deactivations; }
    bool OnKeyDown(std::int32_t key) override {
        if (key != VK_F1) return false;
        log.emplace_back("F1");
        return true;
    }
};

// A window of the host, in front, with a field that has the focus.
class HostWindow {
  public:
    HostWindow() {
        window_ = CreateWindowExA(0, "STATIC", "Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 500, 400, nullptr,
                                  nullptr, nullptr, nullptr);
        field_ =
            CreateWindowExA(0, "EDIT", "", WS_CHILD | WS_VISIBLE, 10, 10, 100, 20, window_, nullptr, nullptr, nullptr);
        SetForegroundWindow(window_);
        SetActiveWindow(window_);
        SetFocus(field_);
    }
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;
    ~HostWindow() {
        if (IsWindow(window_)) DestroyWindow(window_);
    }
    [[nodiscard]] HWND Get() const { return window_; }
    [[nodiscard]] HWND Field() const { return field_; }

  private:
    HWND window_ = nullptr, field_ = nullptr;
};

// Shows `form` modally and takes the steps; true when the form then went away by itself.
bool Drive(Form& form, std::vector<FormDriver::Step> steps) {
    FormDriver driver([&] { return form.Visible(); }, [&] { form.Hide(); }, std::move(steps));
    return form.ShowModal() && driver.Finished();
}

std::string TextOf(HWND window) {
    char text[256] = "";
    GetWindowTextA(window, text, sizeof text);
    return text;
}

std::string ClassOf(HWND window) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    return name;
}

void PumpMessages() {
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&message);
}

// What Windows has of it since 10, by name: the headers of 2000 know nothing of it.
constexpr std::intptr_t unaware = -1, systemAware = -2, eachScreen = -3, eachScreen2 = -4;
constexpr UINT dpiChanged = 0x02E0;

template <class Function>
Function UserFunction(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("user32.dll"), name)));
}

struct DpiFunctions {
    void*(WINAPI* setThreadContext)(void*) = UserFunction<void*(WINAPI*)(void*)>("SetThreadDpiAwarenessContext");
    void*(WINAPI* threadContext)() = UserFunction<void*(WINAPI*)()>("GetThreadDpiAwarenessContext");
    BOOL(WINAPI* equal)(void*, void*) = UserFunction<BOOL(WINAPI*)(void*, void*)>("AreDpiAwarenessContextsEqual");
    UINT(WINAPI* dotsOfWindow)(HWND) = UserFunction<UINT(WINAPI*)(HWND)>("GetDpiForWindow");
    [[nodiscard]] bool There() const { return setThreadContext && threadContext && equal && dotsOfWindow; }
};

std::int32_t CommonDots() {
    const HDC screen = GetDC(nullptr);
    const int dots = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dots;
}

constexpr auto logIs = [](const TestForm& form, std::initializer_list<std::string> expected) {
    return form.log == std::vector<std::string>(expected);
};

}  // namespace

TEST_CASE("the library stays loaded as long as a form has its window") {
    TestForm form;
    REQUIRE_FALSE(IsKeptLoaded());
    REQUIRE(form.Load(nullptr));
    CHECK(IsKeptLoaded());
    form.Unload();
    CHECK_FALSE(IsKeptLoaded());
}

TEST_CASE("each kind of control is a window of its kind, named by its caption") {
    TestForm form;
    REQUIRE(form.Load());
    CHECK(ClassOf(form.Window()) == "#32770");
    CHECK(TextOf(form.Window()) == "Form under test");
    CHECK(ClassOf(form.At("LabelName")) == "Static");
    CHECK(ClassOf(form.At("TextName")) == "Edit");
    CHECK(ClassOf(form.At("CheckKeep")) == "Button");
    CHECK(ClassOf(form.At("Combo")) == "ComboBox");
    CHECK(ClassOf(form.At("List")) == "ListBox");
    CHECK(ClassOf(form.At("Tabs")) == "SysTabControl32");
    CHECK(TextOf(form.At("LabelName")) == "LabelName");
    CHECK(TextOf(form.At("ButtonOK")) == "&OK");
    CHECK(form.At("Timer") == nullptr);
}

TEST_CASE("the windows stand in the order of the table, so a label names the field after it") {
    TestForm form;
    REQUIRE(form.Load());
    CHECK(GetWindow(form.At("TextName"), GW_HWNDPREV) == form.At("LabelName"));
    CHECK(GetWindow(form.Window(), GW_CHILD) == form.At("LabelName"));
}

TEST_CASE("what is set before the windows are made is shown by them") {
    TestForm form;
    form.The("TextName").SetText("Anna");
    form.The("CheckKeep").SetValue(true);
    form.The("Combo").SetList({"one", "two"});
    form.The("Combo").SetText("three");
    form.The("List").SetList({"a", "b"});
    form.The("List").SetListIndex(1);
    form.The("Frame").SetEnabled(false);
    REQUIRE(form.Load());
    CHECK(TextOf(form.At("TextName")) == "Anna");
    CHECK(SendMessageA(form.At("CheckKeep"), BM_GETCHECK, 0, 0) == BST_CHECKED);
    CHECK(SendMessageA(form.At("Combo"), CB_GETCOUNT, 0, 0) == 2);
    CHECK(TextOf(form.At("Combo")) == "three");
    CHECK(SendMessageA(form.At("List"), LB_GETCURSEL, 0, 0) == 1);
    CHECK_FALSE(IsWindowEnabled(form.At("Frame")));
}

TEST_CASE("tabs that are set anew replace the ones before") {
    constexpr ControlSpec rows[] = {{"Tabs", ControlKind::TabStrip}};
    Form form("FormTest", rows, FormStyle{});
    REQUIRE(form.Load());
    for (const char* second : {"two", "three"}) {
        form.The("Tabs").SetTabs({{"one", {}}, {second, {}}});
        const HWND window = form.Window(form.The("Tabs"));
        CHECK(SendMessageA(window, TCM_GETITEMCOUNT, 0, 0) == 2);
        char text[32] = "";
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(window, TCM_GETITEMA, 1, reinterpret_cast<LPARAM>(&item));
        CHECK(std::string(text) == second);
    }
}

TEST_CASE("what the user enters is read back") {
    TestForm form;
    form.The("Combo").SetList({"one", "two"});
    form.The("List").SetList({"a", "b"});
    REQUIRE(form.Load());
    SetWindowTextA(form.At("TextName"), "typed");
    SetWindowTextA(form.At("Combo"), "own");
    SendMessageA(form.At("List"), LB_SETCURSEL, 1, 0);
    SendMessageA(form.At("CheckKeep"), BM_CLICK, 0, 0);
    CHECK(form.The("TextName").Text() == "typed");
    CHECK(form.The("Combo").Text() == "own");
    CHECK(form.The("Combo").ListIndex() == -1);
    CHECK(form.The("List").Text() == "b");
    CHECK(form.The("CheckKeep").Value());
}

TEST_CASE("a line of a combo box counts as chosen only as long as its text stands in the box") {
    TestForm form;
    form.The("Combo").SetList({"one", "two"});
    REQUIRE(form.Load());
    SendMessageA(form.At("Combo"), CB_SETCURSEL, 1, 0);
    CHECK(form.The("Combo").ListIndex() == 1);
    SetWindowTextA(form.At("Combo"), "own");
    REQUIRE(SendMessageA(form.At("Combo"), CB_GETCURSEL, 0, 0) == 1);
    CHECK(form.The("Combo").ListIndex() == -1);
}

TEST_CASE("a line chosen from a combo box is its text already while the choice is told") {
    TestForm form;
    std::string seen;
    form.The("Combo").SetList({"one", "two"});
    form.The("Combo").on.click = [&] { seen = form.The("Combo").Text(); };
    REQUIRE(form.Load());
    SendMessageA(form.At("Combo"), CB_SETCURSEL, 1, 0);
    SetWindowTextA(form.At("Combo"), "stale");
    SendMessageA(form.Window(), WM_COMMAND,
                 MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(form.At("Combo"))), CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(form.At("Combo")));
    CHECK(seen == "two");
}

TEST_CASE("of the options of a group one is chosen") {
    TestForm form;
    REQUIRE(form.Load());
    form.Find("Option", 0)->SetValue(true);
    form.Find("Option", 1)->SetValue(true);
    CHECK_FALSE(form.Find("Option", 0)->Value());
    CHECK(form.Find("Option", 1)->Value());
}

TEST_CASE("a changed text is told and a lone carriage return breaks the line") {
    TestForm form;
    REQUIRE(form.Load());
    int changes = 0;
    form.The("TextName").on.change = [&] { ++changes; };
    SetWindowTextA(form.At("TextName"), "x");
    CHECK(changes == 1);
    form.The("LabelName").SetCaption("one\rtwo\nthree\r\nfour");
    CHECK(TextOf(form.At("LabelName")) == "one\r\ntwo\r\nthree\r\nfour");
    CHECK(form.The("LabelName").Caption() == "one\rtwo\nthree\r\nfour");
}

TEST_CASE("a tool tip is one of Windows' own and can be changed and removed") {
    TestForm form;
    form.The("ButtonOK").SetToolTip("first");
    REQUIRE(form.Load());
    const auto shownTip = [&]() -> std::string {
        HWND tips = nullptr;
        do {
            tips = FindWindowExA(nullptr, tips, TOOLTIPS_CLASSA, nullptr);
        } while (tips && GetWindow(tips, GW_OWNER) != form.Window());
        char text[128] = "";
        TTTOOLINFOA tool{};
        tool.cbSize = sizeof tool;
        tool.hwnd = form.Window();
        tool.uId = reinterpret_cast<UINT_PTR>(form.At("ButtonOK"));
        tool.lpszText = text;
        SendMessageA(tips, TTM_GETTEXTA, 0, reinterpret_cast<LPARAM>(&tool));
        return text;
    };
    CHECK(shownTip() == "first");
    form.The("ButtonOK").SetToolTip("second");
    CHECK(shownTip() == "second");
    form.The("ButtonOK").SetToolTip("");
    CHECK(shownTip().empty());
}

TEST_CASE("a font is taken from the control, else the form, else Windows") {
    TestForm form;
    REQUIRE(form.Load());
    const auto fontOf = [&](const char* name) {
        LOGFONTA font{};
        GetObjectA(reinterpret_cast<HFONT>(SendMessageA(form.At(name), WM_GETFONT, 0, 0)), sizeof font, &font);
        return font;
    };
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    CHECK(std::string(fontOf("ButtonOK").lfFaceName) == metrics.lfMessageFont.lfFaceName);
    form.SetFontCharSet(238);
    form.The("TextName").SetFontName("Wingdings");
    CHECK(fontOf("ButtonOK").lfCharSet == 238);
    CHECK(std::string(fontOf("TextName").lfFaceName) == "Wingdings");
    CHECK(fontOf("TextName").lfCharSet == 238);
    form.The("ButtonOK").SetFontCharSet(204);
    CHECK(fontOf("ButtonOK").lfCharSet == 204);
}

TEST_CASE("a colour is one of Windows' own numbers or a plain one, and frames pass theirs on") {
    TestForm form;
    REQUIRE(form.Load());
    const HDC device = GetDC(form.Window());
    const auto colourOf = [&](const char* name) {
        SendMessageA(form.Window(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(device),
                     reinterpret_cast<LPARAM>(form.At(name)));
        return GetBkColor(device);
    };
    form.The("LabelName").SetBackColor(0x80000002);
    CHECK(colourOf("LabelName") == GetSysColor(COLOR_ACTIVECAPTION));
    form.The("LabelName").SetBackColor(0x00123456);
    CHECK(colourOf("LabelName") == 0x00123456);
    form.The("Frame").SetBackColor(0x00ABCDEF);
    CHECK(colourOf("Inner") == 0x00ABCDEF);
    CHECK(colourOf("CheckKeep") == GetSysColor(COLOR_BTNFACE));
    ReleaseDC(form.Window(), device);
}

TEST_CASE("with a frame's colour the form around it is painted anew, with another control's it is not") {
    TestForm form;
    REQUIRE(form.Show());
    const auto dialog = static_cast<HWND>(form.Window());
    const auto paintsForm = [&](const char* name) {
        UpdateWindow(dialog);
        ValidateRect(dialog, nullptr);
        form.The(name).SetBackColor(0x00ABCDEF);
        return GetUpdateRect(dialog, nullptr, FALSE) != FALSE;
    };
    CHECK(paintsForm("Frame"));
    CHECK_FALSE(paintsForm("LabelName"));
}

TEST_CASE("Enter presses the default button and Escape the cancel button") {
    HostWindow host;
    TestForm form;
    CHECK(Drive(form, {[&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(logIs(form, {"ButtonOK"}));
    form.log.clear();
    CHECK(Drive(form, {[&] { FormDriver::Key(VK_ESCAPE); }}));
    CHECK(logIs(form, {"ButtonCancel"}));
}

TEST_CASE("Enter presses another default button once it was chosen") {
    HostWindow host;
    TestForm form;
    REQUIRE(form.Load());
    form.SetDefaultButton(form.The("ButtonCancel"));
    CHECK(Drive(form, {[&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(logIs(form, {"ButtonCancel"}));
}

TEST_CASE("Tab moves in the order of the table, to the option that is chosen") {
    HostWindow host;
    TestForm form;
    form.Find("Option", 1)->SetValue(true);
    std::vector<std::string> visited;
    std::int32_t onOption = -1;
    const auto note = [&] {
        if (const Control* control = form.Focus()) {
            visited.emplace_back(control->Name());
            onOption = control->Index();
        }
    };
    const auto tab = [&] {
        note();
        FormDriver::Key(VK_TAB);
    };
    CHECK(Drive(form, {tab, tab, [&] {
                           note();
                           FormDriver::Key(VK_ESCAPE);
                       }}));
    CHECK(visited[0] == "TextName");
    CHECK(visited[1] == "CheckKeep");
    CHECK(visited[2] == "Option");
    CHECK(onOption == 1);
}

TEST_CASE("a form opens with the focus where it was wanted before, and the wish is fulfilled once") {
    HostWindow host;
    TestForm form;
    REQUIRE(form.Load());
    form.The("CheckKeep").TakeFocus();
    const auto focusWhenShown = [&] {
        std::string name;
        CHECK(Drive(form, {[&] {
                        name = form.Focus() ? form.Focus()->Name() : "none";
                        FormDriver::Key(VK_ESCAPE);
                    }}));
        return name;
    };
    CHECK(focusWhenShown() == "CheckKeep");
    form.The("ButtonOK").TakeFocus();
    CHECK(focusWhenShown() == "ButtonOK");
}

TEST_CASE("the face of a font that was set is the one that is drawn with") {
    TestForm form;
    CHECK(form.FontFace(form.The("TextName")).empty());  // nothing is drawn yet
    REQUIRE(form.Load());
    form.The("TextName").SetFontName("Wingdings");
    form.The("TextName").SetFontCharSet(SYMBOL_CHARSET);
    CHECK(form.FontFace(form.The("TextName")) == "Wingdings");
    CHECK(form.FontFace(form.The("ButtonOK")) != "Wingdings");
}

TEST_CASE("an access key presses its button from any control but a field that takes letters") {
    HostWindow host;
    TestForm form;
    form.The("CheckKeep").TakeFocus();
    CHECK(
        Drive(form, {[&] { form.The("CheckKeep").TakeFocus(); }, [&] { PostMessageA(GetFocus(), WM_CHAR, 'c', 1); }}));
    CHECK(logIs(form, {"ButtonCancel"}));
    form.log.clear();
    CHECK(Drive(form, {[&] { form.The("TextName").TakeFocus(); }, [&] { PostMessageA(GetFocus(), WM_CHAR, 'c', 1); },
                       [&] { PostMessageA(GetFocus(), WM_SYSCHAR, 'o', 0x20000001); }}));
    CHECK(logIs(form, {"ButtonOK"}));
    CHECK(form.The("TextName").Text() == "c");
}

TEST_CASE("the form sees a key before the control, and a handler can use it up") {
    HostWindow host;
    TestForm form;
    std::string pressed;
    form.The("TextName").on.keyPress = [&](char letter) {
        pressed += letter;
        return letter == 'x';
    };
    CHECK(Drive(form, {[&] { FormDriver::Key(VK_F1); }, [&] { PostMessageA(GetFocus(), WM_CHAR, 'x', 1); },
                       [&] { PostMessageA(GetFocus(), WM_CHAR, 'y', 1); }, [&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(logIs(form, {"F1", "ButtonOK"}));
    CHECK(pressed == "xy");
    CHECK(form.The("TextName").Text() == "y");
}

TEST_CASE("a click of the mouse presses a button, a link and a label") {
    HostWindow host;
    TestForm form;
    CHECK(Drive(form, {[&] { FormDriver::Click(form.At("Link")); }, [&] { FormDriver::Click(form.At("LabelName")); },
                       [&] { FormDriver::Click(form.At("ButtonOK")); }}));
    CHECK(logIs(form, {"Link", "LabelName", "ButtonOK"}));
}

TEST_CASE("an ampersand in a link or in a prompt is text, and no letter behind it is an access key") {
    constexpr ControlSpec rows[] = {
        {"Prompt", ControlKind::Label, ControlStyle::Verbatim},
        {"TextInput", ControlKind::TextBox},
        {"Link", ControlKind::Link},
        {"ButtonOK", ControlKind::Button},
        {"ButtonCancel", ControlKind::Button, ControlStyle::Cancel},
    };
    class : public Form {
      public:
        using Form::Form;
    } form("FormTest", rows, FormStyle{});
    std::vector<std::string> clicked;
    std::int32_t top = 4;
    for (Control& control : form.Controls()) control.SetPosition({10, std::exchange(top, top + 28), 120, 24});
    for (const char* name : {"Link", "ButtonOK", "ButtonCancel"}) {
        form.The(name).on.click = [&, name] {
            clicked.emplace_back(name);
            if (name == std::string("ButtonCancel")) form.Hide();
        };
    }
    form.The("Prompt").SetCaption("Ask R&D");
    form.The("Link").SetCaption("http://a?a=1&b=2");
    form.The("ButtonOK").SetCaption("&OK");
    const auto letter = [](char key) {
        return [key] { PostMessageA(GetFocus(), WM_CHAR, static_cast<WPARAM>(key), 1); };
    };
    HWND focus = nullptr;
    CHECK(Drive(form, {[&] { form.The("ButtonCancel").TakeFocus(); }, letter('b'), letter('d'),
                       [&] { focus = GetFocus(); }, letter('o'), [&] { FormDriver::Key(VK_ESCAPE); }}));
    CHECK(focus == form.Window(form.The("ButtonCancel")));
    CHECK(clicked == std::vector<std::string>{"ButtonOK", "ButtonCancel"});
    CHECK(form.The("Link").Caption() == "http://a?a=1&b=2");
}

TEST_CASE("a link is followed with Enter and with the space bar") {
    HostWindow host;
    TestForm form;
    CHECK(Drive(form, {[&] { form.The("Link").TakeFocus(); }, [&] { FormDriver::Key(VK_RETURN); },
                       [&] { FormDriver::Key(VK_SPACE); }, [&] { FormDriver::Key(VK_ESCAPE); }}));
    CHECK(logIs(form, {"Link", "Link", "ButtonCancel"}));
}

TEST_CASE("a mouse that is pressed on a picture is followed beyond it") {
    HostWindow host;
    TestForm form;
    std::vector<std::string> moves;
    const auto note = [&](const char* what) {
        return [&moves, what](const Mouse& mouse) {
            moves.push_back(what + std::to_string(static_cast<int>(mouse.button)) + ":" + std::to_string(mouse.x));
        };
    };
    form.The("Picture").on.mouseDown = note("down");
    form.The("Picture").on.mouseMove = note("move");
    form.The("Picture").on.mouseUp = note("up");
    bool captured = false;
    CHECK(Drive(form, {[&] { PostMessageA(form.At("Picture"), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5)); },
                       [&] { captured = GetCapture() == form.At("Picture"); },
                       [&] { PostMessageA(form.At("Picture"), WM_MOUSEMOVE, MK_RBUTTON, MAKELPARAM(-500, 5)); },
                       [&] { PostMessageA(form.At("Picture"), WM_RBUTTONUP, 0, MAKELPARAM(6, 5)); },
                       [&] { FormDriver::Key(VK_ESCAPE); }}));
    CHECK(captured);
    CHECK(GetCapture() == nullptr);
    CHECK(moves == std::vector<std::string>{"down2:5", "move2:-500", "up2:6"});
}

TEST_CASE("a timer ticks while it is enabled") {
    HostWindow host;
    TestForm form;
    int ticks = 0;
    form.The("Timer").SetInterval(10);
    form.The("Timer").on.tick = [&] {
        if (++ticks < 3) return;
        form.The("Timer").SetEnabled(false);
        form.Hide();
    };
    form.The("Timer").SetEnabled(true);
    CHECK(Drive(form, {}));
    CHECK(ticks == 3);
}

TEST_CASE("a modal form disables the other windows and gives the focus back to where it was") {
    HostWindow host;
    TestForm form;
    bool disabled = false;
    HWND owner = nullptr;
    CHECK(Drive(form, {[&] {
                           disabled = !IsWindowEnabled(host.Get());
                           owner = GetWindow(form.Window(), GW_OWNER);
                       },
                       [&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(disabled);
    CHECK(owner == host.Get());
    CHECK(IsWindowEnabled(host.Get()));
    CHECK(GetFocus() == host.Field());
    CHECK(GetActiveWindow() == host.Get());
}

TEST_CASE("a modal form over a modal form leaves the windows as they were") {
    HostWindow host;
    TestForm outer, inner;
    bool innerAnswered = false, hostStillDisabled = false, outerEnabled = false;
    outer.The("CheckKeep").on.click = [&] {
        inner.ShowModal();
        innerAnswered = logIs(inner, {"ButtonOK"});
        hostStillDisabled = !IsWindowEnabled(host.Get());
        outerEnabled = IsWindowEnabled(outer.Window()) != FALSE;
    };
    CHECK(Drive(outer,
                {[&] { FormDriver::Click(outer.At("CheckKeep")); }, [&] { FormDriver::Click(inner.At("ButtonOK")); },
                 [&] { FormDriver::Key(outer.At("ButtonOK"), VK_RETURN); }}));
    CHECK(innerAnswered);
    CHECK(hostStillDisabled);
    CHECK(outerEnabled);
    CHECK(IsWindowEnabled(host.Get()));
}

TEST_CASE("a quit message ends the form and is passed on") {
    HostWindow host;
    TestForm form;
    FormDriver driver([&] { return form.Visible(); }, [&] { form.Hide(); }, {[] { PostQuitMessage(7); }});
    CHECK(form.ShowModal());
    CHECK_FALSE(form.Visible());
    MSG message{};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT) DispatchMessageA(&message);
    CHECK(message.message == WM_QUIT);
    CHECK(message.wParam == 7);
    CHECK(IsWindowEnabled(host.Get()));
}

TEST_CASE("a form whose owner is destroyed ends, unloaded, and the windows work again") {
    HostWindow host, other;
    SetActiveWindow(host.Get());
    TestForm form;
    FormDriver driver([&] { return form.Visible(); }, [&] { form.Hide(); }, {[&] { DestroyWindow(host.Get()); }});
    CHECK(form.ShowModal());
    CHECK_FALSE(form.IsLoaded());
    CHECK(form.unloads == 1);
    CHECK(IsWindowEnabled(other.Get()));
    CHECK(form.The("ButtonOK").Caption() == "&OK");
}

TEST_CASE("closing the window does what its cancel button does, or hides it where there is none in use") {
    HostWindow host;
    TestForm form;
    CHECK(Drive(form, {[&] { PostMessageA(form.Window(), WM_SYSCOMMAND, SC_CLOSE, 0); }}));
    CHECK(logIs(form, {"ButtonCancel"}));
    form.log.clear();
    form.The("ButtonCancel").SetVisible(false);
    CHECK(Drive(form, {[&] { PostMessageA(form.Window(), WM_CLOSE, 0, 0); }}));
    CHECK(form.log.empty());
}

TEST_CASE("an exception in a handler goes no further") {
    HostWindow host;
    TestForm form;
    form.The("CheckKeep").on.click = [] { throw std::runtime_error("broken"); };
    form.The("Picture").on.mouseDown = [](const Mouse&) { throw std::runtime_error("broken"); };
    form.The("TextName").on.keyPress = [](char) -> bool { throw std::runtime_error("broken"); };
    Err().Set(5, "earlier");
    CHECK(Drive(form,
                {[&] { PostMessageA(GetFocus(), WM_CHAR, 'x', 1); }, [&] { FormDriver::Click(form.At("CheckKeep")); },
                 [&] { FormDriver::Click(form.At("Picture")); }, [&] { FormDriver::Key(VK_ESCAPE); }}));
    CHECK(logIs(form, {"ButtonCancel"}));
    CHECK(Err().Number() == 5);
}

namespace {

class FailingForm : public TestForm {
  public:
    bool failsToLoad = false, failsToUnload = false;

  private:
    void OnLoad() override {
        TestForm::OnLoad();
        if (failsToLoad) throw std::bad_alloc();
    }
    void OnUnload() override {
        TestForm::OnUnload();
        if (failsToUnload) throw std::bad_alloc();
    }
};

}  // namespace

TEST_CASE("a form whose loading ends in an exception is not left loaded") {
    FailingForm form;
    form.failsToLoad = true;
    CHECK_THROWS_AS((void)form.ShowModal(), std::bad_alloc);
    CHECK_FALSE(form.IsLoaded());
    CHECK_FALSE(IsKeptLoaded());
    form.failsToLoad = false;
    CHECK(form.Load());
}

TEST_CASE("a form whose unloading ends in an exception is gone all the same") {
    FailingForm form;
    CHECK(form.Load());
    form.failsToUnload = true;
    form.Unload();
    CHECK(form.unloads == 1);
    CHECK_FALSE(form.IsLoaded());
    CHECK_FALSE(IsKeptLoaded());
    form.failsToUnload = false;
}

TEST_CASE("a hidden form can be shown again and keeps what was entered") {
    HostWindow host;
    TestForm form;
    CHECK(Drive(form, {[&] { PostMessageA(GetFocus(), WM_CHAR, 'x', 1); }, [&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(form.loads == 1);
    CHECK(form.The("TextName").Text() == "x");
    CHECK(Drive(form, {[&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(form.loads == 1);
    form.Unload();
    CHECK(form.unloads == 1);
    CHECK_FALSE(form.IsLoaded());
    CHECK(form.Load());
    CHECK(form.loads == 2);
}

TEST_CASE("a form is told when it becomes active and when it no longer is") {
    HostWindow host;
    TestForm form;
    CHECK(Drive(
        form, {[&] { SendMessageA(form.Window(), WM_ACTIVATE, WA_INACTIVE, 0); },
               [&] { SendMessageA(form.Window(), WM_ACTIVATE, WA_ACTIVE, 0); }, [&] { FormDriver::Key(VK_RETURN); }}));
    CHECK(form.activations == 2);
    CHECK(form.deactivations >= 1);
}

TEST_CASE("a modeless form leaves the other windows alone") {
    HostWindow host;
    TestForm form;
    CHECK(form.Show());
    CHECK_FALSE(form.Show());
    CHECK(form.Visible());
    CHECK(IsWindowVisible(form.Window()));
    CHECK(IsWindowEnabled(host.Get()));
    form.Hide();
    CHECK_FALSE(IsWindowVisible(form.Window()));
    PumpMessages();
}

TEST_CASE("a form is centred over its owner and stays on the screen") {
    HostWindow host;
    TestForm form;
    REQUIRE(form.Load());
    CHECK(form.InsideSize() == Size{300, 460});
    const Rect screen = form.WorkArea();
    form.SetPosition({0, 0, 200, 100});
    form.Center();
    CHECK(form.Position() == Rect{250, 250, 200, 100});
    MoveWindow(host.Get(), screen.Right() - 60, screen.Bottom() - 60, 50, 50, FALSE);
    form.Center();
    CHECK(form.Position().Right() == screen.Right());
    CHECK(form.Position().Bottom() == screen.Bottom());
}

TEST_CASE("a form has its size and place in a host of every awareness of the resolution, which stays as it was") {
    const DpiFunctions windows;
    if (!windows.There()) return;  // before Windows 10
    const std::int32_t common = CommonDots();
    for (const std::intptr_t awareness : {unaware, systemAware, eachScreen, eachScreen2}) {
        CAPTURE(awareness);
        void* const before = windows.setThreadContext(reinterpret_cast<void*>(awareness));
        if (!before && awareness == eachScreen2) continue;  // not before Windows 10 1703, nor in Wine 8
        REQUIRE(before);
        {
            const HostWindow host;
            TestForm form;
            REQUIRE(form.Load(host.Get()));
            const auto ofWindow = static_cast<std::int32_t>(windows.dotsOfWindow(static_cast<HWND>(form.Window())));
            const std::int32_t expected = awareness == unaware || awareness == systemAware ? CommonDots() : ofWindow;
            CHECK(form.Scaled(960) == MulDiv(960, expected, 96));
            CHECK(form.InsideSize() == Size{300, 460});
            form.SetPosition({0, 0, 200, 100});
            form.Center();
            RECT owner{};
            GetWindowRect(host.Get(), &owner);
            const Rect place = form.Position();
            CHECK(place.left + place.width / 2 == (owner.left + owner.right) / 2);
            CHECK(place.top + place.height / 2 == (owner.top + owner.bottom) / 2);
            CHECK(windows.equal(windows.threadContext(), reinterpret_cast<void*>(awareness)));
        }
        windows.setThreadContext(before);
    }
    CHECK(CommonDots() == common);
}

TEST_CASE("a form that comes to a screen of another resolution looks as large there, letters and all") {
    TestForm form;
    REQUIRE(form.Load());
    const auto heightOfLetters = [&] {
        LOGFONTA font{};
        GetObjectA(reinterpret_cast<HFONT>(SendMessageA(form.At("ButtonOK"), WM_GETFONT, 0, 0)), sizeof font, &font);
        return font.lfHeight;
    };
    const std::int32_t dots = form.Scaled(96);
    const LONG letters = heightOfLetters();
    const Rect button = form.The("ButtonOK").Position();
    const auto tell = [&](std::int32_t now, RECT place) {
        const WPARAM both = MAKEWPARAM(now, now);
        SendMessageA(static_cast<HWND>(form.Window()), dpiChanged, both, reinterpret_cast<LPARAM>(&place));
    };
    tell(dots * 2, {20, 30, 620, 930});
    CHECK(form.Position() == Rect{20, 30, 600, 900});
    CHECK(form.Scaled(100) == MulDiv(200, dots, 96));
    CHECK(heightOfLetters() == letters * 2);
    const Rect larger = form.The("ButtonOK").Position();
    CHECK(larger == Rect{button.left * 2, button.top * 2, button.width * 2, button.height * 2});
    RECT shown{};
    GetWindowRect(form.At("ButtonOK"), &shown);
    CHECK(shown.right - shown.left == larger.width);
    tell(dots, {20, 30, 320, 480});
    CHECK(form.The("ButtonOK").Position() == button);
    CHECK(heightOfLetters() == letters);
}

TEST_CASE("a text is measured as it is drawn: broken at the width, a long word too") {
    TestForm form;
    REQUIRE(form.Load());
    const Control& label = form.The("LabelName");
    const Size line = form.TextSize(label, "word");
    CHECK(line.height > 5);
    CHECK(form.TextSize(label, "word\rword").height == 2 * line.height);
    const Size broken = form.TextSize(label, std::string(200, 'W'), 100);
    CHECK(broken.width <= 100);
    CHECK(broken.height >= 10 * line.height);
    CHECK(form.TextSize(label, "").height == line.height);
}

TEST_CASE("loading and unloading many times leaves no windows and no drawing objects behind") {
    TestForm form;
    const auto once = [&] {
        form.The("ButtonOK").SetToolTip("tip");
        form.The("Picture").SetPicture("*information");
        REQUIRE(form.Load());
        form.The("LabelName").SetBackColor(0x80000002);
        form.Unload();
    };
    once();
    const std::uint32_t windows = handles::UserObjects();
    const std::uint32_t objects = handles::GdiObjects();
    for (int i = 0; i < 20; ++i) once();
    CHECK(handles::UserObjects() <= windows);
    CHECK(handles::GdiObjects() <= objects);
    CHECK(form.loads == 21);
    CHECK(form.unloads == 21);
}

TEST_CASE("a picture of a file is loaded, and one that cannot be read is none and reported") {
    TestForm form;
    REQUIRE(form.Load());
    Err().Clear();
    form.The("Picture").SetPicture("C:\\no such folder\\none.bmp");
    CHECK(Err());
    Err().Clear();
    form.The("Picture").SetPicture("");
    CHECK_FALSE(Err());
}

namespace {

// What a thread without an active window finds in front, lowest window first.
struct FrontCase {
    HWND ordinary = nullptr, found = nullptr;

    static DWORD WINAPI Run(void* self) {
        auto& front = *static_cast<FrontCase*>(self);
        const auto show = [](DWORD extendedStyle, bool enabled) {
            const HWND window = CreateWindowExA(extendedStyle, "STATIC", "", WS_POPUP, 10, 10, 100, 100, nullptr,
                                                nullptr, nullptr, nullptr);
            EnableWindow(window, enabled);
            SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
            return window;
        };
        front.ordinary = show(0, true);
        const HWND others[] = {show(WS_EX_TOOLWINDOW, true), show(0, false)};
        front.found = FrontWindow();
        for (const HWND other : others) DestroyWindow(other);
        DestroyWindow(front.ordinary);
        return 0;
    }
};

}  // namespace

TEST_CASE("the window in front is neither a tool window nor one that is disabled") {
    FrontCase front;
    const HANDLE thread = CreateThread(nullptr, 0, &FrontCase::Run, &front, 0, nullptr);
    REQUIRE(thread != nullptr);
    CHECK(WaitForSingleObject(thread, 10000) == WAIT_OBJECT_0);
    CloseHandle(thread);
    CHECK(front.ordinary != nullptr);
    CHECK(front.found == front.ordinary);
}
