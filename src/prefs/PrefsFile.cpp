// The preferences file: factory values, reading and writing, all through the configuration
// window's controls, which are the settings.
#include "prefs/PrefsFile.h"
#include "prefs/PrefsTable.h"

#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "config/ColourButton.h"
#include "config/frmConfig.h"
#include "platform/Clock.h"
#include "platform/SafeWrite.h"

#include <QFile>
#include <QFontDatabase>
#include <QImageReader>
#include <QLocale>
#include <QStringList>

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

} // namespace prefs

namespace {

using prefs::Field;
using prefs::Kind;
using prefs::Row;

const QString kHeadRule = QStringLiteral("======================================================");

void SetOption(QRadioButton* on, QRadioButton* other, bool value) {
    // Exclusive groups refuse to clear a button directly; setting the partner does it.
    if (value)
        on->setChecked(true);
    else
        other->setChecked(true);
}

// The whole number a slider's knob is put at.
int SliderPlace(float percent) {
    return vb::CInt(percent).value_or(percent < 0 ? -1 : 101);
}

Field Make(Kind kind, QString initial, bool factory, std::vector<QObject*> controls,
           std::function<QString()> get, std::function<void(const QString&)> set) {
    return {kind, std::move(get), std::move(set), std::move(initial), factory, std::move(controls)};
}

Field Chk(QCheckBox* box, int initial, bool factory = true) {
    return Make(
        Kind::Chk, QString::number(initial), factory, {box},
        [box] { return prefs::ChkText(box->isChecked()); },
        [box](const QString& t) { box->setChecked(prefs::ToChk(t) != 0); });
}

Field Idx(QComboBox* combo, int initial, bool factory = true) {
    return Make(
        Kind::Idx, QString::number(initial), factory, {combo},
        [combo] { return QString::number(combo->currentIndex()); },
        [combo](const QString& t) { combo->setCurrentIndex(prefs::ToIdx(t, combo->count())); });
}

Field Text(QLineEdit* box, const QString& initial, bool factory = true, Kind kind = Kind::Text) {
    return Make(
        kind, initial, factory, {box}, [box] { return box->text(); },
        [box, kind](const QString& t) {
            // The one number that passes through a whole number on reading: junk becomes "0".
            box->setText(kind == Kind::Number ? prefs::ToNumberText(t) : t);
        });
}

Field Option(QRadioButton* on, QRadioButton* other, bool initial) {
    return Make(
        Kind::Bool, prefs::BoolText(initial), true, {on},
        [on] { return prefs::BoolText(on->isChecked()); },
        [on, other](const QString& t) { SetOption(on, other, prefs::ToBool(t)); });
}

Field Colour(ColourButton* button, std::uint32_t initial, bool factory = true) {
    return Make(
        Kind::Colour, prefs::ColourText(initial), factory, {},
        [button] { return prefs::ColourText(button->BackColor()); },
        [button](const QString& t) { button->setBackColor(prefs::ToColour(t)); });
}

Field ColourValue(std::uint32_t& value, std::uint32_t initial) {
    return Make(
        Kind::Colour, prefs::ColourText(initial), true, {},
        [&value] { return prefs::ColourText(value); },
        [&value](const QString& t) { value = prefs::ToColour(t); });
}

Field Position(const std::array<QRadioButton*, 7>& options, int initial) {
    const auto first = [&options] {
        for (std::size_t p = 1; p < options.size(); ++p)
            if (options[p]->isChecked()) return QString::number(p);
        return QString();
    };
    return Make(Kind::Position, QString::number(initial), true,
                std::vector<QObject*>(options.begin() + 1, options.end()), first,
                [&options](const QString& t) {
                    const int p = prefs::ToIdx(t, static_cast<int>(options.size()));
                    if (p < 1) throw prefs::ReadError("caption position");
                    options[static_cast<std::size_t>(p)]->setChecked(true);
                });
}

Row Plain(const QString& key, std::vector<Field> fields, std::function<void()> applied = {}) {
    Row row;
    row.key = key;
    row.fields = std::move(fields);
    row.applied = std::move(applied);
    return row;
}

Row Selected(const QString& key, int selector, std::vector<Field> fields) {
    Row row = Plain(key, std::move(fields));
    row.selector = selector;
    return row;
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

// --- The table ---------------------------------------------------------------------------

Field frmConfig::SliderField(int slider, float initial) {
    return Make(
        Kind::Pct, prefs::PercentText(initial), true, {},
        [this, slider] { return prefs::PercentText(GetLayoutSetting(slider)); },
        [this, slider](const QString& t) {
            const float percent = prefs::ToPct(t);
            SetLayoutSlider(slider, SliderPlace(percent));
            // The knob sits at a whole percent; the share keeps what the file said.
            SliderPercent[slider] = percent;
        });
}

Field frmConfig::ZoneField(std::size_t end, int initial) {
    return Make(
        Kind::Zone, QString::number(initial), true, {},
        [this, end] { return QString::number(NightZoneRange[end]); },
        [this, end](const QString& t) { NightZoneRange[end] = prefs::ToZone(t); });
}

prefs::Table frmConfig::BuildPrefsTable() {
    prefs::Table t;
    auto line = [&t](const QString& text) { t.push_back({text, std::nullopt}); };
    auto row = [&t](Row r) { t.push_back({QString(), std::move(r)}); };
    const QString blank = QStringLiteral(" ");

    Row debug;
    debug.key = QStringLiteral("DEBUGLOG");
    debug.writeLines = [this] {
        if (!chkDebug->isChecked()) return QStringList();
        return QStringList{QStringLiteral("' this line turns the debug log on."),
                           QStringLiteral("DEBUGLOG")};
    };
    debug.readLines = [this](const QStringList&, const auto&) {
        DebugFlag = true;
        chkDebug->setChecked(true);
    };
    debug.reset = [this] {
        DebugFlag = false;
        chkDebug->setChecked(false);
    };
    row(debug);
    line(blank);
    line(QStringLiteral("' Image Order and Display Options ----------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("INTERVAL"), {Text(txtImageInterval, QStringLiteral("5"))}));
    row(Plain(QStringLiteral("CROSSFADETIME"), {Text(txtCrossfadeTime, QStringLiteral("4"))}));
    line(blank);
    row(Plain(QStringLiteral("IMAGEORDER"), {Idx(cmbImageOrder, 0)}));
    row(Plain(QStringLiteral("USEKEYWORD"),
              {Chk(chkUseKeyWord, 0), Text(txtKeyword, QStringLiteral("christmas"), false)}));
    line(blank);
    row(Plain(QStringLiteral("BACKGROUNDCOLOUR"), {Colour(cmdChangeBackgroundColour, 0)}));
    line(blank);
    line(QStringLiteral("' Background Image Options ----------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("BACKGROUNDIMAGE"),
              {Chk(chkUseBackgroundImages, 0), Idx(cmbTileBackground, 0), SliderField(11, 100),
               Text(txtBackgroundImage, QString(), true, Kind::Line)},
              [this] { LoadPreview(txtBackgroundImage->text(), picBackgroundPreview); }));
    Field interval = Text(txtRandomBackgroundChangeInterval, QStringLiteral("1"));
    interval.get = [this] { return txtRandomBackgroundChangeInterval->text().trimmed(); };
    row(Plain(QStringLiteral("RANDOMBACKGROUNDIMAGES"),
              {Option(optRandomBackgroundImage, optSpecificbackgroundImage, true), interval}));
    row(Plain(QStringLiteral("USELOCALBACKGROUND"), {Chk(chkUseLocalBackground, 1)}));
    line(blank);
    line(QStringLiteral("' Panoramic Options -----------------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("SCROLLPANOS"), {Chk(chkScrollPanos, 1)}));
    row(Plain(QStringLiteral("SCROLLALLVERTICALIMAGES"), {Chk(chkScrollAllVerticalImages, 1)},
              [this] { chkScrollAllVerticalImages_Click(); }));
    line(blank);
    line(QStringLiteral("' Captions Options ------------------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("SHOWCAPTIONS"), {Chk(chkShowCaptions, 1)}));
    auto fontFlag = [this](bool bold, bool initial) -> Field {
        return Make(
            Kind::Bool, prefs::BoolText(initial), true, {},
            [this, bold] {
                const QFont f = CaptionExample->font();
                return prefs::BoolText(bold ? f.bold() : f.italic());
            },
            [this, bold](const QString& text) {
                QFont f = CaptionExample->font();
                const bool on = prefs::ToBool(text);
                if (bold)
                    f.setBold(on);
                else
                    f.setItalic(on);
                CaptionExample->setFont(f);
            });
    };
    const Field fontSize = Make(
        Kind::FontSize, QStringLiteral("12"), true, {},
        [this] { return cmbFontSize->currentText(); },
        [this](const QString& text) {
            FindInComboBox(QString::number(vb::Val(text)), cmbFontSize);
        });
    const Field fontName = Make(
        Kind::FontName, QStringLiteral("Arial"), true, {},
        [this] { return cmbFontList->currentText(); },
        [this](const QString& text) { FindInComboBox(text, cmbFontList); });
    row(Plain(QStringLiteral("CAPTIONFONT"),
              {fontSize, fontFlag(true, true), fontFlag(false, false),
               ColourValue(CaptionForeColor, 0x80FFFF), ColourValue(CaptionBackColor, 0x808000),
               fontName},
              [this] { UpdateCaptionExample(); }));
    const int content[2][7] = {{1, 0, 0, 0, 1, 0, 1}, {0, 0, 1, 0, 0, 1, 0}};
    for (std::size_t n = 0; n < 2; ++n) {
        const int* c = content[n];
        row(Selected(QStringLiteral("CAPTIONCONTENT"), static_cast<int>(n),
                     {Chk(chkCapFileName[n], c[0]), Chk(chkCapFileNameFullPath[n], c[1]),
                      Chk(chkCapFolderName[n], c[2]), Chk(chkCapFolderNameFullPath[n], c[3]),
                      Chk(chkCapEXIFDate[n], c[4]), Chk(chkCapDimensions[n], c[5]),
                      Chk(chkCapEXIFDescription[n], c[6])}));
    }
    row(Plain(QStringLiteral("CAPTIONSHOWFILEEXTENSION"), {Chk(chkShowExtension, 0)}));
    for (auto [key, options, initial] :
         {std::tuple{QStringLiteral("CAPTIONPOSITIONA"), &Position1, 4},
          std::tuple{QStringLiteral("CAPTIONPOSITIONB"), &Position2, 6}}) {
        Row position = Plain(key, {Position(*options, initial)});
        // With no position chosen the line is left out, and a reading keeps the default.
        position.written = [field = position.fields[0]] { return !field.get().isEmpty(); };
        row(position);
    }
    row(Plain(QStringLiteral("FLOATINGCAPTIONBOXES"), {Chk(chkFloatingCaptions, 1)}));
    line(blank);
    row(Plain(QStringLiteral("USEDSCFILTER"), {Chk(chkUseDSCFilter, 0)}));
    row(Plain(QStringLiteral("DSCFILTEROPTION"), {Idx(cmbDSCFilter, 0)}));
    Row filter;
    filter.key = QStringLiteral("DSCFILTERLIST");
    filter.writeLines = [this] {
        QStringList out{QStringLiteral("DSCFILTERLIST,%1").arg(lstDSCFilter->count())};
        for (int i = 0; i < lstDSCFilter->count(); ++i)
            out << lstDSCFilter->item(i)->text();
        return out;
    };
    filter.readLines = [this](const QStringList& fields, const auto& nextLine) {
        lstDSCFilter->clear();
        // Counted lines, taken as they stand: a blank is a prefix too.
        const double count = vb::RoundHalfEven(vb::Val(fields.value(1).trimmed()));
        for (double i = 0; i < count; ++i) {
            const std::optional<QString> item = nextLine();
            if (!item) break;
            if (!item->isEmpty()) lstDSCFilter->addItem(*item);
        }
    };
    // Added to what the list holds: the factory settings are put in once, into an empty list.
    filter.reset = [this] {
        lstDSCFilter->addItems({QStringLiteral("DSC"), QStringLiteral("IMG")});
    };
    row(filter);
    line(blank);
    line(QStringLiteral("' Multiple Monitor Options ---------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("ENABLEMULTIMONITORS"),
              {Chk(chkEnableMultiMon, 1), Idx(cmbMultiMonOption, 0)},
              [this] { cmbMultiMonOption_Click(); }));
    row(Plain(QStringLiteral("MULTIMONUSEMINHEIGHT"), {Chk(chkMultiMonUseMinHeight, 0)}));
    line(blank);
    line(QStringLiteral("' Night Time Mode Options ----------------------------------------"));
    line(blank);
    Field nightOn = Chk(chkNightMode, 0);
    // The one check box field that must hold a number: a word here ends the reading.
    nightOn.set = [box = chkNightMode](const QString& text) {
        if (!vb::IsNumeric(text)) throw prefs::ReadError("night mode switch");
        box->setChecked(prefs::ToChk(text) != 0);
    };
    row(Plain(QStringLiteral("NIGHT MODE"),
              {nightOn, ZoneField(0, 88), ZoneField(1, 28),
               Option(optTurnMonitorOFF, optNightModeBlankScreen, true)},
              [this] { SetNightModeSkyBar(NightZoneRange[0], NightZoneRange[1]); }));
    line(blank);
    line(QStringLiteral("' Layout Options  ------------------------------------------------"));
    for (int n = 2; n >= 0; --n)
        row(Selected(QStringLiteral("LAYOUT"), n,
                     {Chk(chkLayout[static_cast<std::size_t>(n)], n == 0 ? 1 : 0),
                      SliderField(n, n == 0 ? 100.0f : 0.0f)}));
    line(blank);
    row(Plain(QStringLiteral("STACKIMAGES"),
              {Text(txtMaxStackedImages, QStringLiteral("4"), true, Kind::Number)}));
    row(Plain(QStringLiteral("STOPSTACKIFPANO"), {Chk(chkStopStackIfPano, 1, false)}));
    row(Plain(QStringLiteral("WHITEBORDER"),
              {Chk(chkAddWhiteBorder, 0, false), Colour(cmdBorderColour, 0x404040, false),
               Idx(cmbBorderPercent, 10, false)},
              [this] { chkAddWhiteBorder_Click(); }));
    line(QStringLiteral("' Image Effects Options ------------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("USEIMAGEMASKS"),
              {Chk(chkUseImageMasks, 1), SliderField(10, 25),
               Text(txtImageMask, QString(), true, Kind::Line)},
              [this] {
                  LoadPreview(txtImageMask->text(), picMaskPreview);
                  chkUseImageMasks_Click();
              }));
    row(Plain(QStringLiteral("RANDOMIMAGEMASKS"),
              {Option(optRandomImageMasks, optUseSpecificMask, true),
               Text(txtRandomMaskChangeInterval, QStringLiteral("10"))},
              [this] { optRandomImageMasks_Click(); }));
    line(blank);
    row(Plain(QStringLiteral("ADDSHADOWS"),
              {Chk(chkAddShadows, 0), Text(txtShadowSize, QStringLiteral("3")),
               Text(txtShadowDistance, QStringLiteral("5"))}));
    line(blank);
    row(Plain(QStringLiteral("BLACKANDWHITE"),
              {Chk(chkBlackAndWhite, 0), SliderField(12, 0), Chk(chkAddContrastToBW, 0, false)},
              [this] {
                  chkAddContrastToBW_Click();
                  chkAddContrastToBW->setEnabled(chkBlackAndWhite->isChecked());
              }));
    line(blank);
    line(QStringLiteral("' Sounds Options -------------------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("PLAYSOUND"),
              {Chk(chkPlaySound, 0, false), Text(txtSoundFile, QString(), false, Kind::Line)},
              [this] {
                  txtSoundFile_Change();
                  chkPlaySound_Click();
              }));
    row(Plain(QStringLiteral("RANDOMSOUND"), {Option(optRandomSound, optSpecificSound, true)}));
    line(blank);
    row(Plain(QStringLiteral("PLAYMUSIC"),
              {Chk(chkPlayMusic, 0), Text(txtMusicPlaylist, QString(), true, Kind::Line)}));
    row(Plain(QStringLiteral("RANDOMMUSICFROMFOLDER"),
              {Option(optRandomMusicFromFolder, optSpecificPlayList, true)}));
    line(blank);
    line(QStringLiteral("' Miscellaneous Options ------------------------------------------"));
    line(blank);
    row(Plain(QStringLiteral("WIDESCREEN"), {Chk(chkWidescreen, 0)}));
    row(Plain(QStringLiteral("SHOWSTATUS"), {Chk(chkShowStatus, 0)}));
    row(Plain(QStringLiteral("VETCACHE"), {Chk(chkVetCache, 1)}));
    row(Plain(QStringLiteral("EXITOPTIONS"), {Chk(chkExitOnESC, 1), Chk(chkExitOnKey, 1),
                                              Chk(chkExitOnMouse, 1), Chk(chkExitOnClick, 1)}));
    line(blank);

    // Retired: image lists are found by scanning their folder, and the key is never written.
    // Only a user who types the whole key by hand gets here, and the lists named are still read.
    Row retired;
    retired.key = QStringLiteral(
        "IMAGELISTS_REMOVE THIS ############################################ REPLACE WITH PATH TO "
        "IMAGELISTS");
    retired.written = [] { return false; };
    retired.readLines = [this](const QStringList& fields, const auto& nextLine) {
        const double count = vb::RoundHalfEven(vb::Val(fields.value(1).trimmed()));
        for (double i = 0; i < count; ++i) {
            const std::optional<QString> name = nextLine();
            if (!name) break;
            LoadImageList(name->trimmed());
        }
    };
    row(retired);
    return t;
}

// --- Factory values -------------------------------------------------------------------------

void frmConfig::DefaultPrefs() {
    prefs::ApplyInitial(PrefsTable(), true);
    UpdateCaptionExample();
    SetNightModeSkyBar(NightZoneRange[0], NightZoneRange[1]);
    chkAddWhiteBorder_Click();
    cmbMultiMonOption_Click();
    chkPlaySound_Click();
}

// --- Writing --------------------------------------------------------------------------------

QString frmConfig::PrefsText() const {
    QStringList out{QStringLiteral("Tessaview Preferences File - written ") +
                        prefs::FileDateTime(platform::Now()),
                    ProgramVersion, kHeadRule};
    out << prefs::WriteBody(PrefsTable());
    return out.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
}

void frmConfig::SavePrefs() {
    // Written whole under a temporary name and then renamed: a failure leaves the old file.
    if (!platform::WriteFileWhole(PrefsFileName, PrefsText().toUtf8())) return;
    cmdApply->setEnabled(false);
}

// --- Reading --------------------------------------------------------------------------------

void frmConfig::LoadPrefs() {
    QFile file(PrefsFileName);
    if (!file.open(QIODevice::ReadOnly)) return;
    // The file the window writes is a few kilobytes. Whatever stands beyond the first 256 KB
    // was not written by it and is not read: a huge file (a filter list of millions of lines)
    // would otherwise cost a gigabyte of list items. A line cut at the limit is left out whole.
    constexpr qint64 kMostRead = 256 * 1024;
    QByteArray bytes = file.read(kMostRead);
    if (!file.atEnd()) bytes.truncate(bytes.lastIndexOf('\n') + 1);
    QStringList lines = QString::fromUtf8(bytes).split('\n');
    for (QString& l : lines)
        if (l.endsWith('\r')) l.chop(1);
    // A trailing line end does not start another line.
    if (!lines.isEmpty() && lines.last().isEmpty()) lines.removeLast();
    // A file of an older major version is ignored whole; the defaults stand.
    if (vb::Val(lines.value(1).trimmed()) < 6.0) return;
    try {
        prefs::ReadBody(PrefsTable(), lines.mid(2));
    } catch (const prefs::ReadError&) {
        // What was gathered before the bad value stands; the rest of the file is not read.
    }
}
