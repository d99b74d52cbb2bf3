// platform/com/ServerDescription.h: what the library serves to COM and Outlook, and under which names.
//
// Shapes  A class id is text in braces, "{8-4-4-4-12}"; the load behaviour is Office's number.
#pragma once
#include <cstdint>
#include <memory>

namespace platform {

class AddinInstance;

struct ServerDescription {
    const char* clsid;
    const char* progId;
    const char* className;
    const char* friendlyName;
    const char* description;
    std::uint32_t loadBehavior;
    std::unique_ptr<AddinInstance> (*factory)();
    // The library may be unloaded: lets go of objects that are kept without an add-in; null: there are none.
    void (*letGo)() = nullptr;
};

// Defined by the add-in; called after the library's load, not during it.
[[nodiscard]] const ServerDescription& Server();

}  // namespace platform
