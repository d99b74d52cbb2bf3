// outlook/UserObjects.h: a user in front of the host, for clients in other processes, which cannot reach its windows with a
// mouse of their own. No part of Outlook's object model: no object of it leads here, so an add-in never meets it.
//
// User         FindRibbon(Id) -> a RibbonView, or nothing: what the active window's ribbon shows under that id;
//              ClickRibbon(Id), ClickContextMenu(Id) -> whether it could be clicked, there or in the menu of a right click
//              on the active Explorer's selection; RibbonsAsked -> the ids of the ribbons that add-ins were asked for,
//              a blank after each
// RibbonView   Kind, Id, Tag, Label, ScreenTip, KeyTip, Visible, Enabled, as they were when it was asked for
#pragma once
#include "outlook/Object.h"
#include "outlook/ribbon/RibbonView.h"

namespace standin {

class UserObject : public Object {
  public:
    using Object::Object;
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "User"; }

    Result CallFindRibbon(Call& call);
    bool CallClickRibbon(Call& call);
    bool CallClickContextMenu(Call& call);
    std::wstring GetRibbonsAsked();
};

class RibbonViewObject : public Object {
  public:
    RibbonViewObject(std::shared_ptr<Gate> gate, RibbonControlView view)
        : Object(std::move(gate)), view_(std::move(view)) {}
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "RibbonView " + view_.id; }

    std::wstring GetKind();
    std::wstring GetId();
    std::wstring GetTag();
    std::wstring GetLabel();
    std::wstring GetScreenTip();
    std::wstring GetKeyTip();
    bool GetVisible() { return view_.visible; }
    bool GetEnabled() { return view_.enabled; }

  private:
    RibbonControlView view_;
};

}  // namespace standin
