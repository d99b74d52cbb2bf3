// outlook/Bars.h: command bars as they are drawn: plain data and the rules for adding and deleting. No COM objects.
//
// Shapes  Positions count from 1. A control belongs to a bar, a popup has a bar of its own. What is deleted, or whose
//         window is gone, is marked `gone` and stays valid memory for whoever still points at it.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "outlook/Face.h"
#include "outlook/Pointers.h"
#include "outlook/Terms.h"

namespace standin {

struct Bar;

enum ControlType {
    TypeButton = 1,
    TypeEdit = 2,
    TypeDropdown = 3,
    TypeComboBox = 4,
    TypePopup = 10,
    TypeSplitButtonPopup = 13
};
enum ButtonStyle { StyleAutomatic = 0, StyleIcon = 1, StyleCaption = 2, StyleIconAndCaption = 3 };
enum BarType { BarNormal = 0, BarMenu = 1, BarPopup = 2 };
enum BarPosition { AtTop = 1, Floating = 4, PopupPosition = 5, MenuBarPosition = 6 };

struct ControlModel {
    int instance = 0, id = 1, type = TypeButton;
    bool builtIn = false, temporary = false, gone = false, asleep = false;  // asleep: deleted for this session only
    std::wstring caption, tooltip, description, parameter, tag, onAction, helpFile, shortcut;
    long helpContext = 0;
    int faceId = 0, style = StyleAutomatic, state = 0, oleUsage = 0, oleMenuGroup = -1, priority = 3, hyperlink = 0;
    int width = 23, height = 22;
    bool visible = true, enabled = true, beginGroup = false;
    Face face;                        // set by PasteFace
    Theirs<IDispatch> picture, mask;  // set by Picture and Mask
    std::weak_ptr<Bar> parent;
    std::shared_ptr<Bar> menu;  // of a popup

    [[nodiscard]] bool IsPopup() const { return menu != nullptr; }
    [[nodiscard]] bool IsButton() const { return type == TypeButton; }
};

using ControlPointer = std::shared_ptr<ControlModel>;

struct Bar {
    int instance = 0;
    std::wstring name, nameLocal;
    int type = BarNormal, position = AtTop, protection = 0, rowIndex = 0;
    bool visible = true, enabled = true, builtIn = true, temporary = false, adaptive = false, gone = false;
    int left = 0, top = 0, width = 800, height = 26;
    std::vector<ControlPointer> controls;
    std::weak_ptr<ControlModel> owner;   // of a popup's bar
    std::vector<ControlPointer> asleep;  // persistent ones deleted for this session

    [[nodiscard]] int IndexOf(const ControlModel& control) const;  // from 1; 0 when it is not there
};

using BarPointer = std::shared_ptr<Bar>;

// The bars of one window.
struct BarSet {
    int window = 0;
    std::string windowName;
    std::vector<BarPointer> bars;

    [[nodiscard]] BarPointer Named(const std::wstring& name) const;  // in any case; empty when there is none
    [[nodiscard]] BarPointer MenuBar() const;
    void MarkGone();
};

// A persistent control as it waits for its next window.
struct SavedControl {
    bool explorer = true;
    std::wstring bar;
    std::size_t position = 0;  // from 1
    ControlPointer control;
};
struct SavedBars {
    std::vector<SavedControl> controls;
};

void MarkGone(ControlModel& control);
void MarkGone(Bar& bar);

// What is to be matched; unset ones match everything.
struct Wanted {
    bool byType = false, byId = false, byTag = false, visibleOnly = false, recursive = true;
    int type = 0, id = 0;
    std::wstring tag;
    [[nodiscard]] bool Fits(const ControlModel& control) const;
};
void Collect(const Bar& bar, const Wanted& wanted, std::vector<ControlPointer>& found);

// Visits every control of a bar, popups' entries after their popup.
void ForEach(const Bar& bar, const std::function<void(const ControlPointer&, const BarPointer&)>& visit,
             const BarPointer& self);

// Visible and enabled, and so are the popups and the bar that lead to it.
[[nodiscard]] bool IsReachable(const ControlModel& control);

[[nodiscard]] ControlPointer MakeControl(int instance, int id, int type);
// `position` 1 to count + 1; 0 at the end.
void Insert(const BarPointer& bar, const ControlPointer& control, std::size_t position);
void Remove(const BarPointer& bar, const ControlPointer& control);

// Copies with the instances that `next` gives; the copy belongs to no bar.
[[nodiscard]] ControlPointer CopyControl(const ControlModel& control, const std::function<int()>& next);

[[nodiscard]] ControlView ViewOf(const ControlModel& control, int index);
[[nodiscard]] BarView ViewOf(const Bar& bar);

}  // namespace standin
