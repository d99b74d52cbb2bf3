#include "outlook/ClassLookup.h"

#include <objbase.h>

#include "outlook/Words.h"

namespace standin {

namespace {

std::string UserDefault(const std::string& path) {
    char text[MAX_PATH] = "";
    LONG size = sizeof text;
    return RegQueryValueA(HKEY_CURRENT_USER, path.c_str(), text, &size) == ERROR_SUCCESS ? text : "";
}

std::string TextOf(const CLSID& classId) {
    wchar_t text[64] = L"";
    StringFromGUID2(classId, text, 64);
    return Ansi(text);
}

Theirs<IUnknown> CreateFromUserClass(const CLSID& classId) {
    Theirs<IUnknown> object;
    const std::string path = UserDefault("Software\\Classes\\CLSID\\" + TextOf(classId) + "\\InprocServer32");
    const HMODULE library =
        path.empty() ? nullptr : LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!library) return object;
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto getClassObject = reinterpret_cast<GetClassObject>(GetProcAddress(library, "DllGetClassObject"));
    Theirs<IClassFactory> factory;
    if (getClassObject && SUCCEEDED(getClassObject(classId, IID_IClassFactory, factory.put())) && factory)
        factory->CreateInstance(nullptr, IID_IUnknown, object.put());
    return object;
}

}  // namespace

bool FindClassId(const std::string& progId, CLSID& classId) {
    if (SUCCEEDED(CLSIDFromProgID(Wide(progId).c_str(), &classId))) return true;
    const std::wstring text = Wide(UserDefault("Software\\Classes\\" + progId + "\\CLSID"));
    return !text.empty() && SUCCEEDED(CLSIDFromString(text.c_str(), &classId));
}

Theirs<IUnknown> CreateByProgId(const std::string& progId) {
    CLSID classId;
    Theirs<IUnknown> object;
    if (!FindClassId(progId, classId)) return object;
    if (SUCCEEDED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.put()))) return object;
    return CreateFromUserClass(classId);
}

}  // namespace standin
