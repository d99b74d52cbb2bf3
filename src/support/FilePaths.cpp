#include "support/FilePaths.h"

#include "platform/Text.h"

std::string Files::AppFolderOf(std::string_view applicationPath) {
    std::string folder = platform::WithBackslash(applicationPath);
    const std::size_t developmentTree = folder.find("\\j Projects\\");
    if (developmentTree != std::string::npos) folder.resize(developmentTree + 1);
    return folder;
}
