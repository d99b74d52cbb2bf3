#include "check/Texts.h"

#include <iterator>

#include "language/LanguageText.h"

namespace Check {
namespace {

struct Text {
    const char* key;
    const char* english;
};

// scripts/tables.py reads these rows as text: literals only.
constexpr Text texts[] = {
    // the window
    {"FormCheck", "Corvella for Outlook: why is it not there?"},
    {"LabelDetails", "&Details:"},
    {"ButtonRepair", "&Repair"},
    {"ButtonRepairAll", "Repair a&ll"},
    {"ButtonAgain", "Check &again"},
    {"ButtonCopy", "&Copy report"},
    {"ButtonHelp", "&Help"},
    {"ButtonClose", "Cl&ose"},
    // the signs and what stands around the findings
    {"SignFine", "Fine"},
    {"SignHint", "Hint"},
    {"SignFault", "FAULT"},
    {"Result0", "Everything is fine."},
    {"Result1", "No fault was found. Hints: %a."},
    {"Result2", "Faults: %a. Hints: %b."},
    {"Checking", "Checking, please wait: %a"},
    {"Changes", "Repair would change:"},
    {"NoRepair", "This program cannot repair it."},
    {"NothingToRepair", "There is nothing that this program could repair."},
    {"AskRepair", "This is changed now:\n\n%a\nWhat was there before is kept in\n%b\n\nDo you want to go on?"},
    {"Repaired", "Repaired. What was there before is in %a."},
    {"RepairFailed",
     "Not everything could be repaired; an administrator may have to do it. What was there before is in %a."},
    {"UndoFailed", "Nothing was changed, because the file %a could not be written."},
    {"Copied", "The report is on the clipboard."},
    {"NotCopied", "The clipboard is in use by another program. Please try again."},
    // the steps while everything is read
    {"StepOutlook", "Outlook"},
    {"StepAddIn", "the add-in's registration"},
    {"StepLists", "Outlook's lists"},
    {"StepCorvella", "Corvella"},
    {"StepSettings", "settings and language"},
    // findings
    {"OutlookFine", "%a (%b bits) is installed.|It loads add-ins like this one."},
    {"OutlookRuns", "%a (%b bits) is running.|What is repaired now takes effect the next time it starts."},
    {"OutlookMissing", "No Outlook was found.|The add-in needs Outlook 2000 or later on this computer."},
    {"OutlookNew", "Only the new Outlook is installed.|It loads no add-ins of this kind. Install the classic Outlook."},
    {"OutlookGone", "%a is registered, but its program is not there: %b|Repair or reinstall Outlook."},
    {"ClassFineUser", "The add-in is registered for you: %a (%b)|Outlook can create it."},
    {"ClassFineMachine", "The add-in is registered for all users: %a (%b)|Outlook can create it."},
    {"ClassMissing",
     "The add-in is not registered for programs with %a bits.|Outlook cannot create it, so there is no menu."},
    {"ClassUnreadable", "The registration for programs with %a bits cannot be read.|Install the add-in again."},
    {"NameMissing", "The name %a leads to no class.|Outlook knows the add-in by this name only, so there is no menu."},
    {"NameUnreadable", "The class of the name %a cannot be read.|Install the add-in again."},
    {"NameOther",
     "The name %a leads to another class: %b|Another add-in has taken the name, and Outlook loads that one."},
    {"LibraryOther", "Another file is registered as the add-in: %a|Outlook loads that file instead of Corvella's."},
    {"LibraryMissing", "The registered file is not there: %a|Outlook cannot load the add-in, so there is no menu."},
    {"LibraryUnreadable",
     "The registered file cannot be read: %a|Outlook cannot load the add-in, so there is no menu."},
    {"LibraryDamaged", "The registered file is damaged: %a|Outlook cannot load it. Install the add-in again."},
    {"LibraryBits",
     "The registered file has %b bits, but Outlook has %c: %a|Outlook cannot load it, so there is no menu."},
    {"LibraryTwice",
     "Two files are registered: %a and %b|Outlook takes the first. Uninstall the one that you do not need."},
    {"LibraryVersion", "The registered add-in has version %a, this program %b.|An update may not be complete."},
    {"EntryFineUser", "Outlook loads the add-in when it starts.|It follows your own entry in the registry."},
    {"EntryFineMachine", "Outlook loads the add-in when it starts.|It follows the entry for all users."},
    {"EntryMissing", "The add-in is not in Outlook's list of add-ins.|Outlook does not know it, so there is no menu."},
    {"EntryOtherView",
     "The add-in is not in the list for Outlook with %a bits, only in the other one.|Outlook does not see it, so there "
     "is no menu."},
    {"EntryUnreadable",
     "The add-in's entry in Outlook's list cannot be read.|Nobody but an administrator can look at it."},
    {"EntryPrivate",
     "Office keeps an old entry of the add-in in a list of its own.|It hides the right one, so there is no menu."},
    {"LoadMissing",
     "The add-in's entry does not say when it is to be loaded (LoadBehavior).|Outlook does not load it, so there is no "
     "menu."},
    {"LoadNoNumber", "LoadBehavior is no number.|Outlook does not load the add-in, so there is no menu."},
    {"Load0", "LoadBehavior is 0: the add-in is switched off.|Outlook does not load it, so there is no menu."},
    {"Load1",
     "LoadBehavior is 1: the add-in is loaded by hand only.|There is no menu after the next start of Outlook."},
    {"Load2",
     "LoadBehavior is 2: Outlook or you have switched the add-in off.|Outlook does so when loading fails. There is no "
     "menu."},
    {"Load8", "LoadBehavior is 8: the add-in is loaded when it is needed.|Nothing asks for it, so there is no menu."},
    {"Load9",
     "LoadBehavior is 9: the add-in is loaded when it is needed.|Nothing asks for it when Outlook starts, so there is "
     "no menu."},
    {"Load16", "LoadBehavior is 16: the add-in is loaded at the next start only.|After that there is no menu."},
    {"LoadOther", "LoadBehavior is %a, which means nothing.|Outlook does not load the add-in, so there is no menu."},
    {"DisabledFine", "Outlook has not disabled the add-in.|None of its lists names it."},
    {"DisabledCrash", "%a has disabled the add-in after a crash (%b).|Outlook does not load it, so there is no menu."},
    {"DisabledSlow",
     "%a has disabled the add-in because something took too long (%b).|Outlook does not load it, so there is no menu."},
    {"DisabledAtStart",
     "%a was ended while it loaded the add-in (%b).|At its next start it may offer to disable the add-in."},
    {"DisabledUnclear",
     "%a has an entry about the add-in that this program does not understand (%b).|It may be disabled: look at the "
     "disabled items in Outlook."},
    {"Crashing", "%a lists the add-in among those that crash.|It may refuse to load it."},
    {"Blocked", "%a is told never to load the add-in (AddinList).|There is no menu."},
    {"PoliciesFine", "No policy forbids the add-in.|Your administrator allows add-ins like this one."},
    {"PolicyBlocked", "A policy forbids this add-in in %a.|Ask your administrator to allow it."},
    {"PolicyNoAddIns", "A policy forbids all add-ins in %a.|Ask your administrator to allow them."},
    {"PolicyOnlyListed",
     "A policy allows only listed add-ins in %a, and this one is not listed.|Ask your administrator to add it."},
    {"PolicyOnlySigned",
     "A policy allows only signed add-ins in %a.|This one has no signature. Ask your administrator."},
    {"SessionFine", "The last session of Outlook ended properly.|Nothing is left of it."},
    {"SessionRuns", "The add-in is at work in Outlook.|It has registered itself as active."},
    {"SessionLeft",
     "The last session of Outlook did not end properly.|The add-in will offer its debug mode at the next start."},
    {"CorvellaFine", "Corvella.exe is in %a|The menu's commands can start it."},
    {"CorvellaTwice", "Commands start Corvella in %a, sending starts it in %b|Uninstall the one that you do not need."},
    {"CorvellaCommands", "The menu's commands look for Corvella.exe in %a, but it is not there.|They start nothing."},
    {"CorvellaSending",
     "After saving, Corvella.exe is looked for in %a, but it is not there.|Nothing is sent to the phone."},
    {"CorvellaMissing", "Corvella.exe is not in %a|The commands start nothing, and nothing is sent to the phone."},
    {"CorvellaUnknown",
     "Nobody has registered where Corvella is.|The commands start nothing, and nothing is sent to the phone."},
    {"CorvellaUnreadable",
     "The path of Corvella in the registry cannot be read.|The commands start nothing. Install Corvella again."},
    {"ListsFine", "No changed items wait for Corvella.|It has taken over everything."},
    {"ListsRecent", "%a changed items wait for Corvella, the last since %b|It takes them over when it starts."},
    {"ListsWaiting", "%a changed items wait for Corvella since %b|It has not taken them over. Start Corvella once."},
    {"ListsUnreadable", "The list of changed items cannot be read.|Items may not reach the phone."},
    {"LanguageFine", "The texts come from %a|The file is there and complete."},
    {"LanguageMissing", "The language file is not there: %a|The texts are English."},
    {"LanguageNone",
     "There is no language file, not even the English one: %a|Most texts are missing. Install the add-in again."},
    {"LanguageUnreadable", "The language file cannot be read: %a|The texts are English."},
    {"LanguageIncomplete", "The language file lacks %b texts: %a|They may be empty. Install the add-in again."},
    {"LanguageLetters",
     "%a needs code page %b, but Windows has %c.|Some letters look wrong: set Windows' language for programs that do "
     "not support Unicode."},
    {"SettingsFine", "The settings are in %a|The file can be read and written."},
    {"SettingsFineProfile", "The settings are in the profile %a|The file can be read and written."},
    {"SettingsRegistry", "The settings are in the registry.|Corvella is set up that way."},
    {"SettingsNone", "There are no settings yet.|They will be made in %a"},
    {"SettingsFolder", "The folder of the settings cannot be written: %a|The add-in will ask for another one."},
    {"SettingsReadOnly", "The settings file cannot be written: %a|Changed settings are lost."},
    {"SettingsUnreadable", "The settings file cannot be read: %a|The add-in uses its defaults."},
    {"SettingsProfile", "The profile's file is not there: %a|The add-in uses the general settings."},
    {"SettingsModeUnreadable",
     "Where the settings are kept cannot be read (SaveIn).|The add-in looks for them in files."},
    {"ControlsFine", "The settings file hides and disables nothing.|All options can be used."},
    {"ControlsHidden", "The settings file hides: %a|Somebody may have wanted it so."},
    {"ControlsDisabled", "The settings file disables: %a|Somebody may have wanted it so."},
    {"LogFine", "Debug mode is off.|No log is written."},
    {"LogOn", "Debug mode is on; the log %a was last written on %b|It makes Outlook slower."},
    {"LogOnEmpty", "Debug mode is on; there is no log yet: %a|It makes Outlook slower."},
    {"LogRegistry", "Debug mode is on and keeps one line in the registry.|It makes Outlook slower."},
    {"LogUnwritable", "Debug mode is on, but the log cannot be written: %a|Nothing is logged."},
    {"PlacementFine", "The buttons are in places that Outlook has.|Nobody has hidden them."},
    {"PlacementBar",
     "%a names the bar %b, which Outlook does not have by itself.|The button is on the bar Standard where there is no "
     "such bar."},
    {"PlacementHiddenBar",
     "%a puts the button on the bar %b, which is hidden at first.|The button is seen only where that bar is shown."},
    {"PlacementPosition", "%a puts the button at position %b, which no bar has.|The button is not there."},
    {"PlacementStyle", "%a is the style %b, which Outlook does not have.|The button may look wrong."},
};

const Text* Find(std::string_view key) {
    for (const Text& text : texts) {
        if (key == text.key) return &text;
    }
    return nullptr;
}

// In one go, so that a path with a "%" in it stays as it is.
std::string Filled(std::string_view text, const std::vector<std::string>& fill) {
    std::string filled;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool mark = text[at] == '%' && at + 1 < text.size() && text[at + 1] >= 'a' && text[at + 1] <= 'c';
        if (!mark) {
            filled.push_back(text[at]);
            continue;
        }
        const auto number = static_cast<std::size_t>(text[++at] - 'a');
        if (number < fill.size()) filled += fill[number];
    }
    return filled;
}

}  // namespace

std::string TextFor(const Lookup& lookup, std::string_view key, const std::vector<std::string>& fill) {
    std::string text = lookup ? lookup(key) : std::string();
    if (text.empty()) {
        const Text* const own = Find(key);
        text = own ? own->english : std::string(key);
    }
    return Filled(LanguageText::Unescape(text), fill);
}

Sentences SentencesOf(const Lookup& lookup, const Finding& finding) {
    std::string text = lookup ? lookup(finding.key) : std::string();
    if (text.empty()) {
        const Text* const own = Find(finding.key);
        text = own ? own->english : finding.key;
    }
    const std::size_t bar = std::min(text.find('|'), text.size());
    const std::string_view whole = text;
    return {Filled(whole.substr(0, bar), finding.fill),
            Filled(bar < whole.size() ? whole.substr(bar + 1) : std::string_view(), finding.fill)};
}

std::vector<std::string_view> AllKeys() {
    std::vector<std::string_view> keys;
    for (const Text& text : texts) keys.emplace_back(text.key);
    return keys;
}

}  // namespace Check
