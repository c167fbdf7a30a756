#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, when some are missing.
# libsqlite3-dev gives the backup the engine's own API; qt6-translations-l10n Qt's own words in
# Bulgarian; fonts-dejavu-core gives the prints their Cyrillic font; dpkg-dev and file make the
# Debian package.
set -euo pipefail
packages=(g++ cmake ninja-build pkg-config qt6-base-dev libqt6sql6-sqlite libsqlite3-dev libsodium-dev libbenchmark-dev
          mdbtools-dev qt6-translations-l10n poppler-utils xvfb xauth libgl1-mesa-dev fonts-dejavu-core dpkg-dev file)
missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" || missing+=("$package")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
fi
