#!/usr/bin/env bash
# The main job on real input, as a transcript of what happened: scripts/demo.sh [2000|2002|2003|2007]
#
# Builds the DLL, registers it with Wine's regsvr32, lets the Outlook stand-in find and load it, plays the scenario
# and reads back what came of it. Pictures go to build/demo. Ends non-zero when a link of the chain is missing.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
outlook=${1:-2003}
case "$outlook" in 2000 | 2002 | 2003 | 2007) ;; *) echo "demo: Outlook 2000, 2002, 2003 or 2007, not '$outlook'" >&2; exit 2 ;; esac

say() { printf '%s\n' "$*"; }
say "== Building and preparing (a first run installs and builds: some minutes)"
. scripts/install-addin.sh || exit 1

pictures=build/demo/$outlook
rm -rf "$pictures"
mkdir -p "$pictures"
rm -f "$cv_install/Corvella.record.txt"
for key in OlAddIn Outlook; do wine reg delete "HKCU\\Software\\Quillmark\\Corvella\\$key" /f >/dev/null 2>&1; done

say "== Outlook $outlook (stand-in) starts; it looks for add-ins in the registry"
# The program asks for a picture by a line "@picture NAME" and goes on when NAME.done is there.
( cd "$pictures" && wine "$cv_outlook" /version "$outlook" /play demo 2>/dev/null; echo "@ended $?" ) | {
    ended=1
    while IFS= read -r line; do
        line=${line%$'\r'}
        case "$line" in
            "@picture "*)
                name=${line#@picture }
                sleep 0.3
                import -window root "$pictures/$name.png" && touch "$pictures/$name.done"
                say "   [picture: $pictures/$name.png]"
                ;;
            "@ended "*) ended=${line#@ended } ;;
            *) say "$line" ;;
        esac
    done
    exit "$ended"
}
played=$?
rm -f "$pictures"/*.done

failed=0
check() {  # check "what must be" actual expected
    if [ "$2" = "$3" ]; then say "   ok    $1"; else say "   WRONG $1: found '$2', expected '$3'"; failed=1; fi
}
value() { wine reg query "HKCU\\Software\\Quillmark\\Corvella\\$1" /v "$2" 2>/dev/null | tr -d '\r' | awk -v n="$2" '$1==n {print $3}'; }

say "== After Outlook has ended: registry, Corvella's own record, processes"
record=$(cat "$cv_install/Corvella.record.txt" 2>/dev/null | tr -d '\r')
say "   Corvella.record.txt: ${record:-nothing}"
check "every step of the scenario was observed in the host" "$played" 0
check "\"Active\" is gone" "$(value OlAddIn Active)" ""
check "Corvella was started once" "$(printf '%s' "$record" | grep -c 'Corvella.exe')" 1
check "with the argument \"update\"" "$(printf '%s' "$record" | grep -c 'Corvella.exe" update')" 1
check "and cleared \"ChangedC\"" "$(value Outlook ChangedC)" ""
for name in contact sent; do
    colours=$(identify -format '%k' "$pictures/$name.png" 2>/dev/null || echo 0)
    check "picture $name.png shows windows" "$([ "$colours" -gt 16 ] && echo yes)" yes
done

[ "$failed" = 0 ] && say "== All of it happened." || say "== Something is missing."
exit "$failed"
