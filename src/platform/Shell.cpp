#include "platform/Shell.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace platform {
namespace {
ShellLauncher g_launcher;
}

int ShellOpen(const QString& operation, const QString& file, const QString& parameters,
              const QString& folder) {
    Q_UNUSED(operation);
    Q_UNUSED(parameters);
    QString target = file.trimmed();
    QUrl url = QUrl::fromUserInput(target, folder.isEmpty() ? QDir::currentPath() : folder,
                                   QUrl::AssumeLocalFile);
    if (url.isLocalFile()) {
        QFileInfo info(url.toLocalFile());
        if (!info.exists()) return QFileInfo::exists(info.absolutePath()) ? 2 : 3;
    }
    if (g_launcher) return g_launcher(url.toString());
    return QDesktopServices::openUrl(url) ? 42 : 31;
}

void SetShellLauncher(ShellLauncher launcher) {
    g_launcher = std::move(launcher);
}

} // namespace platform
