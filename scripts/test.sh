#!/usr/bin/env bash
# Installs what is missing, builds with warnings as errors, and runs every test: once in a
# normal build and once under AddressSanitizer and UndefinedBehaviorSanitizer; then a short
# pass of every fuzz target (TESSAVIEW_FUZZ_SECONDS each, default 30; 0 leaves it out).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

"$root/scripts/setup.sh"

echo "== Build and test =="
"$root/scripts/build.sh" "$root/build" -DTESSAVIEW_WERROR=ON
(cd "$root/build" && ctest --output-on-failure --timeout 300 -j2)

echo "== Build and test with AddressSanitizer and UndefinedBehaviorSanitizer =="
"$root/scripts/build.sh" "$root/build-asan" -DTESSAVIEW_WERROR=ON -DTESSAVIEW_SANITIZE=ON \
    -DTESSAVIEW_BENCH=OFF
# Leak reports from the system's graphics and font libraries are not ours to fix; memory
# errors and undefined behaviour still fail the run.
export ASAN_OPTIONS="detect_leaks=0:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
(cd "$root/build-asan" && ctest --output-on-failure --timeout 600 -j2)

echo "== Fuzz every reader of outside input for a short while =="
fuzz_seconds="${TESSAVIEW_FUZZ_SECONDS:-30}"
if [ "$fuzz_seconds" -gt 0 ]; then
    "$root/scripts/fuzz.sh" "$fuzz_seconds"
fi
