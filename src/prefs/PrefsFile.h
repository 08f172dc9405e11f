#pragma once

#include <QDateTime>
#include <QString>

// Pieces of the preferences file that need no window.
namespace prefs {

// "m:ss s" style length of a sound: minutes only when above 0, then ":" and the seconds with a
// leading 0 below 10, then " s" (":05 s", "2:30 s").
QString MakeTimeString(double milliseconds);
// The head's date: the system's short date with a four-digit year, and the time.
QString FileDateTime(const QDateTime& moment);

} // namespace prefs
