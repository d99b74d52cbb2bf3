#include "support/FilePaths.h"

#include "platform/Text.h"

std::string Files::AppFolderOf(std::string_view applicationPath) {
    std::string folder = platform::WithBackslash(applicationPath);
    const std::size_t developmentTree = folder.find("\\j Projects\\");
    if (developmentTree != std::string::npos) folder.resize(developmentTree + 1);
    return folder;
}

std::string Files::WithoutQuotesAround(std::string_view path) {
    const bool quoted = path.size() >= 2 && path.front() == '"' && path.back() == '"';
    if (quoted && !platform::Contains(path, " ")) path = path.substr(1, path.size() - 2);
    return std::string(path);
}

std::string_view Files::GetFileNamePart(std::string_view path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string_view::npos ? path : path.substr(last + 1);
}

std::string_view Files::FolderPart(std::string_view path) {
    const std::size_t last = path.rfind('\\');
    return last == std::string_view::npos ? std::string_view() : path.substr(0, last);
}

bool Files::LooksLikeFolder(std::string_view path) {
    return platform::Contains(path, "\\") && !platform::Contains(GetFileNamePart(path), ".");
}

std::string Files::WritablePath(std::string_view path) {
    return platform::Replace(platform::Replace(path, "?", "_"), "/", "_");
}
