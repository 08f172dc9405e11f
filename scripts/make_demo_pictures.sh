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

# Masks: one grey channel, white where the photograph shows. The show stretches a mask to each
# photograph, so the shapes are drawn at a plain 4:3 and need not fit any picture exactly.
masks="$root/demo/Masks"
mkdir -p "$masks"
msize=800x600
mq=(-colorspace Gray -quality 92 -strip)

# A clean oval with a smoothed edge.
convert -size $msize xc:black -fill white -draw "ellipse 400,300 372,276 0,360" \
    -blur 0x1.2 "${mq[@]}" "$masks/Oval.jpg"

# A rounded rectangle whose edge fades over a few pixels.
convert -size $msize xc:black -fill white -draw "roundrectangle 40,40 759,559 70,70" \
    -blur 0x9 "${mq[@]}" "$masks/Rounded soft.jpg"

# A vignette: the middle whole, fading out towards the edges like an old print.
convert -size $msize xc:black -fill white -draw "ellipse 400,300 318,228 0,360" -blur 0x48 \
    "${mq[@]}" "$masks/Vignette.jpg"

# Torn paper: a rectangle with ragged edges, the same tear every time the script runs.
torn="$(awk 'function tear() { o += (rand() - 0.5) * 9; if (o < 0) o = 0; if (o > 22) o = 22
        return int(o) }
    BEGIN { srand(11); o = 10; p = ""
    for (x = 30; x < 770; x += 5) p = p sprintf("%d,%d ", x, 30 + tear())
    for (y = 30; y < 570; y += 5) p = p sprintf("%d,%d ", 770 - tear(), y)
    for (x = 770; x > 30; x -= 5) p = p sprintf("%d,%d ", x, 570 - tear())
    for (y = 570; y > 30; y -= 5) p = p sprintf("%d,%d ", 30 + tear(), y)
    print p }')"
convert -size $msize xc:black -fill white -draw "polygon $torn" -blur 0x0.8 \
    "${mq[@]}" "$masks/Torn paper.jpg"

# Backgrounds: textures whose right edge meets their left and whose top meets their bottom, so
# that the tiles join without a seam. Everything blurred wraps round the edges.
backgrounds="$root/demo/Backgrounds"
mkdir -p "$backgrounds"
bq=(-quality 90 -strip -type TrueColor)

# One grey channel of random noise, seeded so that the script draws the same picture each time.
noise() { # seed size
    convert -seed "$1" -size "$2" xc: +noise Random -channel R -separate +channel "$3"
}
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

# Linen: threads both ways over a warm grey, with a little grain.
noise 3 256x1 "$tmp/warp.png"
noise 4 1x256 "$tmp/weft.png"
noise 5 256x256 "$tmp/grain.png"
convert \( "$tmp/warp.png" -sample '256x256!' \) \( "$tmp/weft.png" -sample '256x256!' \) \
    -compose Multiply -composite \
    \( "$tmp/grain.png" -virtual-pixel tile -blur 0x0.6 \) -compose Overlay -composite \
    -virtual-pixel tile -blur 0x0.5 -level 5%,95% \
    -set colorspace sRGB -colorspace sRGB +level-colors '#b3a68f','#eee6d6' \
    "${bq[@]}" "$backgrounds/Linen.jpg"

# Wood: rings from smooth noise stretched along the grain, with fine streaks. The smooth noise
# is enlarged from the middle of a 3 x 3 tiling of itself, so that it still wraps.
noise 6 64x24 "$tmp/knots.png"
noise 8 512x1 "$tmp/streaks.png"
convert "$tmp/knots.png" -virtual-pixel tile -blur 0x2.5 -auto-level \
    \( +clone +clone \) +append \( +clone +clone \) -append \
    -resize '1536x1536!' -crop 512x512+512+512 +repage -function Sinusoid 5,0 -auto-level \
    \( "$tmp/streaks.png" -sample '512x512!' -level 0%,160% \) -compose Multiply -composite \
    -auto-level -set colorspace sRGB -colorspace sRGB +level-colors '#6b3f1d','#c08850' \
    "${bq[@]}" "$backgrounds/Wood.jpg"

# Dark paper: soft clouds under a fine tooth, blue-grey and quiet behind bright photographs.
noise 9 384x384 "$tmp/clouds.png"
noise 10 384x384 "$tmp/tooth.png"
convert "$tmp/clouds.png" -virtual-pixel tile -blur 0x20 -auto-level -level -40%,140% \
    \( "$tmp/tooth.png" -virtual-pixel tile -blur 0x0.7 -level -60%,160% \) \
    -compose Overlay -composite \
    -set colorspace sRGB -colorspace sRGB +level-colors '#1c2129','#363d49' \
    "${bq[@]}" "$backgrounds/Dark paper.jpg"
