// What the debug log needs of Windows, for a native program that never switches the log on.
#include <cstdlib>

#include "platform/Clock.h"
#include "platform/File.h"
#include "platform/LastError.h"
#include "platform/Locale.h"
#include "platform/MessageBox.h"

namespace platform {

LastErrorScope::LastErrorScope() noexcept : earlier_(0) {}
LastErrorScope::~LastErrorScope() { static_cast<void>(earlier_); }
bool AppendToFile(const std::string&, std::string_view) noexcept { std::abort(); }
float SecondsSinceMidnight() noexcept { std::abort(); }
std::string DecimalSeparator() { std::abort(); }
std::uint32_t AnsiCodePage() { std::abort(); }
std::int32_t ShowMessageBox(const std::string&, std::int32_t, const std::string&) noexcept { std::abort(); }

}  // namespace platform
