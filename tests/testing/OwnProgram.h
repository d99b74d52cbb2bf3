// testing/OwnProgram.h: where the running test is; what it needs lies beside it.
#pragma once
#include <windows.h>

#include <string>

namespace own_program {

inline std::string Path() {
    char path[MAX_PATH] = "";
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

// With a backslash at its end.
inline std::string Folder() {
    const std::string path = Path();
    return path.substr(0, path.rfind('\\') + 1);
}

// "x.exe"
inline std::string Name() { return Path().substr(Folder().size()); }

}  // namespace own_program
