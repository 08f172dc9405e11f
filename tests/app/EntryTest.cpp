#include "app/frmPreview.h"
#include "app/modMain.h"

#include <gtest/gtest.h>

namespace {

// Only the first two characters of the trimmed, lower-cased line count; a switch needs its slash.
TEST(CommandLine, TheSwitchChoosesTheMode) {
    using enum RunMode;
    const std::pair<const char*, RunMode> rows[] = {
        // clang-format off
        {"/s", Saver}, {"  /S  ", Saver}, {"/saver please", Saver}, {"/P 1234", Preview},
        {"/c", Config}, {"/c:4321", Config}, {"", Config}, {"   ", Config}, {"/a", Nothing},
        {" /A ", Nothing}, {"/x", Nothing}, {"s", Nothing},
        // clang-format on
    };
    for (auto [text, mode] : rows)
        EXPECT_EQ(ParseCommandLine(QString::fromLatin1(text)).mode, mode) << '"' << text << '"';
    EXPECT_EQ(ParseCommandLine(QStringLiteral(" /P 12 ")).argument, QStringLiteral("/p 12"));
}

// X11 window ids go well past 16 bits; only the longest numeric tail counts.
TEST(CommandLine, PreviewHandleIsTheNumericTail) {
    const std::pair<const char*, std::int64_t> rows[] = {
        // clang-format off
        {"/p 1234", 1234}, {"/p:1234", 1234}, {"/p1234", 1234}, {"/p 0", 0}, {"/p", 0},
        {"/p:", 0}, {"/p abc", 0}, {"/p 62914563", 62914563}, {"/p 12x34", 34},
        // clang-format on
    };
    for (auto [text, handle] : rows)
        EXPECT_EQ(PreviewHandleFromArgument(QString::fromLatin1(text)), handle) << text;
}

TEST(SecondInstance, RefusedOnlyWhenAnotherRunsAndNoDisplayDialogIsOpen) {
    EXPECT_FALSE(SecondInstanceRefused(false, 1));
    EXPECT_TRUE(SecondInstanceRefused(false, 2));
    EXPECT_FALSE(SecondInstanceRefused(true, 2));
    EXPECT_FALSE(SecondInstanceRefused(false, 0));
}

// Ninety percent of the pane's width, centred even where it overflows a short pane, in the
// proportions of the control as it stands; a control shrunk to nothing falls back on the
// picture's own proportions instead of dividing by zero.
TEST(PreviewLogo, NinetyPercentOfTheWidthInTheControlsProportions) {
    const struct {
        QSize pane, control;
        QRect logo;
    } rows[] = {
        {{152, 112}, {695, 676}, {8, -10, 137, 133}}, {{100, 400}, {695, 676}, {5, 156, 90, 88}},
        {{200, 200}, {100, 50}, {10, 55, 180, 90}},   {{300, 200}, {0, 0}, {15, -32, 270, 263}},
        {{0, 0}, {695, 676}, {0, 0, 0, 0}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FitLogo(row.pane, row.control), row.logo) << row.pane.width();
    // Each resize starts from the control as the last one left it, without drifting.
    QSize control(695, 676);
    for (int w : {152, 640, 33, 1920, 200, 152})
        control = FitLogo(QSize(w, w * 3 / 4), control).size();
    EXPECT_NEAR(static_cast<double>(control.width()) / control.height(), 695.0 / 676.0, 0.03);
}

} // namespace
