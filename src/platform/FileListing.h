#pragma once

#include <QString>
#include <QStringList>

// The file list box and folder list box of the classic toolkit, as plain functions.
namespace platform {

// Names (not paths) of the files in one folder that match any of the semicolon-separated
// patterns ("*.JPG;*.JPEG"), ignoring case, sorted by name ignoring case. A missing folder
// gives an empty list.
QStringList FileList(const QString& folder, const QString& patterns);
// Names of the direct sub-folders, sorted the same way.
QStringList FolderList(const QString& folder);
// True when name matches one of the semicolon-separated patterns, ignoring case.
bool MatchesPatterns(const QString& name, const QString& patterns);
// The order of both listings: by name ignoring case, names that differ only in case by their
// code units, so that the order is total and does not depend on the locale.
bool NameLess(const QString& a, const QString& b);

// A file list box that nobody sees: a folder, a pattern, and the names found there at the last
// Refresh. Files that arrive later are not listed until the next Refresh.
class FileListBox {
public:
    QString Path;
    QString Pattern = QStringLiteral("*.*");

    void Refresh() { names_ = FileList(Path, Pattern); }
    int ListCount() const { return static_cast<int>(names_.size()); }
    // The name at the index, or empty outside the list.
    QString List(int index) const { return names_.value(index); }

private:
    QStringList names_;
};

} // namespace platform
