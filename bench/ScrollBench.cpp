// What one step of a travelling panorama costs on the screen, next to redrawing the frame.
// The show's own form carries a 9000 x 2160 canvas on a 3840 x 2160 screen; printed side by
// side, as medians:
// - ours: ScrollTimer_Timer, which moves thePhoto by the step, and the repaint that the move
//   causes, processed;
// - ours again with a caption box over the photo, which the travelling photo draws itself so
//   that the toolkit can still shift the screen's contents;
// - plain: the visible part of the canvas cut out and set as a new picture of a screen-sized
//   label each tick, processed;
// each as a share of the 50 ms tick, with the ratio between them.
// Offscreen (as the test run has it) the bench makes its own 3840 x 2160 screen; on a display it
// measures the display's screen: xvfb-run -s "-screen 0 3840x2160x24" build/ScrollBench.
// --quick takes fewer rounds and checks only that each figure measured something.
#include "BenchSupport.h"
#include "app/Resources.h"
#include "app/modMain.h"
#include "compose/DibImage.h"
#include "config/frmConfig.h"
#include "platform/Clock.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "show/frmSlideShow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLabel>
#include <QRandomGenerator>
#include <QScreen>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {

// Milliseconds of each run of the step, after a few unmeasured ones.
std::vector<double> Times(int rounds, const std::function<void()>& step) {
    for (int i = 0; i < 3; ++i)
        step();
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer clock;
        clock.start();
        step();
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    return times;
}

QImage Picture(QSize size) {
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(5);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = (random.generate() & 0x3F3F3F3Fu) +
                      static_cast<quint32>(x * 255 / image.width()) + 0xFF000000u;
    }
    return image;
}

// Counts the paints a widget receives, so that the bench knows the steps reached the screen.
class PaintCounter : public QObject {
public:
    int paints = 0;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return QObject::eventFilter(watched, event);
    }
};

} // namespace

int main(int argc, char** argv) {
    const std::optional<bool> mode = QuickMode(argc, argv);
    if (!mode) return 2;
    const bool quick = *mode;
    QTemporaryDir dir;
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen") UseOffscreenScreen(dir, QSize(3840, 2160));
    QApplication app(argc, argv);
    InitResources();
    FreeImage_Initialise();
    Checks checks;

    InstallDir = dir.path();
    frmConfig::instance()->Initialize();
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    show->GetScreenSize();
    show->PrepScreen();
    const int MW = show->MonitorWidth[0], MH = show->MonitorHeight[0];
    const QSize canvasSize(MW + 5160, MH);
    const double tickMs = show->ScrollInterval;
    const int rounds = quick ? 7 : 41;
    std::printf("Screen %dx%d on %s; canvas %dx%d; a tick is %.0f ms\n", MW, MH,
                qPrintable(QGuiApplication::platformName()), canvasSize.width(),
                canvasSize.height(), tickMs);

    // The frame comes on as in the show, from its left end; the timer is driven by hand, and no
    // change may start behind it.
    const QImage canvas = Picture(canvasSize);
    const auto slot = static_cast<std::size_t>(show->NextFrameSlot);
    QPoint place, area;
    platform::FeedRandom({0.9});
    show->NewCheckAndSetupPanoScrolling(canvasSize.width(), canvasSize.height(), 0,
                                        show->PanoScrolls[slot], show->PanoHorizontal[slot], place,
                                        area, show->PanoStep[slot], show->PanoSteps[slot]);
    show->xFadeStepTime = 100.0f;
    dib::Dib frame(dib::ImageToDib(canvas));
    show->NewCrossfade(frame, area.x(), area.y(), MW, MH, place.x(), place.y(), 0, 1.0);
    show->ScrollPano();
    show->ScrollTimer->setEnabled(false);
    show->NextImageReady = false;
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();

    PaintCounter photoPaints;
    show->thePhoto->installEventFilter(&photoPaints);
    const int startX = show->thePhoto->x();
    const std::vector<double> ours = Times(rounds, [&] {
        show->ScrollTimer_Timer();
        QCoreApplication::processEvents();
    });
    const int moved = startX - show->thePhoto->x();
    checks.expect(moved == (rounds + 3) * show->ScrollStep, "each of our steps moved the photo");
    checks.expect(photoPaints.paints >= rounds, "each of our steps repainted the photo");

    // A caption box over the photo: as a sibling over the photo it would keep the toolkit from
    // shifting the screen; the scroll has the photo draw its picture instead.
    QLabel* caption = show->CaptionBox[0];
    caption->setText(QStringLiteral("Garden panorama, a caption over the travelling photo"));
    caption->setGeometry(MW / 4, MH - 200, MW / 2, 80);
    caption->show();
    caption->raise();
    show->ScrollPano();
    show->ScrollTimer->setEnabled(false);
    checks.expect(show->thePhoto->hasOverlays() && !caption->isVisible(),
                  "the travelling photo draws the caption");
    const int paintsBefore = photoPaints.paints;
    const std::vector<double> covered = Times(rounds, [&] {
        show->ScrollTimer_Timer();
        QCoreApplication::processEvents();
    });
    for (QWidget* box : show->thePhoto->clearOverlays())
        box->hide();
    checks.expect(photoPaints.paints - paintsBefore >= rounds,
                  "each step under a caption repainted the photo");

    // The plain way: the whole visible frame anew on each tick.
    QLabel* redraw = new QLabel(show);
    redraw->setGeometry(0, 0, MW, MH);
    redraw->show();
    redraw->raise();
    PaintCounter redrawPaints;
    redraw->installEventFilter(&redrawPaints);
    int offset = 0;
    const std::vector<double> plain = Times(rounds, [&] {
        offset += show->ScrollStep;
        redraw->setPixmap(QPixmap::fromImage(canvas.copy(offset, 0, MW, MH)));
        QCoreApplication::processEvents();
    });
    checks.expect(redrawPaints.paints >= rounds, "each plain step repainted the frame");
    delete redraw;

    const double a = Median(ours), b = Median(plain), c = Median(covered);
    std::printf("One step, processed (median of %d):\n", rounds);
    std::printf("  ours, thePhoto moved:              %7.2f ms  %5.1f %% of the tick\n", a,
                100 * a / tickMs);
    std::printf(
        "  plain, visible frame redrawn:      %7.2f ms  %5.1f %%  (x%.2f the time of ours)\n", b,
        100 * b / tickMs, a > 0 ? b / a : 0.0);
    std::printf(
        "  ours, with a caption over it:      %7.2f ms  %5.1f %%  (x%.2f the time of ours)\n", c,
        100 * c / tickMs, a > 0 ? c / a : 0.0);
    checks.expect(a > 0 && b > 0 && c > 0, "each way took measurable time");
    if (!quick) {
        checks.expect(a <= 0.10 * tickMs, "our step within 10 % of the tick");
        checks.expect(c <= 0.10 * tickMs, "our step under a caption within 10 % of the tick");
    }

    frmSlideShow::unload();
    frmConfig::unload();
    return checks.ok() ? 0 : 1;
}
