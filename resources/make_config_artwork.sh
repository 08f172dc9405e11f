#!/usr/bin/env bash
# Draws the configuration window's artwork from scratch with ImageMagick: panel icons, the
# image-list buttons, the slider and night-mode sky bar pieces, the effect previews and the
# header wordmark. Nothing is taken from an outside picture, so all of it can be remade here.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
FONT=DejaVu-Sans-Bold
FONT_LIGHT=DejaVu-Sans

# The window's own colours, so that the art sits in it without a seam.
BG='#1e2530'      # window background
PANEL='#2a3342'   # panel headings, button bodies
ACCENT='#5fa8e8'
ACCENT_DK='#3d78ad'
LIGHT='#e8edf3'
MUTED='#9fb3c8'

# Small icons are drawn S times larger and averaged down: at 18 or 20 pixels a shape drawn
# directly lands on whole pixels unevenly, while the average gives even, soft edges.
# Coordinates in the MVG strings below are in the icon's own pixels (the affine scales them,
# stroke widths included), so "9.5" means the middle of pixel column 9.
S=8

# layer OUT W H MVG: a transparent layer, S times the size, with MVG drawn in icon pixels.
layer() {
    convert -size "$(($2 * S))x$(($3 * S))" xc:none \
        -draw "affine $S 0 0 $S 0 0
$4" "$1"
}

# shrink IN OUT W H: averages a big layer down to the icon's real size.
shrink() {
    convert "$1" -filter box -resize "$3x$4!" +repage PNG32:"$2"
}

# icon OUT W H MVG: the common case, one drawing straight to a small PNG.
icon() {
    layer "$tmp/icon.png" "$2" "$3" "$4"
    shrink "$tmp/icon.png" "$1" "$2" "$3"
}

# cut BASE MVG: punches MVG's shape out of BASE (a big layer), for gaps between overlapping
# shapes that must show whatever lies behind the icon rather than a guessed background.
cut() {
    local w h
    w=$(($(identify -format %w "$1") / S))
    h=$(($(identify -format %h "$1") / S))
    layer "$tmp/cut.png" "$w" "$h" "$2"
    convert "$1" "$tmp/cut.png" -compose DstOut -composite "$1"
}

# over BASE MVG: draws MVG over BASE (a big layer) after a cut.
over() {
    convert "$1" -draw "affine $S 0 0 $S 0 0
$2" "$1"
}

# ---------------------------------------------------------------------------------------------
# Panel header buttons, 18x18: a faint rounded square keeps the click target visible on the
# heading's #2a3342 without shouting; the chevron says which way the panel will move.
box="fill rgba(95,168,232,0.10) stroke rgba(159,179,200,0.38) stroke-width 1
roundrectangle 0.5,0.5 17.5,17.5 3.5,3.5"
glyph="fill none stroke $LIGHT stroke-width 1.7 stroke-linecap round stroke-linejoin round"

icon page_open.png 18 18 "$box
$glyph
polyline 5.5,7.25 9,10.75 12.5,7.25"
icon page_close.png 18 18 "$box
$glyph
polyline 5.5,10.75 9,7.25 12.5,10.75"
icon expand_all.png 18 18 "$box
$glyph
polyline 5.5,5.5 9,9 12.5,5.5
polyline 5.5,9.5 9,13 12.5,9.5"
icon collapse_all.png 18 18 "$box
$glyph
polyline 5.5,12.5 9,9 12.5,12.5
polyline 5.5,8.5 9,5 12.5,8.5"

# Window height: the bar is the window's edge, the arrow the way it moves.
icon grow_window.png 18 18 "$box
$glyph
line 9,3.75 9,10.5
polyline 6,8 9,11 12,8
fill $ACCENT stroke none
roundrectangle 4,13 14,14.75 0.8,0.8"
icon shrink_window.png 18 18 "$box
$glyph
line 9,14.25 9,7.5
polyline 6,10 9,7 12,10
fill $ACCENT stroke none
roundrectangle 4,3.25 14,5 0.8,0.8"

# ---------------------------------------------------------------------------------------------
# The eleven panel icons, 20x20. Frames and main shapes are in the accent, what stands inside
# them in the light text colour, so the set reads as one family in the panel list.
frame="fill none stroke $ACCENT stroke-width 1.4 stroke-linejoin round"
solid_light="fill $LIGHT stroke none"

# 0 slide show: a picture frame that plays.
icon page_icon_0.png 20 20 "$frame
roundrectangle 1.7,3.2 18.3,16.8 2.2,2.2
fill $LIGHT stroke $LIGHT stroke-width 1 stroke-linejoin round
polygon 8,6.8 8,13.2 13.6,10"

# 1 background images: a small landscape, mountains under a sun.
icon page_icon_1.png 20 20 "$frame
roundrectangle 1.7,2.7 18.3,17.3 2.2,2.2
fill $ACCENT stroke none
polygon 2.4,16.6 7.6,9.4 10.8,13.4 13.2,10.8 17.6,16.6
$solid_light
circle 13.8,6.6 13.8,8.4"

# 2 captions: a picture with two lines of text under it, ragged like text so that they do
# not read as a stand.
icon page_icon_2.png 20 20 "$frame
fill rgba(95,168,232,0.28)
roundrectangle 2.7,1.7 17.3,11.3 1.8,1.8
fill $ACCENT stroke none
polygon 3.4,10.6 7.6,6 10.2,8.8 12,7.2 16.6,10.6
fill none stroke $LIGHT stroke-width 1.5 stroke-linecap round
line 3.2,14.6 16.8,14.6
line 3.2,17.8 11.6,17.8"

# 3 panoramas: a wide, thin picture that slides sideways.
icon page_icon_3.png 20 20 "$frame
fill rgba(95,168,232,0.28)
roundrectangle 1.2,4.2 18.8,10.3 1.5,1.5
fill none stroke $LIGHT stroke-width 1.1 stroke-linejoin round
polyline 2.5,9.2 6,6.6 8.6,8.4 12,5.9 17.5,9.2
stroke-width 1.5 stroke-linecap round
line 4.5,15.2 15.5,15.2
polyline 6.6,13.1 4.3,15.2 6.6,17.3
polyline 13.4,13.1 15.7,15.2 13.4,17.3"

# 4 layouts: three overlapping prints. Each print first cuts a thin gap into the ones behind
# it, so they stay apart on any background.
print4() { # centre-x centre-y angle colour
    echo "push graphic-context
translate $1,$2 rotate $3
fill $4 stroke none
roundrectangle -4.5,-3.5 4.5,3.5 0.8,0.8
pop graphic-context"
}
gap4() { # centre-x centre-y angle
    echo "push graphic-context
translate $1,$2 rotate $3
fill black stroke black stroke-width 2.2 stroke-linejoin round
roundrectangle -4.5,-3.5 4.5,3.5 0.8,0.8
pop graphic-context"
}
layer "$tmp/p4.png" 20 20 "$(print4 6.2 5.8 -14 "$ACCENT_DK")"
cut "$tmp/p4.png" "$(gap4 13.9 8 9)"
over "$tmp/p4.png" "$(print4 13.9 8 9 "$ACCENT")"
cut "$tmp/p4.png" "$(gap4 9.8 14.2 -4)"
over "$tmp/p4.png" "$(print4 9.8 14.2 -4 "$LIGHT")
fill $ACCENT stroke none
polygon 6.4,16.6 8.9,13.6 10.6,15.4 11.8,14.4 13.3,16.4"
shrink "$tmp/p4.png" page_icon_4.png 20 20

# 5 image effects: half black, half white, the simplest picture of a colour change.
icon page_icon_5.png 20 20 "fill #0d1117 stroke none
circle 10,10 10,17.4
$solid_light
path 'M 10,2.6 A 7.4,7.4 0 0,1 10,17.4 Z'
fill none stroke $LIGHT stroke-width 1.3
circle 10,10 10,17.4"

# 6 monitors: two screens side by side.
screen6() { # left edge
    local r=$(awk "BEGIN{print $1+7.6}") m=$(awk "BEGIN{print $1+3.8}")
    echo "fill rgba(95,168,232,0.28) stroke $ACCENT stroke-width 1.3
roundrectangle $1,4.4 $r,11.4 1,1
fill none stroke $LIGHT stroke-width 1.3 stroke-linecap round
line $m,11.8 $m,14.4
line $(awk "BEGIN{print $m-2}"),15 $(awk "BEGIN{print $m+2}"),15"
}
icon page_icon_6.png 20 20 "$(screen6 1.3)
$(screen6 11.1)"

# 7 night mode: a crescent moon and a star. The crescent is a disc with a second disc cut out.
layer "$tmp/p7.png" 20 20 "fill $ACCENT stroke none
circle 8.8,10.8 8.8,18.2"
cut "$tmp/p7.png" "fill black circle 12.6,7.6 12.6,13.8"
star7=$(awk 'BEGIN { cx = 15.2; cy = 4.6
    for (i = 0; i < 8; i++) { a = i * 3.14159265 / 4 - 3.14159265 / 2
        r = (i % 2) ? 1.05 : 3.3; printf "%.2f,%.2f ", cx + r * cos(a), cy + r * sin(a) } }')
over "$tmp/p7.png" "$solid_light
polygon $star7
circle 17.4,10.6 17.4,11.5"
shrink "$tmp/p7.png" page_icon_7.png 20 20

# 8 miscellaneous: a gear, its teeth worked out here rather than traced.
gear=$(awk 'BEGIN { pi = 3.14159265; cx = 10; cy = 10; n = 8; ro = 8.6; ri = 6.4
    for (i = 0; i < n; i++) { a = i * 2 * pi / n; t = 2 * pi / n
        printf "%.2f,%.2f ", cx + ri * cos(a - 0.30 * t), cy + ri * sin(a - 0.30 * t)
        printf "%.2f,%.2f ", cx + ro * cos(a - 0.17 * t), cy + ro * sin(a - 0.17 * t)
        printf "%.2f,%.2f ", cx + ro * cos(a + 0.17 * t), cy + ro * sin(a + 0.17 * t)
        printf "%.2f,%.2f ", cx + ri * cos(a + 0.30 * t), cy + ri * sin(a + 0.30 * t)
        printf "%.2f,%.2f ", cx + ri * cos(a + 0.50 * t), cy + ri * sin(a + 0.50 * t) } }')
layer "$tmp/p8.png" 20 20 "fill $ACCENT stroke $ACCENT stroke-width 0.4 stroke-linejoin round
polygon $gear"
cut "$tmp/p8.png" "fill black circle 10,10 10,12.9"
over "$tmp/p8.png" "fill none stroke $LIGHT stroke-width 1.1
circle 10,10 10,14.5"
shrink "$tmp/p8.png" page_icon_8.png 20 20

# 9 sounds: two beamed notes.
note9() { # head centre x, y
    echo "push graphic-context
translate $1,$2 rotate -22
ellipse 0,0 2.7,2 0,360
pop graphic-context"
}
icon page_icon_9.png 20 20 "fill $ACCENT stroke none
$(note9 5.2 15.6)
$(note9 14.2 13.6)
fill none stroke $ACCENT stroke-width 1.4 stroke-linecap butt
line 7.45,15 7.45,4.6
line 16.45,13 16.45,2.6
fill $LIGHT stroke none
polygon 6.75,3.9 17.15,1.6 17.15,4.4 6.75,6.7"

# 10 about: the information sign.
icon page_icon_10.png 20 20 "fill rgba(95,168,232,0.18) stroke $ACCENT stroke-width 1.4
circle 10,10 10,18.3
$solid_light
circle 10,5.9 10,7.25
roundrectangle 8.85,8.4 11.15,14.6 0.6,0.6"

# ---------------------------------------------------------------------------------------------
# Image-list buttons, 40x40, with a pressed twin. The pressed body is darker with a shadow
# along its top and left, and the glyph moves one pixel down and right, so the press reads
# as the button sinking into the window.
button_body() { # out pressed(0/1)
    if [ "$2" = 0 ]; then
        convert -size 40x40 gradient:'#333e50'-'#262e3c' "$tmp/body_fill.png"
    else
        convert -size 40x40 gradient:'#1c222c'-'#242c38' "$tmp/body_fill.png"
    fi
    layer "$tmp/body_mask.png" 40 40 "fill white roundrectangle 0.5,0.5 39.5,39.5 7,7"
    convert "$tmp/body_mask.png" -filter box -resize 40x40 "$tmp/body_mask.png"
    convert "$tmp/body_fill.png" "$tmp/body_mask.png" -alpha off -compose CopyOpacity \
        -composite "$tmp/body.png"
    if [ "$2" = 0 ]; then
        layer "$tmp/body_edge.png" 40 40 "fill none stroke rgba(255,255,255,0.17) stroke-width 1
roundrectangle 0.5,0.5 39.5,39.5 7,7
stroke rgba(255,255,255,0.07)
line 6,1.5 34,1.5"
    else
        # The inner shadow is a blurred dark rim, kept inside the body by its own mask.
        convert -size 40x40 xc:none -fill none -stroke 'rgba(0,0,0,0.85)' -strokewidth 4 \
            -draw "roundrectangle -1,-1 41,41 8,8" -stroke none -fill none \
            -page +1+1 -background none -flatten -blur 0x1.6 \
            "$tmp/body_mask.png" -compose DstIn -composite "$tmp/inset.png"
        convert "$tmp/body.png" "$tmp/inset.png" -compose Over -composite "$tmp/body.png"
        layer "$tmp/body_edge.png" 40 40 "fill none stroke rgba(255,255,255,0.10) stroke-width 1
roundrectangle 0.5,0.5 39.5,39.5 7,7"
    fi
    convert "$tmp/body_edge.png" -filter box -resize 40x40 "$tmp/body_edge.png"
    convert "$tmp/body.png" "$tmp/body_edge.png" -compose Over -composite "$1"
}
button_body "$tmp/body_up.png" 0
button_body "$tmp/body_down.png" 1

# button NAME GLYPH(big layer): writes NAME.png and NAME_pressed.png.
button() {
    convert "$2" -filter box -resize 40x40 "$tmp/glyph.png"
    convert "$tmp/body_up.png" "$tmp/glyph.png" -compose Over -composite PNG32:"$1.png"
    convert "$tmp/glyph.png" -modulate 88 "$tmp/glyph_dim.png"
    convert "$tmp/body_down.png" "$tmp/glyph_dim.png" -geometry +1+1 -compose Over -composite \
        PNG32:"$1_pressed.png"
}

# The "+" badge that marks the three "add" buttons; a gap around it parts it from the glyph.
badge() { # big layer
    cut "$1" "fill black circle 29,29 29,36.4"
    over "$1" "fill $LIGHT stroke none
circle 29,29 29,34.8
fill none stroke $PANEL stroke-width 2 stroke-linecap round
line 26.1,29 31.9,29
line 29,26.1 29,31.9"
}

layer "$tmp/folder.png" 40 40 "fill $ACCENT_DK stroke none
roundrectangle 5,8 16,14 2,2
roundrectangle 5,10.5 30,30 2,2
fill $ACCENT
path 'M 6.5,14.5 L 31,14.5 Q 33,14.5 32.6,16.5 L 30.4,28.5 Q 30,30 28.5,30 L 6.5,30 Q 5,30 5,28.5 L 5,16 Q 5,14.5 6.5,14.5 Z'"
badge "$tmp/folder.png"
button btn_add_folder "$tmp/folder.png"

layer "$tmp/globe.png" 40 40 "fill rgba(95,168,232,0.20) stroke $ACCENT stroke-width 1.7
circle 18.5,18.5 18.5,29.5
fill none stroke-width 1.4
ellipse 18.5,18.5 4.6,11 0,360
line 18.5,7.5 18.5,29.5
line 7.5,18.5 29.5,18.5
line 9.6,12.5 27.4,12.5
line 9.6,24.5 27.4,24.5"
badge "$tmp/globe.png"
button btn_add_web "$tmp/globe.png"

# Delete stays outside the accent family on purpose: red warns before the click.
layer "$tmp/delete.png" 40 40 "fill none stroke #e5675d stroke-width 3.4 stroke-linecap round
line 13,13 27,27
line 27,13 13,27"
button btn_delete "$tmp/delete.png"

# The online photo service's button: its two familiar dots, blue and pink, and the badge.
layer "$tmp/web2.png" 40 40 "stroke none
fill #0063dc circle 13,18.5 13,24.3
fill #ff0084 circle 26,18.5 26,24.3"
badge "$tmp/web2.png"
button btn_add_flickr "$tmp/web2.png"

# ---------------------------------------------------------------------------------------------
# Slider pieces. The groove's ends are round within 6 pixels so a style sheet can stretch its
# middle; the lighter lip under it and the dark line along its top make it look pressed in.
layer "$tmp/track.png" 200 12 "fill rgba(255,255,255,0.09) stroke none
roundrectangle 0.5,3 199.5,10 3.5,3.5
fill #121821
roundrectangle 0.5,2 199.5,9 3.5,3.5
fill none stroke rgba(0,0,0,0.55) stroke-width 1
line 3.5,2.5 196.5,2.5
stroke rgba(95,168,232,0.85)
line 5,5.5 195,5.5"
shrink "$tmp/track.png" slider_track.png 200 12

# The knob: light so it stands out on the dark groove, ringed in the accent, with two grip
# lines placed symmetrically (rows 8 and 11 of 20).
convert -size 12x20 gradient:'#f7f9fb'-'#c9d4e0' "$tmp/knob_fill.png"
layer "$tmp/knob_mask.png" 12 20 "fill white roundrectangle 0.5,0.5 11.5,19.5 3,3"
convert "$tmp/knob_mask.png" -filter box -resize 12x20 "$tmp/knob_mask.png"
convert "$tmp/knob_fill.png" "$tmp/knob_mask.png" -alpha off -compose CopyOpacity -composite \
    "$tmp/knob.png"
layer "$tmp/knob_edge.png" 12 20 "fill none stroke $ACCENT stroke-width 1
roundrectangle 0.5,0.5 11.5,19.5 3,3
stroke #8196ad
line 3.5,8.5 8.5,8.5
line 3.5,11.5 8.5,11.5"
convert "$tmp/knob_edge.png" -filter box -resize 12x20 "$tmp/knob_edge.png"
convert "$tmp/knob.png" "$tmp/knob_edge.png" -compose Over -composite PNG32:slider_knob.png

# ---------------------------------------------------------------------------------------------
# The night-mode sky bar: one day from midnight to midnight, 16 pixels an hour, so that an
# hour's tick falls on a whole pixel. The colours are stops at given hours, joined by straight
# gradients laid side by side.
sky_stops=(
    "0 #0a1230" "3.5 #111c44" "5 #2c2f62" "5.75 #7a4a78" "6.5 #e2845e" "7.25 #f3c27e"
    "8.5 #8fc5ee" "12 #4ea4ee" "15.5 #8fc5ee" "16.75 #f3b86e" "17.5 #e47452" "18.25 #8c4572"
    "19 #33306a" "20.5 #111c44" "24 #0a1230"
)
segments=()
for ((i = 0; i < ${#sky_stops[@]} - 1; i++)); do
    read -r h0 c0 <<<"${sky_stops[i]}"
    read -r h1 c1 <<<"${sky_stops[i + 1]}"
    x0=$(awk "BEGIN{print int($h0 * 16 + 0.5)}")
    x1=$(awk "BEGIN{print int($h1 * 16 + 0.5)}")
    convert -size "24x$((x1 - x0))" gradient:"$c0-$c1" -rotate -90 "$tmp/seg$i.png"
    segments+=("$tmp/seg$i.png")
done
convert "${segments[@]}" +append +repage "$tmp/sky.png"

# Lighter towards the horizon at the bottom, a few stars in the night, the hour ticks, and
# rounded ends.
ticks=""
for ((h = 1; h < 24; h++)); do
    x=$((h * 16))
    if ((h % 6 == 0)); then
        ticks+="rectangle $x,16 $x,23 "
    else
        ticks+="rectangle $x,20 $x,23 "
    fi
done
convert "$tmp/sky.png" \
    \( -size 384x24 gradient:'rgba(255,255,255,0)'-'rgba(255,255,255,0.16)' \) \
    -compose Over -composite \
    -fill 'rgba(255,255,255,0.75)' \
    -draw "point 9,5 point 23,12 point 38,4 point 52,9 point 66,3 point 74,14 point 31,17" \
    -draw "point 330,6 point 344,13 point 357,4 point 368,10 point 379,5 point 350,18" \
    -fill 'rgba(255,255,255,0.55)' -draw "$ticks" \
    "$tmp/sky.png"
layer "$tmp/sky_mask.png" 384 24 "fill white roundrectangle 0,0 384,24 3,3"
convert "$tmp/sky_mask.png" -filter box -resize 384x24 "$tmp/sky_mask.png"
convert "$tmp/sky.png" "$tmp/sky_mask.png" -alpha off -compose CopyOpacity -composite \
    +repage PNG32:skybar.png

# The two tabs that mark where night mode starts and ends. The line is light with dark edges
# so it shows on both the night and the day part of the bar; the handles tell the two apart,
# dark with a moon for the start, light with a sun for the end.
tab_line="fill rgba(8,12,20,0.55) stroke none
rectangle 5,0 9,23
fill $LIGHT
rectangle 6,0 8,23"
icon skytab_start.png 14 34 "$tab_line
fill $PANEL stroke $ACCENT stroke-width 1
roundrectangle 0.5,21.5 13.5,33.5 3,3"
layer "$tmp/moon.png" 14 34 "fill $LIGHT stroke none circle 7,27.5 7,31.3"
cut "$tmp/moon.png" "fill black circle 8.9,26 8.9,29.2"
convert skytab_start.png \( "$tmp/moon.png" -filter box -resize 14x34 \) -compose Over \
    -composite PNG32:skytab_start.png

sun_rays=$(awk 'BEGIN { for (i = 0; i < 8; i++) { a = i * 3.14159265 / 4
    printf "line %.2f,%.2f %.2f,%.2f\n", 7 + 2.9 * cos(a), 27.5 + 2.9 * sin(a),
        7 + 4.2 * cos(a), 27.5 + 4.2 * sin(a) } }')
icon skytab_end.png 14 34 "$tab_line
fill $LIGHT stroke $ACCENT stroke-width 1
roundrectangle 0.5,21.5 13.5,33.5 3,3
fill #eb9a25 stroke none
circle 7,27.5 7,29.6
fill none stroke #eb9a25 stroke-width 1 stroke-linecap round
$sun_rays"

# ---------------------------------------------------------------------------------------------
# The effect previews all start from one made-up photo, a hillside with a tree under a
# low sun, so that side by side they differ only by the effect. Everything is drawn at four
# times the preview's size and scaled down at the end, as a camera's picture would be.
W4=480 H4=320
ridge() { # base amplitude seed step: a smooth hill line across the picture, closed below
    awk -v base="$1" -v amp="$2" -v seed="$3" -v w="$W4" -v h="$H4" 'BEGIN {
        for (x = 0; x <= w; x += 8) {
            y = base + amp * (0.6 * sin(x / 70 + seed) + 0.3 * sin(x / 31 + 2 * seed) \
                + 0.1 * sin(x / 13 + 3 * seed))
            printf "%d,%.1f ", x, y }
        printf "%d,%d 0,%d", w, h, h }'
}
convert -size ${W4}x230 gradient:'#5a9bd6'-'#f4d8a8' \
    \( -size ${W4}x90 gradient:'#4c8a45'-'#2e5c31' \) -append +repage \
    \( -size ${W4}x${H4} xc:none -fill 'rgba(255,244,210,0.85)' -draw "circle 352,92 352,150" \
       -blur 0x22 \) -compose Over -composite \
    -fill '#fff6d8' -draw "circle 352,92 352,118" \
    -fill '#86a7b0' -draw "polygon $(ridge 196 22 1.0)" \
    -fill '#5d9455' -draw "polygon $(ridge 236 16 2.3)" \
    -fill '#3f7a3f' -draw "polygon $(ridge 268 10 4.1)" \
    -fill '#563a28' -draw "polygon 112,262 118,150 126,150 132,262" \
    -fill '#2b5e33' -draw "circle 122,136 122,176 circle 96,162 96,190 circle 150,160 150,190" \
    -fill '#3b7a41' -draw "circle 112,124 112,150 circle 140,146 140,166 circle 92,154 92,170" \
    -fill 'rgba(255,240,200,0.25)' -draw "circle 136,118 136,130" \
    -seed 4 -attenuate 0.25 +noise Gaussian \
    "$tmp/photo.png"

small() { # in out: the preview's real size
    convert "$1" -resize 120x80! +repage PNG32:"$2"
}
small "$tmp/photo.png" sample_no_mask.png
convert "$tmp/photo.png" -colorspace Gray -colorspace sRGB "$tmp/bw.png"
small "$tmp/bw.png" sample_bw.png
convert "$tmp/bw.png" -sigmoidal-contrast 9x52% "$tmp/bwc.png"
small "$tmp/bwc.png" sample_bw_contrast.png

# Shadow on and off: the same print in the same place, on a backdrop light enough for the
# shadow to show.
convert -size ${W4}x${H4} gradient:'#45526a'-'#2a3342' "$tmp/backdrop.png"
convert "$tmp/photo.png" -resize 336x224 "$tmp/print.png"
convert "$tmp/print.png" \( +clone -background black -shadow 75x10+14+14 \) +swap \
    -background none -layers merge +repage "$tmp/print_shadow.png"
# -shadow reaches twice its blur beyond the print, less its offset, so the merged picture
# starts 20 - 14 pixels above and left of the print, which must stay at +72+48.
convert "$tmp/backdrop.png" "$tmp/print_shadow.png" -geometry +$((72 - 6))+$((48 - 6)) \
    -compose Over -composite "$tmp/shadow_on.png"
small "$tmp/shadow_on.png" sample_shadow_on.png
convert "$tmp/backdrop.png" "$tmp/print.png" -geometry +72+48 -compose Over -composite \
    "$tmp/shadow_off.png"
small "$tmp/shadow_off.png" sample_shadow_off.png

# The random mask: an oval whose edge wanders, softened, over the dark window colour.
blob=$(awk 'BEGIN { pi = 3.14159265
    for (i = 0; i < 90; i++) { t = i * 2 * pi / 90
        r = 1 + 0.07 * sin(3 * t + 0.5) + 0.05 * sin(5 * t + 1.3) + 0.03 * sin(8 * t + 2.1)
        printf "%.1f,%.1f ", 240 + 196 * r * cos(t), 160 + 126 * r * sin(t) } }')
convert -size ${W4}x${H4} xc:black -fill white -draw "polygon $blob" -blur 0x16 \
    "$tmp/blob.png"
convert -size ${W4}x${H4} xc:"$BG" \
    \( "$tmp/photo.png" "$tmp/blob.png" -alpha off -compose CopyOpacity -composite \) \
    -compose Over -composite "$tmp/masked.png"
small "$tmp/masked.png" sample_random_mask.png

# Widescreen: a square picture on the wide screen, once with bars at the sides as it should
# be, once pulled out to the full width so the sun turns into an egg.
convert "$tmp/photo.png" -crop 320x320+70+0 +repage "$tmp/square.png"
convert -size ${W4}x${H4} xc:'#07090c' "$tmp/square.png" -geometry +80+0 -compose Over \
    -composite "$tmp/wide.png"
small "$tmp/wide.png" sample_widescreen.png
convert "$tmp/square.png" -resize ${W4}x${H4}! "$tmp/wide_stretched.png"
small "$tmp/wide_stretched.png" sample_widescreen_stretched.png

# The stacked pile: three different-looking prints cut from the photo (a warm crop, a cool
# one, the whole), each with a soft shadow, once bare and once with white borders.
convert "$tmp/photo.png" -crop 360x240+0+40 +repage -resize 240x160! -modulate 100,115,96 \
    "$tmp/pa.png"
convert "$tmp/photo.png" -crop 300x200+180+0 +repage -resize 240x160! -modulate 104,90,106 \
    "$tmp/pb.png"
convert "$tmp/photo.png" -resize 240x160! "$tmp/pc.png"
pile() { # out border backdrop
    local p
    local -A angles=([pa]=-13 [pb]=11 [pc]=-3)
    for p in pa pb pc; do
        convert "$tmp/$p.png" -bordercolor white -border "$2" -background none \
            -rotate "${angles[$p]}" \( +clone -background black -shadow 70x7+6+8 \) +swap \
            -background none -layers merge +repage "$tmp/pile_$p.png"
    done
    convert "$3" \
        "$tmp/pile_pa.png" -geometry +20+18 -compose Over -composite \
        "$tmp/pile_pb.png" -geometry +190+8 -compose Over -composite \
        "$tmp/pile_pc.png" -geometry +100+100 -compose Over -composite \
        "$1"
}
convert -size ${W4}x${H4} gradient:'#222a36'-'#161c25' "$tmp/dark.png"
pile "$tmp/stacked0.png" 0 "$tmp/dark.png"
small "$tmp/stacked0.png" sample_stacked_0.png
pile "$tmp/stacked1.png" 10 "$tmp/dark.png"
small "$tmp/stacked1.png" sample_stacked_1.png

# A random backdrop: a cork-like texture from seeded noise (the same every time the script
# runs), under the bordered pile.
convert -size ${W4}x${H4} xc:gray50 -seed 17 -attenuate 1.2 +noise Random -colorspace Gray \
    -blur 0x1.3 -contrast-stretch 2%x2% \
    \( -size ${W4}x${H4} xc:gray50 -seed 23 +noise Random -colorspace Gray -blur 0x12 \
       -auto-level \) -compose Overlay -composite \
    +level-colors '#4a3623','#b08a5c' "$tmp/cork.png"
pile "$tmp/random_bg.png" 10 "$tmp/cork.png"
small "$tmp/random_bg.png" sample_random_background.png

# ---------------------------------------------------------------------------------------------
# The panorama strip for the scrolling demo. Every wave in the ridges repeats a whole number
# of times across the width, so the right edge meets the left one and the strip can loop.
PW=960 PH=120 LAKE=80
pano_ridge() { # base height phase: a ridge's outline, closed below
    awk -v base="$1" -v amp="$2" -v ph="$3" -v w="$PW" 'BEGIN {
        pi = 3.14159265
        for (x = 0; x <= w; x += 2) {
            t = 2 * pi * x / w
            # One minus a folded sine makes a sharp crest where the sine crosses zero, so the
            # sum looks like peaks and passes rather than rolling hills.
            h = 0.55 * (1 - abs(sin(3 * t + ph))) + 0.30 * (1 - abs(sin(7 * t + 2 * ph))) \
                + 0.15 * (1 - abs(sin(17 * t + 3 * ph)))
            printf "%d,%.1f ", x, base - amp * h ^ 1.4 }
        printf "%d,%d 0,%d", w, base + 40, base + 40 }
        function abs(v) { return v < 0 ? -v : v }'
}
above() { # height: everything above a wavy snowline
    awk -v snow="$1" -v w="$PW" 'BEGIN { pi = 3.14159265
        for (x = 0; x <= w; x += 2) { t = 2 * pi * x / w
            printf "%d,%.1f ", x, snow + 2.5 * sin(41 * t) + 1.5 * sin(97 * t) }
        printf "%d,0 0,0", w }'
}
snow() { # out base height phase snowline: the part of a ridge above its snowline
    convert -size ${PW}x${LAKE} xc:none -fill '#edf2f7' -draw "polygon $(above "$5")" \
        \( -size ${PW}x${LAKE} xc:none -fill white -draw "polygon $(pano_ridge "$2" "$3" "$4")" \) \
        -compose DstIn -composite "$1"
}
shore() { # the dark wooded shore along the water
    awk -v w="$PW" -v lake="$LAKE" 'BEGIN { pi = 3.14159265
        for (x = 0; x <= w; x += 2) { t = 2 * pi * x / w
            y = lake - 3.5 - 1.5 * sin(13 * t + 1) - 1.2 * sin(59 * t) - 0.8 * sin(151 * t + 2)
            printf "%d,%.1f ", x, y }
        printf "%d,%d 0,%d", w, lake, lake }'
}
snow "$tmp/snow_far.png" 80 62 0.6 47
snow "$tmp/snow_near.png" 82 36 2.1 60
convert -size ${PW}x${LAKE} gradient:'#36689f'-'#efdcc4' \
    -fill '#8aa0bd' -draw "polygon $(pano_ridge 80 62 0.6)" \
    "$tmp/snow_far.png" -compose Over -composite \
    -fill '#5b7594' -draw "polygon $(pano_ridge 82 36 2.1)" \
    "$tmp/snow_near.png" -compose Over -composite \
    -fill '#1f3346' -draw "polygon $(shore)" \
    "$tmp/land.png"
# The lake mirrors the land, darker and slightly smeared by ripples.
convert "$tmp/land.png" -flip -crop ${PW}x$((PH - LAKE))+0+0 +repage \
    -virtual-pixel tile -motion-blur 0x6+0 \
    \( +clone -fill '#1d3550' -colorize 100 \) -compose Blend -define compose:args=55 \
    -composite \
    -fill 'rgba(255,255,255,0.18)' \
    -draw "line 40,8 130,8 line 300,14 420,14 line 610,6 700,6 line 820,20 930,20" \
    -draw "line 180,24 240,24 line 480,28 560,28" \
    "$tmp/lake.png"
convert "$tmp/land.png" "$tmp/lake.png" -append -resize 480x60! +repage PNG32:pano_strip.png

# ---------------------------------------------------------------------------------------------
# The header wordmark: the name in bold light text, "settings" muted beside it on the same
# baseline, on a transparent background so the header's colour shows through.
name_w=$(convert -font "$FONT" -pointsize 26 label:Tessaview -format %w info:)
convert -size 300x48 xc:none \
    -font "$FONT" -pointsize 26 -fill "$LIGHT" -draw "text 2,33 'Tessaview'" \
    -font "$FONT_LIGHT" -pointsize 18 -fill "$MUTED" -draw "text $((name_w + 10)),33 'settings'" \
    -fill "$ACCENT" -draw "roundrectangle 3,38 31,40 1,1" \
    PNG32:config_header.png

# ---------------------------------------------------------------------------------------------
# The tick inside a checked box: dark on the accent fill that the style sheet gives the box.
convert -size 13x13 xc:none -stroke '#0f1720' -strokewidth 2 -fill none \
    -draw "polyline 3,6.5 5.5,9 10,3.5" PNG32:check.png
