#include "lists/ListDates.h"

#include <QLocale>
#include <QRegularExpression>

namespace {
QString ShortFormatWithFullYear() {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    // "yy" and "yyyy" both become "yyyy".
    static const QRegularExpression years(QStringLiteral("y+"));
    format.replace(years, QStringLiteral("yyyy"));
    return format;
}
} // namespace

QDate ZeroDate() {
    return QDate(1899, 12, 30);
}

QString ListFileDateText(const QDate& date) {
    return QLocale().toString(date, ShortFormatWithFullYear());
}

QDate ReadListFileDate(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty()) return ZeroDate();
    QDate d = QLocale().toDate(t, ShortFormatWithFullYear());
    if (d.isValid()) return d;
    for (const char* format : {"yyyy-MM-dd", "d/M/yyyy", "d.M.yyyy"}) {
        d = QDate::fromString(t, QLatin1String(format));
        if (d.isValid()) return d;
    }
    return ZeroDate();
}
