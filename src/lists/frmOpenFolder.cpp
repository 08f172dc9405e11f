// The add-folder dialog: a folder, whether its sub-folders count, how often it is scanned again,
// a title, and the scan whose result becomes the new list.
#include "lists/frmOpenFolder.h"

#include "app/Common.h"
#include "config/ConfigLook.h"
#include "config/frmConfig.h"
#include "lists/ListDates.h"
#include "lists/frmScanning.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>

frmOpenFolder::frmOpenFolder() {
    setObjectName(QStringLiteral("frmOpenFolder"));
    setWindowTitle(QStringLiteral("Add a Folder of Images"));
    setWindowFlags(Qt::Dialog);
    ApplyConfigLook(this);
    resize(620, 500);

    auto* heading = new QLabel(QStringLiteral("Add a folder of images"), this);
    heading->setStyleSheet(QStringLiteral("font-weight: bold; font-size: 15px;"));
    TV_NAMED(txtSelectedFOlder, QLineEdit, this);
    TV_NAMED(cmdChooseFolder, QPushButton, QStringLiteral("&Browse ..."), this);
    TV_NAMED(chkRecurse, QCheckBox, QStringLiteral("Include the images in sub-folders"), this);
    chkRecurse->setChecked(true);
    TV_NAMED(cmbScanInterval, QComboBox, this);
    TV_NAMED(txtTitle, QLineEdit, this);
    TV_NAMED(cmdScanFolder, QPushButton, QStringLiteral("&Scan Folder"), this);
    TV_NAMED(lblStat, QLabel, this);
    lblStat->setProperty("muted", true);
    TV_NAMED(lstNewImages, QListWidget, this);
    // Tens of thousands of rows of one line each: a fixed row height keeps filling it quick.
    lstNewImages->setUniformItemSizes(true);
    lstNewImages->setSelectionMode(QAbstractItemView::NoSelection);
    TV_NAMED(cmdOk, QPushButton, QStringLiteral("Scan first"), this);
    TV_NAMED(cmdCancel, QPushButton, QStringLiteral("Cancel"), this);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    auto* folderLabel = new QLabel(QStringLiteral("&Folder"), this);
    folderLabel->setBuddy(txtSelectedFOlder);
    grid->addWidget(folderLabel, 0, 0);
    grid->addWidget(txtSelectedFOlder, 0, 1);
    grid->addWidget(cmdChooseFolder, 0, 2);
    grid->addWidget(chkRecurse, 1, 1, 1, 2);
    auto* titleLabel = new QLabel(QStringLiteral("&Title"), this);
    titleLabel->setBuddy(txtTitle);
    grid->addWidget(titleLabel, 2, 0);
    grid->addWidget(txtTitle, 2, 1, 1, 2);
    grid->addWidget(new QLabel(QStringLiteral("Re-scan"), this), 3, 0);
    grid->addWidget(cmbScanInterval, 3, 1, 1, 2);
    grid->setColumnStretch(1, 1);

    auto* scanRow = new QHBoxLayout;
    scanRow->addWidget(cmdScanFolder);
    scanRow->addWidget(lblStat, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 14, 18, 14);
    layout->setSpacing(10);
    layout->addWidget(heading);
    layout->addLayout(grid);
    layout->addLayout(scanRow);
    layout->addWidget(lstNewImages, 1);
    layout->addLayout(buttons);

    connect(cmdChooseFolder, &QPushButton::clicked, this, [this] { cmdChooseFolder_Click(); });
    connect(txtSelectedFOlder, &QLineEdit::textChanged, this,
            [this] { txtSelectedFOlder_Change(); });
    connect(chkRecurse, &QCheckBox::clicked, this, [this] { chkRecurse_Click(); });
    connect(cmdScanFolder, &QPushButton::clicked, this, [this] { cmdScanFolder_Click(); });
    connect(cmdOk, &QPushButton::clicked, this, [this] { cmdOk_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
}

frmOpenFolder::~frmOpenFolder() = default;

void frmOpenFolder::keyPressEvent(QKeyEvent* event) {
    // As in any dialog: Enter keeps the scanned list once there is one, Esc leaves.
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (cmdOk->isEnabled()) cmdOk->click();
        return;
    case Qt::Key_Escape:
        cmdCancel->click();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void frmOpenFolder::ShowFor(frmConfig* owner) {
    owner_ = owner;
    Form_Load();
    if (owner_) {
        const QRect area = owner_->geometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
    show();
    raise();
    activateWindow();
    if (owner_ && windowHandle() && owner_->windowHandle())
        windowHandle()->setTransientParent(owner_->windowHandle());
}

void frmOpenFolder::Form_Load() {
    cmbScanInterval->clear();
    cmbScanInterval->addItems({QStringLiteral("(no automatic re-scan)"),
                               QStringLiteral("Once a Day"), QStringLiteral("Once a week"),
                               QStringLiteral("Once every 2 weeks"),
                               QStringLiteral("Once a Month")});
    cmbScanInterval->setCurrentIndex(0);
    // Where a person's photographs live, or the text that says it cannot be found.
    txtSelectedFOlder->setText(owner_ ? owner_->MyPicturesFolder : common::GetMyPicturesFolder());
    txtSelectedFOlder_Change();
    if (owner_) owner_->setEnabled(false);
}

void frmOpenFolder::Form_Unload() {
    if (owner_) owner_->setEnabled(true);
}

void frmOpenFolder::cmdChooseFolder_Click() {
    const QString current = txtSelectedFOlder->text();
    const QString start = QFileInfo(current).isDir() ? current : common::GetMyPicturesFolder();
    const QString chosen = platform::ChooseFolder(QStringLiteral("Select a folder"), start);
    // A cancelled browser keeps the folder that was there.
    if (!chosen.isEmpty()) txtSelectedFOlder->setText(chosen);
}

void frmOpenFolder::txtSelectedFOlder_Change() {
    lstNewImages->clear();
    cmdOk->setEnabled(false);
    txtTitle->setText(txtSelectedFOlder->text());
}

void frmOpenFolder::chkRecurse_Click() {
    // What the last scan found no longer matches the choice.
    cmdOk->setEnabled(false);
}

void frmOpenFolder::cmdScanFolder_Click() {
    cmdScanFolder->setEnabled(false);
    lstNewImages->clear();
    lblStat->setText(QStringLiteral("Scanning folder ... "));
    lblStat->repaint();

    const QString folder = txtSelectedFOlder->text();
    QStringList found;
    int count = 0;
    bool aborted = false;
    frmScanning* scanning = frmScanning::instance();
    scanning->SetOwner(this);
    scanning->RescanFolder(folder, chkRecurse->isChecked(), found, count, aborted);
    lstNewImages->addItems(found);

    if (aborted && found.isEmpty() && !QFileInfo(folder).isDir())
        lblStat->setText(QStringLiteral("No such folder (0 images before the abort)"));
    else if (aborted && found.isEmpty() && !QFileInfo(folder).isReadable())
        lblStat->setText(QStringLiteral("The folder cannot be read (0 images before the abort)"));
    else if (aborted)
        lblStat->setText(QStringLiteral("Scan stopped (") + QString::number(count) +
                         QStringLiteral(" images before the abort)"));
    else
        lblStat->setText(QStringLiteral("Found ") + QString::number(count) +
                         QStringLiteral(" images."));
    cmdScanFolder->setEnabled(true);
    cmdOk->setText(QStringLiteral("Ok"));
    cmdOk->setEnabled(true);
}

void frmOpenFolder::cmdOk_Click() {
    if (!owner_) return;
    QString folder = txtSelectedFOlder->text();
    if (!folder.endsWith(QLatin1Char('/'))) folder += QLatin1Char('/');

    std::array<std::array<QString, 2>, 5> options;
    options[0] = {QStringLiteral("RECURSE"),
                  chkRecurse->isChecked() ? QStringLiteral("True") : QStringLiteral("False")};
    for (std::size_t slot = 1; slot < options.size(); ++slot)
        options[slot] = {QStringLiteral("none"), QStringLiteral("none")};

    const int index = std::max(0, cmbScanInterval->currentIndex());
    const int days = kIntervalDays[static_cast<std::size_t>(index)];
    QStringList images;
    images.reserve(lstNewImages->count());
    for (int i = 0; i < lstNewImages->count(); ++i)
        images << lstNewImages->item(i)->text();

    const QString file = owner_->BuildImageListFileName(folder);
    owner_->AddNewImageFile(
        txtTitle->text(), QStringLiteral("Local"), folder, QString::number(images.size()), file,
        ListFileDateText(platform::Today()), QString::number(days), options, images);
    unload();
}

void frmOpenFolder::cmdCancel_Click() {
    unload();
}
