#!/usr/bin/env bash
# Opens the Outlook stand-in with the add-in for a person to click in: scripts/run.sh [2000|2002|2003|2007]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
[ -n "${DISPLAY:-}" ] || { echo "run: there is no display; 'make demo' needs none" >&2; exit 1; }
export CV_DISPLAY=own
mkdir -p build
. scripts/install-addin.sh
exec wine "$cv_outlook" /version "${1:-2003}"
