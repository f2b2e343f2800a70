#!/usr/bin/env bash
# Usage: scripts/package-vscode.sh
#
# Makes the package of the extension for VS Code, build/packages/vexorcfg-VERSION.vsix, and prints
# its name. Fetches the npm packages that it needs, checks its types, and runs the packaged extension
# with the vexorcfg of the dev preset in a stand-in for VS Code.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
check_arguments 0 "$@"

"$root/scripts/setup.sh" editors
build_preset dev --target vexorcfg
cd "$root"

# Works on a copy, so that the sources stay clean.
copy=$root/build/vscode
mkdir -p "$copy" build/packages
rm -rf "${copy:?}"/{src,test,unpacked}
cp -r editors/vscode/{.vscodeignore,README.md,jsconfig.json,package.json,package-lock.json,src,test} \
  LICENSE "$copy"
cd "$copy"
version=$(sed -n 's/^project(VexorUtils VERSION \([0-9]*\.[0-9]*\.[0-9]*\).*/\1/p' "$root/CMakeLists.txt")
if [[ $(node -p 'require("./package.json").version') != "$version" ]]; then
  echo "package-vscode.sh: the version in editors/vscode/package.json is not $version" >&2
  exit 1
fi
if ! cmp -s package-lock.json node_modules/.installed; then
  if ! (run_quietly vscode-npm npm ci --ignore-scripts --no-audit --no-fund); then
    echo "package-vscode.sh: npm could not fetch the packages; it needs the registry" \
      "$(npm config get registry 2>/dev/null)" >&2
    exit 1
  fi
  cp package-lock.json node_modules/.installed
fi
run_quietly vscode-types npx --no-install tsc --project jsconfig.json
package=$root/build/packages/vexorcfg-$version.vsix
run_quietly vscode-package npx --no-install vsce package --allow-missing-repository -o "$package"

mkdir unpacked
(cd unpacked && cmake -E tar xf "$package")
VEXORCFG=$root/build/dev/bin/vexorcfg EXTENSION=$copy/unpacked/extension \
  node --test test/extension.test.js >&2
echo "$package"
