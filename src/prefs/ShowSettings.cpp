// The show's run-time settings: the built-in values, what the show takes from the hidden
// configuration window, and the tuned crossfade step kept in the settings store between shows.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "config/ColourButton.h"
#include "config/frmConfig.h"
#include "night_sound/NightZones.h"
#include "night_sound/SoundMusic.h"
#include "platform/Clock.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"
#include "prefs/PrefsTable.h"
#include "show/frmSlideShow.h"

#include <QLocale>
#include <algorithm>

namespace {

// A box at value 1, a full tick.
bool IsOne(const QCheckBox* box) {
    return box->checkState() == Qt::Checked;
}

// A single prints with up to the seven significant digits it holds.
QString Single(float value) {
    return QString::number(static_cast<double>(value), 'g', 7);
}

// Any mark in the box counts.
void ReadBox(const QCheckBox* box, bool& target) {
    target = box->checkState() != Qt::Unchecked;
}

// A number that does not fit its variable leaves the variable as it was, rather than wrapping
// into a value nobody typed (an interval of 40000 s must not become a negative one).
template <typename T> void Assign(std::optional<T> value, T& target) {
    if (value) target = *value;
}
void Convert(double value, std::int16_t& target) {
    Assign(vb::CInt(value), target);
}
void Convert(double value, std::int32_t& target) {
    Assign(vb::CLng(value), target);
}
void Convert(double value, float& target) {
    Assign(vb::CSng(value), target);
}

// Numeric boxes: the number at the front of the trimmed text, junk reading as 0.
template <typename T> void ReadNumber(const QLineEdit* box, T& target) {
    Convert(vb::Val(box->text().trimmed()), target);
}

// The index of the first option set, counting from 1; the target stays when none is set.
void ReadPosition(const std::array<QRadioButton*, 7>& options, std::int16_t& target) {
    for (std::size_t p = 1; p < options.size(); ++p) {
        if (options[p]->isChecked()) {
            target = static_cast<std::int16_t>(p);
            return;
        }
    }
}

} // namespace

void frmSlideShow::DefaultPrefs() {
    DebugLog::instance().SetOff();
    static_cast<ShowPrefs&>(*this) = ShowPrefs();
}

void frmSlideShow::ReadPerfSettings() {
    const QString stored = GetSetting(QStringLiteral("xFadeStepTime"), QStringLiteral("0.1"));
    xFadeStepTime = static_cast<float>(vb::Val(stored.trimmed()));
    BugLog(QStringLiteral("Reading xfadesteptime from reg : ") + Single(xFadeStepTime));
}

void frmSlideShow::WritePerfSettings() {
    SaveSetting(QStringLiteral("xFadeStepTime"),
                QString::number(static_cast<double>(xFadeStepTime), 'g', 7));
}

// Reads the settings from the hidden configuration window. A feature whose files are missing
// is switched off here, once, with a line in the debug log and nothing on the screen: the show
// must never stop to ask.
void frmSlideShow::LoadShowSettings() {
    SetStatus(QStringLiteral("Loading Preferences"));
    frmConfig* config = frmConfig::instance();

    if (IsOne(config->chkDebug)) {
        OpenDebugLog();
        BugLog(QLocale::system().toString(platform::Now(), QLocale::ShortFormat));
        BugLog(QStringLiteral("============================"));
        BugLog(QStringLiteral("Reading in prefs from Config form..."));
    }
    BugLog(QStringLiteral("InstallPath is ") + InstallDir);

    // --- Timing and order ---------------------------------------------------------------
    ReadNumber(config->txtImageInterval, ImageInterval);
    BugLog(QStringLiteral("  Image Interval ") + QString::number(ImageInterval) +
           QStringLiteral(" s "));
    ReadNumber(config->txtCrossfadeTime, CrossfadeTime);
    BugLog(QStringLiteral("  Crossfade Time ") + Single(CrossfadeTime) + QStringLiteral(" s "));
    // The crossfade is the one setting with a floor. There is no upper limit, and no tie to
    // the image interval.
    if (CrossfadeTime < 1.0f) {
        CrossfadeTime = 1.0f;
        BugLog(QStringLiteral(" (setting it to 1s) "));
    }
    PrefCrossfadeTime = CrossfadeTime;
    BugLog(QStringLiteral("  Last xFadeStepTime (tuned hopefully) = ") + Single(xFadeStepTime));
    SetLongProcessInterval();

    // The four orders are the four pairs of the two flags; anything past them is plain random.
    const int order = config->cmbImageOrder->currentIndex();
    RandomImages = order != 0 && order != 2;
    RandomFolders = order == 2 || order == 3;
    BugLog(QStringLiteral("  Random Images  = ") + prefs::BoolText(RandomImages));
    BugLog(QStringLiteral("  Random Folders = ") + prefs::BoolText(RandomFolders));
    if (!RandomFolders) CurrentRandomFolder.clear();
    BugLog(QStringLiteral("  Current Random Folder > ") + CurrentRandomFolder);
    ReadBox(config->chkUseKeyWord, UseKeyword);
    Keyword = config->txtKeyword->text().trimmed();
    BugLog(QStringLiteral("  Use Keyword = ") + prefs::BoolText(UseKeyword) +
           QStringLiteral("  (") + Keyword + ')');
    BackgroundColour = ColourFromValue(config->cmdChangeBackgroundColour->BackColor());

    // --- Background images --------------------------------------------------------------
    ReadBox(config->chkUseBackgroundImages, UseBackgroundImage);
    BugLog(QStringLiteral("  UseBackgroundImage = ") + prefs::BoolText(UseBackgroundImage));
    TileBackgroundImage = config->cmbTileBackground->currentIndex() == 0;
    Convert(config->GetLayoutSetting(11), BackgroundPercent);
    BackgroundImagePath = config->txtBackgroundImage->text().trimmed();
    BugLog(QStringLiteral("  > ") + BackgroundImagePath);
    BugLog(QStringLiteral("  TileBackgroundimage = ") + prefs::BoolText(TileBackgroundImage));
    RandomBGImage = config->optRandomBackgroundImage->isChecked();
    ReadNumber(config->txtRandomBackgroundChangeInterval, RandomBGFrames);
    BugLog(QStringLiteral("  RandomBGImage = ") + prefs::BoolText(RandomBGImage) +
           QStringLiteral(" (") + QString::number(RandomBGFrames) + QStringLiteral(" frames)"));
    if (RandomBGImage) {
        LoadListOfBackgroundImages();
        if (lstBackgroundImages.isEmpty()) {
            BugLog(QStringLiteral("  *** No images found in ") + InstallDir +
                   QStringLiteral("/Backgrounds"));
            RandomBGImage = false;
        }
    }
    ReadBox(config->chkUseLocalBackground, UseLocalBackground);
    if (UseLocalBackground)
        BugLog(QStringLiteral("  If there is a local image that starts w background, use that"));

    // --- Panoramas ----------------------------------------------------------------------
    ReadBox(config->chkScrollPanos, ScrollPanos);
    BugLog(QStringLiteral("  Scroll Panos = ") + prefs::BoolText(ScrollPanos));
    BugLog(QStringLiteral("     Min pano ratio is ") + Single(MinPanoRatio));
    // The box offers to scroll every upright image; the variable forces it when the box is
    // cleared, so the sense is turned round here.
    ForceVertical = !IsOne(config->chkScrollAllVerticalImages);
    BugLog(QStringLiteral("  ForceVertical = ") + prefs::BoolText(ForceVertical));

    // --- Captions -----------------------------------------------------------------------
    ReadBox(config->chkShowCaptions, ShowCaptions);
    BugLog(QStringLiteral("  Show Captions = ") + prefs::BoolText(ShowCaptions));
    for (std::size_t n = 0; n < 2; ++n) {
        ReadPosition(n == 0 ? config->Position1 : config->Position2, CaptionPosition[n]);
        ReadBox(config->chkCapFileName[n], CapFileName[n]);
        ReadBox(config->chkCapFileNameFullPath[n], CapFileNameFullPath[n]);
        ReadBox(config->chkCapFolderName[n], CapFolderName[n]);
        ReadBox(config->chkCapFolderNameFullPath[n], CapFolderNameFullPath[n]);
        ReadBox(config->chkCapDimensions[n], CapDimensions[n]);
        ReadBox(config->chkCapEXIFDate[n], CapEXIFDate[n]);
        ReadBox(config->chkCapEXIFDescription[n], CapEXIFDescription[n]);
        BugLog(QStringLiteral("  Caption %1 Position %2").arg(n).arg(CaptionPosition[n]));
    }
    ReadBox(config->chkFloatingCaptions, FloatingCaptions);
    const QFont font = config->CaptionExample->font();
    CaptionFontSize = static_cast<float>(font.pointSizeF());
    CaptionFontBold = font.bold();
    CaptionFontItalic = font.italic();
    // The example's colours live beside it on the form, in the preferences file's form.
    CaptionForeColor = ColourFromValue(config->CaptionForeColor);
    CaptionBackColor = ColourFromValue(config->CaptionBackColor);
    CaptionFontName = font.family();
    ReadBox(config->chkShowExtension, ShowFileExtension);
    ReadBox(config->chkUseDSCFilter, DSCFilterON);
    BugLog(QStringLiteral("  DSCFilterON = ") + prefs::BoolText(DSCFilterON));
    DSCShowFolderName = config->cmbDSCFilter->currentIndex() != 0;
    BugLog(QStringLiteral("     show foldername = ") + prefs::BoolText(DSCShowFolderName));

    // --- Monitors -----------------------------------------------------------------------
    ReadBox(config->chkEnableMultiMon, MultiMonitors);
    BugLog(QStringLiteral("  MultiMonitors = ") + prefs::BoolText(MultiMonitors));
    MultiMonImagePerScreen = config->cmbMultiMonOption->currentIndex() != 1;
    BugLog(QStringLiteral("  MultiMon image per screen = ") +
           prefs::BoolText(MultiMonImagePerScreen));
    ReadBox(config->chkMultiMonUseMinHeight, MultiMonUseMinHeight);
    BugLog(QStringLiteral("  use min height = ") + prefs::BoolText(MultiMonUseMinHeight));

    // --- Layouts ------------------------------------------------------------------------
    LayoutInUse = 0;
    ReadBox(config->chkLayout[0], UseNormalLayout);
    BugLog(QStringLiteral("  Use Normal Layout = ") + prefs::BoolText(UseNormalLayout));
    ReadBox(config->chkLayout[1], UseStackedLayout);
    ReadNumber(config->txtMaxStackedImages, MaxStackedImages);
    ReadBox(config->chkStopStackIfPano, StopStackIfPano);
    BugLog(QStringLiteral("  Stacked Images = ") + prefs::BoolText(UseStackedLayout));
    BugLog(QStringLiteral("                   Stop Stack If Pano is ") +
           prefs::BoolText(StopStackIfPano));
    ReadBox(config->chkLayout[2], FourUp);
    BugLog(QStringLiteral("  FourUp = ") + prefs::BoolText(FourUp));

    for (std::size_t i = 0; i < LayoutRange.size(); ++i)
        LayoutRange[i] = config->GetLayoutSetting(static_cast<int>(i));
    BugLog(QStringLiteral(" Layout Display Percentages : "));
    for (std::size_t i = 0; i < LayoutRange.size(); ++i)
        BugLog(QStringLiteral("        Layout %1 = %2 % ").arg(i).arg(Single(LayoutRange[i])));
    // Upper bounds of consecutive bands, so that a number drawn from 0 to 100 falls in one.
    LayoutRange[1] += LayoutRange[0];
    LayoutRange[2] += LayoutRange[1];
    BugLog(QStringLiteral(" Layout Display Percent Ranges: "));
    BugLog(QStringLiteral("        Layout 0  = 0 to ") + Single(LayoutRange[0]));
    BugLog(QStringLiteral("        Layout 1  = %1 to %2")
               .arg(Single(LayoutRange[0]), Single(LayoutRange[1])));
    BugLog(QStringLiteral("        Layout 2  = %1 to %2")
               .arg(Single(LayoutRange[1]), Single(LayoutRange[2])));

    // --- Masks --------------------------------------------------------------------------
    ReadBox(config->chkUseImageMasks, UseImageMask);
    Convert(config->GetLayoutSetting(10), MaskPercent);
    ImageMaskPath = config->txtImageMask->text().trimmed();
    RandomImageMask = config->optRandomImageMasks->isChecked();
    ReadNumber(config->txtRandomMaskChangeInterval, RandomMaskFrames);
    BugLog(QStringLiteral("  Use Image Masks = ") + prefs::BoolText(UseImageMask));
    BugLog(QStringLiteral("  Random = ") + prefs::BoolText(RandomImageMask));
    if (RandomImageMask) {
        LoadListOfImageMasks();
        if (lstMasks.isEmpty()) {
            BugLog(QStringLiteral("No image Masks found in ") + InstallDir +
                   QStringLiteral("/Masks"));
            RandomImageMask = false;
        }
    }
    // Random masks that found none fall through to here: masks stay on only if the specific
    // mask file is there.
    if (UseImageMask && !RandomImageMask && !common::FileExists(ImageMaskPath)) {
        BugLog(QStringLiteral("   ** Can't find the image mask file.  Turning off UseImageMask."));
        UseImageMask = false;
    }

    // --- Border, shadows, black and white, wide screen -----------------------------------
    ReadBox(config->chkAddWhiteBorder, AddBorder);
    BorderColour = ColourFromValue(config->cmdBorderColour->BackColor());
    BorderPercent = config->cmbBorderPercent->currentIndex() * 5;
    ReadBox(config->chkAddShadows, UseShadows);
    ReadNumber(config->txtShadowSize, ShadowSize);
    ReadNumber(config->txtShadowDistance, ShadowDistance);
    BugLog(QStringLiteral("  Shadows = ") + prefs::BoolText(UseShadows) +
           QStringLiteral("  distance = ") + QString::number(ShadowDistance));
    ReadBox(config->chkBlackAndWhite, UseBlackAndWhite);
    Convert(config->GetLayoutSetting(12), BWPercent);
    ReadBox(config->chkAddContrastToBW, AddContrastToBW);
    BWInUse = false;
    WidescreenFactor = IsOne(config->chkWidescreen) ? 1.334375f : 1.0f;
    ActiveWidescreenFactor = WidescreenFactor;

    // --- Sound and music ----------------------------------------------------------------
    ReadBox(config->chkPlaySound, PlaySound);
    RandomSound = config->optRandomSound->isChecked();
    SoundPath = config->txtSoundFile->text();
    BugLog(QStringLiteral("Playsound ") + prefs::BoolText(PlaySound));
    BugLog(QStringLiteral("RandomSound ") + prefs::BoolText(RandomSound));
    BugLog(QStringLiteral("SoundPath = ") + SoundPath);
    if (PlaySound && !RandomSound) {
        if (!common::FileExists(SoundPath)) {
            BugLog(QStringLiteral(" Could not find the specific sound file.  Turning sound off."));
            PlaySound = false;
        } else if (!LoadAudioPlayer(0, SoundPath)) {
            // Sound is left on; with player 0 empty the changes of image stay silent. A sound
            // that loads stays in player 0 for the whole show.
            BugLog(QStringLiteral("Unable to load sound file, "));
        }
    }
    if (PlaySound && RandomSound) {
        const QString folder = InstallDir + QStringLiteral("/Sounds");
        if (common::FileExists(folder)) {
            SoundsFileBox.Path = folder + '/';
            SoundsFileBox.Pattern = QString::fromLatin1(sound::kAudioFilePattern);
            SoundsFileBox.Refresh();
        } else {
            BugLog(QStringLiteral("*** no folder ") + folder + QStringLiteral(" ***"));
            PlaySound = false;
        }
    }
    ReadBox(config->chkPlayMusic, PlayMusic);
    RandomMusicFromFolder = config->optRandomMusicFromFolder->isChecked();
    MusicPlaylist = config->txtMusicPlaylist->text();

    // --- Night mode ---------------------------------------------------------------------
    ReadBox(config->chkNightMode, NightModeEnabled);
    NightMonitorOff = config->optTurnMonitorOFF->isChecked();
    NightStartZone = vb::Wrap16(config->GetNightModeSetting(0));
    NightEndZone = vb::Wrap16(config->GetNightModeSetting(1));
    BugLog(QStringLiteral("Night Mode .... enabled = ") + prefs::BoolText(NightModeEnabled));
    BugLog(QStringLiteral("      start zone = ") + QString::number(NightStartZone));
    BugLog(QStringLiteral("        end zone = ") + QString::number(NightEndZone));
    BugLog(QStringLiteral("     monitor off = ") + prefs::BoolText(NightMonitorOff));
    night::MarkNightZones(NightZone, NightStartZone, NightEndZone);
    BugLog(QStringLiteral(" Night mode zones : "));

    // --- Status, cache and ways out ------------------------------------------------------
    ReadBox(config->chkShowStatus, ShowStatus);
    ReadBox(config->chkVetCache, VetCache);
    ReadBox(config->chkExitOnESC, ExitOnESC);
    ReadBox(config->chkExitOnMouse, ExitOnMouse);
    ReadBox(config->chkExitOnClick, ExitOnClick);
    ReadBox(config->chkExitOnKey, ExitOnKey);
}
