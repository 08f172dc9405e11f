// The pictures beside the program that the show lays behind and over its photographs.
#include "app/Common.h"
#include "app/modMain.h"
#include "platform/FileListing.h"
#include "show/frmSlideShow.h"

void frmSlideShow::LoadListOfBackgroundImages() {
    const QString folder = InstallDir + QStringLiteral("/Backgrounds");
    if (!common::FileExists(folder)) {
        BugLog(QStringLiteral("* No ") + folder + QStringLiteral(" folder *"));
        return;
    }
    const QStringList names =
        platform::FileList(folder, QStringLiteral("*.JPG;*.BMP;*.GIF;*.TIF;*.TIFF;*.JPEG;*.PNG"));
    for (const QString& name : names)
        lstBackgroundImages << folder + '/' + name;
}

void frmSlideShow::LoadListOfImageMasks() {
    const QString folder = InstallDir + QStringLiteral("/Masks");
    if (!common::FileExists(folder)) {
        BugLog(QStringLiteral("*** could not find folder ") + folder + QStringLiteral(" ***"));
        return;
    }
    // Masks are JPEG files only.
    const QStringList names = platform::FileList(folder, QStringLiteral("*.JPG"));
    for (const QString& name : names) {
        const QString path = folder + '/' + name;
        lstMasks << path;
        BugLog(QStringLiteral("-adding mask : ") + path);
    }
}
