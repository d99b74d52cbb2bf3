// A text looked up in the language file against the same lookup through Windows' own function, and what loading a
// language costs when the host starts.
#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "bench/Bench.h"
#include "config/IniFile.h"
#include "language/Language.h"
#include "support/Files.h"

namespace {

constexpr int rounds = 21;
constexpr int calls = 200;
constexpr double target = 0.2;  // five times as fast

std::string folder;

// As large as the language files that the add-in comes with.
void WriteLanguage(const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    file << "Corvella language file\r\n";
    for (const char* section : {"Info", "Misc", "OutlookAddIn", "FormOlAddInOptions", "FormQuestion", "Messages"}) {
        file << "\r\n[" << section << "]\r\n";
        for (int key = 0; key < 12; ++key) file << "Key" << key << "=A text as long as most are, and its &key\r\n";
    }
}

}  // namespace

int main(int argc, char** argv) {
    char temporary[MAX_PATH];
    GetTempPathA(MAX_PATH, temporary);
    folder = std::string(temporary) + "cv-bench-language\\";
    CreateDirectoryA(folder.c_str(), nullptr);
    const std::string file = folder + "English.lng";
    WriteLanguage(file);
    Files::Plug({.applicationPath = [] { return folder; }});
    IniFile::location = {folder + "corvella.ini", folder + "corvella.ini", 0};

    if (Language::GetLanguageString("FormQuestion", "Key11").empty()) return 2;  // nothing would be measured
    Bench::Report report;
    const auto nothing = [] {};
    report.Add("GetLanguageString, as GetPrivateProfileStringA",
               Bench::TakeTurns(
                   rounds, calls, nothing,
                   [&] {
                       char text[256];
                       GetPrivateProfileStringA("FormQuestion", "Key11", "", text, sizeof text, file.c_str());
                   },
                   [&] {
                       const std::string text = Language::GetLanguageString("FormQuestion", "Key11");
                       Bench::Touch();
                   }),
               target);
    report.Add("loading the language at the start", Bench::MedianOf(rounds, 20, [] {
                   IniFile::IniInit(false);
                   Language::LangInit();
               }));
    DeleteFileA(file.c_str());
    RemoveDirectoryA(folder.c_str());
    return report.Finish(argc, argv);
}
