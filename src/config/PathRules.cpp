#include "config/PathRules.h"

#include "platform/Text.h"

using platform::Contains;
using platform::WithBackslash;

namespace WindowsMisc {
namespace {

constexpr std::size_t shortestName = 3;

std::string_view Component(std::string_view path, int number) {
    for (; number > 0; --number) {
        const std::size_t end = path.find('\\');
        if (end == std::string_view::npos) return {};
        path.remove_prefix(end + 1);
    }
    const std::size_t end = path.find('\\');
    return end == std::string_view::npos ? std::string_view() : path.substr(0, end);
}

std::string_view WithoutBackslash(std::string_view folder) {
    return platform::EndsWithBackslash(folder) ? folder.substr(0, folder.size() - 1) : folder;
}

}  // namespace

std::string UserNameIn(std::string_view appData) {
    const std::string_view name = Component(appData, 2);
    return std::string(name.size() < shortestName ? unknownUser : name);
}

std::string DriveRoot(std::string_view folder) { return std::string(folder.substr(0, 2)).append("\\"); }

std::string TemporaryFolderFrom(std::string_view named, std::string_view windowsFolder,
                                const std::function<std::string(const std::string&)>& variable,
                                const std::function<bool(const std::string&)>& folderExists) {
    std::string folder(WithoutBackslash(named));
    if (folder.size() > 2 && folder.front() == '%' && folder.back() == '%') {
        folder = variable(folder.substr(1, folder.size() - 2));
    }
    if (!folder.empty() && !Contains(folder, "%")) return WithBackslash(folder);
    if (windowsFolder.empty()) return {};
    for (const std::string& place : {WithBackslash(windowsFolder), DriveRoot(windowsFolder)}) {
        if (folderExists(place + "temp")) return place + "temp\\";
    }
    return DriveRoot(windowsFolder);
}

}  // namespace WindowsMisc
