#include "outlook/program/LogWindow.h"

#include <algorithm>

#include "outlook/program/Drawing.h"
#include "outlook/program/HostFrame.h"

namespace program {

LogWindow::LogWindow(const RECT& place) {
    Create("Calls between Outlook and its add-ins", WS_OVERLAPPEDWINDOW, WS_EX_TOOLWINDOW, nullptr, place);
    list_ = MakeChild(Handle(), "LISTBOX", "",
                      LBS_NOSEL | LBS_NOINTEGRALHEIGHT | LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | WS_VSCROLL | WS_HSCROLL,
                      0, 1);
    SendMessageA(list_, WM_SETFONT, reinterpret_cast<WPARAM>(PlainFont()), FALSE);
    SendMessageA(list_, LB_SETITEMHEIGHT, 0, 14);
    SendMessageA(list_, LB_SETHORIZONTALEXTENT, 1200, 0);
    const RECT client = Client();
    MoveWindow(list_, 0, 0, client.right, client.bottom, TRUE);
}

void LogWindow::Show(const std::vector<std::string>& lines) {
    std::size_t same = 0;
    while (same < lines.size() && same < shown_.size() && lines[same] == shown_[same]) ++same;
    if (same == lines.size() && same == shown_.size()) return;
    SendMessageA(list_, WM_SETREDRAW, FALSE, 0);
    for (std::size_t i = shown_.size(); i > same; --i) SendMessageA(list_, LB_DELETESTRING, i - 1, 0);
    for (std::size_t i = same; i < lines.size(); ++i)
        SendMessageA(list_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(lines[i].c_str()));
    SendMessageA(list_, LB_SETTOPINDEX, lines.empty() ? 0 : lines.size() - 1, 0);
    SendMessageA(list_, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(list_, nullptr, TRUE);
    shown_ = lines;
}

LRESULT LogWindow::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_SIZE) {
        const RECT client = Client();
        MoveWindow(list_, 0, 0, client.right, client.bottom, TRUE);
        return 0;
    }
    if (message == WM_CLOSE) {
        ShowWindow(Handle(), SW_HIDE);
        return 0;
    }
    if (message == WM_DRAWITEM) {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(second);
        Fill(item.hDC, item.rcItem, GetSysColor(COLOR_WINDOW));
        if (item.itemID >= shown_.size()) return TRUE;
        const std::string& line = shown_[item.itemID];
        const std::size_t indent = line.find_first_not_of(' ');
        const char kind = indent == std::string::npos ? ' ' : line[indent];
        const COLORREF ink = kind == '#'   ? RGB(0, 110, 0)
                             : kind == '!' ? RGB(0, 0, 170)
                             : kind == '?' || line.find("-> fails") != std::string::npos
                                 ? RGB(180, 0, 0)
                                 : GetSysColor(COLOR_WINDOWTEXT);
        RECT place = item.rcItem;
        place.left += 4 + static_cast<int>(std::min<std::size_t>(indent, 20)) * 8;
        Write(item.hDC, line.substr(std::min(indent, line.size())), place, ink, DT_LEFT | DT_NOPREFIX);
        return TRUE;
    }
    return Pane::OnMessage(message, first, second);
}

}  // namespace program
