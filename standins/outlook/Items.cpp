#include "outlook/Items.h"

#include <cstdio>

#include "outlook/Host.h"
#include "outlook/Words.h"

namespace standin {

namespace {

// --- members ---

constexpr WORD readWrite = DISPATCH_PROPERTYGET | DISPATCH_PROPERTYPUT;

enum FieldId : DISPID {
    IdSubject = 0x37,
    IdNoteSubject = 0xF7A0,
    IdBody = 0x9100,
    IdFullName = 0x3001,
    IdFileAs = 0x8005,
    IdFirstName = 0x3A06,
    IdLastName = 0x3A11,
    IdMailTo = 0xE04,
    IdDLName = 0x8053
};

constexpr Member FieldOf(const char* name, DISPID id) {
    return {name, id, readWrite, &detail::Run<&ItemObject::Field>};
}

constexpr Member commonMembers[] = {
    Get<&ItemObject::GetCreated>("CreationTime", 0x3007),
    Get<&ItemObject::GetEntryId>("EntryID", 0xF01E),
    Get<&ItemObject::GetInspector>("GetInspector", 0xF03E),
    Get<&ItemObject::GetModified>("LastModificationTime", 0x3008),
    Get<&ItemObject::GetMessageClass>("MessageClass", 0x1A),
    Put<&ItemObject::PutMessageClass>("MessageClass", 0x1A),
    Get<&ItemObject::GetSaved>("Saved", 0xF0A3),
    Method<&ItemObject::CallClose>("Close", 0xF023, "SaveMode"),
    Method<&ItemObject::CallDelete>("Delete", 0xF04A),
    Method<&ItemObject::CallDisplay>("Display", 0xF0A6, "Modal?"),
    Method<&ItemObject::CallSave>("Save", 0xF048),
    FieldOf("Body", IdBody),
    FieldOf("Categories", 0x9001),
};
constexpr Member subjectMember[] = {FieldOf("Subject", IdSubject)};
constexpr Member noteMembers[] = {{"Subject", IdNoteSubject, DISPATCH_PROPERTYGET, &detail::Run<&ItemObject::Field>}};
constexpr Member contactMembers[] = {FieldOf("FullName", IdFullName),        FieldOf("FileAs", IdFileAs),
                                     FieldOf("FirstName", IdFirstName),      FieldOf("LastName", IdLastName),
                                     FieldOf("CompanyName", 0x3A16),         FieldOf("JobTitle", 0x3A17),
                                     FieldOf("Email1Address", 0x8083),       FieldOf("BusinessTelephoneNumber", 0x3A08),
                                     FieldOf("HomeTelephoneNumber", 0x3A09), FieldOf("MobileTelephoneNumber", 0x3A1C)};
constexpr Member appointmentMembers[] = {FieldOf("Start", 0x820D), FieldOf("End", 0x820E), FieldOf("Location", 0x8208),
                                         FieldOf("AllDayEvent", 0x8215)};
constexpr Member taskMembers[] = {FieldOf("DueDate", 0x8105), FieldOf("StartDate", 0x8104),
                                  FieldOf("PercentComplete", 0x8102), FieldOf("Status", 0x8101),
                                  FieldOf("Complete", 0x811C)};
constexpr Member mailMembers[] = {FieldOf("To", IdMailTo), FieldOf("CC", 0xE03), FieldOf("SenderName", 0xC1A),
                                  FieldOf("UnRead", 0xF01C), Method<&ItemObject::CallSend>("Send", 0xF075)};
constexpr Member distListMembers[] = {FieldOf("DLName", IdDLName)};
constexpr Member journalMembers[] = {FieldOf("Start", 0x8706)};

// --- what a new item holds ---

constexpr double noDate = 949998;          // 1 January 4501: Outlook's "none"
constexpr double someMorning = 36528.375;  // a Monday, 9 o'clock: the same in every run

struct Default {
    DISPID id;
    VARTYPE type;
    double number;
};
constexpr Default defaults[] = {{0x820D, VT_DATE, someMorning},
                                {0x820E, VT_DATE, someMorning + 1.0 / 48},
                                {0x8215, VT_BOOL, 0},
                                {0x8105, VT_DATE, noDate},
                                {0x8104, VT_DATE, noDate},
                                {0x8102, VT_I4, 0},
                                {0x8101, VT_I4, 0},
                                {0x811C, VT_BOOL, 0},
                                {0xF01C, VT_BOOL, 0},
                                {0x8706, VT_DATE, someMorning}};

Value DefaultOf(DISPID id) {
    for (const Default& other : defaults) {
        if (other.id != id) continue;
        Value value = Value::OfDate(other.number);
        value.Become(other.type);
        return value;
    }
    return Value::OfText(L"");
}

double Now() {
    SYSTEMTIME time;
    GetLocalTime(&time);
    double date = 0;
    SystemTimeToVariantTime(&time, &date);
    return date;
}

// --- events ---

constexpr EventSet itemEvents[] = {{"ItemEvents", OfficeGuid(0x0006303A), 9, 0},
                                   {"ItemEvents_10", OfficeGuid(0x0006302B), 10, 1}};
constexpr Event readEvent{"Read", 0xF001}, writeEvent{"Write", 0xF002}, openEvent{"Open", 0xF003},
    closeEvent{"Close", 0xF004}, sendEvent{"Send", 0xF005}, propertyChangeEvent{"PropertyChange", 0xF009},
    beforeDeleteEvent{"BeforeDelete", 0xFA75, 1};

Cancelled Ask(ItemObject& item, const Event& event) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    item.Raise(event, {EventArgument(&cancel)});
    return cancel != VARIANT_FALSE ? Cancelled::Yes : Cancelled::No;
}

// --- kinds ---

ItemKind Kind(ItemClass itemClass, const char* interfaceName, unsigned long iid, const wchar_t* messageClass,
              FolderKind home, int creatable, Members own) {
    TypeDescription type{interfaceName, OfficeGuid(iid), {headMembers, commonMembers}, itemEvents};
    if (itemClass == ItemClass::Note)
        type.events = {};
    else
        type.tables.push_back(subjectMember);
    type.tables.push_back(own);
    return {itemClass, messageClass, home, creatable, type};
}

const std::vector<ItemKind>& Kinds() {
    static const std::vector<ItemKind> kinds = {
        Kind(ItemClass::Appointment, "_AppointmentItem", 0x63033, L"IPM.Appointment", FolderKind::Calendar, 1,
             appointmentMembers),
        Kind(ItemClass::Contact, "_ContactItem", 0x63021, L"IPM.Contact", FolderKind::Contacts, 2, contactMembers),
        Kind(ItemClass::Document, "_DocumentItem", 0x63020, L"IPM.Document.Paint.Picture", FolderKind::Inbox, -1, {}),
        Kind(ItemClass::Journal, "_JournalItem", 0x63022, L"IPM.Activity", FolderKind::Journal, 4, journalMembers),
        Kind(ItemClass::Mail, "_MailItem", 0x63034, L"IPM.Note", FolderKind::Drafts, 0, mailMembers),
        Kind(ItemClass::Note, "_NoteItem", 0x63025, L"IPM.StickyNote", FolderKind::Notes, 5, noteMembers),
        Kind(ItemClass::Post, "_PostItem", 0x63024, L"IPM.Post", FolderKind::Inbox, 6, {}),
        Kind(ItemClass::Report, "_ReportItem", 0x63026, L"REPORT.IPM.Note.NDR", FolderKind::Inbox, -1, {}),
        Kind(ItemClass::Remote, "_RemoteItem", 0x63023, L"IPM.Remote", FolderKind::Inbox, -1, {}),
        Kind(ItemClass::Task, "_TaskItem", 0x63035, L"IPM.Task", FolderKind::Tasks, 3, taskMembers),
        Kind(ItemClass::TaskRequest, "_TaskRequestItem", 0x63036, L"IPM.TaskRequest", FolderKind::Inbox, -1, {}),
        Kind(ItemClass::Meeting, "_MeetingItem", 0x63062, L"IPM.Schedule.Meeting.Request", FolderKind::Inbox, -1, {}),
        Kind(ItemClass::DistList, "_DistListItem", 0x63081, L"IPM.DistList", FolderKind::Contacts, 7, distListMembers),
    };
    return kinds;
}

}  // namespace

const ItemKind& KindOf(ItemClass itemClass) {
    for (const ItemKind& kind : Kinds())
        if (kind.itemClass == itemClass) return kind;
    throw std::out_of_range("no such item class");
}

const ItemKind* KindOfType(long itemType) {
    for (const ItemKind& kind : Kinds())
        if (itemType >= 0 && kind.creatable == itemType) return &kind;
    return nullptr;
}

// --- the item ---

ItemObject::ItemObject(std::shared_ptr<Gate> gate, const ItemKind& kind, int number)
    : OutlookObject(std::move(gate)),
      kind_(kind),
      number_(number),
      messageClass_(kind.messageClass),
      created_(Now()),
      modified_(created_) {
    for (const Members table : kind.type.tables)
        for (const Member& member : table)
            if (member.handler == &detail::Run<&ItemObject::Field>) fields_[member.id] = DefaultOf(member.id);
    savedFields_ = fields_;
}

std::string ItemObject::Name() const { return kind_.type.PlainName() + " " + std::to_string(number_); }

HRESULT ItemObject::Gone() const {
    return deleted_ ? static_cast<HRESULT>(0x8004010A) : S_OK;
}  // MAPI: the object was deleted

Result ItemObject::ParentObject() { return TheHost().Folder(folder_.value_or(kind_.home)); }

const Member* ItemObject::FieldNamed(const std::string& name) const {
    const Member* member = kind_.type.Find(name, Version());
    return member && fields_.contains(member->id) ? member : nullptr;
}

std::wstring ItemObject::FieldText(const std::string& name) const {
    const Member* member = FieldNamed(name);
    return member ? fields_.at(member->id).Text() : std::wstring();
}

void ItemObject::SetFieldText(const std::string& name, const std::wstring& text) {
    const Member* member = FieldNamed(name);
    if (!member) Refuse(DISP_E_UNKNOWNNAME);
    SetField(member->id, Value::OfText(text));
}

void ItemObject::Field(Call& call) {
    if (call.IsPut())
        SetField(call.Id(), call.Raw(0));
    else
        call.Return(fields_.at(call.Id()));
}

void ItemObject::SetField(DISPID id, const Value& value) {
    Value& field = fields_.at(id);
    Value converted = value;
    if (!converted.Become(field.vt)) Refuse(DISP_E_TYPEMISMATCH);
    if (converted == field) return;
    field = converted;
    saved_ = false;
    Derive(id);
    const Member* member = kind_.type.Find(id, Version());
    Raise(propertyChangeEvent, {EventArgument(Wide(member->name))});
    TheHost().ContentsChanged();
}

// What Outlook fills in by itself.
void ItemObject::Derive(DISPID changed) {
    if (changed == IdFullName) {
        const std::wstring name = fields_[IdFullName].Text();
        const std::size_t blank = name.rfind(L' ');
        const std::wstring last = blank == std::wstring::npos ? L"" : name.substr(blank + 1);
        const std::wstring first = blank == std::wstring::npos ? name : name.substr(0, blank);
        fields_[IdSubject] = fields_[IdFullName];
        fields_[IdFirstName] = Value::OfText(first);
        fields_[IdLastName] = Value::OfText(last);
        fields_[IdFileAs] = Value::OfText(last.empty() ? first : last + L", " + first);
    }
    if (changed == IdDLName) fields_[IdSubject] = fields_[IdDLName];
    if (changed == IdBody && fields_.contains(IdNoteSubject)) {
        const std::wstring body = fields_[IdBody].Text();
        fields_[IdNoteSubject] = Value::OfText(body.substr(0, body.find_first_of(L"\r\n")));
    }
}

void ItemObject::PutMessageClass(const std::wstring& messageClass) {
    messageClass_ = messageClass;
    saved_ = false;
}

Cancelled ItemObject::Save() {
    if (Ask(*this, writeEvent) == Cancelled::Yes) return Cancelled::Yes;
    MarkSaved(folder_.value_or(kind_.home));
    TheHost().ContentsChanged();
    return Cancelled::No;
}

void ItemObject::MarkSaved(FolderKind folder) {
    if (entryId_.empty()) {
        wchar_t text[141];
        std::swprintf(text, 141, L"000000001A447390AA6611CD9BC800AA002FC45A0900%0*X%08X", 88, 0,
                      static_cast<unsigned>(number_));
        entryId_ = text;
    }
    if (folder_ != folder) {
        folder_ = folder;
        TheHost().PutInto(folder, *this);
    }
    saved_ = true;
    savedFields_ = fields_;
    modified_ = Now();
}

void ItemObject::Revert() {
    fields_ = savedFields_;
    saved_ = true;
    TheHost().ContentsChanged();
}

void ItemObject::Delete() {
    const Ref<ItemObject> alive(this);
    VARIANT_BOOL cancel = VARIANT_FALSE;
    Raise(beforeDeleteEvent, {EventArgument(this), EventArgument(&cancel)});
    if (cancel != VARIANT_FALSE) return;
    Revert();
    TheHost().CloseWindowOf(*this, SaveMode::Discard);
    deleted_ = true;
    TheHost().Forget(*this);
}

Cancelled ItemObject::AskOpen() {
    if (!read_) Raise(readEvent);
    read_ = true;
    return Ask(*this, openEvent);
}

Cancelled ItemObject::AskClose() {
    inClose = true;
    const Cancelled answer = Ask(*this, closeEvent);
    inClose = false;
    return answer;
}

Cancelled ItemObject::AskSend() { return Ask(*this, sendEvent); }

// Knowledge Base 929593. In earlier versions some crashed; here they work (assumed).
void ItemObject::RefuseInClose() const {
    if (inClose && Version() >= 12)
        RefuseWords(E_FAIL, L"The item's properties and methods cannot be used inside this event procedure.");
}

Result ItemObject::GetInspector() { return TheHost().WindowFor(*this); }

void ItemObject::CallClose(Call& call) {
    RefuseInClose();
    const long mode = call.Long(0);
    if (mode < 0 || mode > 2) Refuse(E_INVALIDARG);
    if (!TheHost().CloseWindowOf(*this, static_cast<SaveMode>(mode)))
        TheHost().SettleChanges(*this, static_cast<SaveMode>(mode));
}

void ItemObject::CallDelete() {
    RefuseInClose();
    Delete();
}

void ItemObject::CallDisplay(Call&) { TheHost().Display(*this); }

void ItemObject::CallSave() { Save(); }

void ItemObject::CallSend() {
    if (!TheHost().SendFromWindowOf(*this) && AskSend() == Cancelled::No) MarkSaved(FolderKind::SentMail);
}

}  // namespace standin
