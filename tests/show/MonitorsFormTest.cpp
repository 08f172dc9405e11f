#include "TestSupport.h"

#include <QFile>
#include <QGuiApplication>
#include <QPixmap>
#include <QProcess>
#include <QScreen>

namespace {

// The show's log while body runs, line by line.
template <typename F> QStringList LogOf(const QString& folder, F body) {
    const QString path = folder + QStringLiteral("/geometry_log.txt");
    DebugLog::instance().Open(path);
    body();
    DebugLog::instance().SetOff();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
}

using MonitorsForm = ShowFixture;

TEST_F(MonitorsForm, ScreenSizeComesFromTheDesktopsScreens) {
    show->MultiMonitors = true;
    const QStringList log = LogOf(install.path(), [&] { show->GetScreenSize(); });
    const QRect primary = QGuiApplication::primaryScreen()->geometry();
    EXPECT_EQ(QRect(show->FormLeft, show->FormTop, show->FormWidth, show->FormHeight), primary);
    EXPECT_EQ(show->ActiveMonitors, 1);
    EXPECT_TRUE(log.contains(QStringLiteral("Tally of Monitors:")));
    EXPECT_TRUE(log.contains(QStringLiteral("1 active monitors")));
    EXPECT_TRUE(log.contains(QStringLiteral("Multiple Monitors is enabled")));

    show->MultiMonitors = false;
    const QStringList off = LogOf(install.path(), [&] { show->GetScreenSize(); });
    EXPECT_TRUE(off.contains(QStringLiteral("Multiple Monitors is dis-abled")));
    EXPECT_EQ(show->MonitorWidth[0], primary.width());
}

TEST_F(MonitorsForm, GrabbingAMonitorTakesItsPartOfTheShow) {
    show->GetScreenSize();
    show->PrepScreen();
    QPixmap picture;
    show->GrabMonitorArea(0, picture);
    EXPECT_EQ(picture.size(), QSize(show->FormWidth, show->FormHeight));
    show->GrabMonitorArea(1, picture);
    EXPECT_EQ(picture.size(), QSize(show->MonitorWidth[1], show->MonitorHeight[1]));
}

TEST_F(MonitorsForm, NewDimensionsKeepsTheFramesSizeTextAndFlags) {
    show->MonitorWidth[0] = 1024;
    show->MonitorHeight[0] = 768;
    show->NextMonitorSet = 0;
    show->NextFrameSlot = 1;
    const QSize image(1000, 800);
    int w = 0, h = 0;
    bool needResize = false;
    const QStringList log = LogOf(install.path(), [&] {
        show->NewDimensions(image, 1024, 768, false, false, 1, w, h, needResize);
    });
    EXPECT_EQ(QSize(w, h), QSize(960, 768));
    EXPECT_TRUE(needResize);
    EXPECT_FALSE(show->ImageFillsScreen);
    EXPECT_EQ(show->ImageSizeText[1], QStringLiteral("1000 x 800"));
    EXPECT_TRUE(show->ImageSizeText[0].isEmpty());
    EXPECT_TRUE(log.contains(QStringLiteral("Calculating Resized Dimensions :")));

    // A show on its way out does not stop to measure.
    ExitShow = true;
    show->NewDimensions(image, 1024, 768, false, false, 1, w, h, needResize);
    EXPECT_FALSE(needResize);
    ExitShow = false;
}

TEST_F(MonitorsForm, OffsetsKeepToTheBandOnlyWhenTheFrameSpans) {
    show->MultiMonUseMinHeight = true;
    show->MinHeightTop = 40;
    show->MinHeight = 560;
    int x = -1, y = -1;
    show->NextMonitorSet = 0;
    platform::FeedRandom({0.5, 0.5});
    show->GetOffsetsIfSmaller(800, 400, 1400, 600, x, y);
    EXPECT_EQ(QPoint(x, y), QPoint(300, 120));
    show->NextMonitorSet = 1;
    platform::FeedRandom({0.5, 0.5});
    show->GetOffsetsIfSmaller(800, 400, 1400, 600, x, y);
    EXPECT_EQ(QPoint(x, y), QPoint(300, 100));
}

TEST_F(MonitorsForm, MonitorAndLimitsTakeTurnsAndClampThePanorama) {
    monitors::ScreenInfo a, b;
    a.width = b.width = 1024;
    a.height = b.height = 768;
    b.left = 1024;
    a.primary = true;
    static_cast<monitors::MonitorTables&>(*show) =
        monitors::ScreenLayout(monitors::GetMonitorInfo({a, b}), true, false);
    show->MultiMonitors = true;
    show->MultiMonImagePerScreen = true;
    show->Layout = 0;
    int h = 600;
    show->SetMonitorAndLimits(800, h);
    EXPECT_EQ(show->NextMonitorSet, 1);
    EXPECT_EQ(show->CurrentMonitor, 1);
    h = 800;
    show->SetMonitorAndLimits(3000, h);
    EXPECT_EQ(show->NextMonitorSet, 0);
    EXPECT_EQ(show->CurrentMonitor, 2);
    EXPECT_EQ(h, 768);
    EXPECT_EQ(QRect(show->FrameLeft, show->FrameTop, show->FrameWidth, show->FrameHeight),
              QRect(0, 0, 2048, 768));
    h = 600;
    show->SetMonitorAndLimits(800, h);
    EXPECT_EQ(show->NextMonitorSet, 1);
    EXPECT_EQ(show->FrameLeft, 0);
    EXPECT_EQ(show->FrameWidth, 1024);
}

// The screens of the offscreen platform are fixed when the application starts, so two screens
// need a process of their own: this binary again, asked for the test below alone.
constexpr const char* TwoScreensVariable = "TESSAVIEW_TWO_SCREENS";

TEST(MonitorsTwoScreens, ShowSpansBothScreensOfTheDesktop) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString config = Written(
        dir.path() + QStringLiteral("/screens.json"),
        R"({"screens":[)"
        R"({"name":"A","x":0,"y":0,"width":1024,"height":768,"logicalDpi":96,"logicalBpi":96,"dpr":1},)"
        R"({"name":"B","x":-800,"y":100,"width":800,"height":600,"logicalDpi":96,"logicalBpi":96,"dpr":1}]})");

    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=") + config);
    env.insert(QString::fromLatin1(TwoScreensVariable), QStringLiteral("1"));
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--gtest_filter=MonitorsOnTwoScreens.*")});
    ASSERT_TRUE(child.waitForFinished(60000));
    const QString output = QString::fromLocal8Bit(child.readAll());
    EXPECT_EQ(child.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains(QStringLiteral("[  PASSED  ] 1 test"))) << output.toStdString();
}

using MonitorsOnTwoScreens = ShowFixture;

TEST_F(MonitorsOnTwoScreens, FormCoversBothAndTheTablesAreRelativeToIt) {
    if (qEnvironmentVariableIsEmpty(TwoScreensVariable))
        GTEST_SKIP() << "run by MonitorsTwoScreens in a process with two screens";
    ASSERT_EQ(QGuiApplication::screens().size(), 2);
    show->MultiMonitors = true;
    show->MultiMonUseMinHeight = true;
    show->GetScreenSize();
    EXPECT_EQ(show->ActiveMonitors, 2);
    EXPECT_EQ(QRect(show->FormLeft, show->FormTop, show->FormWidth, show->FormHeight),
              QRect(-800, 0, 1824, 768));
    EXPECT_EQ(QRect(show->MonitorLeft[1], show->MonitorTop[1], show->MonitorWidth[1],
                    show->MonitorHeight[1]),
              QRect(800, 0, 1024, 768));
    EXPECT_EQ(QRect(show->MonitorLeft[2], show->MonitorTop[2], show->MonitorWidth[2],
                    show->MonitorHeight[2]),
              QRect(0, 100, 800, 600));
    EXPECT_EQ(show->MinHeightTop, 100);
    EXPECT_EQ(show->MinHeight, 600);
    // The status panel stands on the primary screen.
    EXPECT_EQ(show->CaptionLeft, 800);
    EXPECT_EQ(show->CaptionWidth, 1024);

    show->MultiMonImagePerScreen = true;
    int h = 600;
    show->SetMonitorAndLimits(700, h);
    EXPECT_EQ(show->NextMonitorSet, 1);
    show->SetMonitorAndLimits(700, h);
    EXPECT_EQ(show->NextMonitorSet, 2);
    EXPECT_EQ(QRect(show->FrameLeft, show->FrameTop, show->FrameWidth, show->FrameHeight),
              QRect(0, 100, 800, 600));

    show->MultiMonitors = false;
    show->GetScreenSize();
    EXPECT_EQ(QRect(show->FormLeft, show->FormTop, show->FormWidth, show->FormHeight),
              QRect(0, 0, 1024, 768));
}

} // namespace
