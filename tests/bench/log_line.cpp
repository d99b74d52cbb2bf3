// A line of the debug log against a file that is opened, appended to and closed.
#include <windows.h>

#include "bench/Bench.h"
#include "support/Debug.h"

namespace {

constexpr int rounds = 101;
constexpr int calls = 20;  // so short that a busy machine disturbs few of the rounds
constexpr double target = 1.2;

std::string Folder() {
    char temp[MAX_PATH];
    GetTempPathA(sizeof temp, temp);
    return temp;
}

void AppendBare(const std::string& path, const char* line, DWORD size) {
    const HANDLE file =
        CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    WriteFile(file, line, size, &written, nullptr);
    CloseHandle(file);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string bareFile = Folder() + "corvella-bench-bare.txt";
    const std::string logFile = Folder() + "corvella-bench-log.txt";
    const std::string line = " <AddChangedItem>_\r\n";
    const std::string stamped = "45296.13: <AddChangedItem>_\r\n";
    Debug::state.DebugActive = true;
    Debug::state.DebugFile = logFile;
    const auto prepare = [&] {
        DeleteFileA(bareFile.c_str());
        DeleteFileA(logFile.c_str());
        Debug::state.DebugIndent.clear();
    };
    const auto entry = [] { Debug::WriteDebug("AddChangedItem", 0); };

    Bench::Report report;
    Debug::state.DebugLevel = 1;
    report.Add(
        "one log line",
        Bench::TakeTurns(
            rounds, calls, prepare, [&] { AppendBare(bareFile, line.data(), static_cast<DWORD>(line.size())); }, entry),
        target);
    Debug::state.DebugLevel = 17;
    report.Add("one log line with time stamp",
               Bench::TakeTurns(
                   rounds, calls, prepare,
                   [&] { AppendBare(bareFile, stamped.data(), static_cast<DWORD>(stamped.size())); }, entry),
               target);
    prepare();
    return report.Finish(argc, argv);
}
