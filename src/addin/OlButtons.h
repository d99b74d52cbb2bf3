// addin/OlButtons.h: every control that the add-in puts into the host's command bars.
//
// Shapes  A button's number is its tag, the prefix of its placement values in the registry ("103Bar", "103Pos",
//         "103Style", "103Sep") and its picture's resource number (mask: 100 more). Positions count from 1; one
//         below 1 appends. An owner is an Explorer or an Inspector.
// Errors  What the host refuses is left out: no bar falls back to "Standard", no control yields an empty object,
//         no picture a button without a face. The pending error tells of the last refusal.
// Effects host calls; before Outlook 2003 each picture goes by the clipboard, which gets back what it held.
#pragma once
#include <cstdint>
#include <string_view>

#include "platform/com/Dispatch.h"
#include "platform/com/Picture.h"

namespace OlButtons {

// A new temporary toolbar button; an old one of the same number and add-in on that bar is deleted first. The
// user's placement values in the registry go before the defaults.
[[nodiscard]] platform::Dispatch AddCommandBarButton(const platform::Dispatch& owner, std::int32_t number,
                                                     std::string_view progId, std::string_view caption,
                                                     std::string_view parameter, bool defaultSeparator,
                                                     std::int32_t defaultStyle, std::int32_t defaultPosition);

// A new temporary entry at the end of the controls of a popup, which are read once for all entries. `key` has
// no effect; `faceId` below 0 and `pictureNumber` 0 mean none.
[[nodiscard]] platform::Dispatch AddMenuItem(const platform::Dispatch& controls, std::string_view key,
                                             std::string_view progId, std::string_view caption, std::int16_t faceId,
                                             std::string_view parameter, std::int32_t pictureNumber, bool beginGroup);

// A picture that owns the bitmap.
[[nodiscard]] platform::Dispatch BitmapToPicture(platform::BitmapHandle bitmap, platform::PaletteHandle palette);

}  // namespace OlButtons
