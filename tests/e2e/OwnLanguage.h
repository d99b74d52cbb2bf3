// e2e/OwnLanguage.h: a user whose language file is a given text.
#pragma once
#include <doctest.h>

#include <string>

#include "e2e/Session.h"
#include "testing/TempFolder.h"

namespace e2e {

// The library comes fresh into the process and leaves it again, because it reads its language once.
class OwnLanguage {
  public:
    explicit OwnLanguage(const std::string& text) {
        REQUIRE(Unloaded());
        folder_.Write("Own.lng", text);
        folder_.Write("corvella.ini", "[Settings]\r\nLanguage=" + folder_.Path("Own.lng") + "\r\n");
    }
    ~OwnLanguage() { CHECK(UnloadLibrary()); }
    OwnLanguage(const OwnLanguage&) = delete;
    OwnLanguage& operator=(const OwnLanguage&) = delete;

    void Start(Session& session) const {
        WriteValue(productKey, "IniFiles", folder_.Path());
        session.host.Start();
    }

  private:
    // A session that ended a moment ago may have left a timer, which holds the library until it has fired.
    static bool Unloaded() {
        for (int i = 0; i < 40; ++i) {
            if (UnloadLibrary()) return true;
            Pump(50);
        }
        return false;
    }

    TempFolder folder_;
};

}  // namespace e2e
