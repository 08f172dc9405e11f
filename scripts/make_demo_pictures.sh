#!/usr/bin/env bash
# Draws the demo install folder's pictures: simple landscapes of gradients and shapes, so that
# the demo needs no photographs from anywhere else. Needs ImageMagick.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
out="$root/demo/Pictures"
mkdir -p "$out"
size=1600x1000
q=(-quality 82 -strip)

# Evening: a low sun over dark hills.
convert -size $size gradient:'#ff9a3c-#5b2a86' \
    -fill '#ffe08a' -draw "circle 1150,640 1150,760" \
    -fill '#3b1f4a' -draw "polygon 0,1000 0,700 300,600 650,720 1000,560 1350,680 1600,620 1600,1000" \
    -fill '#24132e' -draw "polygon 0,1000 0,820 420,740 800,860 1200,780 1600,880 1600,1000" \
    "${q[@]}" "$out/Evening hills.jpg"

# Night: a moon and a scatter of stars over a lake.
convert -size $size gradient:'#0b1026-#24406e' \
    -fill '#f5f3ce' -draw "circle 380,260 380,330" \
    -fill '#0b1026' -draw "circle 410,245 410,305" \
    -fill white -draw "point 900,120 point 1210,200 point 1420,90 point 700,300 point 1500,330 point 1040,60 point 160,140 point 560,90" \
    -fill '#10182f' -draw "rectangle 0,760 1600,1000" \
    -fill '#e8e6c0' -draw "rectangle 360,800 400,806 rectangle 350,840 410,845 rectangle 365,880 395,884" \
    "${q[@]}" "$out/Night lake.jpg"

# Sea: sky, water, a sail.
convert -size $size gradient:'#a7d8f0-#e9f6fb' \
    -fill '#2a7bb8' -draw "rectangle 0,600 1600,1000" \
    -fill '#1d5e91' -draw "rectangle 0,760 1600,1000" \
    -fill white -draw "polygon 820,300 820,560 640,560" \
    -fill '#f2f2f2' -draw "polygon 840,340 840,560 960,560" \
    -fill '#6b3e26' -draw "polygon 620,575 980,575 940,620 660,620" \
    -fill white -draw "ellipse 300,180 130,40 0,360 ellipse 1250,140 170,45 0,360" \
    "${q[@]}" "$out/Sail.jpg"

# Forest: rows of pines on green slopes.
trees=""
for x in 80 230 380 530 680 830 980 1130 1280 1430 1560; do
    trees+="polygon $x,520 $((x - 60)),760 $((x + 60)),760 "
done
convert -size $size gradient:'#d8eefc-#f7fbe9' \
    -fill '#7fb069' -draw "polygon 0,1000 0,700 500,620 1100,700 1600,640 1600,1000" \
    -fill '#2f5d3a' -draw "$trees" \
    -fill '#4d7c45' -draw "polygon 0,1000 0,850 700,780 1600,880 1600,1000" \
    "${q[@]}" "$out/Pines.jpg"

# Shapes: circles and squares on a diagonal gradient.
convert -size $size -define gradient:angle=135 gradient:'#fbd3e9-#bb377d' \
    -fill '#ffffffaa' -draw "circle 420,420 420,640" \
    -fill '#3a1c71cc' -draw "rectangle 900,250 1300,650" \
    -fill '#ffaf7bcc' -draw "circle 1150,720 1150,860" \
    -fill '#ffffff66' -draw "roundrectangle 200,700 700,900 40,40" \
    "${q[@]}" "$out/Shapes.jpg"
