// testing/RealFunction.h: a function of Windows by its name, for a test that stands in for it in its own program, whose
// import leads to the test itself meanwhile.
#pragma once
#include <windows.h>

template <class Function>
Function Real(const char* library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA(library), name)));
}
