// Programs that are really started: what arrives as their command line.
#include <doctest.h>
#include <windows.h>

#include "platform/Err.h"
#include "shell/WindowsMiscLaunch.h"
#include "testing/BoxAnswerer.h"
#include "testing/DebugLog.h"
#include "testing/PrivateRegistry.h"
#include "testing/Pump.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"

using platform::Err;
using WindowsMisc::ExecApp;
using WindowsMisc::FindWindowByTitle;
using WindowsMisc::GetApplForExt;

namespace {

constexpr DWORD aStartsTime = 1500;  // milliseconds in which a start would have been recorded

std::string Quote(const std::string& text) { return "\"" + text + "\""; }

// A machine of its own, on which every program is the recording one. Its folder has a blank in its path.
struct Fixture {
    Fixture() { Err().Clear(); }

    void Register(const std::string& key, const std::string& text) const {
        PrivateRegistry::PutText(HKEY_CLASSES_ROOT, key, "", text);
    }
    void RegisterCommand(const std::string& fileType, const std::string& command) const {
        Register(fileType + "\\shell\\open\\command", command);
    }
    void RegisterBrowser(const std::string& command) const {
        Register(".htm", "TestPage");
        RegisterCommand("TestPage", command);
    }
    // The only start, without its show state.
    [[nodiscard]] static std::string Only(const Recorder& program, int show) {
        const auto starts = program.Starts(1);
        REQUIRE(starts.size() == 1);
        const std::string state = std::to_string(show) + " ";
        CHECK(starts[0].substr(0, state.size()) == state);
        return starts[0].substr(state.size());
    }
    static constexpr int normal = SW_SHOWNORMAL, minimised = SW_SHOWMINIMIZED;

    PrivateRegistry registry;
    DebugLog log;
    TempFolder folder;
};

}  // namespace

// --- mail

TEST_CASE_FIXTURE(Fixture, "mail goes to the registered program in a normal window, its blanks written as %20") {
    const Recorder mail(folder, "mail.exe");
    RegisterCommand("mailto", Quote(folder.Path("mail.exe")) + " %1");
    ExecApp("mailto:a@b.c?subject=one two three");
    CHECK(Only(mail, normal) == Quote(folder.Path("mail.exe")) + " mailto:a@b.c?subject=one%20two%20three");
}

TEST_CASE_FIXTURE(Fixture, "what was started is logged in front of the procedure's exit") {
    const Recorder mail(folder, "mail.exe");
    RegisterCommand("mailto", Quote(folder.Path("mail.exe")) + " \"%1\"");
    ExecApp("mailto:a b");
    CHECK(log.Text() ==
          "<ExecApp>_\r\n ExecApp: " + Quote(folder.Path("mail.exe")) + " \"mailto:a%20b\"\r\n</ExecApp>\r\n");
    (void)mail.Starts(1);
}

TEST_CASE_FIXTURE(Fixture, "a mail program that is gone is not replaced, and only the log knows") {
    RegisterCommand("mailto", Quote(folder.Path("gone.exe")) + " %1");
    ExecApp("mailto:a@b.c");
    CHECK(log.Holds("2:"));  // the system's number for a file that is not there
    CHECK(log.Text().find("</ExecApp>") != std::string::npos);
    CHECK_FALSE(Err());
}

TEST_CASE_FIXTURE(Fixture, "quotes in a mail address arrive as they are written") {
    const Recorder mail(folder, "mail.exe");
    RegisterCommand("mailto", Quote(folder.Path("mail.exe")) + " %1");
    ExecApp("mailto:\"a b\"@c.d");
    CHECK(Only(mail, normal) == Quote(folder.Path("mail.exe")) + " mailto:\"a%20b\"@c.d");
}

// --- web pages

TEST_CASE_FIXTURE(Fixture, "a web address goes to the registered browser in a normal window") {
    const Recorder browser(folder, "browser.exe");
    RegisterBrowser(Quote(folder.Path("browser.exe")) + " \"%1\"");
    ExecApp("http://www.a.b/c d?e=%20f");
    CHECK(Only(browser, normal) == Quote(folder.Path("browser.exe")) + " \"http://www.a.b/c d?e=%20f\"");
    CHECK(log.Holds(" TestPage1:\r\n"));
    CHECK(log.Holds(" " + Quote(folder.Path("browser.exe")) + " \"%1\"2:\r\n"));
}

TEST_CASE_FIXTURE(Fixture, "the browser's command may name folders by variables behind its program") {
    const Recorder browser(folder, "browser.exe");
    SetEnvironmentVariableA("CvTestHome", "C:\\My Home");
    RegisterBrowser(Quote(folder.Path("browser.exe")) + " /home \"%CvTestHome%\" %l");
    ExecApp("www.a.b");
    SetEnvironmentVariableA("CvTestHome", nullptr);
    CHECK(Only(browser, normal) == Quote(folder.Path("browser.exe")) + " /home \"C:\\My Home\" www.a.b");
}

TEST_CASE_FIXTURE(Fixture, "a page with umlauts and blanks arrives whole") {
    const Recorder browser(folder, "browser.exe");
    RegisterBrowser(Quote(folder.Path("browser.exe")));
    ExecApp(
        "C:\\M\xFC"
        "ller \xC4\\Seite.htm");
    CHECK(Only(browser, normal) == Quote(folder.Path("browser.exe")) +
                                       " \"C:\\M\xFC"
                                       "ller \xC4\\Seite.htm\"");
}

TEST_CASE_FIXTURE(Fixture, "a page whose browser is gone is opened by the desktop, minimised") {
    const Recorder other(folder, "other.exe");
    RegisterBrowser(Quote(folder.Path("gone.exe")) + " %1");
    folder.Write("a page.htmx", "");
    Register(".htmx", "Other");
    RegisterCommand("Other", Quote(folder.Path("other.exe")) + " \"%1\"");
    ExecApp(folder.Path("a page.htmx"));
    CHECK(Only(other, minimised) == Quote(folder.Path("other.exe")) + " " + Quote(folder.Path("a page.htmx")));
    CHECK(log.Holds(" ExecApp: start " + Quote(folder.Path("a page.htmx")) + "\r\n"));
}

// --- documents

TEST_CASE_FIXTURE(Fixture, "a document path with a blank is opened by its program, minimised, and logged with start") {
    const Recorder editor(folder, "editor.exe");
    Register(".cvdoc", "TestDocument");
    RegisterCommand("TestDocument", Quote(folder.Path("editor.exe")) + " \"%1\"");
    folder.Write("my letter \xE4.cvdoc", "");
    ExecApp(folder.Path("my letter \xE4.cvdoc"));
    CHECK(Only(editor, minimised) ==
          Quote(folder.Path("editor.exe")) + " " + Quote(folder.Path("my letter \xE4.cvdoc")));
    CHECK(log.Holds(" ExecApp: start \"" + folder.Path("my letter ")));
}

TEST_CASE_FIXTURE(Fixture, "a document named by a variable is opened") {
    const Recorder editor(folder, "editor.exe");
    Register(".cvdoc", "TestDocument");
    RegisterCommand("TestDocument", Quote(folder.Path("editor.exe")) + " \"%1\"");
    folder.Write("letter.cvdoc", "");
    SetEnvironmentVariableA("CvTestHome", folder.Path().c_str());
    ExecApp("%CvTestHome%letter.cvdoc");
    SetEnvironmentVariableA("CvTestHome", nullptr);
    CHECK(Only(editor, minimised) == Quote(folder.Path("editor.exe")) + " " + Quote(folder.Path("letter.cvdoc")));
}

TEST_CASE_FIXTURE(Fixture, "a program in double quotes gets its arguments") {
    const Recorder program(folder, "program.exe");
    ExecApp(Quote(folder.Path("program.exe")) + " /x \"a b\" 100%");
    const std::string arrived = Only(program, minimised);
    CHECK(arrived.find("program.exe") != std::string::npos);
    CHECK(arrived.ends_with(" /x \"a b\" 100%"));
}

TEST_CASE_FIXTURE(Fixture, "a program that Windows finds by its bare name gets its arguments") {
    const Recorder program(folder, "cvprogram.exe");
    char before[MAX_PATH];
    REQUIRE(GetCurrentDirectoryA(sizeof before, before) > 0);
    SetCurrentDirectoryA(folder.Path().c_str());
    ExecApp("cvprogram /x a b");
    SetCurrentDirectoryA(before);
    CHECK(Only(program, minimised).ends_with(" /x a b"));
    CHECK(log.Text() == "<ExecApp>_\r\n ExecApp: start \"cvprogram /x a b\"\r\n</ExecApp>\r\n");
}

TEST_CASE_FIXTURE(Fixture, "of a document that is missing nothing is started, not what stands before its first blank") {
    const Recorder program(folder, "my.exe");
    ExecApp(folder.Path("my letter.cvdoc"));
    CHECK(program.StartsAfter(aStartsTime).empty());
    CHECK(log.Holds("2:"));  // the system's number for a file that is not there
    CHECK_FALSE(Err());
}

TEST_CASE_FIXTURE(Fixture, "a document without a registered program and an address of an unknown kind start nothing") {
    const BoxAnswerer user(IDOK);
    folder.Write("letter.cvunknown", "");
    ExecApp(folder.Path("letter.cvunknown"));
    ExecApp("cvunknown://a");
    ExecApp("mailto:a@b.c");
    ExecApp("");
    CHECK_FALSE(Err());
    PumpFor(200);
    CHECK(user.Seen().empty());
}

TEST_CASE_FIXTURE(Fixture, "a web address without a browser is never a program of that name in the current folder") {
    const Recorder stranger(folder, "www.cvtest.com");  // a program by its ending
    const Recorder viewer(folder, "viewer.exe");
    RegisterCommand("http", Quote(folder.Path("viewer.exe")) + " \"%1\"");
    Register("http", "URL:HTTP");
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "http", "URL Protocol", "");
    char before[MAX_PATH];
    REQUIRE(GetCurrentDirectoryA(sizeof before, before) > 0);
    SetCurrentDirectoryA(folder.Path().c_str());
    ExecApp("www.cvtest.com");
    SetCurrentDirectoryA(before);
    CHECK(Only(viewer, minimised) == Quote(folder.Path("viewer.exe")) + " \"http://www.cvtest.com\"");
    CHECK(log.Holds(" ExecApp: start www.cvtest.com\r\n"));
}

TEST_CASE_FIXTURE(Fixture, "the caller's pending error stays as it was") {
    Err().Set(17, "before");
    ExecApp(folder.Path("gone"));
    CHECK(Err().Number() == 17);
    (void)GetApplForExt("gone");
    CHECK(Err().Number() == 17);
}

TEST_CASE_FIXTURE(Fixture, "whatever a path holds, it arrives whole at the program that is registered for it") {
    const Recorder editor(folder, "editor.exe"), browser(folder, "browser.exe");
    Register(".cvdoc", "TestDocument");
    RegisterCommand("TestDocument", Quote(folder.Path("editor.exe")) + " \"%1\"");
    RegisterBrowser(Quote(folder.Path("browser.exe")) + " \"%1\"");
    SetEnvironmentVariableA("CvTestUnknown", nullptr);
    std::vector<std::string> expected;
    for (const char* name : {"plain", "with blanks  in it", "\xC4rger \xFC\x62\x65r \xDF", "100%", "50% off 20%",
                             "%CvTestUnknown%", "a'b & c; d", "[x] {y} (z)"}) {
        CAPTURE(name);
        const std::string document = folder.Path(std::string(name) + ".cvdoc");
        folder.Write(std::string(name) + ".cvdoc", "");
        ExecApp(document);
        expected.push_back("2 " + Quote(folder.Path("editor.exe")) + " " + Quote(document));
        CHECK(editor.Starts(expected.size()) == expected);
        const std::string page = folder.Path(std::string(name) + ".htm");
        ExecApp(page);
        expected.push_back("1 " + Quote(folder.Path("browser.exe")) + " " + Quote(page));
        CHECK(browser.Starts(expected.size()) == expected);
    }
}

TEST_CASE_FIXTURE(Fixture, "a folder keeps the backslash at its end up to the program that shows it") {
    const Recorder browser(folder, "browser.exe");
    RegisterBrowser(Quote(folder.Path("browser.exe")) + " %1");
    ExecApp("C:\\My Pages\\www.a.b\\");
    CHECK(Only(browser, normal) == Quote(folder.Path("browser.exe")) + " \"C:\\My Pages\\www.a.b\\\"");
}

TEST_CASE_FIXTURE(Fixture, "quotes inside an argument arrive as they are, doubled ones as single ones") {
    const Recorder program(folder, "program.exe");
    ExecApp(Quote(folder.Path("program.exe")) + " \"a b\" say=\"\"yes\"\" end\\");
    CHECK(Only(program, minimised).ends_with(" \"a b\" say=\"yes\" end\\"));
}

// --- registered commands

TEST_CASE_FIXTURE(Fixture, "the program that the user has chosen for an extension comes first") {
    PrivateRegistry::PutText(
        HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\FileExts\\.chm", "ProgID", "Mine");
    RegisterCommand("Mine", "mine.exe \"%1\"");
    Register(".chm", "chm.file");
    RegisterCommand("chm.file", "hh.exe %1");
    CHECK(GetApplForExt("chm") == "mine.exe \"%l\"");
    CHECK(GetApplForExt(".chm") == "mine.exe \"%l\"");
    RegisterCommand("Mine", "");
    CHECK(GetApplForExt("chm") == "hh.exe \"%l\"");
}

TEST_CASE_FIXTURE(Fixture, "without a choice of the user the extension's file type decides") {
    Register(".chm", "chm.file");
    RegisterCommand("chm.file", "\"C:\\hh.exe\" %1 /%1");
    CHECK(GetApplForExt("chm") == "\"C:\\hh.exe\" \"%l\" /\"%l\"");
}

TEST_CASE_FIXTURE(Fixture, "an extension that nobody has registered has no command") {
    CHECK(GetApplForExt("chm").empty());
    Register(".chm", "chm.file");
    CHECK(GetApplForExt("chm").empty());
    CHECK(log.Text() == "<GetApplForExt>_\r\n</GetApplForExt>\r\n<GetApplForExt>_\r\n</GetApplForExt>\r\n");
}

// --- windows

namespace {

HWND MakeWindow(const std::string& title) {
    const HWND window = CreateWindowA("STATIC", title.c_str(), WS_OVERLAPPEDWINDOW, 10, 20, 300, 200, nullptr, nullptr,
                                      nullptr, nullptr);
    REQUIRE(window != nullptr);
    return window;
}

int handled = 0;
void CALLBACK CountHandled(HWND, UINT, UINT_PTR, DWORD) { ++handled; }

}  // namespace

TEST_CASE("a window is found by a part of its title, in the case that it is written in") {
    const HWND window = MakeWindow("Before the Corvella Test Title behind it");
    CHECK(FindWindowByTitle("Corvella Test Title") == window);
    CHECK(FindWindowByTitle("corvella test title") == nullptr);
    DestroyWindow(window);
    CHECK(FindWindowByTitle("Corvella Test Title") == nullptr);
}

TEST_CASE("a title is looked through up to its 255th character") {
    const HWND within = MakeWindow(std::string(251, 'x') + "CvNr");
    CHECK(FindWindowByTitle("CvNr") == within);
    DestroyWindow(within);
    const HWND behind = MakeWindow(std::string(252, 'x') + "CvFr");
    CHECK(FindWindowByTitle("CvFr") == nullptr);
    DestroyWindow(behind);
}

TEST_CASE("messages that wait are handled while a window is looked for") {
    handled = 0;
    const UINT_PTR timer = SetTimer(nullptr, 0, 1, CountHandled);
    for (int i = 0; i < 20 && handled == 0; ++i) CHECK(FindWindowByTitle("Corvella Test Title") == nullptr);
    KillTimer(nullptr, timer);
    CHECK(handled > 0);
}

TEST_CASE("a request to quit that waits is left to the host's own message loop") {
    PostQuitMessage(7);
    CHECK(FindWindowByTitle("Corvella Test Title") == nullptr);
    MSG message;
    REQUIRE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    CHECK(message.wParam == 7);
}

TEST_CASE("a window is moved without being put in front, and closed when asked to") {
    const HWND window = MakeWindow("Corvella Test Title");
    platform::MoveWindowTo(window, {30, 40, 500, 400});
    CHECK(platform::WindowRect(window) == platform::Rect{30, 40, 500, 400});
    platform::MakeTopmost(window);
    CHECK((GetWindowLongA(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
    CHECK(platform::WindowRect(window) == platform::Rect{30, 40, 500, 400});
    CHECK_FALSE(IsWindowVisible(window));
    platform::AskToClose(window);
    CHECK_FALSE(IsWindow(window));
    CHECK_FALSE(platform::WindowRect(window));
    platform::AskToClose(window);  // not there any more
}
