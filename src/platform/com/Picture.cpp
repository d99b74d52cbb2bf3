#include "platform/com/Picture.h"

// commctrl.h needs windows.h before it
#include "platform/com/Com.h"
//
#include <commctrl.h>

#include "platform/Err.h"
#include "platform/Module.h"
#include "platform/SystemError.h"

namespace platform {
namespace {

HINSTANCE Library() { return static_cast<HINSTANCE>(ModuleHandle()); }

BitmapHandle Checked(HBITMAP bitmap) {
    if (!bitmap) RecordLastError();
    return {bitmap};
}

HBITMAP CopyOf(HBITMAP bitmap) { return static_cast<HBITMAP>(CopyImage(bitmap, IMAGE_BITMAP, 0, 0, 0)); }

// Handles have 32 bits that count in either kind of program; Windows widens them with their sign.
HBITMAP Widened(OLE_HANDLE handle) {
    return reinterpret_cast<HBITMAP>(static_cast<LONG_PTR>(static_cast<LONG>(handle)));
}

HBITMAP BitmapOf(const Dispatch& picture) {
    const auto object = ComPtr<IDispatch>::Copy(picture.Get()).As<IPicture>(IID_IPicture);
    OLE_HANDLE handle = 0;
    if (!object || FAILED(object->get_Handle(&handle))) return nullptr;
    return Widened(handle);
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
    return Checked(CreateMappedBitmap(Library(), resource, 0, &map, 1));
}

BitmapHandle LoadBitmapResource(std::int32_t resource) {
    return Checked(LoadBitmapA(Library(), MAKEINTRESOURCEA(resource)));
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
