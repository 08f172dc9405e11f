#pragma once

#include <QDate>
#include <QString>

// The date of a list's last scan as the list file holds it: the user's short date form, with
// the year always in four digits so that the text reads back to the same day.
QString ListFileDateText(const QDate& date);
// Reads such a date back; ISO dates and day/month/year with slashes are taken too. Text that
// is no date gives the zero date, 30 December 1899, so that such a list is due at once.
QDate ReadListFileDate(const QString& text);
QDate ZeroDate();
