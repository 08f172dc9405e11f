#include "lists/ImageEntry.h"

#include "app/Common.h"

#include <QStringList>

namespace {
QString Field(const QString& entry, int index) {
    const QStringList fields = entry.split(QStringLiteral("::"));
    return index < fields.size() ? fields[index].trimmed() : QString();
}
} // namespace

bool IsWebEntry(const QString& entry) {
    return entry.startsWith(QLatin1String("web::"));
}

bool IsInternalEntry(const QString& entry) {
    return entry.left(8) == QLatin1String("INTERNAL");
}

QString MakeWebEntry(const QString& listName, const QString& url, const QString& listTitle) {
    return QStringLiteral("web::") + listName + QStringLiteral("::") + url + QStringLiteral("::") +
           listTitle;
}

QString GetURLfromEntry(const QString& entry) {
    return Field(entry, 2);
}

QString GetTitleFromEntry(const QString& entry) {
    return Field(entry, 3);
}

QString FolderKeyOf(const QString& entry) {
    if (IsWebEntry(entry)) {
        const QStringList fields = entry.split(QStringLiteral("::"));
        return fields.value(0) + QStringLiteral("::") + fields.value(1) + QStringLiteral("::");
    }
    return common::FolderWithSeparator(entry);
}
