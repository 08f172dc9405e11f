#include "TestSupport.h"

#include "night_sound/AudioPlayers.h"

#include <QElapsedTimer>
#include <functional>
#include <limits>

namespace {

using namespace modDirectShow;

// Decoders report lengths and places to within a few blocks of the file's own figures.
constexpr int kToleranceMs = 60;

class AudioPlayers : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }
    void TearDown() override {
        for (std::int16_t p = 0; p < 3; ++p)
            ClosePlayer(p);
    }

    QString Make(const QString& name, const QByteArray& content) {
        return Written(folder.filePath(name), content);
    }
    QString Wav(int milliseconds) {
        return Make(QStringLiteral("%1ms.wav").arg(milliseconds), SilentWav(milliseconds));
    }

    // Lets the backend's reports arrive until the condition holds, for at most the limit.
    static bool EventuallyTrue(const std::function<bool()>& condition) {
        QElapsedTimer clock;
        clock.start();
        while (!condition()) {
            if (clock.elapsed() > kLoadLimitMs) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return true;
    }

    QTemporaryDir folder;
};

TEST(AudioVolume, TheScaleMapsOntoFortyDecibels) {
    // The show's volume, the player's level in hundredths of a decibel, the gain.
    const std::tuple<std::int32_t, std::int32_t, double> cases[] = {
        {1000, 0, 1.0},    {0, -4000, 0.01},       {850, -600, 0.501187},
        {500, -2000, 0.1}, {750, -1000, 0.316228},
    };
    for (const auto& [volume, level, gain] : cases) {
        SCOPED_TRACE(volume);
        EXPECT_EQ(VolumeToPlatform(volume), level);
        EXPECT_EQ(VolumeFromPlatform(level), volume);
        EXPECT_NEAR(PlatformToGain(level), gain, 1e-6);
        // The output keeps its gain in single precision.
        EXPECT_EQ(GainToPlatform(static_cast<float>(gain)), level);
    }
    // Levels between the scale's steps come back as whole numbers.
    EXPECT_EQ(VolumeFromPlatform(-601), 850);
    EXPECT_EQ(VolumeFromPlatform(-603), 849);
    EXPECT_EQ(GainToPlatform(0.0), kPlatformVolumeMin);
    EXPECT_EQ(GainToPlatform(2.0), kPlatformVolumeMax);
}

// A load replaces what the player held, its place and its volume too.
TEST_F(AudioPlayers, AWavLoadsWithItsLengthAtTheStartAndFullVolume) {
    ASSERT_TRUE(LoadPlayer(0, Wav(1800)));
    SetPlayerVolume(0, 500);
    ASSERT_TRUE(StartPlayer(0));
    QElapsedTimer clock;
    clock.start();
    ASSERT_TRUE(LoadPlayer(0, Wav(1500)));
    EXPECT_LT(clock.elapsed(), kLoadLimitMs);
    EXPECT_TRUE(PlayerLoaded(0));
    EXPECT_NEAR(GetPlayerDuration(0), 1500, kToleranceMs);
    EXPECT_EQ(GetPlayerPosition(0), 0);
    EXPECT_EQ(GetPlayerVolume(0), 1000);
    EXPECT_FALSE(PlayerLoaded(1));
    EXPECT_TRUE(StartPlayer(0));
}

TEST_F(AudioPlayers, VolumeReadsBackOnTheScaleAndOutOfRangeIsRefused) {
    ASSERT_TRUE(LoadPlayer(1, Wav(300)));
    for (std::int32_t v : {850, 0, 1000, 1, 999, 500}) {
        SetPlayerVolume(1, v);
        EXPECT_EQ(GetPlayerVolume(1), v);
    }
    SetPlayerVolume(1, 850);
    // Above full, and below the player's silent end: both left as they were.
    for (std::int32_t v : {1001, 5000, -1501, std::numeric_limits<std::int32_t>::max(),
                           std::numeric_limits<std::int32_t>::min()}) {
        SetPlayerVolume(1, v);
        EXPECT_EQ(GetPlayerVolume(1), 850) << v;
    }
    // Down to silence is still a level the player takes.
    SetPlayerVolume(1, -1500);
    EXPECT_EQ(GetPlayerVolume(1), -1500);
    // An empty player has no volume to set or read.
    SetPlayerVolume(2, 850);
    EXPECT_EQ(GetPlayerVolume(2), 0);
}

TEST_F(AudioPlayers, SeekingMovesThePlaceAndAnEndedSoundPlaysAgainFromTheStart) {
    ASSERT_TRUE(LoadPlayer(2, Wav(2000)));
    ASSERT_TRUE(SetPlayerPosition(2, 1200));
    EXPECT_TRUE(EventuallyTrue([] {
        return std::abs(GetPlayerPosition(2) - 1200) <= kToleranceMs;
    })) << GetPlayerPosition(2);
    EXPECT_FALSE(SetPlayerPosition(2, -1));
    EXPECT_FALSE(PlayerPlaying(2));

    // Played from near the end, it runs to the end of the file and stops there.
    ASSERT_TRUE(SetPlayerPosition(2, 1700));
    ASSERT_TRUE(StartPlayer(2));
    EXPECT_TRUE(PlayerPlaying(2));
    ASSERT_TRUE(EventuallyTrue([] { return !PlayerPlaying(2); }));
    EXPECT_NEAR(GetPlayerPosition(2), 2000, kToleranceMs);

    // The show plays its one sound again this way at each change of image.
    ASSERT_TRUE(SetPlayerPosition(2, 0));
    ASSERT_TRUE(StartPlayer(2));
    EXPECT_TRUE(EventuallyTrue([] {
        const std::int32_t at = GetPlayerPosition(2);
        return at > 100 && at < 1000;
    })) << GetPlayerPosition(2);
    EXPECT_TRUE(PlayerPlaying(2));
}

TEST_F(AudioPlayers, FilesThatCannotBePlayedFailWithinTheWaitAndLeaveThePlayerEmpty) {
    QByteArray noise(4096, '\0');
    for (int i = 0; i < noise.size(); ++i)
        noise[i] = static_cast<char>((i * 7919) % 251);
    const std::pair<const char*, QString> cases[] = {
        {"text named wav", Make(QStringLiteral("note.wav"), "only some text in a wav's name\n")},
        {"noise named ogg", Make(QStringLiteral("noise.ogg"), noise)},
        {"header cut short", Make(QStringLiteral("cut.wav"), SilentWav(500).left(30))},
        {"empty file", Make(QStringLiteral("empty.wav"), QByteArray())},
        {"missing file", folder.filePath(QStringLiteral("gone.wav"))},
        {"folder", folder.path()},
        {"no name", QString()},
    };
    for (const auto& [name, path] : cases) {
        SCOPED_TRACE(name);
        // A good file first, so that a failed load is seen to empty the player.
        ASSERT_TRUE(LoadPlayer(0, Wav(400)));
        QElapsedTimer clock;
        clock.start();
        EXPECT_FALSE(LoadPlayer(0, path));
        EXPECT_LT(clock.elapsed(), kLoadLimitMs);
        EXPECT_FALSE(PlayerLoaded(0));
        EXPECT_EQ(GetPlayerDuration(0), 0);
        EXPECT_FALSE(StartPlayer(0));
    }
}

TEST_F(AudioPlayers, ClosingEmptiesThePlayerAndAnEmptyPlayerStaysEmpty) {
    EXPECT_TRUE(ClosePlayer(1));
    EXPECT_FALSE(PlayerLoaded(1));
    EXPECT_EQ(GetPlayerPosition(1), 0);

    ASSERT_TRUE(LoadPlayer(0, Wav(800)));
    ASSERT_TRUE(LoadPlayer(1, Wav(1600)));
    ASSERT_TRUE(StartPlayer(1));
    EXPECT_TRUE(ClosePlayer(1));
    EXPECT_TRUE(ClosePlayer(1));
    EXPECT_FALSE(PlayerLoaded(1));
    EXPECT_EQ(GetPlayerDuration(1), 0);
    EXPECT_FALSE(StartPlayer(1));
    EXPECT_FALSE(SetPlayerPosition(1, 0));
    // The other players are their own.
    EXPECT_TRUE(PlayerLoaded(0));
    EXPECT_NEAR(GetPlayerDuration(0), 800, kToleranceMs);
}

TEST_F(AudioPlayers, NumbersOutsideTheThreePlayersDoNothing) {
    const QString wav = Wav(300);
    for (const std::int16_t p :
         {std::int16_t{-1}, std::int16_t{3}, std::int16_t{100},
          std::numeric_limits<std::int16_t>::min(), std::numeric_limits<std::int16_t>::max()}) {
        SCOPED_TRACE(p);
        EXPECT_FALSE(LoadPlayer(p, wav));
        EXPECT_FALSE(StartPlayer(p));
        EXPECT_FALSE(ClosePlayer(p));
        EXPECT_FALSE(PlayerLoaded(p));
        SetPlayerVolume(p, 500);
        EXPECT_EQ(GetPlayerVolume(p), 0);
        EXPECT_EQ(GetPlayerDuration(p), 0);
        EXPECT_EQ(GetPlayerPosition(p), 0);
        EXPECT_FALSE(SetPlayerPosition(p, 0));
    }
    for (std::int16_t p = 0; p < 3; ++p)
        EXPECT_FALSE(PlayerLoaded(p));
}

} // namespace
