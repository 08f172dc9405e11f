#include "show/MonitorLayout.h"

#include <gtest/gtest.h>

namespace {

using monitors::MonitorTables;
using monitors::ScreenInfo;

ScreenInfo Screen(int left, int top, int width, int height, bool primary = false) {
    ScreenInfo s;
    s.left = left;
    s.top = top;
    s.width = width;
    s.height = height;
    s.primary = primary;
    s.depth = 24;
    s.refresh = 60.0;
    return s;
}

MonitorTables Layout(const std::vector<ScreenInfo>& screens, bool multi, bool minHeight = false) {
    return monitors::ScreenLayout(monitors::GetMonitorInfo(screens), multi, minHeight);
}

struct Rect {
    int l, t, w, h;
    bool operator==(const Rect&) const = default;
};
std::ostream& operator<<(std::ostream& os, const Rect& r) {
    return os << r.l << "," << r.t << " " << r.w << "x" << r.h;
}
Rect Slot(const MonitorTables& t, int i) {
    const auto s = static_cast<std::size_t>(i);
    return {t.MonitorLeft[s], t.MonitorTop[s], t.MonitorWidth[s], t.MonitorHeight[s]};
}

TEST(ScreenLayout, DerivesTheTables) {
    struct Row {
        const char* what;
        std::vector<ScreenInfo> screens;
        bool multi, minHeight;
        Rect form, slot0, slot1, slot2, caption;
        int active, primary, bandTop, bandHeight;
    };
    // clang-format off
    const Row rows[] = {
        {"one monitor with multi on", {Screen(0, 0, 1920, 1080, true)}, true, false,
         {0, 0, 1920, 1080}, {0, 0, 1920, 1080}, {0, 0, 1920, 1080}, {0, 0, 0, 0}, {0, 0, 1920, 1080}, 1, 1, 0, 0},
        {"a monitor left of the primary", {Screen(0, 0, 1920, 1080, true), Screen(-1280, 100, 1280, 1024)}, true, false,
         {-1280, 0, 3200, 1124}, {0, 0, 3200, 1124}, {1280, 0, 1920, 1080}, {0, 100, 1280, 1024}, {1280, 0, 1920, 1080}, 2, 1, 0, 0},
        {"the primary listed second", {Screen(0, 0, 1024, 768), Screen(1024, 0, 1280, 1024, true)}, true, false,
         {0, 0, 2304, 1024}, {0, 0, 2304, 1024}, {0, 0, 1024, 768}, {1024, 0, 1280, 1024}, {1024, 0, 1280, 1024}, 2, 2, 0, 0},
        {"different heights share a band", {Screen(0, 0, 1024, 768, true), Screen(1024, 100, 800, 600)}, true, true,
         {0, 0, 1824, 768}, {0, 0, 1824, 768}, {0, 0, 1024, 768}, {1024, 100, 800, 600}, {0, 0, 1024, 768}, 2, 1, 100, 600},
        {"band above the desktop's top", {Screen(0, 50, 1024, 768, true), Screen(1024, 0, 800, 1200)}, true, true,
         {0, 0, 1824, 1200}, {0, 0, 1824, 1200}, {0, 50, 1024, 768}, {1024, 0, 800, 1200}, {0, 50, 1024, 768}, 2, 1, 50, 768},
        {"multi off takes the primary alone", {Screen(0, 0, 1024, 768, true), Screen(1024, 0, 800, 600)}, false, true,
         {0, 0, 1024, 768}, {0, 0, 1024, 768}, {0, 0, 1024, 768}, {1024, 0, 800, 600}, {0, 0, 1024, 768}, 2, 1, 0, 768},
        {"multi off with the primary on the right", {Screen(0, 0, 1024, 768), Screen(1024, 0, 800, 600, true)}, false, false,
         {1024, 0, 800, 600}, {0, 0, 800, 600}, {0, 0, 1024, 768}, {1024, 0, 800, 600}, {0, 0, 800, 600}, 2, 2, 0, 600},
        {"no screens leave the form without a size", {}, true, true,
         {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, {0, 0, 0, 0}, 0, 0, 0, 0},
    };
    // clang-format on
    for (const Row& r : rows) {
        SCOPED_TRACE(r.what);
        const MonitorTables t = Layout(r.screens, r.multi, r.minHeight);
        EXPECT_EQ((Rect{t.FormLeft, t.FormTop, t.FormWidth, t.FormHeight}), r.form);
        EXPECT_EQ(Slot(t, 0), r.slot0);
        EXPECT_EQ(Slot(t, 1), r.slot1);
        EXPECT_EQ(Slot(t, 2), r.slot2);
        EXPECT_EQ((Rect{t.CaptionLeft, t.CaptionTop, t.CaptionWidth, t.CaptionHeight}), r.caption);
        EXPECT_EQ(t.ActiveMonitors, r.active);
        EXPECT_EQ(t.PrimaryMonitor, r.primary);
        EXPECT_EQ(t.MinHeightTop, r.bandTop);
        EXPECT_EQ(t.MinHeight, r.bandHeight);
        for (int i = 1; i <= monitors::MaxMonitors; ++i) {
            EXPECT_GE(t.MonitorLeft[static_cast<std::size_t>(i)], 0) << "slot " << i;
            EXPECT_GE(t.MonitorTop[static_cast<std::size_t>(i)], 0) << "slot " << i;
        }
    }
}

TEST(ScreenLayout, UsesAtMostFourScreens) {
    std::vector<ScreenInfo> screens;
    for (int i = 0; i < 6; ++i)
        screens.push_back(Screen(i * 100, 0, 100, 100, i == 0));
    const MonitorTables t = Layout(screens, true);
    EXPECT_EQ(t.ActiveMonitors, 4);
    EXPECT_EQ(t.FormWidth, 400);
    EXPECT_EQ(Slot(t, 4), (Rect{300, 0, 100, 100}));
}

TEST(ScreenLayout, ReportsEachScreenOnALine) {
    ScreenInfo a = Screen(0, 0, 1024, 768, true);
    a.name = QStringLiteral("HDMI-1");
    a.model = QStringLiteral("Acme View 19");
    ScreenInfo b = Screen(1024, 0, 800, 600);
    b.name = QStringLiteral("DP-2");
    b.depth = 32;
    b.refresh = 59.95;
    ScreenInfo c = Screen(1824, 0, 640, 480);
    const monitors::MonitorInfo info = monitors::GetMonitorInfo({a, b, c});
    EXPECT_EQ(
        info.report,
        QStringLiteral("1. HDMI-1 on Acme View 19 primary, 0,0 - 1024 x 768 @ 24-bit - 60 Hz\n"
                       "2. DP-2 on DP-2 1024,0 - 800 x 600 @ 32-bit - 59.95 Hz\n"
                       "3. Default Monitor on Default Monitor 1824,0 - 640 x 480 @ 24-bit - "
                       "60 Hz"));
    EXPECT_EQ(info.primary, 1);
    EXPECT_EQ(info.minLeft, 0);
    EXPECT_EQ(info.maxRight, 2464);
}

TEST(TestMode, ModeZeroChangesNothingAndModeFourHasTheBand) {
    const MonitorTables found = Layout({Screen(0, 0, 1920, 1080, true)}, true);
    MonitorTables t = found;
    monitors::TestMode(t, 0);
    EXPECT_EQ(Slot(t, 0), Slot(found, 0));
    EXPECT_EQ(t.FormWidth, 1920);
    EXPECT_EQ(t.ActiveMonitors, 1);

    monitors::TestMode(t, 4);
    EXPECT_EQ((Rect{0, 0, t.FormWidth, t.FormHeight}), (Rect{0, 0, 1400, 600}));
    EXPECT_EQ(Slot(t, 1), (Rect{0, 0, 800, 600}));
    EXPECT_EQ(Slot(t, 2), (Rect{800, 40, 600, 560}));
    EXPECT_EQ(t.MinHeightTop, 40);
    EXPECT_EQ(t.MinHeight, 560);
    EXPECT_EQ(t.ActiveMonitors, 2);

    monitors::TestMode(t, 2);
    EXPECT_EQ(Slot(t, 0), (Rect{0, 0, 1400, 525}));
    EXPECT_EQ(Slot(t, 2), (Rect{700, 0, 700, 525}));
    EXPECT_FALSE(t.MonitorEnabled[3]);

    monitors::TestMode(t, 3);
    EXPECT_EQ(t.ActiveMonitors, 3);
    EXPECT_EQ(Slot(t, 3).l + Slot(t, 3).w, 1400);
    EXPECT_EQ(Slot(t, 1).h, 350);
}

// Halves go to the even neighbour: 1024 + 300.5 and 100 + 450.9, 100 + 100.2 for 199 x 99.
TEST(Overlays, StandCentredOnTheirMonitor) {
    const MonitorTables t =
        Layout({Screen(0, 0, 1024, 768, true), Screen(1024, 100, 800, 600)}, true);
    struct Row {
        int monitor, w, h;
        QPoint paused, jump;
    };
    for (const Row& r :
         {Row{2, 200, 100, {1324, 550}, {1324, 200}}, Row{2, 199, 99, {1324, 551}, {1324, 200}},
          Row{1, 100, 50, {462, 646}, {462, 144}}}) {
        SCOPED_TRACE(testing::Message() << r.monitor << ": " << r.w << " x " << r.h);
        EXPECT_EQ(monitors::PausedOverlayPlace(t, r.monitor, QSize(r.w, r.h)), r.paused);
        EXPECT_EQ(monitors::JumpOverlayPlace(t, r.monitor, QSize(r.w, r.h)), r.jump);
    }
}

Rect Frame(const monitors::MonitorChoice& c) {
    return {c.frameLeft, c.frameTop, c.frameWidth, c.frameHeight};
}

monitors::MonitorChoiceRequest PerScreen(std::int16_t current, int w, int h,
                                         std::int16_t layout = monitors::NormalLayout) {
    monitors::MonitorChoiceRequest r;
    r.currentMonitor = current;
    r.multiMonitors = true;
    r.imagePerScreen = true;
    r.layout = layout;
    r.width = w;
    r.height = h;
    return r;
}

TEST(ChooseMonitorSet, TurnsGoOverTheEnabledMonitorsOnly) {
    MonitorTables t = Layout(
        {Screen(0, 0, 1024, 768, true), Screen(1024, 0, 1024, 768), Screen(2048, 0, 800, 600)},
        true);
    t.MonitorEnabled[2] = false;
    std::int16_t current = 0;
    std::vector<int> sets;
    for (int i = 0; i < 4; ++i) {
        const monitors::MonitorChoice c =
            monitors::ChooseMonitorSet(t, PerScreen(current, 800, 600));
        current = c.currentMonitor;
        sets.push_back(c.monitorSet);
    }
    EXPECT_EQ(sets, (std::vector<int>{1, 3, 1, 3}));
    const monitors::MonitorChoice c = monitors::ChooseMonitorSet(t, PerScreen(1, 800, 600));
    EXPECT_EQ(Frame(c), (Rect{2048, 0, 800, 600}));
    EXPECT_TRUE(c.log.contains(QStringLiteral(" ... the next monitor is  3")));
    // From the last slot the turn wraps to the first enabled; a lone monitor follows itself.
    EXPECT_EQ(monitors::NextMonitorInTurn(4, {false, false, true, false, true}), 2);
    EXPECT_EQ(monitors::NextMonitorInTurn(1, {false, true, false, false, false}), 1);
}

// A panorama spans both monitors unless the layout keeps it to one; an ordinary image always
// takes its turn.
TEST(ChooseMonitorSet, TheLayoutDecidesWhereAPanoramaGoes) {
    const MonitorTables t =
        Layout({Screen(0, 0, 1024, 768, true), Screen(1024, 0, 1024, 768)}, true);
    struct Row {
        const char* what;
        std::int16_t layout;
        bool stopStack;
        int expSet;
    };
    for (const Row& r : {Row{"normal", monitors::NormalLayout, true, 0},
                         Row{"stack that stops", monitors::StackLayout, true, 0},
                         Row{"stack that goes on", monitors::StackLayout, false, 2},
                         Row{"four up", monitors::FourUpLayout, true, 2}}) {
        SCOPED_TRACE(r.what);
        monitors::MonitorChoiceRequest q = PerScreen(1, 3000, 800, r.layout);
        q.stopStackIfPano = r.stopStack;
        EXPECT_EQ(monitors::ChooseMonitorSet(t, q).monitorSet, r.expSet);
        q.width = 800;
        q.height = 600;
        EXPECT_EQ(monitors::ChooseMonitorSet(t, q).monitorSet, 2);
    }
}

TEST(ChooseMonitorSet, WithoutTurnsTheFrameIsTheWholeSurfaceOrItsBand) {
    const MonitorTables t =
        Layout({Screen(0, 0, 1024, 768, true), Screen(1024, 100, 800, 600)}, true, true);
    monitors::MonitorChoiceRequest q = PerScreen(2, 800, 600);
    q.imagePerScreen = false;
    monitors::MonitorChoice c = monitors::ChooseMonitorSet(t, q);
    EXPECT_EQ(c.monitorSet, 0);
    EXPECT_EQ(c.currentMonitor, 2);
    EXPECT_EQ(Frame(c), (Rect{0, 0, 1824, 768}));
    EXPECT_TRUE(c.log.contains(QStringLiteral("MultiMonitors enabled ... ")));

    q.useMinHeight = true;
    c = monitors::ChooseMonitorSet(t, q);
    EXPECT_EQ(Frame(c), (Rect{0, 100, 1824, 600}));

    q.multiMonitors = false;
    c = monitors::ChooseMonitorSet(t, q);
    EXPECT_EQ(c.monitorSet, 0);
    EXPECT_FALSE(c.log.contains(QStringLiteral("MultiMonitors enabled ... ")));
}

} // namespace
