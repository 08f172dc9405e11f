// What the configuration window's controls do when they change: marking the change, and
// keeping the panels' samples, sliders and sky bar in step with the settings.
#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "config/ColourButton.h"
#include "config/ConfigGeometry.h"
#include "config/frmConfig.h"
#include "night_sound/AudioPlayers.h"
#include "night_sound/SoundMusic.h"
#include "platform/Dialogs.h"
#include "platform/FileListing.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"
#include "prefs/PrefsFile.h"

#include <QImageReader>
#include <QMouseEvent>
#include <QPixmap>
#include <QStandardPaths>

void frmConfig::WireChangeTracking() {
    auto mark = [this] { MarkChanged(); };
    // Every control the preferences file holds marks a change, programmatic ones included, as
    // loading the file relies on (the window is initializing then, and nothing is marked).
    for (const prefs::Entry& entry : PrefsTable()) {
        if (!entry.row) continue;
        for (const prefs::Field& field : entry.row->fields) {
            for (QObject* control : field.controls) {
                if (auto* button = qobject_cast<QAbstractButton*>(control))
                    connect(button, &QAbstractButton::toggled, this, mark);
                else if (auto* combo = qobject_cast<QComboBox*>(control))
                    connect(combo, &QComboBox::currentIndexChanged, this, mark);
                else if (auto* box = qobject_cast<QLineEdit*>(control))
                    connect(box, &QLineEdit::textChanged, this, mark);
            }
        }
    }
    auto chosen = [this](QRadioButton* option, std::function<void()> handler) {
        connect(option, &QRadioButton::toggled, this, [handler](bool on) {
            if (on) handler();
        });
    };

    for (int i = 0; i < 3; ++i)
        connect(chkLayout[static_cast<std::size_t>(i)], &QCheckBox::toggled, this,
                [this, i] { chkLayout_Click(i); });
    connect(chkUseImageMasks, &QCheckBox::toggled, this, [this] { chkUseImageMasks_Click(); });
    chosen(optRandomImageMasks, [this] { optRandomImageMasks_Click(); });
    chosen(optUseSpecificMask, [this] { optRandomImageMasks_Click(); });
    connect(chkBlackAndWhite, &QCheckBox::toggled, this, [this] { chkBlackAndWhite_Click(); });
    connect(chkAddContrastToBW, &QCheckBox::toggled, this, [this] { chkAddContrastToBW_Click(); });
    connect(chkAddShadows, &QCheckBox::toggled, this, [this] { chkAddShadows_Click(); });
    connect(chkAddWhiteBorder, &QCheckBox::toggled, this, [this] { chkAddWhiteBorder_Click(); });
    connect(chkWidescreen, &QCheckBox::toggled, this, [this] { chkWidescreen_Click(); });
    connect(chkScrollPanos, &QCheckBox::toggled, this, [this] { chkScrollPanos_Click(); });
    connect(chkScrollAllVerticalImages, &QCheckBox::toggled, this,
            [this] { chkScrollAllVerticalImages_Click(); });
    connect(chkUseBackgroundImages, &QCheckBox::toggled, this,
            [this] { chkUseBackgroundImages_Click(); });
    chosen(optRandomBackgroundImage, [this] { optBackgroundImage_Click(); });
    chosen(optSpecificbackgroundImage, [this] { optBackgroundImage_Click(); });
    connect(txtBackgroundImage, &QLineEdit::textChanged, this, [this] {
        MarkChanged();
        SetBackgroundWarning();
    });
    connect(txtImageMask, &QLineEdit::textChanged, this, [this] {
        MarkChanged();
        CheckForImageMask();
    });
    connect(chkMultiMonUseMinHeight, &QCheckBox::toggled, this,
            [this] { chkMultiMonUseMinHeight_Click(); });
    connect(cmbMultiMonOption, &QComboBox::currentIndexChanged, this,
            [this] { cmbMultiMonOption_Click(); });
    connect(cmbFontList, &QComboBox::currentIndexChanged, this, [this] { UpdateCaptionExample(); });
    connect(cmbFontSize, &QComboBox::currentIndexChanged, this, [this] { UpdateCaptionExample(); });
    connect(cmdBold, &QPushButton::clicked, this, [this] { cmdBold_Click(); });
    connect(cmdItalic, &QPushButton::clicked, this, [this] { cmdItalic_Click(); });
    connect(cmdCapColour, &QPushButton::clicked, this, [this] { cmdCapColour_Click(); });
    connect(cmdCapBack, &QPushButton::clicked, this, [this] { cmdCapBack_Click(); });
    connect(cmdBorderColour, &QPushButton::clicked, this, [this] { cmdBorderColour_Click(); });
    connect(cmdChangeBackgroundColour, &QPushButton::clicked, this,
            [this] { cmdChangeBackgroundColour_Click(); });
    connect(chkPlaySound, &QCheckBox::toggled, this, [this] { chkPlaySound_Click(); });
    // Loading the preferences asks for the length once, when the whole line has been read.
    connect(txtSoundFile, &QLineEdit::textChanged, this, [this] {
        if (!FormIsInitializing) txtSoundFile_Change();
    });
    connect(cmdPreviewSound, &QPushButton::clicked, this, [this] { cmdPreviewSound_Click(); });
    connect(cmdBrowseForSound, &QPushButton::clicked, this, [this] { cmdBrowseForSound_Click(); });
    connect(cmdBrowseForMusicPlaylist, &QPushButton::clicked, this,
            [this] { cmdBrowseForMusicPlaylist_Click(); });
}

// --- Sliders ---------------------------------------------------------------------------------

void frmConfig::SetLayoutSlider(int index, int percent) {
    SliderPercent[index] = static_cast<float>(percent);
    if (auto it = lblLayoutSetting.find(index); it != lblLayoutSetting.end())
        it->second->setText(QStringLiteral("%1 %").arg(percent));
    auto bar = LayoutSliderBar.find(index);
    auto knob = imgLayoutSlider.find(index);
    if (bar == LayoutSliderBar.end() || knob == imgLayoutSlider.end()) return;
    const int position =
        SliderKnobPosition(static_cast<float>(percent), bar->second->x(), bar->second->width());
    knob->second->move(position, knob->second->y());
}

void frmConfig::BalanceLayoutSettings(int changedIndex) {
    std::array<float, 3> percent{};
    std::array<bool, 3> checked{};
    int count = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        percent[i] = SliderPercent[static_cast<int>(i)];
        checked[i] = chkLayout[i]->isChecked();
        count += checked[i] ? 1 : 0;
    }
    if (count == 0) return;
    BalanceLayoutPercents(percent, checked, changedIndex);
    for (int i = 0; i < 3; ++i) {
        const float p = percent[static_cast<std::size_t>(i)];
        SliderPercent[i] = p;
        // One checked layout pins all three; otherwise the moved one keeps its own place.
        if (count == 1 || i != changedIndex) SetLayoutSlider(i, vb::CInt(p).value_or(0));
    }
}

void frmConfig::chkLayout_Click(int index) {
    if (FormIsInitializing) return;
    if (!chkLayout[static_cast<std::size_t>(index)]->isChecked()) {
        SliderPercent[index] = 0.0f;
        SetLayoutSlider(index, 0);
    }
    BalanceLayoutSettings(index);
    MarkChanged();
}

// Knobs and tabs follow the pointer by the distance it has moved since the press, so a drag
// that starts off-centre does not jump.
void frmConfig::imgLayoutSlider_MouseDown(int index, int pointerX) {
    SliderDragging = true;
    DragStartPointerX = pointerX;
    DragStartLeft = imgLayoutSlider[index]->x();
}

void frmConfig::imgLayoutSlider_MouseMove(int index, int pointerX) {
    if (!SliderDragging) return;
    QLabel* bar = LayoutSliderBar[index];
    const int percent =
        SliderPercentAt(pointerX - DragStartPointerX + DragStartLeft, bar->x(), bar->width());
    SetLayoutSlider(index, percent);
    if (index < 10) BalanceLayoutSettings(index);
}

void frmConfig::imgLayoutSlider_MouseUp(int index) {
    Q_UNUSED(index);
    SliderDragging = false;
    MarkChanged();
}

void frmConfig::imgSkyTab_MouseDown(int index, int pointerX) {
    SliderDragging = true;
    DragStartPointerX = pointerX;
    DragStartLeft = imgSkyTab[static_cast<std::size_t>(index)]->x();
}

void frmConfig::imgSkyTab_MouseMove(int index, int pointerX) {
    if (!SliderDragging) return;
    const auto k = static_cast<std::size_t>(index);
    QLabel* tab = imgSkyTab[k];
    const int minimum = imgSkyBar->x() - tab->width() / 2;
    const int maximum = imgSkyBar->x() + imgSkyBar->width() - tab->width() / 2;
    const int position = std::clamp(pointerX - DragStartPointerX + DragStartLeft, minimum, maximum);
    tab->move(position, tab->y());
    NightZoneRange[k] = SkyZoneAt(position, imgSkyBar->x(), imgSkyBar->width(), tab->width());
    AdjustSkyBarMask();
    QListWidgetItem* item = TimeList->item(NightZoneRange[k]);
    lblTime[k]->setText(item ? item->text() : QString());
}

void frmConfig::imgSkyTab_MouseUp(int index) {
    Q_UNUSED(index);
    SliderDragging = false;
    MarkChanged();
}

bool frmConfig::DragFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::MouseButtonPress && type != QEvent::MouseMove &&
        type != QEvent::MouseButtonRelease)
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    const int x = static_cast<int>(mouse->globalPosition().x());
    for (auto& [index, knob] : imgLayoutSlider) {
        if (watched != knob) continue;
        if (type == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton)
            imgLayoutSlider_MouseDown(index, x);
        else if (type == QEvent::MouseMove && (mouse->buttons() & Qt::LeftButton))
            imgLayoutSlider_MouseMove(index, x);
        else if (type == QEvent::MouseButtonRelease && SliderDragging)
            imgLayoutSlider_MouseUp(index);
        return true;
    }
    for (int i = 0; i < 2; ++i) {
        if (watched != imgSkyTab[static_cast<std::size_t>(i)]) continue;
        if (type == QEvent::MouseButtonPress && mouse->button() == Qt::LeftButton)
            imgSkyTab_MouseDown(i, x);
        else if (type == QEvent::MouseMove && (mouse->buttons() & Qt::LeftButton))
            imgSkyTab_MouseMove(i, x);
        else if (type == QEvent::MouseButtonRelease && SliderDragging)
            imgSkyTab_MouseUp(i);
        return true;
    }
    return false;
}

// --- Night-mode sky bar ----------------------------------------------------------------------

void frmConfig::SetNightModeSkyBar(int startZone, int endZone) {
    NightZoneRange = {startZone, endZone};
    for (std::size_t i = 0; i < 2; ++i) {
        QLabel* tab = imgSkyTab[i];
        tab->move(
            SkyTabPosition(NightZoneRange[i], imgSkyBar->x(), imgSkyBar->width(), tab->width()),
            imgSkyBar->y() + (imgSkyBar->height() - tab->height()) / 2);
    }
    AdjustSkyBarMask();
    for (std::size_t i = 0; i < 2; ++i) {
        QListWidgetItem* item = TimeList->item(NightZoneRange[i]);
        lblTime[i]->setText(item ? item->text() : QString());
    }
}

void frmConfig::AdjustSkyBarMask() {
    const auto spans = SkyMaskSpans(imgSkyTab[0]->x(), imgSkyTab[1]->x(), imgSkyBar->x(),
                                    imgSkyBar->width(), imgSkyTab[0]->width());
    for (std::size_t i = 0; i < 2; ++i) {
        imgSkyMask[i]->setGeometry(spans[i].left, imgSkyBar->y(), std::max(0, spans[i].width),
                                   imgSkyBar->height());
        imgSkyMask[i]->setVisible(spans[i].visible);
    }
    for (QLabel* tab : imgSkyTab)
        tab->raise();
}

// --- Effects and their samples -----------------------------------------------------------------

void frmConfig::chkBlackAndWhite_Click() {
    chkAddContrastToBW->setEnabled(chkBlackAndWhite->isChecked());
    MarkChanged();
}

void frmConfig::chkAddContrastToBW_Click() {
    const bool contrast = chkAddContrastToBW->isChecked();
    imgBW_contrast->setVisible(contrast);
    imgBW->setVisible(!contrast);
    MarkChanged();
}

void frmConfig::chkAddShadows_Click() {
    const bool on = chkAddShadows->isChecked();
    imgShadowON->setVisible(on);
    imgShadowOff->setVisible(!on);
    MarkChanged();
}

void frmConfig::chkAddWhiteBorder_Click() {
    for (QLabel* p : picStackedPreview)
        p->hide();
    picStackedPreview[chkAddWhiteBorder->isChecked() ? 1 : 0]->show();
    MarkChanged();
}

void frmConfig::chkWidescreen_Click() {
    const bool on = chkWidescreen->isChecked();
    imgWidescreen->setVisible(on);
    imgWidescreenStretched->setVisible(!on);
    MarkChanged();
}

void frmConfig::chkScrollPanos_Click() {
    ShowPanoDemo();
    MarkChanged();
}

// Opening the panoramas panel runs this too, and opening a panel changes no setting.
void frmConfig::ShowPanoDemo() {
    const bool on = chkScrollPanos->isChecked();
    if (on) {
        picPanoDemoScroller->show();
        // The demo runs only while its panel is open: the close arrow shows that it is.
        auto close = imgSetPageClose.find(3);
        if (close != imgSetPageClose.end() && !close->second->isHidden())
            ScrollDemoTimer->setEnabled(true);
    } else {
        ScrollDemoTimer->setEnabled(false);
        picPanoDemoScroller->hide();
    }
    chkScrollAllVerticalImages->setEnabled(on);
}

void frmConfig::chkScrollAllVerticalImages_Click() {
    MarkChanged();
}

void frmConfig::ScrollDemoTimer_Timer() {
    const int travel = picPanoDemoScroller->width() - picPanoDemo->width();
    const int left = picPanoDemoScroller->x();
    if (PanoDemoMovingLeft) {
        picPanoDemoScroller->move(left - 1, 0);
        if (picPanoDemoScroller->x() < -travel) PanoDemoMovingLeft = false;
    } else {
        picPanoDemoScroller->move(left + 1, 0);
        if (picPanoDemoScroller->x() >= 0) PanoDemoMovingLeft = true;
    }
}

void frmConfig::chkUseBackgroundImages_Click() {
    SetBackgroundWarning();
    const bool on = chkUseBackgroundImages->isChecked();
    for (QWidget* w : std::initializer_list<QWidget*>{
             optSpecificbackgroundImage, optRandomBackgroundImage, txtBackgroundImage,
             txtRandomBackgroundChangeInterval, cmbTileBackground, lblBackgroundImagesFolder})
        w->setEnabled(on);
    MarkChanged();
}

void frmConfig::optBackgroundImage_Click() {
    MarkChanged();
    CheckIfShowRandBackgroundImage();
    SetBackgroundWarning();
}

void frmConfig::CheckIfShowRandBackgroundImage() {
    const bool random = optRandomBackgroundImage->isChecked();
    picRandomBackground->move(picBackgroundPreview->pos());
    picRandomBackground->setVisible(random);
    picBackgroundPreview->setVisible(!random);
}

void frmConfig::SetBackgroundWarning() {
    lblBackgroundWarning->hide();
    if (!chkUseBackgroundImages->isChecked()) return;
    if (optRandomBackgroundImage->isChecked()) {
        const QString folder = InstallDir + QStringLiteral("/Backgrounds");
        if (common::FileExists(folder)) {
            if (platform::FileList(folder, QStringLiteral("*.*")).isEmpty()) {
                lblBackgroundWarning->setText(QStringLiteral("There are no background images"));
                lblBackgroundWarning->show();
            }
        } else {
            lblBackgroundWarning->setText(QStringLiteral("Missing Backgrounds folder"));
            lblBackgroundWarning->show();
        }
    } else if (!common::FileExists(txtBackgroundImage->text())) {
        lblBackgroundWarning->setText(QStringLiteral("The background image doesn't exist"));
        lblBackgroundWarning->show();
    }
}

void frmConfig::chkUseImageMasks_Click() {
    CheckForImageMask();
    const bool on = chkUseImageMasks->isChecked();
    for (QWidget* w :
         std::initializer_list<QWidget*>{optRandomImageMasks, optUseSpecificMask, txtImageMask,
                                         txtRandomMaskChangeInterval, lblLayoutSetting[10]})
        w->setEnabled(on);
    if (on) {
        optRandomImageMasks_Click();
    } else {
        imgRandomMask->hide();
        imgNoImageMask->show();
        imgNoImageMask->raise();
    }
    MarkChanged();
}

void frmConfig::optRandomImageMasks_Click() {
    CheckForImageMask();
    imgNoImageMask->hide();
    if (optRandomImageMasks->isChecked()) {
        imgRandomMask->show();
        imgRandomMask->raise();
    } else {
        imgRandomMask->hide();
        LoadPreview(txtImageMask->text(), picMaskPreview);
    }
    MarkChanged();
}

void frmConfig::CheckForImageMask() {
    const bool missing = chkUseImageMasks->isChecked() && !optRandomImageMasks->isChecked() &&
                         !common::FileExists(txtImageMask->text());
    lblImageMaskWarning->setText(missing ? QStringLiteral("The image mask file doesn't exist")
                                         : QString());
    lblImageMaskWarning->setVisible(missing);
}

void frmConfig::LoadPreview(const QString& path, QLabel* picture) {
    picture->clear();
    if (path.isEmpty()) return;
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull()) return;
    // The wider side fills the box and the other follows the picture's proportions.
    const QSize box = picture->size();
    QSize fitted;
    if (image.width() >= image.height())
        fitted = QSize(box.width(), box.width() * image.height() / image.width());
    else
        fitted = QSize(box.height() * image.width() / image.height(), box.height());
    picture->setPixmap(
        QPixmap::fromImage(image.scaled(fitted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
}

void frmConfig::chkMultiMonUseMinHeight_Click() {
    MarkChanged();
}

void frmConfig::cmbMultiMonOption_Click() {
    const bool separate = cmbMultiMonOption->currentIndex() != 1;
    lblMultiMonDetail[0]->setVisible(separate);
    lblMultiMonDetail[1]->setVisible(!separate);
    MarkChanged();
}

// --- Caption font and the colours -----------------------------------------------------------

void frmConfig::cmdBold_Click() {
    QFont f = CaptionExample->font();
    f.setBold(!f.bold());
    CaptionExample->setFont(f);
    UpdateCaptionExample();
}

void frmConfig::cmdItalic_Click() {
    QFont f = CaptionExample->font();
    f.setItalic(!f.italic());
    CaptionExample->setFont(f);
    UpdateCaptionExample();
}

void frmConfig::cmdCapColour_Click() {
    if (auto c = platform::ChooseColour(ColourFromValue(CaptionForeColor))) {
        CaptionForeColor = ValueFromColour(*c);
        UpdateCaptionExample();
    }
    MarkChanged();
}

void frmConfig::cmdCapBack_Click() {
    if (auto c = platform::ChooseColour(ColourFromValue(CaptionBackColor))) {
        CaptionBackColor = ValueFromColour(*c);
        UpdateCaptionExample();
    }
    MarkChanged();
}

void frmConfig::cmdBorderColour_Click() {
    if (auto c = platform::ChooseColour(cmdBorderColour->colour()))
        cmdBorderColour->setBackColor(ValueFromColour(*c));
    MarkChanged();
}

void frmConfig::cmdChangeBackgroundColour_Click() {
    if (auto c = platform::ChooseColour(cmdChangeBackgroundColour->colour()))
        cmdChangeBackgroundColour->setBackColor(ValueFromColour(*c));
    MarkChanged();
}

// --- Sounds ----------------------------------------------------------------------------------

namespace {

// A file dialog opens where the file in the box is, or else in the first of the others that
// exists.
QString StartFolder(const QString& current, const QStringList& others) {
    const QString folder = common::FolderOf(current);
    if (!folder.isEmpty() && common::FileExists(folder)) return folder;
    for (const QString& other : others)
        if (common::FileExists(other)) return other;
    return QString();
}

} // namespace

void frmConfig::chkPlaySound_Click() {
    const bool on = chkPlaySound->isChecked();
    for (QWidget* w :
         std::initializer_list<QWidget*>{optRandomSound, optSpecificSound, txtSoundFile,
                                         lblSoundLength, cmdBrowseForSound, cmdPreviewSound})
        w->setEnabled(on);
    MarkChanged();
}

void frmConfig::txtSoundFile_Change() {
    // Player 0 is borrowed only to learn the length: no show holds it while the window takes
    // the user's settings, and the window has no use for an open player meanwhile.
    const bool loaded = modDirectShow::LoadPlayer(0, txtSoundFile->text());
    lblSoundLength->setText(loaded ? prefs::MakeTimeString(modDirectShow::GetPlayerDuration(0))
                                   : QStringLiteral("err"));
    modDirectShow::ClosePlayer(0);
    PreviewSoundLoaded = false;
}

void frmConfig::cmdPreviewSound_Click() {
    QString file = txtSoundFile->text();
    if (optRandomSound->isChecked()) {
        // Drawn as the show draws its sounds; an empty folder leaves nothing to load.
        const QString folder = InstallDir + QStringLiteral("/Sounds");
        const QStringList sounds =
            platform::FileList(folder, QString::fromLatin1(sound::kAudioFilePattern));
        const auto index =
            static_cast<qsizetype>(vb::Int(platform::Rnd() * static_cast<double>(sounds.size())));
        file = sound::ListingFile(folder, sounds.value(index));
    }
    PreviewSoundLoaded = modDirectShow::LoadPlayer(0, file);
    if (PreviewSoundLoaded) modDirectShow::StartPlayer(0);
}

void frmConfig::cmdBrowseForSound_Click() {
    const QString chosen = platform::ChooseOpenFile(
        QStringLiteral("Choose the sound to play with each image"),
        StartFolder(txtSoundFile->text(), {InstallDir + QStringLiteral("/Sounds"), InstallDir}),
        sound::AudioFileDialogFilter());
    if (chosen.isEmpty()) return;
    txtSoundFile->setText(chosen);
    optSpecificSound->setChecked(true);
}

void frmConfig::cmdBrowseForMusicPlaylist_Click() {
    const QString chosen = platform::ChooseOpenFile(
        QStringLiteral("Choose a music playlist"),
        StartFolder(txtMusicPlaylist->text(),
                    QStandardPaths::standardLocations(QStandardPaths::MusicLocation)),
        sound::PlaylistDialogFilter());
    if (chosen.isEmpty()) return;
    txtMusicPlaylist->setText(chosen);
    optSpecificPlayList->setChecked(true);
}
