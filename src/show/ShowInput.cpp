// Keys, pointer moves and clicks during the show.
#include "app/modMain.h"
#include "platform/Cursor.h"
#include "platform/Keys.h"
#include "platform/SafeWrite.h"
#include "platform/VbTimer.h"
#include "show/frmSlideShow.h"

#include <QFile>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTextStream>

namespace {
constexpr int kMouseSlack = 4;
const QString kLoadingExitText = QStringLiteral(
    "In the middle of loading an image - trying to get control back from Windows ... ");
} // namespace

bool frmSlideShow::eventFilter(QObject* watched, QEvent* event) {
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != this) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        auto* key = static_cast<QKeyEvent*>(event);
        platform::NoteKeyEvent(*key);
        Form_KeyDown(platform::VirtualKeyCode(*key));
        return true;
    }
    case QEvent::KeyRelease:
        platform::NoteKeyEvent(*static_cast<QKeyEvent*>(event));
        return true;
    case QEvent::MouseMove:
        if (ExitOnMouse) CheckMouseMove();
        return false;
    case QEvent::MouseButtonPress:
        if (widget == lblCloseDebugWindow) {
            lblCloseDebugWindow_Click();
        } else if (widget == this) {
            Form_Click();
        } else {
            thePhoto_Click();
        }
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

void frmSlideShow::Form_KeyDown(int keyCode) {
    BugLog(QStringLiteral(" FORM KEYDOWN "));
    KeyTrap(keyCode);
}

void frmSlideShow::ExitRequested(bool setLoadingText) {
    ExitShow = true;
    if (setLoadingText && LoadingImage) SetStatus(kLoadingExitText);
    picBootStatus->setVisible(true);
    picBootStatus->raise();
    picBootStatus->repaint();
    if (!Crossfading) StoptheShow();
}

void frmSlideShow::KeyTrap(int keyCode) {
    using namespace platform;
    BugLog(
        QStringLiteral("************************** USER KEYBOARD INPUT ************************"));
    ShowTrappedAsyncKeys();
    if (keyCode == vk::Unknown) {
        // Left wins over right when a remote control seems to hold both.
        if (GetKeyState(vk::Right) & 0x8000) keyCode = vk::Right;
        if (GetKeyState(vk::Left) & 0x8000) keyCode = vk::Left;
        BugLog(QStringLiteral(" Keycode 255 - converting using GetKeyState to keycode ") +
               QString::number(keyCode));
    }
    BugLog(QStringLiteral(" Key Trap: code is ") + QString::number(keyCode));

    switch (keyCode) {
    case vk::C:
        ToggleCaptions();
        return;
    case vk::D:
        if (DebugLogOn()) {
            picDeBug->setVisible(!picDeBug->isVisible());
            picDeBug->raise();
            // Hidden, the list was not scrolled along; it opens on its newest line.
            lstDebug->scrollToBottom();
            return;
        }
        break;
    case vk::Left:
    case vk::Numpad4:
    case vk::PageUp:
        // The fade is grabbing and blending the screen: an earlier one cannot come in now.
        if (Crossfading) return;
        for (int i = 1; i <= 4; ++i)
            if (MonitorEnabled[static_cast<std::size_t>(i)]) {
                picJumpingBack[static_cast<std::size_t>(i)]->raise();
                picJumpingBack[static_cast<std::size_t>(i)]->show();
            }
        ++PrevCanvasPosition;
        for (auto* box : CaptionBox)
            box->hide();
        ShowPrevCanvas(PrevCanvasPosition);
        ScrollTimer->setEnabled(false);
        for (int i = 1; i <= 4; ++i)
            picJumpingBack[static_cast<std::size_t>(i)]->hide();
        return;
    case vk::Right:
    case vk::Numpad6:
    case vk::PageDown:
        if (JumpRequested) return;
        for (int i = 1; i <= 4; ++i)
            if (MonitorEnabled[static_cast<std::size_t>(i)]) {
                QLabel* arrow = picJumpingForward[static_cast<std::size_t>(i)];
                arrow->raise();
                arrow->show();
                arrow->repaint();
            }
        JumpToNextPhoto();
        return;
    case vk::Space:
        HoldPhoto();
        return;
    case vk::F1:
        picCommands->setVisible(!picCommands->isVisible());
        picCommands->raise();
        return;
    case vk::M:
        MarkThisImage();
        return;
    case vk::N:
        ToggleNightScreen();
        return;
    case vk::Escape:
        ExitRequested(false);
        return;
    default:
        break;
    }
    if (ExitOnKey) ExitRequested(true);
}

void frmSlideShow::ShowTrappedAsyncKeys() {
    if (!DebugLogOn()) return;
    for (int key = 0; key <= 255; ++key) {
        const short state = platform::GetAsyncKeyState(key);
        if ((state & 128) != 0 || state != 0)
            BugLog(QStringLiteral("    GetAsyncKey ") + QString::number(key) +
                   QStringLiteral(" state ") + QString::number(state));
    }
}

void frmSlideShow::ShowPrevCanvas(int position) {
    if (position > PrevCanvasCount || position < 0 ||
        position >= static_cast<int>(PrevCanvas.size()))
        return;
    MainTimer->setEnabled(false);
    thePhoto->hide();
    QLabel* canvas = PrevCanvas[static_cast<std::size_t>(position)];
    canvas->setGeometry(0, 0, FormWidth, FormHeight);
    canvas->raise();
    canvas->show();
    MainTimer->setEnabled(true);
}

void frmSlideShow::ToggleCaptions() {
    ShowCaptions = !ShowCaptions;
    BugLog(ShowCaptions ? QStringLiteral(" - Captions On") : QStringLiteral(" - Captions Off"));
    UpdateCaption();
}

void frmSlideShow::MarkThisImage() {
    lstTempImageList.clear();
    const QString fileName = InstallDir + QStringLiteral("/MarkedImages.txt");
    QFile in(fileName);
    if (in.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream stream(&in);
        while (!stream.atEnd())
            lstTempImageList.add(stream.readLine().trimmed(), 0);
    }
    lstTempImageList.add(CurrentImage, 0);
    // Rewritten whole through a temporary file: a stop half-way leaves the old list.
    QByteArray text;
    for (int i = 0; i < lstTempImageList.count(); ++i)
        text += lstTempImageList.text(i).toUtf8() + "\r\n";
    if (!platform::WriteFileWhole(fileName, text)) return;
    BugLog(QStringLiteral(" "));
    BugLog(QStringLiteral(" ** added the following image to the Marked Images list ** "));
    BugLog(CurrentImage);
    BugLog(QStringLiteral(" "));
    picMarked->setPixmap(picMarked->pixmap());
}

void frmSlideShow::FillCommandsBox() {
    static const char* const keys[] = {
        "Esc", "left arrow / PgUp", "right arrow / PgDwn", "C", "N", "M", "F1"};
    static const char* const actions[] = {
        "Quit the slide show",       "Go back to a previous photo",
        "Load next photo",           "Show or hide captions",
        "Turn Night Mode on/off",    "Add photo to Marked Images.txt file",
        "Show / hide this info box."};
    QStringList left, right;
    for (const char* k : keys)
        left << QLatin1String(k);
    for (const char* a : actions)
        right << QLatin1String(a);
    // Two line ends between rows, as the box has always had them.
    lblCommands1->setText(left.join(QStringLiteral("\n\n")));
    lblCommands2->setText(right.join(QStringLiteral("\n\n")));
    picCommands->adjustSize();
    const QRect area(CaptionLeft, CaptionTop, CaptionWidth, CaptionHeight);
    picCommands->move(area.center() - picCommands->rect().center());
}

void frmSlideShow::CheckMouseMove() {
    const QPoint p = platform::GetCursorPos();
    MousePosition = p;
    if (std::abs(p.x() - MouseStartX) > kMouseSlack || std::abs(p.y() - MouseStartY) > kMouseSlack)
        ExitRequested(false);
}

void frmSlideShow::thePhoto_Click() {
    if (!ExitOnClick) return;
    ExitShow = true;
    if (LoadingImage) SetStatus(kLoadingExitText);
    picBootStatus->setVisible(true);
    picBootStatus->raise();
    picBootStatus->repaint();
    if (!Crossfading) {
        BugLog(QString());
        BugLog(QStringLiteral("EXIT via PHOTO CLICK - leaving immediately"));
        StoptheShow();
    } else {
        BugLog(QStringLiteral("EXIT via PHOTO CLICK - wait for crossfade to finish"));
    }
}

void frmSlideShow::Form_Click() {
    BugLog(QStringLiteral("Form_Click - uh, how did this happen ? Unloading "));
    ExitShow = true;
    if (!Crossfading) StoptheShow();
}

void frmSlideShow::JumpToNextPhoto() {
    BugLog(QStringLiteral(" - JumpToNextPhoto"));
    MainTimer->setEnabled(false);
    ScrollTimer->setEnabled(false);
    JumpRequested = true;
    if (NextImageReady)
        FinishJump();
    else
        JumpPending = true;
}

void frmSlideShow::FinishJump() {
    ScrollTimer->setEnabled(false);
    NightFadeBusy = false;
    JumpPending = false;
    ChangePhotos();
    if (!ExitShow) MainTimer->setEnabled(true);
}

void frmSlideShow::HoldPhoto() {
    if (Paused) {
        BugLog(QStringLiteral(" - UnPausing"));
        Paused = false;
        for (int i = 1; i <= 4; ++i)
            picPaused[static_cast<std::size_t>(i)]->hide();
    } else {
        BugLog(QStringLiteral(" - Pausing"));
        Paused = true;
        for (int i = 1; i <= 4; ++i)
            if (MonitorEnabled[static_cast<std::size_t>(i)]) {
                picPaused[static_cast<std::size_t>(i)]->raise();
                picPaused[static_cast<std::size_t>(i)]->show();
            }
    }
    // A pause cannot be held over a night.
    if (NightOn) {
        Paused = false;
        for (int i = 1; i <= 4; ++i)
            picPaused[static_cast<std::size_t>(i)]->hide();
    }
}
