// What the drop shadow of a large photograph costs: the whole shadow (alpha taken out, pasted,
// blurred, set into a black 32-bit bitmap) as the show makes it, next to the same shadow made
// the straightforward way (the library's channel and paste calls, the pixel-by-pixel blur), for
// a plain rectangle and for a masked photograph.
// Prints median times and their ratios, and checks that both blurs give the same shadow. --quick
// uses a small photograph and few runs.
#include "BenchSupport.h"
#include "compose/ShadowBlur.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {

// A 32-bit photograph-sized bitmap; with a mask its alpha is a soft-edged oval, as a mask from
// the Masks folder leaves it, otherwise fully opaque.
dib::Dib Photo(int W, int H, bool masked) {
    dib::Dib d(FreeImage_Allocate(W, H, 32));
    for (int y = 0; y < H; ++y) {
        BYTE* row = FreeImage_GetScanLine(d.get(), y);
        for (int x = 0; x < W; ++x) {
            BYTE* p = row + 4 * x;
            p[FI_RGBA_RED] = static_cast<BYTE>(x * 255 / W);
            p[FI_RGBA_GREEN] = static_cast<BYTE>(y * 255 / H);
            p[FI_RGBA_BLUE] = 128;
            const double dx = (x - W / 2.0) / (W / 2.0), dy = (y - H / 2.0) / (H / 2.0);
            const double edge = (1.0 - std::sqrt(dx * dx + dy * dy)) * 12.0;
            p[FI_RGBA_ALPHA] =
                masked ? static_cast<BYTE>(std::clamp(edge * 255.0, 0.0, 255.0)) : BYTE{255};
        }
    }
    return d;
}

double MedianMs(int runs, const std::function<void()>& work) {
    std::vector<double> times;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer clock;
        clock.start();
        work();
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

bool SameBits(FIBITMAP* a, FIBITMAP* b) {
    if (!a || !b || FreeImage_GetWidth(a) != FreeImage_GetWidth(b) ||
        FreeImage_GetHeight(a) != FreeImage_GetHeight(b))
        return false;
    const unsigned bytes = FreeImage_GetLine(a);
    for (unsigned y = 0; y < FreeImage_GetHeight(a); ++y)
        if (std::memcmp(FreeImage_GetScanLine(a, static_cast<int>(y)),
                        FreeImage_GetScanLine(b, static_cast<int>(y)), bytes) != 0)
            return false;
    return true;
}

// Whether the shadow holds any darkness at all: a shadow of nothing would compare equal too.
bool HasShade(FIBITMAP* s) {
    for (unsigned y = 0; y < FreeImage_GetHeight(s); ++y) {
        const BYTE* row = FreeImage_GetScanLine(s, static_cast<int>(y));
        for (unsigned x = 0; x < FreeImage_GetWidth(s); ++x)
            if (row[4 * x + FI_RGBA_ALPHA] != 0) return true;
    }
    return false;
}

} // namespace

int main(int argc, char** argv) {
    const std::optional<bool> mode = QuickMode(argc, argv);
    if (!mode) return 2;
    const bool quick = *mode;
    FreeImage_Initialise();
    const int W = quick ? 480 : 3240, H = quick ? 320 : 2160;
    const int runs = quick ? 3 : 11, referenceRuns = quick ? 1 : 3;
    const std::int32_t distance = 8;
    Checks checks;

    const shadow::BlurRoutine reference = [](FIBITMAP* d, int r, int t, int s, bool plain) {
        shadow::BlurShadowReference(d, r, t, s, plain);
    };
    std::printf("Shadow of a %dx%d photograph, distance %d (median of %d runs; straightforward "
                "loop %d):\n",
                W, H, distance, runs, referenceRuns);
    std::printf("  %-22s %12s %16s %8s\n", "", "the show's", "straightforward", "ratio");
    for (bool masked : {false, true}) {
        const dib::Dib photo = Photo(W, H, masked);
        const bool plain = !masked;
        dib::Dib fast, slow;
        QString errorText;
        const double fastMs = MedianMs(runs, [&] {
            std::int32_t d = distance;
            fast = shadow::MakeShadowDIB(photo.get(), d, plain, errorText);
        });
        const double slowMs = MedianMs(referenceRuns, [&] {
            std::int32_t d = distance;
            slow = shadow::MakeShadowDIB(photo.get(), d, plain, errorText, reference, true);
        });
        std::printf("  %-22s %9.1f ms %13.1f ms %8.1f\n",
                    masked ? "masked photograph" : "plain rectangle", fastMs, slowMs,
                    slowMs / fastMs);
        checks.expect(fast && slow, "both blurs made a shadow");
        checks.expect(fast && HasShade(fast.get()), "the shadow has some darkness");
        checks.expect(SameBits(fast.get(), slow.get()), "both blurs give the same shadow");
        checks.expect(fastMs > 0 && slowMs > 0, "every path took time");
        if (!quick)
            checks.expect(fastMs <= 60.0,
                          masked ? "masked shadow within 60 ms" : "rectangle shadow within 60 ms");
    }
    return checks.ok() ? 0 : 1;
}
