#include "lists/ImageListFile.h"
#include "lists/ListFiles.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>

using lists::ImageListRow;
using lists::LoadedImageList;

namespace {

// Dates in list files follow the locale, so every test here runs under one fixed locale.
class ImageListFile : public ::testing::Test {
protected:
    void SetUp() override {
        saved = QLocale();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        ASSERT_TRUE(dir.isValid());
    }
    void TearDown() override { QLocale::setDefault(saved); }

    static ImageListRow LocalRow() {
        return {"Holidays",
                "2",
                "/home/ann/Pictures/Holidays/",
                "Local",
                "/opt/tv/Imagelists/Holidays_1.tvl",
                "03/07/2025",
                "7",
                {"RECURSE==True", "none==none", "none==none", "none==none", "none==none"}};
    }
    QString Path(const QString& name) const { return dir.filePath(name); }

    QLocale saved;
    QTemporaryDir dir;
};

// The row's values in the order of the list view's columns, options last, so that a whole
// header is compared at once.
QStringList Fields(const ImageListRow& row) {
    QStringList fields{row.title,    row.count,    row.path,        row.type,
                       row.fileName, row.lastScan, row.scanInterval};
    for (const QString& option : row.options)
        fields << option;
    return fields;
}

const QStringList kFlickrRecords = {"IMAGE>https://live.example.org/1/a_b.jpg",
                                    "TITLE>Sunrise, with fog",
                                    "DESCR>Taken from the ridge",
                                    "IMAGE>https://live.example.org/2/c_d.jpg",
                                    "TITLE>Harbour",
                                    "DESCR>"};

} // namespace

TEST_F(ImageListFile, WritesTheHeaderLineByLineWithCrLfAndNoByteOrderMark) {
    const QStringList images = {"IMAGE>/home/ann/Pictures/Holidays/a.jpg",
                                "IMAGE>/home/ann/Pictures/Holidays/b.jpg"};
    const QStringList lines = lists::ImageListLines(LocalRow(), images);
    // clang-format off
    const QStringList expected = {
        "Imagelist for Ferrin's Tessaview", "------------------------------",
        "TITLE", "Holidays", "PATH", "/home/ann/Pictures/Holidays/",
        "COUNT,2", "LOCALORWEB,Local", "LASTSCAN,03/07/2025", "SCANINTERVAL,7",
        "OPTION,RECURSE==True", "OPTION,none==none", "OPTION,none==none", "OPTION,none==none",
        "OPTION,none==none",
        "IMAGES", images[0], images[1]};
    // clang-format on
    EXPECT_EQ(lines, expected);

    const QString file = Path(QStringLiteral("Holidays_1.tvl"));
    ASSERT_TRUE(lists::WriteTextLines(file, lines));
    EXPECT_EQ(ReadFile(file), expected.join(QStringLiteral("\r\n")).toUtf8() + "\r\n");
    // Written whole: no temporary file is left beside it.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"Holidays_1.tvl"});

    QStringList back;
    ASSERT_TRUE(lists::ReadTextLines(file, back));
    EXPECT_EQ(back, expected);
}

TEST_F(ImageListFile, ReadsBackWhatItWroteWithUnusedSlotsEmptyAndWritesThemAsBareOptions) {
    const QStringList images = {QStringLiteral("IMAGE>/p/a.jpg")};
    const LoadedImageList loaded = lists::ParseImageList(lists::ImageListLines(LocalRow(), images),
                                                         QStringLiteral("/lists/h.tvl"));
    EXPECT_FALSE(loaded.failed);
    EXPECT_TRUE(loaded.sawImagesMarker);
    EXPECT_EQ(Fields(loaded.row),
              QStringList({"Holidays", "2", "/home/ann/Pictures/Holidays/", "Local", "/lists/h.tvl",
                           "03/07/2025", "7", "RECURSE==True", "", "", "", ""}));
    EXPECT_EQ(loaded.images, images);

    const QStringList again = lists::ImageListLines(loaded.row, loaded.images);
    EXPECT_EQ(again.mid(10, 5),
              (QStringList{"OPTION,RECURSE==True", "OPTION,", "OPTION,", "OPTION,", "OPTION,"}));
    // The bare form reads exactly as "none==none" did.
    const LoadedImageList twice = lists::ParseImageList(again, loaded.row.fileName);
    EXPECT_EQ(twice.row.options, loaded.row.options);
    // The count is of photographs, not of lines.
    EXPECT_EQ(lists::CountImageRecords(kFlickrRecords), 2);
    EXPECT_EQ(lists::CountImageRecords({"IMAGEX", "IMAG", "image>a", " IMAGE>a", "TITLE>IMAGE>"}),
              2);
}

// A title and a path stand on lines of their own, so that their commas survive; other values are
// cut at a comma.
TEST_F(ImageListFile, TheConfigurationReaderTakesKeysInAnyOrderAndIgnoresWhatItDoesNotKnow) {
    const LoadedImageList loaded = lists::ParseImageList(
        {"banner, never read: TITLE", "SCANINTERVAL, 30 ", "  OPTION,USER_NSID==123@N00  ",
         "OPTION,PERPAGE==50", "WEBSITE,http://example.org", "LOCALORWEB,Flickr-User-Public",
         "PATH", "  /srv/a, b/  ", "LASTSCAN,01/02/2026,extra", "COUNT,1", "OPTION,SOMETHINGNEW==1",
         "TITLE", " Friends, family ", "OPTION,LINKIMAGES==False", "IMAGES",
         "  IMAGE>https://x.example/1.jpg  ", "TITLE>One"},
        QStringLiteral("f.tvl"));
    EXPECT_FALSE(loaded.failed);
    EXPECT_EQ(Fields(loaded.row),
              QStringList({"Friends, family", "1", "/srv/a, b/", "Flickr-User-Public", "f.tvl",
                           "01/02/2026", "30", "PERPAGE==50", "USER_NSID==123@N00",
                           "LINKIMAGES==False", "", ""}));
    EXPECT_EQ(loaded.images, (QStringList{"IMAGE>https://x.example/1.jpg", "TITLE>One"}));
}

// An option's value is cut at a comma and trimmed, so that a stray carriage return does not
// survive a write.
TEST_F(ImageListFile, OptionsGoToTheSlotTheirNameBelongsTo) {
    const struct {
        const char* line;
        int slot;
        const char* value = nullptr; // null: the line after "OPTION,"
    } cases[] = {
        // clang-format off
        {"OPTION,RECURSE==False", 0}, {"OPTION,EXCLUDEGIF==True", 0}, {"OPTION,PERPAGE==100", 0},
        {"OPTION,PAGEIMAGES==True", 1}, {"OPTION,GROUP_NSID==99@N01", 1},
        {"OPTION,USER_NSID==1@N00", 1}, {"OPTION,LINKIMAGES==True", 2}, {"OPTION,none==none", -1},
        {"OPTION,", -1}, {"OPTION", -1}, {"OPTION,recurse==True", -1}, {"OPTION,RECURSE", 0},
        {"OPTION,RECURSE==True\r,x", 0, "RECURSE==True"},
        // clang-format on
    };
    for (const auto& c : cases) {
        const LoadedImageList loaded =
            lists::ParseImageList({"banner", QLatin1String(c.line), "IMAGES"}, "x.tvl");
        for (int slot = 0; slot < 5; ++slot) {
            const QString& got = loaded.row.options[static_cast<std::size_t>(slot)];
            if (slot != c.slot)
                EXPECT_TRUE(got.isEmpty()) << c.line << " slot " << slot;
            else
                EXPECT_EQ(got, c.value ? QString::fromLatin1(c.value) : QString(c.line).mid(7))
                    << c.line;
        }
    }
}

// A list without images ends at its marker; one without the marker still loads; one that breaks
// off where a value is due fails with what it has so far.
TEST_F(ImageListFile, ShortFilesLoadWhatTheyHold) {
    const QStringList withMarker = lists::ImageListLines(LocalRow(), {});
    struct Row {
        QStringList lines;
        bool failed, sawMarker;
        const char *title, *count, *path;
    };
    const Row rows[] = {
        {withMarker, false, true, "Holidays", "2", "/home/ann/Pictures/Holidays/"},
        {withMarker.mid(0, 15), false, false, "Holidays", "2", "/home/ann/Pictures/Holidays/"},
        {{"banner", "COUNT,4", "TITLE"}, true, false, "", "4", ""},
        {{"banner", "TITLE", "A", "COUNT", "PATH", "/x/"}, true, false, "A", "", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.lines.join('|').toStdString());
        const LoadedImageList loaded = lists::ParseImageList(row.lines, "e.tvl");
        EXPECT_EQ(loaded.failed, row.failed);
        EXPECT_EQ(loaded.sawImagesMarker, row.sawMarker);
        EXPECT_EQ(loaded.row.title, QLatin1String(row.title));
        EXPECT_EQ(loaded.row.count, QLatin1String(row.count));
        EXPECT_EQ(loaded.row.path, QLatin1String(row.path));
        EXPECT_TRUE(loaded.images.isEmpty());
    }
}

TEST_F(ImageListFile, ATitleReadingImagesLoadsInTheWindowButEndsTheRewrittenHeaderThere) {
    ImageListRow row = LocalRow();
    row.title = QStringLiteral("IMAGES");
    const QStringList file = lists::ImageListLines(row, {"IMAGE>/p/a.jpg"});
    const LoadedImageList loaded = lists::ParseImageList(file, row.fileName);
    EXPECT_EQ(loaded.row.title, QStringLiteral("IMAGES"));
    EXPECT_EQ(loaded.row.path, row.path);
    EXPECT_EQ(loaded.images, QStringList{"IMAGE>/p/a.jpg"});

    const QStringList rewritten =
        lists::ReWrittenImageListLines(file, {"IMAGE>/p/b.jpg"}, QDate(2026, 11, 22));
    EXPECT_EQ(rewritten,
              (QStringList{"Imagelist for Ferrin's Tessaview", "------------------------------",
                           "TITLE", "IMAGES", "IMAGE>/p/b.jpg"}));
}

TEST_F(ImageListFile, RewritingKeepsFortyHeaderLinesRefreshesCountAndDateAndNeedsTheMarker) {
    ImageListRow row = LocalRow();
    row.type = QStringLiteral("Flickr");
    row.title = QStringLiteral("  COUNTRY WALKS");
    row.options[4] = QString();
    QStringList file = lists::ImageListLines(row, {"IMAGE>old"});
    file.insert(2, QStringLiteral("  SOMEKEY,kept  "));
    const QStringList rewritten =
        lists::ReWrittenImageListLines(file, kFlickrRecords, QDate(2026, 11, 22));
    QStringList expected = file.mid(0, 17);
    expected[2] = QStringLiteral("SOMEKEY,kept");
    // Every line counts, so a list of triples shows three times its photographs.
    expected[4] = QStringLiteral("COUNT,6");
    expected[7] = QStringLiteral("COUNT,6");
    expected[9] = QStringLiteral("LASTSCAN,22/11/2026");
    EXPECT_EQ(rewritten, expected + kFlickrRecords);
    EXPECT_EQ(rewritten[15], QStringLiteral("OPTION,"));

    // At most forty header lines are kept.
    QStringList longHeader = {"banner"};
    for (int i = 0; i < 45; ++i)
        longHeader << QStringLiteral("EXTRA,%1").arg(i);
    longHeader << "IMAGES";
    const QStringList cut = lists::ReWrittenImageListLines(longHeader, {"IMAGE>a"}, QDate());
    EXPECT_EQ(cut.size(), 41);
    EXPECT_EQ(cut[39], QStringLiteral("EXTRA,38"));
    EXPECT_EQ(cut[40], QStringLiteral("IMAGE>a"));

    // A file without the marker is left alone. Whole files rewritten are the pool's due-rescan
    // test's business.
    const QStringList broken = lists::ImageListLines(LocalRow(), {}).mid(0, 15);
    const QString bad = Path(QStringLiteral("bad.tvl"));
    WriteRaw(bad, broken);
    const QByteArray before = ReadFile(bad);
    EXPECT_FALSE(lists::ReWriteImageList(bad, {"IMAGE>/p/new.jpg"}));
    EXPECT_EQ(ReadFile(bad), before);
    EXPECT_FALSE(lists::ReWriteImageList(Path(QStringLiteral("missing.tvl")), {}));
}

TEST_F(ImageListFile, ReadsLfOnlyFilesAndKeepsBlankRecordsInsideTheList) {
    const QString file = Path(QStringLiteral("lf.tvl"));
    PutFile(file, "banner\nTITLE\nLF\nIMAGES\nIMAGE>a\n\nIMAGE>b\n");
    QStringList lines;
    ASSERT_TRUE(lists::ReadTextLines(file, lines));
    const LoadedImageList loaded = lists::ParseImageList(lines, file);
    EXPECT_EQ(loaded.row.title, QStringLiteral("LF"));
    EXPECT_EQ(loaded.images, (QStringList{"IMAGE>a", "", "IMAGE>b"}));
}

// Reading knows Local and Web and takes anything else for Flickr; creating knows Local and
// whatever starts with Flickr, and takes anything else for the web.
TEST_F(ImageListFile, IconKeysDifferBetweenReadingAndCreatingAndWebNamesAreCleaned) {
    for (auto [type, loaded, created] : {std::tuple{"Local", "folder", "folder"},
                                         {"Web", "web", "web"},
                                         {"Flickr", "flickr", "flickr"},
                                         {"Flickr-Group-Public", "flickr", "flickr"},
                                         {"RSS", "flickr", "web"},
                                         {"local", "flickr", "web"}}) {
        EXPECT_EQ(lists::IconKeyForLoadedType(type), QLatin1String(loaded)) << type;
        EXPECT_EQ(lists::IconKeyForNewType(type), QLatin1String(created)) << type;
    }
    // The source cleaned of what a file name cannot hold, cut to ten characters.
    for (auto [source, name] : {std::pair{"http://www.Example.com/photos/", "wwwexample"},
                                {"FTP://a.b/~me/%20#x$y*z@w", "abme20xyzw"},
                                {"https://a.b/c?d", "https:abc?"},
                                {"Flickr-Interestingness", "flickr-int"},
                                {"a\\b.c", "abc"}})
        EXPECT_EQ(lists::WebListBaseName(source), QLatin1String(name)) << source;
}

TEST_F(ImageListFile, AFreeNameSkipsFilesOnDiskAndNamesTheTableHolds) {
    PutFile(Path(QStringLiteral("Imagelists/wwwexample_1.tvl")), "x\r\n");
    QString listName;
    EXPECT_EQ(lists::FreeImageListFileName(dir.path(), "wwwexample", nullptr, &listName),
              dir.path() + QStringLiteral("/Imagelists/wwwexample_2.tvl"));
    EXPECT_EQ(listName, QStringLiteral("wwwexample_2"));
    const QString second = dir.path() + QStringLiteral("/Imagelists/wwwexample_2.tvl");
    EXPECT_EQ(lists::FreeImageListFileName(dir.path(), "wwwexample",
                                           [&](const QString& f) { return f == second; }),
              dir.path() + QStringLiteral("/Imagelists/wwwexample_3.tvl"));
}

TEST(DemoImageLists, TheDemoListWrittenForAnyCheckoutReadsWithItsCountMatchingItsRecords) {
    // The demo's list is written by its script where the checkout lives; write one into a
    // folder of our own from the demo's pictures and read it back.
    QTemporaryDir install;
    ASSERT_TRUE(install.isValid());
    const QString source = QStringLiteral(TESSAVIEW_SOURCE_DIR);
    ASSERT_TRUE(QDir(install.path()).mkpath(QStringLiteral("Pictures")));
    const QStringList pictures =
        QDir(source + QStringLiteral("/demo/Pictures")).entryList(QDir::Files);
    ASSERT_FALSE(pictures.isEmpty());
    for (const QString& p : pictures)
        ASSERT_TRUE(QFile::copy(source + QStringLiteral("/demo/Pictures/") + p,
                                install.filePath(QStringLiteral("Pictures/") + p)));
    QProcess script;
    script.start(QStringLiteral("bash"),
                 {source + QStringLiteral("/scripts/make_demo_list.sh"), install.path()});
    ASSERT_TRUE(script.waitForFinished(30000));
    ASSERT_EQ(script.exitCode(), 0);

    QStringList lines;
    const QString name = QStringLiteral("Pictures_1.tvl");
    ASSERT_TRUE(
        lists::ReadTextLines(install.filePath(QStringLiteral("Imagelists/")) + name, lines));
    const LoadedImageList loaded = lists::ParseImageList(lines, name);
    EXPECT_FALSE(loaded.failed);
    EXPECT_TRUE(loaded.sawImagesMarker);
    EXPECT_EQ(loaded.row.title, QStringLiteral("Demo pictures"));
    EXPECT_EQ(loaded.row.count.toInt(), lists::CountImageRecords(loaded.images));
    EXPECT_EQ(loaded.images.size(), pictures.size());
    for (const QString& record : loaded.images)
        EXPECT_TRUE(QFile::exists(record.mid(6))) << qPrintable(record);
}
