// Building and changing frames.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/DibImage.h"
#include "platform/Clock.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "show/frmSlideShow.h"

#include <QPainter>
#include <QPixmap>

// STAND-IN until the splash overlays and the real fade exist: the opening frame is the splash
// on black, put up at once.
void frmSlideShow::FadePanelToBlack() {
    for (QLabel* box : CaptionBox)
        box->hide();
    SetStatus(QStringLiteral("Fade Panel To Black"));
    BugLog(QStringLiteral("FadePanelToBlack ..."));

    QImage frame(qMax(FormWidth, 1), qMax(FormHeight, 1), QImage::Format_ARGB32);
    frame.fill(Qt::black);
    QPainter p(&frame);
    const QImage splash(QStringLiteral(":/splash.png"));
    const QImage pressF1(QStringLiteral(":/pressf1.png"));
    auto stamp = [&](const QImage& img, int top) {
        if (img.isNull()) return;
        QImage keyed = img.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < keyed.height(); ++y) {
            auto* row = reinterpret_cast<QRgb*>(keyed.scanLine(y));
            for (int x = 0; x < keyed.width(); ++x)
                if ((row[x] & 0xFFFFFF) == 0xFF00FF) row[x] = 0;
        }
        p.drawImage((FormWidth - keyed.width()) / 2, top, keyed);
    };
    stamp(splash, 2 * (CaptionHeight - splash.height()) / 3 + CaptionTop);
    stamp(pressF1, CaptionTop + CaptionHeight - pressF1.height());
    p.end();

    dib::Dib toDIB(dib::ImageToDib(frame));
    if (toDIB) {
        NewCrossfade(toDIB, 0, 0, FormWidth, FormHeight, 0, 0, 0, 1.0);
    } else {
        BugLog(QStringLiteral("error making toDIB in Fade Panel To Black"));
    }
    if (!ExitShow) NextChangeTime = platform::Now().addSecs(2);
}

// STAND-IN until the blended fade exists: the new frame replaces the old one at once. What
// the fade does besides blending is done here: the frame's identity is taken over, the frame
// slots swap and the next change is timed from now.
void frmSlideShow::NewCrossfade(dib::Dib& sourceDib, int areaX, int areaY, int areaW, int areaH,
                                int placeX, int placeY, int monitor, double seconds) {
    Q_UNUSED(seconds);
    Crossfading = true;
    BugLog(QStringLiteral("Start of Crossfade Routine.  Xfade area of new image: %1,%2  %3 x %4")
               .arg(areaX)
               .arg(areaY)
               .arg(areaW)
               .arg(areaH));
    BugLog(QStringLiteral("        Placing thePhoto at : %1,%2").arg(placeX).arg(placeY));
    BugLog(QStringLiteral("          Monitor Set : %1").arg(monitor));
    raise();

    if (!ShowList.isEmpty()) {
        CurrentImage = ShowList.text(0);
        CurrentImageTag = ShowList.tag(0);
        PreviousFolder = CurrentFolder;
        CurrentFolder = common::FolderOf(CurrentImage);
        ShowList.remove(0);
        const QString caption = CaptionsList.text(0);
        const int bar = static_cast<int>(caption.indexOf('|'));
        CaptionFullName = (bar >= 0 ? caption.left(bar) : caption).trimmed();
        CaptionSource = (bar >= 0 ? caption.mid(bar + 1) : QString()).trimmed();
        CaptionsList.remove(0);
    }
    SetStatus(QStringLiteral("Crossfading ... "));

    const QImage frame = dib::DibToImage(sourceDib.get());
    if (!frame.isNull()) {
        // What the fade ends on: the screen as it was, with the frame's visible part over its
        // monitor. It stays under thePhoto, so that the other monitors keep their pictures.
        const auto m = static_cast<std::size_t>(qBound(0, monitor, 4));
        QPixmap screen(qMax(FormWidth, 1), qMax(FormHeight, 1));
        screen.fill(Qt::black);
        QPainter p(&screen);
        p.drawPixmap(0, 0, Backdrop->pixmap());
        if (thePhoto->isVisible()) p.drawPixmap(thePhoto->pos(), thePhoto->pixmap());
        p.drawImage(QPoint(MonitorLeft[m], MonitorTop[m]), frame,
                    QRect(areaX, areaY, areaW, areaH));
        p.end();
        Backdrop->setPixmap(screen);
        Backdrop->setGeometry(0, 0, FormWidth, FormHeight);
        thePhoto->setPixmap(QPixmap::fromImage(frame));
        thePhoto->setGeometry(placeX, placeY, frame.width(), frame.height());
        thePhoto->show();
        thePhoto->repaint();
    }
    sourceDib.reset();

    if (!StartingUp) ImagesShown += 1.0;
    std::swap(CurrentFrameSlot, NextFrameSlot);
    PrevCanvasPosition = -1;
    Crossfading = false;
    NextChangeTime = platform::Now().addSecs(ImageInterval);
    BugLog(QStringLiteral("CROSSFADE COMPLETE      (the crossfade took 0 s)"));
    BugLog(QString());
}

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

// STAND-IN until panoramas scroll: nothing moves.
void frmSlideShow::ScrollPano() {
    ScrollTimer->setEnabled(false);
}
