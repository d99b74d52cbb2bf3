// Plays scenarios of a user's day with the real library in the Outlook stand-in, while one call of Windows fails.
//
//     weather.exe count VERSION             the scenarios' call points: "play|function|calls" a line
//     weather.exe play FILE FIRST           the plays that FILE lists, "version|play|function|number|once or on" a line,
//                                           from line FIRST on (from 0)
//
//     weather.exe trail FILE FIRST          the same, and where in the library the first failing call came from
//
// Prints "at N" before each play and "bad N: what" for each fault found in it. It ends where a play crashes or hangs;
// who started it goes on with the next line. The library is loaded afresh for every play.
#include <windows.h>

#include <ole2.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>

#include "outlook/Outlook.h"
#include "testing/ClassFactory.h"
#include "testing/MenuTable.h"
#include "weather/House.h"
#include "weather/Leftovers.h"
#include "weather/Person.h"
#include "weather/Weather.h"

namespace weather {
namespace {

using standin::FolderKind;
using standin::ItemClass;
using standin::Window;

constexpr const char* progId = "CVOutlookAddIn.Connect";
constexpr CLSID addInClass{0x6B0C1E52, 0x3D8F, 0x4C0A, {0x9A, 0x5E, 0x7F, 0x21, 0xC7, 0xB4, 0xD9, 0x13}};
constexpr int hung = 9, crashed = 8, aborted = 7;  // exit codes
constexpr DWORD patience = 2000;                   // milliseconds that a play may stand still
constexpr DWORD longestSleep = 2000;               // that it may wait by itself

// --- what is printed

int line = 0;  // of the plan

void Say(const std::string& text) {
    std::printf("%s\n", text.c_str());
    std::fflush(stdout);
}
void Bad(const std::string& what) { Say("bad " + std::to_string(line) + ": " + what); }

HMODULE library = nullptr;

// What may be return addresses into the library, the innermost first, as offsets.
std::string Trail(const DWORD* stack) {
    std::string trail;
    const DWORD base = reinterpret_cast<DWORD>(library);
    int shown = 0;
    for (int i = 0; i < 1500 && shown < 16; ++i) {
        if (IsBadReadPtr(stack + i, sizeof *stack)) break;
        if (stack[i] < base + 0x1000 || stack[i] >= base + 0x60000) continue;
        char text[16];
        std::snprintf(text, sizeof text, " %lx", stack[i] - base);
        trail += text;
        ++shown;
    }
    return trail;
}

LONG WINAPI Crash(EXCEPTION_POINTERS* what) {
    char text[80];
    std::snprintf(text, sizeof text, "crash %08lx at %lx, trail", what->ExceptionRecord->ExceptionCode,
                  static_cast<unsigned long>(what->ContextRecord->Eip - reinterpret_cast<DWORD>(library)));
    Bad(text + Trail(reinterpret_cast<const DWORD*>(what->ContextRecord->Esp)));
    TerminateProcess(GetCurrentProcess(), crashed);
    return EXCEPTION_EXECUTE_HANDLER;
}

void Abort() {
    Bad("abort (an exception that nobody catches), trail" +
        Trail(static_cast<const DWORD*>(__builtin_frame_address(0))));
    TerminateProcess(GetCurrentProcess(), aborted);
}

// Ends the process where a play stands still.
class Watchdog {
  public:
    static void Start() { CloseHandle(CreateThread(nullptr, 0, &Watchdog::Watch, nullptr, 0, nullptr)); }
    static void Feed() { InterlockedIncrement(&steps); }

  private:
    static DWORD WINAPI Watch(LPVOID) {
        LONG known = steps;
        for (DWORD still = 0;; still += 100) {
            Sleep(100);
            if (steps != known) still = 0;
            known = steps;
            if (still < patience + slack) continue;
            Bad("hangs");
            TerminateProcess(GetCurrentProcess(), hung);
        }
    }
    static constexpr DWORD slack = 4000;  // a busy machine's own
    static inline volatile LONG steps = 0;
};

// --- the host with the add-in

class Stage {
  public:
    explicit Stage(int version) : version_(version) {}

    // The library comes into the process, and the host begins.
    bool Open() {
        library = LoadLibraryA("addin\\CVOutlookAddIn.dll");
        if (!library) return false;
        CountMemory(library);
        house.Surround(library);
        Replace("msvcrt.dll", "abort", reinterpret_cast<void*>(&Abort));
        Over(library);
        factory_ = ClassFactoryOf(library, addInClass);
        if (!factory_) return false;
        outlook.emplace(standin::Options{.version = version_});
        outlook->IgnoreRegistry();
        outlook->UseAddIn(progId, factory_);
        return true;
    }

    [[nodiscard]] bool HasRibbon() const { return version_ >= 14; }
    // Where the first window hears of no change of folder.
    [[nodiscard]] bool IsOutlook2000() const { return version_ == 9; }

    // The weather begins and ends; only what lies between is counted and fails.
    void Begin() {
        weather::Begin(point);
        Watchdog::Feed();
    }
    void End() { weather::End(); }

    // The library leaves the process; what it still holds is a fault.
    void Close() {
        End();
        CheckHost();
        outlook.reset();
        Pump(60);
        if (factory_) factory_->Release();
        using CanUnload = HRESULT(STDAPICALLTYPE*)();
        const auto canUnload =
            reinterpret_cast<CanUnload>(reinterpret_cast<void*>(GetProcAddress(library, "DllCanUnloadNow")));
        if (canUnload() != S_OK) Bad("the library is still in use");
        // Until Outlook 2003 faces travel by the clipboard, and what Windows refuses there cannot be put back.
        for (const std::string& loss : house.Losses(!point || version_ >= 11)) Bad(loss);
        if (House::Slept() > longestSleep) Bad("it waits for " + std::to_string(House::Slept()) + " ms");
        abort_.reset();
        house.Leave();
        FreeLibrary(library);
        if (GetModuleHandleA("CVOutlookAddIn.dll")) Bad("the library stays in the process");
    }

    static void Pump(DWORD milliseconds) {
        const DWORD start = GetTickCount();
        do {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
            for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        } while (GetTickCount() - start < milliseconds);
    }

    // On the ribbon, or in the bars: whether it was there.
    bool Click(Window window, const standin::ControlView& control, const std::string& ribbonId) {
        if (HasRibbon()) return outlook->ClickRibbon(window, ribbonId);
        if (control && outlook->Control(control.instance)) outlook->Click(control);
        return static_cast<bool>(control);
    }
    [[nodiscard]] Window First() {
        const std::vector<Window> windows = outlook->Windows();
        return windows.empty() ? Window{} : windows.front();
    }

    House house;
    std::optional<standin::Outlook> outlook;
    const Point* point = nullptr;

  private:
    void Replace(const char* from, const char* name, void* instead) {
        abort_.emplace();
        const ImportPatch::Import imports[] = {{from, name, instead}};
        abort_->Replace(library, imports);
    }
    void CheckHost() {
        if (outlook->References() != 0) Bad("references are held: " + std::to_string(outlook->References()));
        if (outlook->Advises() != 0) Bad("events are sunk: " + std::to_string(outlook->Advises()));
        for (const std::string& complaint : outlook->Complaints()) {
            if (complaint.find("answers") != std::string::npos) Bad(complaint);
        }
    }

    int version_;
    IClassFactory* factory_ = nullptr;
    std::optional<ImportPatch> abort_;
};

// --- the scenarios

// Leaves everything as it is.
void Decline(HWND box) { Person::Press(box, Person::Child(box, "Button", "Cancel") ? "Cancel" : "OK"); }

bool Is(const Point* point, std::initializer_list<const char*> functions) {
    for (const char* function : functions) {
        if (point && point->function == function) return true;
    }
    return false;
}

// Whether the failing may keep the library from listing an item: what it reads and writes the list with, and memory.
bool KeepsFromListing(const Point* point) {
    return point && (point->function.rfind("Reg", 0) == 0 ||
                     Is(point, {"malloc", "calloc", "realloc", "SysAllocStringLen", "VariantChangeType",
                                "MultiByteToWideChar", "WideCharToMultiByte"}));
}

void FirstStart(Stage& stage) {
    stage.Begin();
    stage.outlook->Start();
    stage.outlook->Quit();
}

void Start(Stage& stage) {
    stage.house.Furnish();
    FirstStart(stage);
}

void CheckListed(Stage& stage, const std::string& id) {
    if (KeepsFromListing(stage.point)) return;
    if (House::Value(outlookKey, "ChangedC").find(";" + id) == std::string::npos) Bad("the entry is not listed");
}

void CheckUpdate(Stage& stage) {
    if (stage.point) return;
    for (const std::string& command : stage.house.Started()) {
        if (command == "\"C:\\Corvella\\Corvella.exe\" update") return;
    }
    Bad("no update was started");
}

void SendContact(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    stage.Begin();
    const standin::Item contact = stage.outlook->NewItem(ItemClass::Contact, {{"FullName", "Ann"}});
    const Window window = stage.outlook->OpenInspector(contact);
    const standin::ControlView button = stage.outlook->FindCaption(window, "Save and Send to Phone");
    const bool clicked = stage.Click(window, button, "TabContact_ButtonUpdate");
    Stage::Pump(stage.point ? 25 : 60);
    stage.End();
    if (clicked && stage.outlook->IsSaved(contact)) CheckListed(stage, stage.outlook->EntryId(contact));
    CheckUpdate(stage);
    stage.outlook->Quit();
}

void SendSelection(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    const Window window = stage.First();
    const standin::Item ann = stage.outlook->AddItem(FolderKind::Contacts, {{"FullName", "Ann"}});
    const standin::Item bob = stage.outlook->AddItem(FolderKind::Contacts, {{"FullName", "Bob"}});
    stage.Begin();
    stage.outlook->SwitchFolder(window, FolderKind::Contacts);
    stage.outlook->Select(window, {ann, bob});
    const standin::ControlView button = stage.outlook->FindTag(window, "107");
    const bool clicked = stage.Click(window, button, "TabContacts_ButtonSendToPhone");
    Stage::Pump(stage.point ? 25 : 60);
    stage.End();
    if (clicked) {
        CheckListed(stage, stage.outlook->EntryId(ann));
        CheckListed(stage, stage.outlook->EntryId(bob));
        CheckUpdate(stage);
    } else if (!stage.point && !stage.IsOutlook2000()) {
        Bad("there is no button");
    }
    stage.outlook->Quit();
}

void ClickEntry(Stage& stage, const char* key) {
    const Window window = stage.First();
    const standin::ControlView entry = stage.outlook->FindCaption(window, menuTable[MenuPlace(key)].caption);
    stage.Click(window, entry, std::string("TabMail_") + key);
}

void Commands(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    stage.Begin();
    for (const char* key : {"mSync0", "mNewSMS", "mLogFile"}) ClickEntry(stage, key);
    stage.End();
    if (!stage.point && stage.house.Started().size() < 2) Bad("commands were not started");
    stage.outlook->Quit();
}

void Options(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    const Person person([](HWND box) {
        if (HWND delay = Person::Child(box, "Edit", "5")) SetWindowTextA(delay, "7");
        Person::Press(box, "OK");
    });
    stage.Begin();
    ClickEntry(stage, "mOptions");
    stage.End();
    const std::string delay = House::Value(outlookKey, "Delay");
    if (delay != "7" && (delay != "5" || !stage.point)) Bad("Delay has become '" + delay + "'");
    const char* const kept[][2] = {{"Remain", "9"}, {"Profile", "Work"}, {"NoDlg", "1"}};
    for (const auto& [name, value] : kept) {
        const std::string now = House::Value(outlookKey, name);
        if (now != value) Bad(std::string(name) + " has become '" + now + "'");
    }
    stage.outlook->Quit();
}

void Info(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    stage.Begin();
    ClickEntry(stage, "mAbout");
    stage.End();
    stage.outlook->Quit();
}

void UncleanEnd(Stage& stage) {
    stage.house.Furnish();
    House::SetValue(addInKey, "Active", "1");
    FirstStart(stage);
}

void LogOn(Stage& stage) {
    stage.house.Furnish();
    House::SetValue(addInKey, "DebugMode", "1");
    stage.Begin();
    stage.outlook->Start();
    stage.outlook->CloseWindow(stage.outlook->OpenInspector(stage.outlook->NewItem(ItemClass::Task)),
                               standin::SaveMode::Discard);
    stage.outlook->Quit();
}

// A message that need not be shown again: the answer goes into the settings file.
void Remember(Stage& stage) {
    stage.house.Furnish();
    House::SetValue(addInKey, "DebugMode", "1");
    House::SetValue("SOFTWARE\\KasperskyLab\\InstalledProducts\\Kaspersky Anti-Virus Personal", "Folder", "C:\\K",
                    HKEY_LOCAL_MACHINE);
    const Person person([](HWND box) {
        for (HWND child = GetWindow(box, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
            const bool ticked = IsWindowVisible(child) && SendMessageA(child, BM_GETCHECK, 0, 0) == BST_CHECKED;
            if (ticked) SendMessageA(child, BM_CLICK, 0, 0);
        }
        Decline(box);
    });
    FirstStart(stage);
}

void Reconnect(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    stage.Begin();
    stage.outlook->UnloadAddIn(progId);
    stage.outlook->LoadAddIn(progId);
    stage.outlook->Quit();
}

// Several windows, the last of which ends the session.
void Windows(Stage& stage) {
    stage.house.Furnish();
    stage.outlook->Start();
    const Window first = stage.First();
    stage.Begin();
    const Window second = stage.outlook->OpenExplorer(FolderKind::Contacts);
    const Window task = stage.outlook->OpenInspector(stage.outlook->NewItem(ItemClass::Task));
    for (const Window window : {first, task, second}) stage.outlook->CloseWindow(window, standin::SaveMode::Discard);
}

struct Play {
    const char* name;
    void (*run)(Stage&);
};
constexpr Play plays[] = {
    {"first start", FirstStart},
    {"start", Start},
    {"send a contact", SendContact},
    {"send a selection", SendSelection},
    {"commands", Commands},
    {"options", Options},
    {"info", Info},
    {"unclean end", UncleanEnd},
    {"log on", LogOn},
    {"remember", Remember},
    {"reconnect", Reconnect},
    {"windows", Windows},
};

void Perform(const Play& play, int version, const Point* point) {
    Stage stage(version);
    const Person anybody(Decline);
    stage.point = point;
    Watchdog::Feed();
    if (!stage.Open()) {
        Bad("the library could not be loaded");
        TerminateProcess(GetCurrentProcess(), crashed);
    }
    play.run(stage);
    stage.Close();
}

// Whether the count of memory rises by an add-in that is held.
bool SeesMemory() {
    const HMODULE loaded = LoadLibraryA("addin\\CVOutlookAddIn.dll");
    CountMemory(loaded);
    IClassFactory* const factory = ClassFactoryOf(loaded, addInClass);
    IUnknown* addIn = nullptr;
    if (factory) factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&addIn));
    const int held = CountLeftovers().memoryBlocks;
    if (addIn) addIn->Release();
    if (factory) factory->Release();
    FreeLibrary(loaded);
    return held > CountLeftovers().memoryBlocks;
}

int Count(int version) {
    if (!SeesMemory()) Bad("the library's memory is not counted");
    for (const Play& play : plays) {
        Perform(play, version, nullptr);  // once to find what is loaded only once for the process
        Perform(play, version, nullptr);
        for (const Place& place : Places()) {
            if (place.calls != 0)
                Say(std::string(play.name) + "|" + place.function + "|" + std::to_string(place.calls));
        }
    }
    return 0;
}

// Once, and up to twice again where it leaves something: what is there for good after the first time, as of a library that
// Windows loads once, is nothing that is left behind.
void PlayAndCount(const Play& play, int version, const Point& point) {
    std::string growth;
    for (int time = 0; time < 3; ++time) {
        const Leftovers before = CountLeftovers();
        Perform(play, version, &point);
        growth = Growth(before, CountLeftovers());
        if (growth.empty()) break;
    }
    if (!growth.empty()) Bad("each time it leaves " + growth);
    if (const std::string open = House::Remains(); !open.empty()) Bad("files stay open: " + open);
}

int PlayPlan(const char* file, int first) {
    std::ifstream plan(file);
    std::string text;
    for (line = 0; std::getline(plan, text); ++line) {
        if (line < first) continue;
        std::istringstream fields(text);
        std::string version, name, number, way;
        Point point;
        std::getline(fields, version, '|');
        std::getline(fields, name, '|');
        std::getline(fields, point.function, '|');
        std::getline(fields, number, '|');
        std::getline(fields, way, '|');
        point.number = std::atoi(number.c_str());
        point.way = way == "once" ? Way::Once : Way::FromThenOn;
        for (const Play& play : plays) {
            if (play.name != name) continue;
            Say("at " + std::to_string(line));
            PlayAndCount(play, std::atoi(version.c_str()), point);
            if (Failed() == 0) Say("missed " + std::to_string(line));
        }
    }
    return 0;
}

// Beside this program.
void GoHome() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program = path;
    SetCurrentDirectoryA(program.substr(0, program.rfind('\\')).c_str());
}

int Main(int argc, char** argv) {
    const std::string what = argc > 2 ? argv[1] : "";
    std::string file = argc > 2 ? argv[2] : "";
    GoHome();
    SetUnhandledExceptionFilter(&Crash);
    HMODULE looked = LoadLibraryA("addin\\CVOutlookAddIn.dll");
    if (!looked) return 2;
    const std::vector<std::string> unlisted = Unlisted(looked);
    FreeLibrary(looked);
    for (const std::string& import : unlisted) Say("unlisted " + import);
    CountComMemory();
    Watchdog::Start();
    if (what == "count") return Count(std::atoi(file.c_str()));
    if (what == "trail") {
        Watch([] { Say("failing call, trail" + Trail(static_cast<const DWORD*>(__builtin_frame_address(0)))); });
    }
    if ((what == "play" || what == "trail") && argc > 3) return PlayPlan(file.c_str(), std::atoi(argv[3]));
    return 2;
}

}  // namespace
}  // namespace weather

int main(int argc, char** argv) {
    OleInitialize(nullptr);
    const int result = weather::Main(argc, argv);
    OleUninitialize();
    return result;
}
