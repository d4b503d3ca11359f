#!/bin/bash
# tool_test.sh PROGRAM TRANSCRIPT: runs the commands of a transcript, the lines that start with
# "$ ", in one shell and a new folder with the documents that lie beside it, and compares what all
# of them write. An exit code other than 0 follows as a line "? CODE". Comments start with "#".
set -u
transcript=$(realpath "$2")
PATH=$(dirname "$(realpath "$1")"):$PATH
unset DumpChartXMLPath DumpChartXMLOptions POSIXLY_CORRECT
export LC_ALL=C

folder=$(mktemp -d) || exit 1
trap 'rm -rf "$folder"' EXIT
examples=$(dirname "$transcript")/../../examples
cp "$(dirname "$transcript")"/*.xml "$folder"
cd "$folder" || exit 1

while IFS= read -r line; do
  eval "${line#??}" </dev/null >/dev/null 2>&1 || exit 77
done < <(grep '^% ' "$transcript")

while IFS= read -r line; do
  case $line in
    '$ '*)
      printf '%s\n' "$line"
      { eval "${line#??}"; } </dev/null 2>&1
      code=$?
      ((code == 0)) || echo "? $code"
      ;;
    '#'* | '% '* | '') printf '%s\n' "$line" ;;
  esac
done <"$transcript" | diff -u --label expected --label actual "$transcript" -
