// Pictures of the options dialog: options_screens, with the folder for them in CV_PICTURES and the languages, parted by
// blanks, in CV_LANGUAGES. The resolution is that of the desktop.
#include <doctest.h>
#include <windows.h>

#include <cstdlib>
#include <sstream>
#include <string>

#include "bridge/FormOlAddInOptions.h"
#include "bridge/OlVersion.h"
#include "config/InifileCV.h"
#include "support/AddInHouse.h"
#include "support/FormDriver.h"
#include "support/WholeForm.h"
#include "support/WindowPicture.h"
#include "support/Windows2000Colors.h"

namespace {

std::string Setting(const char* name, const char* otherwise) {
    const char* const value = std::getenv(name);
    return value ? value : otherwise;
}

void PutExamples(const AddInHouse& house) {
    const char* const key = "Software\\Quillmark\\Corvella\\Outlook";
    PrivateRegistry::PutText(HKEY_CURRENT_USER, key, "Delay", "5");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, key, "Remain", "30");
    InifileCV::state = {};
    InifileCV::state.IniFiles = house.folder.Path();
    InifileCV::state.IniFilesRead = true;
}

void ShowAndSave(const std::string& file) {
    FormOlAddInOptions& form = FormOlAddInOptions::Shared();
    bool saved = false;
    FormDriver driver([&] { return form.Visible(); }, [&] { form.Hide(); },
                      {[] {}, [] {}, [] {},
                       [&] {
                           CheckFormIsWhole(form);
                           saved = SaveWindowPicture(form.Window(), file);
                       },
                       [] { FormDriver::Key(VK_ESCAPE); }});
    form.Show();
    CHECK(saved);
}

}  // namespace

TEST_CASE("pictures of the options dialog") {
    if (const auto aware = GetProcAddress(GetModuleHandleA("user32.dll"), "SetProcessDPIAware")) {
        reinterpret_cast<BOOL(WINAPI*)()>(aware)();
    }
    const Windows2000Colors theirs;
    const HDC screen = GetDC(nullptr);
    const std::string dots = std::to_string(GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    OlVersion = 11;
    std::istringstream languages(Setting("CV_LANGUAGES", "English"));
    for (std::string language; languages >> language;) {
        const AddInHouse house(language);
        PutExamples(house);
        ShowAndSave(Setting("CV_PICTURES", ".") + "/options-" + language + "-" + dots + ".bmp");
    }
}
