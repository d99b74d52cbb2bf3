#include "outlook/Store.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

#include "outlook/Host.h"
#include "outlook/Words.h"

namespace standin {

namespace {

constexpr Member folderMembers[] = {
    Get<&FolderObject::GetDefaultItemType>("DefaultItemType", 0x3106),
    Get<&FolderObject::GetDefaultMessageClass>("DefaultMessageClass", 0x3107),
    Get<&FolderObject::GetEntryId>("EntryID", 0xF01E),
    Get<&FolderObject::GetStoreId>("StoreID", 0x3108),
    Get<&FolderObject::GetFolders>("Folders", 0x2103),
    Get<&FolderObject::GetItems>("Items", 0x3100),
    Get<&FolderObject::GetName>("Name", 0x3001),
    Put<&FolderObject::PutName>("Name", 0x3001),
    Get<&FolderObject::GetUnread>("UnReadItemCount", 0x3603),
    Method<&FolderObject::CallDisplay>("Display", 0x3104),
    Method<&FolderObject::CallGetExplorer>("GetExplorer", 0x3101, "DisplayMode?"),
};
constexpr Member itemsMembers[] = {
    Get<&ItemsObject::GetCount>("Count", 0x50),
    Method<&ItemsObject::CallItem>("Item", 0x51, "Index"),
    Method<&ItemsObject::CallAdd>("Add", 0x5F, "Type?"),
};
constexpr Member foldersMembers[] = {
    Get<&FoldersObject::GetCount>("Count", 0x50),
    Method<&FoldersObject::CallItem>("Item", 0x51, "Index"),
};
constexpr EventSet itemsEvents[] = {{"ItemsEvents", OfficeGuid(0x00063077)}};
constexpr EventSet foldersEvents[] = {{"FoldersEvents", OfficeGuid(0x00063076)}};

struct KnownFolder {
    FolderKind kind;
    const wchar_t* name;
    ItemClass itemClass;
};
constexpr KnownFolder known[] = {{FolderKind::OutlookToday, L"Personal Folders", ItemClass::Mail},
                                 {FolderKind::Inbox, L"Inbox", ItemClass::Mail},
                                 {FolderKind::Calendar, L"Calendar", ItemClass::Appointment},
                                 {FolderKind::Contacts, L"Contacts", ItemClass::Contact},
                                 {FolderKind::DeletedItems, L"Deleted Items", ItemClass::Mail},
                                 {FolderKind::Drafts, L"Drafts", ItemClass::Mail},
                                 {FolderKind::Journal, L"Journal", ItemClass::Journal},
                                 {FolderKind::Notes, L"Notes", ItemClass::Note},
                                 {FolderKind::Outbox, L"Outbox", ItemClass::Mail},
                                 {FolderKind::SentMail, L"Sent Items", ItemClass::Mail},
                                 {FolderKind::Tasks, L"Tasks", ItemClass::Task}};

}  // namespace

FolderObject::FolderObject(std::shared_ptr<Gate> gate, FolderKind kind, const wchar_t* name, ItemClass itemClass)
    : OutlookObject(std::move(gate)), kind_(kind), name_(name), itemClass_(itemClass) {}

const TypeDescription& FolderObject::Type() const {
    static const TypeDescription type{"MAPIFolder", OfficeGuid(0x00063006), {headMembers, folderMembers}};
    return type;
}

std::string FolderObject::Name() const { return "MAPIFolder " + Quote(Ansi(name_)); }

Result FolderObject::ParentObject() {
    if (kind_ == FolderKind::OutlookToday) return GetSession();
    return TheHost().Mailbox().Get(FolderKind::OutlookToday);
}

void FolderObject::Add(ItemObject* item) {
    if (std::none_of(items_.begin(), items_.end(), [&](const auto& held) { return held.get() == item; }))
        items_.push_back(item);
}

void FolderObject::Remove(const ItemObject* item) {
    std::erase_if(items_, [&](const Ref<ItemObject>& held) { return held.get() == item; });
}

std::wstring FolderObject::GetEntryId() {
    wchar_t text[93];
    std::swprintf(text, 93, L"000000001A447390AA6611CD9BC800AA002FC45A0100%0*X%08X", 40, 0,
                  static_cast<unsigned>(kind_));
    return text;
}

std::wstring FolderObject::GetStoreId() {
    return L"0000000038A1BB1005E5101AA1BB08002B2A56C200006D737073742E646C6C00000000004E495441";
}

Result FolderObject::GetFolders() { return Make<FoldersObject>(*this); }
Result FolderObject::GetItems() { return Make<ItemsObject>(*this); }

long FolderObject::GetUnread() {
    return static_cast<long>(std::count_if(items_.begin(), items_.end(),
                                           [](const auto& item) { return item->FieldText("UnRead") == L"True"; }));
}

void FolderObject::CallDisplay() { TheHost().Show(*this); }
Result FolderObject::CallGetExplorer() { return TheHost().ExplorerFor(*this); }

const TypeDescription& ItemsObject::Type() const {
    static const TypeDescription type{"_Items", OfficeGuid(0x00063041), {headMembers, itemsMembers}, itemsEvents};
    return type;
}

Result ItemsObject::CallItem(Call& call) {
    return folder_->Contents()[static_cast<std::size_t>(IndexArgument(call, folder_->Contents().size()) - 1)];
}

Result ItemsObject::CallAdd(Call& call) {
    const ItemKind* kind = KindOfType(call.LongOr(0, folder_->GetDefaultItemType()));
    if (!kind) Refuse(E_INVALIDARG);
    return TheHost().NewItem(*kind);
}

const TypeDescription& FoldersObject::Type() const {
    static const TypeDescription type{"_Folders", OfficeGuid(0x00063040), {headMembers, foldersMembers}, foldersEvents};
    return type;
}

std::vector<Ref<FolderObject>> FoldersObject::Contents() const {
    std::vector<Ref<FolderObject>> contents;
    if (parent_->Kind() != FolderKind::OutlookToday) return contents;
    for (const KnownFolder& folder : known)
        if (folder.kind != FolderKind::OutlookToday) contents.push_back(TheHost().Mailbox().Get(folder.kind));
    return contents;
}

Result FoldersObject::CallItem(Call& call) {
    const std::vector<Ref<FolderObject>> contents = Contents();
    if (!call.IsText(0)) return contents[static_cast<std::size_t>(IndexArgument(call, contents.size()) - 1)];
    for (const Ref<FolderObject>& folder : contents)
        if (SameText(folder->Title(), call.Text(0))) return folder;
    RefuseWords(static_cast<HRESULT>(0x8004010F), L"The operation failed. An object could not be found.");
}

void Store::Fill(const std::shared_ptr<Gate>& gate) {
    for (const KnownFolder& folder : known)
        folders_[folder.kind] = Make<FolderObject>(gate, folder.kind, folder.name, folder.itemClass);
}

void Store::Put(FolderKind kind, ItemObject* item) {
    FolderObject* target = Get(kind);
    for (const auto& [other, folder] : folders_)
        if (folder.get() != target) folder->Remove(item);
    target->Add(item);
}

void Store::TakeOut(const ItemObject* item) {
    for (const auto& [kind, folder] : folders_) folder->Remove(item);
}

FolderObject* Store::Get(FolderKind kind) const { return folders_.at(kind).get(); }

FolderObject* Store::Find(long number) const {
    const auto found = folders_.find(static_cast<FolderKind>(number));
    return found == folders_.end() || found->first == FolderKind::OutlookToday ? nullptr : found->second.get();
}

}  // namespace standin
