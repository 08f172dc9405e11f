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

} // namespace platform
