#pragma once

#include <QString>
#include <cstdint>

// The show's three audio players: 0 for the sound with each change of image, 1 and 2 taking
// turns for the music. The module owns the players; callers only name them by number. A
// number other than 0 to 2 does nothing and reads as false or 0.
namespace modDirectShow {

// The longest a load waits for the media to be known good or bad.
inline constexpr int kLoadLimitMs = 5000;

// Loads the file into the player, in place of whatever it held, at full volume and at the
// start. Waits, with events running, until the file is known playable or not. False when the
// player number is not 0 to 2 or the file cannot be played; the player is then empty.
bool LoadPlayer(std::int16_t player, const QString& file);
// Plays a loaded player from where it stands.
bool StartPlayer(std::int16_t player);
// Stops and lets go of the player. A player that holds nothing stays empty.
bool ClosePlayer(std::int16_t player);
// True when the player holds a loaded file.
bool PlayerLoaded(std::int16_t player);
// True while a loaded player plays; false again once it has played to the end.
bool PlayerPlaying(std::int16_t player);

// Volume on the scale 0 (40 dB down, not silent) to 1000 (full). Ignored by an empty player,
// and when the level it stands for is outside what the player takes.
void SetPlayerVolume(std::int16_t player, std::int32_t volume);
// The volume back on the 0 to 1000 scale; 0 for an empty player.
std::int32_t GetPlayerVolume(std::int16_t player);

// Length and place in milliseconds; 0 for an empty player. A file played to its end stands
// at its length.
std::int32_t GetPlayerDuration(std::int16_t player);
std::int32_t GetPlayerPosition(std::int16_t player);
// Moves to the place in milliseconds. False for an empty player or a place before the start.
bool SetPlayerPosition(std::int16_t player, std::int32_t ms);

// The volume scale against the players' own level, in hundredths of a decibel from -10000
// (silent) to 0 (full), and that level as a linear gain.
inline constexpr std::int32_t kPlatformVolumeMin = -10000;
inline constexpr std::int32_t kPlatformVolumeMax = 0;
// Wide enough for any volume asked for, so that one out of range is seen as such.
std::int64_t VolumeToPlatform(std::int32_t volume);
std::int32_t VolumeFromPlatform(std::int32_t platform);
double PlatformToGain(std::int32_t platform);
// The nearest level to a gain; a gain of 0 or less is the silent end of the range.
std::int32_t GainToPlatform(double gain);

} // namespace modDirectShow
