#pragma once

// What every fuzz target shares: one application object on the offscreen platform, an install
// folder of its own that lives as long as the process, and a way to hand an input to a reader
// that only takes file names.
#include "app/Forms.h"
#include "app/Resources.h"
#include "app/modMain.h"
#include "platform/Clock.h"

#include <QApplication>
#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace fuzz {

// What lives as long as the process. The objects are never destroyed (libFuzzer ends with
// exit(), and the windows must not outlive the application); holding them here keeps them
// reachable for the leak checker, and the folders are removed at exit.
struct Globals {
    QTemporaryDir* config = nullptr;
    QApplication* app = nullptr;
    QTemporaryDir* install = nullptr;
};
inline Globals globals;

inline QTemporaryDir& Install() {
    if (globals.install) return *globals.install;
    // Nothing a target does may reach the user's own settings or need a display.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    globals.config = new QTemporaryDir;
    qputenv("XDG_CONFIG_HOME", globals.config->path().toUtf8());
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    globals.app = new QApplication(argc, argv);
    InitResources();
    Forms::SetLastFormHandler([] {});
    globals.install = new QTemporaryDir;
    InstallDir = globals.install->path();
    platform::SetNow(QDateTime(QDate(2026, 11, 22), QTime(12, 0, 0)));
    std::atexit([] {
        globals.install->remove();
        globals.config->remove();
    });
    return *globals.install;
}

inline QString InstallPath(const QString& name) {
    return Install().path() + QLatin1Char('/') + name;
}

inline QByteArray Bytes(const std::uint8_t* data, std::size_t size) {
    return QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
}

inline void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) std::abort();
    file.write(bytes);
}

// A property the reader promises broke: libFuzzer keeps the input as a crash.
inline void Check(bool holds) {
    if (!holds) __builtin_trap();
}

} // namespace fuzz
