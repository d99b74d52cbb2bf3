#include "platform/com/Picture.h"

// commctrl.h needs windows.h before it
#include "platform/com/Com.h"
//
#include <commctrl.h>

#include <algorithm>

#include "platform/Err.h"
#include "platform/Module.h"
#include "platform/SystemError.h"

namespace platform {
namespace {

HINSTANCE Library() { return static_cast<HINSTANCE>(ModuleHandle()); }

BitmapHandle Check(HBITMAP bitmap) {
    if (!bitmap) RecordLastError();
    return {bitmap};
}

HBITMAP CopyOf(HBITMAP bitmap) { return static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0)); }

// Handles have 32 bits that count in either kind of program; Windows widens them with their sign.
HBITMAP WithSign(OLE_HANDLE handle) {
    return reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(static_cast<LONG>(handle)));
}

HBITMAP BitmapOf(const Dispatch& picture) {
    const auto object = ComPtr<IDispatch>::Copy(picture.Get()).As<IPicture>(IID_IPicture);
    OLE_HANDLE handle = 0;
    if (!object || FAILED(object->get_Handle(&handle))) return nullptr;
    return WithSign(handle);
}

// Rows from the top, four bytes a pixel.
BITMAPINFO DescriptionOf(int width, int height) {
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    description.bmiHeader.biWidth = width;
    description.bmiHeader.biHeight = -height;
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 32;
    return description;
}

class ScreenContext {
  public:
    ScreenContext() : context_(GetDC(nullptr)) {}
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;
    ~ScreenContext() {
        if (context_) ReleaseDC(nullptr, context_);
    }
    [[nodiscard]] HDC Get() const { return context_; }

  private:
    HDC context_;
};

Pixels PixelsOf(HBITMAP bitmap) {
    BITMAP form{};
    if (!GetObjectA(bitmap, sizeof form, &form)) return {};
    Pixels pixels{form.bmWidth, form.bmHeight, {}};
    pixels.values.resize(static_cast<std::size_t>(form.bmWidth) * static_cast<std::size_t>(form.bmHeight));
    BITMAPINFO description = DescriptionOf(form.bmWidth, form.bmHeight);
    const ScreenContext screen;
    const int lines = GetDIBits(screen.Get(), bitmap, 0, static_cast<UINT>(form.bmHeight), pixels.values.data(),
                                &description, DIB_RGB_COLORS);
    return lines == form.bmHeight ? pixels : Pixels();
}

class OpenedClipboard {
  public:
    OpenedClipboard() : open_(OpenClipboard(nullptr) != FALSE) {
        if (!open_) RecordLastError();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    ~OpenedClipboard() {
        if (open_) CloseClipboard();
    }
    explicit operator bool() const { return open_; }

  private:
    bool open_;
};

}  // namespace

std::uint32_t ColourOf(SystemColour colour) { return GetSysColor(static_cast<int>(colour)); }

BitmapHandle LoadMappedBitmap(std::int32_t resource, const ColourMapping& mapping) {
    COLORMAP map{mapping.from, mapping.to};
    return Check(CreateMappedBitmap(Library(), resource, 0, &map, 1));
}

BitmapHandle LoadBitmapResource(std::int32_t resource) {
    return Check(LoadBitmapA(Library(), MAKEINTRESOURCEA(resource)));
}

Dispatch PictureOf(BitmapHandle bitmap, PaletteHandle palette) {
    if (!bitmap) return {};
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    static_assert(sizeof description == (sizeof(void*) == 8 ? 24 : 20));
    description.picType = PICTYPE_BITMAP;
    description.bmp.hbitmap = static_cast<HBITMAP>(bitmap.handle);
    description.bmp.hpal = static_cast<HPALETTE>(palette.handle);
    ComPtr<IPicture> picture;
    const HRESULT status = OleCreatePictureIndirect(&description, IID_IPicture, TRUE, picture.PutVoid());
    if (FAILED(status) || !picture) {
        DeleteObject(static_cast<HBITMAP>(bitmap.handle));
        RecordStatus(static_cast<std::int32_t>(FAILED(status) ? status : E_FAIL));
        return {};
    }
    return Dispatch::Attach(picture.As<IDispatch>(IID_IDispatch).Detach());
}

Pixels ReadBitmapResource(std::int32_t resource) {
    const BitmapHandle bitmap = LoadBitmapResource(resource);
    if (!bitmap) return {};
    Pixels pixels = PixelsOf(static_cast<HBITMAP>(bitmap.handle));
    if (pixels.Empty()) RecordLastError();
    DeleteObject(bitmap.handle);
    return pixels;
}

Dispatch PictureOf(const Pixels& pixels) {
    if (pixels.Empty()) return {};
    const BITMAPINFO description = DescriptionOf(pixels.width, pixels.height);
    void* bits = nullptr;
    const BitmapHandle bitmap = Check(CreateDIBSection(nullptr, &description, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap || !bits) return {};
    std::copy(pixels.values.begin(), pixels.values.end(), static_cast<std::uint32_t*>(bits));
    return PictureOf(bitmap, {});
}

bool ClearClipboard() {
    const OpenedClipboard clipboard;
    return clipboard && EmptyClipboard();
}

bool PutOnClipboard(const Dispatch& picture) {
    HBITMAP copy = CopyOf(BitmapOf(picture));  // the clipboard owns what it gets
    if (!copy) return false;
    const OpenedClipboard clipboard;
    if (clipboard && SetClipboardData(CF_BITMAP, copy)) return true;
    RecordLastError();
    DeleteObject(copy);
    return false;
}

}  // namespace platform
