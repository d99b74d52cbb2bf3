#!/usr/bin/env bash
# Opens the Outlook stand-in with the add-in for a person to click in: scripts/run.sh [2000|2002|2003|2007] [language]
# What is started shows in the window "What happens".
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
language=${2:-English}
[ -n "${DISPLAY:-}" ] || { echo "run: there is no display; 'make demo' needs none" >&2; exit 1; }
[ -e "lang/$language.lng" ] || { echo "run: a language of lang/, not '$language'" >&2; exit 2; }
export CV_DISPLAY=own
mkdir -p build
. scripts/install-addin.sh OutlookStandIn
cv_set_managed Y
cv_set_language "$language"
exec env LC_ALL="$cv_locale" wine "$cv_outlook" /version "${1:-2003}" /record "$cv_record"
