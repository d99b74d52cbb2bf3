#include "platform/com/Picture.h"

// commctrl.h needs windows.h before it
#include "platform/com/Com.h"
//
#include <commctrl.h>

#include <cstring>

#include <algorithm>
#include <iterator>

#include "platform/Drawn.h"
#include "platform/Err.h"
#include "platform/LastError.h"
#include "platform/Module.h"
#include "platform/OpenedClipboard.h"
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

constexpr UINT patienceForOwner = 200;  // milliseconds

// Windows asks the owner for what it has only promised, and would wait for one that hangs.
bool OwnerResponds() {
    const HWND owner = GetClipboardOwner();
    DWORD_PTR result = 0;
    return !owner || SendMessageTimeoutA(owner, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, patienceForOwner, &result) != 0;
}

// Handles of other kinds, and what belongs to a program that does not own the clipboard any more, cannot be kept.
bool IsInMemory(UINT format) {
    if (format == CF_DIB || format == CF_DIBV5) return true;
    if (format >= 0xC000u) {
        char name[32];
        const int length = GetClipboardFormatNameA(format, name, sizeof name);
        return length > 0 && lstrcmpiA(name, "DataObject") != 0 && lstrcmpiA(name, "Ole Private Data") != 0;
    }
    return format < CF_OWNERDISPLAY && format != CF_BITMAP && format != CF_PALETTE && format != CF_METAFILEPICT &&
           format != CF_ENHMETAFILE;
}

// None where there is no memory for it, or it is longer than that.
HGLOBAL CopyOfMemory(HGLOBAL memory, std::size_t longest) {
    const std::size_t size = memory ? GlobalSize(memory) : 0;
    if (size == 0 || size > longest) return nullptr;
    HGLOBAL copy = GlobalAlloc(GMEM_MOVEABLE, size);
    const void* from = copy ? GlobalLock(memory) : nullptr;
    void* to = from ? GlobalLock(copy) : nullptr;
    if (to) std::memcpy(to, from, size);
    if (to) GlobalUnlock(copy);
    if (from) GlobalUnlock(memory);
    if (to || !copy) return copy;
    GlobalFree(copy);
    return nullptr;
}

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
    const Drawn<HBITMAP> bitmap(static_cast<HBITMAP>(LoadBitmapResource(resource).handle));
    if (!bitmap.Get()) return {};
    Pixels pixels = PixelsOf(bitmap.Get());
    if (pixels.Empty()) RecordLastError();
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

bool ClipboardHoldsPicture() noexcept {
    UINT formats[] = {CF_BITMAP, CF_DIB, CF_DIBV5, CF_METAFILEPICT, CF_ENHMETAFILE};
    const int found = GetPriorityClipboardFormat(formats, static_cast<int>(std::size(formats)));
    if (found >= 0) return found > 0;  // 0: there is nothing at all
    return IsClipboardFormatAvailable(RegisterClipboardFormatA("Toolbar Button Face")) != FALSE;
}

// By way of the other constructor, so that the destructor frees what was kept when memory ends.
PictureOnClipboard::PictureOnClipboard(const Dispatch& picture) : PictureOnClipboard() {
    Drawn<HBITMAP> copy(CopyOf(BitmapOf(picture)));
    if (!copy.Get()) return;
    put_ = OwnerResponds() && Put(copy.Get());
    if (put_) {
        copy.LetGo();  // the clipboard has it
        return;
    }
    RecordLastError();
    if (emptied_) GiveBack();
}

PictureOnClipboard::~PictureOnClipboard() {
    const LastErrorScope lastError;
    const ErrorScope pending;
    if (put_ && GetClipboardSequenceNumber() == sequence_) GiveBack();
    for (const Format& format : kept_) GlobalFree(format.memory);
}

void PictureOnClipboard::Keep() {
    std::size_t room = longestKept;
    for (UINT format = EnumClipboardFormats(0); format != 0; format = EnumClipboardFormats(format)) {
        if (!IsInMemory(format)) continue;
        kept_.reserve(kept_.size() + 1);  // before there is a copy that would be lost
        HGLOBAL copy = CopyOfMemory(GetClipboardData(format), room);
        if (!copy) continue;
        kept_.push_back({format, copy});
        room -= GlobalSize(copy);
    }
}

bool PictureOnClipboard::Put(void* bitmap) {
    {
        const OpenedClipboard clipboard;
        if (!clipboard) return false;
        Keep();
        if (!EmptyClipboard()) return false;
        emptied_ = true;
        if (!SetClipboardData(CF_BITMAP, bitmap)) return false;
    }
    sequence_ = GetClipboardSequenceNumber();
    return true;
}

void PictureOnClipboard::GiveBack() {
    const OpenedClipboard clipboard;
    if (!clipboard || !EmptyClipboard()) return;
    for (Format& format : kept_) {
        if (SetClipboardData(format.number, format.memory)) format.memory = nullptr;
    }
}

}  // namespace platform
