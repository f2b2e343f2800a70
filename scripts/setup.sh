#!/usr/bin/env bash
# Usage: scripts/setup.sh [GROUP...]
#
# Installs missing packages on a Debian 12 machine, as root or with sudo; does nothing if all are
# installed. Groups:
#   build         compile the library and its tools (always included)
#   test          compile and run the tests
#   windows       cross-compile for Windows and run the programs under Wine
#   clang         compile with clang
#   fuzz          build and run the fuzz targets
#   lint          check format, code and scripts
#   coverage      measure the tests' coverage
#   docs          make the reference of the public headers
#   bench         build the benchmarks
#   install       use the installed library with pkg-config, and make packages
#   editors       check and package the extension for VS Code
#   all           all of these
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 99 "$@"

declare -A packages_of=(
  [build]="g++ cmake ninja-build libtinyxml2-dev libexpat1-dev libcli11-dev libre2-dev \
    nlohmann-json3-dev libjs-dygraphs"
  [test]="libgtest-dev libxml2-utils locales chromium neovim python3 python3-jsonschema sqlite3 zsh \
    fish"
  [windows]="g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine wine64 googletest dpkg-dev \
    make python3-six unicode-data"
  [clang]="clang"
  [fuzz]="clang libclang-rt-14-dev"
  [lint]="clang-22 clang-tidy-22 clang-format shellcheck"
  [coverage]="gcovr"
  [docs]="doxygen"
  [bench]="miller libbenchmark-dev libabsl-dev libfmt-dev libspdlog-dev libboost-dev"
  [install]="pkgconf dpkg-dev debhelper lintian"
  [editors]="nodejs npm"
)
packages=()
for group in build "$@"; do
  if [[ $group == all ]]; then
    read -ra members <<<"${packages_of[*]}"
  elif [[ -v packages_of[$group] ]]; then
    read -ra members <<<"${packages_of[$group]}"
  else
    echo "setup.sh: unknown group '$group'" >&2
    print_usage >&2
    exit 2
  fi
  packages+=("${members[@]}")
done

if ! command -v dpkg-query >/dev/null; then
  echo "setup.sh: not a Debian machine; the build needs: ${packages[*]}" >&2
  exit 0
fi

# Runs apt-get as root.
run_apt() {
  local as_root=()
  if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
      echo "setup.sh: run this as root: apt-get $*" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  run_quietly "setup-$1" "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qy \
    -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@"
}

# Prints the packages that are not installed, one per line. A package may be provided by another
# one, such as npm by other distributions of nodejs.
list_missing() {
  local installed
  installed=$(dpkg-query -W -f '${db:Status-Abbrev}${Package}, ${Provides}\n' |
    sed -n 's/^ii *//p' | tr ',' '\n' | sed 's/^ *//; s/ (.*//')
  printf '%s\n' "$@" | sort -u | grep -vxF -f <(printf '%s\n' "$installed") || true
}

mapfile -t missing < <(list_missing "${packages[@]}")
if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "Installing ${missing[*]} ..." >&2
run_apt update
run_apt install --no-install-recommends "${missing[@]}"
