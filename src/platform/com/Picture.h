// platform/com/Picture.h: bitmaps of the library's resources as pictures for the host, and the clipboard.
//
// Shapes  A picture is a late-bound object (IPictureDisp) of the bitmap kind that owns its bitmap. Colours are
//         0x00BBGGRR; system colours are Windows' numbers (0 scroll bar, 4 menu).
// Errors  what cannot be loaded, made or put is an empty handle, an empty object or false; the pending error is set.
// Effects the clipboard, which others hold for milliseconds: it is tried again for a tenth of a second.
#pragma once
#include <cstdint>
#include <vector>

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
// As the user has it now.
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

// True where the clipboard holds a picture of any kind that a button could take.
[[nodiscard]] bool ClipboardHoldsPicture() noexcept;

// A picture on the clipboard for as long as this lives. What the user had there is put back at its end, unless somebody
// else has used the clipboard meanwhile: the formats that Windows keeps in memory (text, pictures without a handle of
// their own), up to longestKept together. False where the picture did not get there: then it holds what it held.
class PictureOnClipboard {
  public:
    static constexpr std::size_t longestKept = 1024 * 1024;  // bytes

    // Puts a copy of its bitmap there.
    explicit PictureOnClipboard(const Dispatch& picture);
    ~PictureOnClipboard();
    PictureOnClipboard(const PictureOnClipboard&) = delete;
    PictureOnClipboard& operator=(const PictureOnClipboard&) = delete;
    // Whether the picture is there.
    explicit operator bool() const noexcept { return put_; }

  private:
    PictureOnClipboard() = default;

    struct Format {
        std::uint32_t number;
        void* memory;  // owned until the clipboard has taken it
    };
    void Keep();
    bool Put(void* bitmap);
    void GiveBack();

    std::vector<Format> kept_;
    std::uint32_t sequence_ = 0;  // Windows' count of changes once the picture is there
    bool emptied_ = false;
    bool put_ = false;
};

}  // namespace platform
