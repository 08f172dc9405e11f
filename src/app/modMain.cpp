#include "app/modMain.h"

#include "app/Forms.h"
#include "app/VbNumbers.h"
#include "app/frmPreview.h"
#include "config/frmConfig.h"
#include "platform/X11Windows.h"

#include <QCoreApplication>
#include <QWindow>

QString ProgramVersion = QStringLiteral("6.0.1");
QString ProgramDate = QStringLiteral("October 24, 2006");
bool ExitShow = false;
bool RunningFromConfig = false;
std::int64_t PreviewWindowHandle = 0;
QRect PreviewRect;
QString InstallDir;
QPoint MousePosition;

CommandLine ParseCommandLine(const QString& commandLine) {
    CommandLine cl;
    cl.argument = commandLine.trimmed().toLower();
    const QString sw = cl.argument.left(2);
    if (sw == QLatin1String("/s"))
        cl.mode = RunMode::Saver;
    else if (sw == QLatin1String("/p"))
        cl.mode = RunMode::Preview;
    else if (sw.isEmpty() || sw == QLatin1String("/c"))
        cl.mode = RunMode::Config;
    else
        cl.mode = RunMode::Nothing; // "/a" as well: there is no password of our own to change
    return cl;
}

std::int64_t PreviewHandleFromArgument(const QString& argument) {
    for (int n = static_cast<int>(argument.size()); n >= 1; --n) {
        QString tail = argument.right(n);
        if (vb::IsNumeric(tail)) {
            double v = vb::Val(tail);
            if (v < 0 || v > 4294967295.0) return 0;
            return static_cast<std::int64_t>(vb::RoundHalfEven(v));
        }
    }
    return 0;
}

bool SecondInstanceRefused(bool displayPropertiesFound, int instanceWindows) {
    return !displayPropertiesFound && instanceWindows > 1;
}

QString ProgramFolder() {
    return QCoreApplication::applicationDirPath();
}

namespace {
// The hidden window that marks this process as a running instance for the others.
void CreateInstanceWindow() {
    static QWindow* marker = nullptr;
    if (marker) return;
    marker = new QWindow();
    marker->setTitle(kInstanceTitle);
    marker->setFlag(Qt::Tool);
    marker->create();
    (void)marker->winId();
}
} // namespace

bool Main(const QString& commandLine) {
    CommandLine cl = ParseCommandLine(commandLine);
    // Nothing to do: end before anything touches the display.
    if (cl.mode == RunMode::Nothing) return false;

    if (platform::x11::Available()) {
        CreateInstanceWindow();
        bool displayProperties = platform::x11::FindWindowByTitle(kDisplayPropertiesTitle) != 0;
        int instances = platform::x11::CountWindowsWithTitlePrefix(kInstanceTitle);
        if (SecondInstanceRefused(displayProperties, instances)) return false;
    }

    ProgramVersion = QStringLiteral("6.0.1");
    ProgramDate = QStringLiteral("October 24, 2006");
    ExitShow = false;
    RunningFromConfig = false;

    switch (cl.mode) {
    case RunMode::Saver:
        frmConfig::instance()->RunSaver();
        break;
    case RunMode::Preview:
        frmPreview::RunPreview(PreviewHandleFromArgument(cl.argument));
        break;
    case RunMode::Config:
        frmConfig::instance()->RunConfig();
        break;
    case RunMode::Nothing:
        break;
    }
    return Forms::Count() > 0;
}
