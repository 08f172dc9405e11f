// Where the show stands on the screens.
#include "platform/VbTimer.h"
#include "platform/X11Windows.h"
#include "show/frmSlideShow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

// STAND-IN until the monitor tables exist: the show covers the union of all screens when
// several monitors are allowed, else the primary screen, and the status panel stands on the
// primary screen.
void frmSlideShow::GetScreenSize() {
    const QList<QScreen*> screens = QGuiApplication::screens();
    QScreen* primary = QGuiApplication::primaryScreen();
    QRect desktop;
    for (QScreen* s : screens)
        desktop = desktop.united(s->geometry());
    QRect primaryRect = primary ? primary->geometry() : desktop;
    if (!MultiMonitors) desktop = primaryRect;
    FormLeft = desktop.left();
    FormTop = desktop.top();
    FormWidth = desktop.width();
    FormHeight = desktop.height();
    CaptionLeft = primaryRect.left() - FormLeft;
    CaptionTop = primaryRect.top() - FormTop;
    CaptionWidth = primaryRect.width();
    CaptionHeight = primaryRect.height();
    BugLog(QStringLiteral("Form is %1 x %2 at %3,%4")
               .arg(FormWidth)
               .arg(FormHeight)
               .arg(FormLeft)
               .arg(FormTop));
}

void frmSlideShow::PrepScreen() {
    BugLog(QStringLiteral("Preparing Screens ... "));
    setGeometry(FormLeft, FormTop, FormWidth, FormHeight);
    BugLog(QStringLiteral("Form now at %1,%2  %3 x %4")
               .arg(FormLeft)
               .arg(FormTop)
               .arg(FormWidth)
               .arg(FormHeight));
    Backdrop->setGeometry(0, 0, FormWidth, FormHeight);
    thePhoto->setGeometry(0, 0, FormWidth, FormHeight);

    Backdrop->lower();
    thePhoto->raise();
    for (QLabel* box : CaptionBox)
        box->raise();
    picBootStatus->raise();
    picDeBug->raise();

    picBootStatus->setGeometry(CaptionLeft, CaptionTop, CaptionWidth,
                               picBootStatus->sizeHint().height());
    picDeBug->move(60, 60);

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
