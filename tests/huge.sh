#!/usr/bin/env bash
# huge.sh TOOL MEGABYTES [VERB]...: a chart with that many megabytes of rows through the verbs that
# read and write charts, or those that are named: each gives all of it, or fails with a reason. A
# line for each tells the exit code, seconds, the peak of memory in MB, and what came of it. Exits
# with 1 when something was lost, or when a failure tells no reason. Needs four times the size in
# TMPDIR, and the program time; `info`, which reads rows as elements, takes 17 times the size in
# memory if it gets it.
#
# huge.sh TOOL MEGABYTES --short: with memory bounded (ulimit -v) from 80 MB on in steps, instead.
set -euo pipefail

tool=$(realpath "$1")
megabytes=$2
shift 2
isShort=
if [[ ${1-} == --short ]]; then isShort=1; shift; fi
only=" $* "
[[ -x /usr/bin/time ]] || { echo "needs the program time" >&2; exit 77; }
folder=$(mktemp -d "${TMPDIR:-/tmp}/huge.XXXXXX")
trap 'rm -rf "$folder"' EXIT
cd "$folder"
failed=0

host=http://xml.tavo.example
head='<?xml version="1.0" encoding="UTF-8"?>'
root="<visualization xmlns=\"$host/visualization\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:schemaLocation=\"$host/visualization $host/visualization/grafo-2.9.xsd\">"

# A megabyte of rows, a million bytes and a bit, written as often as it takes. The chart is as the
# library prints it, so that what comes back is the same to the byte.
awk 'BEGIN {
  for (i = 0; size < 1000000; i++) {
    row = "<row>" i ";" (i * 7919) % 100003 / 100 ";north</row>"
    size += length(row)
    printf "%s", row
  }
}' > rows
{
  printf '%s%s<embeddedSource id="s"><names>a;b;c</names><types>double;double;string</types>' "$head" "$root"
  for ((i = 0; i < megabytes; i++)); do cat rows; done
  printf '</embeddedSource></visualization>\n'
} > chart.xml
cat > template.xml << EOF
$head
<template TAVO-Version="2.10" xmlns="$host/software/analytics/tavo/xml/visualization" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="$host/software/analytics/tavo/xml/visualization $host/software/analytics/tavo/xml/visualization/grafo-template-3.5.xsd"><addPopups/></template>
EOF
rowCount=$(grep -o '<row>' rows | wc -l)
rowCount=$((rowCount * megabytes))

# A comment behind rows: none of them goes past the parser.
[[ -z $isShort ]] || sed '1s#</embeddedSource></visualization>$#<!-- the end --></embeddedSource></visualization>#' chart.xml > commented.xml

# try NAME KIND OUTPUT ARGUMENT...: KIND is what a success must have written to OUTPUT: the whole
# chart (same), its rows in a data document (rows), or their number (count); nothing to look at (-).
try() {
  local name=$1 kind=$2 output=$3 code=0 told verdict=whole
  shift 3
  [[ $only == "  " || $only == *" ${name//, packed/-z} "* ]] || return 0
  rm -f "$output"
  /usr/bin/time -f '%e %M' -o times "$tool" "$@" > out 2> err || code=$?
  told=$(tail -n 1 err | cut -c 1-100)
  read -r seconds peak < <(tail -n 1 times)
  if [[ $code == 0 ]]; then
    case $kind in
      same) cmp -s chart.xml "$output" || verdict=LOST ;;
      comment) cmp -s commented.xml "$output" || verdict=LOST ;;
      rows) [[ $(stat -c %s "$output") -gt $((megabytes * 1000000)) ]] || verdict=LOST ;;
      count) grep -q " rows=$rowCount " out || verdict=LOST ;;
    esac
  else
    verdict="refused: $told"
    [[ $code == 1 && $told =~ memory|longer|'too much'|MiB ]] || verdict="FAILED ($code): $told"
    [[ ! -e $output || $output == out ]] || verdict="WROTE A PART: $told"
  fi
  [[ $verdict == whole || $verdict == refused* ]] || failed=1
  printf '%-22s %3d %8s s %7d MB  %s\n' "$name" "$code" "$seconds" $((peak / 1000)) "$verdict"
}

walk() {
  try apply same to.xml apply -o to.xml chart.xml template.xml
  try separate rows data.xml separate --chart sep.xml --data data.xml chart.xml
  if [[ -e sep.xml && -e data.xml ]]; then
    try merge same to.xml merge -o to.xml sep.xml data.xml
  fi
  rm -f to.xml data.xml
  try 'separate, packed' - data.z separate -z --chart sep.z --data data.z chart.xml
  [[ ! -e data.z ]] || try 'merge, packed' same to.xml merge -o to.xml sep.z data.z
  rm -f to.xml data.z
  try validate - out validate chart.xml
  try info count out info chart.xml
  [[ -z $isShort ]] || try 'apply, rows parsed' comment to.xml apply -o to.xml commented.xml template.xml
}

if [[ -n $isShort ]]; then
  for ((limit = 80; limit <= 400; limit += 40)); do
    echo "-- $limit MB"
    (ulimit -v $((limit * 1000)); walk; exit $failed) || failed=1
  done
else
  walk
fi
exit $failed
