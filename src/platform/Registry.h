// platform/Registry.h: the registry's narrow functions, one call each.
//
// Shapes  Names and text are ANSI and end at their first NUL, as Windows takes them; data is bytes and may hold NULs.
//         A status is what Windows returns: 0 is success.
// Errors  returned as status; nothing is recorded, and an out value keeps what it had. Every call on a key that
//         is not open returns "invalid handle".
// Owns    a RegistryKey closes its key at its end; a predefined root is never closed.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

struct HKEY__;

namespace platform {

enum class Root : std::uint32_t {
    ClassesRoot = 0x80000000u,
    CurrentUser = 0x80000001u,
    LocalMachine = 0x80000002u,
};

// Windows' own handle of a root, whose sign goes on in 64 bits.
[[nodiscard]] inline HKEY__* Handle(Root root) noexcept {
    return reinterpret_cast<HKEY__*>(static_cast<std::uintptr_t>(static_cast<std::int32_t>(root)));
}

enum RegistryStatus : std::int32_t { RegistryDone = 0, RegistryNotFound = 2 };

// Windows' own type numbers, those that this system reads or writes.
enum RegistryType : std::uint32_t { RegistryText = 1, RegistryExpandText = 2, RegistryBinary = 3, RegistryNumber = 4 };

class RegistryKey {
  public:
    RegistryKey() noexcept = default;
    RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    RegistryKey& operator=(RegistryKey&& other) noexcept;
    ~RegistryKey() { Close(); }

    std::int32_t Open(Root root, const std::string& subkey) noexcept;
    // Opens the key, and makes it and what is missing above it.
    std::int32_t Create(Root root, const std::string& subkey) noexcept;
    void Close() noexcept;
    [[nodiscard]] explicit operator bool() const noexcept { return key_ != nullptr; }

    // The value's type and its size in bytes.
    [[nodiscard]] std::int32_t Query(const std::string& name, std::uint32_t& type, std::uint32_t& size) const noexcept;
    // Reads at most `size` bytes and returns in it how many there were.
    [[nodiscard]] std::int32_t Read(const std::string& name, void* data, std::uint32_t& size) const noexcept;
    // Stores exactly the text's bytes: no NUL behind them.
    [[nodiscard]] std::int32_t WriteText(const std::string& name, std::string_view text) const;
    [[nodiscard]] std::int32_t WriteNumber(const std::string& name, std::uint32_t number) const noexcept;
    // True only where Windows says that it holds neither values nor subkeys.
    [[nodiscard]] bool IsEmpty() const noexcept;
    [[nodiscard]] std::int32_t RemoveValue(const std::string& name) const noexcept;

  private:
    HKEY__* key_ = nullptr;
};

// Fails on a key that has subkeys.
[[nodiscard]] std::int32_t RemoveKey(Root root, const std::string& subkey) noexcept;

}  // namespace platform
