// The other process of the settings tests:
//   settings_helper put <file> <source>        puts the bytes of <source> into <file>, as it is
//   settings_helper kill <step> <file> <value> writes key "k" of section "Kill" and ends itself before that step
//   settings_helper profile <file> <section> <key> <value>   through Windows' own writer
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include "config/IniFile.h"
#include "platform/WholeFile.h"

namespace {

int stepsLeft = 0;

std::uint32_t EndAtStep(const char*) {
    if (--stepsLeft == 0) TerminateProcess(GetCurrentProcess(), 99);
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string what = count > 1 ? arguments[1] : "";
    if (what == "put" && count == 4) {
        const auto bytes = platform::ReadWhole(arguments[3]);
        return bytes && platform::WriteWhole(arguments[2], *bytes, platform::Opening::Replacing) ? 0 : 1;
    }
    if (what == "kill" && count == 5) {
        stepsLeft = std::atoi(arguments[2]);
        platform::WatchFiles(EndAtStep);
        return IniFile::WriteToIniFile(arguments[3], "Kill", "k", arguments[4], true) ? 0 : 1;
    }
    if (what == "profile" && count == 6) {
        return WritePrivateProfileStringA(arguments[3], arguments[4], arguments[5], arguments[2]) ? 0 : 1;
    }
    return 2;
}
