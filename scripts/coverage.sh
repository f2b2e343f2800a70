#!/usr/bin/env bash
# Usage: scripts/coverage.sh
#
# Runs the tests with gcov and prints the line and branch coverage of the library, file by file.
# Leaves out branches that only exceptions take and branches that the compiler adds to lines without
# code.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 0 "$@"

"$root/scripts/setup.sh" test coverage
build_preset coverage
cd "$root"
find build/coverage -name '*.gcda' -delete
run_quietly coverage-tests ctest --preset coverage
for what in "" --branches; do
  gcovr $what --root . --filter src/ --filter include/ --exclude-throw-branches --exclude-unreachable-branches \
    build/coverage
done
