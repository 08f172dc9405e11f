// How long the show takes to build a large pool from its list files, to save it as the
// remaining list and to take it up again, next to the plainest way of doing the same with a
// QStringList. Prints the median of several runs in milliseconds.
//
// PoolBench           30 list files of 1,000 images, 7 runs
// PoolBench --quick   3 list files of 100 images, 3 runs: proves each step does its work
//
// Exits non-zero when a step did not do what it is timed for.
#include "BenchSupport.h"
#include "app/Resources.h"
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

struct Sizes {
    int lists;
    int perList;
    int runs;
    int entries() const { return lists * perList; }
};

constexpr Sizes kFull{30, 1000, 7};
constexpr Sizes kQuick{3, 100, 3};

void WriteLists(const QString& folder, const Sizes& sizes) {
    QDir().mkpath(folder);
    for (int l = 0; l < sizes.lists; ++l) {
        QString text = QStringLiteral("Imagelist for Ferrin's Tessaview\r\n") + QString(30, '-') +
                       QStringLiteral("\r\nTITLE\r\nAlbum %1\r\nPATH\r\n/photos/album%1/\r\n"
                                      "COUNT,%2\r\nLOCALORWEB,Local\r\nLASTSCAN,2026-11-01\r\n"
                                      "SCANINTERVAL,4000\r\nOPTION,RECURSE==True\r\n")
                           .arg(l)
                           .arg(sizes.perList);
        for (int i = 0; i < 4; ++i)
            text += QStringLiteral("OPTION,none==none\r\n");
        text += QStringLiteral("IMAGES\r\n");
        for (int i = 0; i < sizes.perList; ++i)
            text += QStringLiteral("IMAGE>/photos/album%1/holiday/DSC_%2.JPG\r\n").arg(l).arg(i);
        QFile file(folder + QStringLiteral("/album_%1.tvl").arg(l, 2, 10, QLatin1Char('0')));
        if (file.open(QIODevice::WriteOnly)) file.write(text.toUtf8());
    }
}

double MedianMs(int runs, const std::function<void()>& setUp, const std::function<void()>& work) {
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        setUp();
        QElapsedTimer clock;
        clock.start();
        work();
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

QStringList FileLines(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
}

// The images a saved remaining list holds: the lines after its REMAININGIMAGES line, or -1
// when there is no such file.
int SavedEntries(const QString& path) {
    if (!QFile::exists(path)) return -1;
    const QStringList lines = FileLines(path);
    const auto start = lines.indexOf(QStringLiteral("REMAININGIMAGES"));
    return start < 0 ? 0 : static_cast<int>(lines.size() - start - 1);
}

bool SameItems(const TaggedStringList& a, const TaggedStringList& b) {
    return std::equal(a.items().begin(), a.items().end(), b.items().begin(), b.items().end(),
                      [](const TaggedStringList::Item& x, const TaggedStringList::Item& y) {
                          return x.tag == y.tag && x.text == y.text;
                      });
}

void NaiveSave(const QString& path, const QStringList& pool) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) file.write(pool.join(QStringLiteral("\r\n")).toUtf8());
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    InitResources();
    const QStringList args = QCoreApplication::arguments().mid(1);
    const bool quick = args == QStringList{QStringLiteral("--quick")};
    if (!quick && !args.isEmpty()) {
        std::fprintf(stderr, "usage: PoolBench [--quick]\n");
        return 2;
    }
    const Sizes sizes = quick ? kQuick : kFull;
    const int entries = sizes.entries();

    QTemporaryDir install;
    if (!install.isValid()) return 1;
    InstallDir = install.path();
    const QString lists = install.path() + QStringLiteral("/Imagelists");
    WriteLists(lists, sizes);

    frmSlideShow* show = frmSlideShow::instance();
    const QString remain = install.path() + QStringLiteral("/remain.lst");
    show->RemainingListPath[0] = remain;
    show->RemainingListPath[1] = install.path() + QStringLiteral("/remain-t.lst");
    show->RemainingListPath[2] = install.path() + QStringLiteral("/remain-d.lst");
    show->CurrentImage = QStringLiteral("/photos/album0/holiday/DSC_0.JPG");

    const auto nothing = [] {};
    // Each run starts with an empty queue and pool, as a show does.
    const auto emptyShow = [&] {
        show->ShowList.clear();
        show->CaptionsList.clear();
        show->ImageList.clear();
        show->ImageTitles.clear();
        show->ImageDescriptions.clear();
        show->ResumedFromRemainingList = false;
    };
    const auto startAfresh = [&] {
        for (const QString& path : show->RemainingListPath)
            QFile::remove(path);
        emptyShow();
    };
    // The pool is read the way a show starts: with no remaining list on disk every list file
    // is read, and the show counts its pool as read, which the save below depends on.
    const double load = MedianMs(sizes.runs, startAfresh, [&] { show->LoadImageLists(); });
    const int pooled = show->ImageList.count();
    const bool loadedFresh = show->PoolLoaded && !show->ResumedFromRemainingList;
    const TaggedStringList pool = show->ImageList;

    const bool noFileBeforeSave = !QFile::exists(remain);
    const double save = MedianMs(sizes.runs, nothing, [&] { show->SaveRemainingList(); });
    const int saved = SavedEntries(remain);

    // And taken up the way the next show starts, now that the remaining list is there.
    const double resume = MedianMs(sizes.runs, emptyShow, [&] { show->LoadImageLists(); });
    const int resumed = show->ImageList.count();
    const bool resumedFromFile = show->ResumedFromRemainingList;
    const bool resumedSame = SameItems(pool, show->ImageList);

    QStringList naive;
    const double naiveLoad = MedianMs(sizes.runs, nothing, [&] { naive = PlainListRead(lists); });
    const QString naivePath = install.path() + QStringLiteral("/naive.lst");
    const double naiveSave = MedianMs(sizes.runs, nothing, [&] { NaiveSave(naivePath, naive); });
    const auto naiveSaved = FileLines(naivePath).size();

    std::printf("Image pool of %d list files, %d entries (median of %d runs)\n", sizes.lists,
                entries, sizes.runs);
    std::printf("%-34s %10s %14s\n", "", "pool (ms)", "QStringList (ms)");
    std::printf("%-34s %10.2f %14.2f\n", "load from the list files", load, naiveLoad);
    std::printf("%-34s %10.2f %14.2f\n", "save as the remaining list", save, naiveSave);
    std::printf("%-34s %10.2f %14s\n", "take up the remaining list", resume, "-");
    std::printf("entries: pool %d, saved %d, resumed %d, QStringList %lld, saved %lld\n", pooled,
                saved, resumed, static_cast<long long>(naive.size()),
                static_cast<long long>(naiveSaved));

    frmSlideShow::unload();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    Checks check;
    check.expect(pooled == entries, "the pool holds every image of the list files");
    check.expect(loadedFresh, "the pool was read from the list files and counted as read");
    check.expect(noFileBeforeSave, "no remaining list was on disk before the save");
    check.expect(saved == entries, "the saved remaining list holds every image of the pool");
    check.expect(resumedFromFile, "the resume took up the saved remaining list");
    check.expect(resumed == entries, "the resume gave back every image of the pool");
    check.expect(resumedSame, "the resume gave back the pool's images and keys in order");
    check.expect(naive.size() == entries, "the QStringList holds every image of the list files");
    check.expect(naiveSaved == entries, "the saved QStringList holds every image");
    check.expect(load > 0.0 && save > 0.0 && resume > 0.0 && naiveLoad > 0.0 && naiveSave > 0.0,
                 "every step took some time");
    // A few hundred entries on a machine busy with other work say nothing about speed: the
    // quick run only proves that each step does what it is timed for.
    if (!quick)
        check.expect(load < 1000.0 && save < 1000.0 && resume < 1000.0,
                     "the pool's load, save and resume each take under a second");
    return check.ok() ? 0 : 1;
}
