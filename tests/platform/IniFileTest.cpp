#include "platform/IniFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(IniFile, LooksUpSectionsAndKeysWhateverTheirCase) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("exif.ini"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\xEF\xBB\xBF"
               "orphan=outside any section\r\n"
               "[Flash]\r\n"
               "; 1=commented out\r\n"
               "  1  =  Fired  \r\n"
               "Format=@X flash\n"
               "no equals sign\n"
               "=nameless\n"
               "[ Orientation ]\n"
               "6=Rotate 90\n"
               "[flash]\n"
               "1=second section loses\n"
               "16=Off, \xC3\xA9teint\n");
    file.close();
    struct Row {
        const char* section;
        const char* key;
        const char* value;
    };
    const Row rows[] = {
        {"Flash", "1", "Fired"},
        {"FLASH", "format", "@X flash"},
        {"flash", "16", "Off, \xC3\xA9teint"},
        {"Orientation", "6", "Rotate 90"},
        {"Flash", "2", ""},
        {"Make", "1", ""},
        {"Flash", "", ""},
        {"", "orphan", ""},
        {"Flash", "no equals sign", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.section) + "/" + row.key);
        EXPECT_EQ(platform::ReadPrivateProfileString(QString::fromUtf8(row.section),
                                                     QString::fromUtf8(row.key), path),
                  QString::fromUtf8(row.value));
    }
    EXPECT_EQ(platform::ReadPrivateProfileString(QStringLiteral("Flash"), QStringLiteral("1"),
                                                 dir.filePath(QStringLiteral("absent.ini"))),
              QString());
}

TEST(IniFile, ReadsOnlyTheFirst256KilobytesAndNoLineCutAtTheLimit) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("exif.ini"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Flash]\n1=Fired\n");
    const QByteArray comment = "; " + QByteArray(97, 'x') + "\n"; // 100 bytes
    for (int i = 0; i < 2621; ++i)                                // to 28 bytes short of the limit
        file.write(comment);
    file.write("0=No flash, with a tail long enough to cross\n[Orientation]\n6=Rotate 90\n");
    file.close();
    platform::IniFile ini;
    ASSERT_TRUE(ini.Load(path));
    EXPECT_EQ(ini.Value(QStringLiteral("Flash"), QStringLiteral("1")), QStringLiteral("Fired"));
    // The line that crosses the limit is not read cut short, and nothing after it is read.
    EXPECT_EQ(ini.Value(QStringLiteral("Flash"), QStringLiteral("0")), QString());
    EXPECT_EQ(ini.Value(QStringLiteral("Orientation"), QStringLiteral("6")), QString());
}

} // namespace
