#include "TestSupport.h"
#include "config/ConfigGeometry.h"
#include "platform/Endpoints.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QUrl>

namespace {

class ConfigShell : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        config = frmConfig::instance();
        Forms::SetLastFormHandler([this] { lastFormGone = true; });
    }
    void TearDown() override {
        FormsFixture::TearDown();
        Forms::SetLastFormHandler(nullptr);
    }
    QWidget* Page(int i) { return config->setPage[static_cast<std::size_t>(i)]; }
    int Tag(int i) { return Page(i)->property("Tag").toString().toInt(); }
    // Runs a panel's animation to its end; returns the heights it passed through.
    std::vector<int> Animate(std::array<VbTimer*, 11>& timers, int index) {
        std::vector<int> heights;
        // The slot, not the timer: a panel's own timer is let go at the end of its animation.
        VbTimer*& timer = timers[static_cast<std::size_t>(index)];
        for (int tick = 0; tick < 50 && timer && timer->Enabled(); ++tick) {
            timer->fire();
            heights.push_back(Page(index)->height());
        }
        return heights;
    }
    bool PanelsTouch() {
        for (int i = 1; i <= 10; ++i)
            if (Page(i)->y() != Page(i - 1)->y() + Page(i - 1)->height()) return false;
        return true;
    }

    frmConfig* config = nullptr;
    bool lastFormGone = false;
};

} // namespace

TEST_F(ConfigShell, StartsWithEveryPanelCollapsedInAWindowOfTheTableHeight) {
    const int screen = QGuiApplication::primaryScreen()->geometry().height();
    EXPECT_EQ(config->ScreenHeightPixels, screen);
    EXPECT_EQ(config->CollapsedFormHeight, ConfigFormHeights(screen).collapsed);
    EXPECT_EQ(config->RestFormHeight, config->height());
    // The images' list waits below the window's resting height, in the room it grows by.
    EXPECT_EQ(config->lstImages[0]->y(), config->CollapsedFormHeight);
    EXPECT_EQ(config->lstImages[0]->height(),
              config->ExpandedFormHeight - config->CollapsedFormHeight);
    for (int i = 0; i <= 10; ++i) {
        EXPECT_EQ(Page(i)->height(), CollapsedPanelHeight) << i;
        EXPECT_GT(Tag(i), CollapsedPanelHeight) << i;
        EXPECT_FALSE(config->imgSetPageOpen[i]->isHidden());
        EXPECT_TRUE(config->imgSetPageClose[i]->isHidden());
    }
    EXPECT_TRUE(PanelsTouch());
    EXPECT_TRUE(config->imgSetPageOpen[21]->isHidden());
    EXPECT_TRUE(config->imgSetPageClose[21]->isHidden());
    EXPECT_EQ(config->lvwFolderList->headerItem()->text(7), QStringLiteral("Recurse / Ignore GIF"));
}

// Panel 0 animates on the timer built with the window, which stays; any other panel on a timer
// of its own, made for the one animation.
TEST_F(ConfigShell, APanelOpensInHalvingStepsAndPushesTheOthersDown) {
    for (int panel : {4, 0}) {
        SCOPED_TRACE(panel);
        const int below = Page(panel + 1)->y();
        config->imgSetPageOpen_Click(panel);
        EXPECT_TRUE(config->imgSetPageOpen[panel]->isHidden());
        EXPECT_TRUE(config->imgSetPageClose[panel]->isHidden());
        ASSERT_NE(config->openPageTimer[panel], nullptr);
        EXPECT_EQ(config->openPageTimer[0]->Enabled(), panel == 0);

        // The steps themselves are the geometry's; here that there are several.
        const std::vector<int> heights = Animate(config->openPageTimer, panel);
        ASSERT_GE(heights.size(), 3u);
        EXPECT_EQ(heights.back(), Tag(panel));
        EXPECT_EQ(Page(panel + 1)->y(), below + Tag(panel) - 25);
        EXPECT_TRUE(PanelsTouch());
        EXPECT_FALSE(config->imgSetPageClose[panel]->isHidden());
        EXPECT_EQ(config->openPageTimer[panel] != nullptr, panel == 0);
        if (panel == 0) {
            EXPECT_FALSE(config->openPageTimer[0]->Enabled());
        }

        config->imgSetPageClose_Click(panel);
        Animate(config->closePageTimer, panel);
        EXPECT_EQ(Page(panel)->height(), 25);
        EXPECT_EQ(Page(panel + 1)->y(), below);
        EXPECT_FALSE(config->imgSetPageOpen[panel]->isHidden());
    }
}

// Opening the panoramas panel starts its demo, which changes no setting either.
TEST_F(ConfigShell, PanoramaDemoBouncesOnlyWhileItsPanelIsOpen) {
    config->RunConfig();
    config->chkScrollPanos->setChecked(true);
    config->imgSetPageOpen_Click(3);
    config->openPageTimer[3]->fire();
    EXPECT_FALSE(config->ScrollDemoTimer->Enabled());
    Animate(config->openPageTimer, 3);
    EXPECT_TRUE(config->ScrollDemoTimer->Enabled());
    EXPECT_FALSE(config->cmdApply->isEnabled()) << "opening a panel is not a change";

    const int travel = config->picPanoDemoScroller->width() - config->picPanoDemo->width();
    ASSERT_GT(travel, 0);
    ASSERT_EQ(config->picPanoDemoScroller->x(), 0);
    int lowest = 0;
    for (int tick = 0; tick < 3 * travel; ++tick) {
        config->ScrollDemoTimer->fire();
        if (tick == 0) {
            EXPECT_EQ(config->picPanoDemoScroller->x(), -1);
        }
        lowest = std::min(lowest, config->picPanoDemoScroller->x());
        ASSERT_LE(config->picPanoDemoScroller->x(), 0);
    }
    EXPECT_EQ(lowest, -travel - 1);

    config->imgSetPageClose_Click(3);
    EXPECT_TRUE(config->ScrollDemoTimer->Enabled());
    Animate(config->closePageTimer, 3);
    EXPECT_FALSE(config->ScrollDemoTimer->Enabled());
}

TEST_F(ConfigShell, ExpandAllSkipsPanelsAlreadyOpenAndCollapseAllClosesEverything) {
    config->imgSetPageOpen_Click(2);
    Animate(config->openPageTimer, 2);
    ASSERT_EQ(Page(2)->height(), Tag(2));

    config->imgSetPageOpen_Click(20);
    EXPECT_TRUE(config->imgSetPageOpen[20]->isHidden());
    EXPECT_FALSE(config->imgSetPageClose[20]->isHidden());
    EXPECT_EQ(config->openPageTimer[2], nullptr);
    for (int i = 0; i <= 10; ++i)
        if (i != 2) Animate(config->openPageTimer, i);
    for (int i = 0; i <= 10; ++i)
        EXPECT_EQ(Page(i)->height(), Tag(i)) << i;
    EXPECT_TRUE(PanelsTouch());

    // Everything open is taller than the portal: the scroll bar moves the holder.
    EXPECT_FALSE(config->portalScroll->isHidden());
    EXPECT_EQ(config->portalScroll->maximum(),
              config->PageHolder->height() - config->Portal->height());
    config->portalScroll->setValue(120);
    EXPECT_EQ(config->PageHolder->y(), -120);

    config->imgSetPageClose_Click(20);
    for (int i = 0; i <= 10; ++i)
        Animate(config->closePageTimer, i);
    for (int i = 0; i <= 10; ++i)
        EXPECT_EQ(Page(i)->height(), 25) << i;
    EXPECT_TRUE(config->portalScroll->isHidden());
    EXPECT_EQ(config->PageHolder->y(), 0);
    EXPECT_FALSE(config->imgSetPageOpen[20]->isHidden());
}

TEST_F(ConfigShell, WindowGrowsToShowTheImagesAndShrinksBackToItsRestingHeight) {
    const int rest = config->height();
    config->imgSetPageOpen_Click(21);
    for (int tick = 0; tick < 100 && config->expandConfigTimer->Enabled(); ++tick) {
        const int before = config->height();
        config->expandConfigTimer->fire();
        EXPECT_LE(config->height() - before, 30);
    }
    EXPECT_EQ(config->height(), config->lstImages[0]->y() + config->lstImages[0]->height());
    EXPECT_FALSE(config->imgSetPageClose[21]->isHidden());

    config->imgSetPageClose_Click(21);
    for (int tick = 0; tick < 100 && config->expandConfigTimer->Enabled(); ++tick)
        config->expandConfigTimer->fire();
    EXPECT_EQ(config->height(), rest);
    EXPECT_FALSE(config->imgSetPageOpen[21]->isHidden());
}

TEST_F(ConfigShell, OkSavesAndEndsTheProgramCancelOnlyEndsIt) {
    for (bool ok : {false, true}) {
        config = ReloadConfig();
        lastFormGone = false;
        config->RunConfig();
        config->txtImageInterval->setText(QStringLiteral("17"));
        ok ? config->cmdOk_Click() : config->cmdCancel_Click();
        EXPECT_TRUE(lastFormGone) << ok;
        EXPECT_EQ(Forms::Count(), 0) << ok;
        QFile file(install.filePath(QStringLiteral("TView_Prefs.txt")));
        EXPECT_EQ(file.open(QIODevice::ReadOnly), ok);
        if (ok) {
            EXPECT_TRUE(file.readAll().contains("\r\nINTERVAL,17\r\n"));
        }
    }
}

// The installed page opens without a word; without it, the web's, with a word first.
TEST_F(ConfigShell, HelpOpensTheInstalledPageOrFallsBackToTheWeb) {
    QStringList opened;
    platform::SetShellLauncher([&](const QString& target) {
        opened.append(target);
        return 42;
    });
    config->cmdHelp_Click();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0].prompt, QStringLiteral("I can't find the help file on your computer.\r\n"
                                                 "I'll try and open the Help files on the web."));
    EXPECT_EQ(messages[0].title, QStringLiteral("(please connect to the internet if you are not "
                                                "already connected)"));
    EXPECT_EQ(opened, QStringList{platform::OnlineHelpUrl()});

    const QString page = install.filePath(QStringLiteral("Help/index.html"));
    PutFile(page, "<!DOCTYPE html>\n<title>Tessaview Help</title>\n");
    config->cmdHelp_Click();
    platform::SetShellLauncher(nullptr);
    EXPECT_EQ(messages.size(), 1u);
    ASSERT_EQ(opened.size(), 2);
    const QUrl url(opened[1]);
    EXPECT_TRUE(url.isLocalFile()) << opened[1].toStdString();
    EXPECT_EQ(url.toLocalFile(), page);
}

TEST_F(ConfigShell, DraggingTheSurfaceMovesTheWindow) {
    config->move(100, 80);
    config->Form_MouseDown(QPoint(300, 300));
    config->Form_MouseMove(QPoint(340, 290));
    EXPECT_EQ(config->pos(), QPoint(140, 70));
    config->Form_MouseUp();
    config->Form_MouseMove(QPoint(500, 500));
    EXPECT_EQ(config->pos(), QPoint(140, 70));
}

TEST_F(ConfigShell, SkyBarShowsTheDefaultNightAcrossMidnight) {
    EXPECT_EQ(config->lblTime[0]->text(), QStringLiteral("10:00 pm"));
    EXPECT_EQ(config->lblTime[1]->text(), QStringLiteral("7:00 am"));
    EXPECT_FALSE(config->imgSkyMask[0]->isHidden());
    EXPECT_FALSE(config->imgSkyMask[1]->isHidden());

    // A tab dragged past the bar stops at midnight; start 88, end 96 no longer wraps.
    config->imgSkyTab_MouseDown(1, 100);
    config->imgSkyTab_MouseMove(1, 5000);
    config->imgSkyTab_MouseUp(1);
    EXPECT_EQ(config->GetNightModeSetting(1), 96);
    EXPECT_EQ(config->lblTime[1]->text(), QStringLiteral("0:00 am"));
    EXPECT_TRUE(config->imgSkyMask[1]->isHidden());

    config->SetNightModeSkyBar(40, 40);
    EXPECT_EQ(config->imgSkyMask[0]->width(), 0);
    EXPECT_TRUE(config->imgSkyMask[1]->isHidden());
    EXPECT_EQ(config->lblTime[0]->text(), QStringLiteral("10:00 am"));
}

TEST_F(ConfigShell, EffectBoxesSwapTheirSamples) {
    config->chkAddShadows->setChecked(true);
    EXPECT_FALSE(config->imgShadowON->isHidden());
    EXPECT_TRUE(config->imgShadowOff->isHidden());
    config->chkBlackAndWhite->setChecked(false);
    EXPECT_FALSE(config->chkAddContrastToBW->isEnabled());
    config->chkAddContrastToBW->setChecked(true);
    EXPECT_FALSE(config->imgBW_contrast->isHidden());
    EXPECT_TRUE(config->imgBW->isHidden());
    config->chkAddWhiteBorder->setChecked(true);
    EXPECT_FALSE(config->picStackedPreview[1]->isHidden());
    EXPECT_TRUE(config->picStackedPreview[0]->isHidden());
    config->cmbMultiMonOption->setCurrentIndex(1);
    EXPECT_TRUE(config->lblMultiMonDetail[0]->isHidden());
    EXPECT_FALSE(config->lblMultiMonDetail[1]->isHidden());

    config->chkUseImageMasks->setChecked(false);
    EXPECT_FALSE(config->imgNoImageMask->isHidden());
    EXPECT_FALSE(config->txtImageMask->isEnabled());
    config->chkUseImageMasks->setChecked(true);
    config->optUseSpecificMask->setChecked(true);
    config->txtImageMask->setText(install.filePath(QStringLiteral("gone.png")));
    EXPECT_FALSE(config->lblImageMaskWarning->isHidden());

    config->chkUseBackgroundImages->setChecked(true);
    config->optRandomBackgroundImage->setChecked(true);
    EXPECT_EQ(config->lblBackgroundWarning->text(), QStringLiteral("Missing Backgrounds folder"));
    EXPECT_FALSE(config->picRandomBackground->isHidden());
    EXPECT_TRUE(config->picBackgroundPreview->isHidden());
}

TEST_F(ConfigShell, ResetSlideshowDeletesTheSavedPoolAndHidesItself) {
    const QStringList names = {QStringLiteral("remain.lst"), QStringLiteral("remain-t.lst"),
                               QStringLiteral("remain-d.lst")};
    config->CheckForRemainingList();
    EXPECT_TRUE(config->cmdNukeRemlist->isHidden());
    for (const QString& name : names)
        PutFile(install.filePath(name), "x\r\n");
    config->CheckForRemainingList();
    EXPECT_FALSE(config->cmdNukeRemlist->isHidden());
    config->cmdNukeRemlist->click();
    for (const QString& name : names)
        EXPECT_FALSE(QFile::exists(install.filePath(name))) << name.toStdString();
    EXPECT_TRUE(config->cmdNukeRemlist->isHidden());
}

// Boxes and knobs alike keep the shares at a hundred; a drag counts as a change once it ends.
TEST_F(ConfigShell, LayoutBoxesAndKnobsKeepTheSharesAtAHundred) {
    config->RunConfig();
    for (int i = 0; i < 3; ++i)
        config->chkLayout[static_cast<std::size_t>(i)]->setChecked(true);
    config->SetLayoutSlider(0, 40);
    config->SetLayoutSlider(1, 30);
    config->SetLayoutSlider(2, 30);
    config->chkLayout[2]->setChecked(false);
    EXPECT_EQ(config->SliderPercent[2], 0.0f);
    EXPECT_EQ(config->SliderPercent[0], 55.0f);
    EXPECT_EQ(config->SliderPercent[1], 45.0f);
    EXPECT_EQ(config->lblLayoutSetting[1]->text(), QStringLiteral("45 %"));
    EXPECT_TRUE(config->cmdApply->isEnabled());

    QLabel* knob = config->imgLayoutSlider[0];
    QLabel* bar = config->LayoutSliderBar[0];
    const int span = bar->width() - 12;
    config->cmdApply_Click();
    config->imgLayoutSlider_MouseDown(0, 500);
    config->imgLayoutSlider_MouseMove(0, 500 - span / 5);
    EXPECT_NEAR(config->SliderPercent[0], 35.0f, 1.0f);
    EXPECT_NEAR(config->SliderPercent[0] + config->SliderPercent[1], 100.0f, 1.0f);
    config->imgLayoutSlider_MouseMove(0, -5000);
    EXPECT_EQ(config->SliderPercent[0], 0.0f);
    EXPECT_EQ(knob->x(), bar->x());
    EXPECT_EQ(config->SliderPercent[1], 100.0f);
    EXPECT_FALSE(config->cmdApply->isEnabled());
    config->imgLayoutSlider_MouseUp(0);
    EXPECT_TRUE(config->cmdApply->isEnabled());
    // Without a press the pointer moves nothing.
    config->imgLayoutSlider_MouseMove(0, 9000);
    EXPECT_EQ(config->SliderPercent[0], 0.0f);

    // With one box left its slider is pinned at 100, knob at the end of the track.
    config->chkLayout[1]->setChecked(false);
    EXPECT_EQ(config->SliderPercent[0], 100.0f);
    EXPECT_EQ(knob->x(), bar->x() + bar->width() - 12);
}
