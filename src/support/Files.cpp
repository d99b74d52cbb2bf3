#include "support/Files.h"

#include <utility>

#include "platform/Module.h"
#include "support/FilePaths.h"

namespace Files {
namespace {

PathSource applicationPath = nullptr;

}  // namespace

std::string AppFolder() {
    return AppFolderOf(applicationPath == nullptr ? platform::ModuleFolder() : applicationPath());
}

PathSource PlugApplicationPath(PathSource source) noexcept { return std::exchange(applicationPath, source); }

}  // namespace Files
