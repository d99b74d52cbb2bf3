// testing/DebugLog.h: the debug log switched on for the life of one test, in a file of its own.
#pragma once
#include <string>

#include "support/Debug.h"
#include "testing/TempFolder.h"

class DebugLog {
  public:
    DebugLog() : earlier_(Debug::state) {
        Debug::state = {};
        Debug::state.DebugActive = true;
        Debug::state.DebugLevel = 1;
        Debug::state.DebugFile = folder_.Path("log");
    }
    ~DebugLog() { Debug::state = earlier_; }
    DebugLog(const DebugLog&) = delete;
    DebugLog& operator=(const DebugLog&) = delete;

    [[nodiscard]] std::string Text() const { return folder_.Read("log"); }
    [[nodiscard]] bool Holds(const std::string& line) const { return Text().find(line) != std::string::npos; }

  private:
    TempFolder folder_;
    Debug::State earlier_;
};
