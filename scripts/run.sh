#!/usr/bin/env bash
# Usage: scripts/run.sh [FILE]
#
# Sets up the machine, builds the library and its tools, and shows what a configuration file says:
# FILE, or examples/lab.xml. Then runs the example test engine on it, with its logs in build/logs,
# and ends with the summary of these logs and a report of them in build/report.html. When run
# again, it builds only what changed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"

file=$(realpath -ms -- "${1-$root/examples/lab.xml}")
"$root/scripts/setup.sh" build
build_preset run
tools=$root/build/run/bin
"$tools/vexorcfg" show "$file"
rm -rf "$root/build/logs"
"$tools/test_engine" "$file" "$root/build/logs"

# Status 1 says that the logs hold failures.
echo
"$tools/vexorlog" summary "$root/build/logs" || (($? == 1))
"$tools/vexorlog" report "$root/build/logs" --force -o "$root/build/report.html" || (($? == 1))
echo
echo "The same as a page for the browser: $root/build/report.html"
