#pragma once

#include "compose/DibImage.h"

#include <QByteArray>
#include <QSize>

// JPEG photographs decoded straight to the size they will be shown at. A 24-megapixel photo
// for a 4K screen needs neither its full-size pixels nor the time to make them: the decoder
// can scale by eighths while it decodes, and the last step to the exact size is made from an
// image little larger than the result.
namespace jpeg {

// Whether these bytes are a JPEG the fast decoder can take, and its size as stored.
bool ReadSize(const QByteArray& bytes, QSize& size);

// Decodes to a 32-bit bitmap (alpha 255) at the smallest of the decoder's scales that is still
// at least minimum in both directions; the full size when none is. Null for data the decoder
// refuses or that ends early: a truncated photo is a broken photo, not half a picture.
// refused is set when the data may well be a picture the decoder just does not handle (a
// colour space it cannot convert), as against a broken one.
dib::Dib DecodeAtLeast(const QByteArray& bytes, QSize minimum, bool* refused = nullptr);

} // namespace jpeg

namespace dib {

// The bitmap at exactly that size, by a smooth resampling of its 32-bit pixels; the source is
// given up. opaque says every alpha byte is 255 (a decoded JPEG), which lets the scaler skip
// the blending of alpha. Null when it cannot be made.
Dib Resample(Dib source, QSize size, bool opaque);

} // namespace dib
