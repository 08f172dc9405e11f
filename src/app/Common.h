#pragma once

#include <QString>

// Small helpers the whole program shares. The path routines take "\" and "/" alike, since
// they serve local paths and URLs, and look at no more than the last 250 characters.
namespace common {

constexpr int kPathWindow = 250;

// True for an existing file or folder.
bool FileExists(const QString& path);
// The part after the last separator; empty for a bare name.
QString FileNameOf(const QString& path);
// The part up to and including the last separator; the whole path when it has none.
QString FolderWithSeparator(const QString& path);
// As FolderWithSeparator, with "" and "(end of playlist)" given back as empty.
QString FolderOf(const QString& path);
// Short name of the folder that holds the path.
QString FileNameAndFolder(const QString& path);

// Pointer's x position in the forms' units (pixels here).
int GetCursorLeft();
// The user's pictures folder, or a readable text in place of a path when there is none.
QString GetMyPicturesFolder();
// Empty on cancel.
QString BrowseForFolder(const QString& caption);
// A yes/no question; true for yes.
bool AskYesNo(const QString& message);
// Field n (from 1) of a text whose fields stand between double quotes: 'a "one" b "two"'
// gives "one" for 1 and "two" for 2; a missing field is empty.
QString SplitQuotedField(const QString& text, int fieldNumber);

// Result of opening a document with the desktop's associated program.
struct ShellResult {
    int code = 0;
    bool ok() const { return code > 32; }
    QString message; // empty on success
    QString source;  // where the error was raised
};
// The message for a failure code of the classic shell launcher.
QString ShellErrorMessage(int code);
ShellResult OpenDocument(const QString& path, const QString& operation = QStringLiteral("open"));

} // namespace common
