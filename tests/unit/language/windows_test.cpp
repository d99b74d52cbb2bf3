// The language files that the add-in comes with, shown by real windows.
#include <doctest.h>
#include <windows.h>
// after windows.h
#include <commctrl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "config/IniFile.h"
#include "language/Language.h"
#include "language/LanguageForms.h"
#include "platform/forms/Form.h"
#include "support/Files.h"
#include "testing/Languages.h"

using namespace platform;

namespace {

constexpr ControlSpec options[] = {
    {"Label6", ControlKind::Label},
    {"Frame1", ControlKind::Frame},
    {"Label1", ControlKind::Label},
    {"TextDelay", ControlKind::TextBox},
    {"OptionSync", ControlKind::OptionButton, ControlStyle::GroupStart},
    {"OptionDlg", ControlKind::OptionButton},
    {"CheckT", ControlKind::CheckBox},
    {"ButtonOK", ControlKind::Button, ControlStyle::Default},
    {"ButtonCancel", ControlKind::Button, ControlStyle::Cancel},
    {"ButtonHelp", ControlKind::Button},
};

struct OptionsForm : Form {
    OptionsForm() : Form("FormOlAddInOptions", options) {}
    ~OptionsForm() override { Unload(); }
    std::wstring Text(const char* name) {
        wchar_t text[300] = {};
        GetWindowTextW(Window(The(name)), text, static_cast<int>(std::size(text)));
        return text;
    }
    BYTE CharSet(const char* name) {
        LOGFONTA font = {};
        const auto handle = reinterpret_cast<HFONT>(SendMessageA(Window(The(name)), WM_GETFONT, 0, 0));
        GetObjectA(handle, sizeof font, &font);
        return font.lfCharSet;
    }
    // What Windows' own tool tips hold for the control.
    std::wstring ToolTip(const char* name) {
        HWND tips = nullptr;
        while ((tips = FindWindowExA(nullptr, tips, TOOLTIPS_CLASSA, nullptr)) != nullptr) {
            if (GetWindow(tips, GW_OWNER) != Window()) continue;
            wchar_t text[300] = {};
            TOOLINFOW tool = {};
            tool.cbSize = TTTOOLINFOW_V1_SIZE;
            tool.hwnd = Window();
            tool.uFlags = TTF_IDISHWND;
            tool.uId = reinterpret_cast<UINT_PTR>(Window(The(name)));
            tool.lpszText = text;
            SendMessageA(tips, TTM_GETTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
            return text;
        }
        return {};
    }
};

// The letters that the bytes of a language file stand for, by the character set that the file names.
std::wstring Letters(const std::string& text) {
    const auto charSet = static_cast<DWORD_PTR>(Language::state.LangCharSet);
    CHARSETINFO info = {};
    const bool known = charSet > 1 && TranslateCharsetInfo(reinterpret_cast<DWORD*>(charSet), &info, TCI_SRCCHARSET);
    const UINT codePage = known ? info.ciACP : 1252;
    std::wstring letters(text.size(), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), letters.data(),
                        static_cast<int>(letters.size()));
    return letters;
}

// The language as the add-in would load it from the folder of the sources.
struct Chosen {
    explicit Chosen(const std::string& language) {
        path_ = Files::Plug({.applicationPath = [] { return std::string(CV_LANGUAGE_FOLDER); }});
        location_ = IniFile::location;
        char folder[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        IniFile::location = {folder + std::string("cv-windows.ini"), folder + std::string("cv-windows.ini"), 0};
        IniFile::SetIniSettingDefault("Settings", "Language", language, true);
        Language::state = {};
        Language::LangInit();
    }
    ~Chosen() {
        DeleteFileA(IniFile::location.BaseFile.c_str());
        Files::Plug(path_);
        IniFile::location = location_;
        Language::state = {};
    }

  private:
    Files::Ports path_;
    IniFile::Location location_;
};

}  // namespace

TEST_CASE("each language that the add-in comes with is shown by the windows of a form") {
    std::vector<std::wstring> captions;
    for (const ListedLanguage& listed : ListedLanguages()) {
        const std::string& language = listed.name;
        CAPTURE(language);
        const Chosen chosen(language);
        REQUIRE(Language::state.LangFile.ends_with("\\" + language + ".lng"));
        OptionsForm form;
        REQUIRE(form.Load(nullptr));
        Language::GetLanguageStringsForForm(form);
        for (const char* name : {"Label6", "Frame1", "Label1", "OptionSync", "CheckT", "ButtonHelp"}) {
            CAPTURE(name);
            const std::string text = Language::GetLanguageString("FormOlAddInOptions", name);
            CHECK_FALSE(text.empty());
            CHECK((form.Text(name) == Letters(text.substr(0, text.find('|')))));
        }
        CHECK((form.Text("ButtonCancel") == Letters(Language::GetLanguageString("Misc", "Cancel"))));
        CHECK_FALSE(form.ToolTip("TextDelay").empty());
        CHECK((form.ToolTip("OptionDlg") == Letters(form.The("OptionDlg").ToolTip())));
        wchar_t caption[100] = {};
        GetWindowTextW(form.Window(), caption, static_cast<int>(std::size(caption)));
        captions.emplace_back(caption);
        CHECK((captions.back() == Letters(Language::GetLanguageString("FormOlAddInOptions", "FormOlAddInOptions"))));
    }
    std::sort(captions.begin(), captions.end());
    CHECK(std::adjacent_find(captions.begin(), captions.end()) == captions.end());
}

TEST_CASE("Czech and Polish texts are shown in fonts of their character set, others in the form's own") {
    for (const ListedLanguage& listed : ListedLanguages()) {
        const std::string& language = listed.name;
        CAPTURE(language);
        const Chosen chosen(language);
        OptionsForm form;
        REQUIRE(form.Load(nullptr));
        const BYTE designed = form.CharSet("Label1");
        Language::GetLanguageStringsForForm(form);
        const bool centralEurope = listed.codePage == 1250;
        CHECK(form.CharSet("Label1") == (centralEurope ? EASTEUROPE_CHARSET : designed));
        CHECK(form.CharSet("TextDelay") == (centralEurope ? EASTEUROPE_CHARSET : designed));
    }
}
