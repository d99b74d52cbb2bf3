// Pictures of the question box: question_screens, with the folder for them in CV_PICTURES and the languages, parted by
// blanks, in CV_LANGUAGES. The resolution is that of the desktop.
#include <doctest.h>
#include <windows.h>

#include <cstdlib>
#include <sstream>
#include <string>

#include "question/QuestionBox.h"
#include "support/AddInHouse.h"
#include "support/FormDriver.h"
#include "support/WindowPicture.h"
#include "support/Windows2000Colors.h"

namespace {

std::string Setting(const char* name, const char* otherwise) {
    const char* const value = std::getenv(name);
    return value ? value : otherwise;
}

struct Box {
    const char* name;
    std::int32_t questionId, buttons;
    const char *prompt, *title, *input, *helpTopic;
};

const std::string longText =
    "Corvella was not closed properly the last time. The log file will help to find the cause, if you send it together "
    "with a short description of what you did.\r\rDo you want to send it now? ";

const Box boxes[] = {
    {"message", -1, 0x40, "1:Debug1", "", "-1", ""},
    {"question", -1, 0xA3, "3 items were changed both in Outlook and on the phone.|&Outlook wins|&Phone wins||&All", "",
     "-1", ""},
    {"link", static_cast<std::int32_t>(0x90000010), 0x31,
     "The help is not installed. It can be had at http://www.corvella.com/download/help", "", "-1", "AddInOutl.htm"},
    {"input", -2, 1, "Name of the new phone book:", "", "Private numbers", ""},
    {"masked", -2, 0x800001, "PIN of the phone:", "Phone locked", "1234", ""},
    {"long", static_cast<std::int32_t>(0x90000010), 0x34, nullptr, "", "-1", ""},
};

// The window of the box that is shown, which is the active one.
void ShowAndSave(const Box& box, const std::string& file) {
    std::string prompt = box.prompt ? box.prompt : "";
    if (!box.prompt) {
        for (int i = 0; i < 9; ++i) prompt += longText;
    }
    if (prompt.starts_with("1:")) prompt = Language::GetLanguageString("Messages", prompt.substr(2));
    bool saved = false, cancelled = false;
    FormDriver driver([] { return QuestionBox::formLoaded && GetActiveWindow() != nullptr; }, [] {},
                      {[] {}, [] {}, [] {},
                       [&] {
                           const HWND window = GetActiveWindow();
                           saved = SaveWindowPicture(window, file);
                           PostMessageA(window, WM_COMMAND, IDCANCEL, 0);
                           PostMessageA(GetFocus(), WM_CHAR, 'j', 1);
                           FormDriver::Key(VK_RETURN);
                       }});
    QuestionBox::MsgInputBox(box.questionId, prompt, box.buttons, box.title, box.input, 0, cancelled, "", "", "", "",
                             box.helpTopic);
    CHECK(saved);
}

}  // namespace

TEST_CASE("pictures of the question box") {
    if (const auto aware = GetProcAddress(GetModuleHandleA("user32.dll"), "SetProcessDPIAware")) {
        reinterpret_cast<BOOL(WINAPI*)()>(aware)();
    }
    const Windows2000Colors theirs;
    const HDC screen = GetDC(nullptr);
    const std::string dots = std::to_string(GetDeviceCaps(screen, LOGPIXELSY));
    ReleaseDC(nullptr, screen);
    std::istringstream languages(Setting("CV_LANGUAGES", "English"));
    for (std::string language; languages >> language;) {
        const AddInHouse house(language);
        for (const Box& box : boxes) {
            QuestionBox::memory = {};
            ShowAndSave(box,
                        Setting("CV_PICTURES", ".") + "/question-" + box.name + "-" + language + "-" + dots + ".bmp");
        }
    }
}
