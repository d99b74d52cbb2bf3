#include "outlook/program/ExplorerFrame.h"

#include <commctrl.h>

#include <algorithm>
#include <span>

#include "outlook/BuiltInBars.h"
#include "outlook/program/Child.h"

namespace program {

namespace {

using standin::FolderKind;

constexpr int foldersWidth = 170, bannerHeight = 26, statusHeight = 20, gap = 3;

struct FolderRow {
    FolderKind kind;
    const char* name;
    int icon;
};
constexpr FolderRow folderRows[] = {{FolderKind::Calendar, "Calendar", standin::IdNewAppointment},
                                    {FolderKind::Contacts, "Contacts", standin::IdNewContact},
                                    {FolderKind::DeletedItems, "Deleted Items", standin::IdDelete},
                                    {FolderKind::Drafts, "Drafts", standin::IdSave},
                                    {FolderKind::Inbox, "Inbox", standin::IdNewMail},
                                    {FolderKind::Journal, "Journal", standin::IdCopy},
                                    {FolderKind::Notes, "Notes", standin::IdNewNote},
                                    {FolderKind::Outbox, "Outbox", standin::IdSend},
                                    {FolderKind::SentMail, "Sent Items", standin::IdForward},
                                    {FolderKind::Tasks, "Tasks", standin::IdNewTask}};

struct Column {
    const char* title;
    const char* field;
    int width;
};
constexpr Column mailColumns[] = {{"From", "SenderName", 150}, {"Subject", "Subject", 300}, {"To", "To", 150}};
constexpr Column contactColumns[] = {{"Full Name", "FullName", 150},
                                     {"Company", "CompanyName", 130},
                                     {"File As", "FileAs", 130},
                                     {"Business Phone", "BusinessTelephoneNumber", 110},
                                     {"Mobile Phone", "MobileTelephoneNumber", 110}};
constexpr Column calendarColumns[] = {
    {"Subject", "Subject", 220}, {"Location", "Location", 140}, {"Start", "Start", 130}, {"End", "End", 130}};
constexpr Column taskColumns[] = {
    {"Subject", "Subject", 300}, {"Due Date", "DueDate", 120}, {"% Complete", "PercentComplete", 80}};

std::span<const Column> ColumnsOf(FolderKind folder) {
    switch (folder) {
        case FolderKind::Contacts: return contactColumns;
        case FolderKind::Calendar: return calendarColumns;
        case FolderKind::Tasks: return taskColumns;
        default: return mailColumns;
    }
}

const FolderRow* RowFor(FolderKind kind) {
    for (const FolderRow& row : folderRows)
        if (row.kind == kind) return &row;
    return nullptr;
}

// One picture per id, in the order asked for, on the colour of lists.
HIMAGELIST Pictures(std::span<const int> ids) {
    const HIMAGELIST list = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, static_cast<int>(ids.size()), 0);
    const HDC screen = GetDC(nullptr), memory = CreateCompatibleDC(screen);
    for (const int id : ids) {
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, 16, 16);
        const HGDIOBJ before = SelectObject(memory, bitmap);
        Fill(memory, {0, 0, 16, 16}, RGB(255, 0, 255));
        DrawBuiltInIcon(memory, 0, 0, id);
        SelectObject(memory, before);
        ImageList_AddMasked(list, bitmap, RGB(255, 0, 255));
        DeleteObject(bitmap);
    }
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return list;
}

}  // namespace

ExplorerFrame::ExplorerFrame(Desk& desk, standin::Window window, const RECT& place)
    : HostFrame(desk, window, Top::Bars, place) {
    folders_ = MakeChild(Handle(), WC_TREEVIEWA, "",
                         TVS_HASLINES | TVS_LINESATROOT | TVS_HASBUTTONS | TVS_SHOWSELALWAYS | WS_TABSTOP,
                         WS_EX_CLIENTEDGE, 1);
    items_ = MakeChild(Handle(), WC_LISTVIEWA, "", LVS_REPORT | LVS_SHOWSELALWAYS | WS_TABSTOP, WS_EX_CLIENTEDGE, 2);
    status_ = MakeChild(Handle(), "STATIC", "", SS_LEFTNOWORDWRAP | SS_SUNKEN, 0, 3);
    ListView_SetExtendedListViewStyle(items_, LVS_EX_FULLROWSELECT);
    SendMessageA(Handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(WindowIcon(standin::IdNewMail)));
    MakeFolders();
    ShowBars();
    ShowContents();
    Arrange();
}

void ExplorerFrame::MakeFolders() {
    std::vector<int> ids = {standin::IdOrganize};
    for (const FolderRow& row : folderRows) ids.push_back(row.icon);
    TreeView_SetImageList(folders_, Pictures(ids), TVSIL_NORMAL);
    const auto add = [this](HTREEITEM parent, const char* name, int picture, FolderKind kind) {
        TVINSERTSTRUCTA insert{};
        insert.hParent = parent;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
        insert.item.pszText = const_cast<char*>(name);
        insert.item.iImage = insert.item.iSelectedImage = picture;
        insert.item.lParam = static_cast<LPARAM>(kind);
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(folders_, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
    };
    filling_ = true;
    const HTREEITEM root = add(TVI_ROOT, "Personal Folders", 0, FolderKind::OutlookToday);
    int picture = 0;
    for (const FolderRow& row : folderRows) add(root, row.name, ++picture, row.kind);
    TreeView_Expand(folders_, root, TVE_EXPAND);
    filling_ = false;
}

void ExplorerFrame::ShowContents() {
    const standin::WindowView view = desk_.Host().View(TheWindow());
    SetTitle(view.caption);
    if (!columnsMade_ || view.folder != shown_) ShowFolder(view.folder);
    ShowItems();
}

void ExplorerFrame::ShowFolder(FolderKind folder) {
    shown_ = folder;
    columnsMade_ = true;
    const FolderRow* row = RowFor(folder);
    bannerText_ = row ? row->name : "Personal Folders";
    while (ListView_DeleteColumn(items_, 0)) {
    }
    int number = 0;
    for (const Column& column : ColumnsOf(folder)) {
        LVCOLUMNA made{};
        made.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        made.pszText = const_cast<char*>(column.title);
        made.cx = column.width;
        made.iSubItem = number;
        SendMessageA(items_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(number++), reinterpret_cast<LPARAM>(&made));
    }
    const int icons[] = {row ? row->icon : standin::IdNewMail};
    ImageList_Destroy(ListView_SetImageList(items_, Pictures(icons), LVSIL_SMALL));
    filling_ = true;
    TreeView_SelectItem(folders_, RowOf(folder));
    filling_ = false;
    InvalidateRect(Handle(), &banner_, FALSE);
}

HTREEITEM ExplorerFrame::RowOf(FolderKind folder) const {
    const HTREEITEM root = TreeView_GetRoot(folders_);
    for (HTREEITEM item = TreeView_GetChild(folders_, root); item; item = TreeView_GetNextSibling(folders_, item)) {
        TVITEMA found{};
        found.mask = TVIF_PARAM;
        found.hItem = item;
        SendMessageA(folders_, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&found));
        if (found.lParam == static_cast<LPARAM>(folder)) return item;
    }
    return root;
}

void ExplorerFrame::ChooseFolder(FolderKind folder) { TreeView_SelectItem(folders_, RowOf(folder)); }

void ExplorerFrame::SelectFirst(int count) {
    SetFocus(items_);
    const int rows = ListView_GetItemCount(items_);
    for (int row = 0; row < rows; ++row)
        ListView_SetItemState(items_, row, row < count ? LVIS_SELECTED : 0, LVIS_SELECTED);
}

HostFrame::Spot ExplorerFrame::SpotOfSelection() const {
    const int row = ListView_GetNextItem(items_, -1, LVNI_SELECTED);
    RECT place{};
    if (row < 0 || !ListView_GetItemRect(items_, row, &place, LVIR_LABEL)) return {};
    return {items_, {(place.left + place.right) / 2, (place.top + place.bottom) / 2}};
}

void ExplorerFrame::ShowItems() {
    const standin::Outlook& host = desk_.Host();
    const std::vector<standin::Item> selection = host.View(TheWindow()).selection;
    filling_ = true;
    rows_ = host.ItemsIn(shown_);
    SendMessageA(items_, WM_SETREDRAW, FALSE, 0);
    ListView_DeleteAllItems(items_);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        LVITEMA item{};
        item.mask = LVIF_TEXT | LVIF_IMAGE;
        item.iItem = static_cast<int>(row);
        std::string text;
        for (const Column& column : ColumnsOf(shown_)) {
            text = Shown(host.Field(rows_[row], column.field));
            item.pszText = text.data();
            SendMessageA(items_, item.iSubItem == 0 ? LVM_INSERTITEMA : LVM_SETITEMTEXTA, row,
                         reinterpret_cast<LPARAM>(&item));
            ++item.iSubItem;
        }
        const bool selected = std::find(selection.begin(), selection.end(), rows_[row]) != selection.end();
        if (selected) ListView_SetItemState(items_, item.iItem, LVIS_SELECTED, LVIS_SELECTED);
    }
    SendMessageA(items_, WM_SETREDRAW, TRUE, 0);
    filling_ = false;
    ShowHint("");
}

void ExplorerFrame::ShowHint(const std::string& hint) {
    const std::string text =
        hint.empty() ? std::to_string(rows_.size()) + (rows_.size() == 1 ? " Item" : " Items") : hint;
    SetWindowTextA(status_, (" " + text).c_str());
}

void ExplorerFrame::TakeSelection() {
    std::vector<standin::Item> selection;
    for (std::size_t row = 0; row < rows_.size(); ++row)
        if (ListView_GetItemState(items_, static_cast<int>(row), LVIS_SELECTED) != 0) selection.push_back(rows_[row]);
    if (selection != desk_.Host().View(TheWindow()).selection) desk_.Host().Select(TheWindow(), selection);
}

LRESULT ExplorerFrame::OnNotify(const NMHDR& notice) {
    if (filling_) return 0;
    if (notice.hwndFrom == folders_ && notice.code == static_cast<UINT>(TVN_SELCHANGEDA)) {
        const auto kind = static_cast<FolderKind>(reinterpret_cast<const NMTREEVIEWA&>(notice).itemNew.lParam);
        desk_.Host().SwitchFolder(TheWindow(), kind);
    }
    if (notice.hwndFrom != items_) return 0;
    // A list tells of each row by itself: the selection is read once they are all told.
    if (notice.code == static_cast<UINT>(LVN_ITEMCHANGED)) PostMessageA(Handle(), Desk::readSelection, 0, 0);
    if (notice.code == static_cast<UINT>(NM_RCLICK)) {
        TakeSelection();
        POINT corner = reinterpret_cast<const NMITEMACTIVATE&>(notice).ptAction;
        ClientToScreen(items_, &corner);
        OpenContextMenu(corner);
    }
    if (notice.code == static_cast<UINT>(NM_DBLCLK)) {
        const int row = reinterpret_cast<const NMITEMACTIVATE&>(notice).iItem;
        if (row >= 0 && row < static_cast<int>(rows_.size()))
            desk_.Host().OpenInspector(rows_[static_cast<std::size_t>(row)]);
    }
    return 0;
}

bool ExplorerFrame::OnEnter(HWND control) {
    if (control != items_) return false;
    for (const standin::Item item : desk_.Host().View(TheWindow()).selection) desk_.Host().OpenInspector(item);
    return true;
}

void ExplorerFrame::LayOut(RECT inside) {
    const int bottom = inside.bottom - statusHeight - gap;
    MoveWindow(status_, 0, inside.bottom - statusHeight, inside.right, statusHeight, TRUE);
    banner_ = {foldersWidth + gap, inside.top + gap, inside.right, inside.top + gap + bannerHeight};
    MoveWindow(folders_, 0, inside.top + gap, foldersWidth, bottom - inside.top - gap, TRUE);
    MoveWindow(items_, foldersWidth + gap, banner_.bottom + 1, inside.right - foldersWidth - gap,
               bottom - banner_.bottom - 1, TRUE);
    InvalidateRect(Handle(), &banner_, FALSE);
}

void ExplorerFrame::Paint() {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(Handle(), &paint);
    const Look look = Look::Of(desk_.Host().Version());
    FillDown(dc, banner_, look.banner, look.bannerLow);
    SelectObject(dc, BannerFont());
    Write(dc, bannerText_, {banner_.left + 8, banner_.top, banner_.right - 30, banner_.bottom}, look.bannerInk,
          DT_LEFT);
    const FolderRow* row = RowFor(shown_);
    if (row) DrawBuiltInIcon(dc, banner_.right - 24, banner_.top + 5, row->icon);
    EndPaint(Handle(), &paint);
}

LRESULT ExplorerFrame::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    if (message == Desk::readSelection) {
        if (!filling_) TakeSelection();
        return 0;
    }
    return HostFrame::OnMessage(message, first, second);
}

}  // namespace program
