#include "outlook/program/Starts.h"

#include <windows.h>

#include <string_view>

namespace program {
namespace {

std::string RecordFile() {
    char folder[MAX_PATH] = {};
    DWORD size = sizeof folder - 1;
    HKEY key = nullptr;
    if (RegOpenKeyA(HKEY_CURRENT_USER, "Software\\Quillmark\\Corvella", &key) != ERROR_SUCCESS) return {};
    const LONG status = RegQueryValueExA(key, "Path", nullptr, nullptr, reinterpret_cast<BYTE*>(folder), &size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS ? std::string(folder) + "\\Corvella.record.txt" : std::string();
}

std::string Contents(const std::string& path) {
    const HANDLE file =
        CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return {};
    std::string text(GetFileSize(file, nullptr), '\0');
    DWORD size = 0;
    ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &size, nullptr);
    CloseHandle(file);
    text.resize(size);
    return text;
}

std::string Unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        const char sign = value[++i];
        text += sign == 't' ? '\t' : sign == 'r' ? '\r' : sign == 'n' ? '\n' : sign;
    }
    return text;
}

CorvellaStart Read(std::string_view line) {
    CorvellaStart start;
    while (!line.empty()) {
        const std::string_view field = line.substr(0, line.find('\t'));
        line.remove_prefix(field.size() < line.size() ? field.size() + 1 : field.size());
        const std::size_t equals = field.find('=');
        if (equals == std::string_view::npos) continue;
        const std::string_view name = field.substr(0, equals);
        const std::string value = Unescaped(field.substr(equals + 1));
        if (name == "show") start.show = std::atoi(value.c_str());
        if (name == "ChangedA") start.appointments = value;
        if (name == "ChangedC") start.contacts = value;
        if (name == "ChangedT") start.tasks = value;
        if (name == "command") start.commandLine = value;
    }
    return start;
}

}  // namespace

std::vector<CorvellaStart> StartsOfCorvella() {
    std::vector<CorvellaStart> starts;
    const std::string record = Contents(RecordFile());
    std::size_t begin = 0;
    for (std::size_t end = record.find("\r\n"); end != std::string::npos; end = record.find("\r\n", begin)) {
        starts.push_back(Read(std::string_view(record).substr(begin, end - begin)));
        begin = end + 2;
    }
    return starts;
}

}  // namespace program
