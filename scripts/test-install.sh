#!/usr/bin/env bash
# Usage: scripts/test-install.sh [windows | reproducible]
#
# Installs the library, shared and static, to separate folders under build/install. Builds and runs a
# user's program (tests/install) with each, which finds it as a CMake package and with pkg-config, and
# with the library as a part of the program's own project. A program for another C++ runtime must be
# refused. With "windows", does this with the cross-built library and runs the program under Wine.
#
# Also unpacks the packages of scripts/package.sh and runs the tool in them. The Debian packages are
# used like an installation, too; lintian must accept them, and their programs must be hardened and
# contain no folder of the build.
#
# With "reproducible", only builds the Debian packages, in two folders: both must give the same bytes.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 1 "$@"
if [[ ${1-windows} != windows && $1 != reproducible ]]; then
  print_usage >&2
  exit 2
fi
if [[ ${1-} == windows ]]; then
  "$root/scripts/setup.sh" install windows
else
  "$root/scripts/setup.sh" install
fi
cd "$root"

if [[ ${1-} == reproducible ]]; then
  other=$root/build/another-folder/packages
  scripts/package.sh debian >/dev/null
  scripts/package.sh debian "$other" >/dev/null
  for package in build/packages/*.deb; do
    if ! cmp "$package" "$other/${package##*/}"; then
      echo "test-install.sh: $package differs from folder to folder" >&2
      exit 1
    fi
  done
  rm -r "${other%/*}"
  exit 0
fi

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
  compiler=(c++)
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

# Runs a user's program, which must print the version and write a log. Checks whether it needs the
# shared library.
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

# Installs from a build folder and moves the installed files: they must not contain their path.
# Usage: install_moved BUILD shared|static
install_moved() {
  local build=$1 kind=$2
  rm -rf "${work:?}/$kind" "$work/elsewhere"
  run_quietly "install-$kind" cmake --install "$build" --prefix "$work/elsewhere"
  mv "$work/elsewhere" "$work/$kind"
}

# Fails unless the program or library of a package is hardened and names no folder of its build.
check_binary() {
  local file=$1 symbols facts fact
  symbols=$(readelf -W --dyn-syms "$file")
  facts=$(readelf -Wdlh "$file")
  for fact in 'BIND_NOW' 'GNU_RELRO' 'Type: *DYN'; do
    grep -q "$fact" <<<"$facts" || fail "$file is not hardened: no $fact"
  done
  for fact in '__stack_chk_fail' '__[a-z]*printf_chk'; do
    grep -q "$fact" <<<"$symbols" || fail "$file is not hardened: no $fact"
  done
  if [[ $(dpkg --print-architecture) == amd64 ]]; then
    (($(objdump -d "$file" | grep -c endbr64) > 100)) || fail "$file is not hardened: no endbr64"
  fi
  ! grep -E 'R(UN)?PATH' <<<"$facts" || fail "$file searches for libraries in a folder of its own"
  ! grep -qF "$root" "$file" || fail "$file holds the path of its build"
}

# Builds the Debian packages, unpacks and examines them.
check_debian_packages() {
  local package file
  scripts/package.sh debian >/dev/null
  for package in build/packages/*.deb; do
    [[ $package == *-dbgsym_* ]] || dpkg-deb -x "$package" "$work/debian"
  done
  lintian --allow-root --fail-on error,warning build/packages/*.deb >&2
  check_binary "$work/debian/usr/bin/vexorcfg"
  check_binary "$work/debian/usr/bin/vexorlog"
  check_binary "$work/debian/usr/lib/$multiarch/libVexorUtils.so.3"
  for file in changelog.gz copyright editors.md.gz options.md.gz examples/lab.xml \
    ../../vexorutils/catalog.xml; do
    [[ -e $work/debian/usr/share/doc/vexorutils-tools/$file ]] || fail "vexorutils-tools lacks $file"
  done
}

rm -rf "${work:?}/debian" "$work/package"
mkdir -p "$work/debian" "$work/package"
kinds=(shared static)
if [[ ${1-} == windows ]]; then
  package=$(scripts/package.sh windows)
  (cd "$work/package" && cmake -E tar xf "$package")
  installed=("$work/shared" "$work"/package/*)
else
  multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
  check_debian_packages
  kinds+=(debian)
  installed=("$work/shared" "$work/debian/usr")
  export LD_LIBRARY_PATH=$prefix/debian/usr/lib/$multiarch  # of a system that has the packages
fi
build_preset "$preset"
install_moved "build/$preset" shared
for folder in "${installed[@]}"; do
  for tool in vexorlog vexorcfg; do
    program=$folder/bin/$tool$suffix
    echo "== $program" >&2
    output=$(launch "$program" --version)
    [[ $output == "$tool $version" ]] || fail "$program --version printed '$output'"
  done
  launch "$program" check "$folder"/share/doc/vexorutils*/examples/lab.xml >/dev/null ||
    fail "$program refuses the example beside it"
done
unset LD_LIBRARY_PATH

build_user subproject -DUSE=subproject -DVEXOR_SOURCES="$root" -DVEXOR_INSTALL=ON
run_user static "$work/subproject/user$suffix"
install_moved "$work/subproject" static
[[ ! -e $work/static/bin ]] || fail "$work/static/bin: a part of another project builds no tools"

for kind in "${kinds[@]}"; do
  # Users of the shared library need no other packages.
  options=(-DCMAKE_DISABLE_FIND_PACKAGE_tinyxml2=ON -DCMAKE_DISABLE_FIND_PACKAGE_expat=ON) flags=() linked=shared
  libraries=$prefix/$kind/lib
  if [[ $kind == debian ]]; then
    libraries=$prefix/debian/usr/lib/$multiarch
  fi
  path=$libraries/pkgconfig
  rpath=("-Wl,-rpath,$libraries")
  if [[ ${1-} == windows ]]; then
    rpath=()
  fi
  if [[ $kind == static ]]; then
    options=() flags=(--static) linked=static
    path+=:$dependencies
  fi
  build_user "package-$kind" -DUSE=package "${options[@]}" \
    -DVexorUtils_DIR="$libraries/cmake/VexorUtils"
  run_user "$linked" "$work/package-$kind/user$suffix"

  words=$(PKG_CONFIG_LIBDIR=$path pkgconf "${flags[@]}" --cflags --libs 'VexorUtils >= 3.21')
  read -ra words <<<"$words"
  mkdir -p "$work/pkgconfig-$kind"
  run_quietly "install-pkgconfig-$kind" "${compiler[@]}" -std=c++20 tests/install/main.cpp \
    -o "$work/pkgconfig-$kind/user$suffix" "${words[@]}" "${rpath[@]}"
  run_user "$linked" "$work/pkgconfig-$kind/user$suffix"
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
