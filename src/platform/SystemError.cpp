#include "platform/SystemError.h"

#include <windows.h>

#include "platform/Err.h"

namespace platform {
namespace {

constexpr std::uint32_t controlFacility = 0x800A0000u;

std::int32_t NumberOf(std::int32_t status) {
    const auto bits = static_cast<std::uint32_t>(status);
    if (status == static_cast<std::int32_t>(E_OUTOFMEMORY) || status == ERROR_NOT_ENOUGH_MEMORY ||
        status == ERROR_OUTOFMEMORY) {
        return OutOfMemory;
    }
    if ((bits & 0xFFFF0000u) == controlFacility) return static_cast<std::int32_t>(bits & 0xFFFFu);
    return status;
}

}  // namespace

std::string SystemMessage(std::int32_t status) {
    char buffer[512];
    const DWORD flags = FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
    DWORD length = FormatMessageA(flags, nullptr, static_cast<DWORD>(status), 0, buffer,
                                  static_cast<DWORD>(sizeof buffer), nullptr);
    while (length > 0 && (buffer[length - 1] == '\n' || buffer[length - 1] == '\r' || buffer[length - 1] == ' ')) {
        --length;
    }
    return std::string(buffer, length);
}

void RecordStatus(std::int32_t status, const std::string& description) noexcept {
    if (status == 0) return;
    const DWORD lastError = GetLastError();
    try {
        Err().Set(NumberOf(status), description.empty() ? SystemMessage(status) : description);
    } catch (...) {
        Err().Set(NumberOf(status), {});
    }
    SetLastError(lastError);
}

bool MeansMissing(std::uint32_t status) noexcept {
    switch (status) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_DRIVE:
        case ERROR_INVALID_NAME:
        case ERROR_BAD_PATHNAME: return true;
        default: return false;
    }
}

void RecordLastError() noexcept { RecordStatus(static_cast<std::int32_t>(GetLastError())); }

}  // namespace platform
