// What is handed to Corvella: the lists of changed items, the timer, and the call of the program.
#include <doctest.h>
#include <windows.h>

#include <new>
#include <string>
#include <vector>

#include "bridge/CVOutlAddIn.h"
#include "bridge/FormOlAddInTimer.h"
#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "platform/Module.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"
#include "testing/BoxAnswerer.h"
#include "testing/ImportPatch.h"
#include "testing/PrivateRegistry.h"
#include "testing/Pump.h"
#include "testing/RealFunction.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"

using CVOutlAddIn::AddChangedItem;
using CVOutlAddIn::CallMainApp;
using platform::Err;

namespace {

const std::string outlookKey = "Software\\Quillmark\\Corvella\\Outlook";
const std::string productKey = "Software\\Quillmark\\Corvella";

std::string addInFolder;

class Fixture : public Prompt::Port {
  public:
    Fixture() {
        Debug::state = {};
        addInFolder = folder.Path("add-in\\");
        CreateDirectoryA(addInFolder.c_str(), nullptr);
        Files::Plug({.applicationPath = [] { return addInFolder; }});
        folder.Write(
            "add-in\\English.lng",
            "[OutlookAddIn]\r\nMsg1=Hand over your %i, all %i?\r\nA=appointments\r\nC=contacts\r\nT=tasks\r\n");
        IniFile::location = {folder.Path("corvella.ini"), folder.Path("corvella.ini"), 0};
        Language::LangInit();
        Prompt::Plug(this);
        Err().Clear();
    }
    ~Fixture() override {
        FormOlAddInTimer::Unload();
        Prompt::Plug(nullptr);
        IniFile::location = {};
        Files::Plug({});
        Debug::state = {};
    }

    static void Put(const std::string& name, const std::string& text) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, outlookKey, name, text);
    }
    static std::string Value(const std::string& name) {
        return PrivateRegistry::Raw(HKEY_CURRENT_USER, outlookKey, name).bytes;
    }
    static bool Has(const std::string& name) {
        return PrivateRegistry::Raw(HKEY_CURRENT_USER, outlookKey, name).present;
    }
    static FormOlAddInTimer::TimerControl& Timer() { return FormOlAddInTimer::Load().TimerUpdate; }
    void InstallMainApp(HKEY root, const std::string& path) const {
        PrivateRegistry::PutText(root, productKey, "Path", path);
    }
    [[nodiscard]] std::string Folder() const { return folder.Path().substr(0, folder.Path().size() - 1); }

    std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                     const std::string& title) override {
        asked.push_back(std::to_string(questionId) + "|" + prompt + "|" + std::to_string(buttons) + "|" + title);
        return answer;
    }
    std::string Input(const std::string&, const std::string&, const std::string&, bool&) override { return {}; }
    std::int32_t Message(std::int32_t, std::int32_t, std::int32_t, const std::string&, const std::string&,
                         const std::string&, const std::string&, std::int32_t) override {
        return 0;
    }

    PrivateRegistry registry;
    TempFolder folder;
    Recorder recorder{folder, "Corvella.exe"};
    std::int32_t answer = IDYES;
    std::vector<std::string> asked;
};

using Lines = std::vector<std::string>;

UINT_PTR WINAPI NoTimer(HWND, UINT_PTR, UINT, TIMERPROC) {
    SetLastError(ERROR_NO_SYSTEM_RESOURCES);
    return 0;
}

// One function of this program's own imports, replaced.
class Replaced {
  public:
    Replaced(const char* library, const char* name, void* instead) {
        const ImportPatch::Import imports[] = {{library, name, instead}};
        REQUIRE(patch_.Replace(GetModuleHandleA(nullptr), imports) == 1);
    }

  private:
    ImportPatch patch_;
};

int refusals = 0;     // of windows, or timers, that are still to come
int allocations = 0;  // until the one that fails; below 0: none does

HWND WINAPI RefuseWindow(DWORD exStyle, LPCSTR kind, LPCSTR title, DWORD style, int x, int y, int width, int height,
                         HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
    if (refusals > 0 && lstrcmpiA(kind, "CorvellaTimer") == 0) {
        --refusals;
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return Real<decltype(&CreateWindowExA)>("user32.dll", "CreateWindowExA")(exStyle, kind, title, style, x, y, width,
                                                                             height, parent, menu, instance, parameter);
}

UINT_PTR WINAPI RefuseTimer(HWND window, UINT_PTR id, UINT period, TIMERPROC procedure) {
    if (refusals > 0) {
        --refusals;
        SetLastError(ERROR_NO_SYSTEM_RESOURCES);
        return 0;
    }
    return Real<decltype(&SetTimer)>("user32.dll", "SetTimer")(window, id, period, procedure);
}

void* __cdecl FailOnce(std::size_t size) {
    static const auto real = Real<void*(__cdecl*)(std::size_t)>("msvcrt.dll", "malloc");
    if (allocations > 0 && --allocations == 0) return nullptr;
    return real(size);
}

}  // namespace

TEST_CASE_FIXTURE(Fixture, "each kind of item has a list of its own") {
    AddChangedItem("0A", 'A', true, false);
    AddChangedItem("0C", 'C', true, false);
    AddChangedItem("0T", 'T', true, false);
    CHECK(Value("ChangedA") == ";0A");
    CHECK(Value("ChangedC") == ";0C");
    CHECK(Value("ChangedT") == ";0T");
}

TEST_CASE_FIXTURE(Fixture, "handing the same contact twice leaves one entry") {
    AddChangedItem("0C", 'C', true, true);
    AddChangedItem("0C", 'C', true, true);
    CHECK(Value("ChangedC") == ";0C");
}

TEST_CASE_FIXTURE(Fixture, "an id that is the beginning of another one in the list is still added") {
    AddChangedItem("0000AB", 'C', true, false);
    AddChangedItem("0000A", 'C', true, false);
    AddChangedItem("0000ab", 'C', true, false);
    CHECK(Value("ChangedC") == ";0000AB;0000A;0000ab");
}

TEST_CASE_FIXTURE(Fixture, "a list that the main application left without a separator in front is extended as it is") {
    Put("ChangedC", "0A");
    AddChangedItem("0B", 'C', true, false);
    CHECK(Value("ChangedC") == "0A;0B");
    AddChangedItem("0A", 'C', true, false);
    CHECK(Value("ChangedC") == "0A;0B");
}

TEST_CASE_FIXTURE(Fixture,
                  "a command of the user neither reads nor writes the switch, and waits for 300 milliseconds") {
    Put("AutoC", "0");
    Put("Delay", "20");
    AddChangedItem("0C", 'C', true, true);
    CHECK(asked.empty());
    CHECK(Value("AutoC") == "0");
    CHECK(Value("ChangedC") == ";0C");
    CHECK_FALSE(Has("AutoA"));
    CHECK(Timer().Enabled());
    CHECK(Timer().Interval() == 300);
}

TEST_CASE_FIXTURE(Fixture, "without the timer's start the item is listed and the timer stopped") {
    AddChangedItem("0C", 'C', true, true);
    REQUIRE(Timer().Enabled());
    AddChangedItem("0D", 'C', true, false);
    CHECK(FormOlAddInTimer::IsLoaded());
    CHECK_FALSE(Timer().Enabled());
    CHECK(Value("ChangedC") == ";0C;0D");
}

TEST_CASE_FIXTURE(Fixture, "an automatic hand-off asks once for each kind and remembers Yes") {
    AddChangedItem("0C", 'C', false, true);
    AddChangedItem("0D", 'C', false, true);
    CHECK(asked == Lines{"-1|Hand over your contacts, all contacts?|4|Corvella Outlook AddIn"});
    CHECK(Value("AutoC") == "1");
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, outlookKey, "AutoC").type == REG_SZ);
    CHECK(Value("ChangedC") == ";0C;0D");
    AddChangedItem("0T", 'T', false, true);
    AddChangedItem("0A", 'A', false, true);
    REQUIRE(asked.size() == 3);
    CHECK(asked[1].find("tasks") != std::string::npos);
    CHECK(asked[2].find("appointments") != std::string::npos);
}

TEST_CASE_FIXTURE(Fixture, "No is remembered, nothing is added and no timer is made") {
    answer = IDNO;
    AddChangedItem("0C", 'C', false, true);
    AddChangedItem("0C", 'C', false, true);
    CHECK(asked.size() == 1);
    CHECK(Value("AutoC") == "0");
    CHECK_FALSE(Has("ChangedC"));
    CHECK_FALSE(FormOlAddInTimer::IsLoaded());
}

TEST_CASE_FIXTURE(Fixture, "Yes that comes as OK, as it does beside another box, is Yes") {
    answer = IDOK;
    AddChangedItem("0C", 'C', false, true);
    CHECK(Value("AutoC") == "1");
    CHECK(Value("ChangedC") == ";0C");
}

TEST_CASE_FIXTURE(Fixture, "a question that could not be answered is asked again next time") {
    for (const std::int32_t none : {0, 2}) {
        answer = none;
        AddChangedItem("0C", 'C', false, true);
        CHECK_FALSE(Has("AutoC"));
        CHECK_FALSE(Has("ChangedC"));
    }
    CHECK(asked.size() == 2);
}

TEST_CASE_FIXTURE(Fixture, "a switch of 0, or of no number, adds nothing and leaves the timer running") {
    AddChangedItem("0C", 'C', true, true);
    for (const char* off : {"0", "no", "00", " "}) {
        Put("AutoC", off);
        AddChangedItem("0D", 'C', false, true);
        AddChangedItem("0D", 'C', false, false);
    }
    CHECK(asked.empty());
    CHECK(Value("ChangedC") == ";0C");
    CHECK(Timer().Enabled());
    CHECK(Timer().Interval() == 300);
}

TEST_CASE_FIXTURE(Fixture, "without a delay an automatic hand-off waits for 1 second") {
    Put("AutoC", "1");
    for (const char* none : {"", "0", "soon"}) {
        FormOlAddInTimer::Unload();
        Put("Delay", none);
        AddChangedItem("0C", 'C', false, true);
        CHECK(Timer().Interval() == 1000);
        CHECK(Timer().Enabled());
    }
}

TEST_CASE_FIXTURE(Fixture, "a delay of two and a half seconds gives 2500 milliseconds") {
    Put("AutoC", "1");
    Put("Delay", "2.5");
    AddChangedItem("0C", 'C', false, true);
    CHECK(Timer().Interval() == 2500);
}

TEST_CASE_FIXTURE(Fixture, "a delay that the timer does not take leaves the interval that it had") {
    Put("AutoC", "1");
    for (const char* refused : {"66", "-1"}) {
        Put("Delay", "7");
        AddChangedItem("0C", 'C', false, true);
        Put("Delay", refused);
        AddChangedItem("0C", 'C', false, true);
        CHECK(Timer().Interval() == 7000);
        CHECK(Timer().Enabled());
    }
}

TEST_CASE_FIXTURE(Fixture, "a delay that a new timer does not take waits for 1 second") {
    Put("AutoC", "1");
    Put("Delay", "66");
    AddChangedItem("0C", 'C', false, true);
    CHECK(Timer().Interval() == 1000);
}

TEST_CASE_FIXTURE(Fixture, "the hand-off reports its entry and exit to the log") {
    Debug::state.DebugActive = true;
    Debug::state.DebugLevel = 1;
    Debug::state.DebugFile = folder.Path("log");
    AddChangedItem("0C", 'C', true, false);
    CHECK(folder.Read("log") == "<AddChangedItem>_\r\n</AddChangedItem>\r\n");
}

TEST_CASE_FIXTURE(Fixture, "the timer takes intervals from 0 to 65535 and refuses others") {
    FormOlAddInTimer::TimerControl& timer = Timer();
    CHECK(timer.Interval() == 0);
    CHECK_FALSE(timer.Enabled());
    CHECK(timer.SetInterval(65535));
    CHECK_FALSE(timer.SetInterval(65536));
    CHECK_FALSE(timer.SetInterval(-1));
    CHECK(timer.Interval() == 65535);
    CHECK(timer.SetInterval(0));
}

TEST_CASE_FIXTURE(Fixture, "an enabled timer without an interval does not fire") {
    Put("ChangedC", ";0C");
    Timer().Enable();
    PumpFor(100);
    CHECK(FormOlAddInTimer::IsLoaded());
    CHECK(Timer().Enabled());
}

TEST_CASE_FIXTURE(Fixture,
                  "where Windows has no timer left the item is listed and the form goes, for the next one to load") {
    {
        ImportPatch patch;
        const ImportPatch::Import timers[] = {{"USER32.dll", "SetTimer", reinterpret_cast<void*>(&NoTimer)}};
        REQUIRE(patch.Replace(GetModuleHandleA(nullptr), timers) == 1);
        AddChangedItem("0C", 'C', true, true);
        CHECK(Value("ChangedC") == ";0C");
        CHECK_FALSE(FormOlAddInTimer::IsLoaded());
        CHECK_FALSE(platform::IsKeptLoaded());
    }
    AddChangedItem("0D", 'C', true, true);
    CHECK(FormOlAddInTimer::IsLoaded());
    CHECK(Timer().Enabled());
}

TEST_CASE_FIXTURE(Fixture, "a timer that was disabled does not fire, and Windows keeps none for it") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    Put("ChangedC", ";0C");
    Timer().SetInterval(10);
    Timer().Enable();
    Timer().Disable();
    PumpFor(50);
    CHECK(FormOlAddInTimer::IsLoaded());
    MSG left;
    CHECK_FALSE(PeekMessageA(&left, nullptr, WM_TIMER, WM_TIMER, PM_NOREMOVE));
    const HWND window = FindWindowExA(HWND_MESSAGE, nullptr, "CorvellaTimer", nullptr);
    REQUIRE(window);
    for (UINT_PTR arming = 1; arming < 10; ++arming) CHECK_FALSE(KillTimer(window, arming));
}

TEST_CASE_FIXTURE(Fixture, "with all three lists empty no process is started and the form unloads") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    Put("ChangedA", "");
    Timer().SetInterval(30);
    Timer().Enable();
    CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
    CHECK(recorder.StartsAfter(300).empty());
}

TEST_CASE_FIXTURE(Fixture, "any one list that is not empty starts the main application once with update") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    std::size_t starts = 0;
    for (const char* list : {"ChangedT", "ChangedA", "ChangedC"}) {
        Put("ChangedA", "");
        Put("ChangedC", "");
        Put("ChangedT", "");
        Put(list, ";0A");
        Timer().SetInterval(30);
        Timer().Enable();
        CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
        ++starts;
        REQUIRE(recorder.Starts(starts).size() == starts);
        CHECK(Value(list) == ";0A");
    }
    const std::string line = "2 \"" + Folder() + "\\Corvella.exe\" update";
    CHECK(recorder.StartsAfter(200) == Lines{line, line, line});
    CHECK_FALSE(platform::IsKeptLoaded());
}

TEST_CASE_FIXTURE(Fixture, "the machine's folder comes before the user's") {
    InstallMainApp(HKEY_LOCAL_MACHINE, Folder());
    InstallMainApp(HKEY_CURRENT_USER, "C:\\no such folder");
    AddChangedItem("0C", 'C', true, true);
    CHECK(recorder.Starts(1) == Lines{"2 \"" + Folder() + "\\Corvella.exe\" update"});
}

TEST_CASE_FIXTURE(Fixture, "the user's folder is used where the machine has none") {
    InstallMainApp(HKEY_LOCAL_MACHINE, "");
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    AddChangedItem("0C", 'C', true, true);
    CHECK(recorder.Starts(1) == Lines{"2 \"" + Folder() + "\\Corvella.exe\" update"});
}

TEST_CASE_FIXTURE(Fixture, "a folder with a backslash at its end doubles it in the update's command line") {
    InstallMainApp(HKEY_CURRENT_USER, Folder() + "\\");
    AddChangedItem("0C", 'C', true, true);
    CHECK(recorder.Starts(1) == Lines{"2 \"" + Folder() + "\\\\Corvella.exe\" update"});
}

TEST_CASE_FIXTURE(Fixture, "without a folder nothing is started or shown, and the lists stay") {
    const BoxAnswerer user(IDOK);
    AddChangedItem("0C", 'C', true, true);
    CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
    CHECK(recorder.StartsAfter(200).empty());
    CHECK(user.Seen().empty());
    CHECK(Value("ChangedC") == ";0C");
}

TEST_CASE_FIXTURE(Fixture, "a start that fails leaves the lists for the next firing and is not logged") {
    Debug::state.DebugActive = true;
    Debug::state.DebugLevel = 1;
    Debug::state.DebugFile = folder.Path("log");
    InstallMainApp(HKEY_LOCAL_MACHINE, "C:\\no such folder");
    Put("ChangedC", ";0C");
    Timer().SetInterval(30);
    Timer().Enable();
    CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
    CHECK(Value("ChangedC") == ";0C");
    CHECK(folder.Read("log").empty());
    CHECK(Err().Number() == 0);
    InstallMainApp(HKEY_LOCAL_MACHINE, Folder());
    AddChangedItem("0C", 'C', true, true);
    CHECK(recorder.Starts(1).size() == 1);
}

BOOL WINAPI RunOutOfMemory(LPCSTR, LPSTR, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID, LPCSTR,
                           LPSTARTUPINFOA, LPPROCESS_INFORMATION) {
    throw std::bad_alloc();
}

TEST_CASE_FIXTURE(Fixture, "where memory ends when the timer fires, its form unloads and the lists stay") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    const Replaced starts("KERNEL32.dll", "CreateProcessA", reinterpret_cast<void*>(&RunOutOfMemory));
    AddChangedItem("A1", 'C', true, true);
    CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
    CHECK(Has("ChangedC"));
    CHECK(Err().Number() == platform::OutOfMemory);
    Err().Clear();  // as the next call of the host or of Windows begins
}

TEST_CASE_FIXTURE(Fixture, "two hand-offs 100 milliseconds apart start once, 300 milliseconds after the second") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    AddChangedItem("0C", 'C', true, true);
    PumpFor(100);
    const DWORD second = GetTickCount();
    AddChangedItem("0D", 'C', true, true);
    DWORD unloaded = 0;
    CHECK(PumpUntil(3000, [&] { return !FormOlAddInTimer::IsLoaded() && (unloaded = GetTickCount()) != 0; }));
    CHECK(unloaded - second >= 285);  // the clock counts in steps of up to 16
    CHECK(recorder.Starts(1).size() == 1);
    CHECK(recorder.StartsAfter(500).size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "the next hand-off after a firing loads the form again") {
    AddChangedItem("0C", 'C', true, true);
    CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
    AddChangedItem("0C", 'C', true, true);
    CHECK(FormOlAddInTimer::IsLoaded());
    CHECK(Timer().Enabled());
}

TEST_CASE_FIXTURE(
    Fixture,
    "a timer whose window, or which itself, is refused once fires all the same, else after the next hand-off") {
    const BoxAnswerer user(IDOK);  // a shortage of memory is shown
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    struct Row {
        const char* name;
        void* instead;
    };
    std::size_t starts = 0;
    for (const Row& row : {Row{"CreateWindowExA", reinterpret_cast<void*>(&RefuseWindow)},
                           Row{"SetTimer", reinterpret_cast<void*>(&RefuseTimer)}}) {
        CAPTURE(row.name);
        for (const int count : {1, 1000}) {
            CAPTURE(count);
            {
                const Replaced refusing("USER32.dll", row.name, row.instead);
                refusals = count;
                AddChangedItem("0C", 'C', true, true);
                CHECK(refusals < count);
                refusals = 0;
            }
            CHECK(FormOlAddInTimer::IsLoaded() == (count == 1));  // refused once, it is asked for once more
            if (count > 1) AddChangedItem("0D", 'C', true, true);
            CHECK(PumpUntil(3000, [] { return !FormOlAddInTimer::IsLoaded(); }));
            CHECK(recorder.Starts(++starts).size() == starts);
        }
    }
}

TEST_CASE_FIXTURE(Fixture, "memory that runs out once, wherever in a hand-off, loses neither the item nor the timer") {
    const BoxAnswerer user(IDOK);
    const Replaced memory("msvcrt.dll", "malloc", reinterpret_cast<void*>(&FailOnce));
    const std::string waiting = ";" + std::string(140, 'A'), id(140, 'B');  // ids as long as Outlook's
    Put("AutoC", "1");
    Put("Delay", "2.5");
    int failed = 0;
    for (const bool explicitly : {true, false}) {
        for (bool reached = true; reached && failed < 500;) {
            FormOlAddInTimer::Unload();
            Debug::state = {};
            Err().Clear();  // each shortage is a new one, and shown
            Put("ChangedC", waiting);
            const int number = ++failed;
            CAPTURE(explicitly);
            CAPTURE(number);
            allocations = number;
            AddChangedItem(id, 'C', explicitly, true);
            reached = allocations == 0;
            allocations = 0;
            CHECK(Value("ChangedC") == waiting + ";" + id);
            REQUIRE(FormOlAddInTimer::IsLoaded());
            CHECK(Timer().Enabled());
            CHECK(Timer().Interval() >= 300);
        }
        CHECK(failed > 10);
        failed = 0;
    }
    CHECK(asked.empty());
    CHECK(Value("AutoC") == "1");
}

TEST_CASE_FIXTURE(Fixture, "a sending of many stops the timer at its first item and starts it at its end") {
    AddChangedItem("0C", 'C', true, true);
    REQUIRE(Timer().Enabled());
    CVOutlAddIn::HandOff sending('C');
    sending.Add("0D");
    CHECK_FALSE(Timer().Enabled());
    sending.Add("0E");
    CHECK(Value("ChangedC") == ";0C");
    sending.Finish();
    CHECK(Value("ChangedC") == ";0C;0D;0E");
    CHECK(Timer().Enabled());
    CHECK(Timer().Interval() == 300);
}

TEST_CASE_FIXTURE(Fixture,
                  "a sending of many notes each whole block of its items, and forgets them once they are listed") {
    constexpr std::size_t count = 2 * CVOutlAddIn::HandOff::itemsABlock + 1;
    const auto noted = [](const char* block) {
        return PrivateRegistry::Raw(HKEY_CURRENT_USER, outlookKey + "\\Sending", block);
    };
    CVOutlAddIn::HandOff sending('T');
    std::string first, second;
    for (std::size_t i = 1; i <= count; ++i) {
        const std::string id = std::to_string(i);
        sending.Add(id);
        if (i < count) (i <= count / 2 ? first : second) += ";" + id;
        CHECK(noted("T1").present == (i >= count / 2));
    }
    CHECK(noted("T1").bytes == first);
    CHECK(noted("T2").bytes == second);
    CHECK_FALSE(noted("T3").present);
    sending.Finish();
    CHECK(Value("ChangedT") == first + second + ";" + std::to_string(count));
    CHECK_FALSE(noted("T1").present);
    CHECK_FALSE(noted("T2").present);
}

TEST_CASE_FIXTURE(Fixture, "a command of the user arrives at the main application as it was given") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    const std::string program = "2 \"" + Folder() + "\\Corvella.exe\" ";
    Lines expected;
    for (const std::string argument : {"", "sync", "syncdlg", "sync 0", "sync 1", "Sync", "smsnew", "settings"}) {
        CallMainApp(argument);
        const bool marked = argument.size() >= 4 && argument.substr(1, 3) == "ync";
        expected.push_back(program + argument + (marked ? " ol" : ""));
        REQUIRE(recorder.Starts(expected.size()).size() == expected.size());
    }
    CHECK(recorder.Starts(expected.size()) == expected);
}

TEST_CASE_FIXTURE(Fixture, "a folder with a backslash at its end gives the same command line") {
    InstallMainApp(HKEY_CURRENT_USER, Folder() + "\\");
    CallMainApp("smsnew");
    CHECK(recorder.Starts(1) == Lines{"2 \"" + Folder() + "\\Corvella.exe\" smsnew"});
}

TEST_CASE_FIXTURE(Fixture, "a folder with blanks, umlauts and percent signs arrives in one pair of quotes") {
    for (const char* name : {"Corvella f\xFCr B\xFCros", "100% %TEMP%", "a & b"}) {
        CAPTURE(name);
        const std::string program = folder.Path(name);
        REQUIRE(CreateDirectoryA(program.c_str(), nullptr));
        REQUIRE(CopyFileA(folder.Path("Corvella.exe").c_str(), (program + "\\Corvella.exe").c_str(), FALSE));
        InstallMainApp(HKEY_CURRENT_USER, program + "\\");
        CallMainApp("sync 0");
        const std::string record = std::string(name) + "\\recorded.txt";
        CHECK(PumpUntil(20000, [&] { return folder.Read(record).ends_with("\r\n"); }));
        CHECK(folder.Read(record) == "2 \"" + program + "\\Corvella.exe\" sync 0 ol\r\n");
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "an argument with quotes, percent signs and a backslash at its end arrives as it was given") {
    InstallMainApp(HKEY_CURRENT_USER, Folder());
    const std::string program = "2 \"" + Folder() + "\\Corvella.exe\" ";
    Lines expected;
    for (const std::string argument : {"say \"a b\"", "100% %TEMP%", "C:\\My Folder\\", "\xFC\x62\x65r"}) {
        CallMainApp(argument);
        expected.push_back(program + argument);
        REQUIRE(recorder.Starts(expected.size()).size() == expected.size());
    }
    CHECK(recorder.Starts(expected.size()) == expected);
}

TEST_CASE_FIXTURE(Fixture,
                  "a command of the user does not look at the machine's folder but falls back to the add-in's") {
    InstallMainApp(HKEY_LOCAL_MACHINE, "C:\\no such folder");
    REQUIRE(CopyFileA(folder.Path("Corvella.exe").c_str(), folder.Path("add-in\\Corvella.exe").c_str(), FALSE));
    CallMainApp("settings");
    CHECK(PumpUntil(20000, [&] { return folder.Read("add-in\\recorded.txt").ends_with("\r\n"); }));
    CHECK(folder.Read("add-in\\recorded.txt") == "2 \"" + folder.Path("add-in\\Corvella.exe") + "\" settings\r\n");
}

TEST_CASE_FIXTURE(Fixture, "where no folder is known at all the user is told that Corvella.exe is not found") {
    addInFolder.clear();
    const BoxAnswerer user(IDOK);
    CallMainApp("sync");
    REQUIRE(user.Seen().size() == 1);
    CHECK(user.Seen()[0].text == "Unable to find Corvella.exe");
    CHECK_FALSE(user.Seen()[0].icon);
    CHECK(user.Seen()[0].buttons == std::vector<int>{IDOK});
}

TEST_CASE_FIXTURE(Fixture, "a folder without the program makes the start fail silently") {
    Debug::state.DebugActive = true;
    Debug::state.DebugLevel = 1;
    Debug::state.DebugFile = folder.Path("log");
    InstallMainApp(HKEY_CURRENT_USER, "C:\\no such folder");
    const BoxAnswerer user(IDOK);
    Err().Set(13, "from before");
    CallMainApp("sync");
    CHECK(user.Seen().empty());
    CHECK(Err().Number() == 0);
    CHECK(folder.Read("log").empty());
}
