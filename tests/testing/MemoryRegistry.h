// testing/MemoryRegistry.h: a registry in memory, for tests that run so often that Windows' own would take most of
// their time. It behaves as Windows does to what the add-in and the stand-ins ask of it, which its own test compares.
//
// Shapes  All roots begin empty. Names are compared without regard to case; keys are listed in the order of their
// names. Owns    everything in it; one at a time serves the modules that were patched.
#pragma once
#include <windows.h>

#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "testing/ImportPatch.h"

class MemoryRegistry {
  public:
    MemoryRegistry() : former_(current) { current = this; }
    ~MemoryRegistry() { current = former_; }
    MemoryRegistry(const MemoryRegistry&) = delete;
    MemoryRegistry& operator=(const MemoryRegistry&) = delete;

    // The registry functions that stand in for Windows' own.
    static constexpr std::size_t functionCount = 13;
    static const ImportPatch::Import (&Functions())[functionCount] {
        static const ImportPatch::Import functions[] = {
            {"ADVAPI32.dll", "RegOpenKeyA", reinterpret_cast<void*>(&OpenKey)},
            {"ADVAPI32.dll", "RegOpenKeyExA", reinterpret_cast<void*>(&OpenKeyEx)},
            {"ADVAPI32.dll", "RegCreateKeyA", reinterpret_cast<void*>(&CreateKey)},
            {"ADVAPI32.dll", "RegCloseKey", reinterpret_cast<void*>(&CloseKey)},
            {"ADVAPI32.dll", "RegQueryValueExA", reinterpret_cast<void*>(&QueryValueEx)},
            {"ADVAPI32.dll", "RegQueryValueA", reinterpret_cast<void*>(&QueryValue)},
            {"ADVAPI32.dll", "RegSetValueExA", reinterpret_cast<void*>(&SetValueEx)},
            {"ADVAPI32.dll", "RegDeleteValueA", reinterpret_cast<void*>(&DeleteValue)},
            {"ADVAPI32.dll", "RegDeleteKeyA", reinterpret_cast<void*>(&DeleteKey)},
            {"ADVAPI32.dll", "RegQueryInfoKeyA", reinterpret_cast<void*>(&QueryInfo)},
            {"ADVAPI32.dll", "RegEnumKeyA", reinterpret_cast<void*>(&EnumKey)},
            {"ADVAPI32.dll", "RegOverridePredefKey", reinterpret_cast<void*>(&Override)},
            {"ADVAPI32.dll", "RegFlushKey", reinterpret_cast<void*>(&Flush)},
        };
        return functions;
    }

    [[nodiscard]] std::size_t OpenHandles() const { return handles_.size(); }

    static LONG APIENTRY OpenKey(HKEY from, LPCSTR path, PHKEY opened) {
        return current->Open(from, path, opened, false);
    }
    static LONG APIENTRY OpenKeyEx(HKEY from, LPCSTR path, DWORD, REGSAM, PHKEY opened) {
        return current->Open(from, path, opened, false);
    }
    static LONG APIENTRY CreateKey(HKEY from, LPCSTR path, PHKEY opened) {
        return current->Open(from, path, opened, true);
    }
    static LONG APIENTRY CloseKey(HKEY handle) {
        if (IsRoot(handle)) return ERROR_SUCCESS;
        return current->handles_.erase(handle) != 0 ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
    }
    static LONG APIENTRY QueryValueEx(HKEY handle, LPCSTR name, LPDWORD, LPDWORD type, LPBYTE data, LPDWORD size) {
        const KeyPointer key = current->Find(handle);
        if (!key) return ERROR_INVALID_HANDLE;
        if (data && !size) return ERROR_INVALID_PARAMETER;
        const auto found = key->values.find(name ? name : "");
        if (found == key->values.end()) {
            if (type) *type = REG_NONE;
            return ERROR_FILE_NOT_FOUND;
        }
        const Value& value = found->second;
        if (type) *type = value.type;
        if (!size) return ERROR_SUCCESS;
        const DWORD room = std::exchange(*size, static_cast<DWORD>(value.bytes.size()));
        if (!data) return ERROR_SUCCESS;
        if (room < value.bytes.size()) return ERROR_MORE_DATA;
        std::memcpy(data, value.bytes.data(), value.bytes.size());
        const bool bare = IsText(value.type) && !value.bytes.empty() && value.bytes.back() != '\0';
        if (bare && room > value.bytes.size()) data[value.bytes.size()] = 0;
        return ERROR_SUCCESS;
    }
    static LONG APIENTRY QueryValue(HKEY from, LPCSTR path, LPSTR text, PLONG size) {
        HKEY key = nullptr;
        const LONG status = OpenKey(from, path, &key);
        if (status != ERROR_SUCCESS) return status;
        const LONG read =
            QueryValueEx(key, nullptr, nullptr, nullptr, reinterpret_cast<BYTE*>(text), reinterpret_cast<DWORD*>(size));
        CloseKey(key);
        return read;
    }
    static LONG APIENTRY SetValueEx(HKEY handle, LPCSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
        const KeyPointer key = current->Find(handle);
        if (!key) return ERROR_INVALID_HANDLE;
        if (IsText(type) && size != 0 && data[size - 1] != 0 && data[size] == 0) ++size;  // host quirk 13
        key->values[name ? name : ""] = {type, std::string(reinterpret_cast<const char*>(data), size)};
        return ERROR_SUCCESS;
    }
    static LONG APIENTRY DeleteValue(HKEY handle, LPCSTR name) {
        const KeyPointer key = current->Find(handle);
        if (!key) return ERROR_INVALID_HANDLE;
        return key->values.erase(name ? name : "") != 0 ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    }
    static LONG APIENTRY DeleteKey(HKEY from, LPCSTR path) {
        const KeyPointer start = current->Find(from);
        if (!start) return ERROR_INVALID_HANDLE;
        const std::string_view whole = path;
        const std::size_t last = whole.rfind('\\');
        const KeyPointer parent = last == whole.npos ? start : Walk(start, whole.substr(0, last), false);
        if (!parent) return ERROR_FILE_NOT_FOUND;
        const auto found = parent->keys.find(std::string(whole.substr(last == whole.npos ? 0 : last + 1)));
        if (found == parent->keys.end()) return ERROR_FILE_NOT_FOUND;
        if (!found->second->keys.empty()) return ERROR_ACCESS_DENIED;
        parent->keys.erase(found);
        return ERROR_SUCCESS;
    }
    // The numbers of keys and values only, as the add-in asks for them.
    static LONG APIENTRY QueryInfo(HKEY handle, LPSTR, LPDWORD, LPDWORD, LPDWORD keys, LPDWORD, LPDWORD, LPDWORD values,
                                   LPDWORD, LPDWORD, LPDWORD, PFILETIME) {
        const KeyPointer key = current->Find(handle);
        if (!key) return ERROR_INVALID_HANDLE;
        if (keys != nullptr) *keys = static_cast<DWORD>(key->keys.size());
        if (values != nullptr) *values = static_cast<DWORD>(key->values.size());
        return ERROR_SUCCESS;
    }
    static LONG APIENTRY EnumKey(HKEY handle, DWORD index, LPSTR name, DWORD size) {
        const KeyPointer key = current->Find(handle);
        if (!key) return ERROR_INVALID_HANDLE;
        if (index >= key->keys.size()) return ERROR_NO_MORE_ITEMS;
        const std::string& text = std::next(key->keys.begin(), static_cast<std::ptrdiff_t>(index))->first;
        if (size <= text.size()) return ERROR_MORE_DATA;
        std::memcpy(name, text.c_str(), text.size() + 1);
        return ERROR_SUCCESS;
    }
    static LONG APIENTRY Override(HKEY root, HKEY instead) {
        const KeyPointer key = instead ? current->Find(instead) : nullptr;
        if (!IsRoot(root) || (instead && !key)) return ERROR_INVALID_HANDLE;
        if (key) {
            current->overrides_[root] = key;
        } else {
            current->overrides_.erase(root);
        }
        return ERROR_SUCCESS;
    }
    static LONG APIENTRY Flush(HKEY) { return ERROR_SUCCESS; }

  private:
    struct NoCase {
        bool operator()(const std::string& a, const std::string& b) const { return _stricmp(a.c_str(), b.c_str()) < 0; }
    };
    struct Value {
        DWORD type = REG_NONE;
        std::string bytes;
    };
    struct Key {
        std::map<std::string, std::shared_ptr<Key>, NoCase> keys;
        std::map<std::string, Value, NoCase> values;
    };
    using KeyPointer = std::shared_ptr<Key>;

    static bool IsRoot(HKEY handle) { return (reinterpret_cast<ULONG_PTR>(handle) & 0x80000000u) != 0; }
    static bool IsText(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

    [[nodiscard]] KeyPointer Find(HKEY handle) {
        if (IsRoot(handle)) {
            const auto override = overrides_.find(handle);
            if (override != overrides_.end()) return override->second;
            KeyPointer& root = roots_[handle];
            if (!root) root = std::make_shared<Key>();
            return root;
        }
        const auto found = handles_.find(handle);
        return found == handles_.end() ? nullptr : found->second;
    }

    static KeyPointer Walk(KeyPointer key, std::string_view path, bool create) {
        while (key && !path.empty()) {
            const std::size_t end = path.find('\\');
            const std::string name(path.substr(0, end));
            path = end == path.npos ? std::string_view() : path.substr(end + 1);
            if (name.empty()) continue;
            if (create && !key->keys.contains(name)) key->keys[name] = std::make_shared<Key>();
            const auto found = key->keys.find(name);
            key = found == key->keys.end() ? nullptr : found->second;
        }
        return key;
    }

    LONG Open(HKEY from, LPCSTR path, PHKEY opened, bool create) {
        const KeyPointer start = Find(from);
        if (!start) return ERROR_INVALID_HANDLE;
        const KeyPointer key = Walk(start, path ? path : "", create);
        if (!key) {
            *opened = nullptr;
            return ERROR_FILE_NOT_FOUND;
        }
        *opened = reinterpret_cast<HKEY>(nextHandle_ += 4);
        handles_[*opened] = key;
        return ERROR_SUCCESS;
    }

    static inline MemoryRegistry* current = nullptr;
    MemoryRegistry* former_;
    std::map<HKEY, KeyPointer> roots_, overrides_, handles_;
    ULONG_PTR nextHandle_ = 0x1000;
};
