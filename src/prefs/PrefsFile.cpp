// The preferences file: factory values, reading and writing, all through the configuration
// window's controls, which are the settings.
#include "prefs/PrefsFile.h"

#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "config/ColourButton.h"
#include "config/frmConfig.h"
#include "platform/Clock.h"

#include <QFile>
#include <QFontDatabase>
#include <QImageReader>
#include <QLocale>
#include <QSaveFile>
#include <QStringList>
#include <charconv>
#include <stdexcept>

namespace prefs {

QString MakeTimeString(double milliseconds) {
    const int seconds = static_cast<int>(vb::RoundHalfEven(milliseconds / 1000.0));
    const int minutes = static_cast<int>(vb::Int(seconds / 60.0));
    const int rest = seconds - minutes * 60;
    QString text = minutes > 0 ? QString::number(minutes) : QString();
    text += rest < 10 ? QStringLiteral(":0") : QStringLiteral(":");
    return text + QString::number(rest) + QStringLiteral(" s");
}

QString FileDateTime(const QDateTime& moment) {
    QString date = QLocale::system().dateFormat(QLocale::ShortFormat);
    if (!date.contains(QLatin1String("yyyy")))
        date.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    return QLocale::system().toString(
        moment, date + ' ' + QLocale::system().timeFormat(QLocale::LongFormat));
}

QString PercentText(float value) {
    char buffer[32];
    auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return QString::fromLatin1(buffer, static_cast<int>(result.ptr - buffer));
}

} // namespace prefs

namespace {

// A value the controls cannot take ends the reading, as a run-time error would.
struct PrefsReadError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

const QString kHeadRule = QStringLiteral("======================================================");

QString Chk(const QCheckBox* box) {
    return box->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
}
QString Bool(bool value) {
    return value ? QStringLiteral("True") : QStringLiteral("False");
}
QString Colour(std::uint32_t value) {
    return QString::number(static_cast<std::int32_t>(value));
}

struct Fields {
    QStringList items;
    // A missing field reads as empty text.
    QString operator[](int i) const { return i < items.size() ? items[i].trimmed() : QString(); }
};

int Whole(const QString& text) {
    return static_cast<int>(vb::RoundHalfEven(vb::Val(text)));
}

void SetChk(QCheckBox* box, const QString& text) {
    const int v = Whole(text);
    if (v < 0 || v > 2) throw PrefsReadError("check box value");
    box->setChecked(v != 0);
}

void SetIdx(QComboBox* combo, const QString& text) {
    const int v = Whole(text);
    if (v < -1 || v >= combo->count()) throw PrefsReadError("list index");
    combo->setCurrentIndex(v);
}

bool ToBool(const QString& text) {
    if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0) return true;
    if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0) return false;
    throw PrefsReadError("truth value");
}

std::uint32_t ToColour(const QString& text) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(vb::CLng(vb::Val(text))));
}

void SetOption(QRadioButton* on, QRadioButton* other, bool value) {
    // Exclusive groups refuse to clear a button directly; setting the partner does it.
    if (value)
        on->setChecked(true);
    else
        other->setChecked(true);
}

} // namespace

// --- Helpers the reading calls --------------------------------------------------------------

float frmConfig::GetLayoutSetting(int slider) const {
    auto it = SliderPercent.find(slider);
    return it == SliderPercent.end() ? 0.0f : it->second;
}

void frmConfig::InitTimeList() {
    TimeList->clear();
    for (int h = 0; h < 24; ++h) {
        const int hour = h >= 13 ? h - 12 : h;
        for (int q = 0; q < 4; ++q) {
            const QString minutes = q == 0 ? QStringLiteral(":00") : ':' + QString::number(q * 15);
            TimeList->addItem(QString::number(hour) + minutes +
                              (h < 12 ? QStringLiteral(" am") : QStringLiteral(" pm")));
        }
    }
    TimeList->addItem(QStringLiteral("0:00 am"));
}

int frmConfig::GetNightModeSetting(int n) const {
    return n >= 0 && n < 2 ? NightZoneRange[static_cast<std::size_t>(n)] : 0;
}

void frmConfig::FillFontComboBox() {
    cmbFontList->clear();
    cmbFontList->addItems(QFontDatabase::families());
    // Few Linux systems carry Arial itself, but every one draws it through a substitute, and it
    // is the caption font the program starts with.
    if (cmbFontList->findText(QStringLiteral("Arial")) < 0)
        cmbFontList->addItem(QStringLiteral("Arial"));
    cmbFontList->setCurrentIndex(0);
    FindInComboBox(QStringLiteral("Arial"), cmbFontList);
}

bool frmConfig::FindInComboBox(const QString& text, QComboBox* combo) {
    for (int i = 0; i < combo->count(); ++i) {
        if (combo->itemText(i) == text) {
            combo->setCurrentIndex(i);
            return true;
        }
    }
    return false;
}

void frmConfig::UpdateCaptionExample() {
    CaptionExample->setText(QStringLiteral("Weekend In Toronto"));
    QFont f = CaptionExample->font();
    if (cmbFontSize->currentIndex() >= 0) f.setPointSize(cmbFontSize->currentText().toInt());
    f.setFamily(cmbFontList->currentText());
    CaptionExample->setFont(f);
    CaptionExample->setStyleSheet(
        QStringLiteral("QLabel { color: %1; background: %2; padding: 2px 6px; }")
            .arg(ColourFromValue(CaptionForeColor).name(),
                 ColourFromValue(CaptionBackColor).name()));
    CaptionExample->adjustSize();
    CaptionExample->move((CaptionFrame->width() - CaptionExample->width()) / 2,
                         (CaptionFrame->height() - CaptionExample->height()) / 2);
    MarkChanged();
}

// --- Factory values -------------------------------------------------------------------------

void frmConfig::DefaultPrefs() {
    DebugFlag = false;
    chkDebug->setChecked(false);

    txtImageInterval->setText(QStringLiteral("5"));
    txtCrossfadeTime->setText(QStringLiteral("4"));
    cmbImageOrder->setCurrentIndex(0);
    chkUseKeyWord->setChecked(false);
    cmdChangeBackgroundColour->setBackColor(0);

    chkUseBackgroundImages->setChecked(false);
    cmbTileBackground->setCurrentIndex(0);
    txtBackgroundImage->setText(QString());
    optRandomBackgroundImage->setChecked(true);
    txtRandomBackgroundChangeInterval->setText(QStringLiteral("1"));
    chkUseLocalBackground->setChecked(true);

    chkScrollPanos->setChecked(true);
    chkScrollAllVerticalImages->setChecked(true);

    chkShowCaptions->setChecked(true);
    cmbFontSize->setCurrentIndex(3);
    QFont f = CaptionExample->font();
    f.setBold(true);
    f.setItalic(false);
    CaptionExample->setFont(f);
    CaptionForeColor = 0x80FFFF;
    CaptionBackColor = 0x808000;
    FindInComboBox(QStringLiteral("Arial"), cmbFontList);
    const int content[2][7] = {{1, 0, 0, 0, 1, 0, 1}, {0, 0, 1, 0, 0, 1, 0}};
    for (std::size_t n = 0; n < 2; ++n) {
        chkCapFileName[n]->setChecked(content[n][0]);
        chkCapFileNameFullPath[n]->setChecked(content[n][1]);
        chkCapFolderName[n]->setChecked(content[n][2]);
        chkCapFolderNameFullPath[n]->setChecked(content[n][3]);
        chkCapEXIFDate[n]->setChecked(content[n][4]);
        chkCapDimensions[n]->setChecked(content[n][5]);
        chkCapEXIFDescription[n]->setChecked(content[n][6]);
    }
    UpdateCaptionExample();
    chkShowExtension->setChecked(false);
    Position1[4]->setChecked(true);
    Position2[6]->setChecked(true);
    chkFloatingCaptions->setChecked(true);
    chkUseDSCFilter->setChecked(false);
    cmbDSCFilter->setCurrentIndex(0);
    lstDSCFilter->addItem(QStringLiteral("DSC"));
    lstDSCFilter->addItem(QStringLiteral("IMG"));

    chkEnableMultiMon->setChecked(true);
    cmbMultiMonOption->setCurrentIndex(0);
    chkMultiMonUseMinHeight->setChecked(false);

    chkNightMode->setChecked(false);
    optTurnMonitorOFF->setChecked(true);

    chkLayout[0]->setChecked(true);
    chkLayout[1]->setChecked(false);
    chkLayout[2]->setChecked(false);
    txtMaxStackedImages->setText(QStringLiteral("4"));

    chkUseImageMasks->setChecked(true);
    txtImageMask->setText(QString());
    optRandomImageMasks->setChecked(true);
    txtRandomMaskChangeInterval->setText(QStringLiteral("10"));
    chkAddShadows->setChecked(false);
    txtShadowSize->setText(QStringLiteral("3"));
    txtShadowDistance->setText(QStringLiteral("5"));
    chkBlackAndWhite->setChecked(false);

    chkPlayMusic->setChecked(false);
    txtMusicPlaylist->setText(QString());
    optRandomSound->setChecked(true);
    optRandomMusicFromFolder->setChecked(true);

    chkWidescreen->setChecked(false);
    chkShowStatus->setChecked(false);
    chkVetCache->setChecked(true);
    chkExitOnESC->setChecked(true);
    chkExitOnKey->setChecked(true);
    chkExitOnMouse->setChecked(true);
    chkExitOnClick->setChecked(true);

    for (auto [slider, percent] : {std::pair{0, 100}, {1, 0}, {2, 0}, {10, 25}, {11, 100}, {12, 0}})
        SetLayoutSlider(slider, percent);
    SetNightModeSkyBar(88, 28);
    chkAddWhiteBorder_Click();
    cmbMultiMonOption_Click();
}

// --- Writing --------------------------------------------------------------------------------

QString frmConfig::PrefsText() const {
    QStringList out;
    auto line = [&](const QString& s) { out << s; };
    const QString blank = QStringLiteral(" ");
    auto first = [](const std::array<QRadioButton*, 7>& options) {
        for (int p = 1; p <= 6; ++p)
            if (options[static_cast<std::size_t>(p)]->isChecked()) return p;
        return 0;
    };

    line(QStringLiteral("Tessaview Preferences File - written ") +
         prefs::FileDateTime(platform::Now()));
    line(ProgramVersion);
    line(kHeadRule);
    if (chkDebug->isChecked()) {
        line(QStringLiteral("' this line turns the debug log on."));
        line(QStringLiteral("DEBUGLOG"));
    }
    line(blank);
    line(QStringLiteral("' Image Order and Display Options ----------------------------------"));
    line(blank);
    line(QStringLiteral("INTERVAL,") + txtImageInterval->text());
    line(QStringLiteral("CROSSFADETIME,") + txtCrossfadeTime->text());
    line(blank);
    line(QStringLiteral("IMAGEORDER,%1").arg(cmbImageOrder->currentIndex()));
    line(QStringLiteral("USEKEYWORD,") + Chk(chkUseKeyWord) + ',' + txtKeyword->text());
    line(blank);
    line(QStringLiteral("BACKGROUNDCOLOUR,") + Colour(cmdChangeBackgroundColour->BackColor()));
    line(blank);
    line(QStringLiteral("' Background Image Options ----------------------------------------"));
    line(blank);
    line(QStringLiteral("BACKGROUNDIMAGE,") + Chk(chkUseBackgroundImages) + ',' +
         QString::number(cmbTileBackground->currentIndex()) + ',' +
         prefs::PercentText(GetLayoutSetting(11)));
    line(txtBackgroundImage->text());
    line(QStringLiteral("RANDOMBACKGROUNDIMAGES,") + Bool(optRandomBackgroundImage->isChecked()) +
         ',' + txtRandomBackgroundChangeInterval->text().trimmed());
    line(QStringLiteral("USELOCALBACKGROUND,") + Chk(chkUseLocalBackground));
    line(blank);
    line(QStringLiteral("' Panoramic Options -----------------------------------------------"));
    line(blank);
    line(QStringLiteral("SCROLLPANOS,") + Chk(chkScrollPanos));
    line(QStringLiteral("SCROLLALLVERTICALIMAGES,") + Chk(chkScrollAllVerticalImages));
    line(blank);
    line(QStringLiteral("' Captions Options ------------------------------------------------"));
    line(blank);
    line(QStringLiteral("SHOWCAPTIONS,") + Chk(chkShowCaptions));
    line(QStringLiteral("CAPTIONFONT,") + cmbFontSize->currentText() + ',' +
         Bool(CaptionExample->font().bold()) + ',' + Bool(CaptionExample->font().italic()) + ',' +
         Colour(CaptionForeColor) + ',' + Colour(CaptionBackColor) + ',' +
         cmbFontList->currentText());
    for (std::size_t n = 0; n < 2; ++n)
        line(QStringLiteral("CAPTIONCONTENT,%1,").arg(n) + Chk(chkCapFileName[n]) + ',' +
             Chk(chkCapFileNameFullPath[n]) + ',' + Chk(chkCapFolderName[n]) + ',' +
             Chk(chkCapFolderNameFullPath[n]) + ',' + Chk(chkCapEXIFDate[n]) + ',' +
             Chk(chkCapDimensions[n]) + ',' + Chk(chkCapEXIFDescription[n]));
    line(QStringLiteral("CAPTIONSHOWFILEEXTENSION,") + Chk(chkShowExtension));
    if (int p = first(Position1)) line(QStringLiteral("CAPTIONPOSITIONA,%1").arg(p));
    if (int p = first(Position2)) line(QStringLiteral("CAPTIONPOSITIONB,%1").arg(p));
    line(QStringLiteral("FLOATINGCAPTIONBOXES,") + Chk(chkFloatingCaptions));
    line(blank);
    line(QStringLiteral("USEDSCFILTER,") + Chk(chkUseDSCFilter));
    line(QStringLiteral("DSCFILTEROPTION,%1").arg(cmbDSCFilter->currentIndex()));
    line(QStringLiteral("DSCFILTERLIST,%1").arg(lstDSCFilter->count()));
    for (int i = 0; i < lstDSCFilter->count(); ++i)
        line(lstDSCFilter->item(i)->text());
    line(blank);
    line(QStringLiteral("' Multiple Monitor Options ---------------------------------------"));
    line(blank);
    line(QStringLiteral("ENABLEMULTIMONITORS,") + Chk(chkEnableMultiMon) + ',' +
         QString::number(cmbMultiMonOption->currentIndex()));
    line(QStringLiteral("MULTIMONUSEMINHEIGHT,") + Chk(chkMultiMonUseMinHeight));
    line(blank);
    line(QStringLiteral("' Night Time Mode Options ----------------------------------------"));
    line(blank);
    line(QStringLiteral("NIGHT MODE,") + Chk(chkNightMode) +
         QStringLiteral(",%1,%2,").arg(NightZoneRange[0]).arg(NightZoneRange[1]) +
         Bool(optTurnMonitorOFF->isChecked()));
    line(blank);
    line(QStringLiteral("' Layout Options  ------------------------------------------------"));
    for (int n = 2; n >= 0; --n)
        line(QStringLiteral("LAYOUT,%1,").arg(n) + Chk(chkLayout[static_cast<std::size_t>(n)]) +
             ',' + prefs::PercentText(GetLayoutSetting(n)));
    line(blank);
    line(QStringLiteral("STACKIMAGES,") + txtMaxStackedImages->text());
    line(QStringLiteral("STOPSTACKIFPANO,") + Chk(chkStopStackIfPano));
    line(QStringLiteral("WHITEBORDER,") + Chk(chkAddWhiteBorder) + ',' +
         Colour(cmdBorderColour->BackColor()) + ',' +
         QString::number(cmbBorderPercent->currentIndex()));
    line(QStringLiteral("' Image Effects Options ------------------------------------------"));
    line(blank);
    line(QStringLiteral("USEIMAGEMASKS,") + Chk(chkUseImageMasks) + ',' +
         prefs::PercentText(GetLayoutSetting(10)));
    line(txtImageMask->text());
    line(QStringLiteral("RANDOMIMAGEMASKS,") + Bool(optRandomImageMasks->isChecked()) + ',' +
         txtRandomMaskChangeInterval->text());
    line(blank);
    line(QStringLiteral("ADDSHADOWS,") + Chk(chkAddShadows) + ',' + txtShadowSize->text() + ',' +
         txtShadowDistance->text());
    line(blank);
    line(QStringLiteral("BLACKANDWHITE,") + Chk(chkBlackAndWhite) + ',' +
         prefs::PercentText(GetLayoutSetting(12)) + ',' + Chk(chkAddContrastToBW));
    line(blank);
    line(QStringLiteral("' Sounds Options -------------------------------------------------"));
    line(blank);
    line(QStringLiteral("PLAYSOUND,") + Chk(chkPlaySound));
    line(txtSoundFile->text());
    line(QStringLiteral("RANDOMSOUND,") + Bool(optRandomSound->isChecked()));
    line(blank);
    line(QStringLiteral("PLAYMUSIC,") + Chk(chkPlayMusic));
    line(txtMusicPlaylist->text());
    line(QStringLiteral("RANDOMMUSICFROMFOLDER,") + Bool(optRandomMusicFromFolder->isChecked()));
    line(blank);
    line(QStringLiteral("' Miscellaneous Options ------------------------------------------"));
    line(blank);
    line(QStringLiteral("WIDESCREEN,") + Chk(chkWidescreen));
    line(QStringLiteral("SHOWSTATUS,") + Chk(chkShowStatus));
    line(QStringLiteral("VETCACHE,") + Chk(chkVetCache));
    line(QStringLiteral("EXITOPTIONS,") + Chk(chkExitOnESC) + ',' + Chk(chkExitOnKey) + ',' +
         Chk(chkExitOnMouse) + ',' + Chk(chkExitOnClick));
    line(blank);
    return out.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

void frmConfig::SavePrefs() {
    // Written whole under a temporary name and then renamed: a failure leaves the old file.
    QSaveFile file(PrefsFileName);
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(PrefsText().toUtf8());
    if (!file.commit()) return;
    cmdApply->setEnabled(false);
}

// --- Reading --------------------------------------------------------------------------------

void frmConfig::LoadPrefs() {
    QFile file(PrefsFileName);
    if (!file.exists() || !file.open(QIODevice::ReadOnly)) return;
    QStringList lines = QString::fromUtf8(file.readAll()).split('\n');
    for (QString& l : lines)
        if (l.endsWith('\r')) l.chop(1);
    // A trailing line end does not start another line.
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();

    int at = 0;
    auto next = [&]() -> QString { return at < lines.size() ? lines[at++] : QString(); };
    next();
    if (vb::Val(next().trimmed()) < 6.0) return;

    try {
        while (at < lines.size()) {
            const QString text = next().trimmed();
            if (text.isEmpty()) continue;
            const Fields f{text.split(',')};
            const QString key = f.items[0];

            if (key == QLatin1String("DEBUGLOG")) {
                DebugFlag = true;
                chkDebug->setChecked(true);
            } else if (key == QLatin1String("INTERVAL")) {
                txtImageInterval->setText(f[1]);
            } else if (key == QLatin1String("CROSSFADETIME")) {
                txtCrossfadeTime->setText(f[1]);
            } else if (key == QLatin1String("IMAGEORDER")) {
                SetIdx(cmbImageOrder, f[1]);
            } else if (key == QLatin1String("USEKEYWORD")) {
                SetChk(chkUseKeyWord, f[1]);
                txtKeyword->setText(f[2]);
            } else if (key == QLatin1String("BACKGROUNDCOLOUR")) {
                cmdChangeBackgroundColour->setBackColor(ToColour(f[1]));
            } else if (key == QLatin1String("BACKGROUNDIMAGE")) {
                SetChk(chkUseBackgroundImages, f[1]);
                SetIdx(cmbTileBackground, f[2]);
                const float pct = static_cast<float>(vb::Val(f[3]));
                SliderPercent[11] = pct;
                SetLayoutSlider(11, Whole(f[3]));
                SliderPercent[11] = pct;
                txtBackgroundImage->setText(next().trimmed());
                LoadPreview(txtBackgroundImage->text(), picBackgroundPreview);
            } else if (key == QLatin1String("RANDOMBACKGROUNDIMAGES")) {
                SetOption(optRandomBackgroundImage, optSpecificbackgroundImage, ToBool(f[1]));
                txtRandomBackgroundChangeInterval->setText(f[2]);
            } else if (key == QLatin1String("USELOCALBACKGROUND")) {
                SetChk(chkUseLocalBackground, f[1]);
            } else if (key == QLatin1String("SCROLLPANOS")) {
                SetChk(chkScrollPanos, f[1]);
            } else if (key == QLatin1String("SCROLLALLVERTICALIMAGES")) {
                SetChk(chkScrollAllVerticalImages, f[1]);
                chkScrollAllVerticalImages_Click();
            } else if (key == QLatin1String("SHOWCAPTIONS")) {
                SetChk(chkShowCaptions, f[1]);
            } else if (key == QLatin1String("CAPTIONFONT")) {
                FindInComboBox(QString::number(vb::Val(f[1])), cmbFontSize);
                QFont font = CaptionExample->font();
                font.setBold(ToBool(f[2]));
                font.setItalic(ToBool(f[3]));
                CaptionExample->setFont(font);
                CaptionForeColor = ToColour(f[4]);
                CaptionBackColor = ToColour(f[5]);
                FindInComboBox(f[6], cmbFontList);
                UpdateCaptionExample();
            } else if (key == QLatin1String("CAPTIONCONTENT")) {
                const int n = Whole(f[1]);
                if (n < 0 || n > 1) throw PrefsReadError("caption block");
                const auto i = static_cast<std::size_t>(n);
                SetChk(chkCapFileName[i], f[2]);
                SetChk(chkCapFileNameFullPath[i], f[3]);
                SetChk(chkCapFolderName[i], f[4]);
                SetChk(chkCapFolderNameFullPath[i], f[5]);
                SetChk(chkCapEXIFDate[i], f[6]);
                SetChk(chkCapDimensions[i], f[7]);
                SetChk(chkCapEXIFDescription[i], f[8]);
            } else if (key == QLatin1String("CAPTIONSHOWFILEEXTENSION")) {
                SetChk(chkShowExtension, f[1]);
            } else if (key == QLatin1String("CAPTIONPOSITIONA") ||
                       key == QLatin1String("CAPTIONPOSITIONB")) {
                const int p = Whole(f[1]);
                if (p < 1 || p > 6) throw PrefsReadError("caption position");
                (key.endsWith('A') ? Position1 : Position2)[static_cast<std::size_t>(p)]
                    ->setChecked(true);
            } else if (key == QLatin1String("FLOATINGCAPTIONBOXES")) {
                SetChk(chkFloatingCaptions, f[1]);
            } else if (key == QLatin1String("USEDSCFILTER")) {
                SetChk(chkUseDSCFilter, f[1]);
            } else if (key == QLatin1String("DSCFILTEROPTION")) {
                SetIdx(cmbDSCFilter, f[1]);
            } else if (key == QLatin1String("DSCFILTERLIST")) {
                lstDSCFilter->clear();
                const int count = Whole(f[1]);
                for (int i = 0; i < count; ++i) {
                    const QString item = next();
                    if (!item.isEmpty()) lstDSCFilter->addItem(item);
                }
            } else if (key == QLatin1String("ENABLEMULTIMONITORS")) {
                SetChk(chkEnableMultiMon, f[1]);
                SetIdx(cmbMultiMonOption, f[2]);
                cmbMultiMonOption_Click();
            } else if (key == QLatin1String("MULTIMONUSEMINHEIGHT")) {
                SetChk(chkMultiMonUseMinHeight, f[1]);
            } else if (key == QLatin1String("NIGHT MODE")) {
                if (!vb::IsNumeric(f[1])) throw PrefsReadError("night mode switch");
                SetChk(chkNightMode, f[1]);
                const int start = static_cast<int>(vb::Int(vb::Val(f[2])));
                const int end = static_cast<int>(vb::Int(vb::Val(f[3])));
                const bool monitorOff = ToBool(f[4]);
                SetOption(optTurnMonitorOFF, optNightModeBlankScreen, monitorOff);
                SetNightModeSkyBar(start, end);
            } else if (key == QLatin1String("LAYOUT")) {
                const int n = Whole(f[1]);
                if (n < 0 || n > 2) throw PrefsReadError("layout");
                SetChk(chkLayout[static_cast<std::size_t>(n)], f[2]);
                const float pct = static_cast<float>(vb::Val(f[3]));
                SetLayoutSlider(n, Whole(f[3]));
                SliderPercent[n] = pct;
            } else if (key == QLatin1String("STACKIMAGES")) {
                txtMaxStackedImages->setText(QString::number(Whole(f[1])));
            } else if (key == QLatin1String("STOPSTACKIFPANO")) {
                SetChk(chkStopStackIfPano, f[1]);
            } else if (key == QLatin1String("WHITEBORDER")) {
                SetChk(chkAddWhiteBorder, f[1]);
                cmdBorderColour->setBackColor(ToColour(f[2]));
                SetIdx(cmbBorderPercent, f[3]);
                chkAddWhiteBorder_Click();
            } else if (key == QLatin1String("USEIMAGEMASKS")) {
                SetChk(chkUseImageMasks, f[1]);
                const float pct = static_cast<float>(vb::Val(f[2]));
                SetLayoutSlider(10, Whole(f[2]));
                SliderPercent[10] = pct;
                txtImageMask->setText(next().trimmed());
                LoadPreview(txtImageMask->text(), picMaskPreview);
                chkUseImageMasks_Click();
            } else if (key == QLatin1String("RANDOMIMAGEMASKS")) {
                SetOption(optRandomImageMasks, optUseSpecificMask, ToBool(f[1]));
                txtRandomMaskChangeInterval->setText(f[2]);
                optRandomImageMasks_Click();
            } else if (key == QLatin1String("ADDSHADOWS")) {
                SetChk(chkAddShadows, f[1]);
                txtShadowSize->setText(f[2]);
                txtShadowDistance->setText(f[3]);
            } else if (key == QLatin1String("BLACKANDWHITE")) {
                SetChk(chkBlackAndWhite, f[1]);
                const float pct = static_cast<float>(vb::Val(f[2]));
                SetLayoutSlider(12, Whole(f[2]));
                SliderPercent[12] = pct;
                SetChk(chkAddContrastToBW, f[3]);
                chkAddContrastToBW_Click();
                chkAddContrastToBW->setEnabled(chkBlackAndWhite->isChecked());
            } else if (key == QLatin1String("PLAYSOUND")) {
                SetChk(chkPlaySound, f[1]);
                txtSoundFile->setText(next().trimmed());
                // STAND-IN until the audio players exist: a file that is there counts as loaded,
                // with no length known.
                lblSoundLength->setText(common::FileExists(txtSoundFile->text())
                                            ? prefs::MakeTimeString(0)
                                            : QStringLiteral("err"));
            } else if (key == QLatin1String("RANDOMSOUND")) {
                SetOption(optRandomSound, optSpecificSound, ToBool(f[1]));
            } else if (key == QLatin1String("PLAYMUSIC")) {
                SetChk(chkPlayMusic, f[1]);
                txtMusicPlaylist->setText(next().trimmed());
            } else if (key == QLatin1String("RANDOMMUSICFROMFOLDER")) {
                SetOption(optRandomMusicFromFolder, optSpecificPlayList, ToBool(f[1]));
            } else if (key == QLatin1String("WIDESCREEN")) {
                SetChk(chkWidescreen, f[1]);
            } else if (key == QLatin1String("SHOWSTATUS")) {
                SetChk(chkShowStatus, f[1]);
            } else if (key == QLatin1String("VETCACHE")) {
                SetChk(chkVetCache, f[1]);
            } else if (key == QLatin1String("EXITOPTIONS")) {
                SetChk(chkExitOnESC, f[1]);
                SetChk(chkExitOnKey, f[2]);
                SetChk(chkExitOnMouse, f[3]);
                SetChk(chkExitOnClick, f[4]);
            } else if (key ==
                       QLatin1String(
                           "IMAGELISTS_REMOVE THIS ############################################ "
                           "REPLACE WITH PATH TO IMAGELISTS")) {
                // Retired: image lists are found by scanning their folder. Only a user who
                // types the whole key by hand gets here, and the lists named are still read.
                const int count = Whole(f[1]);
                for (int i = 0; i < count; ++i)
                    LoadImageList(next().trimmed());
            }
        }
    } catch (const PrefsReadError&) {
        // What was gathered before the bad value stands; the rest of the file is not read.
    }
}
