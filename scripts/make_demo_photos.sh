#!/usr/bin/env bash
# Makes the demo's photographs that show the size and turn rules at work, from the nature
# photographs of Debian's mate-backgrounds package: a panorama wider than most screens, a
# portrait, and a photo stored on its side with an EXIF orientation tag that turns it upright.
# Writes them to demo/Photos (or the folder given), which git leaves alone.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
out="${1:-$root/demo/Photos}"
nature=/usr/share/backgrounds/mate/nature
if [ ! -d "$nature" ]; then
    echo "No photographs at $nature: install the mate-backgrounds package (scripts/setup.sh --demo)." >&2
    exit 1
fi
mkdir -p "$out"

# A strip across the meadow, four times as wide as it is high.
convert "$nature/Garden.jpg" -gravity center -crop 2560x640+0+0 +repage -quality 90 \
    "$out/Garden panorama.jpg"
# The yellow flower, upright.
convert "$nature/YellowFlower.jpg" -gravity center -crop 1000x1600+0+0 +repage -quality 90 \
    "$out/Yellow flower portrait.jpg"

# The ladybird as a camera held on its side stores it: the pixels turned a quarter to the left,
# and an EXIF block saying "turn a quarter to the right to view" (orientation 6).
sideways="$out/Ladybird on its side.jpg"
convert "$nature/LadyBird.jpg" -rotate -90 -strip -quality 90 "$sideways.tmp"
{
    head -c 2 "$sideways.tmp"
    # APP1, 34 bytes: "Exif", a little-endian TIFF header, one directory entry:
    # tag 0x0112 (Orientation), type SHORT, count 1, value 6.
    printf '\xff\xe1\x00\x22Exif\x00\x00II\x2a\x00\x08\x00\x00\x00'
    printf '\x01\x00\x12\x01\x03\x00\x01\x00\x00\x00\x06\x00\x00\x00\x00\x00\x00\x00'
    tail -c +3 "$sideways.tmp"
} >"$sideways"
rm -f "$sideways.tmp"
