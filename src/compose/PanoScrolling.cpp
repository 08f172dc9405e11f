// Panoramas: a canvas larger than its monitor comes in at one end and travels to the other
// while the show's clock stands still.
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/PictureBox.h"
#include "platform/Clock.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "show/frmSlideShow.h"

// Where a frame goes on its monitor, and, for a canvas larger than the monitor, from which end
// it will scroll: the crossfade brings in the monitor-sized part at that end, and thePhoto is
// placed so that this part lies on the monitor when the fade ends.
void frmSlideShow::NewCheckAndSetupPanoScrolling(int canvasW, int canvasH, int monitor,
                                                 bool& scrolls, bool& horizontal, QPoint& place,
                                                 QPoint& area, int& stepPixels, int& steps) {
    const auto m = static_cast<std::size_t>(qBound(0, monitor, 4));
    const int MW = MonitorWidth[m], MH = MonitorHeight[m];
    scrolls = false;
    horizontal = false;
    place = QPoint(MonitorLeft[m], MonitorTop[m]);
    area = QPoint(0, 0);
    // A draw above 50 starts at the left or top end: 49 draws in 100. The small lean towards
    // the other end is kept.
    auto draw = [] { return static_cast<int>(vb::Int(100 * platform::Rnd())); };
    if (canvasW > MW) {
        BugLog(QStringLiteral(" Horizontal Scrolling Panoramic Image"));
        scrolls = true;
        horizontal = true;
        steps = static_cast<int>(vb::RoundHalfEven(static_cast<double>(canvasW - MW) / ScrollStep));
        if (draw() > 50) {
            BugLog(QStringLiteral(" Moving to left edge"));
            stepPixels = ScrollStep;
        } else {
            // The monitor's left is left out here; so it has always been.
            BugLog(QStringLiteral(" Moving to right edge"));
            place.setX(MW - canvasW);
            area.setX(canvasW - MW);
            stepPixels = -ScrollStep;
        }
        BugLog(QStringLiteral("   %1 scroll steps of %2").arg(steps).arg(stepPixels));
    } else if (canvasH > MH) {
        BugLog(QStringLiteral(" Vertical Scrolling Panoramic Image"));
        scrolls = true;
        steps = static_cast<int>(vb::RoundHalfEven(static_cast<double>(canvasH - MH) / ScrollStep));
        if (draw() > 50) {
            BugLog(QStringLiteral(" Moving to top edge"));
            stepPixels = ScrollStep;
        } else {
            BugLog(QStringLiteral(" Moving to bottom edge"));
            place.setY(MH - canvasH + MonitorTop[m]);
            area.setY(canvasH - MH);
            stepPixels = -ScrollStep;
        }
        BugLog(QStringLiteral("   %1 scroll steps of %2").arg(steps).arg(stepPixels));
    } else {
        BugLog(QStringLiteral(" Normal (not a Scrolling Panoramic Image)"));
    }
    BugLog(QStringLiteral(" xfade area: %1,%2  %3x%4").arg(area.x()).arg(area.y()).arg(MW).arg(MH));
    BugLog(QStringLiteral("   position: %1,%2").arg(place.x()).arg(place.y()));
}

void frmSlideShow::ScrollPano() {
    const auto slot = static_cast<std::size_t>(CurrentFrameSlot);
    if (!PanoScrolls[slot]) return;
    BugLog(QStringLiteral("Start Scrolling Pano ..."));
    MainTimer->setEnabled(false);
    // A short overhang at full pace would flash past: under 160 pixels it goes at half speed.
    if (PanoSteps[slot] >= 80) {
        ScrollTimer->setInterval(ScrollInterval);
        BugLog(QStringLiteral(" - scrolltimer interval is %1 (normal pano)")
                   .arg(ScrollTimer->Interval()));
    } else {
        ScrollTimer->setInterval(ScrollInterval * 2);
        BugLog(QStringLiteral(" - scrolltimer interval is %1 (small pano - 2x slower)")
                   .arg(ScrollTimer->Interval()));
    }
    ScrollStartTime =
        static_cast<std::int32_t>(vb::RoundHalfEven(platform::SecondsSinceMidnight()));
    ScrollTick = 1;
    // The canvas covers the whole control and has no transparent parts: so marked, a move lets
    // the toolkit shift what is on the screen and paint only the strip that comes into view,
    // rather than the screen's worth of the photo with the form and Backdrop beneath it.
    thePhoto->setAttribute(Qt::WA_OpaquePaintEvent, true);
    // The captions stay where they are on the screen, drawn by the photo for the travel.
    std::vector<PhotoLabel::Overlay> overlays;
    for (auto* box : CaptionBox)
        if (box->isVisible()) {
            overlays.push_back({box, box->geometry(), box->grab()});
            box->hide();
        }
    thePhoto->setOverlays(std::move(overlays));
    BugLog(QStringLiteral(" - scroll prep done.  Turning on ScrollTimer ..."));
    ScrollTimer->setEnabled(true);
}

// One step of the travel. The canvas already lies whole in thePhoto, so a step only moves it:
// nothing is recomputed, and the toolkit shifts what is on the screen and paints the strip that
// comes into view. MainTimer is kept off on every tick, as ChangePhotos turns it on after the
// scroll has started; it comes back when the far end is reached.
void frmSlideShow::ScrollTimer_Timer() {
    MainTimer->setEnabled(false);
    if (ExitShow) {
        ScrollTimer->setEnabled(false);
        return;
    }
    // Held: nothing moves and nothing is counted, so the travel goes on from here.
    if (Paused) return;

    const auto slot = static_cast<std::size_t>(CurrentFrameSlot);
    if (PanoHorizontal[slot])
        thePhoto->moveUnderOverlays(QPoint(thePhoto->x() - PanoStep[slot], thePhoto->y()));
    else
        thePhoto->moveUnderOverlays(QPoint(thePhoto->x(), thePhoto->y() - PanoStep[slot]));

    ++ScrollTick;
    if (ScrollTick > PanoSteps[slot]) {
        BugLog(QStringLiteral(" ... end of scrolling. Scrolltimer going off."));
        ScrollTimer->setEnabled(false);
        const auto now =
            static_cast<std::int32_t>(vb::RoundHalfEven(platform::SecondsSinceMidnight()));
        BugLog(QStringLiteral(" (scrolling time was %1 s )").arg(now - ScrollStartTime));
        // The captions are boxes of their own again.
        for (QWidget* box : thePhoto->clearOverlays())
            box->show();
        MainTimer->setEnabled(true);
    }
}
