#include "platform/com/OwnTypeLibrary.h"

#include "platform/Module.h"

namespace platform {

ComPtr<ITypeInfo> OwnTypeInfo(const IID& interfaceId) {
    ComPtr<ITypeLib> library;
    ComPtr<ITypeInfo> info;
    const std::wstring path = Widen(ModulePath());
    if (FAILED(LoadTypeLibEx(path.c_str(), REGKIND_NONE, library.Put()))) return info;
    if (FAILED(library->GetTypeInfoOfGuid(interfaceId, info.Put()))) return {};
    return info;
}

}  // namespace platform
