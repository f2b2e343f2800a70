#!/usr/bin/env bash
# Usage: scripts/renew.sh [windows | night]...
#
# Regenerates the files that are made from the library's tables: the XML schema, the reference of
# options, the manual pages, the default configuration, and the list of names that the library
# exports. With "windows" also the list of the DLL, which is cross-built for that; with "night" also
# the logs in examples/night. "git diff" shows what changed.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 2 "$@"

"$root/scripts/setup.sh" test
build_preset dev --target vexorcfg vexorlog test_engine
bin=build/dev/bin
"$bin/vexorcfg" schema --force docs/vexor.xsd
"$bin/vexorcfg" reference --force docs/options.md
"$bin/vexorcfg" defaults --force tests/config/data/default.xml
for tool in vexorcfg vexorlog; do
  "$bin/$tool" manual >"build/$tool.1"  # not directly, to keep the manual page if the tool fails
  mv "build/$tool.1" docs/
done
cmake --build --preset dev --target renew_exports >&2

for part; do
  case $part in
    windows)
      "$root/scripts/setup.sh" test windows
      "$root/scripts/build-windows-deps.sh"
      build_preset windows --target renew_exports
      ;;
    night)
      rm -rf build/night
      mkdir -p build/night
      # The machine is reset in the first run and loses power in the second.
      for _ in reset power-cut; do
        "$bin/test_engine" examples/night.xml build/night --iterations 100 --bad-night >&2 || true
      done
      rm examples/night/*.csv
      cp build/night/*.csv examples/night/
      ;;
    *)
      print_usage >&2
      exit 2
      ;;
  esac
done
git status --short >&2
