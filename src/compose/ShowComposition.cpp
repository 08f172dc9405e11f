// Building and changing frames.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/Crossfade.h"
#include "compose/DibImage.h"
#include "compose/PictureBox.h"
#include "platform/Clock.h"
#include "platform/MemInfo.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "show/frmSlideShow.h"

#include <QCoreApplication>
#include <QPixmap>

void frmSlideShow::StampOnPicture(const QImage& source, QImage& target, std::int16_t position) {
    if (source.isNull()) return;
    // Stretched by the pixel aspect, so that the overlay keeps its shape on a stretched screen.
    const double aspect =
        ActiveWidescreenFactor > 0 ? static_cast<double>(ActiveWidescreenFactor) : 1.0;
    const int w = qMax(1, static_cast<int>(vb::RoundHalfEven(source.width() / aspect)));
    const QImage stamp =
        w == source.width() ? source : source.scaled(w, source.height(), Qt::IgnoreAspectRatio);
    picStamp->setPixmap(QPixmap::fromImage(stamp));
    if (MultiMonitors) {
        for (int i = 1; i <= 4; ++i)
            if (MonitorEnabled[static_cast<std::size_t>(i)])
                fade::StampKeyed(target, stamp,
                                 fade::StampPlace(monitors::MonitorRect(*this, i), stamp.width(),
                                                  stamp.height(), position));
    } else {
        fade::StampKeyed(target, stamp,
                         fade::StampPlace(monitors::MonitorRect(*this, 0), stamp.width(),
                                          stamp.height(), position));
    }
}

void frmSlideShow::SaveCurrentDesktopInPreviousStack() {
    for (int n = qMin(PrevCanvasCount, static_cast<int>(PrevCanvas.size()) - 1); n >= 1; --n)
        PrevCanvas[static_cast<std::size_t>(n)]->setPixmap(
            PrevCanvas[static_cast<std::size_t>(n - 1)]->pixmap());
    QPixmap screen;
    GrabMonitorArea(0, screen);
    FadeTo->setPicture(screen.toImage());
    PrevCanvas[0]->setPixmap(QPixmap::fromImage(FadeTo->picture()));
    FadeTo->clearPicture();
    PrevCanvasCount = qMin(PrevCanvasCount + 1, PrevCanvasDepth);
}

void frmSlideShow::FadePanelToBlack() {
    for (auto* box : CaptionBox)
        box->hide();
    SetStatus(QStringLiteral("Fade Panel To Black"));
    BugLog(QStringLiteral("FadePanelToBlack ..."));
    FadeFrom->hide();
    FadeFrom->clearPicture();

    // The first full frame of the show, built off screen: the splash with the help hint below.
    QImage first(qMax(FormWidth, 1), qMax(FormHeight, 1), QImage::Format_RGB32);
    first.fill(Qt::black);
    const QImage splash = picSplash->pixmap().toImage();
    StampOnPicture(splash, first, 0);
    StampOnPicture(picPressF1->pixmap().toImage(), first, 2);
    dib::Dib toDIB(dib::ImageToDib(first));

    // What the screen shows meanwhile: the splash alone, from which the hint fades in.
    SetFadersToMonitor(0);
    QImage now(qMax(FadeFrom->width(), 1), qMax(FadeFrom->height(), 1), QImage::Format_RGB32);
    now.fill(Qt::black);
    StampOnPicture(splash, now, 0);
    FadeFrom->setPicture(std::move(now));
    FadeFrom->show();
    FadeFrom->raise();

    if (toDIB) {
        NewCrossfade(toDIB, 0, 0, FormWidth, FormHeight, 0, 0, 0, 1.0);
    } else {
        BugLog(QStringLiteral("error making toDIB in Fade Panel To Black"));
    }
    if (!ExitShow) NextChangeTime = platform::Now().addSecs(2);
}

void frmSlideShow::NewCrossfade(dib::Dib& sourceDib, int areaX, int areaY, int areaW, int areaH,
                                int placeX, int placeY, int monitor, double seconds) {
    Crossfading = true;
    BugLog(QStringLiteral("Start of Crossfade Routine.  Xfade area of new image: %1,%2  %3 x %4")
               .arg(areaX)
               .arg(areaY)
               .arg(areaW)
               .arg(areaH));
    BugLog(QStringLiteral("        Placing thePhoto at : %1,%2").arg(placeX).arg(placeY));
    BugLog(QStringLiteral("          Monitor Set : %1").arg(monitor));
    // The fades of the opening are silent.
    if (!StartingUp && PlaySound) PlayAudio(0);
    raise();
    SaveCurrentDesktopInPreviousStack();

    // The frame counts as shown from the moment its fade starts.
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
    // After the frame's folder is known: music from the photo's folder follows it.
    if (PlayMusic) PlayBackgroundMusic();
    SetStatus(QStringLiteral("Crossfading ... "));

    // The blend starts from what the screen shows, captions and all.
    QPixmap screen;
    GrabMonitorArea(0, screen);
    FadeFrom->setGeometry(0, 0, screen.width(), screen.height());
    FadeFrom->setPicture(screen.toImage());
    FadeFrom->show();
    FadeFrom->raise();
    FadeFrom->repaint();
    thePhoto->hide();
    PrevCanvasPosition = -1;
    for (int i = 0; i <= qMin(PrevCanvasCount, static_cast<int>(PrevCanvas.size()) - 1); ++i)
        PrevCanvas[static_cast<std::size_t>(i)]->hide();
    thePhoto->clear();
    thePhoto->clearOverlays();
    FadeTo->clearPicture();

    // Only the part that will be visible is blended, however large the canvas.
    {
        dib::Dib area(
            sourceDib ? FreeImage_Copy(sourceDib.get(), areaX, areaY, areaX + areaW, areaY + areaH)
                      : nullptr);
        if (area) FadeTo->setPicture(dib::DibToImage(area.get()));
    }

    if (xFadeStepTime == 0.0f) xFadeStepTime = 0.1f;
    FadeSleepMs = fade::SleepMsFor(static_cast<float>(seconds), xFadeStepTime);
    const QDateTime start = platform::Now();
    BugLog(QStringLiteral("Starting Crossfade of FadeTo over FadeFrom  : stepsize increment is 0.1 "
                          "Speed is %1")
               .arg(FadeSleepMs));

    const auto m = static_cast<std::size_t>(qBound(0, monitor, 4));
    const QPoint at(MonitorLeft[m], MonitorTop[m]);
    // Each step blends the new picture over what the step before left, not over the old
    // screen: the old picture is gone long before the ramp ends, and that is the look.
    for (const int alpha : fade::Ramp()) {
        platform::Sleep(FadeSleepMs);
        const QRect changed = fade::BlendOver(FadeFrom->picture(), FadeTo->picture(), at, alpha);
        if (!changed.isEmpty()) FadeFrom->repaint(changed);
        if (ExitShow) return;
        QCoreApplication::processEvents();
    }

    LastFadeSeconds = static_cast<float>(fade::WholeSecondsBetween(start, platform::Now()));

    // The blended screen stays underneath, so that a smaller picture is seen against what the
    // fade ended on.
    Backdrop->setGeometry(0, 0, FadeFrom->picture().width(), FadeFrom->picture().height());
    Backdrop->setPixmap(QPixmap::fromImage(FadeFrom->picture()));
    Backdrop->repaint();
    FadeTo->clearPicture();
    FadeFrom->hide();
    FadeFrom->clearPicture();

    if (sourceDib) {
        const QImage frame = dib::DibToImage(sourceDib.get());
        thePhoto->setGeometry(placeX, placeY, frame.width(), frame.height());
        thePhoto->setPixmap(QPixmap::fromImage(frame));
        thePhoto->repaint();
        thePhoto->show();
    }
    sourceDib.reset();

    if (FadeSleepMs == 0) FadeSleepMs = 1;
    xFadeStepTime = fade::TunedStepTime(LastFadeSeconds, FadeSleepMs, xFadeStepTime);
    BugLog(QStringLiteral("(xfade step is now %1)")
               .arg(QString::number(static_cast<double>(xFadeStepTime), 'g', 7)));

    if (!StartingUp) ImagesShown += 1.0;
    std::swap(CurrentFrameSlot, NextFrameSlot);
    ImageSizeText[static_cast<std::size_t>(NextFrameSlot)].clear();
    FrameNote[static_cast<std::size_t>(NextFrameSlot)].clear();
    Crossfading = false;
    NextChangeTime = platform::Now().addSecs(ImageInterval);
    BugLog(QStringLiteral("CROSSFADE COMPLETE      (the crossfade took %1 s)")
               .arg(QString::number(static_cast<double>(LastFadeSeconds), 'g', 7)));
    BugLog(QString());
    // The frame's work buffers are gone now; their pages go back before the next frame.
    platform::ReleaseFreedMemory();
}
