#include "TestSupport.h"
#include "lists/ListFiles.h"

#include <QDir>
#include <numeric>

namespace {

class RemainingList : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        lists = install.path() + QStringLiteral("/Imagelists");
        QDir().mkpath(lists);
        pics = install.path() + QStringLiteral("/pics");
        remain = install.path() + QStringLiteral("/remain.lst");
    }

    // Starts a show with the configuration window's order and the lists as they are.
    frmSlideShow* Start(int order = 0) {
        frmConfig::instance()->cmbImageOrder->setCurrentIndex(order);
        ExitShow = false;
        frmSlideShow* show = frmSlideShow::instance();
        show->StartShow();
        return show;
    }
    // One tick after the interval: the prepared frame goes up and the next one is prepared.
    static void NextChange(frmSlideShow* show) {
        platform::AdvanceClock(show->ImageInterval * 1000 + 3000);
        show->MainTimer_Timer();
    }
    static void Stop(frmSlideShow* show) {
        show->StoptheShow();
        frmConfig::instance()->StopShowTimer->fire();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // The configuration window stays for the next show of these tests.
        ASSERT_FALSE(frmSlideShow::isLoaded());
    }

    QString lists, pics, remain;
};

TEST_F(RemainingList, LayoutIsExact) {
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    ASSERT_EQ(show->RemainingListPath[0], remain);
    // An older descriptions file stays when there are no descriptions.
    WriteRaw(install.path() + QStringLiteral("/remain-d.lst"), {QStringLiteral("9||old")});
    WriteRaw(remain, {QStringLiteral("CURRENTIMAGEPATH"), QStringLiteral("/p/kept.jpg")});
    const QByteArray kept = ReadFile(remain);

    show->CurrentImage = QStringLiteral("/p/now.jpg");
    show->CaptionFullName = QStringLiteral("/p/now.jpg");
    show->CaptionSource = QStringLiteral("now.jpg");
    show->CurrentImageTag = 7;
    show->CurrentRandomFolder = QStringLiteral("/p/");
    show->ShowList.add(QStringLiteral("/p/now.jpg"), 7);
    show->ShowList.add(QStringLiteral("/p/next.jpg"), 3);
    show->ShowList.add(QStringLiteral("/p/now.jpg"), 7);
    show->RandomFolderFileList.add(QStringLiteral("/p/folder.jpg"), 4);
    show->ImageList.add(QStringLiteral("web::l_1::http://h/a.jpg::Web || list"), 5);
    show->ImageList.add(QStringLiteral("/q/d.jpg"), 6);
    show->ImageTitles.add(QStringLiteral("A title"), 5);
    // A show stopped before its pool was read keeps the saved pool.
    show->SaveRemainingList();
    EXPECT_EQ(ReadFile(remain), kept);
    show->PoolLoaded = true;
    show->SaveRemainingList();

    EXPECT_EQ(ReadFile(remain), QByteArray("CURRENTIMAGEPATH\r\n"
                                           "/p/now.jpg\r\n"
                                           "/p/now.jpg\r\n"
                                           "now.jpg\r\n"
                                           " 7 \r\n"
                                           "CURRENTRANDOMFOLDER\r\n"
                                           "/p/\r\n"
                                           "REMAININGIMAGES\r\n"
                                           "3||/p/next.jpg\r\n"
                                           "4||/p/folder.jpg\r\n"
                                           "5||web::l_1::http://h/a.jpg::Web || list\r\n"
                                           "6||/q/d.jpg\r\n"));
    EXPECT_EQ(ReadFile(install.path() + QStringLiteral("/remain-t.lst")),
              QByteArray("5||A title\r\n"));
    EXPECT_EQ(ReadFile(install.path() + QStringLiteral("/remain-d.lst")), QByteArray("9||old\r\n"));

    show->CurrentImageTag = -2;
    show->SaveRemainingList();
    EXPECT_TRUE(ReadFile(remain).contains("\r\n-2 \r\n"));
}

// The files are UTF-8 whatever their first bytes: a first line that looks like a UTF-16 mark
// is a line like any other. A line without a key loses its first character, and one that lies
// outside the 16-bit range goes whole.
TEST_F(RemainingList, ReadsBackByPositionWithKeysKept) {
    WriteRaw(remain, {"CURRENTIMAGEPATH", "/p/now.jpg", "  /p/now.jpg ", "now.jpg", " 12 ",
                      "ANY KEY", "/p/", "ANY KEY", "40||/p/a.jpg", "", "  41||/p/b||c.jpg  ",
                      "web-key||web::l_1::http://h/x.jpg::T"});
    PutFile(install.path() + QStringLiteral("/remain-t.lst"),
            "\xFE\xFF\r\n41||Bee\r\n\r\n40||Ay\r\n\xF0\x9F\x98\x80smile\r\n");
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    show->LoadRemainingList(remain);
    EXPECT_EQ(show->CurrentImage, QStringLiteral("/p/now.jpg"));
    EXPECT_EQ(show->CaptionFullName, QStringLiteral("/p/now.jpg"));
    EXPECT_EQ(show->CaptionSource, QStringLiteral("now.jpg"));
    EXPECT_EQ(show->CurrentImageTag, 12);
    EXPECT_EQ(show->CurrentRandomFolder, QStringLiteral("/p/"));
    EXPECT_EQ(Texts(show->ImageList),
              QStringList({"/p/a.jpg", "/p/b||c.jpg", "web::l_1::http://h/x.jpg::T"}));
    EXPECT_EQ(Tags(show->ImageList), QList<int>({40, 41, 0}));
    ASSERT_EQ(show->ImageTitles.count(), 4);
    EXPECT_EQ(Texts(show->ImageTitles).mid(1), QStringList({"Bee", "Ay", "smile"}));
    EXPECT_EQ(Tags(show->ImageTitles).mid(1, 2), QList<int>({41, 40}));
    EXPECT_TRUE(show->ImageDescriptions.isEmpty());
}

// A show stopped at its first image saves the pool, the next show goes on from it, and after the
// reset the one after that starts from the lists again.
TEST_F(RemainingList, AStoppedShowSavesThePoolTheNextGoesOnFromItUntilTheReset) {
    const QStringList paths = MakePictures(pics, {"1.jpg", "2.jpg", "3.jpg", "4.jpg", "5.jpg"});
    ListFileContents contents;
    contents.source = pics + QLatin1Char('/');
    contents.records = ImageRecords(paths);
    WriteListFile(lists + QStringLiteral("/pics_1.tvl"), contents, platform::Today());

    frmSlideShow* show = Start(0);
    EXPECT_FALSE(show->ResumedFromRemainingList);
    EXPECT_EQ(Texts(show->ShowList), QStringList({paths[0]}));
    NextChange(show);
    ASSERT_EQ(show->CurrentImage, paths[0]);
    EXPECT_EQ(show->CaptionFullName, paths[0]);
    EXPECT_EQ(show->CaptionSource, QStringLiteral("1.jpg"));
    EXPECT_EQ(show->CurrentImageTag, 0);
    Stop(show);

    QStringList saved;
    for (int i = 1; i < 5; ++i)
        saved << QStringLiteral("%1||%2").arg(i).arg(paths[i]);
    const QString text = QString::fromUtf8(ReadFile(remain));
    EXPECT_EQ(text, QStringLiteral("CURRENTIMAGEPATH\r\n") + paths[0] + "\r\n" + paths[0] +
                        "\r\n1.jpg\r\n 0 \r\nCURRENTRANDOMFOLDER\r\n\r\nREMAININGIMAGES\r\n" +
                        saved.join("\r\n") + "\r\n");

    // The next show puts the same picture up first and goes on with the rest, then starts over.
    show = Start(0);
    EXPECT_TRUE(show->ResumedFromRemainingList);
    EXPECT_EQ(show->CurrentRandomFolder, QStringLiteral("xxxx"));
    QStringList shown;
    QList<int> keys;
    for (int i = 0; i < 6; ++i) {
        NextChange(show);
        shown << show->CurrentImage;
        keys << show->CurrentImageTag;
        EXPECT_EQ(show->ShowList.count(), show->CaptionsList.count());
    }
    EXPECT_EQ(shown, QStringList(paths) << paths[0]);
    EXPECT_EQ(keys, QList<int>({0, 1, 2, 3, 4, 0}));
    Stop(show);
    ASSERT_TRUE(QFile::exists(remain));

    frmConfig::instance()->NukeRemList();
    EXPECT_FALSE(QFile::exists(remain));
    show = Start(0);
    EXPECT_FALSE(show->ResumedFromRemainingList);
    NextChange(show);
    EXPECT_EQ(show->CurrentImage, paths[0]);
    EXPECT_EQ(Texts(show->ImageList), paths.mid(2));
}

TEST_F(RemainingList, AVanishedCurrentImageIsNotQueuedAgain) {
    const QStringList paths = MakePictures(pics, {"1.jpg", "2.jpg"});
    WriteRaw(remain, {"CURRENTIMAGEPATH", pics + "/gone.jpg", pics + "/gone.jpg", "gone.jpg", " 9 ",
                      "CURRENTRANDOMFOLDER", pics + "/", "REMAININGIMAGES", "0||" + paths[0],
                      "1||" + paths[1]});
    frmSlideShow* show = Start(2);
    // The folder still exists, so the folder order goes on in it.
    EXPECT_EQ(show->CurrentRandomFolder, pics + "/");
    NextChange(show);
    EXPECT_EQ(show->CurrentImage, paths[0]);
    NextChange(show);
    EXPECT_EQ(show->CurrentImage, paths[1]);
}

TEST_F(RemainingList, APoolPastSixteenBitCountsIsStartedSavedAndTakenUpWhole) {
    // More than a 16-bit count or key could hold. Only the first photo needs to exist: the
    // show in list order draws it and no other before it stops.
    constexpr int kImages = 70000;
    const QStringList first = MakePictures(pics, {"first.jpg"});
    ListFileContents contents;
    contents.source = pics + QLatin1Char('/');
    contents.records = ImageRecords(first);
    for (int i = 1; i < kImages; ++i)
        contents.records
            << QStringLiteral("IMAGE>%1/album%2/IMG_%3.jpg").arg(pics).arg(i / 2500).arg(i);
    WriteListFile(lists + QStringLiteral("/pics_1.tvl"), contents, platform::Today());

    frmSlideShow* show = Start(0);
    ASSERT_TRUE(show->MainTimer->Enabled());
    EXPECT_EQ(Texts(show->ShowList), first);
    ASSERT_EQ(show->ImageList.count(), kImages - 1);
    EXPECT_EQ(show->ImageList.tag(kImages - 2), kImages - 1);
    Stop(show);

    show = Start(0);
    EXPECT_TRUE(show->ResumedFromRemainingList);
    QList<int> keys(kImages);
    std::iota(keys.begin(), keys.end(), 0);
    // The first photo is drawn again, and every other one waits with its key.
    EXPECT_EQ(Texts(show->ShowList), first);
    EXPECT_EQ(Tags(show->ShowList) + Tags(show->ImageList), keys);
    EXPECT_EQ(show->ImageList.text(kImages - 2), contents.records.last().mid(6));
}

} // namespace
