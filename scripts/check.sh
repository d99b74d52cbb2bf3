#!/usr/bin/env bash
# Looks at the sources without running them: the house rules (also run by `make test`), format, clang-tidy.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
failed=0
for check in scripts/check-*.py; do
    [ "$check" = scripts/check-library.py ] || python3 "$check" || failed=1
done
scripts/version.py --check || failed=1

unformatted=$(git ls-files '*.h' '*.cpp' | xargs -P "$(nproc)" -n 40 clang-format --output-replacements-xml |
              grep -c '<replacement ' || true)
[ "$unformatted" = 0 ] || { echo "check: $unformatted places are not formatted (make format)" >&2; failed=1; }

# clang-tidy reads the cross build's commands, and looks only at what has changed since it found nothing.
scripts/build.sh win32-release > build/check-build.log || { tail build/check-build.log >&2; exit 1; }
scripts/tidy.py src standins tests || failed=1
exit $failed
