#!/usr/bin/env bash
# Usage: scripts/wine.sh PROGRAM.exe [ARGUMENT...]
#
# Runs a Windows program under Wine without a display, in a Wine folder of this work tree's own
# (build/wine, made with the first program). ctest runs the cross-built tests through it.
set -euo pipefail

if (($# == 0)); then
  sed -n '2,5s/^# \?//p' "$0" >&2
  exit 2
fi
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

unset DISPLAY WAYLAND_DISPLAY
export WINEPREFIX=$root/build/wine WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
# No offers to install Mono or Gecko, no menu entries.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="

mkdir -p "$root/build"
(
  flock 9
  if [[ ! -e $WINEPREFIX/.ready ]]; then
    timeout 300 wineboot --init </dev/null >"$root/build/wine.log" 2>&1 9>&- ||
      { cat "$root/build/wine.log" >&2; echo "scripts/wine.sh: Wine cannot start" >&2; exit 1; }
    touch "$WINEPREFIX/.ready"
  fi
) 9>"$root/build/wine.lock"
exec wine "$@"
