#include "outlook/program/Program.h"

#include "outlook/BuiltInBars.h"
#include "outlook/program/ExplorerFrame.h"
#include "outlook/program/InspectorFrame.h"
#include "outlook/program/Places.h"
#include "outlook/program/StartRecord.h"

namespace program {

namespace {

using standin::FolderKind;
using standin::ItemClass;

struct NewItemCommand {
    int id;
    ItemClass itemClass;
};
constexpr NewItemCommand newItems[] = {{standin::IdNewMail, ItemClass::Mail},
                                       {standin::IdNewAppointment, ItemClass::Appointment},
                                       {standin::IdNewContact, ItemClass::Contact},
                                       {standin::IdNewTask, ItemClass::Task},
                                       {standin::IdNewNote, ItemClass::Note}};
struct GoCommand {
    int id;
    FolderKind folder;
};
constexpr GoCommand folders[] = {
    {5600, FolderKind::Inbox}, {5601, FolderKind::Calendar}, {5602, FolderKind::Contacts}, {5603, FolderKind::Tasks}};

}  // namespace

Program::Program(const standin::Options& options, std::string record) : outlook_(options), record_(std::move(record)) {
    Create("", 0, 0, HWND_MESSAGE, {0, 0, 0, 0});
    log_ = std::make_unique<LogWindow>(PlaceOfLog(Screen()));
    startsBefore_ = ReadStarts(record_).size();
    SetTimer(Handle(), 1, 250, nullptr);
    outlook_.Record();
    outlook_.Watch(this);
}

Program::~Program() { outlook_.Watch(nullptr); }

void Program::Start() {
    ShowWindow(log_->Handle(), SW_SHOWNOACTIVATE);
    outlook_.Start();
    Update();
}

HostFrame* Program::FrameOf(standin::Window window) const {
    const auto found = frames_.find(window.number);
    return found == frames_.end() ? nullptr : found->second.get();
}

bool Program::Over() const { return outlook_.HowItEnded() != standin::Ending::StillRunning; }

void Program::ShowAddIns() {
    if (!addInsWindow_) addInsWindow_ = std::make_unique<AddInsWindow>(*this, RECT{330, 260, 750, 460});
    addInsWindow_->ShowContents();
    ShowWindow(addInsWindow_->Handle(), SW_SHOW);
    SetForegroundWindow(addInsWindow_->Handle());
}

void Program::Dispatch(MSG& message) {
    const HWND root = message.hwnd ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    for (const auto& [number, frame] : frames_) {
        if (frame->Handle() != root) continue;
        const bool down = message.message == WM_KEYDOWN;
        const bool f10 = message.message == WM_SYSKEYDOWN && message.wParam == VK_F10;
        if ((down || f10) && frame->OnBarKey(message.wParam)) return;
        if (down && message.wParam == VK_RETURN && frame->OnEnter(message.hwnd)) return;
        if (message.message == WM_SYSKEYDOWN && frame->OnAccessKey(static_cast<char>(message.wParam))) return;
        if (IsDialogMessageA(root, &message)) return;
        break;
    }
    TranslateMessage(&message);
    DispatchMessageA(&message);
}

// --- what a user does ---

void Program::Click(standin::Window window, int instance) {
    const int id = outlook_.Control(instance).id;
    if (outlook_.Click(instance).defaultRuns) RunBuiltIn(window, id);
}

void Program::RunBuiltIn(standin::Window window, int id) {
    const standin::WindowView view = outlook_.View(window);
    for (const NewItemCommand& command : newItems)
        if (command.id == id) return void(outlook_.OpenInspector(outlook_.NewItem(command.itemClass)));
    for (const GoCommand& command : folders)
        if (command.id == id && view.explorer) return void(outlook_.SwitchFolder(window, command.folder));
    switch (id) {
        case standin::IdExit: outlook_.Quit(); break;
        case standin::IdNewWindow: outlook_.OpenExplorer(view.folder); break;
        case standin::IdAddIns: ShowAddIns(); break;
        case standin::IdSave: outlook_.SaveItem(view.item); break;
        case standin::IdSaveAndClose: outlook_.CloseWindow(window, standin::SaveMode::Save); break;
        case standin::IdClose: SendMessageA(FrameOf(window)->Handle(), WM_CLOSE, 0, 0); break;
        case standin::IdSend: outlook_.SendMail(window); break;
        case standin::IdOpen:
            for (const standin::Item item : view.selection) outlook_.OpenInspector(item);
            break;
        case standin::IdDelete:
            if (!view.explorer) return outlook_.DeleteItem(view.item);
            for (const standin::Item item : view.selection) outlook_.DeleteItem(item);
            break;
        case standin::IdAbout:
            MessageBoxA(FrameOf(window)->Handle(), "A stand-in for Microsoft Outlook, for trying add-ins.", "About",
                        MB_OK | MB_ICONINFORMATION);
            break;
        default: break;  // the stand-in has the button, but not what is behind it
    }
}

void Program::UserActivated(standin::Window window) {
    if (!following_ && outlook_.Exists(window)) outlook_.Activate(window);
}

// Another frame becoming active tells the host by itself.
void Program::UserLeft(standin::Window window) {
    if (!following_ && outlook_.Exists(window)) outlook_.Deactivate(window);
}

void Program::CloseByUser(standin::Window window) { outlook_.CloseWindow(window); }

// --- what the host tells ---

RECT Program::NextPlace(bool explorer) {
    return explorer ? PlaceOfExplorer(Screen(), explorers_++) : PlaceOfInspector(Screen(), inspectors_++);
}

void Program::WindowShown(standin::Window window) {
    const bool explorer = outlook_.View(window).explorer;
    const RECT place = NextPlace(explorer);
    following_ = true;
    std::unique_ptr<HostFrame>& frame = frames_[window.number];
    if (explorer)
        frame = std::make_unique<ExplorerFrame>(*this, window, place);
    else
        frame = std::make_unique<InspectorFrame>(*this, window, place);
    outlook_.SetFrame(window, frame->Handle());
    ShowWindow(frame->Handle(), SW_SHOW);
    following_ = false;
}

void Program::WindowClosed(standin::Window window) {
    const auto found = frames_.find(window.number);
    if (found == frames_.end()) return;
    following_ = true;
    found->second->CloseMenu();
    ShowWindow(found->second->Handle(), SW_HIDE);
    following_ = false;
    leaving_.push_back(std::move(found->second));
    frames_.erase(found);
    PostMessageA(Handle(), reap, 0, 0);
}

void Program::WindowActivated(standin::Window window) {
    HostFrame* frame = FrameOf(window);
    if (!frame || GetActiveWindow() == frame->Handle()) return;
    following_ = true;
    SetForegroundWindow(frame->Handle());
    following_ = false;
}

void Program::BarsChanged(standin::Window window) {
    barsChanged_[window.number] = true;
    Later();
}

void Program::RibbonChanged() {
    for (const auto& [number, frame] : frames_) barsChanged_[number] = true;
    Later();
}

// Another folder has another home tab.
void Program::ContentsChanged() {
    contentsChanged_ = true;
    if (outlook_.Version() >= 14) return RibbonChanged();
    Later();
}

void Program::LineWritten() {
    linesChanged_ = true;
    Later();
}

void Program::Later() {
    if (std::exchange(posted_, true)) return;
    PostMessageA(Handle(), refresh, 0, 0);
}

void Program::Update() {
    posted_ = false;
    for (const auto& [number, changed] : std::exchange(barsChanged_, {}))
        if (HostFrame* frame = FrameOf({number})) frame->ShowBars();
    if (std::exchange(contentsChanged_, false)) {
        for (const auto& [number, frame] : frames_) frame->ShowContents();
        if (addInsWindow_) addInsWindow_->ShowContents();
    }
    if (std::exchange(linesChanged_, false)) log_->Show(outlook_.Transcript());
}

void Program::LookForStarts() {
    const std::vector<NotedStart> all = ReadStarts(record_);
    if (all.size() <= startsBefore_ + startsShown_) return;
    startsShown_ = all.size() - startsBefore_;
    log_->ShowStarts({all.end() - static_cast<std::ptrdiff_t>(startsShown_), all.end()});
}

LRESULT Program::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == refresh) Update();
    if (message == WM_TIMER) LookForStarts();
    if (message == reap) leaving_.clear();
    if (message == reap && Over()) PostQuitMessage(0);
    return Pane::OnMessage(message, first, second);
}

}  // namespace program
