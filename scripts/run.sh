#!/usr/bin/env bash
# Usage: scripts/run.sh [FILE]
#
# Sets up the machine, builds the library and its tools, and shows the settings of a configuration
# file: FILE, or examples/lab.xml. Then runs the example test engine with it, which writes its logs to
# build/logs, prints a summary of the logs, and writes a report of them to build/report.html. When
# run again, it builds only what changed.
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

# Status 1 means that there are failures in the logs.
echo
"$tools/vexorlog" summary "$root/build/logs" || (($? == 1))
"$tools/vexorlog" report "$root/build/logs" --force -o "$root/build/report.html" || (($? == 1))
echo
echo "The same as a page for the browser: $root/build/report.html"
