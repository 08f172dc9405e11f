#pragma once

#include "app/DebugLog.h"
#include "app/Forms.h"
#include "app/TaggedStringList.h"
#include "compose/FrameImage.h"
#include "compose/PictureBox.h"
#include "compose/clsEXIF.h"
#include "platform/FileListing.h"
#include "prefs/ShowPrefs.h"
#include "show/MonitorLayout.h"

#include <FreeImage.h>
#include <QColor>
#include <QDateTime>
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QStringList>
#include <QWidget>
#include <array>
#include <cstdint>
#include <functional>
#include <memory>

class QPixmap;
class VbTimer;

// The full-screen show: its cycle, its flags and everything one show owns. Unloading the form
// ends the show's state; the next show starts from a fresh object.
class frmSlideShow : public QWidget,
                     public FormSingleton<frmSlideShow>,
                     public ShowPrefs,
                     public monitors::MonitorTables {
    Q_OBJECT
public:
    frmSlideShow();
    ~frmSlideShow() override;
    void beforeUnload();

    // --- The cycle ---------------------------------------------------------------------
    void StartShow();
    void Initialize();
    void MainTimer_Timer();
    void LongProcessTimer_Timer();
    void ChangePhotos();
    void PrepNextFrame();
    void StoptheShow();
    // True when a tick at this moment may change the frame.
    bool ChangeConditionHolds(const QDateTime& now) const;

    // --- Settings ----------------------------------------------------------------------
    void DefaultPrefs();
    void ReadPerfSettings();
    void WritePerfSettings();
    // The watchdog's interval from the image interval; the timer keeps its old interval when
    // the result is refused.
    void SetLongProcessInterval();
    // The files of the Backgrounds and Masks folders beside the program, as full paths.
    void LoadListOfBackgroundImages();
    void LoadListOfImageMasks();

    // --- Logs and status ---------------------------------------------------------------
    void OpenDebugLog();
    void CloseDebugLog();
    void OpenMemlog();
    void CloseMemLog();
    void MemLog(const QString& text);
    static std::int64_t MemoryPageSize();
    void lblCloseDebugWindow_Click();
    void SetStatus(const QString& text);
    void SetStatus2(const QString& text);
    QString DebugLogPath() const;
    QString MemLogPath() const;

    // --- Input ---------------------------------------------------------------------------
    void Form_KeyDown(int keyCode);
    void KeyTrap(int keyCode);
    void CheckMouseMove();
    void thePhoto_Click();
    void Form_Click();
    void JumpToNextPhoto();
    void FinishJump();
    void HoldPhoto();
    void ToggleCaptions();
    // Appends the photo on the screen to MarkedImages.txt in the install folder.
    void MarkThisImage();
    // Shows an earlier screen, 0 the newest; the timer's next change brings the show back.
    void ShowPrevCanvas(int position);
    void FillCommandsBox();
    // Logs every key the program sees held down: what odd remote controls send.
    void ShowTrappedAsyncKeys();

    // --- Monitors ----------------------------------------------------------------------
    // The screens as the desktop has them now, and the report of them for the log.
    QString GetMonitorInfo(monitors::MonitorInfo& info);
    void GetScreenSize();
    void TestMode(std::int16_t mode);
    void PrepScreen();
    void SetFadersToMonitor(int monitor);
    // What the show's window shows on that monitor (0: the whole form).
    void GrabMonitorArea(int monitor, QPixmap& picture);
    // Settles NextMonitorSet, CurrentMonitor and the Frame rectangle for an image of that size;
    // height is clamped to the monitor's when the image is a horizontal panorama.
    void SetMonitorAndLimits(int width, int& height);

    // --- Sizes ---------------------------------------------------------------------------
    // The size the image will have on its frame; sets ImageFillsScreen and the frame's
    // ImageSizeText. orientation is not used: the image has already been turned.
    void NewDimensions(QSize size, int targetW, int targetH, bool ignoreAR, bool forceFit,
                       int orientation, int& newW, int& newH, bool& needResize);
    void NextDIBIsAnHPano(int w, int& h, int screenW, int screenH, bool& isPano);
    void NextDIBIsAVPano(int w, int& h, int screenW, int screenH, bool& isPano);
    void GetOffsetsIfSmaller(int width, int height, int canvasW, int canvasH, int& Px, int& Py);

    // --- Composition -------------------------------------------------------------------
    // Loads the head of ShowList: an internal picture, or a file (a large JPEG only measured,
    // see FrameImage). ok is false for anything that cannot be shown.
    void LoadNextImageIntoDIB(FrameImage& imageDIB, bool& noMask, bool& ok);
    void GetEXIFOrientation(const QString& path, int& orientation);
    void ApplyEXIFOrientationToDIB(dib::Dib& dib, int orientation, bool& ok);
    // The program's own pictures; 0 is the logo.
    static QImage InternalImage(int index);
    void FadePanelToBlack();
    void AssembleCanvas(int layout);
    // Turns the image upright and brings it to its size on the frame, always 32 bits deep.
    void ResizeDIBImage(FrameImage& image, int targetW, int targetH, bool ignoreAR, bool forceFit,
                        bool& ok);
    void GoingToAddBorder(bool& yes);
    // The draw for this image of the black and white setting.
    void UseBlackAndWhiteForThisImage(bool& yes);
    void SetFourUpImagePositions();
    void ReloadFourUpPoints();
    void UseAMask(dib::Dib& alphaDIB, int width, int height, bool& ok);
    dib::Dib MakeShadowDIB(FIBITMAP* imageDIB, std::int32_t& distance, bool noMaskShape,
                           QString& errorText, QLabel* statusLabel);
    void ApplyBackgroundToDIB(dib::Dib& canvas, bool& ok);
    void NewCrossfade(dib::Dib& sourceDib, int areaX, int areaY, int areaW, int areaH, int placeX,
                      int placeY, int monitor, double seconds);
    // Puts an overlay on a picture of the show's area, once per monitor in use, leaving out its
    // magenta: 0 two thirds down, 1 a sixth down, 2 on the bottom edge.
    void StampOnPicture(const QImage& source, QImage& target, std::int16_t position);
    void SaveCurrentDesktopInPreviousStack();
    void NewCheckAndSetupPanoScrolling(int canvasW, int canvasH, int monitor, bool& scrolls,
                                       bool& horizontal, QPoint& place, QPoint& area,
                                       int& stepPixels, int& steps);
    void ScrollPano();
    void ScrollTimer_Timer();

    // --- Captions ------------------------------------------------------------------------
    // Writes and places both caption blocks for the frame on the screen.
    void UpdateCaption();
    void AddToCaptionBlock(int block, const QString& text, int& count);
    // Against the prefix list of the settings window as it stands now.
    void DSCFiltered(const QString& fileName, bool& filtered);
    void PositionCaptionBoxes(int monitor);
    void FormatDate(const QString& exifDate, QString& text);
    // For the status line: the list title of the entry, or the entry itself.
    void GetTitleOrFilename(const QString& entry, std::int32_t tag, QString& title);
    // Only lblCaption takes the family; a family the machine lacks leaves it as it was.
    void SetFontName(int block, const QString& fontName);

    // --- Image selection -----------------------------------------------------------------
    // Appends that many entries to ShowList, with their captions to CaptionsList.
    void ChooseNextImage(int numberOfImagesToAdd, bool randomImages, bool randomFolders,
                         bool newFolderOnly);
    void IsBackgroundImage(const QString& path, bool& result);
    void NextSequentialImage(QString& entry, std::int32_t& tag);
    void NextRandomImage(QString& entry, std::int32_t& tag);
    void NextRandomFolderImage(QString& entry, std::int32_t& tag);
    // Removes entries without text from the pool; true when there were any.
    bool DropBlankEntries();
    void NextRandomFolderRandomImage(QString& entry, std::int32_t& tag);
    // Four Up: may answer "exit" when the folder has nothing more.
    void NextImageFromSameRandomFolder(QString& entry, std::int32_t& tag);
    void CheckThereIsARandomFolderSet();
    void NewRandomFolder(QString& result);
    void GetNextImageFromRandomFolder(const TaggedStringList& list, const QString& folder,
                                      bool& found, int& index);
    void CollectImagesInARandomFolder(TaggedStringList& source, const QString& folder,
                                      TaggedStringList& target);
    void GetImageFolder(const QString& path, QString& result);
    void CollectFolderNamesFromImageList();
    void ShowImageLists();
    void WebImageExists(const QString& entry, QString& cachedPath, bool& exists);

    // --- Lists, night and sound -----------------------------------------------------------
    void LoadImageLists();
    void LoadFullImageList();
    void LoadListOfImages(const QString& index);
    void AddToImageListOrOther(const QString& line, const QString& localOrWeb,
                               const QString& listName, const QString& listTitle, int& added);
    static void ExtraInfo(std::int32_t key, const TaggedStringList& list, QString& text,
                          bool& found);
    void RemoveHTMLFromFlickr(QString& text);
    void AtLeastOneValidFileInImageList(bool& result);
    void SaveRemainingList();
    void LoadRemainingList(const QString& fileName);
    void RemainingListExists(bool& result);
    // --- Night mode ------------------------------------------------------------------------
    // Asks the schedule for the present quarter-hour; the answer is kept in NightModeWanted.
    bool NightModeShouldBeOn();
    // The sleep picture, then a slow fade to black; the frame prepared meanwhile waits.
    void FadeToNight();
    // Wakes the monitors and brings up the prepared frame at once.
    void FadeFromNight();
    // The user's "N": night or day against the schedule, and back.
    void ToggleNightScreen();
    void TurnMonitorOff();
    void TurnMonitorOn();
    void BuildNightControls();
    bool NightFadeBusy = false;
    bool MonitorsOn = true;
    bool NightModeWanted = false;
    // Drawn on magenta, the see-through colour of StampOnPicture.
    QLabel* picZzzz = nullptr;
    // A black panel over the whole form, hidden.
    QWidget* picNightScreen = nullptr;
    // Closes the player, and ends any fade that was running on it.
    void CloseAudioPlayer(int slot);

    // --- Sound and music ------------------------------------------------------------------
    // The sound of a change of image, in that player: a random one from the Sounds folder, or
    // the one sound loaded for the show, played again from its start.
    void PlayAudio(std::int16_t player);
    void PlayBackgroundMusic();
    // The next track of the playlist once the one playing has ended.
    void PlayPlaylist();
    // Takes a random track out of the queue, reading the playlist again when the queue is
    // empty; "(empty)" when there is none.
    void PickANewTrackFromPlaylist(QString& track);
    // The queue of every track of the playlist that can be found.
    void LoadMusicPlaylist();
    // A random track from the folder of the image on the screen, at a change of folder or when
    // the song has ended; the old music fades out meanwhile.
    void PlayMusicFromFolder();
    // One step of a fade-out: 150 down each tick, and the player closed at 0.
    void VolDownTimer_Timer(int index);
    // Loads the file into the player and logs the outcome of a good load; false when it failed.
    bool LoadAudioPlayer(std::int16_t player, const QString& file);
    // Starts the player and logs how that went.
    void StartAudioPlayer(std::int16_t player);
    // The player with the current music, and the one the next track goes into.
    std::int16_t MusicPlayer = 1;
    std::int16_t NextMusicPlayer = 2;
    // Playlist tracks not yet played.
    QStringList lstMusicPlayList;

    // Test hook: told the name of each step of StoptheShow as it runs.
    static inline std::function<void(const QString&)> StopStepObserver;
    // Test and bench hook: told the name of each step of StartShow as it begins, and
    // "MainTimer" once the timer runs.
    static inline std::function<void(const QString&)> StartStepObserver;

    // What the settings found beside the program: full paths, and the sounds folder.
    QStringList lstBackgroundImages;
    QStringList lstMasks;
    platform::FileListBox SoundsFileBox;
    // The music files of the folder of the image on the screen.
    platform::FileListBox MusicFileBox;

    // --- Masks, shadows and backgrounds ---------------------------------------------------
    // Blurs the 8-bit shadow in place, showing its progress on the label and letting a key
    // stop the show meanwhile.
    void BlurShadow(FIBITMAP* dib, int radius, int testDistance, int strengthPercent,
                    bool noMaskShape, QLabel* statusLabel);
    // A file named background* beside the photograph; "(none)" when there is none.
    void ThereIsALocalBackgroundImage(const QString& imagePath, QString& backgroundPath,
                                      bool& found);
    // Uses of the random mask in force, and whether any mask has been read yet.
    std::int16_t MaskUseCount = 0;
    bool MaskChosen = false;
    QString LocalBackgroundPath;
    // Keeps the listing of the last folder that existed.
    platform::FileListBox fileboxLocalBackground;
    // The logo's own mask, for the frames that can show nothing but the logo.
    QLabel* imgFloatingLogoMask = nullptr;

    // --- State of the show -------------------------------------------------------------
    bool MemLogOpen = false;
    bool StartingUp = false;
    bool NextImageReady = true;
    QDateTime NextChangeTime;
    bool Crossfading = false;
    bool Paused = false;
    bool NightOn = false;
    bool NightOverride = false;
    bool JumpRequested = false;
    bool JumpPending = false;
    bool LoadingImage = false;
    // The image being composed: its size, and how it was stored (1 upright, 2 to 8 turned or
    // mirrored).
    int imageW = 0;
    int imageH = 0;
    int EXIFOrientation = 1;
    // Made on first use and kept for the show.
    std::unique_ptr<clsEXIF> EXIFReader;
    std::int16_t FrameCounter = 0;
    double ImagesShown = -1.0;
    std::int16_t CurrentFrameSlot = 0;
    std::int16_t NextFrameSlot = 1;
    std::int16_t CurrentMonitorSet = 1;
    std::int16_t NextMonitorSet = 0;
    std::int16_t PreviousMonitorSet = 1;
    dib::Dib CanvasDIB;
    // The state of a stack or a four-up canvas, carried from one frame to the next.
    int StackCount = 0;
    bool BorderThisStack = false;
    int FourUpCount = 0;
    int FourUpTargetW = 0;
    int FourUpTargetH = 0;
    // The free corners of a four-up canvas, as text of a pixel coordinate, kept in step.
    QStringList FourUpPointsX;
    QStringList FourUpPointsY;
    bool NoMaskThisImage = false;
    // How each frame scrolls, by frame slot.
    std::array<bool, 2> PanoScrolls{};
    std::array<bool, 2> PanoHorizontal{};
    std::array<int, 2> PanoStep{1, 1};
    std::array<int, 2> PanoSteps{};
    int ScrollStep = 2;
    int ScrollInterval = 50;
    // The running scroll: ticks so far, counted from 1, and its start in seconds of the day
    // (for the log only).
    std::int32_t ScrollTick = 0;
    std::int32_t ScrollStartTime = 0;
    bool DownloadFileOpen = false;
    QString DownloadFileName;
    // Audio players holding a file, by slot; the show closes them when it stops.
    std::array<bool, 3> AudioPlayerLoaded{};
    bool StackInProgress = false;
    bool FourUpInProgress = false;
    std::array<QString, 2> FrameNote;
    int MouseStartX = 0;
    int MouseStartY = 0;
    // One counter per position in lstImageLists: rescans still to leave out.
    std::array<int, 255> ScanSkip{};
    // The fade's pace: the sleep before each of its steps, and how long the last one took.
    std::int32_t FadeSleepMs = 0;
    float LastFadeSeconds = 0.0f;
    int PrevCanvasDepth = 3;
    int PrevCanvasCount = 0;
    int PrevCanvasPosition = -1;
    // The frame on the screen: its entry, its key and the two pieces of its caption line.
    QString CurrentImage;
    std::int32_t CurrentImageTag = 0;
    QString CaptionFullName;
    QString CaptionSource;
    // The folders of the image on the screen and of the one before; they start different,
    // so that the first image starts the music.
    QString CurrentFolder = QStringLiteral("xx");
    QString PreviousFolder = QStringLiteral("yy");
    QString RemainingListPath[3];

    // The pool, with the titles and descriptions some lists carry, keyed by the image's tag.
    TaggedStringList ImageList;
    TaggedStringList ImageTitles;
    TaggedStringList ImageDescriptions;
    // Full paths of the list files, and the record lines of the last rescan.
    TaggedStringList lstImageLists;
    TaggedStringList lstTempImageList;
    // The queue of the coming frame and its caption lines, index for index.
    // Set once the pool has been read, so that a stop before it keeps the saved pool.
    bool PoolLoaded = false;
    TaggedStringList ShowList;
    TaggedStringList CaptionsList;
    // The current random folder's images, taken out of the pool.
    TaggedStringList RandomFolderFileList;
    TaggedStringList ImageFolderList;
    bool NoValidImages = false;
    bool SkipBackgroundImages = true;
    QString ChosenTitle;
    QString ChosenLink;
    QString CachedImagePath;
    // This show took up the pool the last one left; nothing depends on it yet.
    bool ResumedFromRemainingList = false;

    // The monitor tables and the form's and caption area's rectangles come with
    // monitors::MonitorTables; NextMonitorSet is the monitor slot of the frame being built.

    // The last monitor that had its turn; the turns go on from it even when a panorama took
    // the whole surface.
    std::int16_t CurrentMonitor = 0;
    // The rectangle of the frame being built, relative to the form; its size is the resize
    // target of a Normal frame.
    int FrameLeft = 0, FrameTop = 0, FrameWidth = 0, FrameHeight = 0;
    // Layout of the frame being built: 0 Normal, 1 Image Stack, 2 Four Up.
    std::int16_t Layout = 0;
    // The resized image covers its whole monitor slot: no background, no shadow.
    bool ImageFillsScreen = false;
    // "<w> x <h>" of each frame's image as loaded, by frame slot.
    std::array<QString, 2> ImageSizeText;

    // --- Controls ----------------------------------------------------------------------
    QLabel* Backdrop = nullptr;
    PhotoLabel* thePhoto = nullptr;
    // During a fade FadeFrom covers the show and accumulates the blend; FadeTo, never shown,
    // holds the part of the new frame that fades in.
    PictureBox* FadeFrom = nullptr;
    PictureBox* FadeTo = nullptr;
    // Earlier screens, newest first, for going back.
    std::array<QLabel*, 4> PrevCanvas{};
    // Signs over the pictures, one per monitor 1 to 4 (0 unused).
    std::array<QLabel*, 5> picJumpingForward{};
    std::array<QLabel*, 5> picJumpingBack{};
    std::array<QLabel*, 5> picPaused{};
    // The box of key commands, shown and hidden with F1.
    QWidget* picCommands = nullptr;
    QLabel* lblCommands1 = nullptr;
    QLabel* lblCommands2 = nullptr;
    QLabel* picMarked = nullptr;
    // The overlays of the opening, and the work area that stretches one before it is stamped.
    QLabel* picSplash = nullptr;
    QLabel* picPressF1 = nullptr;
    QLabel* picStamp = nullptr;
    // A caption box is a framed label without text of its own that holds the three labels of
    // its block.
    std::array<QLabel*, 2> CaptionBox{};
    std::array<QLabel*, 2> lblTopCaption{};
    std::array<QLabel*, 2> lblCaption{};
    std::array<QLabel*, 2> lblDescription{};
    QWidget* picBootStatus = nullptr;
    QLabel* lblBootStatus = nullptr;
    QLabel* lblBootStatus2 = nullptr;
    QWidget* picDeBug = nullptr;
    QListWidget* lstDebug = nullptr;
    QLabel* lblCloseDebugWindow = nullptr;

    VbTimer* MainTimer = nullptr;
    VbTimer* LongProcessTimer = nullptr;
    VbTimer* ScrollTimer = nullptr;
    // Fades out the music of a player, by player number.
    std::array<VbTimer*, 3> VolDownTimer{};

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void NoteStartStep(const QString& step);
    void NoteStopStep(const QString& step);
    void ExitRequested(bool setLoadingText);
    void LoadShowSettings();

    QFile memLog_;
    bool filtering_ = false;
};

// The watchdog interval for an image interval: a minute above 50 seconds, else the interval
// plus ten seconds, worked out in 16 bits so that intervals of 23 to 50 wrap negative.
int LongProcessIntervalFor(std::int16_t imageInterval);
// The frame counter after one more frame: past 9999 it goes back to 999.
std::int16_t NextFrameCounter(std::int16_t counter);
