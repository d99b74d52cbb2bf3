// The paths of LogLine.h, apart for programs that write no log.
#include "support/LogLine.h"

namespace LogLine {

std::string FilePath(std::string_view folder, std::string_view product) {
    std::string name = std::string(product) + "AddIn";
    std::erase(name, ' ');
    return std::string(folder) + name + ".dbg.xml";
}

std::string WithoutQuotes(std::string_view path) {
    std::string bare(path);
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"') std::erase(bare, '"');
    return bare;
}

std::string OldFilePath(std::string_view path) {
    constexpr std::string_view ending = ".xml";
    if (path.ends_with(ending)) path.remove_suffix(ending.size());
    return std::string(path);
}

}  // namespace LogLine
