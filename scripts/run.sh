#!/usr/bin/env bash
# Opens the Outlook stand-in with the add-in for a person to click in: scripts/run.sh [2000|2002|2003|2007|2010|2013|2016] [language] [32|64]
# What is started shows in the window "What happens".
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/outlook-version.sh
cv_read_version run "$@"
[ -n "${DISPLAY:-}" ] || { echo "run: there is no display; 'make demo' needs none" >&2; exit 1; }
export CV_DISPLAY=own
mkdir -p build
. scripts/install-addin.sh OutlookStandIn
cv_set_managed Y
cv_set_language "$language"
exec env LC_ALL="$cv_locale" wine "$cv_outlook" /version "$outlook" /record "$cv_record"
