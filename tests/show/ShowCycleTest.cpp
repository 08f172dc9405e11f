#include "TestSupport.h"

#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSettings>

namespace {

TEST(WatchdogInterval, FollowsTheImageIntervalWithSixteenBitWrap) {
    EXPECT_EQ(LongProcessIntervalFor(0), 10000);
    EXPECT_EQ(LongProcessIntervalFor(10), 20000);
    EXPECT_EQ(LongProcessIntervalFor(22), 32000);
    // 23 * 1000 + 10000 no longer fits in 16 bits.
    EXPECT_LT(LongProcessIntervalFor(23), 0);
    EXPECT_LT(LongProcessIntervalFor(32), 0);
    EXPECT_LT(LongProcessIntervalFor(50), 0);
    EXPECT_EQ(LongProcessIntervalFor(51), 60000);
    EXPECT_EQ(LongProcessIntervalFor(3000), 60000);
}

TEST(FrameCounter, FallsBackTo999AfterPassing9999) {
    EXPECT_EQ(NextFrameCounter(0), 1);
    EXPECT_EQ(NextFrameCounter(9998), 9999);
    EXPECT_EQ(NextFrameCounter(9999), 999);
    EXPECT_EQ(NextFrameCounter(999), 1000);
}

TEST(VbTimerSemantics, RefusesNonPositiveIntervalsAndKeepsTheOld) {
    VbTimer t(20000);
    EXPECT_TRUE(t.setInterval(15000));
    EXPECT_FALSE(t.setInterval(0));
    EXPECT_FALSE(t.setInterval(-5536));
    EXPECT_EQ(t.Interval(), 15000);
    EXPECT_FALSE(t.Enabled());
}

using ShowCycle = FormsFixture;

TEST_F(ShowCycle, WatchdogKeepsItsIntervalWhenTheSumWraps) {
    frmSlideShow* show = frmSlideShow::instance();
    EXPECT_EQ(show->LongProcessTimer->Interval(), 20000);
    show->ImageInterval = 30;
    show->SetLongProcessInterval();
    EXPECT_EQ(show->LongProcessTimer->Interval(), 20000);
    show->ImageInterval = 5;
    show->SetLongProcessInterval();
    EXPECT_EQ(show->LongProcessTimer->Interval(), 15000);
    show->ImageInterval = 40;
    show->SetLongProcessInterval();
    EXPECT_EQ(show->LongProcessTimer->Interval(), 15000);
    show->ImageInterval = 120;
    show->SetLongProcessInterval();
    EXPECT_EQ(show->LongProcessTimer->Interval(), 60000);
}

TEST_F(ShowCycle, ChangeWaitsUntilTheClockIsPastTheChangeTime) {
    frmSlideShow* show = frmSlideShow::instance();
    show->ScrollTimer->setEnabled(false);
    show->NextImageReady = true;
    show->NextChangeTime = platform::Now();

    // Equal is not later, and the clock counts whole seconds.
    EXPECT_FALSE(show->ChangeConditionHolds(platform::Now()));
    platform::AdvanceClock(999);
    EXPECT_FALSE(show->ChangeConditionHolds(platform::Now()));
    platform::AdvanceClock(1);
    EXPECT_TRUE(show->ChangeConditionHolds(platform::Now()));
}

TEST_F(ShowCycle, EachGuardHoldsOffTheChange) {
    frmSlideShow* show = frmSlideShow::instance();
    show->ScrollTimer->setEnabled(false);
    show->NextImageReady = true;
    show->NextChangeTime = platform::Now().addSecs(-5);
    const QDateTime now = platform::Now();
    ASSERT_TRUE(show->ChangeConditionHolds(now));

    show->Paused = true;
    EXPECT_FALSE(show->ChangeConditionHolds(now));
    show->Paused = false;
    show->Crossfading = true;
    EXPECT_FALSE(show->ChangeConditionHolds(now));
    show->Crossfading = false;
    show->NightOn = true;
    EXPECT_FALSE(show->ChangeConditionHolds(now));
    show->NightOn = false;
    show->NextImageReady = false;
    EXPECT_FALSE(show->ChangeConditionHolds(now));
    show->NextImageReady = true;
    show->ScrollTimer->setEnabled(true);
    EXPECT_FALSE(show->ChangeConditionHolds(now));
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
}

TEST_F(ShowCycle, AnExitRequestStopsTheTimerOnTheNextTick) {
    frmSlideShow* show = frmSlideShow::instance();
    show->MainTimer->setEnabled(true);
    ExitShow = true;
    show->MainTimer_Timer();
    EXPECT_FALSE(show->MainTimer->Enabled());
}

TEST_F(ShowCycle, StopRunsItsStepsInOrderAndHandsOverToTheConfigForm) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->xFadeStepTime = 0.0625f;
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
    EXPECT_EQ(frmConfig::instance()->StopShowTimer->Interval(), 100);
    // The form is not unloaded from inside its own routine.
    EXPECT_TRUE(frmSlideShow::isLoaded());
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

TEST_F(ShowCycle, StopDeletesAPartialDownload) {
    frmSlideShow* show = frmSlideShow::instance();
    const QString partial = install.filePath(QStringLiteral("partial.jpg"));
    QFile f(partial);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("half");
    f.close();
    show->DownloadFileOpen = true;
    show->DownloadFileName = partial;
    show->StoptheShow();
    EXPECT_FALSE(QFile::exists(partial));
    EXPECT_FALSE(show->DownloadFileOpen);
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

TEST_F(ShowCycle, EscEndsTheShowWhateverTheExitOptionsSay) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->ExitOnKey = false;
    show->ExitOnMouse = false;
    show->ExitOnClick = false;
    show->KeyTrap(68); // D with the log off is an ordinary key
    EXPECT_FALSE(ExitShow);
    show->KeyTrap(27);
    EXPECT_TRUE(ExitShow);
    EXPECT_TRUE(frmConfig::instance()->StopShowTimer->Enabled());
}

TEST_F(ShowCycle, AnUnassignedKeyEndsTheShowWhenKeysAreExits) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->KeyTrap(32); // space holds the photo
    EXPECT_TRUE(show->Paused);
    EXPECT_FALSE(ExitShow);
    show->KeyTrap(65);
    EXPECT_TRUE(ExitShow);
}

TEST_F(ShowCycle, KeyDuringACrossfadeOnlyRaisesTheFlag) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->Crossfading = true;
    show->KeyTrap(27);
    EXPECT_TRUE(ExitShow);
    EXPECT_FALSE(frmConfig::instance()->StopShowTimer->Enabled());
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

TEST_F(ShowCycle, RightArrowJumpsAtOnceWhenTheNextFrameIsReady) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    const std::int16_t frames = show->FrameCounter;
    show->KeyTrap(39);
    EXPECT_EQ(show->FrameCounter, frames + 1);
    EXPECT_FALSE(show->JumpRequested);
    EXPECT_FALSE(show->JumpPending);
    EXPECT_TRUE(show->MainTimer->Enabled());
    EXPECT_FALSE(ExitShow);
}

TEST_F(ShowCycle, MissingInstallFolderIsReportedAndTheShowGoesOn) {
    InstallDir.clear();
    SaveSetting(QStringLiteral("installDir"), install.filePath(QStringLiteral("gone")));
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    ForgetSetting(QStringLiteral("installDir"));
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt,
              QStringLiteral("Cannot find the install path: & vbcrlf & installpath"));
    EXPECT_EQ(messages[0].flags & platform::vbCritical, platform::vbCritical);
    EXPECT_TRUE(show->MainTimer->Enabled());
    EXPECT_EQ(InstallDir, install.filePath(QStringLiteral("gone")));
}

TEST_F(ShowCycle, StoredInstallFolderIsUsedTrimmed) {
    InstallDir.clear();
    SaveSetting(QStringLiteral("installDir"), QStringLiteral("  ") + install.path() + "   ");
    frmSlideShow::instance()->StartShow();
    ForgetSetting(QStringLiteral("installDir"));
    EXPECT_EQ(InstallDir, install.path());
    EXPECT_TRUE(messages.empty());
}

TEST_F(ShowCycle, TunedStepTimeSurvivesIntoTheNextShow) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->xFadeStepTime = 0.25f;
    show->StoptheShow();
    frmConfig::instance()->StopShowTimer->fire();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    ExitShow = false;
    frmSlideShow* next = frmSlideShow::instance();
    // Read at the start, before the opening fade tunes it again.
    next->Initialize();
    EXPECT_FLOAT_EQ(next->xFadeStepTime, 0.25f);
}

} // namespace

namespace {

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

} // namespace
