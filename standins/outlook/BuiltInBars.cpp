#include "outlook/BuiltInBars.h"

#include <span>

#include "outlook/Words.h"

namespace standin {

namespace {

struct Entry {
    int id;
    const wchar_t* caption;
    bool beginGroup = false;
    int style = StyleAutomatic;
    int type = TypeButton;
    bool enabled = true;
};

struct Menu {
    int id;
    const wchar_t* caption;
    std::span<const Entry> entries;
};

// --- Explorers ---

constexpr Entry newEntries[] = {{IdNewMail, L"&Mail Message"},
                                {IdNewAppointment, L"&Appointment", true},
                                {IdNewContact, L"&Contact"},
                                {IdNewTask, L"&Task"},
                                {IdNewNote, L"&Note"}};
constexpr Entry explorerFile[] = {{IdNewMail, L"New &Mail Message"}, {IdNewAppointment, L"New &Appointment"},
                                  {IdNewContact, L"New &Contact"},   {IdNewTask, L"New &Task"},
                                  {IdOpen, L"&Open", true},          {IdPrint, L"&Print...", true},
                                  {IdExit, L"E&xit", true}};
constexpr Entry explorerEdit[] = {{IdCut, L"Cu&t", false, StyleAutomatic, TypeButton, false},
                                  {IdCopy, L"&Copy", false, StyleAutomatic, TypeButton, false},
                                  {IdPaste, L"&Paste", false, StyleAutomatic, TypeButton, false},
                                  {IdDelete, L"&Delete", true}};
constexpr Entry explorerView[] = {{IdNewWindow, L"Open in &New Window"}};
constexpr Entry favorites[] = {{31129, L"&Add to Favorites..."}};
constexpr Entry go[] = {{5600, L"&Mail"}, {5601, L"&Calendar"}, {5602, L"C&ontacts"}, {5603, L"&Tasks"}};
constexpr Entry explorerTools[] = {{IdSendReceive, L"S&end/Receive"},
                                   {IdFind, L"F&ind", true},
                                   {IdAddressBook, L"Address &Book..."},
                                   {IdAddIns, L"COM &Add-Ins...", true},
                                   {IdOptions, L"&Options..."}};
constexpr Entry explorerActions[] = {{IdReply, L"&Reply"}, {IdReplyAll, L"Reply to A&ll"}, {IdForward, L"For&ward"}};
constexpr Entry help[] = {{IdHelp, L"Microsoft Outlook &Help"}, {IdAbout, L"&About Microsoft Outlook", true}};

constexpr Menu explorerMenus[] = {{IdFile, L"&File", explorerFile},    {IdEdit, L"&Edit", explorerEdit},
                                  {IdView, L"&View", explorerView},    {IdFavorites, L"F&avorites", favorites},
                                  {IdTools, L"&Tools", explorerTools}, {IdActions, L"&Actions", explorerActions},
                                  {IdHelpMenu, L"&Help", help}};
constexpr Menu explorerMenusWithGo[] = {{IdFile, L"&File", explorerFile},    {IdEdit, L"&Edit", explorerEdit},
                                        {IdView, L"&View", explorerView},    {IdGo, L"&Go", go},
                                        {IdTools, L"&Tools", explorerTools}, {IdActions, L"&Actions", explorerActions},
                                        {IdHelpMenu, L"&Help", help}};

constexpr Entry explorerStandard[] = {{IdNewMail, L"&New", false, StyleIconAndCaption, TypeSplitButtonPopup},
                                      {IdPrint, L"&Print...", true},
                                      {IdMoveToFolder, L"&Move to Folder..."},
                                      {IdDelete, L"&Delete"},
                                      {IdReply, L"&Reply", true, StyleIconAndCaption},
                                      {IdReplyAll, L"Reply to A&ll", false, StyleIconAndCaption},
                                      {IdForward, L"For&ward", false, StyleIconAndCaption},
                                      {IdSendReceive, L"S&end/Receive", true, StyleIconAndCaption},
                                      {IdFind, L"F&ind", true, StyleIconAndCaption},
                                      {IdOrganize, L"Organi&ze", false, StyleIconAndCaption},
                                      {IdAddressBook, L"Address &Book...", true},
                                      {IdHelp, L"Microsoft Outlook &Help", true}};
constexpr Entry explorerAdvanced[] = {
    {IdNewWindow, L"Open in New &Window"}, {1017, L"&Back", true}, {1018, L"&Forward"}, {1019, L"&Up One Level"}};

// --- Inspectors ---

constexpr Entry inspectorFile[] = {{IdSave, L"&Save"},
                                   {IdSaveAndClose, L"Save and C&lose"},
                                   {IdDelete, L"&Delete"},
                                   {IdPrint, L"&Print...", true},
                                   {IdClose, L"&Close", true}};
constexpr Entry inspectorEdit[] = {{IdCut, L"Cu&t"}, {IdCopy, L"&Copy"}, {IdPaste, L"&Paste"}};
constexpr Entry inspectorView[] = {{1017, L"Pre&vious"}, {1018, L"Ne&xt"}};
constexpr Entry inspectorInsert[] = {{IdInsertFile, L"Fi&le..."}};
constexpr Entry inspectorFormat[] = {{253, L"&Font..."}};
constexpr Entry inspectorTools[] = {{2566, L"&Spelling..."}, {IdAddressBook, L"Address &Book...", true}};
constexpr Entry inspectorActions[] = {{IdForward, L"For&ward"}};
constexpr Menu inspectorMenus[] = {{IdFile, L"&File", inspectorFile},          {IdEdit, L"&Edit", inspectorEdit},
                                   {IdView, L"&View", inspectorView},          {IdInsert, L"&Insert", inspectorInsert},
                                   {IdFormat, L"F&ormat", inspectorFormat},    {IdTools, L"&Tools", inspectorTools},
                                   {IdActions, L"&Actions", inspectorActions}, {IdHelpMenu, L"&Help", help}};

constexpr Entry itemStandard[] = {{IdSaveAndClose, L"&Save and Close", false, StyleIconAndCaption},
                                  {IdPrint, L"&Print...", true},
                                  {IdInsertFile, L"&Insert File..."},
                                  {IdFlag, L"Follow &Up", true},
                                  {IdDelete, L"&Delete", true},
                                  {1017, L"Pre&vious Item", true},
                                  {1018, L"Ne&xt Item"},
                                  {IdHelp, L"Microsoft Outlook &Help", true}};
constexpr Entry mailStandard[] = {{IdSend, L"&Send", false, StyleIconAndCaption},
                                  {IdSave, L"Sa&ve", true},
                                  {IdPrint, L"&Print..."},
                                  {IdCut, L"Cu&t", true},
                                  {IdCopy, L"&Copy"},
                                  {IdPaste, L"&Paste"},
                                  {IdInsertFile, L"&Insert File...", true},
                                  {IdAddressBook, L"Address &Book..."},
                                  {IdHelp, L"Microsoft Outlook &Help", true}};
constexpr Entry plainStandard[] = {{IdSaveAndClose, L"&Save and Close", false, StyleIconAndCaption},
                                   {IdPrint, L"&Print...", true},
                                   {IdDelete, L"&Delete"},
                                   {1017, L"Pre&vious Item", true},
                                   {1018, L"Ne&xt Item"},
                                   {IdHelp, L"Microsoft Outlook &Help", true}};
constexpr Entry formatting[] = {{113, L"&Bold"}, {114, L"&Italic"}, {115, L"&Underline"}};

ControlPointer BuiltIn(const Entry& entry, const std::function<int()>& next) {
    ControlPointer control = MakeControl(next(), entry.id, entry.type);
    control->builtIn = true;
    control->caption = entry.caption;
    control->faceId = entry.id;
    control->style = entry.style;
    control->beginGroup = entry.beginGroup;
    control->enabled = entry.enabled;
    if (!control->menu) return control;
    control->menu->builtIn = true;
    control->menu->name = Readable(control->caption);
    control->menu->nameLocal = control->menu->name;
    for (const Entry& inner : newEntries) Insert(control->menu, BuiltIn(inner, next), 0);
    return control;
}

BarPointer NewBar(const wchar_t* name, int type, bool visible, const std::function<int()>& next) {
    auto bar = std::make_shared<Bar>();
    bar->instance = next();
    bar->name = bar->nameLocal = name;
    bar->type = type;
    bar->position = type == BarMenu ? MenuBarPosition : AtTop;
    bar->visible = visible;
    return bar;
}

BarPointer MenuBar(std::span<const Menu> menus, const std::function<int()>& next) {
    BarPointer bar = NewBar(L"Menu Bar", BarMenu, true, next);
    for (const Menu& menu : menus) {
        ControlPointer popup = MakeControl(next(), menu.id, TypePopup);
        popup->builtIn = popup->menu->builtIn = true;
        popup->caption = menu.caption;
        popup->menu->name = popup->menu->nameLocal = Readable(menu.caption);
        for (const Entry& entry : menu.entries) Insert(popup->menu, BuiltIn(entry, next), 0);
        Insert(bar, popup, 0);
    }
    return bar;
}

BarPointer Toolbar(const wchar_t* name, bool visible, std::span<const Entry> entries,
                   const std::function<int()>& next) {
    BarPointer bar = NewBar(name, BarNormal, visible, next);
    for (const Entry& entry : entries) Insert(bar, BuiltIn(entry, next), 0);
    return bar;
}

std::span<const Entry> StandardOf(ItemClass itemClass) {
    switch (itemClass) {
        case ItemClass::Appointment:
        case ItemClass::Contact:
        case ItemClass::Task:
        case ItemClass::DistList:
        case ItemClass::Journal: return itemStandard;
        case ItemClass::Mail:
        case ItemClass::Post: return mailStandard;
        default: return plainStandard;
    }
}

}  // namespace

std::vector<BarPointer> ExplorerBars(int version, const std::function<int()>& nextInstance) {
    // That "Go" came with the navigation pane of 2003 is assumed.
    const std::span<const Menu> menus = version >= 11 ? std::span<const Menu>(explorerMenusWithGo) : explorerMenus;
    return {MenuBar(menus, nextInstance), Toolbar(L"Standard", true, explorerStandard, nextInstance),
            Toolbar(L"Advanced", false, explorerAdvanced, nextInstance)};
}

std::vector<BarPointer> InspectorBars(ItemClass itemClass, const std::function<int()>& nextInstance) {
    if (itemClass == ItemClass::Note) return {};
    return {MenuBar(inspectorMenus, nextInstance), Toolbar(L"Standard", true, StandardOf(itemClass), nextInstance),
            Toolbar(L"Formatting", false, formatting, nextInstance)};
}

}  // namespace standin
