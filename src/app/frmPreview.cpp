#include "app/frmPreview.h"

#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "platform/VbTimer.h"
#include "platform/X11Windows.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QWindow>

namespace {
constexpr int kLogoWidth = 695;
constexpr int kLogoHeight = 676;
constexpr int kHostPollMs = 250;
} // namespace

QRect FitLogo(QSize form, QSize control) {
    // A control squeezed to nothing has lost its proportions; the picture's own stand.
    double aspect = control.width() > 0 && control.height() > 0
                        ? static_cast<double>(control.width()) / control.height()
                        : static_cast<double>(kLogoWidth) / kLogoHeight;
    const int width = static_cast<int>(vb::RoundHalfEven(form.width() * 0.9));
    const int height = static_cast<int>(vb::RoundHalfEven(width / aspect));
    const int left = static_cast<int>(vb::RoundHalfEven((form.width() - width) / 2.0));
    const int top = static_cast<int>(vb::RoundHalfEven((form.height() - height) / 2.0));
    return QRect(left, top, width, height);
}

frmPreview::frmPreview() {
    setObjectName(QStringLiteral("frmPreview"));
    setWindowTitle(QStringLiteral("Tessaview Preview"));
    setAutoFillBackground(true);
    QPalette pal = palette();
    pal.setColor(QPalette::Window, Qt::black);
    setPalette(pal);

    Image1 = new QLabel(this);
    Image1->setObjectName(QStringLiteral("Image1"));
    Image1->setScaledContents(true);
    Image1->setPixmap(QPixmap(QStringLiteral(":/logo.png")));
    Image1->setGeometry(0, 0, kLogoWidth, kLogoHeight);
}

frmPreview::~frmPreview() = default;

void frmPreview::UpdateLogo() {
    Image1->setGeometry(FitLogo(size(), Image1->size()));
}

void frmPreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmPreview::RunPreview(std::int64_t handle) {
    PreviewWindowHandle = handle;
    const quint32 host = static_cast<quint32>(handle);
    std::optional<QSize> hostSize = platform::x11::WindowSize(host);
    PreviewRect = hostSize ? QRect(QPoint(0, 0), *hostSize) : QRect();

    frmPreview* form = instance();
    // Without a host there is nowhere to draw; the first look at the host ends the run.
    if (hostSize) {
        form->setWindowFlags(Qt::FramelessWindowHint);
        form->winId();
        if (QWindow* hostWindow = QWindow::fromWinId(host))
            form->windowHandle()->setParent(hostWindow);
        form->setGeometry(0, 0, PreviewRect.width(), PreviewRect.height());
        form->lastHostSize_ = PreviewRect.size();
        form->show();
        form->UpdateLogo();
    }

    // The host ends the preview by destroying its pane; nothing tells us but its absence.
    form->hostPoll_ = new VbTimer(kHostPollMs, true, form);
    form->hostPoll_->setHandler([form] { form->PollHost(); });
}

void frmPreview::PollHost() {
    std::optional<QSize> hostSize =
        platform::x11::WindowSize(static_cast<quint32>(PreviewWindowHandle));
    if (!hostSize) {
        hostPoll_->setEnabled(false);
        unload();
        QCoreApplication::exit(0);
        return;
    }
    if (*hostSize != lastHostSize_) {
        lastHostSize_ = *hostSize;
        PreviewRect = QRect(QPoint(0, 0), *hostSize);
        resize(*hostSize);
    }
}
