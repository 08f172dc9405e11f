#include "TestSupport.h"
#include "lists/ListFiles.h"

#include "config/ColourButton.h"
#include "night_sound/AudioPlayers.h"
#include "prefs/MRegistry.h"
#include "prefs/PrefsFile.h"

#include <QFile>
#include <string>
#include <vector>

namespace {

// Each source line here holds a section's head or a few neighbouring lines of the file.
const char* const kDefaultBody =
    " \r\n' Image Order and Display Options ----------------------------------\r\n \r\n"
    "INTERVAL,5\r\nCROSSFADETIME,4\r\n \r\nIMAGEORDER,0\r\nUSEKEYWORD,0,christmas\r\n \r\n"
    "BACKGROUNDCOLOUR,0\r\n \r\n"
    "' Background Image Options ----------------------------------------\r\n \r\n"
    "BACKGROUNDIMAGE,0,0,100\r\n\r\nRANDOMBACKGROUNDIMAGES,True,1\r\nUSELOCALBACKGROUND,1\r\n \r\n"
    "' Panoramic Options -----------------------------------------------\r\n \r\n"
    "SCROLLPANOS,1\r\nSCROLLALLVERTICALIMAGES,1\r\n \r\n"
    "' Captions Options ------------------------------------------------\r\n \r\n"
    "SHOWCAPTIONS,1\r\nCAPTIONFONT,12,True,False,8454143,8421376,Arial\r\n"
    "CAPTIONCONTENT,0,1,0,0,0,1,0,1\r\nCAPTIONCONTENT,1,0,0,1,0,0,1,0\r\n"
    "CAPTIONSHOWFILEEXTENSION,0\r\nCAPTIONPOSITIONA,4\r\nCAPTIONPOSITIONB,6\r\n"
    "FLOATINGCAPTIONBOXES,1\r\n \r\n"
    "USEDSCFILTER,0\r\nDSCFILTEROPTION,0\r\nDSCFILTERLIST,2\r\nDSC\r\nIMG\r\n \r\n"
    "' Multiple Monitor Options ---------------------------------------\r\n \r\n"
    "ENABLEMULTIMONITORS,1,0\r\nMULTIMONUSEMINHEIGHT,0\r\n \r\n"
    "' Night Time Mode Options ----------------------------------------\r\n \r\n"
    "NIGHT MODE,0,88,28,True\r\n \r\n"
    "' Layout Options  ------------------------------------------------\r\n"
    "LAYOUT,2,0,0\r\nLAYOUT,1,0,0\r\nLAYOUT,0,1,100\r\n \r\n"
    "STACKIMAGES,4\r\nSTOPSTACKIFPANO,1\r\nWHITEBORDER,0,4210752,10\r\n"
    "' Image Effects Options ------------------------------------------\r\n \r\n"
    "USEIMAGEMASKS,1,25\r\n\r\nRANDOMIMAGEMASKS,True,10\r\n \r\n"
    "ADDSHADOWS,0,3,5\r\n \r\nBLACKANDWHITE,0,0,0\r\n \r\n"
    "' Sounds Options -------------------------------------------------\r\n \r\n"
    "PLAYSOUND,0\r\n\r\nRANDOMSOUND,True\r\n \r\nPLAYMUSIC,0\r\n\r\nRANDOMMUSICFROMFOLDER,True\r\n "
    "\r\n"
    "' Miscellaneous Options ------------------------------------------\r\n \r\n"
    "WIDESCREEN,0\r\nSHOWSTATUS,0\r\nVETCACHE,1\r\nEXITOPTIONS,1,1,1,1\r\n \r\n";

class PrefsFile : public FormsFixture {
protected:
    void SetUp() override {
        FormsFixture::SetUp();
        config = frmConfig::instance();
    }
    QByteArray Saved() {
        config->SavePrefs();
        return ReadFile(config->PrefsFileName);
    }
    // A fresh form reading the file that is there now.
    void Reload() { config = ReloadConfig(); }
    void Write(const QByteArray& body, const QByteArray& version = "6.0.1") {
        PutFile(install.filePath(QStringLiteral("TView_Prefs.txt")),
                "Tessaview Preferences File - written today\r\n" + version +
                    "\r\n======================================================\r\n" + body);
    }
    frmConfig* config = nullptr;
};

TEST_F(PrefsFile, DefaultsAreWrittenExactlyAsTheFileIsLaidOut) {
    const QByteArray file = Saved();
    const int headEnd = static_cast<int>(
        file.indexOf("======================================================\r\n"));
    ASSERT_GT(headEnd, 0);
    EXPECT_TRUE(file.startsWith("Tessaview Preferences File - written "));
    EXPECT_TRUE(file.mid(0, headEnd).endsWith("\r\n6.0.1\r\n"));
    EXPECT_EQ(file.mid(headEnd + 56), QByteArray(kDefaultBody));
    EXPECT_FALSE(config->cmdApply->isEnabled());
}

// A value of the field's own kind that differs from the one it holds.
QString OtherValue(const prefs::Field& field, const frmConfig* config) {
    const QString now = field.get();
    auto otherItem = [&now](const QComboBox* combo) {
        for (int i = 0; i < combo->count(); ++i)
            if (combo->itemText(i) != now) return combo->itemText(i);
        return now;
    };
    switch (field.kind) {
    case prefs::Kind::Chk:
    case prefs::Kind::Idx:
        return now == QLatin1String("1") ? QStringLiteral("0") : QStringLiteral("1");
    case prefs::Kind::Text:
        return now + QStringLiteral("7");
    case prefs::Kind::Number:
        return QString::number(now.toInt() + 3);
    case prefs::Kind::Bool:
        return prefs::BoolText(now != QLatin1String("True"));
    case prefs::Kind::Colour:
        return QString::number(now.toInt() + 0x123456);
    case prefs::Kind::Pct:
        return QString::number(now.toFloat() / 2 + 12.25);
    case prefs::Kind::Zone:
        return QString::number(now.toInt() / 2 + 1);
    case prefs::Kind::Line:
        // Paths stand on lines of their own so that commas survive.
        return now + QStringLiteral("/photos/a, b/x.jpg");
    case prefs::Kind::Position:
        return QString::number(now.toInt() % 6 + 1);
    case prefs::Kind::FontSize:
        return otherItem(config->cmbFontSize);
    case prefs::Kind::FontName:
        return otherItem(config->cmbFontList);
    }
    return now;
}

// Every field of the table in order, with the key it belongs to.
std::vector<std::pair<QString, const prefs::Field*>> Fields(const frmConfig* config) {
    std::vector<std::pair<QString, const prefs::Field*>> fields;
    for (const prefs::Entry& entry : config->PrefsTable())
        if (entry.row)
            for (const prefs::Field& field : entry.row->fields)
                fields.emplace_back(entry.row->key, &field);
    return fields;
}

// Every field moved off its first value, saved, and read into a fresh window: a row that is not
// written or not read, or a field that lands in the wrong control, fails here.
TEST_F(PrefsFile, EveryFieldOfTheTableSurvivesASaveAndARead) {
    std::vector<QString> initial;
    for (auto [key, field] : Fields(config)) {
        initial.push_back(field->get());
        field->set(OtherValue(*field, config));
    }
    config->lstDSCFilter->addItem(QStringLiteral("PICT"));
    // Changing one layout's box rebalances the others, so the values are taken once all are set.
    std::vector<QString> saved;
    for (auto [key, field] : Fields(config))
        saved.push_back(field->get());
    const QByteArray first = Saved();

    Reload();
    const auto fields = Fields(config);
    ASSERT_EQ(fields.size(), saved.size());
    for (std::size_t i = 0; i < fields.size(); ++i) {
        SCOPED_TRACE(fields[i].first.toStdString() + " field " + std::to_string(i));
        EXPECT_NE(saved[i], initial[i]);
        EXPECT_EQ(fields[i].second->get(), saved[i]);
    }
    ASSERT_EQ(config->lstDSCFilter->count(), 3);
    EXPECT_EQ(config->lstDSCFilter->item(2)->text(), QStringLiteral("PICT"));
    const QByteArray second = Saved();
    // Only the date of the head may differ.
    EXPECT_EQ(first.mid(first.indexOf('\n')), second.mid(second.indexOf('\n')));
}

TEST_F(PrefsFile, EveryControlOfTheTableMarksAChange) {
    for (auto [key, field] : Fields(config)) {
        if (field->controls.empty()) continue;
        config->cmdApply->setEnabled(false);
        field->set(OtherValue(*field, config));
        EXPECT_TRUE(config->cmdApply->isEnabled()) << key.toStdString();
    }
}

TEST_F(PrefsFile, AnOlderOrHeadlessFileIsIgnoredWhole) {
    Write("INTERVAL,99\r\n", "5.9");
    Reload();
    EXPECT_EQ(config->txtImageInterval->text(), QStringLiteral("5"));
    QFile(install.filePath(QStringLiteral("TView_Prefs.txt"))).resize(0);
    Reload();
    EXPECT_EQ(config->txtImageInterval->text(), QStringLiteral("5"));
}

TEST_F(PrefsFile, KeysAreExactFieldsAreTrimmedAndTheLastWins) {
    Write("interval,99\r\n"
          "INTERVAL, 7 \r\n"
          "USEKEYWORD,1,red, green\r\n"
          "' INTERVAL,1\r\n"
          "STACKIMAGES,junk\r\n"
          "INTERVAL,8\r\n"
          " \r\n"
          "CROSSFADETIME,0.5\r\n"
          "CAPTIONPOSITIONB,2\r\n");
    Reload();
    EXPECT_EQ(config->txtImageInterval->text(), QStringLiteral("8"));
    EXPECT_EQ(config->txtKeyword->text(), QStringLiteral("red"));
    EXPECT_TRUE(config->chkUseKeyWord->isChecked());
    EXPECT_EQ(config->txtMaxStackedImages->text(), QStringLiteral("0"));
    EXPECT_EQ(config->txtCrossfadeTime->text(), QStringLiteral("0.5"));
    // A caption position whose line is missing stays where it was.
    EXPECT_TRUE(config->Position1[4]->isChecked());
    EXPECT_TRUE(config->Position2[2]->isChecked());
}

// Fields are taken in their order: a bad one ends the reading with those before it kept.
TEST_F(PrefsFile, NightModeWantsANumberInItsFirstField) {
    struct Row {
        const char* line;
        bool on;
        int start, end;
        bool readOn;
    };
    for (const Row& row : {Row{"NIGHT MODE,yes,10,20,False", false, 88, 28, false},
                           Row{"NIGHT MODE,1,10,20,maybe", true, 10, 20, false},
                           Row{"NIGHT MODE,1,10.9,20.2,False", true, 10, 20, true}}) {
        SCOPED_TRACE(row.line);
        Write(QByteArray(row.line) + "\r\nINTERVAL,9\r\n");
        Reload();
        EXPECT_EQ(config->chkNightMode->isChecked(), row.on);
        EXPECT_EQ(config->GetNightModeSetting(0), row.start);
        EXPECT_EQ(config->GetNightModeSetting(1), row.end);
        EXPECT_EQ(config->txtImageInterval->text(), row.readOn ? "9" : "5");
    }
    EXPECT_TRUE(config->optNightModeBlankScreen->isChecked());
    EXPECT_EQ(config->lblTime[0]->text(), QStringLiteral("2:30 am"));
}

// A value the control cannot hold ends the reading, keeping what came before it.
TEST_F(PrefsFile, ValuesTheControlsCannotHoldEndTheReading) {
    struct Row {
        const char* line;
        bool readOn;
    };
    for (const Row& row :
         {Row{"IMAGEORDER,4", false}, Row{"IMAGEORDER,1e10", false},
          Row{"SCROLLPANOS,32768", false}, Row{"SCROLLPANOS,2", true},
          Row{"BACKGROUNDCOLOUR,1e10", false}, Row{"BACKGROUNDCOLOUR,-1", true},
          Row{"NIGHT MODE,1,1e10,20,True", false}, Row{"NIGHT MODE,1,-32769,20,True", false},
          Row{"LAYOUT,3,1,5", false}, Row{"LAYOUT,1e10,1,5", false}, Row{"LAYOUT,0,1,1e39", false},
          Row{"CAPTIONCONTENT,2,1,1,1,1,1,1,1", false}, Row{"CAPTIONPOSITIONA,7", false},
          Row{"STACKIMAGES,1e10", true}}) {
        Write("CROSSFADETIME,7\r\n" + QByteArray(row.line) + "\r\nINTERVAL,9\r\n");
        Reload();
        EXPECT_EQ(config->txtImageInterval->text(),
                  row.readOn ? QStringLiteral("9") : QStringLiteral("5"))
            << row.line;
        EXPECT_EQ(config->txtCrossfadeTime->text(), QStringLiteral("7")) << row.line;
    }
    EXPECT_EQ(config->txtMaxStackedImages->text(), QStringLiteral("10000000000"));
}

TEST_F(PrefsFile, FilterListTakesExactlyItsCount) {
    Write("DSCFILTERLIST,0\r\n"
          "' Multiple Monitor Options ---------------------------------------\r\n"
          "INTERVAL,6\r\n");
    Reload();
    EXPECT_EQ(config->lstDSCFilter->count(), 0);
    EXPECT_EQ(config->txtImageInterval->text(), QStringLiteral("6"));

    Write("DSCFILTERLIST,3\r\nP1\r\n\r\n \r\nINTERVAL,6\r\n");
    Reload();
    ASSERT_EQ(config->lstDSCFilter->count(), 2);
    EXPECT_EQ(config->lstDSCFilter->item(1)->text(), QStringLiteral(" "));
}

TEST_F(PrefsFile, OnlyTheFirst256KilobytesAreRead) {
    // A filter list of millions of lines once cost a gigabyte of list items at start.
    const QByteArray filler = "' " + QByteArray(98, 'x') + "\r\n";
    const struct {
        int fillerLines; // 100 bytes each, after the head and the first key line
        const char* crossfade;
    } rows[] = {{2000, "9"}, {2700, "4"}};
    for (const auto& row : rows) {
        QByteArray body = "INTERVAL,7\r\n";
        for (int i = 0; i < row.fillerLines; ++i)
            body += filler;
        Write(body + "CROSSFADETIME,9\r\n");
        Reload();
        EXPECT_EQ(config->txtImageInterval->text(), QStringLiteral("7"));
        EXPECT_EQ(config->txtCrossfadeTime->text(), QLatin1String(row.crossfade))
            << row.fillerLines;
    }
}

TEST_F(PrefsFile, TheRetiredListKeyStillReadsTheListsItNames) {
    ListFileContents list;
    list.title = QStringLiteral("Typed by hand");
    list.source = install.path() + QStringLiteral("/pics/");
    list.records = {QStringLiteral("IMAGE>") + install.path() + QStringLiteral("/pics/a.jpg")};
    const QString listFile = install.filePath(QStringLiteral("elsewhere.tvl"));
    WriteListFile(listFile, list, QDate(2026, 11, 22));
    Write("IMAGELISTS_REMOVE THIS ############################################ REPLACE WITH "
          "PATH TO IMAGELISTS,1\r\n  " +
          listFile.toUtf8() + "  \r\nINTERVAL,6\r\n");
    Reload();
    ASSERT_EQ(config->lvwFolderList->topLevelItemCount(), 1);
    EXPECT_EQ(config->lvwFolderList->topLevelItem(0)->text(0), QStringLiteral("Typed by hand"));
    EXPECT_EQ(config->txtImageInterval->text(), QStringLiteral("6"));
}

TEST_F(PrefsFile, LayoutsInAnyOrderKeepTheirPercentages) {
    Write("LAYOUT,0,1,50\r\nLAYOUT,2,1,20.5\r\nLAYOUT,1,0,29.5\r\n");
    Reload();
    EXPECT_FLOAT_EQ(config->GetLayoutSetting(0), 50.0f);
    EXPECT_FLOAT_EQ(config->GetLayoutSetting(1), 29.5f);
    EXPECT_FLOAT_EQ(config->GetLayoutSetting(2), 20.5f);
    EXPECT_TRUE(config->chkLayout[2]->isChecked());
    EXPECT_FALSE(config->chkLayout[1]->isChecked());
    EXPECT_EQ(config->lblLayoutSetting[2]->text(), QStringLiteral("20 %"));
}

TEST_F(PrefsFile, DebugLogLineSetsTheFlagAndIsWrittenBack) {
    Write("' this line turns the debug log on.\r\nDEBUGLOG\r\n");
    Reload();
    EXPECT_TRUE(config->DebugFlag);
    EXPECT_TRUE(config->chkDebug->isChecked());
    EXPECT_FALSE(config->chkDebug->isEnabled());
    EXPECT_TRUE(
        Saved().contains("======\r\n' this line turns the debug log on.\r\nDEBUGLOG\r\n \r\n"));
}

TEST_F(PrefsFile, AFailedSaveLeavesTheOldFileAndApplyOn) {
    config->cmdApply->setEnabled(true);
    config->PrefsFileName = install.filePath(QStringLiteral("no/such/folder/TView_Prefs.txt"));
    config->SavePrefs();
    EXPECT_TRUE(config->cmdApply->isEnabled());
    EXPECT_FALSE(QFile::exists(config->PrefsFileName));
}

// The window learns a sound's length from player 0 and does not keep the player for it; the
// minutes of a longer sound are the time string's business, below.
TEST_F(PrefsFile, TheSoundFileShowsItsLengthOrErr) {
    struct Case {
        const char* name;
        QByteArray content; // none: the file is not there
        QString shown;
    };
    const Case cases[] = {
        {"short.wav", SilentWav(1300), QStringLiteral(":01 s")},
        {"note.wav", "only some text in a wav's name\n", QStringLiteral("err")},
        {"gone.wav", QByteArray(), QStringLiteral("err")},
        {"", QByteArray(), QStringLiteral("err")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const QString path = *c.name ? install.filePath(QString::fromUtf8(c.name)) : QString();
        if (!c.content.isEmpty()) PutFile(path, c.content);
        Write("PLAYSOUND,1\r\n" + path.toUtf8() + "\r\n");
        Reload();
        EXPECT_EQ(config->txtSoundFile->text(), path);
        EXPECT_EQ(config->lblSoundLength->text(), c.shown);
        EXPECT_FALSE(modDirectShow::PlayerLoaded(0));
    }
}

TEST(PrefsPieces, SoundLengthsPercentagesAndTheHeadDate) {
    for (auto [ms, text] : {std::pair{5000, ":05 s"}, std::pair{150000, "2:30 s"},
                            std::pair{59600, "1:00 s"}, std::pair{0, ":00 s"}})
        EXPECT_EQ(prefs::MakeTimeString(ms), QLatin1String(text)) << ms;
    // Percentages take the shortest form that reads back.
    EXPECT_EQ(prefs::PercentText(100.0f), QStringLiteral("100"));
    EXPECT_EQ(prefs::PercentText(37.5f), QStringLiteral("37.5"));
    const float third = 100.0f / 3.0f;
    EXPECT_EQ(static_cast<float>(prefs::PercentText(third).toDouble()), third);
    EXPECT_TRUE(
        prefs::FileDateTime(QDateTime(QDate(2026, 11, 22), QTime(9, 5, 0))).contains("2026"));
}

} // namespace
