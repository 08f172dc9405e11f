#pragma once

#include <FreeImage.h>
#include <QImage>

// Pictures move between the imaging library's bitmaps and the toolkit's images without loss:
// a 32-bit bitmap keeps its rows bottom-up in BGRA order, which is ARGB32 upside down.
namespace dib {

// A new 32-bit bitmap holding the image; nullptr on failure. The caller owns it.
FIBITMAP* ImageToDib(const QImage& image);
// The bitmap as an ARGB32 image; bitmaps of other depths are converted first. Null image for
// a null handle.
QImage DibToImage(FIBITMAP* bitmap);

// Releases a bitmap and clears the handle; a null handle is left alone.
void Release(FIBITMAP*& bitmap);

} // namespace dib
