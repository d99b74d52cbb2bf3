#include "outlook/BarObjects.h"

#include "outlook/Enumerator.h"
#include "outlook/Handlers.h"
#include "outlook/Host.h"
#include "outlook/Words.h"

namespace standin {

namespace {

constexpr std::size_t longestCaption = 200;

constexpr Member dispMembers[] = {Get<&Object::GetApplication>("Application", 0x60020000)};        // _IMsoDispObj
constexpr Member accessibleMembers[] = {Get<&Object::GetApplication>("Application", 0x60030000)};  // _IMsoOleAccDispObj

constexpr Member commandBarsMembers[] = {
    Get<&CommandBarsObject::GetActionControl>("ActionControl", 0x60030000),
    Get<&CommandBarsObject::GetActiveMenuBar>("ActiveMenuBar", 0x60030001),
    Method<&CommandBarsObject::CallAdd>("Add", 0x60030002, "Name?,Position?,MenuBar?,Temporary?"),
    Get<&CommandBarsObject::GetCount>("Count", 0x60030003),
    Method<&CommandBarsObject::CallFindControl>("FindControl", 0x60030008, "Type?,Id?,Tag?,Visible?"),
    Get<&CommandBarsObject::GetItem>("Item", 0, "Index"),
    Get<&CommandBarsObject::GetEnumerator>("_NewEnum", DISPID_NEWENUM),
    Get<&CommandBarsObject::GetParent>("Parent", 0x6003000F),
    Method<&CommandBarsObject::CallFindControls>("FindControls", 0x60030015, "Type?,Id?,Tag?,Visible?"),
};
constexpr Member controlsMembers[] = {
    Method<&ControlsObject::CallAdd>("Add", 0x60030000, "Type?,Id?,Parameter?,Before?,Temporary?"),
    Get<&ControlsObject::GetCount>("Count", 0x60030001),
    Get<&ControlsObject::GetItem>("Item", 0, "Index"),
    Get<&ControlsObject::GetEnumerator>("_NewEnum", DISPID_NEWENUM),
    Get<&ControlsObject::GetParent>("Parent", 0x60030004),
};

template <auto Field>
constexpr Member BarGet(const char* name, DISPID id) {
    return Get<&CommandBarObject::Read<Field>>(name, id);
}
template <auto Field>
constexpr Member BarPut(const char* name, DISPID id) {
    return Put<&CommandBarObject::Write<Field>>(name, id);
}

constexpr Member commandBarMembers[] = {
    BarGet<&Bar::builtIn>("BuiltIn", 0x60040000),
    Get<&CommandBarObject::GetControls>("Controls", 0x60040003),
    Method<&CommandBarObject::CallDelete>("Delete", 0x60040004),
    BarGet<&Bar::enabled>("Enabled", 0x60040005),
    BarPut<&Bar::enabled>("Enabled", 0x60040005),
    Method<&CommandBarObject::CallFindControl>("FindControl", 0x60040007, "Type?,Id?,Tag?,Visible?,Recursive?"),
    BarGet<&Bar::height>("Height", 0x60040008),
    BarPut<&Bar::height>("Height", 0x60040008),
    Get<&CommandBarObject::GetIndex>("Index", 0x6004000A),
    BarGet<&Bar::instance>("InstanceId", 0x6004000B),
    BarGet<&Bar::left>("Left", 0x6004000C),
    BarPut<&Bar::left>("Left", 0x6004000C),
    BarGet<&Bar::name>("Name", 0x6004000E),
    Put<&CommandBarObject::PutName>("Name", 0x6004000E),
    BarGet<&Bar::nameLocal>("NameLocal", 0x60040010),
    Put<&CommandBarObject::PutName>("NameLocal", 0x60040010),
    Get<&CommandBarObject::GetParent>("Parent", 0x60040012),
    BarGet<&Bar::position>("Position", 0x60040013),
    BarPut<&Bar::position>("Position", 0x60040013),
    BarGet<&Bar::rowIndex>("RowIndex", 0x60040015),
    BarPut<&Bar::rowIndex>("RowIndex", 0x60040015),
    BarGet<&Bar::protection>("Protection", 0x60040017),
    BarPut<&Bar::protection>("Protection", 0x60040017),
    BarGet<&Bar::top>("Top", 0x6004001B),
    BarPut<&Bar::top>("Top", 0x6004001B),
    BarGet<&Bar::type>("Type", 0x6004001D),
    BarGet<&Bar::visible>("Visible", 0x6004001E),
    BarPut<&Bar::visible>("Visible", 0x6004001E),
    BarGet<&Bar::width>("Width", 0x60040020),
    BarPut<&Bar::width>("Width", 0x60040020),
    BarGet<&Bar::adaptive>("AdaptiveMenu", 0x60040022),
    BarPut<&Bar::adaptive>("AdaptiveMenu", 0x60040022),
};

template <auto Field>
constexpr Member ControlGet(const char* name, DISPID id) {
    return Get<&ControlObject::Read<Field>>(name, id);
}
template <auto Field>
constexpr Member ControlPut(const char* name, DISPID id) {
    return Put<&ControlObject::Write<Field>>(name, id);
}

constexpr Member controlMembers[] = {
    ControlGet<&ControlModel::beginGroup>("BeginGroup", 0x60040000),
    ControlPut<&ControlModel::beginGroup>("BeginGroup", 0x60040000),
    Get<&ControlObject::GetBuiltIn>("BuiltIn", 0x60040002),
    ControlGet<&ControlModel::caption>("Caption", 0x60040003),
    Put<&ControlObject::PutCaption>("Caption", 0x60040003),
    Method<&ControlObject::CallCopy>("Copy", 0x60040006, "Bar?,Before?"),
    Method<&ControlObject::CallDelete>("Delete", 0x60040007, "Temporary?"),
    ControlGet<&ControlModel::description>("DescriptionText", 0x60040008),
    ControlPut<&ControlModel::description>("DescriptionText", 0x60040008),
    ControlGet<&ControlModel::enabled>("Enabled", 0x6004000A),
    ControlPut<&ControlModel::enabled>("Enabled", 0x6004000A),
    Method<&ControlObject::CallExecute>("Execute", 0x6004000C),
    ControlGet<&ControlModel::height>("Height", 0x6004000D),
    ControlPut<&ControlModel::height>("Height", 0x6004000D),
    ControlGet<&ControlModel::helpContext>("HelpContextId", 0x6004000F),
    ControlPut<&ControlModel::helpContext>("HelpContextId", 0x6004000F),
    ControlGet<&ControlModel::helpFile>("HelpFile", 0x60040011),
    ControlPut<&ControlModel::helpFile>("HelpFile", 0x60040011),
    ControlGet<&ControlModel::id>("Id", 0x60040013),
    Get<&ControlObject::GetIndex>("Index", 0x60040014),
    ControlGet<&ControlModel::instance>("InstanceId", 0x60040015),
    Method<&ControlObject::CallMove>("Move", 0x60040016, "Bar?,Before?"),
    Get<&ControlObject::GetLeft>("Left", 0x60040017),
    ControlGet<&ControlModel::oleUsage>("OLEUsage", 0x60040018),
    ControlPut<&ControlModel::oleUsage>("OLEUsage", 0x60040018),
    ControlGet<&ControlModel::onAction>("OnAction", 0x6004001A),
    ControlPut<&ControlModel::onAction>("OnAction", 0x6004001A),
    Get<&ControlObject::GetParent>("Parent", 0x6004001C),
    ControlGet<&ControlModel::parameter>("Parameter", 0x6004001D),
    ControlPut<&ControlModel::parameter>("Parameter", 0x6004001D),
    ControlGet<&ControlModel::priority>("Priority", 0x6004001F),
    ControlPut<&ControlModel::priority>("Priority", 0x6004001F),
    Method<&ControlObject::CallReset>("Reset", 0x60040021),
    Method<&ControlObject::CallSetFocus>("SetFocus", 0x60040022),
    ControlGet<&ControlModel::tag>("Tag", 0x60040023),
    ControlPut<&ControlModel::tag>("Tag", 0x60040023),
    Get<&ControlObject::GetTooltip>("TooltipText", 0x60040025),
    ControlPut<&ControlModel::tooltip>("TooltipText", 0x60040025),
    Get<&ControlObject::GetLeft>("Top", 0x60040027),
    ControlGet<&ControlModel::type>("Type", 0x60040028),
    ControlGet<&ControlModel::visible>("Visible", 0x60040029),
    ControlPut<&ControlModel::visible>("Visible", 0x60040029),
    ControlGet<&ControlModel::width>("Width", 0x6004002B),
    ControlPut<&ControlModel::width>("Width", 0x6004002B),
    Get<&ControlObject::GetDropped>("IsPriorityDropped", 0x6004002D),
};
constexpr Member buttonMembers[] = {
    Get<&ControlObject::GetBuiltInFace>("BuiltInFace", 0x60050000),
    Put<&ControlObject::PutBuiltInFace>("BuiltInFace", 0x60050000),
    Method<&ControlObject::CallCopyFace>("CopyFace", 0x60050002),
    ControlGet<&ControlModel::faceId>("FaceId", 0x60050003),
    Put<&ControlObject::PutFaceId>("FaceId", 0x60050003),
    Method<&ControlObject::CallPasteFace>("PasteFace", 0x60050005),
    ControlGet<&ControlModel::shortcut>("ShortcutText", 0x60050006),
    ControlPut<&ControlModel::shortcut>("ShortcutText", 0x60050006),
    ControlGet<&ControlModel::state>("State", 0x60050008),
    Put<&ControlObject::PutState>("State", 0x60050008),
    ControlGet<&ControlModel::style>("Style", 0x6005000A),
    Put<&ControlObject::PutStyle>("Style", 0x6005000A),
    ControlGet<&ControlModel::hyperlink>("HyperlinkType", 0x6005000C),
    ControlPut<&ControlModel::hyperlink>("HyperlinkType", 0x6005000C),
    // Not in the type library of Office 2000; Office XP has them (host quirk 8).
    Get<&ControlObject::GetPicture>("Picture", 0x6005000E, "", 10),
    Put<&ControlObject::PutPicture>("Picture", 0x6005000E, 10),
    Get<&ControlObject::GetMask>("Mask", 0x60050010, "", 10),
    Put<&ControlObject::PutMask>("Mask", 0x60050010, 10),
};
constexpr Member popupMembers[] = {
    Get<&ControlObject::GetCommandBar>("CommandBar", 0x60050000),
    Get<&ControlObject::GetControls>("Controls", 0x60050001),
    ControlGet<&ControlModel::oleMenuGroup>("OLEMenuGroup", 0x60050002),
    ControlPut<&ControlModel::oleMenuGroup>("OLEMenuGroup", 0x60050002),
};

constexpr EventSet commandBarsEvents[] = {{"_CommandBarsEvents", OfficeGuid(0x000C0352)}};
constexpr EventSet buttonEvents[] = {{"_CommandBarButtonEvents", OfficeGuid(0x000C0351)}};
constexpr EventSet comboEvents[] = {{"_CommandBarComboBoxEvents", OfficeGuid(0x000C0354)}};

// Type, Id, Tag, Visible and, for a bar, Recursive.
Wanted WantedBy(const Call& call, bool recursive) {
    Wanted wanted;
    wanted.byType = call.Given(0);
    wanted.type = static_cast<int>(call.LongOr(0, 0));
    wanted.byId = call.Given(1);
    wanted.id = static_cast<int>(call.LongOr(1, 0));
    wanted.byTag = call.Given(2);
    wanted.tag = call.TextOr(2, L"");
    wanted.visibleOnly = call.FlagOr(3, false);
    wanted.recursive = recursive;
    return wanted;
}

Result ObjectOf(WindowObject& window, const ControlPointer& control) { return Make<ControlObject>(window, control); }

Result FirstFound(WindowObject& window, const std::vector<ControlPointer>& found) {
    return found.empty() ? Result() : ObjectOf(window, found.front());
}

// Position for Insert of an optional Before argument: 1 to count + 1, 0 when it is omitted.
std::size_t Before(const Call& call, std::size_t argument, std::size_t count) {
    if (!call.Given(argument)) return 0;
    const long before = call.Long(argument);
    if (before < 1 || before > static_cast<long>(count) + 1) Refuse(DISP_E_BADINDEX);
    return static_cast<std::size_t>(before);
}

}  // namespace

// --- CommandBars ---

CommandBarsObject::CommandBarsObject(WindowObject& window) : Object(window.SharedGate()), window_(&window) {}

const TypeDescription& CommandBarsObject::Type() const {
    static const TypeDescription type{
        "_CommandBars", OfficeGuid(0x000C0302), {dispMembers, commandBarsMembers}, commandBarsEvents};
    return type;
}

std::string CommandBarsObject::Name() const { return "CommandBars of " + window_->Name(); }
HRESULT CommandBarsObject::Gone() const { return window_->Gone(); }

Result CommandBarsObject::GetActionControl() {
    const ControlPointer control = TheHost().ActionControl();
    return control && !control->gone ? ObjectOf(*window_, control) : Result();
}

Result CommandBarsObject::GetActiveMenuBar() { return Make<CommandBarObject>(*window_, window_->bars.MenuBar()); }

Result CommandBarsObject::CallAdd(Call& call) {
    auto bar = std::make_shared<Bar>();
    bar->instance = TheHost().NextInstance();
    bar->name = call.TextOr(0, L"Custom " + std::to_wstring(window_->bars.bars.size() + 1));
    if (window_->bars.Named(bar->name)) Refuse(E_INVALIDARG);
    bar->nameLocal = bar->name;
    bar->position = static_cast<int>(call.LongOr(1, AtTop));
    if (bar->position < 0 || bar->position > PopupPosition) Refuse(E_INVALIDARG);
    bar->type = call.FlagOr(2, false) ? BarMenu : bar->position == PopupPosition ? BarPopup : BarNormal;
    bar->temporary = call.FlagOr(3, false);
    bar->builtIn = false;
    bar->visible = false;
    window_->bars.bars.push_back(bar);
    TheHost().BarsChanged(*window_);
    return Make<CommandBarObject>(*window_, bar);
}

OfficeInt CommandBarsObject::GetCount() { return {static_cast<int>(window_->bars.bars.size())}; }

Result CommandBarsObject::CallFindControl(Call& call) {
    std::vector<ControlPointer> found;
    for (const BarPointer& bar : window_->bars.bars) Collect(*bar, WantedBy(call, true), found);
    return FirstFound(*window_, found);
}

Result CommandBarsObject::CallFindControls(Call& call) {
    std::vector<ControlPointer> found;
    for (const BarPointer& bar : window_->bars.bars) Collect(*bar, WantedBy(call, true), found);
    return found.empty() ? Result() : Result(Make<ControlsObject>(*window_, found));
}

Result CommandBarsObject::GetItem(Call& call) {
    if (call.IsText(0)) {
        const BarPointer bar = window_->bars.Named(call.Text(0));
        if (!bar) Refuse(E_INVALIDARG);
        return Make<CommandBarObject>(*window_, bar);
    }
    const long index = call.Long(0);
    if (index < 1 || index > static_cast<long>(window_->bars.bars.size())) Refuse(E_INVALIDARG);
    return Make<CommandBarObject>(*window_, window_->bars.bars[static_cast<std::size_t>(index - 1)]);
}

void CommandBarsObject::GetEnumerator(Call& call) {
    std::vector<Result> objects;
    for (const BarPointer& bar : window_->bars.bars) objects.push_back(Make<CommandBarObject>(*window_, bar));
    ReturnEnumerator(call, *this, objects);
}

// --- CommandBar ---

CommandBarObject::CommandBarObject(WindowObject& window, BarPointer bar)
    : Object(window.SharedGate()), window_(&window), bar_(std::move(bar)) {}

const TypeDescription& CommandBarObject::Type() const {
    static const TypeDescription type{"CommandBar", OfficeGuid(0x000C0304), {accessibleMembers, commandBarMembers}};
    return type;
}

std::string CommandBarObject::Name() const {
    return "CommandBar " + Quote(Ansi(bar_->name)) + " of " + window_->Name();
}
void CommandBarObject::AnnounceChange() { TheHost().BarsChanged(*window_); }
Result CommandBarObject::GetControls() { return Make<ControlsObject>(*window_, bar_); }

void CommandBarObject::CallDelete() {
    if (bar_->builtIn || std::erase(window_->bars.bars, bar_) == 0) Refuse(E_FAIL);
    MarkGone(*bar_);
    AnnounceChange();
}

Result CommandBarObject::CallFindControl(Call& call) {
    std::vector<ControlPointer> found;
    Collect(*bar_, WantedBy(call, call.FlagOr(4, false)), found);
    return FirstFound(*window_, found);
}

OfficeInt CommandBarObject::GetIndex() {
    const std::vector<BarPointer>& bars = window_->bars.bars;
    for (std::size_t i = 0; i < bars.size(); ++i)
        if (bars[i] == bar_) return {static_cast<int>(i) + 1};
    return {0};  // a popup's
}

void CommandBarObject::PutName(const std::wstring& name) {
    if (bar_->builtIn) Refuse(E_FAIL);
    bar_->name = bar_->nameLocal = name;
    AnnounceChange();
}

// --- CommandBarControls ---

ControlsObject::ControlsObject(WindowObject& window, BarPointer bar)
    : Object(window.SharedGate()), window_(&window), bar_(std::move(bar)) {}
ControlsObject::ControlsObject(WindowObject& window, std::vector<ControlPointer> found)
    : Object(window.SharedGate()), window_(&window), found_(std::move(found)) {}

const TypeDescription& ControlsObject::Type() const {
    static const TypeDescription type{"CommandBarControls", OfficeGuid(0x000C0306), {dispMembers, controlsMembers}};
    return type;
}

std::string ControlsObject::Name() const {
    return bar_ ? "Controls of " + Quote(Ansi(bar_->name)) + " of " + window_->Name()
                : "Controls found in " + window_->Name();
}

Result ControlsObject::CallAdd(Call& call) {
    if (!bar_) Refuse(E_FAIL);
    const long type = call.LongOr(0, TypeButton);
    const long id = call.LongOr(1, 1);
    const bool known = (type >= TypeButton && type <= TypeComboBox) || type == TypePopup;
    if (!known || id < 1) Refuse(E_INVALIDARG);
    const std::wstring parameter = call.TextOr(2, L"");
    const std::size_t position = Before(call, 3, bar_->controls.size());
    const bool temporary = call.FlagOr(4, false);
    const ControlPointer control = MakeControl(TheHost().NextInstance(), static_cast<int>(id), static_cast<int>(type));
    control->parameter = parameter;
    control->temporary = temporary;
    control->builtIn = id != 1;
    if (control->builtIn) control->faceId = control->id;
    Insert(bar_, control, position);
    TheHost().BarsChanged(*window_);
    return ObjectOf(*window_, control);
}

OfficeInt ControlsObject::GetCount() { return {static_cast<int>(Listed().size())}; }

Result ControlsObject::GetItem(Call& call) {
    if (call.IsText(0)) {
        for (const ControlPointer& control : Listed())
            if (SameText(Readable(control->caption), Readable(call.Text(0)))) return ObjectOf(*window_, control);
        Refuse(E_INVALIDARG);
    }
    const long index = call.Long(0);
    if (index < 1 || index > static_cast<long>(Listed().size())) Refuse(DISP_E_BADINDEX);
    return ObjectOf(*window_, Listed()[static_cast<std::size_t>(index - 1)]);
}

void ControlsObject::GetEnumerator(Call& call) {
    std::vector<Result> objects;
    for (const ControlPointer& control : Listed()) objects.push_back(ObjectOf(*window_, control));
    ReturnEnumerator(call, *this, objects);
}

Result ControlsObject::GetParent() {
    if (!bar_) Refuse(E_FAIL);
    return Make<CommandBarObject>(*window_, bar_);
}

// --- CommandBarControl, CommandBarButton, CommandBarPopup ---

ControlObject::ControlObject(WindowObject& window, ControlPointer control)
    : Object(window.SharedGate()), window_(&window), control_(std::move(control)) {}

const TypeDescription& ControlObject::Type() const {
    static const TypeDescription button{
        "_CommandBarButton", OfficeGuid(0x000C030E), {accessibleMembers, controlMembers, buttonMembers}, buttonEvents};
    static const TypeDescription popup{
        "CommandBarPopup", OfficeGuid(0x000C030A), {accessibleMembers, controlMembers, popupMembers}};
    static const TypeDescription combo{
        "_CommandBarComboBox", OfficeGuid(0x000C030C), {accessibleMembers, controlMembers}, comboEvents};
    if (control_->IsPopup()) return popup;
    return control_->IsButton() ? button : combo;
}

std::string ControlObject::Name() const {
    return Type().PlainName() + " " + Quote(Ansi(Readable(control_->caption))) + " of " + window_->Name();
}

void ControlObject::AnnounceChange() { TheHost().BarsChanged(*window_); }

bool ControlObject::GetBuiltIn() { return control_->builtIn && control_->onAction.empty(); }

void ControlObject::PutCaption(const std::wstring& caption) {
    if (caption.size() > longestCaption) Refuse(E_INVALIDARG);
    control_->caption = caption;
    AnnounceChange();
}

std::wstring ControlObject::GetTooltip() {
    return control_->tooltip.empty() ? Readable(control_->caption) : control_->tooltip;
}

BarPointer ControlObject::TargetBar(const Call& call) const {
    if (!call.Given(0)) return control_->parent.lock();
    const CommandBarObject* bar = Ours<CommandBarObject>(TheGate(), call.Dispatch(0));
    if (!bar || &bar->TheWindow() != window_.get() || bar->TheBar()->gone) Refuse(E_INVALIDARG);
    return bar->TheBar();
}

Result ControlObject::CallCopy(Call& call) {
    const BarPointer target = TargetBar(call);
    const std::size_t position = Before(call, 1, target->controls.size());
    const ControlPointer copy = CopyControl(*control_, [this] { return TheHost().NextInstance(); });
    Insert(target, copy, position);
    AnnounceChange();
    return ObjectOf(*window_, copy);
}

Result ControlObject::CallMove(Call& call) {
    const BarPointer target = TargetBar(call);
    const std::size_t position = Before(call, 1, target->controls.size());
    const BarPointer from = control_->parent.lock();
    const std::size_t old = static_cast<std::size_t>(from->IndexOf(*control_));
    Remove(from, control_);
    Insert(target, control_, target == from && position > old ? position - 1 : position);
    AnnounceChange();
    return this;
}

void ControlObject::CallDelete(Call& call) {
    const BarPointer bar = control_->parent.lock();
    if (!bar) Refuse(E_FAIL);
    if (call.FlagOr(0, false) && !control_->temporary)
        bar->asleep.push_back(CopyControl(*control_, [this] { return TheHost().NextInstance(); }));
    Remove(bar, control_);
    MarkGone(*control_);
    AnnounceChange();
}

void ControlObject::CallExecute() { TheHost().Click(*window_, control_); }

OfficeInt ControlObject::GetIndex() {
    const BarPointer bar = control_->parent.lock();
    return {bar ? bar->IndexOf(*control_) : 0};
}

Result ControlObject::GetParent() {
    const BarPointer bar = control_->parent.lock();
    if (!bar) Refuse(E_FAIL);
    return Make<CommandBarObject>(*window_, bar);
}

bool ControlObject::GetBuiltInFace() { return !control_->face && !control_->picture; }

void ControlObject::PutBuiltInFace(bool value) {
    if (!value) return;
    control_->face = {};
    control_->picture = control_->mask = {};
    AnnounceChange();
}

void ControlObject::PutFaceId(int value) {
    if (value < 0) Refuse(E_INVALIDARG);
    if (value != 0) PutBuiltInFace(true);
    control_->faceId = value;
    AnnounceChange();
}

void ControlObject::PutStyle(int value) {
    const bool known = (value >= 0 && value <= 3) || value == 7 || value == 11 || value == 14 || value == 15;
    if (!known) Refuse(E_INVALIDARG);
    control_->style = value;
    AnnounceChange();
}

void ControlObject::PutState(int value) {
    if (value < -1 || value > 2 || value == 1) Refuse(E_INVALIDARG);
    control_->state = value;
    AnnounceChange();
}

void ControlObject::CallCopyFace() {
    const HRESULT answer = FaceToClipboard(control_->face);
    if (FAILED(answer)) Refuse(answer);
}

void ControlObject::CallPasteFace() {
    const HRESULT answer = FaceFromClipboard(control_->face);
    if (FAILED(answer)) Refuse(answer);
    control_->faceId = 0;
    control_->picture = control_->mask = {};
    AnnounceChange();
}

void ControlObject::GetPicture(Call& call) { call.ReturnOutside(control_->picture.get()); }
void ControlObject::GetMask(Call& call) { call.ReturnOutside(control_->mask.get()); }

void ControlObject::PutPicture(IDispatch* picture) {
    if (FAILED(CheckPicture(picture))) Refuse(E_INVALIDARG);
    control_->picture = Theirs<IDispatch>(picture);
    control_->face = {};
    AnnounceChange();
}

void ControlObject::PutMask(IDispatch* mask) {
    if (FAILED(CheckPicture(mask))) Refuse(E_INVALIDARG);
    control_->mask = Theirs<IDispatch>(mask);
    AnnounceChange();
}

Result ControlObject::GetCommandBar() { return Make<CommandBarObject>(*window_, control_->menu); }
Result ControlObject::GetControls() { return Make<ControlsObject>(*window_, control_->menu); }

}  // namespace standin
