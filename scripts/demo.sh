#!/usr/bin/env bash
# Installs what is missing, builds, and starts a full-screen show on the demo install folder.
# The demo keeps its settings apart from the user's own, under build/demo-config.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

"$root/scripts/setup.sh" --demo
"$root/scripts/build.sh" "$root/build"

if [ -z "${DISPLAY:-}" ]; then
    echo "There is no X display to show on (DISPLAY is not set)." >&2
    echo "Run this from a desktop session, or start a virtual one first, e.g." >&2
    echo "  Xvfb :99 -screen 0 1920x1080x24 & export DISPLAY=:99" >&2
    exit 1
fi

export XDG_CONFIG_HOME="$root/build/demo-config"
store="$XDG_CONFIG_HOME/Marrowfield/Tessaview.ini"
mkdir -p "$(dirname "$store")"
if [ -f "$store" ] && grep -q '^installDir=' "$store"; then
    sed -i "s|^installDir=.*|installDir=$root/demo|" "$store"
elif [ -f "$store" ] && grep -q '^\[General\]' "$store"; then
    sed -i "s|^\[General\]|[General]\ninstallDir=$root/demo|" "$store"
else
    printf '[General]\ninstallDir=%s\n' "$root/demo" >>"$store"
fi

# List files hold full paths, so the demo's lists are written for wherever this checkout lives.
"$root/scripts/make_demo_photos.sh" "$root/demo/Photos"
"$root/scripts/make_demo_list.sh" "$root/demo"

exec "$root/build/tessaview" /s
