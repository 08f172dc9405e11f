#include "night_sound/SoundMusic.h"

#include "app/VbNumbers.h"

#include <QFileInfo>
#include <algorithm>

namespace sound {
namespace {

bool IsFile(const QString& path) {
    // No file name holds a zero character; asked about one, the toolkit warns on every line
    // of a damaged playlist.
    return !path.isEmpty() && !path.contains(QChar(0)) && QFileInfo(path).isFile();
}

QString Extensions(const char* patterns) {
    return QString::fromLatin1(patterns).replace(';', ' ');
}

} // namespace

QString AudioFileDialogFilter() {
    return QStringLiteral("Audio files (%1);;All files (*)").arg(Extensions(kAudioFilePattern));
}

QString PlaylistDialogFilter() {
    return QStringLiteral("Playlists (*.m3u *.m3u8);;All files (*)");
}

QString ListingFile(const QString& folder, const QString& name) {
    if (folder.endsWith('/') || folder.endsWith('\\')) return folder + name;
    return folder + '/' + name;
}

QString ResolvePlaylistEntry(const QString& line, const QString& playlistFolder) {
    // Comments and the extended format's tags; without this they would fall away anyway,
    // as no file bears their names.
    if (line.isEmpty() || line.startsWith('#')) return QString();
    // An absolute path is taken as it stands. A relative one is not tried against the working
    // folder first, as it was where the working folder was the program's own: here it is
    // whatever the desktop started us in, and a name there would be found by chance.
    if (line.startsWith('/')) return IsFile(line) ? line : QString();
    // A line that begins with a backslash was written for the root of a drive: like the
    // other relative lines it is looked for beside the playlist. Playlists made on such
    // systems separate folders with backslashes, which are ours turned round.
    QString relative = line.startsWith('\\') ? line.mid(1) : line;
    relative.replace('\\', '/');
    const QString track = playlistFolder + relative;
    return IsFile(track) ? track : QString();
}

int FolderMusicIndex(int count, double rnd) {
    const double index = vb::RoundHalfEven((count - 1) * rnd);
    return std::max(0, static_cast<int>(index));
}

} // namespace sound
