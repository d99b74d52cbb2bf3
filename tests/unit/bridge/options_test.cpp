// The options dialog, used through its real windows and keys.
#include <doctest.h>
#include <windows.h>

#include <algorithm>
#include <optional>

#include "bridge/FormOlAddInOptions.h"
#include "bridge/OlVersion.h"
#include "bridge/OptionsControls.h"
#include "config/IniFile.h"
#include "config/InifileCV.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "support/Files.h"
#include "testing/BoxAnswerer.h"
#include "testing/DebugLog.h"
#include "testing/FormDriver.h"
#include "testing/ImportPatch.h"
#include "testing/Languages.h"
#include "testing/PrivateRegistry.h"
#include "testing/RealFunction.h"
#include "testing/Recorder.h"
#include "testing/ScreenReader.h"
#include "testing/TempFolder.h"
#include "testing/WindowsFolders.h"

using platform::Control;
using platform::Rect;

namespace {

const std::string outlookKey = "Software\\Quillmark\\Corvella\\Outlook";

// --- Windows' own functions, failing

std::string unreadable;  // the data of that value
LONG WINAPI FailToRead(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (data != nullptr && unreadable == name) return ERROR_NOT_ENOUGH_MEMORY;
    return Real<decltype(&RegQueryValueExA)>("advapi32.dll", "RegQueryValueExA")(key, name, reserved, type, data, size);
}

std::string unmadeClass;  // but for the default button, with which the dialog is closed
HWND WINAPI FailToMake(DWORD extended, LPCSTR windowClass, LPCSTR caption, DWORD style, int x, int y, int width,
                       int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
    const bool named = reinterpret_cast<ULONG_PTR>(windowClass) > 0xFFFF;
    const bool radio = (style & BS_TYPEMASK) == BS_RADIOBUTTON || (style & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
    if (named && lstrcmpiA(windowClass, unmadeClass.c_str()) == 0 && (unmadeClass != "Button" || radio)) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return Real<decltype(&CreateWindowExA)>("user32.dll", "CreateWindowExA")(
        extended, windowClass, caption, style, x, y, width, height, parent, menu, instance, parameter);
}

bool unreadText = false;
int WINAPI FailToReadText(HWND window, LPSTR text, int size) {
    if (unreadText) return 0;
    return Real<decltype(&GetWindowTextA)>("user32.dll", "GetWindowTextA")(window, text, size);
}

class FailingImport {
  public:
    FailingImport(const char* library, const char* name, void* instead) {
        const ImportPatch::Import imports[] = {{library, name, instead}};
        REQUIRE(patch_.Replace(GetModuleHandleA(nullptr), imports) == 1);
    }

  private:
    ImportPatch patch_;
};

// A user's registry, profiles and language, and the dialog over them.
struct Fixture {
    Fixture() {
        platform::Err().Clear();
        OlVersion = 10;
        InifileCV::state = {};
        InifileCV::state.IniFiles = profiles.Path();
        InifileCV::state.IniFilesRead = true;
        IniFile::location.CurrentFile = IniFile::location.BaseFile = settings.Path("settings.ini");
        Files::Plug({.applicationPath = [] { return std::string(CV_LANGUAGE_FOLDER); }});
        Speak("English");
    }
    ~Fixture() {
        Language::state = {};
        Files::Plug({});
        IniFile::location = {};
        IniFile::IniInit(false);
        InifileCV::state = {};
        OlVersion = 0;
    }
    static void Speak(const std::string& language) {
        IniFile::SetIniSettingDefault("Settings", "Language", language, true);
        Language::state = {};
        Language::LangInit();
    }
    void Profile(const std::string& name) const { profiles.Write(name + ".ini", "[Settings]\r\n"); }
    static void Put(const std::string& name, const std::string& text) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, outlookKey, name, text);
    }
    // As stored; "(none)" where there is no value.
    [[nodiscard]] static std::string Stored(const std::string& name) {
        const auto value = PrivateRegistry::Raw(HKEY_CURRENT_USER, outlookKey, name);
        return value.present ? value.bytes.c_str() : "(none)";
    }

    static FormOlAddInOptions& Form() { return FormOlAddInOptions::Shared(); }
    static Control& The(const char* name) { return Form().The(name); }
    static HWND At(const char* name) { return Form().Window(The(name)); }
    static std::string Focus() { return Form().Focus() ? std::string(Form().Focus()->Name()) : "(none)"; }

    // Opens the dialog and takes the steps; the last one has to close it.
    static void Use(std::vector<FormDriver::Step> steps) {
        FormDriver driver([] { return Form().Visible(); }, [] { Form().Hide(); }, std::move(steps));
        Form().Show();
        CHECK(driver.Finished());
        CHECK_FALSE(Form().IsLoaded());
    }
    // Opens it, looks, and closes it with Escape.
    static void Look(const FormDriver::Step& look) {
        Use({look, [] { FormDriver::Key(VK_ESCAPE); }});
    }

    static FormDriver::Step Press(WPARAM key) {
        return [key] { FormDriver::Key(key); };
    }
    static FormDriver::Step ClickOn(const char* name) {
        return [name] { FormDriver::Click(At(name)); };
    }
    static FormDriver::Step GoTo(const char* name) {
        return [name] { The(name).TakeFocus(); };
    }
    static FormDriver::Step AccessKey(char letter) {
        return [letter] { PostMessageA(GetFocus(), WM_SYSCHAR, static_cast<WPARAM>(letter), 0x20000001); };
    }
    // The help handles messages while it starts, and with them the next steps: so the dialog is closed by a message
    // that reaches it there as well, not by a key.
    static void Wait() {}
    static void Close() { PostMessageA(Form().Window(), WM_CLOSE, 0, 0); }
    // Over what is in the field: all of it is selected when the field gets the focus.
    static FormDriver::Step Type(const std::string& text) {
        return [text] {
            for (const char letter : text) {
                PostMessageA(GetFocus(), WM_CHAR, static_cast<unsigned char>(letter), 1);
            }
        };
    }

    PrivateRegistry registry;
    DebugLog log;
    TempFolder profiles, settings;
};

using Names = std::vector<std::string>;

}  // namespace

// --- what it shows

TEST_CASE_FIXTURE(Fixture, "the fields show the values as they stand in the registry") {
    Put("Delay", "5 s");
    Put("Remain", "030");
    Put("NoDlg", "1");
    Put("Profile", "My Phone");
    Profile("My Phone");
    Look([] {
        CHECK(The("TextDelay").Text() == "5 s");
        CHECK(The("TextRemain").Text() == "030");
        CHECK(The("OptionSync").Value());
        CHECK_FALSE(The("OptionDlg").Value());
        CHECK(The("ComboProfiles").Text() == "My Phone");
        CHECK(The("ComboProfiles").ListIndex() == 1);
    });
}

TEST_CASE_FIXTURE(Fixture,
                  "without values the fields are empty, the first profile is chosen, and the dialog comes first") {
    Look([] {
        CHECK(The("TextDelay").Text().empty());
        CHECK(The("TextRemain").Text().empty());
        CHECK_FALSE(The("OptionSync").Value());
        CHECK(The("OptionDlg").Value());
        CHECK(The("ComboProfiles").ListIndex() == 0);
        CHECK(The("ComboProfiles").Text() == "Automatic");
    });
}

TEST_CASE_FIXTURE(Fixture, "any number but 0 in front of NoDlg stands for synchronising at once") {
    for (const char* text : {"2", "-1", "1x"}) {
        Put("NoDlg", text);
        Look([] { CHECK(The("OptionSync").Value()); });
    }
    for (const char* text : {"0", "yes"}) {
        Put("NoDlg", text);
        Look([] { CHECK(The("OptionDlg").Value()); });
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "the list holds the profiles behind its first entry, the base one under the product's name") {
    Profile("corvella");
    Profile("Work");
    Profile("phone_2");
    profiles.Write("other.ini", "[Other]\r\n");
    Look([] {
        Names list = The("ComboProfiles").List();
        REQUIRE(list.size() == 3);
        CHECK(list[0] == "Automatic");
        std::sort(list.begin() + 1, list.end());
        CHECK(list == Names{"Automatic", "Corvella", "Work"});
        CHECK(SendMessageA(At("ComboProfiles"), CB_GETCOUNT, 0, 0) == 3);
    });
}

TEST_CASE_FIXTURE(Fixture, "the dialog shows anew what has changed since it was last open") {
    Put("NoDlg", "1");
    Put("Profile", "a");
    Look([] { CHECK(The("OptionSync").Value()); });
    PrivateRegistry::PutText(HKEY_CURRENT_USER, outlookKey, "NoDlg", "");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, outlookKey, "Profile", "");
    Put("Delay", "7");
    Look([] {
        CHECK(The("OptionDlg").Value());
        CHECK_FALSE(The("OptionSync").Value());
        CHECK(The("ComboProfiles").ListIndex() == 0);
        CHECK(The("TextDelay").Text() == "7");
    });
}

// --- storing

TEST_CASE_FIXTURE(Fixture, "OK stores every field exactly as typed") {
    Use({GoTo("TextDelay"), Type("2.5 sec"), GoTo("TextRemain"), Type(" 010"), GoTo("ComboProfiles"), Type("My \xC4"),
         ClickOn("OptionSync"), ClickOn("ButtonOK")});
    CHECK(Stored("Delay") == "2.5 sec");
    CHECK(Stored("Remain") == " 010");
    CHECK(Stored("NoDlg") == "1");
    CHECK(Stored("Profile") == "My \xC4");
}

TEST_CASE_FIXTURE(Fixture, "every text box of the table is stored when it was typed in, and only then") {
    for (const OptionsControls::Row& row : OptionsControls::rows) {
        if (!row.value) continue;
        CAPTURE(row.control.name);
        Put(row.value, "earlier");
        Use({GoTo("ComboProfiles"), ClickOn("ButtonOK")});
        CHECK(Stored(row.value) == "earlier");
        Use({GoTo(row.control.name), Type("typed"), ClickOn("ButtonOK")});
        CHECK(Stored(row.value) == "typed");
    }
}

TEST_CASE_FIXTURE(Fixture, "clearing a field and pressing OK removes its value from the registry") {
    Put("Delay", "5");
    Put("Remain", "6");
    Use({GoTo("TextDelay"), Press(VK_DELETE), ClickOn("ButtonOK")});
    CHECK(Stored("Delay") == "(none)");
    CHECK(Stored("Remain") == "6");
    Use({GoTo("TextRemain"), Press(VK_DELETE), ClickOn("ButtonOK")});
    CHECK(Stored("Remain") == "(none)");
}

TEST_CASE_FIXTURE(Fixture, "choosing the first entry of the list removes the profile") {
    Put("Profile", "Work");
    Profile("Work");
    Use({GoTo("ComboProfiles"), Press(VK_UP), ClickOn("ButtonOK")});
    CHECK(Stored("Profile") == "(none)");
}

TEST_CASE_FIXTURE(Fixture, "choosing a profile stores its name, and the base one as the list names it") {
    Profile("corvella");
    Use({GoTo("ComboProfiles"), Press(VK_DOWN), Press(VK_RETURN)});
    CHECK(Stored("Profile") == "Corvella");
}

TEST_CASE_FIXTURE(Fixture, "a profile whose file is gone is shown as typed text and stored again unchanged") {
    Put("Profile", "Gone");
    Profile("Work");
    Use({[] {
             CHECK(The("ComboProfiles").Text() == "Gone");
             CHECK(The("ComboProfiles").ListIndex() == -1);
         },
         ClickOn("ButtonOK")});
    CHECK(Stored("Profile") == "Gone");
}

TEST_CASE_FIXTURE(Fixture, "an emptied profile is removed like the first entry") {
    Put("Profile", "Gone");
    Use({GoTo("ComboProfiles"), Press(VK_DELETE), ClickOn("ButtonOK")});
    CHECK(Stored("Profile") == "(none)");
}

TEST_CASE_FIXTURE(Fixture, "a profile named like the first entry of the list stays when nothing is changed") {
    Put("Profile", "Automatic");
    Use({ClickOn("ButtonOK")});
    CHECK(Stored("Profile") == "Automatic");
}

TEST_CASE_FIXTURE(Fixture, "OK leaves what could not be read from the registry, and stores what was changed") {
    for (const char* const name : {"Delay", "Remain", "NoDlg", "Profile"}) {
        CAPTURE(name);
        for (const char* const value : {"Delay", "Remain", "NoDlg", "Profile"}) Put(value, "7");
        {
            const FailingImport unread("ADVAPI32.dll", "RegQueryValueExA", reinterpret_cast<void*>(FailToRead));
            unreadable = name;
            Use({ClickOn("ButtonOK")});
        }
        for (const char* const value : {"Delay", "Remain", "NoDlg", "Profile"}) CHECK(Stored(value) == "7");
    }
    {
        const FailingImport unread("ADVAPI32.dll", "RegQueryValueExA", reinterpret_cast<void*>(FailToRead));
        unreadable = "Delay";
        Use({GoTo("TextDelay"), Type("9"), ClickOn("ButtonOK")});
    }
    CHECK(Stored("Delay") == "9");
}

TEST_CASE_FIXTURE(Fixture, "OK leaves what no window could be made for") {
    for (const char* const window : {"Edit", "ComboBox", "Button"}) {
        CAPTURE(window);
        for (const char* const value : {"Delay", "Remain", "NoDlg", "Profile"}) Put(value, "7");
        {
            const FailingImport unmade("USER32.dll", "CreateWindowExA", reinterpret_cast<void*>(FailToMake));
            unmadeClass = window;
            Use({Press(VK_RETURN)});
        }
        for (const char* const value : {"Delay", "Remain", "NoDlg", "Profile"}) CHECK(Stored(value) == "7");
    }
}

TEST_CASE_FIXTURE(Fixture, "OK leaves what cannot be read back from the fields") {
    for (const char* const value : {"Delay", "Remain", "NoDlg", "Profile"}) Put(value, "7");
    const FailingImport unread("USER32.dll", "GetWindowTextA", reinterpret_cast<void*>(FailToReadText));
    Use({[] { unreadText = true; }, ClickOn("ButtonOK")});
    unreadText = false;
    for (const char* const value : {"Delay", "Remain", "NoDlg", "Profile"}) CHECK(Stored(value) == "7");
}

TEST_CASE_FIXTURE(Fixture, "OK leaves the value of a field that was typed in and cannot be read back") {
    for (const char* const value : {"Delay", "Remain"}) Put(value, "7");
    const FailingImport unread("USER32.dll", "GetWindowTextA", reinterpret_cast<void*>(FailToReadText));
    Use({GoTo("TextDelay"), Type("9"), [] { unreadText = true; }, ClickOn("ButtonOK")});
    unreadText = false;
    for (const char* const value : {"Delay", "Remain"}) CHECK(Stored(value) == "7");
}

TEST_CASE_FIXTURE(Fixture, "choosing the dialog removes NoDlg") {
    Put("NoDlg", "1");
    Use({ClickOn("OptionDlg"), ClickOn("ButtonOK")});
    CHECK(Stored("NoDlg") == "(none)");
}

TEST_CASE_FIXTURE(Fixture, "Enter in a field is OK, Escape and the close button are Cancel") {
    Put("Delay", "5");
    Use({GoTo("TextDelay"), Type("1"), Press(VK_ESCAPE)});
    CHECK(Stored("Delay") == "5");
    Use({GoTo("TextDelay"), Type("2"), ClickOn("ButtonCancel")});
    CHECK(Stored("Delay") == "5");
    Use({GoTo("TextDelay"), Type("3"), Close});
    CHECK(Stored("Delay") == "5");
    Use({GoTo("TextDelay"), Type("4"), Press(VK_RETURN)});
    CHECK(Stored("Delay") == "4");
}

TEST_CASE_FIXTURE(Fixture, "nothing but the four values is stored") {
    Put("AutoA", "0");
    Put("Delay", "5");
    Use({ClickOn("ButtonOK")});
    CHECK(Stored("Delay") == "5");
    CHECK(Stored("AutoA") == "0");
    for (const char* name : {"Remain", "NoDlg", "Profile", "AutoC", "AutoT"}) CHECK(Stored(name) == "(none)");
}

TEST_CASE_FIXTURE(Fixture, "a registry that cannot be written does not keep the dialog open") {
    registry.Put(HKEY_CURRENT_USER, "Software\\Quillmark", "x", REG_SZ, "");
    HKEY key = nullptr;
    REQUIRE(RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Quillmark", 0, KEY_READ, &key) == ERROR_SUCCESS);
    RegOverridePredefKey(HKEY_CURRENT_USER, key);  // may be read only
    Use({GoTo("TextDelay"), Type("1"), ClickOn("ButtonOK")});
    RegCloseKey(key);
    CHECK_FALSE(platform::Err());
}

// --- keys

TEST_CASE_FIXTURE(Fixture, "Tab goes through the fields and buttons in the order in which one reads them") {
    Names way;
    const auto note = [&way] { way.push_back(Focus()); };
    std::vector<FormDriver::Step> steps{note};
    for (int i = 0; i < 7; ++i) {
        steps.push_back(Press(VK_TAB));
        steps.push_back(note);
    }
    steps.push_back(Press(VK_ESCAPE));
    Use(steps);
    CHECK(way == Names{"TextDelay", "TextRemain", "OptionDlg", "ComboProfiles", "ButtonOK", "ButtonCancel",
                       "ButtonHelp", "TextDelay"});
}

TEST_CASE_FIXTURE(Fixture, "the arrow keys move between the two options") {
    Use({GoTo("OptionDlg"), Press(VK_UP), [] { CHECK(Focus() == "OptionSync"); },
         [] { CHECK(The("OptionSync").Value()); }, ClickOn("ButtonOK")});
    CHECK(Stored("NoDlg") == "1");
}

TEST_CASE_FIXTURE(Fixture, "every field is reached by the access key of its label") {
    Use({AccessKey('k'), [] { CHECK(Focus() == "TextRemain"); }, AccessKey('s'), [] { CHECK(Focus() == "TextDelay"); },
         AccessKey('p'), [] { CHECK(Focus() == "ComboProfiles"); }, AccessKey('i'),
         [] { CHECK(The("OptionSync").Value()); }, AccessKey('d'), [] { CHECK(The("OptionDlg").Value()); },
         Press(VK_ESCAPE)});
}

TEST_CASE_FIXTURE(Fixture, "a screen reader names every field by its label") {
    std::string delay, remain;
    Look([&] {
        delay = NameAsRead(At("TextDelay"));
        remain = NameAsRead(At("TextRemain"));
    });
    CHECK(delay == "Start Corvella after:");
    CHECK(remain == "Keep Corvella open for:");
}

TEST_CASE_FIXTURE(Fixture, "typing replaces what a field holds when it has got the focus") {
    Put("Delay", "5");
    Use({Type("9"), ClickOn("ButtonOK")});
    CHECK(Stored("Delay") == "9");
}

// --- help

namespace {

// A help file, and an hh.exe that records in the place of Windows' own.
struct HelpFixture : Fixture {
    HelpFixture() {
        viewer.emplace(settings, "hh.exe");
        settings.Write("cven.chm", "");
        Language::state.LangHelpFile = Language::state.LangHelpFileChosen = settings.Path("cven.chm");
        IniFile::SetIniSetting("Help", "cven.chm", "1", true);
    }
    WindowsFolders windows{settings};
    std::optional<Recorder> viewer;
};

}  // namespace

TEST_CASE_FIXTURE(HelpFixture, "F1 opens the help on the options, wherever the focus is, and leaves the dialog open") {
    const char* const everywhere[] = {"TextDelay",     "TextRemain", "OptionDlg",
                                      "ComboProfiles", "ButtonOK",   "ButtonHelp"};
    for (const char* name : everywhere) Use({GoTo(name), Press(VK_F1), Wait, Wait, Close});
    const auto starts = viewer->Starts(std::size(everywhere));
    REQUIRE(starts.size() == std::size(everywhere));
    for (const auto& start : starts) CHECK(start.ends_with("\"" + settings.Path("cven.chm") + "::/AddInOutl.htm\""));
}

TEST_CASE_FIXTURE(HelpFixture, "the help button opens the same help, by mouse and by its access key") {
    Use({ClickOn("ButtonHelp"), Wait, Wait, Close});
    Use({AccessKey('h'), Wait, Wait, Close});
    const auto starts = viewer->Starts(2);
    REQUIRE(starts.size() == 2);
    CHECK(starts[0] == starts[1]);
    CHECK(starts[0].ends_with("::/AddInOutl.htm\""));
}

TEST_CASE_FIXTURE(HelpFixture, "no other key opens the help") {
    Use({Press(VK_F2), Press(VK_HELP), Wait, Close});
    CHECK(viewer->StartsAfter(500).empty());
}

// --- the window

TEST_CASE_FIXTURE(Fixture,
                  "there is one dialog, topmost, and opening it again while it is open brings it to the front") {
    int returned = 0;
    Use({[&] {
             CHECK(&FormOlAddInOptions::Shared() == &FormOlAddInOptions::Shared());
             CHECK((GetWindowLongA(Form().Window(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
             const HWND before = Form().Window();
             Form().Show();
             ++returned;
             CHECK(Form().Window() == before);
             CHECK(GetActiveWindow() == before);
         },
         Press(VK_ESCAPE)});
    CHECK(returned == 1);
}

TEST_CASE_FIXTURE(Fixture, "from Outlook 2003 on the frames have the colour of menus, before that of the dialog") {
    const char* const coloured[] = {"Frame1", "Frame2", "Frame3", "Picture1"};
    std::uint32_t plain = 0;
    Look([&] {
        plain = The("Frame1").BackColor();
        for (const char* name : coloured) CHECK(The(name).BackColor() == plain);
    });
    OlVersion = 11;
    Look([&] {
        for (const char* name : coloured) CHECK(The(name).BackColor() == GetSysColor(COLOR_MENU));
    });
    CHECK(plain != GetSysColor(COLOR_MENU));
}

TEST_CASE_FIXTURE(Fixture, "all fields are equally high") {
    Look([] {
        RECT field, list;
        GetWindowRect(At("TextDelay"), &field);
        GetWindowRect(At("ComboProfiles"), &list);
        CHECK(list.bottom - list.top == field.bottom - field.top);
        CHECK(list.bottom - list.top == The("ComboProfiles").Position().height);
    });
}

TEST_CASE_FIXTURE(Fixture, "the boxes for automatic sending belong to the form, but are not shown") {
    Look([] {
        for (const char* name : {"CheckT", "CheckA", "CheckC"}) {
            CHECK_FALSE(The(name).Visible());
            CHECK_FALSE(IsWindowVisible(At(name)));
        }
    });
}

TEST_CASE_FIXTURE(Fixture, "in every language each text has its room and the dialog fits a small screen") {
    for (const ListedLanguage& listed : ListedLanguages()) {
        const std::string& language = listed.name;
        CAPTURE(language);
        Speak(language);
        REQUIRE(Language::state.LangFile.ends_with("\\" + language + ".lng"));
        Look([] {
            for (const Control& control : Form().Controls()) {
                if (!control.Visible() || !control.Has(platform::Property::Caption)) continue;
                CAPTURE(std::string(control.Name()));
                CHECK_FALSE(control.Caption().empty());
                const Rect place = control.Position();
                const auto needed = Form().TextSize(control, control.Caption(), place.width);
                CHECK(needed.width <= place.width);
                CHECK(needed.height <= place.height);
            }
            const std::int32_t dots = Form().Scaled(96);
            CHECK(Form().Position().width * 96 / dots <= 640);
            CHECK(Form().Position().height * 96 / dots <= 480);
        });
    }
}

TEST_CASE_FIXTURE(Fixture, "in every language every field has an access key of its own") {
    for (const ListedLanguage& listed : ListedLanguages()) {
        const std::string& language = listed.name;
        CAPTURE(language);
        Speak(language);
        Look([] {
            std::string keys;
            for (const char* name : {"Label1", "Label3", "OptionSync", "OptionDlg", "Label5", "ButtonHelp"}) {
                const std::string& caption = The(name).Caption();
                const std::size_t mark = caption.find('&');
                REQUIRE(mark + 1 < caption.size());
                const auto key = static_cast<char>(reinterpret_cast<std::uintptr_t>(
                    CharUpperA(reinterpret_cast<LPSTR>(static_cast<unsigned char>(caption[mark + 1])))));
                CHECK(keys.find(key) == std::string::npos);
                keys.push_back(key);
            }
        });
    }
}

TEST_CASE_FIXTURE(Fixture, "without a language file the dialog speaks English") {
    Language::state = {};
    Language::state.LangNewLine = "\r\n";
    Language::state.LangFile = settings.Path("gone.lng");
    Look([] {
        CHECK(The("Label1").Caption() == "&Start Corvella after:");
        CHECK(The("ButtonCancel").Caption() == "Cancel");
        CHECK(The("ComboProfiles").Text() == "Automatic");
    });
}

TEST_CASE_FIXTURE(Fixture, "whatever a language file holds, the dialog opens, is used and keeps its values") {
    const TempFolder home;
    static std::string path;
    path = home.Path();
    Files::Plug({.applicationPath = [] { return path; }});
    const std::string head = "x\r\n[FormOlAddInOptions]\r\n";
    std::string strangers = head;
    while (strangers.size() < 5'000'000) strangers += "Stranger(7)=" + std::string(1000, 'x') + "|y\r\n";
    struct Row {
        const char* what;
        std::string text, label;
    };
    const Row rows[] = {
        {"nothing", "", "&Start Corvella after:"},
        {"5 MB of controls that do not exist", strangers + "Label1=last", "last"},
        {"cut off in a line", head + "Label1=Sta", "Sta"},
        {"cut off in a head", "x\r\n[FormOlAdd", "&Start Corvella after:"},
        {"NULs", std::string(100'000, '\0'), "&Start Corvella after:"},
        {"a NUL in a caption", head + "Label2=a" + std::string(1, '\0') + "b\r\nLabel1=c", "c"},
        {"a caption of 100,000 letters", head + "Label1=c\r\nOptionDlg=" + std::string(100'000, 'x'), "c"},
        {"lone brackets and bars", head + "[\r\n", "&Start Corvella after:"},
        {"properties that a control lacks", head + "TextDelay=Text\r\nButtonOK=\r\nLabel1=c", "c"},
    };
    for (const Row& row : rows) {
        CAPTURE(row.what);
        home.Write("English.lng", row.text);
        {
            const BoxAnswerer user(IDOK);
            Speak("English");
            CHECK(user.Seen().size() == (row.text.empty() ? 1 : 0));
        }
        Put("Delay", "5");
        Use({[&] {
                 CHECK(The("Label1").Caption() == row.label);
                 CHECK(The("TextDelay").Text() == "5");
             },
             Type("9"), ClickOn("ButtonOK")});
        CHECK(Stored("Delay") == "9");
        CHECK_FALSE(platform::Err());
    }
    DeleteFileA(home.Path("English.lng").c_str());
    const BoxAnswerer user(IDOK);
    Speak("English");
    CHECK(user.Seen().size() == 1);
}

TEST_CASE_FIXTURE(Fixture,
                  "a folder of 2000 ini files, unreadable ones among them, does not keep the dialog from opening") {
    std::vector<HANDLE> locked;
    for (int i = 0; i < 2000; ++i) {
        const std::string name = std::to_string(i);
        Profile(name);
        if (i % 100 != 0) continue;
        locked.push_back(
            CreateFileA(profiles.Path(name + ".ini").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    const DWORD start = GetTickCount();
    DWORD opened = 0;
    Look([&] {
        opened = GetTickCount() - start;
        CHECK(The("ComboProfiles").List().size() == 1 + 2000 - 20);
    });
    for (const HANDLE file : locked) CloseHandle(file);
    MESSAGE("opened after " << opened << " ms");
    CHECK(opened < 10000);
}
