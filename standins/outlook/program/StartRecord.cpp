#include "outlook/program/StartRecord.h"

#include <windows.h>

#include <cstdlib>
#include <string_view>

namespace program {
namespace {

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

std::string Unescape(std::string_view value) {
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

NotedStart Read(std::string_view line) {
    NotedStart start;
    while (!line.empty()) {
        const std::string_view field = line.substr(0, line.find('\t'));
        line.remove_prefix(field.size() < line.size() ? field.size() + 1 : field.size());
        const std::size_t equals = field.find('=');
        if (equals == std::string_view::npos) continue;
        start.fields[std::string(field.substr(0, equals))] = Unescape(field.substr(equals + 1));
    }
    start.commandLine = start.fields["command"];
    start.note = start.fields["note"];
    const std::string& show = start.fields["show"];
    if (!show.empty()) start.show = std::atoi(show.c_str());
    return start;
}

}  // namespace

std::vector<NotedStart> ReadStarts(const std::string& path) {
    std::vector<NotedStart> starts;
    const std::string record = path.empty() ? std::string() : Contents(path);
    std::size_t begin = 0;
    for (std::size_t end = record.find("\r\n"); end != std::string::npos; end = record.find("\r\n", begin)) {
        starts.push_back(Read(std::string_view(record).substr(begin, end - begin)));
        begin = end + 2;
    }
    return starts;
}

}  // namespace program
