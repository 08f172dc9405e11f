#include "compose/TileBackground.h"

#include "app/modMain.h"
#include "compose/MFreeImage.h"

namespace MFreeImage {

std::vector<TilePiece> TilePlan(int tileW, int tileH, int canvasW, int canvasH) {
    std::vector<TilePiece> pieces;
    if (tileW < 1 || tileH < 1) return pieces;
    for (long long x = 0; x <= canvasW; x += tileW)
        for (long long y = 0; y <= canvasH; y += tileH) {
            TilePiece piece{static_cast<int>(x), static_cast<int>(y), tileW, tileH};
            if (x + tileW > canvasW) piece.w = static_cast<int>(canvasW - x);
            if (y + tileH > canvasH) piece.h = static_cast<int>(canvasH - y);
            pieces.push_back(piece);
        }
    return pieces;
}

bool TileBackground(const QString& fileName, dib::Dib& canvas, QString& errorText) {
    Dib tile;
    FREE_IMAGE_FORMAT format = FIF_UNKNOWN;
    if (!LoadIntoDIB(fileName, tile, errorText, format)) return false;
    errorText.clear();
    // The pastes need both pictures at the same depth: a grey, paletted or transparent picture
    // would otherwise leave the canvas unpainted, black whatever the background colour.
    if (canvas && FreeImage_GetBPP(tile.get()) != FreeImage_GetBPP(canvas.get())) {
        Dib same(FreeImage_GetBPP(canvas.get()) == 32 ? FreeImage_ConvertTo32Bits(tile.get())
                                                      : FreeImage_ConvertTo24Bits(tile.get()));
        if (same) tile = std::move(same);
    }
    const int canvasW = canvas ? static_cast<int>(FreeImage_GetWidth(canvas.get())) : 0;
    const int canvasH = canvas ? static_cast<int>(FreeImage_GetHeight(canvas.get())) : 0;
    for (const TilePiece& p :
         TilePlan(static_cast<int>(FreeImage_GetWidth(tile.get())),
                  static_cast<int>(FreeImage_GetHeight(tile.get())), canvasW, canvasH)) {
        if (ExitShow) return false;
        const Dib piece(FreeImage_Copy(tile.get(), 0, 0, p.w, p.h));
        if (!piece || !FreeImage_Paste(canvas.get(), piece.get(), p.x, p.y, 255))
            errorText =
                QStringLiteral("Tilebackground : Pasting error onto %1,%2").arg(p.x).arg(p.y);
    }
    return true;
}

} // namespace MFreeImage
