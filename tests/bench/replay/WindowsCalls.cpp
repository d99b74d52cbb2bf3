#include "bench/replay/WindowsCalls.h"

// commctrl.h needs windows.h before it
#include <windows.h>
//
#include <commctrl.h>
#include <olectl.h>

#include <string>
#include <vector>

#include "bench/replay/Recording.h"

namespace Bench {
namespace {

// --- registry

bool IsPredefined(HKEY key) { return (reinterpret_cast<ULONG_PTR>(key) & 0x80000000u) != 0; }

// A key as a step names it: one of Windows' own, or a slot.
struct KeyName {
    HKEY predefined;
    int slot;
    [[nodiscard]] HKEY In(const Slots& slots) const {
        return slot == noSlot ? predefined : slots.keys[static_cast<std::size_t>(slot)];
    }
};

KeyName NameOf(HKEY key) {
    if (IsPredefined(key)) return {key, noSlot};
    const auto known = recording->keys.find(key);
    if (known == recording->keys.end()) recording->whole = false;
    return {nullptr, known == recording->keys.end() ? noSlot : known->second};
}

using OpenFunction = LSTATUS(WINAPI*)(HKEY, const char*, HKEY*);

LSTATUS Open(OpenFunction open, HKEY parent, const char* path, HKEY* key) {
    const std::size_t step = recording->Begin(Step::Kind::RegistryCall);
    const LSTATUS status = open(parent, path, key);
    const int slot = recording->NewKey();
    if (status == ERROR_SUCCESS) recording->keys[*key] = slot;
    recording->End(step, [open, name = NameOf(parent), path = std::string(path), slot, status](Slots& slots) {
        HKEY again = nullptr;
        const LSTATUS answer = open(name.In(slots), path.c_str(), &again);
        Keep(slots.keys, slot, again);
        return answer == status;
    });
    return status;
}

LSTATUS WINAPI OpenKey(HKEY parent, const char* path, HKEY* key) { return Open(&RegOpenKeyA, parent, path, key); }
LSTATUS WINAPI CreateKey(HKEY parent, const char* path, HKEY* key) { return Open(&RegCreateKeyA, parent, path, key); }

LSTATUS WINAPI CloseKey(HKEY key) {
    const std::size_t step = recording->Begin(Step::Kind::RegistryCall);
    recording->End(step, [name = NameOf(key)](Slots& slots) { return RegCloseKey(name.In(slots)) == ERROR_SUCCESS; });
    return RegCloseKey(key);
}

LSTATUS WINAPI QueryValue(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* size) {
    const std::size_t step = recording->Begin(Step::Kind::RegistryCall);
    const DWORD room = data ? *size : 0;
    const LSTATUS status = RegQueryValueExA(key, name, reserved, type, data, size);
    recording->End(step, [key = NameOf(key), name = std::string(name), typed = type != nullptr, read = data != nullptr,
                          buffer = std::vector<BYTE>(room + 1), room, status](Slots& slots) mutable {
        DWORD kind = 0, length = room;
        return RegQueryValueExA(key.In(slots), name.c_str(), nullptr, typed ? &kind : nullptr,
                                read ? buffer.data() : nullptr, &length) == status;
    });
    return status;
}

LSTATUS WINAPI SetValue(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data, DWORD size) {
    const std::size_t step = recording->Begin(Step::Kind::RegistryCall);
    const LSTATUS status = RegSetValueExA(key, name, reserved, type, data, size);
    // As much as was handed over, with a byte behind that is none of the text's.
    std::vector<BYTE> bytes(data, data + size);
    bytes.push_back('.');
    recording->End(step, [key = NameOf(key), name = std::string(name), type, bytes, size, status](Slots& slots) {
        return RegSetValueExA(key.In(slots), name.c_str(), 0, type, bytes.data(), size) == status;
    });
    return status;
}

LSTATUS WINAPI DeleteValue(HKEY key, const char* name) {
    const std::size_t step = recording->Begin(Step::Kind::RegistryCall);
    const LSTATUS status = RegDeleteValueA(key, name);
    recording->End(step, [key = NameOf(key), name = std::string(name), status](Slots& slots) {
        return RegDeleteValueA(key.In(slots), name.c_str()) == status;
    });
    return status;
}

// --- pictures

// The slot of a bitmap or window; noSlot for none.
int HandleSlot(HANDLE handle) {
    const auto known = recording->handles.find(handle);
    return known == recording->handles.end() ? noSlot : known->second;
}

int NewHandle(HANDLE handle) {
    if (!handle) return noSlot;
    return recording->handles[handle] = recording->NewHandle();
}

template <class Handle>
Handle HandleIn(const Slots& slots, int slot) {
    return slot == noSlot ? nullptr : static_cast<Handle>(slots.handles[static_cast<std::size_t>(slot)]);
}

// A call that makes a handle, and by `make` makes one again.
template <class Function>
auto Make(Function make) {
    const std::size_t step = recording->Begin(Step::Kind::PictureCall);
    const auto made = make(nullptr);
    const int slot = NewHandle(made);
    recording->End(step, [make, slot](Slots& slots) {
        const HANDLE again = make(&slots);
        if (slot != noSlot) Keep(slots.handles, slot, again);
        return (again != nullptr) == (slot != noSlot);
    });
    return made;
}

HBITMAP WINAPI LoadPicture_(HINSTANCE library, const char* name) {
    return Make([=](Slots*) { return LoadBitmapA(library, name); });
}

HBITMAP WINAPI LoadMapped(HINSTANCE library, INT_PTR name, UINT flags, COLORMAP* map, int count) {
    return Make([=, colours = std::vector<COLORMAP>(map, map + count)](Slots*) {
        auto copy = colours;
        return CreateMappedBitmap(library, name, flags, copy.data(), count);
    });
}

HANDLE WINAPI Copy(HANDLE image, UINT type, int width, int height, UINT flags) {
    const auto picture = recording->pictureOf.find(image);
    if (picture != recording->pictureOf.end()) recording->UsePicture(picture->second, recording->tape.steps.size());
    return Make([=, slot = HandleSlot(image)](Slots* slots) {
        return CopyImage(slots ? HandleIn<HANDLE>(*slots, slot) : image, type, width, height, flags);
    });
}

HRESULT WINAPI CreatePicture(PICTDESC* description, REFIID id, BOOL owns, void** picture) {
    const std::size_t step = recording->Begin(Step::Kind::PictureCall);
    const HRESULT status = OleCreatePictureIndirect(description, id, owns, picture);
    const int bitmap = HandleSlot(description->bmp.hbitmap);
    if (FAILED(status) || bitmap == noSlot || description->picType != PICTYPE_BITMAP) {
        recording->whole = false;
        return status;
    }
    const int slot = recording->NewObject();
    IUnknown* identity = nullptr;
    static_cast<IUnknown*>(*picture)->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity));
    identity->Release();
    recording->MadePicture(identity, slot, step);
    recording->pictureOf[description->bmp.hbitmap] = identity;
    recording->End(step, [description = *description, owns, bitmap, slot](Slots& slots) mutable {
        description.bmp.hbitmap = HandleIn<HBITMAP>(slots, bitmap);
        IDispatch* again = nullptr;  // the add-in asks a picture for this interface as well
        const HRESULT answer =
            OleCreatePictureIndirect(&description, IID_IDispatch, owns, reinterpret_cast<void**>(&again));
        if (again) Keep<IUnknown*>(slots.objects, slot, again);
        return SUCCEEDED(answer);
    });
    return status;
}

HWND WINAPI CreateOwner(DWORD extended, const char* name, const char* title, DWORD style, int x, int y, int width,
                        int height, HWND parent, HMENU menu, HINSTANCE instance, void* parameter) {
    if (parent != HWND_MESSAGE) recording->whole = false;
    return Make([=, name = std::string(name), title = std::string(title)](Slots*) {
        return CreateWindowExA(extended, name.c_str(), title.c_str(), style, x, y, width, height, parent, menu,
                               instance, parameter);
    });
}

// A call that only succeeds or fails.
template <class Call>
BOOL Do(Call call) {
    const std::size_t step = recording->Begin(Step::Kind::PictureCall);
    const BOOL done = call(nullptr);
    recording->End(step, [call, done](Slots& slots) { return (call(&slots) != FALSE) == (done != FALSE); });
    return done;
}

BOOL WINAPI DestroyOwner(HWND window) {
    return Do([=, slot = HandleSlot(window)](Slots* slots) {
        return DestroyWindow(slots ? HandleIn<HWND>(*slots, slot) : window);
    });
}
BOOL WINAPI OpenBoard(HWND window) {
    return Do([=, slot = HandleSlot(window)](Slots* slots) {
        return OpenClipboard(slots ? HandleIn<HWND>(*slots, slot) : window);
    });
}
BOOL WINAPI EmptyBoard() {
    return Do([](Slots*) { return EmptyClipboard(); });
}
BOOL WINAPI CloseBoard() {
    return Do([](Slots*) { return CloseClipboard(); });
}
HANDLE WINAPI PutOnBoard(UINT format, HANDLE data) {
    if (HandleSlot(data) == noSlot) recording->whole = false;  // what a user had there
    const BOOL done = Do([=, slot = HandleSlot(data)](Slots* slots) -> BOOL {
        return SetClipboardData(format, slots ? HandleIn<HANDLE>(*slots, slot) : data) != nullptr;
    });
    return done ? data : nullptr;
}

// --- files

// Files that are read; what is written is the disk's matter.
HANDLE WINAPI OpenFile(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* rights, DWORD disposition,
                       DWORD attributes, HANDLE likeThis) {
    const auto open = [=](const char* name) {
        return CreateFileA(name, access, share, rights, disposition, attributes, likeThis);
    };
    if (access != GENERIC_READ) return open(path);
    const std::size_t step = recording->Begin(Step::Kind::FileCall);
    const HANDLE file = open(path);
    const int slot = recording->NewHandle();
    if (file != INVALID_HANDLE_VALUE) recording->handles[file] = slot;
    recording->End(step, [open, path = std::string(path), slot, there = file != INVALID_HANDLE_VALUE](Slots& slots) {
        const HANDLE again = open(path.c_str());
        Keep(slots.handles, slot, again);
        return (again != INVALID_HANDLE_VALUE) == there;
    });
    return file;
}

DWORD WINAPI SizeOfFile(HANDLE file, DWORD* high) {
    const int slot = HandleSlot(file);
    if (slot == noSlot) return GetFileSize(file, high);
    const std::size_t step = recording->Begin(Step::Kind::FileCall);
    const DWORD size = GetFileSize(file, high);
    recording->End(step,
                   [slot, size](Slots& slots) { return GetFileSize(HandleIn<HANDLE>(slots, slot), nullptr) == size; });
    return size;
}

BOOL WINAPI Read(HANDLE file, void* bytes, DWORD size, DWORD* count, OVERLAPPED* overlapped) {
    const int slot = HandleSlot(file);
    if (slot == noSlot) return ReadFile(file, bytes, size, count, overlapped);
    const std::size_t step = recording->Begin(Step::Kind::FileCall);
    const BOOL done = ReadFile(file, bytes, size, count, overlapped);
    recording->End(step, [slot, buffer = std::vector<BYTE>(size + 1), size, expected = *count](Slots& slots) mutable {
        DWORD again = 0;
        ReadFile(HandleIn<HANDLE>(slots, slot), buffer.data(), size, &again, nullptr);
        return again == expected;
    });
    return done;
}

BOOL WINAPI Close(HANDLE handle) {
    const int slot = HandleSlot(handle);
    if (slot == noSlot) return CloseHandle(handle);
    recording->handles.erase(handle);
    const std::size_t step = recording->Begin(Step::Kind::FileCall);
    recording->End(step, [slot](Slots& slots) { return CloseHandle(HandleIn<HANDLE>(slots, slot)) != FALSE; });
    return CloseHandle(handle);
}

// A setting or text is looked up in memory, but only after its file was asked for its time.
BOOL WINAPI AttributesAndTimes(const char* path, GET_FILEEX_INFO_LEVELS level, void* data) {
    const std::size_t step = recording->Begin(Step::Kind::FileCall);
    const BOOL done = GetFileAttributesExA(path, level, data);
    recording->End(step, [path = std::string(path), level, done](Slots&) {
        WIN32_FILE_ATTRIBUTE_DATA again;
        return GetFileAttributesExA(path.c_str(), level, &again) == done;
    });
    return done;
}

DWORD WINAPI Attributes(const char* path) {
    const std::size_t step = recording->Begin(Step::Kind::FileCall);
    const DWORD attributes = GetFileAttributesA(path);
    recording->End(step, [path = std::string(path), attributes](Slots&) {
        return GetFileAttributesA(path.c_str()) == attributes;
    });
    return attributes;
}

// --- programs

BOOL WINAPI StartProgram(const char* program, char* command, SECURITY_ATTRIBUTES* processRights,
                         SECURITY_ATTRIBUTES* threadRights, BOOL inherits, DWORD flags, void* environment,
                         const char* folder, STARTUPINFOA* startup, PROCESS_INFORMATION* started) {
    const std::size_t step = recording->Begin(Step::Kind::ProgramStart);
    const auto text = [](const char* value) { return value ? std::string(value) : std::string(); };
    recording->End(step, [program = text(program), command = text(command), inherits, flags, folder = text(folder),
                          show = startup->wShowWindow, how = startup->dwFlags](Slots&) mutable {
        STARTUPINFOA again{};
        again.cb = sizeof again;
        again.dwFlags = how;
        again.wShowWindow = show;
        PROCESS_INFORMATION process{};
        std::string line = command;  // Windows writes into it
        const BOOL done =
            CreateProcessA(program.empty() ? nullptr : program.c_str(), line.data(), nullptr, nullptr, inherits, flags,
                           nullptr, folder.empty() ? nullptr : folder.c_str(), &again, &process);
        if (done) {
            CloseHandle(process.hThread);
            CloseHandle(process.hProcess);
        }
        return done != FALSE;
    });
    return CreateProcessA(program, command, processRights, threadRights, inherits, flags, environment, folder, startup,
                          started);
}

template <class Function>
void* Pointer(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

const std::vector<ImportPatch::Import> recordedCalls = {
    {"ADVAPI32.dll", "RegOpenKeyA", Pointer(&OpenKey)},
    {"ADVAPI32.dll", "RegCreateKeyA", Pointer(&CreateKey)},
    {"ADVAPI32.dll", "RegCloseKey", Pointer(&CloseKey)},
    {"ADVAPI32.dll", "RegQueryValueExA", Pointer(&QueryValue)},
    {"ADVAPI32.dll", "RegSetValueExA", Pointer(&SetValue)},
    {"ADVAPI32.dll", "RegDeleteValueA", Pointer(&DeleteValue)},
    {"USER32.dll", "LoadBitmapA", Pointer(&LoadPicture_)},
    {"COMCTL32.DLL", "CreateMappedBitmap", Pointer(&LoadMapped)},
    {"OLEAUT32.dll", "OleCreatePictureIndirect", Pointer(&CreatePicture)},
    {"USER32.dll", "CopyImage", Pointer(&Copy)},
    {"USER32.dll", "CreateWindowExA", Pointer(&CreateOwner)},
    {"USER32.dll", "DestroyWindow", Pointer(&DestroyOwner)},
    {"USER32.dll", "OpenClipboard", Pointer(&OpenBoard)},
    {"USER32.dll", "EmptyClipboard", Pointer(&EmptyBoard)},
    {"USER32.dll", "CloseClipboard", Pointer(&CloseBoard)},
    {"USER32.dll", "SetClipboardData", Pointer(&PutOnBoard)},
    {"KERNEL32.dll", "CreateFileA", Pointer(&OpenFile)},
    {"KERNEL32.dll", "GetFileAttributesA", Pointer(&Attributes)},
    {"KERNEL32.dll", "GetFileAttributesExA", Pointer(&AttributesAndTimes)},
    {"KERNEL32.dll", "GetFileSize", Pointer(&SizeOfFile)},
    {"KERNEL32.dll", "ReadFile", Pointer(&Read)},
    {"KERNEL32.dll", "CloseHandle", Pointer(&Close)},
    {"KERNEL32.dll", "CreateProcessA", Pointer(&StartProgram)},
};

}  // namespace Bench
