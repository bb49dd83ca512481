#!/usr/bin/env bash
# Draws the icon in the sizes that desktops ask for, from velmora.svg. Run it when that has changed; the pictures are
# part of the sources, so that building needs no drawing program.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

for size in 16 22 24 32 48 64 128 256 512; do
    rsvg-convert --width "$size" --height "$size" --output "velmora-$size.png" velmora.svg
done
