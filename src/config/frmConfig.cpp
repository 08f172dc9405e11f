#include "config/frmConfig.h"

#include "app/Common.h"
#include "app/modMain.h"
#include "lists/frmOpenFolder.h"
#include "night_sound/AudioPlayers.h"
#include "platform/Cursor.h"
#include "platform/Dialogs.h"
#include "platform/Endpoints.h"
#include "platform/FileListing.h"
#include "platform/Shell.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

#include <QCloseEvent>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPixmap>
#include <QScreen>
#include <QWheelEvent>

namespace {

// The window's fixed frame, in pixels. The left column holds the image lists and the buttons,
// the right one the portal with the panels.
constexpr int FormWidth = 940;
constexpr int LeftX = 16;
constexpr int LeftWidth = 436;
constexpr int PortalLeft = 468;
constexpr int PortalTop = 56;
constexpr int PortalWidth = 440;
constexpr int ScrollWidth = 14;
constexpr int FolderListTop = 104;
constexpr int DetailsHeight = 80;
constexpr int ButtonHeight = 30;

} // namespace

QPixmap ConfigArt(const QString& resource, QSize size) {
    QPixmap pixmap(QStringLiteral(":/") + resource);
    if (pixmap.isNull()) {
        // A missing picture must not take the window down with it: an empty square keeps the
        // layout and the control stays clickable.
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
    }
    return pixmap;
}

frmConfig::frmConfig() {
    setObjectName(QStringLiteral("frmConfig"));
    setWindowTitle(QStringLiteral("Tessaview Settings"));
    setWindowIcon(QIcon(QStringLiteral(":/tessaview.png")));
    // No title bar: the window is moved by dragging its surface.
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    ApplyConfigLook(this);

    BuildShell();
    BuildSettingsPanels();
    prefsTable_ = BuildPrefsTable();
    prefs::ApplyInitial(prefsTable_, false);
    WireChangeTracking();
    for (QComboBox* combo : findChildren<QComboBox*>()) {
        combo->setFocusPolicy(Qt::StrongFocus);
        combo->installEventFilter(this);
    }
}

frmConfig::~frmConfig() = default;

void frmConfig::beforeUnload() {
    if (PreviewSoundLoaded) modDirectShow::ClosePlayer(0);
    PreviewSoundLoaded = false;
    StopShowTimer->setEnabled(false);
    ScrollDemoTimer->setEnabled(false);
    expandConfigTimer->setEnabled(false);
    for (VbTimer* t : openPageTimer)
        if (t) t->setEnabled(false);
    for (VbTimer* t : closePageTimer)
        if (t) t->setEnabled(false);
}

QLabel* frmConfig::MakeClickableImage(QWidget* parent, const QString& name, const QString& resource,
                                      QSize size) {
    auto* image = new QLabel(parent);
    image->setObjectName(name);
    image->setPixmap(ConfigArt(resource, size));
    image->setScaledContents(true);
    image->resize(size);
    image->setCursor(Qt::PointingHandCursor);
    image->installEventFilter(this);
    return image;
}

void frmConfig::BuildShell() {
    auto* title = new QLabel(this);
    title->setObjectName(QStringLiteral("imgTitle"));
    title->setPixmap(ConfigArt(QStringLiteral("config_header.png"), QSize(300, 48)));
    title->setGeometry(LeftX, 6, 300, 48);
    lblVersion = new QLabel(this);
    lblVersion->setObjectName(QStringLiteral("lblVersion"));
    lblVersion->setProperty("muted", true);
    lblVersion->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    lblVersion->setGeometry(LeftX + 300, 18, LeftWidth - 300, 24);

    auto* listsTitle = new QLabel(QStringLiteral("Image Lists"), this);
    listsTitle->setObjectName(QStringLiteral("lblImageListsTitle"));
    QFont bold = listsTitle->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    listsTitle->setFont(bold);
    listsTitle->setGeometry(LeftX, 70, 110, 24);

    const char* buttonArt[4] = {"btn_add_folder", "btn_add_web", "btn_delete", "btn_add_flickr"};
    const char* buttonTips[4] = {"Add a folder of images", "Add a web page or feed",
                                 "Delete the selected image list", "Add photos from Flickr"};
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const QString art = QLatin1String(buttonArt[i]);
        imgButton[k] = MakeClickableImage(this, QStringLiteral("imgButton(%1)").arg(i),
                                          art + QStringLiteral(".png"), QSize(40, 40));
        imgButton[k]->setToolTip(QLatin1String(buttonTips[i]));
        imgButtonPressed[k] =
            MakeClickableImage(this, QStringLiteral("imgButtonPressed(%1)").arg(i),
                               art + QStringLiteral("_pressed.png"), QSize(40, 40));
    }
    // The delete button belongs to the details of the selected list; the others add lists.
    imgButton[0]->move(LeftX + 130, 60);
    imgButton[1]->move(LeftX + 176, 60);
    imgButton[3]->move(LeftX + 222, 60);

    lvwFolderList = new QTreeWidget(this);
    lvwFolderList->setObjectName(QStringLiteral("lvwFolderList"));
    lvwFolderList->setRootIsDecorated(false);
    lvwFolderList->setUniformRowHeights(true);
    lvwFolderList->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    lvwFolderList->header()->setStretchLastSection(false);

    imgFileDetailsBacker = new QWidget(this);
    imgFileDetailsBacker->setObjectName(QStringLiteral("imgFileDetailsBacker"));
    imgFileDetailsBacker->setAttribute(Qt::WA_StyledBackground, true);
    auto stripLabel = [this](const QString& name, QRect where) {
        auto* l = new QLabel(imgFileDetailsBacker);
        l->setObjectName(name);
        l->setGeometry(where);
        return l;
    };
    detailsHint_ =
        stripLabel(QStringLiteral("lblDetailsHint"), {10, 0, LeftWidth - 20, DetailsHeight});
    detailsHint_->setText(QStringLiteral("Select an image list to see where its images come from, "
                                         "how many it holds and when it is scanned again."));
    detailsHint_->setWordWrap(true);
    detailsHint_->setAlignment(Qt::AlignCenter);
    detailsHint_->setProperty("muted", true);
    lblLocation = stripLabel(QStringLiteral("lblLocation"), {10, 4, 200, 18});
    lblImageCount = stripLabel(QStringLiteral("lblImageCount"), {10, 22, 200, 18});
    lblLastScan = stripLabel(QStringLiteral("lblLastScan"), {10, 40, 200, 18});
    lblNextScan = stripLabel(QStringLiteral("lblNextScan"), {10, 58, 200, 18});
    for (int i = 1; i <= 3; ++i)
        lblOption[i] =
            stripLabel(QStringLiteral("lblOption(%1)").arg(i), {214, 4 + 18 * i, 160, 18});
    cmdRescanNow = new QPushButton(QStringLiteral("Re-Scan Now"), imgFileDetailsBacker);
    cmdRescanNow->setObjectName(QStringLiteral("cmdRescanNow"));
    cmdRescanNow->setGeometry(214, 2, 104, 22);
    cmdOpenURLinBrowser = new QPushButton(QStringLiteral("Open"), imgFileDetailsBacker);
    cmdOpenURLinBrowser->setObjectName(QStringLiteral("cmdOpenURLinBrowser"));
    cmdOpenURLinBrowser->setGeometry(322, 2, 60, 22);
    // The strip is tight: its buttons do with less padding than the main ones.
    for (QPushButton* b : {cmdRescanNow, cmdOpenURLinBrowser})
        b->setStyleSheet(QStringLiteral("QPushButton { padding: 1px 4px; }"));
    imgButton[2]->setParent(imgFileDetailsBacker);
    imgButton[2]->move(LeftWidth - 48, 34);
    imgButtonPressed[2]->setParent(imgFileDetailsBacker);

    auto button = [this](QPushButton*& b, const QString& name, const QString& text) {
        b = new QPushButton(text, this);
        b->setObjectName(name);
    };
    button(cmdRunShow, QStringLiteral("cmdRunShow"), QStringLiteral("Preview Slideshow"));
    button(cmdNukeRemlist, QStringLiteral("cmdNukeRemlist"), QStringLiteral("Reset Slideshow"));
    cmdNukeRemlist->setToolTip(QStringLiteral("Start the next show from the top of the lists"));
    button(cmdHelp, QStringLiteral("cmdHelp"), QStringLiteral("Help"));
    button(cmdApply, QStringLiteral("cmdApply"), QStringLiteral("Apply Changes"));
    cmdApply->setEnabled(false);
    button(cmdOk, QStringLiteral("cmdOk"), QStringLiteral("OK"));
    cmdOk->setDefault(true);
    button(cmdCancel, QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));

    auto* optionsTitle = new QLabel(QStringLiteral("Options"), this);
    optionsTitle->setObjectName(QStringLiteral("lblOptionsTitle"));
    optionsTitle->setFont(bold);
    optionsTitle->setGeometry(PortalLeft, 28, 200, 24);

    Portal = new QWidget(this);
    Portal->setObjectName(QStringLiteral("Portal"));
    PageHolder = new QWidget(Portal);
    PageHolder->setObjectName(QStringLiteral("PageHolder"));
    portalScroll = new QScrollBar(Qt::Vertical, this);
    portalScroll->setObjectName(QStringLiteral("portalScroll"));

    const QSize arrow(18, 18);
    imgSetPageOpen[20] = MakeClickableImage(this, QStringLiteral("imgSetPageOpen(20)"),
                                            QStringLiteral("expand_all.png"), arrow);
    imgSetPageOpen[20]->setToolTip(QStringLiteral("Expand All Options Panels"));
    imgSetPageClose[20] = MakeClickableImage(this, QStringLiteral("imgSetPageClose(20)"),
                                             QStringLiteral("collapse_all.png"), arrow);
    imgSetPageClose[20]->setToolTip(QStringLiteral("Collapse All Options Panels"));
    imgSetPageOpen[20]->move(PortalLeft + PortalWidth + ScrollWidth - 20, 32);
    imgSetPageOpen[21] = MakeClickableImage(this, QStringLiteral("imgSetPageOpen(21)"),
                                            QStringLiteral("grow_window.png"), arrow);
    imgSetPageOpen[21]->setToolTip(QStringLiteral("Show the images of the selected list"));
    imgSetPageClose[21] = MakeClickableImage(this, QStringLiteral("imgSetPageClose(21)"),
                                             QStringLiteral("shrink_window.png"), arrow);
    imgSetPageClose[21]->setToolTip(QStringLiteral("Hide the images of the list"));
    imgSetPageClose[21]->hide();
    imgSetPageOpen[21]->move(LeftX + LeftWidth - 20, 76);

    auto* firstList = new QListWidget(this);
    firstList->setObjectName(QStringLiteral("lstImages(0)"));
    lstImages.push_back(firstList);

    auto hiddenList = [this](const QString& name) {
        auto* l = new QListWidget(this);
        l->setObjectName(name);
        l->hide();
        return l;
    };
    lstTempImageList = hiddenList(QStringLiteral("lstTempImageList"));
    lstTemp2 = hiddenList(QStringLiteral("lstTemp2"));
    TimeList = hiddenList(QStringLiteral("TimeList"));
    tempPic = new QLabel(this);
    tempPic->setObjectName(QStringLiteral("tempPic"));
    tempPic->hide();

    connect(cmdRunShow, &QPushButton::clicked, this, [this] { cmdRunShow_Click(); });
    connect(cmdOk, &QPushButton::clicked, this, [this] { cmdOk_Click(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { cmdCancel_Click(); });
    connect(cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    connect(cmdHelp, &QPushButton::clicked, this, [this] { cmdHelp_Click(); });
    connect(cmdNukeRemlist, &QPushButton::clicked, this, [this] { cmdNukeRemlist_Click(); });
    connect(portalScroll, &QScrollBar::valueChanged, this, [this] { portalScroll_Change(); });
    WireListManager();

    StopShowTimer = new VbTimer(100, false, this);
    StopShowTimer->setHandler([this] { StopShowTimer_Timer(); });
    ScrollDemoTimer = new VbTimer(30, false, this);
    ScrollDemoTimer->setHandler([this] { ScrollDemoTimer_Timer(); });
    KillShow = new VbTimer(1000, false, this);
    expandConfigTimer = new VbTimer(50, false, this);
    expandConfigTimer->setHandler([this] { expandConfigTimer_Timer(); });
    openPageTimer[0] = new VbTimer(100, false, this);
    openPageTimer[0]->setHandler([this] { openPageTimer_Timer(0); });
    closePageTimer[0] = new VbTimer(100, false, this);
    closePageTimer[0]->setHandler([this] { closePageTimer_Timer(0); });

    setFixedWidth(FormWidth);
}

// --- Start-up --------------------------------------------------------------------------------

// Errors in any step are passed over so that the window always comes up.
void frmConfig::Initialize() {
    DragActive = false;
    InstallDir = GetSetting(QStringLiteral("installDir"), ProgramFolder());
    MyPicturesFolder = common::GetMyPicturesFolder();
    chkDebug->setEnabled(false);
    PrefsFileName = InstallDir + QStringLiteral("/TView_Prefs.txt");

    for (std::size_t i = 0; i < imgButton.size(); ++i) {
        imgButtonPressed[i]->move(imgButton[i]->pos());
        imgButtonPressed[i]->hide();
    }
    ShowHideFileDetails(false);

    // The lists' choices come from the preferences table; only the fonts are the system's.
    FillFontComboBox();

    const QString backgrounds = InstallDir + QStringLiteral("/Backgrounds");
    if (common::FileExists(backgrounds))
        lblBackgroundImagesFolder->setText(
            QStringLiteral("There are %1 backgrounds in the Backgrounds folder.")
                .arg(platform::FileList(backgrounds, QStringLiteral("*.*")).size()));
    else
        lblBackgroundImagesFolder->setText(QStringLiteral("Cannot find ") + InstallDir +
                                           QStringLiteral("/Backgrounds"));

    ScrollDemoTimer->setEnabled(false);
    picPanoDemoScroller->move(0, 0);

    lblMultiMonDetail[0]->setText(QStringLiteral("Seperate images are shown on each monitor.\r\n"
                                                 "Panoramic images will span across all "
                                                 "monitors."));
    lblMultiMonDetail[1]->setText(
        QStringLiteral("All monitors are treated like one big desktop.  Images may not "
                       "necessarily be entirely on one particular monitor. "));
    lblMultiMonDetail[1]->setGeometry(lblMultiMonDetail[0]->geometry());
    lblMultiMonDetail[0]->show();
    lblMultiMonDetail[1]->show();

    Add_ColumnHeaders();
    SkyBarZoneWidth = static_cast<int>(std::lround(imgSkyBar->width() / 96.0));
    InitTimeList();
    DefaultPrefs();
    LoadPrefs();
    ScanAndLoadImageLists(InstallDir + QStringLiteral("/Imagelists"));
    SetBackgroundWarning();
    FormatConfigForm();
    RestFormHeight = height();
}

void frmConfig::Add_ColumnHeaders() {
    if (lvwFolderList->columnCount() == 12) return;
    lvwFolderList->setColumnCount(12);
    lvwFolderList->setHeaderLabels(
        {QStringLiteral("Image List"), QStringLiteral("Images"), QStringLiteral("Location"),
         QStringLiteral("Local or Web"), QStringLiteral("filename"), QStringLiteral("last scan"),
         QStringLiteral("scan interval"), QStringLiteral("Recurse / Ignore GIF"),
         QStringLiteral(" / Use Page Images"), QStringLiteral(" / Use Image Links"),
         QStringLiteral("(reserved)"), QStringLiteral("(reserved)")});
    const double tenth = lvwFolderList->width() / 10.0;
    const double widths[5] = {8.5, 1.5, 7, 5, 5};
    for (int c = 0; c < 12; ++c)
        lvwFolderList->setColumnWidth(c, static_cast<int>(tenth * (c < 5 ? widths[c] : 4)));
}

void frmConfig::ShowHideFileDetails(bool visible) {
    for (QWidget* w : std::initializer_list<QWidget*>{
             lblLocation, lblImageCount, lblLastScan, lblNextScan, lblOption[1], lblOption[2],
             lblOption[3], imgButton[2], cmdRescanNow, cmdOpenURLinBrowser})
        w->setVisible(visible);
    // The hint stands in the strip's place while no list is selected.
    detailsHint_->setVisible(!visible);
}

void frmConfig::FormatConfigForm() {
    QScreen* screen = QGuiApplication::primaryScreen();
    ScreenHeightPixels = screen ? screen->geometry().height() : 768;
    const ConfigHeights heights = ConfigFormHeights(ScreenHeightPixels);
    CollapsedFormHeight = heights.collapsed;
    ExpandedFormHeight = heights.expanded;

    Portal->setGeometry(PortalLeft, PortalTop, PortalWidth, CollapsedFormHeight - 70);
    lvwFolderList->setGeometry(LeftX, FolderListTop, LeftWidth, CollapsedFormHeight - 279);
    imgFileDetailsBacker->setGeometry(LeftX, lvwFolderList->geometry().bottom() + 1 + 10, LeftWidth,
                                      DetailsHeight);
    lstImages[0]->setGeometry(10, CollapsedFormHeight, FormWidth - 20,
                              ExpandedFormHeight - CollapsedFormHeight);

    const int buttonsTop = CollapsedFormHeight - 14 - 2 * ButtonHeight - 6;
    cmdRunShow->setGeometry(LeftX, buttonsTop, 170, ButtonHeight);
    cmdNukeRemlist->setGeometry(LeftX + 178, buttonsTop, 130, ButtonHeight);
    cmdHelp->setGeometry(LeftX + LeftWidth - 80, buttonsTop, 80, ButtonHeight);
    const int lastRow = buttonsTop + ButtonHeight + 6;
    cmdApply->setGeometry(LeftX, lastRow, 130, ButtonHeight);
    cmdOk->setGeometry(LeftX + LeftWidth - 168, lastRow, 80, ButtonHeight);
    cmdCancel->setGeometry(LeftX + LeftWidth - 80, lastRow, 80, ButtonHeight);

    PageHolder->setGeometry(0, 0, PortalWidth, PageHolder->height());
    int top = 0;
    for (int i = 0; i <= 10; ++i) {
        QWidget* page = setPage[static_cast<std::size_t>(i)];
        page->setParent(PageHolder);
        const int width = PageHolder->width() - 5;
        // The full height is what the panel's contents ask for at this width.
        if (QWidget* body =
                page->findChild<QWidget*>(QStringLiteral("body"), Qt::FindDirectChildrenOnly)) {
            body->setFixedWidth(width);
            const int bodyHeight =
                body->hasHeightForWidth() ? body->heightForWidth(width) : body->sizeHint().height();
            body->setFixedHeight(bodyHeight);
            page->setProperty("Tag", QString::number(CollapsedPanelHeight + bodyHeight + 6));
        }
        page->setGeometry(0, top, width, CollapsedPanelHeight);
        if (QWidget* heading =
                page->findChild<QWidget*>(QStringLiteral("heading"), Qt::FindDirectChildrenOnly))
            heading->setGeometry(1, 1, width - 2, CollapsedPanelHeight - 2);
        top += CollapsedPanelHeight;
        page->show();
        QLabel* open = imgSetPageOpen[i];
        QLabel* close = imgSetPageClose[i];
        open->move(width - 24, 4);
        close->move(open->pos());
        close->hide();
        open->show();
        open->raise();
        close->raise();
        close->setToolTip(QStringLiteral("Collapse this panel of options"));
        open->setToolTip(QStringLiteral("Expand this panel of options"));
    }
    imgSetPageClose[20]->move(imgSetPageOpen[20]->pos());
    imgSetPageClose[20]->hide();
    imgSetPageClose[21]->move(imgSetPageOpen[21]->pos());
    imgSetPageOpen[21]->hide();

    portalScroll->setGeometry(PortalLeft + PortalWidth + 2, PortalTop, ScrollWidth - 2,
                              Portal->height());
    portalScroll->setSingleStep(10);
    portalScroll->setPageStep(Portal->height() / 2);
    PageHolder->move(0, 0);

    CheckForImageMask();
    SetBackgroundWarning();
    UpdatePageHolder();

    chkAddWhiteBorder_Click();
    chkAddContrastToBW_Click();

    setFixedHeight(Portal->y() + Portal->height() + 14);
    lblNightModeClock->raise();
    lblVersion->setText(QStringLiteral("version %1").arg(ProgramVersion));

    chkMultiMonUseMinHeight_Click();
    CheckIfShowRandBackgroundImage();
}

void frmConfig::UpdatePageHolder() {
    QWidget* last = setPage[10];
    PageHolder->resize(PageHolder->width(), last->y() + last->height());
    if (PageHolder->height() <= Portal->height()) {
        portalScroll->setRange(0, 0);
        portalScroll->setValue(0);
        portalScroll->hide();
        PageHolder->move(0, 0);
    } else {
        portalScroll->setMaximum(PageHolder->height() - Portal->height());
        portalScroll->show();
    }
}

void frmConfig::portalScroll_Change() {
    PageHolder->move(0, -portalScroll->value());
}

// --- The accordion ------------------------------------------------------------------------------

void frmConfig::imgSetPageOpen_Click(int index) {
    if (index == 21) {
        imgSetPageOpen[21]->hide();
        expandConfigTimer->setInterval(50);
        expandConfigTimer->setEnabled(true);
        return;
    }
    if (index == 20) {
        imgSetPageOpen[20]->hide();
        for (int i = 0; i <= 10; ++i)
            if (!imgSetPageOpen[i]->isHidden()) imgSetPageOpen_Click(i);
        imgSetPageClose[20]->show();
        return;
    }
    if (index < 0 || index > 10) return;
    imgSetPageOpen[index]->hide();
    StartPageTimer(openPageTimer, index, true);
}

void frmConfig::imgSetPageClose_Click(int index) {
    if (index == 21) {
        imgSetPageClose[21]->hide();
        expandConfigTimer->setInterval(90);
        expandConfigTimer->setEnabled(true);
        return;
    }
    if (index == 20) {
        imgSetPageClose[20]->hide();
        for (int i = 0; i <= 10; ++i)
            if (!imgSetPageClose[i]->isHidden()) imgSetPageClose_Click(i);
        imgSetPageOpen[20]->show();
        return;
    }
    if (index < 0 || index > 10) return;
    imgSetPageClose[index]->hide();
    StartPageTimer(closePageTimer, index, false);
}

void frmConfig::StartPageTimer(std::array<VbTimer*, 11>& timers, int index, bool opening) {
    VbTimer*& timer = timers[static_cast<std::size_t>(index)];
    if (!timer) {
        timer = new VbTimer(100, false, this);
        if (opening)
            timer->setHandler([this, index] { openPageTimer_Timer(index); });
        else
            timer->setHandler([this, index] { closePageTimer_Timer(index); });
    }
    timer->setInterval(100);
    timer->setEnabled(true);
}

void frmConfig::openPageTimer_Timer(int index) {
    PageAnimationStep(index, true);
}

void frmConfig::closePageTimer_Timer(int index) {
    PageAnimationStep(index, false);
}

void frmConfig::PageAnimationStep(int index, bool opening) {
    const auto k = static_cast<std::size_t>(index);
    QWidget* page = setPage[k];
    const int full = page->property("Tag").toString().toInt();
    const int target = opening ? full : CollapsedPanelHeight;
    const int step = PanelAnimationStep(page->height(), target);
    page->resize(page->width(), page->height() + step);
    MovePanelsBelow(index, step);

    const bool done = opening ? page->height() >= full : page->height() <= CollapsedPanelHeight;
    if (done) {
        page->resize(page->width(), target);
        std::array<VbTimer*, 11>& timers = opening ? openPageTimer : closePageTimer;
        timers[k]->setEnabled(false);
        page->update();
        if (index > 0) {
            // Each panel above 0 had a timer of its own for this one animation.
            timers[k]->deleteLater();
            timers[k] = nullptr;
        }
        if (opening) {
            imgSetPageClose[index]->show();
            if (index == 3) ShowPanoDemo();
        } else {
            imgSetPageOpen[index]->show();
            if (index == 3) ScrollDemoTimer->setEnabled(false);
        }
    }
    UpdatePageHolder();
}

void frmConfig::MovePanelsBelow(int index, int by) {
    if (by == 0) return;
    for (int i = index + 1; i <= 10; ++i) {
        QWidget* page = setPage[static_cast<std::size_t>(i)];
        page->move(page->x(), page->y() + by);
    }
}

void frmConfig::expandConfigTimer_Timer() {
    if (expandConfigTimer->Interval() == 50) {
        const int bottom = lstImages[0]->geometry().bottom() + 1;
        const int grown = std::min(height() + WindowResizeStep, bottom);
        setFixedHeight(grown);
        if (grown >= bottom) {
            expandConfigTimer->setEnabled(false);
            imgSetPageClose[21]->show();
        }
        return;
    }
    const int shrunk = std::max(height() - WindowResizeStep, RestFormHeight);
    setFixedHeight(shrunk);
    if (shrunk <= RestFormHeight) {
        expandConfigTimer->setEnabled(false);
        imgSetPageOpen[21]->show();
    }
}

// --- Mouse: image buttons and dragging the window ------------------------------------------------

bool frmConfig::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (DragFilter(watched, event)) return true;
    if (type == QEvent::Wheel) {
        // A list box under a passing wheel would change a setting unasked: only the one that
        // has the focus takes the wheel, the others leave it to the options' scrolling.
        auto* combo = qobject_cast<QComboBox*>(watched);
        if (!combo || combo->hasFocus()) return false;
        ScrollPortalBy(static_cast<QWheelEvent*>(event)->angleDelta().y());
        return true;
    }
    if (watched == imgSkyBar && type == QEvent::MouseMove) {
        // The clock tells the time of the quarter-hour under the pointer.
        const int x = static_cast<QMouseEvent*>(event)->position().toPoint().x();
        const int zone = SkyBarZoneWidth > 0 ? std::clamp(x / SkyBarZoneWidth, 0, 96) : 0;
        QListWidgetItem* item = TimeList->item(zone);
        lblNightModeClock->setText(item ? item->text() : QString());
        return false;
    }
    if (watched == imgSkyBar && type == QEvent::Leave) lblNightModeClock->clear();
    if (watched == CaptionFrame && type == QEvent::Resize)
        CaptionExample->move((CaptionFrame->width() - CaptionExample->width()) / 2,
                             (CaptionFrame->height() - CaptionExample->height()) / 2);
    if (watched == secretShowShadowParms && type == QEvent::MouseButtonRelease) {
        for (QWidget* w : std::initializer_list<QWidget*>{lblShadowParms[0], lblShadowParms[1],
                                                          txtShadowSize, txtShadowDistance})
            w->show();
        return true;
    }
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease)
        return QWidget::eventFilter(watched, event);
    if (watched == lblImageCount) {
        if (type == QEvent::MouseButtonRelease) lblImageCount_Click();
        return true;
    }
    if (static_cast<QMouseEvent*>(event)->button() != Qt::LeftButton) return true;
    const bool press = type == QEvent::MouseButtonPress;
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::size_t>(i);
        if (watched == imgButton[k] && press) {
            imgButton_MouseDown(i);
            return true;
        }
        if (watched == imgButtonPressed[k] || watched == imgButton[k]) {
            if (!press) imgButton_MouseUp(i);
            return true;
        }
    }
    for (auto& [index, image] : imgSetPageOpen) {
        if (watched == image) {
            if (!press) imgSetPageOpen_Click(index);
            return true;
        }
    }
    for (auto& [index, image] : imgSetPageClose) {
        if (watched == image) {
            if (!press) imgSetPageClose_Click(index);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmConfig::imgButton_MouseDown(int index) {
    const auto k = static_cast<std::size_t>(index);
    imgButtonPressed[k]->move(imgButton[k]->pos());
    imgButtonPressed[k]->show();
    // The release still goes to the button that took the press, under the pressed picture.
    imgButtonPressed[k]->raise();
}

void frmConfig::imgButton_MouseUp(int index) {
    const auto k = static_cast<std::size_t>(index);
    imgButtonPressed[k]->hide();
    switch (index) {
    case 0:
        frmOpenFolder::instance()->ShowFor(this);
        break;
    case 2:
        DeleteFolderListItem(SelectedListRow());
        break;
    default:
        // STAND-IN until the web page and Flickr dialogs exist.
        platform::MsgBox(QStringLiteral("Adding image lists is not available in this version."),
                         platform::vbInformation, QStringLiteral("Tessaview"));
        break;
    }
}

void frmConfig::Form_MouseDown(const QPoint& pointer) {
    DragStartPointer = pointer;
    DragStartForm = pos();
    DragActive = true;
}

void frmConfig::Form_MouseMove(const QPoint& pointer) {
    if (!DragActive) return;
    const QPoint target = DragStartForm + (pointer - DragStartPointer);
    if (target != pos()) move(target);
}

void frmConfig::Form_MouseUp() {
    DragActive = false;
}

void frmConfig::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) Form_MouseDown(event->globalPosition().toPoint());
}

void frmConfig::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton) Form_MouseMove(event->globalPosition().toPoint());
}

// The wheel anywhere over the options scrolls them, as the bar would.
void frmConfig::wheelEvent(QWheelEvent* event) {
    const QPoint at = event->position().toPoint();
    if (at.x() >= Portal->x()) ScrollPortalBy(event->angleDelta().y());
}

void frmConfig::ScrollPortalBy(int wheelDelta) {
    if (portalScroll->isHidden()) return;
    const int notches = wheelDelta / 120;
    portalScroll->setValue(portalScroll->value() - notches * 4 * portalScroll->singleStep());
}

void frmConfig::mouseReleaseEvent(QMouseEvent* event) {
    Q_UNUSED(event);
    Form_MouseUp();
}

// --- Running and ending
// ---------------------------------------------------------------------------

void frmConfig::CenterOnScreen() {
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return;
    const QRect s = screen->availableGeometry();
    move(s.left() + (s.width() - width()) / 2, s.top() + std::max(0, (s.height() - height()) / 3));
}

void frmConfig::RunConfig() {
    FormIsInitializing = true;
    RunningFromConfig = true;
    Initialize();
    CenterOnScreen();
    show();
    CheckForRemainingList();
    FormIsInitializing = false;
    cmdApply->setEnabled(false);
}

void frmConfig::RunSaver() {
    FormIsInitializing = true;
    CenterOnScreen();
    Initialize();
    FormIsInitializing = false;
    cmdRunShow_Click();
}

void frmConfig::cmdRunShow_Click() {
    cmdRunShow->setEnabled(false);
    ExitShow = false;
    ScrollDemoTimer->setEnabled(false);
    cmdOk->setEnabled(false);
    cmdCancel->setEnabled(false);
    ApplyWasEnabled = cmdApply->isEnabled();
    cmdApply->setEnabled(false);
    frmSlideShow::instance()->StartShow();
}

void frmConfig::StopShowTimer_Timer() {
    StopShowTimer->setEnabled(false);
    CloseProgramFromConfig();
}

void frmConfig::CloseProgramFromConfig() {
    // Far past balance on purpose: whatever came between, the pointer comes back.
    while (platform::ShowCursor(true) < 6) {
    }
    ExitShow = true;
    frmSlideShow::unload();
    ExitShow = true;
    if (RunningFromConfig) {
        CheckForRemainingList();
        cmdRunShow->setEnabled(true);
        cmdOk->setEnabled(true);
        cmdCancel->setEnabled(true);
        cmdApply->setEnabled(ApplyWasEnabled);
        if (!imgSetPageClose[3]->isHidden()) ShowPanoDemo();
        return;
    }
    Forms::UnloadAll();
}

namespace {

QStringList RemainingListFiles() {
    return {InstallDir + QStringLiteral("/remain.lst"),
            InstallDir + QStringLiteral("/remain-t.lst"),
            InstallDir + QStringLiteral("/remain-d.lst")};
}

} // namespace

// The reset button is offered only while a saved pool waits for the next show.
void frmConfig::CheckForRemainingList() {
    cmdNukeRemlist->setVisible(common::FileExists(RemainingListFiles().first()));
}

// The saved pool no longer matches the lists: the next show starts from the lists again.
void frmConfig::NukeRemList() {
    for (const QString& file : RemainingListFiles())
        if (common::FileExists(file)) QFile::remove(file);
    cmdNukeRemlist->hide();
}

void frmConfig::cmdNukeRemlist_Click() {
    NukeRemList();
}

void frmConfig::MarkChanged() {
    if (!FormIsInitializing) cmdApply->setEnabled(true);
}

void frmConfig::cmdApply_Click() {
    SavePrefs();
}

void frmConfig::cmdOk_Click() {
    cmdApply_Click();
    Form_Unload();
}

void frmConfig::cmdCancel_Click() {
    Form_Unload();
}

void frmConfig::cmdHelp_Click() {
    const QString helpFile = InstallDir + QStringLiteral("/Help/index.html");
    if (common::FileExists(helpFile)) {
        common::ShellResult r = common::OpenDocument(helpFile, QStringLiteral("open"));
        if (!r.ok()) platform::MsgBox(r.message, platform::vbExclamation);
        return;
    }
    platform::MsgBox(QStringLiteral("I can't find the help file on your computer.\r\nI'll try and "
                                    "open the Help files on the web."),
                     platform::vbInformation,
                     QStringLiteral("(please connect to the internet if you are not already "
                                    "connected)"));
    common::ShellResult r = common::OpenDocument(platform::OnlineHelpUrl(), QStringLiteral("open"));
    if (!r.ok()) platform::MsgBox(r.message, platform::vbExclamation);
}

void frmConfig::Form_Unload() {
    if (unloading_) return;
    unloading_ = true;
    Forms::UnloadAll();
}

void frmConfig::closeEvent(QCloseEvent* event) {
    event->accept();
    Form_Unload();
}
