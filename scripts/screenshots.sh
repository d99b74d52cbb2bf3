#!/usr/bin/env bash
# Makes the pictures of the documentation anew, in docs/pictures, from the running programs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/demo.sh 2003
mkdir -p docs/pictures
convert=$(command -v convert-im6.q16 || command -v convert)
"$convert" build/demo/2003/contact.png -crop 940x640+30+20 +repage docs/pictures/contact.png
python3 scripts/draw-bitmaps.py
ls -l docs/pictures
