// How each function fails, in the words of Windows' own documentation: what it returns, and the last error.
#include <windows.h>

#include <commctrl.h>
#include <ole2.h>
#include <olectl.h>
#include <shellapi.h>
#include <shlobj.h>
#include <tlhelp32.h>

#include <algorithm>
#include <cstdlib>

#include "weather/Weather.h"

namespace weather {
namespace {

template <std::size_t size>
struct Name {
    constexpr Name(const char (&name)[size]) { std::copy_n(name, size, text); }  // NOLINT: meant to convert
    char text[size]{};
};

// One function's stand-in; the type is the function's own.
template <Name name, class Function>
struct Failing;

template <Name name, class Result, class... Arguments>
struct Failing<name, Result(WINAPI*)(Arguments...)> {
    static Result WINAPI Call(Arguments... arguments) {
        if (!IsToFail(Places()[place])) {
            return reinterpret_cast<Result(WINAPI*)(Arguments...)>(Places()[place].real)(arguments...);
        }
        if (empties) empties(arguments...);
        if (error != 0) SetLastError(error);
        return result;
    }
    static inline std::size_t place = 0;
    static inline Result result{};
    static inline DWORD error = 0;
    static inline void (*empties)(Arguments...) = nullptr;
};

template <Name name, class Result, class... Arguments>
struct Failing<name, Result (*)(Arguments...)> {
    static Result Call(Arguments... arguments) {
        if (!IsToFail(Places()[place])) {
            return reinterpret_cast<Result (*)(Arguments...)>(Places()[place].real)(arguments...);
        }
        return result;
    }
    static inline std::size_t place = 0;
    static inline Result result{};
    static inline DWORD error = 0;
};

template <class Stub, class Result>
void Add(std::vector<Place>& places, const char* library, const char* function, Result result, DWORD error) {
    Stub::place = places.size();
    Stub::result = result;
    Stub::error = error;
    places.push_back({library, function, reinterpret_cast<void*>(&Stub::Call)});
}

#define STUB(function) Failing<#function, decltype(&(function))>
#define FAILS(from, function, returned, lastError)                                                               \
    Add<STUB(function)>(places, from ".dll", #function, static_cast<decltype(STUB(function)::result)>(returned), \
                        lastError)

template <class Stub>
void AddMemory(std::vector<Place>& places, const char* function) {
    Add<Stub, void*>(places, "msvcrt.dll", function, nullptr, 0);
}

constexpr DWORD noError = 0;  // such a function leaves the last error as it was

void AddFiles(std::vector<Place>& places) {
    FAILS("KERNEL32", CopyFileA, FALSE, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", CreateDirectoryA, FALSE, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", CreateFileA, INVALID_HANDLE_VALUE, ERROR_SHARING_VIOLATION);
    FAILS("KERNEL32", DeleteFileA, FALSE, ERROR_SHARING_VIOLATION);
    FAILS("KERNEL32", FindFirstFileA, INVALID_HANDLE_VALUE, ERROR_BAD_NETPATH);
    FAILS("KERNEL32", FindNextFileA, FALSE, ERROR_UNEXP_NET_ERR);
    FAILS("KERNEL32", FlushFileBuffers, FALSE, ERROR_DISK_FULL);
    FAILS("KERNEL32", GetFileAttributesA, INVALID_FILE_ATTRIBUTES, ERROR_BAD_NETPATH);
    FAILS("KERNEL32", GetFileAttributesExA, FALSE, ERROR_BAD_NETPATH);
    FAILS("KERNEL32", GetFileSize, INVALID_FILE_SIZE, ERROR_INVALID_HANDLE);
    FAILS("KERNEL32", GetFileTime, FALSE, ERROR_INVALID_HANDLE);
    FAILS("KERNEL32", GetSystemDirectoryA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", GetTempFileNameA, 0, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", GetTempPathA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", GetWindowsDirectoryA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", CreateHardLinkA, FALSE, ERROR_INVALID_FUNCTION);
    FAILS("KERNEL32", MoveFileExA, FALSE, ERROR_SHARING_VIOLATION);
    FAILS("KERNEL32", ReadFile, FALSE, ERROR_UNEXP_NET_ERR);
    FAILS("KERNEL32", RemoveDirectoryA, FALSE, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", SetEndOfFile, FALSE, ERROR_DISK_FULL);
    FAILS("KERNEL32", SetFileAttributesA, FALSE, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", SetFileTime, FALSE, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", SetFilePointer, INVALID_SET_FILE_POINTER, ERROR_INVALID_HANDLE);
    FAILS("KERNEL32", WriteFile, FALSE, ERROR_DISK_FULL);
    STUB(ReadFile)::empties = [](HANDLE, LPVOID, DWORD, LPDWORD count, LPOVERLAPPED) {
        if (count) *count = 0;
    };
    STUB(WriteFile)::empties = [](HANDLE, LPCVOID, DWORD, LPDWORD count, LPOVERLAPPED) {
        if (count) *count = 0;
    };
}

void AddSystem(std::vector<Place>& places) {
    FAILS("KERNEL32", CreateMutexA, nullptr, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", CreateProcessA, FALSE, ERROR_FILE_NOT_FOUND);
    FAILS("KERNEL32", CreateToolhelp32Snapshot, INVALID_HANDLE_VALUE, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", FormatMessageA, 0, ERROR_MR_MID_NOT_FOUND);
    FAILS("KERNEL32", GetEnvironmentVariableA, 0, ERROR_ENVVAR_NOT_FOUND);
    FAILS("KERNEL32", GetLocaleInfoA, 0, ERROR_INVALID_FLAGS);
    FAILS("KERNEL32", GetModuleFileNameA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", GetModuleHandleA, nullptr, ERROR_MOD_NOT_FOUND);
    FAILS("KERNEL32", GetPrivateProfileStringA, 0, ERROR_FILE_NOT_FOUND);
    STUB(GetPrivateProfileStringA)::empties = [](LPCSTR, LPCSTR, LPCSTR, LPSTR text, DWORD size, LPCSTR) {
        if (size != 0) *text = 0;
    };
    FAILS("KERNEL32", GetProcAddress, nullptr, ERROR_PROC_NOT_FOUND);
    FAILS("KERNEL32", GetVersionExA, FALSE, ERROR_INSUFFICIENT_BUFFER);
    FAILS("KERNEL32", GlobalAlloc, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", GlobalLock, nullptr, ERROR_DISCARDED);
    FAILS("KERNEL32", GlobalSize, 0, ERROR_INVALID_HANDLE);
    FAILS("KERNEL32", HeapAlloc, nullptr, noError);
    FAILS("KERNEL32", LCMapStringA, 0, ERROR_INVALID_PARAMETER);
    FAILS("KERNEL32", LoadLibraryA, nullptr, ERROR_MOD_NOT_FOUND);
    FAILS("KERNEL32", LocalAlloc, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("KERNEL32", MulDiv, -1, noError);
    FAILS("KERNEL32", MultiByteToWideChar, 0, ERROR_INVALID_PARAMETER);
    FAILS("KERNEL32", OpenProcess, nullptr, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", Process32First, FALSE, ERROR_NO_MORE_FILES);
    FAILS("KERNEL32", Process32Next, FALSE, ERROR_NO_MORE_FILES);
    FAILS("KERNEL32", ProcessIdToSessionId, FALSE, ERROR_ACCESS_DENIED);
    FAILS("KERNEL32", WaitForSingleObject, WAIT_FAILED, ERROR_INVALID_HANDLE);
    FAILS("KERNEL32", WideCharToMultiByte, 0, ERROR_INVALID_PARAMETER);
    FAILS("KERNEL32", lstrcpynA, nullptr, noError);
    FAILS("SHELL32", ShellExecuteExA, FALSE, ERROR_NO_ASSOCIATION);
    // What operator new has, too.
    AddMemory<Failing<"calloc", void* (*)(std::size_t, std::size_t)>>(places, "calloc");
    AddMemory<Failing<"malloc", void* (*)(std::size_t)>>(places, "malloc");
    AddMemory<Failing<"realloc", void* (*)(void*, std::size_t)>>(places, "realloc");
}

void AddRegistry(std::vector<Place>& places) {
    FAILS("ADVAPI32", RegCreateKeyA, ERROR_ACCESS_DENIED, noError);
    FAILS("ADVAPI32", RegCreateKeyExA, ERROR_ACCESS_DENIED, noError);
    FAILS("ADVAPI32", RegDeleteKeyA, ERROR_ACCESS_DENIED, noError);
    FAILS("ADVAPI32", RegDeleteValueA, ERROR_ACCESS_DENIED, noError);
    FAILS("ADVAPI32", RegEnumKeyA, ERROR_NOT_ENOUGH_MEMORY, noError);
    FAILS("ADVAPI32", RegEnumKeyExA, ERROR_NOT_ENOUGH_MEMORY, noError);
    FAILS("ADVAPI32", RegEnumValueA, ERROR_NOT_ENOUGH_MEMORY, noError);
    FAILS("ADVAPI32", RegOpenKeyA, ERROR_ACCESS_DENIED, noError);
    FAILS("ADVAPI32", RegOpenKeyExA, ERROR_ACCESS_DENIED, noError);
    FAILS("ADVAPI32", RegQueryInfoKeyA, ERROR_NOT_ENOUGH_MEMORY, noError);
    FAILS("ADVAPI32", RegQueryValueExA, ERROR_NOT_ENOUGH_MEMORY, noError);
    FAILS("ADVAPI32", RegSetValueExA, ERROR_NO_SYSTEM_RESOURCES, noError);
}

void AddWindows(std::vector<Place>& places) {
    FAILS("COMCTL32", InitCommonControlsEx, FALSE, noError);
    FAILS("USER32", AdjustWindowRectEx, FALSE, ERROR_INVALID_PARAMETER);
    FAILS("USER32", CreateDialogIndirectParamA, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", CreateDialogIndirectParamW, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", CreateWindowExA, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", CreateWindowExW, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", EnumChildWindows, FALSE, noError);
    FAILS("USER32", EnumThreadWindows, FALSE, noError);
    FAILS("USER32", EnumWindows, FALSE, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", FindWindowA, nullptr, ERROR_FILE_NOT_FOUND);
    FAILS("USER32", GetActiveWindow, nullptr, noError);
    FAILS("USER32", GetAncestor, nullptr, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetCapture, nullptr, noError);
    FAILS("USER32", GetClassNameA, 0, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetClientRect, FALSE, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetCursorPos, FALSE, ERROR_ACCESS_DENIED);
    FAILS("USER32", GetFocus, nullptr, noError);
    FAILS("USER32", GetForegroundWindow, nullptr, noError);
    FAILS("USER32", GetMessageA, -1, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetMonitorInfoA, FALSE, ERROR_INVALID_MONITOR_HANDLE);
    FAILS("USER32", GetParent, nullptr, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetPropA, nullptr, noError);
    FAILS("USER32", GetSystemMetrics, 0, noError);
    FAILS("USER32", GetWindow, nullptr, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetWindowRect, FALSE, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetWindowTextA, 0, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetWindowTextLengthA, 0, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", GetWindowThreadProcessId, 0, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", MapVirtualKeyA, 0, noError);
    FAILS("USER32", MessageBoxA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", PostMessageA, FALSE, ERROR_NOT_ENOUGH_QUOTA);
    FAILS("USER32", PostThreadMessageA, FALSE, ERROR_INVALID_THREAD_ID);
    FAILS("USER32", RegisterClassA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", SendMessageTimeoutA, 0, ERROR_TIMEOUT);
    FAILS("USER32", SetActiveWindow, nullptr, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", SetFocus, nullptr, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", SetPropA, FALSE, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", SetTimer, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", SetWindowLongW, 0, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", SetWindowPos, FALSE, ERROR_INVALID_WINDOW_HANDLE);
    FAILS("USER32", SetWindowTextA, FALSE, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", SetWindowTextW, FALSE, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", SystemParametersInfoA, FALSE, ERROR_INVALID_PARAMETER);
    FAILS("USER32", UnregisterClassA, FALSE, ERROR_CLASS_HAS_WINDOWS);
    FAILS("USER32", WaitForInputIdle, WAIT_FAILED, ERROR_INVALID_HANDLE);
}

void AddDrawing(std::vector<Place>& places) {
    FAILS("COMCTL32", CreateMappedBitmap, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("GDI32", CreateCompatibleDC, nullptr, noError);
    FAILS("GDI32", CreateDIBSection, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    STUB(CreateDIBSection)::empties = [](HDC, const BITMAPINFO*, UINT, VOID** bits, HANDLE, DWORD) {
        if (bits) *bits = nullptr;
    };
    FAILS("GDI32", GetDIBits, 0, noError);
    FAILS("GDI32", CreateFontIndirectA, nullptr, noError);
    FAILS("GDI32", CreateSolidBrush, nullptr, noError);
    FAILS("GDI32", GetDeviceCaps, 0, noError);
    FAILS("GDI32", GetObjectA, 0, ERROR_INVALID_HANDLE);
    FAILS("GDI32", GetStockObject, nullptr, noError);
    FAILS("GDI32", GetTextFaceA, 0, noError);
    FAILS("GDI32", SelectObject, nullptr, ERROR_INVALID_HANDLE);
    FAILS("GDI32", SetBkColor, CLR_INVALID, noError);
    FAILS("GDI32", SetBkMode, 0, noError);
    FAILS("GDI32", SetTextColor, CLR_INVALID, noError);
    FAILS("GDI32", TranslateCharsetInfo, FALSE, ERROR_INVALID_PARAMETER);
    FAILS("USER32", CopyImage, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", DrawFocusRect, FALSE, noError);
    FAILS("USER32", DrawFrameControl, FALSE, noError);
    FAILS("USER32", DrawIconEx, FALSE, ERROR_INVALID_CURSOR_HANDLE);
    FAILS("USER32", DrawTextA, 0, noError);
    FAILS("USER32", FillRect, 0, noError);
    FAILS("USER32", GetDC, nullptr, noError);
    FAILS("USER32", InvalidateRect, FALSE, noError);
    FAILS("USER32", LoadBitmapA, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", LoadCursorA, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", LoadIconA, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", LoadImageA, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", RedrawWindow, FALSE, noError);
}

void AddClipboard(std::vector<Place>& places) {
    FAILS("USER32", CountClipboardFormats, 0, ERROR_ACCESS_DENIED);
    FAILS("USER32", EmptyClipboard, FALSE, ERROR_CLIPBOARD_NOT_OPEN);
    FAILS("USER32", EnumClipboardFormats, 0, ERROR_CLIPBOARD_NOT_OPEN);
    FAILS("USER32", GetClipboardFormatNameA, 0, ERROR_INVALID_PARAMETER);
    FAILS("USER32", GetClipboardSequenceNumber, 0, noError);
    FAILS("USER32", RegisterClipboardFormatA, 0, ERROR_NOT_ENOUGH_MEMORY);
    FAILS("USER32", GetClipboardData, nullptr, ERROR_CLIPBOARD_NOT_OPEN);
    FAILS("USER32", OpenClipboard, FALSE, ERROR_ACCESS_DENIED);
    FAILS("USER32", SetClipboardData, nullptr, ERROR_CLIPBOARD_NOT_OPEN);
}

void AddObjects(std::vector<Place>& places) {
    FAILS("OLEAUT32", DispGetIDsOfNames, E_OUTOFMEMORY, noError);
    FAILS("OLEAUT32", DispInvoke, E_OUTOFMEMORY, noError);
    FAILS("OLEAUT32", LoadTypeLibEx, TYPE_E_CANTLOADLIBRARY, noError);
    FAILS("OLEAUT32", OleCreatePictureIndirect, E_OUTOFMEMORY, noError);
    FAILS("OLEAUT32", OleLoadPicturePath, E_OUTOFMEMORY, noError);
    FAILS("OLEAUT32", SafeArrayCreateVector, nullptr, noError);
    FAILS("OLEAUT32", SysAllocString, nullptr, noError);
    FAILS("OLEAUT32", SysAllocStringLen, nullptr, noError);
    FAILS("OLEAUT32", VariantChangeType, E_OUTOFMEMORY, noError);
    FAILS("OLEAUT32", VariantCopy, E_OUTOFMEMORY, noError);
    FAILS("ole32", CLSIDFromProgID, CO_E_CLASSSTRING, noError);
    FAILS("ole32", CLSIDFromString, E_OUTOFMEMORY, noError);
    FAILS("ole32", CoCreateInstance, REGDB_E_CLASSNOTREG, noError);
    FAILS("ole32", CoTaskMemAlloc, nullptr, noError);
    STUB(LoadTypeLibEx)::empties = [](LPCOLESTR, REGKIND, ITypeLib** library) { *library = nullptr; };
    STUB(OleCreatePictureIndirect)::empties = [](LPPICTDESC, REFIID, WINBOOL, LPVOID* object) { *object = nullptr; };
    STUB(CoCreateInstance)::empties = [](REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID* object) { *object = nullptr; };
}

std::vector<Place> AllPlaces() {
    std::vector<Place> places;
    AddFiles(places);
    AddSystem(places);
    AddRegistry(places);
    AddWindows(places);
    AddDrawing(places);
    AddClipboard(places);
    AddObjects(places);
    return places;
}

constexpr const char* alwaysWorks = "documented without a failure";
constexpr const char* letsGo = "lets go of what the caller owns; fails only for what is not its own";
constexpr const char* ofTheLiving = "fails only for a window that has gone, and then for good";
constexpr const char* runtimes = "of the compiler's runtime, called while the library is loaded or not at all";
constexpr const char* ofWindow = "its result is the receiving window's";

}  // namespace

std::vector<Place>& Places() {
    static std::vector<Place> places = AllPlaces();
    return places;
}

const std::vector<Fair>& Fairs() {
    static const std::vector<Fair> fairs = {
        {"KERNEL32.dll", "CloseHandle", letsGo},
        {"KERNEL32.dll", "CompareFileTime", alwaysWorks},
        {"KERNEL32.dll", "CreateSemaphoreA", runtimes},
        {"KERNEL32.dll", "DeleteCriticalSection", alwaysWorks},
        {"KERNEL32.dll", "DisableThreadLibraryCalls", runtimes},
        {"KERNEL32.dll", "EnterCriticalSection", alwaysWorks},
        {"KERNEL32.dll", "FindClose", letsGo},
        {"KERNEL32.dll", "FreeLibrary", letsGo},
        {"KERNEL32.dll", "GetACP", alwaysWorks},
        {"KERNEL32.dll", "GetCommandLineA", alwaysWorks},
        {"KERNEL32.dll", "GetCurrentProcess", alwaysWorks},
        {"KERNEL32.dll", "GetCurrentProcessId", alwaysWorks},
        {"KERNEL32.dll", "GetCurrentThreadId", alwaysWorks},
        {"KERNEL32.dll", "GetLastError", alwaysWorks},
        {"KERNEL32.dll", "GetLocalTime", alwaysWorks},
        {"KERNEL32.dll", "GetSystemTimeAsFileTime", alwaysWorks},
        {"KERNEL32.dll", "GetTickCount", alwaysWorks},
        {"KERNEL32.dll", "GetVersion", alwaysWorks},
        {"KERNEL32.dll", "GlobalFree", letsGo},
        {"KERNEL32.dll", "GlobalUnlock", letsGo},
        {"KERNEL32.dll", "HeapFree", letsGo},
        {"KERNEL32.dll", "InitializeCriticalSection", alwaysWorks},
        {"KERNEL32.dll", "InterlockedCompareExchange", alwaysWorks},
        {"KERNEL32.dll", "InterlockedDecrement", alwaysWorks},
        {"KERNEL32.dll", "InterlockedExchange", alwaysWorks},
        {"KERNEL32.dll", "InterlockedIncrement", alwaysWorks},
        {"KERNEL32.dll", "IsDBCSLeadByte", alwaysWorks},
        {"KERNEL32.dll", "LeaveCriticalSection", alwaysWorks},
        {"KERNEL32.dll", "LocalFree", letsGo},
        {"KERNEL32.dll", "QueryPerformanceCounter", alwaysWorks},
        {"KERNEL32.dll", "ReleaseMutex", letsGo},
        {"KERNEL32.dll", "ReleaseSemaphore", runtimes},
        {"KERNEL32.dll", "SetErrorMode", alwaysWorks},
        {"KERNEL32.dll", "SetLastError", alwaysWorks},
        {"KERNEL32.dll", "SetUnhandledExceptionFilter", alwaysWorks},
        {"KERNEL32.dll", "Sleep", alwaysWorks},
        {"KERNEL32.dll", "TerminateProcess", alwaysWorks},
        {"KERNEL32.dll", "TlsAlloc", runtimes},
        {"KERNEL32.dll", "TlsFree", runtimes},
        {"KERNEL32.dll", "TlsGetValue", runtimes},
        {"KERNEL32.dll", "TlsSetValue", runtimes},
        {"KERNEL32.dll", "UnhandledExceptionFilter", alwaysWorks},
        {"KERNEL32.dll", "VirtualProtect", runtimes},
        {"KERNEL32.dll", "VirtualQuery", runtimes},
        {"KERNEL32.dll", "lstrcmpA", alwaysWorks},
        {"KERNEL32.dll", "lstrcmpiA", alwaysWorks},
        {"KERNEL32.dll", "lstrlenA", alwaysWorks},
        {"ADVAPI32.dll", "RegCloseKey", letsGo},
        {"GDI32.dll", "DeleteDC", letsGo},
        {"GDI32.dll", "DeleteObject", letsGo},
        {"OLEAUT32.dll", "SysFreeString", letsGo},
        {"OLEAUT32.dll", "SysStringLen", alwaysWorks},
        {"OLEAUT32.dll", "VariantClear", letsGo},
        {"OLEAUT32.dll", "VariantInit", alwaysWorks},
        {"ole32.dll", "CoTaskMemFree", letsGo},
        {"USER32.dll", "CallWindowProcA", ofWindow},
        {"USER32.dll", "CallWindowProcW", ofWindow},
        {"USER32.dll", "CharLowerA", alwaysWorks},
        {"USER32.dll", "CharLowerBuffA", alwaysWorks},
        {"USER32.dll", "CharNextA", alwaysWorks},
        {"USER32.dll", "CharPrevA", alwaysWorks},
        {"USER32.dll", "CharUpperBuffA", alwaysWorks},
        {"USER32.dll", "CloseClipboard", letsGo},
        {"USER32.dll", "DefWindowProcA", ofWindow},
        {"USER32.dll", "DestroyIcon", letsGo},
        {"USER32.dll", "DestroyWindow", letsGo},
        {"USER32.dll", "DispatchMessageA", ofWindow},
        {"USER32.dll", "EnableWindow", alwaysWorks},
        {"USER32.dll", "GetClipboardOwner", alwaysWorks},
        {"USER32.dll", "GetDesktopWindow", alwaysWorks},
        {"USER32.dll", "GetKeyState", alwaysWorks},
        {"USER32.dll", "GetLastActivePopup", alwaysWorks},
        {"USER32.dll", "GetPriorityClipboardFormat", alwaysWorks},
        {"USER32.dll", "GetSysColor", alwaysWorks},
        {"USER32.dll", "GetWindowLongA", ofTheLiving},
        {"USER32.dll", "IsChild", alwaysWorks},
        {"USER32.dll", "IsClipboardFormatAvailable", alwaysWorks},
        {"USER32.dll", "IsDialogMessageA", alwaysWorks},
        {"USER32.dll", "IsIconic", alwaysWorks},
        {"USER32.dll", "IsRectEmpty", alwaysWorks},
        {"USER32.dll", "IsWindow", alwaysWorks},
        {"USER32.dll", "IsWindowEnabled", alwaysWorks},
        {"USER32.dll", "IsWindowVisible", alwaysWorks},
        {"USER32.dll", "KillTimer", letsGo},
        {"USER32.dll", "MonitorFromWindow", alwaysWorks},
        {"USER32.dll", "MonitorFromRect", alwaysWorks},
        {"USER32.dll", "MonitorFromPoint", alwaysWorks},
        {"USER32.dll", "PeekMessageA", alwaysWorks},
        {"USER32.dll", "PostQuitMessage", alwaysWorks},
        {"USER32.dll", "ReleaseCapture", letsGo},
        {"USER32.dll", "ReleaseDC", letsGo},
        {"USER32.dll", "RemovePropA", letsGo},
        {"USER32.dll", "SendMessageA", ofWindow},
        {"USER32.dll", "SetCapture", alwaysWorks},
        {"USER32.dll", "SetCursor", alwaysWorks},
        {"USER32.dll", "SetWindowLongA", ofTheLiving},
        {"USER32.dll", "ShowWindow", alwaysWorks},
        {"USER32.dll", "TranslateMessage", alwaysWorks},
        {"USER32.dll", "keybd_event", alwaysWorks},
        {"msvcrt.dll", "_amsg_exit", runtimes},
        {"msvcrt.dll", "_initterm", runtimes},
        {"msvcrt.dll", "_iob", runtimes},
        {"msvcrt.dll", "_lock", runtimes},
        {"msvcrt.dll", "_onexit", runtimes},
        {"msvcrt.dll", "__dllonexit", runtimes},
        {"msvcrt.dll", "_unlock", runtimes},
        {"msvcrt.dll", "abort", runtimes},
        {"msvcrt.dll", "free", letsGo},
        {"msvcrt.dll", "fwrite", runtimes},
        {"msvcrt.dll", "memchr", alwaysWorks},
        {"msvcrt.dll", "memcmp", alwaysWorks},
        {"msvcrt.dll", "memcpy", alwaysWorks},
        {"msvcrt.dll", "memmove", alwaysWorks},
        {"msvcrt.dll", "memset", alwaysWorks},
        {"msvcrt.dll", "rand", alwaysWorks},
        {"msvcrt.dll", "srand", alwaysWorks},
        {"msvcrt.dll", "strchr", alwaysWorks},
        {"msvcrt.dll", "strcmp", alwaysWorks},
        {"msvcrt.dll", "strlen", alwaysWorks},
        {"msvcrt.dll", "strncmp", alwaysWorks},
        {"msvcrt.dll", "vfprintf", runtimes},
        {"msvcrt.dll", "wcscmp", alwaysWorks},
        {"msvcrt.dll", "wcslen", alwaysWorks},
    };
    return fairs;
}

}  // namespace weather
