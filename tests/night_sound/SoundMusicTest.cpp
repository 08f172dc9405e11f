#include "TestSupport.h"
#include "lists/ListFiles.h"

#include "compose/DibImage.h"
#include "night_sound/AudioPlayers.h"
#include "night_sound/SoundMusic.h"

#include <QElapsedTimer>
#include <functional>

namespace {

using modDirectShow::PlayerLoaded;

TEST(FolderMusicDraw, RoundsToTheNearestSoThatTheEndTracksHaveHalfTheChance) {
    // Tracks in the folder, the draw, the track chosen.
    const std::tuple<int, double, int> cases[] = {
        {5, 0.0, 0},   {5, 0.124, 0}, {5, 0.125, 0}, {5, 0.126, 1}, {5, 0.15, 1},
        {5, 0.375, 2}, {5, 0.625, 2}, {5, 0.874, 3}, {5, 0.875, 4}, {5, 0.999, 4},
        {2, 0.49, 0},  {2, 0.51, 1},  {1, 0.99, 0},  {0, 0.2, 0},   {0, 0.9, 0},
    };
    for (const auto& [count, rnd, index] : cases)
        EXPECT_EQ(sound::FolderMusicIndex(count, rnd), index) << count << " " << rnd;
}

class SoundMusic : public ShowOnScreenFixture {
protected:
    void SetUp() override {
        ShowOnScreenFixture::SetUp();
        show->OpenDebugLog();
    }

    QString Make(const QString& relative, const QByteArray& content = SilentWav(1500)) {
        return Written(install.filePath(relative), content);
    }
    QString Folder(const QString& relative) const { return install.filePath(relative) + '/'; }

    // One change of frame to that image, as ChangePhotos makes it; what it logged.
    QStringList Change(const QString& image) {
        const int first = show->lstDebug->count();
        show->ShowList.add(image);
        show->CaptionsList.add(QString());
        dib::Dib canvas(dib::ImageToDib(Solid({8, 8}, Qt::gray)));
        show->NewCrossfade(canvas, 0, 0, 8, 8, 0, 0, 0, 1.0);
        return LogLines(show).mid(first);
    }
    // Plays the player's song out from just before its end; false if it never gets there.
    static bool SongEnds(std::int16_t player) {
        modDirectShow::SetPlayerPosition(player, modDirectShow::GetPlayerDuration(player) - 50);
        QElapsedTimer clock;
        clock.start();
        while (modDirectShow::GetPlayerPosition(player) <
               modDirectShow::GetPlayerDuration(player)) {
            if (clock.elapsed() > modDirectShow::kLoadLimitMs) return false;
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return true;
    }
};

TEST_F(SoundMusic, APlaylistQueuesTheTracksItNamesThatCanBeFound) {
    const QString album = Make(QStringLiteral("Music/Album/b.wav"));
    const QString elsewhere = Make(QStringLiteral("Elsewhere/c.wav"));
    const QString accented = Make(QStringLiteral("Music/Été.wav"));
    const QString plain = Make(QStringLiteral("Music/a.wav"));
    // Each line, and the track it gives (none when empty).
    const std::pair<QString, QString> lines[] = {
        {QString::fromUtf8("\xEF\xBB\xBF") + QStringLiteral("a.wav"), plain},
        {QStringLiteral("#EXTM3U"), {}},
        {QStringLiteral("#EXTINF:12,Artist - Title"), {}},
        {QString(), {}},
        {QStringLiteral("   Album/b.wav  "), album},
        {elsewhere, elsewhere},
        {QStringLiteral("\\Album\\b.wav"), album},
        {QStringLiteral("Été.wav"), accented},
        {QStringLiteral("missing.wav"), {}},
        {install.filePath(QStringLiteral("gone.wav")), {}},
        {QStringLiteral("/Album/b.wav"), {}},
        {QStringLiteral("Album"), {}},
        {QStringLiteral("#a.wav"), {}},
    };
    QByteArray text;
    QStringList expected;
    for (const auto& [line, track] : lines) {
        text += line.toUtf8() + "\r\n";
        if (!track.isEmpty()) expected << track;
    }
    show->MusicPlaylist = Make(QStringLiteral("Music/list.m3u8"), text);
    show->LoadMusicPlaylist();
    EXPECT_EQ(show->lstMusicPlayList, expected);
    EXPECT_TRUE(LogLines(show).contains(QStringLiteral("5 tracks) ")));
}

TEST_F(SoundMusic, EachTrackOfThePlaylistPlaysOnceBeforeItIsReadAgain) {
    const QStringList tracks{Make(QStringLiteral("Music/1.wav")),
                             Make(QStringLiteral("Music/2.wav")),
                             Make(QStringLiteral("Music/3.wav"))};
    show->MusicPlaylist = Make(QStringLiteral("Music/list.m3u"), "1.wav\r\n2.wav\r\n3.wav\r\n");
    // From the queue as it shrinks: the last of three, the first of two, the one left; then
    // the middle of the playlist read again.
    platform::FeedRandom({0.9, 0.0, 0.5, 0.4});
    QStringList picked;
    for (int i = 0; i < 4; ++i) {
        QString track;
        show->PickANewTrackFromPlaylist(track);
        picked << track;
    }
    EXPECT_EQ(picked, QStringList({tracks[2], tracks[0], tracks[1], tracks[1]}));
    EXPECT_EQ(LogLines(show).filter(QStringLiteral("LoadMusicPlaylist : ")).size(), 2);

    show->MusicPlaylist = install.filePath(QStringLiteral("none.m3u"));
    show->lstMusicPlayList.clear();
    QString track;
    show->PickANewTrackFromPlaylist(track);
    EXPECT_EQ(track, QStringLiteral("(empty)"));
}

TEST_F(SoundMusic, AFadeTakesSevenTicksFromFullVolumeAndClosesThePlayer) {
    ASSERT_TRUE(show->LoadAudioPlayer(1, Make(QStringLiteral("Music/a.wav"))));
    show->VolDownTimer[1]->setEnabled(true);
    std::vector<int> volumes;
    while (show->VolDownTimer[1]->Enabled() && volumes.size() < 10) {
        show->VolDownTimer[1]->fire();
        volumes.push_back(show->AudioPlayerLoaded[1] ? modDirectShow::GetPlayerVolume(1) : -1);
    }
    EXPECT_EQ(volumes, std::vector<int>({850, 700, 550, 400, 250, 100, -1}));
    EXPECT_FALSE(PlayerLoaded(1));
}

TEST_F(SoundMusic, PlaylistMusicMovesToTheNextTrackWhenOneEnds) {
    const QString first = Make(QStringLiteral("Music/first.wav"));
    const QString second = Make(QStringLiteral("Music/second.wav"));
    show->PlayMusic = true;
    show->RandomMusicFromFolder = false;
    show->MusicPlaylist = Make(QStringLiteral("Music/list.m3u"), "first.wav\r\nsecond.wav\r\n");
    platform::FeedRandom({0.0, 0.0});
    const QString photo = install.filePath(QStringLiteral("p.jpg"));

    EXPECT_TRUE(Change(photo).contains(QStringLiteral("File {") + first +
                                       QStringLiteral("}  was loaded successfully in player 1")));
    EXPECT_TRUE(Change(photo).contains(QStringLiteral(" ... is still playing")));
    ASSERT_TRUE(SongEnds(1));
    const QStringList next = Change(photo);
    EXPECT_TRUE(next.contains(QStringLiteral("  - chose : ") + second));
    EXPECT_TRUE(next.contains(QStringLiteral("Started audio player 1 (playing correctly)")));
}

TEST_F(SoundMusic, FolderMusicChangesOnlyWithTheFolderOrTheSongsEndAndFadesTheOld) {
    const QString song = Make(QStringLiteral("A/song.wav"));
    const QString tune = Make(QStringLiteral("B/tune.wav"));
    Make(QStringLiteral("B/notes.txt"), "not music");
    Make(QStringLiteral("C/p5.jpg"), "a photo without music");
    show->PlayMusic = true;
    show->RandomMusicFromFolder = true;
    const auto choosing = [this](const char* folder, const QString& file) {
        return QStringList{QStringLiteral("Choosing random music track from current folder : ") +
                               Folder(QLatin1String(folder)),
                           QStringLiteral("Choosing 0 of 1 > ") + file};
    };
    struct Step {
        const char* what;
        QString image;
        std::function<void()> before;
        QStringList logged;
        std::int16_t musicPlayer;
        bool oldFades;
    };
    const QString unable = QStringLiteral("Unable to load track : ") + Folder(QStringLiteral("C"));
    const QString same =
        QStringLiteral("(same folder, don't change the music) player 2 playback volume is 1000");
    const auto at = [this](const char* image) { return install.filePath(QLatin1String(image)); };
    // clang-format off
    const Step steps[] = {
        {"first folder", at("A/p1.jpg"), {}, choosing("A", song), 2, false},
        {"same folder, song playing", at("A/p2.jpg"), {}, {same}, 2, false},
        {"new folder", at("B/p3.jpg"), {}, choosing("B", tune), 1, true},
        {"same folder, song ended", at("B/p4.jpg"), [] { ASSERT_TRUE(SongEnds(1)); },
         QStringList{"ah - but the song has ended"} + choosing("B", tune), 2, true},
        {"folder without music", at("C/p5.jpg"), {},
         {choosing("C", {})[0], "0 tracks found ", unable}, 2, true},
    };
    // clang-format on
    for (const Step& step : steps) {
        SCOPED_TRACE(step.what);
        if (step.before) step.before();
        const std::int16_t old = show->MusicPlayer;
        const QStringList log = Change(step.image);
        for (const QString& line : step.logged)
            EXPECT_TRUE(log.contains(line)) << line.toStdString();
        EXPECT_EQ(log.filter(QStringLiteral("Choosing random music")).size(),
                  step.logged.filter(QStringLiteral("Choosing random music")).size());
        EXPECT_EQ(show->MusicPlayer, step.musicPlayer);
        VbTimer* fade = show->VolDownTimer[static_cast<std::size_t>(old)];
        EXPECT_EQ(fade->Enabled(), step.oldFades);
        // The old music fades out to its end before the next change.
        for (int tick = 0; tick < 7 && fade->Enabled(); ++tick)
            fade->fire();
        EXPECT_FALSE(fade->Enabled());
        EXPECT_EQ(PlayerLoaded(old), !step.oldFades && old == show->MusicPlayer);
    }
}

using SoundShow = FormsFixture;

// The sound plays at each change after the start and none during it; a random sound that is not
// audio is logged at each change and the show goes on.
TEST_F(SoundShow, ASoundPlaysAtEachChangeAfterTheStartAndNoneDuringIt) {
    const QString played = QStringLiteral("Started audio player 0 (playing correctly)");
    const QString chosen = QStringLiteral("Choosing random sound file 0 of 1");
    const struct {
        bool random;
        QByteArray content;
    } rows[] = {{true, SilentWav(300)}, {false, SilentWav(300)}, {true, "RIFF, but no sound"}};
    for (const auto& row : rows) {
        const bool audio = row.content.startsWith("RIFF") && row.content.size() > 100;
        SCOPED_TRACE(testing::Message() << "random " << row.random << ", audio " << audio);
        const QString chime =
            Written(install.filePath(QStringLiteral("Sounds/chime.wav")), row.content);
        const QString unable = QStringLiteral("Unable to load random sound file, ") + chime;
        frmConfig* config = ReloadConfig();
        config->chkDebug->setChecked(true);
        config->chkPlaySound->setChecked(true);
        config->txtSoundFile->setText(chime);
        (row.random ? config->optRandomSound : config->optSpecificSound)->setChecked(true);
        frmSlideShow* show = frmSlideShow::instance();
        show->StartShow();
        ASSERT_TRUE(show->MainTimer->Enabled());
        EXPECT_EQ(LogCount(show, played), 0);

        const std::int16_t frames = show->FrameCounter;
        for (int change = 1; change <= 2; ++change) {
            platform::AdvanceClock((show->ImageInterval + 3) * 1000);
            show->MainTimer_Timer();
            ASSERT_EQ(show->FrameCounter, frames + change);
            EXPECT_EQ(LogCount(show, played), audio ? change : 0);
            EXPECT_EQ(LogCount(show, chosen), row.random ? change : 0);
            EXPECT_EQ(LogCount(show, unable), audio ? 0 : change);
        }
        show->StoptheShow();
        EXPECT_FALSE(PlayerLoaded(0));
    }
}

TEST_F(SoundShow, ThePanelBrowsesForFilesAndPlaysTheChosenOrARandomSound) {
    frmConfig* config = frmConfig::instance();
    const QString specific =
        Written(install.filePath(QStringLiteral("Sounds/chime.wav")), SilentWav(2000));
    const QString playlist = install.filePath(QStringLiteral("list.m3u8"));

    config->chkPlaySound->setChecked(false);
    EXPECT_FALSE(config->cmdPreviewSound->isEnabled());
    EXPECT_FALSE(config->cmdBrowseForSound->isEnabled());
    config->chkPlaySound->setChecked(true);
    EXPECT_TRUE(config->cmdPreviewSound->isEnabled());

    QString answer = specific;
    platform::SetFileAnswerer([&answer](const QString&) { return answer; });
    config->optRandomSound->setChecked(true);
    config->cmdBrowseForSound->click();
    EXPECT_EQ(config->txtSoundFile->text(), specific);
    EXPECT_TRUE(config->optSpecificSound->isChecked());
    EXPECT_EQ(config->lblSoundLength->text(), QStringLiteral(":02 s"));
    config->cmdPreviewSound->click();
    EXPECT_TRUE(modDirectShow::PlayerPlaying(0));

    // Random plays from the Sounds folder whatever the box holds.
    config->txtSoundFile->setText(install.filePath(QStringLiteral("gone.wav")));
    EXPECT_EQ(config->lblSoundLength->text(), QStringLiteral("err"));
    config->optRandomSound->setChecked(true);
    config->cmdPreviewSound->click();
    EXPECT_TRUE(modDirectShow::PlayerPlaying(0));

    answer = playlist;
    config->optRandomMusicFromFolder->setChecked(true);
    config->cmdBrowseForMusicPlaylist->click();
    EXPECT_EQ(config->txtMusicPlaylist->text(), playlist);
    EXPECT_TRUE(config->optSpecificPlayList->isChecked());
    // A cancelled dialog changes nothing.
    answer.clear();
    config->cmdBrowseForMusicPlaylist->click();
    config->cmdBrowseForSound->click();
    EXPECT_EQ(config->txtMusicPlaylist->text(), playlist);
    EXPECT_EQ(config->txtSoundFile->text(), install.filePath(QStringLiteral("gone.wav")));
    platform::SetFileAnswerer(nullptr);

    // The window lets go of the player it played the preview in.
    Forms::UnloadAll();
    EXPECT_FALSE(PlayerLoaded(0));
}

} // namespace
