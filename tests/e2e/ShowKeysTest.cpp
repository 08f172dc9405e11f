// The show's keys as a person at the keyboard uses them, on a real X server.
#include "XSession.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

const QString kShowTitle = QStringLiteral("Tessaview Slide Show");
const QColor kColours[] = {QColor(220, 40, 40), QColor(40, 200, 40), QColor(40, 60, 220),
                           QColor(230, 220, 40), QColor(200, 40, 200)};

bool Near(QRgb c, const QColor& want) {
    return std::abs(qRed(c) - want.red()) < 40 && std::abs(qGreen(c) - want.green()) < 40 &&
           std::abs(qBlue(c) - want.blue()) < 40;
}

class ShowKeys : public ::testing::Test {
protected:
    void SetUp() override {
        x = std::make_unique<XSession>();
        if (!x->ok()) GTEST_SKIP() << "Xvfb is not available; run scripts/setup.sh";
        x->writeStore(QStringLiteral("[General]\ninstallDir=%1\n").arg(x->installDir()));
    }
    // Photos of plain colours, larger than the screen so that each covers its middle, in a list
    // shown in order, and the preferences with the debug log on.
    void Install(const QStringList& prefs) {
        const QDir install(x->installDir());
        install.mkpath(QStringLiteral("Imagelists"));
        install.mkpath(QStringLiteral("photos"));
        QStringList records;
        for (int i = 0; i < 5; ++i) {
            QImage photo(1400, 900, QImage::Format_RGB32);
            photo.fill(kColours[i]);
            photos << install.filePath(QStringLiteral("photos/%1.jpg").arg(i));
            ASSERT_TRUE(photo.save(photos.back(), "JPEG", 95));
            records << QStringLiteral("IMAGE>") + photos.back();
        }
        Write(install.filePath(QStringLiteral("TView_Prefs.txt")),
              QStringList{QStringLiteral("Tessaview Preferences File"), QStringLiteral("6.0.1"),
                          QStringLiteral("="), QStringLiteral("DEBUGLOG"),
                          QStringLiteral("IMAGEORDER,0"), QStringLiteral("CROSSFADETIME,1"),
                          QStringLiteral("USEIMAGEMASKS,0,0"), QStringLiteral("")} +
                  prefs);
        Write(install.filePath(QStringLiteral("Imagelists/photos_1.tvl")),
              QStringList{QStringLiteral("Imagelist"), QStringLiteral("-"), QStringLiteral("TITLE"),
                          QStringLiteral("Photos"), QStringLiteral("PATH"),
                          install.filePath(QStringLiteral("photos/")), QStringLiteral("COUNT,5"),
                          QStringLiteral("LOCALORWEB,Local"), QStringLiteral("SCANINTERVAL,4000"),
                          QStringLiteral("IMAGES")} +
                  records);
    }
    static void Write(const QString& path, const QStringList& lines) {
        ASSERT_TRUE(WriteCrlfLines(path, lines)) << path.toStdString();
    }
    QString Log() const {
        QFile f(QDir(x->installDir()).filePath(QStringLiteral("Tessaview_debug_log.txt")));
        return f.open(QIODevice::ReadOnly) ? QString::fromUtf8(f.readAll()) : QString();
    }
    int Fades() const {
        return static_cast<int>(Log().count(QStringLiteral("CROSSFADE COMPLETE")));
    }
    // Waits until that many fades have ended and the next frame is ready.
    bool FadesDone(int n) {
        return WaitFor(
            [&] {
                const QString log = Log();
                return log.count(QStringLiteral("CROSSFADE COMPLETE")) >= n &&
                       log.lastIndexOf(QStringLiteral("Image Pasted onto CanvasDIB")) >
                           log.lastIndexOf(QStringLiteral("CROSSFADE COMPLETE"));
            },
            30s);
    }
    QImage Shot() {
        const QString file = QDir(x->installDir()).filePath(QStringLiteral("shot.png"));
        x->run(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), file});
        return QImage(file);
    }
    QRgb Centre() { return Shot().pixel(640, 400); }
    void Key(const QString& name) {
        x->run(QStringLiteral("xdotool"), {QStringLiteral("key"), name});
    }
    static bool Ended(QProcess* p, std::chrono::milliseconds limit) {
        return WaitFor([p] { return p->state() == QProcess::NotRunning; }, limit);
    }

    std::unique_ptr<XSession> x;
    QStringList photos;
};

// With every exit but Esc off and a long interval: the right arrow moves on, the left arrow goes
// back through the earlier screens, F1 shows and hides the key box, "M" marks the photo on the
// screen, a left arrow during a fade is ignored, and Esc ends the show.
TEST_F(ShowKeys, KeysMoveBackAndForthMarkAndShowTheKeyBox) {
    Install({QStringLiteral("INTERVAL,60"), QStringLiteral("EXITOPTIONS,0,0,0,0")});
    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(FadesDone(2)); // the opening, then the first photo
    ASSERT_TRUE(Near(Centre(), kColours[0]));
    for (int i = 1; i <= 3; ++i) {
        Key(QStringLiteral("Right"));
        ASSERT_TRUE(FadesDone(2 + i));
        EXPECT_TRUE(Near(Centre(), kColours[i])) << "after jump " << i;
    }
    for (int i = 2; i >= 0; --i) {
        Key(i == 1 ? QStringLiteral("Prior") : QStringLiteral("Left"));
        EXPECT_TRUE(WaitFor([&] { return Near(Centre(), kColours[i]); }, 10s)) << "back to " << i;
    }

    Key(QStringLiteral("F1"));
    EXPECT_TRUE(WaitFor([&] { return !Near(Centre(), kColours[0]); }, 10s)) << "key box shown";
    Key(QStringLiteral("F1"));
    EXPECT_TRUE(WaitFor([&] { return Near(Centre(), kColours[0]); }, 10s)) << "key box hidden";

    // A jump, and during its fade a left arrow that must not bring back an earlier screen.
    x->run(QStringLiteral("xdotool"),
           {QStringLiteral("key"), QStringLiteral("Right"), QStringLiteral("Left")});
    ASSERT_TRUE(FadesDone(6));
    EXPECT_TRUE(Near(Centre(), kColours[4]));

    Key(QStringLiteral("m"));
    EXPECT_TRUE(WaitFor(
        [&] {
            QFile f(QDir(x->installDir()).filePath(QStringLiteral("MarkedImages.txt")));
            return f.open(QIODevice::ReadOnly) && f.readAll() == photos[4].toUtf8() + "\r\n";
        },
        10s));

    Key(QStringLiteral("a")); // any other key: not an exit with these options
    EXPECT_FALSE(Ended(show, 1500ms));
    Key(QStringLiteral("Escape"));
    ASSERT_TRUE(Ended(show, 30s));
    EXPECT_EQ(show->exitCode(), 0);
}

// Space holds the photo past its interval and shows the paused sign; a right arrow during an
// ordinary fade is remembered and the jump follows as soon as the next frame is ready.
TEST_F(ShowKeys, SpaceHoldsAndARightArrowDuringAFadeIsRemembered) {
    Install({QStringLiteral("INTERVAL,10")});
    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(FadesDone(2));
    Key(QStringLiteral("space"));
    ASSERT_TRUE(WaitFor([&] { return Log().contains(QStringLiteral(" - Pausing")); }, 10s));
    // The sign sits in the middle, nine tenths of the way down, dark over the bright photo.
    EXPECT_FALSE(Near(Shot().pixel(640, 700), kColours[0]));
    const int fades = Fades();
    EXPECT_FALSE(WaitFor([&] { return Fades() > fades; }, 11s)) << "held past its interval";
    Key(QStringLiteral("space"));
    ASSERT_TRUE(WaitFor([&] { return Fades() > fades; }, 20s)) << "goes on once let go";
    ASSERT_TRUE(FadesDone(fades + 1));

    // Press the right arrow while a fade the timer started runs.
    const auto starts = [&] {
        return static_cast<int>(Log().count(QStringLiteral("Start of Crossfade Routine")));
    };
    const int before = Fades();
    const int started = starts();
    ASSERT_TRUE(WaitFor([&] { return starts() > started; }, 30s));
    QElapsedTimer clock;
    clock.start();
    Key(QStringLiteral("Right"));
    ASSERT_TRUE(WaitFor([&] { return Fades() >= before + 2; }, 30s));
    // Without the jump the next fade would wait out the 10-second interval, less the moment the
    // key took to come; with it about 3 s pass under the sanitizers.
    EXPECT_LT(clock.elapsed(), 7000) << "ms from the key to the second fade's end";
    EXPECT_TRUE(Log().contains(QStringLiteral(" - JumpToNextPhoto")));
    Key(QStringLiteral("Escape"));
    EXPECT_TRUE(Ended(show, 30s));
}

} // namespace
