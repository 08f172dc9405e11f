#include "night_sound/AudioPlayers.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// These pin the rule of the stand-in load: the file must be there, hold something, carry a
// known audio extension and begin the way that format does.
class AudioLoad : public ::testing::Test {
protected:
    QString Make(const QString& name, const QByteArray& content) {
        const QString path = dir.filePath(name);
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(content);
        return path;
    }
    QTemporaryDir dir;
};

TEST_F(AudioLoad, TakesOnlyFilesThatBeginLikeTheirFormat) {
    EXPECT_TRUE(
        modDirectShow::LoadPlayer(0, Make("a.wav", QByteArray("RIFF\x24\0\0\0WAVEfmt ", 16))));
    EXPECT_TRUE(modDirectShow::LoadPlayer(1, Make("b.MP3", "ID3\x03\0\0\0\0")));
    EXPECT_TRUE(modDirectShow::LoadPlayer(2, Make("c.mp3", QByteArray("\xFF\xFB\x90\x00", 4))));
    EXPECT_TRUE(modDirectShow::LoadPlayer(0, Make("d.ogg", "OggS\0")));
    EXPECT_TRUE(modDirectShow::LoadPlayer(0, Make("e.flac", "fLaC\0")));
    EXPECT_TRUE(modDirectShow::LoadPlayer(0, Make("f.mid", "MThd\0\0\0\x06")));

    // A header of one format under the name of another, or no header at all.
    EXPECT_FALSE(modDirectShow::LoadPlayer(0, Make("g.ogg", "fLaC\0")));
    EXPECT_FALSE(
        modDirectShow::LoadPlayer(0, Make("h.wav", QByteArray("RIFF\x24\0\0\0AVI LIST", 16))));
    EXPECT_FALSE(modDirectShow::LoadPlayer(0, Make("i.mp3", "just some words")));
    EXPECT_FALSE(modDirectShow::LoadPlayer(0, Make("j.txt", "OggS\0")));
}

TEST_F(AudioLoad, RefusesEmptyMissingAndFoldersAndUnknownPlayers) {
    EXPECT_FALSE(modDirectShow::LoadPlayer(0, Make("empty.wav", QByteArray())));
    EXPECT_FALSE(modDirectShow::LoadPlayer(0, dir.filePath("gone.ogg")));
    EXPECT_FALSE(modDirectShow::LoadPlayer(0, dir.path()));
    const QString ogg = Make("k.ogg", "OggS\0");
    EXPECT_FALSE(modDirectShow::LoadPlayer(3, ogg));
    EXPECT_FALSE(modDirectShow::LoadPlayer(-1, ogg));
}

} // namespace
