#include "TestSupport.h"

#include "night_sound/NightZones.h"

#include <QGuiApplication>

namespace {

QDateTime At(int h, int m, int s) {
    return QDateTime(QDate(2026, 11, 22), QTime(h, m, s));
}

TEST(DayZones, QuarterHoursOfTheClock) {
    const std::pair<QDateTime, int> cases[] = {
        {At(0, 0, 0), 0},    {At(0, 14, 59), 0},   {At(0, 15, 0), 1},   {At(7, 0, 0), 28},
        {At(6, 59, 59), 27}, {At(23, 44, 59), 94}, {At(23, 45, 0), 95}, {At(23, 59, 59), 95},
    };
    for (const auto& [time, zone] : cases) {
        platform::SetNow(time);
        EXPECT_EQ(night::CurrentDayZone(), zone) << time.toString().toStdString();
    }
    platform::UseSystemClock();
    // Readings a hair outside the day stay in the table.
    EXPECT_EQ(night::DayZoneAt(-0.5), 0);
    EXPECT_EQ(night::DayZoneAt(86400.0), 95);
}

TEST(DayZones, NightSpansAndTheirEdges) {
    // The night zones a start and an end mark, as inclusive ranges.
    const std::tuple<int, int, std::vector<std::pair<int, int>>> cases[] = {
        {10, 20, {{10, 19}}}, {88, 28, {{0, 27}, {88, 96}}}, // through midnight
        {40, 40, {}},         {0, 96, {{0, 95}}},
        {96, 0, {{96, 96}}},  {95, 1, {{0, 0}, {95, 96}}},
    };
    for (const auto& [start, end, nights] : cases) {
        night::ZoneTable zones{};
        night::MarkNightZones(zones, start, end);
        for (int zone = 0; zone < night::kZoneCount; ++zone) {
            bool expected = false;
            for (const auto& [from, to] : nights)
                expected = expected || (zone >= from && zone <= to);
            EXPECT_EQ(zones[static_cast<std::size_t>(zone)], expected)
                << start << " to " << end << ", zone " << zone;
        }
    }

    night::ZoneTable all;
    all.fill(true);
    EXPECT_FALSE(night::NightWanted(false, all, 3));
    EXPECT_TRUE(night::NightWanted(true, all, 3));
    EXPECT_FALSE(night::NightWanted(true, all, night::kZoneCount));
    EXPECT_FALSE(night::NightWanted(true, all, -1));
}

// A show with night mode from 22:00 (zone 88) to 07:00 (zone 28), the monitors to be
// switched off, started at the given time.
class NightShow : public FormsFixture {
protected:
    frmSlideShow* Start(const QDateTime& at, bool nightMode = true) {
        frmConfig* config = frmConfig::instance();
        config->chkNightMode->setChecked(nightMode);
        config->SetNightModeSkyBar(88, 28);
        config->optTurnMonitorOFF->setChecked(true);
        config->chkDebug->setChecked(true);
        platform::SetNow(at);
        show = frmSlideShow::instance();
        show->StartShow();
        return show;
    }
    // Lets the clock run to that moment and gives the show its tick there.
    void TickAt(const QDateTime& at) {
        platform::SetNow(at);
        show->MainTimer_Timer();
    }
    // The last line of the log with that text.
    int LogLine(const QString& text) const { return LogLines(show).lastIndexOf(text); }
    void ExpectNight() const {
        EXPECT_TRUE(show->NightOn);
        EXPECT_FALSE(show->NightFadeBusy);
        EXPECT_EQ(show->MainTimer->Interval(), 60000);
        EXPECT_TRUE(show->MainTimer->Enabled());
        EXPECT_FALSE(show->MonitorsOn);
    }
    void ExpectDay() const {
        EXPECT_FALSE(show->NightOn);
        EXPECT_FALSE(show->NightFadeBusy);
        EXPECT_EQ(show->MainTimer->Interval(), 1000);
        EXPECT_TRUE(show->MonitorsOn);
    }
    frmSlideShow* show = nullptr;
};

TEST_F(NightShow, GoesDarkInANightZoneAndWakesInTheFirstDayZone) {
    Start(At(21, 50, 0));
    ASSERT_TRUE(show->MainTimer->Enabled());
    ASSERT_FALSE(show->NightOn);
    TickAt(At(21, 59, 59));
    ExpectDay();

    TickAt(At(22, 0, 0));
    ExpectNight();
    // Offscreen there are no monitors to switch, and the show says so.
    ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("offscreen"));
    EXPECT_GE(LogLine(QStringLiteral("Turning the monitors off: not on an X display, nothing to "
                                     "switch")),
              0);
    // The night's own fades leave the frame prepared for the morning where it was.
    EXPECT_TRUE(show->NextImageReady);
    EXPECT_EQ(show->ShowList.count(), 1);
    EXPECT_FALSE(show->picZzzz->pixmap().isNull());
    // What is left on the screen is black.
    const QImage screen = show->thePhoto->pixmap().toImage();
    ASSERT_FALSE(screen.isNull());
    EXPECT_EQ(screen.pixel(screen.width() / 2, screen.height() * 2 / 3) & 0xFFFFFFu, 0u);

    // No frame changes through the night, however long past its time.
    const std::int16_t frames = show->FrameCounter;
    TickAt(At(3, 0, 0).addDays(1));
    TickAt(At(6, 59, 59).addDays(1));
    EXPECT_TRUE(show->NightOn);
    EXPECT_EQ(show->FrameCounter, frames);

    TickAt(At(7, 0, 0).addDays(1));
    ExpectDay();
    EXPECT_EQ(show->FrameCounter, frames + 1);
    EXPECT_TRUE(show->MainTimer->Enabled());
    // The monitors come on before the morning's first change.
    const int on = LogLine("Turning the monitors on: not on an X display, nothing to switch");
    EXPECT_GE(on, 0);
    EXPECT_LT(on, LogLine(QStringLiteral("CHANGE PHOTOS /\\/\\/\\/\\/\\/\\/\\ ")));
}

TEST_F(NightShow, AShowStartedAtNightPreparesItsFirstFrameAfterTheFade) {
    Start(At(23, 30, 0));
    ExpectNight();
    EXPECT_TRUE(show->NextImageReady);
    EXPECT_FALSE(show->StartingUp);
    const int fade = LogLine(QStringLiteral("FadePanelToNight ..."));
    const int prep = LogLine(QStringLiteral("Preparing next frame "
                                            "====================================================="
                                            "================"));
    ASSERT_GE(fade, 0);
    EXPECT_GT(prep, fade);
    EXPECT_EQ(LogLine(QStringLiteral("CHANGE PHOTOS /\\/\\/\\/\\/\\/\\/\\ ")), -1);
    // The frame waits for the morning.
    const std::int16_t frames = show->FrameCounter;
    TickAt(At(23, 45, 0));
    EXPECT_EQ(show->FrameCounter, frames);
    EXPECT_TRUE(show->NightOn);
}

// "N" goes against the schedule and sets the override, which the schedule never clears; the
// next "N" clears it and goes back.
TEST_F(NightShow, TheNKeyOverridesTheScheduleUntilPressedAgain) {
    for (const auto& [name, nightMode, start] :
         {std::tuple{"night mode off, day", false, At(12, 0, 0)},
          std::tuple{"night zone", true, At(23, 0, 0)}}) {
        SCOPED_TRACE(name);
        Start(start, nightMode);
        const bool scheduledNight = show->NightOn;

        show->ToggleNightScreen();
        EXPECT_TRUE(show->NightOverride);
        EXPECT_NE(show->NightOn, scheduledNight);
        // The schedule does not take it back, tick after tick.
        TickAt(start.addSecs(60));
        TickAt(start.addSecs(120));
        EXPECT_TRUE(show->NightOverride);
        EXPECT_NE(show->NightOn, scheduledNight);

        // Pressed during a fade, it is ignored.
        show->NightFadeBusy = true;
        show->ToggleNightScreen();
        EXPECT_TRUE(show->NightOverride);
        show->NightFadeBusy = false;

        show->ToggleNightScreen();
        EXPECT_FALSE(show->NightOverride);
        EXPECT_EQ(show->NightOn, scheduledNight);
        EXPECT_EQ(show->MainTimer->Interval(), scheduledNight ? 60000 : 1000);

        ReloadConfig();
    }
}

} // namespace
