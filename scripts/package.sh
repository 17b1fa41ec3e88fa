#!/usr/bin/env bash
# Builds the Debian package of Velmor and checks it: installs what is missing,
# makes a Release build in build/package (only what the package holds), runs
# cpack -G DEB, then lintian on the package and desktop-file-validate and
# appstreamcli on the desktop entry and metainfo as the package holds them.
# Prints the package's path last. Exits non-zero on any failure, lintian errors
# (E: lines) included; its warnings are shown and allowed.
#
#   VELMOR_PACKAGE_DIR  build folder (default build/package)
#   VELMOR_JOBS         parallel build jobs (default: the number of cores)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

dir=${VELMOR_PACKAGE_DIR:-build/package}
jobs=${VELMOR_JOBS:-$(nproc)}

echo "== build ($dir, Release)"
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" --parallel "$jobs" --target velmor_package_contents

echo "== cpack"
rm -f "$dir"/velmor_*.deb
cpack -G DEB --config "$dir/CPackConfig.cmake" -B "$dir"
debs=("$dir"/velmor_*.deb)
[ ${#debs[@]} -eq 1 ] && [ -f "${debs[0]}" ] || { echo "package.sh: expected one velmor_*.deb in $dir" >&2; exit 1; }
deb=$(realpath "${debs[0]}")

status=0

echo "== lintian"
# lintian exits non-zero on errors; the E: lines are what counts here.
lintian_out=$(lintian --tag-display-limit 0 "$deb" 2>&1) || true
[ -n "$lintian_out" ] && echo "$lintian_out"
if grep -q '^E:' <<<"$lintian_out"; then
  echo "package.sh: lintian reports errors" >&2
  status=1
else
  echo "lintian: no errors ($(grep -c '^W:' <<<"$lintian_out" || true) warnings)"
fi

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
dpkg-deb -x "$deb" "$root"

echo "== desktop-file-validate"
if desktop-file-validate "$root"/usr/share/applications/*.desktop; then
  echo "desktop-file-validate: ok"
else
  status=1
fi

echo "== appstreamcli validate"
if appstreamcli validate --no-net "$root"/usr/share/metainfo/*.metainfo.xml; then
  :
else
  status=1
fi

if [ $status -ne 0 ]; then
  echo "package.sh: checks failed for $deb" >&2
  exit $status
fi
echo "== package"
echo "$deb"
