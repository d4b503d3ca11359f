#!/usr/bin/env bash
# layers.sh: no file includes a header of a layer above its own. Headers are included by their bare
# names, so no two layers may have a name in common. Commands have no headers, so they don't know
# each other.
set -euo pipefail
cd "$(dirname "$0")/.."

# Each layer may include itself and what stands behind the colon. The run of a template converts
# older ones, and their conversion asks as commands do: two rooms of one layer.
layers='interfaces:
platform: interfaces
model: platform interfaces
src/data: model platform interfaces
src/parsing: src/data model platform interfaces
src/documents: src/parsing src/data model platform interfaces
src/trees: src/documents src/parsing src/data model platform interfaces
src/templates/legacy: src/templates src/documents src/parsing src/data model platform interfaces
src/templates: src/templates/legacy src/trees src/documents src/parsing src/data model platform interfaces
src/templates/commands: src/templates src/documents src/parsing src/data model platform interfaces'

declare -A home
failed=0
fail() { echo "$*" >&2; failed=1; }
headers() { find "$1" -maxdepth 1 \( -name '*.h' -o -name '*.inc' \) -printf '%f\n'; }

while IFS=: read -r layer _; do
  [[ -d $layer ]] || continue
  for header in $(headers "$layer"); do
    [[ -z ${home[$header]-} ]] || fail "$header is in $layer and in ${home[$header]}"
    home[$header]=$layer
  done
done <<< "$layers"

while IFS=: read -r layer below; do
  [[ -d $layer ]] || continue
  while IFS=: read -r file line include; do
    [[ $include =~ [\<\"]([^\>\"]+) ]] && name=${BASH_REMATCH[1]}
    case " $layer $below " in
      *" ${home[$name]-none} "*) ;;
      *) fail "$file:$line: $name is in no layer that $layer may include" ;;
    esac
  done < <(grep -nHE '^ *# *include *("|<chartxml/)' "$layer"/*.{h,inc,cpp} 2> /dev/null || true)
done <<< "$layers"

# The tool is a user of the library like any other: it includes its own headers and the installed
# ones, is made of its own sources, and leaves all parsing to the library. What it generates is a
# part of the library's build.
mapfile -t rooms < <(find tools -mindepth 1 -maxdepth 1 -type d ! -name generate)
own=" $(for room in "${rooms[@]}"; do headers "$room"; done | tr '\n' ' ')"
while IFS=: read -r file line include; do
  [[ $include =~ \"([^\"]+)\" ]] && [[ $own == *" ${BASH_REMATCH[1]} "* ]] ||
    fail "$file:$line: ${BASH_REMATCH[1]-} is no header of the tool"
done < <(grep -rnHE '^ *# *include *"' "${rooms[@]}")
if grep -rnHE '^ *# *include *<xercesc/(parsers|sax2?|framework|internal|validators)/' "${rooms[@]}"; then
  fail "the tool has a parser of its own"
fi
grep -nE '\.\./(src|model|platform)' tools/CMakeLists.txt && fail "the tool is made of the library's sources"
exit $failed
