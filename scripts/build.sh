#!/usr/bin/env bash
# Configures and builds one preset: scripts/build.sh preset [target...]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
preset=$1
shift
mkdir -p build
log=build/configure-$preset.log
cmake --preset "$preset" > "$log" 2>&1 || { cat "$log" >&2; exit 1; }
targets=()
[ $# -eq 0 ] || targets=(--target "$@")
cmake --build --preset "$preset" "${targets[@]}"
