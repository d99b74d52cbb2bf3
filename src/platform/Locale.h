// platform/Locale.h: how the user's system writes numbers.
#pragma once
#include <string>

namespace platform {

// The user's decimal separator; "." where Windows does not tell.
[[nodiscard]] std::string DecimalSeparator();

}  // namespace platform
