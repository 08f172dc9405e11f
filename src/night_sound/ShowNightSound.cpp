// Night hours and sound during the show.
#include "show/frmSlideShow.h"

#include "night_sound/AudioPlayers.h"

// STAND-IN until night mode exists: it is always day.
bool frmSlideShow::NightModeShouldBeOn() {
    return false;
}

// STAND-IN until night mode exists.
void frmSlideShow::FadeToNight() {
    NightOn = true;
}

// STAND-IN until night mode exists.
void frmSlideShow::FadeFromNight() {
    NightOn = false;
}

void frmSlideShow::CloseAudioPlayer(int slot) {
    if (slot < 0 || slot >= static_cast<int>(AudioPlayerLoaded.size())) return;
    modDirectShow::ClosePlayer(static_cast<std::int16_t>(slot));
    AudioPlayerLoaded[static_cast<std::size_t>(slot)] = false;
}
