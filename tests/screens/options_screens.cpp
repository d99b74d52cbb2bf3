// Pictures of the options dialog: options_screens, with the folder for them in CV_PICTURES and the languages, separated
// by blanks, in CV_LANGUAGES. The resolution is that of the desktop.
#include <doctest.h>
#include <windows.h>

#include <string>

#include "bridge/FormOlAddInOptions.h"
#include "bridge/OlVersion.h"
#include "config/InifileCV.h"
#include "screens/Surroundings.h"
#include "testing/AddInHouse.h"
#include "testing/FormDriver.h"
#include "testing/WholeForm.h"
#include "testing/WindowPicture.h"
#include "testing/Windows2000Colours.h"

namespace {

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
    const std::string dots = DotsAnInch();
    const Windows2000Colours theirs;
    OlVersion = 11;
    for (const std::string& language : Languages()) {
        const AddInHouse house(language);
        PutExamples(house);
        ShowAndSave(PictureFile("options", language, dots));
    }
}
