// How much memory and time each reader of an outside file takes on a large file, next to the
// plainest read of the same file (all its bytes, decoded, split into lines). Each reader runs
// in a process of its own, started fresh, so that the peak it reaches is its own: the figure
// is the peak resident size during the read less the resident size just before it.
//
// ReaderMemoryBench           16 MB files: every reader under 64 MB and a second per megabyte
// ReaderMemoryBench --quick   2 MB files: proves each reader read the whole file it was given
//
// Exits non-zero when a reader did not read what it was given or broke a limit.
#include "BenchSupport.h"
#include "app/Forms.h"
#include "app/Resources.h"
#include "app/modMain.h"
#include "config/frmConfig.h"
#include "lists/ImageListFile.h"
#include "platform/IniFile.h"
#include "show/frmSlideShow.h"

#include <QApplication>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <cstdio>
#include <fstream>
#include <functional>
#include <optional>
#include <string>

namespace {

constexpr qint64 kFullBytes = 16 * 1024 * 1024;
constexpr qint64 kQuickBytes = 2 * 1024 * 1024;
constexpr long kMostKb = 64 * 1024;

// A field of /proc/self/status in kB ("VmRSS", "VmHWM"), or -1.
long StatusKb(const char* field) {
    std::ifstream status("/proc/self/status");
    const std::string prefix = std::string(field) + ':';
    for (std::string line; std::getline(status, line);)
        if (line.rfind(prefix, 0) == 0) return std::stol(line.substr(prefix.size()));
    return -1;
}

// Starts a new peak from the present resident size.
bool ResetPeak() {
    std::ofstream clear("/proc/self/clear_refs");
    clear << "5";
    clear.flush();
    return static_cast<bool>(clear);
}

// The photograph paths every generated file is made of: about 60 characters, all different.
QString PhotoPath(int i) {
    return QStringLiteral("/home/someone/Pictures/%1/Holiday in the hills/IMG_%2.JPG")
        .arg(2000 + i / 5000)
        .arg(i, 6, 10, QLatin1Char('0'));
}

// Lines made by line(i) after the header, until the file holds size bytes; the count of them.
int WriteFile(const QString& path, const QByteArray& header, qint64 size,
              const std::function<QByteArray(int)>& line) {
    QByteArray bytes = header;
    bytes.reserve(size + 256);
    int n = 0;
    while (bytes.size() < size)
        bytes += line(n++);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) return -1;
    return n;
}

struct Inputs {
    QString imageList, damagedList, remaining, prefs, ini;
    int records = 0, remainingRecords = 0;
};

Inputs MakeInputs(const QString& dir, qint64 size) {
    Inputs in;
    QDir().mkpath(dir + QStringLiteral("/Imagelists"));
    in.imageList = dir + QStringLiteral("/Imagelists/Large_1.tvl");
    QByteArray header = "Imagelist for Ferrin's Tessaview\r\n" + QByteArray(30, '-') +
                        "\r\nTITLE\r\nLarge\r\nPATH\r\n/home/someone/Pictures/\r\nCOUNT,0\r\n"
                        "LOCALORWEB,Local\r\nLASTSCAN,01/11/2026\r\nSCANINTERVAL,4000\r\n"
                        "OPTION,RECURSE==True\r\n";
    for (int i = 0; i < 4; ++i)
        header += "OPTION,none==none\r\n";
    header += "IMAGES\r\n";
    in.records = WriteFile(in.imageList, header, size,
                           [](int i) { return "IMAGE>" + PhotoPath(i).toUtf8() + "\r\n"; });

    // A damaged list: nothing but empty lines, and no "IMAGES" line to start the records.
    in.damagedList = dir + QStringLiteral("/Damaged.tvl");
    WriteFile(in.damagedList, "Imagelist for Ferrin's Tessaview\r\n", size,
              [](int) { return QByteArray(1024, '\n'); });

    in.remaining = dir + QStringLiteral("/remain.lst");
    in.remainingRecords = WriteFile(
        in.remaining,
        "CURRENTIMAGEPATH\r\n" + PhotoPath(0).toUtf8() +
            "\r\n\r\n\r\n 0 \r\nCURRENTRANDOMFOLDER\r\n\r\nREMAININGIMAGES\r\n",
        size, [](int i) { return QByteArray::number(i) + "||" + PhotoPath(i).toUtf8() + "\r\n"; });

    // A preferences file that goes on and on: another program's list appended to it.
    in.prefs = dir + QStringLiteral("/TView_Prefs.txt");
    WriteFile(in.prefs,
              "Tessaview Preferences File - written 01/01/2026 00:00:00\r\n6.0.1\r\n"
              "======================================================\r\nINTERVAL,7\r\n",
              size, [](int i) { return "FILTER," + QByteArray::number(i) + ",x\r\n"; });

    in.ini = dir + QStringLiteral("/exif.ini");
    WriteFile(in.ini, "[Orientation]\r\n1=Top, left\r\n", size, [](int i) {
        return i % 50 == 0
                   ? "[Section " + QByteArray::number(i) + "]\r\n"
                   : "Key" + QByteArray::number(i) + "=Value " + QByteArray::number(i) + "\r\n";
    });
    return in;
}

// The child: builds what the reader lives on, then reads file with it alone and prints
// "<peak growth kB> <ms> <items read>".
int RunReader(const QString& reader, const QString& file, const QString& install) {
    frmSlideShow* show = nullptr;
    frmConfig* config = nullptr;
    const bool windows = reader == QLatin1String("pool") || reader == QLatin1String("remaining") ||
                         reader == QLatin1String("prefs");
    if (windows) {
        // Built on an empty install of their own, so that nothing is read before the peak
        // starts; then pointed at the file.
        QTemporaryDir empty;
        InstallDir = empty.path();
        Forms::SetLastFormHandler([] {});
        config = frmConfig::instance();
        config->FormIsInitializing = true;
        config->Initialize();
        config->FormIsInitializing = false;
        show = frmSlideShow::instance();
        show->Initialize();
        InstallDir = install;
        config->PrefsFileName = file;
        for (QString& path : show->RemainingListPath)
            path = install + QStringLiteral("/none.lst");
    }

    long items = 0;
    // Every reader's result is counted inside the measured span, and its memory is let go
    // only after the peak is read.
    std::function<void()> read;
    QStringList lines;
    lists::LoadedImageList loaded;
    platform::IniFile ini;
    if (reader == QLatin1String("settings")) {
        read = [&] {
            loaded = lists::ReadImageList(file).value_or(lists::LoadedImageList{});
            items = loaded.images.size();
        };
    } else if (reader == QLatin1String("pool")) {
        read = [&] {
            show->LoadFullImageList();
            items = show->ImageList.count();
        };
    } else if (reader == QLatin1String("remaining")) {
        read = [&] {
            show->LoadRemainingList(file);
            items = show->ImageList.count();
        };
    } else if (reader == QLatin1String("prefs")) {
        read = [&] {
            config->LoadPrefs();
            // The one setting before the appended lines took.
            items = config->PrefsText().contains(QLatin1String("INTERVAL,7")) ? 1 : 0;
        };
    } else if (reader == QLatin1String("ini")) {
        read = [&] {
            if (ini.Load(file))
                items = ini.Value(QStringLiteral("Orientation"), QStringLiteral("1")).size();
        };
    } else if (reader == QLatin1String("plain")) {
        read = [&] {
            QFile f(file);
            if (f.open(QIODevice::ReadOnly))
                lines = QString::fromUtf8(f.readAll()).split(QStringLiteral("\r\n"));
            items = lines.size();
        };
    } else {
        return 2;
    }

    const long before = StatusKb("VmRSS");
    if (!ResetPeak() || before < 0) return 3;
    QElapsedTimer clock;
    clock.start();
    read();
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    const long peak = StatusKb("VmHWM");
    std::printf("%ld %.1f %ld\n", peak - before, ms, items);
    std::fflush(stdout);
    if (windows) {
        frmSlideShow::unload();
        frmConfig::unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return 0;
}

struct Figure {
    long kb = -1;
    double ms = -1;
    long items = -1;
};

Figure Measure(const QString& reader, const QString& file, const QString& install) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--reader"), reader, file, install});
    Figure figure;
    if (!child.waitForFinished(120000) || child.exitCode() != 0) {
        std::fprintf(stderr, "the %s reader's process failed\n", qPrintable(reader));
        child.kill();
        child.waitForFinished(5000);
        return figure;
    }
    const QStringList parts =
        QString::fromUtf8(child.readAllStandardOutput()).trimmed().split(QLatin1Char(' '));
    if (parts.size() == 3) {
        figure.kb = parts[0].toLong();
        figure.ms = parts[1].toDouble();
        figure.items = parts[2].toLong();
    }
    return figure;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 5 && std::string(argv[1]) == "--reader") {
        // Nothing of the user's own settings is read or written by the readers' windows.
        QTemporaryDir config;
        qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
        QApplication app(argc, argv);
        InitResources();
        return RunReader(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]),
                         QString::fromLocal8Bit(argv[4]));
    }
    QCoreApplication app(argc, argv);
    const std::optional<bool> quick = QuickMode(argc, argv);
    if (!quick) return 2;
    const qint64 size = *quick ? kQuickBytes : kFullBytes;
    QTemporaryDir install;
    if (!install.isValid()) return 1;
    const Inputs in = MakeInputs(install.path(), size);

    struct Row {
        const char* name;
        QString reader, file;
        long expected; // items the reader must report
        Figure figure;
    };
    std::vector<Row> rows{
        {"image list, settings window", QStringLiteral("settings"), in.imageList, in.records, {}},
        {"damaged list, settings window", QStringLiteral("settings"), in.damagedList, 0, {}},
        {"image list, show's pool", QStringLiteral("pool"), in.imageList, in.records, {}},
        {"remaining list", QStringLiteral("remaining"), in.remaining, in.remainingRecords, {}},
        {"preferences", QStringLiteral("prefs"), in.prefs, 1, {}},
        {"exif.ini", QStringLiteral("ini"), in.ini, 9, {}},
        // The header's 16 lines, the records and the empty piece after the last line end.
        {"plain read of the image list",
         QStringLiteral("plain"),
         in.imageList,
         in.records + 17,
         {}},
    };
    for (Row& row : rows)
        row.figure = Measure(row.reader, row.file, install.path());

    const double megabytes = static_cast<double>(size) / (1024.0 * 1024.0);
    std::printf("Readers of %.0f MB files (peak resident growth while reading)\n", megabytes);
    std::printf("%-32s %10s %10s %10s\n", "", "MB", "ms", "items");
    for (const Row& row : rows)
        std::printf("%-32s %10.1f %10.1f %10ld\n", row.name,
                    static_cast<double>(row.figure.kb) / 1024.0, row.figure.ms, row.figure.items);

    Checks check;
    for (const Row& row : rows) {
        const std::string name = row.name;
        check.expect(row.figure.items == row.expected, (name + ": read all it was given").c_str());
        check.expect(row.figure.kb >= 0 && row.figure.ms > 0.0,
                     (name + ": memory and time measured").c_str());
        if (row.reader == QLatin1String("plain")) continue;
        check.expect(row.figure.kb <= kMostKb, (name + ": under 64 MB").c_str());
        // A second per megabyte, and nothing of speed from 2 MB on a busy machine.
        if (!*quick)
            check.expect(row.figure.ms <= 1000.0 * megabytes,
                         (name + ": under a second per megabyte").c_str());
    }
    // The readers of records must be seen to hold them: a peak of nothing would mean the
    // figure measured something else than the read.
    for (const Row& row : rows)
        if (row.expected > 1000)
            check.expect(row.figure.kb > size / 1024,
                         (std::string(row.name) + ": peak holds the records").c_str());
    return check.ok() ? 0 : 1;
}
