#include "outlook/program/InspectorFrame.h"

#include <algorithm>
#include <span>
#include <stdexcept>

#include "outlook/program/Child.h"

namespace program {

namespace {

using standin::ItemClass;

constexpr int outlook2007 = 12;  // the first with a ribbon in these windows (host quirk 16)
constexpr int outlook2010 = 14;  // the first that lets add-ins write into every ribbon
constexpr int bodyId = 100, firstEditId = 101, margin = 10, labelWidth = 78, rowHeight = 20, rowGap = 6;

struct FieldRow {
    const char* field;
    const char* label;
    bool half;
};  // half: beside the next one
constexpr FieldRow contactRows[] = {
    {"FullName", "Full Name:", false},      {"JobTitle", "Job title:", true},
    {"CompanyName", "Company:", true},      {"FileAs", "File as:", true},
    {"Email1Address", "E-mail:", true},     {"BusinessTelephoneNumber", "Business:", true},
    {"HomeTelephoneNumber", "Home:", true}, {"MobileTelephoneNumber", "Mobile:", true},
    {"Categories", "Categories:", true}};
constexpr FieldRow appointmentRows[] = {{"Subject", "Subject:", false},
                                        {"Location", "Location:", false},
                                        {"Start", "Start time:", true},
                                        {"End", "End time:", true}};
constexpr FieldRow taskRows[] = {{"Subject", "Subject:", false},
                                 {"DueDate", "Due date:", true},
                                 {"PercentComplete", "% Complete:", true},
                                 {"StartDate", "Start date:", true},
                                 {"Categories", "Categories:", true}};
constexpr FieldRow mailRows[] = {{"To", "To...", false}, {"CC", "Cc...", false}, {"Subject", "Subject:", false}};
constexpr FieldRow listRows[] = {{"DLName", "Name:", false}};
constexpr FieldRow plainRows[] = {{"Subject", "Subject:", false}};

std::span<const FieldRow> RowsOf(ItemClass itemClass) {
    switch (itemClass) {
        case ItemClass::Contact: return contactRows;
        case ItemClass::Appointment: return appointmentRows;
        case ItemClass::Task: return taskRows;
        case ItemClass::Mail: return mailRows;
        case ItemClass::DistList: return listRows;
        case ItemClass::Note: return {};
        default: return plainRows;
    }
}

std::string TextOf(HWND window) {
    std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
    text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

// A ribbon that was asked for takes the place of the bars by itself; else the bars' own controls are on one.
HostFrame::Top TopOf(const standin::Outlook& host) {
    if (host.Version() < outlook2007) return HostFrame::Top::Bars;
    const bool asked = host.Version() >= outlook2010 && !host.RibbonsAsked().empty();
    return asked ? HostFrame::Top::Bars : HostFrame::Top::Ribbon;
}

}  // namespace

InspectorFrame::InspectorFrame(Desk& desk, standin::Window window, const RECT& place)
    : HostFrame(desk, window, TopOf(desk.Host()), place), item_(desk.Host().View(window).item) {
    int id = firstEditId;
    for (const FieldRow& row : RowsOf(desk.Host().ClassOf(item_))) {
        const HWND label = MakeChild(Handle(), "STATIC", row.label, SS_LEFT, 0, 0);
        const HWND edit = MakeChild(Handle(), "EDIT", "", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, id++);
        entries_.push_back({row.field, label, edit, row.half});
    }
    body_ = MakeChild(Handle(), "EDIT", "", ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN | WS_VSCROLL | WS_TABSTOP,
                      WS_EX_CLIENTEDGE, bodyId);
    entries_.push_back({"Body", nullptr, body_, false});
    SendMessageA(Handle(), WM_SETICON, ICON_SMALL,
                 reinterpret_cast<LPARAM>(WindowIcon(IconOf(desk.Host().ClassOf(item_)))));
    ShowBars();
    ShowContents();
    Arrange();
}

void InspectorFrame::ShowContents() {
    const standin::Outlook& host = desk_.Host();
    showing_ = true;
    SetTitle(host.View(TheWindow()).caption);
    for (const Entry& entry : entries_) {
        const std::string value = Shown(host.Field(item_, entry.field));
        if (GetFocus() != entry.edit && TextOf(entry.edit) != value) SetWindowTextA(entry.edit, value.c_str());
    }
    showing_ = false;
}

void InspectorFrame::Commit(const Entry& entry) {
    const std::string text = TextOf(entry.edit);
    if (text == Shown(desk_.Host().Field(item_, entry.field))) return;
    try {
        desk_.Host().SetField(item_, entry.field, text);
    } catch (const std::out_of_range&) {
        // half a date, while it is being typed
    }
}

void InspectorFrame::CommitEdits() {
    if (desk_.Host().IsDeleted(item_)) return;
    for (const Entry& entry : entries_) Commit(entry);
}

bool InspectorFrame::Type(const std::string& field, const std::string& text) {
    const auto entry =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& each) { return each.field == field; });
    if (entry == entries_.end()) return false;
    SetFocus(entry->edit);
    SetWindowTextA(entry->edit, text.c_str());
    Commit(*entry);
    return true;
}

bool InspectorFrame::AskClose() {
    CommitEdits();
    if (desk_.Host().IsSaved(item_)) return true;
    const int answer =
        MessageBoxA(Handle(), "Do you want to save changes?", "Microsoft Outlook", MB_YESNOCANCEL | MB_ICONEXCLAMATION);
    if (answer == IDCANCEL) return false;
    desk_.Host().CloseWindow(TheWindow(), answer == IDYES ? standin::SaveMode::Save : standin::SaveMode::Discard);
    return false;
}

void InspectorFrame::OnCommand(int id, int code) {
    if (showing_ || code != EN_CHANGE) return;
    for (const Entry& entry : entries_)
        if (GetDlgCtrlID(entry.edit) == id) Commit(entry);
}

void InspectorFrame::LayOut(RECT inside) {
    int y = inside.top + margin;
    const int column = (inside.right - margin) / 2;
    bool second = false;
    for (const Entry& entry : entries_) {
        if (entry.edit == body_) break;
        const int left = entry.half && second ? column + margin / 2 : margin;
        const int right = entry.half && !second ? column - margin / 2 : inside.right - margin;
        MoveWindow(entry.label, left, y + 3, labelWidth - 4, rowHeight - 3, TRUE);
        MoveWindow(entry.edit, left + labelWidth, y, right - left - labelWidth, rowHeight, TRUE);
        second = entry.half && !second;
        if (!second) y += rowHeight + rowGap;
    }
    if (second) y += rowHeight + rowGap;
    MoveWindow(body_, margin, y + 2, inside.right - 2 * margin, inside.bottom - y - 2 - margin, TRUE);
}

}  // namespace program
