#!/usr/bin/env bash
# Usage: scripts/wine.sh PROGRAM.exe [ARGUMENT...]
#        scripts/wine.sh --start | --stop
#
# Runs a Windows program under Wine without a display, in this work tree's own Wine folder
# (build/wine, created at the first start). ctest runs the cross-built tests with it. --start prepares
# Wine, --stop ends all programs that still run in that folder.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
if (($# == 0)); then
  print_usage >&2
  exit 2
fi

unset DISPLAY WAYLAND_DISPLAY
export WINEPREFIX=$root/build/wine WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export LC_ALL=C.UTF-8  # for names of files outside ASCII
# No offers to install Mono or Gecko, no menu entries.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="

if [[ $1 == --stop ]]; then
  if [[ -d $WINEPREFIX ]]; then
    wineserver --kill || true  # fails when there is none
    wineserver --wait
  fi
  exit 0
fi

ready=$WINEPREFIX/.ready
if [[ ! -e $ready ]]; then
  mkdir -p "$root/build"
  exec 9>"$root/build/wine.lock"
  flock 9
  if [[ ! -e $ready ]]; then
    # The server that this starts outlives it: it must not inherit the lock.
    run_quietly wine timeout 300 wineboot --init 9>&-
    touch "$ready"
  fi
  exec 9>&-
fi
if [[ $1 != --start ]]; then
  exec wine "$@"
fi
