// The eleven panels of settings of the configuration window. Each panel is a heading strip of
// fixed height over a body that it clips while collapsed.
#include "config/ColourButton.h"
#include "config/frmConfig.h"

#include <QButtonGroup>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPixmap>

namespace {

QString Indexed(const char* name, int i) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

QLineEdit* NumberBox(const char* name) {
    auto* box = Named(new QLineEdit(), QLatin1String(name));
    box->setFixedWidth(56);
    return box;
}

QLabel* Muted(const QString& text) {
    auto* l = new QLabel(text);
    l->setProperty("muted", true);
    l->setWordWrap(true);
    return l;
}

// A sample picture of an effect, 120 by 80.
QLabel* Sample(QWidget* parent, const QString& name, const QString& resource) {
    auto* l = Named(new QLabel(parent), name);
    l->setPixmap(ConfigArt(resource, QSize(120, 80)));
    l->setScaledContents(true);
    l->setGeometry(0, 0, 120, 80);
    return l;
}

// A count of frames with its unit beside it.
QWidget* FramesBox(QLineEdit* count) {
    auto* box = new QWidget();
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(count);
    row->addWidget(new QLabel(QStringLiteral("frames")));
    row->addStretch(1);
    return box;
}

// A file's box with the button that opens a dialog for it.
QWidget* WithButton(QLineEdit* box, QPushButton* button) {
    auto* pair = new QWidget();
    auto* row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(box, 1);
    row->addWidget(button);
    return pair;
}

// A place for pictures that take turns in one spot.
QWidget* SampleHolder(const QString& name) {
    auto* w = Named(new QWidget(), name);
    w->setFixedSize(120, 80);
    return w;
}

} // namespace

void frmConfig::BuildPageHeading(int index, QWidget* heading) {
    const auto k = static_cast<std::size_t>(index);
    auto* page = Named(new QFrame(PageHolder), Indexed("setPage", index));
    page->setProperty("page", true);
    page->setAttribute(Qt::WA_StyledBackground, true);
    auto* strip = Named(new QWidget(page), QStringLiteral("heading"));
    strip->setProperty("heading", true);
    strip->setAttribute(Qt::WA_StyledBackground, true);
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(6, 0, 30, 0);
    row->setSpacing(8);
    auto* icon = new QLabel();
    icon->setPixmap(ConfigArt(QStringLiteral("page_icon_%1.png").arg(index), QSize(20, 20)));
    icon->setFixedSize(20, 20);
    icon->setScaledContents(true);
    row->addWidget(icon);
    row->addWidget(heading, 1);
    const QSize arrow(18, 18);
    imgSetPageOpen[index] = MakeClickableImage(page, Indexed("imgSetPageOpen", index),
                                               QStringLiteral("page_open.png"), arrow);
    imgSetPageClose[index] = MakeClickableImage(page, Indexed("imgSetPageClose", index),
                                                QStringLiteral("page_close.png"), arrow);
    imgSetPageClose[index]->hide();
    setPage[k] = page;
}

void frmConfig::BuildSettingsPanels() {
    std::array<QGridLayout*, 11> bodies{};
    auto page = [&](int i, QWidget* heading) {
        BuildPageHeading(i, heading);
        QWidget* frame = setPage[static_cast<std::size_t>(i)];
        auto* body = Named(new QWidget(frame), QStringLiteral("body"));
        body->move(0, CollapsedPanelHeight);
        auto* grid = new QGridLayout(body);
        grid->setContentsMargins(12, 8, 12, 4);
        grid->setHorizontalSpacing(10);
        grid->setVerticalSpacing(6);
        bodies[static_cast<std::size_t>(i)] = grid;
        return grid;
    };
    auto title = [](const QString& text) { return new QLabel(text); };
    auto row = [](QGridLayout* g, QWidget* a, QWidget* b = nullptr, QWidget* c = nullptr) {
        const int r = g->rowCount();
        if (!b && !c) {
            g->addWidget(a, r, 0, 1, 3);
            return;
        }
        g->addWidget(a, r, 0);
        if (b) g->addWidget(b, r, 1, 1, c ? 1 : 2);
        if (c) g->addWidget(c, r, 2);
    };
    auto slider = [&](int index) {
        auto* holder = Named(new QWidget(), Indexed("LayoutSlider", index));
        holder->setFixedSize(150, 22);
        auto* bar = Named(new QLabel(holder), Indexed("LayoutSliderBar", index));
        bar->setPixmap(ConfigArt(QStringLiteral("slider_track.png"), QSize(200, 12)));
        bar->setScaledContents(true);
        bar->setGeometry(0, 5, 150, 12);
        auto* knob = Named(new QLabel(holder), Indexed("imgLayoutSlider", index));
        knob->setPixmap(ConfigArt(QStringLiteral("slider_knob.png"), QSize(12, 20)));
        knob->setScaledContents(true);
        knob->setGeometry(0, 1, 12, 20);
        knob->setCursor(Qt::SizeHorCursor);
        knob->installEventFilter(this);
        auto* label = Named(new QLabel(QStringLiteral("0 %")), Indexed("lblLayoutSetting", index));
        label->setFixedWidth(48);
        LayoutSliderBar[index] = bar;
        imgLayoutSlider[index] = knob;
        lblLayoutSetting[index] = label;
        auto* pair = new QWidget();
        auto* h = new QHBoxLayout(pair);
        h->setContentsMargins(0, 0, 0, 0);
        h->addWidget(holder);
        h->addWidget(label);
        h->addStretch(1);
        return pair;
    };

    // 0: show settings.
    QGridLayout* g =
        page(0, title(QStringLiteral("Slide Show Settings (image order, display time etc.)")));
    txtImageInterval = NumberBox("txtImageInterval");
    txtCrossfadeTime = NumberBox("txtCrossfadeTime");
    row(g, title(QStringLiteral("Seconds each image is shown")), txtImageInterval);
    row(g, title(QStringLiteral("Crossfade time (seconds)")), txtCrossfadeTime);
    TV_NAMED(cmbImageOrder, QComboBox);
    cmbImageOrder->addItems({QStringLiteral("Sequentially"), QStringLiteral("in Random Order"),
                             QStringLiteral("Sequentially from a Random Folder"),
                             QStringLiteral("Randomly from a Random Folder")});
    row(g, title(QStringLiteral("Show images")), cmbImageOrder);
    TV_NAMED(chkUseKeyWord, QCheckBox, QStringLiteral("Only with the keyword"));
    TV_NAMED(txtKeyword, QLineEdit);
    row(g, chkUseKeyWord, txtKeyword);
    TV_NAMED(cmdChangeBackgroundColour, ColourButton, QStringLiteral("Change..."));
    row(g, title(QStringLiteral("Colour behind the images")), cmdChangeBackgroundColour);

    // 1: background images.
    TV_NAMED(chkUseBackgroundImages, QCheckBox, QStringLiteral("Use Background Image"));
    g = page(1, chkUseBackgroundImages);
    TV_NAMED(cmbTileBackground, QComboBox);
    cmbTileBackground->addItems(
        {QStringLiteral("Tile Background Image"), QStringLiteral("Centre Background Image")});
    row(g, cmbTileBackground, slider(11));
    TV_NAMED(optRandomBackgroundImage, QRadioButton, QStringLiteral("Random, changed every"));
    TV_NAMED(optSpecificbackgroundImage, QRadioButton, QStringLiteral("This image"));
    auto* bgGroup = new QButtonGroup(this);
    bgGroup->addButton(optRandomBackgroundImage);
    bgGroup->addButton(optSpecificbackgroundImage);
    txtRandomBackgroundChangeInterval = NumberBox("txtRandomBackgroundChangeInterval");
    row(g, optRandomBackgroundImage, FramesBox(txtRandomBackgroundChangeInterval));
    TV_NAMED(txtBackgroundImage, QLineEdit);
    row(g, optSpecificbackgroundImage, txtBackgroundImage);
    QWidget* bgSamples = SampleHolder(QStringLiteral("BackgroundSamples"));
    TV_NAMED(picBackgroundPreview, QLabel, bgSamples);
    picBackgroundPreview->setGeometry(0, 0, 120, 80);
    picBackgroundPreview->setAlignment(Qt::AlignCenter);
    picRandomBackground = Sample(bgSamples, QStringLiteral("picRandomBackground"),
                                 QStringLiteral("sample_random_background.png"));
    TV_NAMED(lblBackgroundWarning, QLabel);
    lblBackgroundWarning->setProperty("warning", true);
    TV_NAMED(lblBackgroundImagesFolder, QLabel);
    lblBackgroundImagesFolder->setProperty("muted", true);
    lblBackgroundImagesFolder->setWordWrap(true);
    auto* bgNotes = new QWidget();
    auto* notes = new QVBoxLayout(bgNotes);
    notes->setContentsMargins(0, 0, 0, 0);
    notes->addWidget(lblBackgroundImagesFolder);
    notes->addWidget(lblBackgroundWarning);
    notes->addStretch(1);
    row(g, bgSamples, bgNotes);
    TV_NAMED(chkUseLocalBackground, QCheckBox,
             QStringLiteral("Use a local image whose name starts with \"background\""));
    row(g, chkUseLocalBackground);

    // 2: captions.
    TV_NAMED(chkShowCaptions, QCheckBox, QStringLiteral("Display Image Captions"));
    g = page(2, chkShowCaptions);
    TV_NAMED(cmbFontList, QComboBox);
    TV_NAMED(cmbFontSize, QComboBox);
    for (int size = 6; size <= 48; size += 2)
        cmbFontSize->addItem(QString::number(size));
    row(g, cmbFontList, cmbFontSize);
    auto* fontButtons = new QWidget();
    auto* fontRow = new QHBoxLayout(fontButtons);
    fontRow->setContentsMargins(0, 0, 0, 0);
    TV_NAMED(cmdBold, QPushButton, QStringLiteral("Bold"));
    TV_NAMED(cmdItalic, QPushButton, QStringLiteral("Italic"));
    TV_NAMED(cmdCapColour, QPushButton, QStringLiteral("Text Colour"));
    TV_NAMED(cmdCapBack, QPushButton, QStringLiteral("Back Colour"));
    for (QPushButton* b : {cmdBold, cmdItalic, cmdCapColour, cmdCapBack})
        fontRow->addWidget(b);
    row(g, fontButtons);
    TV_NAMED(CaptionFrame, QFrame);
    CaptionFrame->setFixedHeight(64);
    CaptionFrame->installEventFilter(this);
    CaptionFrame->setStyleSheet(QStringLiteral(
        "#CaptionFrame { background: qlineargradient(x1:0, y1:0, x2:1, y2:1, stop:0 #3d5a73, "
        "stop:1 #1d2a36); border-radius: 4px; }"));
    TV_NAMED(CaptionExample, QLabel, QStringLiteral("Weekend In Toronto"), CaptionFrame);
    const char* capNames[7] = {"chkCapFileName",       "chkCapFileNameFullPath",
                               "chkCapFolderName",     "chkCapFolderNameFullPath",
                               "chkCapEXIFDate",       "chkCapDimensions",
                               "chkCapEXIFDescription"};
    const char* capTexts[7] = {"File name", "Full path",  "Folder name",     "Full folder path",
                               "EXIF date", "Dimensions", "EXIF description"};
    std::array<std::array<QCheckBox*, 2>*, 7> capArrays = {
        &chkCapFileName, &chkCapFileNameFullPath, &chkCapFolderName,     &chkCapFolderNameFullPath,
        &chkCapEXIFDate, &chkCapDimensions,       &chkCapEXIFDescription};
    g->addWidget(CaptionFrame, g->rowCount(), 0, 1, 3);
    row(g, title(QStringLiteral("Caption A")), title(QStringLiteral("Caption B")));
    for (int k = 0; k < 7; ++k) {
        auto* a = Named(new QCheckBox(QLatin1String(capTexts[k])), Indexed(capNames[k], 0));
        auto* b = Named(new QCheckBox(QLatin1String(capTexts[k])), Indexed(capNames[k], 1));
        (*capArrays[static_cast<std::size_t>(k)])[0] = a;
        (*capArrays[static_cast<std::size_t>(k)])[1] = b;
        row(g, a, b);
    }
    auto* posGroup1 = new QButtonGroup(this);
    auto* posGroup2 = new QButtonGroup(this);
    auto* positions = new QWidget();
    auto* posLayout = new QGridLayout(positions);
    posLayout->setContentsMargins(0, 0, 0, 0);
    const char* places[7] = {"",       "Top left",    "Top", "Top right", "Bottom left",
                             "Bottom", "Bottom right"};
    for (int p = 1; p <= 6; ++p) {
        const auto pk = static_cast<std::size_t>(p);
        Position1[pk] = Named(new QRadioButton(QLatin1String(places[p])), Indexed("Position1", p));
        Position2[pk] = Named(new QRadioButton(QLatin1String(places[p])), Indexed("Position2", p));
        posGroup1->addButton(Position1[pk]);
        posGroup2->addButton(Position2[pk]);
        posLayout->addWidget(Position1[pk], p - 1, 0);
        posLayout->addWidget(Position2[pk], p - 1, 1);
    }
    row(g, title(QStringLiteral("Place of each caption")));
    row(g, positions);
    TV_NAMED(chkShowExtension, QCheckBox, QStringLiteral("Show file extension"));
    TV_NAMED(chkFloatingCaptions, QCheckBox, QStringLiteral("Floating caption boxes"));
    row(g, chkShowExtension, chkFloatingCaptions);
    TV_NAMED(chkUseDSCFilter, QCheckBox, QStringLiteral("Hide camera file names"));
    TV_NAMED(cmbDSCFilter, QComboBox);
    cmbDSCFilter->addItems({QStringLiteral("Don't show the filename (leave it blank)"),
                            QStringLiteral("Show the folder name instead")});
    row(g, chkUseDSCFilter, cmbDSCFilter);
    TV_NAMED(lstDSCFilter, QListWidget);
    lstDSCFilter->setFixedHeight(64);
    auto* prefixButtons = new QWidget();
    auto* prefixColumn = new QVBoxLayout(prefixButtons);
    prefixColumn->setContentsMargins(0, 0, 0, 0);
    TV_NAMED(cmdAddPrefix, QPushButton, QStringLiteral("Add Prefix"));
    TV_NAMED(cmdRemovePrefix, QPushButton, QStringLiteral("Delete Prefix"));
    prefixColumn->addWidget(cmdAddPrefix);
    prefixColumn->addWidget(cmdRemovePrefix);
    row(g, lstDSCFilter, prefixButtons);

    // 3: panoramas.
    TV_NAMED(chkScrollPanos, QCheckBox,
             QStringLiteral("Scroll Panoramic Images (Hortizontal and Vertical)"));
    g = page(3, chkScrollPanos);
    TV_NAMED(picPanoDemo, QFrame);
    picPanoDemo->setFixedSize(200, 60);
    TV_NAMED(picPanoDemoScroller, QLabel, picPanoDemo);
    picPanoDemoScroller->setPixmap(ConfigArt(QStringLiteral("pano_strip.png"), QSize(480, 60)));
    picPanoDemoScroller->setGeometry(0, 0, 480, 60);
    row(g, picPanoDemo,
        Muted(QStringLiteral("Images much wider or taller than the screen glide slowly from one "
                             "end to the other.")));
    TV_NAMED(chkScrollAllVerticalImages, QCheckBox, QStringLiteral("Scroll all vertical images"));
    row(g, chkScrollAllVerticalImages);

    // 4: layouts.
    g = page(4, title(QStringLiteral("Layouts")));
    const char* layoutNames[3] = {"Normal Mode", "Stack Images In A Pile", "Four From A Folder"};
    for (int i = 0; i < 3; ++i) {
        chkLayout[static_cast<std::size_t>(i)] =
            Named(new QCheckBox(QLatin1String(layoutNames[i])), Indexed("chkLayout", i));
        row(g, chkLayout[static_cast<std::size_t>(i)], slider(i));
    }
    txtMaxStackedImages = NumberBox("txtMaxStackedImages");
    row(g, title(QStringLiteral("Images in a pile")), txtMaxStackedImages);
    TV_NAMED(chkStopStackIfPano, QCheckBox, QStringLiteral("Stop the pile at a panorama"));
    row(g, chkStopStackIfPano);
    TV_NAMED(chkAddWhiteBorder, QCheckBox, QStringLiteral("Add a border"));
    TV_NAMED(cmdBorderColour, ColourButton, QStringLiteral("Colour..."));
    TV_NAMED(cmbBorderPercent, QComboBox);
    for (int pct = 0; pct <= 100; pct += 5)
        cmbBorderPercent->addItem(QStringLiteral("%1%").arg(pct));
    row(g, chkAddWhiteBorder, cmdBorderColour, cmbBorderPercent);
    QWidget* stackSamples = SampleHolder(QStringLiteral("StackedSamples"));
    for (int i = 0; i < 2; ++i)
        picStackedPreview[static_cast<std::size_t>(i)] =
            Sample(stackSamples, Indexed("picStackedPreview", i),
                   QStringLiteral("sample_stacked_%1.png").arg(i));
    row(g, stackSamples,
        Muted(QStringLiteral("How often each layout is used: the three shares add up to 100.")));

    // 5: image effects.
    g = page(5, title(QStringLiteral("Image Effects")));
    TV_NAMED(chkUseImageMasks, QCheckBox, QStringLiteral("Image masks"));
    row(g, chkUseImageMasks, slider(10));
    TV_NAMED(optRandomImageMasks, QRadioButton, QStringLiteral("Random, changed every"));
    TV_NAMED(optUseSpecificMask, QRadioButton, QStringLiteral("This mask"));
    auto* maskGroup = new QButtonGroup(this);
    maskGroup->addButton(optRandomImageMasks);
    maskGroup->addButton(optUseSpecificMask);
    txtRandomMaskChangeInterval = NumberBox("txtRandomMaskChangeInterval");
    row(g, optRandomImageMasks, FramesBox(txtRandomMaskChangeInterval));
    TV_NAMED(txtImageMask, QLineEdit);
    row(g, optUseSpecificMask, txtImageMask);
    QWidget* maskSamples = SampleHolder(QStringLiteral("MaskSamples"));
    TV_NAMED(picMaskPreview, QLabel, maskSamples);
    picMaskPreview->setGeometry(0, 0, 120, 80);
    picMaskPreview->setAlignment(Qt::AlignCenter);
    imgNoImageMask =
        Sample(maskSamples, QStringLiteral("imgNoImageMask"), QStringLiteral("sample_no_mask.png"));
    imgRandomMask = Sample(maskSamples, QStringLiteral("imgRandomMask"),
                           QStringLiteral("sample_random_mask.png"));
    TV_NAMED(lblImageMaskWarning, QLabel);
    lblImageMaskWarning->setProperty("warning", true);
    lblImageMaskWarning->setWordWrap(true);
    row(g, maskSamples, lblImageMaskWarning);

    TV_NAMED(chkAddShadows, QCheckBox, QStringLiteral("Drop shadows"));
    TV_NAMED(secretShowShadowParms, QLabel, QStringLiteral("   "));
    secretShowShadowParms->setFixedSize(16, 16);
    secretShowShadowParms->installEventFilter(this);
    row(g, chkAddShadows, secretShowShadowParms);
    QWidget* shadowSamples = SampleHolder(QStringLiteral("ShadowSamples"));
    imgShadowON = Sample(shadowSamples, QStringLiteral("imgShadowON"),
                         QStringLiteral("sample_shadow_on.png"));
    imgShadowOff = Sample(shadowSamples, QStringLiteral("imgShadowOff"),
                          QStringLiteral("sample_shadow_off.png"));
    auto* shadowParms = new QWidget();
    auto* shadowGrid = new QGridLayout(shadowParms);
    shadowGrid->setContentsMargins(0, 0, 0, 0);
    txtShadowSize = NumberBox("txtShadowSize");
    txtShadowDistance = NumberBox("txtShadowDistance");
    lblShadowParms[0] =
        Named(new QLabel(QStringLiteral("Shadow size")), Indexed("lblShadowParms", 0));
    lblShadowParms[1] =
        Named(new QLabel(QStringLiteral("Shadow distance")), Indexed("lblShadowParms", 1));
    shadowGrid->addWidget(lblShadowParms[0], 0, 0);
    shadowGrid->addWidget(txtShadowSize, 0, 1);
    shadowGrid->addWidget(lblShadowParms[1], 1, 0);
    shadowGrid->addWidget(txtShadowDistance, 1, 1);
    shadowGrid->setRowStretch(2, 1);
    // The shadow's numbers are for those who know where to click.
    for (QWidget* w : std::initializer_list<QWidget*>{lblShadowParms[0], lblShadowParms[1],
                                                      txtShadowSize, txtShadowDistance})
        w->hide();
    row(g, shadowSamples, shadowParms);

    TV_NAMED(chkBlackAndWhite, QCheckBox, QStringLiteral("Black and white"));
    row(g, chkBlackAndWhite, slider(12));
    TV_NAMED(chkAddContrastToBW, QCheckBox, QStringLiteral("Add contrast"));
    // Black and white starts off, and contrast only means something with it.
    chkAddContrastToBW->setEnabled(false);
    QWidget* bwSamples = SampleHolder(QStringLiteral("BlackAndWhiteSamples"));
    imgBW = Sample(bwSamples, QStringLiteral("imgBW"), QStringLiteral("sample_bw.png"));
    imgBW_contrast = Sample(bwSamples, QStringLiteral("imgBW_contrast"),
                            QStringLiteral("sample_bw_contrast.png"));
    row(g, bwSamples, chkAddContrastToBW);

    // 6: monitors.
    TV_NAMED(chkEnableMultiMon, QCheckBox, QStringLiteral("Enable Multiple Monitors"));
    g = page(6, chkEnableMultiMon);
    TV_NAMED(cmbMultiMonOption, QComboBox);
    cmbMultiMonOption->addItems({QStringLiteral("Control each monitor seperately"),
                                 QStringLiteral("Act like all monitors are one big screen.")});
    row(g, cmbMultiMonOption);
    // The two texts take turns in one place.
    auto* details = Named(new QWidget(), QStringLiteral("MultiMonDetails"));
    details->setFixedHeight(48);
    for (int i = 0; i < 2; ++i) {
        auto* l = Named(new QLabel(details), Indexed("lblMultiMonDetail", i));
        l->setProperty("muted", true);
        l->setWordWrap(true);
        l->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        l->setGeometry(0, 0, 400, 48);
        lblMultiMonDetail[static_cast<std::size_t>(i)] = l;
    }
    row(g, details);
    TV_NAMED(chkMultiMonUseMinHeight, QCheckBox,
             QStringLiteral("Use only the height all monitors share"));
    row(g, chkMultiMonUseMinHeight);

    // 7: night mode.
    TV_NAMED(chkNightMode, QCheckBox, QStringLiteral("Enable Night Mode"));
    g = page(7, chkNightMode);
    auto* sky = Named(new QWidget(), QStringLiteral("SkyBarFrame"));
    sky->setFixedSize(398, 56);
    TV_NAMED(lblNightModeClock, QLabel, sky);
    lblNightModeClock->setProperty("muted", true);
    lblNightModeClock->setAlignment(Qt::AlignCenter);
    lblNightModeClock->setGeometry(149, 36, 100, 18);
    TV_NAMED(imgSkyBar, QLabel, sky);
    imgSkyBar->setPixmap(ConfigArt(QStringLiteral("skybar.png"), QSize(384, 24)));
    imgSkyBar->setScaledContents(true);
    imgSkyBar->setGeometry(7, 5, 384, 24);
    imgSkyBar->setMouseTracking(true);
    imgSkyBar->installEventFilter(this);
    for (int i = 0; i < 2; ++i) {
        auto* mask = Named(new QLabel(sky), Indexed("imgSkyMask", i));
        mask->setStyleSheet(QStringLiteral("background: rgba(4, 8, 24, 150);"));
        mask->setGeometry(7, 5, 0, 24);
        imgSkyMask[static_cast<std::size_t>(i)] = mask;
    }
    for (int i = 0; i < 2; ++i) {
        auto* tab = Named(new QLabel(sky), Indexed("imgSkyTab", i));
        tab->setPixmap(ConfigArt(i == 0 ? QStringLiteral("skytab_start.png")
                                        : QStringLiteral("skytab_end.png"),
                                 QSize(14, 34)));
        tab->setScaledContents(true);
        tab->setGeometry(0, 0, 14, 34);
        tab->setCursor(Qt::SizeHorCursor);
        tab->installEventFilter(this);
        imgSkyTab[static_cast<std::size_t>(i)] = tab;
    }
    row(g, sky);
    for (int i = 0; i < 2; ++i)
        lblTime[static_cast<std::size_t>(i)] = Named(new QLabel(), Indexed("lblTime", i));
    row(g, title(QStringLiteral("Night starts at")), lblTime[0]);
    row(g, title(QStringLiteral("and ends at")), lblTime[1]);
    TV_NAMED(optTurnMonitorOFF, QRadioButton, QStringLiteral("Turn the monitor off"));
    TV_NAMED(optNightModeBlankScreen, QRadioButton, QStringLiteral("Blank the screen"));
    auto* nightGroup = new QButtonGroup(this);
    nightGroup->addButton(optTurnMonitorOFF);
    nightGroup->addButton(optNightModeBlankScreen);
    row(g, optTurnMonitorOFF, optNightModeBlankScreen);

    // 8: miscellaneous.
    g = page(8, title(QStringLiteral("Miscellaneous")));
    TV_NAMED(chkWidescreen, QCheckBox, QStringLiteral("Widescreen correction"));
    QWidget* wideSamples = SampleHolder(QStringLiteral("WidescreenSamples"));
    imgWidescreen = Sample(wideSamples, QStringLiteral("imgWidescreen"),
                           QStringLiteral("sample_widescreen.png"));
    imgWidescreenStretched = Sample(wideSamples, QStringLiteral("imgWidescreenStretched"),
                                    QStringLiteral("sample_widescreen_stretched.png"));
    row(g, wideSamples, chkWidescreen);
    TV_NAMED(chkShowStatus, QCheckBox, QStringLiteral("Always show the status line"));
    TV_NAMED(chkVetCache, QCheckBox, QStringLiteral("Tidy the web image cache"));
    row(g, chkShowStatus, chkVetCache);
    TV_NAMED(chkExitOnESC, QCheckBox, QStringLiteral("Esc key"));
    TV_NAMED(chkExitOnKey, QCheckBox, QStringLiteral("Any key"));
    TV_NAMED(chkExitOnMouse, QCheckBox, QStringLiteral("Mouse move"));
    TV_NAMED(chkExitOnClick, QCheckBox, QStringLiteral("Mouse click"));
    row(g, title(QStringLiteral("End the show on")));
    row(g, chkExitOnESC, chkExitOnKey);
    row(g, chkExitOnMouse, chkExitOnClick);
    TV_NAMED(chkDebug, QCheckBox, QStringLiteral("Debug log (set in the preferences file)"));
    chkDebug->setEnabled(false);
    row(g, chkDebug);

    // 9: sounds.
    g = page(9, title(QStringLiteral("Sounds")));
    TV_NAMED(chkPlaySound, QCheckBox, QStringLiteral("Play a sound with each image"));
    TV_NAMED(cmdPreviewSound, QPushButton, QStringLiteral("Listen"));
    cmdPreviewSound->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row(g, chkPlaySound, cmdPreviewSound);
    TV_NAMED(optRandomSound, QRadioButton, QStringLiteral("Random from the Sounds folder"));
    TV_NAMED(optSpecificSound, QRadioButton, QStringLiteral("This sound"));
    auto* soundGroup = new QButtonGroup(this);
    soundGroup->addButton(optRandomSound);
    soundGroup->addButton(optSpecificSound);
    row(g, optRandomSound);
    TV_NAMED(txtSoundFile, QLineEdit);
    TV_NAMED(cmdBrowseForSound, QPushButton, QStringLiteral("Browse..."));
    TV_NAMED(lblSoundLength, QLabel);
    lblSoundLength->setProperty("muted", true);
    row(g, optSpecificSound, WithButton(txtSoundFile, cmdBrowseForSound), lblSoundLength);
    TV_NAMED(chkPlayMusic, QCheckBox, QStringLiteral("Play music"));
    row(g, chkPlayMusic);
    TV_NAMED(optRandomMusicFromFolder, QRadioButton,
             QStringLiteral("Random music from the folder of the photo on the screen"));
    TV_NAMED(optSpecificPlayList, QRadioButton, QStringLiteral("This playlist"));
    auto* musicGroup = new QButtonGroup(this);
    musicGroup->addButton(optRandomMusicFromFolder);
    musicGroup->addButton(optSpecificPlayList);
    row(g, optRandomMusicFromFolder);
    TV_NAMED(txtMusicPlaylist, QLineEdit);
    TV_NAMED(cmdBrowseForMusicPlaylist, QPushButton, QStringLiteral("Browse..."));
    row(g, optSpecificPlayList, WithButton(txtMusicPlaylist, cmdBrowseForMusicPlaylist));

    // 10: about.
    g = page(10, title(QStringLiteral("About Tessaview")));
    auto* logo = Named(new QLabel(), QStringLiteral("imgAboutLogo"));
    logo->setPixmap(QPixmap(QStringLiteral(":/logo.png"))
                        .scaled(96, 93, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    row(g, logo,
        Muted(QStringLiteral("Tessaview shows your photographs full screen, one after another, "
                             "joined by a crossfade.\n\nDrag this window by any free spot. Apply "
                             "saves the settings; the next show uses them.")));

    for (QGridLayout* grid : bodies) {
        grid->setColumnStretch(0, 1);
        grid->setColumnStretch(1, 1);
    }
}

#undef TV_NAMED
