// The stations of the add-in's own windows, read and answered by a person at the keyboard.
#include "day/Day.h"
#include "day/Person.h"

namespace program::day {
namespace {

// The options dialog as it is seen.
struct OptionsSeen {
    bool shown = false, closed = false;
    std::string title, delay, remain, profile;
    bool atOnce = false, withDialog = false;
    int profiles = 0;
};

bool IsKind(HWND window, const char* className) { return lstrcmpiA(ClassOf(window).c_str(), className) == 0; }

LONG ButtonKind(HWND window) { return GetWindowLongA(window, GWL_STYLE) & BS_TYPEMASK; }

bool IsOption(HWND window) {
    return IsKind(window, "Button") &&
           (ButtonKind(window) == BS_AUTORADIOBUTTON || ButtonKind(window) == BS_RADIOBUTTON);
}

std::vector<HWND> Those(HWND dialog, const std::function<bool(HWND)>& fits) {
    std::vector<HWND> found;
    for (const HWND child : ChildrenOf(dialog))
        if (fits(child)) found.push_back(child);
    return found;
}

void Read(HWND dialog, OptionsSeen& seen) {
    const auto fields = Those(dialog, [](HWND child) { return IsKind(child, "Edit"); });
    const auto options = Those(dialog, IsOption);
    const auto lists = Those(dialog, [](HWND child) { return IsKind(child, "ComboBox"); });
    if (fields.size() != 2 || options.size() != 2 || lists.size() != 1) return;
    const auto isSet = [](HWND option) { return SendMessageA(option, BM_GETCHECK, 0, 0) == BST_CHECKED; };
    seen.shown = true;
    seen.title = TextOf(dialog);
    seen.delay = TextOf(fields[0]);
    seen.remain = TextOf(fields[1]);
    seen.atOnce = isSet(options[0]);
    seen.withDialog = isSet(options[1]);
    seen.profile = TextOf(lists[0]);
    seen.profiles = static_cast<int>(SendMessageA(lists[0], CB_GETCOUNT, 0, 0));
}

// Opens the dialog from the menu; `first` and `last` are how it was seen before and after `keys`, and `answer` is the
// key that closes it.
void UseOptions(const Stage& stage, OptionsSeen& first, OptionsSeen& last, const Person::Task& keys, WORD answer) {
    first = last = {};
    Person person(stage, [&](Person& self) {
        const HWND dialog = self.AwaitDialog();
        if (!dialog) return;
        Read(dialog, first);
        keys(self);
        Read(dialog, last);
        self.Press(answer);
        last.closed = self.AwaitGone(dialog);
    });
    Choose(stage, FirstWindow(stage), Options);
    person.Wait();
    stage.Check("the menu opened it", first.shown);
}

void ShowStored(const Stage& stage) {
    std::string line = "        ";
    for (const char* name : {"Delay", "Remain", "NoDlg", "Profile"})
        line += std::string(" \"") + name + "\": " + Shown(Value(outlookKey, name)) + " ";
    stage.Say(line);
}

struct BoxSeen {
    HWND window = nullptr;
    std::string kind, title, text;
    bool messageBox = false, closed = false;
};

BoxSeen AnswerInfo(const Stage& stage) {
    BoxSeen seen;
    Person person(stage, [&](Person& self) {
        seen.window = self.AwaitDialog();
        if (!seen.window) return;
        seen.kind = ClassOf(seen.window);
        seen.title = TextOf(seen.window);
        seen.messageBox = GetDlgItem(seen.window, 0xFFFF) != nullptr;  // where Windows' own has its text
        for (const HWND child : ChildrenOf(seen.window)) seen.text += TextOf(child) + "\n";
        self.Picture("info");
        self.Press(VK_RETURN);
        seen.closed = self.AwaitGone(seen.window);
    });
    Choose(stage, FirstWindow(stage), Info);
    person.Wait();
    return seen;
}

}  // namespace

void ChangeOptions(const Stage& stage) {
    stage.Section("The options dialog: changed with the keyboard");
    OptionsSeen first, last;
    UseOptions(
        stage, first, last,
        [](Person& self) {
            self.Write("7");
            self.Press(VK_TAB);
            self.Write("45");
            self.Press(VK_TAB);
            self.Press(VK_UP);
            self.Press(VK_TAB);
            self.Press(VK_DOWN);
            self.Picture("options");
        },
        VK_RETURN);
    stage.Check("its title is that of the language",
                first.title == LanguageText("FormOlAddInOptions", "FormOlAddInOptions"));
    stage.Check("it showed nothing stored: empty fields, with dialog, automatic profile",
                first.delay.empty() && first.remain.empty() && first.withDialog && !first.atOnce &&
                    first.profile == LanguageText("FormSMSPortSettings", "auto"));
    stage.Check("the list offers the automatic choice and the two profiles of Corvella's folder", first.profiles == 3);
    stage.Check("the keys wrote 7 and 45, chose \"at once\" and another profile",
                last.delay == "7" && last.remain == "45" && last.atOnce && last.profile != first.profile);
    stage.Check("Enter closed it", last.closed);
    ShowStored(stage);
    stage.Check("the registry has \"Delay\" 7 and \"Remain\" 45",
                Value(outlookKey, "Delay") == "7" && Value(outlookKey, "Remain") == "45");
    stage.Check("and \"NoDlg\" 1", Value(outlookKey, "NoDlg") == "1");
    stage.Check("and the profile that was shown",
                !last.profile.empty() && Value(outlookKey, "Profile") == last.profile);
}

void LeaveAndClearOptions(const Stage& stage) {
    stage.Section("The options dialog: left with Escape, then cleared");
    OptionsSeen first, last;
    const auto profile = Value(outlookKey, "Profile");
    UseOptions(
        stage, first, last, [](Person& self) { self.Write("99"); }, VK_ESCAPE);
    stage.Check("it showed what was stored",
                first.delay == "7" && first.remain == "45" && first.atOnce && first.profile == profile.value_or(""));
    stage.Check("after Escape the registry is as before", last.closed && Value(outlookKey, "Delay") == "7" &&
                                                              Value(outlookKey, "NoDlg") == "1" &&
                                                              Value(outlookKey, "Profile") == profile);
    UseOptions(
        stage, first, last,
        [](Person& self) {
            self.Write("");
            self.Press(VK_TAB);
            self.Write("");
            self.Press(VK_TAB);
            self.Press(VK_DOWN);
            self.Press(VK_TAB);
            self.Press(VK_UP);
            self.Press(VK_UP);
        },
        VK_RETURN);
    ShowStored(stage);
    stage.Check("cleared, it leaves no value behind", last.closed && !Value(outlookKey, "Delay") &&
                                                          !Value(outlookKey, "Remain") && !Value(outlookKey, "NoDlg") &&
                                                          !Value(outlookKey, "Profile"));
}

void InfoBox(const Stage& stage) {
    stage.Section("The info box");
    const BoxSeen seen = AnswerInfo(stage);
    if (!stage.Check("the menu opened it", seen.window != nullptr)) return;
    const bool old = stage.Outlook().Version() < outlook2002;
    stage.Say("         " + seen.kind + " \"" + seen.title + "\"");
    stage.Check("it has the version of the DLL, " + AddInVersion(),
                !AddInVersion().empty() && seen.text.find("Version " + AddInVersion()) != std::string::npos);
    stage.Check("and \"Corvella AddIn for Outlook 2000/02(XP)/03/2007 beta 2\"",
                seen.text.find("Corvella AddIn for Outlook 2000/02(XP)/03/2007 beta 2") != std::string::npos);
    stage.Check(old ? "it is the system's message box" : "it is the question box", seen.messageBox == old);
    stage.Check("Enter closed it", seen.closed);
    stage.Check("Outlook takes input again", IsWindowEnabled(stage.FrameOf(FirstWindow(stage))) != 0);
}

}  // namespace program::day
