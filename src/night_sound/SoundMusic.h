#pragma once

#include <QString>

// The choices behind the show's sound and music that need no player and no window.
namespace sound {

// What counts as music in a folder of photographs, and as a sound in the Sounds folder: the
// formats the media backend can usually play. A folder of photographs holds images, text and
// camera files besides, so the listing must pick out audio by its extension.
inline constexpr char kAudioFilePattern[] =
    "*.mp3;*.wav;*.ogg;*.oga;*.opus;*.flac;*.m4a;*.aac;*.wma";

// The same extensions for a file dialog, and the playlist formats read.
QString AudioFileDialogFilter();
QString PlaylistDialogFilter();

// The file of a listing: its folder, with or without the closing separator, and a name.
QString ListingFile(const QString& folder, const QString& name);

// The track a playlist line names, or empty when it names no file there is. playlistFolder
// ends with its separator.
QString ResolvePlaylistEntry(const QString& line, const QString& playlistFolder);

// The draw of a track from a folder of count tracks: (count - 1) * rnd rounded to the nearest,
// so that the first and last tracks have half the chance of the others. An empty folder
// gives 0.
int FolderMusicIndex(int count, double rnd);

} // namespace sound
