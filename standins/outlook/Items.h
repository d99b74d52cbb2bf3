// outlook/Items.h: items of every class, with their fields, their life from new
// over saved to deleted, and their events.
#pragma once
#include <map>
#include <optional>

#include "outlook/Head.h"

namespace standin {

// What the classes of items differ in.
struct ItemKind {
    ItemClass itemClass;
    const wchar_t* messageClass;
    FolderKind home;
    int creatable;  // OlItemType; -1 for what CreateItem cannot make
    TypeDescription type;
};

[[nodiscard]] const ItemKind& KindOf(ItemClass itemClass);
[[nodiscard]] const ItemKind* KindOfType(long itemType);  // by OlItemType; null when there is none

enum class Cancelled { No, Yes };

class ItemObject : public OutlookObject {
  public:
    ItemObject(std::shared_ptr<Gate> gate, const ItemKind& kind, int number);

    [[nodiscard]] const TypeDescription& Type() const override { return kind_.type; }
    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] HRESULT Gone() const override;
    [[nodiscard]] long ClassNumber() const override { return static_cast<long>(kind_.itemClass); }
    Result ParentObject() override;

    [[nodiscard]] const ItemKind& Kind() const { return kind_; }
    [[nodiscard]] int Number() const { return number_; }
    [[nodiscard]] bool IsSaved() const { return saved_; }
    [[nodiscard]] bool IsDeleted() const { return deleted_; }
    [[nodiscard]] std::wstring EntryId() const { return entryId_; }
    [[nodiscard]] const Member* FieldNamed(const std::string& name) const;
    [[nodiscard]] std::wstring FieldText(const std::string& name) const;
    // Throws Failure for a name that the class has not, or a text that does not read as the field's type.
    void SetFieldText(const std::string& name, const std::wstring& text);

    Cancelled Save();                   // Write; into its home folder when it is in none
    void MarkSaved(FolderKind folder);  // without events
    void Revert();                      // to what was saved last
    void Delete();                      // with its window
    Cancelled AskOpen();                // Read (once), Open
    Cancelled AskClose();               // Close
    Cancelled AskSend();                // Send
    bool inClose = false;               // inside a Close event of it or of its window

    // Members
    std::wstring GetEntryId() { return entryId_; }
    bool GetSaved() { return saved_; }
    Date GetCreated() { return {created_}; }
    Date GetModified() { return {modified_}; }
    std::wstring GetMessageClass() { return messageClass_; }
    void PutMessageClass(const std::wstring& messageClass);
    Result GetInspector();
    void CallClose(Call& call);
    void CallDelete();
    void CallDisplay(Call& call);
    void CallSave();
    void CallSend();
    void Field(Call& call);  // any field, by its dispid

  private:
    void SetField(DISPID id, const Value& value);
    void Derive(DISPID changed);
    void RefuseInClose() const;

    const ItemKind& kind_;
    int number_;
    std::wstring entryId_, messageClass_;
    bool saved_ = true, deleted_ = false, read_ = false;  // a new item has no changes yet, and no entry id
    double created_ = 0, modified_ = 0;
    std::map<DISPID, Value> fields_, savedFields_;
    std::optional<FolderKind> folder_;  // none until it is first saved
};

}  // namespace standin
