// platform/com/OwnTypeLibrary.h: descriptions of interfaces in this library's own resources. Only for platform/: needs
// the OLE headers.
#pragma once
#include "platform/com/Com.h"

namespace platform {

// The description of that interface; empty where it cannot be had.
[[nodiscard]] ComPtr<ITypeInfo> OwnTypeInfo(const IID& interfaceId);

}  // namespace platform
