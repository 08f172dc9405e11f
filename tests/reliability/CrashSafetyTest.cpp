// Every file the program writes survives a kill at any moment: a writer process saves one of
// them over and over through the program's own routines and is killed with SIGKILL after a
// random while; the file must then be a whole copy of the last generation the writer reported
// or of the one it was writing, and the next start must read it. The number of kills per file
// is TESSAVIEW_CRASH_KILLS (default 100, 50 in a sanitizer build, whose processes start slowly).
#include "TestSupport.h"
#include "lists/ImageListFile.h"
#include "platform/SafeWrite.h"
#include "tools/CrashWriter.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <algorithm>
#include <csignal>
#include <optional>
#include <random>
#include <thread>

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr int kDefaultKills = 50;
#else
constexpr int kDefaultKills = 100;
#endif

int KillsPerFile() {
    bool ok = false;
    const int kills = qEnvironmentVariableIntValue("TESSAVIEW_CRASH_KILLS", &ok);
    return ok && kills > 0 ? kills : kDefaultKills;
}

QByteArray ReadAll(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    return file.readAll();
}

// The generation a text of the form "<prefix><g><rest>" names, or none.
std::optional<int> GenerationIn(const QString& text, const QString& prefix) {
    if (!text.startsWith(prefix)) return std::nullopt;
    const QString rest = text.mid(prefix.size());
    qsizetype digits = 0;
    while (digits < rest.size() && rest[digits].isDigit())
        ++digits;
    bool ok = false;
    const int g = rest.left(digits).toInt(&ok);
    return ok ? std::optional<int>(g) : std::nullopt;
}

class CrashSafety : public FormsFixture {
protected:
    // Starts the writer on one file, waits for its first generation, lets it write on for a
    // random while and kills it. The last generation it reported, or none if it never did.
    std::optional<int> WriteAndKill(
        const QString& file,
        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment()) {
        QProcess writer;
        writer.setProcessEnvironment(environment);
        writer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        writer.start(QStringLiteral(TESSAVIEW_CRASH_WRITER), {file, install.path()});
        if (!writer.waitForStarted(30000)) return std::nullopt;
        QByteArray out;
        const QDeadlineTimer firstGeneration(60000);
        while (!out.contains('\n') && !firstGeneration.hasExpired() &&
               writer.state() == QProcess::Running) {
            writer.waitForReadyRead(100);
            out += writer.readAllStandardOutput();
        }
        std::uniform_int_distribution<int> pause(0, 40000);
        std::this_thread::sleep_for(std::chrono::microseconds(pause(random)));
        ::kill(static_cast<pid_t>(writer.processId()), SIGKILL);
        writer.waitForFinished(30000);
        out += writer.readAllStandardOutput();
        // Only whole lines count: a number cut off by the kill was not reported.
        const QList<QByteArray> lines = out.left(out.lastIndexOf('\n')).split('\n');
        bool ok = false;
        const int last = lines.last().toInt(&ok);
        return ok ? std::optional<int>(last) : std::nullopt;
    }

    static bool OldOrNew(int found, int last) { return found == last || found == last + 1; }

    std::mt19937 random{std::random_device{}()};
};

TEST_F(CrashSafety, PreferencesSavedOnOkAreOldOrNewAndReadBack) {
    frmConfig* config = frmConfig::instance();
    for (int kill = 0; kill < KillsPerFile(); ++kill) {
        const std::optional<int> last = WriteAndKill(QStringLiteral("prefs"));
        ASSERT_TRUE(last) << "the writer never saved, kill " << kill;
        config->LoadPrefs();
        const int g = config->txtImageInterval->text().toInt();
        ASSERT_TRUE(OldOrNew(g, *last)) << "generation " << g << " after " << *last;
        ASSERT_EQ(config->txtKeyword->text(), crashwriter::KeywordOf(g));
        ASSERT_EQ(config->txtMusicPlaylist->text(), crashwriter::PlaylistOf(g));
        ASSERT_EQ(config->lstDSCFilter->count(), crashwriter::PrefixCountOf(g));
        // Whole: every line the reader took writes out again as the file stands.
        ASSERT_EQ(ReadAll(config->PrefsFileName), config->PrefsText().toUtf8());
    }
}

TEST_F(CrashSafety, RemainingListsSavedAtAStopAreOldOrNewAndReadBack) {
    frmSlideShow* show = frmSlideShow::instance();
    show->Initialize();
    for (int kill = 0; kill < KillsPerFile(); ++kill) {
        const std::optional<int> last = WriteAndKill(QStringLiteral("remain"));
        ASSERT_TRUE(last) << "the writer never saved, kill " << kill;
        show->ImageList.clear();
        show->ImageTitles.clear();
        show->ImageDescriptions.clear();
        show->LoadRemainingList(show->RemainingListPath[0]);

        const int g = show->CurrentImageTag;
        ASSERT_TRUE(OldOrNew(g, *last)) << "generation " << g << " after " << *last;
        ASSERT_EQ(show->CurrentImage, crashwriter::CurrentOf(g));
        ASSERT_EQ(show->ImageList.count(), crashwriter::ImageCountOf(g));
        for (int i = 0; i < show->ImageList.count(); ++i) {
            ASSERT_EQ(show->ImageList.text(i), crashwriter::ImageOf(g, i));
            ASSERT_EQ(show->ImageList.tag(i), i);
        }
        // The titles are saved after the pool and the descriptions after the titles.
        struct Side {
            const TaggedStringList& list;
            QString (*text)(int, int);
            QString prefix;
        };
        int later = g;
        for (const Side& side :
             {Side{show->ImageTitles, crashwriter::TitleOf, QStringLiteral("title ")},
              Side{show->ImageDescriptions, crashwriter::DescriptionOf,
                   QStringLiteral("description ")}}) {
            ASSERT_FALSE(side.list.isEmpty());
            const std::optional<int> s = GenerationIn(side.list.text(0), side.prefix);
            ASSERT_TRUE(s);
            ASSERT_TRUE(OldOrNew(*s, *last) && *s <= later) << *s << " after " << *last;
            ASSERT_EQ(side.list.count(), crashwriter::SideCountOf(*s));
            for (int i = 0; i < side.list.count(); ++i)
                ASSERT_EQ(side.list.text(i), side.text(*s, i));
            later = *s;
        }
    }
}

TEST_F(CrashSafety, ImageListRewrittenAfterARescanIsOldOrNewAndReadBack) {
    const QString file = crashwriter::ListFileOf(install.path());
    for (int kill = 0; kill < KillsPerFile(); ++kill) {
        // Each writer starts from a list it writes itself, before its first generation.
        const std::optional<int> last = WriteAndKill(QStringLiteral("list"));
        ASSERT_TRUE(last) << "the writer never saved, kill " << kill;
        QStringList lines;
        ASSERT_TRUE(lists::ReadTextLines(file, lines));
        const lists::LoadedImageList list = lists::ParseImageList(lines, file);
        ASSERT_TRUE(list.sawImagesMarker);
        ASSERT_EQ(list.row.title, QStringLiteral("Rescanned"));
        ASSERT_FALSE(list.images.isEmpty());
        const std::optional<int> g =
            GenerationIn(list.images.first(), QStringLiteral("IMAGE>/pics/g"));
        ASSERT_TRUE(g && OldOrNew(*g, *last));
        ASSERT_EQ(list.images, crashwriter::RecordsOf(*g));
        ASSERT_EQ(list.row.count, QString::number(crashwriter::RecordCountOf(*g)));
    }
    // A write cut short may leave its temporary file beside the list; the next save removes
    // those old enough to be nobody's work in progress.
    const QDir folder(QFileInfo(file).path());
    const QDateTime old =
        QDateTime::currentDateTime().addSecs(-platform::kStaleTemporarySeconds - 5);
    for (const QString& name : folder.entryList(QDir::Files | QDir::Hidden)) {
        QFile leftover(folder.filePath(name));
        ASSERT_TRUE(leftover.open(QIODevice::ReadWrite));
        ASSERT_TRUE(leftover.setFileTime(old, QFileDevice::FileModificationTime));
    }
    const QString young = file + QStringLiteral(".aB3dE9");
    QFile(young).open(QIODevice::WriteOnly);
    QStringList lines;
    ASSERT_TRUE(lists::ReadTextLines(file, lines));
    ASSERT_TRUE(lists::WriteTextLines(file, lines));
    EXPECT_EQ(folder.entryList(QDir::Files | QDir::Hidden),
              (QStringList{QFileInfo(file).fileName(), QFileInfo(young).fileName()}));
}

// "M" rewrites the whole list with the new line at its end: a kill never costs the lines that
// were there, nor leaves half a line.
TEST_F(CrashSafety, MarkedImagesGrowWholeAndKeepTheirLines) {
    const QString file = install.filePath(QStringLiteral("MarkedImages.txt"));
    for (int kill = 0; kill < KillsPerFile(); ++kill) {
        QFile::remove(file);
        const std::optional<int> last = WriteAndKill(QStringLiteral("marked"));
        ASSERT_TRUE(last) << "the writer never marked, kill " << kill;
        const QStringList lines = QString::fromUtf8(ReadAll(file)).split(QStringLiteral("\r\n"));
        ASSERT_EQ(lines.last(), QString()) << "the file ends with a whole line";
        const int n = static_cast<int>(lines.size()) - 1;
        ASSERT_TRUE(OldOrNew(n, *last)) << n << " lines after " << *last;
        for (int i = 0; i < n; ++i)
            ASSERT_EQ(lines[i], crashwriter::MarkedOf(i + 1));
    }
}

TEST_F(CrashSafety, SettingsStoreIsOldOrNewAndReadBack) {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString config = install.path() + QStringLiteral("/config");
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config);
    const QString store = config + QStringLiteral("/Marrowfield/Tessaview.ini");
    // A killed writer leaves the store's lock file behind, and the next writer waits up to a
    // second before it takes the lock over: a third of the kills keeps the test as short as
    // the others.
    const int kills = std::max(1, KillsPerFile() / 3);
    for (int kill = 0; kill < kills; ++kill) {
        const std::optional<int> last = WriteAndKill(QStringLiteral("settings"), environment);
        ASSERT_TRUE(last) << "the writer never saved, kill " << kill;
        const QByteArray bytes = ReadAll(store);
        ASSERT_TRUE(bytes.endsWith('\n')) << bytes.constData();
        // Read from a copy of its own: the store's reader keeps what it read of a path and
        // may not notice a file replaced within the same millisecond.
        const QString copy = install.path() + QStringLiteral("/read-%1.ini").arg(kill);
        ASSERT_TRUE(QFile::copy(store, copy));
        const QSettings read(copy, QSettings::IniFormat);
        bool ok = false;
        const int step = read.value(QStringLiteral("xFadeStepTime")).toString().toInt(&ok);
        ASSERT_TRUE(ok && OldOrNew(step, *last)) << bytes.constData();
        const std::optional<int> dir = GenerationIn(
            read.value(QStringLiteral("installDir")).toString(), QStringLiteral("/opt/tessaview-"));
        ASSERT_TRUE(dir && OldOrNew(*dir, *last) && *dir <= step) << bytes.constData();
        ASSERT_EQ(read.value(QStringLiteral("installDir")).toString(),
                  crashwriter::InstallDirOf(*dir));
    }
}

} // namespace
