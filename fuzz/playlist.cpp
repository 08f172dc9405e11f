// Music playlists (.m3u, .m3u8): whatever a playlist holds, the show's queue names only tracks
// that are there, each as the line found it.
#include "FormsSupport.h"

#include <QFileInfo>

namespace {

// Tracks beside the playlist, in a folder below it and elsewhere, for lines to find.
QString MakeTracks() {
    const QString music = fuzz::InstallPath(QStringLiteral("Music"));
    QDir().mkpath(music + QStringLiteral("/Live"));
    for (const char* name : {"a.mp3", "B.ogg", "Live/c.flac", "space d.wav", "ü.mp3"})
        fuzz::WriteFile(music + QLatin1Char('/') + QString::fromUtf8(name), "tune");
    return music;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzz::Show();
    MakeTracks();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    frmSlideShow* show = fuzz::Show();
    show->MusicPlaylist = fuzz::InstallPath(QStringLiteral("Music/list.m3u8"));
    fuzz::WriteFile(show->MusicPlaylist, fuzz::Bytes(data, size));
    show->LoadMusicPlaylist();
    for (const QString& track : show->lstMusicPlayList)
        fuzz::Check(QFileInfo::exists(track));
    // A draw takes each track once and leaves the queue shorter.
    const qsizetype before = show->lstMusicPlayList.size();
    QString track;
    show->PickANewTrackFromPlaylist(track);
    fuzz::Check(before == 0 || show->lstMusicPlayList.size() == before - 1);
    return 0;
}
