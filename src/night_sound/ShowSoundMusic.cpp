// The sound with each change of image and the background music: what plays, and when.
#include "show/frmSlideShow.h"

#include "app/Common.h"
#include "app/VbNumbers.h"
#include "app/modMain.h"
#include "night_sound/AudioPlayers.h"
#include "night_sound/SoundMusic.h"
#include "platform/Random.h"
#include "platform/VbTimer.h"

#include <QFile>
#include <QTextStream>
#include <utility>

namespace {

constexpr std::int32_t kVolumeStep = 150;

QString Number(int value) {
    return QString::number(value);
}

} // namespace

bool frmSlideShow::LoadAudioPlayer(std::int16_t player, const QString& file) {
    if (!modDirectShow::LoadPlayer(player, file)) return false;
    BugLog(QStringLiteral("File {") + file +
           QStringLiteral("}  was loaded successfully in player ") + Number(player));
    AudioPlayerLoaded[static_cast<std::size_t>(player)] = true;
    return true;
}

void frmSlideShow::StartAudioPlayer(std::int16_t player) {
    if (modDirectShow::StartPlayer(player))
        BugLog(QStringLiteral("Started audio player ") + Number(player) +
               QStringLiteral(" (playing correctly)"));
    else
        BugLog(QStringLiteral("Unable to start playing the  audio track in player ") +
               Number(player));
}

void frmSlideShow::PlayAudio(std::int16_t player) {
    if (player < 0 || player >= static_cast<std::int16_t>(AudioPlayerLoaded.size())) return;
    const auto slot = static_cast<std::size_t>(player);
    if (RandomSound) {
        const int count = SoundsFileBox.ListCount();
        const int index = static_cast<int>(vb::Int(platform::Rnd() * count));
        if (AudioPlayerLoaded[slot]) CloseAudioPlayer(player);
        BugLog(QStringLiteral("Choosing random sound file ") + Number(index) +
               QStringLiteral(" of ") + Number(count));
        const QString file = sound::ListingFile(SoundsFileBox.Path, SoundsFileBox.List(index));
        BugLog(QStringLiteral(">> ") + file);
        if (!LoadAudioPlayer(player, file))
            BugLog(QStringLiteral("Unable to load random sound file, ") + file);
        StartAudioPlayer(player);
    } else if (AudioPlayerLoaded[slot]) {
        // The one sound of the show stays loaded; it is only wound back.
        modDirectShow::SetPlayerPosition(player, 0);
        StartAudioPlayer(player);
    }
}

void frmSlideShow::PlayBackgroundMusic() {
    if (RandomMusicFromFolder)
        PlayMusicFromFolder();
    else
        PlayPlaylist();
}

void frmSlideShow::PlayPlaylist() {
    BugLog(QStringLiteral("Background music ... "));
    if (AudioPlayerLoaded[static_cast<std::size_t>(MusicPlayer)] &&
        modDirectShow::GetPlayerPosition(MusicPlayer) <
            modDirectShow::GetPlayerDuration(MusicPlayer)) {
        BugLog(QStringLiteral(" ... is still playing"));
        return;
    }
    QString track;
    PickANewTrackFromPlaylist(track);
    if (AudioPlayerLoaded[static_cast<std::size_t>(MusicPlayer)]) CloseAudioPlayer(MusicPlayer);
    if (LoadAudioPlayer(MusicPlayer, track))
        StartAudioPlayer(MusicPlayer);
    else
        BugLog(QStringLiteral("Unable to load track : ") + track);
}

void frmSlideShow::PickANewTrackFromPlaylist(QString& track) {
    track = QStringLiteral("(empty)");
    BugLog(QStringLiteral("  picking a random track from the playlist "));
    // Every track plays once, in random order, before the playlist is read again.
    if (lstMusicPlayList.isEmpty() && common::FileExists(MusicPlaylist)) LoadMusicPlaylist();
    if (!lstMusicPlayList.isEmpty()) {
        const auto index = static_cast<qsizetype>(
            vb::Int(static_cast<double>(lstMusicPlayList.size()) * platform::Rnd()));
        track = lstMusicPlayList.takeAt(index);
    }
    BugLog(QStringLiteral("  - chose : ") + track);
}

void frmSlideShow::LoadMusicPlaylist() {
    BugLog(QStringLiteral("LoadMusicPlaylist : ") + MusicPlaylist);
    const QString folder = common::FolderWithSeparator(MusicPlaylist);
    lstMusicPlayList.clear();
    QFile file(MusicPlaylist);
    if (file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        // Playlists are UTF-8, with or without a byte order mark, as .m3u8 ones must be.
        QTextStream in(&file);
        while (!in.atEnd()) {
            const QString track = sound::ResolvePlaylistEntry(in.readLine().trimmed(), folder);
            if (!track.isEmpty()) lstMusicPlayList << track;
            if (ExitShow) return;
        }
    }
    BugLog(Number(static_cast<int>(lstMusicPlayList.size())) + QStringLiteral(" tracks) "));
}

void frmSlideShow::PlayMusicFromFolder() {
    if (PreviousFolder == CurrentFolder) {
        BugLog(QStringLiteral("(same folder, don't change the music) player ") +
               Number(MusicPlayer) + QStringLiteral(" playback volume is ") +
               Number(modDirectShow::GetPlayerVolume(MusicPlayer)));
        if (modDirectShow::GetPlayerPosition(MusicPlayer) <
            modDirectShow::GetPlayerDuration(MusicPlayer))
            return;
        BugLog(QStringLiteral("ah - but the song has ended"));
    }
    BugLog(QStringLiteral("Choosing random music track from current folder : ") + CurrentFolder);
    // A folder that is not there (the splash, the program's own pictures) leaves the listing
    // of the last one that was.
    if (common::FileExists(CurrentFolder)) MusicFileBox.Path = CurrentFolder;
    MusicFileBox.Refresh();
    const int count = MusicFileBox.ListCount();
    BugLog(Number(count) + QStringLiteral(" tracks found "));
    for (int i = 0; i < count; ++i)
        BugLog(MusicFileBox.List(i));

    const int index = sound::FolderMusicIndex(count, platform::Rnd());
    if (AudioPlayerLoaded[static_cast<std::size_t>(NextMusicPlayer)])
        CloseAudioPlayer(NextMusicPlayer);
    const QString file = sound::ListingFile(MusicFileBox.Path, MusicFileBox.List(index));
    BugLog(QStringLiteral("Choosing ") + Number(index) + QStringLiteral(" of ") + Number(count) +
           QStringLiteral(" > ") + file);
    // The old music fades while the new starts; a folder without music thus ends the music.
    if (AudioPlayerLoaded[static_cast<std::size_t>(MusicPlayer)])
        VolDownTimer[static_cast<std::size_t>(MusicPlayer)]->setEnabled(true);
    if (LoadAudioPlayer(NextMusicPlayer, file)) {
        StartAudioPlayer(NextMusicPlayer);
        std::swap(MusicPlayer, NextMusicPlayer);
    } else {
        BugLog(QStringLiteral("Unable to load track : ") + file);
    }
}

void frmSlideShow::VolDownTimer_Timer(int index) {
    const auto player = static_cast<std::int16_t>(index);
    // Volume 0 is only 40 dB down, not silence: the fade ends by closing the player.
    const std::int32_t volume =
        std::max<std::int32_t>(0, modDirectShow::GetPlayerVolume(player) - kVolumeStep);
    modDirectShow::SetPlayerVolume(player, volume);
    if (volume == 0) {
        VolDownTimer[static_cast<std::size_t>(index)]->setEnabled(false);
        CloseAudioPlayer(index);
    }
}
