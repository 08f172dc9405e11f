#!/usr/bin/env bash
# Draws the program's artwork from scratch with ImageMagick, so that it can be remade or
# changed without any outside picture.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
FONT=DejaVu-Sans-Bold
FONT_LIGHT=DejaVu-Sans

# A print: a picture-like gradient with a white border, a soft shadow, turned a little.
print() { # out width height gradient angle
    convert -size "$2x$3" "gradient:$4" \
        \( -size "$2x$(($3 / 3))" gradient:'rgba(255,255,255,0.28)'-'rgba(255,255,255,0)' \) \
        -gravity north -composite \
        -bordercolor white -border 12 \
        \( +clone -background black -shadow 55x9+7+9 \) +swap \
        -background none -layers merge +repage \
        -rotate "$5" "$1"
}

print "$tmp/p1.png" 300 210 '#ffcf6b-#e2574c' -14
print "$tmp/p2.png" 300 210 '#8fd3f4-#2b6cb0' 9
print "$tmp/p3.png" 300 210 '#b7e27a-#2f7a4f' -3

# Hills over the sea on the middle print give it the look of a landscape.
convert -size 695x676 \
    gradient:'#2c3a4f'-'#0f151e' \
    \( -size 695x676 xc:none -fill white -draw "roundrectangle 0,0 694,675 70,70" \) \
    -alpha off -compose CopyOpacity -composite -compose over \
    "$tmp/panel.png"

convert "$tmp/panel.png" \
    "$tmp/p1.png" -geometry +48+70 -composite \
    "$tmp/p2.png" -geometry +290+60 -composite \
    "$tmp/p3.png" -geometry +168+150 -composite \
    -font "$FONT" -pointsize 96 -fill '#f4f1ea' -gravity south -annotate +0+58 'Tessaview' \
    -font "$FONT_LIGHT" -pointsize 28 -fill '#9fb3c8' -gravity south -annotate +0+26 \
    'photo slide show' \
    -resize '695x676!' PNG32:logo.png

# The logo's mask for the show: white where the logo is opaque (its rounded panel), black
# around it, one grey channel.
convert logo.png -alpha extract -colorspace Gray -define png:color-type=0 -strip logo_mask.png

# Stamped over black with magenta as the see-through colour: drawn without smoothing so that
# no pink fringe is left at the edges.
convert -size 600x200 xc:'#FF00FF' +antialias \
    -font "$FONT" -pointsize 92 -fill '#f4f1ea' -gravity center -annotate +0-22 'Tessaview' \
    -font "$FONT_LIGHT" -pointsize 30 -fill '#b8c7d6' -gravity center -annotate +0+58 \
    'photo slide show' \
    PNG24:splash.png

convert -size 400x40 xc:'#FF00FF' +antialias \
    -font "$FONT_LIGHT" -pointsize 22 -fill '#c8c8c8' -gravity center -annotate +0+0 \
    'Press F1 for help' \
    PNG24:pressf1.png

# The night screen's sleep picture, stamped like the splash: a crescent moon (a disc with a
# see-through disc bitten out of it), rising Zs and a few stars, again without smoothing.
stars=()
star() { # x y: adds a small four-pointed star to the drawing
    stars+=(-draw "rectangle $(($1 - 1)),$(($2 - 6)) $(($1 + 1)),$(($2 + 6))")
    stars+=(-draw "rectangle $(($1 - 6)),$(($2 - 1)) $(($1 + 6)),$(($2 + 1))")
}
star 46 40
star 452 128
star 250 40
convert -size 500x240 xc:'#FF00FF' +antialias \
    -fill '#f3dc93' -draw 'circle 110,104 110,26' \
    -fill '#FF00FF' -draw 'circle 142,80 142,10' \
    -fill '#e6edf7' -font "$FONT" -pointsize 88 -annotate +196+176 'Z' \
    -pointsize 62 -annotate +282+122 'Z' \
    -pointsize 44 -annotate +346+82 'z' \
    -pointsize 32 -annotate +394+50 'z' \
    -fill '#cfd9e8' "${stars[@]}" \
    -draw 'rectangle 470,60 472,62' -draw 'rectangle 30,150 32,152' \
    -draw 'rectangle 330,170 332,172' \
    -fill '#9fb3c8' -font "$FONT_LIGHT" -pointsize 24 -gravity south -annotate +0+6 \
    'Night mode  -  press N to wake' \
    PNG24:zzzz.png

convert "$tmp/panel.png" \
    "$tmp/p1.png" -geometry +60+150 -composite \
    "$tmp/p2.png" -geometry +300+140 -composite \
    "$tmp/p3.png" -geometry +170+240 -composite \
    -resize 128x128 -background none -gravity center -extent 128x128 PNG32:tessaview.png
