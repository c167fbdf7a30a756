#!/usr/bin/env bash
# Builds the Debian package and checks that it carries what a desktop needs and names the
# packages the program needs at run time.
# Usage: package.sh CPACK BUILD_FOLDER VERSION
set -euo pipefail
cpack=$1 build=$2 version=$3
out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

"$cpack" -G DEB --config "$build/CPackConfig.cmake" -B "$out" > "$out/cpack.log" 2>&1 || { cat "$out/cpack.log"; fail "cpack"; }
deb=$(echo "$out"/velmorata_"$version"_*.deb)
[ -f "$deb" ] || fail "no package velmorata_${version}_*.deb in: $(ls "$out")"

contents=$(dpkg-deb -c "$deb" | awk '{print $6}')
for file in ./usr/bin/velmorata ./usr/share/velmorata/help/index.html ./usr/share/velmorata/help/6.html \
            ./usr/share/applications/velmorata.desktop ./usr/share/metainfo/bg.velmorata.velmorata.metainfo.xml \
            ./usr/share/icons/hicolor/48x48/apps/velmorata.png ./usr/share/icons/hicolor/16x16/apps/velmorata.png \
            ./usr/share/icons/hicolor/scalable/apps/velmorata.svg ./usr/share/man/man1/velmorata.1.gz \
            ./usr/share/doc/velmorata/copyright; do
  grep -qxF "$file" <<< "$contents" || fail "the package lacks $file"
done

depends=$(dpkg-deb -f "$deb" Depends)
for package in libqt6widgets6 libqt6sql6 libqt6sql6-sqlite libsodium23 fonts-dejavu-core libmdb3 qt6-translations-l10n; do
  grep -qE "(^|, )$package( |,|$)" <<< "$depends" || fail "Depends lacks $package: $depends"
done
# Each output is read whole before it is searched: under pipefail, grep -q leaving early would
# fail the pipe with SIGPIPE at random.
description=$(dpkg-deb -f "$deb" Description)
grep -q "Велмората" <<< "$description" || fail "the description has no Bulgarian part"

# The installed binary is stripped: the package carries no debugging data.
dpkg-deb -x "$deb" "$out/root"
kind=$(file "$out/root/usr/bin/velmorata")
grep -q ", stripped" <<< "$kind" || fail "the executable is not stripped"

# The menu entry and the software centre's data are checked by their own tools where present.
if command -v desktop-file-validate > /dev/null; then
  desktop-file-validate "$out/root/usr/share/applications/velmorata.desktop"
fi
if command -v appstreamcli > /dev/null; then
  appstreamcli validate --no-net --pedantic "$out/root/usr/share/metainfo/bg.velmorata.velmorata.metainfo.xml"
fi
echo "$(basename "$deb"): $(stat -c %s "$deb") bytes"
