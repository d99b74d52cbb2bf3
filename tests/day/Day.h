// day/Day.h: a working day in Outlook with the add-in, as stations in the order in which they are played.
//
// Every line that a station prints was observed just then: in the host, in the registry, in the windows of this and of
// other programs, or in the record that the started Corvella wrote. Captions are compared with what Windows' own ini
// functions read in the language file, so that the day is the same in every language.
#pragma once
#include "day/Observed.h"
#include "day/Starts.h"
#include "outlook/program/Stage.h"

namespace program::day {

using standin::FolderKind;
using standin::ItemClass;

// --- what stations share ---

inline constexpr int outlook2000 = 9, outlook2002 = 10, outlook2003 = 11, outlook2007 = 12, outlook2010 = 14;

// The entries of the add-in's menu, by their keys in the language files.
using Entry = const char*;
inline constexpr Entry Synchronise = "mSync", Contacts = "mSync0", Calendar = "mSync1", NewSms = "mNewSMS",
                       Settings = "mSettings", Options = "mOptions", LogFile = "mLogFile", Info = "mAbout";

[[nodiscard]] standin::Window FirstWindow(const Stage& stage);
[[nodiscard]] standin::ControlView Menu(const Stage& stage, standin::Window window);  // the add-in's popup, or none
[[nodiscard]] standin::ControlView OwnButton(const Stage& stage, standin::Window window, const std::string& tag);
// Those that carry the add-in's mark, by instance.
[[nodiscard]] std::vector<int> OwnControls(const Stage& stage, standin::Window window);
// Chooses an entry of the add-in's menu, on the menu bar or the ribbon, with the mouse; the station is wrong where it is not to be seen.
void Choose(const Stage& stage, standin::Window window, Entry entry);
// Presses the add-in's synchronise or send-to-phone button, on the toolbar or the ribbon.
enum class Button { ToSynchronise, ToSend };
void Press(const Stage& stage, standin::Window window, Button button);

// Does something that is to start Corvella once with these arguments, minimised; what Corvella recorded of it.
CorvellaStart ExpectStart(const Stage& stage, const std::string& by, const std::string& arguments,
                          const std::function<void()>& action);
// Does something that is to start nothing.
void ExpectNoStart(const Stage& stage, const std::string& by, const std::function<void()>& action);

// What the add-in holds of the host.
struct Held {
    int references = 0, sinks = 0;
};
[[nodiscard]] Held HeldNow(const Stage& stage);
// Closes a window as a user does; after that the add-in is to hold what it held before the window was opened.
void CheckCloses(const Stage& stage, standin::Window window, const Held& before);

// The whole day.
void Play(const Stage& stage);

// --- the stations; those of the ribbon take the place of others where the host asks for one ---

void Connection(const Stage& stage);
void Bars(const Stage& stage);
void ContactsFolder(const Stage& stage);
void SeveralContacts(const Stage& stage);
void OneContact(const Stage& stage);
void TaskAndAppointment(const Stage& stage);
void SynchroniseWithDialog(const Stage& stage);
void ChangeOptions(const Stage& stage);
void SynchroniseAtOnce(const Stage& stage);
void LeaveAndClearOptions(const Stage& stage);
void OtherCommands(const Stage& stage);
void Log(const Stage& stage);
void InfoBox(const Stage& stage);
void SecondExplorer(const Stage& stage);
void Quit(const Stage& stage);

void ExplorerRibbon(const Stage& stage);
void ContactsRibbon(const Stage& stage);
void ContactsMenu(const Stage& stage);
void SecondExplorerRibbon(const Stage& stage);

}  // namespace program::day
