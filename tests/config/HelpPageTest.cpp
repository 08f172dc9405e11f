// The help page the Help button opens travels in the demo's install folder with its pictures;
// a renamed picture or a moved heading would leave a hole that nobody sees until they read it.
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

const QString kHelpFolder = QStringLiteral(TESSAVIEW_SOURCE_DIR) + QStringLiteral("/demo/Help");

QString HelpPage() {
    QFile file(kHelpFolder + QStringLiteral("/index.html"));
    if (!file.open(QIODevice::ReadOnly)) return QString();
    return QString::fromUtf8(file.readAll());
}

} // namespace

TEST(DemoHelpPage, EveryPictureAndPageItNamesIsInItsFolder) {
    const QString html = HelpPage();
    ASSERT_FALSE(html.isEmpty());
    const QRegularExpression reference(QStringLiteral("\\b(src|href)\\s*=\\s*\"([^\"]*)\""),
                                       QRegularExpression::CaseInsensitiveOption);
    int pictures = 0;
    for (auto it = reference.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch m = it.next();
        const QString target = m.captured(2);
        if (target.startsWith(QLatin1Char('#'))) continue;
        // The page is read from the disk, often with no network: nothing comes from elsewhere.
        const QUrl url(target);
        EXPECT_TRUE(url.isRelative() && url.host().isEmpty()) << target.toStdString();
        const QFileInfo file(kHelpFolder + QLatin1Char('/') + url.path());
        EXPECT_TRUE(file.isFile() && file.size() > 0) << target.toStdString();
        EXPECT_TRUE(file.canonicalFilePath().startsWith(QFileInfo(kHelpFolder).canonicalFilePath()))
            << target.toStdString();
        if (m.captured(1).compare(QLatin1String("src"), Qt::CaseInsensitive) == 0) ++pictures;
    }
    EXPECT_GE(pictures, 1);
}

TEST(DemoHelpPage, EveryPlaceItLinksToOnThePageExists) {
    const QString html = HelpPage();
    ASSERT_FALSE(html.isEmpty());
    QSet<QString> ids;
    const QRegularExpression id(QStringLiteral("\\bid\\s*=\\s*\"([^\"]+)\""));
    for (auto it = id.globalMatch(html); it.hasNext();)
        ids.insert(it.next().captured(1));
    const QRegularExpression link(QStringLiteral("\\bhref\\s*=\\s*\"#([^\"]+)\""));
    for (auto it = link.globalMatch(html); it.hasNext();) {
        const QString place = it.next().captured(1);
        EXPECT_TRUE(ids.contains(place)) << place.toStdString();
    }
    EXPECT_FALSE(html.contains(QStringLiteral("<script"), Qt::CaseInsensitive));
}
