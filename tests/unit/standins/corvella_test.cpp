// The stand-in for Corvella: what it records, what it takes over, and that it shows itself as it is told.
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "corvella/Start.h"
#include "testing/OwnProgram.h"
#include "testing/Pump.h"
#include "testing/TempFolder.h"

namespace {

constexpr const char* listsKey = "Software\\Quillmark\\Corvella\\Outlook";

// The program in a folder of its own. It sees the real registry: the lists are put back at the end.
class Program {
  public:
    Program() {
        std::string build = own_program::Path();
        build.resize(build.rfind("\\tests\\"));
        const std::string program = build + "\\standins\\corvella\\Corvella.exe";
        REQUIRE(CopyFileA(program.c_str(), folder_.Path("Corvella.exe").c_str(), FALSE));
        REQUIRE(RegCreateKeyA(HKEY_CURRENT_USER, listsKey, &lists_) == ERROR_SUCCESS);
        for (const char* name : {"ChangedA", "ChangedC", "ChangedT"}) RegDeleteValueA(lists_, name);
    }
    ~Program() {
        for (const char* name : {"ChangedA", "ChangedC", "ChangedT"}) RegDeleteValueA(lists_, name);
        RegCloseKey(lists_);
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Put(const char* list, const std::string& text) const {
        REQUIRE(RegSetValueExA(lists_, list, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                               static_cast<DWORD>(text.size() + 1)) == ERROR_SUCCESS);
    }
    [[nodiscard]] std::string Get(const char* list) const {
        char text[64];
        DWORD size = sizeof text;
        const LONG status = RegQueryValueExA(lists_, list, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
        return status == ERROR_SUCCESS ? text : "(none)";
    }
    [[nodiscard]] std::string Line(const std::string& arguments) const {
        return "\"" + folder_.Path("Corvella.exe") + "\"" + arguments;
    }
    [[nodiscard]] HANDLE Start(const std::string& arguments, int show) const {
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = show < 0 ? 0 : STARTF_USESHOWWINDOW;
        startup.wShowWindow = static_cast<WORD>(show);
        PROCESS_INFORMATION process{};
        std::string line = Line(arguments);
        REQUIRE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process));
        CloseHandle(process.hThread);
        return process.hProcess;
    }
    static DWORD End(HANDLE process) {
        CHECK(WaitForSingleObject(process, 60000) == WAIT_OBJECT_0);
        DWORD code = 99;
        GetExitCodeProcess(process, &code);
        CloseHandle(process);
        return code;
    }
    [[nodiscard]] std::string Record() const { return folder_.Read("Corvella.record.txt"); }

  private:
    TempFolder folder_;
    HKEY lists_ = nullptr;
};

std::string Expected(const Program& program, const std::string& arguments, int show, const char* a = "",
                     const char* c = "", const char* t = "") {
    return Corvella::RecordLine({program.Line(arguments), show, a, c, t});
}

}  // namespace

TEST_CASE("a start is one line whatever its values hold") {
    CHECK(Corvella::RecordLine({"\"C:\\a\\Corvella.exe\" sync ol", 2, ";1", ";2;3", ""}) ==
          "show=2\tChangedA=;1\tChangedC=;2;3\tChangedT=\tnote=2 contacts, 1 "
          "appointment\tcommand=\"C:\\\\a\\\\Corvella.exe\" sync ol\r\n");
    CHECK(Corvella::RecordLine({"a\tb\r\nc", -1, "", "", ""}) ==
          "show=-1\tChangedA=\tChangedC=\tChangedT=\tnote=\tcommand=a\\tb\\r\\nc\r\n");
}

TEST_CASE("the arguments are what stands behind the program") {
    CHECK(Corvella::Arguments("\"C:\\Program Files\\Corvella.exe\" sync 0 ol") == "sync 0 ol");
    CHECK(Corvella::Arguments("Corvella.exe update ") == "update");
    CHECK(Corvella::Arguments("\"C:\\a b\\Corvella.exe\" ").empty());
    CHECK(Corvella::Arguments("Corvella.exe").empty());
    CHECK(Corvella::Arguments("\"not closed").empty());
    CHECK(Corvella::Arguments("").empty());
}

TEST_CASE("every argument of the add-in has words of its own and others are told apart") {
    CHECK(Corvella::Doing("") == "The editor");
    CHECK(Corvella::Doing("sync 1 ol") == "Synchronising the calendar, as Outlook asked");
    CHECK(Corvella::Doing("syncdlg ol") == "The synchronisation dialog, as Outlook asked");
    CHECK(Corvella::Doing("update") == "Sending changed items to the phone");
    CHECK(Corvella::Doing("ol") == "Asked for something that it does not know");
}

TEST_CASE("a minimised start is recorded with its command line and ends without a window") {
    const Program program;
    CHECK(Program::End(program.Start(" sync 0 ol", SW_SHOWMINIMIZED)) == 0);
    CHECK(program.Record() == Expected(program, " sync 0 ol", SW_SHOWMINIMIZED));
    CHECK(FindWindowA("CorvellaStandIn", nullptr) == nullptr);
}

TEST_CASE("a start with \"update\" takes the three lists over and clears them") {
    const Program program;
    program.Put("ChangedA", ";a1;a2");
    program.Put("ChangedT", ";t1");
    CHECK(Program::End(program.Start(" update", SW_SHOWMINIMIZED)) == 0);
    CHECK(program.Record() == Expected(program, " update", SW_SHOWMINIMIZED, ";a1;a2", "", ";t1"));
    CHECK(program.Get("ChangedA").empty());
    CHECK(program.Get("ChangedC") == "(none)");
    CHECK(program.Get("ChangedT").empty());
}

TEST_CASE("any other start leaves the lists alone") {
    const Program program;
    program.Put("ChangedC", ";c1");
    CHECK(Program::End(program.Start(" smsnew", SW_SHOWMINIMIZED)) == 0);
    CHECK(program.Record() == Expected(program, " smsnew", SW_SHOWMINIMIZED, "", ";c1"));
    CHECK(program.Get("ChangedC") == ";c1");
}

TEST_CASE("a start that is to be seen shows a window for a moment and ends by itself") {
    const Program program;
    const HANDLE process = program.Start(" settings", -1);
    HWND window = nullptr;
    CHECK(PumpUntil(30000,
                    [&] { return (window = FindWindowA("CorvellaStandIn", nullptr)) && IsWindowVisible(window); }));
    CHECK_FALSE(IsIconic(window));
    CHECK(Program::End(process) == 0);
    CHECK(program.Record() == Expected(program, " settings", -1));
}

TEST_CASE("several starts at once wait for each other and lose no line and no item") {
    const Program program;
    program.Put("ChangedC", ";c1");
    constexpr int count = 6;
    const HANDLE turn = CreateMutexA(nullptr, TRUE, "Corvella.record");
    std::vector<HANDLE> processes;
    for (int i = 0; i < count; ++i) processes.push_back(program.Start(" update", SW_SHOWMINIMIZED));
    PumpFor(2000);
    CHECK(program.Record().empty());
    ReleaseMutex(turn);
    CloseHandle(turn);
    for (const HANDLE process : processes) CHECK(Program::End(process) == 0);
    std::string all = Expected(program, " update", SW_SHOWMINIMIZED, "", ";c1");
    for (int i = 1; i < count; ++i) all += Expected(program, " update", SW_SHOWMINIMIZED);
    CHECK(program.Record() == all);
}
