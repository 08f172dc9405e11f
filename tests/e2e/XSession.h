#pragma once

#include <QProcess>
#include <QSize>
#include <QString>
#include <QTemporaryDir>
#include <chrono>
#include <functional>
#include <xcb/xcb.h>

// A private X server for one test, and the program run against it with a settings store and
// install folder of its own.
class XSession {
public:
    XSession();
    ~XSession();
    XSession(const XSession&) = delete;
    XSession& operator=(const XSession&) = delete;

    bool ok() const { return conn_ != nullptr; }
    QString display() const { return display_; }
    QString installDir() const { return install_.path(); }
    QString storeFile() const;
    void writeStore(const QString& iniText);

    // Starts the program with these arguments against this server; values in extra replace
    // those of the test's own environment.
    QProcess* start(const QStringList& args,
                    const QProcessEnvironment& extra = QProcessEnvironment());
    // The same, but a folder without read rights stays closed to the program even when the
    // tests run as root: the rights that let root read anything are dropped for it.
    QProcess* startWithFileRights(const QStringList& args);
    // Runs a helper command (xdotool...) against this server and waits for it.
    int run(const QString& program, const QStringList& args);

    // Top-level windows whose title is exactly this, mapped ones only when asked.
    int countWindows(const QString& title, bool mappedOnly);
    xcb_window_t findWindow(const QString& title, bool mappedOnly);
    QSize windowSize(xcb_window_t w);
    std::vector<xcb_window_t> children(xcb_window_t w);

    // A plain top-level window of ours, mapped, with a title.
    xcb_window_t createWindow(const QString& title, int width, int height);
    void resizeWindow(xcb_window_t w, int width, int height);
    void destroyWindow(xcb_window_t w);

    xcb_connection_t* connection() const { return conn_; }

private:
    QProcess* launch(const QString& program, const QStringList& args,
                     const QProcessEnvironment& extra);
    QString title(xcb_window_t w);
    std::vector<xcb_window_t> matching(const QString& title, bool mappedOnly);
    QProcess xvfb_;
    QString display_;
    QTemporaryDir install_;
    QTemporaryDir config_;
    xcb_connection_t* conn_ = nullptr;
    xcb_window_t root_ = 0;
    std::vector<std::unique_ptr<QProcess>> programs_;
};

// Writes the lines as the program's own files have them, each ended by CR LF.
bool WriteCrlfLines(const QString& path, const QStringList& lines);

// Polls until the condition holds or the time is up; true when it held.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit);
