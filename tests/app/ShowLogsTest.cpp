#include "TestSupport.h"

#include <QFile>
#include <QListWidget>
#include <QRegularExpression>
#include <memory>

namespace {

using ShowLogs = FormsFixture;

TEST_F(ShowLogs, OneSinkWritesTheFileAndTheScreenListOnlyWhileOn) {
    const QString path = install.filePath(QStringLiteral("Tessaview_debug_log.txt"));
    auto list = std::make_unique<QListWidget>();
    DebugLog& log = DebugLog::instance();
    log.Attach(list.get());
    BugLog(QStringLiteral("before the log is on"));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(list->count(), 0);

    log.Open(path);
    EXPECT_TRUE(DebugLogOn());
    BugLog(QStringLiteral("Initialization ... "));
    BugLog(QString());
    BugLog(QStringLiteral(" "));
    // The screen's list may go first; the file goes on.
    list.reset();
    BugLog(QStringLiteral("after the list"));
    log.SetOff();
    BugLog(QStringLiteral("after the end"));
    EXPECT_EQ(ReadFile(path), (path + QStringLiteral("Logfile opening .... \r\n"
                                                     "Initialization ... \r\n"
                                                     "\r\n"
                                                     " \r\n"
                                                     "after the list\r\n"))
                                  .toUtf8());
}

TEST_F(ShowLogs, TheShowsListFollowsTheLogEvenWithoutAFile) {
    InstallDir = install.filePath(QStringLiteral("no/such/folder"));
    frmSlideShow* show = frmSlideShow::instance();
    show->OpenDebugLog();
    EXPECT_TRUE(DebugLogOn());
    EXPECT_FALSE(DebugLog::instance().FileOpen());
    BugLog(QStringLiteral("first"));
    BugLog(QStringLiteral("still shown"));
    ASSERT_EQ(show->lstDebug->count(), 2);
    EXPECT_EQ(show->lstDebug->item(1)->text(), QStringLiteral("still shown"));
    // The newest line is selected so that the list scrolls along.
    EXPECT_EQ(show->lstDebug->currentRow(), 1);
}

TEST_F(ShowLogs, AShowWithTheLogOffTouchesNeitherFile) {
    const QString log = install.filePath(QStringLiteral("Tessaview_debug_log.txt"));
    const QString mem = install.filePath(QStringLiteral("MemLog.csv"));
    PutFile(log, "earlier\r\n");
    PutFile(mem, "earlier\r\n");
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    platform::AdvanceClock(5000);
    show->MainTimer_Timer();
    show->KeyTrap(27);
    frmConfig::instance()->StopShowTimer->fire();
    EXPECT_EQ(ReadFile(log), QByteArray("earlier\r\n"));
    EXPECT_EQ(ReadFile(mem), QByteArray("earlier\r\n"));
}

// The next show's log replaces the file rather than adding to it.
TEST_F(ShowLogs, MemoryLogEndsWithTheShowTheDebugLogWithTheFormWhoseNextReplacesIt) {
    const QString debugLog = install.filePath(QStringLiteral("Tessaview_debug_log.txt"));
    frmSlideShow* show = frmSlideShow::instance();
    show->OpenDebugLog();
    show->OpenMemlog();
    ASSERT_TRUE(show->MemLogOpen);
    show->MemLog(QStringLiteral("123456"));
    show->StoptheShow();
    EXPECT_FALSE(show->MemLogOpen);
    EXPECT_TRUE(DebugLog::instance().FileOpen());
    show->MemLog(QStringLiteral("after the stop"));
    BugLog(QStringLiteral("after the stop"));
    EXPECT_EQ(ReadFile(install.filePath(QStringLiteral("MemLog.csv"))), QByteArray("123456\r\n"));

    frmSlideShow::unload();
    EXPECT_FALSE(DebugLogOn());
    EXPECT_TRUE(ReadFile(debugLog).endsWith("after the stop\r\n"));

    frmSlideShow::instance()->OpenDebugLog();
    BugLog(QStringLiteral("second show"));
    frmSlideShow::instance()->CloseDebugLog();
    const QByteArray text = ReadFile(debugLog);
    EXPECT_FALSE(text.contains("after the stop"));
    EXPECT_TRUE(text.contains("second show"));
}

TEST_F(ShowLogs, FrameChangeLogsMemoryInUseInAWindowItsLabelCloses) {
    frmSlideShow* show = frmSlideShow::instance();
    show->StartShow();
    show->OpenDebugLog();
    show->OpenMemlog();
    platform::AdvanceClock(5000);
    show->MainTimer_Timer();
    show->CloseMemLog();
    const QByteArray mem = ReadFile(install.filePath(QStringLiteral("MemLog.csv")));
    ASSERT_TRUE(mem.endsWith("\r\n"));
    bool ok = false;
    EXPECT_GT(mem.trimmed().toLongLong(&ok), 0);
    EXPECT_TRUE(ok);
    const QRegularExpression logged(QStringLiteral("^Memory Page Size before PrepNextFrame : .*,"));
    EXPECT_FALSE(LogLines(show).filter(logged).isEmpty());

    // D shows the log's window; its label closes it without ending the show.
    show->KeyTrap(68);
    EXPECT_TRUE(show->picDeBug->isVisibleTo(show));
    show->lblCloseDebugWindow_Click();
    EXPECT_FALSE(show->picDeBug->isVisibleTo(show));
    EXPECT_FALSE(ExitShow);
}

} // namespace
