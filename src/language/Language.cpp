#include "language/Language.h"

#include <optional>

#include "config/IniFile.h"
#include "config/InifileCV.h"
#include "language/LanguageText.h"
#include "platform/Locale.h"
#include "platform/MessageBox.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"

namespace Language {

State state;

namespace {

constexpr std::string_view webSite = "http://www.corvella.com";

std::string UserValue(const char* subkey, const char* name) {
    return RegEdit::GetRegString(RegEdit::Root::CurrentUser, subkey, name);
}

std::string ChosenLanguage() {
    std::string language = IniFile::GetIniSettingDefault("Settings", "Language");
    if (language.empty()) language = LanguageText::LanguageForSystem(GetSystemLanguage());
    return language;
}

std::string ManualFolder(const std::string& language) {
    const std::string manual = ApplicationFolder() + "Manual\\";
    return manual + (Files::FolderExists(manual + language) ? language : "English") + "\\";
}

void FindHelp(const std::string& language) {
    state.LangHelpFileChosen = ApplicationFolder() + "cv" + LanguageText::HelpCode(language) + ".chm";
    state.LangHelpFile = state.LangHelpFileChosen;
    if (!Files::FileExists(state.LangHelpFile)) state.LangHelpFile = ApplicationFolder() + "cven.chm";
}

std::string EnglishFile() { return ApplicationFolder() + "English.lng"; }

std::string FindFile(const std::string& language) {
    std::string file = LanguageText::FileName(language);
    if (file.find('\\') == std::string::npos) file = ApplicationFolder() + file;
    if (Files::FileExists(file)) return file;
    file = LanguageText::WithPlainFileName(file);
    return Files::FileExists(file) ? file : EnglishFile();
}

void ReadFile() {
    state.LangText = LanguageText::WithLineEnds(Files::GetFileContents(state.LangFile));
    if (state.LangText.empty()) {
        state.LangText = LanguageText::WithLineEnds(Files::GetFileContents(EnglishFile()));
        if (!state.LangText.empty()) state.LangFile = EnglishFile();  // single texts come from there as well
    }
    if (state.LangText.empty()) {
        platform::ShowMessageBox("The language file '" + state.LangFile + "' seems to be empty!", Prompt::Style::OK);
    }
}

void ReadTexts() {
    state.LangInfrared = GetLanguageString("Misc", "Infrared");
    state.LangOutlookNo = GetLanguageString("Outlook", "no");
    state.LangAnniversary = GetLanguageString("Calendar", "Anniversary");
    state.LangBirthday = GetLanguageString("Calendar", "Birthday");
    state.LangCalendarOff = GetLanguageString("Calendar", "Off");
    const std::string english = ApplicationFolder() + "english.lng";
    state.LangAnniversaryEnglish = IniFile::ReadFromIniFile(english, "Calendar", "Anniversary");
    state.LangBirthdayEnglish = IniFile::ReadFromIniFile(english, "Fields", "Birthday");
}

void ReportMissing(std::string_view section, std::string_view key) {
    std::string message = "Missing '" + std::string(key) + "' in " + std::string(section) + " in the language file!";
    Prompt::Ask(Prompt::Id::Plain, message, Prompt::Style::OK, {});
}

}  // namespace

const std::string& ApplicationFolder() {
    if (state.ApplicationFolder.empty()) state.ApplicationFolder = Files::AppFolder();
    return state.ApplicationFolder;
}

void LangInit() {
    const Debug::Trace trace("LangInit");
    IniFile::IniInit(true);
    state.ApplicationFolder.clear();
    state.LangNewLine = "\r\n";
    state.LangLoaded = false;
    LoadLanguageFile();
    state.LangPhoneBooks = GetLanguageString("PhoneBooks", "SB");
    state.LangFont = GetLanguageString("Info", "Font");
    state.LangDefault = GetLanguageString("Misc", "Default");
    const std::string charSet = GetLanguageString("Info", "CharSet");
    state.LangCharSet = charSet.empty() ? 1 : platform::ValLong(charSet);
    state.LangFormCharSet = state.LangCharSet;
}

void SetUp() {
    if (state.LangNewLine.empty()) {
        LangInit();
    } else {
        // The texts of the question for a settings folder came before the folder that chooses the language.
        if (!state.LangSettings.empty() && state.LangSettings != IniFile::location.BaseFile) state.LangLoaded = false;
        LoadLanguageFile();
    }
}

void LoadLanguageFile() {
    if (state.LangLoaded) return;
    state.LangLoaded = true;
    const Debug::Trace trace("LoadLanguageFile");
    if (IniFile::location.CurrentFile.empty()) InifileCV::GetIniFile();
    const std::string language = ChosenLanguage();
    const bool german = platform::Contains(language, "Deutsch");
    state.LangWebSite = german ? platform::Replace(webSite, ".com", ".de") : std::string(webSite);
    state.LangManualFolder = ManualFolder(language);
    FindHelp(language);
    state.LangFile = FindFile(language);
    std::string chosen = state.LangFile + "1:";
    Debug::WriteDebug(chosen, -1);
    ReadFile();
    ReadTexts();
    state.LangSettings = IniFile::location.BaseFile;
}

std::string GetSystemLanguage() {
    const Debug::Trace trace("GetSystemLanguage");
    return LanguageText::CodeOfSystem(UserValue, platform::AbbreviatedLanguageName);
}

std::string GetLanguageString(std::string_view section, std::string_view key, bool reportMissing) {
    std::optional<Debug::Trace> trace;
    if (Debug::state.DebugLevel != 0) {
        trace.emplace("GetLanguageString");
        std::string asked = std::string(" ").append(section).append(":").append(key);
        Debug::WriteDebug(asked, -1);
    }
    if (state.LangNewLine.empty() || state.LangFile.empty()) LangInit();
    std::string text = IniFile::ReadFromIniFile(state.LangFile, section, key);
    if (!text.empty()) text = LanguageText::Unescape(text);
    if (reportMissing && text.empty() && !state.LangText.empty()) ReportMissing(section, key);
    return text;
}

std::string GetLanguageStringReplaced(std::string_view section, std::string_view key, std::string_view placeholder,
                                      std::string_view replacement, bool reportMissing) {
    return platform::Replace(GetLanguageString(section, key, reportMissing), placeholder, replacement);
}

}  // namespace Language
