#include "outlook/RibbonHost.h"

#include <algorithm>

#include "outlook/Face.h"
#include "outlook/WindowObjects.h"
#include "outlook/Words.h"
#include "outlook/ribbon/Schema.h"

namespace standin {
namespace {

constexpr IID extensibilityId{0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr int outlook2007 = 12;
constexpr int outlook2010 = 14;
constexpr const char* explorerRibbon = "Microsoft.Outlook.Explorer";

using ribbon::XmlElement;

VARIANT ObjectArgument(Object* object) {
    VARIANT argument{};
    argument.vt = VT_DISPATCH;
    argument.pdispVal = object;  // borrowed
    return argument;
}

// The first tab of the window of an item, and the ribbon's id; empty for a note, which has none.
struct ItemRibbon {
    ItemClass itemClass;
    const char* ribbonId;
    const char* tab;
    const char* label;
};
constexpr ItemRibbon itemRibbons[] = {
    {ItemClass::Appointment, "Microsoft.Outlook.Appointment", "TabAppointment", "Appointment"},
    {ItemClass::Contact, "Microsoft.Outlook.Contact", "TabContact", "Contact"},
    {ItemClass::Journal, "Microsoft.Outlook.Journal", "TabJournal", "Journal Entry"},
    {ItemClass::Mail, "Microsoft.Outlook.Mail.Read", "TabReadMessage", "Message"},
    {ItemClass::Task, "Microsoft.Outlook.Task", "TabTask", "Task"},
    {ItemClass::TaskRequest, "Microsoft.Outlook.Task", "TabTask", "Task"},
    {ItemClass::DistList, "Microsoft.Outlook.DistributionList", "TabDistributionList", "Contact Group"},
    {ItemClass::Meeting, "Microsoft.Outlook.MeetingRequest.Read", "TabReadMessage", "Meeting"},
    {ItemClass::Post, "Microsoft.Outlook.Post.Read", "TabReadMessage", "Post"},
    {ItemClass::Report, "Microsoft.Outlook.Report", "TabReadMessage", "Report"},
};

const ItemRibbon* RibbonOfItem(const WindowObject& window) {
    const auto* inspector = dynamic_cast<const InspectorObject*>(&window);
    if (!inspector) return nullptr;
    for (const ItemRibbon& known : itemRibbons)
        if (known.itemClass == inspector->item->Kind().itemClass) return &known;
    return nullptr;
}

const char* HomeTab(FolderKind folder) {
    switch (folder) {
        case FolderKind::Contacts: return "TabContacts";
        case FolderKind::Calendar: return "TabCalendar";
        case FolderKind::Tasks: return "TabTasks";
        case FolderKind::Notes: return "TabNotes";
        case FolderKind::Journal: return "TabJournals";
        default: return "TabMail";
    }
}

bool HasOwnControls(const WindowObject& window) {
    bool found = false;
    for (const BarPointer& bar : window.bars.bars) {
        ForEach(
            *bar, [&](const ControlPointer& control, const BarPointer&) { found = found || !control->builtIn; }, bar);
    }
    return found;
}

// The host's own tabs, in their order.
std::vector<RibbonTabView> OwnTabs(const WindowObject& window) {
    std::vector<RibbonTabView> tabs;
    if (const auto* explorer = dynamic_cast<const ExplorerObject*>(&window)) {
        if (window.Version() < outlook2010) return {};
        tabs.push_back({HomeTab(explorer->folder->Kind()), "Home", "H", {}});
        tabs.push_back({"TabSendReceive", "Send / Receive", "S", {}});
        tabs.push_back({"TabFolder", "Folder", "O", {}});
        tabs.push_back({"TabView", "View", "V", {}});
    } else if (const ItemRibbon* own = RibbonOfItem(window); own && window.Version() >= outlook2007) {
        tabs.push_back({own->tab, own->label, "H", {}});
    }
    if (!tabs.empty() && HasOwnControls(window)) tabs.push_back({"TabAddIns", "Add-Ins", "X", {}});
    return tabs;
}

const XmlElement* ChildOf(const XmlElement& element, const wchar_t* name) {
    for (const auto& child : element.children)
        if (child->name == name) return child.get();
    return nullptr;
}

// The tabs of an XML, or its context menus.
std::vector<const XmlElement*> TabsIn(const XmlElement& root) {
    std::vector<const XmlElement*> found;
    const XmlElement* ribbon = ChildOf(root, L"ribbon");
    const XmlElement* tabs = ribbon ? ChildOf(*ribbon, L"tabs") : nullptr;
    if (tabs)
        for (const auto& tab : tabs->children) found.push_back(tab.get());
    return found;
}

std::vector<const XmlElement*> ContextMenusIn(const XmlElement& root) {
    std::vector<const XmlElement*> found;
    if (const XmlElement* menus = ChildOf(root, L"contextMenus"))
        for (const auto& menu : menus->children) found.push_back(menu.get());
    return found;
}

std::string NameOf(const XmlElement& tab) {
    const std::wstring* own = tab.Find(L"id");
    return Ansi(own ? *own : tab.Get(L"idMso"));
}

// The menu that a right click on the selection opens.
std::string ContextMenuName(const ExplorerObject& explorer) {
    if (explorer.selection.empty()) return {};
    if (explorer.selection.size() > 1) return "ContextMenuMultipleItems";
    switch (explorer.selection.front()->Kind().itemClass) {
        case ItemClass::Contact: return "ContextMenuContactItem";
        case ItemClass::Task: return "ContextMenuTaskItem";
        case ItemClass::Appointment: return "ContextMenuCalendarItem";
        default: return "ContextMenuMailItem";
    }
}

AlphaPixels PixelsOfPicture(const Value& told) {
    if (told.vt != VT_DISPATCH || !told.pdispVal) return {};
    HBITMAP bitmap = BitmapOf(told.pdispVal);
    DIBSECTION section{};
    if (!bitmap || GetObjectA(bitmap, sizeof section, &section) != sizeof section) return {};
    if (section.dsBm.bmBitsPixel != 32 || !section.dsBm.bmBits) return {};
    AlphaPixels pixels{static_cast<int>(section.dsBm.bmWidth), static_cast<int>(section.dsBm.bmHeight), {}};
    const auto* bits = static_cast<const std::uint32_t*>(section.dsBm.bmBits);
    const bool bottomUp = section.dsBmih.biHeight > 0;
    for (int y = 0; y < pixels.height; ++y) {
        const std::uint32_t* row =
            bits + static_cast<std::ptrdiff_t>(bottomUp ? pixels.height - 1 - y : y) * pixels.width;
        pixels.colours.insert(pixels.colours.end(), row, row + pixels.width);
    }
    return pixels;
}

RibbonControlView FindIn(const std::vector<RibbonControlView>& controls, const std::string& id) {
    for (const RibbonControlView& control : controls) {
        if (control.id == id) return control;
        if (RibbonControlView found = FindIn(control.controls, id)) return found;
    }
    return {};
}

}  // namespace

RibbonControlView FindControl(const std::vector<RibbonTabView>& tabs, const std::string& id) {
    for (const RibbonTabView& tab : tabs)
        for (const RibbonGroupView& group : tab.groups)
            if (RibbonControlView found = FindIn(group.controls, id)) return found;
    return {};
}

// --- add-ins

void RibbonHost::Add(const std::string& progId, IUnknown* addIn, bool late) {
    if (gate_->Version() < outlook2007) return;
    Remove(progId);
    auto part = std::make_shared<Part>();
    part->progId = progId;
    if (FAILED(addIn->QueryInterface(extensibilityId, part->extensibility.put())) || !part->extensibility) return;
    part->extensibility->QueryInterface(IID_IDispatch, part->callbacks.put());
    parts_.push_back(part);
    if (!late || host_.TheOptions().ribbon.asked == RibbonAsked::Never) return;
    const std::vector<Ref<WindowObject>> windows = host_.Windows();
    for (const Ref<WindowObject>& window : windows)
        if (window->shown) Ask(*part, RibbonOf(*window));
}

void RibbonHost::Remove(const std::string& progId) {
    std::erase_if(told_, [&](const auto& told) { return told.first.first == progId; });
    const auto found =
        std::find_if(parts_.begin(), parts_.end(), [&](const auto& part) { return part->progId == progId; });
    if (found == parts_.end()) return;
    const PartPointer part = *found;
    parts_.erase(found);
    for (const auto& [id, custom] : part->customs)
        if (custom && custom->ui) custom->ui->CutOff();
}

void RibbonHost::RemoveAll() {
    while (!parts_.empty()) Remove(std::string(parts_.back()->progId));
}

IDispatch* RibbonHost::CallbacksOf(const std::string& progId) const {
    for (const PartPointer& part : parts_)
        if (part->progId == progId) return part->callbacks.get();
    return nullptr;
}

// --- XML

std::string RibbonHost::RibbonOf(const WindowObject& window) const {
    if (window.IsExplorer()) return gate_->Version() >= outlook2010 ? explorerRibbon : "";
    const ItemRibbon* own = RibbonOfItem(window);
    return own ? own->ribbonId : "";
}

void RibbonHost::AskForExplorer() {
    if (gate_->Version() < outlook2010) return;
    const std::vector<PartPointer> parts = parts_;
    for (const PartPointer& part : parts) {
        Ask(*part, explorerRibbon);
        for (const std::string& other : host_.TheOptions().ribbon.askedBefore) Ask(*part, other);
    }
}

void RibbonHost::WindowShows(WindowObject& window) {
    const std::string ribbonId = RibbonOf(window);
    const std::vector<PartPointer> parts = parts_;
    for (const PartPointer& part : parts) Ask(*part, ribbonId);
}

void RibbonHost::WindowGone(int window) {
    std::erase_if(told_, [&](const auto& told) { return told.first.second.window == window; });
}

void RibbonHost::Ask(Part& part, const std::string& ribbonId) {
    if (ribbonId.empty() || !part.customs.emplace(ribbonId, nullptr).second) return;  // once a session
    asked_.push_back(ribbonId);
    const std::wstring xml = GetCustomUI(part, ribbonId);
    if (xml.empty()) return;
    const std::shared_ptr<Custom> custom = Take(part, ribbonId, xml);
    if (!custom) return;
    part.customs[ribbonId] = custom;
    const std::wstring load = custom->root->Get(L"onLoad");
    if (!load.empty()) Call(part, load, {ObjectArgument(custom->ui.get())}, custom->ui->Name(), nullptr);
}

std::wstring RibbonHost::GetCustomUI(Part& part, const std::string& ribbonId) {
    const Gate::Outward outward(*gate_, [&] { return part.progId + ": GetCustomUI(" + ribbonId + ")"; });
    const Theirs<RibbonExtensibility> alive = part.extensibility;
    const Value id = Value::OfText(Wide(ribbonId));
    BSTR xml = nullptr;
    const HRESULT answer = alive->GetCustomUI(id.bstrVal, &xml);
    std::wstring text = xml ? std::wstring(xml, SysStringLen(xml)) : std::wstring();
    SysFreeString(xml);
    if (SUCCEEDED(answer)) return text;
    gate_->Complain(part.progId + ": GetCustomUI returns " + Hex(static_cast<unsigned long>(answer)));
    return {};
}

std::wstring RibbonHost::AskAgain(const std::string& progId, const std::string& ribbonId) {
    for (const PartPointer& part : parts_)
        if (part->progId == progId) return GetCustomUI(*PartPointer(part), ribbonId);
    return {};
}

std::shared_ptr<RibbonHost::Custom> RibbonHost::Take(Part& part, const std::string& ribbonId, const std::wstring& xml) {
    const RibbonOptions& options = host_.TheOptions().ribbon;
    const auto refuse = [&](const std::string& why) {
        errors_.push_back(part.progId + "." + ribbonId + ": " + why);
        return nullptr;
    };
    const ribbon::XmlDocument document = ribbon::ReadXml(xml);
    if (!document.root) return refuse(document.error);
    const std::vector<std::string> wrong = ribbon::Check(*document.root, {gate_->Version(), options.missingIds});
    for (const std::string& error : wrong) refuse(error);
    if (!wrong.empty()) return nullptr;
    if (options.refuseAll) return refuse("refused");
    auto custom = std::make_shared<Custom>();
    custom->ribbonId = ribbonId;
    custom->root = document.root;
    custom->ui = Make<RibbonUiObject>(gate_, ribbonId, [this, progId = part.progId](const std::wstring& id) {
        Forget(progId, id);
        host_.RibbonChanged();
    });
    return custom;
}

void RibbonHost::Forget(const std::string& progId, const std::wstring& id) {
    std::erase_if(told_, [&](const auto& told) {
        return told.first.first == progId && (id.empty() || told.first.second.control == id);
    });
}

// --- callbacks

RibbonHost::Scene RibbonHost::SceneOf(WindowObject& window) { return {window.Number(), ContextOr(&window), true}; }

RibbonHost::Scene RibbonHost::SelectionScene(WindowObject& explorer) {
    return {explorer.Number(), ContextOr(static_cast<ExplorerObject&>(explorer).GetSelection()), false};
}

Result RibbonHost::ContextOr(const Result& documented) {
    switch (host_.TheOptions().ribbon.context) {
        case RibbonContext::Nothing: return {};
        case RibbonContext::AnotherObject: return host_.Folder(FolderKind::Inbox);
        default: return documented;
    }
}

bool RibbonHost::FindId(Part& part, const std::wstring& name, DISPID& id) {
    if (const auto known = part.ids.find(name); known != part.ids.end()) {
        id = known->second;
        return true;
    }
    std::wstring copy = name;
    LPOLESTR names = copy.data();
    id = DISPID_UNKNOWN;
    const HRESULT answer = part.callbacks->GetIDsOfNames(IID_NULL, &names, 1, locale_++, &id);
    if (FAILED(answer)) {
        gate_->Complain(part.progId + " has no callback " + Ansi(name));
        return false;
    }
    part.ids[name] = id;
    return true;
}

bool RibbonHost::Call(Part& part, const std::wstring& name, std::vector<VARIANT> reversed, const std::string& about,
                      Value* result) {
    DISPID id = DISPID_UNKNOWN;
    if (!part.callbacks || !FindId(part, name, id)) return false;
    const Theirs<IDispatch> alive = part.callbacks;
    const Gate::Outward outward(*gate_, [&] { return part.progId + ": " + Ansi(name) + "(" + about + ")"; });
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    EXCEPINFO exception{};
    UINT wrong = 0;
    const bool bare = ++calls_ % 2 == 0;  // some hosts give no room for errors
    Value told;
    const HRESULT answer = alive->Invoke(id, IID_NULL, locale_, DISPATCH_METHOD, &parameters, result ? &told : nullptr,
                                         bare ? nullptr : &exception, bare ? nullptr : &wrong);
    if (result) *result = Value(static_cast<const VARIANT&>(told));
    if (FAILED(answer))
        gate_->Complain(part.progId + ": " + Ansi(name) + " returns " + Hex(static_cast<unsigned long>(answer)));
    return SUCCEEDED(answer);
}

Value RibbonHost::Told(Part& part, const Scene& scene, const XmlElement& element, const std::wstring& attribute) {
    const std::pair<std::string, Known> key{part.progId, {scene.window, element.Get(L"id"), attribute}};
    if (const auto known = told_.find(key); scene.remembers && known != told_.end()) return known->second;
    const Ref<RibbonControlObject> control =
        Make<RibbonControlObject>(gate_, element.Get(L"id"), element.Get(L"tag"), scene.context);
    Value value;
    Call(part, element.Get(attribute.c_str()), {ObjectArgument(control.get())}, control->Name(), &value);
    if (scene.remembers) told_[key] = value;
    return value;
}

std::string RibbonHost::TextOf(Part& part, const Scene& scene, const XmlElement& element, const wchar_t* attribute) {
    if (const std::wstring* fixed = element.Find(attribute)) return Ansi(*fixed);
    std::wstring callback = std::wstring(L"get") + attribute;
    callback[3] = static_cast<wchar_t>(callback[3] - L'a' + L'A');
    return element.Find(callback.c_str()) ? Ansi(Told(part, scene, element, callback).Text()) : std::string();
}

bool RibbonHost::FlagOf(Part& part, const Scene& scene, const XmlElement& element, const wchar_t* attribute) {
    if (const std::wstring* fixed = element.Find(attribute)) return *fixed == L"true" || *fixed == L"1";
    std::wstring callback = std::wstring(L"get") + attribute;
    callback[3] = static_cast<wchar_t>(callback[3] - L'a' + L'A');
    if (!element.Find(callback.c_str())) return true;
    Value told = Told(part, scene, element, callback);
    if (told.vt == VT_BOOL || (told.vt != VT_EMPTY && told.Become(VT_BOOL))) return told.boolVal != VARIANT_FALSE;
    gate_->Complain(part.progId + ": " + Ansi(element.Get(callback.c_str())) + " told no flag");
    return true;
}

bool RibbonHost::IsLarge(Part& part, const Scene& scene, const XmlElement& element) {
    if (const std::wstring* fixed = element.Find(L"size")) return *fixed == L"large";
    if (!element.Find(L"getSize")) return false;
    Value told = Told(part, scene, element, L"getSize");
    return told.Become(VT_I4) && told.lVal == 1;
}

AlphaPixels RibbonHost::ImageOf(Part& part, const Scene& scene, const XmlElement& element) {
    if (!element.Find(L"getImage")) return {};
    AlphaPixels pixels = PixelsOfPicture(Told(part, scene, element, L"getImage"));
    if (pixels.colours.empty())
        gate_->Complain(part.progId + ": " + Ansi(element.Get(L"id")) + " has no picture of 32 bits");
    return pixels;
}

// --- what is shown

RibbonControlView RibbonHost::ViewOf(Part& part, const Scene& scene, const XmlElement& element) {
    RibbonControlView view;
    view.progId = part.progId;
    view.kind = Ansi(element.name);
    view.id = Ansi(element.Get(L"id"));
    view.tag = Ansi(element.Get(L"tag"));
    view.visible = FlagOf(part, scene, element, L"visible");
    if (!view.visible) return view;
    view.label = Ansi(Readable(Wide(TextOf(part, scene, element, L"label"))));
    view.screentip = TextOf(part, scene, element, L"screentip");
    view.keytip = TextOf(part, scene, element, L"keytip");
    view.enabled = FlagOf(part, scene, element, L"enabled");
    view.large = IsLarge(part, scene, element);
    view.image = ImageOf(part, scene, element);
    for (const auto& child : element.children) view.controls.push_back(ViewOf(part, scene, *child));
    return view;
}

void RibbonHost::AddGroups(Part& part, const Scene& scene, const XmlElement& tab, RibbonTabView& view) {
    for (const auto& group : tab.children) {
        if (group->Find(L"idMso") || !FlagOf(part, scene, *group, L"visible")) continue;
        RibbonGroupView added{Ansi(group->Get(L"id")), TextOf(part, scene, *group, L"label"), {}};
        for (const auto& control : group->children) added.controls.push_back(ViewOf(part, scene, *control));
        view.groups.push_back(std::move(added));
    }
}

std::vector<RibbonTabView> RibbonHost::Tabs(WindowObject& window) {
    const Ref<WindowObject> alive(&window);
    std::vector<RibbonTabView> views = OwnTabs(window);
    const Scene scene = SceneOf(window);
    const std::vector<PartPointer> parts = parts_;
    for (const PartPointer& part : parts) {
        const auto custom = part->customs.find(RibbonOf(window));
        if (custom == part->customs.end() || !custom->second) continue;
        for (const XmlElement* tab : TabsIn(*custom->second->root)) {
            if (tab->Find(L"id") && FlagOf(*part, scene, *tab, L"visible"))
                views.push_back({NameOf(*tab), TextOf(*part, scene, *tab, L"label"), {}, {}});
            for (RibbonTabView& view : views)
                if (view.name == NameOf(*tab)) AddGroups(*part, scene, *tab, view);
        }
    }
    return views;
}

std::vector<RibbonControlView> RibbonHost::ContextMenu(WindowObject& explorer) {
    const Ref<WindowObject> alive(&explorer);
    std::vector<RibbonControlView> views;
    const Scene scene = SelectionScene(explorer);
    const std::vector<PartPointer> parts = parts_;
    for (const PartPointer& part : parts) {
        const auto custom = part->customs.find(explorerRibbon);
        if (custom == part->customs.end() || !custom->second) continue;
        for (const XmlElement* menu : ContextMenusIn(*custom->second->root)) {
            if (NameOf(*menu) != ContextMenuName(static_cast<ExplorerObject&>(explorer))) continue;
            for (const auto& control : menu->children) views.push_back(ViewOf(*part, scene, *control));
        }
    }
    return views;
}

// --- clicks

bool RibbonHost::ClickControl(const XmlElement& element, Part& part, const Scene& scene) {
    const std::wstring* action = element.Find(L"onAction");
    if (!action || !FlagOf(part, scene, element, L"enabled")) return false;
    Scene clicked = scene;
    if (host_.TheOptions().ribbon.context == RibbonContext::ClosedWindow) {
        const std::vector<Ref<WindowObject>> windows = host_.Windows();
        for (const Ref<WindowObject>& window : windows)
            if (window->Number() == scene.window) host_.Close(*window, SaveMode::Discard);
    }
    const Ref<RibbonControlObject> control =
        Make<RibbonControlObject>(gate_, element.Get(L"id"), element.Get(L"tag"), clicked.context);
    return Call(part, *action, {ObjectArgument(control.get())}, control->Name(), nullptr);
}

bool RibbonHost::ClickIn(const XmlElement& element, Part& part, const Scene& scene, const std::wstring& id) {
    for (const auto& child : element.children) {
        if (!FlagOf(part, scene, *child, L"visible")) continue;
        if (child->Get(L"id") == id) return ClickControl(*child, part, scene);
        if (ClickIn(*child, part, scene, id)) return true;
    }
    return false;
}

bool RibbonHost::Click(WindowObject& window, const std::wstring& id) {
    const Ref<WindowObject> alive(&window);
    const std::vector<RibbonTabView> shown = Tabs(window);
    const Scene scene = SceneOf(window);
    const std::vector<PartPointer> parts = parts_;
    for (const PartPointer& part : parts) {
        const auto found = part->customs.find(RibbonOf(window));
        if (found == part->customs.end() || !found->second) continue;
        const std::shared_ptr<Custom> custom = found->second;
        for (const XmlElement* tab : TabsIn(*custom->root)) {
            const bool isShown = std::any_of(shown.begin(), shown.end(),
                                             [&](const RibbonTabView& view) { return view.name == NameOf(*tab); });
            if (isShown && ClickIn(*tab, *part, scene, id)) return true;
        }
    }
    return false;
}

bool RibbonHost::ClickInContextMenu(WindowObject& explorer, const std::wstring& id) {
    const Ref<WindowObject> alive(&explorer);
    const Scene scene = SelectionScene(explorer);
    const std::vector<PartPointer> parts = parts_;
    for (const PartPointer& part : parts) {
        const auto found = part->customs.find(explorerRibbon);
        if (found == part->customs.end() || !found->second) continue;
        const std::shared_ptr<Custom> custom = found->second;
        for (const XmlElement* menu : ContextMenusIn(*custom->root)) {
            if (NameOf(*menu) == ContextMenuName(static_cast<ExplorerObject&>(explorer)) &&
                ClickIn(*menu, *part, scene, id))
                return true;
        }
    }
    return false;
}

}  // namespace standin
