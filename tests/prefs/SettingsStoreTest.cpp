#include "prefs/MRegistry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <gtest/gtest.h>

namespace {

// Each test works in a section of its own, so that no value leaks between tests.
class SettingsStore : public ::testing::Test {
protected:
    void SetUp() override {
        section = QStringLiteral("Test%1").arg(
            ::testing::UnitTest::GetInstance()->current_test_info()->line());
        QFile::remove(MRegistry::StorePath(kApp, section));
    }
    void TearDown() override { QFile::remove(MRegistry::StorePath(kApp, section)); }

    void WriteRaw(const QByteArray& ini) {
        const QString path = MRegistry::StorePath(kApp, section);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(ini);
    }

    const QString kApp = QStringLiteral("MarrowfieldTests");
    QString section;
};

std::uint32_t ErrorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const RegistryError& e) {
        return e.number;
    }
    return 0;
}

TEST_F(SettingsStore, EmptyNamesRaiseTheirOwnErrorsInOrder) {
    EXPECT_EQ(ErrorOf([&] { MRegistry::SaveValue(QStringLiteral("  "), section, "k", "v"); }),
              0x800403E8u);
    EXPECT_EQ(ErrorOf([&] { MRegistry::ReadValue(kApp, QStringLiteral(" "), "k", "d"); }),
              0x800403E9u);
    EXPECT_EQ(ErrorOf([&] { MRegistry::ReadValue(kApp, section, QStringLiteral("\t"), "d"); }),
              0x800403EAu);
    // AppName is tested first even when everything is empty.
    EXPECT_EQ(ErrorOf([&] { MRegistry::SaveValue(QString(), QString(), QString(), "v"); }),
              0x800403E8u);
    try {
        MRegistry::SaveValue(kApp, QString(), QStringLiteral("k"), QStringLiteral("v"));
        FAIL();
    } catch (const RegistryError& e) {
        EXPECT_EQ(e.description, QStringLiteral("Section may not be empty"));
    }
    try {
        MRegistry::ReadValue(kApp, section, QString(), QString());
        FAIL();
    } catch (const RegistryError& e) {
        EXPECT_EQ(e.description, QStringLiteral("Key may not be empty"));
    }
}

TEST_F(SettingsStore, ValuesRoundTripAndNamesAreTrimmedButNotTheKey) {
    MRegistry::SaveValue(QStringLiteral(" ") + kApp + " ", " " + section, QStringLiteral("Key One"),
                         QStringLiteral("  spaced value  "));
    bool found = false;
    EXPECT_EQ(MRegistry::ReadValue(kApp, section, QStringLiteral("Key One"), "d", &found),
              QStringLiteral("  spaced value  "));
    EXPECT_TRUE(found);
    EXPECT_EQ(MRegistry::ReadValue(kApp, section, QStringLiteral("Key one"), "d", &found),
              QStringLiteral("d"));
    EXPECT_FALSE(found);
}

TEST_F(SettingsStore, ReadingAnAbsentKeyCreatesNothing) {
    const QString path = MRegistry::StorePath(kApp, section);
    EXPECT_EQ(
        MRegistry::ReadValue(kApp, section, QStringLiteral("nothing"), QStringLiteral("dflt")),
        QStringLiteral("dflt"));
    EXPECT_FALSE(QFile::exists(path));
    MRegistry::SaveValue(kApp, section, QStringLiteral("other"), QStringLiteral("1"));
    EXPECT_EQ(
        MRegistry::ReadValue(kApp, section, QStringLiteral("nothing"), QStringLiteral("dflt")),
        QStringLiteral("dflt"));
    QSettings check(path, QSettings::IniFormat);
    EXPECT_FALSE(check.contains(QStringLiteral("nothing")));
}

TEST_F(SettingsStore, AValueThatIsNotTextRaisesAndTheWrapperAnswersTheDefault) {
    WriteRaw("[General]\nxFadeStepTime=0.1, 0.2\nanInt=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x5)\n");
    try {
        MRegistry::ReadValue(kApp, section, QStringLiteral("xFadeStepTime"), QStringLiteral("0.1"));
        FAIL();
    } catch (const RegistryError& e) {
        EXPECT_EQ(e.description, QStringLiteral("Registry data not a string"));
        EXPECT_EQ(e.number, 0x80040000u + 2000 + 7);
    }
    EXPECT_EQ(ErrorOf([&] { MRegistry::ReadValue(kApp, section, QStringLiteral("anInt"), "0"); }),
              0x80040000u + 2000 + 4);
}

// The program's own wrappers work on the program's own place in the store.
class ProgramSettings : public ::testing::Test {
protected:
    void TearDown() override {
        QSettings s(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Marrowfield"),
                    QStringLiteral("Tessaview"));
        s.remove(QStringLiteral("probe"));
        s.sync();
    }
};

TEST_F(ProgramSettings, StoredValuesComeBackTrimmedButDefaultsExactlyAsGiven) {
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("  0.1  ")),
              QStringLiteral("  0.1  "));
    SaveSetting(QStringLiteral("probe"), QStringLiteral("  /srv/photos   "));
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("x")),
              QStringLiteral("/srv/photos"));
    // An empty stored value is a value, not an absence.
    SaveSetting(QStringLiteral("probe"), QString());
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("0.1")), QString());
}

TEST_F(ProgramSettings, WrappersNeverRaise) {
    EXPECT_EQ(GetSetting(QString(), QStringLiteral(" dflt ")), QStringLiteral(" dflt "));
    EXPECT_NO_THROW(SaveSetting(QString(), QStringLiteral("v")));
    SaveSetting(QStringLiteral("probe"), QStringLiteral("a"));
    QSettings raw(MRegistry::StorePath(QStringLiteral("Marrowfield"), QStringLiteral("Tessaview")),
                  QSettings::IniFormat);
    raw.setValue(QStringLiteral("probe"), QStringList{QStringLiteral("1"), QStringLiteral("2")});
    raw.sync();
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("0.1")), QStringLiteral("0.1"));
}

TEST_F(ProgramSettings, AStoreThatCannotBeWrittenIsPassedOverQuietly) {
    const QString path =
        MRegistry::StorePath(QStringLiteral("MarrowfieldBlocked"), QStringLiteral("Tessaview"));
    QDir().mkpath(path); // a folder where the file should be
    EXPECT_THROW(MRegistry::SaveValue(QStringLiteral("MarrowfieldBlocked"),
                                      QStringLiteral("Tessaview"), QStringLiteral("k"),
                                      QStringLiteral("v")),
                 RegistryError);
    QDir(path).removeRecursively();
}

} // namespace
