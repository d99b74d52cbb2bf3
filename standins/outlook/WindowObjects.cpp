#include "outlook/WindowObjects.h"

#include "outlook/Host.h"
#include "outlook/Words.h"

namespace standin {

namespace {

constexpr Member explorerMembers[] = {
    Get<&ExplorerObject::GetCommandBars>("CommandBars", 0x2100),
    Get<&ExplorerObject::GetFolder>("CurrentFolder", 0x2101),
    PutRef<&ExplorerObject::PutFolder>("CurrentFolder", 0x2101),
    Method<&ExplorerObject::CallClose>("Close", 0x2103),
    Method<&ExplorerObject::CallDisplay>("Display", 0x2104),
    Get<&ExplorerObject::GetCaption>("Caption", 0x2111),
    Get<&ExplorerObject::GetView>("CurrentView", 0x2200),
    Get<&ExplorerObject::GetSelection>("Selection", 0x2202),
    Method<&ExplorerObject::CallIsPaneVisible>("IsPaneVisible", 0x2203, "Pane"),
    Method<&ExplorerObject::CallShowPane>("ShowPane", 0x2204, "Pane,Visible"),
};
constexpr Member inspectorMembers[] = {
    Get<&InspectorObject::GetCommandBars>("CommandBars", 0x2100),
    Get<&InspectorObject::GetItem>("CurrentItem", 0x2102),
    Get<&InspectorObject::GetEditorType>("EditorType", 0x2110),
    Method<&InspectorObject::CallClose>("Close", 0x2103, "SaveMode"),
    Method<&InspectorObject::CallDisplay>("Display", 0x2104, "Modal?"),
    Method<&InspectorObject::CallIsWordMail>("IsWordMail", 0x2105),
    Get<&InspectorObject::GetCaption>("Caption", 0x2111),
};
constexpr Member placeMembers[] = {
    Get<&WindowObject::GetHeight>("Height", 0x2114),
    Put<&WindowObject::PutHeight>("Height", 0x2114),
    Get<&WindowObject::GetLeft>("Left", 0x2115),
    Put<&WindowObject::PutLeft>("Left", 0x2115),
    Get<&WindowObject::GetTop>("Top", 0x2116),
    Put<&WindowObject::PutTop>("Top", 0x2116),
    Get<&WindowObject::GetWidth>("Width", 0x2117),
    Put<&WindowObject::PutWidth>("Width", 0x2117),
    Get<&WindowObject::GetState>("WindowState", 0x2112),
    Put<&WindowObject::PutState>("WindowState", 0x2112),
    Method<&WindowObject::CallActivate>("Activate", 0x2113),
};
constexpr Member explorersMembers[] = {
    Get<&ExplorersObject::GetCount>("Count", 0x50),
    Method<&ExplorersObject::CallItem>("Item", 0x51, "Index"),
    Method<&ExplorersObject::CallAdd>("Add", 0x5F, "Folder,DisplayMode?"),
};
constexpr Member inspectorsMembers[] = {
    Get<&InspectorsObject::GetCount>("Count", 0x50),
    Method<&InspectorsObject::CallItem>("Item", 0x51, "Index"),
    Method<&InspectorsObject::CallAdd>("Add", 0x5F, "Item"),
};
constexpr Member selectionMembers[] = {
    Get<&SelectionObject::GetCount>("Count", 0x50),
    Method<&SelectionObject::CallItem>("Item", 0x51, "Index"),
};

constexpr EventSet explorerEvents[] = {{"ExplorerEvents", OfficeGuid(0x0006304F)},
                                       {"ExplorerEvents_10", OfficeGuid(0x0006300F), 10, 1}};
constexpr EventSet inspectorEvents[] = {{"InspectorEvents", OfficeGuid(0x0006307D)},
                                        {"InspectorEvents_10", OfficeGuid(0x0006302A), 10, 1}};
constexpr EventSet explorersEvents[] = {{"ExplorersEvents", OfficeGuid(0x00063078)}};
constexpr EventSet inspectorsEvents[] = {{"InspectorsEvents", OfficeGuid(0x00063079)}};

}  // namespace

// Every call of Item of a collection reads its index so.
long IndexArgument(const Call& call, std::size_t count) {
    const long index = call.Long(0);
    if (index < 1 || index > static_cast<long>(count)) RefuseWords(E_INVALIDARG, L"Array index out of bounds.");
    return index;
}

// --- windows ---

WindowObject::WindowObject(std::shared_ptr<Gate> gate, int number) : OutlookObject(std::move(gate)), number_(number) {}

Result WindowObject::GetCommandBars() {
    if (bars.bars.empty()) RefuseWords(E_FAIL, L"The command bars of a note cannot be used.");
    return TheHost().CommandBarsOf(*this);
}

void WindowObject::CallActivate() {
    if (!shown) Refuse(E_FAIL);
    TheHost().Activate(*this);
}

void WindowObject::PutState(long value) {
    if (value < 0 || value > 2) Refuse(E_INVALIDARG);
    state_ = value;
}

ExplorerObject::ExplorerObject(std::shared_ptr<Gate> gate, int number, FolderObject* start)
    : WindowObject(std::move(gate), number), folder(start) {
    SelectFirst();
}

const TypeDescription& ExplorerObject::Type() const {
    static const TypeDescription type{
        "_Explorer", OfficeGuid(0x00063003), {headMembers, explorerMembers, placeMembers}, explorerEvents};
    return type;
}

void ExplorerObject::SelectFirst() {
    selection.clear();
    if (!folder->Contents().empty()) selection.push_back(folder->Contents().front());
}

bool ExplorerObject::AskFolderSwitch(FolderObject* next) {
    VARIANT_BOOL cancel = VARIANT_FALSE;
    Raise(events::BeforeFolderSwitch, {EventArgument(next), EventArgument(&cancel)});
    return cancel == VARIANT_FALSE;
}

void ExplorerObject::PutFolder(IDispatch* next) {
    FolderObject* known = Ours<FolderObject>(TheGate(), next);
    if (!known) Refuse(DISP_E_TYPEMISMATCH);
    TheHost().SwitchFolder(*this, *known);
}

void ExplorerObject::CallClose() { TheHost().Close(*this, SaveMode::Prompt); }
void ExplorerObject::CallDisplay() { TheHost().Show(*this); }
std::wstring ExplorerObject::GetCaption() { return folder->Title() + L" - Microsoft Outlook"; }
Result ExplorerObject::GetSelection() { return Make<SelectionObject>(*this); }

bool ExplorerObject::CallIsPaneVisible(Call& call) {
    const long pane = call.Long(0);
    if (pane < 1 || pane > 3) Refuse(E_INVALIDARG);
    return panes_[pane - 1];
}

void ExplorerObject::CallShowPane(Call& call) {
    const long pane = call.Long(0);
    if (pane < 1 || pane > 3) Refuse(E_INVALIDARG);
    panes_[pane - 1] = call.FlagOr(1, true);
}

InspectorObject::InspectorObject(std::shared_ptr<Gate> gate, int number, ItemObject* shownItem)
    : WindowObject(std::move(gate), number), item(shownItem) {}

const TypeDescription& InspectorObject::Type() const {
    static const TypeDescription type{
        "_Inspector", OfficeGuid(0x00063005), {headMembers, inspectorMembers, placeMembers}, inspectorEvents};
    return type;
}

void InspectorObject::CallClose(Call& call) {
    if (item->inClose) Refuse(E_FAIL);
    const long mode = call.Long(0);
    if (mode < 0 || mode > 2) Refuse(E_INVALIDARG);
    TheHost().Close(*this, static_cast<SaveMode>(mode));
}

void InspectorObject::CallDisplay(Call&) { TheHost().Display(*item); }

std::wstring InspectorObject::GetCaption() {
    const std::wstring subject = item->FieldText("Subject");
    std::string kind = item->Kind().type.PlainName();
    kind = kind == "MailItem" ? "Message" : kind.substr(0, kind.find("Item"));
    return (subject.empty() ? L"Untitled" : subject) + L" - " + Wide(kind);
}

// --- collections ---

std::vector<WindowObject*> WindowsObject::Listed() const {
    std::vector<WindowObject*> listed;
    for (const Ref<WindowObject>& window : TheHost().Windows())
        if (window->IsExplorer() == OfExplorers()) listed.push_back(window.get());
    return listed;
}

long WindowsObject::GetCount() { return static_cast<long>(Listed().size()); }

Result WindowsObject::CallItem(Call& call) {
    const std::vector<WindowObject*> listed = Listed();
    return listed[static_cast<std::size_t>(IndexArgument(call, listed.size()) - 1)];
}

const TypeDescription& ExplorersObject::Type() const {
    static const TypeDescription type{
        "_Explorers", OfficeGuid(0x0006300A), {headMembers, explorersMembers}, explorersEvents};
    return type;
}

Result ExplorersObject::CallAdd(Call& call) {
    FolderObject* folder = Ours<FolderObject>(TheGate(), call.Dispatch(0));
    if (!folder) Refuse(DISP_E_TYPEMISMATCH);
    return TheHost().ExplorerFor(*folder);
}

const TypeDescription& InspectorsObject::Type() const {
    static const TypeDescription type{
        "_Inspectors", OfficeGuid(0x00063008), {headMembers, inspectorsMembers}, inspectorsEvents};
    return type;
}

Result InspectorsObject::CallAdd(Call& call) {
    ItemObject* item = Ours<ItemObject>(TheGate(), call.Dispatch(0));
    if (!item) Refuse(DISP_E_TYPEMISMATCH);
    return TheHost().WindowFor(*item);
}

// --- the selection ---

SelectionObject::SelectionObject(ExplorerObject& explorer)
    : OutlookObject(explorer.SharedGate()), explorer_(&explorer), items_(explorer.selection) {}

const TypeDescription& SelectionObject::Type() const {
    static const TypeDescription type{"Selection", OfficeGuid(0x00063087), {headMembers, selectionMembers}};
    return type;
}

Result SelectionObject::CallItem(Call& call) {
    return items_[static_cast<std::size_t>(IndexArgument(call, items_.size()) - 1)];
}

}  // namespace standin
