// bench/AddIns.h: the add-ins that are measured, as files beside the measuring program.
#pragma once
#include <windows.h>

#include <objbase.h>

#include <string>

#include "testing/ClassFactory.h"

namespace Bench {

inline constexpr const char* progId = "CVOutlookAddIn.Connect";
inline constexpr CLSID ourClass{0x6B0C1E52, 0x3D8F, 0x4C0A, {0x9A, 0x5E, 0x7F, 0x21, 0xC7, 0xB4, 0xD9, 0x13}};
inline constexpr CLSID emptyClass{0xC3A1F7D0, 0x2B64, 0x4E58, {0x9D, 0x0B, 0x6F, 0x1E, 0x8A, 0x75, 0xC2, 0x04}};

// Where the add-ins and the program that they start are: beside this program.
inline std::string Folder() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    const std::string program = path;
    return program.substr(0, program.rfind('\\') + 1) + "addins";
}

struct Library {
    Library(const std::string& path, const CLSID& classId) : module(LoadLibraryA(path.c_str())), id(classId) {}
    [[nodiscard]] IUnknown* Factory() const { return ClassFactoryOf(module, id); }
    HMODULE module;
    CLSID id;
};

}  // namespace Bench
