// outlook/Outlook.h: a stand-in for Outlook 2000 to 2016, driven from a test or from a windowed program.
//
// A `standin::Outlook` is one run of the host. It loads add-ins as Outlook does, offers them the object
// model (late bound, `IDispatch` only), raises its events at them, and does what a user would do.
// Everything happens on the thread that made it, which must be the one that reads the answers too.
//
//     standin::Outlook outlook({.version = 11});
//     outlook.UseAddIn("Some.AddIn", factory);            // or nothing: Start reads the registry
//     outlook.Start();                                    // OnConnection ... OnStartupComplete, Activate
//     const standin::Item ann = outlook.AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann Smith"}});
//     const standin::Window window = outlook.OpenInspector(ann);
//     outlook.Click(outlook.FindTag(window, "102"));
//     CHECK(outlook.Quit() == standin::Ending::AddInsTold);
//     CHECK(outlook.References() == 0);                   // else ReferenceList() names what is held
//
// Shapes    Text is ANSI in this interface (Unicode inside). Windows, items and controls are small numbers
//           that are never used twice; 0 is none. Positions count from 1.
// Errors    A handle that is not (or no longer) known: std::out_of_range. A host action asked for in a state
//           that has none (a click before Start): std::logic_error.
// Counting  What the stand-in does for itself, and everything asked through this interface, is neither
//           counted, nor made to fail, nor in the ledger; a pointer that Application() returns is.
//
// The gate. These calls of an add-in pass one gate, in the order in which they come, nested ones included:
//   Invoke, GetIDsOfNames, GetTypeInfo, QueryInterface(IConnectionPointContainer), FindConnectionPoint, Advise,
//   Unadvise, and Next of an enumerator. Each has a number, from 1 on (see Calls). AddRef, Release and other
//   QueryInterface calls do not pass it.
//
// Versions (Options::version), and where each difference is known from (docs/host-quirks.md names the sources)
//   9   the event sets of 2000 (type library of Outlook 9.0); Picture and Mask of buttons are unknown names (type library
//       of Office 9.0); a sent mail's window raises no Close (the ClamWin add-in only)
//   10  + ApplicationEvents_10, ExplorerEvents_10, InspectorEvents_10, ItemEvents_10, with MAPILogonComplete and
//       BeforeDelete (type library of 2002 for the application's; the others inferred from later ones); Picture, Mask
//       (Knowledge Base for Office XP)
//   11  + ApplicationEvents_11 (type library of 2003); the menu bar of Explorers has "&Go" where 9 and 10 have
//       "F&avorites" (assumed)
//   12  Close and Delete of an item fail inside the Close events of the item and of its Inspector (Knowledge Base 929593;
//       that they work in earlier versions, where some crashed, is assumed); the end of the session does not wait for
//       references (Microsoft's blog)
//   14  (2010) an add-in is not told of the end unless it asked for that. Command bars are there as before, but what
//       add-ins put on them shows on the tab "Add-Ins" only (AddInsTab)
//   15  (2013) as 14
//   16  (2016 and everything later) as 14
//   Application.Version begins with the number; the rest is documented for 2000 alone (Knowledge Base), assumed elsewhere.
//
// Order of events
//   Start         the first Explorer is there (not with StartedBy::Automation), not yet shown and not announced by
//                 NewExplorer; OnConnection of each add-in; OnAddInsUpdate of each; OnStartupComplete of each;
//                 Application.Startup; MAPILogonComplete (10 on); Explorer.Activate
//   OpenExplorer  Explorers.NewExplorer, then the window shows: Deactivate of the active window, Explorer.Activate
//   OpenInspector Inspectors.NewInspector, Item.Read (once an item), Item.Open (cancelled: the Inspector is gone again,
//                 without Close), then as above. An item that has a window already: the window is only activated
//   SwitchFolder  BeforeFolderSwitch (can be cancelled), FolderSwitch, SelectionChange (the first item is selected;
//                 no SelectionChange in FolderKind::OutlookToday, which has no items)
//   CloseWindow   an Inspector: Item.Write when it is saved, Item.Close (each can be cancelled). Then Close of the
//                 window; then it is gone, its objects and those of its bars return RPC_E_DISCONNECTED; then
//                 Activate of the next window. With the last window gone the session ends as by Quit,
//                 once the event is over from which an add-in closed it
//   Quit          CloseWindow for every window, Application.Quit, then by version (below)
//
// The end of a session (Quit, or the last window closed)
//   9 to 11       OnBeginShutdown and OnDisconnection(HostShutdown) only when no reference to an object of the host
//                 is left after the last window's Close event, which is before Application.Quit: that event comes in
//                 any case, but is too late. With references left after it: Ending::StaysInMemory, and the objects
//                 go on working; with none then: Ending::AddInsNotTold
//   12            Application.Quit, OnBeginShutdown, OnDisconnection(HostShutdown), whatever is held
//   14 to 16      only Application.Quit: Ending::AddInsNotTold; add-ins of the registry whose key has
//                 RequireShutdownNotification = 1 are told all the same
//   Options::heldByClient: the last window's end is not the session's, in no version, and windows may open later. That
//   another program's reference keeps Outlook without windows is documented up to 2007 before its second service pack,
//   and assumed for later versions
//   ShutdownCalls::None  any version ends as 14; ShutdownCalls::All  14 to 16 end as 12, as an administrator can ask
//   After it every object returns E_UNEXPECTED, and EndProcess has been done.
//
// What it has not. Early binding (a QueryInterface for `_Explorer` and so on fails and is in Complaints), enumeration
// of connection points, the text of combo boxes, panes beyond being visible or not, recipients and attachments;
// OnUpdate of CommandBars and Change of combo boxes can be sunk but are never raised. Ids of members that are
// not in the documented core (fields such as JobTitle, NameSpace.GetDefaultFolder) are those of the later libraries.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <memory>
#include <string>
#include <vector>

#include "outlook/Terms.h"
#include "outlook/ribbon/RibbonView.h"

namespace standin {

class Session;

class Outlook {
  public:
    explicit Outlook(const Options& options = {});
    ~Outlook();  // EndProcess, when the session has not ended
    Outlook(const Outlook&) = delete;
    Outlook& operator=(const Outlook&) = delete;

    // --- add-ins and the life of the session ---

    // An add-in without registration: `object` is its class factory or the add-in itself. Before Start it is loaded
    // by Start, after the registered ones; afterwards by LoadAddIn.
    void UseAddIn(const std::string& progId, IUnknown* object, int loadBehavior = 3);
    // Leaves the registry unread at Start.
    void IgnoreRegistry();
    // Loads the add-ins under Software\Microsoft\Office\Outlook\Addins with LoadBehavior 3 or 16 (and UseAddIn's): the
    // user's, and the machine's that the user's do not hide.
    // A failing OnConnection releases the add-in and writes LoadBehavior 2. What Outlook's lists or policies switch off is
    // left out (SwitchedOff.h).
    void Start();
    // The user ticks or unticks it in the dialog: OnConnection(AfterStartup) / OnDisconnection(UserClosed), then
    // OnAddInsUpdate of the loaded ones; LoadBehavior 2 <-> 3. False: was so already, or could not be loaded.
    bool LoadAddIn(const std::string& progId);
    bool UnloadAddIn(const std::string& progId);
    // OnConnection of an add-in that is connected already, which no host should do.
    void ConnectAgain(const std::string& progId);
    [[nodiscard]] std::vector<AddInView> AddIns() const;
    // When the session has ended already (the last window closed): how.
    Ending Quit();
    // The other program (Options::heldByClient) has released the Application: without a window the session ends now.
    void ClientLetsGo();
    // After Ending::StaysInMemory: the references have gone meanwhile? Then the process ends (AddInsNotTold).
    Ending LookAgain();
    // The process is gone: no call to an add-in any more but the Release of it and of its sinks.
    // Objects that are still held stay valid and return RPC_E_DISCONNECTED.
    void EndProcess();
    [[nodiscard]] Ending HowItEnded() const;
    [[nodiscard]] int Version() const;
    // The Application object, as an add-in gets it: one reference for the caller.
    [[nodiscard]] IDispatch* Application();
    // A user in front of it, for clients that can only call objects (UserObjects.h): likewise.
    [[nodiscard]] IDispatch* User();

    // --- windows ---

    Window OpenExplorer(FolderKind folder = FolderKind::Inbox);
    Window OpenInspector(Item item);  // none when a sink cancelled Item.Open
    void Activate(Window window);     // nothing when it is active already
    void Deactivate(Window window);   // the user goes to another program
    // False when a sink or the user (Options::prompted) cancelled it.
    bool CloseWindow(Window window, SaveMode mode = SaveMode::Prompt);
    // The arrows of an item window's toolbar: it goes on to another item, without an event of the window (host quirk 6).
    // False when a sink or the user refused to leave the one or to open the other, or that has a window of its own.
    bool ShowOther(Window inspector, Item item);
    // A mail is sent from its Inspector: Item.Send (can be cancelled), then CloseWindow; in version 9
    // without the Inspector's Close event.
    bool SendMail(Window window);
    [[nodiscard]] std::vector<Window> Windows() const;  // in the order of opening, hidden ones included
    [[nodiscard]] WindowView View(Window window) const;
    [[nodiscard]] Window ActiveWindow() const;
    [[nodiscard]] bool Exists(Window window) const;
    void SetFrame(Window window, HWND frame);  // what IOleWindow of the window returns

    // --- folders and items ---

    // False when a sink cancelled BeforeFolderSwitch.
    bool SwitchFolder(Window explorer, FolderKind folder);
    void Select(Window explorer, const std::vector<Item>& items);  // of its folder; SelectionChange
    // A saved item in `folder`, of the folder's own class or of a given one; a new one, not yet saved.
    Item AddItem(FolderKind folder, const Fields& fields = {});
    Item AddItem(FolderKind folder, ItemClass itemClass, const Fields& fields = {});
    Item NewItem(ItemClass itemClass, const Fields& fields = {});
    [[nodiscard]] std::vector<Item> ItemsIn(FolderKind folder) const;
    [[nodiscard]] std::string Field(Item item, const std::string& name) const;  // "" for a name it has not
    [[nodiscard]] bool HasField(Item item, const std::string& name) const;
    void SetField(Item item, const std::string& name,
                  const std::string& value);  // as the user types it: PropertyChange
    [[nodiscard]] ItemClass ClassOf(Item item) const;
    [[nodiscard]] std::string EntryId(Item item) const;  // "" until first saved, then 140 hexadecimal digits
    [[nodiscard]] bool IsSaved(Item item) const;         // false while it has changes
    [[nodiscard]] bool IsDeleted(Item item) const;
    bool SaveItem(Item item);    // false when a sink cancelled Item.Write
    void DeleteItem(Item item);  // with its window, without asking

    // --- command bars ---
    // Explorers have "Menu Bar" (7 menus), "Standard" (12 buttons) and "Advanced" (hidden); Inspectors "Menu Bar"
    // (8 menus), "Standard" (6 to 9 buttons, by item class) and "Formatting" (hidden). A note has no bars.

    [[nodiscard]] std::vector<BarView> Bars(Window window) const;
    [[nodiscard]] std::vector<ControlView> Controls(Window window, const std::string& bar) const;
    // The first control (popups' entries included, depth first) with that tag / that caption; the empty view when none.
    // Captions are compared without "&".
    [[nodiscard]] ControlView FindTag(Window window, const std::string& tag) const;
    [[nodiscard]] ControlView FindCaption(Window window, const std::string& caption) const;
    [[nodiscard]] ControlView Control(int instance) const;  // the empty view when it is gone
    // The user clicks: demand-loads the add-in that OnAction "!<ProgId>" names, then raises Click at every sink of
    // every control, in all windows, with the same Id and Tag, each with the clicked control as argument.
    ClickResult Click(int instance);
    ClickResult Click(const ControlView& control) { return Click(control.instance); }
    // A control dragged to a bar by the user, neither built in nor of an add-in: a custom button that stays.
    ControlView AddCustomButton(Window window, const std::string& bar, const std::string& caption,
                                const std::string& tag, const std::string& onAction = {}, bool temporary = false);
    // As it is drawn: what PasteFace took, or Picture and Mask; empty when there is none.
    [[nodiscard]] Pixels FaceOf(int instance) const;
    [[nodiscard]] Pixels MaskOf(int instance) const;
    // What the tab "Add-Ins" shows of a window's bars, in versions 14 on: controls of add-ins that are visible, those
    // from menus as "Menu Commands", those from Office's own bars as "Toolbar Commands". Nothing: there is no such tab.
    [[nodiscard]] std::vector<BarView> AddInsTab(Window window) const;
    // For the next session, or another profile: Options::savedBars. Complete after the windows were closed.
    [[nodiscard]] std::shared_ptr<SavedBars> Saved() const;

    // --- ribbon (windows of items from version 12 on, Explorers from 14 on) ---
    // An add-in is asked for the XML of each kind of ribbon once a session, when the first window of that kind is about
    // to show. The XML is taken or refused as a whole (RibbonErrors). Callbacks are called by name when a ribbon is
    // looked at here, and what they told is kept until it is invalidated; those of a context menu at each opening.

    [[nodiscard]] std::vector<RibbonTabView> Ribbon(Window window) const;
    // The menu of a right click on an Explorer's selection: what add-ins have put into it.
    [[nodiscard]] std::vector<RibbonControlView> ContextMenu(Window explorer) const;
    // The control with that id, in all tabs and menus; the empty view when none.
    [[nodiscard]] RibbonControlView FindRibbon(Window window, const std::string& id) const;
    // False when it is not on a tab that shows, or invisible or disabled.
    bool ClickRibbon(Window window, const std::string& id);
    bool ClickContextMenu(Window explorer, const std::string& id);
    // GetCustomUI of that add-in once more, for any ribbon id.
    [[nodiscard]] std::string CustomUI(const std::string& progId, const std::string& ribbonId) const;
    // The object on which that add-in's callbacks are called: one reference for the caller, or null.
    [[nodiscard]] IDispatch* RibbonCallbacks(const std::string& progId) const;
    [[nodiscard]] std::vector<std::string> RibbonsAsked() const;  // ids, in that order
    [[nodiscard]] std::vector<std::string> RibbonErrors() const;  // what the user sees where Office is told to show it

    // --- the gate: counting, faults, ledger, transcript ---

    [[nodiscard]] int Calls() const;  // since the beginning or ResetCalls
    void ResetCalls();
    void FailCall(int number, Fault fault);  // the call that Calls() will count as `number`; several may be planned
    // Every call of a member, "Type.Member" as in "CommandBarControls.Add"; the type is the interface's name without
    // "_". For the others "Explorer.FindConnectionPoint", "CommandBarButton.Advise", "Application.QueryInterface".
    void FailMember(const std::string& member, Fault fault, int times = 1000000);
    void ClearFaults();
    [[nodiscard]] int FaultsHit() const;
    // References that the outside holds now, in all and as "Explorer 1: 2", an object a line, oldest object first.
    // Connection points, enumerators and type descriptions count too, by their own names.
    [[nodiscard]] int References() const;
    [[nodiscard]] std::vector<std::string> ReferenceList() const;
    // Live advises, in all and as "Explorer 1 ExplorerEvents".
    [[nodiscard]] int Advises() const;
    [[nodiscard]] std::vector<std::string> AdviseList() const;
    // What an add-in should not do, in words: sinks that returned a failure, names and interfaces asked for that
    // the version has not, Unadvise with an unknown cookie, a failing add-in call.
    [[nodiscard]] std::vector<std::string> Complaints() const;
    // A line a call, nested ones indented by two blanks:
    //   # open Inspector 2                                   a host action
    //   ! Inspectors: NewInspector(Inspector 2)              a call out: an event with a sink, or an add-in's method
    //     Inspector 2.CurrentItem -> ContactItem 5           a call in, with its answer; "= value" is a property put
    //     CommandBars of Inspector 2.Item("x") -> fails 0x80070057
    void Record(Detail detail = Detail::Calls);
    [[nodiscard]] std::vector<std::string> Transcript() const;
    void ClearTranscript();

    void Watch(Watcher* watcher);  // nullptr: no more

  private:
    std::unique_ptr<Session> session_;
};

}  // namespace standin
