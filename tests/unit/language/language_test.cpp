// Choosing and reading language files.
#include <doctest.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/IniFile.h"
#include "config/InifileCV.h"
#include "config/Paths.h"
#include "language/Language.h"
#include "language/LanguageForms.h"
#include "platform/Err.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "testing/AnsweringPrompt.h"
#include "testing/BoxAnswerer.h"
#include "testing/DebugLog.h"
#include "testing/Languages.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"

using namespace std::string_literals;
using Language::GetLanguageString;
using Language::state;

namespace {

std::string folder;  // the add-in's, with a backslash

// One value of the user's registry.
struct UserValue {
    const char *subkey, *name;
    void Set(const std::string& text) const { PrivateRegistry::PutText(HKEY_CURRENT_USER, subkey, name, text); }
};

constexpr int okAnswer = 1;

// A folder of the add-in's own with a settings file, a registry without a language, and nothing loaded yet.
class House {
  public:
    House() {
        folder = folder_.Path();
        earlierPath_ = Files::Plug({.applicationPath = [] { return folder; }});
        IniFile::IniInit(false);
        earlierLocation_ = std::exchange(IniFile::location, {folder + "corvella.ini", folder + "corvella.ini", 0});
        earlierSettings_ = std::exchange(InifileCV::state, {});
        earlierPaths_ = std::exchange(WindowsMisc::paths, {});
        state = {};
        platform::Err().Clear();
    }
    ~House() {
        IniFile::IniInit(false);
        WindowsMisc::paths = earlierPaths_;
        InifileCV::state = earlierSettings_;
        IniFile::location = earlierLocation_;
        Files::Plug(earlierPath_);
        state = {};
    }
    void Write(const std::string& name, const std::string& text) const { folder_.Write(name, text); }
    void MakeFolder(const std::string& name) const { CreateDirectoryA(folder_.Path(name).c_str(), nullptr); }
    // Each with its own name as the text of "Misc" "Default".
    void WriteAllLanguages() const {
        for (const ListedLanguage& language : ListedLanguages()) {
            Write(language.name + ".lng", "x\r\n[Misc]\r\nDefault=" + language.name + "\r\n");
        }
    }
    void Setting(std::string_view section, std::string_view key, std::string_view value) const {
        IniFile::SetIniSettingDefault(section, key, value, true);
    }
    // The file that is chosen, without the folder.
    std::string Choose() const {
        Language::LangInit();
        CHECK(state.LangFile.starts_with(folder));
        return state.LangFile.substr(folder.size());
    }
    [[nodiscard]] const std::vector<BoxAnswerer::Box>& Boxes() const { return boxes_.Seen(); }

    static constexpr UserValue System{"Control Panel\\International", "sLanguage"};
    static constexpr UserValue Mouse{"Control Panel\\Microsoft Input Devices\\Mouse", "Language"};
    static constexpr UserValue Locale{"Control Panel\\International", "Locale"};

  private:
    const PrivateRegistry registry_;
    const TempFolder folder_;
    const BoxAnswerer boxes_{okAnswer};  // where a test leaves no file with a text
    Files::Ports earlierPath_;
    IniFile::Location earlierLocation_;
    InifileCV::State earlierSettings_;
    WindowsMisc::Paths earlierPaths_;
};

}  // namespace

// --- the choice of the language

TEST_CASE("the system's language decides over the whole table where the settings name none") {
    const std::pair<const char*, const char*> rows[] = {
        {"DEU", "Deutsch.lng"},      {"DES", "English.lng"},      {"DEA", "English.lng"}, {"FRA", "Francais.lng"},
        {"FRC", "Francais.lng"},     {"ESP", "Espanol.lng"},      {"ESM", "Espanol.lng"}, {"PTB", "Portugues-BR.lng"},
        {"PTG", "Portugues-BR.lng"}, {"POL", "Portugues-BR.lng"}, {"CZE", "Cesky.lng"},   {"CSY", "English.lng"},
        {"NLD", "Nederlands.lng"},   {"NLB", "Nederlands.lng"},   {"PLK", "Polski.lng"},  {"ENU", "English.lng"},
        {"ITA", "English.lng"},      {"deu", "English.lng"},      {"X", "English.lng"},
    };
    House house;
    house.WriteAllLanguages();
    for (const auto& row : rows) {
        const char *code = row.first, *file = row.second;
        CAPTURE(code);
        house.System.Set(code);
        CHECK(house.Choose() == file);
        CHECK(state.LangDefault + ".lng" == file);
    }
}

TEST_CASE("each language of the list is chosen by its codes of Windows, and has its help") {
    House house;
    house.WriteAllLanguages();
    for (const ListedLanguage& language : ListedLanguages()) {
        CAPTURE(language.name);
        house.Write("cv" + language.help + ".chm", "");
        for (const std::string& code : language.codes) {
            CAPTURE(code);
            house.System.Set(code);
            CHECK(house.Choose() == language.name + ".lng");
            CHECK(state.LangHelpFile == folder + "cv" + language.help + ".chm");
        }
    }
}

TEST_CASE("the language of the settings comes before the system's") {
    House house;
    house.WriteAllLanguages();
    house.System.Set("DEU");
    house.Setting("Settings", "Language", "Polski");
    CHECK(house.Choose() == "Polski.lng");
}

TEST_CASE("the settings may name the file with or without its extension") {
    House house;
    house.WriteAllLanguages();
    house.Setting("Settings", "Language", "Cesky");
    CHECK(house.Choose() == "Cesky.lng");
    house.Setting("Settings", "Language", "Cesky.lng");
    CHECK(house.Choose() == "Cesky.lng");
    CHECK(state.LangDefault == "Cesky");
}

TEST_CASE("the settings may name a file anywhere") {
    House house;
    house.MakeFolder("other");
    house.Write("other\\Mine.lng", "\r\n[Misc]\r\nDefault=mine\r\n");
    house.Setting("Settings", "Language", folder + "other\\Mine");
    CHECK(house.Choose() == "other\\Mine.lng");
    CHECK(state.LangDefault == "mine");
}

TEST_CASE("a file whose name has accents is found without them") {
    House house;
    house.WriteAllLanguages();
    house.Setting("Settings", "Language",
                  "Fran\xE7"
                  "ais");
    CHECK(house.Choose() == "Francais.lng");
    house.Setting("Settings", "Language", "Espa\xF1ol.lng");
    CHECK(house.Choose() == "Espanol.lng");
}

TEST_CASE("a language without a file is English") {
    House house;
    house.WriteAllLanguages();
    house.Setting("Settings", "Language", "Klingon");
    CHECK(house.Choose() == "English.lng");
    CHECK(state.LangDefault == "English");
}

TEST_CASE("only a language called Deutsch has the German web site") {
    House house;
    house.WriteAllLanguages();
    CHECK(house.Choose() == "English.lng");
    CHECK(state.LangWebSite.ends_with(".com"));
    house.System.Set("DEU");
    CHECK(house.Choose() == "Deutsch.lng");
    CHECK(state.LangWebSite.ends_with(".de"));
}

TEST_CASE("without a system language the language of the mouse driver counts") {
    House house;
    house.Mouse.Set("ESP");
    CHECK(Language::GetSystemLanguage() == "ESP");
    house.System.Set("NLD");
    CHECK(Language::GetSystemLanguage() == "NLD");
}

TEST_CASE("the German locale in its hexadecimal digits is DE, which is English") {
    House house;
    house.WriteAllLanguages();
    house.Locale.Set("00000407");
    CHECK(Language::GetSystemLanguage() == "DE");
    CHECK(house.Choose() == "English.lng");
}

TEST_CASE("a locale is read as a decimal number, and its name keeps the NUL behind it") {
    House house;
    house.WriteAllLanguages();
    house.Locale.Set("00001034");  // 0x40A
    CHECK(Language::GetSystemLanguage() == "ESP\0"s);
    CHECK(house.Choose() == "Espanol.lng");
    house.Locale.Set("1031");  // 0x407, German: but "DEU" with a NUL is not the whole code
    CHECK(Language::GetSystemLanguage() == "DEU\0"s);
    CHECK(house.Choose() == "English.lng");
}

TEST_CASE("a locale that the system does not know stays what it is") {
    House house;
    house.Locale.Set("00000409");
    CHECK(Language::GetSystemLanguage() == "00000409");
    house.Locale.Set("");
    CHECK_FALSE(platform::Err());
}

// --- together with the settings

TEST_CASE("where no settings file is known yet the language has it found") {
    House house;
    house.WriteAllLanguages();
    house.Write("corvella.ini", "x\r\n[Settings]\r\nLanguage=Polski\r\n");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Quillmark\\Corvella", "IniFiles", folder);
    IniFile::location = {};
    CHECK(house.Choose() == "Polski.lng");
    CHECK(IniFile::location.CurrentFile == folder + "corvella.ini");
}

TEST_CASE("finding the settings files sets the language up, once") {
    House house;
    house.WriteAllLanguages();
    house.System.Set("DEU");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Quillmark\\Corvella", "IniFiles", folder);
    const InifileCV::Ports earlier = InifileCV::Plug({.setUpLanguage = Language::SetUp});
    InifileCV::GetIniFile();
    CHECK(state.LangDefault == "Deutsch");
    house.System.Set("FRA");
    InifileCV::GetIniFile();
    CHECK(state.LangDefault == "Deutsch");
    InifileCV::Plug(earlier);
}

TEST_CASE("a lookup and the settings that it has found load the language once between them") {
    House house;
    house.WriteAllLanguages();
    PrivateRegistry::PutText(HKEY_CURRENT_USER, "Software\\Quillmark\\Corvella", "IniFiles", folder);
    IniFile::location = {};
    const InifileCV::Ports earlier = InifileCV::Plug({.setUpLanguage = Language::SetUp});
    const DebugLog log;
    CHECK(GetLanguageString("Misc", "Default") == "English");
    InifileCV::Plug(earlier);
    const std::string text = log.Text();
    const std::size_t first = text.find("<LoadLanguageFile>_");
    REQUIRE(first != std::string::npos);
    CHECK(text.find("<LoadLanguageFile>_", first + 1) == std::string::npos);
    CHECK(log.Holds("<GetIniFile>_"));
}

// --- manual and help

TEST_CASE("the manual is the language's where it has one, else the English one") {
    House house;
    house.WriteAllLanguages();
    house.Setting("Settings", "Language", "Nederlands");
    (void)house.Choose();
    CHECK(state.LangManualFolder == folder + "Manual\\English\\");
    house.MakeFolder("Manual");
    house.MakeFolder("Manual\\Nederlands");
    (void)house.Choose();
    CHECK(state.LangManualFolder == folder + "Manual\\Nederlands\\");
}

TEST_CASE("the help of Nederlands is cvnl.chm, and the English help where that is missing") {
    House house;
    house.WriteAllLanguages();
    house.Setting("Settings", "Language", "Nederlands");
    (void)house.Choose();
    CHECK(state.LangHelpFileChosen == folder + "cvnl.chm");
    CHECK(state.LangHelpFile == folder + "cven.chm");
    house.Write("cvnl.chm", "x");
    (void)house.Choose();
    CHECK(state.LangHelpFile == folder + "cvnl.chm");
}

// --- the file

TEST_CASE("the texts that everybody needs are read with the file") {
    House house;
    house.Write("Deutsch.lng",
                "x\r\n[Info]\r\nFont=Arial\r\nCharSet=238\r\n[Misc]\r\nDefault=Standard\r\nInfrared=Infrarot\r\n"
                "[PhoneBooks]\r\nSB=Telefonbuch\r\n[Outlook]\r\nno=Nein\r\n"
                "[Calendar]\r\nAnniversary=Jahrestag\r\nBirthday=Geburtstag\r\nOff=Aus\r\n");
    house.Write("English.lng", "x\r\n[Calendar]\r\nAnniversary=Anniversary\r\n[Fields]\r\nBirthday=Birthday\r\n");
    house.System.Set("DEU");
    CHECK(GetLanguageString("Outlook", "no") == "Nein");  // the first lookup loads all
    CHECK(state.LangNewLine == "\r\n");
    CHECK(state.LangLoaded);
    CHECK(state.LangFont == "Arial");
    CHECK(state.LangCharSet == 238);
    CHECK(state.LangFormCharSet == 238);
    CHECK(state.LangDefault == "Standard");
    CHECK(state.LangPhoneBooks == "Telefonbuch");
    CHECK(state.LangInfrared == "Infrarot");
    CHECK(state.LangOutlookNo == "Nein");
    CHECK(state.LangAnniversary == "Jahrestag");
    CHECK(state.LangBirthday == "Geburtstag");
    CHECK(state.LangCalendarOff == "Aus");
    CHECK(state.LangAnniversaryEnglish == "Anniversary");
    CHECK(state.LangBirthdayEnglish == "Birthday");
}

TEST_CASE("without a character set in the file it is 1, and 0 is a character set") {
    House house;
    house.Write("English.lng", "x\r\n[Info]\r\n");
    (void)house.Choose();
    CHECK(state.LangCharSet == 1);
    house.Write("English.lng", "x\r\n[Info]\r\nCharSet=0\r\n");
    (void)house.Choose();
    CHECK(state.LangCharSet == 0);
}

TEST_CASE("the file is loaded once") {
    House house;
    house.WriteAllLanguages();
    (void)house.Choose();
    house.System.Set("DEU");
    Language::LoadLanguageFile();
    CHECK(state.LangFile == folder + "English.lng");
}

TEST_CASE("the text of the file ends its lines in CR LF, whatever they ended in") {
    House house;
    house.Write("English.lng", "x\n[Misc]\rOk=OK");
    (void)house.Choose();
    CHECK(state.LangText == "x\r\n[Misc]\r\nOk=OK\r\n");
}

TEST_CASE("an empty file gives way to the English one, for single texts too") {
    House house;
    house.Write("Deutsch.lng", "");
    house.Write("English.lng", "x\r\n[Misc]\r\nDefault=Default\r\n");
    house.System.Set("DEU");
    (void)house.Choose();
    CHECK(state.LangText.ends_with("Default=Default\r\n"));
    CHECK(GetLanguageString("Misc", "Default") == "Default");
}

TEST_CASE("when no file has a text the user is told in a message box") {
    House house;
    house.System.Set("DEU");
    house.Write("Deutsch.lng", "");
    (void)house.Choose();
    REQUIRE(house.Boxes().size() == 1);
    CHECK(house.Boxes()[0].text == "The language file '" + folder + "Deutsch.lng' seems to be empty!");
    CHECK(state.LangText.empty());
    CHECK(GetLanguageString("Misc", "Default").empty());
}

TEST_CASE("no message is shown for a file that has a text") {
    House house;
    house.WriteAllLanguages();
    (void)house.Choose();
    CHECK(house.Boxes().empty());
}

TEST_CASE("the chosen file goes to the debug log") {
    House house;
    house.WriteAllLanguages();
    const DebugLog file;
    Debug::state.DebugLevel = 0;
    (void)house.Choose();
    const std::string log = file.Text();
    CHECK(log.starts_with("<LangInit>_\r\n"));
    CHECK(log.find(" <LoadLanguageFile>_\r\n") != std::string::npos);
    CHECK(log.find("  " + folder + "English.lng1:\r\n") != std::string::npos);
    CHECK(log.find("</LangInit>\r\n") != std::string::npos);
    CHECK(log.find("GetLanguageString") == std::string::npos);  // the level is 0
}

// --- single texts

TEST_CASE("a text is found by section and key, with its escapes read") {
    House house;
    house.Write("English.lng",
                "x\r\n[Messages]\r\nDebug2=Line 1\\nLine 2\\tend\r\n[OutlookAddIn]\r\nmSync=S&ynchronize|tip\r\n");
    CHECK(GetLanguageString("OutlookAddIn", "mSync") == "S&ynchronize|tip");
    CHECK(GetLanguageString("Messages", "Debug2") == "Line 1\rLine 2\tend");
    CHECK(GetLanguageString("Messages", "mSync").empty());
}

TEST_CASE("every occurrence of a placeholder is replaced") {
    House house;
    house.Write("English.lng", "x\r\n[OutlookAddIn]\r\nMsg1=%i and %i?\r\n");
    CHECK(Language::GetLanguageStringReplaced("OutlookAddIn", "Msg1", "%i", "tasks") == "tasks and tasks?");
    CHECK(Language::GetLanguageStringReplaced("OutlookAddIn", "Msg1", "", "tasks") == "%i and %i?");
    CHECK(Language::GetLanguageStringReplaced("OutlookAddIn", "Msg9", "%i", "tasks").empty());
}

TEST_CASE("a missing key is the empty text, and told only where the caller wants it") {
    AnsweringPrompt user;
    House house;
    house.Write("English.lng", "[Messages]\r\nDebug2=x\r\n");
    CHECK(GetLanguageString("Messages", "Debug9").empty());
    CHECK(GetLanguageString("Messages", "Debug2", true) == "x");
    CHECK(user.asked.empty());
    CHECK(GetLanguageString("Messages", "Debug9", true).empty());
    CHECK(Language::GetLanguageStringReplaced("Messages", "Debug8", "%f", "x", true).empty());
    REQUIRE(user.asked.size() == 2);
    CHECK(user.asked[0].text == "Missing 'Debug9' in Messages in the language file!");
    CHECK(user.asked[1].text == "Missing 'Debug8' in Messages in the language file!");
}

TEST_CASE("without a language file no missing key is told") {
    AnsweringPrompt user;
    House house;
    CHECK(GetLanguageString("Messages", "Debug9", true).empty());
    CHECK(user.asked.empty());
}

TEST_CASE("a lookup is logged with its section and key when the level is not 0") {
    House house;
    house.WriteAllLanguages();
    (void)house.Choose();
    const DebugLog log;
    (void)GetLanguageString("Misc", "Default");
    CHECK(log.Text() == "<GetLanguageString>_\r\n  Misc:Default\r\n</GetLanguageString>\r\n");
}

TEST_CASE("a text that another process changes is read anew") {
    House house;
    house.Write("English.lng", "x\r\n[Misc]\r\nDefault=one\r\n");
    CHECK(GetLanguageString("Misc", "Default") == "one");
    house.Write("English.lng", "x\r\n[Misc]\r\nDefault=another\r\n");
    CHECK(GetLanguageString("Misc", "Default") == "another");
}

// --- forms

namespace {

using platform::ControlKind;
using platform::FormView;

constexpr platform::ControlSpec table[] = {
    {"Label1", ControlKind::Label},
    {"Label1_", ControlKind::Label},
    {"Option", ControlKind::OptionButton, 0, "", 0},
    {"Option", ControlKind::OptionButton, 0, "", 2},
    {"Picture1", ControlKind::PictureBox},
    {"NavBar", ControlKind::TabStrip},
    {"TextDelay", ControlKind::TextBox},
    {"ButtonOK", ControlKind::Button},
    {"ButtonCancel", ControlKind::Button},
    {"Ok", ControlKind::Button},
    {"Cancel", ControlKind::Button},
    {"Timer1", ControlKind::Timer},
};

struct TestForm : FormView {
    explicit TestForm(const char* name = "FormTest") : FormView(name, table) {
        SetCaption("designed");
        for (platform::Control& control : Controls()) control.SetCaption("designed");
        The("NavBar").SetTabs({{"a", "first+x"}, {"b", "second"}});
        platform::Err().Clear();
    }
};

}  // namespace

TEST_CASE("a form takes its caption, its controls and its standard buttons from the file") {
    House house;
    house.Write(
        "English.lng",
        "x\r\n[Misc]\r\nOk=Fine\r\nCancel=Never\r\n[FormTest]\r\nFormTest=The form|no tip\r\n"
        "Label1=One\\nTwo|tip\r\nLabel1_=not this\r\nOption(2)=Second\r\nOk=Own\r\n[FormOther]\r\nCancel=x\r\n");
    TestForm form;
    Language::GetLanguageStringsForForm(form);
    CHECK(form.Caption() == "The form");
    CHECK(form.The("Label1").Caption() == "One\rTwo");
    CHECK(form.The("Label1").ToolTip() == "tip");
    CHECK(form.The("Label1_").Caption() == "designed");
    CHECK(form.Find("Option", 2)->Caption() == "Second");
    CHECK(form.Find("Option", 0)->Caption() == "designed");
    CHECK(form.The("ButtonOK").Caption() == "Fine");
    CHECK(form.The("Ok").Caption() == "Own");
    CHECK(form.The("ButtonCancel").Caption() == "Never");
    CHECK(form.The("Cancel").Caption() == "Never");
    CHECK(form.The("Label1").Font() == platform::FontStyle());
}

TEST_CASE("a form may take another section, and its caption still stands under its own name") {
    House house;
    house.Write("English.lng",
                "x\r\n[FormTest]\r\nFormTest=Own\r\nLabel1=own\r\n[Other]\r\nFormTest=not\r\nLabel1=other\r\n");
    TestForm form;
    Language::GetLanguageStringsForForm(form, "Other");
    CHECK(form.Caption() == "Own");
    CHECK(form.The("Label1").Caption() == "other");
}

TEST_CASE("the form FormPropCal takes its texts from the section FormProperties") {
    House house;
    house.Write("English.lng", "x\r\n[FormPropCal]\r\nLabel1=not this\r\n[FormProperties]\r\nLabel1=this\r\n");
    house.Setting("FormProperties", "Hide", "TextDelay");
    TestForm form("FormPropCal");
    Language::GetLanguageStringsForForm(form);
    CHECK(form.The("Label1").Caption() == "this");
    CHECK_FALSE(form.The("TextDelay").Visible());
}

TEST_CASE("a form without texts stays as it was designed") {
    House house;
    house.Write("English.lng", "x\r\n[FormOther]\r\nLabel1=x\r\n");
    TestForm form;
    Language::GetLanguageStringsForForm(form);
    CHECK(form.Caption() == "designed");
    for (const char* name : {"Label1", "ButtonOK", "Cancel"}) CHECK(form.The(name).Caption() == "designed");
    CHECK_FALSE(platform::Err());
}

TEST_CASE("a form takes font and character set of the language") {
    House house;
    house.Write("English.lng", "x\r\n[Info]\r\nFont=Arial\r\nCharSet=238\r\n");
    TestForm form;
    Language::GetLanguageStringsForForm(form);
    CHECK(form.Font().charSet == 238);
    CHECK(form.The("NavBar").Font().charSet == 238);
    CHECK(form.The("Label1").Font().face == "Arial");
}

TEST_CASE("character set 0 without a font leaves all fonts alone, with a font it does not") {
    House house;
    house.Write("English.lng", "x\r\n[Info]\r\nCharSet=0\r\n");
    TestForm form;
    Language::GetLanguageStringsForForm(form);
    CHECK(form.The("Label1").Font() == platform::FontStyle());
    house.Write("English.lng", "x\r\n[Info]\r\nCharSet=0\r\nFont=Arial\r\n");
    Language::LangInit();
    Language::GetLanguageStringsForForm(form);
    CHECK(form.The("Label1").Font().charSet == 0);
    CHECK(form.The("Label1").Font().face == "Arial");
}

TEST_CASE("a picture box shows a file of the add-in's folder") {
    House house;
    house.Write("English.lng", "x\r\n[FormTest]\r\nPicture1=logo.bmp\r\n");
    TestForm form;
    Language::GetLanguageStringsForForm(form);
    CHECK(form.The("Picture1").Picture().empty());
    house.Write("logo.bmp", "BM");
    Language::GetLanguageStringsForForm(form);
    CHECK(form.The("Picture1").Picture() == folder + "logo.bmp");
}

TEST_CASE("the settings file takes controls away from a form") {
    House house;
    house.WriteAllLanguages();
    house.Setting("FormTest", "Hide", "Label1;Option(2);NavBar:2");
    house.Setting("FormTest", "Disable", "TextDelay;Option(0)");
    TestForm form;
    Language::GetLanguageStringsForForm(form);
    CHECK_FALSE(form.The("Label1").Visible());
    CHECK_FALSE(form.Find("Option", 2)->Visible());
    CHECK(form.Find("Option", 0)->Visible());
    REQUIRE(form.The("NavBar").Tabs().size() == 1);
    CHECK(form.The("NavBar").Tabs()[0].toolTip == "first");
    CHECK_FALSE(form.The("TextDelay").Enabled());
    CHECK_FALSE(form.Find("Option", 0)->Enabled());
    CHECK_FALSE(platform::Err());
}

TEST_CASE("restrictions come from the form's own section where none is named, and from no profile's file") {
    House house;
    house.WriteAllLanguages();
    house.Setting("FormTest", "Hide", "Label1");
    house.Setting("Other", "Hide", "TextDelay");
    IniFile::location.CurrentFile = folder + "Work.ini";
    TestForm form;
    Language::ApplyFormRestrictions(form, "", true);
    CHECK_FALSE(form.The("Label1").Visible());
    CHECK(form.The("TextDelay").Visible());
    Language::ApplyFormRestrictions(form, "Other", true);
    CHECK_FALSE(form.The("TextDelay").Visible());
}

TEST_CASE("a restriction that names nothing of the form is logged where errors are to be reported") {
    House house;
    house.Setting("FormTest", "Hide", "Absent");
    const DebugLog log;
    TestForm form;
    Language::ApplyFormRestrictions(form, "", false);
    CHECK_FALSE(log.Holds("Absent"));
    Language::ApplyFormRestrictions(form, "", true);
    CHECK(log.Holds(" FormTest:Hide?Absent\r\n"));
}

TEST_CASE("what a form refuses leaves the caller's pending error as it was") {
    House house;
    house.Write("English.lng", "x\r\n[Info]\r\nCharSet=238\r\n[FormTest]\r\nTextDelay=x\r\nPicture1=y|z\r\n");
    house.Setting("FormTest", "Hide", "Absent;Option;NavBar(1):1;Timer1");
    TestForm form;
    platform::Err().Set(9, "earlier");
    Language::GetLanguageStringsForForm(form);
    CHECK(platform::Err().Number() == 9);
    CHECK(platform::Err().Description() == "earlier");
}

TEST_CASE("one control takes its text by its name, by its number and by a suffix") {
    House house;
    house.Write("English.lng",
                "x\r\n[FormTest]\r\nLabel1=One|tip\r\nLabel1(2)=Two\r\nOption(2)=Second\r\nFormTest(b)=Big\r\n");
    TestForm form;
    Language::GetLanguageString2(form, form.The("Label1"));
    CHECK(form.The("Label1").Caption() == "One");
    CHECK(form.The("Label1").ToolTip() == "tip");
    Language::GetLanguageString2(form, form.The("Label1"), "2");
    CHECK(form.The("Label1").Caption() == "Two");
    Language::GetLanguageString2(form, *form.Find("Option", 2));
    CHECK(form.Find("Option", 2)->Caption() == "Second");
    Language::GetLanguageString2(form, "b");
    CHECK(form.Caption() == "Big");
    Language::GetLanguageString2(form, form.The("ButtonOK"));
    CHECK(form.The("ButtonOK").Caption() == "designed");
}

TEST_CASE("a control's caption is logged on a level above 1 only") {
    House house;
    house.WriteAllLanguages();
    (void)house.Choose();
    TestForm form;
    {
        const DebugLog log;
        Language::GetLanguageString2(form, form.The("Label1"));
        CHECK(log.Text().starts_with("<GetLanguageString>_"));
    }
    const DebugLog log;
    Debug::state.DebugLevel = 2;
    Language::GetLanguageString2(form, form.The("Label1"));
    CHECK(log.Text().starts_with("<GetLanguageString2>_\r\n <GetLanguageString>_"));
}

// --- hostile files

TEST_CASE("a language file that is missing, empty, of 5 MB, of NULs, cut off or of strangers yields what it holds") {
    std::string big = "x\r\n[Misc]\r\nDefault=big\r\n[FormTest]\r\n";
    while (big.size() < 5'000'000) big += "Nothing(7)=" + std::string(1000, 'x') + "\r\n";
    const std::string missing = "(missing)";
    const std::pair<std::string, const char*> files[] = {
        {big + "Label1=last\r\n", "last"},
        {"[FormTest]\r\nLabel1=\0hid\0den\r\n"s + std::string(10'000, '\0'), nullptr},  // the NULs stay in the text
        {"x\r\n[FormTest]\r\nNobody=1\r\nLabel1(3)=2\r\n(=3\r\nNobody(x)=4|5|6\r\n=7\r\n", "designed"},
        {"", "designed"},
        {missing, "designed"},
        {std::string(100'000, '\0'), "designed"},
        {"x\r\n[FormTest]\r\nLabel1=cut of", "cut of"},
        {"x\r\n[FormTest", "designed"},
        {"[", "designed"},
    };
    for (const auto& [text, caption] : files) {
        House house;
        if (text != missing) house.Write("English.lng", text);
        TestForm form;
        Language::GetLanguageStringsForForm(form);
        if (caption) CHECK(form.The("Label1").Caption() == caption);
        if (text.starts_with("x\r\n[Misc]")) CHECK(GetLanguageString("Misc", "Default") == "big");
        CHECK(GetLanguageString("Misc", "Absent").empty());
        CHECK_FALSE(platform::Err());
    }
}
