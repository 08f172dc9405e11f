#include "platform/FileListing.h"
#include "platform/Keys.h"
#include "platform/MemInfo.h"

#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <initializer_list>

namespace {

// A folder filled with empty files and sub-folders.
class FileListing : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(dir.isValid()); }

    void Files(std::initializer_list<const char*> names) {
        for (const char* name : names) {
            QFile f(dir.filePath(QString::fromUtf8(name)));
            ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << name;
        }
    }
    void Folders(std::initializer_list<const char*> names) {
        for (const char* name : names)
            ASSERT_TRUE(QDir(dir.path()).mkpath(QString::fromUtf8(name))) << name;
    }

    QTemporaryDir dir;
};

TEST_F(FileListing, PatternsMatchIgnoringCaseAndFoldersAreNotFiles) {
    Files({"b.JPG", "a.jpeg", "C.Jpg", "notes.txt", "d.jpg.bak", "e.jpeg~", "jpg", "f.jpgx"});
    Folders({"folder.jpg", "sub"});
    Files({"sub/inner.jpg"});
    EXPECT_EQ(platform::FileList(dir.path(), QStringLiteral("*.JPG;*.jpeg")),
              QStringList({"a.jpeg", "b.JPG", "C.Jpg"}));
    EXPECT_EQ(platform::FileList(dir.path() + "/", QStringLiteral("*.jpg")),
              QStringList({"b.JPG", "C.Jpg"}));
}

TEST_F(FileListing, BlanksAndEmptyPiecesInThePatternListDoNotMatter) {
    Files({"a.png", "b.GIF", "c.bmp"});
    EXPECT_EQ(platform::FileList(dir.path(), QStringLiteral(" *.png ; ;*.gif;")),
              QStringList({"a.png", "b.GIF"}));
    EXPECT_TRUE(platform::FileList(dir.path(), QString()).isEmpty());
}

TEST_F(FileListing, NamesAreSortedIgnoringCase) {
    Files({"b.jpg", "A.jpg", "c.jpg", "B2.jpg", "a1.jpg", "Z.jpg"});
    EXPECT_EQ(platform::FileList(dir.path(), QStringLiteral("*.jpg")),
              QStringList({"A.jpg", "a1.jpg", "b.jpg", "B2.jpg", "c.jpg", "Z.jpg"}));
}

TEST_F(FileListing, NamesWithCharactersSpecialToPatternsStillMatch) {
    Files({"a+b (1).jpg", "[x].jpg", "cost $5^2.jpg", "dot.dot.jpg"});
    EXPECT_EQ(platform::FileList(dir.path(), QStringLiteral("*.jpg")).size(), 4);
    EXPECT_TRUE(platform::MatchesPatterns(QStringLiteral("ab.jpg"), QStringLiteral("a?.jpg")));
    EXPECT_FALSE(platform::MatchesPatterns(QStringLiteral("abc.jpg"), QStringLiteral("a?.jpg")));
    EXPECT_TRUE(platform::MatchesPatterns(QStringLiteral("IMG_0001.JPG"),
                                          QStringLiteral("*.bmp;img_*.jpg")));
    EXPECT_FALSE(
        platform::MatchesPatterns(QStringLiteral("my_img.jpg"), QStringLiteral("img*.jpg")));
}

TEST_F(FileListing, AFolderThatIsNotThereListsNothing) {
    Files({"a.jpg"});
    EXPECT_TRUE(platform::FileList(dir.filePath(QStringLiteral("missing")), "*.*").isEmpty());
    EXPECT_TRUE(platform::FolderList(dir.filePath(QStringLiteral("missing"))).isEmpty());
    // A file is not a folder, and no folder at all is not the current one.
    EXPECT_TRUE(platform::FileList(dir.filePath(QStringLiteral("a.jpg")), "*.*").isEmpty());
    EXPECT_TRUE(platform::FileList(QString(), "*.*").isEmpty());
    EXPECT_TRUE(platform::FolderList(QString()).isEmpty());
}

TEST_F(FileListing, FolderListHoldsOnlyTheDirectSubFoldersSorted) {
    Folders({"beta", "Alpha", "gamma/deeper", "Beta2"});
    Files({"file.jpg", "gamma/inside.jpg"});
    EXPECT_EQ(platform::FolderList(dir.path()), QStringList({"Alpha", "beta", "Beta2", "gamma"}));
    EXPECT_EQ(platform::FolderList(dir.filePath(QStringLiteral("gamma"))), QStringList({"deeper"}));
    EXPECT_TRUE(platform::FolderList(dir.filePath(QStringLiteral("Alpha"))).isEmpty());
}

TEST(MemInfoParse, CommittedMemoryIsTakenFromItsOwnLineInBytes) {
    const QString sample = QStringLiteral("MemTotal:       16303428 kB\n"
                                          "MemFree:         1021496 kB\n"
                                          "CommitLimit:     8151712 kB\n"
                                          "Committed_AS:    1234 kB\n"
                                          "VmallocTotal:   34359738367 kB\n");
    EXPECT_EQ(platform::ParseCommittedBytes(sample), 1263616);
    EXPECT_EQ(platform::ParseCommittedBytes(QStringLiteral("Committed_AS:\t99 kB\r\n")), 99 * 1024);
}

TEST(MemInfoParse, AMissingOrUnreadableLineGivesMinusOne) {
    for (const char* text : {"", "MemTotal: 1 kB\n", "Committed_AS: lots kB\n", "Committed_AS:\n",
                             "Committed_AS: -5 kB\n"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(platform::ParseCommittedBytes(QString::fromLatin1(text)), -1);
    }
}

TEST(MemInfoParse, ThisMachineReportsCommittedMemory) {
    EXPECT_GT(platform::CommittedMemoryBytes(), 0);
}

TEST(VirtualKeys, QtKeysMapToTheClassicCodes) {
    struct Case {
        int key;
        int code;
    };
    const Case cases[] = {
        {Qt::Key_Escape, 27}, {Qt::Key_Left, 37},   {Qt::Key_Up, 38},       {Qt::Key_Right, 39},
        {Qt::Key_Down, 40},   {Qt::Key_PageUp, 33}, {Qt::Key_PageDown, 34}, {Qt::Key_Home, 36},
        {Qt::Key_End, 35},    {Qt::Key_Space, 32},  {Qt::Key_Return, 13},   {Qt::Key_Enter, 13},
        {Qt::Key_Delete, 46}, {Qt::Key_F1, 112},    {Qt::Key_F12, 123},     {Qt::Key_A, 65},
        {Qt::Key_C, 67},      {Qt::Key_Z, 90},      {Qt::Key_0, 48},        {Qt::Key_9, 57},
        {Qt::Key_Launch0, 0}, {Qt::Key_unknown, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.key);
        EXPECT_EQ(platform::VirtualKeyCode(c.key, Qt::NoModifier), c.code);
        // Shift, Ctrl and Alt do not change which key it was.
        EXPECT_EQ(platform::VirtualKeyCode(c.key, Qt::ShiftModifier | Qt::ControlModifier |
                                                      Qt::AltModifier),
                  c.code);
    }
}

TEST(VirtualKeys, TheKeypadHasCodesOfItsOwn) {
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_4, Qt::KeypadModifier), 100);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_6, Qt::KeypadModifier), 102);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_0, Qt::KeypadModifier), 96);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_9, Qt::KeypadModifier), 105);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_4, Qt::KeypadModifier | Qt::ShiftModifier), 100);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_Enter, Qt::KeypadModifier), 13);
    // The same digits on the main keyboard.
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_4, Qt::NoModifier), 52);
    EXPECT_EQ(platform::VirtualKeyCode(Qt::Key_6, Qt::NoModifier), 54);

    const QKeyEvent keypad(QEvent::KeyPress, Qt::Key_4, Qt::KeypadModifier);
    const QKeyEvent main(QEvent::KeyPress, Qt::Key_4, Qt::NoModifier);
    EXPECT_EQ(platform::VirtualKeyCode(keypad), 100);
    EXPECT_EQ(platform::VirtualKeyCode(main), 52);
}

// Key states are shared by the whole program; every test starts and ends with none down.
class KeyStates : public ::testing::Test {
protected:
    void SetUp() override { platform::ClearKeyStates(); }
    void TearDown() override { platform::ClearKeyStates(); }

    static void Press(int key, Qt::KeyboardModifiers mods = Qt::NoModifier) {
        platform::NoteKeyEvent(QKeyEvent(QEvent::KeyPress, key, mods));
    }
    static void Release(int key, Qt::KeyboardModifiers mods = Qt::NoModifier,
                        bool autoRepeat = false) {
        platform::NoteKeyEvent(QKeyEvent(QEvent::KeyRelease, key, mods, QString(), autoRepeat));
    }
    static bool Down(int code) { return (platform::GetKeyState(code) & 0x8000) != 0; }
};

TEST_F(KeyStates, TheHighBitIsSetWhileTheKeyIsDown) {
    EXPECT_FALSE(Down(27));
    Press(Qt::Key_Escape);
    EXPECT_TRUE(Down(27));
    EXPECT_LT(platform::GetKeyState(27), 0);
    EXPECT_TRUE((platform::GetAsyncKeyState(27) & 0x8000) != 0);
    EXPECT_FALSE(Down(37));
    Release(Qt::Key_Escape);
    EXPECT_FALSE(Down(27));
    EXPECT_EQ(platform::GetKeyState(27), 0);
    EXPECT_EQ(platform::GetAsyncKeyState(27), 0);
}

TEST_F(KeyStates, KeysAreTrackedOneByOne) {
    Press(Qt::Key_Shift, Qt::ShiftModifier);
    Press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(Down(16));
    EXPECT_TRUE(Down(39));
    Release(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(Down(16));
    EXPECT_FALSE(Down(39));
    platform::ClearKeyStates();
    EXPECT_FALSE(Down(16));
}

TEST_F(KeyStates, AnAutoRepeatedReleaseLeavesTheKeyDown) {
    // Holding a key sends release and press pairs marked as repeats.
    Press(Qt::Key_Left);
    Release(Qt::Key_Left, Qt::NoModifier, true);
    EXPECT_TRUE(Down(37));
    Release(Qt::Key_Left);
    EXPECT_FALSE(Down(37));
}

TEST_F(KeyStates, TheKeypadIsTrackedUnderItsOwnCode) {
    Press(Qt::Key_4, Qt::KeypadModifier);
    EXPECT_TRUE(Down(100));
    EXPECT_FALSE(Down(52));
    Release(Qt::Key_4, Qt::KeypadModifier);
    EXPECT_FALSE(Down(100));
}

TEST_F(KeyStates, UnknownKeysAndCodesOutOfRangeReadAsUp) {
    Press(Qt::Key_Launch0);
    for (int code : {-1, 0, 256, 1000})
        EXPECT_EQ(platform::GetKeyState(code), 0) << code;
    for (int code = 1; code < 256; ++code)
        ASSERT_FALSE(Down(code)) << code;
}

} // namespace
