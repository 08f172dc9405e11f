#include "app/frmPreview.h"
#include "app/modMain.h"

#include <gtest/gtest.h>

namespace {

TEST(CommandLine, OnlyTheFirstTwoCharactersOfTheTrimmedLowerCasedLineCount) {
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/s")).mode, RunMode::Saver);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("  /S  ")).mode, RunMode::Saver);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/saver please")).mode, RunMode::Saver);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/P 1234")).mode, RunMode::Preview);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/c")).mode, RunMode::Config);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/c:4321")).mode, RunMode::Config);
    EXPECT_EQ(ParseCommandLine(QString()).mode, RunMode::Config);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("   ")).mode, RunMode::Config);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/a")).mode, RunMode::Nothing);
    EXPECT_EQ(ParseCommandLine(QStringLiteral(" /A ")).mode, RunMode::Nothing);
    EXPECT_EQ(ParseCommandLine(QStringLiteral("/x")).mode, RunMode::Nothing);
    // A switch needs its slash.
    EXPECT_EQ(ParseCommandLine(QStringLiteral("s")).mode, RunMode::Nothing);
    EXPECT_EQ(ParseCommandLine(QStringLiteral(" /P 12 ")).argument, QStringLiteral("/p 12"));
}

TEST(CommandLine, PreviewHandleIsTheNumericTail) {
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p 1234")), 1234);
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p:1234")), 1234);
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p1234")), 1234);
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p 0")), 0);
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p")), 0);
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p:")), 0);
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p abc")), 0);
    // X11 window ids go well past 16 bits.
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p 62914563")), 62914563);
    // Only the tail counts: the longest numeric tail of "12x34" is "34".
    EXPECT_EQ(PreviewHandleFromArgument(QStringLiteral("/p 12x34")), 34);
}

TEST(SecondInstance, RefusedOnlyWhenAnotherRunsAndNoDisplayDialogIsOpen) {
    EXPECT_FALSE(SecondInstanceRefused(false, 1));
    EXPECT_TRUE(SecondInstanceRefused(false, 2));
    EXPECT_TRUE(SecondInstanceRefused(false, 5));
    EXPECT_FALSE(SecondInstanceRefused(true, 2));
    EXPECT_FALSE(SecondInstanceRefused(false, 0));
}

TEST(PreviewLogo, TakesNinetyPercentOfTheWidthAndKeepsItsProportions) {
    const QSize logo(695, 676);
    QRect r = FitLogo(QSize(152, 112), logo);
    EXPECT_EQ(r.width(), 137); // 136.8 rounded
    EXPECT_EQ(r.height(), 133);
    EXPECT_EQ(r.left(), 8);
    EXPECT_EQ(r.top(), -10); // taller than the pane, centred all the same
}

TEST(PreviewLogo, APaneTallerThanWideStillGetsNinetyPercentOfItsWidth) {
    QRect r = FitLogo(QSize(100, 400), QSize(695, 676));
    EXPECT_EQ(r.width(), 90);
    EXPECT_EQ(r.height(), 88);
    EXPECT_EQ(r.left(), 5);
    EXPECT_EQ(r.top(), 156);
}

TEST(PreviewLogo, ProportionsComeFromTheControlAsItStands) {
    // A control already squeezed to 2:1 stays 2:1.
    QRect r = FitLogo(QSize(200, 200), QSize(100, 50));
    EXPECT_EQ(r.width(), 180);
    EXPECT_EQ(r.height(), 90);
    // One shrunk to nothing falls back on the picture's own proportions instead of dividing by
    // zero.
    QRect z = FitLogo(QSize(300, 200), QSize(0, 0));
    EXPECT_EQ(z.width(), 270);
    EXPECT_EQ(z.height(), 263);
    QRect empty = FitLogo(QSize(0, 0), QSize(695, 676));
    EXPECT_EQ(empty.width(), 0);
    EXPECT_EQ(empty.height(), 0);
}

TEST(PreviewLogo, RepeatedResizesDoNotDistortTheLogo) {
    QSize control(695, 676);
    for (int w : {152, 640, 33, 1920, 200, 152}) {
        control = FitLogo(QSize(w, w * 3 / 4), control).size();
    }
    const double aspect = static_cast<double>(control.width()) / control.height();
    EXPECT_NEAR(aspect, 695.0 / 676.0, 0.03);
}

} // namespace
