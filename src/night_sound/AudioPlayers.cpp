#include "night_sound/AudioPlayers.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace modDirectShow {
namespace {

bool StartsWith(const QByteArray& head, const char* magic, int length) {
    return head.size() >= length && std::equal(magic, magic + length, head.constData());
}

// An MPEG audio frame begins with eleven set bits.
bool MpegFrameSync(const QByteArray& head) {
    return head.size() >= 2 && static_cast<unsigned char>(head[0]) == 0xFF &&
           (static_cast<unsigned char>(head[1]) & 0xE0) == 0xE0;
}

bool HeadFitsExtension(const QString& extension, const QByteArray& head) {
    if (extension == QLatin1String("wav"))
        return StartsWith(head, "RIFF", 4) && head.mid(8, 4) == "WAVE";
    if (extension == QLatin1String("mp3")) return StartsWith(head, "ID3", 3) || MpegFrameSync(head);
    if (extension == QLatin1String("ogg")) return StartsWith(head, "OggS", 4);
    if (extension == QLatin1String("flac")) return StartsWith(head, "fLaC", 4);
    if (extension == QLatin1String("wma"))
        // The header object of an ASF container.
        return StartsWith(head, "\x30\x26\xB2\x75\x8E\x66\xCF\x11", 8);
    if (extension == QLatin1String("mid")) return StartsWith(head, "MThd", 4);
    return false;
}

} // namespace

// Stand-in until the audio players arrive: nothing is played and the slot holds nothing. A
// file counts as loaded when it is there, is not empty, has the extension of a format the
// players will take and begins the way that format does, so that a file which exists but
// cannot be decoded is already told apart from one that can.
bool LoadPlayer(std::int16_t player, const QString& file) {
    if (player < 0 || player > 2) return false;
    const QFileInfo info(file);
    if (!info.isFile() || info.size() == 0) return false;
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly)) return false;
    return HeadFitsExtension(info.suffix().toLower(), f.read(16));
}

} // namespace modDirectShow
