// The folder scan's window: the folder being read, the records so far, and the abort button.
#include "lists/frmScanning.h"

#include "config/ConfigLook.h"
#include "lists/FolderWalk.h"
#include "platform/VbTimer.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

frmScanning::frmScanning() {
    setObjectName(QStringLiteral("frmScanning"));
    setWindowTitle(QStringLiteral("Scanning for images"));
    // Above the show or the dialog that started the scan, without a place in the task bar.
    setWindowFlags(Qt::Tool | Qt::WindowStaysOnTopHint | Qt::WindowTitleHint);
    ApplyConfigLook(this);
    setFixedSize(460, 112);

    auto* title = new QLabel(QStringLiteral("Scanning for images"), this);
    title->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 14px;"));
    lblScanningFolder = new QLabel(this);
    lblScanningFolder->setObjectName(QStringLiteral("lblScanningFolder"));
    lblScanningFolder->setProperty("muted", true);
    lblHits = new QLabel(QStringLiteral("0"), this);
    lblHits->setObjectName(QStringLiteral("lblHits"));
    cmdAbortScan = new QPushButton(QStringLiteral("Abort Scan"), this);
    cmdAbortScan->setObjectName(QStringLiteral("cmdAbortScan"));
    connect(cmdAbortScan, &QPushButton::clicked, this, [this] { cmdAbortScan_Click(); });

    auto* bottom = new QHBoxLayout;
    auto* found = new QLabel(QStringLiteral("Images found:"), this);
    bottom->addWidget(found);
    bottom->addWidget(lblHits, 1);
    bottom->addWidget(cmdAbortScan);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(16, 12, 16, 12);
    layout->addWidget(title);
    layout->addWidget(lblScanningFolder);
    layout->addStretch(1);
    layout->addLayout(bottom);

    PauseTimer = new VbTimer(1500, false, this);
    PauseTimer->setHandler([this] { PauseTimer_Timer(); });
    Form_Load();
}

frmScanning::~frmScanning() = default;

void frmScanning::Form_Load() {
    abortRequested = false;
}

void frmScanning::Form_Unload() {
    PauseTimer->setEnabled(false);
    if (owner_) owner_->setEnabled(true);
}

void frmScanning::SetOwner(QWidget* owner) {
    owner_ = owner;
}

void frmScanning::cmdAbortScan_Click() {
    abortRequested = true;
}

void frmScanning::PauseTimer_Timer() {
    PauseTimer->setEnabled(false);
    unload();
}

void frmScanning::SetFolderText(const QString& text) {
    // A long path keeps both ends: where it is and the folder's own name.
    const QFontMetrics metrics(lblScanningFolder->font());
    lblScanningFolder->setText(
        metrics.elidedText(text, Qt::ElideMiddle, lblScanningFolder->width()));
    lblScanningFolder->setToolTip(text);
}

void frmScanning::ShowProgress(const QString& folder, qsizetype hits) {
    SetFolderText(folder);
    lblHits->setText(QString::number(hits));
    lblScanningFolder->repaint();
    lblHits->repaint();
    sinceRepaint_.start();
}

bool frmScanning::TakeEvents() {
    if (!sinceEvents_.isValid() || sinceEvents_.elapsed() >= kEventsEveryMs) {
        QApplication::processEvents();
        sinceEvents_.start();
    }
    return abortRequested;
}

void frmScanning::RescanFolder(const QString& folder, bool recurse, QStringList& list, int& count,
                               bool& aborted) {
    aborted = false;
    abortRequested = false;
    PauseTimer->setEnabled(false);
    if (owner_) {
        owner_->setEnabled(false);
        // Over the middle of its owner's screen.
        const QRect area = owner_->window()->geometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
    show();
    raise();
    if (owner_ && windowHandle() && owner_->window()->windowHandle())
        windowHandle()->setTransientParent(owner_->window()->windowHandle());
    sinceRepaint_.invalidate();
    sinceEvents_.invalidate();

    lists::FolderWalkHooks hooks;
    hooks.progress = [this](const QString& current, qsizetype hits) {
        if (!sinceRepaint_.isValid() || sinceRepaint_.elapsed() >= kRepaintEveryMs)
            ShowProgress(current, hits);
    };
    hooks.abortRequested = [this] { return TakeEvents(); };
    const lists::FolderWalkResult walk = lists::WalkImageFolders(folder, recurse, list, hooks);

    if (walk.foldersRead == 0 && !walk.aborted) {
        // The folder itself could not be listed (gone, no disk, no right to read it).
        aborted = true;
        unload();
        return;
    }
    if (walk.aborted) {
        aborted = true;
        count = static_cast<int>(list.size());
        unload();
        return;
    }
    count = static_cast<int>(list.size());
    lblHits->setText(QString::number(count));
    SetFolderText(QStringLiteral("Scan complete of ") + folder);
    PauseTimer->setInterval(1500);
    PauseTimer->setEnabled(true);
}
