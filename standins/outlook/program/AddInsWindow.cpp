#include "outlook/program/AddInsWindow.h"

#include <commctrl.h>

#include "outlook/program/Child.h"
#include "outlook/program/Drawing.h"

namespace program {

AddInsWindow::AddInsWindow(Desk& desk, const RECT& place) : desk_(desk) {
    Create("COM Add-Ins", WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME, nullptr, place);
    const RECT client = Client();
    label_ = MakeChild(Handle(), "STATIC", "Add-Ins available:", SS_LEFT, 0, 0);
    MoveWindow(label_, 10, 10, 200, 16, TRUE);
    list_ = MakeChild(Handle(), WC_LISTVIEWA, "", LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL, WS_EX_CLIENTEDGE, 1);
    MoveWindow(list_, 10, 28, client.right - 105, client.bottom - 80, TRUE);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_CHECKBOXES);
    LVCOLUMNA column{};
    column.mask = LVCF_WIDTH;
    column.cx = client.right - 130;
    SendMessageA(list_, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    location_ = MakeChild(Handle(), "STATIC", "", SS_LEFT, 0, 0);
    MoveWindow(location_, 10, client.bottom - 44, client.right - 20, 36, TRUE);
    close_ = MakeChild(Handle(), "BUTTON", "Close", BS_DEFPUSHBUTTON, 0, IDOK);
    MoveWindow(close_, client.right - 85, 28, 75, 23, TRUE);
    ShowContents();
    ShowWindow(Handle(), SW_SHOW);
}

void AddInsWindow::ShowContents() {
    filling_ = true;
    ListView_DeleteAllItems(list_);
    int row = 0;
    std::string words = "Description:";
    for (const standin::AddInView& addIn : desk_.Host().AddIns()) {
        std::string name = addIn.friendlyName.empty() ? addIn.progId : addIn.friendlyName;
        LVITEMA item{};
        item.mask = LVIF_TEXT;
        item.iItem = row;
        item.pszText = name.data();
        SendMessageA(list_, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
        ListView_SetCheckState(list_, row, addIn.connected);
        if (row++ == 0)
            words += "  " + addIn.description + "\r\nLoad behaviour:  " + std::to_string(addIn.loadBehavior);
    }
    SetWindowTextA(location_, words.c_str());
    filling_ = false;
}

void AddInsWindow::OnTick(int row) {
    const std::vector<standin::AddInView> addIns = desk_.Host().AddIns();
    if (row < 0 || row >= static_cast<int>(addIns.size())) return;
    const standin::AddInView& addIn = addIns[static_cast<std::size_t>(row)];
    const bool wanted = ListView_GetCheckState(list_, row) != 0;
    if (wanted == addIn.connected) return;
    if (wanted)
        desk_.Host().LoadAddIn(addIn.progId);
    else
        desk_.Host().UnloadAddIn(addIn.progId);
}

LRESULT AddInsWindow::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_COMMAND && LOWORD(first) == IDOK) message = WM_CLOSE;
    switch (message) {
        case WM_CLOSE: ShowWindow(Handle(), SW_HIDE); return 0;
        case WM_ERASEBKGND: Fill(reinterpret_cast<HDC>(first), Client(), GetSysColor(COLOR_BTNFACE)); return 1;
        case WM_NOTIFY: {
            const auto& notice = *reinterpret_cast<const NMLISTVIEW*>(second);
            const bool ticked =
                notice.hdr.code == static_cast<UINT>(LVN_ITEMCHANGED) && (notice.uChanged & LVIF_STATE) != 0;
            if (ticked && !filling_) PostMessageA(Handle(), Desk::readTick, static_cast<WPARAM>(notice.iItem), 0);
            return 0;
        }
        case Desk::readTick: OnTick(static_cast<int>(first)); return 0;
        default: return Pane::OnMessage(message, first, second);
    }
}

}  // namespace program
