// Night hours and sound during the show.
#include "show/frmSlideShow.h"

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

// STAND-IN until the audio players exist: the slot is only marked closed.
void frmSlideShow::CloseAudioPlayer(int slot) {
    if (slot >= 0 && slot < 3) AudioPlayerLoaded[static_cast<std::size_t>(slot)] = false;
}
