#include "app/Common.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>
#include <gtest/gtest.h>
#include <vector>

namespace {

using common::FileNameAndFolder;
using common::FileNameOf;
using common::FolderOf;
using common::FolderWithSeparator;

TEST(PathParts, FileNameIsWhatFollowsTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(FileNameOf(QStringLiteral("C:\\a\\b.jpg")), QStringLiteral("b.jpg"));
    EXPECT_EQ(FileNameOf(QStringLiteral("/home/u/b.jpg")), QStringLiteral("b.jpg"));
    EXPECT_EQ(FileNameOf(QStringLiteral("/a\\b/c.jpg")), QStringLiteral("c.jpg"));
    EXPECT_EQ(FileNameOf(QStringLiteral("/a/b\\c.jpg")), QStringLiteral("c.jpg"));
    EXPECT_EQ(FileNameOf(QStringLiteral("\\\\server\\share\\x.png")), QStringLiteral("x.png"));
    EXPECT_EQ(FileNameOf(QStringLiteral("/top.jpg")), QStringLiteral("top.jpg"));
    EXPECT_EQ(FileNameOf(QStringLiteral("http://host/dir/pic.jpg")), QStringLiteral("pic.jpg"));
    EXPECT_EQ(FileNameOf(QStringLiteral("/x/y/")), QString());
    EXPECT_EQ(FileNameOf(QStringLiteral("C:\\x\\")), QString());
    // A bare name has no separator to stand after.
    EXPECT_EQ(FileNameOf(QStringLiteral("name.jpg")), QString());
    EXPECT_EQ(FileNameOf(QString()), QString());
}

TEST(PathParts, OnlyTheLast250CharactersAreLookedAt) {
    const QString deepFolder = "/" + QString(1000, 'f') + "/";
    EXPECT_EQ(FileNameOf(deepFolder + "a.jpg"), QStringLiteral("a.jpg"));
    EXPECT_EQ(FolderWithSeparator(deepFolder + "a.jpg"), deepFolder);

    const QString name249(249, 'n');
    EXPECT_EQ(FileNameOf("/dir/" + name249), name249);
    EXPECT_EQ(FileNameOf("C:\\dir\\" + name249), name249);
    EXPECT_EQ(FolderWithSeparator("/dir/" + name249), QStringLiteral("/dir/"));

    for (int length : {251, 300}) {
        SCOPED_TRACE(length);
        const QString longName(length, 'n');
        EXPECT_EQ(FileNameOf("/dir/" + longName), QString());
        // With no separator in reach the path counts as a bare name.
        EXPECT_EQ(FolderWithSeparator("/dir/" + longName), "/dir/" + longName);
        EXPECT_EQ(FileNameAndFolder("/dir/" + longName), QString());
    }
}

TEST(PathParts, FolderKeepsItsTrailingSeparator) {
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("C:\\Photos\\a.jpg")),
              QStringLiteral("C:\\Photos\\"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("/p/q/r.jpg")), QStringLiteral("/p/q/"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("/p/q/")), QStringLiteral("/p/q/"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("C:\\Photos\\")), QStringLiteral("C:\\Photos\\"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("/p\\q/r.jpg")), QStringLiteral("/p\\q/"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("C:/mixed\\x.jpg")), QStringLiteral("C:/mixed\\"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("http://host/dir/pic.jpg")),
              QStringLiteral("http://host/dir/"));
    EXPECT_EQ(FolderWithSeparator(QStringLiteral("bare.jpg")), QStringLiteral("bare.jpg"));
    EXPECT_EQ(FolderWithSeparator(QString()), QString());
}

TEST(PathParts, FolderOfTheEndMarkerOrOfNothingIsEmpty) {
    EXPECT_EQ(FolderOf(QString()), QString());
    EXPECT_EQ(FolderOf(QStringLiteral("(end of playlist)")), QString());
    EXPECT_EQ(FolderOf(QStringLiteral("/p/q.jpg")), QStringLiteral("/p/"));
    EXPECT_EQ(FolderOf(QStringLiteral("C:\\P\\q.jpg")), QStringLiteral("C:\\P\\"));
    EXPECT_EQ(FolderOf(QStringLiteral("bare.jpg")), QStringLiteral("bare.jpg"));
}

TEST(PathParts, FileNameAndFolderIsTheHoldingFoldersOwnName) {
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("/home/u/Pictures/2019/a.jpg")),
              QStringLiteral("2019"));
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("C:\\Photos\\Trip\\")), QStringLiteral("Trip"));
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("C:\\Photos\\Trip\\a.jpg")), QStringLiteral("Trip"));
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("/home/u\\Trip/a.jpg")), QStringLiteral("Trip"));
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("http://h/gallery/x.jpg")),
              QStringLiteral("gallery"));
    const QString longFolder(249, 'f');
    EXPECT_EQ(FileNameAndFolder("/root/" + longFolder + "/x.jpg"), longFolder);
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("/a.jpg")), QString());
    EXPECT_EQ(FileNameAndFolder(QStringLiteral("a.jpg")), QString());
    EXPECT_EQ(FileNameAndFolder(QString()), QString());
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

TEST(QuotedField, FieldsAreCountedFromOneBetweenQuotes) {
    const QString text = QStringLiteral("a \"one\" b \"two\"");
    EXPECT_EQ(common::SplitQuotedField(text, 1), QStringLiteral("one"));
    EXPECT_EQ(common::SplitQuotedField(text, 2), QStringLiteral("two"));
    EXPECT_EQ(common::SplitQuotedField(text, 3), QString());
    EXPECT_EQ(common::SplitQuotedField(text, 0), QString());
    EXPECT_EQ(common::SplitQuotedField(QStringLiteral("no quotes here"), 1), QString());
    EXPECT_EQ(common::SplitQuotedField(QString(), 1), QString());
}

TEST(QuotedField, FieldsKeepTheirBlanksCommasAndSeparators) {
    const QString text =
        QStringLiteral("\"C:\\My Pictures\\a b.jpg\",\"caption, with comma\" \"\" \"last\"");
    EXPECT_EQ(common::SplitQuotedField(text, 1), QStringLiteral("C:\\My Pictures\\a b.jpg"));
    EXPECT_EQ(common::SplitQuotedField(text, 2), QStringLiteral("caption, with comma"));
    EXPECT_EQ(common::SplitQuotedField(text, 3), QString());
    EXPECT_EQ(common::SplitQuotedField(text, 4), QStringLiteral("last"));
    // An unclosed last field runs to the end of the text.
    EXPECT_EQ(common::SplitQuotedField(QStringLiteral("a \"one\" \"tw"), 2), QStringLiteral("tw"));
}

TEST(ShellErrors, EachFailureCodeHasItsMessage) {
    EXPECT_EQ(common::ShellErrorMessage(0), QStringLiteral("Out of memory"));
    EXPECT_EQ(common::ShellErrorMessage(8), QStringLiteral("Out of memory"));
    EXPECT_EQ(common::ShellErrorMessage(2), QStringLiteral("File not found"));
    EXPECT_EQ(common::ShellErrorMessage(3), QStringLiteral("Path not found"));
    EXPECT_EQ(common::ShellErrorMessage(31),
              QStringLiteral("No application is associated with this file type."));
    // The doubled word is what users of earlier versions have always seen.
    const QString other = QStringLiteral(
        "An error occurred occurred whilst trying to open or print the selected file.");
    for (int code : {-1, 1, 4, 33, 42, 99}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(common::ShellErrorMessage(code), other);
    }
}

// Replaces the desktop's launcher for one test and records what it was asked to open.
class OpeningDocuments : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        platform::SetShellLauncher([this](const QString& target) {
            launched.push_back(target);
            return answer;
        });
    }
    void TearDown() override { platform::SetShellLauncher(nullptr); }

    QString ExistingFile() {
        QFile f(dir.filePath(QStringLiteral("index.html")));
        if (!f.open(QIODevice::WriteOnly)) return QString();
        f.write("<html></html>");
        return f.fileName();
    }

    QTemporaryDir dir;
    std::vector<QString> launched;
    int answer = 42;
};

TEST_F(OpeningDocuments, AMissingLocalFileIsReportedWithoutLaunchingAnything) {
    const common::ShellResult r = common::OpenDocument(dir.filePath(QStringLiteral("gone.html")));
    EXPECT_FALSE(r.ok());
    EXPECT_EQ(r.code, 2);
    EXPECT_EQ(r.message, QStringLiteral("File not found"));
    EXPECT_EQ(r.source, QStringLiteral("modShellExecute.GShell"));
    EXPECT_TRUE(launched.empty());
}

TEST_F(OpeningDocuments, AnExistingFileGoesToTheLauncherAndSucceedsQuietly) {
    const QString path = ExistingFile();
    ASSERT_FALSE(path.isEmpty());
    const common::ShellResult r = common::OpenDocument(path);
    EXPECT_TRUE(r.ok());
    EXPECT_EQ(r.code, 42);
    EXPECT_TRUE(r.message.isEmpty());
    EXPECT_TRUE(r.source.isEmpty());
    ASSERT_EQ(launched.size(), 1u);
    EXPECT_EQ(QUrl(launched[0]).toLocalFile(), path);
}

TEST_F(OpeningDocuments, ALauncherFailureCarriesItsMessage) {
    const QString path = ExistingFile();
    ASSERT_FALSE(path.isEmpty());
    answer = 31;
    common::ShellResult r = common::OpenDocument(path);
    EXPECT_FALSE(r.ok());
    EXPECT_EQ(r.code, 31);
    EXPECT_EQ(r.message, QStringLiteral("No application is associated with this file type."));
    EXPECT_EQ(r.source, QStringLiteral("modShellExecute.GShell"));
    // Success means above 32.
    answer = 32;
    EXPECT_FALSE(common::OpenDocument(path).ok());
    answer = 33;
    r = common::OpenDocument(path);
    EXPECT_TRUE(r.ok());
    EXPECT_TRUE(r.message.isEmpty());
}

class YesNoQuestion : public ::testing::Test {
protected:
    void SetUp() override {
        platform::SetMsgBoxAnswerer([this](const platform::MsgBoxCall& call) {
            calls.push_back(call);
            return answer;
        });
    }
    void TearDown() override { platform::SetMsgBoxAnswerer(nullptr); }

    std::vector<platform::MsgBoxCall> calls;
    int answer = platform::vbYes;
};

TEST_F(YesNoQuestion, OnlyYesCountsAsYes) {
    EXPECT_TRUE(common::AskYesNo(QStringLiteral("Delete it?")));
    const int others[] = {platform::vbNo, platform::vbCancel, platform::vbOK, 0};
    for (int other : others) {
        SCOPED_TRACE(other);
        answer = other;
        EXPECT_FALSE(common::AskYesNo(QStringLiteral("Delete it?")));
    }
}

TEST_F(YesNoQuestion, TheBoxIsAQuestionWithYesAndNoButtons) {
    common::AskYesNo(QStringLiteral("Remove the folder from the list?"));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].prompt, QStringLiteral("Remove the folder from the list?"));
    EXPECT_EQ(calls[0].flags & 0x7, platform::vbYesNo);
    EXPECT_EQ(calls[0].flags & 0x70, platform::vbQuestion);
}

} // namespace
