#!/usr/bin/env bash
# foreign.sh PROGRAM FOLDER [SECONDS [KILOBYTES]]: runs the tool's verbs on every file of a folder of
# foreign documents, each within bounds of time and of address space, and tells what crashes, hangs
# or is killed. Run by hand: such documents are no part of the repository.
set -u
program=$(realpath "$1")
folder=$(realpath "$2")
seconds=${3:-10}
kilobytes=${4:-2000000}
examples=$(realpath "$(dirname "$0")/../examples")
work=$(mktemp -d) || exit 1
trap 'rm -rf "$work"' EXIT
ulimit -v "$kilobytes"
ulimit -c 0

runs=0
failed=0
# The tool's own answers are 0 to 2; timeout's is 124, and a signal's 128 and its number.
run() {
  timeout "$seconds" "$program" "$@" < /dev/null > "$work/out" 2> "$work/err"
  local code=$?
  runs=$((runs + 1))
  ((code <= 2)) && return
  failed=$((failed + 1))
  printf '%s: %s\n' "$([[ $code == 124 ]] && echo time-out || echo "code $code")" "$*"
}

while IFS= read -r -d '' file; do
  run validate "$file"
  run info "$file"
  run separate --chart "$work/chart.xml" --data "$work/data.xml" "$file"
  run apply -o "$work/chart.xml" "$file" "$examples/templates/house-style.xml"
  run apply -o "$work/chart.xml" "$examples/pie.xml" "$file"
  run tree --model "$work/model.xml" --display "$work/display.xml" "$file"
  run data "$file"
done < <(find "$folder" -type f -print0 | sort -z)
echo "$runs runs, $failed failed"
((failed == 0))
