#include "platform/FileListing.h"

#include <QCollator>
#include <QDir>
#include <QRegularExpression>
#include <algorithm>

namespace platform {
namespace {
QStringList SplitPatterns(const QString& patterns) {
    QStringList out;
    for (const QString& p : patterns.split(';', Qt::SkipEmptyParts)) {
        QString t = p.trimmed();
        if (!t.isEmpty()) out << t;
    }
    return out;
}

void SortNames(QStringList& names) {
    std::sort(names.begin(), names.end(), NameLess);
}
} // namespace

bool NameLess(const QString& a, const QString& b) {
    const int c = QString::compare(a, b, Qt::CaseInsensitive);
    return c != 0 ? c < 0 : a < b;
}

bool MatchesPatterns(const QString& name, const QString& patterns) {
    for (const QString& p : SplitPatterns(patterns)) {
        QRegularExpression re(QRegularExpression::wildcardToRegularExpression(
                                  p, QRegularExpression::UnanchoredWildcardConversion),
                              QRegularExpression::CaseInsensitiveOption);
        QRegularExpression anchored(QRegularExpression::anchoredPattern(re.pattern()),
                                    QRegularExpression::CaseInsensitiveOption);
        if (anchored.match(name).hasMatch()) return true;
    }
    return false;
}

QStringList FileList(const QString& folder, const QString& patterns) {
    QDir dir(folder);
    if (folder.isEmpty() || !dir.exists()) return {};
    QStringList names;
    const QStringList all = dir.entryList(QDir::Files | QDir::Hidden | QDir::System);
    for (const QString& n : all)
        if (MatchesPatterns(n, patterns)) names << n;
    SortNames(names);
    return names;
}

QStringList FolderList(const QString& folder) {
    QDir dir(folder);
    if (folder.isEmpty() || !dir.exists()) return {};
    QStringList names = dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    SortNames(names);
    return names;
}

} // namespace platform
