// The questions with which the debug log starts, as the user meets them: on the add-in's own box, in the host.
#include <doctest.h>

#include <cctype>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "e2e/Session.h"
#include "e2e/User.h"
#include "testing/ChildProcess.h"

using e2e::Session;
using e2e::User;

namespace {

std::string LogFile() { return e2e::AddInFolder() + "CorvellaAddIn.dbg.xml"; }

std::string ReadLog() {
    std::string text(1 << 20, '\0');
    const HANDLE file =
        CreateFileA(LogFile().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(file != INVALID_HANDLE_VALUE);
    DWORD size = 0;
    CHECK(ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &size, nullptr));
    CloseHandle(file);
    text.resize(size);
    return text;
}

bool LogExists() { return GetFileAttributesA(LogFile().c_str()) != INVALID_FILE_ATTRIBUTES; }

// One start of the host with what an earlier one left in the registry. The library comes fresh into the process and
// leaves it again, as with a process of the host's own.
class Start {
  public:
    Start(const std::string& active, const std::string& mode, int version = 11) {
        DeleteFileA(LogFile().c_str());
        session_.emplace(standin::Options{.version = version});
        if (!active.empty()) e2e::WriteValue(e2e::addInKey, "Active", active);
        if (!mode.empty()) e2e::WriteValue(e2e::addInKey, "DebugMode", mode);
    }
    ~Start() {
        session_.reset();
        CHECK(e2e::UnloadLibrary());
        DeleteFileA(LogFile().c_str());
    }
    Start(const Start&) = delete;
    Start& operator=(const Start&) = delete;

    // The boxes that came, each with its text; `button` is pressed on every one.
    std::vector<std::string> With(const std::string& button) {
        User user(button);
        session_->host.Start();
        CHECK(e2e::ReadValue(e2e::addInKey, "Active") == "1");
        std::vector<std::string> read;
        for (const User::Box& box : user.boxes) {
            read.push_back(box.text);
            owner = box.owner;
            ownerWaited = box.ownerWaits;
        }
        return read;
    }
    Session& TheSession() { return *session_; }

    HWND owner = nullptr;
    bool ownerWaited = false;

  private:
    std::optional<Session> session_;
};

// What this process was started with, for the code that asks.
class CommandLine {
  public:
    explicit CommandLine(const std::string& line) : earlier_(GetCommandLineA()) {
        lstrcpynA(GetCommandLineA(), line.c_str(), static_cast<int>(earlier_.size()) + 1);
        REQUIRE(GetCommandLineA() == line);
    }
    ~CommandLine() { lstrcpyA(GetCommandLineA(), earlier_.c_str()); }
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

  private:
    std::string earlier_;
};

// What a process of this program leaves in its registry when it ends in the middle.
std::string ActiveMarkAfterCrash() {
    const ChildProcess host(CommandLineOfCase("crashing host"));
    CHECK(host.End() == 3);
    const std::string registry = "Software\\Corvella Tests\\" + std::to_string(host.Id()) + "\\User\\";
    return e2e::ReadValue(registry + e2e::addInKey, "Active").value_or("none");
}

bool Holds(const std::string& text, const std::string& sought) { return text.find(sought) != std::string::npos; }

// The lines of pending errors, which begin with their number.
std::vector<std::string> ErrorsOf(const std::string& log) {
    std::vector<std::string> errors;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find_first_not_of(' ');
        if (begin == std::string::npos) continue;
        if (line[begin] == '-' || std::isdigit(static_cast<unsigned char>(line[begin]))) errors.push_back(line);
    }
    return errors;
}

constexpr const char* uncleanQuestion = "Corvella AddIn was not closed properly the last time.";
constexpr const char* keepQuestion = "Debug mode is on.";

}  // namespace

TEST_CASE("after a clean end and without a mode nothing is asked") {
    Start start("", "");
    CHECK(start.With("OK").empty());
    CHECK_FALSE(LogExists());
}

TEST_CASE("crashing host" * doctest::skip()) {  // the case below runs it in a process of its own
    Start start("", "");
    start.With("OK");
    TerminateProcess(GetCurrentProcess(), 3);
}

TEST_CASE("a crash of the host leaves the active mark behind, and the next start asks") {
    const std::string left = ActiveMarkAfterCrash();
    CHECK(left == "1");
    Start next(left, "");
    const std::vector<std::string> asked = next.With("Cancel");
    REQUIRE(asked.size() == 1);
    CHECK(Holds(asked[0], uncleanQuestion));
    CHECK(Holds(asked[0], "AddIn.dbg.xml"));
    CHECK_FALSE(LogExists());
}

TEST_CASE("OK after an unclean end switches the log on for this start") {
    Start start("1", "");
    CHECK(start.With("OK").size() == 1);
    CHECK(LogExists());
    CHECK_FALSE(e2e::ReadValue(e2e::addInKey, "DebugMode").has_value());
}

TEST_CASE("Escape after an unclean end leaves the log off") {
    Start start("1", "");
    CHECK(start.With("Escape").size() == 1);
    CHECK_FALSE(LogExists());
}

TEST_CASE("a mode that is on is asked about at every clean start, and Cancel leaves it on") {
    Start start("", "1");
    const std::vector<std::string> asked = start.With("Cancel");
    REQUIRE(asked.size() == 1);
    CHECK(Holds(asked[0], keepQuestion));
    CHECK(LogExists());
    CHECK(e2e::ReadValue(e2e::addInKey, "DebugMode") == "1");
}

TEST_CASE("OK to the question about a mode that is on switches it off for good") {
    Start start("", "1");
    CHECK(start.With("OK").size() == 1);
    CHECK_FALSE(LogExists());
    CHECK_FALSE(e2e::ReadValue(e2e::addInKey, "DebugMode").has_value());
}

TEST_CASE("a host that was restarted on purpose is not asked about its unclean end") {
    const CommandLine line("\"x.exe\" restart");
    Start start("1", "");
    CHECK(start.With("OK").empty());
    CHECK_FALSE(LogExists());
}

TEST_CASE("a host that was restarted on purpose is asked about a mode that is on") {
    const CommandLine line("\"x.exe\" restart");
    Start start("1", "1");
    const std::vector<std::string> asked = start.With("Cancel");
    REQUIRE(asked.size() == 1);
    CHECK(Holds(asked[0], keepQuestion));
}

TEST_CASE("the question is asked in the host's window, which waits for it") {
    Start start("1", "");
    const HWND host = CreateWindowExA(0, "STATIC", "Outlook", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 400, 300,
                                      nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(host);
    start.With("Cancel");
    CHECK(start.owner == host);
    CHECK(start.ownerWaited);
    CHECK(IsWindowEnabled(host));
    DestroyWindow(host);
}

TEST_CASE("what happens to an Explorer stands in the log, by the names of its procedures") {
    const auto logOf = [](int version) {
        Start start("", "1", version);
        start.With("Cancel");
        Session& session = start.TheSession();
        session.host.SwitchFolder(session.FirstWindow(), standin::FolderKind::Contacts);
        session.OpenNew(standin::ItemClass::Contact);
        return ReadLog();
    };
    for (const int version : {10, 11, 12}) {
        CAPTURE(version);
        const std::string log = logOf(version);
        for (const char* name : {"OpenItem", "objExplorer_Activate", "objExplorer_SelectionChange"}) {
            CAPTURE(name);
            CHECK(Holds(log, std::string("<") + name + ">_\r\n"));
            CHECK(Holds(log, std::string("</") + name + ">\r\n"));
        }
        CHECK_FALSE(Holds(log, "<OpenItemOl20>_"));
    }
    const std::string log = logOf(9);
    CHECK(Holds(log, "<OpenItemOl20>_\r\n"));
    CHECK(Holds(log, "</OpenItemOl20>\r\n"));
    CHECK_FALSE(Holds(log, "objExplorer_Activate"));
}

TEST_CASE("what is expected to fail leaves no error in the log") {
    for (const int version : {9, 10, 11, 12, 16}) {
        CAPTURE(version);
        Start start("", "1", version);
        start.With("Cancel");
        start.TheSession().OpenNew(standin::ItemClass::Contact);
        CHECK(ErrorsOf(ReadLog()).empty());
    }
}

TEST_CASE("a button without a face of the host's own leaves no error in the log") {
    Start start("", "1");
    start.With("Cancel");
    Session& session = start.TheSession();
    const std::size_t before = ReadLog().size();
    session.host.FailMember("CommandBarButton.FaceId", standin::Fault::Fails(E_FAIL));
    session.OpenNew(standin::ItemClass::Contact);
    CHECK(session.host.FaultsHit() == 1);
    CHECK(ErrorsOf(ReadLog().substr(before)).empty());
}

TEST_CASE("settings that wait to be written are written, and read anew, whenever menu entries are made") {
    Start start("", "1");
    start.With("Cancel");
    Session& session = start.TheSession();
    const std::size_t before = ReadLog().size();
    session.host.OpenExplorer();
    const std::string log = ReadLog().substr(before);
    const std::size_t menus = log.find("SetMenus");
    REQUIRE(menus != std::string::npos);
    const std::size_t prepared = log.find("IniInit", menus);
    const std::size_t ended = log.rfind("SetMenus");
    CHECK(prepared != std::string::npos);
    CHECK(menus < prepared);
    CHECK(prepared < ended);
}

namespace {

// A start whose settings folder lies on a drive that is not there.
std::vector<User::Box> StartWithoutDrive(const std::string& storageMode, const std::string& button) {
    std::vector<User::Box> boxes;
    {
        Session session({.version = 11});
        for (const char* name : {"AppData", "Local AppData"}) {
            e2e::WriteValue("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders", name,
                            "Q:\\Maria\\Application Data");
        }
        e2e::WriteValue(e2e::settingsKey, "SaveIn", storageMode);
        e2e::WriteValue("Control Panel\\International", "sLanguage", "DEU");
        User user(button);
        session.host.Start();
        boxes = user.boxes;
        CHECK(session.Popups(session.FirstWindow()).size() == 1);
        CHECK(session.Entries(session.FirstWindow()).size() == 9);
        CHECK(session.SendButton(session.OpenNew(standin::ItemClass::Contact)));
    }
    CHECK(e2e::UnloadLibrary());
    return boxes;
}

}  // namespace

TEST_CASE("without a drive for the settings the add-in asks for a folder, and Cancel leaves it at work") {
    for (const char* storageMode : {"0", "2"}) {
        CAPTURE(storageMode);
        const std::vector<User::Box> boxes = StartWithoutDrive(storageMode, "Abbrechen");
        REQUIRE(boxes.size() == 1);
        CHECK(boxes[0].buttons == std::vector<std::string>{"OK", "Abbrechen"});
        CHECK(Holds(boxes[0].text, "Unable to write the file  'Q:\\Maria\\Application Data\\Corvella\\corvella.ini'."));
    }
}
