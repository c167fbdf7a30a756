#!/usr/bin/env bash
# The folders of src/ stand in layers: a file includes its own folder and the folders below it,
# never one above, so that no two folders include each other. Logic (outside ui/) never
# includes a screen. Prints every include that breaks this and exits 1; exits 0 when none does.
#   bash includes.sh SRC_DIR
set -euo pipefail
src="$1"
# Bottom first: the store, the floor every subsystem stands on, then the subsystems in the order
# in which they build on each other, the command line and windows of the shell at the top.
layers=(store base patients diary admin treatment reports maintenance demo shell)

level() {
  local i
  for i in "${!layers[@]}"; do
    [ "${layers[$i]}" = "$1" ] && { echo "$i"; return; }
  done
  echo -1
}

faults=0
while IFS= read -r file; do
  relative="${file#"$src"/}"
  folder="${relative%%/*}"
  [ "$folder" = "$relative" ] && continue # main.cpp stands above every folder
  own=$(level "$folder")
  if [ "$own" -lt 0 ]; then
    echo "$relative: the folder $folder has no place among the layers"; faults=$((faults + 1)); continue
  fi
  while IFS= read -r included; do
    target="${included%%/*}"
    [ "$target" = "$included" ] && continue # a generated header such as Version.h
    if [[ "$relative" != */ui/* && "$included" == */ui/* ]]; then
      echo "$relative: logic includes the screen $included"; faults=$((faults + 1))
    fi
    [ "$target" = "$folder" ] && continue
    other=$(level "$target")
    if [ "$other" -lt 0 ] || [ "$other" -gt "$own" ]; then
      echo "$relative: includes $included from above (or outside) the layer of $folder"; faults=$((faults + 1))
    fi
  done < <(sed -n 's/^#include "\([^"]*\)".*/\1/p' "$file")
done < <(find "$src" -name '*.cpp' -o -name '*.h' | sort)
if [ "$faults" -gt 0 ]; then
  echo "$faults include(s) out of place"
  exit 1
fi
