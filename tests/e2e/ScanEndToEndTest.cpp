#include "XSession.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

// A photo folder as people have them: cases of extension, names with spaces, quotes, a
// non-ASCII letter and a leading "-", files that are no images, an empty folder, a folder that
// cannot be read, and a link that leads back to the top.
class ScanEndToEnd : public ::testing::Test {
protected:
    void SetUp() override {
        x = std::make_unique<XSession>();
        if (!x->ok()) GTEST_SKIP() << "Xvfb is not available; run scripts/setup.sh";
        x->writeStore(QStringLiteral("[General]\ninstallDir=%1\n").arg(x->installDir()));
        root = x->installDir() + QStringLiteral("/Our Photos");
        for (const char* name : {"-x \"quoted\" 'ü' photo.jpeg", "a.png", "b.JPG", "2019/c.Tif",
                                 "2019/deep/e.gif", "Album 2018/d.bmp", "locked/hidden.jpg"}) {
            const QString path = root + QLatin1Char('/') + QString::fromUtf8(name);
            QDir().mkpath(QFileInfo(path).path());
            QImage photo(64, 48, QImage::Format_RGB32);
            photo.fill(Qt::darkCyan);
            // JPEG inside whatever the name says: the loader goes by the content.
            ASSERT_TRUE(photo.save(path, "JPEG"));
        }
        for (const char* name : {"notes.txt", "a.jpg.bak", "2019/readme"})
            Touch(root + QLatin1Char('/') + QLatin1String(name));
        QDir().mkpath(root + QStringLiteral("/empty"));
        ASSERT_TRUE(QFile::link(root, root + QStringLiteral("/2019/loop")));
        locked = root + QStringLiteral("/locked");
        QFile::setPermissions(locked, {});
    }
    void TearDown() override {
        if (!locked.isEmpty())
            QFile::setPermissions(locked, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    static void Touch(const QString& path) {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    // Breadth first, each folder's files and sub-folders by name; the locked folder and the
    // link back to the top give nothing.
    QStringList Expected() const {
        QStringList records;
        for (const char* name : {"-x \"quoted\" 'ü' photo.jpeg", "a.png", "b.JPG", "2019/c.Tif",
                                 "Album 2018/d.bmp", "2019/deep/e.gif"})
            records << QStringLiteral("IMAGE>") + root + QLatin1Char('/') + QString::fromUtf8(name);
        return records;
    }
    static QStringList Lines(const QString& file) {
        QFile f(file);
        if (!f.open(QIODevice::ReadOnly)) return {};
        return QString::fromUtf8(f.readAll()).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    }
    static QStringList Records(const QStringList& lines) {
        const qsizetype marker = lines.indexOf(QStringLiteral("IMAGES"));
        return marker < 0 ? QStringList() : lines.mid(marker + 1);
    }
    bool Xdo(const QStringList& args) { return x->run(QStringLiteral("xdotool"), args) == 0; }
    static bool Ended(QProcess* p, std::chrono::milliseconds limit) {
        return WaitFor([p] { return p->state() == QProcess::NotRunning; }, limit);
    }

    std::unique_ptr<XSession> x;
    QString root;
    QString locked;
};

TEST_F(ScanEndToEnd, TheAddFolderDialogScansATreeIntoANewList) {
    const QString settings = QStringLiteral("Tessaview Settings");
    const QString dialog = QStringLiteral("Add a Folder of Images");
    const QString scanning = QStringLiteral("Scanning for images");
    QProcess* config = x->startWithFileRights({QStringLiteral("/c")});
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(settings, true) == 1; }, 60s));
    Xdo({"search", "--name", "^" + settings + "$", "windowmove", "--sync", "0", "0"});
    // The first of the image buttons, "add a folder".
    Xdo({"mousemove", "166", "80", "click", "1"});
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(dialog, true) == 1; }, 20s));

    Xdo({"search", "--name", "^" + dialog + "$", "windowfocus", "--sync"});
    Xdo({"key", "ctrl+a"});
    Xdo({"type", "--delay", "5", root});
    Xdo({"key", "alt+s"});
    // The scanning window stays 1.5 s to tell the scan is complete, then goes.
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(scanning, true) == 1; }, 20s));
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(scanning, true) == 0; }, 20s));
    Xdo({"search", "--name", "^" + dialog + "$", "windowfocus", "--sync"});
    Xdo({"key", "Return"});

    const QString list = x->installDir() + QStringLiteral("/Imagelists/Our Photos_1.tvl");
    ASSERT_TRUE(WaitFor([&] { return !Records(Lines(list)).isEmpty(); }, 20s));
    const QStringList lines = Lines(list);
    EXPECT_EQ(Records(lines), Expected()) << lines.join('\n').toStdString();
    EXPECT_TRUE(lines.contains(QStringLiteral("COUNT,6")));
    EXPECT_TRUE(lines.contains(root + QLatin1Char('/')));
    EXPECT_TRUE(lines.contains(QStringLiteral("OPTION,RECURSE==True")));
    // The list is written before the dialog goes, and a busy machine can show the gap.
    EXPECT_TRUE(WaitFor([&] { return x->countWindows(dialog, true) == 0; }, 20s));
    EXPECT_EQ(config->state(), QProcess::Running);
}

TEST_F(ScanEndToEnd, ADueRescanInTheShowRewritesTheList) {
    const QDir install(x->installDir());
    install.mkpath(QStringLiteral("Imagelists"));
    const QString list = install.filePath(QStringLiteral("Imagelists/photos_1.tvl"));
    auto write = [](const QString& path, const QStringList& lines) {
        ASSERT_TRUE(WriteCrlfLines(path, lines)) << path.toStdString();
    };
    write(install.filePath(QStringLiteral("TView_Prefs.txt")),
          {QStringLiteral("Tessaview Preferences File"), QStringLiteral("6.0.1"),
           QStringLiteral("="), QStringLiteral("DEBUGLOG"), QStringLiteral("CROSSFADETIME,1")});
    // Scanned long ago, to be scanned every day: due at the show's start.
    write(list, {QStringLiteral("Imagelist for Ferrin's Tessaview"), QString(30, '-'),
                 QStringLiteral("TITLE"), QStringLiteral("Our photos"), QStringLiteral("PATH"),
                 root + QLatin1Char('/'), QStringLiteral("COUNT,1"),
                 QStringLiteral("LOCALORWEB,Local"), QStringLiteral("LASTSCAN,2020-01-01"),
                 QStringLiteral("SCANINTERVAL,1"), QStringLiteral("OPTION,RECURSE==True"),
                 QStringLiteral("OPTION,none==none"), QStringLiteral("OPTION,none==none"),
                 QStringLiteral("OPTION,none==none"), QStringLiteral("OPTION,none==none"),
                 QStringLiteral("IMAGES"), QStringLiteral("IMAGE>") + root + "/gone.jpg"});

    QProcess* show = x->startWithFileRights({QStringLiteral("/s")});
    ASSERT_TRUE(WaitFor([&] { return Records(Lines(list)) == Expected(); }, 60s))
        << Lines(list).join('\n').toStdString();
    const QStringList lines = Lines(list);
    EXPECT_TRUE(lines.contains(QStringLiteral("COUNT,6")));
    EXPECT_FALSE(lines.contains(QStringLiteral("LASTSCAN,2020-01-01")));
    // The header stays as it was.
    EXPECT_EQ(lines.mid(2, 4), (QStringList{QStringLiteral("TITLE"), QStringLiteral("Our photos"),
                                            QStringLiteral("PATH"), root + QLatin1Char('/')}));

    Xdo({"key", "Escape"});
    EXPECT_TRUE(Ended(show, 30s));
    // Nothing but the list itself is left in its folder.
    EXPECT_EQ(QDir(install.filePath(QStringLiteral("Imagelists"))).entryList(QDir::Files),
              QStringList{QStringLiteral("photos_1.tvl")});
}

} // namespace
