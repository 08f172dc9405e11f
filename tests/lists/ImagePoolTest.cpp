#include "TestSupport.h"
#include "lists/ImageEntry.h"
#include "lists/ImageListFile.h"
#include "lists/ListFiles.h"

#include <QDir>

namespace {

// Web entries are read by splitting on double colons: a "::" inside the URL cuts it there, and
// the title becomes what follows.
TEST(ImageEntryForms, WebInternalAndLocalEntriesAndTheirFolderKeys) {
    const QString entry =
        MakeWebEntry(QStringLiteral("flickr-int_1"), QStringLiteral("http://farm1.example/a.jpg"),
                     QStringLiteral("Interesting"));
    EXPECT_EQ(entry, QStringLiteral("web::flickr-int_1::http://farm1.example/a.jpg::Interesting"));
    EXPECT_TRUE(IsWebEntry(entry));
    EXPECT_EQ(GetURLfromEntry(entry), QStringLiteral("http://farm1.example/a.jpg"));
    EXPECT_EQ(GetTitleFromEntry(entry), QStringLiteral("Interesting"));
    const QString broken = QStringLiteral("web::x_1::http://h/a::b.jpg::T");
    EXPECT_EQ(GetURLfromEntry(broken), QStringLiteral("http://h/a"));
    EXPECT_EQ(GetTitleFromEntry(broken), QStringLiteral("b.jpg"));
    EXPECT_EQ(GetTitleFromEntry(QStringLiteral("web::x_1::http://h/a.jpg")), QString());

    EXPECT_TRUE(IsInternalEntry(QStringLiteral("INTERNAL:0")));
    EXPECT_FALSE(IsInternalEntry(QStringLiteral("/pics/INTERNAL.jpg")));
    EXPECT_FALSE(IsWebEntry(QStringLiteral("/pics/web::a.jpg")));
    for (auto [path, key] : {std::pair{"/pics/2006/a.jpg", "/pics/2006/"},
                             {"C:\\pics\\a.jpg", "C:\\pics\\"},
                             {"a.jpg", "a.jpg"},
                             {"web::list_1::http://h/p/a.jpg::Title", "web::list_1::"}})
        EXPECT_EQ(FolderKeyOf(QString::fromLatin1(path)), QLatin1String(key)) << path;
}

TEST(ListDates, WrittenDatesReadBackToTheSameDay) {
    const QDate day(2026, 3, 4);
    EXPECT_EQ(ReadListFileDate(ListFileDateText(day)), day);
    EXPECT_TRUE(ListFileDateText(day).contains(QStringLiteral("2026")));
    EXPECT_EQ(ReadListFileDate(QStringLiteral("2026-03-04")), day);
    EXPECT_EQ(ReadListFileDate(QStringLiteral("not a date")), QDate(1899, 12, 30));
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    EXPECT_EQ(ListFileDateText(QDate(2026, 2, 1)), QStringLiteral("01/02/2026"));
    EXPECT_EQ(ReadListFileDate(QStringLiteral(" 01/02/2026 ")), QDate(2026, 2, 1));
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(ReadListFileDate(ListFileDateText(day)), day);
    QLocale::setDefault(before);
}

class ImagePool : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        show = frmSlideShow::instance();
        show->OpenDebugLog();
        lists = install.path() + QStringLiteral("/Imagelists");
        QDir().mkpath(lists);
        pics = install.path() + QStringLiteral("/pics");
    }
    QDate Today() const { return platform::Today(); }
    frmSlideShow* show = nullptr;
    QString lists;
    QString pics;
};

TEST_F(ImagePool, ListsLoadInNameOrderWithKeysTitlesAndWebEntries) {
    const QStringList local = MakePictures(pics, {"a.jpg", "b.jpg"});
    ListFileContents folder;
    folder.source = pics + QLatin1Char('/');
    folder.records = ImageRecords(local);
    WriteListFile(lists + QStringLiteral("/b_folder_1.tvl"), folder, Today());

    ListFileContents flickr;
    flickr.title = QStringLiteral("Group, with commas");
    flickr.source = QStringLiteral("Flickr-Group-Public");
    flickr.type = QStringLiteral("Flickr");
    flickr.records = {QStringLiteral("IMAGE>http://farm.example/1.jpg"),
                      QStringLiteral("TITLE>First"),
                      QStringLiteral("DESCR>says &amp;quot;hi&quot;"),
                      QStringLiteral("IMAGE>http://farm.example/2.jpg"),
                      QStringLiteral("TITLE>Second"),
                      QStringLiteral("DESCR>plain"),
                      QStringLiteral("something else entirely")};
    WriteListFile(lists + QStringLiteral("/a_flickr-gro_1.tvl"), flickr, Today());

    show->LoadFullImageList();
    EXPECT_EQ(Texts(show->lstImageLists),
              QStringList({lists + QStringLiteral("/a_flickr-gro_1.tvl"),
                           lists + QStringLiteral("/b_folder_1.tvl")}));
    EXPECT_EQ(Texts(show->ImageList),
              QStringList({QStringLiteral("web::a_flickr-gro_1::http://farm.example/1.jpg::Group, "
                                          "with commas"),
                           QStringLiteral("web::a_flickr-gro_1::http://farm.example/2.jpg::Group, "
                                          "with commas"),
                           local[0], local[1]}));
    EXPECT_EQ(Tags(show->ImageList), QList<int>({0, 1, 2, 3}));
    EXPECT_EQ(Texts(show->ImageTitles), QStringList({"First", "Second"}));
    EXPECT_EQ(Tags(show->ImageTitles), QList<int>({0, 1}));
    EXPECT_EQ(Tags(show->ImageDescriptions), QList<int>({0, 1}));

    QString text;
    bool found = false;
    frmSlideShow::ExtraInfo(0, show->ImageDescriptions, text, found);
    EXPECT_TRUE(found);
    EXPECT_EQ(text, QStringLiteral("says \"hi\""));
    frmSlideShow::ExtraInfo(5, show->ImageTitles, text, found);
    EXPECT_FALSE(found);
    EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(LogCount(show, QStringLiteral("              ( 2 images added )")), 2);
    EXPECT_EQ(LogCount(show, QStringLiteral("      TIME TO RESCAN ")), 0);

    // A rebuild starts the keys afresh.
    show->ImageList.remove(0);
    show->LoadFullImageList();
    EXPECT_EQ(Tags(show->ImageList), QList<int>({0, 1, 2, 3}));
}

TEST_F(ImagePool, AListWithoutTheImagesLineEndsItsReadAndTheNextListStillLoads) {
    ListFileContents broken;
    broken.records = ImageRecords(MakePictures(pics, {"lost.jpg"}));
    broken.withImagesLine = false;
    WriteListFile(lists + QStringLiteral("/a_broken.tvl"), broken, Today());
    ListFileContents good;
    const QStringList kept = MakePictures(pics, {"kept.jpg"});
    good.records = ImageRecords(kept);
    WriteListFile(lists + QStringLiteral("/b_good.tvl"), good, Today());

    show->LoadFullImageList();
    EXPECT_EQ(Texts(show->ImageList), kept);
    EXPECT_EQ(LogCount(show, QStringLiteral("              no IMAGES line - the list is not read")),
              1);
}

TEST_F(ImagePool, ListFilesAreReadAsUtf8WithCarriageReturnsInsideALineKept) {
    const QString picture = MakePictures(pics, {"a.jpg"}).first();
    const struct {
        QByteArray front; // bytes before the banner
        QString record;
        int images;
    } rows[] = {
        // The bytes of a UTF-16 mark do not make the file UTF-16.
        {QByteArray("\xFE\xFF"), QStringLiteral("IMAGE>") + picture, 1},
        // A carriage return inside a line is part of it, as the settings window reads it.
        {QByteArray(), QStringLiteral("IMAGE\r>") + picture, 0},
    };
    const QString file = lists + QStringLiteral("/odd_1.tvl");
    for (const auto& row : rows) {
        ListFileContents contents;
        contents.records = {row.record};
        WriteListFile(file, contents, Today());
        PutFile(file, row.front + ReadFile(file));
        show->LoadFullImageList();
        EXPECT_EQ(show->ImageList.count(), row.images) << row.record.toStdString();
    }
}

TEST_F(ImagePool, AListTitledImagesStopsTheHeaderAtItsTitle) {
    ListFileContents contents;
    contents.title = QStringLiteral("IMAGES");
    contents.source = pics + QLatin1Char('/');
    const QStringList paths = MakePictures(pics, {"a.jpg"});
    contents.records = ImageRecords(paths);
    WriteListFile(lists + QStringLiteral("/odd.tvl"), contents, Today());
    show->LoadFullImageList();
    // The header lines after the title are read as records and dropped. The type was never
    // read, so the images come as web entries, and the unread scan date makes the list due.
    EXPECT_EQ(Texts(show->ImageList),
              QStringList({QStringLiteral("web::odd::") + paths[0] + QStringLiteral("::IMAGES")}));
    EXPECT_EQ(LogCount(show, QStringLiteral("              path is ") + contents.source), 0);
    EXPECT_EQ(LogCount(show, QStringLiteral("      TIME TO RESCAN ")), 1);
}

TEST_F(ImagePool, AnAbortedWebRescanLeavesTheFilesImagesAndSkipsTwoPasses) {
    ListFileContents web;
    web.type = QStringLiteral("Web");
    web.source = QStringLiteral("http://pages.example/gallery.html");
    web.lastScan = ListFileDateText(Today().addDays(-7));
    web.interval = QStringLiteral("7");
    web.options = {QStringLiteral("EXCLUDEGIF==True"), QStringLiteral("PAGEIMAGES==True"),
                   QStringLiteral("LINKIMAGES==False"), QStringLiteral("none==none"),
                   QStringLiteral("none==none")};
    web.records = {QStringLiteral("IMAGE>http://pages.example/1.jpg"),
                   QStringLiteral("IMAGE>http://pages.example/2.jpg")};
    WriteListFile(lists + QStringLiteral("/pagesexamp_1.tvl"), web, Today());

    show->LoadFullImageList();
    EXPECT_EQ(LogCount(show, QStringLiteral("      TIME TO RESCAN ")), 1);
    EXPECT_EQ(LogCount(show, QStringLiteral("Scan aborted / no web connection")), 1);
    EXPECT_EQ(show->ScanSkip[0], 2);
    EXPECT_EQ(Texts(show->ImageList),
              QStringList({"web::pagesexamp_1::http://pages.example/1.jpg::Holiday",
                           "web::pagesexamp_1::http://pages.example/2.jpg::Holiday"}));

    // Two passes leave it alone although it is due; the third tries again.
    show->LoadFullImageList();
    show->LoadFullImageList();
    EXPECT_EQ(LogCount(show, QStringLiteral("      TIME TO RESCAN ")), 1);
    EXPECT_EQ(show->ImageList.count(), 2);
    show->LoadFullImageList();
    EXPECT_EQ(LogCount(show, QStringLiteral("      TIME TO RESCAN ")), 2);
    EXPECT_EQ(show->ImageList.count(), 2);
}

TEST_F(ImagePool, ADueFolderListIsRescannedOrWhileItsFolderIsGoneRestsAPass) {
    const QString folder = pics + QStringLiteral("/away");
    ListFileContents contents;
    contents.source = folder + QLatin1Char('/');
    contents.lastScan = ListFileDateText(Today().addDays(-1));
    contents.interval = QStringLiteral("1");
    contents.options[0] = QStringLiteral("RECURSE==True");
    const QStringList paths = MakePictures(pics, {"a.jpg", "b.jpg"});
    contents.records = ImageRecords(paths);
    const QString file = lists + QStringLiteral("/pics_1.tvl");
    WriteListFile(file, contents, Today());
    QStringList before;
    ASSERT_TRUE(lists::ReadTextLines(file, before));

    // The file was let go for the scan: this pass gives nothing from it, and leaves it alone.
    show->LoadFullImageList();
    EXPECT_EQ(LogCount(show, QStringLiteral("Scan aborted ")), 1);
    EXPECT_EQ(show->ScanSkip[0], 1);
    EXPECT_EQ(show->ImageList.count(), 0);
    QStringList lines;
    ASSERT_TRUE(lists::ReadTextLines(file, lines));
    EXPECT_EQ(lines, before);

    // The next pass leaves the scan out and reads the file again.
    show->LoadFullImageList();
    EXPECT_EQ(LogCount(show, QStringLiteral("      TIME TO RESCAN ")), 1);
    EXPECT_EQ(show->ScanSkip[0], 0);
    EXPECT_EQ(Texts(show->ImageList), paths);

    // With the folder back, the one after scans it and rewrites the file.
    MakePictures(folder, {"a.jpg"});
    MakePictures(folder + QStringLiteral("/sub"), {"c.PNG"});
    MakePictures(folder, {"b.JPEG"});
    show->LoadFullImageList();
    const QStringList expected{folder + "/a.jpg", folder + "/b.JPEG", folder + "/sub/c.PNG"};
    EXPECT_EQ(Texts(show->ImageList), expected);
    ASSERT_TRUE(lists::ReadTextLines(file, lines));
    EXPECT_EQ(lines.mid(lines.indexOf(QStringLiteral("IMAGES")) + 1), ImageRecords(expected));
    EXPECT_TRUE(lines.contains(QStringLiteral("COUNT,3")));
    EXPECT_TRUE(lines.contains(QStringLiteral("LASTSCAN,") + ListFileDateText(Today())));
    EXPECT_EQ(show->ScanSkip[0], 0);
}

TEST_F(ImagePool, TheThousandDayRuleAndTheDueDate) {
    auto due = [&](const QString& lastScan, const QString& interval) {
        QDir(lists).removeRecursively();
        QDir().mkpath(lists);
        ListFileContents contents;
        contents.type = QStringLiteral("Web");
        contents.lastScan = lastScan;
        contents.interval = interval;
        contents.records = {QStringLiteral("IMAGE>http://h/1.jpg")};
        WriteListFile(lists + QStringLiteral("/l.tvl"), contents, Today());
        show->ScanSkip.fill(0);
        show->lstDebug->clear();
        show->LoadFullImageList();
        EXPECT_EQ(show->ImageList.count(), 1);
        return LogCount(show, QStringLiteral("      TIME TO RESCAN ")) == 1;
    };
    const QString longAgo = ListFileDateText(Today().addDays(-1000));
    EXPECT_TRUE(due(longAgo, QStringLiteral("1000")));
    EXPECT_EQ(LogCount(show, QStringLiteral("              Rescan is disabled")), 0);
    EXPECT_FALSE(due(ListFileDateText(Today().addDays(-5000)), QStringLiteral("1001")));
    EXPECT_EQ(LogCount(show, QStringLiteral("              Rescan is disabled")), 1);
    EXPECT_FALSE(due(ListFileDateText(Today().addDays(-5000)), QStringLiteral("4000")));
    // Due from the very day the next scan falls on, not before.
    EXPECT_TRUE(due(ListFileDateText(Today().addDays(-7)), QStringLiteral("7")));
    EXPECT_FALSE(due(ListFileDateText(Today().addDays(-6)), QStringLiteral("7")));
    // An unreadable date is the zero date: due at once.
    EXPECT_TRUE(due(QStringLiteral("someday"), QStringLiteral("30")));
}

TEST_F(ImagePool, NoImagelistsFolderLeavesThePoolEmpty) {
    QDir(lists).removeRecursively();
    show->ImageList.add(QStringLiteral("/old.jpg"));
    show->LoadFullImageList();
    EXPECT_TRUE(show->ImageList.isEmpty());
    EXPECT_EQ(LogCount(show, QStringLiteral("** no can find the Imagelists folder ** ")), 1);
}

TEST_F(ImagePool, HtmlIsStrippedFromDescriptions) {
    QString text = QStringLiteral("a &lt;b&gt;bold&lt;/b&gt; word");
    show->RemoveHTMLFromFlickr(text);
    EXPECT_EQ(text, QStringLiteral("a bold word"));
    QString open = QStringLiteral("left &lt;unclosed");
    show->RemoveHTMLFromFlickr(open);
    EXPECT_EQ(open, QStringLiteral("left &lt;unclosed"));
}

TEST_F(ImagePool, AtLeastOneValidFileLooksForAnExistingFile) {
    bool result = true;
    show->ImageList.add(QStringLiteral("web::x_1::http://h/a.jpg::T"));
    show->ImageList.add(install.path() + QStringLiteral("/missing.jpg"));
    show->AtLeastOneValidFileInImageList(result);
    EXPECT_FALSE(result);
    show->ImageList.add(MakePictures(pics, {"here.jpg"}).first());
    show->AtLeastOneValidFileInImageList(result);
    EXPECT_TRUE(result);
}

} // namespace
