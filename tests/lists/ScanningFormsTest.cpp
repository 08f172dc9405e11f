#include "TestSupport.h"
#include "lists/ImageListFile.h"
#include "lists/ListFiles.h"
#include "lists/frmOpenFolder.h"
#include "lists/frmScanning.h"

#include <QDir>
#include <QFile>
#include <QTimer>

namespace {

class ScanningForms : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        config = frmConfig::instance();
        root = install.path() + QStringLiteral("/photos");
        MakePictures(root, {"b.JPG", "a.png", "notes.txt"});
        MakePictures(root + QStringLiteral("/z"), {"c.TIFF"});
        MakePictures(root + QStringLiteral("/m"), {"d.jpeg"});
        QDir().mkpath(root + QStringLiteral("/empty"));
    }
    // The tree's records in breadth-first order, sub-folders by name.
    QStringList Expected(bool recurse) const {
        QStringList r{root + "/a.png", root + "/b.JPG"};
        if (recurse) r << root + "/m/d.jpeg" << root + "/z/c.TIFF";
        return ImageRecords(r);
    }
    frmConfig* config = nullptr;
    QString root;
};

TEST_F(ScanningForms, AScanEndsCompleteOrAbortedAndClosesAfterItsPause) {
    frmScanning* scanning = frmScanning::instance();
    scanning->SetOwner(config);
    QStringList list{QStringLiteral("kept")};
    int count = -1;
    bool aborted = true;
    scanning->RescanFolder(root, true, list, count, aborted);
    EXPECT_FALSE(aborted);
    EXPECT_EQ(list, QStringList{QStringLiteral("kept")} + Expected(true));
    EXPECT_EQ(count, 5);
    EXPECT_EQ(scanning->lblHits->text(), QStringLiteral("5"));
    EXPECT_EQ(scanning->lblScanningFolder->toolTip(), QStringLiteral("Scan complete of ") + root);
    // The owner waits for the window, which goes 1.5 s later.
    EXPECT_FALSE(config->isEnabled());
    EXPECT_TRUE(scanning->PauseTimer->Enabled());
    EXPECT_EQ(scanning->PauseTimer->Interval(), 1500);
    scanning->PauseTimer->fire();
    EXPECT_FALSE(frmScanning::isLoaded());
    EXPECT_TRUE(config->isEnabled());

    // An abort keeps whole folders. The button is pressed as soon as the scan takes events,
    // which it does between folders.
    scanning = frmScanning::instance();
    scanning->SetOwner(config);
    QTimer::singleShot(0, scanning->cmdAbortScan, &QPushButton::click);
    list.clear();
    count = -1;
    aborted = false;
    scanning->RescanFolder(root, true, list, count, aborted);
    EXPECT_TRUE(aborted);
    EXPECT_EQ(count, list.size());
    EXPECT_TRUE(list.isEmpty() || list == Expected(false)) << list.join('\n').toStdString();
    EXPECT_FALSE(frmScanning::isLoaded());
    EXPECT_TRUE(config->isEnabled());

    // A folder that cannot be listed at all ends the scan as an abort and leaves count alone.
    scanning = frmScanning::instance();
    scanning->SetOwner(config);
    count = -7;
    aborted = false;
    list.clear();
    scanning->RescanFolder(root + QStringLiteral("/missing"), true, list, count, aborted);
    EXPECT_TRUE(aborted);
    EXPECT_EQ(count, -7);
    EXPECT_TRUE(list.isEmpty());
    EXPECT_TRUE(config->isEnabled());
}

TEST_F(ScanningForms, TheAddFolderDialogScansAndAddsAList) {
    config->MyPicturesFolder = root;
    frmOpenFolder* dialog = frmOpenFolder::instance();
    dialog->ShowFor(config);
    EXPECT_FALSE(config->isEnabled());
    EXPECT_EQ(dialog->txtSelectedFOlder->text(), root);
    EXPECT_EQ(dialog->txtTitle->text(), root);
    EXPECT_EQ(dialog->cmbScanInterval->count(), 5);
    EXPECT_EQ(dialog->cmbScanInterval->currentIndex(), 0);
    EXPECT_FALSE(dialog->cmdOk->isEnabled());

    // A cancelled folder browser keeps the folder; a chosen one becomes the title too.
    platform::SetFolderAnswerer([](const QString& caption) {
        EXPECT_EQ(caption, QStringLiteral("Select a folder"));
        return QString();
    });
    dialog->cmdChooseFolder_Click();
    EXPECT_EQ(dialog->txtSelectedFOlder->text(), root);
    platform::SetFolderAnswerer([this](const QString&) { return root + QStringLiteral("/z"); });
    dialog->cmdChooseFolder_Click();
    platform::SetFolderAnswerer(nullptr);
    EXPECT_EQ(dialog->txtTitle->text(), root + QStringLiteral("/z"));
    dialog->txtSelectedFOlder->setText(root);

    dialog->chkRecurse->setChecked(false);
    dialog->cmdScanFolder_Click();
    EXPECT_EQ(dialog->lblStat->text(), QStringLiteral("Found 2 images."));
    ASSERT_EQ(dialog->lstNewImages->count(), 2);
    EXPECT_TRUE(dialog->cmdOk->isEnabledTo(dialog));
    EXPECT_EQ(dialog->cmdOk->text(), QStringLiteral("Ok"));
    // The dialog waits for the scanning window to go.
    EXPECT_FALSE(dialog->isEnabled());
    frmScanning::instance()->PauseTimer->fire();
    // The result no longer fits once the choice of sub-folders changes.
    dialog->chkRecurse->click();
    EXPECT_FALSE(dialog->cmdOk->isEnabled());
    dialog->cmdScanFolder_Click();
    EXPECT_EQ(dialog->lblStat->text(), QStringLiteral("Found 4 images."));
    frmScanning::instance()->PauseTimer->fire();

    dialog->txtTitle->setText(QStringLiteral("Our photos"));
    dialog->cmbScanInterval->setCurrentIndex(2);
    const int rowsBefore = config->lvwFolderList->topLevelItemCount();
    dialog->cmdOk_Click();
    EXPECT_FALSE(frmOpenFolder::isLoaded());
    EXPECT_TRUE(config->isEnabled());
    ASSERT_EQ(config->lvwFolderList->topLevelItemCount(), rowsBefore + 1);
    const int row = rowsBefore + 1;
    EXPECT_EQ(config->ListColumn(row, 0), QStringLiteral("Our photos"));
    EXPECT_EQ(config->ListColumn(row, 2), root + QLatin1Char('/'));
    QStringList lines;
    ASSERT_TRUE(lists::ReadTextLines(config->ListColumn(row, 4), lines));
    const lists::LoadedImageList loaded = lists::ParseImageList(lines, QString());
    EXPECT_EQ(loaded.row.count, QStringLiteral("4"));
    EXPECT_EQ(loaded.row.type, QStringLiteral("Local"));
    EXPECT_EQ(loaded.row.scanInterval, QStringLiteral("7"));
    EXPECT_EQ(loaded.row.options[0], QStringLiteral("RECURSE==True"));
    EXPECT_EQ(lines.count(QStringLiteral("OPTION,none==none")), 3);
    EXPECT_EQ(loaded.images, Expected(true));
}

TEST_F(ScanningForms, RescanNowReplacesAFolderListsImagesAndDate) {
    ListFileContents contents;
    contents.source = root + QLatin1Char('/');
    contents.lastScan = ListFileDateText(platform::Today().addDays(-30));
    contents.records = {QStringLiteral("IMAGE>/old/one.jpg")};
    const QString file = install.path() + QStringLiteral("/Imagelists/photos_1.tvl");
    QDir().mkpath(install.path() + QStringLiteral("/Imagelists"));
    WriteListFile(file, contents, platform::Today());
    config = ReloadConfig();
    config->lvwFolderList->setCurrentItem(config->lvwFolderList->topLevelItem(0));
    config->lvwFolderList->topLevelItem(0)->setSelected(true);

    config->cmdRescanNow_Click();
    EXPECT_EQ(config->ListColumn(1, 1), QStringLiteral("2"));
    EXPECT_EQ(config->ListColumn(1, 5), ListFileDateText(platform::Today()));
    QStringList lines;
    ASSERT_TRUE(lists::ReadTextLines(file, lines));
    EXPECT_EQ(lists::ParseImageList(lines, file).images, Expected(false));
}

} // namespace
