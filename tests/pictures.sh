#!/bin/bash
# pictures.sh [TEMPLATE...]: draws the pages of all examples, as they are and after each template of
# examples/templates but all-commands.xml, which is no look of a chart. To be looked at by hand after
# a release build:
#
#   build/pictures/TEMPLATE/EXAMPLE.svg         the page with its own places
#   build/pictures/TEMPLATE/EXAMPLE.packed.svg  the page as `chartxml pack` lays it out
#   build/pictures/none/...                     without a template
#
# With rsvg-convert (Debian's librsvg2-bin) PNGs stand beside them. A line tells each frame that lies
# on another since the template, or has no room since then; the exit code is 1 then. Containers, which
# hold frames, and hidden frames don't count, nor do pages whose places can't be made out.
set -u
cd "$(dirname "$0")/.." || exit 2
tool=${CHARTXML:-build/release/bin/chartxml}
pictures=build/pictures
templates=("$@")
if (($# == 0)); then
  for template in examples/templates/*.xml; do
    [[ $template == */all-commands.xml ]] || templates+=("$template")
  done
fi
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT

# draw PICTURE CHART OPTION...
draw() {
  local picture=$1 chart=$2
  shift 2
  "$tool" pack "$@" --svg "$picture.svg" "$chart" 2>"$work/problems" ||
    { sed "s,^.*chart\.xml: ,$picture: ," "$work/problems"; mv "$picture.svg" "$picture.bad.svg"; }
  if [[ -f $picture.svg ]] && type rsvg-convert >/dev/null 2>&1; then
    rsvg-convert -o "$picture.png" "$picture.svg"
  fi
}

# The overlaps in a picture, a pair of frames a line, and the frames without room. Less than a fifth
# of a point is what rounding makes. A summary of histograms is as good as another.
overlaps() {
  [[ -f $1 ]] || return
  sed -n 's/^<rect x="\(.*\)" y="\(.*\)" width="\(.*\)" height="\([^"]*\)" fill="#.*<title>\([^:<]*\).*/\1 \2 \3 \4 \5/p' "$1" |
    grep -v ' container' | awk '
      { left[NR] = $1; top[NR] = $2; right[NR] = $1 + $3; bottom[NR] = $2 + $4
        name[NR] = $5 " " $6
        if ($3 < 1 || $4 < 1) print name[NR] " has no room" }
      END {
        for (i = 1; i <= NR; ++i) for (j = i + 1; j <= NR; ++j) {
          if (left[i] + 0.2 < right[j] && left[j] + 0.2 < right[i] &&
              top[i] + 0.2 < bottom[j] && top[j] + 0.2 < bottom[i]) {
            print name[j] " lies on " name[i]
          }
        }
      }' | sed 's/\(statistics_summary\)[_0-9]*/\1/' | sort -u
}

# drawBoth FOLDER EXAMPLE CHART
drawBoth() {
  cp "$3" "$work/chart.xml"
  draw "$pictures/$1/$2" "$work/chart.xml" --as-is
  draw "$pictures/$1/$2.packed" "$work/chart.xml"
}

rm -rf "$pictures/none"
mkdir -p "$pictures/none"
for chart in examples/*.xml; do
  drawBoth none "$(basename "$chart" .xml)" "$chart"
done
result=0
for template in "${templates[@]}"; do
  folder=$(basename "$template" .xml)
  rm -rf "${pictures:?}/$folder"
  mkdir -p "$pictures/$folder"
  for chart in examples/*.xml; do
    name=$(basename "$chart" .xml)
    "$tool" apply -o "$work/changed.xml" "$chart" "$template" 2>>"$work/passed"
    drawBoth "$folder" "$name" "$work/changed.xml"
    for picture in "$name.svg" "$name.packed.svg"; do
      comm -13 <(overlaps "$pictures/none/$picture") <(overlaps "$pictures/$folder/$picture") |
        sed "s,^,$folder/$picture: ,"
    done >"$work/new"
    [[ -s $work/new ]] && result=1
    cat "$work/new"
  done
done
[[ -f $work/passed ]] && sort -u "$work/passed" >&2
exit $result
