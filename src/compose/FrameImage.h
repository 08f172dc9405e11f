#pragma once

#include "compose/DibImage.h"

#include <QByteArray>
#include <QSize>

// The image of a frame on its way to the canvas. Most photographs are JPEGs far larger than
// the screen; such a file is not decoded when it is loaded, only measured, and the resize
// decodes it straight to the size it will be shown at. Everything in between sees its true
// size. Any other file is decoded whole at once.
struct FrameImage {
    dib::Dib dib;
    // The file's bytes while its decoding waits.
    QByteArray jpeg;
    // The size as stored in the file, before any turn.
    QSize stored;

    bool Waiting() const { return !dib && !jpeg.isEmpty(); }
    bool Loaded() const { return dib || Waiting(); }
    void Release() {
        dib.reset();
        jpeg.clear();
        stored = QSize();
    }
};

// The largest picture the show takes on: larger ones would cost gigabytes before a single
// pixel reached the screen. A panorama of 30000 x 3000 is well inside it.
constexpr qint64 kMaxImagePixels = 200'000'000;
constexpr qint64 kMaxImageFileBytes = 512ll * 1024 * 1024;

// The turn and flips that bring an image stored with this EXIF orientation upright; false
// when a step failed (a failed turn leaves the bitmap empty).
bool ApplyOrientation(dib::Dib& dib, int orientation);
// The size an image of this stored size has once it is upright.
QSize UprightSize(QSize stored, int orientation);
