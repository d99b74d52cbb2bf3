#include "outlook/program/Stage.h"

#include <functional>

#include "outlook/program/ExplorerFrame.h"
#include "outlook/program/InspectorFrame.h"

namespace program {

namespace {

constexpr DWORD longestPicture = 15000;

void AwaitPicture(const std::string& name, const std::function<void()>& pass) {
    const std::string done = name + ".done";
    const DWORD start = GetTickCount();
    while (GetFileAttributesA(done.c_str()) == INVALID_FILE_ATTRIBUTES && GetTickCount() - start < longestPicture)
        pass();
}

LPARAM PointOf(const HostFrame::Spot& spot) { return MAKELPARAM(spot.point.x, spot.point.y); }

}  // namespace

void Stage::Pump(DWORD milliseconds) const {
    const DWORD start = GetTickCount();
    for (;;) {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            program_.Dispatch(message);
        }
        const DWORD passed = GetTickCount() - start;
        if (passed >= milliseconds) return;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, milliseconds - passed, QS_ALLINPUT);
    }
}

void Stage::Say(const std::string& line) const {
    const std::string text = line + "\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

bool Stage::Check(const std::string& what, bool so) const {
    Say((so ? "   ok    " : "   WRONG ") + what);
    if (!so) ++wrong_;
    return so;
}

void Stage::Picture(const std::string& name) const {
    Pump(300);
    Say("@picture " + name);
    AwaitPicture(name, [this] { Pump(50); });
}

void Stage::PictureMeanwhile(const std::string& name) const {
    Sleep(300);
    Say("@picture " + name);
    AwaitPicture(name, [] { Sleep(50); });
}

void Stage::OpenMenu(standin::Window window, const std::string& caption) const {
    HostFrame* frame = program_.FrameOf(window);
    const standin::ControlView popup = Outlook().FindCaption(window, caption);
    if (frame && popup) frame->OpenMenu(popup);
    Pump(100);
}

void Stage::CloseMenu(standin::Window window) const {
    if (HostFrame* frame = program_.FrameOf(window)) frame->CloseMenu();
    Pump(100);
}

void Stage::Type(standin::Window inspector, const std::string& field, const std::string& text) const {
    if (auto* frame = dynamic_cast<InspectorFrame*>(program_.FrameOf(inspector))) frame->Type(field, text);
    Pump(50);
}

HWND Stage::FrameOf(standin::Window window) const {
    const HostFrame* frame = program_.FrameOf(window);
    return frame ? frame->Handle() : nullptr;
}

bool Stage::Press(standin::Window window, int instance) const {
    const HostFrame* frame = program_.FrameOf(window);
    return frame && PressAt(frame->SpotOf(instance));
}

bool Stage::OpenTab(standin::Window window, const std::string& tab) const {
    const HostFrame* frame = program_.FrameOf(window);
    return frame && PressAt(frame->SpotOfTab(tab));
}

bool Stage::PressAt(const HostFrame::Spot& spot) const {
    if (!spot.window) return false;
    PostMessageA(spot.window, WM_MOUSEMOVE, 0, PointOf(spot));
    PostMessageA(spot.window, WM_LBUTTONDOWN, MK_LBUTTON, PointOf(spot));
    PostMessageA(spot.window, WM_LBUTTONUP, 0, PointOf(spot));
    PostMessageA(spot.window, WM_MOUSELEAVE, 0, 0);
    Pump(50);
    return true;
}

bool Stage::Hover(standin::Window window, int instance) const {
    const HostFrame* frame = program_.FrameOf(window);
    return frame && HoverAt(frame->SpotOf(instance));
}

bool Stage::HoverAt(const HostFrame::Spot& spot) const {
    if (!spot.window) return false;
    PostMessageA(spot.window, WM_MOUSEMOVE, 0, PointOf(spot));
    Pump(50);
    return true;
}

bool Stage::PressRibbon(standin::Window window, const std::string& id) const {
    const HostFrame* frame = program_.FrameOf(window);
    return frame && PressAt(frame->SpotOf(id));
}

bool Stage::HoverRibbon(standin::Window window, const std::string& id) const {
    const HostFrame* frame = program_.FrameOf(window);
    return frame && HoverAt(frame->SpotOf(id));
}

bool Stage::RightClickSelection(standin::Window explorer) const {
    const auto* frame = dynamic_cast<ExplorerFrame*>(program_.FrameOf(explorer));
    const HostFrame::Spot spot = frame ? frame->SpotOfSelection() : HostFrame::Spot{};
    if (!spot.window) return false;
    PostMessageA(spot.window, WM_RBUTTONDOWN, MK_RBUTTON, PointOf(spot));
    PostMessageA(spot.window, WM_RBUTTONUP, 0, PointOf(spot));
    Pump(100);
    return true;
}

bool Stage::Choose(standin::Window window, const standin::ControlView& popup, int entry) const {
    return Press(window, popup.instance) && Press(window, entry);
}

void Stage::ChooseFolder(standin::Window explorer, standin::FolderKind folder) const {
    if (auto* frame = dynamic_cast<ExplorerFrame*>(program_.FrameOf(explorer))) frame->ChooseFolder(folder);
    Pump(100);
}

void Stage::SelectFirst(standin::Window explorer, int count) const {
    if (auto* frame = dynamic_cast<ExplorerFrame*>(program_.FrameOf(explorer))) frame->SelectFirst(count);
    Pump(100);
}

}  // namespace program
