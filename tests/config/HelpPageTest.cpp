// The help page the Help button opens travels in the demo's install folder with its pictures;
// a renamed picture or a moved heading would leave a hole that nobody sees until they read it.
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>
#include <gtest/gtest.h>

TEST(DemoHelpPage, EveryPicturePageAndPlaceItNamesIsThere) {
    const QString folder = QStringLiteral(TESSAVIEW_SOURCE_DIR "/demo/Help");
    QFile page(folder + QStringLiteral("/index.html"));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QString html = QString::fromUtf8(page.readAll());
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
        const QFileInfo file(folder + QLatin1Char('/') + url.path());
        EXPECT_TRUE(file.isFile() && file.size() > 0) << target.toStdString();
        EXPECT_TRUE(file.canonicalFilePath().startsWith(QFileInfo(folder).canonicalFilePath()))
            << target.toStdString();
        if (m.captured(1).compare(QLatin1String("src"), Qt::CaseInsensitive) == 0) ++pictures;
    }
    EXPECT_GE(pictures, 1);

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
