#include "night_sound/NightZones.h"

#include "app/DebugLog.h"
#include "platform/Clock.h"

#include <QString>
#include <algorithm>
#include <cmath>

namespace night {

std::int16_t DayZoneAt(double secondsSinceMidnight) {
    // Clocks that step back over a leap second, or run a hair past midnight, must still land
    // in the table.
    const double zone = std::floor(secondsSinceMidnight / kZoneSeconds);
    if (!(zone >= 0.0)) return 0;
    return static_cast<std::int16_t>(std::min(zone, static_cast<double>(kZoneCount - 2)));
}

std::int16_t CurrentDayZone() {
    const std::int16_t zone = DayZoneAt(platform::SecondsSinceMidnight());
    BugLog(QStringLiteral("Current day zone is ") + QString::number(zone));
    return zone;
}

void MarkNightZones(ZoneTable& zones, int startZone, int endZone) {
    auto mark = [&zones](int from, int to) {
        for (int zone = std::max(from, 0); zone <= to && zone < kZoneCount; ++zone)
            zones[static_cast<std::size_t>(zone)] = true;
    };
    if (startZone <= endZone) {
        mark(startZone, endZone - 1);
    } else {
        mark(0, endZone - 1);
        mark(startZone, kZoneCount - 1);
    }
}

bool NightWanted(bool enabled, const ZoneTable& zones, int zone) {
    if (!enabled || zone < 0 || zone >= kZoneCount) return false;
    return zones[static_cast<std::size_t>(zone)];
}

} // namespace night
