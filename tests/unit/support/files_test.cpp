// Files and folders as the procedures use them: names, dates, copies, what is missing.
#include "support/Files.h"

#include <doctest.h>
#include <windows.h>

#include <string>

#include "platform/Err.h"
#include "platform/WholeFile.h"
#include "testing/AnsweringPrompt.h"
#include "testing/ComForTests.h"
#include "testing/DebugLog.h"
#include "testing/TempFolder.h"

using namespace Files;

namespace {

// Keeps others from opening the file for as long as it lives.
class Locked {
  public:
    explicit Locked(const std::string& path)
        : file_(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr)) {
        REQUIRE(file_ != INVALID_HANDLE_VALUE);
    }
    ~Locked() { Release(); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    void Release() {
        if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
        file_ = INVALID_HANDLE_VALUE;
    }

  private:
    HANDLE file_;
};

void SetTime(const std::string& path, WORD year) {
    SYSTEMTIME when{};
    when.wYear = year;
    when.wMonth = 3;
    when.wDay = 4;
    when.wHour = 5;
    FILETIME time;
    REQUIRE(SystemTimeToFileTime(&when, &time));
    const HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    REQUIRE(file != INVALID_HANDLE_VALUE);
    REQUIRE(SetFileTime(file, nullptr, nullptr, &time));
    CloseHandle(file);
}

}  // namespace

TEST_SUITE_BEGIN("what exists");

TEST_CASE("a path in double quotes without blanks is tested without its quotes") {
    const TempFolder folder;
    folder.Write("a.txt", "x");
    const std::string path = folder.Path("a.txt");
    // The folder's own name may hold blanks; a short name never does.
    char shortPath[MAX_PATH];
    REQUIRE(GetShortPathNameA(path.c_str(), shortPath, sizeof shortPath) != 0);
    REQUIRE(std::string(shortPath).find(' ') == std::string::npos);
    CHECK(FileExists(shortPath));
    CHECK(FileExists("\"" + std::string(shortPath) + "\""));
    CHECK_FALSE(FileExists("\"" + std::string(shortPath)));
}

TEST_CASE("a quoted path that contains a blank keeps its quotes and is reported missing") {
    const TempFolder folder;
    folder.Write("a b.txt", "x");
    CHECK(FileExists(folder.Path("a b.txt")));
    CHECK_FALSE(FileExists("\"" + folder.Path("a b.txt") + "\""));
}

TEST_CASE("a folder exists as a file does, but only a folder exists as a folder") {
    const TempFolder folder;
    folder.Write("a.txt", "x");
    CHECK(FileExists(folder.Path()));
    CHECK(FolderExists(folder.Path()));
    CHECK_FALSE(FolderExists(folder.Path("a.txt")));
    CHECK_FALSE(FolderExists(folder.Path("missing")));
    CHECK_FALSE(FileExists(folder.Path("missing")));
    CHECK_FALSE(FileExists(""));
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("dates and paths from the scripting object");

TEST_CASE("the date of a file is told, and that of a missing one is the empty text") {
    const TempFolder folder;
    folder.Write("a.txt", "x");
    folder.Write("b.txt", "x");
    SetTime(folder.Path("a.txt"), 2003);
    SetTime(folder.Path("b.txt"), 2004);
    CHECK(GetFileDate(folder.Path("a.txt")).find("03") != std::string::npos);
    CHECK(GetFileDate(folder.Path("a.txt")) != GetFileDate(folder.Path("b.txt")));
    CHECK(GetFileDate(folder.Path("missing")).empty());
    CHECK(GetFileDate(folder.Path("missing"), true).empty());
}

TEST_CASE("a path is told as the scripting object reports it, a missing file's as it is") {
    const TempFolder folder;
    folder.Write("a.txt", "x");
    CHECK(GetFileFolderPath(folder.Path("x\\..\\a.txt")) == folder.Path("a.txt"));
    CHECK(GetFileFolderPath(folder.Path("x\\..\\b.txt")) == folder.Path("x\\..\\b.txt"));
}

TEST_CASE("a question that fails leaves the caller's pending error alone") {
    platform::Err().Set(7000, "the caller's");
    (void)GetFileDate("C:\\missing\\x", true);
    (void)GetFileFolderPath("C:\\missing\\x");
    (void)GetFileContents("C:\\missing\\x");
    CHECK(platform::Err().Number() == 7000);
    platform::Err().Clear();
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("folders");

TEST_CASE("a folder is made with all that is missing above it") {
    const TempFolder folder;
    MkDir_(folder.Path("a\\b\\c"));
    CHECK(FolderExists(folder.Path("a\\b\\c")));
}

TEST_CASE("a folder that cannot be made is logged") {
    const TempFolder folder;
    folder.Write("taken", "x");
    const DebugLog log;
    MkDir_(folder.Path("taken"));
    CHECK(log.Holds("<MkDir_>_"));
    CHECK(log.Holds("183:"));  // Windows: it exists already
    CHECK(platform::Err().Number() == 0);
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("copying");

TEST_CASE("a file is copied over another") {
    const TempFolder folder;
    folder.Write("a.txt", "new");
    folder.Write("b.txt", "old");
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("b.txt"), false);
    CHECK(folder.Read("b.txt") == "new");
}

TEST_CASE("a destination without a dot behind its last backslash is a folder") {
    const TempFolder folder;
    folder.Write("a.txt", "x");
    MkDir_(folder.Path("one"));
    MkDir_(folder.Path("two"));
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("one"), false);
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("two\\"), false);
    CHECK(folder.Read("one\\a.txt") == "x");
    CHECK(folder.Read("two\\a.txt") == "x");
}

TEST_CASE("only if changed, a copy of the same date stays and one of another date is replaced") {
    const TempFolder folder;
    folder.Write("a.txt", "new");
    folder.Write("b.txt", "old");
    SetTime(folder.Path("a.txt"), 2003);
    SetTime(folder.Path("b.txt"), 2003);
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("b.txt"), true);
    CHECK(folder.Read("b.txt") == "old");
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("b.txt"), false);
    CHECK(folder.Read("b.txt") == "new");
    folder.Write("b.txt", "old");
    SetTime(folder.Path("b.txt"), 2002);
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("b.txt"), true);
    CHECK(folder.Read("b.txt") == "new");
}

TEST_CASE("without a source nothing is copied and nothing deleted") {
    const TempFolder folder;
    folder.Write("b.txt", "old");
    CopyFileIfChanged(folder.Path("a.txt"), folder.Path("b.txt"), false);
    CHECK(folder.Read("b.txt") == "old");
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("reading a whole file");

TEST_CASE("a file is read byte for byte") {
    const TempFolder folder;
    const std::string bytes("a\0b\r\n\x1A\xFF\n", 8);
    folder.Write("a.txt", bytes);
    CHECK(GetFileContents(folder.Path("a.txt")) == bytes);
}

TEST_CASE("a byte-order mark is taken off and told") {
    const TempFolder folder;
    folder.Write("a.txt", "\xFF\xFE[");
    folder.Write("b.txt", "\xFE\xFF[");
    folder.Write("c.txt", "[");
    std::int32_t result = 7;
    CHECK(GetFileContents(folder.Path("a.txt"), 0, &result) == "[");
    CHECK(result == 2);
    CHECK(GetFileContents(folder.Path("b.txt"), 0, &result) == "[");
    CHECK(result == 4);
    CHECK(GetFileContents(folder.Path("c.txt"), 0, &result) == "[");
    CHECK(result == 0);
}

TEST_CASE("a missing file reads as the empty text and is logged") {
    const TempFolder folder;
    const DebugLog log;
    std::int32_t result = 7;
    CHECK(GetFileContents(folder.Path("missing"), 0, &result).empty());
    CHECK(result == unreadable);
    CHECK(log.Text() == "File not found:" + folder.Path("missing") + "\r\n");
}

namespace {
int opened = 0;
int letGoAt = 0;
Locked* lock = nullptr;
std::uint32_t CountOpening(const char* step) {
    if (std::string(step) == "read" && ++opened == letGoAt) lock->Release();
    return 0;
}
}  // namespace

TEST_CASE("a file that cannot be opened is tried again, sixteen times in all") {
    const TempFolder folder;
    folder.Write("a.txt", "x");
    Locked held(folder.Path("a.txt"));
    lock = &held;
    platform::WatchFiles(CountOpening);
    opened = letGoAt = 0;
    CHECK(GetFileContents(folder.Path("a.txt")).empty());
    CHECK(opened == 16);
    opened = 0;
    letGoAt = 3;
    CHECK(GetFileContents(folder.Path("a.txt")) == "x");
    CHECK(opened == 3);
    platform::WatchFiles(nullptr);
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("writing a whole file");

TEST_CASE("a text replaces what was there or is added to it, without a line end") {
    const TempFolder folder;
    CHECK(WriteFileConents(folder.Path("a.txt"), "one"));
    CHECK(folder.Read("a.txt") == "one");
    CHECK(WriteFileConents(folder.Path("a.txt"), "2"));
    CHECK(folder.Read("a.txt") == "2");
    CHECK(WriteFileConents(folder.Path("a.txt"), "3", true));
    CHECK(folder.Read("a.txt") == "23");
    CHECK(WriteFileConents(folder.Path("b.txt"), "new", true));
    CHECK(folder.Read("b.txt") == "new");
}

TEST_CASE("missing folders are made first") {
    const TempFolder folder;
    CHECK(WriteFileConents(folder.Path("a\\b\\c.txt"), "x"));
    CHECK(folder.Read("a\\b\\c.txt") == "x");
}

TEST_CASE("a ? and a / in the path are written as _") {
    const TempFolder folder;
    CHECK(WriteFileConents(folder.Path("x?y.txt"), "1"));
    CHECK(folder.Read("x_y.txt") == "1");
    CHECK(WriteFileConents(folder.Path("u/v.txt"), "2"));
    CHECK(folder.Read("u_v.txt") == "2");
}

TEST_CASE("an empty path is not written") { CHECK_FALSE(WriteFileConents("", "x")); }

TEST_CASE("encodings 0 and 1 write the text as it is given") {
    const TempFolder folder;
    const std::string text("\xE4\0z", 3);
    CHECK(WriteFileConents(folder.Path("a.txt"), text, false, 0));
    CHECK(folder.Read("a.txt") == text);
    CHECK(WriteFileConents(folder.Path("a.txt"), text, false, 1));
    CHECK(folder.Read("a.txt") == text);
}

TEST_CASE("encoding 2 writes little-endian characters of two bytes behind their mark") {
    const TempFolder folder;
    CHECK(WriteFileConents(folder.Path("a.txt"), "A\x80", false, 2));
    CHECK(folder.Read("a.txt") == std::string("\xFF\xFE"
                                              "A\0\xAC\x20",
                                              6));
    std::int32_t result = 0;
    CHECK(GetFileContents(folder.Path("a.txt"), 0, &result).size() == 4);
    CHECK(result == 2);
}

TEST_CASE("encoding 3 writes big-endian characters without a mark") {
    const TempFolder folder;
    CHECK(WriteFileConents(folder.Path("a.txt"), "A\x80", false, 3));
    CHECK(folder.Read("a.txt") == std::string("\0A\x20\xAC", 4));
}

TEST_CASE("a file that cannot be written is shown to the user only when asked for, and not on drive m:") {
    AnsweringPrompt user;
    const TempFolder folder;
    MkDir_(folder.Path("taken.txt"));
    const std::string path = folder.Path("taken.txt");
    CHECK_FALSE(WriteFileConents(path, "x"));
    CHECK(user.asked.empty());
    CHECK_FALSE(WriteFileConents(path, "x", false, 0, true));
    REQUIRE(user.asked.size() == 1);
    const std::string begin = "Error writing file: " + path + ", ";
    CHECK(user.asked[0].text.substr(0, begin.size()) == begin);
    CHECK(user.asked[0].text.size() > begin.size());
    CHECK_FALSE(WriteFileConents("M:\\x.txt", "x", false, 0, true));
    CHECK_FALSE(WriteFileConents("m:\\x.txt", "x", false, 0, true));
    CHECK(user.asked.size() == 1);
}

namespace {
int failures = 0;
int openings = 0;
std::uint32_t FailOpening(const char* step) {
    if (std::string(step) != "open") return 0;
    ++openings;
    return failures-- > 0 ? 5u : 0u;
}
}  // namespace

TEST_CASE("error 5 is tried again at most twice") {
    const TempFolder folder;
    platform::WatchFiles(FailOpening);
    failures = 2;
    openings = 0;
    CHECK(WriteFileConents(folder.Path("a.txt"), "x"));
    CHECK(openings == 3);
    failures = 3;
    openings = 0;
    CHECK_FALSE(WriteFileConents(folder.Path("b.txt"), "x"));
    CHECK(openings == 3);
    platform::WatchFiles(nullptr);
    CHECK_FALSE(folder.Exists("b.txt"));
}

TEST_CASE("a path whose folder cannot be made is tried twice and given up") {
    const TempFolder folder;
    folder.Write("taken", "x");
    platform::WatchFiles(FailOpening);
    failures = 0;
    openings = 0;
    CHECK_FALSE(WriteFileConents(folder.Path("taken\\a\\b.txt"), "x"));
    CHECK(openings == 2);
    platform::WatchFiles(nullptr);
}

TEST_SUITE_END();
TEST_SUITE_BEGIN("the scripting object");

namespace {

int creations = 0;
int succeedAt = 0;  // from that one on; 0: never
std::vector<std::string> commands;

platform::Dispatch Create() {
    if (++creations >= succeedAt && succeedAt != 0) return platform::CreateObject("Scripting.FileSystemObject");
    platform::Err().Set(429, "no such class");
    return {};
}
bool Start(const std::string& command) {
    commands.push_back(command);
    return true;
}
double Version() { return 5.1; }

struct Plugged {
    explicit Plugged(int success) : earlier(Plug({nullptr, Create, Start, Version})) {
        creations = 0;
        succeedAt = success;
        commands.clear();
    }
    ~Plugged() { Plug(earlier); }
    Plugged(const Plugged&) = delete;
    Plugged& operator=(const Plugged&) = delete;
    Ports earlier;
};

}  // namespace

TEST_CASE("the object is made once and kept, and Windows' version recorded") {
    const Plugged plugged(1);
    CHECK(WindowsVersion() == 0);
    CHECK(EnsureFileSystemObject());
    CHECK(EnsureFileSystemObject());
    CHECK(creations == 1);
    CHECK(WindowsVersion() == 5.1);
    CHECK(FileSystem().Text("GetFileName", "C:\\a\\b.txt") == "b.txt");
    CHECK(commands.empty());
}

TEST_CASE("an object that was let go of is made anew for who needs one") {
    const Plugged plugged(1);
    CHECK(EnsureFileSystemObject());
    LetGo();
    LetGo();
    CHECK(creations == 1);
    CHECK(FileSystem().Text("GetFileName", "C:\\a\\b.txt") == "b.txt");
    CHECK(creations == 2);
}

TEST_CASE("a library that is not registered is registered once, and the object then made") {
    const Plugged plugged(3);
    AnsweringPrompt user;
    CHECK(EnsureFileSystemObject());
    char windows[MAX_PATH];
    GetEnvironmentVariableA("windir", windows, sizeof windows);
    REQUIRE(commands.size() == 1);
    // By its full path: one of that name in the current folder is not started.
    char system[MAX_PATH];
    GetSystemDirectoryA(system, sizeof system);
    CHECK(commands[0] == "\"" + std::string(system) + "\\regsvr32.exe\" /s \"" + windows + "\\system32\\scrrun.dll\"");
    CHECK(user.asked.empty());
}

TEST_CASE("without the object the user is told and the library registered, once, and files read as missing") {
    const Plugged plugged(0);
    AnsweringPrompt user;
    platform::Err().Set(7000, "the caller's");
    CHECK_FALSE(EnsureFileSystemObject());
    CHECK_FALSE(EnsureFileSystemObject());
    CHECK(platform::Err().Number() == 7000);
    platform::Err().Clear();
    CHECK(commands.size() == 1);
    REQUIRE(user.asked.size() == 1);
    CHECK(user.asked[0].text == "Make sure the file scrrun.dll is in your Windows System32 directory and registered!");
    CHECK(user.asked[0].buttons == 48);
    CHECK(GetFileDate("C:\\windows\\win.ini").empty());
    CHECK(GetFileFolderPath("C:\\x") == "C:\\x");
}

TEST_CASE("where KDEHOME is set nobody is told") {
    const Plugged plugged(0);
    AnsweringPrompt user;
    SetEnvironmentVariableA("KDEHOME", "/home/user/.kde");
    CHECK_FALSE(EnsureFileSystemObject());
    SetEnvironmentVariableA("KDEHOME", nullptr);
    CHECK(user.asked.empty());
}

TEST_SUITE_END();
