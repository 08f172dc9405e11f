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

TEST(FileListing, FilesMatchThePatternsSortedIgnoringCaseAndFoldersAreListedApart) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    for (const char* name :
         {"b.JPG", "a.jpeg", "C.Jpg", "a1.jpg", "notes.txt", "d.jpg.bak", "e.jpeg~", "jpg",
          "f.jpgx", "[x].jpg", "a+b (1).jpg", "x.png", "y.GIF", "z.bmp"}) {
        QFile f(dir.filePath(QString::fromUtf8(name)));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly)) << name;
    }
    for (const char* name : {"folder.jpg", "sub/deeper", "Zeta", "beta2"})
        ASSERT_TRUE(QDir(dir.path()).mkpath(QString::fromUtf8(name))) << name;
    QFile inner(dir.filePath(QStringLiteral("sub/inner.jpg")));
    ASSERT_TRUE(inner.open(QIODevice::WriteOnly));

    struct Row {
        const char* folder; // under the temporary folder
        const char* patterns;
        QStringList files;
    };
    const Row rows[] = {
        {"", "*.JPG;*.jpeg", {"[x].jpg", "a+b (1).jpg", "a.jpeg", "a1.jpg", "b.JPG", "C.Jpg"}},
        {"/", " *.png ; ;*.gif;", {"x.png", "y.GIF"}},
        {"", "", {}},
        {"/missing", "*.*", {}},
        // A file is not a folder.
        {"/x.png", "*.*", {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.folder) + " " + row.patterns);
        EXPECT_EQ(platform::FileList(dir.path() + row.folder, QString::fromLatin1(row.patterns)),
                  row.files);
    }
    // No folder at all is not the current one.
    EXPECT_TRUE(platform::FileList(QString(), "*.*").isEmpty());
    EXPECT_TRUE(platform::FolderList(QString()).isEmpty());

    EXPECT_EQ(platform::FolderList(dir.path()),
              QStringList({"beta2", "folder.jpg", "sub", "Zeta"}));
    EXPECT_EQ(platform::FolderList(dir.filePath(QStringLiteral("sub"))), QStringList({"deeper"}));
    EXPECT_TRUE(platform::FolderList(dir.filePath(QStringLiteral("Zeta"))).isEmpty());
    EXPECT_TRUE(platform::FolderList(dir.filePath(QStringLiteral("missing"))).isEmpty());
}

TEST(FileListing, PatternsAreWholeNameWildcards) {
    const struct {
        const char *name, *patterns;
        bool matches;
    } rows[] = {
        // clang-format off
        {"ab.jpg", "a?.jpg", true}, {"abc.jpg", "a?.jpg", false},
        {"IMG_0001.JPG", "*.bmp;img_*.jpg", true}, {"my_img.jpg", "img*.jpg", false},
        {"cost $5^2.jpg", "*.jpg", true}, {"dot.dot.jpg", "*.jpg", true},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(platform::MatchesPatterns(QString::fromUtf8(row.name),
                                            QString::fromLatin1(row.patterns)),
                  row.matches)
            << row.name << " " << row.patterns;
}

TEST(MemInfoParse, CommittedMemoryIsTakenFromItsOwnLineInBytesOrMinusOne) {
    const std::pair<const char*, qint64> rows[] = {
        {"MemTotal:       16303428 kB\nCommitLimit:     8151712 kB\nCommitted_AS:    1234 kB\n"
         "VmallocTotal:   34359738367 kB\n",
         1263616},
        {"Committed_AS:\t99 kB\r\n", 99 * 1024},
        {"", -1},
        {"MemTotal: 1 kB\n", -1},
        {"Committed_AS: lots kB\n", -1},
        {"Committed_AS:\n", -1},
        {"Committed_AS: -5 kB\n", -1},
    };
    for (const auto& [text, bytes] : rows)
        EXPECT_EQ(platform::ParseCommittedBytes(QString::fromLatin1(text)), bytes) << text;
    EXPECT_GT(platform::CommittedMemoryBytes(), 0);
}

TEST(VirtualKeys, QtKeysMapToTheClassicCodesAndTheKeypadHasItsOwn) {
    struct Case {
        int key;
        Qt::KeyboardModifiers mods;
        int code;
    };
    constexpr Qt::KeyboardModifiers none = Qt::NoModifier, pad = Qt::KeypadModifier;
    const Case cases[] = {
        {Qt::Key_Escape, none, 27},   {Qt::Key_Left, none, 37},   {Qt::Key_Up, none, 38},
        {Qt::Key_Right, none, 39},    {Qt::Key_Down, none, 40},   {Qt::Key_PageUp, none, 33},
        {Qt::Key_PageDown, none, 34}, {Qt::Key_Home, none, 36},   {Qt::Key_End, none, 35},
        {Qt::Key_Space, none, 32},    {Qt::Key_Return, none, 13}, {Qt::Key_Enter, none, 13},
        {Qt::Key_Delete, none, 46},   {Qt::Key_F1, none, 112},    {Qt::Key_F12, none, 123},
        {Qt::Key_A, none, 65},        {Qt::Key_C, none, 67},      {Qt::Key_Z, none, 90},
        {Qt::Key_0, none, 48},        {Qt::Key_4, none, 52},      {Qt::Key_9, none, 57},
        {Qt::Key_Launch0, none, 0},   {Qt::Key_unknown, none, 0}, {Qt::Key_0, pad, 96},
        {Qt::Key_4, pad, 100},        {Qt::Key_6, pad, 102},      {Qt::Key_9, pad, 105},
        {Qt::Key_Enter, pad, 13},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << c.key << (c.mods == pad ? " on the keypad" : ""));
        EXPECT_EQ(platform::VirtualKeyCode(c.key, c.mods), c.code);
        // Shift, Ctrl and Alt do not change which key it was.
        EXPECT_EQ(platform::VirtualKeyCode(c.key, c.mods | Qt::ShiftModifier | Qt::ControlModifier |
                                                      Qt::AltModifier),
                  c.code);
    }
}

// Key states are shared by the whole program; the test starts and ends with none down.
class KeyStates : public ::testing::Test {
protected:
    void SetUp() override { platform::ClearKeyStates(); }
    void TearDown() override { platform::ClearKeyStates(); }

    static void Note(QEvent::Type type, int key, Qt::KeyboardModifiers mods = Qt::NoModifier,
                     bool autoRepeat = false) {
        platform::NoteKeyEvent(QKeyEvent(type, key, mods, QString(), autoRepeat));
    }
    static bool Down(int code) { return (platform::GetKeyState(code) & 0x8000) != 0; }
};

TEST_F(KeyStates, EachKeyIsDownFromItsPressToItsOwnRealRelease) {
    Note(QEvent::KeyPress, Qt::Key_Escape);
    EXPECT_TRUE(Down(27));
    EXPECT_LT(platform::GetKeyState(27), 0);
    EXPECT_TRUE((platform::GetAsyncKeyState(27) & 0x8000) != 0);
    Note(QEvent::KeyRelease, Qt::Key_Escape);
    EXPECT_EQ(platform::GetKeyState(27), 0);
    EXPECT_EQ(platform::GetAsyncKeyState(27), 0);

    Note(QEvent::KeyPress, Qt::Key_Shift, Qt::ShiftModifier);
    Note(QEvent::KeyPress, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(Down(16));
    EXPECT_TRUE(Down(39));
    EXPECT_FALSE(Down(37));
    // Holding a key sends release and press pairs marked as repeats.
    Note(QEvent::KeyRelease, Qt::Key_Right, Qt::ShiftModifier, true);
    EXPECT_TRUE(Down(39));
    Note(QEvent::KeyRelease, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(Down(16));
    EXPECT_FALSE(Down(39));
    platform::ClearKeyStates();
    EXPECT_FALSE(Down(16));

    Note(QEvent::KeyPress, Qt::Key_4, Qt::KeypadModifier);
    EXPECT_TRUE(Down(100));
    EXPECT_FALSE(Down(52));
    Note(QEvent::KeyRelease, Qt::Key_4, Qt::KeypadModifier);
    EXPECT_FALSE(Down(100));

    // Unknown keys and codes out of range read as up.
    Note(QEvent::KeyPress, Qt::Key_Launch0);
    for (int code : {-1, 0, 256, 1000})
        EXPECT_EQ(platform::GetKeyState(code), 0) << code;
    for (int code = 1; code < 256; ++code)
        ASSERT_FALSE(Down(code)) << code;
}

} // namespace
