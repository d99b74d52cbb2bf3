#!/usr/bin/env bash
# Plays the day in every language and puts what it looks like there on one sheet, docs/pictures/languages.png: the open
# menu with the synchronise button, and the toolbar of a contact's window. Ends non-zero when a day goes wrong.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
montage=$(command -v montage-im6.q16 || command -v montage)
convert=$(command -v convert-im6.q16 || command -v convert)
sheet=build/contact-sheet
rm -rf "$sheet"
mkdir -p "$sheet" docs/pictures

cells=()
for language in $(python3 scripts/languages.py); do
    echo "contact-sheet: $language"
    scripts/demo.sh 2003 "$language" > "$sheet/$language.txt" || { cat "$sheet/$language.txt"; exit 1; }
    played=build/demo/2003
    [ "$language" = English ] || played+=-$language
    "$convert" "$played/menu.png" -crop 640x256+290+54 +repage "$sheet/menu.png"
    "$convert" "$played/contact.png" -crop 640x75+300+190 +repage "$sheet/contact.png"
    "$convert" "$sheet/menu.png" "$sheet/contact.png" -append "$sheet/$language.png"
    cells+=(-label "$language" "$sheet/$language.png")
done
"$montage" "${cells[@]}" -tile 2x -geometry +8+4 -background white -font /usr/share/wine/fonts/tahoma.ttf -pointsize 15 "$sheet/sheet.png"
"$convert" "$sheet/sheet.png" +dither -colors 255 -define png:exclude-chunks=date,time docs/pictures/languages.png
ls -l docs/pictures/languages.png
