#!/usr/bin/env bash
# Makes twice what is given to users, and compares the bytes.
#
#   scripts/reproducible.sh            the second time everything, in a copy of the sources: another folder, user (where this
#                                      one is root), umask, language and time zone, and no object of an earlier build
#   scripts/reproducible.sh --relink   the second time here, from the objects that are there: libraries, type library, help,
#                                      setup and zip (some seconds; part of make test)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
made=build/reproducible
rm -rf "$made"
mkdir -p "$made/one" "$made/other"

keep() {  # keep SOURCES FOLDER: what was installed, and what is given to users
    cp -R "$1/build/setup/stage" "$2/"
    cp "$1/build/setup-dist/"* "$2/"
}
elsewhere=(env TZ=Pacific/Kiritimati LANG=C LC_ALL=C)

scripts/setup.sh build/setup-dist > "$made/one.log" 2>&1 || { tail -n 40 "$made/one.log" >&2; exit 1; }
keep . "$made/one"
if [ "${1:-}" = --relink ]; then
    rm -f build/win*-release/src/{addin/CVOutlookAddIn.dll,resources/CVOutlookAddIn.tlb} build/win32-release/help/*.chm
    ( umask 077 && "${elsewhere[@]}" scripts/setup.sh build/setup-dist ) > "$made/other.log" 2>&1 ||
        { tail -n 40 "$made/other.log" >&2; exit 1; }
    keep . "$made/other"
else
    copy=$(mktemp -d /var/tmp/built-elsewhere.XXXXXX)
    trap 'rm -rf "$copy"' EXIT
    git ls-files -z | tar --create --null --files-from=- | tar --extract --directory="$copy"
    find "$copy" -exec touch -d "2001-02-03" {} +
    if [ "$(id -u)" = 0 ]; then
        chown -R nobody "$copy"
        elsewhere=(setpriv --reuid=nobody --regid=nogroup --clear-groups env -i "PATH=/usr/local/bin:/usr/bin:/bin"
                   "HOME=$copy" CCACHE_DISABLE=1 TZ=Pacific/Kiritimati LC_ALL=C)
    fi
    ( umask 077 && cd "$copy" && "${elsewhere[@]}" scripts/setup.sh build/setup-dist ) > "$made/other.log" 2>&1 ||
        { tail -n 40 "$made/other.log" >&2; exit 1; }
    keep "$copy" "$made/other"
fi
rm -f "$made"/*.log
scripts/compare-builds.py "$made/one" "$made/other" > build/reproducible.log ||
    { echo "reproducible: two builds are not the same" >&2; cat build/reproducible.log >&2; exit 1; }
echo "reproducible: $(grep -c '^same' build/reproducible.log) files are the same in both builds"
