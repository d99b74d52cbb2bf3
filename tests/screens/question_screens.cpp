// Pictures of the question box: question_screens, with the folder for them in CV_PICTURES and the languages, separated
// by blanks, in CV_LANGUAGES. The resolution is that of the desktop.
#include <doctest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "platform/Text.h"
#include "question/QuestionBox.h"
#include "screens/Surroundings.h"
#include "testing/AddInHouse.h"
#include "testing/FormDriver.h"
#include "testing/WholeForm.h"
#include "testing/WindowPicture.h"
#include "testing/Windows2000Colours.h"

namespace {

// What the boxes say, in the code page of the language.
struct Texts {
    const char *language, *conflict, *help, *phoneBook, *content, *pin, *locked, *notClosed;
};
const Texts texts[] = {
    {"English",
     "3 items were changed both in Outlook and on the phone. Which of them shall be kept?|&Those in Outlook|Those on "
     "the &phone||&All",
     "The help is not installed. It can be had at http://www.corvella.com/download/help and takes 2 MB.",
     "Name of the new phone book:", "Private numbers", "PIN of the phone:", "Phone locked",
     "Corvella was not closed properly the last time. The log file will help to find the cause, if you send it "
     "together with a short description of what you did.\r\rDo you want to send it now? "},
    {"Deutsch",
     "3 Eintr\xE4ge wurden sowohl in Outlook als auch auf dem Telefon ge\xE4ndert. Welche sollen behalten "
     "werden?|Eintr\xE4ge in &Outlook \xFC\x62\x65rnehmen|Eintr\xE4ge auf dem &Telefon \xFC\x62\x65rnehmen||F\xFCr "
     "&alle "
     "weiteren Eintr\xE4ge",
     "Die Hilfe ist nicht installiert. Sie finden sie unter http://www.corvella.com/download/help (2 MB).",
     "Name des neuen Telefonbuchs:", "Private Nummern", "PIN des Telefons:", "Telefon gesperrt",
     "Corvella wurde beim letzten Mal nicht ordnungsgem\xE4\xDF \x62\x65\x65ndet. Die Protokolldatei hilft, die "
     "Ursache "
     "zu finden, wenn Sie sie mit einer kurzen Beschreibung senden.\r\rM\xF6\x63hten Sie sie jetzt senden? "},
    {"Polski",
     "3 elementy zmieniono zar\xF3wno w programie Outlook, jak i w telefonie. Kt\xF3re zachowa\xE6?|Elementy z "
     "programu "
     "&Outlook|Elementy z &telefonu||&Wszystkie",
     "Pomoc nie jest zainstalowana. Mo\xBFna j\xB9 pobra\xE6 ze strony http://www.corvella.com/download/help (2 MB).",
     "Nazwa nowej ksi\xB9\xBFki telefonicznej:", "Numery prywatne", "Kod PIN telefonu:", "Telefon zablokowany",
     "Program Corvella nie zosta\xB3 ostatnio poprawnie zamkni\xEAty. Plik dziennika pomo\xBF\x65 znale\x9F\xE6 "
     "przyczyn\xEA.\r\r\x43zy chcesz go teraz wys\xB3\x61\xE6? "},
};

const char* const fourLongCaptions =
    "|Alle ge\xE4nderten Eintr\xE4ge aus &Outlook \xFC\x62\x65rnehmen|Alle ge\xE4nderten Eintr\xE4ge vom &Telefon "
    "\xFC\x62\x65rnehmen|Synchronisierung a&bbrechen und nichts \xE4ndern|F\xFCr &alle weiteren Eintr\xE4ge so "
    "verfahren";

struct Box {
    const char* name;
    std::int32_t questionId, buttons;
    std::string prompt, title, input, helpTopic;
};

std::vector<Box> BoxesIn(const std::string& language) {
    const Texts* said = &texts[0];
    for (const Texts& row : texts) {
        if (row.language == language) said = &row;
    }
    std::string message = Language::GetLanguageString("Messages", "Debug1");
    message =
        platform::Replace(platform::Replace(message, "%f", "C:\\Programs\\Corvella\\CorvellaAddIn.dbg.xml"), "%e", "");
    std::string paragraphs;
    for (int i = 0; i < 12; ++i) paragraphs += said->notClosed;
    constexpr std::int32_t remembered = static_cast<std::int32_t>(0x90000010);
    constexpr std::size_t crowdedLength = 2000;
    std::string crowded = std::string(said->help) + "\r\r";
    while (crowded.size() < crowdedLength) crowded += said->notClosed;
    crowded.resize(crowdedLength);
    return {
        {"message", -1, 0x31, message, "", "-1", ""},
        {"question", -1, 0xA3, said->conflict, "", "-1", ""},
        {"link", remembered, 0x41, said->help, "", "-1", "AddInOutl.htm"},
        {"input", -2, 1, said->phoneBook, "", said->content, ""},
        {"masked", -2, 0x800001, said->pin, said->locked, "1234", ""},
        {"long", remembered, 0x34, paragraphs, "", "-1", ""},
        {"crowded", remembered, 0xB3, crowded + fourLongCaptions, "", "-1", ""},
    };
}

// The window of the box that is shown, which is the active one.
void ShowAndSave(const Box& box, const std::string& file) {
    std::string prompt = box.prompt;
    bool saved = false, cancelled = false;
    FormDriver driver([] { return QuestionBox::formLoaded && GetActiveWindow() != nullptr; }, [] {},
                      {[] {}, [] {}, [] {},
                       [&] {
                           const HWND window = GetActiveWindow();
                           if (QuestionBox::FormQuestion* const form = QuestionBox::ShownForm())
                               CheckFormIsWhole(*form);
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
    const std::string dots = DotsAnInch();
    const Windows2000Colours theirs;
    for (const std::string& language : Languages()) {
        const AddInHouse house(language);
        for (const Box& box : BoxesIn(language)) {
            QuestionBox::memory = {};
            ShowAndSave(box, PictureFile(std::string("question-") + box.name, language, dots));
        }
    }
}
