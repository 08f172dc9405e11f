#include "platform/SafeWrite.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace platform {
namespace {

bool IsTemporaryOf(const QString& candidate, const QString& name) {
    if (candidate.size() != name.size() + 7 || !candidate.startsWith(name) ||
        candidate[name.size()] != QLatin1Char('.'))
        return false;
    for (qsizetype i = name.size() + 1; i < candidate.size(); ++i) {
        const char16_t c = candidate[i].unicode();
        const bool alnum =
            (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
        if (!alnum) return false;
    }
    return true;
}

} // namespace

bool WriteFileWhole(const QString& fileName, const QByteArray& data) {
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) return false;
    if (file.write(data) != data.size()) {
        file.cancelWriting();
        return false;
    }
    if (!file.commit()) return false;
    RemoveStaleTemporaries(fileName);
    return true;
}

int RemoveStaleTemporaries(const QString& fileName) {
    const QFileInfo target(fileName);
    const QString name = target.fileName();
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-kStaleTemporarySeconds);
    int removed = 0;
    const QFileInfoList siblings =
        QDir(target.path())
            .entryInfoList({name + QStringLiteral(".*")}, QDir::Files | QDir::Hidden);
    for (const QFileInfo& sibling : siblings)
        if (IsTemporaryOf(sibling.fileName(), name) && sibling.lastModified().toUTC() < before &&
            QFile::remove(sibling.filePath()))
            ++removed;
    return removed;
}

} // namespace platform
