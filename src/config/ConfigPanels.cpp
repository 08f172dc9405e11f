// The settings controls of the configuration window, panel by panel.
#include "config/ColourButton.h"
#include "config/frmConfig.h"

#include <QButtonGroup>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

template <class W> W* Named(W* w, const QString& name) {
    w->setObjectName(name);
    return w;
}

QString Indexed(const char* name, int i) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

QLineEdit* NumberBox(QWidget* parent, const char* name) {
    auto* box = Named(new QLineEdit(parent), QLatin1String(name));
    box->setMaximumWidth(70);
    return box;
}

} // namespace

void frmConfig::BuildSettingsPanels() {
    Portal = Named(new QScrollArea(this), QStringLiteral("Portal"));
    Portal->setWidgetResizable(true);
    Portal->setFrameShape(QFrame::NoFrame);
    Portal->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    PageHolder = Named(new QWidget(), QStringLiteral("PageHolder"));
    auto* holder = new QVBoxLayout(PageHolder);
    holder->setContentsMargins(0, 0, 6, 0);
    holder->setSpacing(6);
    Portal->setWidget(PageHolder);

    auto page = [&](int i, QWidget* heading) {
        auto* frame = Named(new QFrame(PageHolder), Indexed("setPage", i));
        frame->setFrameShape(QFrame::StyledPanel);
        auto* v = new QVBoxLayout(frame);
        v->setContentsMargins(10, 6, 10, 8);
        heading->setParent(frame);
        QFont f = heading->font();
        f.setBold(true);
        heading->setFont(f);
        v->addWidget(heading);
        auto* body = new QGridLayout();
        body->setHorizontalSpacing(10);
        v->addLayout(body);
        holder->addWidget(frame);
        setPage[static_cast<std::size_t>(i)] = frame;
        return body;
    };
    auto row = [](QGridLayout* g, QWidget* a, QWidget* b = nullptr, QWidget* c = nullptr) {
        const int r = g->rowCount();
        g->addWidget(a, r, 0);
        if (b) g->addWidget(b, r, 1);
        if (c) g->addWidget(c, r, 2);
    };
    auto label = [](const QString& text) { return new QLabel(text); };
    auto slider = [&](int index) {
        auto* s = Named(new QSlider(Qt::Horizontal), Indexed("imgLayoutSlider", index));
        s->setRange(0, 100);
        auto* l = Named(new QLabel(QStringLiteral("0 %")), Indexed("lblLayoutSetting", index));
        imgLayoutSlider[index] = s;
        lblLayoutSetting[index] = l;
        return std::make_pair(s, l);
    };

    // 0: show settings.
    QGridLayout* g =
        page(0, label(QStringLiteral("Slide Show Settings (image order, display time etc.)")));
    txtImageInterval = NumberBox(nullptr, "txtImageInterval");
    txtCrossfadeTime = NumberBox(nullptr, "txtCrossfadeTime");
    row(g, label(QStringLiteral("Seconds each image is shown")), txtImageInterval);
    row(g, label(QStringLiteral("Crossfade time (seconds)")), txtCrossfadeTime);
    cmbImageOrder = Named(new QComboBox(), QStringLiteral("cmbImageOrder"));
    cmbImageOrder->addItems({QStringLiteral("Sequentially"), QStringLiteral("in Random Order"),
                             QStringLiteral("Sequentially from a Random Folder"),
                             QStringLiteral("Randomly from a Random Folder")});
    row(g, label(QStringLiteral("Show images")), cmbImageOrder);
    chkUseKeyWord = Named(new QCheckBox(QStringLiteral("Only images with the keyword")),
                          QStringLiteral("chkUseKeyWord"));
    txtKeyword = Named(new QLineEdit(QStringLiteral("christmas")), QStringLiteral("txtKeyword"));
    row(g, chkUseKeyWord, txtKeyword);
    cmdChangeBackgroundColour = Named(new ColourButton(QStringLiteral("Background colour")),
                                      QStringLiteral("cmdChangeBackgroundColour"));
    row(g, label(QStringLiteral("Colour behind the images")), cmdChangeBackgroundColour);

    // 1: background images.
    chkUseBackgroundImages = Named(new QCheckBox(QStringLiteral("Use Background Image")),
                                   QStringLiteral("chkUseBackgroundImages"));
    g = page(1, chkUseBackgroundImages);
    cmbTileBackground = Named(new QComboBox(), QStringLiteral("cmbTileBackground"));
    cmbTileBackground->addItems(
        {QStringLiteral("Tile Background Image"), QStringLiteral("Centre Background Image")});
    auto [bgSlider, bgLabel] = slider(11);
    row(g, cmbTileBackground, bgSlider, bgLabel);
    optRandomBackgroundImage =
        Named(new QRadioButton(QStringLiteral("Random image, changed every")),
              QStringLiteral("optRandomBackgroundImage"));
    optSpecificbackgroundImage = Named(new QRadioButton(QStringLiteral("This image")),
                                       QStringLiteral("optSpecificbackgroundImage"));
    auto* bgGroup = new QButtonGroup(this);
    bgGroup->addButton(optRandomBackgroundImage);
    bgGroup->addButton(optSpecificbackgroundImage);
    txtRandomBackgroundChangeInterval = NumberBox(nullptr, "txtRandomBackgroundChangeInterval");
    row(g, optRandomBackgroundImage, txtRandomBackgroundChangeInterval,
        label(QStringLiteral("frames")));
    txtBackgroundImage = Named(new QLineEdit(), QStringLiteral("txtBackgroundImage"));
    picBackgroundPreview = Named(new QLabel(), QStringLiteral("picBackgroundPreview"));
    picBackgroundPreview->setFixedSize(96, 72);
    row(g, optSpecificbackgroundImage, txtBackgroundImage, picBackgroundPreview);
    chkUseLocalBackground = Named(
        new QCheckBox(QStringLiteral("Use a local image whose name starts with \"background\"")),
        QStringLiteral("chkUseLocalBackground"));
    row(g, chkUseLocalBackground);
    lblBackgroundImagesFolder = Named(new QLabel(), QStringLiteral("lblBackgroundImagesFolder"));
    row(g, lblBackgroundImagesFolder);

    // 2: captions.
    chkShowCaptions = Named(new QCheckBox(QStringLiteral("Display Image Captions")),
                            QStringLiteral("chkShowCaptions"));
    g = page(2, chkShowCaptions);
    cmbFontList = Named(new QComboBox(), QStringLiteral("cmbFontList"));
    cmbFontSize = Named(new QComboBox(), QStringLiteral("cmbFontSize"));
    for (int size = 6; size <= 48; size += 2)
        cmbFontSize->addItem(QString::number(size));
    row(g, cmbFontList, cmbFontSize);
    CaptionFrame = Named(new QFrame(), QStringLiteral("CaptionFrame"));
    CaptionFrame->setMinimumHeight(60);
    auto* frameLayout = new QHBoxLayout(CaptionFrame);
    CaptionExample =
        Named(new QLabel(QStringLiteral("Weekend In Toronto")), QStringLiteral("CaptionExample"));
    frameLayout->addWidget(CaptionExample, 0, Qt::AlignCenter);
    g->addWidget(CaptionFrame, g->rowCount(), 0, 1, 3);
    const char* capNames[7] = {"chkCapFileName",       "chkCapFileNameFullPath",
                               "chkCapFolderName",     "chkCapFolderNameFullPath",
                               "chkCapEXIFDate",       "chkCapDimensions",
                               "chkCapEXIFDescription"};
    const char* capTexts[7] = {"File name", "Full path",  "Folder name",     "Full folder path",
                               "EXIF date", "Dimensions", "EXIF description"};
    std::array<std::array<QCheckBox*, 2>*, 7> capArrays = {
        &chkCapFileName, &chkCapFileNameFullPath, &chkCapFolderName,     &chkCapFolderNameFullPath,
        &chkCapEXIFDate, &chkCapDimensions,       &chkCapEXIFDescription};
    for (int k = 0; k < 7; ++k) {
        auto* a = Named(new QCheckBox(QLatin1String(capTexts[k]) + QStringLiteral(" (A)")),
                        Indexed(capNames[k], 0));
        auto* b = Named(new QCheckBox(QLatin1String(capTexts[k]) + QStringLiteral(" (B)")),
                        Indexed(capNames[k], 1));
        (*capArrays[static_cast<std::size_t>(k)])[0] = a;
        (*capArrays[static_cast<std::size_t>(k)])[1] = b;
        row(g, a, b);
    }
    auto* posGroup1 = new QButtonGroup(this);
    auto* posGroup2 = new QButtonGroup(this);
    auto* positions = new QWidget();
    auto* posLayout = new QGridLayout(positions);
    for (int p = 1; p <= 6; ++p) {
        Position1[static_cast<std::size_t>(p)] =
            Named(new QRadioButton(QStringLiteral("A%1").arg(p)), Indexed("Position1", p));
        Position2[static_cast<std::size_t>(p)] =
            Named(new QRadioButton(QStringLiteral("B%1").arg(p)), Indexed("Position2", p));
        posGroup1->addButton(Position1[static_cast<std::size_t>(p)]);
        posGroup2->addButton(Position2[static_cast<std::size_t>(p)]);
        posLayout->addWidget(Position1[static_cast<std::size_t>(p)], 0, p);
        posLayout->addWidget(Position2[static_cast<std::size_t>(p)], 1, p);
    }
    g->addWidget(positions, g->rowCount(), 0, 1, 3);
    chkShowExtension = Named(new QCheckBox(QStringLiteral("Show file extension")),
                             QStringLiteral("chkShowExtension"));
    chkFloatingCaptions = Named(new QCheckBox(QStringLiteral("Floating caption boxes")),
                                QStringLiteral("chkFloatingCaptions"));
    row(g, chkShowExtension, chkFloatingCaptions);
    chkUseDSCFilter = Named(new QCheckBox(QStringLiteral("Filter camera file names")),
                            QStringLiteral("chkUseDSCFilter"));
    cmbDSCFilter = Named(new QComboBox(), QStringLiteral("cmbDSCFilter"));
    cmbDSCFilter->addItems({QStringLiteral("Don't show the filename (leave it blank)"),
                            QStringLiteral("Show the folder name instead")});
    lstDSCFilter = Named(new QListWidget(), QStringLiteral("lstDSCFilter"));
    lstDSCFilter->setMaximumHeight(70);
    row(g, chkUseDSCFilter, cmbDSCFilter, lstDSCFilter);

    // 3: panoramas.
    chkScrollPanos =
        Named(new QCheckBox(QStringLiteral("Scroll Panoramic Images (Hortizontal and Vertical)")),
              QStringLiteral("chkScrollPanos"));
    g = page(3, chkScrollPanos);
    chkScrollAllVerticalImages = Named(new QCheckBox(QStringLiteral("Scroll all vertical images")),
                                       QStringLiteral("chkScrollAllVerticalImages"));
    row(g, chkScrollAllVerticalImages);

    // 4: layouts.
    g = page(4, label(QStringLiteral("Layouts")));
    const char* layoutNames[3] = {"Normal Mode", "Stack Images In A Pile", "Four From A Folder"};
    for (int i = 0; i < 3; ++i) {
        chkLayout[static_cast<std::size_t>(i)] =
            Named(new QCheckBox(QLatin1String(layoutNames[i])), Indexed("chkLayout", i));
        auto [s, l] = slider(i);
        row(g, chkLayout[static_cast<std::size_t>(i)], s, l);
    }
    txtMaxStackedImages = NumberBox(nullptr, "txtMaxStackedImages");
    row(g, label(QStringLiteral("Images in a pile")), txtMaxStackedImages);
    chkStopStackIfPano = Named(new QCheckBox(QStringLiteral("Stop the pile at a panorama")),
                               QStringLiteral("chkStopStackIfPano"));
    chkStopStackIfPano->setChecked(true);
    row(g, chkStopStackIfPano);
    chkAddWhiteBorder =
        Named(new QCheckBox(QStringLiteral("Add a border")), QStringLiteral("chkAddWhiteBorder"));
    cmdBorderColour =
        Named(new ColourButton(QStringLiteral("Border colour")), QStringLiteral("cmdBorderColour"));
    cmdBorderColour->setBackColor(0x404040);
    cmbBorderPercent = Named(new QComboBox(), QStringLiteral("cmbBorderPercent"));
    for (int pct = 0; pct <= 100; pct += 5)
        cmbBorderPercent->addItem(QStringLiteral("%1%").arg(pct));
    cmbBorderPercent->setCurrentIndex(10);
    row(g, chkAddWhiteBorder, cmdBorderColour, cmbBorderPercent);
    for (int i = 0; i < 2; ++i) {
        picStackedPreview[static_cast<std::size_t>(i)] =
            Named(new QLabel(), Indexed("picStackedPreview", i));
        picStackedPreview[static_cast<std::size_t>(i)]->hide();
    }

    // 5: image effects.
    g = page(5, label(QStringLiteral("Image Effects")));
    chkUseImageMasks =
        Named(new QCheckBox(QStringLiteral("Image masks")), QStringLiteral("chkUseImageMasks"));
    auto [maskSlider, maskLabel] = slider(10);
    row(g, chkUseImageMasks, maskSlider, maskLabel);
    optRandomImageMasks = Named(new QRadioButton(QStringLiteral("Random mask, changed every")),
                                QStringLiteral("optRandomImageMasks"));
    optUseSpecificMask =
        Named(new QRadioButton(QStringLiteral("This mask")), QStringLiteral("optUseSpecificMask"));
    auto* maskGroup = new QButtonGroup(this);
    maskGroup->addButton(optRandomImageMasks);
    maskGroup->addButton(optUseSpecificMask);
    txtRandomMaskChangeInterval = NumberBox(nullptr, "txtRandomMaskChangeInterval");
    row(g, optRandomImageMasks, txtRandomMaskChangeInterval, label(QStringLiteral("frames")));
    txtImageMask = Named(new QLineEdit(), QStringLiteral("txtImageMask"));
    picMaskPreview = Named(new QLabel(), QStringLiteral("picMaskPreview"));
    picMaskPreview->setFixedSize(96, 72);
    row(g, optUseSpecificMask, txtImageMask, picMaskPreview);
    chkAddShadows = Named(new QCheckBox(QStringLiteral("Drop shadows, size / distance")),
                          QStringLiteral("chkAddShadows"));
    txtShadowSize = NumberBox(nullptr, "txtShadowSize");
    txtShadowDistance = NumberBox(nullptr, "txtShadowDistance");
    row(g, chkAddShadows, txtShadowSize, txtShadowDistance);
    chkBlackAndWhite =
        Named(new QCheckBox(QStringLiteral("Black and white")), QStringLiteral("chkBlackAndWhite"));
    auto [bwSlider, bwLabel] = slider(12);
    row(g, chkBlackAndWhite, bwSlider, bwLabel);
    chkAddContrastToBW =
        Named(new QCheckBox(QStringLiteral("Add contrast")), QStringLiteral("chkAddContrastToBW"));
    row(g, chkAddContrastToBW);

    // 6: monitors.
    chkEnableMultiMon = Named(new QCheckBox(QStringLiteral("Enable Multiple Monitors")),
                              QStringLiteral("chkEnableMultiMon"));
    g = page(6, chkEnableMultiMon);
    cmbMultiMonOption = Named(new QComboBox(), QStringLiteral("cmbMultiMonOption"));
    cmbMultiMonOption->addItems({QStringLiteral("Control each monitor seperately"),
                                 QStringLiteral("Act like all monitors are one big screen.")});
    row(g, cmbMultiMonOption);
    lblMultiMonDetail[0] = Named(
        new QLabel(QStringLiteral("Seperate images are shown on each monitor.\r\nPanoramic images "
                                  "will span across all monitors.")),
        QStringLiteral("lblMultiMonDetail(0)"));
    lblMultiMonDetail[1] = Named(
        new QLabel(QStringLiteral("All monitors are treated like one big desktop.  Images may not "
                                  "necessarily be entirely on one particular monitor. ")),
        QStringLiteral("lblMultiMonDetail(1)"));
    for (QLabel* l : lblMultiMonDetail) {
        l->setWordWrap(true);
        row(g, l);
    }
    chkMultiMonUseMinHeight =
        Named(new QCheckBox(QStringLiteral("Use only the height all monitors share")),
              QStringLiteral("chkMultiMonUseMinHeight"));
    row(g, chkMultiMonUseMinHeight);

    // 7: night mode.
    chkNightMode =
        Named(new QCheckBox(QStringLiteral("Enable Night Mode")), QStringLiteral("chkNightMode"));
    g = page(7, chkNightMode);
    for (int i = 0; i < 2; ++i)
        lblTime[static_cast<std::size_t>(i)] = Named(new QLabel(), Indexed("lblTime", i));
    row(g, label(QStringLiteral("Night from")), lblTime[0]);
    row(g, label(QStringLiteral("until")), lblTime[1]);
    optTurnMonitorOFF = Named(new QRadioButton(QStringLiteral("Turn the monitor off")),
                              QStringLiteral("optTurnMonitorOFF"));
    optNightModeBlankScreen = Named(new QRadioButton(QStringLiteral("Blank the screen")),
                                    QStringLiteral("optNightModeBlankScreen"));
    auto* nightGroup = new QButtonGroup(this);
    nightGroup->addButton(optTurnMonitorOFF);
    nightGroup->addButton(optNightModeBlankScreen);
    row(g, optTurnMonitorOFF, optNightModeBlankScreen);
    TimeList = Named(new QListWidget(this), QStringLiteral("TimeList"));
    TimeList->hide();

    // 8: miscellaneous.
    g = page(8, label(QStringLiteral("Miscellaneous")));
    chkWidescreen =
        Named(new QCheckBox(QStringLiteral("Widescreen pixels")), QStringLiteral("chkWidescreen"));
    chkShowStatus = Named(new QCheckBox(QStringLiteral("Always show the status line")),
                          QStringLiteral("chkShowStatus"));
    chkVetCache = Named(new QCheckBox(QStringLiteral("Check the web image cache")),
                        QStringLiteral("chkVetCache"));
    row(g, chkWidescreen, chkShowStatus, chkVetCache);
    chkExitOnESC = Named(new QCheckBox(QStringLiteral("Esc key")), QStringLiteral("chkExitOnESC"));
    chkExitOnKey = Named(new QCheckBox(QStringLiteral("Any key")), QStringLiteral("chkExitOnKey"));
    chkExitOnMouse =
        Named(new QCheckBox(QStringLiteral("Mouse move")), QStringLiteral("chkExitOnMouse"));
    chkExitOnClick =
        Named(new QCheckBox(QStringLiteral("Mouse click")), QStringLiteral("chkExitOnClick"));
    row(g, label(QStringLiteral("End the show on")), chkExitOnESC, chkExitOnKey);
    row(g, new QWidget(), chkExitOnMouse, chkExitOnClick);
    chkDebug = Named(new QCheckBox(QStringLiteral("Debug log")), QStringLiteral("chkDebug"));
    chkDebug->setEnabled(false);
    row(g, chkDebug);

    // 9: sounds.
    g = page(9, label(QStringLiteral("Sounds")));
    chkPlaySound = Named(new QCheckBox(QStringLiteral("Play a sound with each image")),
                         QStringLiteral("chkPlaySound"));
    optRandomSound = Named(new QRadioButton(QStringLiteral("Random from the Sounds folder")),
                           QStringLiteral("optRandomSound"));
    optSpecificSound =
        Named(new QRadioButton(QStringLiteral("This sound")), QStringLiteral("optSpecificSound"));
    auto* soundGroup = new QButtonGroup(this);
    soundGroup->addButton(optRandomSound);
    soundGroup->addButton(optSpecificSound);
    txtSoundFile = Named(new QLineEdit(), QStringLiteral("txtSoundFile"));
    lblSoundLength = Named(new QLabel(), QStringLiteral("lblSoundLength"));
    row(g, chkPlaySound, optRandomSound);
    row(g, optSpecificSound, txtSoundFile, lblSoundLength);
    chkPlayMusic =
        Named(new QCheckBox(QStringLiteral("Play music")), QStringLiteral("chkPlayMusic"));
    optRandomMusicFromFolder =
        Named(new QRadioButton(QStringLiteral("Random from the Sounds folder")),
              QStringLiteral("optRandomMusicFromFolder"));
    optSpecificPlayList = Named(new QRadioButton(QStringLiteral("This playlist")),
                                QStringLiteral("optSpecificPlayList"));
    auto* musicGroup = new QButtonGroup(this);
    musicGroup->addButton(optRandomMusicFromFolder);
    musicGroup->addButton(optSpecificPlayList);
    txtMusicPlaylist = Named(new QLineEdit(), QStringLiteral("txtMusicPlaylist"));
    row(g, chkPlayMusic, optRandomMusicFromFolder);
    row(g, optSpecificPlayList, txtMusicPlaylist);

    // 10: about.
    g = page(10, label(QStringLiteral("About Tessaview")));
    row(g, label(QStringLiteral("A photo slide show for your screen.")));
    holder->addStretch(1);
}
