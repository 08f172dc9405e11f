#include "config/ConfigGeometry.h"

#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <vector>

namespace {

std::vector<int> Steps(int from, int to) {
    std::vector<int> steps;
    int height = from;
    while (height != to && steps.size() < 100) {
        const int step = PanelAnimationStep(height, to);
        steps.push_back(step);
        height += step;
    }
    return steps;
}

} // namespace

TEST(ConfigGeometry, WindowHeightsFollowTheScreenTable) {
    const std::pair<int, ConfigHeights> table[] = {
        {400, {480, 520}}, {480, {480, 520}},  {481, {509, 600}},  {600, {509, 600}},
        {601, {351, 501}}, {1023, {773, 923}}, {1024, {674, 824}}, {1200, {850, 1000}}};
    for (const auto& [screen, want] : table) {
        const ConfigHeights got = ConfigFormHeights(screen);
        EXPECT_EQ(got.collapsed, want.collapsed) << screen;
        EXPECT_EQ(got.expanded, want.expanded) << screen;
    }
}

TEST(ConfigGeometry, PanelsOpenByHalvingAndCloseByTheMirror) {
    EXPECT_EQ(Steps(25, 200), (std::vector<int>{87, 44, 22, 11, 5, 4, 2}));
    EXPECT_EQ(Steps(200, 25), (std::vector<int>{-87, -44, -22, -11, -5, -4, -2}));
    // Short distances move by at least 4, but never past the target.
    EXPECT_EQ(Steps(25, 28), (std::vector<int>{3}));
    EXPECT_EQ(Steps(25, 33), (std::vector<int>{4, 4}));
    EXPECT_EQ(PanelAnimationStep(25, 25), 0);
}

TEST(ConfigGeometry, SliderKnobStaysOnItsTrack) {
    // Track at 10, 150 wide: the knob runs from 10 to 148.
    for (auto [percent, left] : {std::pair{0.0f, 10},
                                 {100.0f, 148},
                                 {50.0f, 79},
                                 {33.3f, 55},
                                 {250.0f, 148},
                                 {-20.0f, 10}})
        EXPECT_EQ(SliderKnobPosition(percent, 10, 150), left) << percent;
    for (auto [left, percent] : {std::pair{148, 100}, {400, 100}, {79, 50}})
        EXPECT_EQ(SliderPercentAt(left, 10, 150), percent) << left;
}

TEST(ConfigGeometry, SkyTabsSpanTheBarAtTheirCentres) {
    // Bar at 7, 384 wide, tabs 14 wide: zone 0 centres on 7, zone 96 on 391.
    for (auto [zone, left] : {std::pair{0, 0}, {96, 384}, {28, 112}})
        EXPECT_EQ(SkyTabPosition(zone, 7, 384, 14), left) << zone;
    // Half a zone goes to the even one (2 and 6 are half a zone from 0 and 2).
    for (auto [left, zone] : {std::pair{112, 28}, {900, 96}, {-50, 0}, {2, 0}, {10, 2}, {6, 2}})
        EXPECT_EQ(SkyZoneAt(left, 7, 384, 14), zone) << left;
}

TEST(ConfigGeometry, NightShadingWrapsPastMidnight) {
    const int start = SkyTabPosition(88, 7, 384, 14);
    const int end = SkyTabPosition(28, 7, 384, 14);
    auto wrap = SkyMaskSpans(start, end, 7, 384, 14);
    ASSERT_TRUE(wrap[0].visible && wrap[1].visible);
    EXPECT_EQ(wrap[0].left, 7 + 88 * 4);
    EXPECT_EQ(wrap[0].left + wrap[0].width, 7 + 384);
    EXPECT_EQ(wrap[1].left, 7);
    EXPECT_EQ(wrap[1].width, 28 * 4);

    auto inside = SkyMaskSpans(end, start, 7, 384, 14);
    EXPECT_TRUE(inside[0].visible);
    EXPECT_FALSE(inside[1].visible);
    EXPECT_EQ(inside[0].width, 60 * 4);

    auto same = SkyMaskSpans(start, start, 7, 384, 14);
    EXPECT_EQ(same[0].width, 0);
    EXPECT_FALSE(same[1].visible);
}

// The changed layout and unchecked ones keep their shares exactly; the others are walked a tenth
// at a time in turn until the whole is 100. A single checked layout takes everything.
TEST(ConfigGeometry, LayoutBalanceHandsSharesRoundTheCheckedLayouts) {
    struct Row {
        std::array<float, 3> percent;
        std::array<bool, 3> checked;
        int changed;
        std::array<float, 3> balanced;
    };
    const Row rows[] = {
        {{30, 50, 0}, {true, true, false}, 0, {30, 70, 0}},
        // A layout cleared to 0 gives its share to the other two.
        {{40, 30, 0}, {true, true, false}, 2, {55, 45, 0}},
        {{80, 60, 10}, {true, true, true}, 0, {80, 20, 0}},
        {{35, 20, 45}, {false, true, false}, 1, {0, 100, 0}},
        {{35, 20, 45}, {false, false, false}, 1, {35, 20, 45}},
    };
    for (const Row& row : rows) {
        std::array<float, 3> percent = row.percent;
        BalanceLayoutPercents(percent, row.checked, row.changed);
        for (std::size_t i = 0; i < 3; ++i) {
            const bool walked = row.checked[i] && static_cast<int>(i) != row.changed;
            EXPECT_NEAR(percent[i], row.balanced[i], walked ? 0.15 : 0.0)
                << row.percent[0] << "," << row.percent[1] << "," << row.percent[2] << " [" << i
                << "]";
        }
    }
}

// Shares read from a hand-edited preferences file: each walk must end, with the shares that may
// move inside 0..100 and those of unchecked layouts untouched. 1e30 once hung the settings window
// at start; so did unchecked layouts alone holding more than 100, where nothing may move.
TEST(ConfigGeometry, LayoutBalanceEndsForAnyShareAFileCanHold) {
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    struct Row {
        std::array<float, 3> percent;
        std::array<bool, 3> checked;
        int changed;
    };
    for (const Row& row :
         {Row{{1e30f, 0, 0}, {true, true, false}, 2}, Row{{0, inf, 0}, {true, true, true}, 1},
          Row{{-1e30f, 50, 0}, {true, true, false}, 1}, Row{{nan, 20, 0}, {true, true, false}, 1},
          Row{{3e38f, 3e38f, 3e38f}, {true, true, true}, 0},
          Row{{0, 150, 50}, {true, false, true}, 2}}) {
        std::array<float, 3> percent = row.percent;
        BalanceLayoutPercents(percent, row.checked, row.changed);
        for (std::size_t i = 0; i < 3; ++i) {
            if (!row.checked[i]) {
                EXPECT_EQ(percent[i], row.percent[i]) << i;
            } else if (static_cast<int>(i) != row.changed) {
                EXPECT_GE(percent[i], -0.1f) << i;
                EXPECT_LE(percent[i], 100.1f) << i;
            }
        }
    }
}
