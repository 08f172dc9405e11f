#!/usr/bin/env bash
# Configures and builds into a build folder: build.sh [folder] [extra cmake options...]
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
dir="${1:-$root/build}"
shift || true
cmake -S "$root" -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$dir" -j"$(nproc)"
