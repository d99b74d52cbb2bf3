// outlook/Terms.h: what the stand-in and those who drive it talk in: options, folders, items, and views of what there is.
//
// Shapes  Text is ANSI. Windows, items and controls are small numbers that are never used twice; 0 is none. Positions
//         count from 1. A view is what was so when it was asked for.
#pragma once
#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "outlook/ribbon/RibbonView.h"

namespace standin {

enum class ClosingWindow { StillCounted, NotCounted };                // in Count and Item during its own Close event
enum class ShutdownCalls { ByVersion, None, All };                    // of add-ins that did not ask for them
enum class StartedBy { User, Automation };                            // Automation: no window, custom(1) = 3
enum class ClickedControl { AnotherObject, AdvisedObject };           // what Click is given: Office does not promise
enum class CustomArray { AsDocumented, PointerToNull, NullPointer };  // what add-ins get as `custom`
enum class Failures { AsThemselves, AsExceptions };  // AsExceptions: every failing Invoke is DISP_E_EXCEPTION + scode
enum class SaveMode { Save = 0, Discard = 1, Prompt = 2 };  // OlInspectorClose
enum class Prompted { Yes, No, Cancel };                    // the user's answer to SaveMode::Prompt
enum class Ending { StillRunning, StaysInMemory, AddInsTold, AddInsNotTold };

// OlDefaultFolders, and one folder without items.
enum class FolderKind {
    DeletedItems = 3,
    Outbox = 4,
    SentMail = 5,
    Inbox = 6,
    Calendar = 9,
    Contacts = 10,
    Journal = 11,
    Notes = 12,
    Tasks = 13,
    Drafts = 16,
    OutlookToday = 100
};

// OlObjectClass of items.
enum class ItemClass {
    Appointment = 26,
    Contact = 40,
    Document = 41,
    Journal = 42,
    Mail = 43,
    Note = 44,
    Post = 45,
    Report = 46,
    Remote = 47,
    Task = 48,
    TaskRequest = 49,
    Meeting = 53,
    DistList = 69
};

struct Window {
    int number = 0;
    explicit operator bool() const { return number != 0; }
    bool operator==(const Window&) const = default;
};
struct Item {
    int number = 0;
    explicit operator bool() const { return number != 0; }
    bool operator==(const Item&) const = default;
};

using Fields = std::map<std::string, std::string>;  // name of a member -> text; numbers and dates as VARIANT reads them

// Custom controls that are not temporary outlive their window and the session; hand it to the next session.
struct SavedBars;

struct Options {
    int version = 11;  // 9 to 12, 14 to 16
    ClosingWindow closingWindow = ClosingWindow::StillCounted;
    ShutdownCalls shutdownCalls = ShutdownCalls::ByVersion;
    StartedBy startedBy = StartedBy::User;
    FolderKind startFolder = FolderKind::Inbox;  // that the first window opens with
    CustomArray customArray = CustomArray::AsDocumented;
    ClickedControl clicked = ClickedControl::AnotherObject;
    Failures failures = Failures::AsThemselves;
    Prompted prompted = Prompted::Yes;
    bool heldByClient = false;                       // another program holds the Application (Outlook::ClientLetsGo)
    std::shared_ptr<SavedBars> savedBars = nullptr;  // of an earlier session; none: a fresh profile
    RibbonOptions ribbon = {};
};

// What one call returns instead of doing its work.
struct Fault {
    enum class Kind { Fails, Refused, Exception, DeferredException, Empty };
    Kind kind = Kind::Fails;
    HRESULT code = E_FAIL;  // the HRESULT, or the scode of an exception

    static Fault Fails(HRESULT code) { return {Kind::Fails, code}; }
    // As Fails, but an Unadvise leaves the sink where it is until the session ends; with Fails it is cut all the same.
    static Fault Refused(HRESULT code) { return {Kind::Refused, code}; }
    // DISP_E_EXCEPTION with a filled EXCEPINFO (source, description, help file); Deferred: filled by pfnDeferredFillIn.
    // Calls that have no EXCEPINFO return `scode` itself.
    static Fault Exception(HRESULT scode) { return {Kind::Exception, scode}; }
    static Fault DeferredException(HRESULT scode) { return {Kind::DeferredException, scode}; }
    // S_OK with an empty VARIANT, a NULL pointer, DISPID_UNKNOWN or the cookie 0.
    static Fault Empty() { return {Kind::Empty, S_OK}; }
};

// A picture as it would be drawn: rows from the top, 0x00RRGGBB.
struct Pixels {
    int width = 0, height = 0;
    std::vector<std::uint32_t> colours;
    [[nodiscard]] std::uint32_t At(int x, int y) const { return colours.at(static_cast<std::size_t>(y * width + x)); }
};

// A control of a command bar, as it was when asked for.
struct ControlView {
    int instance = 0;  // its InstanceId: the handle for Click and so on
    int index = 0;     // from 1
    int id = 0, type = 0, style = 0, faceId = 0, state = 0, oleUsage = 0;
    std::string caption, tooltip, description, parameter, tag, onAction, shortcut;
    bool builtIn = false, temporary = false, visible = false, enabled = false, beginGroup = false;
    bool hasFace = false;  // set by PasteFace
    bool hasPicture = false, hasMask = false;
    std::string menuName;              // of a popup: the name of its CommandBar
    std::vector<ControlView> entries;  // of a popup
    explicit operator bool() const { return instance != 0; }
};

struct BarView {
    std::string name;
    int type = 0, position = 0;
    bool visible = false, enabled = false, builtIn = false;
    std::vector<ControlView> controls;
};

struct ClickResult {
    bool reached = false;      // the control was there, visible and enabled, and its popup too
    int sinks = 0;             // how many Click events were raised
    bool cancelled = false;    // a sink set CancelDefault
    bool defaultRuns = false;  // it is a built-in control, and its own action would run now (it has none here)
};

struct AddInView {
    std::string progId, friendlyName, description;
    int loadBehavior = 0;
    bool connected = false;
    bool hasObject = false;  // COMAddIn.Object was set
};

struct WindowView {
    Window window;
    bool explorer = false, shown = false;
    std::string caption;
    FolderKind folder = FolderKind::Inbox;  // of an Explorer
    std::vector<Item> selection;            // of an Explorer
    Item item;                              // of an Inspector
};

enum class Detail { Calls, Everything };  // Everything: successful GetIDsOfNames and interface requests too

// Told of changes, for a program that draws the model. May ask, must not act on the host from inside.
class Watcher {
  public:
    virtual ~Watcher() = default;
    virtual void WindowShown(Window) {}
    virtual void WindowClosed(Window) {}
    virtual void WindowActivated(Window) {}
    virtual void BarsChanged(Window) {}
    virtual void RibbonChanged() {}    // an add-in had something of it asked for again
    virtual void ContentsChanged() {}  // folders, items, selections, captions, add-ins
    virtual void LineWritten() {}      // the transcript has grown
};

}  // namespace standin
