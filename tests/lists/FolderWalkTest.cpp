#include "lists/FolderWalk.h"
#include "platform/FileListing.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

using lists::WalkImageFolders;

namespace {

// Lists compared as text, so that a failure shows the records.
std::string Lines(const QStringList& list) {
    return list.join('\n').toStdString();
}

// The walk as the plain toolkit way would have it: the file listing and the folder listing of
// each folder, breadth first, each folder (device and inode) once. What ours must give, record
// for record.
QStringList ListingWalk(const QString& folder, bool recurse) {
    QStringList list;
    QStringList queue{folder};
    std::set<std::pair<dev_t, ino_t>> seen;
    while (!queue.isEmpty()) {
        const QString path = lists::ListingPath(queue.takeFirst());
        struct stat st {};
        if (path.isEmpty() || stat(QFile::encodeName(path).constData(), &st) != 0 ||
            !S_ISDIR(st.st_mode) || !seen.insert({st.st_dev, st.st_ino}).second)
            continue;
        if (recurse)
            for (const QString& name : platform::FolderList(path))
                queue << (path.endsWith('/') ? path + name : path + '/' + name);
        for (const QString& name :
             platform::FileList(path, QString::fromLatin1(lists::kScanPattern)))
            list << QStringLiteral("IMAGE>") + path + '/' + name;
    }
    return list;
}

void Touch(const QByteArray& path) {
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    ASSERT_GE(fd, 0) << path.constData();
    ::close(fd);
}

// A tree with what a photo folder may hold, and what it should not trip over.
class FolderWalk : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        root = QFile::encodeName(dir.path()) + "/Photos";
        const std::vector<QByteArray> folders = {
            "",        "/Sub",        "/sub2",  "/Sub/deep",   "/Sub/deep/er", "/ämpty",
            "/locked", "/folder.jpg", "/-dash", "/with space", "/Ärger",       "/ärger",
        };
        for (const QByteArray& f : folders)
            ASSERT_EQ(::mkdir((root + f).constData(), 0755), 0) << f.constData();
        // clang-format off
        const std::vector<QByteArray> files = {
            "/a.jpg", "/B.JPG", "/c.Jpeg", "/d.tif", "/e.TIFF", "/f.png", "/g.bmp", "/h.gif",
            "/notes.txt", "/x.jpg.txt", "/jpg", "/.jpg", "/space name.jpg", "/quo'te\".png",
            "/-lead.jpg", "/Ärger.jpg", "/ärger.jpg", "/zebra.JPG", "/Zebra.jpg", "/_u.jpg",
            "/[x].jpg", "/^c.jpg", "/`b.jpg", "/A.jpg", "/10.jpg", "/9.jpg", "/bad\xff.jpg",
            "/a.jpe", "/Sub/s1.PNG", "/Sub/S0.png", "/Sub/deep/d.gif", "/Sub/deep/er/e.bmp",
            "/sub2/t.tiff", "/locked/l.jpg", "/folder.jpg/in.jpg", "/-dash/-x.jpg",
            "/with space/w.jpg", "/Ärger/u.jpg", "/ärger/l.jpg"};
        // clang-format on
        for (const QByteArray& f : files)
            Touch(root + f);
        ASSERT_EQ(::symlink("a.jpg", (root + "/link-to-a.jpg").constData()), 0);
        ASSERT_EQ(::symlink("nowhere.jpg", (root + "/dangling.jpg").constData()), 0);
        ASSERT_EQ(::symlink("..", (root + "/Sub/loop").constData()), 0);
        ASSERT_EQ(::symlink("../../sub2", (root + "/Sub/deep/to-sub2").constData()), 0);
        ASSERT_EQ(::mkfifo((root + "/pipe.png").constData(), 0644), 0);
        ASSERT_EQ(::chmod((root + "/locked").constData(), 0), 0);
    }
    // The toolkit cannot remove a name that is not UTF-8, so that one goes first.
    void TearDown() override {
        ::chmod((root + "/locked").constData(), 0755);
        ::unlink((root + "/bad\xff.jpg").constData());
    }

    QString Root() const { return QFile::decodeName(root); }

    QTemporaryDir dir;
    QByteArray root;
};

TEST_F(FolderWalk, GivesTheRecordsOfTheListingWalk) {
    struct Row {
        const char* folder; // under the tree's root
        bool recurse;
    };
    const Row rows[] = {{"", true},       {"", false},       {"/", true},
                        {"///", false},   {"/Sub", true},    {"/Sub/", false},
                        {"/ämpty", true}, {"/locked", true}, {"/missing", true}};
    for (const Row& row : rows) {
        const QString folder = Root() + QString::fromUtf8(row.folder);
        QStringList ours;
        const lists::FolderWalkResult result = WalkImageFolders(folder, row.recurse, ours);
        EXPECT_EQ(Lines(ours), Lines(ListingWalk(folder, row.recurse)))
            << row.folder << " " << row.recurse;
        EXPECT_EQ(result.count, ours.size());
        EXPECT_FALSE(result.aborted);
    }
}

TEST_F(FolderWalk, WholeTreeHoldsWhatItShould) {
    QStringList list;
    const lists::FolderWalkResult result = WalkImageFolders(Root(), true, list);
    const QString top = QStringLiteral("IMAGE>") + Root() + '/';
    // Case-blind order, ties by code unit; a link to an image, a dangling link and a pipe are
    // files to the listing; a name that is not UTF-8 is not.
    const QStringList firstFolder = {
        "-lead.jpg",     ".jpg",         "10.jpg",       "9.jpg",          "[x].jpg",   "^c.jpg",
        "_u.jpg",        "`b.jpg",       "A.jpg",        "a.jpg",          "B.JPG",     "c.Jpeg",
        "d.tif",         "dangling.jpg", "e.TIFF",       "f.png",          "g.bmp",     "h.gif",
        "link-to-a.jpg", "pipe.png",     "quo'te\".png", "space name.jpg", "Zebra.jpg", "zebra.JPG",
        "Ärger.jpg",     "ärger.jpg",
    };
    ASSERT_GE(list.size(), firstFolder.size());
    for (qsizetype i = 0; i < firstFolder.size(); ++i)
        EXPECT_EQ(list[i].toStdString(), (top + firstFolder[i]).toStdString()) << i;
    // Then level by level: the folders under the root in listing order, then theirs.
    const QStringList rest = {"-dash/-x.jpg",   "folder.jpg/in.jpg", "Sub/S0.png",  "Sub/s1.PNG",
                              "sub2/t.tiff",    "with space/w.jpg",  "Ärger/u.jpg", "ärger/l.jpg",
                              "Sub/deep/d.gif", "Sub/deep/er/e.bmp"};
    QStringList expectedRest;
    for (const QString& r : rest)
        expectedRest << top + r;
    const bool asRoot = ::geteuid() == 0; // a locked folder does not stop root
    QStringList tail = list.mid(firstFolder.size());
    if (asRoot) tail.removeAll(top + "locked/l.jpg");
    EXPECT_EQ(Lines(tail), Lines(expectedRest));
    // The loop back to the top and the second way into sub2 are each passed by once; the
    // locked folder too unless the tests run as root.
    EXPECT_EQ(result.foldersPassedBy, asRoot ? 2 : 3);
    EXPECT_EQ(result.count, list.size());
}

TEST(FolderWalkNames, MatchLikeTheListingPattern) {
    const QString pattern = QString::fromLatin1(lists::kScanPattern);
    const char* names[] = {"a.jpg",   "A.JPG",     "a.JpEg", "a.jpe", "a.tif",   "a.TIFF",
                           "a.tiff ", "a.png",     "a.bmp",  "a.gif", ".jpg",    "jpg",
                           "ajpg",    "a.jpg.txt", "a.gif2", "é.PNG", "a.j pg",  "a..bmp",
                           "",        "a.JPG\t",   "a.tıf",  "a.tİf", "ǰpg.gif", "x.PnG"};
    for (const char* name : names)
        EXPECT_EQ(lists::IsScanImageName(name),
                  platform::MatchesPatterns(QString::fromUtf8(name), pattern))
            << name;
}

TEST(FolderWalkNames, ListingPathKeepsOnlyTheRootsSeparator) {
    const std::pair<const char*, const char*> rows[] = {
        {"/a/b/", "/a/b"}, {"/a/b", "/a/b"}, {"/a/b///", "/a/b"}, {"/", "/"}, {"//", "/"}, {"", ""},
    };
    for (const auto& [in, out] : rows)
        EXPECT_EQ(lists::ListingPath(QString::fromLatin1(in)), QString::fromLatin1(out)) << in;
}

TEST(FolderWalkHooks, AbortIsAskedInsideALargeFolderAndKeepsWholeFolders) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QByteArray top = QFile::encodeName(dir.path());
    ASSERT_EQ(::mkdir((top + "/big").constData(), 0755), 0);
    for (int i = 0; i < 10; ++i)
        Touch(top + "/p" + QByteArray::number(i) + ".jpg");
    const int bigCount = 4 * lists::kEntriesBetweenAbortChecks;
    for (int i = 0; i < bigCount; ++i)
        Touch(top + "/big/b" + QByteArray::number(i) + ".jpg");

    struct Row {
        int abortAtCall;   // the abort hook says yes from this call on; 0: never
        qsizetype records; // what the list keeps
        bool aborted;
    };
    // Call 1 follows the top folder; calls 2 to 5 come inside the big one, after every
    // kEntriesBetweenAbortChecks entries; then the one after the big folder.
    const Row rows[] = {{0, 10 + bigCount, false},
                        {1, 10, true},
                        {2, 10, true},
                        {5, 10, true},
                        {6, 10 + bigCount, true}};
    for (const Row& row : rows) {
        QStringList list{QStringLiteral("earlier line")};
        int calls = 0;
        int progressCalls = 0;
        lists::FolderWalkHooks hooks;
        hooks.abortRequested = [&] { return ++calls >= row.abortAtCall && row.abortAtCall > 0; };
        hooks.progress = [&](const QString&, qsizetype count) {
            ++progressCalls;
            EXPECT_EQ(count, list.size());
        };
        const lists::FolderWalkResult result = WalkImageFolders(dir.path(), true, list, hooks);
        EXPECT_EQ(result.aborted, row.aborted) << row.abortAtCall;
        EXPECT_EQ(list.size(), row.records + 1) << row.abortAtCall;
        EXPECT_EQ(result.count, list.size()) << row.abortAtCall;
        // Once per folder begun, never per file.
        EXPECT_LE(progressCalls, 2) << row.abortAtCall;
        if (row.abortAtCall == 0) {
            EXPECT_GE(calls, 1 + bigCount / lists::kEntriesBetweenAbortChecks);
        }
    }
}

} // namespace
