#include "platform/IniFile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(IniFile, LooksUpSectionsAndKeysWhateverTheirCaseInTheFirst256KilobytesOnly) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("exif.ini"));
    const QByteArray head = "\xEF\xBB\xBF"
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
                            "16=Off, \xC3\xA9teint\n";
    // A comment up to 28 bytes short of the limit, then a line that crosses it.
    const QByteArray pad = "; " + QByteArray(256 * 1024 - 28 - head.size() - 3, 'x') + "\n";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(head + pad + "0=No flash, with a tail long enough to cross\n[Late]\n6=Rotate 90\n");
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
        // The line that crosses the limit is not read cut short, and nothing after it is read.
        {"Flash", "0", ""},
        {"Late", "6", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.section) + "/" + row.key);
        EXPECT_EQ(platform::ReadPrivateProfileString(QString::fromUtf8(row.section),
                                                     QString::fromUtf8(row.key), path),
                  QString::fromUtf8(row.value));
    }
    // A file that cannot be read leaves nothing of the one read before.
    platform::IniFile ini;
    EXPECT_TRUE(ini.Load(path));
    EXPECT_FALSE(ini.Load(dir.filePath(QStringLiteral("absent.ini"))));
    EXPECT_EQ(ini.Value(QStringLiteral("Flash"), QStringLiteral("1")), QString());
}

} // namespace
