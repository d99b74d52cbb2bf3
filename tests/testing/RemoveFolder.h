// testing/RemoveFolder.h: removes a folder with all that is in it, what is marked read-only too.
#pragma once
#include <windows.h>

#include <string>

// `folder` ends with a backslash. What another program holds open stays, and the folders around it.
inline void RemoveFolder(const std::string& folder) {
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA((folder + "*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        const std::string name = found.cFileName;
        if (name == "." || name == "..") continue;
        const std::string path = folder + name;
        SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            RemoveFolder(path + "\\");
        } else {
            DeleteFileA(path.c_str());
        }
    } while (FindNextFileA(search, &found));
    FindClose(search);
    RemoveDirectoryA(folder.c_str());
}
