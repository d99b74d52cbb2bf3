// outlook/Face.h: pictures of buttons: the clipboard as PasteFace and CopyFace use it, and pixels for the drawing.
//
// Errors  Functions that return HRESULT leave everything untouched when they fail.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "outlook/Terms.h"

namespace standin {

// A face that PasteFace took: copies of the clipboard's bitmaps, deleted with the last copy of this value.
struct Face {
    std::shared_ptr<void> bitmap;  // HBITMAP
    std::shared_ptr<void> mask;    // HBITMAP, only from "Toolbar Button Mask"; white is transparent
    explicit operator bool() const { return bitmap != nullptr; }
};

// E_FAIL when the clipboard holds no bitmap ("Toolbar Button Face" or CF_BITMAP) or cannot be opened.
HRESULT FaceFromClipboard(Face& face);
HRESULT FaceToClipboard(const Face& face);

// E_INVALIDARG when `object` is no picture of a bitmap.
HRESULT CheckPicture(IDispatch* object);
[[nodiscard]] HBITMAP BitmapOf(IDispatch* picture);  // nullptr when it has none; belongs to the picture

[[nodiscard]] Pixels PixelsOf(HBITMAP bitmap);

}  // namespace standin
