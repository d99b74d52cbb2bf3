// language/Language.h: the user's language, its file beside the add-in, and every text looked up in it.
//
// Shapes  Texts stand in the file by section and key (language/LanguageText.h); folders end in a backslash.
// Errors  A key that is missing, and a file that is, yields the empty text: callers keep or bring their own.
//         A file that is not there or empty is replaced by the English one. Only where that has no text
//         either the user is told.
// Owns    The text of the file and the texts read once. The first lookup loads them.
// Effects Reads the registry, the settings file and the language file; may show a message.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace Language {

struct State {
    std::string LangNewLine;   // CR LF; empty until LangInit has run
    bool LangLoaded = false;   // LoadLanguageFile has run
    std::string LangSettings;  // the settings file that chose the language
    std::string LangFile;
    std::string LangText;  // the whole file, CR LF at the end of every line
    std::string LangManualFolder;
    std::string LangHelpFile;        // the one to open
    std::string LangHelpFileChosen;  // the one of the language, whether it exists or not
    std::string LangWebSite;
    std::string LangPhoneBooks, LangFont, LangDefault;
    std::int32_t LangCharSet = 1;
    std::int32_t LangFormCharSet = 1;  // what the forms ask
    std::string LangInfrared, LangOutlookNo, LangCalendarOff;
    std::string LangAnniversary, LangBirthday;
    std::string LangAnniversaryEnglish, LangBirthdayEnglish;  // as other programs may have written them
    std::string ApplicationFolder;
};

extern State state;

// Chooses and loads the language, whatever was loaded before.
void LangInit();

// The same without the texts that LangInit adds; does nothing once it has run.
void LoadLanguageFile();

// Loads the language where that has not been done yet: for the port of InifileCV.
void SetUp();

// The code of the system's language, such as "DEU"; may be empty, and may end in a NUL.
[[nodiscard]] std::string GetSystemLanguage();

// `reportMissing` tells the user when a file that was loaded lacks the text.
[[nodiscard]] std::string GetLanguageString(std::string_view section, std::string_view key, bool reportMissing = false);

// The same with every `placeholder` replaced.
[[nodiscard]] std::string GetLanguageStringReplaced(std::string_view section, std::string_view key,
                                                    std::string_view placeholder, std::string_view replacement,
                                                    bool reportMissing = false);

// The add-in's folder, asked for once after LangInit.
[[nodiscard]] const std::string& ApplicationFolder();

}  // namespace Language
