#pragma once

#include <FreeImage.h>
#include <QImage>
#include <memory>

// Pictures move between the imaging library's bitmaps and the toolkit's images without loss:
// a 32-bit bitmap keeps its rows bottom-up in BGRA order, which is ARGB32 upside down.
namespace dib {

struct Unloader {
    void operator()(FIBITMAP* bitmap) const { FreeImage_Unload(bitmap); }
};
// The one owner of a bitmap: whoever holds it unloads it, on every path out.
using Dib = std::unique_ptr<FIBITMAP, Unloader>;

// A new 32-bit bitmap holding the image; nullptr on failure. The caller owns it.
FIBITMAP* ImageToDib(const QImage& image);
// The bitmap as an ARGB32 image; bitmaps of other depths are converted first. Null image for
// a null handle.
QImage DibToImage(FIBITMAP* bitmap);

// Releases a bitmap and clears the handle; a null handle is left alone.
void Release(FIBITMAP*& bitmap);

} // namespace dib
