#pragma once

#include "compose/DibImage.h"

#include <QString>
#include <array>
#include <cstdint>
#include <functional>

// The drop shadow: the photograph's alpha, blurred with a cubic weight, as the alpha of a black
// bitmap a little larger than the photograph. Coordinates in the blur are FreeImage's: row 0 is
// the bottom row.
namespace shadow {

// Told the percent done now and then; answering false stops the work (the show is ending).
using Progress = std::function<bool(int percent)>;

// P^3 / 65025 rounded half to even, for every grey level P. The weight P * (P / 255)^2 darkens
// the core and lets the edge fall off sooner than a plain mean would.
const std::array<std::uint8_t, 256>& CubicWeights();

// Both blurs work on an 8-bit bitmap in place and give the same bitmap, pixel for pixel.
//
// Each visited pixel takes the mean of the cubic weights over the (2 * radius + 1)^2 window
// around it, clipped at the edges, times strengthPercent / 100. A pixel whose neighbour
// testDistance to the right and testDistance down reads 254 or more lies under the opaque
// photograph and is written 0. With a mask shape (noMaskShape false) every other pixel of every
// other row is worked out and stands for its 2 x 2 block; a plain rectangle only needs the
// L-shaped strips along the bottom and the right (2 * radius wide) and leaves the rest 0.
//
// False when the bitmap is not 8 bits deep or progress asked to stop.
//
// The straightforward loop, pixel by pixel over the whole window: kept as the yardstick.
bool BlurShadowReference(FIBITMAP* dib, int radius, int testDistance, int strengthPercent,
                         bool noMaskShape, const Progress& progress = {});
// Running window sums of the weights: the cost no longer grows with the radius.
bool BlurShadow(FIBITMAP* dib, int radius, int testDistance, int strengthPercent, bool noMaskShape,
                const Progress& progress = {});

// Which blur MakeShadowDIB uses: (dib, radius, testDistance, strengthPercent, noMaskShape).
using BlurRoutine = std::function<void(FIBITMAP*, int, int, int, bool)>;

// The image's alpha laid into an 8-bit bitmap with its top left at (left, top), counted from the
// top, blended at 255 as the library's paste of the alpha channel does it: each byte becomes
// (255 * alpha + old) >> 8, so that full alpha arrives as 254. False, with nothing laid, when the
// image is not 32 bits deep or does not fit.
bool PasteAlphaChannel(FIBITMAP* target, FIBITMAP* image, int left, int top);

// A 32-bit black bitmap, distance larger than the image on every side, whose alpha is the
// image's alpha blurred by distance and set distance - 1 pixels in: pasted at the image's own
// place it falls to the lower right. A distance below 1 is raised to 1 in the caller's setting,
// after the size has been taken from the value as it came. Null with errorText on failure.
// Without a blur routine the fast BlurShadow runs, with no progress. libraryPaste takes the
// alpha out and pastes it with the library's own calls (the slow way) instead of
// PasteAlphaChannel.
dib::Dib MakeShadowDIB(FIBITMAP* imageDIB, std::int32_t& distance, bool noMaskShape,
                       QString& errorText, const BlurRoutine& blur = {}, bool libraryPaste = false);

} // namespace shadow
