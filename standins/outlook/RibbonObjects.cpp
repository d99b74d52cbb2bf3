#include "outlook/RibbonObjects.h"

#include "outlook/Handlers.h"
#include "outlook/Words.h"

namespace standin {
namespace {

constexpr Member uiMembers[] = {
    Method<&RibbonUiObject::CallInvalidate>("Invalidate", 1, "", 12),
    Method<&RibbonUiObject::CallInvalidateControl>("InvalidateControl", 2, "ControlID", 12),
    Method<&RibbonUiObject::CallInvalidateMso>("InvalidateControlMso", 3, "ControlID", 14),
    Method<&RibbonUiObject::CallActivateTab>("ActivateTab", 4, "ControlID", 14),
    Method<&RibbonUiObject::CallActivateTab>("ActivateTabMso", 5, "ControlID", 14),
    Method<&RibbonUiObject::CallActivateTab>("ActivateTabQ", 6, "ControlID,Namespace", 14),
};
constexpr Member controlMembers[] = {
    Get<&RibbonControlObject::GetId>("Id", 1, "", 12),
    Get<&RibbonControlObject::GetContext>("Context", 2, "", 12),
    Get<&RibbonControlObject::GetTag>("Tag", 3, "", 12),
};

}  // namespace

const TypeDescription& RibbonUiObject::Type() const {
    static const TypeDescription type{"IRibbonUI", OfficeGuid(0x000C03A7), {uiMembers}};
    return type;
}

void RibbonUiObject::CallInvalidate() {
    if (invalidate_) invalidate_({});
}

void RibbonUiObject::CallInvalidateControl(Call& call) {
    const std::wstring id = call.Text(0);
    if (id.empty()) Refuse(E_INVALIDARG);
    if (invalidate_) invalidate_(id);
}

const TypeDescription& RibbonControlObject::Type() const {
    static const TypeDescription type{"IRibbonControl", OfficeGuid(0x000C0395), {controlMembers}};
    return type;
}

std::string RibbonControlObject::Name() const { return "RibbonControl " + Ansi(id_); }

}  // namespace standin
