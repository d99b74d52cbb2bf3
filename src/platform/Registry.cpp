#include "platform/Registry.h"

#include <windows.h>

namespace platform {
namespace {

bool IsPredefined(HKEY key) { return (reinterpret_cast<ULONG_PTR>(key) & 0x80000000u) != 0; }

}  // namespace

RegistryKey& RegistryKey::operator=(RegistryKey&& other) noexcept {
    if (this != &other) {
        Close();
        key_ = std::exchange(other.key_, nullptr);
    }
    return *this;
}

std::int32_t RegistryKey::Open(Root root, const std::string& subkey) noexcept {
    Close();
    HKEY key = nullptr;
    const LONG status = RegOpenKeyA(Handle(root), subkey.c_str(), &key);
    if (status == ERROR_SUCCESS) key_ = key;
    return status;
}

std::int32_t RegistryKey::Create(Root root, const std::string& subkey) noexcept {
    Close();
    HKEY key = nullptr;
    const LONG status = RegCreateKeyA(Handle(root), subkey.c_str(), &key);
    if (status == ERROR_SUCCESS) key_ = key;
    return status;
}

void RegistryKey::Close() noexcept {
    const HKEY key = std::exchange(key_, nullptr);
    if (key == nullptr || IsPredefined(key)) return;
    const DWORD lastError = GetLastError();
    RegCloseKey(key);
    SetLastError(lastError);
}

std::int32_t RegistryKey::Query(const std::string& name, std::uint32_t& type, std::uint32_t& size) const noexcept {
    DWORD foundType = 0;
    DWORD foundSize = 0;
    const LONG status = RegQueryValueExA(key_, name.c_str(), nullptr, &foundType, nullptr, &foundSize);
    if (status != ERROR_SUCCESS) return status;
    type = foundType;
    size = foundSize;
    return status;
}

std::int32_t RegistryKey::Read(const std::string& name, void* data, std::uint32_t& size) const noexcept {
    DWORD room = size;
    const LONG status = RegQueryValueExA(key_, name.c_str(), nullptr, nullptr, static_cast<BYTE*>(data), &room);
    if (status == ERROR_SUCCESS) size = room;
    return status;
}

std::int32_t RegistryKey::WriteText(const std::string& name, std::string_view text) const {
    // Windows counts a NUL that stands right behind the text as part of it, so something else stands there.
    std::string bytes;
    bytes.reserve(text.size() + 1);
    bytes.append(text).push_back('.');
    return RegSetValueExA(key_, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(bytes.data()),
                          static_cast<DWORD>(text.size()));
}

std::int32_t RegistryKey::WriteNumber(const std::string& name, std::uint32_t number) const noexcept {
    return RegSetValueExA(key_, name.c_str(), 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
}

std::int32_t RegistryKey::RemoveValue(const std::string& name) const noexcept {
    return RegDeleteValueA(key_, name.c_str());
}

bool RegistryKey::IsEmpty() const noexcept {
    DWORD subkeys = 0;
    DWORD values = 0;
    const LONG status = RegQueryInfoKeyA(key_, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values, nullptr,
                                         nullptr, nullptr, nullptr);
    return status == ERROR_SUCCESS && subkeys == 0 && values == 0;
}

std::int32_t RemoveKey(Root root, const std::string& subkey) noexcept {
    return RegDeleteKeyA(Handle(root), subkey.c_str());
}

}  // namespace platform
