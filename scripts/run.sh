#!/usr/bin/env bash
# Usage: scripts/run.sh [FILE]
#
# Sets up the machine, builds the library and vexorcfg, and shows what a configuration file says:
# FILE, or examples/lab.xml. Then runs the example test engine on it, with its logs in build/logs.
# Run again, only the last two steps are left.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"

file=$(realpath -ms -- "${1-$root/examples/lab.xml}")
"$root/scripts/setup.sh" build
build_preset run
"$root/build/run/bin/vexorcfg" show "$file"
"$root/build/run/bin/test_engine" "$file" "$root/build/logs"
