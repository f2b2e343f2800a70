#!/usr/bin/env bash
# Usage: scripts/bench.sh [FOLDER]
#
# Sets up the machine, builds the benchmarks and prints a table that compares the time of the library
# with the minimum cost of the same work and with other libraries, each row measured in one run; a
# ratio below 1 means that the library is faster. A second table compares processor time and memory of
# "vexorlog summary" with other programs. Logs are written to FOLDER, or build/bench-logs, which must
# be on a real disk with 2 GB of free space. The machine should have no other load.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"

logs=$(realpath -ms -- "${1-$root/build/bench-logs}")
"$root/scripts/setup.sh" bench
build_preset bench
if ! "$root/build/bench/bin/vexor_bench" 2>"$root/build/bench.log"; then
  cat "$root/build/bench.log" >&2
  exit 1
fi
"$root/build/bench/bin/log_bench" "$logs"
"$root/build/bench/bin/log_read_bench" "$logs"
"$root/build/bench/bin/log_tool_bench" "$root/build/bench/bin/vexorlog" "$logs"
