// Keys, pointer moves and clicks during the show.
#include "app/modMain.h"
#include "platform/Cursor.h"
#include "platform/Keys.h"
#include "platform/VbTimer.h"
#include "show/frmSlideShow.h"

#include <QKeyEvent>
#include <QMouseEvent>

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
    BugLog(
        QStringLiteral("************************** USER KEYBOARD INPUT ************************"));
    if (keyCode == 255) {
        if (platform::GetKeyState(39) & 0x8000) keyCode = 39;
        if (platform::GetKeyState(37) & 0x8000) keyCode = 37;
        BugLog(QStringLiteral(" Keycode 255 - converting using GetKeyState to keycode ") +
               QString::number(keyCode));
    }
    BugLog(QStringLiteral(" Key Trap: code is ") + QString::number(keyCode));

    switch (keyCode) {
    case 67: // C
        // STAND-IN: captions arrive with the caption routines; the key is taken, not an exit.
        return;
    case 68: // D
        if (DebugLogOn()) {
            picDeBug->setVisible(!picDeBug->isVisible());
            picDeBug->raise();
            // Hidden, the list was not scrolled along; it opens on its newest line.
            lstDebug->scrollToBottom();
            return;
        }
        break;
    case 37:
    case 100:
    case 33:
        // STAND-IN: going back needs the stack of earlier frames; the key is taken meanwhile.
        return;
    case 39:
    case 102:
    case 34:
        if (!JumpRequested) JumpToNextPhoto();
        return;
    case 32:
        HoldPhoto();
        return;
    case 112: // F1
    case 77:  // M
    case 78:  // N
        // STAND-IN: help box, marking and the night screen come with their own routines.
        return;
    case 27:
        ExitRequested(false);
        return;
    default:
        break;
    }
    if (ExitOnKey) ExitRequested(true);
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

// The paused overlay is still a STAND-IN: the flag holds the photo, but nothing on the screen
// says so until the show's overlay pictures exist.
void frmSlideShow::HoldPhoto() {
    if (Paused) {
        BugLog(QStringLiteral(" - UnPausing"));
        Paused = false;
    } else {
        BugLog(QStringLiteral(" - Pausing"));
        Paused = true;
    }
    // A pause cannot be held over a night.
    if (NightOn) Paused = false;
}
