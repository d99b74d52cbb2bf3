// outlook/ClassLookup.h: from a ProgID to an object, as COM does it.
//
// Windows shows classes that are registered for the user alone in HKEY_CLASSES_ROOT; Wine does not. What COM itself
// does not find is therefore looked up under HKCU\Software\Classes, and its DLL is loaded for the life of the process.
#pragma once
#include <windows.h>

#include <unknwn.h>

#include <string>

#include "outlook/Pointers.h"

namespace standin {

// False when there is no such class.
[[nodiscard]] bool FindClassId(const std::string& progId, CLSID& classId);
// Empty when it cannot be created in this process.
[[nodiscard]] Theirs<IUnknown> CreateByProgId(const std::string& progId);

}  // namespace standin
