#pragma once

#include <QDateTime>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <array>
#include <cstdint>

// The arithmetic of the fade between two frames, and the pixel work of each of its steps.
namespace fade {

// Every fade has the same number of steps, whatever its length: the pace comes from the sleep
// between them.
inline constexpr int kSteps = 65;

// The constant alpha of each step: it grows by Int(i * 0.1 + 1), so by 1 for the first ten
// steps and by 7 for the last five, and ends at 245.
std::array<int, kSteps> Ramp();

// The sleep before each step: seconds over the tuned step time, worked out in single
// precision, where 3 / 0.1 is exactly 30 (in double precision it would be 29).
std::int32_t SleepMsFor(float seconds, float stepTime);

// The step time after a fade that took lastFadeSeconds with that sleep: half-way to what the
// fade measured. A sleep of 0 counts as 1. Fixed point: lastFadeSeconds == sleepMs * stepTime.
float TunedStepTime(float lastFadeSeconds, std::int32_t sleepMs, float stepTime);

// The whole seconds between two readings of a clock that counts whole seconds: the seconds
// boundaries passed, so 0.9 s can read 1 and 1.9 s can read 1.
std::int64_t WholeSecondsBetween(const QDateTime& start, const QDateTime& end);

// One step: top blended with constant alpha over the accumulated surface at the given place,
// each channel (top * alpha + under * (255 - alpha)) / 255, rounded to nearest. Both images are
// 32-bit RGB (RGB32 or ARGB32 with opaque pixels); the part of top outside the surface is
// clipped. Returns the rectangle of the surface that changed.
QRect BlendOver(QImage& accumulated, const QImage& top, QPoint at, int alpha);

// The same, one pixel at a time with no tricks: what the fast one must equal.
QRect BlendOverReference(QImage& accumulated, const QImage& top, QPoint at, int alpha);

// Where a stamp of w x h goes on an area: 0 centred two thirds down, 1 centred a sixth down,
// 2 centred on the bottom edge.
QPoint StampPlace(const QRect& area, int w, int h, int position);

// Copies the stamp onto the target at the place, leaving out every pixel of the see-through
// colour (magenta, 0xFF00FF).
void StampKeyed(QImage& target, const QImage& stamp, QPoint at);

} // namespace fade
