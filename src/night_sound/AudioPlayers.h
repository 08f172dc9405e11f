#pragma once

#include <QString>
#include <cstdint>

// The show's three audio players: 0 for the sound with each change of image, 1 and 2 taking
// turns for the music.
namespace modDirectShow {

// Loads the file into the player. False when the player number is not 0 to 2 or the file
// cannot be played.
bool LoadPlayer(std::int16_t player, const QString& file);

} // namespace modDirectShow
