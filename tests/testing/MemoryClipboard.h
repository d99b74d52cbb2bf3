// testing/MemoryClipboard.h: a clipboard in memory, of which the modules that were patched see nothing else. Like
// Windows' own it takes what it is given, and lets go of it when it is emptied.
#pragma once
#include <windows.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "testing/ImportPatch.h"

class MemoryClipboard {
  public:
    MemoryClipboard() : former_(current) { current = this; }
    ~MemoryClipboard() {
        LetGo();
        current = former_;
    }
    MemoryClipboard(const MemoryClipboard&) = delete;
    MemoryClipboard& operator=(const MemoryClipboard&) = delete;

    // The clipboard functions that stand in for Windows' own.
    static constexpr std::size_t functionCount = 10;
    static const ImportPatch::Import (&Functions())[functionCount] {
        static const ImportPatch::Import functions[] = {
            {"USER32.dll", "OpenClipboard", reinterpret_cast<void*>(&Open)},
            {"USER32.dll", "CloseClipboard", reinterpret_cast<void*>(&Close)},
            {"USER32.dll", "EmptyClipboard", reinterpret_cast<void*>(&Empty)},
            {"USER32.dll", "SetClipboardData", reinterpret_cast<void*>(&Set)},
            {"USER32.dll", "GetClipboardData", reinterpret_cast<void*>(&Get)},
            {"USER32.dll", "IsClipboardFormatAvailable", reinterpret_cast<void*>(&Has)},
            {"USER32.dll", "GetPriorityClipboardFormat", reinterpret_cast<void*>(&FirstOf)},
            {"USER32.dll", "RegisterClipboardFormatA", reinterpret_cast<void*>(&Register)},
            {"USER32.dll", "EnumClipboardFormats", reinterpret_cast<void*>(&Next)},
            {"USER32.dll", "GetClipboardSequenceNumber", reinterpret_cast<void*>(&Changes)},
        };
        return functions;
    }

    [[nodiscard]] bool IsOpen() const { return open_; }

    static BOOL WINAPI Open(HWND) { return std::exchange(current->open_, true) ? FALSE : TRUE; }
    static BOOL WINAPI Close() { return std::exchange(current->open_, false) ? TRUE : FALSE; }
    static BOOL WINAPI Empty() {
        if (!current->open_) return FALSE;
        current->LetGo();
        ++current->changes_;
        return TRUE;
    }
    static HANDLE WINAPI Set(UINT format, HANDLE data) {
        if (!current->open_) return nullptr;
        current->LetGo(format);
        current->contents_[format] = data;
        ++current->changes_;
        return data;
    }
    static HANDLE WINAPI Get(UINT format) {
        const auto found = current->contents_.find(format);
        return current->open_ && found != current->contents_.end() ? found->second : nullptr;
    }
    static BOOL WINAPI Has(UINT format) { return current->contents_.contains(format) ? TRUE : FALSE; }
    static int WINAPI FirstOf(UINT* formats, int count) {
        if (current->contents_.empty()) return 0;
        const UINT* const found = std::find_if(formats, formats + count, &Has);
        return found == formats + count ? -1 : static_cast<int>(*found);
    }
    static UINT WINAPI Register(LPCSTR name) {
        UINT& format = current->formats_[name];
        if (format == 0) format = 0xC000u + static_cast<UINT>(current->formats_.size());
        return format;
    }

    static UINT WINAPI Next(UINT format) {
        const auto found = current->contents_.upper_bound(format);
        return current->open_ && found != current->contents_.end() ? found->first : 0;
    }
    static DWORD WINAPI Changes() { return current->changes_; }

  private:
    void LetGo(UINT format) {
        const auto found = contents_.find(format);
        if (found == contents_.end()) return;
        if (format == CF_BITMAP) {
            DeleteObject(found->second);
        } else {
            GlobalFree(found->second);
        }
        contents_.erase(found);
    }
    void LetGo() {
        while (!contents_.empty()) LetGo(contents_.begin()->first);
    }

    static inline MemoryClipboard* current = nullptr;
    MemoryClipboard* former_;
    bool open_ = false;
    DWORD changes_ = 1;
    std::map<UINT, HANDLE> contents_;
    std::map<std::string, UINT> formats_;
};
