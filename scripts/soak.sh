#!/usr/bin/env bash
# A long show under Xvfb with the memory log on, to see that memory stays flat:
#   soak.sh [frames, default 2000]
# Two monitors, 1-second interval and fade, every layout and effect on, pictures of mixed sizes
# and formats with broken files among them. Prints the show's resident memory (the least and the
# most over ten seconds) at frame 100, every 250 frames and at the end, and fails unless the least
# at the end is within a tenth of frame 100's; the memory log (MemLog.csv, one line per frame)
# stays in build-soak/install.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
frames="${1:-2000}"
work="${TESSAVIEW_SOAK_DIR:-$root/build-soak}"
program="${TESSAVIEW_PROGRAM:-$root/build/tessaview}"

"$root/scripts/setup.sh"
if [ ! -x "$program" ]; then "$root/scripts/build.sh" "$root/build"; fi

install="$work/install"
pics="$install/Soak pictures"
rm -rf "$install"
mkdir -p "$pics" "$install/Imagelists" "$install/Backgrounds" "$install/Masks"
cp "$root/demo/Backgrounds/"* "$install/Backgrounds/"
cp "$root/demo/Masks/"* "$install/Masks/"

echo "== Pictures =="
i=0
make_picture() { # size, format, pattern
    i=$((i + 1))
    convert -size "$1" "$3" -quality 85 "$pics/p$(printf %03d $i).$2"
}
for pattern in plasma:fractal gradient:navy-gold plasma:green-blue "pattern:checkerboard"; do
    make_picture 640x480 jpg "$pattern"
    make_picture 4000x3000 jpg "$pattern"     # larger than the screen: decoded scaled down
    # Scrolling moves 40 pixels a second and holds the next change until it ends: these overhang
    # both monitors enough to scroll, by little enough that 2,000 frames fit in a couple of hours.
    make_picture 1300x400 jpg "$pattern"      # a panorama that scrolls
    make_picture 450x1000 png "$pattern"      # a portrait that scrolls
    make_picture 800x600 bmp "$pattern"
    make_picture 1024x768 tif "$pattern"
    make_picture 300x200 gif "$pattern"
    make_picture 1600x1200 webp "$pattern" 2>/dev/null || true
done
# Broken files: passed over, never fatal.
head -c 20000 "$pics/p002.jpg" >"$pics/broken-truncated.jpg"
: >"$pics/broken-empty.jpg"
echo "not a picture" >"$pics/broken-text.png"
head -c 4096 /dev/urandom >"$pics/broken-noise.jpg"
echo "$(ls "$pics" | wc -l) files"

{
    printf '%s\r\n' "Imagelist for Ferrin's Tessaview" "------------------------------" \
        TITLE "Soak" PATH "$pics/" "COUNT,0" "LOCALORWEB,Local" "LASTSCAN,$(date +%d/%m/%Y)" \
        "SCANINTERVAL,4000" "OPTION,RECURSE==False" "OPTION,none==none" "OPTION,none==none" \
        "OPTION,none==none" "OPTION,none==none" IMAGES
    for f in "$pics"/*; do printf 'IMAGE>%s\r\n' "$f"; done
    printf 'IMAGE>%s\r\n' "$pics/vanished.jpg"
} >"$install/Imagelists/Soak_1.tvl"

# Every layout and effect on; the debug log is what switches the memory log on.
cat >"$install/TView_Prefs.txt" <<'PREFS'
Tessaview Preferences File - written 01/01/2026 00:00:00
6.0.1
======================================================
DEBUGLOG
INTERVAL,1
CROSSFADETIME,1
IMAGEORDER,1
BACKGROUNDIMAGE,1,0,50

RANDOMBACKGROUNDIMAGES,True,3
USELOCALBACKGROUND,1
SCROLLPANOS,1
SCROLLALLVERTICALIMAGES,1
SHOWCAPTIONS,1
CAPTIONCONTENT,0,1,0,0,0,1,0,1
CAPTIONCONTENT,1,0,0,1,0,0,1,0
FLOATINGCAPTIONBOXES,1
ENABLEMULTIMONITORS,1,0
LAYOUT,2,1,30
LAYOUT,1,1,30
LAYOUT,0,1,40
STACKIMAGES,4
WHITEBORDER,1,4210752,10
USEIMAGEMASKS,1,30

RANDOMIMAGEMASKS,True,2
ADDSHADOWS,1,3,8
BLACKANDWHITE,1,20,1
EXITOPTIONS,1,0,0,0
PREFS

export XDG_CONFIG_HOME="$work/config"
mkdir -p "$XDG_CONFIG_HOME/Marrowfield"
printf '[General]\ninstallDir=%s\n' "$install" >"$XDG_CONFIG_HOME/Marrowfield/Tessaview.ini"

echo "== Xvfb with two monitors =="
exec 5< <(Xvfb -displayfd 1 -noreset -nolisten tcp -screen 0 1920x1080x24 2>/dev/null)
xvfb_pid=$!
read -r -t 20 number <&5
export DISPLAY=":$number"
show_pid=""
cleanup() {
    if [ -n "$show_pid" ]; then kill "$show_pid" 2>/dev/null || true; fi
    kill "$xvfb_pid" 2>/dev/null || true
}
trap cleanup EXIT
xrandr --setmonitor LEFT 1024/270x768/200+0+0 screen
xrandr --setmonitor '*RIGHT' 800/210x600/160+1024+100 none

rss() { awk '/^VmRSS/ {print $2}' "/proc/$1/status" 2>/dev/null || echo 0; }
# Resident memory swings by a fifth within each frame (the next photo decoded, the fade's
# buffers), so one reading says more about the moment than about the trend: the least and the
# most of 20 readings over ten seconds (two frames or more) say both. Prints "least most".
rss_span() {
    local least="" most=0 r
    for _ in $(seq 1 20); do
        r=$(rss "$1")
        if [ "$r" -gt 0 ]; then
            if [ -z "$least" ] || [ "$r" -lt "$least" ]; then least=$r; fi
            if [ "$r" -gt "$most" ]; then most=$r; fi
        fi
        sleep 0.5
    done
    echo "${least:-0} $most"
}
frame() { if [ -f "$install/MemLog.csv" ]; then wc -l <"$install/MemLog.csv"; else echo 0; fi; }

echo "== Show of $frames frames =="
"$program" /s >"$work/show.out" 2>&1 &
show_pid=$!
rss100=""
started=$(date +%s)
last=0
stalled=$(date +%s)
while kill -0 "$show_pid" 2>/dev/null; do
    n=$(frame)
    if [ -z "$rss100" ] && [ "$n" -ge 100 ]; then
        read -r rss100 most100 < <(rss_span "$show_pid")
        echo "frame 100: ${rss100} to ${most100} kB resident"
    fi
    if [ "$n" -ge "$frames" ]; then break; fi
    # Every 250 frames a line, so that a run stopped early still tells how memory went.
    if [ "$n" -ne "$last" ] && [ $((n / 250)) -gt $((last / 250)) ]; then
        read -r least most < <(rss_span "$show_pid")
        echo "frame $n: ${least} to ${most} kB resident, $(($(date +%s) - started)) s"
    fi
    if [ "$n" -ne "$last" ]; then last=$n; stalled=$(date +%s); fi
    # A show that puts up no frame for two minutes is stuck.
    if [ $(($(date +%s) - stalled)) -gt 120 ]; then echo "no frame for two minutes at frame $n" >&2; exit 1; fi
    sleep 1
done
if ! kill -0 "$show_pid" 2>/dev/null; then
    echo "the show ended by itself at frame $(frame)" >&2
    exit 1
fi
n=$(frame)
read -r end_rss end_most < <(rss_span "$show_pid")
xdotool key Escape || true
for _ in $(seq 1 30); do kill -0 "$show_pid" 2>/dev/null || break; sleep 1; done
show_pid=""
echo "frame $n: ${end_rss} to ${end_most} kB resident"
echo "$n frames in $(($(date +%s) - started)) s"
if [ -n "$rss100" ] && [ "$rss100" -gt 0 ]; then
    growth=$(awk -v a="$rss100" -v b="$end_rss" 'BEGIN { printf "%.1f", (b - a) * 100 / a }')
    echo "least resident memory from frame 100 to the end: ${growth} %"
fi
echo "committed memory (MemLog.csv) at frame 100 and at the end: $(sed -n 100p "$install/MemLog.csv") / $(tail -n 1 "$install/MemLog.csv")"
# Flat means within a tenth of the reading at frame 100.
if [ -z "$rss100" ] || [ "$rss100" -le 0 ] || [ $((end_rss * 10)) -gt $((rss100 * 11)) ]; then
    echo "memory did not stay flat" >&2
    exit 1
fi
echo "memory stayed flat"
