#include "outlook/program/LogWindow.h"

#include <algorithm>

#include "outlook/program/Child.h"
#include "outlook/program/Drawing.h"

namespace program {

namespace {

constexpr int headingHeight = 18, gap = 4;

std::string LineOf(const NotedStart& start) {
    constexpr int minimised = 2;
    return start.commandLine + (start.show == minimised ? "   minimised" : "") +
           (start.note.empty() ? std::string() : "   " + start.note);
}

}  // namespace

LogWindow::LogWindow(const RECT& place) {
    Create("What happens", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW, nullptr, place);
    constexpr DWORD plain = LBS_NOSEL | LBS_NOINTEGRALHEIGHT | LBS_HASSTRINGS | WS_VSCROLL | WS_HSCROLL;
    list_ = MakeChild(Handle(), "LISTBOX", "", plain | LBS_OWNERDRAWFIXED, WS_EX_CLIENTEDGE, 1);
    starts_ = MakeChild(Handle(), "LISTBOX", "", plain, WS_EX_CLIENTEDGE, 2);
    SendMessageA(list_, LB_SETITEMHEIGHT, 0, 14);
    SendMessageA(list_, LB_SETHORIZONTALEXTENT, 1200, 0);
    SendMessageA(starts_, LB_SETHORIZONTALEXTENT, 700, 0);
    LayOut();
}

void LogWindow::LayOut() {
    const RECT client = Client();
    const int middle = client.right * 3 / 5;
    MoveWindow(list_, 0, headingHeight, middle, client.bottom - headingHeight, TRUE);
    MoveWindow(starts_, middle + gap, headingHeight, client.right - middle - gap, client.bottom - headingHeight, TRUE);
    Redraw();
}

void LogWindow::ShowStarts(const std::vector<NotedStart>& starts) {
    SendMessageA(starts_, LB_RESETCONTENT, 0, 0);
    for (const NotedStart& start : starts)
        SendMessageA(starts_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(LineOf(start).c_str()));
    SendMessageA(starts_, LB_SETTOPINDEX, starts.empty() ? 0 : starts.size() - 1, 0);
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
        LayOut();
        return 0;
    }
    if (message == WM_PAINT) {
        const Canvas canvas(Handle());
        const RECT client = Client();
        const int middle = client.right * 3 / 5;
        Fill(canvas.Get(), client, GetSysColor(COLOR_BTNFACE));
        SelectObject(canvas.Get(), PlainFont());
        const COLORREF ink = GetSysColor(COLOR_BTNTEXT);
        Write(canvas.Get(), "Calls between Outlook and its add-ins", {gap, 0, middle, headingHeight}, ink, DT_LEFT);
        Write(canvas.Get(), "Programs that were started, as they noted it themselves",
              {middle + 2 * gap, 0, client.right, headingHeight}, ink, DT_LEFT);
        return 0;
    }
    if (message == WM_ERASEBKGND) return 1;
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
