#!/usr/bin/env bash
# Draws the icons' pixels from app/desktop/icons/*.svg anew, after one has changed. What it makes is kept, since
# neither building nor starting the program shall need what draws (packages: librsvg2-bin, icoutils).
set -euo pipefail
cd "$(dirname "$0")/../app/desktop/icons"
for drawing in *.svg; do
    name=${drawing%.svg}
    for size in 16 32 48 128 256; do
        rsvg-convert -w "$size" -h "$size" "$drawing" -o "$name-$size.png"
    done
    icotool -c -o "$name.ico" "$name"-{16,32,48}.png -r "$name-256.png"
    rm "$name-256.png"
done
