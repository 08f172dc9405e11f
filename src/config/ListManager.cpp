// The image list panel of the configuration window: the table of lists, the details strip of
// the selected one, and deleting a list. List operations take effect at once, without Apply.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "config/frmConfig.h"
#include "lists/ImageListFile.h"
#include "lists/ListDates.h"
#include "lists/frmScanning.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/FileListing.h"

#include <QFile>
#include <QSignalBlocker>

namespace {

// Stand-in until the web image cache: a list has no cache folder yet, so there is nothing to
// remove beside its file.
void KillCacheFolder(const QString& listFile) {
    Q_UNUSED(listFile);
}

bool IsTrue(const QString& value) {
    return value.trimmed().toUpper() == QLatin1String("TRUE");
}

// The details strip's reading of one option column ("name==value").
QString OptionCaption(const QString& raw) {
    if (raw.isEmpty()) return raw;
    const QStringList pieces = raw.split(QStringLiteral("=="));
    const QString& name = pieces[0];
    const QString value = pieces.value(1);
    if (name == QLatin1String("RECURSE"))
        return IsTrue(value) ? QStringLiteral("Scan sub-folders")
                             : QStringLiteral("Don't scan sub-folders");
    if (name == QLatin1String("PERPAGE"))
        return QStringLiteral("Return up to ") + value + QStringLiteral(" images");
    if (name == QLatin1String("USER_NSID")) return QStringLiteral("Images from user ") + value;
    if (name == QLatin1String("GROUP_NSID")) return QStringLiteral("Images from group ") + value;
    if (name == QLatin1String("EXCLUDEGIF"))
        return IsTrue(value) ? QStringLiteral("Ignore GIF and PNG images")
                             : QStringLiteral("Include GIF and PNG images");
    if (name == QLatin1String("PAGEIMAGES"))
        return IsTrue(value) ? QStringLiteral("Include images found on web page")
                             : QStringLiteral("Do not include images found on web page");
    if (name == QLatin1String("LINKIMAGES"))
        return IsTrue(value) ? QStringLiteral("Include images linked from this web page.")
                             : QStringLiteral("Do not include images linked from this page.");
    if (name == QLatin1String("none")) return QStringLiteral(" ");
    return raw;
}

} // namespace

void frmConfig::WireListManager() {
    auto rowOf = [this](QTreeWidgetItem* item) {
        return lvwFolderList->indexOfTopLevelItem(item) + 1;
    };
    connect(lvwFolderList, &QTreeWidget::itemClicked, this,
            [this, rowOf](QTreeWidgetItem* item) { ShowFileDetails(rowOf(item)); });
    // A chosen row, by click or by keys. Not the current row as such: the table makes its first
    // row current when it takes the focus, and that is no choice of the user's.
    connect(lvwFolderList, &QTreeWidget::itemSelectionChanged, this, [this, rowOf] {
        const QList<QTreeWidgetItem*> chosen = lvwFolderList->selectedItems();
        if (!chosen.isEmpty()) ShowFileDetails(rowOf(chosen.first()));
    });
    connect(cmdRescanNow, &QPushButton::clicked, this, [this] { cmdRescanNow_Click(); });
    lblImageCount->installEventFilter(this);
    lblImageCount->setCursor(Qt::PointingHandCursor);
    lblImageCount->setToolTip(QStringLiteral("Show or hide the images of this list"));
}

void frmConfig::ScanAndLoadImageLists(const QString& folder) {
    if (!common::FileExists(folder)) return;
    platform::FileListBox ILfileBox;
    ILfileBox.Pattern = QStringLiteral("*") + lists::kListExtension;
    ILfileBox.Path = folder;
    ILfileBox.Refresh();
    for (int i = 0; i < ILfileBox.ListCount(); ++i)
        LoadImageList(folder + QLatin1Char('/') + ILfileBox.List(i));
}

void frmConfig::ShowFileDetails(int row) {
    if (row <= 0 || row > lvwFolderList->topLevelItemCount()) return;
    // The arrow that grows the window is offered once there is a list to show.
    if (imgSetPageClose[21]->isHidden()) imgSetPageOpen[21]->show();

    lblLocation->setText(ListColumn(row, 2));
    lblImageCount->setText(QStringLiteral("( ") + ListColumn(row, 1) + QStringLiteral(" images )"));
    const QString lastScan = ListColumn(row, 5);
    lblLastScan->setText(QStringLiteral("Last Scan: ") + lastScan);
    const double interval = vb::Val(ListColumn(row, 6));
    if (interval < 1000) {
        const QDate last = ReadListFileDate(lastScan);
        lblNextScan->setText(QStringLiteral("Next Scan: ") +
                             ListFileDateText(last.addDays(vb::CLng(interval).value_or(0))));
    } else {
        lblNextScan->setText(QStringLiteral("(no automatic rescan)"));
    }
    for (int i = 1; i <= 3; ++i)
        lblOption[i]->setText(OptionCaption(ListColumn(row, 6 + i)));

    ShowHideFileDetails(true);
    const int rows = lvwFolderList->topLevelItemCount();
    for (int i = 1; i <= rows && i < static_cast<int>(lstImages.size()); ++i)
        lstImages[static_cast<std::size_t>(i)]->hide();
    if (row >= static_cast<int>(lstImages.size())) return;
    QListWidget* list = lstImages[static_cast<std::size_t>(row)];
    list->setGeometry(lstImages[0]->geometry());
    list->raise();
    list->show();
}

void frmConfig::lblImageCount_Click() {
    const int row = SelectedListRow();
    if (row <= 0 || row >= static_cast<int>(lstImages.size())) return;
    QListWidget* list = lstImages[static_cast<std::size_t>(row)];
    list->setVisible(list->isHidden());
}

void frmConfig::DeleteFolderListItem(int row) {
    const int rows = lvwFolderList->topLevelItemCount();
    if (row <= 0 || row > rows) return;
    const int answer = platform::MsgBox(
        QStringLiteral("Are you sure you want to delete this entry ?\r") + ListColumn(row, 0),
        platform::vbOKCancel | platform::vbExclamation, QStringLiteral("Confirm Delete ..."));
    if (answer != platform::vbOK) return;

    const QString listFile = ListColumn(row, 4);
    if (common::FileExists(listFile)) QFile::remove(listFile);
    KillCacheFolder(listFile);

    // Each later list moves up one element, so that element i stays the list of row i.
    const int elements = static_cast<int>(lstImages.size());
    for (int i = row; i <= rows - 1 && i + 1 < elements; ++i) {
        QListWidget* here = lstImages[static_cast<std::size_t>(i)];
        QListWidget* next = lstImages[static_cast<std::size_t>(i + 1)];
        here->clear();
        here->hide();
        for (int k = 0; k < next->count(); ++k)
            here->addItem(next->item(k)->text());
        next->clear();
        next->hide();
    }
    // The element the last row leaves behind must not go on showing a list that is gone.
    if (rows < elements) {
        lstImages[static_cast<std::size_t>(rows)]->clear();
        lstImages[static_cast<std::size_t>(rows)]->hide();
    }

    {
        // Removing the row must not select another and fill the strip again behind our back.
        const QSignalBlocker quiet(lvwFolderList);
        delete lvwFolderList->takeTopLevelItem(row - 1);
        lvwFolderList->setCurrentItem(nullptr);
        lvwFolderList->clearSelection();
    }
    ShowHideFileDetails(false);
    NukeRemList();
}

void frmConfig::cmdRescanNow_Click() {
    const int row = SelectedListRow();
    if (row <= 0 || row >= static_cast<int>(lstImages.size())) return;
    lstTempImageList->clear();
    if (ListColumn(row, 3) != QLatin1String("Local")) {
        // STAND-IN until the web page and Flickr scanners exist.
        platform::MsgBox(
            QStringLiteral("Re-scanning web and Flickr lists is not available in this version."),
            platform::vbInformation, QStringLiteral("Tessaview"));
        return;
    }
    const QString option = ListColumn(row, 7);
    const qsizetype split = option.indexOf(QStringLiteral("=="));
    const bool recurse =
        split >= 0 && option.mid(split + 2).trimmed().toUpper() == QLatin1String("TRUE");
    QStringList found;
    int count = 0;
    bool aborted = false;
    frmScanning* scanning = frmScanning::instance();
    scanning->SetOwner(this);
    scanning->RescanFolder(ListColumn(row, 2), recurse, found, count, aborted);
    // A scan cut short changes nothing: the list keeps what it had.
    if (aborted) return;
    lstTempImageList->addItems(found);

    QTreeWidgetItem* item = lvwFolderList->topLevelItem(row - 1);
    item->setText(1, QString::number(count));
    item->setText(5, ListFileDateText(platform::Today()));
    QListWidget* images = lstImages[static_cast<std::size_t>(row)];
    images->clear();
    images->addItems(found);
    WriteImageList(row);
    ShowFileDetails(row);
}
