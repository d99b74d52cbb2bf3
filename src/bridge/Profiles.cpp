#include "bridge/Profiles.h"

#include "bridge/ProfileNames.h"
#include "config/InifileCV.h"
#include "platform/Err.h"
#include "platform/File.h"
#include "support/Debug.h"

namespace Profiles {
namespace {

constexpr std::int32_t inFiles = 0;  // profiles are files, wherever the settings are kept

[[nodiscard]] bool IsProfile(const std::string& path) {
    if (ProfileNames::IsNone(path)) return false;
    return ProfileNames::HasSettings(platform::ReadFront(path, ProfileNames::bytesToRead));
}

}  // namespace

void GetProfiles(std::vector<std::string>& list) {
    const platform::ErrorScope ignored;
    const Debug::Trace trace("GetProfiles");
    const std::string folder = InifileCV::GetIniFilename_(inFiles);
    list = platform::FileNames(folder, "*.ini");
    for (std::string& name : list) {
        name = ProfileNames::ProfileOf(name);
        if (!IsProfile(ProfileNames::PathOf(folder, name))) name.clear();
    }
}

}  // namespace Profiles
