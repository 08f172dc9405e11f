#pragma once

#include "app/Forms.h"
#include "config/ConfigGeometry.h"
#include "config/ConfigLook.h"
#include "prefs/PrefsTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QWidget>
#include <array>
#include <cstdint>
#include <map>
#include <vector>

class ColourButton;
class QPixmap;

// A picture of the window's artwork; a missing one gives an empty square of that size, so the
// layout holds and the control stays clickable.
QPixmap ConfigArt(const QString& resource, QSize size);
class VbTimer;

// The configuration window. It is also where the show finds its settings, and the form that
// hands over between a show and the rest of the program. Sizes and positions are in pixels.
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
    void NukeRemList();

    void cmdOk_Click();
    void cmdCancel_Click();
    void cmdApply_Click();
    void cmdHelp_Click();
    void cmdNukeRemlist_Click();
    void Form_Unload();
    void SavePrefs();

    bool GetApplyWasEnabled() const { return ApplyWasEnabled; }

    // --- The shell: sizes, the accordion of panels, the window's growth ------------------------
    void FormatConfigForm();
    void UpdatePageHolder();
    void imgSetPageOpen_Click(int index);
    void imgSetPageClose_Click(int index);
    void openPageTimer_Timer(int index);
    void closePageTimer_Timer(int index);
    void expandConfigTimer_Timer();
    void portalScroll_Change();
    void imgButton_MouseDown(int index);
    void imgButton_MouseUp(int index);
    void Add_ColumnHeaders();
    void ScanAndLoadImageLists(const QString& folder);
    void ShowHideFileDetails(bool visible);

    // --- The image lists: one row of lvwFolderList and one lstImages element per list file ----
    // Rows are numbered from 1, as lstImages is; element 0 of lstImages only fixes place and size.
    void LoadImageList(const QString& fileName);
    // False when the file could not be written; the row's count is updated either way.
    bool WriteImageList(int index);
    void LoadOrClearImageList(int index);
    // The one way the add dialogs create a list. options holds name and value of slots 1 to 5.
    bool AddNewImageFile(const QString& title, const QString& type, const QString& path,
                         const QString& count, const QString& fileName, const QString& lastScan,
                         const QString& scanInterval,
                         const std::array<std::array<QString, 2>, 5>& options,
                         const QStringList& images);
    QString BuildImageListFileName(const QString& folderPath) const;
    QString BuildWebImageFileName(const QString& sourceText, QString& listName) const;
    bool InFolderList(const QString& fileName) const;
    void ShowFileDetails(int row);
    void lblImageCount_Click();
    void cmdRescanNow_Click();
    void DeleteFolderListItem(int row);
    // The row number of the selected list, 0 when none is selected.
    int SelectedListRow() const;
    // A row's column text (0 is the row's text); empty for a row that does not exist.
    QString ListColumn(int row, int column) const;
    void Form_MouseDown(const QPoint& pointer);
    void Form_MouseMove(const QPoint& pointer);
    void Form_MouseUp();
    // Anything that changes a setting calls this; saving clears it.
    void MarkChanged();

    // --- The preferences file and the helpers it calls ------------------------------------
    void DefaultPrefs();
    void LoadPrefs();
    // The whole preferences file as SavePrefs writes it.
    QString PrefsText() const;
    // Every line of the preferences file, with the controls each key's fields belong to.
    const prefs::Table& PrefsTable() const { return prefsTable_; }
    void SetLayoutSlider(int index, int percent);
    float GetLayoutSetting(int slider) const;
    void BalanceLayoutSettings(int changedIndex);
    void imgLayoutSlider_MouseDown(int index, int pointerX);
    void imgLayoutSlider_MouseMove(int index, int pointerX);
    void imgLayoutSlider_MouseUp(int index);
    void imgSkyTab_MouseDown(int index, int pointerX);
    void imgSkyTab_MouseMove(int index, int pointerX);
    void imgSkyTab_MouseUp(int index);
    void SetNightModeSkyBar(int startZone, int endZone);
    void AdjustSkyBarMask();
    int GetNightModeSetting(int n) const;
    void InitTimeList();
    void FillFontComboBox();
    static bool FindInComboBox(const QString& text, QComboBox* combo);
    void UpdateCaptionExample();
    void LoadPreview(const QString& path, QLabel* picture);
    void SetBackgroundWarning();
    void CheckForImageMask();
    void CheckIfShowRandBackgroundImage();

    // Handlers with more to them than marking the change.
    void chkLayout_Click(int index);
    void chkUseImageMasks_Click();
    void optRandomImageMasks_Click();
    void chkBlackAndWhite_Click();
    void chkAddContrastToBW_Click();
    void chkAddShadows_Click();
    void chkAddWhiteBorder_Click();
    void chkWidescreen_Click();
    void chkScrollPanos_Click();
    void ShowPanoDemo();
    void chkScrollAllVerticalImages_Click();
    void chkUseBackgroundImages_Click();
    void optBackgroundImage_Click();
    void chkMultiMonUseMinHeight_Click();
    void cmbMultiMonOption_Click();
    void cmdBold_Click();
    void cmdItalic_Click();
    void cmdCapColour_Click();
    void cmdCapBack_Click();
    void cmdBorderColour_Click();
    void cmdChangeBackgroundColour_Click();
    void ScrollDemoTimer_Timer();
    // The Sounds panel: its controls follow the check box; the length of the chosen sound, or
    // "err" when it cannot be played; a sound played as the show would; the file dialogs.
    void chkPlaySound_Click();
    void txtSoundFile_Change();
    void cmdPreviewSound_Click();
    void cmdBrowseForSound_Click();
    void cmdBrowseForMusicPlaylist_Click();

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
    QString MyPicturesFolder;

    int ScreenHeightPixels = 0;
    int CollapsedFormHeight = 0;
    int ExpandedFormHeight = 0;
    int RestFormHeight = 0;
    int SkyBarZoneWidth = 0;
    bool DragActive = false;
    // A slider knob or sky tab being dragged: the pointer's and the control's start.
    bool SliderDragging = false;
    int DragStartPointerX = 0;
    int DragStartLeft = 0;
    QPoint DragStartPointer;
    QPoint DragStartForm;

    // --- Shell controls ------------------------------------------------------------------------
    QPushButton* cmdRunShow = nullptr;
    QPushButton* cmdOk = nullptr;
    QPushButton* cmdCancel = nullptr;
    QPushButton* cmdApply = nullptr;
    QPushButton* cmdHelp = nullptr;
    QPushButton* cmdNukeRemlist = nullptr;
    QPushButton* cmdRescanNow = nullptr;
    QLabel* lblVersion = nullptr;

    QWidget* Portal = nullptr;
    QWidget* PageHolder = nullptr;
    QScrollBar* portalScroll = nullptr;
    // The panels; each keeps its full height in its "Tag" property.
    std::array<QWidget*, 11> setPage{};
    // Indexed 0-10 for the panels, 20 for all panels, 21 for the window.
    std::map<int, QLabel*> imgSetPageOpen;
    std::map<int, QLabel*> imgSetPageClose;
    // Element 0 always exists; the others are made for one animation and dropped after it.
    std::array<VbTimer*, 11> openPageTimer{};
    std::array<VbTimer*, 11> closePageTimer{};
    VbTimer* expandConfigTimer = nullptr;
    VbTimer* StopShowTimer = nullptr;
    VbTimer* ScrollDemoTimer = nullptr;
    VbTimer* KillShow = nullptr;

    QTreeWidget* lvwFolderList = nullptr;
    // One list of image entries per row of lvwFolderList; element 0 fixes place and size.
    std::vector<QListWidget*> lstImages;
    QWidget* imgFileDetailsBacker = nullptr;
    QLabel* lblLocation = nullptr;
    QLabel* lblImageCount = nullptr;
    QLabel* lblLastScan = nullptr;
    QLabel* lblNextScan = nullptr;
    std::map<int, QLabel*> lblOption;
    QPushButton* cmdOpenURLinBrowser = nullptr;
    std::array<QLabel*, 4> imgButton{};
    std::array<QLabel*, 4> imgButtonPressed{};
    QListWidget* lstTempImageList = nullptr;
    QListWidget* lstTemp2 = nullptr;
    QListWidget* TimeList = nullptr;
    QLabel* tempPic = nullptr;

    // --- Settings controls, by panel ---------------------------------------------------------
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
    QLabel* picRandomBackground = nullptr;
    QLabel* lblBackgroundImagesFolder = nullptr;
    QLabel* lblBackgroundWarning = nullptr;

    QCheckBox* chkScrollPanos = nullptr;
    QCheckBox* chkScrollAllVerticalImages = nullptr;
    QWidget* picPanoDemo = nullptr;
    QLabel* picPanoDemoScroller = nullptr;
    bool PanoDemoMovingLeft = true;

    QCheckBox* chkShowCaptions = nullptr;
    QComboBox* cmbFontSize = nullptr;
    QComboBox* cmbFontList = nullptr;
    QWidget* CaptionFrame = nullptr;
    QLabel* CaptionExample = nullptr;
    std::uint32_t CaptionForeColor = 0;
    std::uint32_t CaptionBackColor = 0;
    QPushButton* cmdBold = nullptr;
    QPushButton* cmdItalic = nullptr;
    QPushButton* cmdCapColour = nullptr;
    QPushButton* cmdCapBack = nullptr;
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
    QPushButton* cmdAddPrefix = nullptr;
    QPushButton* cmdRemovePrefix = nullptr;

    QCheckBox* chkEnableMultiMon = nullptr;
    QComboBox* cmbMultiMonOption = nullptr;
    std::array<QLabel*, 2> lblMultiMonDetail{};
    QCheckBox* chkMultiMonUseMinHeight = nullptr;

    QCheckBox* chkNightMode = nullptr;
    QRadioButton* optTurnMonitorOFF = nullptr;
    QRadioButton* optNightModeBlankScreen = nullptr;
    QLabel* imgSkyBar = nullptr;
    std::array<QLabel*, 2> imgSkyTab{};
    std::array<QLabel*, 2> imgSkyMask{};
    std::array<QLabel*, 2> lblTime{};
    QLabel* lblNightModeClock = nullptr;

    std::array<QCheckBox*, 3> chkLayout{};
    // By slider number, like SliderPercent.
    std::map<int, QLabel*> LayoutSliderBar;
    std::map<int, QLabel*> imgLayoutSlider;
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
    QLabel* imgNoImageMask = nullptr;
    QLabel* imgRandomMask = nullptr;
    QLabel* lblImageMaskWarning = nullptr;
    QRadioButton* optRandomImageMasks = nullptr;
    QRadioButton* optUseSpecificMask = nullptr;
    QLineEdit* txtRandomMaskChangeInterval = nullptr;
    QCheckBox* chkAddShadows = nullptr;
    QLabel* imgShadowON = nullptr;
    QLabel* imgShadowOff = nullptr;
    QLineEdit* txtShadowSize = nullptr;
    QLineEdit* txtShadowDistance = nullptr;
    std::array<QLabel*, 2> lblShadowParms{};
    QLabel* secretShowShadowParms = nullptr;
    QCheckBox* chkBlackAndWhite = nullptr;
    QCheckBox* chkAddContrastToBW = nullptr;
    QLabel* imgBW = nullptr;
    QLabel* imgBW_contrast = nullptr;

    QCheckBox* chkPlaySound = nullptr;
    QLineEdit* txtSoundFile = nullptr;
    QLabel* lblSoundLength = nullptr;
    QRadioButton* optRandomSound = nullptr;
    QRadioButton* optSpecificSound = nullptr;
    QPushButton* cmdPreviewSound = nullptr;
    QPushButton* cmdBrowseForSound = nullptr;
    // A preview plays in player 0, which the window then holds until it goes.
    bool PreviewSoundLoaded = false;
    QCheckBox* chkPlayMusic = nullptr;
    QLineEdit* txtMusicPlaylist = nullptr;
    QRadioButton* optRandomMusicFromFolder = nullptr;
    QRadioButton* optSpecificPlayList = nullptr;
    QPushButton* cmdBrowseForMusicPlaylist = nullptr;

    QCheckBox* chkWidescreen = nullptr;
    QLabel* imgWidescreen = nullptr;
    QLabel* imgWidescreenStretched = nullptr;
    QCheckBox* chkShowStatus = nullptr;
    QCheckBox* chkVetCache = nullptr;
    QCheckBox* chkExitOnESC = nullptr;
    QCheckBox* chkExitOnKey = nullptr;
    QCheckBox* chkExitOnMouse = nullptr;
    QCheckBox* chkExitOnClick = nullptr;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void CenterOnScreen();
    void BuildShell();
    void BuildSettingsPanels();
    void BuildPageHeading(int index, QWidget* heading);
    QLabel* MakeClickableImage(QWidget* parent, const QString& name, const QString& resource,
                               QSize size);
    void WireChangeTracking();
    prefs::Table BuildPrefsTable();
    prefs::Field SliderField(int slider, float initial);
    prefs::Field ZoneField(std::size_t end, int initial);
    prefs::Table prefsTable_;
    void WireListManager();
    void StartPageTimer(std::array<VbTimer*, 11>& timers, int index, bool opening);
    void PageAnimationStep(int index, bool opening);
    void MovePanelsBelow(int index, int by);
    void ScrollPortalBy(int wheelDelta);
    bool DragFilter(QObject* watched, QEvent* event);
    QLabel* detailsHint_ = nullptr;
    bool unloading_ = false;
    bool expanding_ = false;
};
