// The configuration window's side of the image list files: each file is one row of
// lvwFolderList and one element of lstImages, and these routines move lists between the two.
#include "app/Common.h"
#include "app/modMain.h"
#include "config/frmConfig.h"
#include "lists/ImageListFile.h"
#include "platform/Dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStyle>

namespace {

// The icon key of a row stays readable on the row, for whatever draws or tests it.
constexpr int IconKeyRole = Qt::UserRole + 1;

void SetRowIcon(QTreeWidgetItem* item, const QString& key) {
    item->setData(0, IconKeyRole, key);
    QStyle* style = QApplication::style();
    if (!style) return;
    const QStyle::StandardPixmap picture = key == QLatin1String("folder") ? QStyle::SP_DirIcon
                                           : key == QLatin1String("web")
                                               ? QStyle::SP_DriveNetIcon
                                               : QStyle::SP_FileDialogContentsView;
    item->setIcon(0, style->standardIcon(picture));
}

QStringList LinesOf(const QListWidget* list) {
    QStringList lines;
    for (int i = 0; i < list->count(); ++i)
        lines << list->item(i)->text();
    return lines;
}

lists::ImageListRow RowOf(const QTreeWidgetItem* item) {
    lists::ImageListRow row;
    row.title = item->text(0);
    row.count = item->text(1);
    row.path = item->text(2);
    row.type = item->text(3);
    row.fileName = item->text(4);
    row.lastScan = item->text(5);
    row.scanInterval = item->text(6);
    for (int slot = 0; slot < 5; ++slot)
        row.options[static_cast<std::size_t>(slot)] = item->text(7 + slot);
    return row;
}

void FillRow(QTreeWidgetItem* item, const lists::ImageListRow& row) {
    item->setText(0, row.title);
    item->setText(1, row.count);
    item->setText(2, row.path);
    item->setText(3, row.type);
    item->setText(4, row.fileName);
    item->setText(5, row.lastScan);
    item->setText(6, row.scanInterval);
    for (int slot = 0; slot < 5; ++slot)
        item->setText(7 + slot, row.options[static_cast<std::size_t>(slot)]);
}

} // namespace

int frmConfig::SelectedListRow() const {
    QTreeWidgetItem* item = lvwFolderList->currentItem();
    if (!item || !item->isSelected()) return 0;
    return lvwFolderList->indexOfTopLevelItem(item) + 1;
}

QString frmConfig::ListColumn(int row, int column) const {
    const QTreeWidgetItem* item = lvwFolderList->topLevelItem(row - 1);
    return item ? item->text(column) : QString();
}

// Clearing an element that has not been made yet makes it: hidden, where element 0 lies.
void frmConfig::LoadOrClearImageList(int index) {
    if (index < 0) return;
    while (static_cast<int>(lstImages.size()) <= index) {
        auto* list = new QListWidget(this);
        list->setObjectName(QStringLiteral("lstImages(%1)").arg(lstImages.size()));
        list->setGeometry(lstImages[0]->geometry());
        list->hide();
        lstImages.push_back(list);
    }
    lstImages[static_cast<std::size_t>(index)]->clear();
}

void frmConfig::LoadImageList(const QString& fileName) {
    if (!common::FileExists(fileName)) return;
    const QString failure = QStringLiteral("Error loading image list:\r\n") + fileName;
    const std::optional<lists::LoadedImageList> read = lists::ReadImageList(fileName);
    if (!read) {
        // Nothing past the banner could be read, so no row was begun.
        platform::MsgBox(failure);
        return;
    }
    const lists::LoadedImageList& list = *read;
    auto* item = new QTreeWidgetItem(lvwFolderList);
    FillRow(item, list.row);
    if (!list.row.type.isEmpty()) SetRowIcon(item, lists::IconKeyForLoadedType(list.row.type));
    // Every row gets its element, images or not, so that rows and elements stay in step when
    // rows are deleted; an element left from an earlier row must not lend it its entries.
    const int index = lvwFolderList->topLevelItemCount();
    LoadOrClearImageList(index);
    lstImages[static_cast<std::size_t>(index)]->addItems(list.images);
    // A file that breaks off keeps the row it has filled so far.
    if (list.failed) platform::MsgBox(failure);
}

bool frmConfig::WriteImageList(int index) {
    QTreeWidgetItem* item = lvwFolderList->topLevelItem(index - 1);
    if (!item || index >= static_cast<int>(lstImages.size())) return false;
    const QStringList images = LinesOf(lstImages[static_cast<std::size_t>(index)]);
    item->setText(1, QString::number(lists::CountImageRecords(images)));
    const lists::ImageListRow row = RowOf(item);
    return lists::WriteTextLines(row.fileName, lists::ImageListLines(row, images));
}

bool frmConfig::AddNewImageFile(const QString& title, const QString& type, const QString& path,
                                const QString& count, const QString& fileName,
                                const QString& lastScan, const QString& scanInterval,
                                const std::array<std::array<QString, 2>, 5>& options,
                                const QStringList& images) {
    // The first list of a new install makes the folder the lists live in.
    QDir().mkpath(QFileInfo(fileName).path());
    lists::ImageListRow row{title, count, path, type, fileName, lastScan, scanInterval, {}};
    // The form fills the option columns 7 to 10 only; the last slot of a new list is written
    // as a bare "OPTION," line, which every reader takes like "none==none".
    for (std::size_t slot = 0; slot < 4; ++slot)
        row.options[slot] = options[slot][0] + QStringLiteral("==") + options[slot][1];
    auto* item = new QTreeWidgetItem(lvwFolderList);
    FillRow(item, row);
    SetRowIcon(item, lists::IconKeyForNewType(type));
    const int index = lvwFolderList->topLevelItemCount();
    LoadOrClearImageList(index);
    lstImages[static_cast<std::size_t>(index)]->addItems(images);
    const bool written = WriteImageList(index);
    // The saved pool of the next show no longer matches the lists.
    NukeRemList();
    return written;
}

bool frmConfig::InFolderList(const QString& fileName) const {
    // The comparison is with the type column, not the file column, so that in practice only
    // the files on disk decide which names are taken. Kept so, as the add dialogs expect.
    for (int row = 1; row <= lvwFolderList->topLevelItemCount(); ++row)
        if (ListColumn(row, 3) == fileName) return true;
    return false;
}

QString frmConfig::BuildImageListFileName(const QString& folderPath) const {
    return lists::FreeImageListFileName(InstallDir, common::FileNameAndFolder(folderPath),
                                        [this](const QString& f) { return InFolderList(f); });
}

QString frmConfig::BuildWebImageFileName(const QString& sourceText, QString& listName) const {
    return lists::FreeImageListFileName(
        InstallDir, lists::WebListBaseName(sourceText),
        [this](const QString& f) { return InFolderList(f); }, &listName);
}
