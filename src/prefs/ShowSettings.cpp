// The show's run-time settings: the built-in values, and the tuned crossfade step kept in the
// settings store between shows.
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "platform/VbTimer.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

#include <QDateTime>

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

// STAND-IN until the preferences file and the configuration window exist: the show keeps its
// built-in values and only derives what follows from them. The real routine reads every
// setting from the configuration form's controls.
void frmSlideShow::LoadShowSettings() {
    SetStatus(QStringLiteral("Loading Preferences"));
    if (CrossfadeTime < 1.0f) {
        CrossfadeTime = 1.0f;
        if (DebugLogOn) BugLog(QStringLiteral(" (setting it to 1s) "));
    }
    PrefCrossfadeTime = CrossfadeTime;
    SetLongProcessInterval();
}
