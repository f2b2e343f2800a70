#!/usr/bin/env bash
# Usage: scripts/docs.sh
#
# Sets up the machine and generates the reference of the public headers in build/docs/html. Warnings
# are errors.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 0 "$@"

"$root/scripts/setup.sh" docs
cd "$root"
mkdir -p build
doxygen docs/Doxyfile >&2
echo "build/docs/html/index.html"
