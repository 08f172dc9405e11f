#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <cstdint>

// Program-wide state, read everywhere.
extern QString ProgramVersion;
extern QString ProgramDate;
// The show must stop; every long routine of the show polls it.
extern bool ExitShow;
// The show was started from the open configuration form, which stays when the show ends.
extern bool RunningFromConfig;
extern std::int64_t PreviewWindowHandle;
extern QRect PreviewRect;
// The base of all the program's own files.
extern QString InstallDir;
extern QPoint MousePosition;

// Title of the hidden window every running instance carries; others count it.
inline const QString kInstanceTitle = QStringLiteral("SCRNSAVE:Tessaview");
// While a window of this exact title exists, further instances are let through.
inline const QString kDisplayPropertiesTitle = QStringLiteral("Display Properties");

enum class RunMode { Saver, Preview, Config, Nothing };

struct CommandLine {
    QString argument; // trimmed, lower case
    RunMode mode = RunMode::Nothing;
};

// The switch is the first two characters of the trimmed, lower-cased command line.
CommandLine ParseCommandLine(const QString& commandLine);
// The numeric tail of the argument ("/p 1234", "/p:1234"); 0 when there is none.
std::int64_t PreviewHandleFromArgument(const QString& argument);
// An instance is refused when another carries the instance title, unless the system's
// display dialog is open.
bool SecondInstanceRefused(bool displayPropertiesFound, int instanceWindows);

// The folder that holds the program.
QString ProgramFolder();

// The entry. Returns true when a form was loaded and the event loop must run.
bool Main(const QString& commandLine);
