#include "check/FormCheck.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "check/Mending.h"
#include "check/Reading.h"
#include "config/IniText.h"
#include "platform/Beside.h"
#include "platform/ClipboardText.h"
#include "platform/MessageBox.h"
#include "platform/Process.h"
#include "platform/Text.h"
#include "platform/forms/Design.h"

using platform::Control;
using platform::ControlKind;

namespace Check {
namespace {

namespace Style = platform::ControlStyle;

// scripts/tables.py reads these rows as text: literals and names only.
constexpr platform::ControlSpec controls[] = {
    {"Picture1", ControlKind::PictureBox},
    {"LabelSummary", ControlKind::Label, Style::Centred | Style::Verbatim},
    {"ListFindings", ControlKind::ListBox},
    {"LabelDetails", ControlKind::Label},
    {"TextDetails", ControlKind::TextBox, Style::MultiLine | Style::ReadOnly},
    {"ButtonRepair", ControlKind::Button},
    {"ButtonRepairAll", ControlKind::Button},
    {"ButtonAgain", ControlKind::Button},
    {"ButtonCopy", ControlKind::Button},
    {"ButtonHelp", ControlKind::Button},
    {"ButtonClose", ControlKind::Button, Style::Cancel},
    {"TimerLook", ControlKind::Timer},
};
constexpr const char* buttons[] = {"ButtonRepair", "ButtonRepairAll", "ButtonAgain",
                                   "ButtonCopy",   "ButtonHelp",      "ButtonClose"};

constexpr std::int32_t lookInterval = 50;  // milliseconds
constexpr std::int32_t helpKey = 112;      // F1
constexpr std::int32_t yesNoQuestion = 0x24, information = 0x40, yes = 6;

// The design, at 96 dots an inch.
constexpr std::int32_t margin = 12, gap = 8, pictureSide = 32, listHeight = 216, detailsHeight = 112, least = 560;
constexpr std::int32_t buttonHeight = 25, buttonGap = 6, buttonPadding = 18;

}  // namespace

struct FormCheck::Looking {
    std::atomic<bool> done{false};
    Snapshot snapshot;
};

namespace {
std::atomic<const char*> step{""};  // the key of its text

// A language file's line break is a CR alone.
std::string ForBox(const std::string& text) {
    return platform::Replace(platform::Replace(text, "\r\n", "\n"), "\r", "\n");
}
}  // namespace

Lookup TextsOf(const Snapshot& snapshot) {
    return [&snapshot](std::string_view key) {
        return std::string(IniText::Read(snapshot.language.text, "FormCheck", key).value_or(""));
    };
}

FormCheck::FormCheck() : Form("FormCheck", controls) {
    The("TimerLook").on.tick = [this] { ShowProgress(); };
    The("ListFindings").on.click = [this] { ShowDetails(); };
    The("ButtonRepair").on.click = [this] { ButtonRepair_Click(); };
    The("ButtonRepairAll").on.click = [this] { ButtonRepairAll_Click(); };
    The("ButtonAgain").on.click = [this] { LookAgain(); };
    The("ButtonCopy").on.click = [this] { ButtonCopy_Click(); };
    The("ButtonHelp").on.click = [this] { ButtonHelp_Click(); };
    The("ButtonClose").on.click = [this] { Hide(); };
}

FormCheck::~FormCheck() { Unload(); }

int FormCheck::Run() {
    if (Load(nullptr)) ShowModal();
    return ExitCode(findings_);
}

void FormCheck::OnLoad() {
    The("TimerLook").SetInterval(lookInterval);
    ShowTexts();
    Arrange();
    LookAgain();
    The("ListFindings").TakeFocus();
}

bool FormCheck::OnKeyDown(std::int32_t key) {
    if (key != helpKey) return false;
    ButtonHelp_Click();
    return true;
}

std::string FormCheck::Text(const char* key, const std::vector<std::string>& fill) const {
    return TextFor(TextsOf(snapshot_), key, fill);
}

// Captions, in the character set of the language.
void FormCheck::ShowTexts() {
    SetCaption(Text("FormCheck"));
    The("LabelDetails").SetCaption(Text("LabelDetails"));
    for (const char* button : buttons) The(button).SetCaption(Text(button));
    const std::string charSet(IniText::Read(snapshot_.language.text, "Info", "CharSet").value_or(""));
    if (!charSet.empty()) SetFontCharSet(platform::ValLong(charSet));
}

// --- looking

void FormCheck::LookAgain() {
    if (looking_) return;
    looking_ = new Looking;
    for (const char* button : {"ButtonRepair", "ButtonRepairAll", "ButtonAgain", "ButtonCopy"})
        The(button).SetEnabled(false);
    The("TimerLook").SetEnabled(true);
    platform::RunBeside([looking = looking_] {
        looking->snapshot = ReadSnapshot([](const char* key) { step = key; });
        looking->done = true;
    });
    ShowProgress();
}

void FormCheck::ShowProgress() {
    if (!looking_) return;
    if (!looking_->done) {
        const char* const key = step;
        return static_cast<void>(The("LabelSummary").SetCaption(Text("Checking", {*key ? Text(key) : std::string()})));
    }
    The("TimerLook").SetEnabled(false);
    snapshot_ = std::move(looking_->snapshot);
    delete std::exchange(looking_, nullptr);
    findings_.clear();
    std::vector<Finding> found = Judge(snapshot_);
    for (const Sign sign : {Sign::Fault, Sign::Hint, Sign::Fine}) {
        for (Finding& finding : found) {
            if (finding.sign == sign) findings_.push_back(std::move(finding));
        }
    }
    ShowTexts();
    Arrange();
    ShowFindings();
}

void FormCheck::ShowFindings() {
    const Lookup texts = TextsOf(snapshot_);
    std::vector<std::string> lines;
    bool mendable = false;
    for (const Finding& finding : findings_) {
        lines.push_back(TextFor(texts, SignKey(finding.sign)) + " - " + SentencesOf(texts, finding).found);
        mendable = mendable || !finding.mend.empty();
    }
    The("ListFindings").SetList(std::move(lines));
    The("ListFindings").SetListIndex(0);
    The("LabelSummary").SetCaption(Summary(findings_, texts));
    const Sign worst = Worst(findings_);
    The("Picture1").SetPicture(worst == Sign::Fine ? "*information" : worst == Sign::Hint ? "*warning" : "*error");
    for (const char* button : {"ButtonAgain", "ButtonCopy"}) The(button).SetEnabled(true);
    The("ButtonRepairAll").SetEnabled(mendable);
    The("ButtonHelp").SetEnabled(!ManualPage().empty());
    ShowDetails();
}

const Finding* FormCheck::Selected() {
    const std::int32_t line = The("ListFindings").ListIndex();
    return line >= 0 && static_cast<std::size_t>(line) < findings_.size() ? &findings_[static_cast<std::size_t>(line)]
                                                                          : nullptr;
}

void FormCheck::ShowDetails() {
    const Finding* const finding = Selected();
    if (!finding) return;
    const Sentences sentences = SentencesOf(TextsOf(snapshot_), *finding);
    std::string text = sentences.found + "\r\n\r\n" + sentences.meaning;
    if (!finding->mend.empty()) text += "\r\n\r\n" + Text("Changes") + "\r\n" + Describe(finding->mend);
    if (finding->mend.empty() && finding->sign != Sign::Fine) text += "\r\n\r\n" + Text("NoRepair");
    The("TextDetails").SetText(text);
    The("ButtonRepair").SetEnabled(!looking_ && !finding->mend.empty());
}

// --- buttons

void FormCheck::ButtonRepair_Click() {
    if (const Finding* const finding = Selected()) Repair(finding->mend);
}

void FormCheck::ButtonRepairAll_Click() {
    std::vector<Change> changes;
    for (const Finding& finding : findings_) {
        if (!finding.chosenByUser) changes.insert(changes.end(), finding.mend.begin(), finding.mend.end());
    }
    Repair(changes);
}

// Everything that will change is shown before.
void FormCheck::Repair(const std::vector<Change>& changes) {
    if (changes.empty()) return Tell("NothingToRepair");
    const std::string undo = UndoFileFor(snapshot_);
    const std::string question = Text("AskRepair", {Describe(changes), undo});
    if (platform::ShowMessageBox(ForBox(question), yesNoQuestion, Caption()) != yes) return;
    const Mended mended = Mend(changes, undo);
    Tell(!mended.undoWritten ? "UndoFailed" : mended.all ? "Repaired" : "RepairFailed", {undo});
    LookAgain();
}

void FormCheck::Tell(const char* key, const std::vector<std::string>& fill) {
    platform::ShowMessageBox(ForBox(Text(key, fill)), information, Caption());
}

void FormCheck::ButtonCopy_Click() {
    Tell(platform::PutTextOnClipboard(Report(snapshot_, findings_, TextsOf(snapshot_))) ? "Copied" : "NotCopied");
}

std::string FormCheck::ManualPage() const {
    const std::string folder = FolderOf(snapshot_.language.file) + "Manual\\";
    for (const std::string& language : {snapshot_.language.chosen, std::string("English")}) {
        std::string page = folder + language + "\\Trouble.htm";
        if (platform::LookAtFile(page).found == Found::There) return page;
    }
    return {};
}

void FormCheck::ButtonHelp_Click() {
    const std::string page = ManualPage();
    if (!page.empty()) platform::StartDocument(page, {}, platform::Show::Normal);
}

// --- places

void FormCheck::Arrange() {
    const auto widthOf = [&](const char* name) {
        return std::max(Scaled(platform::buttonWidthAt96),
                        TextSize(The(name), The(name).Caption()).width + Scaled(buttonPadding));
    };
    std::int32_t row = -Scaled(buttonGap);
    for (const char* name : buttons) row += widthOf(name) + Scaled(buttonGap);
    const std::int32_t left = Scaled(margin), width = std::max(Scaled(least), row);
    const std::int32_t line = TextSize(The("LabelDetails"), "X").height;
    std::int32_t top = Scaled(margin);
    const auto place = [&](const char* name, std::int32_t height, std::int32_t below) {
        The(name).SetPosition({left, top, width, height});
        top += height + below;
    };
    const std::int32_t beside = Scaled(pictureSide + margin);
    The("Picture1").SetPosition({left, top, Scaled(pictureSide), Scaled(pictureSide)});
    The("LabelSummary").SetPosition({left + beside, top, width - beside, Scaled(pictureSide)});
    top += Scaled(pictureSide + gap);
    place("ListFindings", Scaled(listHeight), Scaled(gap));
    place("LabelDetails", line, Scaled(gap) / 2);
    place("TextDetails", Scaled(detailsHeight), Scaled(margin));
    std::int32_t at = left + width - row;
    for (const char* name : buttons) {
        The(name).SetPosition({at, top, widthOf(name), Scaled(buttonHeight)});
        at += widthOf(name) + Scaled(buttonGap);
    }
    SetInsideSize({width + 2 * left, top + Scaled(buttonHeight + margin)});
    Center();
}

}  // namespace Check
