#!/usr/bin/env bash
# Redraws the PNG images from their SVG sources (needs rsvg-convert, from librsvg2-bin).
# The build only uses the PNGs; run this after changing a source.
set -euo pipefail
cd "$(dirname "$0")"

for source in src/*.svg; do
    name=$(basename "$source" .svg)
    rsvg-convert --keep-aspect-ratio "$source" -o "$name.png"
done
