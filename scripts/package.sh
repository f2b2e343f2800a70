#!/usr/bin/env bash
# Usage: scripts/package.sh [windows]
#
# Makes a package of the library, its headers, the tool and their documents in build/packages: a
# Debian package, or with "windows" an archive that holds what a program needs beside Windows.
# Prints the name of the package.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"
if [[ ${1-windows} != windows ]]; then
  print_usage >&2
  exit 2
fi

"$root/scripts/setup.sh" install "$@"
preset=run kind=deb targets=(VexorUtils vexorcfg vexorcfg_completion)
if [[ ${1-} == windows ]]; then
  preset=windows kind=zip targets=(VexorUtils vexorcfg)
  "$root/scripts/build-windows-deps.sh"
fi
build_preset "$preset" --target "${targets[@]}"
rm -f build/packages/*".$kind"
run_quietly "package-$kind" cpack --config "build/$preset/CPackConfig.cmake" -B build/packages
rm -r build/packages/_CPack_Packages
ls build/packages/*".$kind"
