#!/usr/bin/env bash
# Usage: scripts/bench.sh [FOLDER]
#
# Sets up the machine, builds the benchmarks and prints one table: what the library needs beside the
# least that the work costs and beside other libraries, each row measured in one run; below 1 the
# library is the faster. A second table holds "vexorlog summary" against other programs, processor
# time and memory. The logs are written to FOLDER, or build/bench-logs: a real disk it must be, with
# 2 GB to spare, and nothing else should keep the machine busy.
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
