// testing/ClassFactory.h: the class factory of a loaded add-in, asked for without COM.
#pragma once
#include <windows.h>
// after windows.h
#include <objbase.h>

// Null where the library does not serve the class. The caller releases it.
inline IClassFactory* ClassFactoryOf(HMODULE library, const CLSID& id) {
    using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getClassObject =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(library, "DllGetClassObject")));
    IClassFactory* factory = nullptr;
    if (getClassObject) getClassObject(id, IID_IClassFactory, reinterpret_cast<void**>(&factory));
    return factory;
}
