#pragma once

#include <QString>

// Monitor power through the display's power management (DPMS), the stand-in for asking the
// monitors to sleep. Where there is nothing to ask, nothing happens and nothing fails.
namespace platform {

enum class MonitorPowerResult {
    Done,
    NotX11,     // no X display: offscreen, or another platform
    NoDpms,     // the server has no power management extension (Xvfb, most remote displays)
    NotCapable, // the extension is there, but the monitors cannot be switched
};

// Switches the monitors off or back on. Turning them off switches the server's power
// management on if it was off, and turning them on again puts that back as it was.
MonitorPowerResult SetMonitorPower(bool on);

// A few words for the log about what happened.
QString MonitorPowerText(MonitorPowerResult result);

} // namespace platform
