#include "compose/MFreeImage.h"

#include "app/VbNumbers.h"
#include "app/modMain.h"

#include <QFile>
#include <algorithm>
#include <cstring>

namespace MFreeImage {

namespace {

int Width(FIBITMAP* dib) {
    return static_cast<int>(FreeImage_GetWidth(dib));
}
int Height(FIBITMAP* dib) {
    return static_cast<int>(FreeImage_GetHeight(dib));
}

// Takes the replacement when there is one; the old bitmap goes with the owner's reset.
bool Replace(Dib& owner, FIBITMAP* replacement) {
    if (!replacement) return false;
    owner.reset(replacement);
    return true;
}

// Whether every pixel of the top-left w x h of a 32-bit bitmap is fully opaque.
bool Opaque(FIBITMAP* dib, int w, int h) {
    if (FreeImage_GetBPP(dib) != 32 || FreeImage_GetImageType(dib) != FIT_BITMAP) return false;
    const int height = Height(dib);
    for (int y = 0; y < h; ++y) {
        const BYTE* row = FreeImage_GetScanLine(dib, height - 1 - y);
        for (int x = 0; x < w; ++x)
            if (row[x * 4 + FI_RGBA_ALPHA] != 255) return false;
    }
    return true;
}

// Laying a fully opaque image over the canvas leaves exactly its colours, which the library's
// blend also gives; copied straight, a screen-sized photograph costs one pass instead of a
// copy, a blend per pixel and a paste back.
void CopyOpaque(FIBITMAP* sub, FIBITMAP* back, int Px, int Py, int w, int h) {
    const int subH = Height(sub), backH = Height(back);
    for (int y = 0; y < h; ++y) {
        const BYTE* from = FreeImage_GetScanLine(sub, subH - 1 - y);
        BYTE* to = FreeImage_GetScanLine(back, backH - 1 - (Py + y)) + Px * 3;
        // Four bytes at a time, the fourth overwritten by the next pixel; the last pixel of the
        // row is copied on its own so that nothing is written past it.
        for (int x = 0; x + 1 < w; ++x, from += 4, to += 3)
            std::memcpy(to, from, 4);
        if (w > 0) std::memcpy(to, from, 3);
    }
}

int Pixels(double value, int present, bool isPercent) {
    return static_cast<int>(vb::RoundHalfEven(present * value / (isPercent ? 100.0 : 1.0)));
}

} // namespace

bool LoadIntoDIB(const QString& fileName, Dib& dib, QString& errorText, FREE_IMAGE_FORMAT& format) {
    if (fileName.isEmpty() || ExitShow) return false;
    const QByteArray name = QFile::encodeName(fileName);
    format = FreeImage_GetFIFFromFilename(name.constData());
    if (format == FIF_UNKNOWN) {
        errorText = QStringLiteral("LoadIntoDIB Error - don't know the file type ?");
        return false;
    }
    if (ExitShow) return false;
    if (!FreeImage_FIFSupportsReading(format)) {
        errorText = QStringLiteral("LoadIntoDIB Error - unsupported filetype");
        return false;
    }
    if (ExitShow) return false;
    dib.reset(FreeImage_Load(format, name.constData(), 0));
    if (!dib) {
        errorText = QStringLiteral("LoadIntoDIB Error - could not get DIB");
        return false;
    }
    return true;
}

Dib RescaleDIB(Dib dib, Extent width, Extent height, bool isPercent, FREE_IMAGE_FILTER filter) {
    if (!dib) return dib;
    const int presentW = Width(dib.get());
    const int presentH = Height(dib.get());
    auto pixels = [&](const Extent& e, int present) {
        if (const double* factor = std::get_if<double>(&e))
            return Pixels(*factor, present, isPercent);
        return std::get<int>(e);
    };
    int w = pixels(width, presentW);
    int h = pixels(height, presentH);
    const double ratio = presentH > 0 ? static_cast<double>(presentW) / presentH : 0.0;
    if (w < 1 && h >= 1)
        w = static_cast<int>(vb::RoundHalfEven(ratio * h));
    else if (h < 1 && w >= 1 && ratio > 0)
        h = static_cast<int>(vb::RoundHalfEven(w / ratio));
    if (w < 1 || h < 1) return dib;
    if (FIBITMAP* scaled = FreeImage_Rescale(dib.get(), w, h, filter)) return Dib(scaled);
    return dib;
}

Dib RescaleDIBByPixel(Dib dib, int width, int height, FREE_IMAGE_FILTER filter) {
    return RescaleDIB(std::move(dib), width, height, false, filter);
}

bool PasteDIBWithAlpha(FIBITMAP* subDIB, Dib& backDIB, int Px, int Py, QString& errorText) {
    errorText = QStringLiteral("(not set)");
    if (ExitShow || !subDIB || !backDIB) return false;
    if (FreeImage_GetBPP(backDIB.get()) < 24 &&
        !Replace(backDIB, FreeImage_ConvertTo24Bits(backDIB.get())))
        return false;
    if (ExitShow) return false;
    const int subW = Width(subDIB), subH = Height(subDIB);
    const int backW = Width(backDIB.get()), backH = Height(backDIB.get());
    if (Px < 0 || Py < 0) {
        errorText = QStringLiteral("One of the pasting offsets is negative.  Px / Py = %1 / %2")
                        .arg(Px)
                        .arg(Py);
        return false;
    }
    // Only the part of the canvas under the image is copied, laid over and put back.
    const int w = Px + subW > backW ? backW - Px : subW;
    const int h = Py + subH > backH ? backH - Py : subH;
    if (w > 0 && h > 0 && FreeImage_GetBPP(backDIB.get()) == 24 && Opaque(subDIB, w, h)) {
        CopyOpaque(subDIB, backDIB.get(), Px, Py, w, h);
        errorText = QStringLiteral("(alpha paste ok)");
        return true;
    }
    Dib region(FreeImage_Copy(backDIB.get(), Px, Py, Px + w, Py + h));
    if (!region) {
        errorText = QStringLiteral("Copy from canvas error");
        return false;
    }
    if (FreeImage_GetBPP(region.get()) != 24 &&
        !Replace(region, FreeImage_ConvertTo24Bits(region.get())))
        return false;
    if (ExitShow) return false;
    Dib clipped;
    if (w != subW || h != subH) clipped.reset(FreeImage_Copy(subDIB, 0, 0, w, h));
    FIBITMAP* sub = clipped ? clipped.get() : subDIB;
    Dib composite(FreeImage_Composite(sub, FALSE, nullptr, region.get()));
    if (!composite) {
        errorText = QStringLiteral("Composite error. subDIB was %1x%2 at %3,%4.  backDIB was %5x%6")
                        .arg(subW)
                        .arg(subH)
                        .arg(Px)
                        .arg(Py)
                        .arg(backW)
                        .arg(backH);
        return false;
    }
    if (!FreeImage_Paste(backDIB.get(), composite.get(), Px, Py, 255)) {
        errorText = QStringLiteral("Final pasting error");
        return false;
    }
    errorText = QStringLiteral("(alpha paste ok)");
    return true;
}

bool FillDIBWithColour(FIBITMAP* dib, std::uint32_t colour) {
    if (!dib) return false;
    RGBQUAD quad{};
    quad.rgbRed = static_cast<BYTE>(colour & 0xFF);
    quad.rgbGreen = static_cast<BYTE>((colour >> 8) & 0xFF);
    quad.rgbBlue = static_cast<BYTE>((colour >> 16) & 0xFF);
    quad.rgbReserved = 255;
    const int w = Width(dib), h = Height(dib);
    const unsigned bpp = FreeImage_GetBPP(dib);
    if (FreeImage_GetImageType(dib) == FIT_BITMAP && (bpp == 24 || bpp == 32)) {
        // The same pixels as one library call a pixel would set, a row at a time: every column
        // but the first, every scan line but the first.
        const int bytes = static_cast<int>(bpp / 8);
        BYTE pixel[4];
        pixel[FI_RGBA_RED] = quad.rgbRed;
        pixel[FI_RGBA_GREEN] = quad.rgbGreen;
        pixel[FI_RGBA_BLUE] = quad.rgbBlue;
        pixel[3] = quad.rgbReserved;
        if (w > 1 && h > 1) {
            BYTE* first = FreeImage_GetScanLine(dib, 1);
            for (int x = 1; x < w; ++x)
                std::memcpy(first + x * bytes, pixel, static_cast<std::size_t>(bytes));
            for (int y = 2; y < h; ++y)
                std::memcpy(FreeImage_GetScanLine(dib, y) + bytes, first + bytes,
                            static_cast<std::size_t>((w - 1) * bytes));
        }
        return !ExitShow;
    }
    for (int x = 1; x <= w; ++x) {
        for (int y = 1; y <= h; ++y)
            FreeImage_SetPixelColor(dib, static_cast<unsigned>(x), static_cast<unsigned>(y), &quad);
        if (ExitShow) return false;
    }
    return true;
}

bool AddBorderToDIB(Dib& dib, std::uint32_t colour) {
    if (!dib) return false;
    Dib framed(FreeImage_Allocate(Width(dib.get()) + 40, Height(dib.get()) + 40, 32,
                                  FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK));
    if (!framed || !FillDIBWithColour(framed.get(), colour)) return false;
    if (!FreeImage_Paste(framed.get(), dib.get(), 20, 20, 255)) return false;
    dib = std::move(framed);
    return true;
}

bool ConvertDIBToBlackAndWhite(Dib& dib, double brightness, double contrast) {
    if (!dib || !Replace(dib, FreeImage_ConvertToGreyscale(dib.get()))) return false;
    if (!Replace(dib, FreeImage_ConvertTo32Bits(dib.get()))) return false;
    return FreeImage_AdjustBrightness(dib.get(), brightness) &&
           FreeImage_AdjustContrast(dib.get(), contrast);
}

Dib RotateDIB(Dib dib, double angle) {
    if (ExitShow || !dib) return nullptr;
    return Dib(FreeImage_Rotate(dib.get(), angle, nullptr));
}

} // namespace MFreeImage
