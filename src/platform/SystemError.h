// platform/SystemError.h: how a status of Windows or COM becomes the pending error.
//
// Shapes  A status is what a Windows function returns (ERROR_...) or an HRESULT, as a signed number.
// Effects sets platform::Err(); keeps the thread's last error.
#pragma once
#include <cstdint>
#include <string>

namespace platform {

// Windows' own text for a status, without the line break at its end; empty where it has none.
[[nodiscard]] std::string SystemMessage(std::int32_t status);

// Sets the pending error from a status that is a failure; 0 leaves it as it is.
// Out of memory becomes OutOfMemory, an HRESULT of the facility of Visual Basic's own numbers becomes
// that number; every other status stays as it is. An empty description is replaced by Windows' own text.
void RecordStatus(std::int32_t status, const std::string& description = {}) noexcept;

// True only for a status (ERROR_...) by which Windows says that a file or folder is not there. With every other one it
// may be there: a share that reconnects, a lock, a lack of memory.
[[nodiscard]] bool MeansMissing(std::uint32_t status) noexcept;

// The same as RecordStatus for the thread's last error.
void RecordLastError() noexcept;

}  // namespace platform
