// outlook/BarObjects.h: what the outside sees of command bars. A bar or control may have several
// such objects at a time: a client compares InstanceId, not pointers. A control's sinks hang on the
// object that was advised, and go with it.
#pragma once
#include "outlook/Bars.h"
#include "outlook/Object.h"
#include "outlook/WindowObjects.h"

namespace standin {

class CommandBarsObject : public Object {
  public:
    explicit CommandBarsObject(WindowObject& window);
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] HRESULT Gone() const override;

    Result GetActionControl();
    Result GetActiveMenuBar();
    Result CallAdd(Call& call);
    OfficeInt GetCount();
    Result CallFindControl(Call& call);
    Result CallFindControls(Call& call);
    Result GetItem(Call& call);
    void GetEnumerator(Call& call);
    Result GetParent() { return window_; }

  private:
    WindowObject* window_;  // which owns this object's life: see KeepWindow
    Ref<WindowObject> keep_;

  protected:
    void FirstOutside() override { keep_ = window_; }
    void LastOutside() override { keep_ = {}; }
};

class CommandBarObject : public Object {
  public:
    CommandBarObject(WindowObject& window, BarPointer bar);
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] HRESULT Gone() const override {
        return bar_->gone ? window_->gone ? RPC_E_DISCONNECTED : E_FAIL : S_OK;
    }
    [[nodiscard]] const BarPointer& TheBar() const { return bar_; }
    [[nodiscard]] WindowObject& TheWindow() const { return *window_; }

    template <auto Field>
    auto Read() {
        return Answer((*bar_).*Field);
    }
    template <auto Field>
    void Write(std::decay_t<decltype(std::declval<Bar>().*Field)> value) {
        (*bar_).*Field = value;
        AnnounceChange();
    }
    Result GetControls();
    void CallDelete();
    Result CallFindControl(Call& call);
    OfficeInt GetIndex();
    void PutName(const std::wstring& name);
    Result GetParent() { return window_; }

  private:
    static OfficeInt Answer(int value) { return {value}; }
    static bool Answer(bool value) { return value; }
    static std::wstring Answer(const std::wstring& value) { return value; }
    void AnnounceChange();

    Ref<WindowObject> window_;
    BarPointer bar_;
};

// The controls of a bar, or those that FindControls found.
class ControlsObject : public Object {
  public:
    ControlsObject(WindowObject& window, BarPointer bar);
    ControlsObject(WindowObject& window, std::vector<ControlPointer> found);
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] HRESULT Gone() const override {
        return window_->gone ? RPC_E_DISCONNECTED : bar_ && bar_->gone ? E_FAIL : S_OK;
    }

    Result CallAdd(Call& call);
    OfficeInt GetCount();
    Result GetItem(Call& call);
    void GetEnumerator(Call& call);
    Result GetParent();

  private:
    [[nodiscard]] const std::vector<ControlPointer>& Listed() const { return bar_ ? bar_->controls : found_; }

    Ref<WindowObject> window_;
    BarPointer bar_;
    std::vector<ControlPointer> found_;
};

class ControlObject : public Object {
  public:
    ControlObject(WindowObject& window, ControlPointer control);
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override;
    [[nodiscard]] HRESULT Gone() const override {
        return control_->gone ? window_->gone ? RPC_E_DISCONNECTED : E_FAIL : S_OK;
    }
    [[nodiscard]] const ControlPointer& TheControl() const { return control_; }

    template <auto Field>
    auto Read() {
        return Answer((*control_).*Field);
    }
    template <auto Field>
    void Write(std::decay_t<decltype(std::declval<ControlModel>().*Field)> value) {
        (*control_).*Field = value;
        AnnounceChange();
    }
    bool GetBuiltIn();
    void PutCaption(const std::wstring& caption);
    std::wstring GetTooltip();
    Result CallCopy(Call& call);
    Result CallMove(Call& call);
    void CallDelete(Call& call);
    void CallExecute();
    void CallReset() {}
    void CallSetFocus() {}
    OfficeInt GetIndex();
    OfficeInt GetLeft() { return {0}; }
    bool GetDropped() { return false; }
    Result GetParent();
    // Buttons
    bool GetBuiltInFace();
    void PutBuiltInFace(bool value);
    void PutFaceId(int value);
    void PutStyle(int value);
    void PutState(int value);
    void CallCopyFace();
    void CallPasteFace();
    void GetPicture(Call& call);
    void GetMask(Call& call);
    void PutPicture(IDispatch* picture);
    void PutMask(IDispatch* mask);
    // Popups
    Result GetCommandBar();
    Result GetControls();

  private:
    static OfficeInt Answer(int value) { return {value}; }
    static OfficeInt Answer(long value) { return {static_cast<int>(value)}; }
    static bool Answer(bool value) { return value; }
    static std::wstring Answer(const std::wstring& value) { return value; }
    void AnnounceChange();
    [[nodiscard]] BarPointer TargetBar(const Call& call) const;

    Ref<WindowObject> window_;
    ControlPointer control_;
};

}  // namespace standin
