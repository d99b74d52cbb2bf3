#include "shell/WindowsMiscHelp.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Clock.h"
#include "platform/Desktop.h"
#include "platform/Environment.h"
#include "platform/Err.h"
#include "platform/Process.h"
#include "platform/Text.h"
#include "shell/ExecText.h"
#include "shell/HelpWindow.h"
#include "shell/WindowsMiscLaunch.h"
#include "support/Debug.h"
#include "support/FilePaths.h"
#include "support/Files.h"
#include "support/Prompt.h"

using platform::Show;

namespace WindowsMisc {
namespace {

constexpr std::array viewerTitles{"Corvella Manual", "HTML Help"};
constexpr std::array languagesWithHelp{"fr", "pt", "es", "it", "nl"};
constexpr const char* section = "Help";

constexpr std::int32_t otherLanguageMessage = 138;

constexpr int viewerSearches = 20;
constexpr std::uint32_t searchInterval = 30;  // milliseconds, besides what each search waits

[[nodiscard]] bool OtherLanguageIsShown() {
    const Language::State& language = Language::state;
    return language.LangHelpFile != language.LangHelpFileChosen &&
           std::any_of(languagesWithHelp.begin(), languagesWithHelp.end(), [&](const char* code) {
               return platform::Contains(language.LangHelpFileChosen, std::string("cv") + code + ".chm");
           });
}

// Not windows of the host itself, whatever their title.
void CloseViewers() {
    for (const char* title : viewerTitles) {
        if (const auto viewer = FindWindowByTitle(title, platform::Whose::OtherPrograms)) platform::AskToClose(viewer);
    }
}

// The viewer makes its window some time after it was started.
[[nodiscard]] platform::WindowHandle WaitForViewer() {
    for (int search = 0; search < viewerSearches; ++search) {
        for (const char* title : viewerTitles) {
            if (const auto viewer = FindWindowByTitle(title, platform::Whose::OtherPrograms)) return viewer;
        }
        platform::Pause(searchInterval);
    }
    return nullptr;
}

void SizeViewerOnce(const std::string& helpFile) {
    const std::string name(Files::GetFileNamePart(helpFile));
    if (!IniFile::GetIniSetting(section, name).empty()) return;
    if (const auto viewer = WaitForViewer()) {
        const auto position = platform::WindowRect(viewer);
        const auto enlarged = position ? HelpWindow::Enlarge(*position, platform::ScreenSize()) : std::nullopt;
        if (enlarged) platform::MoveWindowTo(viewer, *enlarged);
    }
    IniFile::SetIniSetting(section, name, "1", true);
}

// By its full path: one that lies in the current folder is not the viewer.
[[nodiscard]] bool StartViewer(const std::string& topic) {
    const std::string windows = platform::WindowsFolder();
    return !windows.empty() && platform::StartProcess("\"" + windows + "hh.exe\" " + topic, Show::Normal);
}

[[nodiscard]] bool StartRegisteredViewer(const std::string& helpFile) {
    const std::string command = GetApplForExt("chm");
    return !command.empty() && platform::StartProcess(ExecText::ForDocument(command, helpFile), Show::Minimised);
}

void TellHelpFailed(const std::string& helpFile) {
    const std::string& line = Language::state.LangNewLine;
    std::string text = "Unable to start the help!" + line + line + "Please open the file" + line + helpFile + line +
                       "manually or open the help via the start menu.";
    Prompt::Ask(Prompt::Id::Plain, text, Prompt::Style::Warning, {});
}

void ShowHelp(const std::string& helpFile, const std::string& page) {
    const std::string topic = "\"" + helpFile + "::/" + page + "\"";
    CloseViewers();
    if (StartViewer(topic)) {
        SizeViewerOnce(helpFile);
    } else if (!StartRegisteredViewer(helpFile)) {
        TellHelpFailed(helpFile);
    }
}

}  // namespace

void CallHelp(const std::string& page, const std::string& htmlPage, std::int32_t) {
    const platform::ErrorScope swallowed;
    const Debug::Trace trace("CallHelp");
    if (Language::state.LangNewLine.empty()) Language::LangInit();
    if (OtherLanguageIsShown()) {
        Prompt::Message(Prompt::Id::HelpInOtherLanguage, otherLanguageMessage, Prompt::Style::Error, "%m",
                        Files::AppFolder());
    }
    const std::string helpFile = Language::state.LangHelpFile;  // of this moment: what follows pumps messages
    if (Files::FileExists(helpFile)) {
        ShowHelp(helpFile, page);
    } else {
        ExecApp(Language::state.LangManualFolder + htmlPage);
    }
}

}  // namespace WindowsMisc
