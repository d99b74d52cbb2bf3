// outlook/Host.h: what the objects of the model may ask of the session that they belong to. The session (Session.h)
// knows every kind of object; an object knows the session only through this.
//
// Lifetime  An object asks only from inside a call that its gate let through, so the session is alive then.
#pragma once
#include <memory>
#include <string>
#include <vector>

#include "outlook/Pointers.h"
#include "outlook/Terms.h"

namespace standin {

class AddInList;
class ExplorerObject;
class FolderObject;
class ItemObject;
class RibbonHost;
class Store;
class WindowObject;
struct ControlModel;
struct ItemKind;

enum class WindowKind { Explorer, Inspector, Any };

class Host {
  public:
    Host() = default;
    virtual ~Host() = default;
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    [[nodiscard]] virtual const Options& TheOptions() const = 0;

    // The objects that there is one of.
    virtual Result Application() = 0;
    virtual Result NameSpace() = 0;
    virtual Result Explorers() = 0;
    virtual Result Inspectors() = 0;
    virtual AddInList& AddIns() = 0;
    virtual RibbonHost& Ribbons() = 0;
    virtual Store& Mailbox() = 0;
    // The session ends by itself once the call that asks for it has returned.
    virtual void QuitSoon() = 0;

    // --- windows ---
    [[nodiscard]] virtual const std::vector<Ref<WindowObject>>& Windows() const = 0;  // hidden ones included
    [[nodiscard]] virtual Result TopWindow(WindowKind kind) const = 0;                // the front one of them, or none
    virtual Result ExplorerFor(FolderObject& folder) = 0;                             // new and hidden
    virtual Result WindowFor(ItemObject& item) = 0;  // the one that it has, or a new hidden one
    virtual Result CommandBarsOf(WindowObject& window) = 0;
    virtual void Show(WindowObject& window) = 0;
    virtual void Show(FolderObject& folder) = 0;  // in a new Explorer
    virtual void Display(ItemObject& item) = 0;   // in its window; not at all when a sink refused
    virtual void Activate(WindowObject& window) = 0;
    virtual bool Close(WindowObject& window, SaveMode mode) = 0;  // false: cancelled
    virtual bool SwitchFolder(ExplorerObject& explorer, FolderObject& folder) = 0;

    // --- items ---
    virtual Result NewItem(const ItemKind& kind) = 0;
    [[nodiscard]] virtual Result ItemByEntryId(const std::wstring& entryId) const = 0;
    [[nodiscard]] virtual Result Folder(FolderKind kind) const = 0;
    [[nodiscard]] virtual Result DefaultFolder(long number) const = 0;  // by OlDefaultFolders; empty when there is none
    virtual void PutInto(FolderKind folder, ItemObject& item) = 0;
    virtual void Forget(ItemObject& item) = 0;                        // it was deleted
    virtual bool CloseWindowOf(ItemObject& item, SaveMode mode) = 0;  // false: it has none
    virtual bool SendFromWindowOf(ItemObject& item) = 0;              // likewise
    virtual bool SettleChanges(ItemObject& item, SaveMode mode) = 0;  // saves or reverts; false: cancelled
    virtual void ContentsChanged() const = 0;

    // --- bars ---
    virtual int NextInstance() = 0;
    [[nodiscard]] virtual std::shared_ptr<ControlModel> ActionControl() const = 0;  // that is being clicked, or none
    virtual ClickResult Click(WindowObject& window, const std::shared_ptr<ControlModel>& control) = 0;
    virtual void BarsChanged(const WindowObject& window) const = 0;
    virtual void RibbonChanged() const = 0;
};

}  // namespace standin
