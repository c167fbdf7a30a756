#!/usr/bin/env bash
# Installs the build into a fresh prefix and runs the program from there, as a practice's computer
# would: it starts, a command works, and it finds its help pages under share/ with no copy of them
# beside the executable.
# Usage: installed.sh CMAKE BUILD_FOLDER VERSION
set -euo pipefail
cmake=$1 build=$2 version=$3
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
prefix=$(realpath "$prefix")
fail() { echo "FAIL: $*" >&2; exit 1; }

"$cmake" --install "$build" --prefix "$prefix" > /dev/null
program=$prefix/bin/velmorata
[ -x "$program" ] || fail "no executable in $prefix/bin"
[ ! -e "$prefix/bin/help" ] || fail "help pages installed beside the executable"

[ "$("$program" --version)" = "Velmorata $version" ] || fail "--version says: $("$program" --version)"

# 750102001 has the check digit 8: 7·2+5·4+0·8+1·5+0·10+2·9+0·7+0·3+1·6 = 63, and 63 mod 11 = 8. The ninth
# digit is odd, so the person is a woman.
expected=$(printf '7501020018\t0\t0\t0\t02.01.1975\tЖ\t1\t0')
[ "$("$program" egn --today 01.01.2024 7501020018)" = "$expected" ] || fail "egn printed something else"

help=$prefix/share/velmorata/help
for context in "" 6 16 999; do
  page=$help/${context:-index}.html
  [ "$context" = 999 ] && page=$help/index.html
  got=$("$program" help-path $context) || fail "help-path $context failed"
  [ "$got" = "$page" ] || fail "help-path $context gave $got, not $page"
done

# Without its pages the installed program says where it looked and fails.
rm -r "$help"
if out=$("$program" help-path 2>&1); then fail "help-path found pages that are gone: $out"; fi
[[ $out == *"$prefix/bin/help"* ]] || fail "help-path did not name the folder: $out"
echo "installed program runs from $prefix"
