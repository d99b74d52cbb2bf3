#!/usr/bin/env bash
# Looks at the sources without running them: the house rules (also run by `make test`), format, clang-tidy.
set -uo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
failed=0
for check in scripts/check-*.py; do
    [ "$check" = scripts/check-library.py ] || python3 "$check" || failed=1
done

unformatted=$(git ls-files '*.h' '*.cpp' | xargs clang-format --output-replacements-xml |
              grep -c '<replacement ' || true)
[ "$unformatted" = 0 ] || { echo "check: $unformatted places are not formatted (make format)" >&2; failed=1; }

# clang-tidy reads the cross build's commands; it has to be told where that compiler keeps its headers.
scripts/build.sh win32-release > build/check-build.log || { tail build/check-build.log >&2; exit 1; }
gcc=$(dirname "$(i686-w64-mingw32-g++-win32 -print-libgcc-file-name)")
tidy=(clang-tidy --quiet -p build/win32-release --extra-arg=--target=i686-w64-mingw32
      --extra-arg=-isystem"$gcc/include/c++" --extra-arg=-isystem"$gcc/include/c++/i686-w64-mingw32"
      --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-unused-command-line-argument)
git ls-files 'src/*.cpp' | xargs -P "$(nproc)" -n 4 "${tidy[@]}" 2>/dev/null || failed=1
exit $failed
