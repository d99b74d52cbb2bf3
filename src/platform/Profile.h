// platform/Profile.h: Windows' own reader of ini files.
#pragma once
#include <string>

namespace platform {

// As GetPrivateProfileStringA returns it, however long; names and file end at their first NUL.
[[nodiscard]] std::string ProfileText(const std::string& file, const std::string& section, const std::string& key,
                                      const std::string& otherwise);

}  // namespace platform
