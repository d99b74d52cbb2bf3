#!/usr/bin/env bash
# Installs what a bare Debian 12 lacks to build, run and test this project. Needs root.
# Asks nothing, changes nothing when everything is there; safe to run at any time.
set -euo pipefail

commands=(cmake ninja g++ clang++ clang-format clang-tidy wine i686-w64-mingw32-g++-win32
          i686-w64-mingw32-widl i686-w64-mingw32-objdump x86_64-w64-mingw32-g++-win32
          x86_64-w64-mingw32-widl x86_64-w64-mingw32-objdump Xvfb xdotool xdpyinfo import flock python3 chmcmd chmls makensis)
files=(/usr/include/doctest/doctest.h /usr/include/expat.h /usr/lib/i386-linux-gnu/wine/i386-windows/kernel32.dll
       /usr/lib/x86_64-linux-gnu/wine/x86_64-windows/kernel32.dll
       /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.asan-x86_64.a
       /usr/share/wine/fonts/tahoma.ttf)
tools=(make cmake ninja-build g++ clang clang-format clang-tidy libclang-rt-14-dev doctest-dev libexpat1-dev python3
       g++-mingw-w64-i686-win32 g++-mingw-w64-x86-64-win32 mingw-w64-tools
       binutils-mingw-w64-i686 binutils-mingw-w64-x86-64
       xvfb xauth xdotool x11-utils imagemagick fonts-wine fp-utils-3.2.2 nsis)
wine=(wine wine64 wine32:i386)

missing() {
    local item
    for item in "${commands[@]}"; do command -v "$item" >/dev/null || { echo "$item"; return; }; done
    for item in "${files[@]}"; do [ -e "$item" ] || { echo "$item"; return; }; done
}

first=$(missing)
[ -n "$first" ] || exit 0
echo "install-tools: $first is missing; installing packages (log: /tmp/install-tools.log)"
export DEBIAN_FRONTEND=noninteractive
: > /tmp/install-tools.log
apt() { apt-get -o DPkg::Lock::Timeout=300 "$@" >> /tmp/install-tools.log 2>&1; }

dpkg --add-architecture i386
apt update || true  # a stale index of one architecture is no reason to stop: see below
apt install -y --no-install-recommends "${tools[@]}"
if ! apt install -y --no-install-recommends "${wine[@]}"; then
    # The security archive may offer newer packages for one architecture only, which cannot be
    # installed beside the older ones of the other: leave that archive out for Wine.
    pin=$(mktemp)
    printf 'Package: *\nPin: release l=Debian-Security\nPin-Priority: -1\n' > "$pin"
    apt install -y --no-install-recommends --allow-downgrades -o Dir::Etc::Preferences="$pin" "${wine[@]}"
    rm -f "$pin"
fi

first=$(missing)
[ -z "$first" ] || { echo "install-tools: $first is still missing; see /tmp/install-tools.log" >&2; exit 1; }
echo "install-tools: done"
