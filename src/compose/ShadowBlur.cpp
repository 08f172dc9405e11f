#include "compose/ShadowBlur.h"

#include "app/VbNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace shadow {

namespace {

// The most a pixel of the blurred alpha can hold, whatever the strength asks.
int Final(long avg, double strength) {
    return std::clamp(static_cast<int>(std::floor(strength * static_cast<double>(avg))), 0, 255);
}

// The grey levels, one byte a pixel, rows packed: row 0 is the bitmap's bottom row.
std::vector<std::uint8_t> ReadPixels(FIBITMAP* dib, int W, int H) {
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(W) * static_cast<std::size_t>(H));
    for (int r = 0; r < H; ++r)
        std::memcpy(pixels.data() + static_cast<std::size_t>(r) * static_cast<std::size_t>(W),
                    FreeImage_GetScanLine(dib, r), static_cast<std::size_t>(W));
    return pixels;
}

} // namespace

const std::array<std::uint8_t, 256>& CubicWeights() {
    static const std::array<std::uint8_t, 256> weights = [] {
        std::array<std::uint8_t, 256> w{};
        for (int p = 0; p < 256; ++p)
            w[static_cast<std::size_t>(p)] = static_cast<std::uint8_t>(
                vb::RoundHalfEven(static_cast<double>(p) * p * p / 65025.0));
        return w;
    }();
    return weights;
}

bool BlurShadowReference(FIBITMAP* dib, int radius, int testDistance, int strengthPercent,
                         bool noMaskShape, const Progress& progress) {
    if (!dib || FreeImage_GetBPP(dib) != 8 || radius < 0) return false;
    const double strength = strengthPercent / 100.0;
    const int W = static_cast<int>(FreeImage_GetWidth(dib));
    const int H = static_cast<int>(FreeImage_GetHeight(dib));

    // P(y, x) counts from 1, y = 1 being the bottom row.
    std::vector<std::uint8_t> grid(static_cast<std::size_t>(W) * static_cast<std::size_t>(H));
    auto P = [&](int y, int x) -> std::uint8_t& {
        return grid[static_cast<std::size_t>(y - 1) * static_cast<std::size_t>(W) +
                    static_cast<std::size_t>(x - 1)];
    };
    BYTE zero = 0;
    for (int x = 1; x <= W; ++x)
        for (int y = 1; y <= H; ++y) {
            BYTE v = 0;
            FreeImage_GetPixelIndex(dib, static_cast<unsigned>(x - 1), static_cast<unsigned>(y - 1),
                                    &v);
            P(y, x) = v;
            FreeImage_SetPixelIndex(dib, static_cast<unsigned>(x - 1), static_cast<unsigned>(y - 1),
                                    &zero);
        }

    auto work = [&](int x, int y) {
        const long long tx = static_cast<long long>(x) + testDistance;
        const long long ty = static_cast<long long>(y) - testDistance;
        if (tx < W && ty > 0 && tx >= 1 && ty <= H &&
            P(static_cast<int>(ty), static_cast<int>(tx)) >= 254)
            return 0;
        const int x0 = std::max(1, x - radius), x1 = std::min(W, x + radius);
        const int y0 = std::max(1, y - radius), y1 = std::min(H, y + radius);
        double sum = 0;
        long n = 0;
        for (int yy = y0; yy <= y1; ++yy)
            for (int xx = x0; xx <= x1; ++xx) {
                const double p = P(yy, xx);
                sum = vb::RoundHalfEven(p * p * p / 65025.0 + sum);
                ++n;
            }
        const long avg = std::min(255L, static_cast<long>(sum) / n);
        return Final(avg, strength);
    };
    auto put = [&](int x, int y, int value) {
        if (x > W || y > H) return;
        BYTE v = static_cast<BYTE>(value);
        FreeImage_SetPixelIndex(dib, static_cast<unsigned>(x - 1), static_cast<unsigned>(y - 1),
                                &v);
    };

    const long long strip = 2LL * radius;
    for (int x = 1; x <= W; x += noMaskShape ? 1 : 2) {
        if (progress && !progress(static_cast<int>(vb::Int(x / (W / 100.0))))) return false;
        for (int y = 1; y <= H; y += noMaskShape ? 1 : 2) {
            if (noMaskShape) {
                if (y <= strip || W - strip <= x) put(x, y, work(x, y));
            } else {
                const int value = work(x, y);
                put(x, y, value);
                put(x + 1, y, value);
                put(x, y + 1, value);
                put(x + 1, y + 1, value);
            }
        }
    }
    if (progress) progress(100);
    return true;
}

// The window sum of a pixel is the sum, over the window's columns, of each column's sum over the
// window's rows. The column sums are carried from row to row (one row in, one row out), and a
// row's prefix sums give any run of columns at once. The rounding inside the designed sum never
// meets a tie (2 P^3 is never an odd multiple of 65025), so summing the rounded weights is the
// same sum.
bool BlurShadow(FIBITMAP* dib, int radius, int testDistance, int strengthPercent, bool noMaskShape,
                const Progress& progress) {
    if (!dib || FreeImage_GetBPP(dib) != 8 || radius < 0) return false;
    const double strength = strengthPercent / 100.0;
    const int W = static_cast<int>(FreeImage_GetWidth(dib));
    const int H = static_cast<int>(FreeImage_GetHeight(dib));
    if (W == 0 || H == 0) return true;
    const auto& T = CubicWeights();
    const std::vector<std::uint8_t> P = ReadPixels(dib, W, H);
    auto row = [&](int r) { return P.data() + static_cast<std::size_t>(r) * W; };

    // A window never reaches further than the picture does.
    const int R = static_cast<int>(std::min<long long>(radius, std::max(W, H)));
    const long long side = 2LL * R + 1;
    const long long full = side * side;
    // Whole windows share one divisor: their answers come from a table.
    std::vector<std::uint8_t> table;
    if (side <= W && side <= H && full * 255 < (1LL << 22)) {
        table.resize(static_cast<std::size_t>(full * 255 + 1));
        for (std::size_t s = 0; s < table.size(); ++s)
            table[s] = static_cast<std::uint8_t>(Final(
                std::min(255L, static_cast<long>(static_cast<long long>(s) / full)), strength));
    }

    // The strips of the plain rectangle: rows below 2 * radius, columns from W - 2 * radius - 1.
    const long long strip = 2LL * radius;
    const int rightFrom = static_cast<int>(std::clamp<long long>(W - strip - 1, 0, W));
    const long long t = testDistance;

    std::vector<std::uint32_t> columnSums(static_cast<std::size_t>(W), 0);
    std::vector<std::uint64_t> prefix(static_cast<std::size_t>(W) + 1, 0);
    std::vector<std::uint8_t> out(static_cast<std::size_t>(W), 0);
    for (int r = 0; r <= std::min(H - 1, R); ++r)
        for (int c = 0; c < W; ++c)
            columnSums[static_cast<std::size_t>(c)] += T[row(r)[c]];

    // Works out the columns first, first + step, ... up to last of row r.
    auto workRow = [&](int r, int first, int last, int step, auto&& write) {
        const int ny = std::min(H - 1, r + R) - std::max(0, r - R) + 1;
        const int lo = std::max(0, first - R), hi = std::min(W - 1, last + R);
        prefix[static_cast<std::size_t>(lo)] = 0;
        for (int c = lo; c <= hi; ++c)
            prefix[static_cast<std::size_t>(c) + 1] =
                prefix[static_cast<std::size_t>(c)] + columnSums[static_cast<std::size_t>(c)];
        const std::uint8_t* below =
            r - t >= 0 && r - t < H ? row(static_cast<int>(r - t)) : nullptr;
        for (int c = first; c <= last; c += step) {
            const long long tc = c + t;
            if (below && tc < W - 1 && tc >= 0 && below[tc] >= 254) {
                write(c, 0);
                continue;
            }
            const int c0 = std::max(0, c - R), c1 = std::min(W - 1, c + R);
            const std::uint64_t sum =
                prefix[static_cast<std::size_t>(c1) + 1] - prefix[static_cast<std::size_t>(c0)];
            const long long n = static_cast<long long>(c1 - c0 + 1) * ny;
            if (n == full && !table.empty()) {
                write(c, table[sum]);
            } else {
                const long avg = static_cast<long>(
                    std::min<std::uint64_t>(255, sum / static_cast<std::uint64_t>(n)));
                write(c, Final(avg, strength));
            }
        }
    };

    for (int r = 0; r < H; ++r) {
        if (progress && !progress(static_cast<int>(100LL * r / H))) return false;
        const bool inBottomStrip = r < strip;
        if (!noMaskShape) {
            if (r % 2 == 0) {
                workRow(r, 0, W - 1, 2, [&](int c, int value) {
                    out[static_cast<std::size_t>(c)] = static_cast<std::uint8_t>(value);
                    if (c + 1 < W)
                        out[static_cast<std::size_t>(c) + 1] = static_cast<std::uint8_t>(value);
                });
                std::memcpy(FreeImage_GetScanLine(dib, r), out.data(), static_cast<std::size_t>(W));
                if (r + 1 < H)
                    std::memcpy(FreeImage_GetScanLine(dib, r + 1), out.data(),
                                static_cast<std::size_t>(W));
            }
        } else {
            std::fill(out.begin(), out.end(), 0);
            workRow(r, inBottomStrip ? 0 : rightFrom, W - 1, 1, [&](int c, int value) {
                out[static_cast<std::size_t>(c)] = static_cast<std::uint8_t>(value);
            });
            std::memcpy(FreeImage_GetScanLine(dib, r), out.data(), static_cast<std::size_t>(W));
        }
        // Carry the column sums to the next row; past the bottom strip of a plain rectangle
        // only the columns that the right strip's windows read are kept up.
        const int keepFrom = !noMaskShape || r + 1 < strip ? 0 : std::max(0, rightFrom - R);
        const int in = r + 1 + R, gone = r - R;
        if (in < H) {
            const std::uint8_t* p = row(in);
            for (int c = keepFrom; c < W; ++c)
                columnSums[static_cast<std::size_t>(c)] += T[p[c]];
        }
        if (gone >= 0) {
            const std::uint8_t* p = row(gone);
            for (int c = keepFrom; c < W; ++c)
                columnSums[static_cast<std::size_t>(c)] -= T[p[c]];
        }
    }
    if (progress) progress(100);
    return true;
}

bool PasteAlphaChannel(FIBITMAP* target, FIBITMAP* image, int left, int top) {
    if (!target || !image || FreeImage_GetBPP(target) != 8 || FreeImage_GetBPP(image) != 32 ||
        FreeImage_GetImageType(image) != FIT_BITMAP || left < 0 || top < 0)
        return false;
    const long long W = FreeImage_GetWidth(target), H = FreeImage_GetHeight(target);
    const int w = static_cast<int>(FreeImage_GetWidth(image));
    const int h = static_cast<int>(FreeImage_GetHeight(image));
    if (left + static_cast<long long>(w) > W || top + static_cast<long long>(h) > H) return false;
    const int firstRow = static_cast<int>(H - h - top); // rows count from the bottom
    for (int i = 0; i < h; ++i) {
        const BYTE* from = FreeImage_GetScanLine(image, i) + FI_RGBA_ALPHA;
        BYTE* to = FreeImage_GetScanLine(target, firstRow + i) + left;
        for (int x = 0; x < w; ++x)
            to[x] = static_cast<BYTE>((255 * from[4 * x] + to[x]) >> 8);
    }
    return true;
}

dib::Dib MakeShadowDIB(FIBITMAP* imageDIB, std::int32_t& distance, bool noMaskShape,
                       QString& errorText, const BlurRoutine& blur, bool libraryPaste) {
    const long long imageW = imageDIB ? FreeImage_GetWidth(imageDIB) : 0;
    const long long imageH = imageDIB ? FreeImage_GetHeight(imageDIB) : 0;
    const long long W = imageW + 2LL * distance;
    const long long H = imageH + 2LL * distance;
    // The size is the setting's as it came; from here on the shadow is at least one pixel off.
    if (distance < 1) distance = 1;
    const int d = distance;

    dib::Dib temp(W > 0 && H > 0 && W <= INT32_MAX && H <= INT32_MAX
                      ? FreeImage_Allocate(static_cast<int>(W), static_cast<int>(H), 8)
                      : nullptr);
    if (!temp) {
        errorText = QStringLiteral("MakeShadowDIB Error: creating temp shadow DIB");
        return {};
    }
    bool pasted = false;
    if (libraryPaste) {
        const dib::Dib alpha(imageDIB ? FreeImage_GetChannel(imageDIB, FICC_ALPHA) : nullptr);
        pasted = alpha && FreeImage_Paste(temp.get(), alpha.get(), d - 1, d - 1, 255);
    } else {
        pasted = PasteAlphaChannel(temp.get(), imageDIB, d - 1, d - 1);
    }
    if (!pasted) {
        errorText = QStringLiteral("MakeShadowDIB Error: pasting old alpha channel onto new");
        return {};
    }
    if (blur)
        blur(temp.get(), d, d, 100, noMaskShape);
    else
        BlurShadow(temp.get(), d, d, 100, noMaskShape);
    dib::Dib shadow(FreeImage_Allocate(static_cast<int>(W), static_cast<int>(H), 32));
    if (!shadow) {
        errorText = QStringLiteral("MakeShadowDIB Error: creating new 32b shadow");
        return {};
    }
    if (!FreeImage_SetChannel(shadow.get(), temp.get(), FICC_ALPHA)) {
        errorText = QStringLiteral(
            "MakeShadowDIB Error: setting new alpha channel into new 32b shadow image");
        return {};
    }
    return shadow;
}

} // namespace shadow
