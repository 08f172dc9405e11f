#include "app/Resources.h"
#include "app/modMain.h"

#include <QApplication>
#include <QStringList>

int main(int argc, char** argv) {
    // A switch that does nothing must not need a display.
    QStringList raw;
    for (int i = 1; i < argc; ++i)
        raw << QString::fromLocal8Bit(argv[i]);
    if (ParseCommandLine(raw.join(' ')).mode == RunMode::Nothing) return 0;

    QApplication app(argc, argv);
    InitResources();
    QApplication::setApplicationName(QStringLiteral("Tessaview"));
    QApplication::setOrganizationName(QStringLiteral("Marrowfield"));
    QApplication::setQuitOnLastWindowClosed(false);

    QStringList args = QApplication::arguments();
    args.removeFirst();
    if (!Main(args.join(' '))) return 0;
    return QApplication::exec();
}
