// testing/AddInHouse.h: the add-in's own folder with its language files, its settings file and a registry of its own,
// all fresh, for the life of one test; nothing of them is loaded yet.
#pragma once
#include <windows.h>

#include <string>

#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"

class AddInHouse {
  public:
    explicit AddInHouse(const std::string& language = "English") {
        path = folder.Path();
        earlierPath_ = Files::Plug({.applicationPath = [] { return path; }});
        IniFile::location = {folder.Path("Corvella.ini"), folder.Path("Corvella.ini"), 0};
        IniFile::IniInit(false);
        Language::state = {};
        Debug::state = {};
        platform::Err().Clear();
        const std::string source = std::string(CV_LANGUAGE_FOLDER) + "/";
        for (const std::string& name : {language, std::string("English")}) {
            CopyFileA((source + name + ".lng").c_str(), folder.Path(name + ".lng").c_str(), FALSE);
        }
        IniFile::SetIniSettingDefault("Settings", "Language", language, true);
    }
    ~AddInHouse() {
        IniFile::location = {};
        IniFile::IniInit(false);
        Files::Plug(earlierPath_);
        Language::state = {};
        Debug::state = {};
    }
    AddInHouse(const AddInHouse&) = delete;
    AddInHouse& operator=(const AddInHouse&) = delete;

    [[nodiscard]] std::string Settings() const { return folder.Read("Corvella.ini"); }

    PrivateRegistry registry;
    TempFolder folder;

  private:
    inline static std::string path;
    Files::Ports earlierPath_;
};
