#pragma once

// The readers that live on a window are driven the way a run drives them: the settings window
// built and initialised once, as a start builds it, and the show window beside it.
#include "FuzzSupport.h"
#include "config/frmConfig.h"
#include "show/frmSlideShow.h"

namespace fuzz {

inline frmConfig* Config() {
    static frmConfig* config = [] {
        Install();
        frmConfig* form = frmConfig::instance();
        const QString installDir = InstallDir;
        form->FormIsInitializing = true;
        form->Initialize();
        form->FormIsInitializing = false;
        InstallDir = installDir;
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
