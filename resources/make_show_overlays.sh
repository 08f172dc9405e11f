#!/usr/bin/env bash
# Draws the signs the show lays over its pictures: the jump arrows and the paused sign. They
# keep their own transparency, so that they sit on any photograph.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
FONT=DejaVu-Sans-Bold

# A dark disc with a double chevron, white with a soft edge.
chevrons() { # out polygon1 polygon2
    convert -size 128x128 xc:none \
        -fill 'rgba(12,16,24,0.62)' -stroke 'rgba(255,255,255,0.55)' -strokewidth 3 \
        -draw "circle 64,64 64,6" \
        -stroke none -fill 'rgba(255,255,255,0.95)' -draw "$2" -draw "$3" \
        PNG32:"$1"
}
chevrons jump_forward.png "polygon 40,38 64,64 40,90 52,90 76,64 52,38" \
    "polygon 62,38 86,64 62,90 74,90 98,64 74,38"
chevrons jump_back.png "polygon 88,38 64,64 88,90 76,90 52,64 76,38" \
    "polygon 66,38 42,64 66,90 54,90 30,64 54,38"

# A pill with the pause bars and the word.
convert -size 250x76 xc:none \
    -fill 'rgba(12,16,24,0.66)' -stroke 'rgba(255,255,255,0.5)' -strokewidth 2 \
    -draw "roundrectangle 2,2 247,73 36,36" \
    -stroke none -fill 'rgba(255,255,255,0.95)' \
    -draw "roundrectangle 34,22 45,54 3,3" -draw "roundrectangle 53,22 64,54 3,3" \
    -font "$FONT" -pointsize 30 -annotate +84+50 'Paused' \
    PNG32:paused.png
