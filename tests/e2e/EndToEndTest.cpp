#include "XSession.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QSettings>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

const QString kShowTitle = QStringLiteral("Tessaview Slide Show");

class EndToEnd : public ::testing::Test {
protected:
    void SetUp() override {
        x = std::make_unique<XSession>();
        if (!x->ok()) GTEST_SKIP() << "Xvfb is not available; run scripts/setup.sh";
        x->writeStore(QStringLiteral("[General]\ninstallDir=%1\n").arg(x->installDir()));
    }
    static bool Ended(QProcess* p, std::chrono::milliseconds limit) {
        return WaitFor([p] { return p->state() == QProcess::NotRunning; }, limit);
    }
    bool ShowIsUp(int howMany = 1) {
        return WaitFor([&] { return x->countWindows(kShowTitle, true) >= howMany; }, 60s);
    }
    std::unique_ptr<XSession> x;
};

TEST_F(EndToEnd, SwitchesThatDoNothingEndAtOnce) {
    for (const QString& arg :
         {QStringLiteral("/a"), QStringLiteral("/x"), QStringLiteral(" /A ")}) {
        QProcess* p = x->start({arg});
        ASSERT_TRUE(Ended(p, 20s)) << arg.toStdString();
        EXPECT_EQ(p->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(p->exitCode(), 0) << arg.toStdString();
    }
    EXPECT_EQ(x->countWindows(kShowTitle, false), 0);
}

TEST_F(EndToEnd, ShowCoversTheScreenAndEscapeEndsIt) {
    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(ShowIsUp());
    const xcb_window_t w = x->findWindow(kShowTitle, true);
    EXPECT_EQ(x->windowSize(w), QSize(1280, 800));

    x->run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Escape")});
    ASSERT_TRUE(Ended(show, 30s));
    EXPECT_EQ(show->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(show->exitCode(), 0);

    // The tuned crossfade step is kept for the next show.
    QSettings store(x->storeFile(), QSettings::IniFormat);
    EXPECT_TRUE(store.contains(QStringLiteral("xFadeStepTime")));
    EXPECT_EQ(store.value(QStringLiteral("installDir")).toString(), x->installDir());
}

TEST_F(EndToEnd, PointerMoveEndsTheShow) {
    x->run(QStringLiteral("xdotool"),
           {QStringLiteral("mousemove"), QStringLiteral("200"), QStringLiteral("200")});
    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(ShowIsUp());
    // Four pixels on each axis are allowed; five on one of them are not.
    x->run(QStringLiteral("xdotool"),
           {QStringLiteral("mousemove"), QStringLiteral("204"), QStringLiteral("196")});
    EXPECT_FALSE(Ended(show, 1500ms));
    x->run(QStringLiteral("xdotool"),
           {QStringLiteral("mousemove"), QStringLiteral("200"), QStringLiteral("205")});
    ASSERT_TRUE(Ended(show, 30s));
    EXPECT_EQ(show->exitCode(), 0);
}

TEST_F(EndToEnd, SecondShowIsRefusedUnlessTheDisplayDialogIsOpen) {
    QProcess* first = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(ShowIsUp());

    QProcess* second = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(Ended(second, 20s));
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(x->countWindows(kShowTitle, false), 1);

    x->createWindow(QStringLiteral("Display Properties"), 200, 100);
    QProcess* third = x->start({QStringLiteral("/s")});
    EXPECT_TRUE(ShowIsUp(2));
    EXPECT_EQ(third->state(), QProcess::Running);
    EXPECT_EQ(first->state(), QProcess::Running);
}

TEST_F(EndToEnd, PreviewLivesInsideItsHostAndFollowsIt) {
    for (const QString& form : {QStringLiteral("/p %1"), QStringLiteral("/p:%1")}) {
        const xcb_window_t host = x->createWindow(QStringLiteral("Host pane"), 152, 112);
        QProcess* preview = x->start({form.arg(host)});
        ASSERT_TRUE(WaitFor(
            [&] {
                auto kids = x->children(host);
                return kids.size() == 1 && x->windowSize(kids[0]) == QSize(152, 112);
            },
            30s))
            << form.toStdString();

        x->resizeWindow(host, 300, 220);
        EXPECT_TRUE(WaitFor(
            [&] {
                auto kids = x->children(host);
                return kids.size() == 1 && x->windowSize(kids[0]) == QSize(300, 220);
            },
            20s));

        x->destroyWindow(host);
        ASSERT_TRUE(Ended(preview, 20s));
        EXPECT_EQ(preview->exitCode(), 0);
    }
}

} // namespace

namespace {

const QString kConfigTitle = QStringLiteral("Tessaview Settings");

// Puts the settings window at the screen's corner, so that its buttons can be clicked where
// the window lays them out, and clicks at that spot.
void ClickInConfig(XSession& x, int left, int fromBottom, int height) {
    x.run(QStringLiteral("xdotool"),
          {QStringLiteral("search"), QStringLiteral("--name"),
           QStringLiteral("^Tessaview Settings$"), QStringLiteral("windowmove"),
           QStringLiteral("--sync"), QStringLiteral("0"), QStringLiteral("0")});
    x.run(QStringLiteral("xdotool"),
          {QStringLiteral("mousemove"), QString::number(left), QString::number(height - fromBottom),
           QStringLiteral("click"), QStringLiteral("1")});
}

// A stand-in for the desktop's opener, first in the program's PATH: it writes what it was asked
// to open into record, under another name first so that the test never reads half of it.
QProcessEnvironment WithFakeOpener(const QTemporaryDir& bin, const QString& record) {
    const QString opener = bin.filePath(QStringLiteral("xdg-open"));
    QFile script(opener);
    if (script.open(QIODevice::WriteOnly | QIODevice::Truncate))
        script.write(
            QStringLiteral("#!/bin/sh\nprintf '%s\\n' \"$@\" >'%1.part'\nmv '%1.part' '%1'\n")
                .arg(record)
                .toUtf8());
    script.close();
    QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QProcessEnvironment env;
    env.insert(QStringLiteral("PATH"),
               bin.path() + QLatin1Char(':') + qEnvironmentVariable("PATH"));
    return env;
}

} // namespace

TEST_F(EndToEnd, SettingsWindowOkWritesThePreferencesAndEnds) {
    QProcess* config = x->start({QStringLiteral("/c")});
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(kConfigTitle, true) == 1; }, 60s));
    const QSize size = x->windowSize(x->findWindow(kConfigTitle, true));
    // The test screen is 800 pixels high: the window takes the middle row of its table.
    EXPECT_EQ(size, QSize(940, 800 - 100 - 150));
    ClickInConfig(*x, 324, 29, size.height());
    ASSERT_TRUE(Ended(config, 30s));
    EXPECT_EQ(config->exitCode(), 0);
    QFile prefs(x->installDir() + QStringLiteral("/TView_Prefs.txt"));
    ASSERT_TRUE(prefs.open(QIODevice::ReadOnly));
    EXPECT_TRUE(prefs.readAll().startsWith("Tessaview Preferences File - written "));
}

TEST_F(EndToEnd, SettingsWindowWithoutASwitchCancelsWithoutWriting) {
    QProcess* config = x->start({});
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(kConfigTitle, true) == 1; }, 60s));
    const QSize size = x->windowSize(x->findWindow(kConfigTitle, true));
    ClickInConfig(*x, 412, 29, size.height());
    ASSERT_TRUE(Ended(config, 30s));
    EXPECT_EQ(config->exitCode(), 0);
    EXPECT_FALSE(QFile::exists(x->installDir() + QStringLiteral("/TView_Prefs.txt")));
}

TEST_F(EndToEnd, HelpButtonAsksTheDesktopToOpenTheInstalledPage) {
    ASSERT_TRUE(QDir(x->installDir()).mkpath(QStringLiteral("Help")));
    const QString page = x->installDir() + QStringLiteral("/Help/index.html");
    {
        QFile f(page);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("<!DOCTYPE html>\n<title>Tessaview Help</title>\n");
    }
    QTemporaryDir bin;
    ASSERT_TRUE(bin.isValid());
    const QString record = bin.filePath(QStringLiteral("opened.txt"));

    QProcess* config = x->start({QStringLiteral("/c")}, WithFakeOpener(bin, record));
    ASSERT_TRUE(WaitFor([&] { return x->countWindows(kConfigTitle, true) == 1; }, 60s));
    const QSize size = x->windowSize(x->findWindow(kConfigTitle, true));
    // Help stands at the right end of the row above OK and Cancel.
    ClickInConfig(*x, 412, 65, size.height());
    ASSERT_TRUE(WaitFor([&] { return QFile::exists(record); }, 30s))
        << "the program asked the desktop to open nothing";

    QFile asked(record);
    ASSERT_TRUE(asked.open(QIODevice::ReadOnly));
    const QStringList arguments =
        QString::fromUtf8(asked.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(arguments.size(), 1) << arguments.join(QLatin1Char(' ')).toStdString();
    const QUrl url(arguments[0]);
    const QString opened = url.isLocalFile() ? url.toLocalFile() : arguments[0];
    EXPECT_EQ(QFileInfo(opened).canonicalFilePath(), QFileInfo(page).canonicalFilePath())
        << arguments[0].toStdString();
    // With the page at hand there is no word of falling back to the web.
    EXPECT_EQ(x->countWindows(QStringLiteral("(please connect to the internet if you are not "
                                             "already connected)"),
                              false),
              0);

    ClickInConfig(*x, 412, 29, size.height());
    ASSERT_TRUE(Ended(config, 30s));
    EXPECT_EQ(config->exitCode(), 0);
}

namespace {

// Whether some pixel of that part of the picture is the photographs' green.
bool GreenIn(const QImage& screen, const QRect& part) {
    for (int y = part.top(); y <= part.bottom(); y += 4)
        for (int x = part.left(); x <= part.right(); x += 4) {
            const QRgb c = screen.pixel(x, y);
            if (qGreen(c) > 150 && qRed(c) < 80 && qBlue(c) < 80) return true;
        }
    return false;
}

} // namespace

// Two monitors, each with its own photograph in turn: both end up showing one.
TEST_F(EndToEnd, TwoMonitorsTakeTheirTurnsWithPhotographs) {
    const QRect left(0, 0, 700, 800), right(700, 100, 580, 600);
    ASSERT_EQ(x->run(QStringLiteral("xrandr"),
                     {QStringLiteral("--setmonitor"), QStringLiteral("LEFT"),
                      QStringLiteral("700/185x800/210+0+0"), QStringLiteral("screen")}),
              0);
    ASSERT_EQ(x->run(QStringLiteral("xrandr"),
                     {QStringLiteral("--setmonitor"), QStringLiteral("*RIGHT"),
                      QStringLiteral("580/150x600/160+700+100"), QStringLiteral("none")}),
              0);
    const QDir install(x->installDir());
    install.mkpath(QStringLiteral("Imagelists"));
    install.mkpath(QStringLiteral("photos"));
    QStringList records;
    for (int i = 0; i < 3; ++i) {
        QImage photo(300, 200, QImage::Format_RGB32);
        photo.fill(QColor(20, 200, 20));
        const QString path = install.filePath(QStringLiteral("photos/%1.jpg").arg(i));
        ASSERT_TRUE(photo.save(path, "JPEG", 95));
        records << QStringLiteral("IMAGE>") + path;
    }
    auto write = [](const QString& path, const QStringList& lines) {
        ASSERT_TRUE(WriteCrlfLines(path, lines)) << path.toStdString();
    };
    write(install.filePath(QStringLiteral("TView_Prefs.txt")),
          {QStringLiteral("Tessaview Preferences File"), QStringLiteral("6.0.1"),
           QStringLiteral("="), QStringLiteral("INTERVAL,1"), QStringLiteral("CROSSFADETIME,1"),
           QStringLiteral("ENABLEMULTIMONITORS,1,0")});
    write(install.filePath(QStringLiteral("Imagelists/photos_1.tvl")),
          QStringList{QStringLiteral("Imagelist"), QStringLiteral("-"), QStringLiteral("TITLE"),
                      QStringLiteral("Photos"), QStringLiteral("PATH"),
                      install.filePath(QStringLiteral("photos/")), QStringLiteral("COUNT,3"),
                      QStringLiteral("LOCALORWEB,Local"), QStringLiteral("SCANINTERVAL,4000"),
                      QStringLiteral("IMAGES")} +
              records);

    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(ShowIsUp());
    const QString shot = install.filePath(QStringLiteral("shot.png"));
    QImage screen;
    const bool both = WaitFor(
        [&] {
            if (x->run(QStringLiteral("import"),
                       {QStringLiteral("-window"), QStringLiteral("root"), shot}) != 0)
                return false;
            screen = QImage(shot);
            return !screen.isNull() && GreenIn(screen, left) && GreenIn(screen, right);
        },
        60s);
    EXPECT_TRUE(both) << "a photograph on the left: " << GreenIn(screen, left)
                      << ", on the right: " << GreenIn(screen, right);
    x->run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Escape")});
    EXPECT_TRUE(Ended(show, 30s));
}

// A show started inside its night hours goes to the night screen: black from edge to edge once
// the fades are done, with the monitors' power left alone where the server has no DPMS.
TEST_F(EndToEnd, ShowStartedAtNightEndsOnABlackScreen) {
    const QDir install(x->installDir());
    {
        QFile prefs(install.filePath(QStringLiteral("TView_Prefs.txt")));
        ASSERT_TRUE(prefs.open(QIODevice::WriteOnly));
        // Every quarter-hour of the day is night.
        prefs.write("Tessaview Preferences File\r\n6.0.1\r\n=\r\nINTERVAL,1\r\nCROSSFADETIME,1\r\n"
                    "NIGHT MODE,1,0,96,True\r\nDEBUGLOG\r\n");
    }
    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(ShowIsUp());
    const QString logPath = install.filePath(QStringLiteral("Tessaview_debug_log.txt"));
    QString monitorLine;
    ASSERT_TRUE(WaitFor(
        [&] {
            QFile log(logPath);
            if (!log.open(QIODevice::ReadOnly)) return false;
            for (const QString& line : QString::fromUtf8(log.readAll()).split(QLatin1Char('\n')))
                if (line.startsWith(QStringLiteral("Turning the monitors off: ")))
                    monitorLine = line.trimmed();
            return !monitorLine.isEmpty();
        },
        90s));
    EXPECT_TRUE(monitorLine.endsWith(QStringLiteral("nothing to switch")) ||
                monitorLine.endsWith(QStringLiteral("done")))
        << monitorLine.toStdString();

    const QString shot = install.filePath(QStringLiteral("night.png"));
    ASSERT_EQ(
        x->run(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), shot}),
        0);
    const QImage screen(shot);
    ASSERT_FALSE(screen.isNull());
    int lit = 0;
    for (int py = 0; py < screen.height(); py += 3)
        for (int px = 0; px < screen.width(); px += 3)
            if (qGray(screen.pixel(px, py)) > 8) ++lit;
    EXPECT_EQ(lit, 0);

    x->run(QStringLiteral("xdotool"), {QStringLiteral("key"), QStringLiteral("Escape")});
    EXPECT_TRUE(Ended(show, 30s));
}
