#pragma once

#include "compose/DibImage.h"

#include <QString>
#include <cstdint>
#include <variant>

// The show's small routines on bitmaps. A routine that replaces a bitmap takes its owner by
// reference and leaves either the new bitmap or the old one in it, never a dangling handle.
// Every routine gives up quietly once the show is ending.
namespace MFreeImage {

using dib::Dib;

// Tells the format from the file's name alone, as the show always has: a JPEG named .png is
// not a JPEG to it.
bool LoadIntoDIB(const QString& fileName, Dib& dib, QString& errorText, FREE_IMAGE_FORMAT& format);

// A size for RescaleDIB: a factor of the present size, or whole pixels.
using Extent = std::variant<double, int>;
// A new bitmap of that size (the source is given up), or the source itself when no size is
// asked for or the library refuses.
Dib RescaleDIB(Dib dib, Extent width, Extent height, bool isPercent, FREE_IMAGE_FILTER filter);
Dib RescaleDIBByPixel(Dib dib, int width, int height, FREE_IMAGE_FILTER filter);

// Lays a bitmap with an alpha channel over the canvas at (Px, Py), clipped at the canvas's
// right and bottom. errorText always says how it ended.
bool PasteDIBWithAlpha(FIBITMAP* subDIB, Dib& backDIB, int Px, int Py, QString& errorText);

// Colour has red in the low byte. Column 0 and row 0 of the bitmap keep what they held.
bool FillDIBWithColour(FIBITMAP* dib, std::uint32_t colour);
// A 20-pixel frame of the colour on every side.
bool AddBorderToDIB(Dib& dib, std::uint32_t colour);
bool ConvertDIBToBlackAndWhite(Dib& dib, double brightness, double contrast);
// Positive angles turn counter-clockwise. Nothing is handed back when the show is ending or
// the turn fails: the image is lost, and the frame with it.
Dib RotateDIB(Dib dib, double angle);

} // namespace MFreeImage
