#!/usr/bin/env bash
# Usage: scripts/build-windows-deps.sh
#
# Builds the dependencies of the Windows build into build/windows-deps: tinyxml2, Expat, RE2 and
# GoogleTest from Debian's sources, and the headers of CLI11 and nlohmann's JSON library. Does nothing
# if that was done since this script and the toolchain file changed. Needs "scripts/setup.sh windows".
set -euo pipefail

if (($# > 0)); then
  sed -n '2,6s/^# \?//p' "$0" >&2
  exit 2
fi
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
prefix=$root/build/windows-deps
toolchain=$root/cmake/mingw-w64.cmake
stamp=$prefix/.built-from
recipe=$(cat "${BASH_SOURCE[0]}" "$toolchain" | sha256sum)

if [[ -e $stamp && $(<"$stamp") == "$recipe" ]]; then
  exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"  # apt's own download user has to get in

# Fetches the sources of Debian packages with the machine's own mirrors and keys. A private copy of
# the source list, with the binary entries turned into source entries, leaves the machine's
# configuration and package lists as they are.
fetch_sources() {
  local file
  mkdir -p "$work/apt/parts" "$work/apt/lists" "$work/apt/cache" "$work/source"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    if [[ -e $file ]]; then
      sed -nE 's/^deb(-src)?[[:space:]]+/deb-src /p' "$file" | grep -v ' cdrom:' | sort -u \
        >"$work/apt/parts/$(basename "$file" .list).list" || true
    fi
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    if [[ -e $file ]]; then
      sed 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/parts/$(basename "$file")"
    fi
  done
  local options=(-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$work/apt/parts"
    -o Dir::State::Lists="$work/apt/lists" -o Dir::Cache="$work/apt/cache"
    -o Acquire::Retries=3 -q)
  cd "$work/source" && apt-get "${options[@]}" update || return
  # A mirror may list a security update whose source it does not have; the version before it will do.
  local package version fetched
  for package; do
    fetched=
    while read -r version && [[ -z $fetched ]]; do
      if apt-get "${options[@]}" source "$package=$version"; then
        fetched=$version
      fi
    done < <(apt-cache "${options[@]}" showsrc --only-source "$package" |
      sed -n 's/^Version: //p' | sort -rVu)
    [[ -n $fetched ]] || return 1
  done
}

# Debian's source of RE2 leaves out the tables that its own scripts make.
make_re2_tables() {
  make -C "$1" REBUILD_TABLES=1 re2/perl_groups.cc re2/unicode_casefold.cc re2/unicode_groups.cc
}

# Builds and installs one CMake project for the target.
build() {
  local name=$1 source=$2
  shift 2
  cmake -S "$source" -B "$work/build/$name" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@" &&
    cmake --build "$work/build/$name" &&
    cmake --install "$work/build/$name"
}

# Debian's corrections compare XML_DTD with 1, but the CMake files would define it without a value.
build_expat() {
  build expat "$work"/source/expat-*/expat -DEXPAT_DTD=OFF -DCMAKE_C_FLAGS=-DXML_DTD=1 \
    -DEXPAT_SHARED_LIBS=OFF -DEXPAT_BUILD_DOCS=OFF -DEXPAT_BUILD_EXAMPLES=OFF \
    -DEXPAT_BUILD_TESTS=OFF -DEXPAT_BUILD_TOOLS=OFF
}

echo "Building tinyxml2, Expat, RE2 and GoogleTest for Windows into build/windows-deps ..." >&2
rm -rf "$prefix"
mkdir -p "$prefix/include" "$prefix/share/cmake"
log=$root/build/windows-deps.log
{
  fetch_sources tinyxml2 expat re2 &&
    build tinyxml2 "$work"/source/tinyxml2-*/ -DBUILD_TESTING=OFF -Dtinyxml2_BUILD_TESTING=OFF &&
    build_expat &&
    make_re2_tables "$work"/source/re2-*/ &&
    build re2 "$work"/source/re2-*/ -DRE2_BUILD_TESTING=OFF &&
    build googletest /usr/src/googletest -DBUILD_GMOCK=OFF &&
    cp -R /usr/include/CLI /usr/include/nlohmann "$prefix/include/" &&
    cp -R /usr/share/cmake/nlohmann_json "$prefix/share/cmake/"
} >"$log" 2>&1 </dev/null || {
  tail -n 40 "$log" >&2
  echo "scripts/build-windows-deps.sh: failed; all of the output is in $log" >&2
  exit 1
}
echo "$recipe" >"$stamp"
