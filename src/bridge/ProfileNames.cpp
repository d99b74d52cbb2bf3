#include "bridge/ProfileNames.h"

#include "platform/Text.h"
#include "support/ByteOrderMark.h"

namespace ProfileNames {
namespace {

constexpr std::string_view ending = ".ini";

bool HasEnding(std::string_view name) {
    return name.size() >= ending.size() && platform::SameIgnoringCase(name.substr(name.size() - ending.size()), ending);
}

}  // namespace

std::string ProfileOf(std::string_view fileName) {
    const std::string_view bare = fileName.substr(0, fileName.size() - std::min(fileName.size(), ending.size()));
    // Whoever looks for a profile adds the ending only where there is none.
    return std::string(HasEnding(fileName) && !HasEnding(bare) ? bare : fileName);
}

std::string PathOf(std::string_view folder, std::string_view profile) {
    std::string path = std::string(folder).append(profile);
    if (!path.ends_with(ending)) path.append(ending);
    return path;
}

bool IsNone(std::string_view path) {
    return path.ends_with("\\defaults.ini") || platform::ContainsIgnoringCase(path, "\\Kestrelbox") ||
           path.ends_with("_2.ini") || path.ends_with("_3.ini");
}

bool HasSettings(std::string front) {
    Files::CheckByteOrderMark(front);
    return platform::ContainsIgnoringCase(std::string_view(front).substr(0, searched), "[Settings]");
}

}  // namespace ProfileNames
