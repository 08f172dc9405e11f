// The show's run-time settings: the built-in values, and the tuned crossfade step kept in the
// settings store between shows.
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "config/ColourButton.h"
#include "config/frmConfig.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

#include <QDateTime>
#include <QLocale>

void frmSlideShow::DefaultPrefs() {
    DebugLogOn = false;
    ImageInterval = 10;
    CrossfadeTime = 3.0f;
    PrefCrossfadeTime = 3.0f;
    xFadeStepTime = 0.1f;
    BackgroundColour = Qt::black;
    MultiMonitors = true;
    LayoutRange = {100.0f, 100.0f, 100.0f};
    ShowStatus = false;
    ExitOnESC = true;
    ExitOnMouse = true;
    ExitOnClick = true;
    ExitOnKey = true;
}

void frmSlideShow::ReadPerfSettings() {
    const QString stored = GetSetting(QStringLiteral("xFadeStepTime"), QStringLiteral("0.1"));
    xFadeStepTime = static_cast<float>(vb::Val(stored.trimmed()));
    if (DebugLogOn)
        BugLog(QStringLiteral("Reading xfadesteptime from reg : ") +
               QString::number(static_cast<double>(xFadeStepTime)));
}

void frmSlideShow::WritePerfSettings() {
    SaveSetting(QStringLiteral("xFadeStepTime"),
                QString::number(static_cast<double>(xFadeStepTime), 'g', 7));
}

// Reads the settings from the hidden configuration window. Settings of features that do not
// exist yet (backgrounds, captions, masks, sound, night zones) are read when those features
// arrive; until then the show keeps its built-in values for them.
void frmSlideShow::LoadShowSettings() {
    SetStatus(QStringLiteral("Loading Preferences"));
    frmConfig* config = frmConfig::instance();

    if (config->chkDebug->isChecked()) {
        OpenDebugLog();
        BugLog(QLocale::system().toString(QDateTime::currentDateTime(), QLocale::ShortFormat));
        BugLog(QStringLiteral("============================"));
        BugLog(QStringLiteral("Reading in prefs from Config form..."));
    }
    if (DebugLogOn) BugLog(QStringLiteral("InstallPath is ") + InstallDir);

    ImageInterval = vb::CInt(vb::Val(config->txtImageInterval->text().trimmed()));
    if (DebugLogOn)
        BugLog(QStringLiteral("  Image Interval ") + QString::number(ImageInterval) +
               QStringLiteral(" s "));
    CrossfadeTime = static_cast<float>(vb::Val(config->txtCrossfadeTime->text().trimmed()));
    if (DebugLogOn)
        BugLog(QStringLiteral("  Crossfade Time ") +
               QString::number(static_cast<double>(CrossfadeTime)) + QStringLiteral(" s "));
    if (CrossfadeTime < 1.0f) {
        CrossfadeTime = 1.0f;
        if (DebugLogOn) BugLog(QStringLiteral(" (setting it to 1s) "));
    }
    PrefCrossfadeTime = CrossfadeTime;
    if (DebugLogOn)
        BugLog(QStringLiteral("  Last xFadeStepTime (tuned hopefully) = ") +
               QString::number(static_cast<double>(xFadeStepTime)));
    SetLongProcessInterval();

    BackgroundColour = ColourFromValue(config->cmdChangeBackgroundColour->BackColor());
    MultiMonitors = config->chkEnableMultiMon->isChecked();
    if (DebugLogOn)
        BugLog(QStringLiteral("  MultiMonitors = ") +
               (MultiMonitors ? QStringLiteral("True") : QStringLiteral("False")));

    for (int i = 0; i < 3; ++i)
        LayoutRange[static_cast<std::size_t>(i)] = config->GetLayoutSetting(i);
    if (DebugLogOn) {
        BugLog(QStringLiteral(" Layout Display Percentages : "));
        for (int i = 0; i < 3; ++i)
            BugLog(QStringLiteral("        Layout %1 = %2 % ")
                       .arg(i)
                       .arg(static_cast<double>(LayoutRange[static_cast<std::size_t>(i)])));
    }
    LayoutRange[1] += LayoutRange[0];
    LayoutRange[2] += LayoutRange[1];
    if (DebugLogOn) {
        BugLog(QStringLiteral(" Layout Display Percent Ranges: "));
        BugLog(
            QStringLiteral("        Layout 0  = 0 to %1").arg(static_cast<double>(LayoutRange[0])));
        BugLog(QStringLiteral("        Layout 1  = %1 to %2")
                   .arg(static_cast<double>(LayoutRange[0]))
                   .arg(static_cast<double>(LayoutRange[1])));
        BugLog(QStringLiteral("        Layout 2  = %1 to %2")
                   .arg(static_cast<double>(LayoutRange[1]))
                   .arg(static_cast<double>(LayoutRange[2])));
    }

    ShowStatus = config->chkShowStatus->isChecked();
    ExitOnESC = config->chkExitOnESC->isChecked();
    ExitOnMouse = config->chkExitOnMouse->isChecked();
    ExitOnClick = config->chkExitOnClick->isChecked();
    ExitOnKey = config->chkExitOnKey->isChecked();
}
