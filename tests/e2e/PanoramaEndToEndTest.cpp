#include "XSession.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QThread>
#include <gtest/gtest.h>
#include <optional>

using namespace std::chrono_literals;

namespace {

// The test screen is 1280 x 800; the panorama overhangs it by 200 pixels, just over the 15 %
// that keeps it from being shrunk, so it travels 100 steps of 2 pixels in about 5 seconds.
constexpr int kScreenW = 1280;
constexpr int kOverhang = 200;

// Each column of the panorama names itself: its number in red and green, blue 128 throughout.
QImage Panorama() {
    QImage image(kScreenW + kOverhang, 800, QImage::Format_RGB32);
    for (int x = 0; x < image.width(); ++x) {
        const QRgb c = qRgb(x & 0xFF, x >> 8, 128);
        for (int y = 0; y < image.height(); ++y)
            image.setPixel(x, y, c);
    }
    return image;
}

// The panorama column at the screen's left edge, when the screen shows the panorama whole and
// still: both edges and the middle must name columns that far apart.
std::optional<int> Origin(const QImage& screen) {
    auto column = [&](int x) -> std::optional<int> {
        const QRgb c = screen.pixel(x, 400);
        if (qBlue(c) != 128) return std::nullopt;
        return qRed(c) + 256 * qGreen(c) - x;
    };
    const auto a = column(0), b = column(kScreenW / 2), c = column(kScreenW - 1);
    if (!a || a != b || a != c) return std::nullopt;
    return a;
}

bool Blue(const QImage& screen) {
    const QRgb c = screen.pixel(kScreenW / 2, 400);
    return qBlue(c) > 240 && qRed(c) < 16 && qGreen(c) < 16;
}

class PanoramaEndToEnd : public ::testing::Test {
protected:
    void SetUp() override {
        x = std::make_unique<XSession>();
        if (!x->ok()) GTEST_SKIP() << "Xvfb is not available; run scripts/setup.sh";
        x->writeStore(QStringLiteral("[General]\ninstallDir=%1\n").arg(x->installDir()));
    }
    QImage Shot() {
        const QString file = QDir(x->installDir()).filePath(QStringLiteral("shot.png"));
        if (x->run(QStringLiteral("import"),
                   {QStringLiteral("-window"), QStringLiteral("root"), file}) != 0)
            return {};
        return QImage(file).convertToFormat(QImage::Format_RGB32);
    }
    void Key(const QString& key) {
        x->run(QStringLiteral("xdotool"), {QStringLiteral("key"), key});
    }
    std::unique_ptr<XSession> x;
};

// A wide panorama travels across towards its far end, holds still while space is down, ends
// with that far end on the screen's edge, and only then gives way to the next photograph.
TEST_F(PanoramaEndToEnd, APanoramaTravelsPausesAndGivesWayAtTheEnd) {
    const QDir install(x->installDir());
    install.mkpath(QStringLiteral("Imagelists"));
    install.mkpath(QStringLiteral("photos"));
    const QString pano = install.filePath(QStringLiteral("photos/pano.png"));
    const QString blue = install.filePath(QStringLiteral("photos/blue.png"));
    ASSERT_TRUE(Panorama().save(pano));
    QImage plain(kScreenW, 800, QImage::Format_RGB32);
    plain.fill(qRgb(0, 0, 255));
    ASSERT_TRUE(plain.save(blue));
    auto write = [](const QString& path, const QStringList& lines) {
        ASSERT_TRUE(WriteCrlfLines(path, lines)) << path.toStdString();
    };
    write(install.filePath(QStringLiteral("TView_Prefs.txt")),
          {QStringLiteral("Tessaview Preferences File"), QStringLiteral("6.0.1"),
           QStringLiteral("="), QStringLiteral("INTERVAL,1"), QStringLiteral("CROSSFADETIME,1"),
           QStringLiteral("IMAGEORDER,0"), QStringLiteral("SCROLLPANOS,1"),
           QStringLiteral("SHOWCAPTIONS,0"), QStringLiteral("USEIMAGEMASKS,0,0"), QString()});
    write(install.filePath(QStringLiteral("Imagelists/photos_1.tvl")),
          {QStringLiteral("Imagelist"), QStringLiteral("-"), QStringLiteral("TITLE"),
           QStringLiteral("Photos"), QStringLiteral("PATH"),
           install.filePath(QStringLiteral("photos/")), QStringLiteral("COUNT,2"),
           QStringLiteral("LOCALORWEB,Local"), QStringLiteral("SCANINTERVAL,4000"),
           QStringLiteral("IMAGES"), QStringLiteral("IMAGE>") + pano,
           QStringLiteral("IMAGE>") + blue});

    QProcess* show = x->start({QStringLiteral("/s")});
    ASSERT_TRUE(WaitFor(
        [&] { return x->countWindows(QStringLiteral("Tessaview Slide Show"), true) == 1; }, 60s));

    // The panorama comes in at one end; which one is drawn at random.
    std::optional<int> first;
    ASSERT_TRUE(WaitFor([&] { return (first = Origin(Shot())).has_value(); }, 60s))
        << "the panorama never stood whole on the screen";
    QThread::msleep(400);
    const std::optional<int> second = Origin(Shot());
    ASSERT_TRUE(second.has_value());
    ASSERT_NE(*second, *first) << "the panorama did not move";
    // It moves away from the end it came in at, towards the other.
    const bool towardsRight = *second > *first;
    EXPECT_EQ(towardsRight, *first < kOverhang / 2) << *first << " then " << *second;
    const int farEnd = towardsRight ? kOverhang : 0;

    Key(QStringLiteral("space"));
    QThread::msleep(300);
    const QImage held = Shot();
    QThread::msleep(600);
    EXPECT_EQ(Shot(), held) << "the panorama moved while held";
    const std::optional<int> heldAt = Origin(held);
    Key(QStringLiteral("space"));

    // From here the screen shows the panorama on its way until it stands at its far end, and
    // only after that the next photograph.
    bool reachedEnd = false, blueBeforeEnd = false, blueAfterEnd = false;
    std::optional<int> last = heldAt;
    bool backwards = false;
    WaitFor(
        [&] {
            const QImage screen = Shot();
            if (screen.isNull()) return false;
            if (Blue(screen)) {
                (reachedEnd ? blueAfterEnd : blueBeforeEnd) = true;
                return true;
            }
            const std::optional<int> at = Origin(screen);
            if (at && last && (towardsRight ? *at < *last : *at > *last)) backwards = true;
            if (at) last = at;
            if (at == farEnd) reachedEnd = true;
            return false;
        },
        40s);
    EXPECT_FALSE(backwards);
    EXPECT_TRUE(reachedEnd) << "last seen at " << last.value_or(-1);
    EXPECT_FALSE(blueBeforeEnd);
    EXPECT_TRUE(blueAfterEnd);

    Key(QStringLiteral("Escape"));
    EXPECT_TRUE(WaitFor([&] { return show->state() == QProcess::NotRunning; }, 30s));
}

} // namespace
