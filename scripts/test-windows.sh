#!/usr/bin/env bash
# Usage: scripts/test-windows.sh
#
# Sets up the machine, cross-compiles the library, the tools and the tests for 64-bit Windows, checks
# that vexorcfg shows the example as the native tool does, and runs all tests against the DLL under
# Wine. Needs no display.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 0 "$@"

"$root/scripts/setup.sh" test windows
"$root/scripts/build-windows-deps.sh"
echo "== windows" >&2
build_preset run
build_preset windows
trap '"$root/scripts/wine.sh" --stop' EXIT
"$root/scripts/wine.sh" --start
diff <(build/run/bin/vexorcfg show examples/lab.xml) \
  <(scripts/wine.sh build/windows/bin/vexorcfg.exe show examples/lab.xml | tr -d '\r')
ctest --preset windows
