#!/usr/bin/env bash
# check.sh BUILD: installs a build tree, and uses the installation as a stranger would: the README's
# program is built by both of its ways and edits chart.xml here; the tool takes the chart that
# docs/dialect.md shows; each header compiles alone; nothing is exported but what the headers declare.
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
readme=$here/../../README.md
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# Moved after it was made: nothing in a prefix may know where it lies.
cmake --install "$build" --prefix "$work/made" > /dev/null
mv made prefix
prefix=$work/prefix
libdir=$(dirname "$(find "$prefix" -name libchartxml.so)")
export PKG_CONFIG_PATH=$libdir/pkgconfig

# block LANGUAGE FILE: the first code block of a language.
block() {
  awk -v fence="\`\`\`$1" '/^```/ { if (inside) exit; inside = ($0 == fence); next } inside' "$2"
}
block cpp "$readme" > draft.cpp
block cmake "$readme" > CMakeLists.txt
block sh "$readme" > pkgconfig.sh

cmake -G Ninja -S . -B by-cmake -DCMAKE_PREFIX_PATH="$prefix" > /dev/null
cmake --build by-cmake > /dev/null
# The linker notes where the library lies, as it would by itself in a usual prefix.
LD_RUN_PATH=$libdir bash -e pkgconfig.sh

for program in by-cmake/draft ./draft; do
  env -i "$program" "$here/chart.xml" printed.xml
  diff "$here/expected.xml" printed.xml
  if env -i "$program" "$readme" none.xml 2> refused.txt || [[ -e none.xml ]]; then
    echo "$program takes a text that is no chart" >&2
    exit 1
  fi
  echo "$readme:1:1: invalid document structure" | diff - refused.txt
done
block xml "$here/../../docs/dialect.md" > plan.xml
env -i "$prefix/bin/chartxml" validate plan.xml

read -ra flags <<< "$(pkg-config --cflags chartxml)"
printf '%s\n' "$prefix"/include/chartxml/*.h |
  xargs -P 2 -I {} c++ -std=c++20 -Wall -Wextra -Werror -fsyntax-only "${flags[@]}" -x c++ {}

# Each name is, or is a member of, what a header marks, perhaps in a namespace; its type, constant or
# template may be part of a longer text.
marked=$(grep -rohP 'CHARTXML_API [^;({]*?\K\w+(?=\(| :| {|;|$)' "$prefix/include" | sort -u | paste -sd '|')
if nm -DC --defined-only "$libdir/libchartxml.so" | cut -c 20- | grep -vE "(^|[ *&]|chartxml::|misspelling::)($marked)(\(|::|\$)"
then
  echo "exported, but in no header" >&2
  exit 1
fi
