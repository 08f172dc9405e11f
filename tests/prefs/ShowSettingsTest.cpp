#include "TestSupport.h"

#include "config/ColourButton.h"
#include "night_sound/AudioPlayers.h"
#include "prefs/MRegistry.h"

#include <QButtonGroup>
#include <QDir>
#include <QFile>
#include <array>
#include <functional>
#include <optional>

namespace {

class ShowSettings : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        config = frmConfig::instance();
        config->chkDebug->setChecked(true);
    }

    // A new show reading the configuration window as it stands now; `before` sees the show
    // before it reads.
    frmSlideShow* Read(const std::function<void(frmSlideShow*)>& before = {}) {
        frmSlideShow::unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        frmSlideShow* show = frmSlideShow::instance();
        if (before) before(show);
        show->Initialize();
        return show;
    }
    static bool Logged(const frmSlideShow* show, const QString& line) {
        return LogLines(show).contains(line);
    }
    QString Path(const QString& relative) const { return install.filePath(relative); }
    void MakeFile(const QString& relative, const QByteArray& content) {
        PutFile(Path(relative), content);
    }
    void UseSpecificSound(const QString& path) {
        config->chkPlaySound->setChecked(true);
        config->optSpecificSound->setChecked(true);
        config->txtSoundFile->setText(path);
    }

    frmConfig* config = nullptr;
};

TEST_F(ShowSettings, CrossfadeHasAFloorOfOneSecondAndNoCeiling) {
    config->txtCrossfadeTime->setText(QStringLiteral(" 0.5 "));
    frmSlideShow* show = Read();
    EXPECT_FLOAT_EQ(show->CrossfadeTime, 1.0f);
    EXPECT_FLOAT_EQ(show->PrefCrossfadeTime, 1.0f);
    const QStringList log = LogLines(show);
    const auto floorLine = log.indexOf(QStringLiteral(" (setting it to 1s) "));
    ASSERT_GE(floorLine, 1);
    EXPECT_EQ(log[floorLine - 1], QStringLiteral("  Crossfade Time 0.5 s "));

    // Not even the interval bounds it.
    config->txtCrossfadeTime->setText(QStringLiteral("90.5s"));
    config->txtImageInterval->setText(QStringLiteral("5"));
    show = Read();
    EXPECT_FLOAT_EQ(show->CrossfadeTime, 90.5f);
    EXPECT_FALSE(Logged(show, QStringLiteral(" (setting it to 1s) ")));
}

TEST_F(ShowSettings, ImageOrderSetsTheTwoRandomFlags) {
    // Index: random images, random folders.
    const bool expected[5][2] = {
        {false, false}, {true, false}, {false, true}, {true, true}, {true, false}};
    // The window offers four orders; a fifth entry stands for any index past them.
    config->cmbImageOrder->addItem(QStringLiteral("unknown order"));
    for (int index = 0; index < 5; ++index) {
        config->cmbImageOrder->setCurrentIndex(index);
        frmSlideShow* show = Read();
        EXPECT_EQ(show->RandomImages, expected[index][0]) << "order " << index;
        EXPECT_EQ(show->RandomFolders, expected[index][1]) << "order " << index;
    }
}

// Which zones a start and end mark is the zone table's business; here the show's own zones
// come from the window's, across midnight.
TEST_F(ShowSettings, NightZonesComeFromTheSkyBar) {
    config->SetNightModeSkyBar(88, 28);
    const frmSlideShow* show = Read();
    EXPECT_EQ(show->NightStartZone, 88);
    EXPECT_EQ(show->NightEndZone, 28);
    for (int z = 0; z <= 96; ++z)
        EXPECT_EQ(show->NightZone[static_cast<std::size_t>(z)], z < 28 || z >= 88) << z;
}

TEST_F(ShowSettings, LayoutPercentagesBecomeUpperBoundsOfBands) {
    config->SetLayoutSlider(0, 100);
    config->SetLayoutSlider(1, 0);
    config->SetLayoutSlider(2, 0);
    frmSlideShow* show = Read();
    EXPECT_EQ(show->LayoutRange, (std::array<float, 3>{100.0f, 100.0f, 100.0f}));

    config->SetLayoutSlider(0, 0);
    config->SetLayoutSlider(1, 25);
    config->SetLayoutSlider(2, 75);
    show = Read();
    EXPECT_EQ(show->LayoutRange, (std::array<float, 3>{0.0f, 25.0f, 100.0f}));
    EXPECT_TRUE(Logged(show, QStringLiteral("        Layout 2  = 25 to 100")));
}

TEST_F(ShowSettings, MasksNeedTheirFiles) {
    config->chkUseImageMasks->setChecked(true);
    config->optRandomImageMasks->setChecked(true);
    config->txtImageMask->setText(QString());
    const QString masks = install.path() + QStringLiteral("/Masks");

    // Random masks without a folder, and with no specific mask to fall back on.
    frmSlideShow* show = Read();
    EXPECT_FALSE(show->UseImageMask);
    EXPECT_TRUE(Logged(show, QStringLiteral("*** could not find folder ") + masks + " ***"));

    MakeFile(QStringLiteral("Masks/oval.png"), "png");
    show = Read();
    EXPECT_FALSE(show->RandomImageMask);
    EXPECT_FALSE(show->UseImageMask);
    EXPECT_TRUE(show->lstMasks.isEmpty());
    EXPECT_TRUE(Logged(show, QStringLiteral("No image Masks found in ") + masks));
    // The show switches off only its own copy of the setting.
    EXPECT_TRUE(config->chkUseImageMasks->isChecked());

    MakeFile(QStringLiteral("Masks/star.JPG"), "jpg");
    MakeFile(QStringLiteral("Masks/heart.jpg"), "jpg");
    show = Read();
    EXPECT_TRUE(show->RandomImageMask);
    EXPECT_TRUE(show->UseImageMask);
    EXPECT_EQ(show->lstMasks, QStringList({Path(QStringLiteral("Masks/heart.jpg")),
                                           Path(QStringLiteral("Masks/star.JPG"))}));
    EXPECT_TRUE(Logged(show, "-adding mask : " + Path(QStringLiteral("Masks/star.JPG"))));

    config->optUseSpecificMask->setChecked(true);
    config->txtImageMask->setText(Path(QStringLiteral("gone.jpg")));
    show = Read();
    EXPECT_FALSE(show->UseImageMask);
    EXPECT_TRUE(Logged(show, QStringLiteral("   ** Can't find the image mask file.  Turning off "
                                            "UseImageMask.")));
    EXPECT_EQ(config->txtImageMask->text(), Path(QStringLiteral("gone.jpg")));

    // Random masks that find no folder fall back on a specific mask that is there.
    ASSERT_TRUE(QDir(masks).removeRecursively());
    MakeFile(QStringLiteral("oval.jpg"), "jpg");
    config->txtImageMask->setText(QStringLiteral("  ") + Path(QStringLiteral("oval.jpg")));
    config->optRandomImageMasks->setChecked(true);
    show = Read();
    EXPECT_FALSE(show->RandomImageMask);
    EXPECT_TRUE(show->UseImageMask);
    EXPECT_EQ(show->ImageMaskPath, Path(QStringLiteral("oval.jpg")));
}

TEST_F(ShowSettings, RandomBackgroundsNeedImagesInTheBackgroundsFolder) {
    config->chkUseBackgroundImages->setChecked(true);
    config->optRandomBackgroundImage->setChecked(true);
    const QString folder = install.path() + QStringLiteral("/Backgrounds");
    const QString noImages = QStringLiteral("  *** No images found in ") + folder;

    frmSlideShow* show = Read();
    EXPECT_FALSE(show->RandomBGImage);
    EXPECT_TRUE(Logged(show, "* No " + folder + " folder *"));
    EXPECT_TRUE(Logged(show, noImages));

    MakeFile(QStringLiteral("Backgrounds/readme.txt"), "text");
    show = Read();
    EXPECT_FALSE(show->RandomBGImage);
    EXPECT_TRUE(show->UseBackgroundImage);
    EXPECT_TRUE(Logged(show, noImages));

    MakeFile(QStringLiteral("Backgrounds/sand.Png"), "png");
    MakeFile(QStringLiteral("Backgrounds/cork.tiff"), "tif");
    show = Read();
    EXPECT_TRUE(show->RandomBGImage);
    EXPECT_EQ(show->lstBackgroundImages,
              QStringList({folder + "/cork.tiff", folder + "/sand.Png"}));
    EXPECT_FALSE(Logged(show, noImages));
}

TEST_F(ShowSettings, ASpecificSoundIsLoadedIntoPlayerZeroWhenItCan) {
    MakeFile(QStringLiteral("chime.wav"), "this is not a recording, only text in a wav's name");
    UseSpecificSound(Path(QStringLiteral("chime.wav")));
    frmSlideShow* show = Read();
    EXPECT_TRUE(show->PlaySound);
    EXPECT_FALSE(show->AudioPlayerLoaded[0]);
    EXPECT_TRUE(Logged(show, QStringLiteral("Unable to load sound file, ")));

    MakeFile(QStringLiteral("bell.wav"), SilentWav());
    UseSpecificSound(Path(QStringLiteral("bell.wav")));
    show = Read();
    EXPECT_TRUE(show->PlaySound);
    ASSERT_TRUE(show->AudioPlayerLoaded[0]);
    EXPECT_TRUE(modDirectShow::PlayerLoaded(0));
    EXPECT_FALSE(modDirectShow::PlayerLoaded(1));
    EXPECT_TRUE(Logged(show, "File {" + Path(QStringLiteral("bell.wav")) +
                                 "}  was loaded successfully in player 0"));
    // A show unloaded while it holds the sound lets the player go.
    frmSlideShow::unload();
    EXPECT_FALSE(modDirectShow::PlayerLoaded(0));

    UseSpecificSound(Path(QStringLiteral("gone.wav")));
    show = Read();
    EXPECT_FALSE(show->PlaySound);
    EXPECT_FALSE(show->AudioPlayerLoaded[0]);
    EXPECT_TRUE(Logged(show, QStringLiteral(" Could not find the specific sound file.  Turning "
                                            "sound off.")));
    EXPECT_TRUE(config->chkPlaySound->isChecked());
}

TEST_F(ShowSettings, RandomSoundsNeedTheSoundsFolder) {
    config->chkPlaySound->setChecked(true);
    config->optRandomSound->setChecked(true);
    frmSlideShow* show = Read();
    EXPECT_FALSE(show->PlaySound);
    EXPECT_TRUE(Logged(show, "*** no folder " + install.path() + "/Sounds ***"));

    MakeFile(QStringLiteral("Sounds/b.wav"), SilentWav());
    MakeFile(QStringLiteral("Sounds/a.ogg"), "OggS");
    show = Read();
    EXPECT_TRUE(show->PlaySound);
    EXPECT_EQ(show->SoundsFileBox.Path, install.path() + QStringLiteral("/Sounds/"));
    ASSERT_EQ(show->SoundsFileBox.ListCount(), 2);
    EXPECT_EQ(show->SoundsFileBox.List(0), QStringLiteral("a.ogg"));
    EXPECT_FALSE(show->AudioPlayerLoaded[0]);
}

TEST_F(ShowSettings, EachCaptionBlockTakesItsOwnBoxesAndFirstPosition) {
    for (std::size_t n = 0; n < 2; ++n) {
        for (auto* boxes :
             {&config->chkCapFileName, &config->chkCapFileNameFullPath, &config->chkCapFolderName,
              &config->chkCapFolderNameFullPath, &config->chkCapDimensions, &config->chkCapEXIFDate,
              &config->chkCapEXIFDescription})
            (*boxes)[n]->setChecked(false);
    }
    config->chkCapFolderNameFullPath[0]->setChecked(true);
    config->chkCapEXIFDate[1]->setChecked(true);
    // Block A with no position at all, block B with two.
    config->Position1[4]->group()->setExclusive(false);
    config->Position1[4]->setChecked(false);
    config->Position2[6]->group()->setExclusive(false);
    config->Position2[5]->setChecked(true);
    config->Position2[2]->setChecked(true);

    const frmSlideShow* show = Read();
    EXPECT_EQ(show->CaptionPosition, (std::array<std::int16_t, 2>{4, 2}));
    EXPECT_EQ(show->CapFolderNameFullPath, (std::array<bool, 2>{true, false}));
    EXPECT_EQ(show->CapEXIFDate, (std::array<bool, 2>{false, true}));
    for (const auto& flags : {show->CapFileName, show->CapFileNameFullPath, show->CapFolderName,
                              show->CapDimensions, show->CapEXIFDescription})
        EXPECT_EQ(flags, (std::array<bool, 2>{false, false}));
}

TEST_F(ShowSettings, TheLookOfAFrameComesFromTheWindow) {
    config->SliderPercent[10] = 33.5f;
    config->SliderPercent[11] = 70.4f;
    config->SliderPercent[12] = 12.5f;
    config->cmbBorderPercent->setCurrentIndex(7);
    config->cmdBorderColour->setBackColor(0x0000FF);
    config->chkWidescreen->setChecked(true);
    config->cmbDSCFilter->setCurrentIndex(1);
    config->cmbMultiMonOption->setCurrentIndex(1);
    // The box offers to scroll every upright image; the show's flag is the other way round.
    config->chkScrollAllVerticalImages->setChecked(true);
    config->CaptionForeColor = 0xFF0000;
    QFont font = config->CaptionExample->font();
    font.setPointSize(18);
    font.setItalic(true);
    config->CaptionExample->setFont(font);

    const frmSlideShow* show = Read();
    // Rounded half to even.
    EXPECT_EQ(show->MaskPercent, 34);
    EXPECT_EQ(show->BackgroundPercent, 70);
    EXPECT_EQ(show->BWPercent, 12);
    EXPECT_EQ(show->BorderPercent, 35);
    EXPECT_EQ(show->BorderColour, QColor(Qt::red));
    EXPECT_FLOAT_EQ(show->WidescreenFactor, 1.334375f);
    EXPECT_FLOAT_EQ(show->ActiveWidescreenFactor, 1.334375f);
    EXPECT_TRUE(show->DSCShowFolderName);
    EXPECT_FALSE(show->MultiMonImagePerScreen);
    EXPECT_FALSE(show->ForceVertical);
    EXPECT_EQ(show->CaptionForeColor, QColor(Qt::blue));
    EXPECT_FLOAT_EQ(show->CaptionFontSize, 18.0f);
    EXPECT_TRUE(show->CaptionFontItalic);
    EXPECT_EQ(show->CaptionFontName, font.family());
}

TEST_F(ShowSettings, WatchdogFollowsTheIntervalOnlyUpTo22Seconds) {
    // A show whose watchdog had another interval before the settings were read.
    const std::pair<const char*, int> rows[] = {
        {"22", 32000}, {"23", 12345}, {"50", 12345}, {"51", 60000}, {"22.5", 32000}};
    for (auto [interval, expected] : rows) {
        config->txtImageInterval->setText(QString::fromLatin1(interval));
        const frmSlideShow* show =
            Read([](frmSlideShow* s) { s->LongProcessTimer->setInterval(12345); });
        EXPECT_EQ(show->LongProcessTimer->Interval(), expected) << interval;
    }
}

// A number too large for its variable is not converted: the variable keeps its built-in value
// rather than wrapping into one nobody typed.
TEST_F(ShowSettings, NumbersThatDoNotFitKeepTheBuiltInValue) {
    enum Size { Short, Long, Single };
    struct Setting {
        QLineEdit* box;
        Size size;
        std::function<double(const frmSlideShow*)> value;
        double builtIn;
    };
    const Setting settings[] = {
        {config->txtImageInterval, Short, [](auto* s) { return s->ImageInterval; }, 10},
        {config->txtMaxStackedImages, Short, [](auto* s) { return s->MaxStackedImages; }, 4},
        {config->txtShadowSize, Short, [](auto* s) { return s->ShadowSize; }, 8},
        {config->txtShadowDistance, Long, [](auto* s) { return s->ShadowDistance; }, 8},
        {config->txtRandomBackgroundChangeInterval, Short,
         [](auto* s) { return s->RandomBGFrames; }, 1},
        {config->txtRandomMaskChangeInterval, Short, [](auto* s) { return s->RandomMaskFrames; },
         1},
        {config->txtCrossfadeTime, Single, [](auto* s) { return s->PrefCrossfadeTime; }, 3},
    };
    struct Typed {
        const char* text;
        std::array<std::optional<double>, 3> bySize; // none: the built-in value stays
    };
    const Typed typed[] = {
        {"32767", {32767, 32767, 32767}},
        {"32768", {std::nullopt, 32768, 32768}},
        {"-32769", {std::nullopt, -32769, 1}}, // the crossfade's floor of one second
        {"40000", {std::nullopt, 40000, 40000}},
        {"1e10", {std::nullopt, std::nullopt, 1e10}},
        {"1e39", {std::nullopt, std::nullopt, std::nullopt}},
        {"junk", {0, 0, 1}},
    };
    for (const Typed& t : typed) {
        for (const Setting& s : settings)
            s.box->setText(QString::fromLatin1(t.text));
        const frmSlideShow* show = Read();
        for (const Setting& s : settings) {
            SCOPED_TRACE(s.box->objectName().toStdString() + " = " + t.text);
            EXPECT_FLOAT_EQ(s.value(show), t.bySize[s.size].value_or(s.builtIn));
        }
    }
    // The slider shares that the show takes as whole numbers.
    config->SliderPercent[10] = 1e10f;
    config->SliderPercent[11] = 32768.0f;
    config->SliderPercent[12] = 32768.0f;
    const frmSlideShow* show = Read();
    EXPECT_EQ(show->MaskPercent, 0);
    EXPECT_EQ(show->BackgroundPercent, 0);
    EXPECT_EQ(show->BWPercent, 32768);
}

TEST_F(ShowSettings, NothingIsLoggedWithoutTheDebugBox) {
    config->chkDebug->setChecked(false);
    config->txtCrossfadeTime->setText(QStringLiteral("0.2"));
    UseSpecificSound(Path(QStringLiteral("gone.wav")));
    frmSlideShow* show = Read();
    EXPECT_FALSE(DebugLogOn());
    // The floor and the missing sound are still applied, only not written down.
    EXPECT_FLOAT_EQ(show->CrossfadeTime, 1.0f);
    EXPECT_FALSE(show->PlaySound);
    EXPECT_EQ(show->lstDebug->count(), 0);
    EXPECT_FALSE(QFile::exists(Path(QStringLiteral("Tessaview_debug_log.txt"))));
}

TEST_F(ShowSettings, TheDebugLogHoldsTheValuesReadInOrder) {
    SaveSetting(QStringLiteral("xFadeStepTime"), QStringLiteral("0.1"));
    PutFile(config->PrefsFileName,
            "Tessaview Preferences File - written today\r\n6.0.1\r\n"
            "======================================================\r\n"
            "DEBUGLOG\r\n"
            "INTERVAL,7\r\nCROSSFADETIME,2.5\r\nIMAGEORDER,3\r\nUSEKEYWORD,1, snow \r\n"
            "BACKGROUNDIMAGE,1,1,40\r\n/pictures/bg.jpg\r\n"
            "RANDOMBACKGROUNDIMAGES,False,3\r\nUSELOCALBACKGROUND,0\r\n"
            "SCROLLALLVERTICALIMAGES,0\r\nCAPTIONPOSITIONA,2\r\n"
            "ENABLEMULTIMONITORS,1,1\r\n"
            "STACKIMAGES,6\r\nADDSHADOWS,1,4,12\r\n"
            "PLAYSOUND,0\r\n/sounds/ding.wav\r\n"
            "NIGHT MODE,1,10,20,False\r\nEXITOPTIONS,1,0,0,1\r\nSHOWSTATUS,1\r\n");
    config = ReloadConfig();

    frmSlideShow* show = Read();
    EXPECT_TRUE(DebugLogOn());
    EXPECT_EQ(show->BackgroundPercent, 40);
    EXPECT_FALSE(show->TileBackgroundImage);
    EXPECT_EQ(show->RandomBGFrames, 3);
    EXPECT_EQ(show->MaxStackedImages, 6);
    EXPECT_EQ(show->ShadowSize, 4);
    EXPECT_TRUE(show->NightModeEnabled);
    EXPECT_FALSE(show->NightMonitorOff);
    EXPECT_FALSE(show->ExitOnKey);
    EXPECT_FALSE(show->ExitOnMouse);
    EXPECT_TRUE(show->ExitOnClick);
    EXPECT_TRUE(show->ShowStatus);
    show->CloseDebugLog();

    const QStringList log =
        QString::fromUtf8(ReadFile(Path(QStringLiteral("Tessaview_debug_log.txt"))))
            .split(QStringLiteral("\r\n"));
    // clang-format off
    const char* const expected[] = {
        "============================", "Reading in prefs from Config form...", "InstallPath is %1",
        "  Image Interval 7 s ", "  Crossfade Time 2.5 s ",
        "  Last xFadeStepTime (tuned hopefully) = 0.1", "  Random Images  = True",
        "  Random Folders = True", "  Current Random Folder > ", "  Use Keyword = True  (snow)",
        "  UseBackgroundImage = True", "  > /pictures/bg.jpg", "  TileBackgroundimage = False",
        "  RandomBGImage = False (3 frames)", "  Scroll Panos = True", "     Min pano ratio is 0.7",
        "  ForceVertical = True", "  Show Captions = True", "  Caption 0 Position 2",
        "  Caption 1 Position 6", "  DSCFilterON = False", "     show foldername = False",
        "  MultiMonitors = True", "  MultiMon image per screen = False", "  use min height = False",
        "  Use Normal Layout = True", "  Stacked Images = False",
        "                   Stop Stack If Pano is True", "  FourUp = False",
        " Layout Display Percentages : ", "        Layout 0 = 100 % ",
        "        Layout 0  = 0 to 100", "  Use Image Masks = True", "  Random = True",
        "  Shadows = True  distance = 12", "Playsound False", "RandomSound True",
        "SoundPath = /sounds/ding.wav", "Night Mode .... enabled = True", "      start zone = 10",
        "        end zone = 20", "     monitor off = False", " Night mode zones : ",
        "Initialization ... "};
    // clang-format on
    qsizetype at = 0;
    for (const char* text : expected) {
        const QString line = QString::fromUtf8(text).replace("%1", install.path());
        const qsizetype found = log.indexOf(line, at);
        EXPECT_GE(found, at) << "missing or out of order: \"" << text << '"';
        if (found >= at) at = found + 1;
    }
    EXPECT_FALSE(log.contains(
        QStringLiteral("  If there is a local image that starts w background, use that")));
}

} // namespace
