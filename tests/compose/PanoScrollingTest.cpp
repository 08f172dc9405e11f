#include "TestSupport.h"

#include "compose/DibImage.h"

namespace {

// Every pixel tells where it lies on the canvas: the column in the upper twelve bits, the row
// in the lower twelve.
QImage Canvas(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            line[x] = 0xFF000000u | static_cast<quint32>(x) << 12 | static_cast<quint32>(y);
    }
    return image;
}

class PanoForm : public ShowOnScreenFixture {
protected:
    void SetUp() override {
        ShowOnScreenFixture::SetUp();
        show->OpenDebugLog();
        MW = show->MonitorWidth[0];
        MH = show->MonitorHeight[0];
    }
    // The part of a frame change that brings a canvas on and starts it travelling, in the
    // order ChangePhotos has it, which also leaves MainTimer running behind the scroll.
    void ShowCanvas(QSize size, double draw) {
        platform::FeedRandom({draw});
        const auto slot = static_cast<std::size_t>(show->NextFrameSlot);
        QPoint place, area;
        show->NewCheckAndSetupPanoScrolling(size.width(), size.height(), 0, show->PanoScrolls[slot],
                                            show->PanoHorizontal[slot], place, area,
                                            show->PanoStep[slot], show->PanoSteps[slot]);
        dib::Dib canvas(dib::ImageToDib(Canvas(size)));
        show->NewCrossfade(canvas, area.x(), area.y(), MW, MH, place.x(), place.y(), 0, 1.0);
        show->ScrollPano();
        show->MainTimer->setEnabled(true);
    }
    // The canvas point at the monitor's top left corner, as the screen shows it.
    QPoint Origin() const {
        const QRgb c = show->grab().toImage().pixel(0, 0);
        return {static_cast<int>(c >> 12 & 0xFFF), static_cast<int>(c & 0xFFF)};
    }
    // Ticks until the timer goes off, the clock moving on by its interval each time; bounded.
    int TickToTheEnd(int limit) {
        int ticks = 0;
        while (show->ScrollTimer->Enabled() && ticks < limit) {
            platform::AdvanceClock(show->ScrollTimer->Interval());
            show->ScrollTimer->fire();
            ++ticks;
            EXPECT_EQ(show->MainTimer->Enabled(), !show->ScrollTimer->Enabled()) << ticks;
        }
        return ticks;
    }
    int MW = 0, MH = 0;
};

struct Travel {
    const char* what;
    int overW, overH; // canvas size beyond the monitor's
    double draw;
    int steps, interval;
    QPoint start, end; // canvas point at the monitor's corner
    int seconds;       // scrolling time in the log
};

// A canvas larger than its monitor comes in at one end and travels to the other in the
// designed number of ticks, at the pace its overhang asks for, with MainTimer off all along.
TEST_F(PanoForm, APanoramaTravelsEndToEnd) {
    // clang-format off
    const Travel rows[] = {
        {"wider, from the left end", 400, 0, 0.9, 200, 50, {0, 0}, {400, 0}, 10},
        {"wider, from the right end: a draw of 50 is not above 50",
            400, 0, 0.5, 200, 50, {400, 0}, {0, 0}, 10},
        {"two pixels wider: one step, slowly", 2, 0, 0.9, 1, 100, {0, 0}, {2, 0}, 0},
        {"wider and taller: across only, the extra height cut off",
            300, 100, 0.99, 150, 50, {0, 0}, {300, 0}, 8},
        {"taller, from the top end", 0, 300, 0.51, 150, 50, {0, 0}, {0, 300}, 8},
        {"taller by 158, from the bottom: 79 steps, slowly",
            0, 158, 0.1, 79, 100, {0, 158}, {0, 0}, 8},
        {"wider by 159: 80 steps at the normal pace, a pixel over the end",
            159, 0, 0.9, 80, 50, {0, 0}, {160, 0}, 4},
    };
    // clang-format on
    for (const Travel& row : rows) {
        SCOPED_TRACE(row.what);
        platform::SetNow(QDateTime(QDate(2026, 11, 22), QTime(12, 0, 0)));
        show->lstDebug->clear();
        ShowCanvas(QSize(MW + row.overW, MH + row.overH), row.draw);
        EXPECT_EQ(Origin(), row.start);
        // However late it is, the frame does not change while it travels.
        const QDateTime late = platform::Now().addSecs(3600);
        EXPECT_FALSE(show->ChangeConditionHolds(late));
        EXPECT_EQ(show->ScrollTimer->Interval(), row.interval);
        EXPECT_EQ(TickToTheEnd(1000), row.steps);
        EXPECT_EQ(Origin(), row.end);
        EXPECT_TRUE(show->MainTimer->Enabled());
        EXPECT_TRUE(show->ChangeConditionHolds(late));
        const QStringList log = LogLines(show);
        EXPECT_TRUE(log.contains(QStringLiteral(" - scrolltimer interval is %1 %2")
                                     .arg(row.interval)
                                     .arg(row.interval == 50
                                              ? QStringLiteral("(normal pano)")
                                              : QStringLiteral("(small pano - 2x slower)"))));
        EXPECT_EQ(
            log.filter(QStringLiteral(" ... end of scrolling. Scrolltimer going off.")).size(), 1);
        EXPECT_TRUE(log.contains(QStringLiteral(" (scrolling time was %1 s )").arg(row.seconds)));
    }
}

// A canvas the size of the monitor stays where it is and leaves the timers alone.
TEST_F(PanoForm, AFrameOfTheMonitorsSizeDoesNotScroll) {
    ShowCanvas(QSize(MW, MH), 0.9);
    EXPECT_FALSE(show->ScrollTimer->Enabled());
    EXPECT_TRUE(show->MainTimer->Enabled());
    EXPECT_TRUE(LogLines(show).contains(" Normal (not a Scrolling Panoramic Image)"));
    EXPECT_FALSE(LogLines(show).contains("Start Scrolling Pano ..."));
    // The draw was left for someone else.
    EXPECT_EQ(platform::FedRandomLeft(), 1u);
}

// Held, the picture waits where it is and nothing is counted; let go, it finishes the same
// travel. A stop during the travel turns the timer off without another step.
TEST_F(PanoForm, PauseHoldsThePictureAndAStopEndsTheTravel) {
    ShowCanvas(QSize(MW + 40, MH), 0.9);
    for (int i = 0; i < 5; ++i)
        show->ScrollTimer->fire();
    const QPoint held = Origin();
    EXPECT_EQ(held, QPoint(10, 0));
    show->Paused = true;
    for (int i = 0; i < 30; ++i)
        show->ScrollTimer->fire();
    EXPECT_EQ(Origin(), held);
    EXPECT_TRUE(show->ScrollTimer->Enabled());
    EXPECT_FALSE(show->MainTimer->Enabled());
    show->Paused = false;
    EXPECT_EQ(TickToTheEnd(100), 15);
    EXPECT_EQ(Origin(), QPoint(40, 0));

    ShowCanvas(QSize(MW + 40, MH), 0.9);
    show->ScrollTimer->fire();
    ExitShow = true;
    show->ScrollTimer->fire();
    EXPECT_FALSE(show->ScrollTimer->Enabled());
    EXPECT_FALSE(show->MainTimer->Enabled());
    EXPECT_EQ(Origin(), QPoint(2, 0));
}

// Runs the show's two timers on the set clock as the event loop would: each fires whenever its
// interval has passed since it was enabled, and goes on doing so while it stays enabled.
void RunTimers(frmSlideShow* show, qint64 limitMs, const std::function<bool(qint64)>& done) {
    struct Running {
        VbTimer* timer;
        bool on = false;
        qint64 due = 0;
    } timers[] = {{show->ScrollTimer}, {show->MainTimer}};
    for (qint64 t = 0; t <= limitMs && !done(t); t += 10) {
        for (Running& r : timers) {
            if (!r.timer->Enabled()) {
                r.on = false;
                continue;
            }
            if (!r.on) r = {r.timer, true, t + r.timer->Interval()};
            if (t >= r.due) {
                r.due = t + r.timer->Interval();
                r.timer->fire();
            }
        }
        platform::AdvanceClock(10);
    }
}

// The change waits for the end of the travel: a travel that outlasts the interval is followed
// by the change at the first poll after it ends; a short one leaves the interval, counted
// from the end of the fade, to decide.
TEST_F(PanoForm, TheNextChangeWaitsForTheEndOfTheTravel) {
    struct Row {
        const char* what;
        int overhang, interval;
        // The change, in ms after the fade ended: the clock counts whole seconds and the poll
        // comes once a second, so it may come up to two seconds after its time.
        qint64 earliest, latest;
    };
    const Row rows[] = {
        {"a 20 s travel, a 5 s interval", 2 * 400, 5, 20000, 22000},
        {"a 5 s travel, a 12 s interval", 2 * 100, 12, 12000, 14000},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        show->StartShow();
        ASSERT_TRUE(show->NextImageReady);
        show->ImageInterval = static_cast<std::int16_t>(row.interval);
        show->CanvasDIB.reset(dib::ImageToDib(Canvas(QSize(MW + row.overhang, MH))));
        platform::FeedRandom({0.9});
        platform::AdvanceClock(3000);
        const double shown = show->ImagesShown;
        show->MainTimer_Timer();
        ASSERT_EQ(show->ImagesShown, shown + 1);
        ASSERT_TRUE(show->ScrollTimer->Enabled());

        qint64 scrollEnd = -1, change = -1;
        RunTimers(show, 60000, [&](qint64 t) {
            if (scrollEnd < 0 && !show->ScrollTimer->Enabled()) scrollEnd = t;
            if (show->ImagesShown > shown + 1) change = t;
            return change >= 0;
        });
        EXPECT_NEAR(static_cast<double>(scrollEnd), row.overhang / 2 * 50.0, 100.0);
        ASSERT_GE(change, 0);
        EXPECT_GT(change, scrollEnd);
        EXPECT_GE(change, row.earliest);
        EXPECT_LE(change, row.latest);
        ReloadConfig();
        show = frmSlideShow::instance();
    }
}

// A caption stays where it is on the screen while the photo travels under it, drawn by the
// photo for the time of the travel, and is a box of its own again at the end.
TEST_F(PanoForm, ACaptionStaysPutOverATravellingPhoto) {
    QLabel* box = show->CaptionBox[0];
    box->setGeometry(20, 30, 120, 40);
    box->setStyleSheet(QStringLiteral("background: rgb(250, 0, 250);"));
    box->show();
    box->raise();
    // ShowCanvas's fade would hide nothing here: the change hides captions, not the fade.
    ShowCanvas(QSize(MW + 40, MH), 0.9);
    EXPECT_FALSE(box->isVisible());
    for (int i = 0; i < 5; ++i) {
        show->ScrollTimer->fire();
        const QImage screen = show->grab().toImage();
        EXPECT_EQ(screen.pixel(25, 35), qRgb(250, 0, 250)) << i;
        EXPECT_EQ(screen.pixel(145, 35) & 0xFF000000u, 0xFF000000u);
        EXPECT_NE(screen.pixel(145, 35), qRgb(250, 0, 250)) << i;
    }
    TickToTheEnd(100);
    EXPECT_TRUE(box->isVisible());
    EXPECT_FALSE(show->thePhoto->hasOverlays());
}

} // namespace
