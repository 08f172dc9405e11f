#include "app/Common.h"

#include "platform/Cursor.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace common {
namespace {
bool IsSeparator(QChar c) {
    return c == '/' || c == '\\';
}
} // namespace

bool FileExists(const QString& path) {
    // No file name holds a zero character, and the toolkit warns each time it is asked.
    if (path.isEmpty() || path.contains(QChar(0))) return false;
    return QFileInfo::exists(path);
}

QString FileNameOf(const QString& path) {
    const int n = static_cast<int>(path.size());
    for (int i = 1; i <= kPathWindow && i <= n; ++i)
        if (IsSeparator(path[n - i])) return path.right(i - 1);
    return QString();
}

QString FolderWithSeparator(const QString& path) {
    const int n = static_cast<int>(path.size());
    for (int i = 1; i <= kPathWindow && i <= n; ++i)
        if (IsSeparator(path[n - i])) return path.left(n - i + 1);
    return path;
}

QString FolderOf(const QString& path) {
    if (path.isEmpty() || path == QLatin1String("(end of playlist)")) return QString();
    return FolderWithSeparator(path);
}

QString FileNameAndFolder(const QString& path) {
    const int n = static_cast<int>(path.size());
    for (int i = 1; i <= kPathWindow && i <= n; ++i)
        if (IsSeparator(path[n - i])) return FileNameOf(path.left(n - i));
    return QString();
}

int GetCursorLeft() {
    return platform::GetCursorPos().x();
}

QString GetMyPicturesFolder() {
    QStringList places = QStandardPaths::standardLocations(QStandardPaths::PicturesLocation);
    if (places.isEmpty()) return QStringLiteral("(can't find My Pictures folder)");
    for (const QString& p : places)
        if (FileExists(p)) return p;
    return QStringLiteral("(can't find My Pictures folder) ... ");
}

QString BrowseForFolder(const QString& caption) {
    QString chosen = platform::ChooseFolder(caption, GetMyPicturesFolder());
    int zero = static_cast<int>(chosen.indexOf(QChar(0)));
    return zero >= 0 ? chosen.left(zero) : chosen;
}

bool AskYesNo(const QString& message) {
    return platform::MsgBox(message, platform::vbYesNo | platform::vbQuestion) == platform::vbYes;
}

QString SplitQuotedField(const QString& text, int fieldNumber) {
    int field = 0;
    bool inside = false;
    QString current;
    for (QChar c : text) {
        if (c == '"') {
            if (inside) {
                if (field == fieldNumber) return current;
                current.clear();
            } else {
                ++field;
            }
            inside = !inside;
        } else if (inside && field == fieldNumber) {
            current += c;
        }
    }
    // An unclosed last field still counts up to the end of the text.
    return inside && field == fieldNumber ? current : QString();
}

QString ShellErrorMessage(int code) {
    switch (code) {
    case 0:
    case 8:
        return QStringLiteral("Out of memory");
    case 2:
        return QStringLiteral("File not found");
    case 3:
        return QStringLiteral("Path not found");
    case 5:
        return QStringLiteral("Path/file access error");
    case 11:
        return QStringLiteral("The executable file is invalid or corrupt");
    case 26:
        return QStringLiteral("A sharing violation occurred.");
    case 27:
        return QStringLiteral("This file type does not have a valid file association.");
    case 28:
        return QStringLiteral(
            "The file could not be opened due to time out. Please try again in a moment.");
    case 29:
        return QStringLiteral("The file could not be opened because the DDE transaction failed. "
                              "Please try again in a moment.");
    case 30:
        return QStringLiteral("The file could not be opened because the target application is "
                              "busy. Please try again in a moment.");
    case 31:
        return QStringLiteral("No application is associated with this file type.");
    case 32:
        return QStringLiteral("The specified dynamic-link library was not found.");
    default:
        return QStringLiteral(
            "An error occurred occurred whilst trying to open or print the selected file.");
    }
}

ShellResult OpenDocument(const QString& path, const QString& operation) {
    ShellResult r;
    r.code = platform::ShellOpen(operation, path, QString(), QString());
    if (!r.ok()) {
        r.message = ShellErrorMessage(r.code);
        r.source = QStringLiteral("modShellExecute.GShell");
    }
    return r;
}

} // namespace common
