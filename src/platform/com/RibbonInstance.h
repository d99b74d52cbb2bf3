// platform/com/RibbonInstance.h: what an add-in offers to a host that has a ribbon.
//
// Shapes  A ribbon's id and a callback's name are ANSI text, the XML is UTF-8. A callback is known by a number from 0
//         on. Its arguments stand in their declared order; what it returns is what the host gets: a text, a flag, a
//         number, a picture, or nothing.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/com/Sink.h"

namespace platform {

class RibbonInstance {
  public:
    static constexpr std::int32_t unknown = -1;

    // What the ribbon of that id shows of the add-in; empty for nothing.
    virtual std::string GetCustomUI(std::string_view ribbonId) = 0;
    // The callback of that name, upper and lower case being the same; unknown where there is none.
    [[nodiscard]] virtual std::int32_t FindCallback(std::string_view name) const = 0;
    virtual Argument RunCallback(std::int32_t callback, const EventArguments& arguments) = 0;

  protected:
    ~RibbonInstance() = default;
};

}  // namespace platform
