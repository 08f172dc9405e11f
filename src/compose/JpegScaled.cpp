#include "compose/JpegScaled.h"

#include <turbojpeg.h>

#include <QPainter>
#include <cstring>
#include <memory>

namespace jpeg {

namespace {

struct Closer {
    void operator()(void* handle) const { tjDestroy(handle); }
};
using Decompressor = std::unique_ptr<void, Closer>;

} // namespace

bool ReadSize(const QByteArray& bytes, QSize& size) {
    Decompressor tj(tjInitDecompress());
    int w = 0, h = 0, subsampling = 0, colourspace = 0;
    if (!tj || bytes.isEmpty() ||
        tjDecompressHeader3(tj.get(), reinterpret_cast<const unsigned char*>(bytes.constData()),
                            static_cast<unsigned long>(bytes.size()), &w, &h, &subsampling,
                            &colourspace) != 0)
        return false;
    size = QSize(w, h);
    return w > 0 && h > 0;
}

dib::Dib DecodeAtLeast(const QByteArray& bytes, QSize minimum, bool* refused) {
    if (refused) *refused = false;
    Decompressor tj(tjInitDecompress());
    QSize full;
    if (!tj || !ReadSize(bytes, full)) return nullptr;
    int count = 0;
    const tjscalingfactor* factors = tjGetScalingFactors(&count);
    tjscalingfactor best{1, 1};
    for (int i = 0; i < count; ++i) {
        const tjscalingfactor f = factors[i];
        if (TJSCALED(full.width(), f) < minimum.width() ||
            TJSCALED(full.height(), f) < minimum.height())
            continue;
        // The smallest factor that still covers the target wins.
        if (f.num * best.denom < best.num * f.denom) best = f;
    }
    const int w = TJSCALED(full.width(), best);
    const int h = TJSCALED(full.height(), best);
    dib::Dib out(
        FreeImage_Allocate(w, h, 32, FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK));
    if (!out) return nullptr;
    // The bitmap keeps its rows bottom-up in BGRA order: the decoder writes them so directly.
    const int flags = TJFLAG_BOTTOMUP | TJFLAG_STOPONWARNING;
    if (tjDecompress2(tj.get(), reinterpret_cast<const unsigned char*>(bytes.constData()),
                      static_cast<unsigned long>(bytes.size()), FreeImage_GetBits(out.get()), w,
                      static_cast<int>(FreeImage_GetPitch(out.get())), h, TJPF_BGRA, flags) != 0) {
        // A warning means damaged data (a file cut short); a fatal error with a good header is
        // a picture of a kind this decoder does not convert.
        if (refused) *refused = tjGetErrorCode(tj.get()) == TJERR_FATAL;
        return nullptr;
    }
    return out;
}

} // namespace jpeg

namespace dib {

Dib Resample(Dib source, QSize size, bool opaque) {
    if (!source || size.isEmpty()) return nullptr;
    if (FreeImage_GetBPP(source.get()) != 32 || FreeImage_GetImageType(source.get()) != FIT_BITMAP)
        source.reset(FreeImage_ConvertTo32Bits(source.get()));
    Dib out(FreeImage_Allocate(size.width(), size.height(), 32, FI_RGBA_RED_MASK,
                               FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK));
    if (!source || !out) return nullptr;
    // Both bitmaps are seen upside down through their bottom-up rows, which a resampling does
    // not mind; the result is drawn straight into the new bitmap, with no copy in between.
    // Opaque pixels take the cheaper path; alpha is kept where there is one.
    const QImage::Format format = opaque ? QImage::Format_RGB32 : QImage::Format_ARGB32;
    auto view = [format](FIBITMAP* d) {
        return QImage(FreeImage_GetBits(d), static_cast<int>(FreeImage_GetWidth(d)),
                      static_cast<int>(FreeImage_GetHeight(d)),
                      static_cast<qsizetype>(FreeImage_GetPitch(d)), format);
    };
    const QImage in = view(source.get());
    QImage target = view(out.get());
    QPainter painter(&target);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRect(QPoint(0, 0), size), in);
    painter.end();
    return out;
}

} // namespace dib
