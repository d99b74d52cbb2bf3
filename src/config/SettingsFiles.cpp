#include "config/SettingsFiles.h"

#include "platform/Text.h"
#include "support/FilePaths.h"

using platform::ToLower;

namespace SettingsFiles {
namespace {

std::string_view LastComponent(std::string_view folder) {
    if (platform::EndsWithBackslash(folder)) folder.remove_suffix(1);
    return Files::GetFileNamePart(folder);
}

}  // namespace

std::string BaseFileIn(const std::string& folder) {
    const bool pageRelay = ToLower(LastComponent(folder)) == "pagerelay";
    return std::string(folder).append(pageRelay ? "settings.ini" : Base);
}

bool IsBaseProfile(const std::string& profile, std::string_view defaultProfile) {
    const std::string lowered = ToLower(profile);
    return profile.empty() || profile == defaultProfile || lowered == "standard" || lowered == "standard.ini";
}

std::string ProfileFileIn(const std::string& folder, const std::string& profile) {
    std::string file = platform::Contains(profile, ":\\") ? profile : std::string(folder).append(profile);
    if (!ToLower(file).ends_with(".ini")) file.append(".ini");
    return file;
}

}  // namespace SettingsFiles
