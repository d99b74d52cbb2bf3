#include "day/Day.h"

#include <span>

#include "day/Ribbon.h"
#include "testing/MenuTable.h"

namespace program::day {
namespace {

constexpr const char* mark = "<!CVOutlookAddIn.Connect>";
constexpr int minimised = 2;       // the show state of Windows
constexpr DWORD settleTime = 900;  // after it no further start is expected: three times the add-in's own delay

void Collect(const std::vector<standin::ControlView>& controls, std::vector<int>& own) {
    for (const standin::ControlView& control : controls) {
        if (control.onAction == mark) own.push_back(control.instance);
        Collect(control.entries, own);
    }
}

bool ChooseOnBar(const Stage& stage, standin::Window window, Entry entry) {
    const standin::ControlView menu = Menu(stage, window);
    const std::size_t place = MenuPlace(entry);
    return place < menu.entries.size() && stage.Choose(window, menu, menu.entries[place].instance);
}

bool ChooseOnRibbon(const Stage& stage, standin::Window window, Entry entry) {
    return stage.PressRibbon(window, OnRibbon(stage, window, menuOnRibbon).control.id) &&
           stage.PressRibbon(window, OnRibbon(stage, window, entry).control.id);
}

using Station = void (*)(const Stage&);
constexpr Station withBars[] = {Connection,
                                Bars,
                                ContactsFolder,
                                SeveralContacts,
                                OneContact,
                                TaskAndAppointment,
                                SynchroniseWithDialog,
                                ChangeOptions,
                                SynchroniseAtOnce,
                                LeaveAndClearOptions,
                                OtherCommands,
                                Log,
                                InfoBox,
                                SecondExplorer,
                                Quit};
constexpr Station withRibbon[] = {Connection,    ExplorerRibbon,    ContactsRibbon,       SeveralContacts,
                                  ContactsMenu,  OneContact,        TaskAndAppointment,   SynchroniseWithDialog,
                                  ChangeOptions, SynchroniseAtOnce, LeaveAndClearOptions, OtherCommands,
                                  Log,           InfoBox,           SecondExplorerRibbon, Quit};

}  // namespace

standin::Window FirstWindow(const Stage& stage) { return stage.Outlook().Windows().at(0); }

standin::ControlView Menu(const Stage& stage, standin::Window window) {
    for (const standin::ControlView& control : stage.Outlook().Controls(window, "Menu Bar"))
        if (!control.builtIn && control.menuName == "Corvella") return control;
    return {};
}

standin::ControlView OwnButton(const Stage& stage, standin::Window window, const std::string& tag) {
    const standin::ControlView found = stage.Outlook().FindTag(window, tag);
    return found.onAction == mark ? found : standin::ControlView{};
}

std::vector<int> OwnControls(const Stage& stage, standin::Window window) {
    std::vector<int> own;
    for (const standin::BarView& bar : stage.Outlook().Bars(window)) Collect(bar.controls, own);
    return own;
}

void Choose(const Stage& stage, standin::Window window, Entry entry) {
    const bool chosen = HasRibbon(stage) ? ChooseOnRibbon(stage, window, entry) : ChooseOnBar(stage, window, entry);
    if (!chosen) stage.Check(std::string("entry ") + entry + " of the menu can be chosen", false);
}

void Press(const Stage& stage, standin::Window window, Button button) {
    const bool synchronise = button == Button::ToSynchronise;
    const char* onRibbon = synchronise ? synchroniseOnRibbon : sendOnRibbon;
    const bool pressed = HasRibbon(stage)
                             ? stage.PressRibbon(window, OnRibbon(stage, window, onRibbon).control.id)
                             : stage.Press(window, OwnButton(stage, window, synchronise ? "103" : "107").instance);
    if (!pressed) stage.Check(std::string("the button ") + onRibbon + " can be pressed", false);
}

Held HeldNow(const Stage& stage) { return {stage.Outlook().References(), stage.Outlook().Advises()}; }

void CheckCloses(const Stage& stage, standin::Window window, const Held& before) {
    PostMessageA(stage.FrameOf(window), WM_CLOSE, 0, 0);
    stage.Pump(300);
    stage.Check("it closes", !stage.Outlook().Exists(window));
    const Held now = HeldNow(stage);
    stage.Check("and everything of it is let go: " + std::to_string(before.references) + " references and " +
                    std::to_string(before.sinks) + " sinks, as before",
                now.references == before.references && now.sinks == before.sinks);
}

CorvellaStart ExpectStart(const Stage& stage, const std::string& by, const std::string& arguments,
                          const std::function<void()>& action) {
    const std::size_t before = StartsOfCorvella().size();
    const DWORD begun = GetTickCount();
    action();
    const bool started = WaitUntil(stage, [&] { return StartsOfCorvella().size() > before; }).has_value();
    const DWORD waited = GetTickCount() - begun;
    if (started) stage.Pump(settleTime);
    const std::vector<CorvellaStart> starts = StartsOfCorvella();
    stage.Check(by + " started Corvella once", starts.size() == before + 1);
    if (starts.size() <= before) return {};
    const CorvellaStart& start = starts[before];
    stage.Say("         " + start.commandLine + "   (after " + std::to_string(waited) + " ms, show state " +
              std::to_string(start.show) + ")");
    stage.Check("with the arguments \"" + arguments + "\", minimised",
                start.commandLine == "\"" + Folder() + "\\Corvella.exe\" " + arguments && start.show == minimised);
    return start;
}

void ExpectNoStart(const Stage& stage, const std::string& by, const std::function<void()>& action) {
    const std::size_t before = StartsOfCorvella().size();
    action();
    stage.Pump(settleTime);
    stage.Check(by + " started nothing", StartsOfCorvella().size() == before);
}

void Play(const Stage& stage) {
    stage.Pump(500);  // the windows come to rest
    const std::span<const Station> stations = HasRibbon(stage) ? std::span<const Station>(withRibbon) : withBars;
    for (const Station station : stations) station(stage);
}

}  // namespace program::day
