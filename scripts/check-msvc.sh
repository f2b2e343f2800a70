#!/usr/bin/env bash
# Usage: scripts/check-msvc.sh
#
# Approximates a build with Microsoft's compiler on a machine without it: compiles all sources of the
# library, the tools and the examples to objects with clang-cl, for the same target and with the same
# flags, against the headers of mingw-w64. Nothing is linked or run. Then checks that the headers
# refuse a program that is compiled for another runtime than the library.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 0 "$@"

"$root/scripts/setup.sh" clang windows
"$root/scripts/build-windows-deps.sh"
echo "== clang-cl" >&2
build_preset clang-cl
compiler=$(dirname "$(realpath "$(command -v clang++)")")/clang-cl

# Checks what clang-cl says of vexor/export.h with these options: the text, or nothing.
# Usage: expect TEXT OPTION...
expect() {
  local text=$1 output
  shift
  output=$("$compiler" --target=x86_64-pc-windows-msvc /Zs /TP -Wno-pragma-once-outside-header "$@" \
    include/vexor/export.h 2>&1) || true
  if [[ $output != *"$text"* || ( -z $text && -n $output ) ]]; then
    echo "check-msvc.sh: with $*: expected '$text', got '$output'" >&2
    exit 1
  fi
}

expect '' /MD
expect '' /MDd
expect 'needs a program that is compiled for the runtime as a DLL' /MT
expect '' /MT /DVEXOR_STATIC
expect '' /MD /DVEXOR_DEBUG_RUNTIME=0
expect '' /MDd /DVEXOR_DEBUG_RUNTIME=1
expect 'built for the release runtime' /MDd /DVEXOR_DEBUG_RUNTIME=0
expect 'built for the debug runtime' /MD /DVEXOR_DEBUG_RUNTIME=1
