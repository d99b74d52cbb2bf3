// Finding and opening the help, and placing its window.
#include <doctest.h>
#include <windows.h>

#include <optional>

#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "shell/WindowsMiscHelp.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "testing/DebugLog.h"
#include "testing/ImportPatch.h"
#include "testing/PrivateRegistry.h"
#include "testing/Pump.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"
#include "testing/WindowsFolders.h"

using platform::Err;
using WindowsMisc::CallHelp;

namespace {

// A user who is told something.
struct User : Prompt::Port {
    User() : earlier(Prompt::Plug(this)) {}
    ~User() override { Prompt::Plug(earlier); }
    std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                     const std::string& title) override {
        asked.push_back(std::to_string(questionId) + "/" + prompt + "/" + std::to_string(buttons) + "/" + title);
        return 1;
    }
    std::string Input(const std::string&, const std::string&, const std::string&, bool&) override { return {}; }
    std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons, const std::string& search1,
                         const std::string& replace1, const std::string&, const std::string&, std::int32_t) override {
        messages.push_back(std::to_string(questionId) + "/" + std::to_string(number) + "/" + std::to_string(buttons) +
                           "/" + search1 + "/" + replace1);
        return 1;
    }
    Prompt::Port* earlier;
    std::vector<std::string> asked, messages;
};

// The viewers of these tests are windows of another program, but for this one.
HWND hostsOwn = nullptr;
DWORD WINAPI ProcessOf(HWND window, LPDWORD process) {
    if (process != nullptr) *process = GetCurrentProcessId() + (window == hostsOwn ? 0u : 4u);
    return GetCurrentThreadId();
}

// A viewer's window that counts the requests to close it and stays open, or closes.
class Viewer {
  public:
    Viewer(const char* title, RECT edges, bool closes) : closes_(closes) {
        WNDCLASSA kind{};
        kind.lpfnWndProc = Procedure;
        kind.lpszClassName = "CvTestViewer";
        RegisterClassA(&kind);
        window = CreateWindowA("CvTestViewer", title, WS_OVERLAPPEDWINDOW, edges.left, edges.top,
                               edges.right - edges.left, edges.bottom - edges.top, nullptr, nullptr, nullptr, this);
        REQUIRE(window != nullptr);
    }
    ~Viewer() { DestroyWindow(window); }
    Viewer(const Viewer&) = delete;
    Viewer& operator=(const Viewer&) = delete;

    [[nodiscard]] RECT Edges() const {
        RECT edges{};
        GetWindowRect(window, &edges);
        return edges;
    }
    HWND window = nullptr;
    int asked = 0;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_NCCREATE) {
            const auto* creation = reinterpret_cast<const CREATESTRUCTA*>(lParam);
            SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
        }
        auto* viewer = reinterpret_cast<Viewer*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (message == WM_CLOSE && viewer != nullptr) {
            ++viewer->asked;
            if (viewer->closes_) DestroyWindow(window);
            return 0;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    }
    bool closes_;
};

// An add-in's folder with a help file, a Windows folder with an hh.exe that records, and settings of its own. The
// folders' paths have a blank.
struct Fixture {
    Fixture() {
        Err().Clear();
        hostsOwn = nullptr;
        const ImportPatch::Import imports[] = {
            {"USER32.dll", "GetWindowThreadProcessId", reinterpret_cast<void*>(ProcessOf)}};
        (void)others.Replace(GetModuleHandleA(nullptr), imports);
        folder.Write("cven.chm", "");
        IniFile::location.CurrentFile = IniFile::location.BaseFile = folder.Path("settings.ini");
        IniFile::IniInit(false);
        Files::Plug({.applicationPath = [] { return std::string("C:\\Corvella Add-In"); }});
        Language::state = {};
        Language::state.LangNewLine = "\r\n";
        Language::state.LangHelpFile = Language::state.LangHelpFileChosen = folder.Path("cven.chm");
        Language::state.LangManualFolder = folder.Path("Manual\\English\\");
    }
    ~Fixture() {
        IniFile::location = {};
        IniFile::IniInit(false);
        Files::Plug({});
        Language::state = {};
    }
    void HelpStarts() { viewerProgram.emplace(programs, "hh.exe"); }
    void HelpDoesNotStart() const { programs.Write("hh.exe", "no program"); }
    void RememberSize() const { IniFile::SetIniSetting("Help", "cven.chm", "1", true); }
    [[nodiscard]] std::string SizedSetting() const { return IniFile::GetIniSetting("Help", "cven.chm"); }
    void RegisterViewer(const std::string& command) const {
        PrivateRegistry::PutText(HKEY_CLASSES_ROOT, ".chm", "", "chm.file");
        PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "chm.file\\shell\\open\\command", "", command);
    }

    ImportPatch others;
    PrivateRegistry registry;
    DebugLog log;
    TempFolder folder, programs;
    WindowsFolders windows{programs};
    User user;
    std::optional<Recorder> viewerProgram;
};

bool operator==(const RECT& left, const RECT& right) { return EqualRect(&left, &right) != FALSE; }

}  // namespace

TEST_CASE_FIXTURE(Fixture, "the help viewer gets the help file and its page in double quotes and a normal window") {
    HelpStarts();
    RememberSize();
    CallHelp("AddInOutl.htm");
    const auto starts = viewerProgram->Starts(1);
    REQUIRE(starts.size() == 1);
    CHECK(starts[0].starts_with(std::to_string(SW_SHOWNORMAL) + " "));
    CHECK(starts[0].ends_with("\\hh.exe\" \"" + folder.Path("cven.chm") + "::/AddInOutl.htm\""));
    CHECK(user.asked.empty());
    CHECK(user.messages.empty());
    CHECK(log.Text().ends_with("\r\n<CallHelp>_\r\n</CallHelp>\r\n"));
}

TEST_CASE_FIXTURE(Fixture, "an hh.exe in the current folder is not the help viewer, also where Windows has none") {
    RegisterViewer("\"" + folder.Path("gone.exe") + "\" %1");
    TempFolder current;
    const Recorder stranger(current, "hh.exe");
    char former[MAX_PATH];
    GetCurrentDirectoryA(sizeof former, former);
    SetCurrentDirectoryA(current.Path().c_str());
    CallHelp("AddInOutl.htm");
    HelpStarts();
    RememberSize();
    CallHelp("AddInOutl.htm");
    SetCurrentDirectoryA(former);
    CHECK(user.asked.size() == 1);  // told that there is no help
    CHECK(viewerProgram->Starts(1).size() == 1);
    CHECK(stranger.StartsAfter(300).empty());
}

TEST_CASE_FIXTURE(Fixture, "a help file in a folder with umlauts, percent signs and an ampersand arrives whole") {
    HelpStarts();
    std::vector<std::string> expected;
    for (const char* name : {"Hilfe f\xFCr Jedermann", "100% %TEMP%", "a & b"}) {
        CAPTURE(name);
        REQUIRE(CreateDirectoryA(folder.Path(name).c_str(), nullptr));
        const std::string help = folder.Path(name) + "\\cven.chm";
        folder.Write(std::string(name) + "\\cven.chm", "");
        Language::state.LangHelpFile = Language::state.LangHelpFileChosen = help;
        RememberSize();
        CallHelp("AddInOutl.htm");
        expected.push_back("1 \"" + programs.Path("hh.exe") + "\" \"" + help + "::/AddInOutl.htm\"");
        CHECK(viewerProgram->Starts(expected.size()) == expected);
    }
}

TEST_CASE_FIXTURE(Fixture, "viewers that are open under either title are closed, others are not") {
    HelpStarts();
    RememberSize();
    Viewer manual("Corvella Manual - Options", {700, 20, 1210, 720}, true);
    Viewer other("HTML Help", {700, 20, 1210, 720}, true);
    Viewer stranger("corvella manual", {700, 20, 1210, 720}, true);
    CallHelp("AddInOutl.htm");
    CHECK(manual.asked == 1);
    CHECK(other.asked == 1);
    CHECK(stranger.asked == 0);
    (void)viewerProgram->Starts(1);
}

TEST_CASE_FIXTURE(Fixture, "a window of the host's own is neither closed nor sized, whatever its title") {
    HelpStarts();
    Viewer own("Re: HTML Help - Message", {700, 20, 1210, 320}, true);
    hostsOwn = own.window;
    CallHelp("AddInOutl.htm");
    CHECK(own.asked == 0);
    CHECK(own.Edges() == RECT{700, 20, 1210, 320});
    (void)viewerProgram->Starts(1);
}

TEST_CASE_FIXTURE(Fixture, "the viewer is sized the first time, and the settings file remembers that") {
    HelpStarts();
    Viewer viewer("Corvella Manual", {700, 20, 1210, 320}, false);
    CallHelp("AddInOutl.htm");
    CHECK(viewer.Edges() == RECT{210, 20, 1210, 720});
    CHECK(SizedSetting() == "1");
    CHECK(folder.Read("settings.ini").find("[Help]\r\ncven.chm=1\r\n") != std::string::npos);
    SetWindowPos(viewer.window, nullptr, 700, 20, 510, 300, SWP_NOZORDER);
    CallHelp("AddInOutl.htm");
    CHECK(viewer.Edges() == RECT{700, 20, 1210, 320});
    (void)viewerProgram->Starts(2);
}

TEST_CASE_FIXTURE(Fixture, "the manual's own title is looked for before the viewer's general one") {
    HelpStarts();
    Viewer general("HTML Help", {700, 20, 1210, 320}, false);
    Viewer manual("Corvella Manual", {700, 20, 1210, 320}, false);
    CallHelp("AddInOutl.htm");
    CHECK(manual.Edges() == RECT{210, 20, 1210, 720});
    CHECK(general.Edges() == RECT{700, 20, 1210, 320});
    (void)viewerProgram->Starts(1);
}

TEST_CASE_FIXTURE(Fixture, "a viewer that is left where it is counts as sized, too") {
    HelpStarts();
    Viewer viewer("HTML Help", {400, 20, 900, 320}, false);
    CallHelp("AddInOutl.htm");
    CHECK(viewer.Edges() == RECT{400, 20, 900, 320});
    CHECK(SizedSetting() == "1");
    (void)viewerProgram->Starts(1);
}

TEST_CASE_FIXTURE(Fixture, "a viewer that shows no window is waited for once, and not for long") {
    HelpStarts();
    const DWORD start = GetTickCount();
    CallHelp("AddInOutl.htm");
    const DWORD first = GetTickCount() - start;
    CHECK(first >= 900);
    CHECK(SizedSetting() == "1");
    CallHelp("AddInOutl.htm");
    CHECK(GetTickCount() - start - first < first);
    (void)viewerProgram->Starts(2);
}

TEST_CASE_FIXTURE(Fixture, "where hh.exe does not start the registered viewer gets the help file, minimised") {
    HelpDoesNotStart();
    const Recorder registered(folder, "viewer.exe");
    RegisterViewer("\"" + folder.Path("viewer.exe") + "\" /open %1");
    CallHelp("AddInOutl.htm");
    const auto starts = registered.Starts(1);
    REQUIRE(starts.size() == 1);
    CHECK(starts[0] == std::to_string(SW_SHOWMINIMIZED) + " \"" + folder.Path("viewer.exe") + "\" /open \"" +
                           folder.Path("cven.chm") + "\"");
    CHECK(SizedSetting().empty());
    CHECK(user.asked.empty());
}

TEST_CASE_FIXTURE(Fixture, "where neither starts the user is told which file to open") {
    HelpDoesNotStart();
    const std::string told = "-1/Unable to start the help!\r\n\r\nPlease open the file\r\n" + folder.Path("cven.chm") +
                             "\r\nmanually or open the help via the start menu./48/";
    CallHelp("AddInOutl.htm");
    CHECK(user.asked == std::vector<std::string>{told});
    RegisterViewer("\"" + folder.Path("gone.exe") + "\" %1");
    CallHelp("AddInOutl.htm");
    CHECK(user.asked == std::vector<std::string>{told, told});
    CHECK_FALSE(Err());
}

TEST_CASE_FIXTURE(Fixture, "a user whose language has help elsewhere is told that the English one is shown") {
    HelpStarts();
    RememberSize();
    for (const char* code : {"fr", "pt", "es", "it", "nl"}) {
        user.messages.clear();
        Language::state.LangHelpFileChosen = folder.Path("cv") + code + ".chm";
        CallHelp("AddInOutl.htm");
        REQUIRE(user.messages.size() == 1);
        CHECK(user.messages[0] ==
              std::to_string(static_cast<std::int32_t>(0x90000010u)) + "/138/16/%m/C:\\Corvella Add-In\\");
    }
    user.messages.clear();
    Language::state.LangHelpFileChosen = folder.Path("cvpl.chm");
    CallHelp("AddInOutl.htm");
    Language::state.LangHelpFile = Language::state.LangHelpFileChosen = folder.Path("cvfr.chm");
    folder.Write("cvfr.chm", "");
    IniFile::SetIniSetting("Help", "cvfr.chm", "1", true);
    CallHelp("AddInOutl.htm");
    CHECK(user.messages.empty());
    (void)viewerProgram->Starts(7);
}

TEST_CASE_FIXTURE(Fixture, "without a help file the page of the HTML manual is opened by the browser") {
    const Recorder browser(folder, "browser.exe");
    Language::state.LangHelpFile = folder.Path("gone.chm");
    Language::state.LangHelpFileChosen = folder.Path("gone.chm");
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, ".htm", "", "Page");
    PrivateRegistry::PutText(HKEY_CLASSES_ROOT, "Page\\shell\\open\\command", "",
                             "\"" + folder.Path("browser.exe") + "\" \"%1\"");
    CallHelp("AddInOutl.htm", "AddInOutl.htm");
    const auto starts = browser.Starts(1);
    REQUIRE(starts.size() == 1);
    CHECK(starts[0] == std::to_string(SW_SHOWNORMAL) + " \"" + folder.Path("browser.exe") + "\" \"" +
                           folder.Path("Manual\\English\\AddInOutl.htm") + "\"");
}

TEST_CASE_FIXTURE(Fixture, "without a help file and without a page the folder of the manual is opened") {
    Language::state.LangHelpFile = Language::state.LangHelpFileChosen = folder.Path("gone.chm");
    CallHelp("AddInOutl.htm");
    CHECK(log.Holds(" ExecApp: start \"" + folder.Path("Manual\\English\\") + "\"\r\n"));
    CHECK(user.asked.empty());
}
