#!/usr/bin/env bash
# Usage: scripts/test.sh [PRESET...]
#
# Sets up the machine, builds everything and runs all tests: natively (dev) and under the address
# and undefined-behaviour sanitizers (sanitize), or with the presets given, such as
#   tsan          under the thread sanitizer
#   release       optimised
#   clang         compiled with clang
#   lint          compiled with clang 22, and read by clang-tidy
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 99 "$@"

if (($# == 0)); then
  set -- dev sanitize
fi
for preset; do
  case $preset in
    clang | lint | coverage) "$root/scripts/setup.sh" test "$preset" ;;
    *) "$root/scripts/setup.sh" test ;;
  esac
  echo "== $preset" >&2
  build_preset "$preset"
  ctest --preset "$preset"
done
