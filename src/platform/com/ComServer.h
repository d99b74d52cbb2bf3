// platform/com/ComServer.h: the in-process server around the add-in class - its COM object, class factory,
// self-registration and the library's four entry points, so that the add-in itself needs no OLE header.
//
// Shapes  A class id is text in braces, "{8-4-4-4-12}". Modes are the numbers of the Office add-in interface.
// Errors  Every call of the host is guarded (Guard.h) and returns S_OK, whatever happened in it.
// Owns    One AddinInstance a COM object; the library stays loaded while an object, a lock of the factory or
//         a KeepLoaded (Module.h) lives.
// Use     The add-in defines Server(); cv_addin_library (cmake/AddinLibrary.cmake) adds entry points and exports.
#pragma once
#include <cstdint>

#include "platform/com/ServerDescription.h"

namespace platform {

class Dispatch;
class RibbonInstance;

// The add-in class as Outlook drives it.
class AddinInstance {
  public:
    AddinInstance() = default;
    AddinInstance(const AddinInstance&) = delete;
    AddinInstance& operator=(const AddinInstance&) = delete;
    virtual ~AddinInstance() = default;

    // connectMode: 0 after start-up, 1 at start-up.
    virtual void AddinInstance_OnConnection(const Dispatch& application, std::int32_t connectMode,
                                            const Dispatch& addInInst) = 0;
    // removeMode: 0 the host ends, 1 the user unloaded the add-in.
    virtual void AddinInstance_OnDisconnection(std::int32_t removeMode) = 0;
    virtual void AddinInstance_OnAddInsUpdate() = 0;
    virtual void AddinInstance_OnStartupComplete() {}
    virtual void AddinInstance_OnBeginShutdown() = 0;
    // What the add-in offers to a host with a ribbon, for as long as this object lives; null for nothing.
    virtual RibbonInstance* Ribbon() noexcept { return nullptr; }
    // The host has let go of the object.
    virtual void AddinInstance_Terminate() = 0;
};

}  // namespace platform
