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
    EXPECT_EQ(SliderKnobPosition(0, 10, 150), 10);
    EXPECT_EQ(SliderKnobPosition(100, 10, 150), 148);
    EXPECT_EQ(SliderKnobPosition(50, 10, 150), 79);
    EXPECT_EQ(SliderKnobPosition(33.3f, 10, 150), 55);
    EXPECT_EQ(SliderKnobPosition(250, 10, 150), 148);
    EXPECT_EQ(SliderKnobPosition(-20, 10, 150), 10);
    EXPECT_EQ(SliderPercentAt(148, 10, 150), 100);
    EXPECT_EQ(SliderPercentAt(400, 10, 150), 100);
    EXPECT_EQ(SliderPercentAt(79, 10, 150), 50);
}

TEST(ConfigGeometry, SkyTabsSpanTheBarAtTheirCentres) {
    // Bar at 7, 384 wide, tabs 14 wide: zone 0 centres on 7, zone 96 on 391.
    EXPECT_EQ(SkyTabPosition(0, 7, 384, 14), 0);
    EXPECT_EQ(SkyTabPosition(96, 7, 384, 14), 384);
    EXPECT_EQ(SkyTabPosition(28, 7, 384, 14), 112);
    EXPECT_EQ(SkyZoneAt(112, 7, 384, 14), 28);
    EXPECT_EQ(SkyZoneAt(900, 7, 384, 14), 96);
    EXPECT_EQ(SkyZoneAt(-50, 7, 384, 14), 0);
    // Half a zone goes to the even one.
    EXPECT_EQ(SkyZoneAt(2, 7, 384, 14), 0);
    EXPECT_EQ(SkyZoneAt(10, 7, 384, 14), 2);
    EXPECT_EQ(SkyZoneAt(6, 7, 384, 14), 2);
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

TEST(ConfigGeometry, LayoutBalanceHandsSharesRoundTheCheckedLayouts) {
    auto sum = [](const std::array<float, 3>& p) { return p[0] + p[1] + p[2]; };

    std::array<float, 3> two{30, 50, 0};
    BalanceLayoutPercents(two, {true, true, false}, 0);
    EXPECT_FLOAT_EQ(two[0], 30);
    EXPECT_NEAR(two[1], 70, 0.15);
    EXPECT_EQ(two[2], 0);

    // A layout cleared to 0 gives its share to the other two, a tenth at a time in turn.
    std::array<float, 3> three{40, 30, 0};
    BalanceLayoutPercents(three, {true, true, false}, 2);
    EXPECT_NEAR(three[0], 55, 0.15);
    EXPECT_NEAR(three[1], 45, 0.15);
    EXPECT_NEAR(sum(three), 100, 0.15);

    std::array<float, 3> over{80, 60, 10};
    BalanceLayoutPercents(over, {true, true, true}, 0);
    EXPECT_FLOAT_EQ(over[0], 80);
    EXPECT_NEAR(sum(over), 100, 0.15);
    EXPECT_GE(over[1], 0);
    EXPECT_GE(over[2], -0.1);

    std::array<float, 3> one{35, 20, 45};
    BalanceLayoutPercents(one, {false, true, false}, 1);
    EXPECT_EQ(one, (std::array<float, 3>{0, 100, 0}));

    std::array<float, 3> none{35, 20, 45};
    BalanceLayoutPercents(none, {false, false, false}, 1);
    EXPECT_EQ(none, (std::array<float, 3>{35, 20, 45}));
}

TEST(ConfigGeometry, LayoutBalanceEndsForAnyShareAFileCanHold) {
    // Shares read from a hand-edited preferences file: each walk must end, with the shares that
    // may move inside 0..100. 1e30 once hung the settings window at start.
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
          Row{{3e38f, 3e38f, 3e38f}, {true, true, true}, 0}}) {
        std::array<float, 3> percent = row.percent;
        BalanceLayoutPercents(percent, row.checked, row.changed);
        for (int i = 0; i < 3; ++i) {
            if (!row.checked[static_cast<std::size_t>(i)] || i == row.changed) continue;
            EXPECT_GE(percent[static_cast<std::size_t>(i)], -0.1f) << i;
            EXPECT_LE(percent[static_cast<std::size_t>(i)], 100.1f) << i;
        }
    }
}

TEST(ConfigGeometry, LayoutBalanceEndsWhenNoLayoutCanMove) {
    // Only unchecked layouts hold more than 100: nothing may move, and the walk must end.
    std::array<float, 3> stuck{0, 150, 50};
    BalanceLayoutPercents(stuck, {true, false, true}, 2);
    EXPECT_EQ(stuck[1], 150);
    EXPECT_LE(stuck[0], 0.0f);
}
