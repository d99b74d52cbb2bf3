// outlook/Session.h: one run of the host, behind Outlook.h and behind the objects: windows, what is active, clicks, and
// the order in which things happen at start and end.
//
// Errors  Actions throw nothing; what they are asked of objects that are gone does nothing.
#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "outlook/AddIns.h"
#include "outlook/Bars.h"
#include "outlook/Gate.h"
#include "outlook/Host.h"
#include "outlook/RibbonHost.h"
#include "outlook/Store.h"
#include "outlook/WindowObjects.h"

namespace standin {

class ApplicationObject;
class NameSpaceObject;

class Session : public Host {
  public:
    explicit Session(const Options& given);
    ~Session() override;

    Options options;
    std::shared_ptr<Gate> gate;
    Store store;
    Ref<ExplorersObject> explorers;
    Ref<InspectorsObject> inspectors;
    std::unique_ptr<AddInList> addIns;
    std::unique_ptr<RibbonHost> ribbon;
    bool readRegistry = true;
    Watcher* watcher = nullptr;

    // --- life ---
    void Start();
    Ending Quit();
    void QuitSoon() override { quitWanted_ = true; }
    void ClientLetsGo();
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
    [[nodiscard]] const Options& TheOptions() const override { return options; }
    Result Application() override;
    Result NameSpace() override;
    Result Explorers() override { return explorers; }
    Result Inspectors() override { return inspectors; }
    AddInList& AddIns() override { return *addIns; }
    RibbonHost& Ribbons() override { return *ribbon; }
    Store& Mailbox() override { return store; }

    // --- windows ---
    [[nodiscard]] const std::vector<Ref<WindowObject>>& Windows() const override { return windows_; }
    [[nodiscard]] WindowObject* FindWindow(int number) const;  // null when it is gone
    Ref<ExplorerObject> NewExplorer(FolderObject* folder);     // hidden; raises NewExplorer
    Ref<InspectorObject> InspectorFor(ItemObject* item);       // the one it has, or a new hidden one
    InspectorObject* InspectorOf(const ItemObject* item) const;
    Ref<InspectorObject> Open(ItemObject* item);  // and shows it; null when a sink refused
    Result ExplorerFor(FolderObject& folder) override { return NewExplorer(&folder); }
    Result WindowFor(ItemObject& item) override { return InspectorFor(&item); }
    Result CommandBarsOf(WindowObject& window) override;
    void Show(WindowObject& window) override;
    void Show(FolderObject& folder) override { Show(*NewExplorer(&folder)); }
    void Display(ItemObject& item) override { Open(&item); }
    void Activate(WindowObject& window) override;
    void Deactivate(WindowObject& window);
    bool Close(WindowObject& window, SaveMode mode) override;
    bool Send(WindowObject& window);
    bool ShowOther(InspectorObject& inspector, ItemObject& item);
    [[nodiscard]] int ActiveNumber() const { return active_; }
    [[nodiscard]] Result TopWindow(WindowKind kind) const override;

    // --- folders, items ---
    bool SwitchFolder(ExplorerObject& explorer, FolderObject& folder) override;
    void Select(ExplorerObject* explorer, const std::vector<Ref<ItemObject>>& items);
    ItemObject* CreateItem(const ItemKind& kind);
    [[nodiscard]] ItemObject* FindItem(int number) const;
    Result NewItem(const ItemKind& kind) override { return CreateItem(kind); }
    [[nodiscard]] Result ItemByEntryId(const std::wstring& entryId) const override;
    [[nodiscard]] Result Folder(FolderKind kind) const override { return store.Get(kind); }
    [[nodiscard]] Result DefaultFolder(long number) const override { return store.Find(number); }
    void PutInto(FolderKind folder, ItemObject& item) override { store.Put(folder, &item); }
    void Forget(ItemObject& item) override;
    bool CloseWindowOf(ItemObject& item, SaveMode mode) override;
    bool SendFromWindowOf(ItemObject& item) override;
    bool SettleChanges(ItemObject& item, SaveMode mode) override;

    // --- bars ---
    int NextInstance() override { return ++lastInstance_; }
    [[nodiscard]] std::pair<WindowObject*, ControlPointer> FindControl(int instance) const;
    ClickResult Click(WindowObject& window, const ControlPointer& control) override;
    [[nodiscard]] ControlPointer ActionControl() const override { return action_; }
    std::shared_ptr<SavedBars> saved;

    void BarsChanged(const WindowObject& window) const override {
        if (watcher) watcher->BarsChanged({window.Number()});
    }
    void RibbonChanged() const override {
        if (watcher) watcher->RibbonChanged();
    }
    void ContentsChanged() const override {
        if (watcher) watcher->ContentsChanged();
    }

  private:
    template <class T, class... Arguments>
    Ref<T> AddWindow(const std::vector<BarPointer>& bars, Arguments&&... arguments);
    void RestoreBars(WindowObject& window);
    void SaveBars(const WindowObject& window);
    void TakeOff(WindowObject& window);
    void EndWithoutWindows();
    [[nodiscard]] bool AnyShown() const;
    void EndSession();
    [[nodiscard]] bool EndsFast() const;
    void Settle();  // ends the session when it is to end, and now is the time
    [[nodiscard]] bool Running() const { return started_ && ending_ == Ending::StillRunning; }

    Ref<ApplicationObject> application_;
    Ref<NameSpaceObject> nameSpace_;
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
