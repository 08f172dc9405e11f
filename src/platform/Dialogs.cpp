#include "platform/Dialogs.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>

namespace platform {
namespace {
MsgBoxAnswerer g_msgBox;
TextAnswerer g_folder;
TextAnswerer g_file;
ColourAnswerer g_colour;

QMessageBox::Icon IconOf(int flags) {
    switch (flags & 0x70) {
    case vbCritical:
        return QMessageBox::Critical;
    case vbQuestion:
        return QMessageBox::Question;
    case vbExclamation:
        return QMessageBox::Warning;
    case vbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}
} // namespace

int MsgBox(const QString& prompt, int flags, const QString& title) {
    if (g_msgBox) return g_msgBox({prompt, flags, title});

    QMessageBox box;
    box.setIcon(IconOf(flags));
    box.setWindowTitle(title.isEmpty() ? QStringLiteral("Tessaview") : title);
    box.setText(prompt);
    box.setWindowFlag(Qt::WindowStaysOnTopHint);
    switch (flags & 0x7) {
    case vbOKCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case vbYesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        break;
    case vbYesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    default:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return vbYes;
    case QMessageBox::No:
        return vbNo;
    case QMessageBox::Cancel:
        return vbCancel;
    default:
        return vbOK;
    }
}

QString ChooseFolder(const QString& caption, const QString& startFolder) {
    if (g_folder) return g_folder(caption);
    return QFileDialog::getExistingDirectory(nullptr, caption, startFolder);
}

QString ChooseOpenFile(const QString& caption, const QString& startFolder, const QString& filter) {
    if (g_file) return g_file(caption);
    return QFileDialog::getOpenFileName(nullptr, caption, startFolder, filter);
}

std::optional<QColor> ChooseColour(const QColor& initial) {
    if (g_colour) return g_colour(initial);
    QColor c = QColorDialog::getColor(initial);
    if (!c.isValid()) return std::nullopt;
    return c;
}

void SetMsgBoxAnswerer(MsgBoxAnswerer answerer) {
    g_msgBox = std::move(answerer);
}
void SetFolderAnswerer(TextAnswerer answerer) {
    g_folder = std::move(answerer);
}
void SetFileAnswerer(TextAnswerer answerer) {
    g_file = std::move(answerer);
}
void SetColourAnswerer(ColourAnswerer answerer) {
    g_colour = std::move(answerer);
}

} // namespace platform
