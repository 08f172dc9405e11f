#include "compose/ResizeRules.h"
#include "platform/Random.h"

#include <gtest/gtest.h>

namespace {

constexpr double Wide = 1.334375;

// The request most rows start from: a photo against a 1024 x 768 frame.
resize::SizeRequest Request(int w, int h, int targetW = 1024, int targetH = 768) {
    resize::SizeRequest q;
    q.width = w;
    q.height = h;
    q.targetW = targetW;
    q.targetH = targetH;
    return q;
}

TEST(NewDimensions, GivesTheSizeAndTheFlags) {
    struct Row {
        const char* what;
        int w, h, tw, th;
        bool scroll, forceFit, forceVertical;
        double factor;
        int monW, monH;
        int expW, expH;
        bool expResize, expFills;
        const char* logLine; // a line the log must hold, or nullptr
        bool ignoreAR = false;
    };
    // clang-format off
    const Row rows[] = {
        {"smaller image is left alone", 800, 600, 1024, 768, true, false, false, 1.0, 1024, 768, 800, 600, false, false, nullptr},
        {"height overhang of a landscape", 1000, 800, 1024, 768, true, false, false, 1.0, 1024, 768, 960, 768, true, false, " (VH)  new size = 960 x 768"},
        {"portrait scrolls at full size", 1000, 2000, 1024, 768, true, false, false, 1.0, 1024, 768, 1000, 2000, false, false, nullptr},
        {"AR 0.8 scrolls without ForceVertical", 800, 1000, 1024, 768, true, false, false, 1.0, 1024, 768, 800, 1000, false, false, nullptr},
        {"forced portrait says why", 800, 1000, 1024, 768, true, false, true, 1.0, 1024, 768, 614, 768, true, false, "  forcevert = True & AR = 0.8"},
        {"AR exactly 0.74 still scrolls", 740, 1000, 1024, 768, true, false, true, 1.0, 1024, 768, 740, 1000, false, false, nullptr},
        {"AR 0.741 is fitted", 741, 1000, 1024, 768, true, false, true, 1.0, 1024, 768, 569, 768, true, false, "Forcing vertical image to fit because:"},
        {"a square is no landscape", 1000, 1000, 1024, 768, true, false, false, 1.0, 1024, 768, 1000, 1000, false, false, nullptr},
        {"wide landscape keeps its overhang", 3000, 800, 1024, 768, true, false, false, 1.0, 1024, 768, 2880, 768, true, true, " (H)   new size = 2880 x 768"},
        {"slight width overhang is shrunk", 1100, 700, 1024, 768, true, false, false, 1.0, 1024, 768, 1024, 652, true, false, " (H)   new size = 1024 x 652"},
        {"equal overhangs go the height's way", 1124, 868, 1024, 768, true, false, false, 1.0, 1024, 768, 995, 768, true, false, " (VH)  new size = 995 x 768"},
        {"scrolling off fits the panorama", 3000, 800, 1024, 768, false, false, false, 1.0, 1024, 768, 1024, 273, true, false, " (H)   new size = 1024 x 273"},
        {"scrolling off fits a portrait", 1000, 2000, 1024, 768, false, false, false, 1.0, 1024, 768, 384, 768, true, false, "   scrollpanos = False"},
        {"forceFit fits a portrait", 1000, 2000, 1024, 768, true, true, false, 1.0, 1024, 768, 384, 768, true, false, "   forcefit = True"},
        // 15 % of 1000 is 150: an overhang of exactly 150 scrolls, 149 is shrunk away.
        {"width overhang of exactly 15 %", 1150, 500, 1000, 1000, true, false, false, 1.0, 1000, 1000, 1150, 500, false, false, nullptr},
        {"width overhang just under 15 %", 1149, 500, 1000, 1000, true, false, false, 1.0, 1000, 1000, 1000, 435, true, false, nullptr},
        {"height overhang of exactly 15 %", 500, 1150, 1000, 1000, true, false, false, 1.0, 1000, 1000, 500, 1150, false, false, nullptr},
        {"height overhang just under 15 %", 500, 1149, 1000, 1000, true, false, false, 1.0, 1000, 1000, 435, 1000, true, false, nullptr},
        // 1026 / 4 = 256.5 rounds to the even 256.
        {"ties round to even", 4000, 1000, 1026, 768, false, false, false, 1.0, 1026, 768, 1026, 256, true, false, nullptr},
        // With the squeeze every image is resized, and the width is compared squeezed.
        {"widescreen squeezes a small image", 800, 600, 1024, 768, true, false, false, Wide, 1024, 768, 600, 600, true, false, "  targets w xAR = 767 x 768"},
        {"widescreen frame-filling image does not fill", 1366, 768, 1366, 768, true, false, false, Wide, 1366, 768, 1024, 768, true, false, nullptr},
        {"without the squeeze it fills", 1366, 768, 1366, 768, true, false, false, 1.0, 1366, 768, 1366, 768, false, true, nullptr},
        {"filling is against the monitor, not the targets", 1000, 700, 1000, 700, true, false, false, 1.0, 1024, 768, 1000, 700, false, false, nullptr},
        {"ignoring the aspect leaves the width alone", 800, 600, 1024, 768, true, false, false, Wide, 1024, 768, 800, 600, false, false, " (ignoring xAR)", true},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        resize::SizeRequest q = Request(r.w, r.h, r.tw, r.th);
        q.scrollPanos = r.scroll;
        q.forceFit = r.forceFit;
        q.forceVertical = r.forceVertical;
        q.ignoreAR = r.ignoreAR;
        q.widescreenFactor = r.factor;
        q.monitorW = r.monW;
        q.monitorH = r.monH;
        const resize::SizeResult out = resize::NewDimensions(q);
        EXPECT_EQ(out.newW, r.expW);
        EXPECT_EQ(out.newH, r.expH);
        EXPECT_EQ(out.needResize, r.expResize);
        EXPECT_EQ(out.imageFillsScreen, r.expFills);
        EXPECT_EQ(out.sizeText, QStringLiteral("%1 x %2").arg(r.w).arg(r.h));
        EXPECT_TRUE(!r.logLine || out.log.contains(QString::fromUtf8(r.logLine)));
    }
}

TEST(NewDimensions, LogsItsStepsInOrder) {
    const QStringList expected{QStringLiteral("Calculating Resized Dimensions :"),
                               QString(),
                               QStringLiteral("   input image W:H = 1000 x 800"),
                               QStringLiteral(" resize targets = 1024 x 768"),
                               QStringLiteral("  targets w xAR = 1024 x 768"),
                               QStringLiteral(" (VH)  new size = 960 x 768"),
                               QStringLiteral("   (no other checks done for these type)")};
    EXPECT_EQ(resize::NewDimensions(Request(1000, 800)).log, expected);
}

TEST(NewDimensions, FittingNeverExceedsTheTargets) {
    for (bool scroll : {true, false})
        for (int w = 100; w <= 4000; w += 173)
            for (int h = 100; h <= 4000; h += 191) {
                resize::SizeRequest q = Request(w, h);
                q.forceFit = scroll;
                q.scrollPanos = scroll;
                const resize::SizeResult out = resize::NewDimensions(q);
                EXPECT_LE(out.newW, 1024) << w << " x " << h;
                EXPECT_LE(out.newH, 768) << w << " x " << h;
                // Never enlarged either.
                EXPECT_LE(out.newW, w);
                EXPECT_LE(out.newH, h);
            }
}

TEST(Panoramas, AreToldApart) {
    struct Row {
        const char* what;
        int w, h, screenW, screenH;
        double factor;
        bool hPano, vPano;
        int clampedH;
    };
    // clang-format off
    const Row rows[] = {
        {"width overhang of exactly 15 %", 1150, 500, 1000, 1000, 1.0, true, false, 500},
        {"width overhang just under 15 %", 1149, 500, 1000, 1000, 1.0, false, false, 500},
        {"tall panorama is cut to the screen first", 3000, 800, 1024, 768, 1.0, true, false, 768},
        // 1200 x 800 cut to 768 high is 1152 wide: 128 over, less than 153.6.
        {"cut to the screen it no longer overhangs enough", 1200, 800, 1024, 768, 1.0, false, false, 768},
        {"more height than width overhang is no panorama", 1100, 1000, 1024, 768, 1.0, false, false, 1000},
        // The factor rounds to 1: the width is not squeezed in this test.
        {"the widescreen factor does not squeeze", 1200, 500, 1024, 768, Wide, true, false, 500},
        {"height overhang of exactly 15 %", 500, 1150, 1000, 1000, 1.0, false, true, 1150},
        {"height overhang just under 15 %", 500, 1149, 1000, 1000, 1.0, false, false, 1149},
        {"AR of exactly 0.6 is not tall enough", 690, 1150, 1000, 1000, 1.0, false, false, 1150},
        {"AR just under 0.6", 689, 1150, 1000, 1000, 1.0, false, true, 1150},
        {"no taller than the screen", 300, 1000, 1000, 1000, 1.0, false, false, 1000},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        const resize::PanoResult h =
            resize::NextDIBIsAnHPano(r.w, r.h, r.screenW, r.screenH, r.factor);
        EXPECT_EQ(h.isPano, r.hPano);
        EXPECT_EQ(h.height, r.clampedH);
        EXPECT_EQ(h.log.contains(QStringLiteral("This image is a horizontal pano")), r.hPano);
        const resize::PanoResult v = resize::NextDIBIsAVPano(r.w, r.h, r.screenW, r.screenH);
        EXPECT_EQ(v.isPano, r.vPano);
        EXPECT_EQ(v.height, r.h);
        EXPECT_EQ(v.log.contains(QStringLiteral("This image is a vertical pano")), r.vPano);
    }
}

TEST(Offsets, EachAxisIsDrawnInItsFreeSpace) {
    struct Row {
        const char* what;
        int imageW, imageH, canvasW, canvasH;
        bool band;
        int bandTop, bandH;
        std::vector<double> draws;
        int x, y;
        std::size_t drawsLeft;
        const char* logLine;
    };
    // clang-format off
    const Row rows[] = {
        {"canvas as big as the image", 800, 600, 800, 600, false, 0, 0, {0.5}, 0, 0, 1, nullptr},
        {"both axes have room", 800, 600, 1024, 768, false, 0, 0, {0.5, 0.25}, 112, 42, 0, "   height is smaller than screen"},
        {"offsets are floored", 800, 600, 1024, 768, false, 0, 0, {0.999, 0.999}, 223, 167, 0, "   width is smaller than screen"},
        {"only the height has room", 1024, 600, 1024, 768, false, 0, 0, {0.5}, 0, 84, 0, nullptr},
        {"the band of a spanning frame", 800, 400, 1400, 600, true, 40, 560, {0.5, 0.5}, 300, 120, 0, "   height is smaller than minheight of screen(s)"},
        {"image taller than the band sits at its top", 800, 580, 1400, 600, true, 40, 560, {0.5, 0.5}, 300, 40, 1, nullptr},
        {"without the band the whole height counts", 800, 400, 1400, 600, false, 40, 560, {0.5, 0.5}, 300, 100, 0, nullptr},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        platform::ClearRandomFeed();
        platform::FeedRandom(r.draws);
        const resize::Offsets out = resize::GetOffsetsIfSmaller(
            r.imageW, r.imageH, r.canvasW, r.canvasH, r.band, r.bandTop, r.bandH);
        EXPECT_EQ(out.x, r.x);
        EXPECT_EQ(out.y, r.y);
        EXPECT_EQ(platform::FedRandomLeft(), r.drawsLeft);
        EXPECT_EQ(out.log.first(), QStringLiteral("Get Offsets if smaller :"));
        EXPECT_EQ(out.log.last(), QStringLiteral("   offsets are %1,%2").arg(r.x).arg(r.y));
        EXPECT_TRUE(!r.logLine || out.log.contains(QString::fromUtf8(r.logLine)));
    }
    platform::ClearRandomFeed();
}

} // namespace
