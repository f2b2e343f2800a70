#!/usr/bin/env bash
# Usage: scripts/fuzz.sh [SECONDS [TARGET...]]
#
# Runs the fuzz targets under the sanitizers: all of fuzz/, or the TARGETs named, two at a time, each
# for SECONDS (30), starting from its seeds and from the inputs of earlier runs in
# build/fuzz/corpus, to which new inputs are added. An input that crashes or hangs the library, or
# breaks what its headers promise, is printed and stored in build/fuzz/finds, and the script fails.
# The random seed is fixed; VEXOR_FUZZ_SEED sets another one, 0 means random.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 99 "$@"

seconds=${1-30}
if [[ ! $seconds =~ ^[1-9][0-9]*$ ]]; then
  echo "fuzz.sh: '$seconds' is no number of seconds" >&2
  exit 2
fi
all=(read values check edit assist round_trip syntax numbers settings command_line log_reader lsp)
targets=("${@:2}")
if ((${#targets[@]} == 0)); then
  targets=("${all[@]}")
fi
for target in "${targets[@]}"; do
  if [[ " ${all[*]} " != *" $target "* ]]; then
    echo "fuzz.sh: unknown target '$target', expected one of: ${all[*]}" >&2
    exit 2
  fi
done

"$root/scripts/setup.sh" fuzz
build_preset fuzz
work=$root/build/fuzz
export ASAN_OPTIONS=detect_stack_use_after_return=1 UBSAN_OPTIONS=print_stacktrace=1
export VEXOR_HOST_IP_FILE=/dev/null

# The names of a configuration file, for inputs that are files.
mkdir -p "$work/corpus" "$work/finds"
sed -nE 's/.* name="([A-Za-z][^"]*)".*/"\1"/p' "$root/docs/vexor.xsd" | sort -u >"$work/names.dict"

# Runs a target, with its output in a file of its own.
fuzz() {
  local target=$1 corpus=$work/corpus/$1
  local inputs=("$corpus" "$root/fuzz/seeds/$target") options=(-max_len=512)
  mkdir -p "$corpus"
  case $target in
    read | check | edit | assist)
      cp "$root"/examples/*.xml "$corpus"
      options=(-max_len=16384 -dict="$work/names.dict")
      ;;
    lsp) options=(-max_len=8192 -dict="$work/names.dict") ;;
    values | round_trip | log_reader) options=(-max_len=2048) ;;
  esac
  "$work/bin/fuzz_$target" -max_total_time="$seconds" -seed="${VEXOR_FUZZ_SEED-1}" \
    -rss_limit_mb=2048 -timeout=10 -close_fd_mask=1 -print_final_stats=1 \
    -artifact_prefix="$work/finds/$target-" \
    "${options[@]}" "${inputs[@]}" >"$work/$target.log" 2>&1 </dev/null
}

# Prints how a run ended, with the input if it failed.
report() {
  local target=$1 log=$work/$1.log find
  sed -nE "s/^Done ([0-9]+) runs in ([0-9]+) .*/fuzz.sh: $target: \1 executions in \2 s/p" "$log" >&2
  if (($2 == 0)); then
    return
  fi
  grep -vE '^(#[0-9]+\s|\s+NEW_FUNC|INFO:)' "$log" | tail -n 60 >&2 || true
  find=$(sed -nE 's/.*Test unit written to (.*)/\1/p' "$log" | tail -n 1)
  echo "fuzz.sh: $target failed; all of its output is in $log" >&2
  if [[ -e $find ]]; then
    echo "The input is $find:" >&2
    head -c 1024 "$find" | od -A d -t x1z >&2
  fi
}

failed=0
for ((i = 0; i < ${#targets[@]}; i += 2)); do
  declare -A running=()
  for target in "${targets[@]:i:2}"; do
    fuzz "$target" &
    running[$target]=$!
  done
  for target in "${!running[@]}"; do
    status=0
    wait "${running[$target]}" || status=$?
    report "$target" "$status"
    failed=$((failed | status))
  done
  unset running
done
exit "$((failed != 0))"
