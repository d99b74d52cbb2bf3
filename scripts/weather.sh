#!/usr/bin/env bash
# Plays the scenarios of tests/weather with each call of Windows failing in turn: scripts/weather.sh [A/B]
# A/B is the A-th of B parts of the whole. The findings stay in build/weather.txt. Ends with 1 when there are any.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/build.sh win32-release weather > build/weather-build.log 2>&1 || { tail -n 30 build/weather-build.log; exit 2; }
exec python3 tests/weather/weather_test.py build/win32-release/tests/weather/weather.exe --whole --share "${1:-1/1}" \
    --jobs "$(nproc)" --report build/weather.txt
