#!/usr/bin/env bash
# make-manual-pictures.sh BUILD: has the windows of that build picture themselves for the manual, in every language. Run
# it when they have changed; the pictures are part of the sources. Of 64 colours each, so that thirteen manuals stay
# small. Letters that the fonts at hand do not have show as boxes: Japanese and Chinese need fonts-noto-cjk.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

packaging/install-missing.sh build window display pictures
cmake --build "$1" --target velmora_manual

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
tests/ui/with-display.sh "$1/bin/velmora_manual" "$folder"
find "$folder" -name '*.png' -printf '%P\n' | while read -r picture; do
    convert "$folder/$picture" +dither -colors 64 -strip -define png:compression-level=9 \
        "PNG8:packaging/resources/$picture"
done
