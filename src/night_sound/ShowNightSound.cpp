// Night hours and sound during the show.
#include "show/frmSlideShow.h"

#include "app/modMain.h"
#include "compose/DibImage.h"
#include "compose/PictureBox.h"
#include "night_sound/AudioPlayers.h"
#include "night_sound/NightZones.h"
#include "platform/Dpms.h"
#include "platform/VbTimer.h"
#include "prefs/PrefsTable.h"

#include <QPixmap>
#include <utility>

namespace {

constexpr int kNightPollMs = 60000;
constexpr int kDayPollMs = 1000;

// The frame prepared for the morning waits in the queue and in its frame slot. The night's own
// fades carry no photograph: they must neither take the queue's head as theirs nor wipe the
// slot's texts when they swap the slots (two fades swap them twice, back as they were).
class KeepPreparedFrame {
public:
    explicit KeepPreparedFrame(frmSlideShow& show)
        : show_(show), slot_(static_cast<std::size_t>(show.NextFrameSlot)),
          showList_(std::exchange(show.ShowList, {})),
          captionsList_(std::exchange(show.CaptionsList, {})), sizeText_(show.ImageSizeText[slot_]),
          note_(show.FrameNote[slot_]) {}
    ~KeepPreparedFrame() {
        show_.ShowList = std::move(showList_);
        show_.CaptionsList = std::move(captionsList_);
        show_.ImageSizeText[slot_] = sizeText_;
        show_.FrameNote[slot_] = note_;
    }
    KeepPreparedFrame(const KeepPreparedFrame&) = delete;
    KeepPreparedFrame& operator=(const KeepPreparedFrame&) = delete;

private:
    frmSlideShow& show_;
    std::size_t slot_;
    TaggedStringList showList_;
    TaggedStringList captionsList_;
    QString sizeText_;
    QString note_;
};

} // namespace

void frmSlideShow::BuildNightControls() {
    picZzzz = new QLabel(this);
    picZzzz->setObjectName(QStringLiteral("picZzzz"));
    picZzzz->setPixmap(QPixmap(QStringLiteral(":/zzzz.png")));
    picZzzz->hide();

    picNightScreen = new QWidget(this);
    picNightScreen->setObjectName(QStringLiteral("picNightScreen"));
    picNightScreen->setAttribute(Qt::WA_StyledBackground, true);
    picNightScreen->setStyleSheet(QStringLiteral("background-color: black;"));
    picNightScreen->hide();
}

bool frmSlideShow::NightModeShouldBeOn() {
    bool wanted = false;
    if (NightModeEnabled) wanted = night::NightWanted(true, NightZone, night::CurrentDayZone());
    BugLog(wanted ? QStringLiteral("Night Mode Should be ON")
                  : QStringLiteral("Night Mode Should be OFF"));
    NightModeWanted = wanted;
    return wanted;
}

void frmSlideShow::FadeToNight() {
    // A fade started inside another would blend into the surface the first one is using; the
    // next tick asks again.
    if (Crossfading) {
        BugLog(QStringLiteral("FadePanelToNight put off: a crossfade is running"));
        return;
    }
    ScrollTimer->setEnabled(false);
    NightFadeBusy = true;
    NightOn = true;
    MainTimer->setEnabled(false);
    MainTimer->setInterval(kNightPollMs);
    for (QLabel* box : CaptionBox)
        box->hide();

    BugLog(QStringLiteral("FadePanelToNight ..."));
    SetStatus(QStringLiteral("Starting Night Mode"));
    SetStatus2(QStringLiteral("Zzzz..."));

    bool interrupted = false;
    {
        KeepPreparedFrame keep(*this);

        BugLog(QStringLiteral("Creating NightScreen screen"));
        FadeFrom->hide();
        FadeFrom->clearPicture();
        QImage sleeping(qMax(FormWidth, 1), qMax(FormHeight, 1), QImage::Format_RGB32);
        sleeping.fill(Qt::black);
        StampOnPicture(picZzzz->pixmap().toImage(), sleeping, 0);
        dib::Dib sleepDIB(dib::ImageToDib(sleeping));
        if (sleepDIB)
            NewCrossfade(sleepDIB, 0, 0, FormWidth, FormHeight, 0, 0, 0, 1.0);
        else
            BugLog(QStringLiteral("Error making ZZZ dib in fade to night"));
        interrupted = ExitShow;

        if (!interrupted) {
            SetStatus(QString());
            SetStatus2(QString());
            picBootStatus->setVisible(false);
            QImage black(qMax(FormWidth, 1), qMax(FormHeight, 1), QImage::Format_RGB32);
            black.fill(Qt::black);
            dib::Dib blackDIB(dib::ImageToDib(black));
            if (blackDIB)
                NewCrossfade(blackDIB, 0, 0, FormWidth, FormHeight, 0, 0, 0, 10.0);
            else
                BugLog(QStringLiteral("Error making black dib in fade to night"));
            interrupted = ExitShow;
        }
    }
    if (interrupted) {
        // The exit only set the flag, as a fade cannot be cut short safely. A start stops the
        // show itself once this returns; at any other time nobody else is left to do it.
        if (!StartingUp) StoptheShow();
        return;
    }

    picBootStatus->hide();
    NightFadeBusy = false;
    if (NightMonitorOff) TurnMonitorOff();
    MainTimer->setEnabled(true);
}

void frmSlideShow::FadeFromNight() {
    NightFadeBusy = true;
    if (!MonitorsOn) TurnMonitorOn();
    if (ShowStatus) {
        picBootStatus->setVisible(true);
        picBootStatus->raise();
    }
    SetStatus(QStringLiteral("Waking Up !"));
    BugLog(QStringLiteral("FadePanelFromNight ..."));
    MainTimer->setInterval(kDayPollMs);
    NightOn = false;
    // The frame prepared before the night comes up at once; FinishJump ends the busy time.
    JumpToNextPhoto();
}

void frmSlideShow::ToggleNightScreen() {
    BugLog(QStringLiteral("Toggle Night Screen ..."));
    if (NightFadeBusy || Crossfading) return;
    NightOverride = !NightOverride;
    if (NightOn) {
        BugLog(QStringLiteral(" ... turning night mode OFF.  Override is now = ") +
               prefs::BoolText(NightOverride));
        FadeFromNight();
    } else {
        BugLog(QStringLiteral(" ... turning night mode ON.  Override is now = ") +
               prefs::BoolText(NightOverride));
        FadeToNight();
    }
}

void frmSlideShow::TurnMonitorOff() {
    BugLog(QStringLiteral("Turning the monitors off: ") +
           platform::MonitorPowerText(platform::SetMonitorPower(false)));
    MonitorsOn = false;
}

void frmSlideShow::TurnMonitorOn() {
    BugLog(QStringLiteral("Turning the monitors on: ") +
           platform::MonitorPowerText(platform::SetMonitorPower(true)));
    MonitorsOn = true;
}

void frmSlideShow::CloseAudioPlayer(int slot) {
    if (slot < 0 || slot >= static_cast<int>(AudioPlayerLoaded.size())) return;
    // A fade left running would take the next file loaded into this player down with it.
    VolDownTimer[static_cast<std::size_t>(slot)]->setEnabled(false);
    modDirectShow::ClosePlayer(static_cast<std::int16_t>(slot));
    AudioPlayerLoaded[static_cast<std::size_t>(slot)] = false;
}
