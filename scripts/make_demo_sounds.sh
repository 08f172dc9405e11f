#!/usr/bin/env bash
# Makes the demo install folder's Sounds: short tones written sample by sample, so that the
# demo needs no recordings from anywhere else. The show plays one at random with each change
# of image when sounds are switched on. Needs python3.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
out="$root/demo/Sounds"
mkdir -p "$out"

python3 - "$out" <<'PY'
import math, struct, sys, wave

RATE = 22050

def write(path, seconds, sample):
    frames = bytearray()
    for n in range(int(RATE * seconds)):
        t = n / RATE
        value = max(-1.0, min(1.0, sample(t)))
        frames += struct.pack('<h', int(value * 32767))
    with wave.open(path, 'wb') as w:
        w.setnchannels(1)
        w.setsampwidth(2)
        w.setframerate(RATE)
        w.writeframes(bytes(frames))

def onset(t):
    # A few milliseconds of rise, so that no tone starts with a click.
    return min(1.0, t / 0.004)

# A soft chime: a bell-like pair of partials dying away.
write(f'{sys.argv[1]}/Chime.wav', 0.8, lambda t: onset(t) * math.exp(-5.0 * t) *
      (0.30 * math.sin(2 * math.pi * 880 * t) + 0.12 * math.sin(2 * math.pi * 2217 * t)))

# A wooden tick: a low knock that is over at once.
write(f'{sys.argv[1]}/Tick.wav', 0.12, lambda t: onset(t) * math.exp(-40.0 * t) *
      (0.45 * math.sin(2 * math.pi * 540 * t) + 0.15 * math.sin(2 * math.pi * 1370 * t)))
PY
