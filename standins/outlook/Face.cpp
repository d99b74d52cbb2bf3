#include "outlook/Face.h"

#include <ocidl.h>
#include <olectl.h>

#include "outlook/Pointers.h"

namespace standin {

namespace {

std::shared_ptr<void> Own(HBITMAP bitmap) {
    return bitmap ? std::shared_ptr<void>(bitmap, [](void* handle) { DeleteObject(handle); }) : nullptr;
}

class OpenedClipboard {
  public:
    OpenedClipboard() : open_(OpenClipboard(nullptr) != FALSE) {}
    ~OpenedClipboard() {
        if (open_) CloseClipboard();
    }
    OpenedClipboard(const OpenedClipboard&) = delete;
    OpenedClipboard& operator=(const OpenedClipboard&) = delete;
    explicit operator bool() const { return open_; }

  private:
    bool open_;
};

std::shared_ptr<void> CopyOf(HANDLE bitmap) {
    return bitmap ? Own(static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))) : nullptr;
}

std::shared_ptr<void> FromDib(HANDLE dib) {
    const auto* header = dib ? static_cast<const BITMAPINFO*>(GlobalLock(dib)) : nullptr;
    if (!header) return nullptr;
    const BITMAPINFOHEADER& info = header->bmiHeader;
    const DWORD colours = info.biClrUsed ? info.biClrUsed : info.biBitCount <= 8 ? 1U << info.biBitCount : 0;
    const auto* bits = reinterpret_cast<const BYTE*>(header) + info.biSize + colours * sizeof(RGBQUAD);
    const HDC screen = GetDC(nullptr);
    std::shared_ptr<void> bitmap = Own(CreateDIBitmap(screen, &info, CBM_INIT, bits, header, DIB_RGB_COLORS));
    ReleaseDC(nullptr, screen);
    GlobalUnlock(dib);
    return bitmap;
}

}  // namespace

HRESULT FaceFromClipboard(Face& face) {
    const OpenedClipboard clipboard;
    if (!clipboard) return E_FAIL;
    Face taken;
    taken.bitmap = FromDib(GetClipboardData(RegisterClipboardFormatA("Toolbar Button Face")));
    if (taken.bitmap)
        taken.mask = FromDib(GetClipboardData(RegisterClipboardFormatA("Toolbar Button Mask")));
    else
        taken.bitmap = CopyOf(GetClipboardData(CF_BITMAP));
    if (!taken.bitmap) return E_FAIL;
    face = taken;
    return S_OK;
}

HRESULT FaceToClipboard(const Face& face) {
    const OpenedClipboard clipboard;
    if (!clipboard || !face || !EmptyClipboard()) return E_FAIL;
    const HANDLE copy = CopyImage(face.bitmap.get(), IMAGE_BITMAP, 0, 0, 0);
    return SetClipboardData(CF_BITMAP, copy) ? S_OK : E_FAIL;
}

HRESULT CheckPicture(IDispatch* object) { return BitmapOf(object) ? S_OK : E_INVALIDARG; }

HBITMAP BitmapOf(IDispatch* picture) {
    Theirs<IPicture> source;
    if (!picture || FAILED(picture->QueryInterface(IID_IPicture, source.put()))) return nullptr;
    SHORT type = PICTYPE_UNINITIALIZED;
    OLE_HANDLE handle = 0;
    if (FAILED(source->get_Type(&type)) || type != PICTYPE_BITMAP || FAILED(source->get_Handle(&handle)))
        return nullptr;
    return reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(static_cast<LONG>(handle)));
}

Pixels PixelsOf(HBITMAP bitmap) {
    BITMAP size{};
    if (!bitmap || GetObjectA(bitmap, sizeof size, &size) == 0) return {};
    Pixels pixels{static_cast<int>(size.bmWidth), static_cast<int>(size.bmHeight), {}};
    pixels.colours.resize(static_cast<std::size_t>(pixels.width * pixels.height));
    BITMAPINFO wanted{};
    wanted.bmiHeader.biSize = sizeof wanted.bmiHeader;
    wanted.bmiHeader.biWidth = size.bmWidth;
    wanted.bmiHeader.biHeight = -size.bmHeight;
    wanted.bmiHeader.biPlanes = 1;
    wanted.bmiHeader.biBitCount = 32;
    const HDC screen = GetDC(nullptr);
    GetDIBits(screen, bitmap, 0, static_cast<UINT>(size.bmHeight), pixels.colours.data(), &wanted, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    for (std::uint32_t& colour : pixels.colours) colour &= 0xFFFFFF;
    return pixels;
}

}  // namespace standin
