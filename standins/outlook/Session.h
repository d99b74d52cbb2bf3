// outlook/Session.h: one run of the host, behind Outlook.h and behind the objects: windows, what is active, clicks, and
// the order in which things happen at start and end.
//
// Errors  Actions throw nothing; what they are asked of objects that are gone does nothing.
#pragma once
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "outlook/AddIns.h"
#include "outlook/Bars.h"
#include "outlook/Gate.h"
#include "outlook/Store.h"
#include "outlook/WindowObjects.h"

namespace standin {

class ApplicationObject;
class NameSpaceObject;

class Session {
  public:
    explicit Session(const Options& given);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Options options;
    std::shared_ptr<Gate> gate;
    Store store;
    Ref<ExplorersObject> explorers;
    Ref<InspectorsObject> inspectors;
    std::unique_ptr<AddInList> addIns;
    bool readRegistry = true;
    Watcher* watcher = nullptr;

    // --- life ---
    void Start();
    Ending Quit();
    void QuitSoon() { quitWanted_ = true; }  // for a client: once its call has returned
    // One action of the host. The session ends with the last of them, never inside an event or a call of an add-in.
    class Turn {
      public:
        explicit Turn(Session& session) : session_(session) { ++session_.turns_; }
        ~Turn() {
            --session_.turns_;
            session_.Settle();
        }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

      private:
        Session& session_;
    };
    Ending LookAgain();
    void EndProcess(HRESULT answer);
    [[nodiscard]] Ending HowItEnded() const { return ending_; }
    [[nodiscard]] bool Started() const { return started_; }
    Result ApplicationObject();
    Result NameSpaceObject();

    // --- windows ---
    [[nodiscard]] const std::vector<Ref<WindowObject>>& Windows() const { return windows_; }
    [[nodiscard]] WindowObject* FindWindow(int number) const;  // null when it is gone
    Ref<ExplorerObject> NewExplorer(FolderObject* folder);     // hidden; NewExplorer once the session has begun
    Ref<InspectorObject> InspectorFor(ItemObject* item);       // the one it has, or a new hidden one
    InspectorObject* InspectorOf(const ItemObject* item) const;
    Ref<InspectorObject> Display(ItemObject* item);  // null when a sink refused
    void Show(WindowObject* window);
    void Activate(WindowObject* window);
    void Deactivate(WindowObject* window);
    bool Close(WindowObject* window, SaveMode mode);
    bool Send(WindowObject* window);
    bool SettleChanges(ItemObject* item, SaveMode mode);  // saves or reverts; false: cancelled
    [[nodiscard]] int ActiveNumber() const { return active_; }
    Result TopWindow(const std::function<bool(const WindowObject&)>& fits) const;

    // --- folders, items ---
    bool SwitchFolder(ExplorerObject* explorer, FolderObject* folder);
    void Select(ExplorerObject* explorer, const std::vector<Ref<ItemObject>>& items);
    ItemObject* CreateItem(const ItemKind& kind);
    [[nodiscard]] ItemObject* FindItem(int number) const;
    [[nodiscard]] ItemObject* FindByEntryId(const std::wstring& entryId) const;
    void Forget(const ItemObject* item);

    // --- bars ---
    int NextInstance() { return ++lastInstance_; }
    [[nodiscard]] std::pair<WindowObject*, ControlPointer> FindControl(int instance) const;
    ClickResult Click(WindowObject& window, const ControlPointer& control);
    [[nodiscard]] ControlPointer ActionControl() const { return action_; }
    std::shared_ptr<SavedBars> saved;

    void BarsChanged(const WindowObject& window) const {
        if (watcher) watcher->BarsChanged({window.Number()});
    }
    void ContentsChanged() const {
        if (watcher) watcher->ContentsChanged();
    }

  private:
    template <class T, class... Arguments>
    Ref<T> AddWindow(std::vector<BarPointer> bars, Arguments&&... arguments);
    void RestoreBars(WindowObject& window);
    void SaveBars(const WindowObject& window);
    void TakeOff(WindowObject* window);
    [[nodiscard]] bool AnyShown() const;
    void EndSession();
    void Settle();  // ends the session when it is to end, and now is the time
    [[nodiscard]] bool Running() const { return started_ && ending_ == Ending::StillRunning; }

    Ref<standin::ApplicationObject> application_;
    Ref<standin::NameSpaceObject> nameSpace_;
    std::vector<Ref<WindowObject>> windows_;
    std::vector<int> order_;  // shown windows, the front one last
    std::map<int, Ref<ItemObject>> items_;
    ControlPointer action_;
    int active_ = 0, lastWindow_ = 0, lastItem_ = 0, lastInstance_ = 0;
    int turns_ = 0;
    bool started_ = false, starting_ = false, quitting_ = false, quitWanted_ = false;
    Ending ending_ = Ending::StillRunning;
};

}  // namespace standin
