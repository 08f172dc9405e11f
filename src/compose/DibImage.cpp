#include "compose/DibImage.h"

#include <cstring>

namespace dib {

FIBITMAP* ImageToDib(const QImage& image) {
    if (image.isNull()) return nullptr;
    QImage src = image.convertToFormat(QImage::Format_ARGB32);
    const int w = src.width();
    const int h = src.height();
    FIBITMAP* out =
        FreeImage_Allocate(w, h, 32, FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK);
    if (!out) return nullptr;
    const std::size_t rowBytes = static_cast<std::size_t>(w) * 4;
    for (int y = 0; y < h; ++y)
        std::memcpy(FreeImage_GetScanLine(out, h - 1 - y), src.constScanLine(y), rowBytes);
    return out;
}

QImage DibToImage(FIBITMAP* bitmap) {
    if (!bitmap) return QImage();
    FIBITMAP* b32 = bitmap;
    if (FreeImage_GetBPP(bitmap) != 32 || FreeImage_GetImageType(bitmap) != FIT_BITMAP) {
        b32 = FreeImage_ConvertTo32Bits(bitmap);
        if (!b32) return QImage();
    }
    const int w = static_cast<int>(FreeImage_GetWidth(b32));
    const int h = static_cast<int>(FreeImage_GetHeight(b32));
    QImage out(w, h, QImage::Format_ARGB32);
    const std::size_t rowBytes = static_cast<std::size_t>(w) * 4;
    for (int y = 0; y < h; ++y)
        std::memcpy(out.scanLine(y), FreeImage_GetScanLine(b32, h - 1 - y), rowBytes);
    if (b32 != bitmap) FreeImage_Unload(b32);
    return out;
}

void Release(FIBITMAP*& bitmap) {
    if (bitmap) FreeImage_Unload(bitmap);
    bitmap = nullptr;
}

} // namespace dib
