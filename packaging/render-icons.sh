#!/usr/bin/env bash
# Redraws the program's icon for the desktop menu at each hicolor size from its SVG source
# (needs rsvg-convert, from librsvg2-bin). The package uses the checked-in PNGs.
set -euo pipefail
cd "$(dirname "$0")"

source=../resources/images/src/zelvar_caption.svg
for size in 16 22 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" --keep-aspect-ratio "$source" \
        -o "icons/zelvar-servo-manager-$size.png"
done
