#include "TestSupport.h"
#include "prefs/MRegistry.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QSettings>
#include <utility>

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

    void WriteRaw(const QByteArray& ini) { PutFile(MRegistry::StorePath(kApp, section), ini); }

    const QString kApp = QStringLiteral("MarrowfieldTests");
    QString section;
};

// What a call raised, or {0, ""} when it raised nothing.
using Raised = std::pair<std::uint32_t, QString>;
Raised RaisedBy(const std::function<void()>& call) {
    try {
        call();
    } catch (const RegistryError& e) {
        return {e.number, e.description};
    }
    return {0, QString()};
}

TEST_F(SettingsStore, EmptyNamesRaiseTheirOwnErrorsInOrder) {
    const Raised app{0x800403E8u, QStringLiteral("AppName may not be empty")};
    const Raised sec{0x800403E9u, QStringLiteral("Section may not be empty")};
    const Raised key{0x800403EAu, QStringLiteral("Key may not be empty")};
    EXPECT_EQ(RaisedBy([&] { MRegistry::SaveValue(QStringLiteral("  "), section, "k", "v"); }),
              app);
    EXPECT_EQ(RaisedBy([&] { MRegistry::ReadValue(kApp, QStringLiteral(" "), "k", "d"); }), sec);
    EXPECT_EQ(RaisedBy([&] { MRegistry::ReadValue(kApp, section, QStringLiteral("\t"), "d"); }),
              key);
    // AppName is tested first even when everything is empty.
    EXPECT_EQ(RaisedBy([&] { MRegistry::SaveValue(QString(), QString(), QString(), "v"); }), app);
    EXPECT_EQ(RaisedBy([&] { MRegistry::SaveValue(kApp, QString(), "k", "v"); }), sec);
    EXPECT_EQ(RaisedBy([&] { MRegistry::ReadValue(kApp, section, QString(), QString()); }), key);
}

// Names are trimmed but the key is not; an absent key reads as the default and is not made.
TEST_F(SettingsStore, ValuesRoundTripAndAbsentKeysAreNotMade) {
    const QString path = MRegistry::StorePath(kApp, section);
    EXPECT_EQ(MRegistry::ReadValue(kApp, section, QStringLiteral("Key One"), "dflt"),
              QStringLiteral("dflt"));
    EXPECT_FALSE(QFile::exists(path));
    MRegistry::SaveValue(QStringLiteral(" ") + kApp + " ", " " + section, QStringLiteral("Key One"),
                         QStringLiteral("  spaced value  "));
    bool found = false;
    EXPECT_EQ(MRegistry::ReadValue(kApp, section, QStringLiteral("Key One"), "d", &found),
              QStringLiteral("  spaced value  "));
    EXPECT_TRUE(found);
    EXPECT_EQ(MRegistry::ReadValue(kApp, section, QStringLiteral("Key one"), "d", &found),
              QStringLiteral("d"));
    EXPECT_FALSE(found);
    EXPECT_FALSE(QSettings(path, QSettings::IniFormat).contains(QStringLiteral("Key one")));
}

// A value that is not text raises, and so does a store that cannot be written.
TEST_F(SettingsStore, StoreErrorsRaise) {
    WriteRaw("[General]\nxFadeStepTime=0.1, 0.2\nanInt=@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x5)\n");
    EXPECT_EQ(RaisedBy([&] {
                  MRegistry::ReadValue(kApp, section, QStringLiteral("xFadeStepTime"), "0.1");
              }),
              Raised(0x80040000u + 2000 + 7, QStringLiteral("Registry data not a string")));
    EXPECT_EQ(
        RaisedBy([&] { MRegistry::ReadValue(kApp, section, QStringLiteral("anInt"), "0"); }).first,
        0x80040000u + 2000 + 4);

    const QString path = MRegistry::StorePath(kApp, section);
    QFile::remove(path);
    ASSERT_TRUE(QDir().mkpath(path)); // a folder where the file should be
    const auto save = [&] {
        MRegistry::SaveValue(kApp, section, QStringLiteral("k"), QStringLiteral("v"));
    };
    EXPECT_EQ(RaisedBy(save),
              Raised(0x80040000u + 2005, QStringLiteral("Could not open/create registry section")));
    QDir(path).removeRecursively();

    // A store that opens but cannot be written, even by root.
    QDir base = QFileInfo(path).absoluteDir();
    base.cdUp();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("/proc/self"));
    const auto back = qScopeGuard(
        [&] { QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, base.path()); });
    EXPECT_EQ(RaisedBy(save),
              Raised(0x80040000u + 2005, QStringLiteral("Could not set key value")));
}

// The program's own wrappers work on the program's own place in the store, and never raise.
TEST(ProgramSettings, StoredValuesComeBackTrimmedDefaultsExactlyAsGivenAndNothingRaises) {
    const auto forget = qScopeGuard([] { ForgetSetting(QStringLiteral("probe")); });
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("  0.1  ")),
              QStringLiteral("  0.1  "));
    SaveSetting(QStringLiteral("probe"), QStringLiteral("  /srv/photos   "));
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("x")),
              QStringLiteral("/srv/photos"));
    // An empty stored value is a value, not an absence.
    SaveSetting(QStringLiteral("probe"), QString());
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("0.1")), QString());

    EXPECT_EQ(GetSetting(QString(), QStringLiteral(" dflt ")), QStringLiteral(" dflt "));
    EXPECT_NO_THROW(SaveSetting(QString(), QStringLiteral("v")));
    QSettings raw(MRegistry::StorePath(QStringLiteral("Marrowfield"), QStringLiteral("Tessaview")),
                  QSettings::IniFormat);
    raw.setValue(QStringLiteral("probe"), QStringList{QStringLiteral("1"), QStringLiteral("2")});
    raw.sync();
    EXPECT_EQ(GetSetting(QStringLiteral("probe"), QStringLiteral("0.1")), QStringLiteral("0.1"));
}

} // namespace
