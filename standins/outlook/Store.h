// outlook/Store.h: the folders of one mailbox and the objects that show them: MAPIFolder, Folders, Items.
#pragma once
#include <map>

#include "outlook/Head.h"
#include "outlook/Items.h"

namespace standin {

class FolderObject : public OutlookObject {
  public:
    FolderObject(std::shared_ptr<Gate> gate, FolderKind kind, const wchar_t* name, ItemClass itemClass);

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] long ClassNumber() const override { return ClassFolder; }
    Result ParentObject() override;

    [[nodiscard]] FolderKind Kind() const { return kind_; }
    [[nodiscard]] const std::wstring& Title() const { return name_; }
    [[nodiscard]] ItemClass DefaultClass() const { return itemClass_; }
    [[nodiscard]] bool HasItems() const { return kind_ != FolderKind::OutlookToday; }
    [[nodiscard]] const std::vector<Ref<ItemObject>>& Contents() const { return items_; }
    void Add(ItemObject* item);
    void Remove(const ItemObject* item);

    long GetDefaultItemType() { return KindOf(itemClass_).creatable; }
    std::wstring GetDefaultMessageClass() { return KindOf(itemClass_).messageClass; }
    std::wstring GetEntryId();
    std::wstring GetStoreId();
    Result GetFolders();
    Result GetItems();
    std::wstring GetName() { return name_; }
    void PutName(const std::wstring& name) { name_ = name; }
    long GetUnread();
    void CallDisplay();
    Result CallGetExplorer();

  private:
    FolderKind kind_;
    std::wstring name_;
    ItemClass itemClass_;
    std::vector<Ref<ItemObject>> items_;
};

// The items of a folder as they are at each call.
class ItemsObject : public OutlookObject {
  public:
    explicit ItemsObject(FolderObject& folder) : OutlookObject(folder.SharedGate()), folder_(&folder) {}

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Items of " + folder_->Name(); }
    [[nodiscard]] long ClassNumber() const override { return ClassItems; }
    Result ParentObject() override { return folder_; }

    long GetCount() { return static_cast<long>(folder_->Contents().size()); }
    Result CallItem(Call& call);
    Result CallAdd(Call& call);

  private:
    Ref<FolderObject> folder_;
};

// The default folders below the root, or none below one of them.
class FoldersObject : public OutlookObject {
  public:
    explicit FoldersObject(FolderObject& parent) : OutlookObject(parent.SharedGate()), parent_(&parent) {}

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Folders of " + parent_->Name(); }
    [[nodiscard]] long ClassNumber() const override { return ClassFolders; }
    Result ParentObject() override { return parent_; }

    long GetCount() { return static_cast<long>(Contents().size()); }
    Result CallItem(Call& call);

  private:
    [[nodiscard]] std::vector<Ref<FolderObject>> Contents() const;
    Ref<FolderObject> parent_;
};

class Store {
  public:
    void Fill(const std::shared_ptr<Gate>& gate);
    [[nodiscard]] FolderObject* Get(FolderKind kind) const;  // throws std::out_of_range
    [[nodiscard]] FolderObject* Find(long number) const;     // by OlDefaultFolders; null when there is none
    void Put(FolderKind kind, ItemObject* item);             // out of its former folder
    void TakeOut(const ItemObject* item);
    void Clear() { folders_.clear(); }

  private:
    std::map<FolderKind, Ref<FolderObject>> folders_;
};

}  // namespace standin
