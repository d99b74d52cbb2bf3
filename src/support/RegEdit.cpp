#include "support/RegEdit.h"

#include <cmath>
#include <limits>
#include <optional>

#include "platform/Err.h"
#include "platform/SystemError.h"
#include "platform/Text.h"
#include "support/Debug.h"

using Debug::WriteDebug;
using platform::RegistryKey;

namespace RegEdit {
namespace {

constexpr std::int32_t unsupportedType = -1;
constexpr std::int32_t moreData = 234;  // ERROR_MORE_DATA
constexpr int mostReads = 10;

// `text` keeps what it had when the value is missing or of another type.
std::int32_t QueryValueEx(const RegistryKey& key, const std::string& name, std::string& text) {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (const std::int32_t status = key.Query(name, type, size); status != platform::RegistryDone) return status;
    switch (type) {
        case platform::RegistryText:
        case platform::RegistryExpandText:
        case platform::RegistryBinary: {
            std::string data;
            std::int32_t status = moreData;
            // Another process may make the value longer between the question for its size and the read.
            for (int reads = 0; status == moreData && reads < mostReads; ++reads) {
                if (reads > 0 && key.Query(name, type, size) != platform::RegistryDone) break;
                data.assign(size, '\0');
                status = key.Read(name, data.data(), size);
            }
            data.resize(status == platform::RegistryDone ? size : 0);
            text = std::move(data);
            return status;
        }
        case platform::RegistryNumber: {
            std::int32_t number = 0;
            size = sizeof number;
            const std::int32_t status = key.Read(name, &number, size);
            if (status == platform::RegistryDone) text = platform::Decimal(number);
            return status;
        }
        default: return unsupportedType;
    }
}

// The status of the reading; `text` as QueryValueEx leaves it, without one NUL at its end.
std::int32_t ReadText(Root root, std::string_view subkey, std::string_view name, std::string& text) {
    RegistryKey key;
    std::int32_t status = key.Open(root, std::string(subkey));
    if (status == platform::RegistryDone) status = QueryValueEx(key, std::string(name), text);
    if (!text.empty() && text.back() == '\0') text.pop_back();
    return status;
}

// A value that is not there is as good as removed.
std::int32_t RemoveIfThere(const RegistryKey& key, const std::string& name) {
    const std::int32_t status = key.RemoveValue(name);
    return status == platform::RegistryNotFound ? platform::RegistryDone : status;
}

std::int32_t SetValueExString(const RegistryKey& key, const std::string& name, std::string_view text) {
    return text.empty() ? RemoveIfThere(key, name) : key.WriteText(name, text);
}

std::int32_t SetValueExLong(const RegistryKey& key, const std::string& name, std::int32_t number) {
    if (number == 0) return RemoveIfThere(key, name);
    const auto bits = static_cast<std::uint32_t>(number);
    if (key.WriteNumber(name, bits) == platform::RegistryDone) return platform::RegistryDone;
    RemoveIfThere(key, name);
    return key.WriteNumber(name, bits);
}

// Rounded down; none, and the error pending, where `text` is no number or not one of 32 bits.
std::optional<std::int32_t> NumberToStore(std::string_view text) {
    const std::optional<double> number = platform::WholeNumber(text);
    if (!number) {
        platform::Err().Set(platform::TypeMismatch, "Type mismatch");
        return std::nullopt;
    }
    const double below = std::floor(*number);
    if (below < std::numeric_limits<std::int32_t>::min() || below > std::numeric_limits<std::int32_t>::max()) {
        platform::Err().Set(platform::Overflow, "Overflow");
        return std::nullopt;
    }
    return static_cast<std::int32_t>(below);
}

// False when the text cannot be stored as a value of this type.
bool Write(const RegistryKey& key, const std::string& name, std::string_view text, std::int32_t type) {
    if (type == TypeText) platform::RecordStatus(SetValueExString(key, name, text));
    if (type == TypeNumber) {
        const std::optional<std::int32_t> number = NumberToStore(text);
        if (!number) return false;
        platform::RecordStatus(SetValueExLong(key, name, *number));
    }
    return true;
}

void LogPendingError(Root root, std::string_view subkey, std::string_view name) {
    if (!platform::Err()) return;
    std::string entry = "RegEdit error: " + platform::UpperHex(static_cast<std::uint32_t>(root)) + ": ";
    entry.append(subkey).append(" ").append(name);
    WriteDebug(entry, -1);
}

bool SaveBelow(Root root, const std::string& subkey, std::string_view name, std::string_view text, std::int32_t type) {
    const platform::ErrorScope ownErrors;
    RegistryKey key;
    platform::RecordStatus(key.Create(root, subkey));
    const bool storable = !key || Write(key, std::string(name), text, type);
    key.Close();
    LogPendingError(root, subkey, name);
    return storable && GetRegString(root, subkey, name) == text;
}

void RemoveWholeKey(Root root, std::string_view subkey) {
    const platform::ErrorScope ownErrors;
    const std::int32_t status = platform::RemoveKey(root, std::string(subkey));
    if (status != platform::RegistryNotFound) platform::RecordStatus(status);
    LogPendingError(root, subkey, {});
}

}  // namespace

std::string GetRegString(Root root, std::string_view subkey, std::string_view name) noexcept {
    try {
        std::string text;
        ReadText(root, subkey, name, text);
        return text;
    } catch (...) {
        return {};
    }
}

std::optional<std::string> ReadRegString(Root root, std::string_view subkey, std::string_view name) noexcept {
    for (int reads = 0; reads < mostReads; ++reads) {
        try {
            std::string text;
            const std::int32_t status = ReadText(root, subkey, name, text);
            if (status == platform::RegistryDone) return text;
            if (platform::MeansMissing(static_cast<std::uint32_t>(status))) return std::string();
            if (status == unsupportedType) return std::nullopt;
        } catch (...) {  // no memory for it: perhaps the next time
        }
    }
    return std::nullopt;
}

bool SaveRegValue(Root root, std::string& subkey, std::string_view name, std::string_view text,
                  std::int32_t type) noexcept {
    if (subkey.empty()) return false;
    try {
        if (subkey.front() == '\\') subkey.erase(0, 1);
        return SaveBelow(root, subkey, name, text, type);
    } catch (...) {
        return false;
    }
}

bool SaveRegValue(Root root, std::string_view subkey, std::string_view name, std::string_view text,
                  std::int32_t type) noexcept {
    try {
        std::string own(subkey);
        return SaveRegValue(root, own, name, text, type);
    } catch (...) {
        return false;
    }
}

bool DeleteRegValue(Root root, std::string_view subkey, std::string_view name) noexcept {
    try {
        if (name.empty()) {
            RemoveWholeKey(root, subkey);
            return true;
        }
        if (GetRegString(root, subkey, name).empty()) return true;
        // Twice: of a value that somebody writes anew meanwhile, the second one is the answer.
        SaveRegValue(root, subkey, name, {}, TypeText);
        return SaveRegValue(root, subkey, name, {}, TypeText);
    } catch (...) {
        return name.empty();
    }
}

void DeleteDefaultValue(Root root, std::string_view subkey) noexcept {
    try {
        RegistryKey key;
        if (key.Open(root, std::string(subkey)) != platform::RegistryDone) return;
        RemoveIfThere(key, {});
        const bool empty = key.IsEmpty();
        key.Close();
        if (empty) RemoveWholeKey(root, subkey);
    } catch (...) {  // it stays
    }
}

}  // namespace RegEdit
