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

    // A list file in the install folder's Imagelists folder; options are joined by "|", the
    // rest of the five slots "none==none".
    QString MakeList(const QString& name, const QString& title, const QString& type,
                     const QString& lastScan, const QString& interval, const QString& options,
                     const QStringList& images) {
        ::lists::ImageListRow row;
        row.title = title;
        row.count = QString::number(::lists::CountImageRecords(images));
        row.path = QStringLiteral("/photos/") + title + QLatin1Char('/');
        row.type = type;
        row.lastScan = lastScan;
        row.scanInterval = interval;
        row.options.fill(QStringLiteral("none==none"));
        const QStringList given = options.split('|');
        std::copy(given.begin(), given.end(), row.options.begin());
        const QString file = lists + QLatin1Char('/') + name;
        EXPECT_TRUE(::lists::WriteTextLines(file, ::lists::ImageListLines(row, images)));
        return file;
    }
    QString MakeLocal(const QString& name, const QString& title, const QStringList& images) {
        return MakeList(name, title, "Local", "03/07/2025", "7", "RECURSE==True", images);
    }
    // Name and value of the five option slots for a new list, the rest "none".
    static std::array<std::array<QString, 2>, 5>
    Options(std::initializer_list<std::array<QString, 2>> given) {
        std::array<std::array<QString, 2>, 5> options;
        options.fill({QStringLiteral("none"), QStringLiteral("none")});
        std::copy(given.begin(), given.end(), options.begin());
        return options;
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
        PutFile(InstallDir + QStringLiteral("/remain.lst"), "x\r\n");
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
    MakeList("z_1.txt", "NotAList", "Local", "", "1", "", {});
    EXPECT_EQ(config->ListColumn(1, 0), QStringLiteral("Autumn"));
    EXPECT_EQ(config->ListColumn(3, 0), QStringLiteral("Cats"));
    const QString birds[] = {"Birds",      "3", "/photos/Birds/", "Local", lists + "/b_1.tvl",
                             "03/07/2025", "7", "RECURSE==True",  "",      "",
                             "",           ""};
    for (int column = 0; column < 12; ++column)
        EXPECT_EQ(config->ListColumn(2, column), birds[column]) << column;
    EXPECT_EQ(IconKey(2), QStringLiteral("folder"));
    ASSERT_GE(config->lstImages.size(), 4u);
    EXPECT_EQ(Entries(1), (QStringList{"IMAGE>/photos/a1.jpg", "IMAGE>/photos/a2.jpg"}));
    EXPECT_EQ(Entries(3), QStringList{"IMAGE>/photos/c1.jpg"});
    EXPECT_EQ(config->lstImages[2]->objectName(), QStringLiteral("lstImages(2)"));
    EXPECT_TRUE(config->lstImages[2]->isHidden());
    EXPECT_TRUE(messages.empty());

    config->ScanAndLoadImageLists(InstallDir + QStringLiteral("/nowhere"));
    EXPECT_EQ(Rows(), 3);
    // The name search looks at the type column, not the file column.
    EXPECT_FALSE(config->InFolderList(lists + QStringLiteral("/a_1.tvl")));
    EXPECT_TRUE(config->InFolderList(QStringLiteral("Local")));
}

TEST_F(ImageListRows, TheWindowLoadsTheInstallFoldersListsAtStart) {
    MakeLocal("a_1.tvl", "Autumn", {});
    MakeList("web_1.tvl", "News", "Web", "01/01/2026", "1",
             "EXCLUDEGIF==True|PAGEIMAGES==True|LINKIMAGES==False", {});
    MakeList("fl_1.tvl", "Friends", "Flickr", "01/01/2026", "1", "PERPAGE==20|USER_NSID==1@N00",
             {});
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

    const QString broken = lists + QStringLiteral("/broken.tvl");
    PutFile(broken, "banner\r\nCOUNT,12\r\nTITLE\r\n");
    config->LoadImageList(broken);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt, QStringLiteral("Error loading image list:\r\n") + broken);
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(config->ListColumn(1, 1), QStringLiteral("12"));
    EXPECT_EQ(config->ListColumn(1, 4), broken);
}

TEST_F(ImageListRows, WritingARowCountsItsPhotosAndReplacesTheFile) {
    const QStringList triples = {"IMAGE>https://x/1.jpg", "TITLE>One", "DESCR>First",
                                 "IMAGE>https://x/2.jpg", "TITLE>Two", "DESCR>Second"};
    const QString file =
        MakeList("fl_1.tvl", "Friends", "Flickr", "01/01/2026", "1", "PERPAGE==20", triples);
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
    ASSERT_TRUE(
        config->AddNewImageFile("Sea, sand", "Local", "/home/ann/Sea/", "5", file, "22/11/2026",
                                "4000", Options({{"RECURSE", "False"}}),
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
                                        "7", Options({{"PERPAGE", "10"}, {"GROUP_NSID", "7@N01"}}),
                                        {}));
    EXPECT_EQ(IconKey(5), QStringLiteral("flickr"));
    QString listName;
    EXPECT_EQ(config->BuildWebImageFileName(QStringLiteral("Flickr-Group-Public"), listName),
              lists + QStringLiteral("/flickr-gro_2.tvl"));
    EXPECT_EQ(listName, QStringLiteral("flickr-gro_2"));
}

// Rows in file-name order; nullptr: not looked at.
TEST_F(ImageListRows, TheDetailsStripDescribesTheSelectedList) {
    struct Row {
        const char *type, *interval, *options;
        int images;
        const char *nextScan, *option1, *option2, *option3;
    };
    // clang-format off
    const Row rows[] = {
        // 999 days: almost three years on.
        {"Flickr-User-Public", "999", "PERPAGE==20|USER_NSID==1@N00", 0, "Next Scan: 28/03/2028",
         "Return up to 20 images", "Images from user 1@N00", ""},
        {"Local", "0", "RECURSE==false", 1, "Next Scan: 03/07/2025",
         "Don't scan sub-folders", "", ""},
        {"Web", "1000", "EXCLUDEGIF== true |PAGEIMAGES==False|LINKIMAGES==TRUE", 0,
         "(no automatic rescan)", "Ignore GIF and PNG images",
         "Do not include images found on web page", "Include images linked from this web page."},
        // The reader drops an option it does not know.
        {"Web", "4000", "STRANGE==1", 0, "(no automatic rescan)", "", nullptr, nullptr},
        {"Local", "1", "RECURSE==True", 0, "Next Scan: 04/07/2025", "Scan sub-folders", nullptr,
         nullptr},
        {"Web", "1", "EXCLUDEGIF==no|PAGEIMAGES==true|LINKIMAGES==", 0, nullptr,
         "Include GIF and PNG images", "Include images found on web page",
         "Do not include images linked from this page."},
        {"Flickr-Group-Public", "30", "PERPAGE==5|GROUP_NSID==9@N02", 0, "Next Scan: 02/08/2025",
         nullptr, "Images from group 9@N02", nullptr},
    };
    // clang-format on
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        QStringList images;
        for (int k = 0; k < rows[i].images; ++k)
            images << QStringLiteral("IMAGE>/h/%1.jpg").arg(k);
        MakeList(QStringLiteral("r%1_1.tvl").arg(i), QStringLiteral("L%1").arg(i), rows[i].type,
                 "03/07/2025", rows[i].interval, rows[i].options, images);
    }
    config->ScanAndLoadImageLists(lists);
    ASSERT_EQ(Rows(), static_cast<int>(std::size(rows)));
    ASSERT_GT(static_cast<int>(config->lstImages.size()), Rows());
    EXPECT_TRUE(config->lblLocation->isHidden());
    EXPECT_TRUE(config->imgSetPageOpen[21]->isHidden());

    for (int n = 1; n <= Rows(); ++n) {
        const Row& row = rows[n - 1];
        SCOPED_TRACE(testing::Message() << "row " << n);
        config->ShowFileDetails(n);
        EXPECT_EQ(config->lblLocation->text(), QStringLiteral("/photos/L%1/").arg(n - 1));
        EXPECT_EQ(config->lblImageCount->text(), QStringLiteral("( %1 images )").arg(row.images));
        EXPECT_EQ(config->lblLastScan->text(), QStringLiteral("Last Scan: 03/07/2025"));
        const char* expected[] = {row.nextScan, row.option1, row.option2, row.option3};
        const QLabel* shown[] = {config->lblNextScan, config->lblOption[1], config->lblOption[2],
                                 config->lblOption[3]};
        for (int k = 0; k < 4; ++k)
            if (expected[k]) {
                EXPECT_EQ(shown[k]->text(), QLatin1String(expected[k])) << k;
            }
        // The row's own images are the ones shown, where the list box stands.
        for (int other = 1; other <= Rows(); ++other)
            EXPECT_EQ(config->lstImages[static_cast<std::size_t>(other)]->isHidden(), other != n);
        EXPECT_EQ(config->lstImages[static_cast<std::size_t>(n)]->geometry(),
                  config->lstImages[0]->geometry());
    }
    EXPECT_FALSE(config->lblLocation->isHidden());
    EXPECT_FALSE(config->imgButton[2]->isHidden());
    EXPECT_FALSE(config->imgSetPageOpen[21]->isHidden());

    // An option that reaches a column as it is, is shown raw; "none" as a blank.
    config->lvwFolderList->topLevelItem(3)->setText(7, QStringLiteral("STRANGE==1"));
    config->lvwFolderList->topLevelItem(3)->setText(8, QStringLiteral("none==none"));
    config->ShowFileDetails(4);
    EXPECT_EQ(config->lblOption[1]->text(), QStringLiteral("STRANGE==1"));
    EXPECT_EQ(config->lblOption[2]->text(), QStringLiteral(" "));

    config->lblLocation->clear();
    config->ShowFileDetails(0);
    config->ShowFileDetails(-3);
    config->ShowFileDetails(Rows() + 1);
    EXPECT_TRUE(config->lblLocation->text().isEmpty());
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

TEST_F(ImageListRows, DeletingARowAsksRemovesItsFileAndClosesTheGap) {
    LoadThree();
    PlaceRemainingList();
    int answer = platform::vbCancel;
    platform::SetMsgBoxAnswerer([&](const platform::MsgBoxCall& call) {
        messages.push_back(call);
        return answer;
    });
    config->lvwFolderList->setCurrentItem(config->lvwFolderList->topLevelItem(1));
    config->lvwFolderList->topLevelItem(1)->setSelected(true);
    config->ShowFileDetails(2);
    // Cancelled: nothing changes.
    config->imgButton_MouseUp(2);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt,
              QStringLiteral("Are you sure you want to delete this entry ?\rBirds"));
    EXPECT_EQ(messages[0].flags, platform::vbOKCancel | platform::vbExclamation);
    EXPECT_EQ(messages[0].title, QStringLiteral("Confirm Delete ..."));
    EXPECT_EQ(Rows(), 3);
    EXPECT_TRUE(QFile::exists(lists + QStringLiteral("/b_1.tvl")));
    EXPECT_EQ(Entries(2).size(), 3);
    EXPECT_FALSE(config->lblLocation->isHidden());
    EXPECT_FALSE(config->cmdNukeRemlist->isHidden());

    answer = platform::vbOK;
    config->imgButton_MouseUp(2);
    ASSERT_EQ(messages.size(), 2u);
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

    // Without a selected row the button asks nothing.
    config->imgButton_MouseUp(2);
    EXPECT_EQ(messages.size(), 2u);

    // The last row goes without touching the others; a list added afterwards starts from an
    // empty element.
    config->DeleteFolderListItem(2);
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(Entries(1).size(), 2);
    EXPECT_FALSE(QFile::exists(lists + QStringLiteral("/c_1.tvl")));
    ASSERT_TRUE(config->AddNewImageFile(
        "New", "Web", "http://x", "0", lists + QStringLiteral("/x_1.tvl"), "22/11/2026", "1",
        Options({{"EXCLUDEGIF", "True"}, {"PAGEIMAGES", "True"}, {"LINKIMAGES", "True"}}), {}));
    EXPECT_TRUE(Entries(2).isEmpty());
    EXPECT_EQ(IconKey(2), QStringLiteral("web"));
}
