#pragma once

#include <QColor>
#include <QString>
#include <functional>
#include <optional>

class QWidget;

// Message boxes and the file, folder and colour dialogs. Each can be answered by a test
// instead of a person.
namespace platform {

// Button sets and icons combine as the classic message box flags did.
enum MsgBoxFlags : int {
    vbOKOnly = 0,
    vbOKCancel = 1,
    vbYesNoCancel = 3,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
};
enum MsgBoxResult : int { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

struct MsgBoxCall {
    QString prompt;
    int flags = 0;
    QString title;
};

using MsgBoxAnswerer = std::function<int(const MsgBoxCall&)>;
using TextAnswerer = std::function<QString(const QString& caption)>;
using ColourAnswerer = std::function<std::optional<QColor>(const QColor& initial)>;

int MsgBox(const QString& prompt, int flags = vbOKOnly, const QString& title = QString());
// Empty on cancel.
QString ChooseFolder(const QString& caption, const QString& startFolder = QString());
QString ChooseOpenFile(const QString& caption, const QString& startFolder, const QString& filter);
std::optional<QColor> ChooseColour(const QColor& initial);

// Test hooks. Pass an empty function to go back to real dialogs.
void SetMsgBoxAnswerer(MsgBoxAnswerer answerer);
void SetFolderAnswerer(TextAnswerer answerer);
void SetFileAnswerer(TextAnswerer answerer);
void SetColourAnswerer(ColourAnswerer answerer);

} // namespace platform
