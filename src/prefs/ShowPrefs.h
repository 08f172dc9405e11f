#pragma once

#include <QColor>
#include <QString>
#include <array>
#include <cstdint>

// The show's settings, in the order it reads them, each with the value it has until the
// settings are read. A show starts from these and takes the rest from the settings window.
struct ShowPrefs {
    std::int16_t ImageInterval = 10;
    float CrossfadeTime = 3.0f;
    float PrefCrossfadeTime = 3.0f;
    float xFadeStepTime = 0.1f;
    bool RandomImages = true;
    bool RandomFolders = false;
    QString CurrentRandomFolder;
    bool UseKeyword = false;
    QString Keyword = QStringLiteral("Christmas");
    QColor BackgroundColour = Qt::black;
    bool UseBackgroundImage = false;
    bool TileBackgroundImage = true;
    std::int16_t BackgroundPercent = 0;
    QString BackgroundImagePath = QStringLiteral("xx");
    bool RandomBGImage = false;
    std::int16_t RandomBGFrames = 1;
    bool UseLocalBackground = true;
    bool ScrollPanos = true;
    bool ForceVertical = false;
    float MinPanoRatio = 0.7f;
    bool ShowCaptions = true;
    std::array<std::int16_t, 2> CaptionPosition{4, 6};
    std::array<bool, 2> CapFileName{false, true};
    std::array<bool, 2> CapFileNameFullPath{false, false};
    std::array<bool, 2> CapFolderName{false, true};
    std::array<bool, 2> CapFolderNameFullPath{false, false};
    std::array<bool, 2> CapDimensions{false, true};
    std::array<bool, 2> CapEXIFDate{false, true};
    std::array<bool, 2> CapEXIFDescription{true, false};
    bool FloatingCaptions = false;
    float CaptionFontSize = 10.0f;
    bool CaptionFontBold = true;
    bool CaptionFontItalic = false;
    QColor CaptionForeColor = Qt::white;
    QColor CaptionBackColor = Qt::black;
    QString CaptionFontName = QStringLiteral("Arial");
    bool ShowFileExtension = false;
    bool DSCFilterON = true;
    bool DSCShowFolderName = false;
    bool MultiMonitors = true;
    bool MultiMonImagePerScreen = false;
    bool MultiMonUseMinHeight = false;
    std::int16_t LayoutInUse = 0;
    bool UseNormalLayout = true;
    bool UseStackedLayout = false;
    std::int16_t MaxStackedImages = 4;
    bool StopStackIfPano = true;
    bool FourUp = false;
    // Upper bounds of consecutive percentage bands, one per layout.
    std::array<float, 3> LayoutRange{100.0f, 100.0f, 100.0f};
    bool UseImageMask = false;
    std::int32_t MaskPercent = 0;
    QString ImageMaskPath;
    bool RandomImageMask = false;
    std::int16_t RandomMaskFrames = 1;
    bool AddBorder = false;
    QColor BorderColour = Qt::white;
    std::int32_t BorderPercent = 50;
    bool UseShadows = true;
    std::int16_t ShadowSize = 8;
    std::int32_t ShadowDistance = 8;
    bool UseBlackAndWhite = false;
    std::int32_t BWPercent = 0;
    bool AddContrastToBW = false;
    bool BWInUse = false;
    float WidescreenFactor = 1.0f;
    float ActiveWidescreenFactor = 1.0f;
    bool PlaySound = false;
    bool RandomSound = true;
    QString SoundPath;
    bool PlayMusic = false;
    bool RandomMusicFromFolder = true;
    QString MusicPlaylist;
    bool NightModeEnabled = false;
    bool NightMonitorOff = true;
    std::int16_t NightStartZone = 79;
    std::int16_t NightEndZone = 29;
    // Quarter-hours of the day, 0 to 96; true for a night zone.
    std::array<bool, 97> NightZone{};
    bool ShowStatus = false;
    bool VetCache = true;
    bool ExitOnESC = true;
    bool ExitOnMouse = true;
    bool ExitOnClick = true;
    bool ExitOnKey = true;

    // Constants of the layouts that no setting changes.
    float StackScale = 0.8f;
    float FourUpScale = 0.49f;
};
