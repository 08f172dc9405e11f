#include "platform/Dpms.h"

#include <QGuiApplication>

// Xlib's headers define macros (Bool, Status, None, ...) that clash with Qt's: they come last.
#include <X11/Xlib.h>
#include <X11/extensions/dpms.h>

namespace platform {
namespace {

// Power management that we switched on to turn the monitors off, and must switch off again.
bool enabledByUs = false;

Display* QtDisplay() {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return nullptr;
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    return x11 ? x11->display() : nullptr;
}

} // namespace

MonitorPowerResult SetMonitorPower(bool on) {
    Display* display = QtDisplay();
    if (!display) return MonitorPowerResult::NotX11;
    int eventBase = 0;
    int errorBase = 0;
    if (!DPMSQueryExtension(display, &eventBase, &errorBase)) return MonitorPowerResult::NoDpms;
    if (!DPMSCapable(display)) return MonitorPowerResult::NotCapable;

    CARD16 level = 0;
    BOOL enabled = False;
    DPMSInfo(display, &level, &enabled);
    if (on) {
        if (enabled) DPMSForceLevel(display, DPMSModeOn);
        if (enabledByUs) {
            DPMSDisable(display);
            enabledByUs = false;
        }
    } else {
        // Forcing a level is refused while power management is off.
        if (!enabled) {
            DPMSEnable(display);
            enabledByUs = true;
        }
        DPMSForceLevel(display, DPMSModeOff);
    }
    XFlush(display);
    return MonitorPowerResult::Done;
}

QString MonitorPowerText(MonitorPowerResult result) {
    switch (result) {
    case MonitorPowerResult::Done:
        return QStringLiteral("done");
    case MonitorPowerResult::NotX11:
        return QStringLiteral("not on an X display, nothing to switch");
    case MonitorPowerResult::NoDpms:
        return QStringLiteral("the display has no DPMS, nothing to switch");
    case MonitorPowerResult::NotCapable:
        return QStringLiteral("the display cannot switch its monitors");
    }
    return QString();
}

} // namespace platform
