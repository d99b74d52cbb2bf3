#include "outlook/Bars.h"

#include <algorithm>

#include "outlook/Words.h"

namespace standin {

int Bar::IndexOf(const ControlModel& control) const {
    for (std::size_t i = 0; i < controls.size(); ++i)
        if (controls[i].get() == &control) return static_cast<int>(i) + 1;
    return 0;
}

BarPointer BarSet::Named(const std::wstring& name) const {
    for (const BarPointer& bar : bars)
        if (SameText(bar->name, name)) return bar;
    return nullptr;
}

BarPointer BarSet::MenuBar() const {
    for (const BarPointer& bar : bars)
        if (bar->type == BarMenu) return bar;
    return nullptr;
}

void BarSet::MarkGone() {
    for (const BarPointer& bar : bars) standin::MarkGone(*bar);
}

void MarkGone(ControlModel& control) {
    control.gone = true;
    if (control.menu) MarkGone(*control.menu);
}

void MarkGone(Bar& bar) {
    bar.gone = true;
    for (const ControlPointer& control : bar.controls) MarkGone(*control);
}

bool Wanted::Fits(const ControlModel& control) const {
    if (byType && control.type != type) return false;
    if (byId && control.id != id) return false;
    if (byTag && control.tag != tag) return false;
    return !visibleOnly || control.visible;
}

void Collect(const Bar& bar, const Wanted& wanted, std::vector<ControlPointer>& found) {
    for (const ControlPointer& control : bar.controls) {
        if (wanted.Fits(*control)) found.push_back(control);
        if (wanted.recursive && control->menu) Collect(*control->menu, wanted, found);
    }
}

void ForEach(const Bar& bar, const std::function<void(const ControlPointer&, const BarPointer&)>& visit,
             const BarPointer& self) {
    for (const ControlPointer& control : bar.controls) {
        visit(control, self);
        if (control->menu) ForEach(*control->menu, visit, control->menu);
    }
}

ControlPointer MakeControl(int instance, int id, int type) {
    auto control = std::make_shared<ControlModel>();
    control->instance = instance;
    control->id = id;
    control->type = type;
    if (type == TypePopup || type == TypeSplitButtonPopup) {
        control->menu = std::make_shared<Bar>();
        control->menu->instance = instance;
        control->menu->owner = control;
        control->menu->builtIn = false;
        control->menu->type = BarPopup;
        control->menu->position = PopupPosition;
    }
    return control;
}

bool IsReachable(const ControlModel& control) {
    const BarPointer bar = control.parent.lock();
    if (control.gone || !control.visible || !control.enabled || !bar || !bar->visible || !bar->enabled) return false;
    const ControlPointer popup = bar->owner.lock();
    return !popup || IsReachable(*popup);
}

void Insert(const BarPointer& bar, const ControlPointer& control, std::size_t position) {
    const std::size_t count = bar->controls.size();
    const std::size_t place = position == 0 ? count : std::min(position - 1, count);
    bar->controls.insert(bar->controls.begin() + static_cast<std::ptrdiff_t>(place), control);
    control->parent = bar;
}

void Remove(const BarPointer& bar, const ControlPointer& control) { std::erase(bar->controls, control); }

ControlPointer CopyControl(const ControlModel& control, const std::function<int()>& next) {
    auto copy = std::make_shared<ControlModel>(control);
    copy->instance = next();
    copy->gone = copy->asleep = false;
    copy->parent.reset();
    if (!control.menu) return copy;
    copy->menu = std::make_shared<Bar>(*control.menu);
    copy->menu->gone = false;
    copy->menu->owner = copy;
    copy->menu->controls.clear();
    copy->menu->asleep.clear();
    for (const ControlPointer& entry : control.menu->controls)
        if (!entry->temporary) Insert(copy->menu, CopyControl(*entry, next), 0);
    return copy;
}

ControlView ViewOf(const ControlModel& control, int index) {
    ControlView view;
    view.instance = control.instance;
    view.index = index;
    view.id = control.id;
    view.type = control.type;
    view.style = control.style;
    view.faceId = control.faceId;
    view.state = control.state;
    view.oleUsage = control.oleUsage;
    view.caption = Ansi(control.caption);
    view.tooltip = Ansi(control.tooltip.empty() ? Readable(control.caption) : control.tooltip);
    view.description = Ansi(control.description);
    view.parameter = Ansi(control.parameter);
    view.tag = Ansi(control.tag);
    view.onAction = Ansi(control.onAction);
    view.shortcut = Ansi(control.shortcut);
    view.builtIn = control.builtIn && control.onAction.empty();
    view.temporary = control.temporary;
    view.visible = control.visible;
    view.enabled = control.enabled;
    view.beginGroup = control.beginGroup;
    view.hasFace = static_cast<bool>(control.face);
    view.hasPicture = static_cast<bool>(control.picture);
    view.hasMask = static_cast<bool>(control.mask);
    if (control.menu) {
        view.menuName = Ansi(control.menu->name);
        view.entries = ViewOf(*control.menu).controls;
    }
    return view;
}

BarView ViewOf(const Bar& bar) {
    BarView view{Ansi(bar.name), bar.type, bar.position, bar.visible, bar.enabled, bar.builtIn, {}};
    for (const ControlPointer& control : bar.controls)
        view.controls.push_back(ViewOf(*control, static_cast<int>(view.controls.size()) + 1));
    return view;
}

}  // namespace standin
