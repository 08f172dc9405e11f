#include "TestSupport.h"

#include <QElapsedTimer>
#include <functional>

namespace {

// A negative interval is what the 16-bit sum gives once 23 * 1000 + 10000 no longer fits; the
// timer refuses it and keeps the interval it had.
TEST(WatchdogInterval, FollowsTheImageIntervalWithSixteenBitWrap) {
    // clang-format off
    const std::pair<std::int16_t, int> rows[] = {
        {0, 10000}, {10, 20000}, {22, 32000}, {23, -1}, {32, -1}, {50, -1}, {51, 60000},
        {3000, 60000}};
    // clang-format on
    for (auto [interval, expected] : rows) {
        const int watchdog = LongProcessIntervalFor(interval);
        EXPECT_EQ(watchdog < 0 ? -1 : watchdog, expected) << interval;
    }
}

TEST(FrameCounter, FallsBackTo999AfterPassing9999) {
    for (auto [before, after] : {std::pair{0, 1}, {9998, 9999}, {9999, 999}, {999, 1000}})
        EXPECT_EQ(NextFrameCounter(static_cast<std::int16_t>(before)), after) << before;
}

TEST(VbTimerSemantics, RefusesNonPositiveIntervalsAndKeepsTheOld) {
    VbTimer t(20000);
    EXPECT_TRUE(t.setInterval(15000));
    EXPECT_FALSE(t.setInterval(0));
    EXPECT_FALSE(t.setInterval(-5536));
    EXPECT_EQ(t.Interval(), 15000);
    EXPECT_FALSE(t.Enabled());
}

TEST(VbTimerSemantics, EnablingARunningTimerDoesNotRestartIt) {
    VbTimer t(200);
    int fired = 0;
    t.setHandler([&] { ++fired; });
    t.setEnabled(true);
    QElapsedTimer clock;
    clock.start();
    // Asked again and again, as every pointer move of a stopping show does.
    while (fired == 0 && clock.elapsed() < 5000) {
        t.setEnabled(true);
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    EXPECT_EQ(fired, 1);
}

class ShowCycle : public FormsFixture {
protected:
    // A show started afresh, with a fresh configuration window behind it.
    frmSlideShow* StartFresh() {
        ReloadConfig();
        ExitShow = false;
        frmSlideShow* show = frmSlideShow::instance();
        show->StartShow();
        return show;
    }
};

TEST_F(ShowCycle, ChangeWaitsForTheChangeTimeAndEveryGuard) {
    frmSlideShow* show = frmSlideShow::instance();
    show->ScrollTimer->setEnabled(false);
    show->NextImageReady = true;
    show->NextChangeTime = platform::Now();
    // Equal is not later, and the clock counts whole seconds.
    EXPECT_FALSE(show->ChangeConditionHolds(platform::Now()));
    platform::AdvanceClock(999);
    EXPECT_FALSE(show->ChangeConditionHolds(platform::Now()));
    platform::AdvanceClock(1);
    const QDateTime now = platform::Now();
    ASSERT_TRUE(show->ChangeConditionHolds(now));

    const std::pair<const char*, std::function<void(bool)>> guards[] = {
        {"paused", [show](bool on) { show->Paused = on; }},
        {"crossfading", [show](bool on) { show->Crossfading = on; }},
        {"night", [show](bool on) { show->NightOn = on; }},
        {"no frame ready", [show](bool on) { show->NextImageReady = !on; }},
        {"scrolling", [show](bool on) { show->ScrollTimer->setEnabled(on); }}};
    for (const auto& [name, hold] : guards) {
        hold(true);
        EXPECT_FALSE(show->ChangeConditionHolds(now)) << name;
        hold(false);
        EXPECT_TRUE(show->ChangeConditionHolds(now)) << name;
    }
}

TEST_F(ShowCycle, TimerTickChangesTheFrameOnlyOnceTheIntervalHasPassed) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    ASSERT_TRUE(show->MainTimer->Enabled());
    ASSERT_TRUE(show->NextImageReady);
    // The splash does not count as shown.
    EXPECT_EQ(show->ImagesShown, -1.0);
    const std::int16_t framesBefore = show->FrameCounter;

    // The splash asked for the first change two seconds after it went up.
    show->MainTimer_Timer();
    EXPECT_EQ(show->FrameCounter, framesBefore);
    platform::AdvanceClock(3000);
    show->MainTimer_Timer();
    EXPECT_EQ(show->FrameCounter, framesBefore + 1);
    EXPECT_EQ(show->ImagesShown, 0.0);
    EXPECT_EQ(show->NextChangeTime, platform::Now().addSecs(show->ImageInterval));
    EXPECT_EQ(show->CurrentImage, QStringLiteral("INTERNAL:0"));

    // The photo stays for the whole interval.
    platform::AdvanceClock(show->ImageInterval * 1000);
    show->MainTimer_Timer();
    EXPECT_EQ(show->FrameCounter, framesBefore + 1);
    platform::AdvanceClock(1000);
    show->MainTimer_Timer();
    EXPECT_EQ(show->FrameCounter, framesBefore + 2);
    EXPECT_EQ(show->ImagesShown, 1.0);

    // An exit request stops the timer on the next tick, however late it is.
    ExitShow = true;
    platform::AdvanceClock(show->ImageInterval * 1000 + 3000);
    show->MainTimer_Timer();
    EXPECT_FALSE(show->MainTimer->Enabled());
    EXPECT_EQ(show->FrameCounter, framesBefore + 2);
}

// A partial download is deleted on the way; the tuned step time is saved and read by the next
// show at its start, before the opening fade tunes it again.
TEST_F(ShowCycle, StopRunsItsStepsInOrderAndHandsOverToTheConfigForm) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->xFadeStepTime = 0.0625f;
    const QString partial = Written(install.filePath(QStringLiteral("partial.jpg")), "half");
    show->DownloadFileOpen = true;
    show->DownloadFileName = partial;
    QStringList steps;
    frmSlideShow::StopStepObserver = [&](const QString& step) {
        // Each step sees the ones before it done.
        if (step == QLatin1String("WritePerfSettings")) {
            EXPECT_FALSE(show->MainTimer->Enabled());
            EXPECT_EQ(show->CanvasDIB, nullptr);
        }
        if (step == QLatin1String("StopShowTimer")) {
            EXPECT_EQ(GetSetting(QStringLiteral("xFadeStepTime"), QString()),
                      QStringLiteral("0.0625"));
            EXPECT_FALSE(frmConfig::instance()->StopShowTimer->Enabled());
        }
        steps << step;
    };
    show->StoptheShow();
    EXPECT_EQ(steps,
              QStringList({"CloseMemLog", "ClearPicture", "StopTimers", "WritePerfSettings",
                           "SaveRemainingList", "CloseDownload", "CloseAudio", "StopShowTimer"}));
    EXPECT_TRUE(frmConfig::instance()->StopShowTimer->Enabled());
    EXPECT_FALSE(QFile::exists(partial));
    EXPECT_FALSE(show->DownloadFileOpen);
    // The form is not unloaded from inside its own routine.
    EXPECT_TRUE(frmSlideShow::isLoaded());

    frmConfig::instance()->StopShowTimer->fire();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_FALSE(frmSlideShow::isLoaded());
    ExitShow = false;
    frmSlideShow::instance()->Initialize();
    EXPECT_FLOAT_EQ(frmSlideShow::instance()->xFadeStepTime, 0.0625f);
}

TEST_F(ShowCycle, StartRunsItsStepsInOrderAndEndsWithTheTimerRunning) {
    frmSlideShow* show = frmSlideShow::instance();
    QStringList steps;
    frmSlideShow::StartStepObserver = [&](const QString& step) {
        if (step == QLatin1String("MainTimer")) {
            EXPECT_TRUE(show->MainTimer->Enabled());
            EXPECT_FALSE(show->StartingUp);
            EXPECT_TRUE(show->NextImageReady);
        } else {
            EXPECT_TRUE(show->StartingUp);
        }
        steps << step;
    };
    show->StartShow();
    EXPECT_EQ(steps, QStringList({"Initialize", "PrepScreen", "FadePanelToBlack", "LoadImageLists",
                                  "NightModeShouldBeOn", "PrepNextFrame", "MainTimer"}));
}

TEST_F(ShowCycle, SaverRunEndsWithEveryFormUnloadedAndThePointerBack) {
    frmConfig::instance()->RunSaver();
    ASSERT_TRUE(frmSlideShow::isLoaded());
    EXPECT_TRUE(platform::CursorHidden());
    EXPECT_LT(platform::CursorDisplayCount(), -5);
    EXPECT_FALSE(frmConfig::instance()->isVisible());

    frmSlideShow::instance()->KeyTrap(27);
    ASSERT_TRUE(frmConfig::instance()->StopShowTimer->Enabled());
    frmConfig::instance()->StopShowTimer->fire();

    EXPECT_GE(platform::CursorDisplayCount(), 6);
    EXPECT_FALSE(platform::CursorHidden());
    EXPECT_TRUE(ExitShow);
    EXPECT_EQ(Forms::Count(), 0);
}

TEST_F(ShowCycle, ShowFromTheConfigFormGivesApplyBackItsEarlierState) {
    for (bool applyWasOn : {false, true}) {
        frmConfig* config = frmConfig::instance();
        config->RunConfig();
        config->cmdApply->setEnabled(applyWasOn);
        config->cmdRunShow_Click();
        EXPECT_FALSE(config->cmdApply->isEnabled());
        EXPECT_FALSE(config->cmdOk->isEnabled());
        EXPECT_EQ(config->GetApplyWasEnabled(), applyWasOn);

        frmSlideShow::instance()->KeyTrap(27);
        config->StopShowTimer->fire();
        EXPECT_FALSE(frmSlideShow::isLoaded());
        EXPECT_TRUE(frmConfig::isLoaded());
        EXPECT_EQ(config->cmdApply->isEnabled(), applyWasOn);
        EXPECT_TRUE(config->cmdRunShow->isEnabled());
        EXPECT_TRUE(config->cmdOk->isEnabled());
        EXPECT_TRUE(config->cmdCancel->isEnabled());
        Forms::UnloadAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Each row a key on a show just started; an exit that is not in a crossfade stops the show. The
// keys that act, and an ordinary key when keys are exits, are the show commands' tests.
TEST_F(ShowCycle, KeysThatEndTheShowAndKeysThatDoNot) {
    struct Row {
        const char* what;
        bool exitOptions, crossfading;
        int key;
        bool exits, stops;
        int frames; // frames put up by the key
    };
    // clang-format off
    const Row rows[] = {
        {"D with the log off is an ordinary key", false, false, 68, false, false, 0},
        {"Esc whatever the exit options say", false, false, 27, true, true, 0},
        {"a key during a crossfade only raises the flag", true, true, 27, true, false, 0},
        {"right arrow jumps at once to the frame ready", true, false, 39, false, false, 1},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        frmSlideShow* show = StartFresh();
        show->ExitOnKey = show->ExitOnMouse = show->ExitOnClick = row.exitOptions;
        show->Crossfading = row.crossfading;
        const std::int16_t frames = show->FrameCounter;
        show->KeyTrap(row.key);
        EXPECT_EQ(show->FrameCounter, frames + row.frames);
        EXPECT_FALSE(show->JumpRequested);
        EXPECT_FALSE(show->JumpPending);
        EXPECT_EQ(show->MainTimer->Enabled(), !row.stops);
        EXPECT_EQ(ExitShow, row.exits);
        EXPECT_EQ(frmConfig::instance()->StopShowTimer->Enabled(), row.stops);
    }
}

TEST_F(ShowCycle, PointerMustMoveMoreThanFourPixelsOnOneAxis) {
    platform::SetCursorPosForTest(QPoint(100, 100));
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    platform::SetCursorPosForTest(QPoint(104, 96));
    show->CheckMouseMove();
    EXPECT_FALSE(ExitShow);
    platform::SetCursorPosForTest(QPoint(100, 105));
    show->CheckMouseMove();
    EXPECT_TRUE(ExitShow);
}

TEST_F(ShowCycle, TheStoredInstallFolderIsUsedTrimmedAndAMissingOneIsReported) {
    InstallDir.clear();
    SaveSetting(QStringLiteral("installDir"), QStringLiteral("  ") + install.path() + "   ");
    frmSlideShow::instance()->StartShow();
    EXPECT_EQ(InstallDir, install.path());
    EXPECT_TRUE(messages.empty());

    ReloadConfig();
    InstallDir.clear();
    SaveSetting(QStringLiteral("installDir"), install.filePath(QStringLiteral("gone")));
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    ForgetSetting(QStringLiteral("installDir"));
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt,
              QStringLiteral("Cannot find the install path: & vbcrlf & installpath"));
    EXPECT_EQ(messages[0].flags & platform::vbCritical, platform::vbCritical);
    // The show goes on.
    EXPECT_TRUE(show->MainTimer->Enabled());
    EXPECT_EQ(InstallDir, install.filePath(QStringLiteral("gone")));
}

} // namespace
