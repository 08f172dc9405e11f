#include "platform/Endpoints.h"

#include "prefs/MRegistry.h"

namespace platform {
namespace {
QString Pick(const char* envName, const QString& storeKey, const QString& fallback) {
    QString env = qEnvironmentVariable(envName).trimmed();
    if (!env.isEmpty()) return env;
    QString stored = GetSetting(storeKey, QString());
    return stored.isEmpty() ? fallback : stored;
}
} // namespace

QString FlickrRestEndpoint() {
    return Pick("TESSAVIEW_FLICKR_REST", QStringLiteral("flickrRestUrl"),
                QStringLiteral("https://api.flickr.com/services/rest/"));
}

QString FlickrPhotoHost() {
    QString host = Pick("TESSAVIEW_FLICKR_PHOTOS", QStringLiteral("flickrPhotoHost"),
                        QStringLiteral("https://live.staticflickr.com"));
    while (host.endsWith('/'))
        host.chop(1);
    return host;
}

QString OnlineHelpUrl() {
    return Pick("TESSAVIEW_HELP_URL", QStringLiteral("helpUrl"),
                QStringLiteral("https://tessaview.org/help/"));
}

} // namespace platform
