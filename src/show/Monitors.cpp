// Where the show stands on the screens, and which monitor each frame goes to.
#include "compose/PictureBox.h"
#include "platform/VbTimer.h"
#include "platform/X11Windows.h"
#include "show/frmSlideShow.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

QString frmSlideShow::GetMonitorInfo(monitors::MonitorInfo& info) {
    std::vector<monitors::ScreenInfo> screens;
    for (QScreen* s : QGuiApplication::screens()) {
        monitors::ScreenInfo one;
        const QRect g = s->geometry();
        one.left = g.x();
        one.top = g.y();
        one.width = g.width();
        one.height = g.height();
        one.primary = s == QGuiApplication::primaryScreen();
        one.name = s->name();
        one.model = (s->manufacturer() + QLatin1Char(' ') + s->model()).trimmed();
        one.depth = s->depth();
        one.refresh = s->refreshRate();
        screens.push_back(one);
    }
    info = monitors::GetMonitorInfo(screens);
    return info.report;
}

void frmSlideShow::GetScreenSize() {
    monitors::MonitorInfo info;
    for (const QString& line : GetMonitorInfo(info).split(QLatin1Char('\n')))
        BugLog(line);

    BugLog(QStringLiteral("Tally of Monitors:"));
    static_cast<monitors::MonitorTables&>(*this) =
        monitors::ScreenLayout(info, MultiMonitors, MultiMonUseMinHeight);
    for (int i = 1; i <= monitors::MaxMonitors; ++i) {
        const auto s = static_cast<std::size_t>(i);
        BugLog(QStringLiteral("  Monitor %1 : %2,%3  %4 x %5%6")
                   .arg(i)
                   .arg(MonitorLeft[s])
                   .arg(MonitorTop[s])
                   .arg(MonitorWidth[s])
                   .arg(MonitorHeight[s])
                   .arg(MonitorEnabled[s] ? QString() : QStringLiteral("  (not enabled)")));
    }
    BugLog(QString::number(ActiveMonitors) + QStringLiteral(" active monitors"));
    BugLog(MultiMonitors ? QStringLiteral("Multiple Monitors is enabled")
                         : QStringLiteral("Multiple Monitors is dis-abled"));

    TestMode(0);
    BugLog(QStringLiteral("Form is %1 x %2 at %3,%4")
               .arg(FormWidth)
               .arg(FormHeight)
               .arg(FormLeft)
               .arg(FormTop));
    BugLog(QStringLiteral("Caption area is %1 x %2 at %3,%4")
               .arg(CaptionWidth)
               .arg(CaptionHeight)
               .arg(CaptionLeft)
               .arg(CaptionTop));
    BugLog(QStringLiteral("Shared band of the monitors : top %1, height %2 (MaxTop %3, "
                          "MinBottom %4)")
               .arg(MinHeightTop)
               .arg(MinHeight)
               .arg(MaxTop)
               .arg(MinBottom));
    BugLog(QStringLiteral("Primary monitor is %1").arg(PrimaryMonitor));
}

void frmSlideShow::TestMode(std::int16_t mode) {
    monitors::TestMode(*this, mode);
}

void frmSlideShow::PrepScreen() {
    BugLog(QStringLiteral("Preparing Screens ... "));
    // Qt places windows in device-independent pixels; the tables are in the screens' own
    // pixels, which are the same as long as no screen is scaled.
    setGeometry(FormLeft, FormTop, FormWidth, FormHeight);
    BugLog(QStringLiteral("Form now at %1,%2  %3 x %4")
               .arg(FormLeft)
               .arg(FormTop)
               .arg(FormWidth)
               .arg(FormHeight));
    SetFadersToMonitor(0);
    Backdrop->setGeometry(0, 0, FormWidth, FormHeight);
    thePhoto->setGeometry(0, 0, FormWidth, FormHeight);

    // From the back: the ground, the photo, the fade, the signs, the captions, then the panels
    // that must stay readable over anything.
    Backdrop->lower();
    thePhoto->raise();
    FadeFrom->raise();
    for (int i = 1; i <= 4; ++i) {
        picJumpingForward[static_cast<std::size_t>(i)]->raise();
        picJumpingBack[static_cast<std::size_t>(i)]->raise();
    }
    for (auto* box : CaptionBox)
        box->raise();
    picNightScreen->setGeometry(0, 0, FormWidth, FormHeight);
    picNightScreen->raise();
    picNightScreen->hide();
    picBootStatus->raise();
    picCommands->raise();
    picDeBug->raise();

    for (int i = 1; i <= 4; ++i) {
        const auto n = static_cast<std::size_t>(i);
        if (MonitorEnabled[n]) {
            picPaused[n]->move(monitors::PausedOverlayPlace(*this, i, picPaused[n]->size()));
            picJumpingForward[n]->move(
                monitors::JumpOverlayPlace(*this, i, picJumpingForward[n]->size()));
            picJumpingBack[n]->move(
                monitors::JumpOverlayPlace(*this, i, picJumpingBack[n]->size()));
        }
        picPaused[n]->hide();
        picJumpingForward[n]->hide();
        picJumpingBack[n]->hide();
    }
    picBootStatus->setGeometry(CaptionLeft, CaptionTop, CaptionWidth,
                               picBootStatus->sizeHint().height());
    picDeBug->move(60, 60);
    FillCommandsBox();

    show();
    raise();
    activateWindow();
    setFocus(Qt::OtherFocusReason);
    // Keys belong to the show while it is on; without a window manager nobody else hands out
    // the keyboard focus.
    if (platform::x11::Available()) {
        grabKeyboard();
        // The first grab can come before the server has the window on screen, and then it
        // fails without a word; once it is surely up, take the keyboard again.
        QTimer::singleShot(300, this, [this] {
            releaseKeyboard();
            activateWindow();
            grabKeyboard();
        });
    }
}

void frmSlideShow::SetFadersToMonitor(int monitor) {
    const QRect area = monitors::MonitorRect(*this, monitor);
    FadeFrom->setGeometry(area);
    FadeTo->setGeometry(area);
}

// The show is topmost and covers every monitor it uses, so its own contents are what that
// part of the screen shows; reading them needs no access to other programs' windows.
void frmSlideShow::GrabMonitorArea(int monitor, QPixmap& picture) {
    picture = grab(monitors::MonitorRect(*this, monitor));
}

void frmSlideShow::SetMonitorAndLimits(int width, int& height) {
    monitors::MonitorChoiceRequest request;
    request.currentMonitor = CurrentMonitor;
    request.multiMonitors = MultiMonitors;
    request.imagePerScreen = MultiMonImagePerScreen;
    request.useMinHeight = MultiMonUseMinHeight;
    request.layout = Layout;
    request.stopStackIfPano = StopStackIfPano;
    request.widescreenFactor = static_cast<double>(ActiveWidescreenFactor);
    request.width = width;
    request.height = height;
    const monitors::MonitorChoice choice = monitors::ChooseMonitorSet(*this, request);
    for (const QString& line : choice.log)
        BugLog(line);
    CurrentMonitor = choice.currentMonitor;
    NextMonitorSet = choice.monitorSet;
    height = choice.height;
    FrameLeft = choice.frameLeft;
    FrameTop = choice.frameTop;
    FrameWidth = choice.frameWidth;
    FrameHeight = choice.frameHeight;
}
