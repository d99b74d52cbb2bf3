// program/ClassServer.h: the running program as clients in other processes reach it, by CreateObject of a script or by
// CoCreateInstance(CLSCTX_LOCAL_SERVER): each gets the one Application object, as with Outlook.
//
// The names are the stand-in's own, so that a real Outlook on the same machine keeps its. A client finds the class
// while the program runs; COM does not start the program for it.
//
// Errors  A class that could not be offered is not Offered(); the program runs without it.
// Effects RegisterServer and UnregisterServer write HKEY_CLASSES_ROOT; false when Windows refused a part.
#pragma once
#include <windows.h>

#include <unknwn.h>

#include "outlook/Outlook.h"

namespace program {

inline constexpr const char* serverProgId = "OutlookStandIn.Application";

class ClassServer {
  public:
    explicit ClassServer(standin::Outlook& outlook);
    ~ClassServer();
    ClassServer(const ClassServer&) = delete;
    ClassServer& operator=(const ClassServer&) = delete;

    [[nodiscard]] bool Offered() const { return cookie_ != 0; }

  private:
    DWORD cookie_ = 0;
};

[[nodiscard]] bool RegisterServer();
[[nodiscard]] bool UnregisterServer();

}  // namespace program
