#include "TestSupport.h"
#include "lists/ListFiles.h"

#include <QDir>

namespace {

class ImageSelection : public ShowFixture {
protected:
    void SetUp() override {
        ShowFixture::SetUp();
        show->OpenDebugLog();
        show->CurrentRandomFolder.clear();
        lists = install.path() + QStringLiteral("/Imagelists");
        QDir().mkpath(lists);
        root = install.path() + QStringLiteral("/pics");
    }
    // Pictures on disk, put into the pool in the given order with keys 0 up.
    QStringList Pool(const QStringList& relative) {
        QStringList paths;
        for (const QString& r : relative) {
            const int cut = static_cast<int>(r.lastIndexOf('/'));
            paths << MakePictures(root + QLatin1Char('/') + r.left(cut), {r.mid(cut + 1)}).first();
        }
        for (const QString& p : paths)
            show->ImageList.add(p, show->ImageList.count());
        return paths;
    }
    // Draws one image at a time and takes it off the queue, as a shown frame does.
    QStringList Draw(int times, bool randomImages, bool randomFolders) {
        QStringList out;
        for (int i = 0; i < times; ++i) {
            show->ChooseNextImage(1, randomImages, randomFolders, false);
            EXPECT_EQ(show->ShowList.count(), 1);
            EXPECT_EQ(show->CaptionsList.count(), 1);
            out << show->ShowList.text(0);
            show->ShowList.remove(0);
            show->CaptionsList.remove(0);
        }
        return out;
    }
    void WriteList(const QString& name, const QStringList& paths) {
        ListFileContents contents;
        contents.source = root + QLatin1Char('/');
        contents.records = ImageRecords(paths);
        WriteListFile(lists + QLatin1Char('/') + name, contents, platform::Today());
    }

    QString lists, root;
};

TEST_F(ImageSelection, SequentialTakesThePoolInOrderWithCaptions) {
    const QStringList p = Pool({"A/1.jpg", "B/2.jpg", "A/3.jpg"});
    show->ChooseNextImage(1, false, false, false);
    EXPECT_EQ(show->ShowList.text(0), p[0]);
    EXPECT_EQ(show->ShowList.tag(0), 0);
    EXPECT_EQ(show->CaptionsList.text(0), p[0] + QStringLiteral("|1.jpg"));
    show->ChooseNextImage(2, false, false, false);
    EXPECT_EQ(Texts(show->ShowList), p);
    EXPECT_EQ(Tags(show->ShowList), QList<int>({0, 1, 2}));
    EXPECT_EQ(show->CaptionsList.count(), 3);
    EXPECT_EQ(show->CaptionsList.text(2), p[2] + QStringLiteral("|3.jpg"));
    EXPECT_TRUE(show->ImageList.isEmpty());
}

TEST_F(ImageSelection, RandomOrderDrawsIndexesFromTheFedNumbers) {
    const QStringList p = Pool({"A/1.jpg", "A/2.jpg", "A/3.jpg", "A/4.jpg"});
    platform::FeedRandom({0.5, 0.0, 0.9, 0.99});
    EXPECT_EQ(Draw(4, true, false), QStringList({p[2], p[0], p[3], p[1]}));
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
}

TEST_F(ImageSelection, SequentiallyFromARandomFolderFinishesAFolderBeforeTheNext) {
    const QStringList p = Pool({"A/a1.jpg", "B/b1.jpg", "A/a2.jpg", "B/b2.jpg", "B/b3.jpg"});
    // The first folder is the one of pool item Int(5 * 0.2) = 1, the next of item 0.
    platform::FeedRandom({0.2, 0.0});
    EXPECT_EQ(Draw(5, false, true), QStringList({p[1], p[3], p[4], p[0], p[2]}));
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
    EXPECT_EQ(show->CurrentRandomFolder, root + QStringLiteral("/A/"));
}

TEST_F(ImageSelection, RandomlyFromARandomFolderTakesANewFolderEachTime) {
    const QStringList p = Pool({"A/a1.jpg", "B/b1.jpg", "A/a2.jpg", "B/b2.jpg", "B/b3.jpg"});
    // Folder of item 0 (A), collected backwards as a2, a1: 0.9 picks a1. The rest of A goes
    // back to the end of the pool: b1, b2, b3, a2. Folder of item 0 (B), collected b3, b2, b1:
    // 0.0 picks b3. Pool a2, b2, b1: folder A, and a2.
    platform::FeedRandom({0.0, 0.9, 0.0, 0.0, 0.0, 0.5});
    EXPECT_EQ(Draw(3, true, true), QStringList({p[0], p[4], p[2]}));
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
    EXPECT_EQ(show->RandomFolderFileList.count(), 0);
    EXPECT_EQ(Texts(show->ImageList), QStringList({p[3], p[1]}));
}

TEST_F(ImageSelection, ASingleFolderIsChosenAgainAfterThirtyTries) {
    Pool({"A/1.jpg", "A/2.jpg"});
    show->CurrentRandomFolder = root + QStringLiteral("/A/");
    platform::FeedRandom(std::vector<double>(31, 0.5));
    QString folder;
    show->NewRandomFolder(folder);
    EXPECT_EQ(folder, root + QStringLiteral("/A/"));
    EXPECT_EQ(platform::FedRandomLeft(), 1u);
    EXPECT_EQ(LogCount(show, QStringLiteral("Chose new random folder after 30 tries > ") + folder),
              1);
    // Nothing left the pool.
    EXPECT_EQ(show->ImageList.count(), 2);
}

TEST_F(ImageSelection, FourUpStopsAtExitInAFolderOfThree) {
    const QStringList p = Pool({"A/1.jpg", "A/2.jpg", "A/3.jpg", "B/4.jpg", "B/5.jpg"});
    platform::FeedRandom({0.0, 0.0, 0.0, 0.0});
    show->ChooseNextImage(4, true, true, true);
    EXPECT_EQ(Texts(show->ShowList), QStringList({p[2], p[1], p[0]}));
    EXPECT_EQ(Tags(show->ShowList), QList<int>({2, 1, 0}));
    EXPECT_EQ(show->CaptionsList.count(), 3);
    EXPECT_EQ(Texts(show->ImageList), QStringList({p[3], p[4]}));
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
    EXPECT_EQ(LogCount(show, QStringLiteral("RandomFolderFileList is empty - not adding any more "
                                            "images to ShowList")),
              1);
}

TEST_F(ImageSelection, BackgroundPicturesAndMissingFilesArePassedOver) {
    const QStringList p = Pool({"A/Background-sky.jpg", "A/1.jpg"});
    show->ImageList.insert(0, root + QStringLiteral("/A/missing.jpg"), 9);
    show->ChooseNextImage(1, false, false, false);
    EXPECT_EQ(Texts(show->ShowList), QStringList({p[1]}));
    EXPECT_TRUE(show->ImageList.isEmpty());
    EXPECT_EQ(LogCount(show, QStringLiteral("(doesn't exist)")), 1);
}

TEST_F(ImageSelection, TheWholePoolShownReloadsItFromTheLists) {
    const QStringList p = Pool({"A/only.jpg"});
    show->ImageList.clear();
    WriteList(QStringLiteral("a.tvl"), p);
    show->LoadFullImageList();
    show->CurrentRandomFolder = QStringLiteral("/somewhere/");
    EXPECT_EQ(Draw(1, false, false), p);
    EXPECT_EQ(LogCount(show, QStringLiteral(" Load All Image Lists ")), 1);
    EXPECT_EQ(Draw(1, false, false), p);
    EXPECT_EQ(LogCount(show, QStringLiteral(" Load All Image Lists ")), 2);
    EXPECT_EQ(show->CurrentRandomFolder, QStringLiteral("xxx"));
    EXPECT_FALSE(show->NoValidImages);
}

TEST_F(ImageSelection, NothingValidGivesOneReloadThenTheLogo) {
    WriteList(QStringLiteral("a.tvl"),
              {root + QStringLiteral("/gone1.jpg"), root + QStringLiteral("/gone2.jpg")});
    show->LoadFullImageList();
    ASSERT_EQ(show->ImageList.count(), 2);
    show->ChooseNextImage(1, false, false, false);
    EXPECT_EQ(Texts(show->ShowList), QStringList({"INTERNAL:0"}));
    EXPECT_EQ(Texts(show->CaptionsList), QStringList({" | "}));
    EXPECT_TRUE(show->NoValidImages);
    EXPECT_EQ(LogCount(show, QStringLiteral(" Load All Image Lists ")), 2);
    EXPECT_EQ(LogCount(show, QStringLiteral("(doesn't exist)")), 4);

    // From now on the logo comes without looking again, whatever is asked for.
    show->ShowList.clear();
    show->CaptionsList.clear();
    show->ChooseNextImage(4, true, true, true);
    EXPECT_EQ(Texts(show->ShowList), QStringList({"INTERNAL:0"}));
    EXPECT_EQ(LogCount(show, QStringLiteral(" Load All Image Lists ")), 2);
}

TEST_F(ImageSelection, AnEmptyPoolWithAQueueDoesNotReloadOrHang) {
    Pool({"A/1.jpg"});
    show->ChooseNextImage(1, false, false, false);
    show->ChooseNextImage(1, true, false, false);
    EXPECT_EQ(show->ShowList.count(), 1);
    EXPECT_EQ(LogCount(show, QStringLiteral(" Load All Image Lists ")), 0);
}

TEST_F(ImageSelection, FolderKeysMatchDirectFoldersButTheNewFolderStepTakesSubfolders) {
    const QStringList p = Pool({"A/sub/deep.jpg", "B/1.jpg", "A/top.jpg"});
    bool found = false;
    int index = -1;
    show->GetNextImageFromRandomFolder(show->ImageList, root + QStringLiteral("/A/"), found, index);
    EXPECT_TRUE(found);
    EXPECT_EQ(index, 2);
    show->GetNextImageFromRandomFolder(show->ImageList, QString(), found, index);
    EXPECT_FALSE(found);

    // A folder that has run out: the new folder is the one of item Int(3 * 0.9) = 2, and its
    // first image by substring is the one in the sub-folder.
    show->CurrentRandomFolder = root + QStringLiteral("/C/");
    platform::FeedRandom({0.9});
    QString entry;
    std::int32_t tag = -1;
    show->NextRandomFolderImage(entry, tag);
    EXPECT_EQ(entry, p[0]);
    EXPECT_EQ(tag, 0);
}

TEST_F(ImageSelection, WebEntriesShareTheirSourcesKey) {
    show->ImageList.add(QStringLiteral("web::flickr-int_1::http://f/1.jpg::Interesting"), 0);
    show->ImageList.add(QStringLiteral("/pics/a.jpg"), 1);
    show->ImageList.add(QStringLiteral("WEB::FLICKR-INT_1::http://f/2.jpg::Interesting"), 2);
    TaggedStringList target;
    show->CollectImagesInARandomFolder(show->ImageList, QStringLiteral("web::flickr-int_1::"),
                                       target);
    EXPECT_EQ(Tags(target), QList<int>({2, 0}));
    EXPECT_EQ(Texts(show->ImageList), QStringList({"/pics/a.jpg"}));
}

TEST_F(ImageSelection, AFoldersImagesLeaveThePoolLastFirstAndTheRestKeepTheirOrder) {
    const QStringList p =
        Pool({"A/1.jpg", "B/2.jpg", "A/3.jpg", "A/sub/4.jpg", "B/5.jpg", "A/6.jpg"});
    TaggedStringList target;
    target.add(QStringLiteral("left over"), 99);
    show->CollectImagesInARandomFolder(show->ImageList, root + QStringLiteral("/A/"), target);
    // Only the folder's own images, not its sub-folder's.
    EXPECT_EQ(Texts(target), QStringList({p[5], p[2], p[0]}));
    EXPECT_EQ(Tags(target), QList<int>({5, 2, 0}));
    EXPECT_EQ(Texts(show->ImageList), QStringList({p[1], p[3], p[4]}));
    EXPECT_EQ(Tags(show->ImageList), QList<int>({1, 3, 4}));
}

TEST_F(ImageSelection, DiagnosticsListFoldersAndLists) {
    Pool({"A/1.jpg", "A/2.jpg", "B/3.jpg", "A/4.jpg"});
    show->CollectFolderNamesFromImageList();
    EXPECT_EQ(Texts(show->ImageFolderList), QStringList({root + "/A", root + "/B", root + "/A"}));
    EXPECT_EQ(LogCount(show, QStringLiteral("4 lines to scan")), 1);
    EXPECT_EQ(LogCount(show, QStringLiteral("3 folders")), 1);
    show->ShowList.add(QStringLiteral("/q/queued.jpg"));
    show->ShowImageLists();
    EXPECT_EQ(LogCount(show, QStringLiteral("(showlist) /q/queued.jpg")), 1);
    EXPECT_EQ(LogCount(show, QStringLiteral("(imagelist) ") + root + "/B/3.jpg"), 1);
}

TEST_F(ImageSelection, AShowWalksThePoolInTheOrderOfTheConfigurationWindow) {
    const QStringList p = Pool({"A/1.jpg", "B/2.jpg", "A/3.jpg", "B/4.jpg"});
    show->ImageList.clear();
    WriteList(QStringLiteral("pics_1.tvl"), p);
    frmSlideShow::unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    frmConfig::instance()->cmbImageOrder->setCurrentIndex(2);
    // Layout draw, then the first folder: item Int(4 * 0.3) = 1, folder B.
    platform::FeedRandom({0.0, 0.3});
    frmSlideShow* s = frmSlideShow::instance();
    s->StartShow();
    ASSERT_TRUE(s->RandomFolders);
    ASSERT_FALSE(s->RandomImages);
    QStringList shown;
    for (int i = 0; i < 4; ++i) {
        platform::AdvanceClock(s->ImageInterval * 1000 + 3000);
        platform::FeedRandom({0.0, 0.0});
        s->MainTimer_Timer();
        shown << s->CurrentImage;
    }
    EXPECT_EQ(shown, QStringList({p[1], p[3], p[0], p[2]}));
}

} // namespace

TEST_F(ImageSelection, BlankEntriesAreDroppedInsteadOfDrawnForEver) {
    // Bare record lines give entries without a folder; every order must get past them.
    for (const auto& [randomImages, randomFolders] :
         {std::pair{true, true}, {false, true}, {true, false}, {false, false}}) {
        show->ShowList.clear();
        show->CaptionsList.clear();
        show->NoValidImages = false;
        show->ImageList.clear();
        show->ImageList.add(QString(), 0);
        show->ImageList.add(QStringLiteral("  "), 1);
        show->ChooseNextImage(1, randomImages, randomFolders, false);
        EXPECT_TRUE(show->ImageList.isEmpty());
        ASSERT_EQ(show->ShowList.count(), 1);
        EXPECT_EQ(show->ShowList.text(0), QStringLiteral("INTERNAL:0"));
    }
}
