#include "TestSupport.h"

#include "compose/Crossfade.h"
#include "compose/PictureBox.h"

#include <QRandomGenerator>

namespace {

// The ramp's increments grow by one every ten steps, from 1 to 7, and it ends at 245: a ramp
// computed with the increment in double precision off by one step, or clamped, fails here.
TEST(Crossfade, RampStepsUpEveryTenStepsAndEndsAt245) {
    const auto ramp = fade::Ramp();
    int previous = 0;
    for (int i = 0; i < fade::kSteps; ++i) {
        EXPECT_EQ(ramp[static_cast<std::size_t>(i)] - previous, i / 10 + 1) << "step " << i;
        previous = ramp[static_cast<std::size_t>(i)];
    }
    EXPECT_EQ(ramp.back(), 245);
}

// Each step blends over what the last one left, so white under black is gone by step 36 and
// ends at 0, where a single mix at the last alpha would leave 10. The first values are worked
// by hand: 255 * 254 / 255 = 254, 254 * 253 / 255 = 252.0, 252 * 252 / 255 = 249.04 ...
TEST(Crossfade, StepsAccumulateOnThePixels) {
    QImage surface = Solid({3, 1}, Qt::white), top = Solid({3, 1}, Qt::black);
    top.setPixel(2, 0, qRgb(200, 100, 0));
    std::vector<int> white;
    for (const int alpha : fade::Ramp()) {
        fade::BlendOver(surface, top, QPoint(0, 0), alpha);
        white.push_back(qRed(surface.pixel(0, 0)));
    }
    EXPECT_EQ((std::vector<int>(white.begin(), white.begin() + 4)),
              (std::vector<int>{254, 252, 249, 245}));
    EXPECT_EQ(white[9], 205);
    EXPECT_EQ(white[29], 11);
    EXPECT_EQ(white[35], 1);
    EXPECT_EQ(white.back(), 0);
    EXPECT_EQ(surface.pixel(2, 0), qRgb(200, 100, 0));

    QImage once = Solid({1, 1}, Qt::white);
    fade::BlendOver(once, top, QPoint(0, 0), 245);
    EXPECT_EQ(qRed(once.pixel(0, 0)), 10);
}

// The fast blend equals the plain one on every channel, on odd widths (the tail after the
// four-pixel blocks), on a surface large enough to be split over two threads, and where the
// picture hangs over the surface's edges.
TEST(Crossfade, FastBlendEqualsThePlainOne) {
    // Surface, picture, and the picture's place.
    const std::tuple<QSize, QSize, QPoint> rows[] = {
        {{7, 3}, {7, 3}, {0, 0}},
        {{13, 5}, {6, 9}, {4, -2}},
        {{10, 10}, {20, 4}, {-5, 8}},
        {{1100, 1000}, {1100, 1000}, {0, 0}},
        {{1030, 1100}, {1031, 1000}, {3, 50}},
    };
    QRandomGenerator random(7);
    auto noise = [&random](QSize size) {
        QImage image(size, QImage::Format_RGB32);
        for (int y = 0; y < image.height(); ++y) {
            auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x)
                line[x] = random.generate() | 0xFF000000u;
        }
        return image;
    };
    for (const auto& [surface, picture, at] : rows) {
        const QImage top = noise(picture);
        QImage fast = noise(surface);
        QImage plain = fast.copy();
        for (const int alpha : {0, 1, 128, 245, 255}) {
            EXPECT_EQ(fade::BlendOver(fast, top, at, alpha),
                      fade::BlendOverReference(plain, top, at, alpha));
            ASSERT_EQ(fast, plain) << surface.width() << " alpha " << alpha;
        }
    }
}

// The pace: single precision gives the sleeps 30 and 40 (double would give 29 and 39), the
// tuning's fixed point holds, a fade shorter than a step time sleeps 0 and tunes as 1, a
// fade read as 0 s halves the step time and an overrun raises it.
TEST(Crossfade, SleepAndTuning) {
    EXPECT_EQ(fade::SleepMsFor(3.0f, 0.1f), 30);
    EXPECT_EQ(fade::SleepMsFor(4.0f, 0.1f), 40);
    EXPECT_EQ(fade::SleepMsFor(1.0f, 0.0f), 10);
    EXPECT_EQ(fade::SleepMsFor(0.05f, 0.1f), 0);
    EXPECT_FLOAT_EQ(fade::TunedStepTime(4.0f, 40, 0.1f), 0.1f);
    EXPECT_FLOAT_EQ(fade::TunedStepTime(3.0f, 30, 0.1f), 0.1f);
    EXPECT_FLOAT_EQ(fade::TunedStepTime(0.0f, 30, 0.1f), 0.05f);
    EXPECT_FLOAT_EQ(fade::TunedStepTime(6.0f, 30, 0.1f), 0.15f);
    EXPECT_FLOAT_EQ(fade::TunedStepTime(1.0f, 0, 0.5f), 0.75f);

    const QDateTime noon(QDate(2026, 1, 1), QTime(12, 0, 0));
    EXPECT_EQ(fade::WholeSecondsBetween(noon.addMSecs(900), noon.addMSecs(1100)), 1);
    EXPECT_EQ(fade::WholeSecondsBetween(noon, noon.addMSecs(1900)), 1);
    EXPECT_EQ(fade::WholeSecondsBetween(noon.addMSecs(100), noon.addMSecs(4000)), 4);
}

// Overlays: centred, at two thirds, a sixth and the bottom of each area; magenta is left out.
TEST(Crossfade, StampsArePlacedAndKeyed) {
    const QRect area(100, 50, 800, 600);
    EXPECT_EQ(fade::StampPlace(area, 200, 60, 0), QPoint(400, 410));
    EXPECT_EQ(fade::StampPlace(area, 200, 60, 1), QPoint(400, 140));
    EXPECT_EQ(fade::StampPlace(area, 200, 60, 2), QPoint(400, 590));
    // 100 + (800 - 201) / 2 = 399.5 and 101 + 299.5 = 400.5: the sum is rounded, ties to even.
    EXPECT_EQ(fade::StampPlace(area, 201, 61, 0), QPoint(400, 409));
    EXPECT_EQ(fade::StampPlace(area.translated(1, 0), 201, 61, 0), QPoint(400, 409));

    QImage stamp(2, 1, QImage::Format_RGB32);
    stamp.setPixel(0, 0, qRgb(255, 0, 255));
    stamp.setPixel(1, 0, qRgb(10, 20, 30));
    QImage target = Solid({4, 2}, QColor(1, 2, 3));
    fade::StampKeyed(target, stamp, QPoint(2, 1));
    EXPECT_EQ(target.pixel(2, 1), qRgb(1, 2, 3));
    EXPECT_EQ(target.pixel(3, 1), qRgb(10, 20, 30));
    fade::StampKeyed(target, stamp, QPoint(3, 1)); // hangs over the edge: clipped
    EXPECT_EQ(target.pixel(3, 1), qRgb(10, 20, 30));
}

class CrossfadeForm : public ShowOnScreenFixture {
protected:
    dib::Dib Frame(QColor colour) const {
        return dib::Dib(dib::ImageToDib(Solid({show->FormWidth, show->FormHeight}, colour)));
    }
};

// After a fade: the blended screen lies in Backdrop, the frame in thePhoto at its place, the
// head of the queue is the current image, the slots have swapped, the step time is tuned and
// the earlier screen is kept for going back.
TEST_F(CrossfadeForm, AFadeInstallsTheFrameAndTakesOverItsIdentity) {
    show->ShowList.add(QStringLiteral("/photos/trip/a.jpg"), 42);
    show->CaptionsList.add(QStringLiteral(" /photos/trip/a.jpg | trip "), 42);
    show->CurrentFolder = QStringLiteral("/photos/home");
    show->ImageSizeText[0] = QStringLiteral("10 x 10");
    dib::Dib frame = Frame(QColor(200, 100, 50));
    const int W = show->FormWidth, H = show->FormHeight;
    show->NewCrossfade(frame, 0, 0, W, H, 0, 0, 0, 1.0);

    EXPECT_FALSE(frame);
    EXPECT_FALSE(show->Crossfading);
    EXPECT_FALSE(show->FadeFrom->isVisible());
    const QImage backdrop = show->Backdrop->pixmap().toImage();
    ASSERT_EQ(backdrop.size(), QSize(W, H));
    // Within one of the frame: the last steps leave at most a trace of the old screen.
    const QRgb centre = backdrop.pixel(W / 2, H / 2);
    EXPECT_NEAR(qRed(centre), 200, 1);
    EXPECT_NEAR(qBlue(centre), 50, 1);
    EXPECT_EQ(show->thePhoto->pixmap().toImage().pixel(5, 5), qRgb(200, 100, 50));
    EXPECT_EQ(show->CurrentImage, QStringLiteral("/photos/trip/a.jpg"));
    EXPECT_EQ(show->CurrentImageTag, 42);
    EXPECT_EQ(show->CaptionFullName, QStringLiteral("/photos/trip/a.jpg"));
    EXPECT_EQ(show->CaptionSource, QStringLiteral("trip"));
    EXPECT_EQ(show->PreviousFolder, QStringLiteral("/photos/home"));
    EXPECT_TRUE(show->ShowList.isEmpty());
    EXPECT_EQ(show->CurrentFrameSlot, 1);
    EXPECT_TRUE(show->ImageSizeText[0].isEmpty());
    // The clock is set: the fade read 0 s, which halves the step time.
    EXPECT_FLOAT_EQ(show->xFadeStepTime, 50.0f);
    EXPECT_EQ(show->FadeSleepMs, 1);
    EXPECT_EQ(show->PrevCanvasCount, 1);

    // A second fade with nothing queued keeps the identity; the stack of screens stops at 3.
    for (int i = 0; i < 4; ++i) {
        dib::Dib next = Frame(Qt::darkGreen);
        show->NewCrossfade(next, 0, 0, W, H, 0, 0, 0, 1.0);
    }
    EXPECT_EQ(show->CurrentImage, QStringLiteral("/photos/trip/a.jpg"));
    EXPECT_EQ(show->PrevCanvasCount, 3);
    EXPECT_EQ(show->PrevCanvas[1]->pixmap().toImage().pixel(W / 2, H / 2), qRgb(0, 128, 0));
}

// A stop asked for during a fade leaves the fade at once: still marked as fading, with the
// frame not installed and its bitmap still held for the shutdown to release.
TEST_F(CrossfadeForm, AStopDuringTheFadeLeavesAtOnce) {
    dib::Dib frame = Frame(Qt::red);
    QTimer::singleShot(0, [] { ExitShow = true; });
    show->NewCrossfade(frame, 0, 0, show->FormWidth, show->FormHeight, 0, 0, 0, 1.0);
    EXPECT_TRUE(show->Crossfading);
    EXPECT_TRUE(frame);
    EXPECT_TRUE(show->FadeFrom->isVisible());
}

// The opening: the splash and the help hint on black, over every monitor's area.
TEST_F(CrossfadeForm, TheOpeningFadesToTheSplash) {
    show->FadePanelToBlack();
    const QImage screen = show->Backdrop->pixmap().toImage();
    ASSERT_FALSE(screen.isNull());
    const QImage splash(QStringLiteral(":/splash.png"));
    const QPoint at = fade::StampPlace(QRect(0, 0, show->FormWidth, show->FormHeight),
                                       splash.width(), splash.height(), 0);
    EXPECT_EQ(screen.pixel(0, 0), qRgb(0, 0, 0));
    int lit = 0;
    for (int x = 0; x < splash.width(); ++x)
        lit += qGray(screen.pixel(at.x() + x, at.y() + splash.height() / 3)) > 128;
    EXPECT_GT(lit, 10);
    EXPECT_EQ(show->NextChangeTime, platform::Now().addSecs(2));
}

} // namespace
