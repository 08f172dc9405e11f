// How long the show takes to build a large pool from its list files, to save it as the
// remaining list and to take it up again, next to the plainest way of doing the same with a
// QStringList. Prints the median of several runs in milliseconds.
#include "app/modMain.h"
#include "show/frmSlideShow.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int kLists = 30;
constexpr int kPerList = 1000;
constexpr int kRuns = 7;

void WriteLists(const QString& folder) {
    QDir().mkpath(folder);
    for (int l = 0; l < kLists; ++l) {
        QString text = QStringLiteral("Imagelist for Ferrin's Tessaview\r\n") + QString(30, '-') +
                       QStringLiteral("\r\nTITLE\r\nAlbum %1\r\nPATH\r\n/photos/album%1/\r\n"
                                      "COUNT,%2\r\nLOCALORWEB,Local\r\nLASTSCAN,2026-11-01\r\n"
                                      "SCANINTERVAL,4000\r\nOPTION,RECURSE==True\r\n")
                           .arg(l)
                           .arg(kPerList);
        for (int i = 0; i < 4; ++i)
            text += QStringLiteral("OPTION,none==none\r\n");
        text += QStringLiteral("IMAGES\r\n");
        for (int i = 0; i < kPerList; ++i)
            text += QStringLiteral("IMAGE>/photos/album%1/holiday/DSC_%2.JPG\r\n").arg(l).arg(i);
        QFile file(folder + QStringLiteral("/album_%1.tvl").arg(l, 2, 10, QLatin1Char('0')));
        if (file.open(QIODevice::WriteOnly)) file.write(text.toUtf8());
    }
}

double MedianMs(const std::function<void()>& setUp, const std::function<void()>& work) {
    std::vector<double> times;
    for (int run = 0; run < kRuns; ++run) {
        setUp();
        QElapsedTimer clock;
        clock.start();
        work();
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

// The plainest pool: every line after "IMAGES" that names an image, in one QStringList.
QStringList NaiveLoad(const QString& folder) {
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

void NaiveSave(const QString& path, const QStringList& pool) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(pool.join(QStringLiteral("\r\n")).toUtf8());
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QTemporaryDir install;
    if (!install.isValid()) return 1;
    InstallDir = install.path();
    const QString lists = install.path() + QStringLiteral("/Imagelists");
    WriteLists(lists);

    frmSlideShow* show = frmSlideShow::instance();
    show->RemainingListPath[0] = install.path() + QStringLiteral("/remain.lst");
    show->RemainingListPath[1] = install.path() + QStringLiteral("/remain-t.lst");
    show->RemainingListPath[2] = install.path() + QStringLiteral("/remain-d.lst");
    show->CurrentImage = QStringLiteral("/photos/album0/holiday/DSC_0.JPG");

    const double load = MedianMs([] {}, [&] { show->LoadFullImageList(); });
    const int pooled = show->ImageList.count();
    const double save = MedianMs([] {}, [&] { show->SaveRemainingList(); });
    const double resume = MedianMs([&] { show->ImageList.clear(); },
                                   [&] { show->LoadRemainingList(show->RemainingListPath[0]); });
    const int resumed = show->ImageList.count();

    QStringList naive;
    const double naiveLoad = MedianMs([] {}, [&] { naive = NaiveLoad(lists); });
    const QString naivePath = install.path() + QStringLiteral("/naive.lst");
    const double naiveSave = MedianMs([] {}, [&] { NaiveSave(naivePath, naive); });

    std::printf("Image pool of %d list files, %d entries (median of %d runs)\n", kLists,
                kLists * kPerList, kRuns);
    std::printf("%-34s %10s %14s\n", "", "pool (ms)", "QStringList (ms)");
    std::printf("%-34s %10.1f %14.1f\n", "load from the list files", load, naiveLoad);
    std::printf("%-34s %10.1f %14.1f\n", "save as the remaining list", save, naiveSave);
    std::printf("%-34s %10.1f %14s\n", "take up the remaining list", resume, "-");
    std::printf("entries: pool %d, resumed %d, QStringList %lld\n", pooled, resumed,
                static_cast<long long>(naive.size()));

    frmSlideShow::unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const bool ok = pooled == kLists * kPerList && resumed == pooled && load < 1000.0 &&
                    save < 1000.0 && resume < 1000.0;
    return ok ? 0 : 1;
}
