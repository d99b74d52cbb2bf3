// testing/OwnTemp.h: a folder of the test's as the folder of temporary files, for this process and what it starts, for as
// long as it lives.
#pragma once
#include <windows.h>

#include <string>

class OwnTemp {
  public:
    explicit OwnTemp(const std::string& folder) {
        for (const char* name : {"TMP", "TEMP"}) {
            char value[MAX_PATH] = {};
            GetEnvironmentVariableA(name, value, sizeof value);
            (name[1] == 'M' ? tmp_ : temp_) = value;
            SetEnvironmentVariableA(name, folder.c_str());
        }
    }
    ~OwnTemp() {
        SetEnvironmentVariableA("TMP", tmp_.c_str());
        SetEnvironmentVariableA("TEMP", temp_.c_str());
    }
    OwnTemp(const OwnTemp&) = delete;
    OwnTemp& operator=(const OwnTemp&) = delete;

  private:
    std::string tmp_, temp_;
};
