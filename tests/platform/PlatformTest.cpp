#include "platform/Clock.h"
#include "platform/FileListing.h"
#include "platform/Keys.h"
#include "platform/MemInfo.h"
#include "platform/Random.h"

#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(Listing, PatternsIgnoreCaseAndNamesComeSorted) {
    QTemporaryDir dir;
    for (const char* name : {"b.JPG", "a.jpeg", "C.Jpg", "notes.txt", "d.jpg.bak"}) {
        QFile f(dir.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    QDir(dir.path()).mkdir(QStringLiteral("folder.jpg"));
    QDir(dir.path()).mkdir(QStringLiteral("Another"));
    EXPECT_EQ(platform::FileList(dir.path(), QStringLiteral("*.JPG;*.jpeg")),
              QStringList({"a.jpeg", "b.JPG", "C.Jpg"}));
    EXPECT_EQ(platform::FileList(dir.path(), QStringLiteral("*.*")).size(), 5);
    EXPECT_TRUE(platform::FileList(dir.filePath(QStringLiteral("missing")), "*.*").isEmpty());
    EXPECT_EQ(platform::FolderList(dir.path()), QStringList({"Another", "folder.jpg"}));
    EXPECT_TRUE(platform::MatchesPatterns(QStringLiteral("background01.PNG"),
                                          QStringLiteral("background*.png")));
    EXPECT_FALSE(platform::MatchesPatterns(QStringLiteral("mybackground.png"),
                                           QStringLiteral("background*.png")));
}

TEST(Memory, CommittedMemoryIsReadInBytes) {
    EXPECT_EQ(platform::ParseCommittedBytes(QStringLiteral(
                  "MemTotal:       16384 kB\nCommitted_AS:    1234 kB\nVmallocTotal: 1 kB\n")),
              1234 * 1024);
    EXPECT_EQ(platform::ParseCommittedBytes(QStringLiteral("MemTotal: 1 kB\n")), -1);
    EXPECT_EQ(platform::ParseCommittedBytes(QStringLiteral("Committed_AS: lots\n")), -1);
    EXPECT_GT(platform::CommittedMemoryBytes(), 0);
}

TEST(Keys, QtKeysMapToTheShowsKeyCodes) {
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_Escape, Qt::NoModifier), 27);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_Left, Qt::NoModifier), 37);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_PageUp, Qt::NoModifier), 33);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_PageDown, Qt::NoModifier), 34);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_F1, Qt::NoModifier), 112);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_C, Qt::ShiftModifier), 67);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_Space, Qt::NoModifier), 32);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_4, Qt::KeypadModifier), 100);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_6, Qt::KeypadModifier), 102);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_4, Qt::NoModifier), 52);
}

TEST(Keys, StateFollowsPressAndRelease) {
    platform::ClearKeyStates();
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Right, Qt::NoModifier);
    platform::NoteKeyEvent(press);
    EXPECT_TRUE(platform::GetKeyState(39) & 0x8000);
    EXPECT_FALSE(platform::GetKeyState(37) & 0x8000);
    platform::NoteKeyEvent(release);
    EXPECT_FALSE(platform::GetKeyState(39) & 0x8000);
    EXPECT_EQ(platform::GetKeyState(999), 0);
}

TEST(Seams, TheClockCanBeSetAndCountsWholeSeconds) {
    platform::SetNow(QDateTime(QDate(2026, 3, 1), QTime(23, 59, 59, 900)));
    EXPECT_EQ(platform::Now().time(), QTime(23, 59, 59));
    EXPECT_NEAR(platform::SecondsSinceMidnight(), 86399.9, 1e-6);
    platform::AdvanceClock(200);
    EXPECT_EQ(platform::Today(), QDate(2026, 3, 2));
    platform::UseSystemClock();
    EXPECT_FALSE(platform::ClockIsSet());
}

TEST(Seams, FedRandomNumbersComeFirstThenGeneratedOnesStayInRange) {
    platform::FeedRandom({0.25, 0.999});
    EXPECT_EQ(platform::Rnd(), 0.25);
    EXPECT_EQ(platform::Rnd(), 0.999);
    EXPECT_EQ(platform::FedRandomLeft(), 0u);
    platform::Randomize();
    for (int i = 0; i < 1000; ++i) {
        const double r = platform::Rnd();
        ASSERT_GE(r, 0.0);
        ASSERT_LT(r, 1.0);
    }
}

} // namespace
