#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each on its corpus for a while:
#   fuzz.sh [seconds per target, default 30] [target ...]
# Targets: exif imagelist ini numbers playlist pool prefs remaining (all when none is named).
# Crashes land in build-fuzz/fuzz/crashes/<target>/; the corpora grow in build-fuzz/fuzz/corpus/.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
seconds="${1:-30}"
shift || true
build="${TESSAVIEW_FUZZ_BUILD:-$root/build-fuzz}"
jobs="${TESSAVIEW_FUZZ_JOBS:-$(nproc)}"

"$root/scripts/setup.sh"

echo "== Build the fuzz targets =="
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTESSAVIEW_FUZZ=ON \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build "$build" -j"$jobs"

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    targets=(exif imagelist ini numbers playlist pool prefs remaining)
fi

# Seeds: the project's own fixtures and dictionaries, and sample photographs when the shared
# folder beside the checkout has them (never committed).
samples="${TESSAVIEW_EXIF_SAMPLES:-$root/../shared/realworld/exif-samples}"
# Leaks are checked after each input: what the system libraries keep until the end is theirs.
export ASAN_OPTIONS="abort_on_error=1:detect_leaks=1:leak_check_at_exit=0:allocator_may_return_null=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/fuzz/lsan.supp:print_suppressions=0"
export QT_QPA_PLATFORM=offscreen
# The targets write each input to a file, and the writers sync what they save: in memory that
# costs nothing.
if [ -d /dev/shm ] && [ -w /dev/shm ]; then export TMPDIR=/dev/shm; fi

# Mutations stay small where the reader's work is in the first bytes; the seeds may be larger.
declare -A max_len=([exif]=65536)

failed=()
for t in "${targets[@]}"; do
    corpus="$build/fuzz/corpus/$t"
    crashes="$build/fuzz/crashes/$t"
    mkdir -p "$corpus" "$crashes"
    if [ -d "$root/fuzz/seeds/$t" ]; then cp -n "$root/fuzz/seeds/$t"/* "$corpus"/ 2>/dev/null || true; fi
    if [ "$t" = exif ] && [ -d "$samples" ]; then
        # Whole photographs, as the reader meets them; only the first 4096 bytes matter to it,
        # but the big ones stay whole so that the read of a large file is exercised too.
        find "$samples" -type f -size -2M -print0 | while IFS= read -r -d '' f; do
            cp -n "$f" "$corpus/$(basename "$f")" 2>/dev/null || true
        done
    fi
    dict=()
    if [ -f "$root/fuzz/dict/$t.dict" ]; then dict=(-dict="$root/fuzz/dict/$t.dict"); fi
    echo "== Fuzz $t for ${seconds} s =="
    # No single allocation above 64 MB, and no input may take more than 2 s (none is larger
    # than 2 MB, and a reader may take a second per megabyte).
    if ! (cd "$crashes" && "$build/fuzz/fuzz_$t" "${dict[@]}" -max_total_time="$seconds" \
        -rss_limit_mb=2048 -malloc_limit_mb=64 -timeout=2 -max_len="${max_len[$t]:-16384}" \
        -print_final_stats=1 "$corpus" 2>&1 | tee "$build/fuzz/$t.log" | grep -E "^(#[0-9]+[[:space:]]+(INITED|DONE)|stat::number_of_executed_units|==[0-9]+==ERROR|SUMMARY|artifact_prefix)"); then
        true
    fi
    if ls "$crashes"/crash-* "$crashes"/leak-* "$crashes"/timeout-* "$crashes"/oom-* >/dev/null 2>&1 ||
        grep -q "ERROR: libFuzzer\|ERROR: AddressSanitizer\|runtime error\|ERROR: LeakSanitizer" "$build/fuzz/$t.log"; then
        failed+=("$t")
    fi
done

if [ ${#failed[@]} -gt 0 ]; then
    echo "Fuzzing found problems in: ${failed[*]} (see $build/fuzz/crashes and $build/fuzz/*.log)" >&2
    exit 1
fi
echo "Fuzzing: no crash, leak or time-out."
