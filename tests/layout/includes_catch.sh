#!/usr/bin/env bash
# The include check itself: it passes a small tree whose includes run downward, and fails the
# same tree with one include upward, one between two folders and one from logic into a screen.
set -euo pipefail
check="$(dirname "$0")/includes.sh"
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree/store" "$tree/patients/ui" "$tree/treatment"
echo '#include "store/Sql.h"' > "$tree/patients/Card.cpp"
echo '#include "patients/Card.h"' > "$tree/patients/ui/CardWindow.cpp"
echo '#include "patients/Card.h"' > "$tree/treatment/Entry.cpp"
bash "$check" "$tree" > /dev/null || { echo "a tree of downward includes was refused"; exit 1; }
for fault in '#include "treatment/Entry.h"' '#include "patients/ui/CardWindow.h"' '#include "nowhere/Thing.h"'; do
  echo "$fault" > "$tree/patients/Bad.cpp"
  if bash "$check" "$tree" > /dev/null; then
    echo "not caught: $fault in patients/Bad.cpp"; exit 1
  fi
done
echo "the include check catches each fault"
