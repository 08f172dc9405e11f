#pragma once

#include "compose/DibImage.h"

#include <QString>
#include <vector>

namespace MFreeImage {

// One piece of a tiled background: the top-left w x h of the tile, laid at (x, y) of the canvas.
struct TilePiece {
    int x = 0, y = 0, w = 0, h = 0;
    bool operator==(const TilePiece&) const = default;
};

// The pieces that cover the canvas from its origin, column by column, cut at the canvas's far
// edges. The columns and rows run up to the canvas's size inclusive, so a canvas that is a whole
// number of tiles wide (or high) gets a last piece of nothing there; it is listed like any other.
std::vector<TilePiece> TilePlan(int tileW, int tileH, int canvasW, int canvasH);

// Tiles the picture over the whole canvas. False only when the picture cannot be read (or the
// show is ending); a piece that cannot be laid is noted in errorText and the rest go on.
bool TileBackground(const QString& fileName, dib::Dib& canvas, QString& errorText);

} // namespace MFreeImage
