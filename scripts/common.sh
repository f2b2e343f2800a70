# Sourced by the scripts of this folder.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# Prints the comment at the head of the calling script: its usage.
print_usage() {
  awk 'NR > 1 { if (!/^#/) exit; sub(/^# ?/, ""); print }' "$0"
}

# Prints the usage and ends the script if the arguments ask for help or are too many.
# Usage: check_arguments MOST "$@"
check_arguments() {
  local most=$1
  shift
  case ${1-} in
    -h | --help)
      print_usage
      exit 0
      ;;
    -*) ;;
    *)
      if (($# <= most)); then
        return
      fi
      ;;
  esac
  print_usage >&2
  exit 2
}

# Runs a command with its output in build/NAME.log, and shows the output if the command fails.
# Usage: run_quietly NAME COMMAND [ARGUMENT...]
run_quietly() {
  local log=$root/build/$1.log
  shift
  mkdir -p "$root/build"
  if ! "$@" >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    echo "${0##*/}: '$*' failed" >&2
    exit 1
  fi
}

# Lets CMake compile with ccache if it is installed.
use_ccache() {
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
  fi
}

# Configures and builds a preset, with the output on standard error.
# Usage: build_preset PRESET [OPTION...]
build_preset() {
  local preset=$1
  shift
  use_ccache
  cd "$root" || exit
  run_quietly "configure-$preset" cmake --preset "$preset"
  cmake --build --preset "$preset" "$@" >&2
}
