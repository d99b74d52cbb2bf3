// platform/com/RibbonObject.h: the object through which a host with a ribbon asks the add-in for it. Only for
// platform/: needs the OLE headers.
//
// The host asks the add-in's object for IRibbonExtensibility and what it gets for IDispatch; callbacks go to the
// latter, by name (host quirk 17). So it is an object of its own, which keeps the add-in's alive.
//
// Errors  Every call is guarded (Guard.h). GetCustomUI always succeeds; without XML it returns no string. A callback
//         that is unknown, or not called as a method, is refused as COM says; any other one succeeds.
#pragma once
#include "platform/com/Com.h"
#include "platform/com/RibbonInstance.h"

namespace platform {

inline constexpr IID ribbonExtensibilityId{0x000C0396, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// The object by the interface of that id, which is IRibbonExtensibility. `owner` is held until it is released.
HRESULT MakeRibbonObject(RibbonInstance& ribbon, IUnknown* owner, void** object) noexcept;

}  // namespace platform
