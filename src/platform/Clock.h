#pragma once

#include <QDate>
#include <QDateTime>

// The one place the program reads the time, so tests can set it.
namespace platform {

// The present moment to the whole second, as the show's schedule counts it.
QDateTime Now();
QDate Today();
// Seconds since midnight with sub-second precision.
double SecondsSinceMidnight();

// Waits that long. With the clock set by a test, the clock moves on by that much instead and
// nothing waits, so that what is paced by sleeps runs at once and still sees its time pass.
void Sleep(qint64 milliseconds);

// Test hooks: freeze the clock at a moment, move it on, or go back to the system clock.
void SetNow(const QDateTime& moment);
void AdvanceClock(qint64 milliseconds);
void UseSystemClock();
bool ClockIsSet();

} // namespace platform
