#pragma once

#include "app/Forms.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QString>
#include <QWidget>
#include <array>
#include <cstdint>
#include <map>
#include <vector>

class ColourButton;
class VbTimer;

// The window's two heights for a screen of this many pixels: collapsed and expanded.
struct ConfigHeights {
    int collapsed;
    int expanded;
};
ConfigHeights ConfigFormHeights(int screenHeightPixels);

// The configuration window. It is also where the show finds its settings, and the form that
// hands over between a show and the rest of the program.
class frmConfig : public QWidget, public FormSingleton<frmConfig> {
    Q_OBJECT
public:
    frmConfig();
    ~frmConfig() override;
    void beforeUnload();

    void Initialize();
    void RunSaver();
    void RunConfig();
    void cmdRunShow_Click();
    void StopShowTimer_Timer();
    void CloseProgramFromConfig();
    void CheckForRemainingList();

    void cmdOk_Click();
    void cmdCancel_Click();
    void cmdApply_Click();
    void cmdHelp_Click();
    void Form_Unload();
    void SavePrefs();

    bool GetApplyWasEnabled() const { return ApplyWasEnabled; }

    // --- The preferences file and the helpers it calls ------------------------------------
    void DefaultPrefs();
    void LoadPrefs();
    // The whole preferences file as SavePrefs writes it.
    QString PrefsText() const;
    void SetLayoutSlider(int index, int percent);
    float GetLayoutSetting(int slider) const;
    void SetNightModeSkyBar(int startZone, int endZone);
    int GetNightModeSetting(int n) const;
    void InitTimeList();
    void FillFontComboBox();
    static bool FindInComboBox(const QString& text, QComboBox* combo);
    void UpdateCaptionExample();
    static void LoadPreview(const QString& path, QLabel* picture);
    void ShowMultiMonDetail();
    void chkUseImageMasks_Click();
    void optRandomImageMasks_Click();
    void chkAddContrastToBW_Click();
    void chkScrollAllVerticalImages_Click();
    void SetStackedPreview();

    // The percentages of the sliders, by slider number (0-2 layouts, 10 masks, 11 background
    // images, 12 black and white).
    std::map<int, float> SliderPercent{{0, 100.0f}, {1, 0.0f},    {2, 0.0f},
                                       {10, 25.0f}, {11, 100.0f}, {12, 0.0f}};
    std::array<int, 2> NightZoneRange{88, 28};
    // Set by DEBUGLOG in the preferences file; only the file can turn it on.
    bool DebugFlag = false;

    bool FormIsInitializing = false;
    bool ApplyWasEnabled = false;
    QString PrefsFileName;

    QPushButton* cmdRunShow = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdHelp = nullptr;
    QLabel* lblVersion = nullptr;

    // --- Settings controls, by panel ---------------------------------------------------------
    QScrollArea* Portal = nullptr;
    QWidget* PageHolder = nullptr;
    std::array<QWidget*, 11> setPage{};

    QCheckBox* chkDebug = nullptr;
    QLineEdit* txtImageInterval = nullptr;
    QLineEdit* txtCrossfadeTime = nullptr;
    QComboBox* cmbImageOrder = nullptr;
    QCheckBox* chkUseKeyWord = nullptr;
    QLineEdit* txtKeyword = nullptr;
    ColourButton* cmdChangeBackgroundColour = nullptr;

    QCheckBox* chkUseBackgroundImages = nullptr;
    QComboBox* cmbTileBackground = nullptr;
    QLineEdit* txtBackgroundImage = nullptr;
    QRadioButton* optRandomBackgroundImage = nullptr;
    QRadioButton* optSpecificbackgroundImage = nullptr;
    QLineEdit* txtRandomBackgroundChangeInterval = nullptr;
    QCheckBox* chkUseLocalBackground = nullptr;
    QLabel* picBackgroundPreview = nullptr;
    QLabel* lblBackgroundImagesFolder = nullptr;

    QCheckBox* chkScrollPanos = nullptr;
    QCheckBox* chkScrollAllVerticalImages = nullptr;

    QCheckBox* chkShowCaptions = nullptr;
    QComboBox* cmbFontSize = nullptr;
    QComboBox* cmbFontList = nullptr;
    QWidget* CaptionFrame = nullptr;
    QLabel* CaptionExample = nullptr;
    std::uint32_t CaptionForeColor = 0;
    std::uint32_t CaptionBackColor = 0;
    std::array<QCheckBox*, 2> chkCapFileName{};
    std::array<QCheckBox*, 2> chkCapFileNameFullPath{};
    std::array<QCheckBox*, 2> chkCapFolderName{};
    std::array<QCheckBox*, 2> chkCapFolderNameFullPath{};
    std::array<QCheckBox*, 2> chkCapEXIFDate{};
    std::array<QCheckBox*, 2> chkCapDimensions{};
    std::array<QCheckBox*, 2> chkCapEXIFDescription{};
    QCheckBox* chkShowExtension = nullptr;
    // Indexed 1 to 6; element 0 is unused.
    std::array<QRadioButton*, 7> Position1{};
    std::array<QRadioButton*, 7> Position2{};
    QCheckBox* chkFloatingCaptions = nullptr;
    QCheckBox* chkUseDSCFilter = nullptr;
    QComboBox* cmbDSCFilter = nullptr;
    QListWidget* lstDSCFilter = nullptr;

    QCheckBox* chkEnableMultiMon = nullptr;
    QComboBox* cmbMultiMonOption = nullptr;
    std::array<QLabel*, 2> lblMultiMonDetail{};
    QCheckBox* chkMultiMonUseMinHeight = nullptr;

    QCheckBox* chkNightMode = nullptr;
    QRadioButton* optTurnMonitorOFF = nullptr;
    QRadioButton* optNightModeBlankScreen = nullptr;
    std::array<QLabel*, 2> lblTime{};
    QListWidget* TimeList = nullptr;

    std::array<QCheckBox*, 3> chkLayout{};
    std::map<int, QSlider*> imgLayoutSlider;
    std::map<int, QLabel*> lblLayoutSetting;
    QLineEdit* txtMaxStackedImages = nullptr;
    QCheckBox* chkStopStackIfPano = nullptr;
    QCheckBox* chkAddWhiteBorder = nullptr;
    ColourButton* cmdBorderColour = nullptr;
    QComboBox* cmbBorderPercent = nullptr;
    std::array<QLabel*, 2> picStackedPreview{};

    QCheckBox* chkUseImageMasks = nullptr;
    QLineEdit* txtImageMask = nullptr;
    QLabel* picMaskPreview = nullptr;
    QRadioButton* optRandomImageMasks = nullptr;
    QRadioButton* optUseSpecificMask = nullptr;
    QLineEdit* txtRandomMaskChangeInterval = nullptr;
    QCheckBox* chkAddShadows = nullptr;
    QLineEdit* txtShadowSize = nullptr;
    QLineEdit* txtShadowDistance = nullptr;
    QCheckBox* chkBlackAndWhite = nullptr;
    QCheckBox* chkAddContrastToBW = nullptr;

    QCheckBox* chkPlaySound = nullptr;
    QLineEdit* txtSoundFile = nullptr;
    QLabel* lblSoundLength = nullptr;
    QRadioButton* optRandomSound = nullptr;
    QRadioButton* optSpecificSound = nullptr;
    QCheckBox* chkPlayMusic = nullptr;
    QLineEdit* txtMusicPlaylist = nullptr;
    QRadioButton* optRandomMusicFromFolder = nullptr;
    QRadioButton* optSpecificPlayList = nullptr;

    QCheckBox* chkWidescreen = nullptr;
    QCheckBox* chkShowStatus = nullptr;
    QCheckBox* chkVetCache = nullptr;
    QCheckBox* chkExitOnESC = nullptr;
    QCheckBox* chkExitOnKey = nullptr;
    QCheckBox* chkExitOnMouse = nullptr;
    QCheckBox* chkExitOnClick = nullptr;

    VbTimer* StopShowTimer = nullptr;
    VbTimer* ScrollDemoTimer = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CenterOnScreen();
    void BuildSettingsPanels();
    bool unloading_ = false;
};
