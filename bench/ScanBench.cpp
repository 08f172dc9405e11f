// What the folder scan's walk costs on a photo tree, and how soon it answers an abort. Prints,
// side by side, medians over rounds taken in turns on a warm cache:
// - a plain readdir walk that only lists and counts image names (the floor: no walk can do less);
// - ours, producing the sorted records;
// - the listing-based walk (the file listing and folder listing of each folder, as a plain
//   toolkit port would do it), whose records must equal ours;
// - a recursive directory iterator with name filters (unsorted, for scale);
// - the scan as the program runs it, through the scanning window (offscreen), labels and all;
// then how long an abort takes to be answered inside one folder of 50,000 files, when the
// request arrives just after the walk last asked, and through the window: the longest the
// window goes without taking events while it reads that folder, and how soon a press of its
// abort button ends the scan.
// The full run builds 100,000 files in 2,200 folders; --quick 5,000 in 110, with the same checks
// apart from the ratio to the floor.
#include "BenchSupport.h"
#include "lists/FolderWalk.h"
#include "lists/frmScanning.h"
#include "platform/FileListing.h"

#include <QApplication>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <functional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

// Runs each path once per round, in turns, so that a slow spell falls on all of them.
std::vector<double> Medians(int rounds, const std::vector<std::function<void()>>& paths) {
    std::vector<std::vector<double>> times(paths.size());
    for (int round = 0; round < rounds; ++round)
        for (std::size_t p = 0; p < paths.size(); ++p) {
            QElapsedTimer clock;
            clock.start();
            paths[p]();
            times[p].push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
        }
    std::vector<double> out;
    for (auto& t : times)
        out.push_back(Median(t));
    return out;
}

bool Touch(const QByteArray& path) {
    const int fd = ::open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (fd < 0) return false;
    ::close(fd);
    return true;
}

// Names as cameras, scanners and people leave them: mixed-case endings, a few that are not
// images, now and then a blank or a letter beyond ASCII.
QByteArray FileName(int i) {
    static const std::pair<const char*, const char*> forms[] = {
        {"IMG_", ".JPG"},  {"img_", ".jpg"},   {"DSC", ".JPEG"},   {"Photo ", ".png"},
        {"scan-", ".TIF"}, {"Ärger ", ".Jpg"}, {"pano_", ".tiff"}, {"IMG_", ".JPG.xmp"},
        {"clip", ".gif"},  {"notes ", ".txt"}, {"old", ".BMP"}};
    const auto& [head, tail] = forms[i % 11];
    return head + QByteArray::number(i).rightJustified(5, '0') + tail;
}

// files spread evenly over folders: a top folder, a first level, and the rest below it.
int MakeTree(const QByteArray& top, int folders, int files) {
    std::vector<QByteArray> paths{top};
    const int firstLevel = std::max(1, folders / 110);
    for (int i = 0; i < firstLevel && static_cast<int>(paths.size()) < folders; ++i)
        paths.push_back(top + "/Year " + QByteArray::number(2000 + i));
    for (int i = 0; static_cast<int>(paths.size()) < folders; ++i)
        paths.push_back(paths[static_cast<std::size_t>(1 + i % firstLevel)] + "/event-" +
                        QByteArray::number(i).rightJustified(4, '0'));
    int made = 0;
    for (const QByteArray& p : paths)
        if (::mkdir(p.constData(), 0755) != 0 && p != top) return -1;
    for (int i = 0; i < files; ++i)
        made += Touch(paths[static_cast<std::size_t>(i) % paths.size()] + '/' + FileName(i));
    return made;
}

// The floor: every folder opened and read once, image names counted, nothing kept.
qsizetype ReaddirWalk(const QByteArray& top) {
    qsizetype images = 0;
    std::deque<QByteArray> queue{top};
    while (!queue.empty()) {
        const QByteArray path = std::move(queue.front());
        queue.pop_front();
        DIR* dir = opendir(path.constData());
        if (dir == nullptr) continue;
        while (const dirent* e = readdir(dir)) {
            if (e->d_type == DT_DIR) {
                if (std::strcmp(e->d_name, ".") != 0 && std::strcmp(e->d_name, "..") != 0)
                    queue.push_back(path + '/' + e->d_name);
            } else if (lists::IsScanImageName(e->d_name)) {
                ++images;
            }
        }
        closedir(dir);
    }
    return images;
}

// The plain port: the two listings of each folder, breadth first.
QStringList ListingWalk(const QString& top) {
    QStringList list;
    QStringList queue{top};
    const QString pattern = QString::fromLatin1(lists::kScanPattern);
    while (!queue.isEmpty()) {
        const QString path = queue.takeFirst();
        for (const QString& name : platform::FolderList(path))
            queue << path + '/' + name;
        for (const QString& name : platform::FileList(path, pattern))
            list << QStringLiteral("IMAGE>") + path + '/' + name;
    }
    return list;
}

qsizetype IteratorWalk(const QString& top) {
    const QStringList filters = {"*.jpg", "*.bmp", "*.gif", "*.tif", "*.tiff", "*.jpeg", "*.png"};
    QDirIterator it(top, filters, QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    qsizetype n = 0;
    while (it.hasNext()) {
        it.next();
        ++n;
    }
    return n;
}

} // namespace

int main(int argc, char** argv) {
    const std::optional<bool> mode = QuickMode(argc, argv);
    if (!mode) return 2;
    const bool quick = *mode;
    Checks checks;
    QTemporaryDir dir;
    checks.expect(dir.isValid(), "a temporary folder");
    if (!checks.ok()) return 1;
    UseOffscreenScreen(dir, QSize(1920, 1080));
    // The offscreen platform says so each time the window is brought to the front.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (!text.contains(QLatin1String("does not support raise")))
            std::fprintf(stderr, "%s%s\n", type >= QtWarningMsg ? "warning: " : "",
                         qPrintable(text));
    });
    QApplication app(argc, argv);

    const int folders = quick ? 110 : 2200;
    const int files = quick ? 5000 : 100000;
    const int rounds = quick ? 3 : 7;
    const QByteArray treeBytes = QFile::encodeName(dir.path()) + "/tree";
    const QString tree = QFile::decodeName(treeBytes);
    const int made = MakeTree(treeBytes, folders, files);
    checks.expect(made == files, "the tree was built");
    std::printf("Tree: %d files in %d folders under %s\n", made, folders, qPrintable(tree));

    // Warm the cache, and see that all walks find the same.
    QStringList ours;
    lists::WalkImageFolders(tree, true, ours);
    const QStringList listing = ListingWalk(tree);
    const qsizetype floorCount = ReaddirWalk(treeBytes);
    const qsizetype iteratorCount = IteratorWalk(tree);
    std::printf("Records: ours %lld, listing-based %lld; image names: readdir %lld, iterator "
                "%lld\n",
                static_cast<long long>(ours.size()), static_cast<long long>(listing.size()),
                static_cast<long long>(floorCount), static_cast<long long>(iteratorCount));
    checks.expect(!ours.isEmpty(), "our walk found records");
    checks.expect(ours == listing, "our records equal the listing-based walk's, in order");
    checks.expect(ours.size() == floorCount && ours.size() == iteratorCount,
                  "all walks count the same images");

    // The scan through its window, as the settings window and the show run it.
    auto windowScan = [](const QString& folder, bool recurse, QStringList& list) {
        frmScanning* scanning = frmScanning::instance();
        int count = 0;
        bool aborted = false;
        scanning->RescanFolder(folder, recurse, list, count, aborted);
        scanning->PauseTimer_Timer();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return aborted;
    };
    QStringList throughWindow;
    checks.expect(!windowScan(tree, true, throughWindow), "the window's scan ended by itself");
    checks.expect(throughWindow == ours, "the window's scan gives the walk's records");

    qsizetype sink = 0;
    const std::vector<double> walk = Medians(
        rounds, {[&] { sink += ReaddirWalk(treeBytes); },
                 [&] {
                     QStringList list;
                     sink += lists::WalkImageFolders(tree, true, list).count;
                 },
                 [&] { sink += ListingWalk(tree).size(); }, [&] { sink += IteratorWalk(tree); },
                 [&] {
                     QStringList list;
                     windowScan(tree, true, list);
                     sink += list.size();
                 }});
    std::printf("Whole tree, recursive (median of %d):\n", rounds);
    std::printf("  readdir, listing only (floor): %8.2f ms\n", walk[0]);
    std::printf("  ours, sorted records:          %8.2f ms  (x%.2f the floor)\n", walk[1],
                walk[1] / walk[0]);
    std::printf("  listing-based walk:            %8.2f ms  (x%.2f the time of ours)\n", walk[2],
                walk[2] / walk[1]);
    std::printf("  directory iterator, unsorted:  %8.2f ms  (x%.2f the time of ours)\n", walk[3],
                walk[3] / walk[1]);
    std::printf("  ours through the scan window:  %8.2f ms  (x%.2f the floor)\n", walk[4],
                walk[4] / walk[0]);
    checks.expect(sink == 5 * rounds * ours.size(), "every timed walk counted every image");
    checks.expect(walk[0] > 0 && walk[1] > 0 && walk[2] > 0 && walk[4] > 0,
                  "the walks took measurable time");
    if (!quick) {
        checks.expect(walk[1] <= 2 * walk[0], "ours within twice the plain readdir walk");
        checks.expect(walk[4] <= 2 * walk[0], "the window's scan within twice the readdir walk");
    }

    // --- An abort inside one large folder ----------------------------------------------------
    const int bigFiles = 50000;
    const QByteArray bigBytes = QFile::encodeName(dir.path()) + "/big";
    checks.expect(::mkdir(bigBytes.constData(), 0755) == 0, "the large folder was made");
    int bigMade = 0;
    for (int i = 0; i < bigFiles; ++i)
        bigMade += Touch(bigBytes + '/' + FileName(i));
    checks.expect(bigMade == bigFiles, "the large folder was filled");
    const QString big = QFile::decodeName(bigBytes);
    QStringList whole;
    QElapsedTimer wholeClock;
    wholeClock.start();
    lists::WalkImageFolders(big, false, whole);
    const double wholeMs = static_cast<double>(wholeClock.nsecsElapsed()) / 1e6;

    // The request arrives just after the walk asked, at a different point of the folder each
    // time: the worst wait there is, until the next question and the way out.
    const int checksInFolder = bigFiles / lists::kEntriesBetweenAbortChecks;
    std::vector<double> latencies;
    int answered = 0;
    for (int k = 1; k <= 9; ++k) {
        const int requestAt = k * checksInFolder / 10;
        int calls = 0;
        bool requested = false;
        QElapsedTimer sinceRequest;
        lists::FolderWalkHooks hooks;
        hooks.abortRequested = [&] {
            if (requested) return true;
            if (++calls == requestAt) {
                requested = true;
                sinceRequest.start();
            }
            return false;
        };
        QStringList list;
        const lists::FolderWalkResult result = lists::WalkImageFolders(big, false, list, hooks);
        if (requested && result.aborted && list.isEmpty()) {
            ++answered;
            latencies.push_back(static_cast<double>(sinceRequest.nsecsElapsed()) / 1e6);
        }
    }
    const double worst =
        latencies.empty() ? 0 : *std::max_element(latencies.begin(), latencies.end());
    std::printf("Abort inside one folder of %d files (%lld records when not aborted):\n", bigFiles,
                static_cast<long long>(whole.size()));
    std::printf("  answered in: median %.3f ms, worst %.3f ms of %d requests\n", Median(latencies),
                worst, answered);
    std::printf("  asked only between folders, it would wait up to %.1f ms\n", wholeMs);
    checks.expect(answered == 9, "every abort inside the folder was answered there");
    checks.expect(!whole.isEmpty(), "the large folder gave records");
    checks.expect(worst < 500, "an abort answered within 500 ms");

    // --- The same through the window: its longest time deaf, and its abort button ------------
    // A timer of no interval runs each time the window takes events.
    QElapsedTimer scanClock;
    std::vector<qint64> taken;
    QTimer ticker;
    ticker.setInterval(0);
    QObject::connect(&ticker, &QTimer::timeout, [&] { taken.push_back(scanClock.nsecsElapsed()); });
    ticker.start();
    scanClock.start();
    QStringList windowList;
    const bool stopped = windowScan(big, false, windowList);
    const qint64 scanEnd = scanClock.nsecsElapsed();
    ticker.stop();
    qint64 deaf = 0;
    qint64 previous = 0;
    for (qint64 t : taken) {
        deaf = std::max(deaf, t - previous);
        previous = t;
    }
    deaf = std::max(deaf, scanEnd - previous);
    checks.expect(!stopped && windowList == whole, "the window read the large folder whole");
    checks.expect(!taken.empty(), "the window took events during the scan");

    // The button pressed the first time the window takes events, a few hundred names into the
    // folder: a person's press waits at most the longest deaf spell above on top of this.
    std::vector<double> pressLatencies;
    for (int k = 1; k <= 5; ++k) {
        QElapsedTimer sincePress;
        QTimer::singleShot(0, [&] {
            sincePress.start();
            frmScanning::instance()->cmdAbortScan->click();
        });
        QStringList list;
        const bool aborted = windowScan(big, false, list);
        if (aborted && sincePress.isValid() && list.isEmpty())
            pressLatencies.push_back(static_cast<double>(sincePress.nsecsElapsed()) / 1e6);
        // A press that came after the scan must not reach the next one.
        QCoreApplication::processEvents();
    }
    std::printf("Through the scanning window, one folder of %d files (%.1f ms):\n", bigFiles,
                static_cast<double>(scanEnd) / 1e6);
    std::printf("  events taken %zu times, longest without: %.1f ms\n", taken.size(),
                static_cast<double>(deaf) / 1e6);
    std::printf("  abort button to the end of the scan: median %.3f ms of %zu presses\n",
                Median(pressLatencies), pressLatencies.size());
    checks.expect(static_cast<double>(deaf) / 1e6 < 500, "the window never deaf for 500 ms");
    checks.expect(pressLatencies.size() == 5, "every abort press inside the folder ended the scan");
    return checks.ok() ? 0 : 1;
}
