// outlook/ribbon/RibbonView.h: a window's ribbon as a user sees it, and how the host deals with ribbons.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace standin {

// A picture with transparency: rows from the top, 0xAARRGGBB, the colours multiplied by their alpha.
struct AlphaPixels {
    int width = 0, height = 0;
    std::vector<std::uint32_t> colours;
    [[nodiscard]] std::uint32_t At(int x, int y) const { return colours.at(static_cast<std::size_t>(y * width + x)); }
};

// A control that an add-in has put on a ribbon or into a context menu. What a callback tells is as it was when the
// host last asked.
struct RibbonControlView {
    std::string progId;  // of the add-in
    std::string kind;    // "button", "toggleButton", "menu", "splitButton", "menuSeparator", "separator" ...
    std::string id, tag, label, screentip, keytip;
    bool large = false, visible = true, enabled = true;
    AlphaPixels image;                        // empty where it has none
    std::vector<RibbonControlView> controls;  // of a menu
    explicit operator bool() const { return !kind.empty(); }
};

struct RibbonGroupView {
    std::string id, label;
    std::vector<RibbonControlView> controls;
};

struct RibbonTabView {
    std::string name;  // idMso of a built-in one, else its id
    std::string label, keytip;
    std::vector<RibbonGroupView> groups;  // of add-ins; the host's own are not told
};

// When the Explorer's ribbon is asked for at start: the sources disagree.
enum class RibbonAsked { BeforeStartupComplete, AfterStartupComplete, AfterActivate, Never };
// What a control's Context is.
enum class RibbonContext { AsDocumented, Nothing, AnotherObject, ClosedWindow };

struct RibbonOptions {
    RibbonAsked asked = RibbonAsked::BeforeStartupComplete;
    RibbonContext context = RibbonContext::AsDocumented;
    bool refuseAll = false;                     // every XML is refused, without a word to the add-in
    std::vector<std::string> missingIds = {};   // built-in names that this host has not
    std::vector<std::string> askedBefore = {};  // ids of other ribbons that are asked for at start
};

}  // namespace standin
