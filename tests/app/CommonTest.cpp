#include "app/Common.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>
#include <vector>

namespace {

using common::FileNameAndFolder;
using common::FileNameOf;
using common::FolderOf;
using common::FolderWithSeparator;

// Either kind of separator counts, wherever it stands; a folder keeps its trailing separator,
// and a path without one is a bare name: no file name, and itself as its folder.
TEST(PathParts, NameFolderAndHoldingFolderFromTheLast250Characters) {
    struct Row {
        const char *path, *name, *folder, *holding;
    };
    // clang-format off
    const Row rows[] = {
        {"C:\\a\\b.jpg", "b.jpg", "C:\\a\\", "a"},
        {"/home/u/Pictures/2019/a.jpg", "a.jpg", "/home/u/Pictures/2019/", "2019"},
        {"/a\\b/c.jpg", "c.jpg", "/a\\b/", "b"},
        {"/a/b\\c.jpg", "c.jpg", "/a/b\\", "b"},
        {"C:/mixed\\x.jpg", "x.jpg", "C:/mixed\\", "mixed"},
        {"\\\\server\\share\\x.png", "x.png", "\\\\server\\share\\", "share"},
        {"http://host/dir/pic.jpg", "pic.jpg", "http://host/dir/", "dir"},
        {"/top.jpg", "top.jpg", "/", ""},
        {"/x/y/", "", "/x/y/", "y"},
        {"C:\\Photos\\Trip\\", "", "C:\\Photos\\Trip\\", "Trip"},
        {"name.jpg", "", "name.jpg", ""},
        {"", "", "", ""},
    };
    // clang-format on
    for (const Row& row : rows) {
        const QString path = QString::fromLatin1(row.path);
        SCOPED_TRACE(row.path);
        EXPECT_EQ(FileNameOf(path), QLatin1String(row.name));
        EXPECT_EQ(FolderWithSeparator(path), QLatin1String(row.folder));
        EXPECT_EQ(FolderOf(path), QLatin1String(row.folder));
        EXPECT_EQ(FileNameAndFolder(path), QLatin1String(row.holding));
    }
    // The end of a playlist has no folder.
    EXPECT_EQ(FolderOf(QStringLiteral("(end of playlist)")), QString());

    // Only the last 250 characters are looked at.
    const QString deepFolder = "/" + QString(1000, 'f') + "/";
    EXPECT_EQ(FileNameOf(deepFolder + "a.jpg"), QStringLiteral("a.jpg"));
    EXPECT_EQ(FolderWithSeparator(deepFolder + "a.jpg"), deepFolder);

    const QString name249(249, 'n');
    EXPECT_EQ(FileNameOf("/dir/" + name249), name249);
    EXPECT_EQ(FileNameOf("C:\\dir\\" + name249), name249);
    EXPECT_EQ(FolderWithSeparator("/dir/" + name249), QStringLiteral("/dir/"));
    EXPECT_EQ(FileNameAndFolder("/root/" + name249 + "/x.jpg"), name249);

    for (int length : {251, 300}) {
        SCOPED_TRACE(length);
        const QString longName(length, 'n');
        EXPECT_EQ(FileNameOf("/dir/" + longName), QString());
        // With no separator in reach the path counts as a bare name.
        EXPECT_EQ(FolderWithSeparator("/dir/" + longName), "/dir/" + longName);
        EXPECT_EQ(FileNameAndFolder("/dir/" + longName), QString());
    }
}

TEST(PathExistence, FilesAndFoldersBothExist) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QFile file(dir.filePath(QStringLiteral("x.jpg")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    ASSERT_TRUE(QDir(dir.path()).mkdir(QStringLiteral("sub")));

    EXPECT_TRUE(common::FileExists(file.fileName()));
    EXPECT_TRUE(common::FileExists(dir.path()));
    EXPECT_TRUE(common::FileExists(dir.filePath(QStringLiteral("sub"))));
    EXPECT_TRUE(common::FileExists(dir.filePath(QStringLiteral("sub/"))));
    EXPECT_FALSE(common::FileExists(dir.filePath(QStringLiteral("missing.jpg"))));
    EXPECT_FALSE(common::FileExists(dir.filePath(QStringLiteral("missing/x.jpg"))));
    // An empty path is not the current folder.
    EXPECT_FALSE(common::FileExists(QString()));
}

// Fields are counted from one between quotes and keep their blanks, commas and separators; an
// unclosed last field runs to the end of the text.
TEST(QuotedField, FieldsAreCountedFromOneBetweenQuotes) {
    const char* const both = "a \"one\" b \"two\"";
    const char* const path = "\"C:\\My Pictures\\a b.jpg\",\"caption, with comma\" \"\" \"last\"";
    struct Row {
        const char* text;
        int field;
        const char* expected;
    };
    // clang-format off
    const Row rows[] = {
        {both, 1, "one"}, {both, 2, "two"}, {both, 3, ""}, {both, 0, ""},
        {"no quotes here", 1, ""}, {"", 1, ""},
        {path, 1, "C:\\My Pictures\\a b.jpg"}, {path, 2, "caption, with comma"}, {path, 3, ""},
        {path, 4, "last"},
        {"a \"one\" \"tw", 2, "tw"},
    };
    // clang-format on
    for (const Row& row : rows)
        EXPECT_EQ(common::SplitQuotedField(QString::fromLatin1(row.text), row.field),
                  QLatin1String(row.expected))
            << row.text << " field " << row.field;
}

TEST(ShellErrors, EachFailureCodeHasItsMessage) {
    // The doubled word is what users of earlier versions have always seen.
    const char* const other =
        "An error occurred occurred whilst trying to open or print the selected file.";
    // clang-format off
    const std::pair<int, const char*> rows[] = {
        {0, "Out of memory"}, {8, "Out of memory"}, {2, "File not found"}, {3, "Path not found"},
        {31, "No application is associated with this file type."},
        {-1, other}, {1, other}, {4, other}, {33, other}, {42, other}, {99, other}};
    // clang-format on
    for (auto [code, message] : rows)
        EXPECT_EQ(common::ShellErrorMessage(code), QLatin1String(message)) << code;
}

// Replaces the desktop's launcher and records what it was asked to open. Success means above
// 32, and then nothing more is said; a missing local file is reported without a launch.
TEST(OpeningDocuments, TheLaunchersAnswerDecidesAndAMissingFileIsNotLaunched) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QFile page(dir.filePath(QStringLiteral("index.html")));
    ASSERT_TRUE(page.open(QIODevice::WriteOnly));
    page.close();
    const QString gone = dir.filePath(QStringLiteral("gone.html"));
    std::vector<QString> launched;
    int answer = 0;
    platform::SetShellLauncher([&](const QString& target) {
        launched.push_back(target);
        return answer;
    });
    const auto restore = qScopeGuard([] { platform::SetShellLauncher(nullptr); });
    const struct {
        QString path;
        int answer, code;
        const char* message;
    } rows[] = {{page.fileName(), 42, 42, ""},
                {page.fileName(), 33, 33, ""},
                {page.fileName(), 32, 32, nullptr},
                {page.fileName(), 31, 31, "No application is associated with this file type."},
                {gone, 42, 2, "File not found"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        answer = row.answer;
        launched.clear();
        const common::ShellResult r = common::OpenDocument(row.path);
        EXPECT_EQ(r.ok(), row.code > 32);
        EXPECT_EQ(r.code, row.code);
        if (row.message) {
            EXPECT_EQ(r.message, QLatin1String(row.message));
        }
        EXPECT_EQ(r.source, row.code > 32 ? QString() : QStringLiteral("modShellExecute.GShell"));
        ASSERT_EQ(launched.size(), row.path == gone ? 0u : 1u);
        if (!launched.empty()) {
            EXPECT_EQ(QUrl(launched[0]).toLocalFile(), row.path);
        }
    }
}

TEST(YesNoQuestion, AQuestionWithYesAndNoButtonsWhereOnlyYesCounts) {
    std::vector<platform::MsgBoxCall> calls;
    int answer = platform::vbYes;
    platform::SetMsgBoxAnswerer([&](const platform::MsgBoxCall& call) {
        calls.push_back(call);
        return answer;
    });
    const auto restore = qScopeGuard([] { platform::SetMsgBoxAnswerer(nullptr); });
    EXPECT_TRUE(common::AskYesNo(QStringLiteral("Remove the folder from the list?")));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].prompt, QStringLiteral("Remove the folder from the list?"));
    EXPECT_EQ(calls[0].flags & 0x7, platform::vbYesNo);
    EXPECT_EQ(calls[0].flags & 0x70, platform::vbQuestion);
    const int others[] = {platform::vbNo, platform::vbCancel, platform::vbOK, 0};
    for (int other : others) {
        answer = other;
        EXPECT_FALSE(common::AskYesNo(QStringLiteral("Delete it?"))) << other;
    }
}

} // namespace
