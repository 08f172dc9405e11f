#pragma once

#include "TestSupport.h"
#include "lists/ListDates.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QStringList>

// Image list files written line by line as the program's lists look on disk, so that the
// pool's tests do not lean on the configuration window's writer.
struct ListFileContents {
    QString title = QStringLiteral("Holiday");
    QString source;
    QString type = QStringLiteral("Local");
    QString lastScan; // as it stands in the file; empty means today
    QString interval = QStringLiteral("4000");
    QStringList options{QStringLiteral("RECURSE==False"), QStringLiteral("none==none"),
                        QStringLiteral("none==none"), QStringLiteral("none==none"),
                        QStringLiteral("none==none")};
    QStringList records;
    bool withImagesLine = true;
};

inline void WriteRaw(const QString& path, const QStringList& lines) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    for (const QString& line : lines)
        file.write((line + QStringLiteral("\r\n")).toUtf8());
}

inline void WriteListFile(const QString& path, const ListFileContents& contents,
                          const QDate& today) {
    QStringList lines{QStringLiteral("Imagelist for Ferrin's Tessaview"),
                      QString(30, '-'),
                      QStringLiteral("TITLE"),
                      contents.title,
                      QStringLiteral("PATH"),
                      contents.source};
    int images = 0;
    for (const QString& r : contents.records)
        if (r.startsWith(QLatin1String("IMAG"))) ++images;
    lines << QStringLiteral("COUNT,%1").arg(images) << QStringLiteral("LOCALORWEB,") + contents.type
          << QStringLiteral("LASTSCAN,") +
                 (contents.lastScan.isNull() ? ListFileDateText(today) : contents.lastScan)
          << QStringLiteral("SCANINTERVAL,") + contents.interval;
    for (const QString& option : contents.options)
        lines << QStringLiteral("OPTION,") + option;
    if (contents.withImagesLine) lines << QStringLiteral("IMAGES");
    lines << contents.records;
    WriteRaw(path, lines);
}

// Small photographs, one colour each, that a show can load.
inline QStringList MakePictures(const QString& folder, const QStringList& names) {
    QDir().mkpath(folder);
    QStringList paths;
    for (const QString& name : names) {
        const QString path = folder + QLatin1Char('/') + name;
        QImage picture(16, 12, QImage::Format_RGB32);
        picture.fill(QColor::fromHsv(static_cast<int>(paths.size()) * 40 % 360, 200, 200));
        // A name that no picture format owns still gets its (empty) file.
        if (!picture.save(path)) QFile(path).open(QIODevice::WriteOnly);
        paths << path;
    }
    return paths;
}

inline QStringList ImageRecords(const QStringList& paths) {
    QStringList records;
    for (const QString& p : paths)
        records << QStringLiteral("IMAGE>") + p;
    return records;
}

inline QStringList Texts(const TaggedStringList& list) {
    QStringList out;
    for (const auto& item : list.items())
        out << item.text;
    return out;
}

inline QList<int> Tags(const TaggedStringList& list) {
    QList<int> out;
    for (const auto& item : list.items())
        out << item.tag;
    return out;
}

inline int LogCount(frmSlideShow* show, const QString& text) {
    return static_cast<int>(LogLines(show).count(text));
}
