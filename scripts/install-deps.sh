#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build and test Velmor.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-serialport-dev qt6-tools-dev qt6-translations-l10n libgl-dev
  fonts-wqy-microhei
  ser2net
  # The history store's Qt SQL drivers, and the PostgreSQL server that the
  # tests of a shared history start for themselves.
  libqt6sql6-sqlite libqt6sql6-psql postgresql
  # scripts/package.sh: dpkg-shlibdeps for the package's dependencies, and the
  # checkers it runs on the package, the desktop entry and the metainfo.
  dpkg-dev lintian desktop-file-utils appstream
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
