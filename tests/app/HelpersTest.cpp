#include "app/Common.h"
#include "app/TaggedStringList.h"
#include "app/VbNumbers.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(NumberAtTheFront, ReadsWhatACalculatorWouldAndZeroForJunk) {
    EXPECT_EQ(vb::Val(QStringLiteral("  12abc")), 12);
    EXPECT_EQ(vb::Val(QStringLiteral("1 2 3")), 123);
    EXPECT_EQ(vb::Val(QStringLiteral("-3.5e2")), -350);
    EXPECT_EQ(vb::Val(QStringLiteral(".5")), 0.5);
    EXPECT_EQ(vb::Val(QStringLiteral("1e")), 1);
    EXPECT_EQ(vb::Val(QStringLiteral("2.5.6")), 2.5);
    EXPECT_EQ(vb::Val(QStringLiteral("junk")), 0);
    EXPECT_EQ(vb::Val(QString()), 0);
    EXPECT_EQ(vb::Val(QStringLiteral("&H10")), 16);
    EXPECT_EQ(vb::Val(QStringLiteral("&HFFFF")), -1);
    EXPECT_EQ(vb::Val(QStringLiteral("&O17")), 15);
    // The decimal point is a point whatever the user's locale says.
    EXPECT_EQ(vb::Val(QStringLiteral("0,5")), 0);
}

TEST(NumberAtTheFront, IsNumericWantsTheWholeText) {
    EXPECT_TRUE(vb::IsNumeric(QStringLiteral(" 1234")));
    EXPECT_TRUE(vb::IsNumeric(QStringLiteral("5.")));
    EXPECT_TRUE(vb::IsNumeric(QStringLiteral("-7")));
    EXPECT_FALSE(vb::IsNumeric(QStringLiteral(":1234")));
    EXPECT_FALSE(vb::IsNumeric(QStringLiteral("1 2")));
    EXPECT_FALSE(vb::IsNumeric(QStringLiteral("")));
    EXPECT_FALSE(vb::IsNumeric(QStringLiteral("-")));
    EXPECT_FALSE(vb::IsNumeric(QStringLiteral("12x")));
}

TEST(Rounding, TiesGoToEvenIntIsFloorAndSixteenBitsWrap) {
    EXPECT_EQ(vb::RoundHalfEven(0.5), 0);
    EXPECT_EQ(vb::RoundHalfEven(1.5), 2);
    EXPECT_EQ(vb::RoundHalfEven(2.5), 2);
    EXPECT_EQ(vb::RoundHalfEven(-2.5), -2);
    EXPECT_EQ(vb::RoundHalfEven(2.6), 3);
    EXPECT_EQ(vb::Int(-1.5), -2);
    EXPECT_EQ(vb::Int(1.99), 1);
    EXPECT_EQ(vb::Wrap16(32768), -32768);
    EXPECT_EQ(vb::Wrap16(33000), -32536);
    EXPECT_EQ(vb::Wrap16(-32769), 32767);
    EXPECT_EQ(vb::CInt(4.5), 4);
    EXPECT_EQ(vb::CInt(32767.5), -32768);
    EXPECT_EQ(vb::CLng(1e12), 2147483647);
}

TEST(Rounding, ThousandsFormatLeavesZeroBlank) {
    EXPECT_EQ(vb::FormatThousands(0), QString());
    EXPECT_EQ(vb::FormatThousands(999), QStringLiteral("999"));
    EXPECT_EQ(vb::FormatThousands(1000), QStringLiteral("1,000"));
    EXPECT_EQ(vb::FormatThousands(1234567), QStringLiteral("1,234,567"));
    EXPECT_EQ(vb::FormatThousands(8589934592LL), QStringLiteral("8,589,934,592"));
}

TEST(Paths, FileNameIsWhatStandsAfterTheLastSeparatorOfEitherKind) {
    EXPECT_EQ(common::FileNameOf(QStringLiteral("C:\\a\\b.jpg")), QStringLiteral("b.jpg"));
    EXPECT_EQ(common::FileNameOf(QStringLiteral("/home/u\\mixed/c.png")), QStringLiteral("c.png"));
    EXPECT_EQ(common::FileNameOf(QStringLiteral("http://host/dir/pic.jpg")),
              QStringLiteral("pic.jpg"));
    EXPECT_EQ(common::FileNameOf(QStringLiteral("/x/y/")), QString());
    EXPECT_EQ(common::FileNameOf(QStringLiteral("name.jpg")), QString());
    EXPECT_EQ(common::FileNameOf(QString()), QString());
}

TEST(Paths, OnlyTheLast250CharactersAreSearched) {
    const QString name249(249, 'n');
    EXPECT_EQ(common::FileNameOf("/dir/" + name249), name249);
    const QString name250(250, 'n');
    EXPECT_EQ(common::FileNameOf("/dir/" + name250), QString());
    // Without a separator in reach the folder is the whole path.
    EXPECT_EQ(common::FolderWithSeparator("/dir/" + name250), "/dir/" + name250);
    EXPECT_EQ(common::FolderWithSeparator("/dir/" + name249), QStringLiteral("/dir/"));
}

TEST(Paths, FolderKeepsItsTrailingSeparator) {
    EXPECT_EQ(common::FolderWithSeparator(QStringLiteral("C:\\Photos\\a.jpg")),
              QStringLiteral("C:\\Photos\\"));
    EXPECT_EQ(common::FolderWithSeparator(QStringLiteral("/p/q\\r.jpg")), QStringLiteral("/p/q\\"));
    EXPECT_EQ(common::FolderWithSeparator(QStringLiteral("bare")), QStringLiteral("bare"));
    EXPECT_EQ(common::FolderOf(QStringLiteral("/p/q/r.jpg")), QStringLiteral("/p/q/"));
    EXPECT_EQ(common::FolderOf(QString()), QString());
    EXPECT_EQ(common::FolderOf(QStringLiteral("(end of playlist)")), QString());
}

TEST(Paths, ShortNameOfTheHoldingFolder) {
    EXPECT_EQ(common::FileNameAndFolder(QStringLiteral("/home/u/Pictures/2019/a.jpg")),
              QStringLiteral("2019"));
    EXPECT_EQ(common::FileNameAndFolder(QStringLiteral("C:\\Photos\\Trip\\")),
              QStringLiteral("Trip"));
    EXPECT_EQ(common::FileNameAndFolder(QStringLiteral("http://h/gallery/x.jpg")),
              QStringLiteral("gallery"));
    EXPECT_EQ(common::FileNameAndFolder(QStringLiteral("a.jpg")), QString());
    EXPECT_EQ(common::FileNameAndFolder(QStringLiteral("dir/a.jpg")), QString());
}

TEST(Paths, ExistenceCountsFoldersToo) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QFile f(dir.filePath(QStringLiteral("x.jpg")));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    EXPECT_TRUE(common::FileExists(dir.path()));
    EXPECT_TRUE(common::FileExists(f.fileName()));
    EXPECT_FALSE(common::FileExists(dir.filePath(QStringLiteral("missing"))));
    EXPECT_FALSE(common::FileExists(QString()));
}

TEST(QuotedFields, CountsOnlyWhatStandsBetweenQuotes) {
    const QString text = QStringLiteral("a \"one\" b \"two, three\" c");
    EXPECT_EQ(common::SplitQuotedField(text, 1), QStringLiteral("one"));
    EXPECT_EQ(common::SplitQuotedField(text, 2), QStringLiteral("two, three"));
    EXPECT_EQ(common::SplitQuotedField(text, 3), QString());
    EXPECT_EQ(common::SplitQuotedField(QStringLiteral("no quotes"), 1), QString());
    EXPECT_EQ(common::SplitQuotedField(QStringLiteral("\"\"\"x\""), 2), QStringLiteral("x"));
}

TEST(OpenDocument, FailuresCarryTheirMessage) {
    EXPECT_EQ(common::ShellErrorMessage(0), QStringLiteral("Out of memory"));
    EXPECT_EQ(common::ShellErrorMessage(8), QStringLiteral("Out of memory"));
    EXPECT_EQ(common::ShellErrorMessage(2), QStringLiteral("File not found"));
    EXPECT_EQ(common::ShellErrorMessage(31),
              QStringLiteral("No application is associated with this file type."));
    EXPECT_EQ(common::ShellErrorMessage(99),
              QStringLiteral(
                  "An error occurred occurred whilst trying to open or print the selected file."));

    QTemporaryDir dir;
    common::ShellResult missing =
        common::OpenDocument(dir.filePath(QStringLiteral("Help/index.html")));
    EXPECT_FALSE(missing.ok());
    EXPECT_EQ(missing.code, 3);
    EXPECT_EQ(missing.message, QStringLiteral("Path not found"));
    EXPECT_EQ(missing.source, QStringLiteral("modShellExecute.GShell"));
    missing = common::OpenDocument(dir.filePath(QStringLiteral("index.html")));
    EXPECT_EQ(missing.code, 2);

    QString launched;
    platform::SetShellLauncher([&](const QString& target) {
        launched = target;
        return 42;
    });
    common::ShellResult web = common::OpenDocument(QStringLiteral("https://example.org/help/"));
    platform::SetShellLauncher(nullptr);
    EXPECT_TRUE(web.ok());
    EXPECT_TRUE(web.message.isEmpty());
    EXPECT_EQ(launched, QStringLiteral("https://example.org/help/"));
}

TEST(Questions, OnlyYesIsYes) {
    std::vector<platform::MsgBoxCall> calls;
    int answer = platform::vbNo;
    platform::SetMsgBoxAnswerer([&](const platform::MsgBoxCall& c) {
        calls.push_back(c);
        return answer;
    });
    EXPECT_FALSE(common::AskYesNo(QStringLiteral("Delete it?")));
    answer = platform::vbYes;
    EXPECT_TRUE(common::AskYesNo(QStringLiteral("Delete it?")));
    answer = platform::vbCancel;
    EXPECT_FALSE(common::AskYesNo(QStringLiteral("Delete it?")));
    platform::SetMsgBoxAnswerer(nullptr);
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_EQ(calls[0].flags, platform::vbYesNo | platform::vbQuestion);
    EXPECT_EQ(calls[0].prompt, QStringLiteral("Delete it?"));
}

TEST(TaggedList, TagsFollowTheirItems) {
    TaggedStringList l;
    l.add(QStringLiteral("a"), 1);
    l.add(QStringLiteral("c"), 3);
    l.insert(1, QStringLiteral("b"), 2);
    l.insert(99, QStringLiteral("d"), 4);
    ASSERT_EQ(l.count(), 4);
    EXPECT_EQ(l.text(1), QStringLiteral("b"));
    EXPECT_EQ(l.tag(3), 4);
    l.remove(0);
    l.remove(-1);
    l.remove(10);
    EXPECT_EQ(l.count(), 3);
    EXPECT_EQ(l.text(0), QStringLiteral("b"));
    EXPECT_EQ(l.tag(0), 2);
    EXPECT_EQ(l.text(7), QString());
    EXPECT_EQ(l.tag(-1), 0);
}

} // namespace
