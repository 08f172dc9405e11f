#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <optional>
#include <vector>

// A bench's own checks: each failure is named on stderr, and the bench ends non-zero, so that
// a bench which no longer measures what it says fails the test run.
class Checks {
public:
    void expect(bool holds, const char* what) {
        if (holds) return;
        std::fprintf(stderr, "FAILED: %s\n", what);
        ok_ = false;
    }
    bool ok() const { return ok_; }

private:
    bool ok_ = true;
};

// Makes the offscreen platform give one screen of that size, described in a file of dir.
inline void UseOffscreenScreen(const QTemporaryDir& dir, QSize size) {
    const QString screens = dir.filePath(QStringLiteral("screens.json"));
    QFile f(screens);
    if (f.open(QIODevice::WriteOnly))
        f.write(QStringLiteral("{\"screens\":[{\"name\":\"A\",\"x\":0,\"y\":0,\"width\":%1,"
                               "\"height\":%2,\"logicalDpi\":96,\"logicalBpi\":96,\"dpr\":1}]}")
                    .arg(size.width())
                    .arg(size.height())
                    .toUtf8());
    f.close();
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screens).toUtf8());
}

// The run's mode from the command line: true for --quick, false for none; nothing (after a
// word on stderr) for anything else.
inline std::optional<bool> QuickMode(int argc, char** argv) {
    const bool quick = argc > 1 && std::strcmp(argv[1], "--quick") == 0;
    if (argc > 1 && !quick) {
        std::fprintf(stderr, "usage: %s [--quick]\n", argv[0]);
        return std::nullopt;
    }
    return quick;
}

inline double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

// The plainest read of a folder of image lists, next to which the show's own is timed: every
// record after "IMAGES" of each "*.tvl" file, in name order, into one QStringList.
inline QStringList PlainListRead(const QString& folder) {
    QStringList pool;
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.tvl")}, QDir::Files,
                                                     QDir::Name | QDir::IgnoreCase);
    for (const QString& name : names) {
        QFile file(folder + QLatin1Char('/') + name);
        if (!file.open(QIODevice::ReadOnly)) continue;
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
        const auto start = lines.indexOf(QStringLiteral("IMAGES"));
        for (auto i = start + 1; start >= 0 && i < lines.size(); ++i)
            if (lines[i].startsWith(QLatin1String("IMAGE>"))) pool << lines[i].mid(6);
    }
    return pool;
}
