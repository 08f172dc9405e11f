#include "compose/Crossfade.h"

#include "app/VbNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <thread>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace fade {

std::array<int, kSteps> Ramp() {
    std::array<int, kSteps> ramp{};
    int alpha = 0;
    for (int i = 0; i < kSteps; ++i) {
        alpha += static_cast<int>(vb::Int(i * 0.1 + 1.0));
        alpha = std::min(alpha, 255);
        ramp[static_cast<std::size_t>(i)] = alpha;
    }
    return ramp;
}

std::int32_t SleepMsFor(float seconds, float stepTime) {
    if (stepTime == 0.0f) stepTime = 0.1f;
    // Kept in float on purpose: the quotient is rounded to single precision before Int.
    const float quotient = seconds / stepTime;
    return static_cast<std::int32_t>(std::floor(quotient));
}

float TunedStepTime(float lastFadeSeconds, std::int32_t sleepMs, float stepTime) {
    if (sleepMs == 0) sleepMs = 1;
    return static_cast<float>(
        (static_cast<double>(lastFadeSeconds) / sleepMs + static_cast<double>(stepTime)) / 2.0);
}

std::int64_t WholeSecondsBetween(const QDateTime& start, const QDateTime& end) {
    return end.toSecsSinceEpoch() - start.toSecsSinceEpoch();
}

namespace {

inline std::uint32_t BlendPixel(std::uint32_t s, std::uint32_t d, std::uint32_t a) {
    // Two channels at a time, each in its own 16 bits: (s * a + d * (255 - a) + 128), then
    // divided by 255 with the exact rounding of (t + (t >> 8)) >> 8.
    const std::uint32_t b = 255 - a;
    std::uint32_t rb = (s & 0x00FF00FFu) * a + (d & 0x00FF00FFu) * b + 0x00800080u;
    rb = ((rb + ((rb >> 8) & 0x00FF00FFu)) >> 8) & 0x00FF00FFu;
    std::uint32_t ag = ((s >> 8) & 0x00FF00FFu) * a + ((d >> 8) & 0x00FF00FFu) * b + 0x00800080u;
    ag = (ag + ((ag >> 8) & 0x00FF00FFu)) & 0xFF00FF00u;
    return rb | ag;
}

void BlendRow(std::uint32_t* dst, const std::uint32_t* src, int n, int alpha) {
    int x = 0;
#ifdef __SSE2__
    const __m128i a = _mm_set1_epi16(static_cast<short>(alpha));
    const __m128i b = _mm_set1_epi16(static_cast<short>(255 - alpha));
    const __m128i half = _mm_set1_epi16(128);
    const __m128i zero = _mm_setzero_si128();
    for (; x + 4 <= n; x += 4) {
        const __m128i s = _mm_loadu_si128(reinterpret_cast<const __m128i*>(src + x));
        const __m128i d = _mm_loadu_si128(reinterpret_cast<const __m128i*>(dst + x));
        auto half8 = [&](__m128i s16, __m128i d16) {
            // At most 255 * 255 + 128: the sums fit unsigned 16 bits.
            __m128i t = _mm_add_epi16(
                _mm_add_epi16(_mm_mullo_epi16(s16, a), _mm_mullo_epi16(d16, b)), half);
            t = _mm_add_epi16(t, _mm_srli_epi16(t, 8));
            return _mm_srli_epi16(t, 8);
        };
        const __m128i lo = half8(_mm_unpacklo_epi8(s, zero), _mm_unpacklo_epi8(d, zero));
        const __m128i hi = half8(_mm_unpackhi_epi8(s, zero), _mm_unpackhi_epi8(d, zero));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + x), _mm_packus_epi16(lo, hi));
    }
#endif
    const auto ua = static_cast<std::uint32_t>(alpha);
    for (; x < n; ++x)
        dst[x] = BlendPixel(src[x], dst[x], ua);
}

bool Blendable(const QImage& image) {
    return image.depth() == 32 && !image.isNull();
}

// The part of the surface that the top covers, and where in the top it starts.
QRect Covered(const QImage& surface, const QImage& top, QPoint at, QPoint& topOrigin) {
    const QRect r = QRect(at, top.size()).intersected(surface.rect());
    topOrigin = r.topLeft() - at;
    return r;
}

} // namespace

QRect BlendOver(QImage& accumulated, const QImage& top, QPoint at, int alpha) {
    if (!Blendable(accumulated) || !Blendable(top)) return {};
    alpha = std::clamp(alpha, 0, 255);
    QPoint from;
    const QRect r = Covered(accumulated, top, at, from);
    if (r.isEmpty()) return {};
    // detach once here, not once per row from two threads.
    uchar* base = accumulated.bits();
    const qsizetype stride = accumulated.bytesPerLine();
    auto rows = [&](int first, int last) {
        for (int y = first; y < last; ++y) {
            auto* d = reinterpret_cast<std::uint32_t*>(base + (r.top() + y) * stride) + r.left();
            const auto* s =
                reinterpret_cast<const std::uint32_t*>(top.constScanLine(from.y() + y)) + from.x();
            BlendRow(d, s, r.width(), alpha);
        }
    };
    // A large step is split over two cores: the blend is bound by memory, and one core alone
    // does not draw all that the memory can give.
    if (static_cast<qint64>(r.width()) * r.height() >= 1 << 20 &&
        std::thread::hardware_concurrency() > 1) {
        const int middle = r.height() / 2;
        std::thread other(rows, middle, r.height());
        rows(0, middle);
        other.join();
    } else {
        rows(0, r.height());
    }
    return r;
}

QRect BlendOverReference(QImage& accumulated, const QImage& top, QPoint at, int alpha) {
    if (!Blendable(accumulated) || !Blendable(top)) return {};
    alpha = std::clamp(alpha, 0, 255);
    QPoint from;
    const QRect r = Covered(accumulated, top, at, from);
    for (int y = 0; y < r.height(); ++y)
        for (int x = 0; x < r.width(); ++x) {
            const QRgb s = top.pixel(from.x() + x, from.y() + y);
            const QRgb d = accumulated.pixel(r.left() + x, r.top() + y);
            auto mix = [alpha](int sc, int dc) {
                return static_cast<int>(
                    std::lround(std::floor((sc * alpha + dc * (255 - alpha)) / 255.0 + 0.5)));
            };
            accumulated.setPixel(r.left() + x, r.top() + y,
                                 qRgba(mix(qRed(s), qRed(d)), mix(qGreen(s), qGreen(d)),
                                       mix(qBlue(s), qBlue(d)), mix(qAlpha(s), qAlpha(d))));
        }
    return r;
}

QPoint StampPlace(const QRect& area, int w, int h, int position) {
    // The sums are rounded whole, as they were when passed to the blit: ties go to even.
    const double X = area.left(), Y = area.top(), W = area.width(), H = area.height();
    const auto round = [](double v) { return static_cast<int>(vb::RoundHalfEven(v)); };
    const int left = round(X + (W - w) / 2);
    switch (position) {
    case 1:
        return {left, round(Y + (H - h) / 6)};
    case 2:
        return {left, round(Y + H - h)};
    default:
        return {left, round(Y + 2 * (H - h) / 3)};
    }
}

void StampKeyed(QImage& target, const QImage& stamp, QPoint at) {
    if (target.isNull() || stamp.isNull() || target.depth() != 32) return;
    const QImage source = stamp.convertToFormat(QImage::Format_RGB32);
    const QRect r = QRect(at, source.size()).intersected(target.rect());
    for (int y = r.top(); y <= r.bottom(); ++y) {
        auto* d = reinterpret_cast<QRgb*>(target.scanLine(y));
        const auto* s = reinterpret_cast<const QRgb*>(source.constScanLine(y - at.y()));
        for (int x = r.left(); x <= r.right(); ++x) {
            const QRgb p = s[x - at.x()];
            if ((p & 0xFFFFFFu) != 0xFF00FFu) d[x] = p | 0xFF000000u;
        }
    }
}

} // namespace fade
