#include "bridge/MainAppCommand.h"

#include "platform/Text.h"

namespace MainAppCommand {

std::string Call(std::string_view folder, std::string_view argument) {
    std::string line = "\"" + platform::WithBackslash(folder) + "Corvella.exe\" ";
    line.append(argument);
    if (platform::ContainsIgnoringCase(argument, "sync")) line.append(" ol");
    return line;
}

std::string Update(std::string_view folder) { return "\"" + std::string(folder) + "\\Corvella.exe\" update"; }

}  // namespace MainAppCommand
