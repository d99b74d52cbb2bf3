#include "weather/House.h"

#include <shellapi.h>

#include <algorithm>
#include <cstdio>

#include "testing/OwnProgram.h"
#include "testing/RemoveFolder.h"

namespace weather {
namespace {

constexpr const char* settings =
    "[Settings]\r\nLanguage=English\r\nPort=COM3\r\nFont=Tahoma\r\n\r\n[Phone]\r\nModel=K-700\r\nNumber=+49 1\r\n\r\n"
    "[Msg]\r\n12=3\r\n\r\n[Kept]\r\nA=1\r\nB=2\r\nC=3\r\n";
constexpr const char* log = "<earlier>a line of the log</earlier>\r\n";
constexpr const char* clipboardText = "what the user copied";

std::vector<std::string> started;
DWORD slept = 0;

// Beside this program: who plays several at once gives each a folder of its own.
std::string Base() { return own_program::Folder() + "a world\\"; }

BOOL WINAPI NoteProcess(LPCSTR, LPSTR commandLine, LPSECURITY_ATTRIBUTES, LPSECURITY_ATTRIBUTES, BOOL, DWORD, LPVOID,
                        LPCSTR, LPSTARTUPINFOA, LPPROCESS_INFORMATION process) {
    started.emplace_back(commandLine);
    const HANDLE own = GetCurrentProcess();
    DuplicateHandle(own, own, own, &process->hProcess, SYNCHRONIZE, FALSE, 0);
    DuplicateHandle(own, own, own, &process->hThread, SYNCHRONIZE, FALSE, 0);
    process->dwProcessId = GetCurrentProcessId();
    process->dwThreadId = GetCurrentThreadId();
    return TRUE;
}

BOOL WINAPI NoteDocument(SHELLEXECUTEINFOA* document) {
    started.emplace_back(document->lpFile);
    return TRUE;
}

void WINAPI PassOver(DWORD milliseconds) {
    slept += milliseconds;
    Sleep(0);
}

// The add-in's own timer is long; that of a form is not waited for.
UINT_PTR WINAPI SoonTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    return SetTimer(window, id, std::min(milliseconds, 10u), procedure);
}

// The user's text, where the clipboard has it.
std::string ClipboardText() {
    if (!MemoryClipboard::Open(nullptr)) return "(held open)";
    std::string text;
    if (HANDLE data = MemoryClipboard::Get(CF_TEXT)) {
        if (const char* bytes = static_cast<const char*>(GlobalLock(data))) text = bytes;
        GlobalUnlock(data);
    }
    MemoryClipboard::Close();
    return text;
}

void CopyToClipboard(const char* text) {
    const std::size_t size = std::string(text).size() + 1;
    HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, size);
    std::copy_n(text, size, static_cast<char*>(GlobalLock(data)));
    GlobalUnlock(data);
    MemoryClipboard::Open(nullptr);
    MemoryClipboard::Set(CF_TEXT, data);
    MemoryClipboard::Close();
}

// Every line of `before` still stands in `now`, in its order.
bool HoldsAllLines(const std::string& now, const std::string& before) {
    std::size_t at = 0;
    for (std::size_t from = 0; from < before.size();) {
        const std::size_t end = before.find("\r\n", from);
        const std::string line = before.substr(from, end - from);
        if (!line.empty()) {
            at = now.find(line + "\r\n", at);
            if (at == std::string::npos) return false;
        }
        from = end + 2;
    }
    return true;
}

}  // namespace

std::string ReadFileWhole(const std::string& path) {
    std::string bytes;
    if (std::FILE* file = std::fopen(path.c_str(), "rb")) {
        char block[4096];
        for (std::size_t count; (count = std::fread(block, 1, sizeof block, file)) > 0;) bytes.append(block, count);
        std::fclose(file);
    }
    return bytes;
}

void WriteFileWhole(const std::string& path, const std::string& bytes) {
    if (std::FILE* file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
}

House::House() {
    started.clear();
    slept = 0;
    program_.Replace(GetModuleHandleA(nullptr), MemoryRegistry::Functions());
    program_.Replace(GetModuleHandleA(nullptr), MemoryClipboard::Functions());
    CreateDirectoryA(Base().c_str(), nullptr);
    const std::string data = Base().substr(0, Base().size() - 1);
    constexpr const char* folders = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders";
    SetValue(folders, "AppData", data);
    SetValue(folders, "Local AppData", data);
    SetValue(productKey, "Path", "C:\\Corvella");
    SetValue(outlookKey, "ChangedC", std::string(";") + earlierEntries[0] + ";" + earlierEntries[1]);
    SetValue(outlookKey, "Delay", "5");
    SetValue(outlookKey, "Remain", "9");
    SetValue(outlookKey, "Profile", "Work");
    SetValue(outlookKey, "NoDlg", "1");
    CopyToClipboard(clipboardText);
    WriteFileWhole(LogFile(), log);
}

House::~House() {
    Leave();
    RemoveFolder(Base());
    DeleteFileA(LogFile().c_str());
}

void House::Surround(HMODULE library) {
    library_ = new ImportPatch;
    const ImportPatch::Import others[] = {
        {"KERNEL32.dll", "CreateProcessA", reinterpret_cast<void*>(&NoteProcess)},
        {"KERNEL32.dll", "Sleep", reinterpret_cast<void*>(&PassOver)},
        {"SHELL32.dll", "ShellExecuteExA", reinterpret_cast<void*>(&NoteDocument)},
        {"USER32.dll", "SetTimer", reinterpret_cast<void*>(&SoonTimer)},
    };
    library_->Replace(library, MemoryRegistry::Functions());
    library_->Replace(library, MemoryClipboard::Functions());
    library_->Replace(library, others);
}

void House::Leave() {
    delete library_;
    library_ = nullptr;
}

void House::SetValue(const char* path, const char* name, const std::string& text, HKEY root) {
    HKEY key = nullptr;
    MemoryRegistry::CreateKey(root, path, &key);
    MemoryRegistry::SetValueEx(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                               static_cast<DWORD>(text.size()));
    MemoryRegistry::CloseKey(key);
}

std::string House::Value(const char* path, const char* name) {
    HKEY key = nullptr;
    if (MemoryRegistry::OpenKey(HKEY_CURRENT_USER, path, &key) != ERROR_SUCCESS) return {};
    char text[4096] = "";
    DWORD size = sizeof text - 1;
    MemoryRegistry::QueryValueEx(key, name, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
    MemoryRegistry::CloseKey(key);
    return text;
}

std::string House::SettingsFolder() const { return Base() + "Corvella\\"; }
std::string House::SettingsFile() const { return SettingsFolder() + "corvella.ini"; }

std::string House::LogFile() { return own_program::Folder() + "addin\\CorvellaAddIn.dbg.xml"; }

void House::Furnish() const {
    CreateDirectoryA(SettingsFolder().c_str(), nullptr);
    WriteFileWhole(SettingsFile(), settings);
    WriteFileWhole(SettingsFolder() + "Work.ini", "[Settings]\r\n");
}

void House::Empty() const { RemoveFolder(SettingsFolder()); }

std::vector<std::string> House::Losses(bool keepsClipboard) const {
    std::vector<std::string> losses;
    if (GetFileAttributesA((SettingsFolder() + "Work.ini").c_str()) != INVALID_FILE_ATTRIBUTES &&
        !HoldsAllLines(ReadFileWhole(SettingsFile()), settings)) {
        losses.push_back("the settings file lost lines: " + std::to_string(ReadFileWhole(SettingsFile()).size()));
    }
    if (ReadFileWhole(LogFile()).rfind(log, 0) != 0) losses.emplace_back("the log lost lines");
    const std::string list = Value(outlookKey, "ChangedC");
    for (const char* entry : earlierEntries) {
        if (list.find(entry) == std::string::npos) losses.push_back("an entry is lost: " + list);
    }
    if (keepsClipboard && ClipboardText() != clipboardText) losses.emplace_back("the clipboard lost the user's text");
    if (registry_.OpenHandles() != 0) losses.emplace_back("a key of the registry stays open");
    if (clipboard_.IsOpen()) losses.emplace_back("the clipboard stays open");
    return losses;
}

std::string House::Remains() {
    WIN32_FIND_DATAA found;
    for (const std::string& folder : {Base() + "Corvella\\", Base()}) {
        const HANDLE search = FindFirstFileA((folder + "*").c_str(), &found);
        if (search == INVALID_HANDLE_VALUE) continue;
        std::string names = folder;
        do names += std::string(" ") + found.cFileName;
        while (FindNextFileA(search, &found));
        FindClose(search);
        return names;
    }
    return {};
}

const std::vector<std::string>& House::Started() const { return started; }
DWORD House::Slept() { return slept; }

}  // namespace weather
