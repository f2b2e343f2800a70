#!/usr/bin/env bash
# Usage: scripts/test-install.sh [windows]
#
# Installs the library, shared and static, into folders of their own under build/install, and builds
# and runs the program of a user (tests/install) against each, found as a CMake package and with
# pkg-config. A program for another C++ runtime must not find it. The static library is built as a
# part of the user's project. With "windows" all this is done with the cross-built library, and the
# program runs under Wine. The package that scripts/package.sh makes is unpacked, and its tool has to
# run.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"
if [[ ${1-windows} != windows ]]; then
  print_usage >&2
  exit 2
fi
"$root/scripts/setup.sh" install "$@"
cd "$root"

work=build/install/${1-linux}
prefix=$root/$work  # of "shared" and of "static"
version=$(sed -n 's/^project(VexorUtils VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
if [[ ${1-} == windows ]]; then
  preset=windows suffix=.exe library=VexorUtils.dll
  compiler=(x86_64-w64-mingw32-g++-posix)
  toolchain=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake"
    -DCMAKE_PREFIX_PATH="$root/build/windows-deps")
  dependencies=$root/build/windows-deps/lib/pkgconfig
  launch=(scripts/wine.sh)
  export WINEPATH="Z:${prefix//\//\\}\\shared\\bin"  # the compiler's runtime is there, too
  scripts/build-windows-deps.sh
  trap '"$root/scripts/wine.sh" --stop' EXIT
  scripts/wine.sh --start
else
  preset=run suffix='' library=libVexorUtils.so
  compiler=(c++ "-Wl,-rpath,$prefix/shared/lib")
  toolchain=()
  dependencies=$(pkgconf --variable=pc_path pkg-config)
  launch=()
fi

fail() {
  echo "test-install.sh: $*" >&2
  exit 1
}

# Runs a program of the installation or of a user.
launch() {
  "${launch[@]}" "$@" | tr -d '\r'
}

# Configures and builds the user's project in $work/NAME.
# Usage: build_user NAME OPTION...
build_user() {
  local name=$1
  shift
  rm -f "$work/$name/CMakeCache.txt"
  run_quietly "install-$name" cmake -S tests/install -B "$work/$name" -G Ninja "${toolchain[@]}" "$@"
  run_quietly "install-$name" cmake --build "$work/$name"
}

# Runs a user's program, which has to print the version and to leave a log, and to need the shared
# library or not.
# Usage: run_user shared|static PROGRAM
run_user() {
  local kind=$1 program=$2 output needs=static
  echo "== $program" >&2
  rm -rf "$work/logs"
  mkdir -p "$work/logs"
  output=$(launch "$program" examples/lab.xml "$work/logs")
  [[ $output == "$version" ]] || fail "$program printed '$output', expected '$version'"
  grep -q 'msec:80' "$work/logs/user.csv" || fail "$work/logs/user.csv lacks the note 'msec:80'"
  if grep -qF "$library" "$program"; then
    needs=shared
  fi
  [[ $needs == "$kind" ]] || fail "$program is linked with the $needs library, expected $kind"
}

# Installs from a build folder, and moves what is installed: it must not know where it lies.
# Usage: install_moved BUILD shared|static
install_moved() {
  local build=$1 kind=$2
  rm -rf "${work:?}/$kind" "$work/elsewhere"
  run_quietly "install-$kind" cmake --install "$build" --prefix "$work/elsewhere"
  mv "$work/elsewhere" "$work/$kind"
}

package=$(scripts/package.sh "$@")
install_moved "build/$preset" shared
rm -rf "$work/package"
mkdir "$work/package"
if [[ $package == *.deb ]]; then
  dpkg-deb -x "$package" "$work/package"
else
  (cd "$work/package" && cmake -E tar xf "$root/$package")
fi
for folder in "$work/shared" "$work"/package/*; do
  program=$folder/bin/vexorcfg$suffix
  echo "== $program" >&2
  output=$(launch "$program" --version)
  [[ $output == "vexorcfg $version" ]] || fail "$program --version printed '$output'"
  launch "$program" check "$folder/share/doc/vexorutils/examples/lab.xml" >/dev/null ||
    fail "$program refuses the example beside it"
done

build_user subproject -DUSE=subproject -DVEXOR_SOURCES="$root" -DVEXOR_INSTALL=ON
run_user static "$work/subproject/user$suffix"
install_moved "$work/subproject" static
[[ ! -e $work/static/bin ]] || fail "$work/static/bin: a part of another project builds no tools"

for kind in shared static; do
  # Who uses the shared library needs nothing else.
  options=() flags=() path=$prefix/$kind/lib/pkgconfig
  if [[ $kind == shared ]]; then
    options=(-DCMAKE_DISABLE_FIND_PACKAGE_tinyxml2=ON)
  else
    flags=(--static)
    path+=:$dependencies
  fi
  build_user "package-$kind" -DUSE=package "${options[@]}" \
    -DVexorUtils_DIR="$prefix/$kind/lib/cmake/VexorUtils"
  run_user "$kind" "$work/package-$kind/user$suffix"

  words=$(PKG_CONFIG_LIBDIR=$path pkgconf "${flags[@]}" --cflags --libs 'VexorUtils >= 3.21')
  read -ra words <<<"$words"
  mkdir -p "$work/pkgconfig-$kind"
  run_quietly "install-pkgconfig-$kind" "${compiler[@]}" -std=c++20 tests/install/main.cpp \
    -o "$work/pkgconfig-$kind/user$suffix" "${words[@]}"
  run_user "$kind" "$work/pkgconfig-$kind/user$suffix"
done

# Another runtime: gcc's former ABI, or the native compiler with the library for Windows.
other=(-DCMAKE_CXX_FLAGS=-D_GLIBCXX_USE_CXX11_ABI=0)
if [[ ${1-} == windows ]]; then
  other=()
fi
rm -rf "$work/refused"
if output=$(cmake -S tests/install -B "$work/refused" -G Ninja -DUSE=package \
  -DVexorUtils_DIR="$prefix/shared/lib/cmake/VexorUtils" "${other[@]}" 2>&1); then
  fail "a program for another C++ runtime is not refused"
fi
[[ ${output//[[:space:]]/} == *bothneedthesamecompilerandruntime* ]] ||
  fail "a program for another C++ runtime is refused without the reason: $output"
