#pragma once

#include <array>
#include <cstdint>

// The night schedule: the day cut into quarter-hours, each of them day or night.
namespace night {

inline constexpr int kZoneSeconds = 15 * 60;
// Zones 0 to 96: the sky bar's last tab stands at midnight, one past the last quarter-hour.
inline constexpr int kZoneCount = 97;
using ZoneTable = std::array<bool, kZoneCount>;

// The quarter-hour that a moment of the day falls in: 0 from 00:00:00 to 00:14:59, 95 from
// 23:45:00 on. A moment outside the day is held to its first or last zone.
std::int16_t DayZoneAt(double secondsSinceMidnight);

// The zone the clock stands in now, logged.
std::int16_t CurrentDayZone();

// Marks the zones from start up to the one before end as night; when end comes before start,
// the night runs through midnight. The end zone is when the show wakes, so it is never night;
// start equal to end marks nothing. Zones outside the table are passed over.
void MarkNightZones(ZoneTable& zones, int startZone, int endZone);

// Whether the schedule wants the night screen in that zone.
bool NightWanted(bool enabled, const ZoneTable& zones, int zone);

} // namespace night
