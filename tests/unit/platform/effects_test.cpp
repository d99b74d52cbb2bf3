// Programs, files, the clock and the errors of the platform, with Windows itself.
#include <doctest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>

#include "platform/ClipboardText.h"
#include "platform/Clock.h"
#include "platform/Err.h"
#include "platform/File.h"
#include "platform/Instance.h"
#include "platform/LastError.h"
#include "platform/Locale.h"
#include "platform/MessageBox.h"
#include "platform/Module.h"
#include "platform/Process.h"
#include "platform/Timer.h"
#include "platform/WholeFile.h"
#include "platform/com/Com.h"
#include "platform/com/Picture.h"
#include "platform/forms/Keyboard.h"
#include "testing/BoxAnswerer.h"
#include "testing/ChildProcess.h"
#include "testing/HandleCount.h"
#include "testing/ImportName.h"
#include "testing/ImportPatch.h"
#include "testing/Pump.h"
#include "testing/RealFunction.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"

using namespace platform;

namespace {

// The highest number among many new handles: it rises by what stays open, as new handles fill the gaps first.
std::uintptr_t HighestHandle() {
    HANDLE events[64];
    std::uintptr_t highest = 0;
    for (HANDLE& event : events) {
        event = CreateEventA(nullptr, FALSE, FALSE, nullptr);
        highest = std::max(highest, reinterpret_cast<std::uintptr_t>(event));
    }
    for (const HANDLE event : events) CloseHandle(event);
    return highest;
}

// A program that takes input at once, and whose window is in front a moment later.
HANDLE readyProcess = nullptr;
DWORD readySince = 0;
bool endsFirst = false;  // the program has ended before anybody looks whose window is in front
int looks = 0;

DWORD WINAPI IsReadyAtOnce(HANDLE process, DWORD) {
    DuplicateHandle(GetCurrentProcess(), process, GetCurrentProcess(), &readyProcess, 0, FALSE, DUPLICATE_SAME_ACCESS);
    if (endsFirst) WaitForSingleObject(process, 20000);
    readySince = GetTickCount();
    looks = 0;
    return 0;
}

DWORD WINAPI ProcessInFrontLater(HWND, LPDWORD process) {
    ++looks;
    const auto idOf = Real<DWORD(WINAPI*)(HANDLE)>("kernel32.dll", "GetProcessId");
    const bool alive = WaitForSingleObject(readyProcess, 0) == WAIT_TIMEOUT;
    *process = alive && GetTickCount() - readySince > 300 ? idOf(readyProcess) : 0;
    return 0;
}

UINT lastBoxStyle = 0;

int WINAPI RecordBox(HWND owner, LPCSTR text, LPCSTR title, UINT style) {
    lastBoxStyle = style;
    return Real<decltype(&MessageBoxA)>("user32.dll", "MessageBoxA")(owner, text, title, style);
}

struct PressedKey {
    BYTE key, scanCode;
    DWORD flags;
    bool operator==(const PressedKey&) const = default;
};
std::vector<PressedKey> pressedKeys;
void WINAPI RecordKey(BYTE key, BYTE scanCode, DWORD flags, ULONG_PTR) {
    pressedKeys.push_back({key, scanCode, flags});
}
UINT WINAPI ScanCodeOf(UINT key, UINT asked) { return asked == 0 ? key + 1 : 0; }

HRESULT WINAPI RefusePicture(LPPICTDESC, REFIID, BOOL, LPVOID* picture) {
    *picture = nullptr;
    return E_OUTOFMEMORY;
}

bool TimerClassExists() {
    WNDCLASSA found;
    return GetClassInfoA(ModuleHandle(), "CorvellaTimer", &found) != 0;
}

}  // namespace

// The name under which calls of the imported function are linked; this one comes before the import library's.
extern "C" {
extern decltype(&RecordBox) importMessageBox __asm__(IMPORT_NAME("MessageBoxA", "16"));
decltype(&RecordBox) importMessageBox = RecordBox;
}

TEST_CASE("a program gets its command line as it stands and its show state") {
    const TempFolder folder;
    const Recorder recorder(folder, "a program.exe");
    const std::string line = "\"" + folder.Path("a program.exe") + "\" \"two words\" x ";
    CHECK(StartProcess(line, Show::Minimised));
    CHECK(recorder.Starts(1) == std::vector<std::string>{"2 " + line});
    CHECK(StartProcess(line, Show::Normal));
    CHECK(recorder.Starts(2).at(1) == "1 " + line);
}

TEST_CASE("a program that is not there returns false, with the error pending") {
    Err().Clear();
    CHECK_FALSE(StartProcess("\"C:\\no such folder\\x.exe\"", Show::Normal));
    CHECK(Err().Number() != 0);
    CHECK_FALSE(Err().Description().empty());
    Err().Clear();
}

TEST_CASE("no handle is held of a program that was started") {
    const TempFolder folder;
    const Recorder recorder(folder, "x.exe");
    StartProcess(folder.Path("x.exe"), Show::Normal);  // whatever is made once is made now
    REQUIRE(recorder.Starts(1).size() == 1);
    const std::uintptr_t before = HighestHandle();
    for (int i = 0; i < 3; ++i) StartProcess(folder.Path("x.exe"), Show::Normal);
    REQUIRE(recorder.Starts(4).size() == 4);
    CHECK(HighestHandle() <= before);
}

TEST_CASE("a file is there, has a size and can be removed") {
    const TempFolder folder;
    folder.Write("x", "12345");
    CHECK(PathExists(folder.Path("x")));
    CHECK(FileSize(folder.Path("x")) == 5u);
    CHECK(RemoveFile(folder.Path("x")));
    CHECK_FALSE(PathExists(folder.Path("x")));
}

TEST_CASE("a file that is not there has no size, and asking for it is no error") {
    const TempFolder folder;
    Err().Clear();
    CHECK_FALSE(PathExists(folder.Path("none")));
    CHECK_FALSE(FileSize(folder.Path("none")).has_value());
    CHECK_FALSE(FileSize(folder.Path()).has_value());
    CHECK(PathExists(folder.Path()));
    CHECK(Err().Number() == 0);
    CHECK_FALSE(RemoveFile(folder.Path("none")));
    CHECK(Err().Number() == ERROR_FILE_NOT_FOUND);
    Err().Clear();
}

TEST_CASE("what is appended stands behind what was there, and a missing file is made") {
    const TempFolder folder;
    CHECK(AppendToFile(folder.Path("x"), "one\r\n"));
    CHECK(AppendToFile(folder.Path("x"), "two\r\n"));
    CHECK(folder.Read("x") == "one\r\ntwo\r\n");
}

TEST_CASE("a file can be appended to while another has it open") {
    const TempFolder folder;
    folder.Write("x", "one");
    const HANDLE other = CreateFileA(folder.Path("x").c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                     nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(other != INVALID_HANDLE_VALUE);
    CHECK(AppendToFile(folder.Path("x"), "two"));
    CloseHandle(other);
    CHECK(folder.Read("x") == "onetwo");
}

TEST_CASE("a file that cannot be opened returns false, with the error pending") {
    const TempFolder folder;
    Err().Clear();
    CHECK_FALSE(AppendToFile(folder.Path("no\\such"), "x"));
    CHECK(Err().Number() == ERROR_PATH_NOT_FOUND);
    CHECK_FALSE(AppendToFile("", "x"));
    Err().Clear();
}

TEST_CASE("the clock tells the local time of day and date") {
    SYSTEMTIME before;
    GetLocalTime(&before);
    const float seconds = SecondsSinceMidnight();
    const Date today = Today();
    SYSTEMTIME after;
    GetLocalTime(&after);
    if (before.wDay == after.wDay) {
        CHECK(seconds >= static_cast<float>((before.wHour * 60 + before.wMinute) * 60 + before.wSecond));
        CHECK(seconds <= static_cast<float>((after.wHour * 60 + after.wMinute) * 60 + after.wSecond + 1));
        CHECK(today.year == before.wYear);
        CHECK(today.month == before.wMonth);
        CHECK(today.day == before.wDay);
    }
}

TEST_CASE("a pause lasts as long as it was asked to") {
    const DWORD start = GetTickCount();
    Pause(60);
    CHECK(GetTickCount() - start + 16 >= 50);  // the tick counts in steps of up to 16 ms
}

TEST_CASE("the decimal separator is the one of the user's settings") {
    REQUIRE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, ","));
    CHECK(DecimalSeparator() == ",");
    REQUIRE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, "."));
    CHECK(DecimalSeparator() == ".");
}

TEST_CASE("the last error of a thread outlives the scope that keeps it") {
    SetLastError(1234);
    {
        const LastErrorScope scope;
        SetLastError(5);
    }
    CHECK(GetLastError() == 1234);
}

TEST_CASE("a second process of the same program is another instance, one of another program is not") {
    const TempFolder folder;
    const Recorder recorder(folder, "other.exe");
    CHECK_FALSE(AnotherInstanceRuns());
    CHECK(HostCommandLine() == GetCommandLineA());

    const std::string name = own_program::Name();
    for (const std::string& program : {std::string("other.exe"), name}) {
        const Recorder copy(folder, program);
        const ChildProcess started("\"" + folder.Path(program) + "\" wait");
        CHECK(AnotherInstanceRuns() == (program == name));
    }
    CHECK(PumpUntil(5000, [] { return !AnotherInstanceRuns(); }));
}

TEST_CASE("the standard box shows text, title, icon and buttons, and returns the button's number") {
    const BoxAnswerer user(IDNO);
    CHECK(ShowMessageBox("Really?", MB_YESNO | MB_ICONQUESTION, "Title") == IDNO);
    REQUIRE(user.Seen().size() == 1);
    CHECK(user.Seen()[0].title == "Title");
    CHECK(user.Seen()[0].text == "Really?");
    CHECK(user.Seen()[0].icon);
    CHECK(user.Seen()[0].buttons == std::vector<int>{IDYES, IDNO});
}

TEST_CASE("a file in a folder that is not there is error 76, as every log calls it") {
    const TempFolder folder;
    Err().Clear();
    CHECK_FALSE(WriteWhole(folder.Path("none\\file"), "text", Opening::Replacing));
    CHECK(Err().Number() == 76);
    CHECK(Err().Description() == "Path not found");
    Err().Clear();
}

TEST_CASE("a box without a title names the add-in") {
    const BoxAnswerer user(IDOK);
    CHECK(ShowMessageBox("Text", 0) == IDOK);
    REQUIRE(user.Seen().size() == 1);
    CHECK(user.Seen()[0].title == "Corvella Outlook AddIn");
    CHECK_FALSE(user.Seen()[0].icon);
}

TEST_CASE("a program whose window comes a moment after it is ready is waited for, one that ends meanwhile is not") {
    const TempFolder folder;
    const Recorder recorder(folder, "a program.exe");
    const ImportPatch::Import patched[] = {
        {"USER32.dll", "WaitForInputIdle", reinterpret_cast<void*>(&IsReadyAtOnce)},
        {"USER32.dll", "GetWindowThreadProcessId", reinterpret_cast<void*>(&ProcessInFrontLater)}};
    ImportPatch patch;
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), patched) == 2);
    endsFirst = false;
    CHECK(StartProcessForInput("\"" + folder.Path("a program.exe") + "\" wait", Show::Normal));
    CHECK(looks > 1);
    TerminateProcess(readyProcess, 0);
    CloseHandle(readyProcess);
    endsFirst = true;
    CHECK_FALSE(StartProcessForInput("\"" + folder.Path("a program.exe") + "\" ends", Show::Normal));
    CHECK(looks == 1);
    CloseHandle(readyProcess);
}

TEST_CASE("style bits that Windows refuses are left out, the others kept") {
    // Wine shows a box whatever the bits are, so it is looked at what arrives.
    constexpr UINT modality = MB_TASKMODAL | MB_SETFOREGROUND;
    const BoxAnswerer user(IDOK);
    CHECK(ShowMessageBox("Text", static_cast<std::int32_t>(0xD0000040)) == IDOK);
    CHECK((lastBoxStyle & ~modality) == MB_ICONINFORMATION);
    CHECK(ShowMessageBox("Text", 0xC00000 | 0x80 | MB_OKCANCEL) == IDOK);
    CHECK((lastBoxStyle & ~modality) == MB_OKCANCEL);
    ShowMessageBox("Text", MB_RETRYCANCEL | MB_ICONERROR | MB_DEFBUTTON2);
    CHECK((lastBoxStyle & ~modality) == (MB_RETRYCANCEL | MB_ICONERROR | MB_DEFBUTTON2));
    CHECK(user.Seen().size() == 3);
}

TEST_CASE("Control and End are pressed and released with the codes of the user's keyboard") {
    ImportPatch patch;
    const ImportPatch::Import keys[] = {
        {"USER32.dll", "keybd_event", reinterpret_cast<void*>(&RecordKey)},
        {"USER32.dll", "MapVirtualKeyA", reinterpret_cast<void*>(&ScanCodeOf)},
    };
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), keys) == 2);
    pressedKeys.clear();
    SendControlEnd();
    const std::vector<PressedKey> expected = {
        {VK_CONTROL, VK_CONTROL + 1, 0},
        {VK_END, VK_END + 1, KEYEVENTF_EXTENDEDKEY},
        {VK_END, VK_END + 1, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP},
        {VK_CONTROL, VK_CONTROL + 1, KEYEVENTF_KEYUP},
    };
    CHECK(pressedKeys == expected);
}

namespace {

BOOL WINAPI NoClipboard(HWND) {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

BOOL WINAPI RefuseToEmpty() {
    SetLastError(ERROR_ACCESS_DENIED);
    return FALSE;
}

HANDLE WINAPI RefuseBitmap(UINT format, HANDLE data) {
    if (format != CF_BITMAP) return Real<decltype(&SetClipboardData)>("user32.dll", "SetClipboardData")(format, data);
    SetLastError(ERROR_ACCESS_DENIED);
    return nullptr;
}

Dispatch SmallPicture() {
    Dispatch picture = PictureOf(BitmapHandle{CreateBitmap(16, 16, 1, 1, nullptr)}, {});
    REQUIRE(picture);
    return picture;
}

std::string TextOnClipboard() {
    REQUIRE(OpenClipboard(nullptr));
    const HANDLE held = GetClipboardData(CF_TEXT);
    const char* const text = held ? static_cast<const char*>(GlobalLock(held)) : nullptr;
    std::string found = text ? text : "";
    if (text) GlobalUnlock(held);
    CloseClipboard();
    return found;
}

// Memory that ends at one allocation, and how many blocks are between here and the clipboard.
int untilMemoryEnds = 0;
int blocksHeld = 0;

void* __cdecl AllocateOrFail(std::size_t size) {
    if (untilMemoryEnds > 0 && --untilMemoryEnds == 0) return nullptr;
    static const auto real = Real<void*(__cdecl*)(std::size_t)>("msvcrt.dll", "malloc");
    return real(size);
}
HGLOBAL WINAPI CountBlock(UINT flags, SIZE_T size) {
    const HGLOBAL block = Real<decltype(&GlobalAlloc)>("kernel32.dll", "GlobalAlloc")(flags, size);
    if (block) ++blocksHeld;
    return block;
}
HGLOBAL WINAPI UncountBlock(HGLOBAL block) {
    if (block) --blocksHeld;
    return Real<decltype(&GlobalFree)>("kernel32.dll", "GlobalFree")(block);
}
HANDLE WINAPI HandOverBlock(UINT format, HANDLE data) {
    const HANDLE taken = Real<decltype(&SetClipboardData)>("user32.dll", "SetClipboardData")(format, data);
    if (taken && format != CF_BITMAP) --blocksHeld;
    return taken;
}

LPVOID WINAPI NoLock(HGLOBAL) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
}

}  // namespace

TEST_CASE("a text is put on the clipboard, and where another program holds that the caller is told") {
    CHECK(PutTextOnClipboard("a report"));
    CHECK(TextOnClipboard() == "a report");
    ImportPatch patch;
    const ImportPatch::Import imports[] = {{"USER32.dll", "OpenClipboard", reinterpret_cast<void*>(NoClipboard)}};
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 1);
    CHECK_FALSE(PutTextOnClipboard("another one"));
}

TEST_CASE("a picture that cannot be put on the clipboard leaves no bitmap behind") {
    const Dispatch picture = SmallPicture();
    ImportPatch patch;
    const ImportPatch::Import imports[] = {{"USER32.dll", "OpenClipboard", reinterpret_cast<void*>(NoClipboard)}};
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 1);
    const auto held = [&] {
        const PictureOnClipboard onClipboard(picture);
        CHECK_FALSE(static_cast<bool>(onClipboard));
        return handles::GdiObjects();
    };
    const std::uint32_t before = held();
    CHECK(held() == before);
}

TEST_CASE("a clipboard that cannot be emptied or filled gets no picture, and what was there stays or comes back") {
    const Dispatch picture = SmallPicture();
    for (const bool canBeEmptied : {false, true}) {
        CAPTURE(canBeEmptied);
        REQUIRE(PutTextOnClipboard("the user's"));
        ImportPatch patch;
        const ImportPatch::Import refusing[] = {
            canBeEmptied
                ? ImportPatch::Import{"USER32.dll", "SetClipboardData", reinterpret_cast<void*>(&RefuseBitmap)}
                : ImportPatch::Import{"USER32.dll", "EmptyClipboard", reinterpret_cast<void*>(&RefuseToEmpty)}};
        REQUIRE(patch.Replace(GetModuleHandleA(nullptr), refusing) == 1);
        {
            const PictureOnClipboard onClipboard(picture);
            CHECK_FALSE(static_cast<bool>(onClipboard));
        }
        CHECK_FALSE(ClipboardHoldsPicture());
        CHECK(TextOnClipboard() == "the user's");
    }
}

TEST_CASE("wherever memory ends while a picture goes to the clipboard, nothing is left over and the text stays") {
    const Dispatch picture = SmallPicture();
    int number = 0;
    for (bool hasEnded = true; hasEnded;) {
        ++number;
        CAPTURE(number);
        REQUIRE(number < 100);
        REQUIRE(PutTextOnClipboard("the user's"));
        const std::uint32_t before = handles::GdiObjects();
        blocksHeld = 0;
        {
            ImportPatch patch;
            const ImportPatch::Import imports[] = {
                {"msvcrt.dll", "malloc", reinterpret_cast<void*>(&AllocateOrFail)},
                {"KERNEL32.dll", "GlobalAlloc", reinterpret_cast<void*>(&CountBlock)},
                {"KERNEL32.dll", "GlobalFree", reinterpret_cast<void*>(&UncountBlock)},
                {"USER32.dll", "SetClipboardData", reinterpret_cast<void*>(&HandOverBlock)},
            };
            REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 4);
            untilMemoryEnds = number;
            try {
                const PictureOnClipboard onClipboard(picture);
            } catch (const std::bad_alloc&) {
                CHECK(untilMemoryEnds == 0);
            }
            hasEnded = untilMemoryEnds == 0;
            untilMemoryEnds = 0;
        }
        CHECK(blocksHeld == 0);
        CHECK(TextOnClipboard() == "the user's");
        CHECK(handles::GdiObjects() <= before);
    }
    CHECK(number > 2);
}

TEST_CASE("what was on the clipboard and could not be copied is not put back as something else") {
    const Dispatch picture = SmallPicture();
    REQUIRE(PutTextOnClipboard("the user's"));
    ImportPatch patch;
    const ImportPatch::Import locks[] = {{"KERNEL32.dll", "GlobalLock", reinterpret_cast<void*>(NoLock)}};
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), locks) == 1);
    {
        const PictureOnClipboard onClipboard(picture);
        CHECK(static_cast<bool>(onClipboard));
    }
    CHECK_FALSE(IsClipboardFormatAvailable(CF_TEXT));
}

namespace {

const std::string ownerThatResponds = "the process that owns the clipboard",
                  ownerThatHangs = "the process that owns the clipboard and hangs";

// A window of this process owns the clipboard, and looks after its messages or does not.
void OwnClipboard(bool responds) {
    const HWND window = CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    REQUIRE(OpenClipboard(window));
    EmptyClipboard();
    const HGLOBAL text = GlobalAlloc(GMEM_MOVEABLE, sizeof "theirs");
    std::memcpy(GlobalLock(text), "theirs", sizeof "theirs");
    GlobalUnlock(text);
    SetClipboardData(CF_TEXT, text);
    CloseClipboard();
    responds ? PumpFor(60000) : Sleep(60000);
}

DWORD OwnerOfClipboard() {
    DWORD process = 0;
    GetWindowThreadProcessId(GetClipboardOwner(), &process);
    return process;
}

}  // namespace

TEST_CASE("the process that owns the clipboard" * doctest::skip()) { OwnClipboard(true); }
TEST_CASE("the process that owns the clipboard and hangs" * doctest::skip()) { OwnClipboard(false); }

TEST_CASE("another program's text makes room for a picture and comes back, unless that program hangs") {
    for (const bool responds : {true, false}) {
        CAPTURE(responds);
        const ChildProcess owner(CommandLineOfCase(responds ? ownerThatResponds : ownerThatHangs));
        REQUIRE(PumpUntil(20000, [&] { return OwnerOfClipboard() == owner.Id(); }));
        {
            const PictureOnClipboard onClipboard(SmallPicture());
            CHECK(static_cast<bool>(onClipboard) == responds);
            CHECK(ClipboardHoldsPicture() == responds);
        }
        CHECK((OwnerOfClipboard() == owner.Id()) == !responds);
        CHECK(TextOnClipboard() == "theirs");
        CHECK_FALSE(ClipboardHoldsPicture());
    }
}

TEST_CASE("a bitmap that cannot become a picture is let go of") {
    ImportPatch patch;
    const ImportPatch::Import pictures[] = {
        {"OLEAUT32.dll", "OleCreatePictureIndirect", reinterpret_cast<void*>(&RefusePicture)}};
    REQUIRE(patch.Replace(GetModuleHandleA(nullptr), pictures) == 1);
    HBITMAP bitmap = CreateBitmap(16, 16, 1, 1, nullptr);
    Err().Clear();
    CHECK_FALSE(PictureOf({bitmap}, {}));
    CHECK(Err().Number() == OutOfMemory);
    CHECK(GetObjectType(bitmap) == 0);
    Err().Clear();
}

TEST_CASE("a timer fires again and again until it is stopped") {
    int events = 0;
    Timer timer([&] { ++events; });
    CHECK_FALSE(timer.Running());
    REQUIRE(timer.Start(20));
    CHECK(timer.Running());
    CHECK(PumpUntil(3000, [&] { return events >= 3; }));
    timer.Stop();
    const int stopped = events;
    PumpFor(100);
    CHECK(events == stopped);
    CHECK_FALSE(timer.Running());
}

TEST_CASE("starting a running timer begins its countdown anew") {
    int events = 0;
    Timer timer([&] { ++events; });
    timer.Start(300);
    PumpFor(200);
    timer.Start(300);
    PumpFor(200);
    CHECK(events == 0);
    CHECK(PumpUntil(2000, [&] { return events == 1; }));
}

TEST_CASE("a timer that was stopped after its time had passed does not fire") {
    int events = 0;
    Timer timer([&] { ++events; });
    timer.Start(20);
    Pause(100);
    timer.Stop();
    PumpFor(60);
    CHECK(events == 0);
    timer.Start(1000);
    PumpFor(100);
    CHECK(events == 0);
}

TEST_CASE("a message of an earlier arming is not the timer's event") {
    int events = 0;
    Timer timer([&] { ++events; });
    timer.Start(1000);
    timer.Fire(0);
    CHECK(events == 0);
    timer.Stop();
    timer.Fire(1);
    CHECK(events == 0);
}

TEST_CASE("a timer may end itself in its own event") {
    std::unique_ptr<Timer> timer;
    int events = 0;
    timer = std::make_unique<Timer>([&] {
        const std::string held(100, 'x');
        timer.reset();
        if (held == std::string(100, 'x')) ++events;
    });
    timer->Start(20);
    CHECK(PumpUntil(3000, [&] { return events == 1; }));
    CHECK(timer == nullptr);
    PumpFor(100);
    CHECK(events == 1);
    CHECK_FALSE(TimerClassExists());
}

TEST_CASE("an exception in a timer's event goes no further and is the pending error") {
    Timer timer([]() -> void { throw 1; });
    timer.Start(20);
    CHECK(PumpUntil(3000, [] { return Err().Number() == InvalidProcedureCall; }));
    Err().Clear();
}

TEST_CASE("the library stays loaded, and the window class registered, as long as a timer lives") {
    CHECK_FALSE(IsKeptLoaded());
    {
        Timer one([] {});
        {
            Timer two([] {});
            CHECK(TimerClassExists());
        }
        CHECK(TimerClassExists());
        CHECK(IsKeptLoaded());
    }
    CHECK_FALSE(TimerClassExists());
    CHECK_FALSE(IsKeptLoaded());
}

TEST_CASE("a window class that an earlier load of the library left behind is replaced") {
    WNDCLASSA left{};
    left.lpfnWndProc = DefWindowProcA;
    left.hInstance = ModuleHandle();
    left.lpszClassName = "CorvellaTimer";
    REQUIRE(RegisterClassA(&left) != 0);
    int events = 0;
    Timer timer([&] { ++events; });
    timer.Start(20);
    CHECK(PumpUntil(3000, [&] { return events > 0; }));
}
