// program/ClassServer.h: the running program as clients in other processes reach it, by CreateObject of a script or by
// CoCreateInstance(CLSCTX_LOCAL_SERVER):
//
//   OutlookStandIn.Application  the one Application object, as with Outlook
//   OutlookStandIn.User         somebody in front of the program, who sees and clicks the ribbon (outlook/UserObjects.h)
//
// The names are the stand-in's own, so that a real Outlook on the same machine keeps its. A client finds the class
// while the program runs; COM does not start the program for it.
//
// Errors  A class that could not be offered is not Offered(); the program runs without it.
// Effects RegisterServer and UnregisterServer write HKEY_CLASSES_ROOT; false when Windows refused a part.
#pragma once
#include <windows.h>

#include <unknwn.h>

#include <vector>

#include "outlook/Outlook.h"

namespace program {

class ClassServer {
  public:
    explicit ClassServer(standin::Outlook& outlook);
    ~ClassServer();
    ClassServer(const ClassServer&) = delete;
    ClassServer& operator=(const ClassServer&) = delete;

    [[nodiscard]] bool Offered() const { return offered_; }

  private:
    std::vector<DWORD> cookies_;
    bool offered_ = false;  // all of them
};

[[nodiscard]] bool RegisterServer();
[[nodiscard]] bool UnregisterServer();

}  // namespace program
