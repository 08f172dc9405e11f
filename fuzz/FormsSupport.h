#pragma once

// The readers that live on a window are driven the way a run drives them: the settings window
// built and initialised once, as a start builds it, and the show window beside it.
#include "FuzzSupport.h"
#include "config/frmConfig.h"
#include "prefs/MRegistry.h"
#include "show/frmSlideShow.h"

namespace fuzz {

inline frmConfig* Config() {
    static frmConfig* config = [] {
        Install();
        // The window takes its install folder, and so its preferences file, from the settings
        // store: without this it would use the program's own folder, and the preferences the
        // prefs target leaves there would switch the debug log and more on in the other targets.
        SaveSetting(QStringLiteral("installDir"), InstallDir);
        frmConfig* form = frmConfig::instance();
        form->FormIsInitializing = true;
        form->Initialize();
        form->FormIsInitializing = false;
        if (!form->PrefsFileName.startsWith(Install().path())) std::abort();
        return form;
    }();
    return config;
}

inline frmSlideShow* Show() {
    static frmSlideShow* show = [] {
        Config();
        frmSlideShow* form = frmSlideShow::instance();
        form->Initialize();
        return form;
    }();
    return show;
}

} // namespace fuzz
