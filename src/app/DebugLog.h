#pragma once

#include <QFile>
#include <QPointer>
#include <QString>

class QListWidget;

// The program's running account. Every part of the program writes here, whether or not a show
// is on screen: lines go to the log file while it is open and to the list the show puts on the
// screen. While logging is off a line costs one test, so callers need not test first.
class DebugLog {
public:
    static DebugLog& instance();
    static constexpr int kMaxListLines = 32767;

    bool On() const { return on_; }
    bool FileOpen() const { return file_.isOpen(); }

    // Switches logging on and starts the file afresh, its first line naming it. A file that
    // cannot be made leaves the screen's list as the only reader.
    void Open(const QString& path);
    // Ends the file; lines still reach the list until logging is switched off.
    void Close();
    // Off also ends the file: nothing is written until the next Open.
    void SetOff();
    void Write(const QString& text);
    // The on-screen list; it may be destroyed at any time, and then only the file is written.
    void Attach(QListWidget* list);

private:
    DebugLog() = default;
    bool on_ = false;
    QFile file_;
    QPointer<QListWidget> list_;
};

// One line of a log file, CR LF ended and flushed at once.
void WriteLogLine(QFile& file, const QString& text);

inline bool DebugLogOn() {
    return DebugLog::instance().On();
}

// The one call to log a line.
inline void BugLog(const QString& text) {
    DebugLog& log = DebugLog::instance();
    if (log.On()) log.Write(text);
}
