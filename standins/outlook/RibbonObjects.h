// outlook/RibbonObjects.h: what an add-in is given of the ribbon: IRibbonUI once for each XML that was taken, and
// an IRibbonControl with each callback.
#pragma once
#include <functional>

#include "outlook/Object.h"

namespace standin {

class RibbonUiObject : public Object {
  public:
    // `invalidate` is told the control's id, or "" for all.
    RibbonUiObject(std::shared_ptr<Gate> gate, std::string ribbonId,
                   std::function<void(const std::wstring& id)> invalidate)
        : Object(std::move(gate)), ribbonId_(std::move(ribbonId)), invalidate_(std::move(invalidate)) {}

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Ribbon " + ribbonId_; }
    void CutOff() { invalidate_ = nullptr; }

    void CallInvalidate();
    void CallInvalidateControl(Call& call);
    void CallInvalidateMso(Call&) {}
    void CallActivateTab(Call&) {}

  private:
    std::string ribbonId_;
    std::function<void(const std::wstring& id)> invalidate_;
};

class RibbonControlObject : public Object {
  public:
    RibbonControlObject(std::shared_ptr<Gate> gate, std::wstring id, std::wstring tag, Result context)
        : Object(std::move(gate)), id_(std::move(id)), tag_(std::move(tag)), context_(std::move(context)) {}

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override;

    std::wstring GetId() { return id_; }
    Result GetContext() { return context_; }
    std::wstring GetTag() { return tag_; }

  private:
    std::wstring id_, tag_;
    Result context_;
};

}  // namespace standin
