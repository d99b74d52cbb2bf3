#!/usr/bin/env bash
# A working day in Outlook with the add-in, as a transcript of what happened:
# scripts/demo.sh [2000|2002|2003|2007|2010|2013|2016] [language] [32|64]
#
# Builds the DLL, registers it with Wine's regsvr32, lets the Outlook stand-in find and load it, plays the stations and
# reads back what came of each. Pictures and the transcript go to build/demo. Ends non-zero when a link is missing.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/outlook-version.sh
cv_read_version demo "$@"

name=$outlook
[ "$cv_bits" = 32 ] || name+=-x64
[ "$language" = English ] || name+=-$language
pictures=build/demo/$name
transcript=$pictures/transcript.txt
rm -rf "$pictures"
mkdir -p "$pictures"

say() { printf '%s\n' "$*" | tee -a "$transcript"; }
check() {  # check "what must be" actual expected
    if [ "$2" = "$3" ]; then say "   ok    $1"; else say "   WRONG $1: found '$2', expected '$3'"; fi
}
value() { wine reg query "HKCU\\Software\\Quillmark\\Corvella\\$1" /v "$2" 2>/dev/null | tr -d '\r' | awk -v n="$2" '$1==n {print $3}'; }

say "== Building and preparing (a first run installs and builds: some minutes)"
. scripts/install-addin.sh OutlookDay || exit 1
. scripts/period-look.sh
cv_paint_desktop
cv_set_managed N
cv_set_language "$language"
rm -f "$cv_install/Corvella.record.txt" "$cv_install/Corvella.log"
for key in OlAddIn Outlook; do wine reg delete "HKCU\\Software\\Quillmark\\Corvella\\$key" /f >/dev/null 2>&1; done

say "== Outlook $outlook (stand-in, $cv_bits bits) starts, in $language; it looks for add-ins in the registry"
# The program asks for a picture by a line "@picture NAME" and goes on when NAME.done is there.
( cd "$pictures" && LC_ALL=$cv_locale timeout 400 wine "$cv_outlook" /version "$outlook" /record "$cv_record" /play day 2>/dev/null; echo "@ended $?" ) | {
    ended=1
    while IFS= read -r line; do
        line=${line%$'\r'}
        case "$line" in
            "@picture "*)
                picture=${line#@picture }
                cv_take_picture "$pictures/$picture.png"
                touch "$pictures/$picture.done"
                say "         [picture: $pictures/$picture.png]"
                ;;
            "@ended "*) ended=${line#@ended } ;;
            *) say "$(iconv -c -f "$cv_codepage" -t UTF-8 <<< "$line")" ;;
        esac
    done
    exit "$ended"
}
played=${PIPESTATUS[1]}
rm -f "$pictures"/*.done

say "== After Outlook has ended: its exit code, the registry, Corvella's record, the pictures"
record=$(tr -d '\r' < "$cv_install/Corvella.record.txt" 2>/dev/null)
# 1: a line above is WRONG. Any other number is a crash, or the end of patience (124).
check "Outlook ended by itself" "$([ "$played" -le 1 ] && echo yes || echo "code $played")" yes
check "\"Active\" is gone" "$(value OlAddIn Active)" ""
for list in ChangedA ChangedC ChangedT; do check "\"$list\" is empty" "$(value Outlook $list)" ""; done
say "         Corvella's record has $(printf '%s\n' "$record" | grep -c .) starts:"
printf '%s\n' "$record" | sed -E 's/.*command="[^"]*" ?//' | sed 's/^$/(nothing)/' | sort | uniq -c |
    while read -r count arguments; do say "         $count x $arguments"; done
check "each of them names Corvella.exe" "$(printf '%s\n' "$record" | grep -vc 'Corvella.exe"')" 0
taken=0 seen=0
for picture in "$pictures"/*.png; do
    taken=$((taken + 1))
    [ "$(identify -format '%k' "$picture" 2>/dev/null || echo 0)" -gt 16 ] && seen=$((seen + 1))
done
check "all $taken pictures show windows" "$seen" "$taken"
check "no two of them are the same" "$(md5sum "$pictures"/*.png | cut -d' ' -f1 | sort -u | wc -l)" "$taken"

# Counts the lines of the transcript, so that the table can say nothing that was not printed above.
say ""
awk '
    function row(title, ok, wrong) { printf "   %-68s %4d %6s\n", title, ok, wrong ? wrong : "-" }
    BEGIN { printf "   %-68s %4s %6s\n", "What was checked", "ok", "WRONG" }
    /^== /       { title = substr($0, 4); sub(/;.*|: .*/, "", title); if (!(title in seen)) { seen[title]; order[++n] = title } }
    /^   ok /    { ok[title]++; all++ }
    /^   WRONG / { wrong[title]++; bad++ }
    END { for (i = 1; i <= n; i++) if (ok[order[i]] + wrong[order[i]]) row(order[i], ok[order[i]], wrong[order[i]]); row("All", all, bad) }
' "$transcript" | tee -a "$transcript.table"
cat "$transcript.table" >> "$transcript"
rm -f "$transcript.table"

if grep -q '^   WRONG ' "$transcript" || [ "$played" != 0 ]; then
    say "== Something is missing."
    exit 1
fi
say "== All of it happened."
