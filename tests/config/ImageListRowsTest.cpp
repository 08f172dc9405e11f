#include "TestSupport.h"

#include "lists/ImageListFile.h"
#include <QFocusEvent>

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTest>

namespace {

class ImageListRows : public FormsFixture {
protected:
    void SetUp() override {
        saved = QLocale();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        FormsFixture::SetUp();
        config = frmConfig::instance();
        lists = InstallDir + QStringLiteral("/Imagelists");
        ASSERT_TRUE(QDir().mkpath(lists));
    }
    void TearDown() override {
        FormsFixture::TearDown();
        QLocale::setDefault(saved);
    }

    // A list file in the install folder's Imagelists folder.
    QString MakeList(const QString& name, const QString& title, const QString& type,
                     const QString& lastScan, const QString& interval,
                     const std::array<QString, 5>& options, const QStringList& images) {
        ::lists::ImageListRow row;
        row.title = title;
        row.count = QString::number(::lists::CountImageRecords(images));
        row.path = QStringLiteral("/photos/") + title + QLatin1Char('/');
        row.type = type;
        row.lastScan = lastScan;
        row.scanInterval = interval;
        row.options = options;
        const QString file = lists + QLatin1Char('/') + name;
        EXPECT_TRUE(::lists::WriteTextLines(file, ::lists::ImageListLines(row, images)));
        return file;
    }
    QString MakeLocal(const QString& name, const QString& title, const QStringList& images,
                      const QString& interval = QStringLiteral("7")) {
        return MakeList(
            name, title, QStringLiteral("Local"), QStringLiteral("03/07/2025"), interval,
            {"RECURSE==True", "none==none", "none==none", "none==none", "none==none"}, images);
    }
    int Rows() const { return config->lvwFolderList->topLevelItemCount(); }
    QStringList Entries(int index) const {
        QStringList lines;
        const QListWidget* list = config->lstImages[static_cast<std::size_t>(index)];
        for (int i = 0; i < list->count(); ++i)
            lines << list->item(i)->text();
        return lines;
    }
    QString IconKey(int row) const {
        return config->lvwFolderList->topLevelItem(row - 1)->data(0, Qt::UserRole + 1).toString();
    }
    void Select(int row) {
        QTreeWidgetItem* item = config->lvwFolderList->topLevelItem(row - 1);
        config->lvwFolderList->setCurrentItem(item);
        item->setSelected(true);
    }
    // Three local lists a, b, c, loaded in that order.
    void LoadThree() {
        MakeLocal("c_1.tvl", "Cats", {"IMAGE>/photos/c1.jpg"});
        MakeLocal("a_1.tvl", "Autumn", {"IMAGE>/photos/a1.jpg", "IMAGE>/photos/a2.jpg"});
        MakeLocal("b_1.tvl", "Birds",
                  {"IMAGE>/photos/b1.jpg", "IMAGE>/photos/b2.jpg", "IMAGE>/photos/b3.jpg"});
        config->ScanAndLoadImageLists(lists);
        ASSERT_EQ(Rows(), 3);
    }
    void PlaceRemainingList() {
        QFile remain(InstallDir + QStringLiteral("/remain.lst"));
        ASSERT_TRUE(remain.open(QIODevice::WriteOnly));
        remain.write("x\r\n");
        remain.close();
        config->CheckForRemainingList();
        ASSERT_FALSE(config->cmdNukeRemlist->isHidden());
    }
    bool RemainingListGone() const {
        return !QFile::exists(InstallDir + QStringLiteral("/remain.lst")) &&
               config->cmdNukeRemlist->isHidden();
    }

    QLocale saved;
    frmConfig* config = nullptr;
    QString lists;
};

} // namespace

TEST_F(ImageListRows, ScanningLoadsEveryListFileByNameIntoARowAndItsOwnImageList) {
    LoadThree();
    MakeList("z_1.txt", "NotAList", "Local", "", "1", {}, {});
    EXPECT_EQ(config->ListColumn(1, 0), QStringLiteral("Autumn"));
    EXPECT_EQ(config->ListColumn(2, 0), QStringLiteral("Birds"));
    EXPECT_EQ(config->ListColumn(3, 0), QStringLiteral("Cats"));
    EXPECT_EQ(config->ListColumn(2, 1), QStringLiteral("3"));
    EXPECT_EQ(config->ListColumn(2, 2), QStringLiteral("/photos/Birds/"));
    EXPECT_EQ(config->ListColumn(2, 3), QStringLiteral("Local"));
    EXPECT_EQ(config->ListColumn(2, 4), lists + QStringLiteral("/b_1.tvl"));
    EXPECT_EQ(config->ListColumn(2, 5), QStringLiteral("03/07/2025"));
    EXPECT_EQ(config->ListColumn(2, 6), QStringLiteral("7"));
    EXPECT_EQ(config->ListColumn(2, 7), QStringLiteral("RECURSE==True"));
    for (int column = 8; column <= 11; ++column)
        EXPECT_TRUE(config->ListColumn(2, column).isEmpty()) << column;
    EXPECT_EQ(IconKey(2), QStringLiteral("folder"));
    ASSERT_GE(config->lstImages.size(), 4u);
    EXPECT_EQ(Entries(1), (QStringList{"IMAGE>/photos/a1.jpg", "IMAGE>/photos/a2.jpg"}));
    EXPECT_EQ(Entries(3), QStringList{"IMAGE>/photos/c1.jpg"});
    EXPECT_EQ(config->lstImages[2]->objectName(), QStringLiteral("lstImages(2)"));
    EXPECT_TRUE(config->lstImages[2]->isHidden());
    EXPECT_EQ(config->lstImages[2]->geometry(), config->lstImages[0]->geometry());
    EXPECT_TRUE(messages.empty());

    config->ScanAndLoadImageLists(InstallDir + QStringLiteral("/nowhere"));
    EXPECT_EQ(Rows(), 3);
}

TEST_F(ImageListRows, TheWindowLoadsTheInstallFoldersListsAtStart) {
    MakeLocal("a_1.tvl", "Autumn", {});
    MakeList(
        "web_1.tvl", "News", "Web", "01/01/2026", "1",
        {"EXCLUDEGIF==True", "PAGEIMAGES==True", "LINKIMAGES==False", "none==none", "none==none"},
        {});
    MakeList("fl_1.tvl", "Friends", "Flickr", "01/01/2026", "1",
             {"PERPAGE==20", "USER_NSID==1@N00", "none==none", "none==none", "none==none"}, {});
    config = ReloadConfig();
    ASSERT_EQ(Rows(), 3);
    EXPECT_EQ(IconKey(1), QStringLiteral("folder"));
    EXPECT_EQ(IconKey(2), QStringLiteral("flickr"));
    EXPECT_EQ(IconKey(3), QStringLiteral("web"));
    // A list without images keeps its row, with a count of 0.
    EXPECT_EQ(config->ListColumn(1, 1), QStringLiteral("0"));
    EXPECT_TRUE(Entries(1).isEmpty());

    // The table taking the focus at start makes a row current but chooses none: no details,
    // no arrow to show a list's images.
    QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(config->lvwFolderList, &focus);
    ASSERT_NE(config->lvwFolderList->currentItem(), nullptr);
    EXPECT_TRUE(config->lblLocation->isHidden());
    EXPECT_TRUE(config->imgSetPageOpen[21]->isHidden());
    // Keys that move the choice show it.
    config->lvwFolderList->setCurrentItem(config->lvwFolderList->topLevelItem(1));
    EXPECT_FALSE(config->lblLocation->isHidden());
}

TEST_F(ImageListRows, AMissingFileIsPassedOverSilentlyAndABrokenOneKeepsItsHalfRow) {
    config->LoadImageList(lists + QStringLiteral("/missing.tvl"));
    EXPECT_EQ(Rows(), 0);
    EXPECT_TRUE(messages.empty());

    QFile broken(lists + QStringLiteral("/broken.tvl"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("banner\r\nCOUNT,12\r\nTITLE\r\n");
    broken.close();
    config->LoadImageList(broken.fileName());
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt,
              QStringLiteral("Error loading image list:\r\n") + broken.fileName());
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(config->ListColumn(1, 1), QStringLiteral("12"));
    EXPECT_EQ(config->ListColumn(1, 4), broken.fileName());
}

TEST_F(ImageListRows, WritingARowCountsItsPhotosAndReplacesTheFile) {
    const QStringList triples = {"IMAGE>https://x/1.jpg", "TITLE>One", "DESCR>First",
                                 "IMAGE>https://x/2.jpg", "TITLE>Two", "DESCR>Second"};
    const QString file =
        MakeList("fl_1.tvl", "Friends", "Flickr", "01/01/2026", "1",
                 {"PERPAGE==20", "none==none", "none==none", "none==none", "none==none"}, triples);
    config->ScanAndLoadImageLists(lists);
    ASSERT_EQ(Rows(), 1);
    config->lvwFolderList->topLevelItem(0)->setText(1, QStringLiteral("99"));
    config->lstImages[1]->addItem(QStringLiteral("IMAGE>https://x/3.jpg"));
    ASSERT_TRUE(config->WriteImageList(1));
    EXPECT_EQ(config->ListColumn(1, 1), QStringLiteral("3"));
    QStringList lines;
    ASSERT_TRUE(::lists::ReadTextLines(file, lines));
    EXPECT_EQ(lines[6], QStringLiteral("COUNT,3"));
    EXPECT_EQ(lines.mid(10, 5),
              (QStringList{"OPTION,PERPAGE==20", "OPTION,", "OPTION,", "OPTION,", "OPTION,"}));
    EXPECT_EQ(lines.mid(16), triples + QStringList{"IMAGE>https://x/3.jpg"});
    EXPECT_FALSE(config->WriteImageList(2));
}

TEST_F(ImageListRows, AddingAListMakesItsRowWritesItsFileAndDropsTheSavedPool) {
    LoadThree();
    PlaceRemainingList();
    const QString file = config->BuildImageListFileName(QStringLiteral("/home/ann/Sea/"));
    EXPECT_EQ(file, lists + QStringLiteral("/Sea_1.tvl"));
    ASSERT_TRUE(config->AddNewImageFile(
        "Sea, sand", "Local", "/home/ann/Sea/", "5", file, "22/11/2026", "4000",
        {{{"RECURSE", "False"},
          {"none", "none"},
          {"none", "none"},
          {"none", "none"},
          {"none", "none"}}},
        {"IMAGE>/home/ann/Sea/1.jpg", "IMAGE>/home/ann/Sea/2.jpg"}));
    ASSERT_EQ(Rows(), 4);
    EXPECT_EQ(config->ListColumn(4, 0), QStringLiteral("Sea, sand"));
    EXPECT_EQ(config->ListColumn(4, 1), QStringLiteral("2"));
    EXPECT_EQ(config->ListColumn(4, 7), QStringLiteral("RECURSE==False"));
    EXPECT_EQ(config->ListColumn(4, 10), QStringLiteral("none==none"));
    EXPECT_TRUE(config->ListColumn(4, 11).isEmpty());
    EXPECT_EQ(IconKey(4), QStringLiteral("folder"));
    EXPECT_EQ(Entries(4), (QStringList{"IMAGE>/home/ann/Sea/1.jpg", "IMAGE>/home/ann/Sea/2.jpg"}));
    EXPECT_TRUE(RemainingListGone());

    QStringList lines;
    ASSERT_TRUE(::lists::ReadTextLines(file, lines));
    EXPECT_EQ(lines[3], QStringLiteral("Sea, sand"));
    EXPECT_EQ(lines[6], QStringLiteral("COUNT,2"));
    EXPECT_EQ(lines[9], QStringLiteral("SCANINTERVAL,4000"));
    EXPECT_EQ(lines[13], QStringLiteral("OPTION,none==none"));
    EXPECT_EQ(lines[14], QStringLiteral("OPTION,"));
    EXPECT_EQ(config->BuildImageListFileName(QStringLiteral("/home/ann/Sea/")),
              lists + QStringLiteral("/Sea_2.tvl"));

    ASSERT_TRUE(config->AddNewImageFile("Group", "Flickr-Group-Public", "Flickr-Group-Public", "0",
                                        lists + QStringLiteral("/flickr-gro_1.tvl"), "22/11/2026",
                                        "7",
                                        {{{"PERPAGE", "10"},
                                          {"GROUP_NSID", "7@N01"},
                                          {"none", "none"},
                                          {"none", "none"},
                                          {"none", "none"}}},
                                        {}));
    EXPECT_EQ(IconKey(5), QStringLiteral("flickr"));
    QString listName;
    EXPECT_EQ(config->BuildWebImageFileName(QStringLiteral("Flickr-Group-Public"), listName),
              lists + QStringLiteral("/flickr-gro_2.tvl"));
    EXPECT_EQ(listName, QStringLiteral("flickr-gro_2"));
}

TEST_F(ImageListRows, TheNameSearchLooksAtTheTypeColumnNotTheFileColumn) {
    LoadThree();
    EXPECT_FALSE(config->InFolderList(lists + QStringLiteral("/a_1.tvl")));
    EXPECT_TRUE(config->InFolderList(QStringLiteral("Local")));
}

TEST_F(ImageListRows, TheDetailsStripDescribesTheSelectedList) {
    MakeList("fl_1.tvl", "Friends", "Flickr-User-Public", "03/07/2025", "999",
             {"PERPAGE==20", "USER_NSID==1@N00", "none==none", "none==none", "none==none"}, {});
    MakeList("loc_1.tvl", "Home", "Local", "03/07/2025", "0",
             {"RECURSE==false", "none==none", "none==none", "none==none", "none==none"},
             {"IMAGE>/h/1.jpg"});
    MakeList(
        "web_1.tvl", "News", "Web", "03/07/2025", "1000",
        {"EXCLUDEGIF== true ", "PAGEIMAGES==False", "LINKIMAGES==TRUE", "none==none", "none==none"},
        {});
    MakeList("x_1.tvl", "Odd", "Web", "03/07/2025", "4000",
             {"STRANGE==1", "none==none", "none==none", "none==none", "none==none"}, {});
    config->ScanAndLoadImageLists(lists);
    ASSERT_EQ(Rows(), 4);
    auto* detail = config;
    EXPECT_TRUE(detail->lblLocation->isHidden());
    EXPECT_TRUE(detail->imgSetPageOpen[21]->isHidden());

    detail->ShowFileDetails(1);
    EXPECT_FALSE(detail->lblLocation->isHidden());
    EXPECT_FALSE(detail->imgButton[2]->isHidden());
    EXPECT_FALSE(detail->imgSetPageOpen[21]->isHidden());
    EXPECT_EQ(detail->lblLocation->text(), QStringLiteral("/photos/Friends/"));
    EXPECT_EQ(detail->lblImageCount->text(), QStringLiteral("( 0 images )"));
    EXPECT_EQ(detail->lblLastScan->text(), QStringLiteral("Last Scan: 03/07/2025"));
    // 999 days: almost three years on.
    EXPECT_EQ(detail->lblNextScan->text(), QStringLiteral("Next Scan: 28/03/2028"));
    EXPECT_EQ(detail->lblOption[1]->text(), QStringLiteral("Return up to 20 images"));
    EXPECT_EQ(detail->lblOption[2]->text(), QStringLiteral("Images from user 1@N00"));
    EXPECT_TRUE(detail->lblOption[3]->text().isEmpty());

    detail->ShowFileDetails(2);
    EXPECT_EQ(detail->lblImageCount->text(), QStringLiteral("( 1 images )"));
    EXPECT_EQ(detail->lblNextScan->text(), QStringLiteral("Next Scan: 03/07/2025"));
    EXPECT_EQ(detail->lblOption[1]->text(), QStringLiteral("Don't scan sub-folders"));
    EXPECT_FALSE(detail->lstImages[2]->isHidden());
    EXPECT_TRUE(detail->lstImages[1]->isHidden());
    EXPECT_EQ(detail->lstImages[2]->geometry(), detail->lstImages[0]->geometry());

    detail->ShowFileDetails(3);
    EXPECT_EQ(detail->lblNextScan->text(), QStringLiteral("(no automatic rescan)"));
    EXPECT_EQ(detail->lblOption[1]->text(), QStringLiteral("Ignore GIF and PNG images"));
    EXPECT_EQ(detail->lblOption[2]->text(),
              QStringLiteral("Do not include images found on web page"));
    EXPECT_EQ(detail->lblOption[3]->text(),
              QStringLiteral("Include images linked from this web page."));
    EXPECT_TRUE(detail->lstImages[2]->isHidden());
    EXPECT_FALSE(detail->lstImages[3]->isHidden());

    // The reader drops an option it does not know; one that reaches a column is shown raw.
    detail->ShowFileDetails(4);
    EXPECT_EQ(detail->lblNextScan->text(), QStringLiteral("(no automatic rescan)"));
    EXPECT_TRUE(detail->lblOption[1]->text().isEmpty());
    detail->lvwFolderList->topLevelItem(3)->setText(7, QStringLiteral("STRANGE==1"));
    detail->lvwFolderList->topLevelItem(3)->setText(8, QStringLiteral("none==none"));
    detail->ShowFileDetails(4);
    EXPECT_EQ(detail->lblOption[1]->text(), QStringLiteral("STRANGE==1"));
    EXPECT_EQ(detail->lblOption[2]->text(), QStringLiteral(" "));

    detail->lblLocation->clear();
    detail->ShowFileDetails(0);
    detail->ShowFileDetails(-3);
    EXPECT_TRUE(detail->lblLocation->text().isEmpty());
}

TEST_F(ImageListRows, TheOptionCaptionsFollowTheirValues) {
    MakeList("a_1.tvl", "A", "Local", "03/07/2025", "1",
             {"RECURSE==True", "none==none", "none==none", "none==none", "none==none"}, {});
    MakeList("b_1.tvl", "B", "Web", "03/07/2025", "1",
             {"EXCLUDEGIF==no", "PAGEIMAGES==true", "LINKIMAGES==", "none==none", "none==none"},
             {});
    MakeList("c_1.tvl", "C", "Flickr-Group-Public", "03/07/2025", "30",
             {"PERPAGE==5", "GROUP_NSID==9@N02", "none==none", "none==none", "none==none"}, {});
    config->ScanAndLoadImageLists(lists);
    config->ShowFileDetails(1);
    EXPECT_EQ(config->lblOption[1]->text(), QStringLiteral("Scan sub-folders"));
    EXPECT_EQ(config->lblNextScan->text(), QStringLiteral("Next Scan: 04/07/2025"));
    config->ShowFileDetails(2);
    EXPECT_EQ(config->lblOption[1]->text(), QStringLiteral("Include GIF and PNG images"));
    EXPECT_EQ(config->lblOption[2]->text(), QStringLiteral("Include images found on web page"));
    EXPECT_EQ(config->lblOption[3]->text(),
              QStringLiteral("Do not include images linked from this page."));
    config->ShowFileDetails(3);
    EXPECT_EQ(config->lblOption[2]->text(), QStringLiteral("Images from group 9@N02"));
    EXPECT_EQ(config->lblNextScan->text(), QStringLiteral("Next Scan: 02/08/2025"));
}

TEST_F(ImageListRows, ClickingARowShowsItsDetailsAndTheCountTogglesItsImages) {
    LoadThree();
    QTreeWidgetItem* birds = config->lvwFolderList->topLevelItem(1);
    const QRect where = config->lvwFolderList->visualItemRect(birds);
    config->show();
    QTest::mouseClick(config->lvwFolderList->viewport(), Qt::LeftButton, {}, where.center());
    EXPECT_EQ(config->SelectedListRow(), 2);
    EXPECT_EQ(config->lblImageCount->text(), QStringLiteral("( 3 images )"));
    EXPECT_FALSE(config->lstImages[2]->isHidden());

    QTest::mouseClick(config->lblImageCount, Qt::LeftButton);
    EXPECT_TRUE(config->lstImages[2]->isHidden());
    config->lblImageCount_Click();
    EXPECT_FALSE(config->lstImages[2]->isHidden());

    // Moving the selection with the keyboard follows along.
    config->lvwFolderList->setFocus();
    QTest::keyClick(config->lvwFolderList, Qt::Key_Down);
    EXPECT_EQ(config->lblImageCount->text(), QStringLiteral("( 1 images )"));
    EXPECT_FALSE(config->lstImages[3]->isHidden());
    EXPECT_TRUE(config->lstImages[2]->isHidden());
}

TEST_F(ImageListRows, DeletingAMiddleRowAsksRemovesItsFileAndClosesTheGap) {
    LoadThree();
    PlaceRemainingList();
    Select(2);
    config->ShowFileDetails(2);
    config->imgButton_MouseUp(2);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt,
              QStringLiteral("Are you sure you want to delete this entry ?\rBirds"));
    EXPECT_EQ(messages[0].flags, platform::vbOKCancel | platform::vbExclamation);
    EXPECT_EQ(messages[0].title, QStringLiteral("Confirm Delete ..."));

    ASSERT_EQ(Rows(), 2);
    EXPECT_EQ(config->ListColumn(1, 0), QStringLiteral("Autumn"));
    EXPECT_EQ(config->ListColumn(2, 0), QStringLiteral("Cats"));
    EXPECT_FALSE(QFile::exists(lists + QStringLiteral("/b_1.tvl")));
    EXPECT_TRUE(QFile::exists(lists + QStringLiteral("/c_1.tvl")));
    EXPECT_EQ(Entries(1), (QStringList{"IMAGE>/photos/a1.jpg", "IMAGE>/photos/a2.jpg"}));
    EXPECT_EQ(Entries(2), QStringList{"IMAGE>/photos/c1.jpg"});
    EXPECT_TRUE(Entries(3).isEmpty());
    for (int i = 1; i <= 3; ++i)
        EXPECT_TRUE(config->lstImages[static_cast<std::size_t>(i)]->isHidden()) << i;
    EXPECT_TRUE(config->lblLocation->isHidden());
    EXPECT_TRUE(config->imgButton[2]->isHidden());
    EXPECT_EQ(config->SelectedListRow(), 0);
    EXPECT_TRUE(RemainingListGone());

    // The row that moved up is written from its new element.
    ASSERT_TRUE(config->WriteImageList(2));
    QStringList lines;
    ASSERT_TRUE(::lists::ReadTextLines(lists + QStringLiteral("/c_1.tvl"), lines));
    EXPECT_EQ(lines.mid(16), QStringList{"IMAGE>/photos/c1.jpg"});
}

TEST_F(ImageListRows, DeletingTheLastRowLeavesTheOthersAsTheyWere) {
    LoadThree();
    config->DeleteFolderListItem(3);
    ASSERT_EQ(Rows(), 2);
    EXPECT_EQ(config->ListColumn(2, 0), QStringLiteral("Birds"));
    EXPECT_EQ(Entries(2).size(), 3);
    EXPECT_EQ(Entries(1).size(), 2);
    EXPECT_FALSE(QFile::exists(lists + QStringLiteral("/c_1.tvl")));
    // A list added afterwards starts from an empty element.
    ASSERT_TRUE(config->AddNewImageFile("New", "Web", "http://x", "0",
                                        lists + QStringLiteral("/x_1.tvl"), "22/11/2026", "1",
                                        {{{"EXCLUDEGIF", "True"},
                                          {"PAGEIMAGES", "True"},
                                          {"LINKIMAGES", "True"},
                                          {"none", "none"},
                                          {"none", "none"}}},
                                        {}));
    EXPECT_TRUE(Entries(3).isEmpty());
    EXPECT_EQ(IconKey(3), QStringLiteral("web"));
}

TEST_F(ImageListRows, CancellingTheConfirmationDeletesNothing) {
    LoadThree();
    PlaceRemainingList();
    platform::SetMsgBoxAnswerer([this](const platform::MsgBoxCall& call) {
        messages.push_back(call);
        return static_cast<int>(platform::vbCancel);
    });
    Select(1);
    config->ShowFileDetails(1);
    config->imgButton_MouseUp(2);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(Rows(), 3);
    EXPECT_TRUE(QFile::exists(lists + QStringLiteral("/a_1.tvl")));
    EXPECT_EQ(Entries(1).size(), 2);
    EXPECT_FALSE(config->lblLocation->isHidden());
    EXPECT_FALSE(config->cmdNukeRemlist->isHidden());

    // Without a selected row the button asks nothing.
    config->lvwFolderList->clearSelection();
    config->imgButton_MouseUp(2);
    EXPECT_EQ(messages.size(), 1u);
}
