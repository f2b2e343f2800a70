#!/usr/bin/env bash
# Usage: scripts/package.sh [debian | windows] [FOLDER]
#
# Makes packages in FOLDER, or build/packages, and prints their names: Debian packages of the
# library, of its development files and of the tools, or with "windows" an archive of everything that
# a program needs on Windows. The Debian packages are built from a copy of the sources in FOLDER;
# their content depends neither on the folder nor on the time.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 2 "$@"
kind=${1-debian}
if [[ $kind != debian && $kind != windows ]]; then
  print_usage >&2
  exit 2
fi

packages=$(realpath -ms -- "${2-$root/build/packages}")
mkdir -p "$packages"

# Copies what git tracks or would track, or all but the builds where there is no git.
copy_sources() {
  local copy=$1 file
  mkdir -p "$copy"
  (
    cd "$root"
    git ls-files -z --cached --others --exclude-standard 2>/dev/null ||
      find . -path ./build -prune -o -type f -print0
  ) | while IFS= read -rd '' file; do
    if [[ -e $root/$file ]]; then  # git lists what was removed, too
      printf '%s\0' "$file"
    fi
  done | tar -C "$root" --null -T - -cf - | tar -C "$copy" -xf -
}

make_debian_packages() {
  local copy=$packages/source git_folder
  rm -rf "$copy" "$packages"/*.deb
  copy_sources "$copy"
  # The copy has no git history, from which the build takes the revision.
  if git_folder=$(git -C "$root" rev-parse --absolute-git-dir 2>/dev/null); then
    export GIT_DIR=$git_folder
  fi
  use_ccache
  cd "$copy"
  run_quietly package-debian dpkg-buildpackage --build=binary --no-sign
  cd "$root"
  rm -rf "$copy" "$packages"/*.{buildinfo,changes}
  ls "$packages"/*.deb
}

make_windows_archive() {
  "$root/scripts/setup.sh" install windows
  "$root/scripts/build-windows-deps.sh"
  build_preset windows --target VexorUtils vexorcfg vexorlog
  rm -f "$packages"/*.zip
  run_quietly package-windows cpack --config build/windows/CPackConfig.cmake -B "$packages"
  rm -r "$packages/_CPack_Packages"
  ls "$packages"/*.zip
}

if [[ $kind == debian ]]; then
  "$root/scripts/setup.sh" install
  make_debian_packages
else
  make_windows_archive
fi
