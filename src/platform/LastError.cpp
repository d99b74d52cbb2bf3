#include "platform/LastError.h"

#include <windows.h>

namespace platform {

LastErrorScope::LastErrorScope() noexcept : earlier_(GetLastError()) {}

LastErrorScope::~LastErrorScope() { SetLastError(earlier_); }

}  // namespace platform
