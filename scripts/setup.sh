#!/usr/bin/env bash
# Installs the Debian packages Tessaview needs to build, run and test, when any is missing.
# With --demo, also the photographs the demo shows.
set -euo pipefail

PACKAGES=(
    build-essential cmake pkg-config git
    qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev qt6-qpa-plugins
    libfreeimage-dev libturbojpeg0-dev libgtest-dev libxext-dev libxcb1-dev libx11-dev libgl-dev
    libqt6multimedia6 gstreamer1.0-plugins-base gstreamer1.0-plugins-good
    fonts-dejavu-core
    xvfb xauth xdotool x11-utils x11-xserver-utils imagemagick
    # The fuzz targets: clang with libFuzzer's runtime, and the symbolizer for readable reports.
    clang libclang-rt-14-dev llvm-14
)
if [ "${1:-}" = "--demo" ]; then
    PACKAGES+=(mate-backgrounds)
fi

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi

echo "Installing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
    SUDO=()
elif command -v sudo >/dev/null 2>&1; then
    SUDO=(sudo)
else
    echo "These packages are missing and this user cannot install them: ${missing[*]}" >&2
    echo "Run this script as root, or install them with your package manager." >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
"${SUDO[@]}" apt-get update -qq
"${SUDO[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
