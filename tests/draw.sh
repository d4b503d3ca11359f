#!/bin/bash
# draw.sh TOOL: Vega-Lite takes what `chartxml draw` writes of all examples and charts to start from, as
# they are and after each template of examples/templates but all-commands.xml: each plot is valid by Vega-Lite's own
# schema and renders, and the values that Vega computes of three are those of their data.
#
# Needs node, and vega and vega-lite in the folder of modules that CHARTXML_VEGA names, in that of
# scripts/gallery, or among npm's global ones; without them it is skipped (77).
set -u
tool=$(realpath "$1")
cd "$(dirname "$0")/.." || exit 2
modules=${CHARTXML_VEGA:-build/vega/node_modules}
[[ -d $modules ]] || modules=$(npm root -g 2>/dev/null)
for needed in vega vega-lite; do
  if ! type node >/dev/null 2>&1 || [[ ! -d $modules/$needed ]]; then
    echo "skipped: node, vega and vega-lite aren't there"
    exit 77
  fi
done
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
mkdir "$work/specs"
failures=0

# drawAll LOOK FOLDER: charts that a template leaves alone are drawn once.
drawAll() {
  local chart name
  for chart in "$2"/*.xml; do
    name=$(basename "$chart" .xml)
    [[ $1 != none ]] && cmp -s "$chart" "$work/none/$name.xml" && continue
    if ! "$tool" draw -o "$work/specs/$1.$name.json" "$chart" 2>"$work/notes"; then
      echo "$name after $1: $(tail -1 "$work/notes")"
      failures=1
    fi
  done
}

# What the tool writes of a chart that nothing changes.
sed '/<template/,/[^-]>$/!d; s,[^/]>$,&</template>,' examples/templates/titles.xml >"$work/empty.xml"
mkdir "$work/charts"
cp examples/*.xml "$work/charts"
for chart in examples/starters/*.xml; do cp "$chart" "$work/charts/starter-$(basename "$chart")"; done
"$tool" apply --out-dir "$work/none" -t "$work/empty.xml" "$work/charts" || exit 1
drawAll none "$work/none"
for template in examples/templates/*.xml; do
  look=$(basename "$template" .xml)
  [[ $look == all-commands ]] && continue
  "$tool" apply --out-dir "$work/$look" -t "$template" "$work/charts" 2>/dev/null
  drawAll "$look" "$work/$look"
done
# Looks that are the same are checked once.
sha1sum "$work"/specs/*.json | sort | awk 'seen[$1]++ { print $2 }' | grep -v '/none\.' | xargs -r rm
echo "$(ls "$work/specs" | wc -l) plots"

node tests/draw_vega.mjs "$modules" "$work/specs" || failures=1
python3 tests/draw_values.py "$work/specs" "$modules/vega-lite/build/vega-lite-schema.json" || failures=1
exit $failures
