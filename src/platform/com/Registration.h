// platform/com/Registration.h: the registry entries by which Windows finds the add-in class and Outlook the add-in.
//
// Shapes  Classes: CLSID\{...} and the ProgID, under HKEY_CLASSES_ROOT, or where that is refused under the
//         user's own HKEY_CURRENT_USER\Software\Classes. Add-in:
//         HKEY_CURRENT_USER\Software\Microsoft\Office\Outlook\Addins\<ProgID>.
//         On a 64-bit Windows CLSID has a view for programs of 32 bits and one for those of 64, and each library
//         writes its own; the ProgID and the add-in are the same keys for both.
//         The type library is not registered: it holds the interface of the Office add-in designer, whose
//         own registration would be overwritten and, with ours, be removed.
// Errors  false; a registration that fails leaves none behind, not even an earlier one.
#pragma once
#include <string>

#include "platform/com/ServerDescription.h"

namespace platform {

[[nodiscard]] bool RegisterServer(const ServerDescription& server, const std::string& libraryPath) noexcept;

// Removes the entries in both places, and the keys above the add-in's own where nothing else is left in
// them. The ProgID and the add-in stay for the library of the other size of pointers while that is registered.
// False when an entry could not be removed.
[[nodiscard]] bool UnregisterServer(const ServerDescription& server) noexcept;

}  // namespace platform
