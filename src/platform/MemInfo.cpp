#include "platform/MemInfo.h"

#include <QFile>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace platform {

qint64 ParseCommittedBytes(const QString& meminfoText) {
    const QStringList lines = meminfoText.split('\n');
    for (const QString& line : lines) {
        if (!line.startsWith(QLatin1String("Committed_AS:"))) continue;
        QStringList parts = line.mid(13).simplified().split(' ', Qt::SkipEmptyParts);
        if (parts.isEmpty()) return -1;
        bool ok = false;
        qint64 value = parts[0].toLongLong(&ok);
        if (!ok || value < 0) return -1;
        QString unit = parts.size() > 1 ? parts[1].toLower() : QString();
        if (unit == QLatin1String("kb")) return value * 1024;
        if (unit == QLatin1String("mb")) return value * 1024 * 1024;
        return value;
    }
    return -1;
}

qint64 CommittedMemoryBytes() {
    QFile f(QStringLiteral("/proc/meminfo"));
    if (!f.open(QIODevice::ReadOnly)) return -1;
    return ParseCommittedBytes(QString::fromLatin1(f.readAll()));
}

void ReleaseFreedMemory() {
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
}

} // namespace platform
