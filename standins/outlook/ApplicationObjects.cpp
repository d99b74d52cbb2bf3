#include "outlook/ApplicationObjects.h"

#include "outlook/AddIns.h"
#include "outlook/Host.h"
#include "outlook/Items.h"
#include "outlook/Words.h"

namespace standin {

namespace {

constexpr Member applicationMembers[] = {
    Get<&ApplicationObject::GetName>("Name", 0x3001),
    Get<&ApplicationObject::GetVersion>("Version", 0x116),
    Method<&ApplicationObject::CallActiveExplorer>("ActiveExplorer", 0x111),
    Method<&ApplicationObject::CallActiveInspector>("ActiveInspector", 0x112),
    Method<&ApplicationObject::CallCreateItem>("CreateItem", 0x10A, "ItemType"),
    Method<&ApplicationObject::CallGetNamespace>("GetNamespace", 0x110, "Type"),
    Method<&ApplicationObject::CallQuit>("Quit", 0x113),
    Get<&ApplicationObject::GetAddIns>("COMAddIns", 0x118),
    Get<&ApplicationObject::GetExplorers>("Explorers", 0x119),
    Get<&ApplicationObject::GetInspectors>("Inspectors", 0x11A),
    Method<&ApplicationObject::CallActiveWindow>("ActiveWindow", 0x11F),
};
constexpr Member nameSpaceMembers[] = {
    Get<&NameSpaceObject::GetKind>("Type", 0x2104),
    Method<&NameSpaceObject::CallGetDefaultFolder>("GetDefaultFolder", 0x210B, "FolderType"),
    Method<&NameSpaceObject::CallGetItemFromId>("GetItemFromID", 0x2109, "EntryIDItem,EntryIDStore?"),
};
// The first set is that of 2000, the default source there; the others came with 2002 and 2003 (type libraries).
constexpr EventSet applicationEvents[] = {{"ApplicationEvents", OfficeGuid(0x0006304E), 9, 0},
                                          {"ApplicationEvents_10", OfficeGuid(0x0006300E), 10, 1},
                                          {"ApplicationEvents_11", OfficeGuid(0x0006302C), 11, 2}};
constexpr EventSet nameSpaceEvents[] = {{"NameSpaceEvents", OfficeGuid(0x0006308C)}};

}  // namespace

const TypeDescription& ApplicationObject::Type() const {
    static const TypeDescription type{
        "_Application", OfficeGuid(0x00063001), {headMembers, applicationMembers}, applicationEvents};
    return type;
}

// The build of 2000 is documented, those of the others are assumed.
std::wstring ApplicationObject::GetVersion() {
    switch (Version()) {
        case 9: return L"9.0.0.2711";
        case 10: return L"10.0.0.2627";
        case 11: return L"11.0.0.5608";
        case 12: return L"12.0.0.4518";
        case 14: return L"14.0.0.4760";
        case 15: return L"15.0.0.4420";
        default: return L"16.0.0.4266";
    }
}

Result ApplicationObject::CallActiveExplorer() { return TheHost().TopWindow(WindowKind::Explorer); }
Result ApplicationObject::CallActiveInspector() { return TheHost().TopWindow(WindowKind::Inspector); }
Result ApplicationObject::CallActiveWindow() { return TheHost().TopWindow(WindowKind::Any); }

Result ApplicationObject::CallCreateItem(Call& call) {
    const ItemKind* kind = KindOfType(call.Long(0));
    if (!kind) RefuseWords(E_INVALIDARG, L"The item type is not valid.");
    return TheHost().NewItem(*kind);
}

Result ApplicationObject::CallGetNamespace(Call& call) {
    if (!SameText(call.Text(0), L"MAPI")) RefuseWords(E_INVALIDARG, L"There is no such name space.");
    return GetSession();
}

void ApplicationObject::CallQuit() { TheHost().QuitSoon(); }
Result ApplicationObject::GetAddIns() { return TheHost().AddIns().Object(); }
Result ApplicationObject::GetExplorers() { return TheHost().Explorers(); }
Result ApplicationObject::GetInspectors() { return TheHost().Inspectors(); }

const TypeDescription& NameSpaceObject::Type() const {
    static const TypeDescription type{
        "_NameSpace", OfficeGuid(0x00063002), {headMembers, nameSpaceMembers}, nameSpaceEvents};
    return type;
}

Result NameSpaceObject::CallGetDefaultFolder(Call& call) {
    Result folder = TheHost().DefaultFolder(call.Long(0));
    if (!folder) RefuseWords(E_INVALIDARG, L"There is no such folder.");
    return folder;
}

Result NameSpaceObject::CallGetItemFromId(Call& call) {
    Result item = TheHost().ItemByEntryId(call.Text(0));
    if (!item) RefuseWords(static_cast<HRESULT>(0x8004010F), L"The operation failed. An object could not be found.");
    return item;
}

}  // namespace standin
