#include "show/frmSlideShow.h"

#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "compose/DibImage.h"
#include "compose/PictureBox.h"
#include "config/frmConfig.h"
#include "night_sound/SoundMusic.h"
#include "platform/Clock.h"
#include "platform/Cursor.h"
#include "platform/Dialogs.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"

#include <QApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QPixmap>
#include <QVBoxLayout>

int LongProcessIntervalFor(std::int16_t imageInterval) {
    if (imageInterval > 50) return 60000;
    return vb::Wrap16(static_cast<std::int64_t>(imageInterval) * 1000 + 10000);
}

std::int16_t NextFrameCounter(std::int16_t counter) {
    std::int16_t next = vb::Wrap16(static_cast<std::int64_t>(counter) + 1);
    return next > 9999 ? static_cast<std::int16_t>(999) : next;
}

frmSlideShow::frmSlideShow() {
    setObjectName(QStringLiteral("frmSlideShow"));
    setWindowTitle(QStringLiteral("Tessaview Slide Show"));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                   Qt::X11BypassWindowManagerHint);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::black);
    setPalette(pal);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);

    MainTimer = new VbTimer(1000, false, this);
    MainTimer->setHandler([this] { MainTimer_Timer(); });
    LongProcessTimer = new VbTimer(20000, false, this);
    LongProcessTimer->setHandler([this] { LongProcessTimer_Timer(); });
    // Enabled from the start, as built; Initialize stops it.
    ScrollTimer = new VbTimer(100, true, this);
    ScrollTimer->setHandler([this] { ScrollTimer_Timer(); });
    for (std::size_t i = 0; i < VolDownTimer.size(); ++i) {
        VolDownTimer[i] = new VbTimer(200, false, this);
        VolDownTimer[i]->setObjectName(QStringLiteral("VolDownTimer(%1)").arg(i));
        VolDownTimer[i]->setHandler([this, i] { VolDownTimer_Timer(static_cast<int>(i)); });
    }

    BuildControls();
    NextChangeTime = platform::Now();
    // A folder of photographs holds much besides music.
    MusicFileBox.Pattern = QString::fromLatin1(sound::kAudioFilePattern);
}

frmSlideShow::~frmSlideShow() {
    if (filtering_) qApp->removeEventFilter(this);
    CanvasDIB.reset();
}

void frmSlideShow::beforeUnload() {
    if (filtering_) {
        qApp->removeEventFilter(this);
        filtering_ = false;
    }
    releaseKeyboard();
    MainTimer->setEnabled(false);
    LongProcessTimer->setEnabled(false);
    ScrollTimer->setEnabled(false);
    for (VbTimer* fade : VolDownTimer)
        fade->setEnabled(false);
    // The debug log lives as long as the form.
    DebugLog::instance().SetOff();
    CloseMemLog();
    // A show unloaded without being stopped must not leave its sounds playing.
    for (int slot = 0; slot < static_cast<int>(AudioPlayerLoaded.size()); ++slot)
        if (AudioPlayerLoaded[static_cast<std::size_t>(slot)]) CloseAudioPlayer(slot);
}

void frmSlideShow::BuildControls() {
    Backdrop = new QLabel(this);
    Backdrop->setObjectName(QStringLiteral("Backdrop"));
    thePhoto = new PhotoLabel(this);
    thePhoto->setObjectName(QStringLiteral("thePhoto"));
    thePhoto->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Above the pictures, below captions, status and debug window: created in that order.
    FadeFrom = new PictureBox(this);
    FadeFrom->setObjectName(QStringLiteral("FadeFrom"));
    FadeFrom->hide();
    FadeTo = new PictureBox(this);
    FadeTo->setObjectName(QStringLiteral("FadeTo"));
    FadeTo->hide();
    for (int i = 0; i < static_cast<int>(PrevCanvas.size()); ++i) {
        auto* canvas = new QLabel(this);
        canvas->setObjectName(QStringLiteral("PrevCanvas(%1)").arg(i));
        canvas->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        canvas->hide();
        PrevCanvas[static_cast<std::size_t>(i)] = canvas;
    }
    auto overlay = [this](const char* name, const QString& resource) {
        auto* label = new QLabel(this);
        label->setObjectName(QLatin1String(name));
        label->setPixmap(QPixmap(resource));
        label->adjustSize();
        label->hide();
        return label;
    };
    for (int i = 1; i <= 4; ++i) {
        const auto n = static_cast<std::size_t>(i);
        picJumpingForward[n] = overlay("", QStringLiteral(":/jump_forward.png"));
        picJumpingForward[n]->setObjectName(QStringLiteral("picJumpingForward(%1)").arg(i));
        picJumpingBack[n] = overlay("", QStringLiteral(":/jump_back.png"));
        picJumpingBack[n]->setObjectName(QStringLiteral("picJumpingBack(%1)").arg(i));
        picPaused[n] = overlay("", QStringLiteral(":/paused.png"));
        picPaused[n]->setObjectName(QStringLiteral("picPaused(%1)").arg(i));
    }
    picMarked = overlay("picMarked", QString());
    picSplash = overlay("picSplash", QStringLiteral(":/splash.png"));
    picPressF1 = overlay("picPressF1", QStringLiteral(":/pressf1.png"));
    picStamp = overlay("picStamp", QString());

    // Each caption block: a box filled with the caption colour, holding its three labels,
    // which draw no background of their own.
    for (std::size_t i = 0; i < 2; ++i) {
        auto* box = new QLabel(this);
        box->setObjectName(QStringLiteral("CaptionBox(%1)").arg(i));
        box->setAutoFillBackground(true);
        box->hide();
        CaptionBox[i] = box;
        auto label = [box, i](const char* name) {
            auto* l = new QLabel(box);
            l->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
            l->setTextFormat(Qt::PlainText);
            l->hide();
            return l;
        };
        lblTopCaption[i] = label("lblTopCaption");
        lblCaption[i] = label("lblCaption");
        lblDescription[i] = label("lblDescription");
        lblDescription[i]->setWordWrap(true);
    }

    picBootStatus = new QWidget(this);
    picBootStatus->setObjectName(QStringLiteral("picBootStatus"));
    picBootStatus->setAttribute(Qt::WA_StyledBackground, true);
    picBootStatus->setStyleSheet(QStringLiteral(
        "#picBootStatus { background-color: rgba(16, 22, 32, 215); border-bottom: 1px solid "
        "rgba(255,255,255,40); } QLabel { color: #e8edf3; background: transparent; }"));
    lblBootStatus = new QLabel(picBootStatus);
    lblBootStatus->setObjectName(QStringLiteral("lblBootStatus"));
    QFont f = lblBootStatus->font();
    f.setPointSize(13);
    f.setBold(true);
    lblBootStatus->setFont(f);
    lblBootStatus2 = new QLabel(picBootStatus);
    lblBootStatus2->setObjectName(QStringLiteral("lblBootStatus2"));
    QFont f2 = lblBootStatus2->font();
    f2.setPointSize(10);
    lblBootStatus2->setFont(f2);
    auto* statusLayout = new QVBoxLayout(picBootStatus);
    statusLayout->setContentsMargins(18, 10, 18, 10);
    statusLayout->setSpacing(2);
    statusLayout->addWidget(lblBootStatus);
    statusLayout->addWidget(lblBootStatus2);
    picBootStatus->hide();

    picCommands = new QWidget(this);
    picCommands->setObjectName(QStringLiteral("picCommands"));
    picCommands->setAttribute(Qt::WA_StyledBackground, true);
    picCommands->setStyleSheet(
        QStringLiteral("#picCommands { background-color: rgba(12, 16, 24, 225); border: 1px solid "
                       "rgba(255,255,255,90); border-radius: 10px; }"
                       "QLabel { background: transparent; font-size: 12pt; }"
                       "#picCommandsTitle { color: #f4f1ea; font-size: 14pt; font-weight: bold; }"
                       "#lblCommands1 { color: #ffd27a; font-weight: bold; }"
                       "#lblCommands2 { color: #e8edf3; }"));
    auto* commandsTitle = new QLabel(QStringLiteral("Tessaview keys"), picCommands);
    commandsTitle->setObjectName(QStringLiteral("picCommandsTitle"));
    lblCommands1 = new QLabel(picCommands);
    lblCommands1->setObjectName(QStringLiteral("lblCommands1"));
    lblCommands2 = new QLabel(picCommands);
    lblCommands2->setObjectName(QStringLiteral("lblCommands2"));
    auto* commandsLayout = new QVBoxLayout(picCommands);
    commandsLayout->setContentsMargins(24, 16, 28, 18);
    commandsLayout->setSpacing(10);
    commandsLayout->addWidget(commandsTitle);
    auto* commandsColumns = new QHBoxLayout();
    commandsColumns->setSpacing(28);
    commandsColumns->addWidget(lblCommands1);
    commandsColumns->addWidget(lblCommands2, 1);
    commandsLayout->addLayout(commandsColumns);
    picCommands->hide();

    picDeBug = new QWidget(this);
    picDeBug->setObjectName(QStringLiteral("picDeBug"));
    picDeBug->setAttribute(Qt::WA_StyledBackground, true);
    picDeBug->setStyleSheet(QStringLiteral(
        "#picDeBug { background-color: rgba(10, 10, 10, 230); border: 1px solid #556; }"
        "QListWidget { background: transparent; color: #b9f6b0; border: none;"
        " font-family: monospace; font-size: 9pt; }"
        "QLabel { color: white; font-weight: bold; padding: 2px 8px; }"));
    lstDebug = new QListWidget(picDeBug);
    lstDebug->setObjectName(QStringLiteral("lstDebug"));
    lstDebug->setFocusPolicy(Qt::NoFocus);
    DebugLog::instance().Attach(lstDebug);
    lblCloseDebugWindow = new QLabel(QStringLiteral("X"), picDeBug);
    lblCloseDebugWindow->setObjectName(QStringLiteral("lblCloseDebugWindow"));
    lblCloseDebugWindow->setCursor(Qt::PointingHandCursor);
    auto* debugLayout = new QVBoxLayout(picDeBug);
    debugLayout->setContentsMargins(4, 2, 4, 4);
    auto* debugTop = new QHBoxLayout();
    debugTop->addStretch(1);
    debugTop->addWidget(lblCloseDebugWindow);
    debugLayout->addLayout(debugTop);
    debugLayout->addWidget(lstDebug);
    picDeBug->setGeometry(60, 60, 720, 420);
    picDeBug->hide();

    imgFloatingLogoMask = new QLabel(this);
    imgFloatingLogoMask->setObjectName(QStringLiteral("imgFloatingLogoMask"));
    imgFloatingLogoMask->setPixmap(QPixmap(QStringLiteral(":/logo_mask.png")));
    imgFloatingLogoMask->hide();
    BuildNightControls();

    // Every surface reports pointer moves, so that a moved mouse can end the show.
    const auto children = findChildren<QWidget*>();
    for (QWidget* w : children)
        w->setMouseTracking(true);
}

// --- Start ----------------------------------------------------------------------------------

void frmSlideShow::StartShow() {
    if (ExitShow) {
        unload();
        return;
    }
    StartingUp = true;
    NoteStartStep(QStringLiteral("Initialize"));
    Initialize();

    // Topmost from here on, and the place where keys and pointer moves arrive.
    qApp->installEventFilter(this);
    filtering_ = true;
    NoteStartStep(QStringLiteral("PrepScreen"));
    PrepScreen();
    NoteStartStep(QStringLiteral("FadePanelToBlack"));
    FadePanelToBlack();
    if (ExitShow) {
        StoptheShow();
        return;
    }

    NoteStartStep(QStringLiteral("LoadImageLists"));
    SetStatus(QStringLiteral("Loading Image Lists ... "));
    picBootStatus->setVisible(true);
    picBootStatus->raise();
    LoadImageLists();
    if (ExitShow) {
        StoptheShow();
        return;
    }

    NoteStartStep(QStringLiteral("NightModeShouldBeOn"));
    if (NightModeShouldBeOn()) FadeToNight();

    NoteStartStep(QStringLiteral("PrepNextFrame"));
    SetStatus(QStringLiteral("Loading first image ... "));
    PrepNextFrame();
    if (ExitShow) {
        StoptheShow();
        return;
    }

    StartingUp = false;
    BugLog(QStringLiteral("Starting MainTimer (screensaver) timer ... "));
    MainTimer->setEnabled(true);
    NoteStartStep(QStringLiteral("MainTimer"));
    if (!ShowStatus) picBootStatus->setVisible(false);
}

void frmSlideShow::Initialize() {
    DebugLog::instance().SetOff();
    if (InstallDir.isEmpty())
        InstallDir = GetSetting(QStringLiteral("installDir"), ProgramFolder());
    if (!common::FileExists(InstallDir))
        platform::MsgBox(QStringLiteral("Cannot find the install path: & vbcrlf & installpath"),
                         platform::vbCritical);

    CurrentFrameSlot = 0;
    NextFrameSlot = 1;
    ImagesShown = -1.0;
    PrevCanvasDepth = 3;
    PrevCanvasCount = 0;
    PrevCanvasPosition = -1;

    while (platform::ShowCursor(false) >= -5) {
    }

    CurrentMonitorSet = 1;
    PreviousMonitorSet = 1;
    NextMonitorSet = 0;
    DownloadFileOpen = false;
    ScanSkip.fill(0);

    DefaultPrefs();
    NextChangeTime = platform::Now();
    ReadPerfSettings();
    LoadShowSettings();

    RemainingListPath[0] = InstallDir + QStringLiteral("/remain.lst");
    RemainingListPath[1] = InstallDir + QStringLiteral("/remain-t.lst");
    RemainingListPath[2] = InstallDir + QStringLiteral("/remain-d.lst");

    BugLog(QStringLiteral("Initialization ... "));
    GetScreenSize();

    NextImageReady = true;
    Crossfading = false;
    Paused = false;
    MainTimer->setEnabled(false);
    ScrollTimer->setEnabled(false);

    platform::Randomize();

    const QPoint pointer = platform::GetCursorPos();
    MousePosition = pointer;
    MouseStartX = pointer.x();
    MouseStartY = pointer.y();

    if (DebugLogOn()) OpenMemlog();
}

// --- The cycle ------------------------------------------------------------------------------

bool frmSlideShow::ChangeConditionHolds(const QDateTime& now) const {
    return !ScrollTimer->Enabled() && !Paused && !Crossfading && !NightOn && NextImageReady &&
           now > NextChangeTime;
}

void frmSlideShow::MainTimer_Timer() {
    if (ExitShow) {
        MainTimer->setEnabled(false);
        return;
    }
    const bool nightWanted = NightModeShouldBeOn();
    BugLog(QStringLiteral("Night Mode Override = ") +
           (NightOverride ? QStringLiteral("True") : QStringLiteral("False")));
    if (nightWanted && !NightOn && !NightOverride) {
        MainTimer->setEnabled(false);
        FadeToNight();
        MainTimer->setEnabled(true);
    }
    if (!nightWanted && NightOn && !NightOverride) {
        MainTimer->setEnabled(false);
        FadeFromNight();
        MainTimer->setEnabled(true);
    }
    if (ChangeConditionHolds(platform::Now())) {
        NextImageReady = false;
        ChangePhotos();
    }
}

void frmSlideShow::ChangePhotos() {
    BugLog(QStringLiteral(" "));
    BugLog(QStringLiteral("CHANGE PHOTOS /\\/\\/\\/\\/\\/\\/\\ "));
    BugLog(QStringLiteral(" "));
    const auto slot = static_cast<std::size_t>(NextFrameSlot);
    const auto set = static_cast<std::size_t>(qBound(0, static_cast<int>(NextMonitorSet), 4));
    QPoint place, area;
    NewCheckAndSetupPanoScrolling(
        CanvasDIB ? static_cast<int>(FreeImage_GetWidth(CanvasDIB.get())) : 0,
        CanvasDIB ? static_cast<int>(FreeImage_GetHeight(CanvasDIB.get())) : 0, NextMonitorSet,
        PanoScrolls[slot], PanoHorizontal[slot], place, area, PanoStep[slot], PanoSteps[slot]);

    for (auto* box : CaptionBox) {
        box->hide();
        box->repaint();
    }
    for (int i = 1; i <= 4; ++i) {
        picJumpingForward[static_cast<std::size_t>(i)]->hide();
        picJumpingBack[static_cast<std::size_t>(i)]->hide();
    }

    NewCrossfade(CanvasDIB, area.x(), area.y(), MonitorWidth[set], MonitorHeight[set], place.x(),
                 place.y(), NextMonitorSet, JumpRequested ? 1.0 : CrossfadeTime);
    JumpRequested = false;

    if (ExitShow) {
        if (LoadingImage)
            SetStatus(QStringLiteral("In the middle of loading an image - trying to get control "
                                     "back from Windows ... "));
        StoptheShow();
        return;
    }

    UpdateCaption();
    PreviousMonitorSet = CurrentMonitorSet;
    CurrentMonitorSet = NextMonitorSet;

    if (!ExitShow) {
        ScrollPano();
        BugLog(QStringLiteral("ChangePhoto Complete ... "));
        SetStatus2(QString());
        const std::int64_t pageSize = MemoryPageSize();
        BugLog(QStringLiteral("Memory Page Size before PrepNextFrame : ") +
               vb::FormatThousands(pageSize));
        if (MemLogOpen) MemLog(QString::number(pageSize));
        PrepNextFrame();
        MainTimer->setEnabled(true);
    }
}

void frmSlideShow::PrepNextFrame() {
    // A frame whose image cannot be shown costs that image only: the next entry is tried, as
    // often as it takes. Once every entry the show holds has failed in a row, the logo takes
    // the frame, so that a pool of broken files cannot hold the show in here for ever.
    int failures = 0;
    const int entries = ImageList.count() + RandomFolderFileList.count() + ShowList.count();
    for (;;) {
        LongProcessTimer->setEnabled(true);
        BugLog(QStringLiteral("Preparing next frame "
                              "====================================================="
                              "================"));
        NextImageReady = false;
        FrameNote[static_cast<std::size_t>(CurrentFrameSlot)].clear();
        FrameCounter = NextFrameCounter(FrameCounter);

        if (ExitShow) return;

        if (StackInProgress) {
            AssembleCanvas(1);
        } else if (FourUpInProgress) {
            AssembleCanvas(2);
        } else {
            const int r = static_cast<int>(vb::Int(platform::Rnd() * 100));
            BugLog(QStringLiteral("Choosing Layout ... ") + QString::number(r));
            if (r <= LayoutRange[0])
                AssembleCanvas(0);
            else if (r <= LayoutRange[1])
                AssembleCanvas(1);
            else if (r <= LayoutRange[2])
                AssembleCanvas(2);
            else
                AssembleCanvas(0);
        }

        if (ExitShow) return;

        if (NextImageReady) {
            BugLog(QStringLiteral(" Next Image is ready."));
            BugLog(QStringLiteral(" "));
            SetStatus(NightOn ? QString() : QStringLiteral("Next image ready"));
            LongProcessTimer->setEnabled(false);
            if (!ShowStatus) picBootStatus->setVisible(false);
            if (JumpPending) FinishJump();
            return;
        }

        BugLog(QStringLiteral("STARTING PREPNEXTFRAME OVER AGAIN ... :-( "));
        ShowList.remove(0);
        CaptionsList.remove(0);
        ++failures;
        if (failures > entries) {
            ShowList.insert(0, QStringLiteral("INTERNAL:0"), 0);
            CaptionsList.insert(0, QString(), 0);
            failures = 0;
        }
    }
}

void frmSlideShow::LongProcessTimer_Timer() {
    LongProcessTimer->setEnabled(false);
    if (!NightOn) {
        picBootStatus->setVisible(true);
        picBootStatus->raise();
    }
}

void frmSlideShow::SetLongProcessInterval() {
    // A refused interval leaves the one the timer had.
    LongProcessTimer->setInterval(LongProcessIntervalFor(ImageInterval));
}

void frmSlideShow::NoteStartStep(const QString& step) {
    if (StartStepObserver) StartStepObserver(step);
}

void frmSlideShow::NoteStopStep(const QString& step) {
    if (StopStepObserver) StopStepObserver(step);
}

void frmSlideShow::StoptheShow() {
    NoteStopStep(QStringLiteral("CloseMemLog"));
    CloseMemLog();

    NoteStopStep(QStringLiteral("ClearPicture"));
    thePhoto->clear();
    CanvasDIB.reset();

    NoteStopStep(QStringLiteral("StopTimers"));
    ScrollTimer->setEnabled(false);
    MainTimer->setEnabled(false);

    NoteStopStep(QStringLiteral("WritePerfSettings"));
    WritePerfSettings();

    NoteStopStep(QStringLiteral("SaveRemainingList"));
    SaveRemainingList();

    NoteStopStep(QStringLiteral("CloseDownload"));
    if (DownloadFileOpen) {
        if (common::FileExists(DownloadFileName)) QFile::remove(DownloadFileName);
        DownloadFileOpen = false;
    }

    NoteStopStep(QStringLiteral("CloseAudio"));
    for (int slot = 0; slot < 3; ++slot)
        if (AudioPlayerLoaded[static_cast<std::size_t>(slot)]) CloseAudioPlayer(slot);

    NoteStopStep(QStringLiteral("StopShowTimer"));
    frmConfig::instance()->StopShowTimer->setEnabled(true);
}
