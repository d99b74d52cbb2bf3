// A settings file that others write at the same moment, or that Windows cannot be asked about just then. Only the
// failing circumstance is made: Windows' own function fails once, or another handle writes the file.
#include <doctest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <utility>

#include "config/IniCache.h"
#include "config/IniFile.h"
#include "platform/WholeFile.h"
#include "testing/ImportPatch.h"
#include "testing/TempFolder.h"

using namespace IniFile;

namespace {

class Settings {
  public:
    Settings() {
        location = {folder.Path("corvella.ini"), folder.Path("corvella.ini"), 0};
        IniInit(false);
    }
    ~Settings() {
        platform::WatchFiles(nullptr);
        location = {};
        IniInit(false);
    }
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    void File(const std::string& bytes) const { folder.Write("corvella.ini", bytes); }
    [[nodiscard]] std::string File() const { return folder.Read("corvella.ini"); }

    TempFolder folder;
};

const std::string fill(2700, 'x');
std::string Text(const std::string& value) { return "[Fill]\r\nf=" + fill + "\r\n[S]\r\nk=" + value + "\r\n"; }

// --- Windows' answer about a file, failing so many times

int attributeFailures = 0;
DWORD attributeError = 0;
bool AttributesFail() {
    if (attributeFailures == 0) return false;
    --attributeFailures;
    SetLastError(attributeError);
    return true;
}
DWORD WINAPI Attributes(LPCSTR path) {
    return AttributesFail() ? INVALID_FILE_ATTRIBUTES
                            : GetFileAttributesW(std::wstring(path, path + lstrlenA(path)).c_str());
}
BOOL WINAPI AttributesEx(LPCSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data) {
    return AttributesFail() ? FALSE
                            : GetFileAttributesExW(std::wstring(path, path + lstrlenA(path)).c_str(), level, data);
}

class FailingAttributes {
  public:
    FailingAttributes(int times, DWORD error) {
        const ImportPatch::Import imports[] = {
            {"KERNEL32.dll", "GetFileAttributesA", reinterpret_cast<void*>(Attributes)},
            {"KERNEL32.dll", "GetFileAttributesExA", reinterpret_cast<void*>(AttributesEx)}};
        REQUIRE(patch_.Replace(GetModuleHandleA(nullptr), imports) == 2);
        attributeFailures = times;
        attributeError = error;
    }
    ~FailingAttributes() { attributeFailures = 0; }
    FailingAttributes(const FailingAttributes&) = delete;
    FailingAttributes& operator=(const FailingAttributes&) = delete;

  private:
    ImportPatch patch_;
};

// --- somebody else who writes the file

std::string file;

HANDLE OpenEmptied() {
    return CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_ALWAYS, 0,
                       nullptr);
}
void Write(HANDLE handle, const std::string& bytes) {
    DWORD written = 0;
    WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}
void Save(const std::string& bytes) {
    const HANDLE handle = OpenEmptied();
    Write(handle, bytes);
    CloseHandle(handle);
}

// What is done while we pause for the third time, however quick the machine is.
int pausesToGo = 0;
std::function<void()> atPause;
void WINAPI PauseWhile(DWORD milliseconds) {
    if (atPause && --pausesToGo == 0) std::exchange(atPause, nullptr)();
    SleepEx(milliseconds, FALSE);
}

class WhileWePause {
  public:
    explicit WhileWePause(std::function<void()> work) {
        const ImportPatch::Import imports[] = {{"KERNEL32.dll", "Sleep", reinterpret_cast<void*>(PauseWhile)}};
        REQUIRE(patch_.Replace(GetModuleHandleA(nullptr), imports) == 1);
        pausesToGo = 3;
        atPause = std::move(work);
    }
    ~WhileWePause() {
        CHECK_FALSE(static_cast<bool>(atPause));  // it was done
        atPause = nullptr;
    }
    WhileWePause(const WhileWePause&) = delete;
    WhileWePause& operator=(const WhileWePause&) = delete;

  private:
    ImportPatch patch_;
};

// What is done once, right before the first such step of ours.
std::string stepOfInterest;
std::function<void()> atStep;
std::uint32_t DoAtStep(const char* step) {
    if (step == stepOfInterest) std::exchange(atStep, [] {})();
    return 0;
}
std::function<void()> atMove;
BOOL WINAPI Move(LPCSTR from, LPCSTR to, DWORD how) {
    if (atMove) std::exchange(atMove, nullptr)();
    return MoveFileExW(std::wstring(from, from + lstrlenA(from)).c_str(), std::wstring(to, to + lstrlenA(to)).c_str(),
                       how);
}

void Before(const char* step, std::function<void()> work) {
    stepOfInterest = step;
    atStep = std::move(work);
    platform::WatchFiles(DoAtStep);
}

}  // namespace

TEST_SUITE_BEGIN("a settings file in bad weather");

TEST_CASE("one failing question about the settings file loses nothing of it, and the value is written") {
    for (const DWORD error : {DWORD{ERROR_NETNAME_DELETED}, DWORD{ERROR_BAD_NETPATH}, DWORD{ERROR_ACCESS_DENIED},
                              DWORD{ERROR_NOT_ENOUGH_MEMORY}}) {
        CAPTURE(error);
        const Settings settings;
        settings.File(Text("v"));
        const FailingAttributes failing(1, error);
        CHECK(SetIniSetting("S", "k", "new value", true));
        CHECK(settings.File() == Text("new value"));
    }
}

TEST_CASE("a settings file about which Windows tells nothing is unreadable: not written, and not taken for empty") {
    const Settings settings;
    settings.File(Text("v"));
    {
        const FailingAttributes failing(10000, ERROR_NETNAME_DELETED);
        CHECK(GetIniSetting("S", "k", "d") == "d");
        CHECK_FALSE(SetIniSetting("S", "k", "new value", true));
    }
    CHECK(settings.File() == Text("v"));
    CHECK(GetIniSetting("S", "k", "d") == "v");
}

TEST_CASE("while Windows tells nothing about a file that is held, reads give what is held") {
    const Settings settings;
    settings.File(Text("v"));
    CHECK(GetIniSetting("S", "k", "d") == "v");
    const FailingAttributes failing(1, ERROR_NETNAME_DELETED);
    CHECK(GetIniSetting("S", "k", "d") == "v");
}

TEST_CASE("a file that Windows calls not found is missing, and the first write makes it") {
    for (const DWORD error : {DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_PATH_NOT_FOUND}}) {
        const FailingAttributes failing(1, error);
        CHECK_FALSE(platform::StampOf("C:\\x").exists);
        attributeFailures = 1;
        CHECK_FALSE(platform::StampOf("C:\\x").unknown);
    }
}

TEST_CASE("a write waits while another process saves the file, and adds to what that has saved") {
    const Settings settings;
    settings.File(Text("v"));
    file = location.CurrentFile;
    const HANDLE handle = OpenEmptied();
    Write(handle, Text("theirs").substr(0, 1000));
    {
        const WhileWePause saving([&] {
            Write(handle, Text("theirs").substr(1000));
            CloseHandle(handle);
        });
        CHECK(SetIniSetting("T", "ours", "1", true));
    }
    CHECK(settings.File() == Text("theirs") + "\r\n[T]\r\nours=1\r\n");
}

TEST_CASE("a read while another process saves the file waits for the saved text") {
    const Settings settings;
    settings.File(Text("v"));
    file = location.CurrentFile;
    const HANDLE handle = OpenEmptied();
    const WhileWePause saving([&] {
        Write(handle, Text("theirs"));
        CloseHandle(handle);
    });
    CHECK(GetIniSetting("S", "k", "d") == "theirs");
}

TEST_CASE("a file that another process keeps open for writing can be read, and is not written") {
    const Settings settings;
    settings.File(Text("v"));
    file = location.CurrentFile;
    const HANDLE handle = CreateFileA(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr);
    CHECK(GetIniSetting("S", "k", "d") == "v");
    CHECK_FALSE(SetIniSetting("S", "k", "ours", true));
    CloseHandle(handle);
    CHECK(settings.File() == Text("v"));
    CHECK(SetIniSetting("S", "k", "ours", true));
    CHECK(settings.File() == Text("ours"));
}

TEST_CASE("what another process saves right before our text would replace the file stays, and ours is added to it") {
    for (const char* const step : {"make", "flush", "replace"}) {
        CAPTURE(step);
        const Settings settings;
        settings.File(Text("v"));
        file = location.CurrentFile;
        Before(step, [] { Save(Text("theirs")); });
        CHECK(SetIniSetting("T", "ours", "1", true));
        CHECK(settings.File() == Text("theirs") + "\r\n[T]\r\nours=1\r\n");
        CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
        CHECK(GetIniSetting("T", "ours") == "1");
        CHECK(GetIniSetting("S", "k") == "theirs");
    }
}

TEST_CASE("what cannot be added to a file that another process saves and keeps open is dropped, as on a full disk") {
    const Settings settings;
    settings.File(Text("v"));
    file = location.CurrentFile;
    HANDLE handle = INVALID_HANDLE_VALUE;
    Before("replace", [&] {
        handle = OpenEmptied();
        Write(handle, Text("theirs"));
    });
    CHECK(SetIniSetting("T", "ours", "1", true));  // there was something to write
    CHECK(settings.File() == Text("theirs"));
    CloseHandle(handle);
    CHECK(SetIniSetting("T", "later", "2", true));
    CHECK(settings.File() == Text("theirs") + "\r\n[T]\r\nlater=2\r\n");
}

TEST_CASE("what another process saves between the last look at the file and its replacement stays") {
    for (const bool hasSecondName : {true, false}) {
        CAPTURE(hasSecondName);
        const Settings settings;
        settings.File(Text("v"));
        if (!hasSecondName) CreateDirectoryA(settings.folder.Path("corvella.ini.CVOutlookAddIn.old").c_str(), nullptr);
        file = location.CurrentFile;
        atMove = [] { Save(Text("theirs")); };
        ImportPatch patch;
        const ImportPatch::Import imports[] = {{"KERNEL32.dll", "MoveFileExA", reinterpret_cast<void*>(Move)}};
        REQUIRE(patch.Replace(GetModuleHandleA(nullptr), imports) == 1);
        CHECK(SetIniSetting("T", "ours", "1", true));
        CHECK(settings.File() == Text(hasSecondName ? "theirs" : "v") + "\r\n[T]\r\nours=1\r\n");
        CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
        CHECK(GetIniSetting("T", "ours") == "1");
        atMove = nullptr;
        if (hasSecondName) CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.old"));
    }
}

TEST_CASE("what another process saves right before a value is written where it stands stays") {
    const Settings settings;
    settings.File(Text("v") + "[T]\r\nours=0\r\n");
    file = location.CurrentFile;
    CHECK(GetIniSetting("T", "ours") == "0");
    Before("open", [] { Save(Text("w") + "[T]\r\nours=0\r\n"); });
    CHECK(SetIniSetting("T", "ours", "1", true));
    CHECK(settings.File() == Text("w") + "[T]\r\nours=1\r\n");
}

TEST_CASE("what another process saves before a file that must be overwritten in place is opened stays") {
    const Settings settings;
    settings.File(Text("v"));
    CreateDirectoryA(settings.folder.Path("corvella.ini.CVOutlookAddIn.tmp").c_str(), nullptr);
    file = location.CurrentFile;
    Before("open", [] { Save(Text("theirs")); });
    CHECK(SetIniSetting("T", "ours", "1", true));
    CHECK(settings.File() == Text("theirs") + "\r\n[T]\r\nours=1\r\n");
}

TEST_CASE("what another process makes while a missing file is about to be written stays") {
    const Settings settings;
    file = location.CurrentFile;
    Before("replace", [] { Save(Text("theirs")); });
    CHECK(SetIniSetting("T", "ours", "1", true));
    CHECK(settings.File() == Text("theirs") + "\r\n[T]\r\nours=1\r\n");
}

TEST_CASE("what another process saves before our text is verified stays") {
    const Settings settings;
    settings.File(Text("v"));
    file = location.CurrentFile;
    CHECK(GetIniSetting("S", "k") == "v");
    Before("read", [] { Save(Text("theirs")); });  // the next reading is that of verifying
    CHECK(SetIniSetting("S", "k", "ours", true));
    CHECK(settings.File() == Text("theirs"));
    CHECK(GetIniSetting("S", "k") == "theirs");
}

TEST_CASE("a file that is empty for a moment while another process saves it is not taken for an empty one") {
    for (const bool removed : {false, true}) {
        CAPTURE(removed);
        const Settings settings;
        settings.File(Text("v"));
        file = location.CurrentFile;
        if (removed) {
            DeleteFileA(file.c_str());
        } else {
            CloseHandle(OpenEmptied());
        }
        {
            const WhileWePause saving([] { Save(Text("theirs")); });
            CHECK(SetIniSetting("T", "ours", "1", true));
        }
        CHECK(settings.File() == Text("theirs") + "\r\n[T]\r\nours=1\r\n");
    }
}

TEST_CASE("unwritten changes of several keys are all made in the text that another process has saved") {
    const Settings settings;
    settings.File(Text("v"));
    file = location.CurrentFile;
    CHECK(SetIniSetting("S", "a", "1", false));
    CHECK(SetIniSetting("S", "b", "2", false));
    Save(Text("theirs"));
    IniInit(false);
    CHECK(settings.File() == Text("theirs").substr(0, Text("theirs").size() - 2) + "\r\na=1\r\nb=2\r\n");
}

TEST_CASE("a file of the user's own beside the settings file stays, and what a crash left there goes") {
    const Settings settings;
    settings.File(Text("v"));
    settings.folder.Write("corvella.ini.new", "the user's own");
    settings.folder.Write("corvella.ini.CVOutlookAddIn.tmp", "half of a te");
    CHECK(SetIniSetting("S", "k", "a longer value", true));
    CHECK(settings.File() == Text("a longer value"));
    CHECK(settings.folder.Read("corvella.ini.new") == "the user's own");
    CHECK_FALSE(settings.folder.Exists("corvella.ini.CVOutlookAddIn.tmp"));
}

TEST_SUITE_END();
