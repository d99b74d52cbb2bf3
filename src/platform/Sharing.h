// platform/Sharing.h: how this system opens files that others may use at the same time.
#pragma once
#include <windows.h>

namespace platform {

inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

}  // namespace platform
