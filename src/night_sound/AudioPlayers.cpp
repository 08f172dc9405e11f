#include "night_sound/AudioPlayers.h"

#include "app/VbNumbers.h"

#include <QAudioOutput>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QMediaPlayer>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <memory>

namespace modDirectShow {
namespace {

// One loaded file. Members go in the reverse of their order here, so the media player goes
// first: it reads the file and plays into the output.
struct Player {
    std::unique_ptr<QFile> file;
    std::unique_ptr<QAudioOutput> output = std::make_unique<QAudioOutput>();
    std::unique_ptr<QMediaPlayer> media = std::make_unique<QMediaPlayer>();

    explicit Player(const QString& path) : file(std::make_unique<QFile>(path)) {
        media->setAudioOutput(output.get());
    }
    Player(const Player&) = delete;
    Player& operator=(const Player&) = delete;
    ~Player() {
        media->stop();
        // Emptied first: a player destroyed with its file still in it is taken down while the
        // decoder still reports to it, which now and then ends in a crash.
        media->setSource(QUrl());
        media->setAudioOutput(nullptr);
    }
};

std::array<std::unique_ptr<Player>, 3> g_players;
bool g_releaseAtExitArranged = false;

// Media objects must be gone before the application object is: the multimedia backend does
// not survive it, and the players would otherwise only go with the program's static data.
void ReleaseAllAtExit() {
    for (auto& p : g_players)
        p.reset();
    g_releaseAtExitArranged = false;
}

Player* Slot(std::int16_t player) {
    if (player < 0 || player >= static_cast<std::int16_t>(g_players.size())) return nullptr;
    return g_players[static_cast<std::size_t>(player)].get();
}

bool Settled(const QMediaPlayer& media) {
    if (media.error() != QMediaPlayer::NoError) return true;
    switch (media.mediaStatus()) {
    case QMediaPlayer::LoadedMedia:
    case QMediaPlayer::BufferedMedia:
    case QMediaPlayer::InvalidMedia:
        return true;
    default:
        return false;
    }
}

bool Playable(const QMediaPlayer& media) {
    return media.error() == QMediaPlayer::NoError &&
           (media.mediaStatus() == QMediaPlayer::LoadedMedia ||
            media.mediaStatus() == QMediaPlayer::BufferedMedia);
}

// The backend reports in its own time and from its own threads; events run meanwhile, as the
// show expects of a load, but never for longer than the limit.
void WaitUntilSettled(QMediaPlayer& media) {
    QEventLoop loop;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(&media, &QMediaPlayer::mediaStatusChanged, &loop, [&loop, &media] {
        if (Settled(media)) loop.quit();
    });
    QObject::connect(&media, &QMediaPlayer::errorOccurred, &loop, &QEventLoop::quit);
    limit.start(kLoadLimitMs);
    // A file the backend refuses outright is known bad before the wait starts.
    if (!Settled(media)) loop.exec();
}

std::int32_t ClampToInt32(qint64 value) {
    return static_cast<std::int32_t>(std::clamp<qint64>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

} // namespace

std::int64_t VolumeToPlatform(std::int32_t volume) {
    return (std::int64_t{volume} - 1000) * 4;
}

std::int32_t VolumeFromPlatform(std::int32_t platform) {
    return static_cast<std::int32_t>(vb::RoundHalfEven(platform / 4.0)) + 1000;
}

double PlatformToGain(std::int32_t platform) {
    return std::pow(10.0, platform / 100.0 / 20.0);
}

std::int32_t GainToPlatform(double gain) {
    if (!(gain > 0.0)) return kPlatformVolumeMin;
    const double level = std::round(2000.0 * std::log10(gain));
    return static_cast<std::int32_t>(
        std::clamp<double>(level, kPlatformVolumeMin, kPlatformVolumeMax));
}

bool LoadPlayer(std::int16_t player, const QString& file) {
    if (player < 0 || player >= static_cast<std::int16_t>(g_players.size())) return false;
    auto& slot = g_players[static_cast<std::size_t>(player)];
    // The old file goes whatever becomes of the new one.
    slot.reset();
    if (!QCoreApplication::instance()) return false;
    // Not worth a round trip through the backend.
    const QFileInfo info(file);
    if (!info.isFile() || !info.isReadable() || info.size() == 0) return false;

    if (!g_releaseAtExitArranged) {
        qAddPostRoutine(ReleaseAllAtExit);
        g_releaseAtExitArranged = true;
    }
    auto loaded = std::make_unique<Player>(info.absoluteFilePath());
    if (!loaded->file->open(QIODevice::ReadOnly)) return false;
    // The file is handed over open rather than by its name. Given a name, the backend starts
    // decoding on threads of its own while it is still setting up, and now and then the two
    // lock each other out for good; the data of an open file is fed to it from this thread,
    // so nothing is decoded before the setting up is over.
    loaded->media->setSourceDevice(loaded->file.get(),
                                   QUrl::fromLocalFile(info.absoluteFilePath()));
    WaitUntilSettled(*loaded->media);
    if (!Playable(*loaded->media)) return false;
    loaded->output->setVolume(static_cast<float>(PlatformToGain(kPlatformVolumeMax)));
    loaded->media->setPlaybackRate(1.0);
    loaded->media->setPosition(0);
    slot = std::move(loaded);
    return true;
}

bool StartPlayer(std::int16_t player) {
    Player* p = Slot(player);
    if (!p) return false;
    p->media->play();
    return p->media->error() == QMediaPlayer::NoError;
}

bool ClosePlayer(std::int16_t player) {
    if (player < 0 || player >= static_cast<std::int16_t>(g_players.size())) return false;
    g_players[static_cast<std::size_t>(player)].reset();
    return true;
}

bool PlayerLoaded(std::int16_t player) {
    return Slot(player) != nullptr;
}

bool PlayerPlaying(std::int16_t player) {
    const Player* p = Slot(player);
    return p && p->media->playbackState() == QMediaPlayer::PlayingState;
}

void SetPlayerVolume(std::int16_t player, std::int32_t volume) {
    Player* p = Slot(player);
    if (!p) return;
    const std::int64_t platform = VolumeToPlatform(volume);
    if (platform < kPlatformVolumeMin || platform > kPlatformVolumeMax) return;
    p->output->setVolume(static_cast<float>(PlatformToGain(static_cast<std::int32_t>(platform))));
}

std::int32_t GetPlayerVolume(std::int16_t player) {
    const Player* p = Slot(player);
    if (!p) return 0;
    return VolumeFromPlatform(GainToPlatform(p->output->volume()));
}

std::int32_t GetPlayerDuration(std::int16_t player) {
    const Player* p = Slot(player);
    return p ? ClampToInt32(p->media->duration()) : 0;
}

std::int32_t GetPlayerPosition(std::int16_t player) {
    const Player* p = Slot(player);
    if (!p) return 0;
    // A file played to its end stands at its length, which is how the show tells that a song
    // is over: decoders that only estimate the length may stop a little short of it.
    if (p->media->mediaStatus() == QMediaPlayer::EndOfMedia)
        return ClampToInt32(p->media->duration());
    return ClampToInt32(p->media->position());
}

bool SetPlayerPosition(std::int16_t player, std::int32_t ms) {
    Player* p = Slot(player);
    if (!p || ms < 0) return false;
    p->media->setPosition(ms);
    return true;
}

} // namespace modDirectShow
