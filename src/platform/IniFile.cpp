#include "platform/IniFile.h"

#include <QFile>
#include <QStringDecoder>

namespace platform {

namespace {

// A line break can never be part of a section name, so it keeps section and key apart.
QString JoinedKey(const QString& section, const QString& key) {
    return section.trimmed().toCaseFolded() + QLatin1Char('\n') + key.trimmed().toCaseFolded();
}

} // namespace

bool IniFile::Load(const QString& fileName) {
    values_.clear();
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) return false;
    // A profile of display texts is a few kilobytes; what stands beyond the first 256 KB is not
    // read, so that no file can make a lookup cost more than a few megabytes. A line cut at the
    // limit is left out whole.
    constexpr qint64 kMostRead = 256 * 1024;
    QByteArray bytes = file.read(kMostRead);
    if (!file.atEnd()) bytes.truncate(bytes.lastIndexOf('\n') + 1);
    QStringDecoder decode(QStringDecoder::Utf8);
    QString text = decode(bytes);
    // An editor may have put a byte-order mark in front of the first heading.
    if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);

    QString section;
    bool inSection = false;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& raw : lines) {
        const QString line = raw.trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char(';'))) continue;
        if (line.startsWith(QLatin1Char('['))) {
            const qsizetype close = line.indexOf(QLatin1Char(']'));
            section = line.mid(1, close < 0 ? -1 : close - 1);
            inSection = true;
            continue;
        }
        const qsizetype equals = line.indexOf(QLatin1Char('='));
        if (!inSection || equals <= 0) continue;
        const QString joined = JoinedKey(section, line.left(equals));
        if (!values_.contains(joined)) values_.insert(joined, line.mid(equals + 1).trimmed());
    }
    return true;
}

QString IniFile::Value(const QString& section, const QString& key) const {
    if (key.trimmed().isEmpty()) return QString();
    return values_.value(JoinedKey(section, key));
}

QString ReadPrivateProfileString(const QString& section, const QString& key,
                                 const QString& fileName) {
    IniFile ini;
    ini.Load(fileName);
    return ini.Value(section, key);
}

} // namespace platform
