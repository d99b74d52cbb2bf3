// program/Stage.h: what a scenario needs beside the host itself: time to pass,
// menus to be seen open, pictures to be taken.
//
// Picture writes the line "@picture <name>" to standard output and waits, with the message loop
// running, until a file "<name>.done" is in the current folder (at most 15 seconds): the script around
// it takes a picture of the screen meanwhile.
#pragma once
#include <string>

#include "outlook/program/Program.h"

namespace program {

class Stage {
  public:
    explicit Stage(Program& program) : program_(program) {}

    [[nodiscard]] standin::Outlook& Outlook() const { return program_.Host(); }
    void Pump(DWORD milliseconds) const;
    void Picture(const std::string& name) const;
    void Say(const std::string& line) const;  // to standard output, ended by a line feed
    // The same from another thread, while this one runs its messages.
    void PictureMeanwhile(const std::string& name) const;
    // Says whether it is so; one that is not makes the program's exit code 1.
    bool Check(const std::string& what, bool so) const;
    [[nodiscard]] bool AllRight() const { return wrong_ == 0; }
    void Section(const std::string& title) const { Say("== " + title); }
    // Opens the menu of that caption (without "&") of the menu bar or the toolbar, to be seen; CloseMenu closes it.
    void OpenMenu(standin::Window window, const std::string& caption) const;
    void CloseMenu(standin::Window window) const;
    // Types into a field of the form of an Inspector.
    void Type(standin::Window inspector, const std::string& field, const std::string& text) const;
    // The mouse presses a control of a bar, or of the open menu; false when it is not to be seen.
    bool Press(standin::Window window, int instance) const;
    // The mouse opens a tab of the ribbon; false when it is not to be seen.
    bool OpenTab(standin::Window window, const std::string& tab) const;
    bool Hover(standin::Window window, int instance) const;  // the mouse comes to it
    // Likewise a control of an add-in's ribbon, or of the open menu or context menu, by its id.
    bool PressRibbon(standin::Window window, const std::string& id) const;
    bool HoverRibbon(standin::Window window, const std::string& id) const;
    bool RightClickSelection(standin::Window explorer) const;  // false when nothing is selected
    // The mouse opens the menu of a popup and chooses an entry of it; false when either is not to be seen.
    bool Choose(standin::Window window, const standin::ControlView& popup, int entry) const;
    void ChooseFolder(standin::Window explorer, standin::FolderKind folder) const;
    void SelectFirst(standin::Window explorer, int count) const;  // rows of the list
    [[nodiscard]] HWND FrameOf(standin::Window window) const;     // null when it is not shown
    void ShowAddIns() const { program_.ShowAddIns(); }

  private:
    bool PressAt(const HostFrame::Spot& spot) const;
    bool HoverAt(const HostFrame::Spot& spot) const;

    Program& program_;
    mutable int wrong_ = 0;
};

}  // namespace program
