#include "shell/HelpWindow.h"

namespace HelpWindow {
namespace {

constexpr std::int32_t narrow = 600, low = 500;
constexpr platform::Size smallScreen{800, 700};
constexpr platform::Size onLargeScreen{1000, 700}, onSmallScreen{800, 600};

}  // namespace

std::optional<platform::Rect> Enlarge(const platform::Rect& window, platform::Size screen) {
    platform::Rect enlarged = window;
    if (window.width < narrow) {
        enlarged.width = screen.width > smallScreen.width ? onLargeScreen.width : onSmallScreen.width;
        enlarged.left = window.Right() - enlarged.width;
        if (enlarged.left <= 0) return std::nullopt;
    }
    if (window.height < low) {
        enlarged.height = screen.height > smallScreen.height ? onLargeScreen.height : onSmallScreen.height;
    }
    if (enlarged == window) return std::nullopt;
    return enlarged;
}

}  // namespace HelpWindow
