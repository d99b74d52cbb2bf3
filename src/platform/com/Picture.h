// platform/com/Picture.h: bitmaps of the library's resources as pictures for the host, and the clipboard.
//
// Shapes  A picture is a late-bound object (IPictureDisp) of the bitmap kind that owns its bitmap. Colours are
//         0x00BBGGRR; system colours are Windows' numbers (0 scroll bar, 4 menu).
// Errors  what cannot be loaded, made or put is an empty handle, an empty object or false; the pending error is set.
// Effects the clipboard's content is lost when it is cleared.
#pragma once
#include <cstdint>

#include "platform/Pixels.h"
#include "platform/com/Dispatch.h"

namespace platform {

struct BitmapHandle {
    void* handle = nullptr;
    explicit operator bool() const noexcept { return handle != nullptr; }
};
struct PaletteHandle {
    void* handle = nullptr;
};

struct ColourMapping {
    std::uint32_t from;
    std::uint32_t to;
};

inline constexpr std::uint32_t LightGrey = 0x00C0C0C0;
enum class SystemColour : std::int32_t { ScrollBar = 0, Menu = 4 };
[[nodiscard]] std::uint32_t ColourOf(SystemColour colour);

// A bitmap resource of this library with one colour replaced; the caller owns it.
[[nodiscard]] BitmapHandle LoadMappedBitmap(std::int32_t resource, const ColourMapping& mapping);

// A bitmap resource as it stands; the caller owns it.
[[nodiscard]] BitmapHandle LoadBitmapResource(std::int32_t resource);

// A picture that owns `bitmap`; where none can be made the bitmap is freed.
[[nodiscard]] Dispatch PictureOf(BitmapHandle bitmap, PaletteHandle palette);

// A bitmap resource as numbers, alpha 0; empty where there is none.
[[nodiscard]] Pixels ReadBitmapResource(std::int32_t resource);
// A picture with real transparency; the colours of `pixels` are multiplied by their alpha.
[[nodiscard]] Dispatch PictureOf(const Pixels& pixels);

bool ClearClipboard();
bool PutOnClipboard(const Dispatch& picture);

}  // namespace platform
