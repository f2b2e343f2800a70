#!/usr/bin/env bash
# Usage: scripts/soak.sh [SECONDS]
#
# Runs the tests that take too long for every change: lets every single allocation of the library
# fail, under the sanitizers; kills 3,000 processes while they log; reads the code with clang's static
# analyzer; and runs each fuzzer for SECONDS (3600) with a random seed, two at a time.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"

"$root/scripts/setup.sh" test fuzz
build_preset sanitize
VEXOR_EVERY_ALLOCATION=1 "$root/build/sanitize/bin/vexor_fault_tests"
build_preset dev
VEXOR_KILL_ROUNDS=3000 "$root/build/dev/bin/vexor_internal_tests" \
  --gtest_filter=Durability.SurvivesTheEndOfTheProcess
"$root/scripts/lint.sh" analyze
VEXOR_FUZZ_SEED=0 "$root/scripts/fuzz.sh" "${1-3600}"
