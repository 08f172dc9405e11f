#include "app/DebugLog.h"

#include <QListWidget>

void WriteLogLine(QFile& file, const QString& text) {
    file.write(text.toUtf8());
    file.write("\r\n", 2);
    // A show can end in a crash or a kill; the log must hold every line up to it.
    file.flush();
}

DebugLog& DebugLog::instance() {
    static DebugLog log;
    return log;
}

void DebugLog::Open(const QString& path) {
    on_ = true;
    if (file_.isOpen()) file_.close();
    file_.setFileName(path);
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    WriteLogLine(file_, path + QStringLiteral("Logfile opening .... "));
}

void DebugLog::Close() {
    if (file_.isOpen()) file_.close();
}

void DebugLog::SetOff() {
    Close();
    on_ = false;
}

void DebugLog::Write(const QString& text) {
    if (file_.isOpen()) WriteLogLine(file_, text);
    if (!list_) return;
    // A show may log for weeks: the list keeps the newest lines a list can hold.
    if (list_->count() >= kMaxListLines) delete list_->takeItem(0);
    list_->addItem(text);
    list_->setCurrentRow(list_->count() - 1);
    // Scrolling a list nobody sees costs a layout of all its lines each time; the list is
    // scrolled when it is shown.
    if (!list_->isVisible()) return;
    list_->scrollToBottom();
    // The show may be busy for a while without yielding; the list must show the line now.
    list_->repaint();
}

void DebugLog::Attach(QListWidget* list) {
    list_ = list;
}
