#!/usr/bin/env bash
# Everything that a release is made of, into dist/, and what of it to publish. Nothing is published.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/check.sh
scripts/test.sh
version=$(scripts/version.py)
rm -rf dist
scripts/setup.sh > build/release-setup.log || { tail -n 40 build/release-setup.log >&2; exit 1; }
scripts/symbols.sh
( cd dist && sha256sum -- * > SHA256SUMS )

echo
echo "Version $version. To publish, from dist/:"
( cd dist && ls -l -- * | awk '{ printf "  %9d  %s\n", $5, $NF }' )
echo "The .debug files are for developers (docs/development.md): keep them with the release."
[ -z "$(git status --porcelain 2>/dev/null)" ] || echo "The sources have changes that are not committed."
! grep -q "^## $version (unreleased)" CHANGELOG.md || echo "CHANGELOG.md still says that $version is unreleased."
