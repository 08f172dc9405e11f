// What a step of the fade between two frames costs, and how long a fade really lasts once its
// step time has settled. Prints, side by side:
// - the blend of one step at the screen's size: ours on 32-bit RGB surfaces, next to the plain
//   toolkit way (a painter with an opacity, on ARGB32 surfaces), and next to the painter on
//   RGB32 surfaces; each as a share of the step's budget (fade time / 65);
// - the whole step, blend and putting it on the screen: ours (repaint of the changed part of a
//   picture surface), next to the plain way (a new pixmap for a label each step);
// - the real length of successive 4-second fades of the show itself, with the tuned step time.
// Run it on the screen it measures: xvfb-run -s "-screen 0 3840x2160x24" build/FadeBench.
// --quick uses a small offscreen screen and short fades, and checks that each figure measured
// something.
#include "BenchSupport.h"
#include "app/Resources.h"
#include "app/modMain.h"
#include "compose/Crossfade.h"
#include "compose/DibImage.h"
#include "compose/PictureBox.h"
#include "config/frmConfig.h"
#include "platform/Clock.h"
#include "show/frmSlideShow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QRandomGenerator>
#include <QScreen>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {

// Runs each path once per round, in turns, so that a slow spell falls on all of them.
std::vector<double> Medians(int rounds, const std::vector<std::function<void(int)>>& paths) {
    std::vector<std::vector<double>> times(paths.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t p = 0; p < paths.size(); ++p) {
            QElapsedTimer clock;
            clock.start();
            paths[p](round);
            times[p].push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        }
    std::vector<double> out;
    for (auto& t : times)
        out.push_back(Median(t));
    return out;
}

QImage Picture(QSize size, quint32 seed) {
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(seed);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = (random.generate() & 0x3F3F3F3Fu) +
                      static_cast<quint32>(x * 255 / image.width()) + 0xFF000000u;
    }
    return image;
}

} // namespace

int main(int argc, char** argv) {
    const std::optional<bool> mode = QuickMode(argc, argv);
    if (!mode) return 2;
    const bool quick = *mode;
    QTemporaryDir dir;
    // Offscreen (as the test run has it) gets a screen of the bench's size; on a display the
    // display's own screen is measured.
    if (qgetenv("QT_QPA_PLATFORM") == "offscreen")
        UseOffscreenScreen(dir, quick ? QSize(640, 360) : QSize(3840, 2160));
    QApplication app(argc, argv);
    InitResources();
    FreeImage_Initialise();
    Checks checks;

    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    const double fadeSeconds = quick ? 1.0 : 4.0;
    const double budgetMs = fadeSeconds * 1000 / fade::kSteps;
    const int rounds = quick ? 5 : 15;
    std::printf("Screen %dx%d on %s; fade %.0f s, a step's budget %.1f ms\n", screen.width(),
                screen.height(), qPrintable(QGuiApplication::platformName()), fadeSeconds,
                budgetMs);

    // --- The blend of one step -----------------------------------------------------------
    const QImage next = Picture(screen, 1);
    QImage ours = Picture(screen, 2);
    QImage argbUnder = ours.convertToFormat(QImage::Format_ARGB32);
    const QImage argbNext = next.convertToFormat(QImage::Format_ARGB32);
    QImage rgbUnder = ours.copy();
    const auto ramp = fade::Ramp();
    auto alphaOf = [&ramp](int round) { return ramp[static_cast<std::size_t>(round * 7 % 65)]; };
    auto painterBlend = [](QImage& under, const QImage& top, int alpha) {
        QPainter p(&under);
        p.setOpacity(alpha / 255.0);
        p.drawImage(0, 0, top);
    };
    const std::vector<double> blend =
        Medians(rounds, {[&](int r) { fade::BlendOver(ours, next, QPoint(0, 0), alphaOf(r)); },
                         [&](int r) { painterBlend(argbUnder, argbNext, alphaOf(r)); },
                         [&](int r) { painterBlend(rgbUnder, next, alphaOf(r)); }});
    std::printf("Blend of a step (median of %d):\n", rounds);
    std::printf("  ours, RGB32:                %7.2f ms  %5.1f %% of the budget\n", blend[0],
                100 * blend[0] / budgetMs);
    std::printf("  painter opacity, ARGB32:    %7.2f ms  %5.1f %%  (x%.2f the time of ours)\n",
                blend[1], 100 * blend[1] / budgetMs, blend[1] / blend[0]);
    std::printf("  painter opacity, RGB32:     %7.2f ms  %5.1f %%  (x%.2f the time of ours)\n",
                blend[2], 100 * blend[2] / budgetMs, blend[2] / blend[0]);
    checks.expect(blend[0] > 0 && blend[1] > 0, "the blends took measurable time");
    checks.expect(ours.pixel(screen.width() / 2, screen.height() / 2) !=
                      Picture(screen, 2).pixel(screen.width() / 2, screen.height() / 2),
                  "our blend changed the surface");
    if (!quick) checks.expect(blend[0] <= 0.10 * budgetMs, "our blend within 10 % of the budget");

    // --- The whole step, on the screen ------------------------------------------------------
    PictureBox surface;
    surface.setGeometry(QRect(QPoint(0, 0), screen));
    surface.setWindowFlags(Qt::FramelessWindowHint);
    surface.setPicture(Picture(screen, 3));
    surface.show();
    QLabel label;
    label.setGeometry(QRect(QPoint(0, 0), screen));
    label.setWindowFlags(Qt::FramelessWindowHint);
    QImage labelUnder = Picture(screen, 3).convertToFormat(QImage::Format_ARGB32);
    label.setPixmap(QPixmap::fromImage(labelUnder));
    label.show();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
    const std::vector<double> step =
        Medians(rounds, {[&](int r) {
                             const QRect changed =
                                 fade::BlendOver(surface.picture(), next, QPoint(0, 0), alphaOf(r));
                             surface.repaint(changed);
                             QCoreApplication::processEvents();
                         },
                         [&](int r) {
                             painterBlend(labelUnder, argbNext, alphaOf(r));
                             label.setPixmap(QPixmap::fromImage(labelUnder));
                             label.repaint();
                             QCoreApplication::processEvents();
                         }});
    surface.hide();
    label.hide();
    std::printf("Whole step, blend and screen (median of %d):\n", rounds);
    std::printf("  ours, repaint of the surface:      %7.2f ms  %5.1f %% of the budget\n", step[0],
                100 * step[0] / budgetMs);
    std::printf(
        "  plain, new pixmap for a label:     %7.2f ms  %5.1f %%  (x%.2f the time of ours)\n",
        step[1], 100 * step[1] / budgetMs, step[1] / step[0]);
    checks.expect(step[0] >= blend[0] * 0.5, "the step includes the blend");
    if (!quick) checks.expect(step[0] <= 0.5 * budgetMs, "our step within 50 % of the budget");

    // --- Successive fades of the show --------------------------------------------------------
    InstallDir = dir.path();
    platform::UseSystemClock();
    frmConfig::instance()->Initialize();
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    show->GetScreenSize();
    show->PrepScreen();
    show->xFadeStepTime = 0.1f;
    const int fades = quick ? 2 : 10;
    std::vector<double> lengths;
    std::printf("Fades of %.0f s (the step time tunes on whole seconds, so it hunts):\n",
                fadeSeconds);
    for (int i = 0; i < fades; ++i) {
        dib::Dib frame(dib::ImageToDib(Picture(QSize(show->FormWidth, show->FormHeight), 10 + i)));
        const int sleepBefore =
            fade::SleepMsFor(static_cast<float>(fadeSeconds), show->xFadeStepTime);
        QElapsedTimer clock;
        clock.start();
        show->NewCrossfade(frame, 0, 0, show->FormWidth, show->FormHeight, 0, 0, 0, fadeSeconds);
        const double length = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        lengths.push_back(length);
        std::printf("  fade %2d: sleep %3d ms, real length %.2f s, read as %.0f s, step time now "
                    "%.4f\n",
                    i + 1, sleepBefore, length, static_cast<double>(show->LastFadeSeconds),
                    static_cast<double>(show->xFadeStepTime));
    }
    checks.expect(!show->Crossfading && lengths.back() > 0, "the show's fades ran to their end");
    if (!quick) {
        // Settled: the last four fades, after the first ones found the pace.
        std::vector<double> settled(lengths.end() - 4, lengths.end());
        const double median = Median(settled);
        std::printf("  settled median %.2f s for %.0f s (%+.0f %%)\n", median, fadeSeconds,
                    100 * (median - fadeSeconds) / fadeSeconds);
        for (double l : settled)
            checks.expect(std::abs(l - fadeSeconds) <= 0.25 * fadeSeconds,
                          "each settled fade within 25 % of its setting");
    }
    frmSlideShow::unload();
    frmConfig::unload();
    return checks.ok() ? 0 : 1;
}
