// The show's running account: the debug log file with its on-screen twin, the memory log and
// the status panel.
#include "app/modMain.h"
#include "platform/MemInfo.h"
#include "show/frmSlideShow.h"

QString frmSlideShow::DebugLogPath() const {
    return InstallDir + QStringLiteral("/Tessaview_debug_log.txt");
}

QString frmSlideShow::MemLogPath() const {
    return InstallDir + QStringLiteral("/MemLog.csv");
}

void frmSlideShow::OpenDebugLog() {
    DebugLog::instance().Open(DebugLogPath());
}

void frmSlideShow::CloseDebugLog() {
    DebugLog::instance().Close();
}

void frmSlideShow::OpenMemlog() {
    MemLogOpen = false;
    if (memLog_.isOpen()) memLog_.close();
    memLog_.setFileName(MemLogPath());
    if (!memLog_.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    MemLogOpen = true;
}

void frmSlideShow::CloseMemLog() {
    if (MemLogOpen && memLog_.isOpen()) memLog_.close();
    MemLogOpen = false;
}

void frmSlideShow::MemLog(const QString& text) {
    if (MemLogOpen && memLog_.isOpen()) WriteLogLine(memLog_, text);
}

std::int64_t frmSlideShow::MemoryPageSize() {
    const qint64 bytes = platform::CommittedMemoryBytes();
    return bytes < 0 ? 0 : bytes;
}

void frmSlideShow::lblCloseDebugWindow_Click() {
    picDeBug->setVisible(false);
}

void frmSlideShow::SetStatus(const QString& text) {
    lblBootStatus->setText(text);
    if (lblBootStatus->isVisible()) lblBootStatus->repaint();
}

void frmSlideShow::SetStatus2(const QString& text) {
    lblBootStatus2->setText(text);
    if (lblBootStatus2->isVisible()) lblBootStatus2->repaint();
}
