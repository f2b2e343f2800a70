#!/usr/bin/env bash
# Usage: scripts/lint.sh [format | analyze]
#
# Checks the format of the code, the scripts, the layers of the library, and the code itself:
# everything is compiled with clang and read by clang-tidy, only what changed when run again. With
# "format" all but the last; with "analyze" also by clang's static analyzer, which takes twice as
# long. A failing check says where.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"
preset=lint
if [[ ${1-} == analyze ]]; then
  preset=analyze
elif [[ ${1-format} != format ]]; then
  print_usage >&2
  exit 2
fi

"$root/scripts/setup.sh" test lint
cd "$root"
mapfile -d '' -t sources < <(find bench examples fuzz include src tests tools \
  \( -name '*.h' -o -name '*.cpp' \) -print0 2>/dev/null)
echo "== clang-format: ${#sources[@]} files" >&2
clang-format --dry-run -Werror "${sources[@]}"
echo "== shellcheck" >&2
shellcheck scripts/*.sh .ci/run
echo "== layers" >&2
# A folder of src/ needs only those before it in this list; "config" is layered by its rooms.
layers=(util vocabulary syntax logging config/tables config/texts config/file config/model
  config/check config/edit config/assist)
for ((i = 0; i < ${#layers[@]}; i++)); do
  for later in "${layers[@]:i+1}"; do
    if grep -rn "#include \"$later/" "src/${layers[i]}"; then
      echo "lint.sh: src/${layers[i]} must not need src/$later" >&2
      exit 1
    fi
  done
done
if [[ ${1-} == format ]]; then
  exit 0
fi
echo "== clang-tidy" >&2
rules=$(cat .clang-tidy tests/.clang-tidy)
if [[ ! -e build/$preset/rules || $(<build/$preset/rules) != "$rules" ]]; then
  rm -rf "build/$preset"  # what passed other rules is to be checked anew
  mkdir -p "build/$preset"
  echo "$rules" >"build/$preset/rules"
fi
build_preset "$preset" -- -k 0
echo "lint.sh: no faults" >&2
