#!/bin/sh
# Checks the XML examples of the task guide and of the class headers, so neither can drift from what the
# reader accepts.
#   check_guide_examples.sh RKMANIP SOURCE_DIR
# Every ```xml block of docs/tasks.md is a whole document and must pass `rkmanip validate --strict`; a
# failure names the line of docs/tasks.md where the block starts. Every XML example in the opening comment of
# a header under manipulation/ (the lines that start with "//   <") is a fragment, "..." standing for content
# left out: with "..." dropped and the namespace declared on its root, it must be valid against
# `rkmanip schema` (xmllint), which refuses any element the reader would skip or refuse.
rkmanip=$1
source=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

# The guide: one file per block, named after the line its ```xml fence stands on.
awk -v dir="$work" '
  /^```xml[ \t]*$/ { inside = 1; start = NR; file = dir "/guide_" NR ".xml"; printf "" > file; next }
  /^```/ && inside { inside = 0; close(file); next }
  inside { print > file }
' "$source/docs/tasks.md"
blocks=0
for example in "$work"/guide_*.xml; do
  [ -e "$example" ] || continue
  blocks=$((blocks + 1))
  line=${example##*/guide_}
  line=${line%.xml}
  if ! output=$("$rkmanip" validate --strict "$example" 2>&1); then
    echo "docs/tasks.md:$line: the example starting here fails rkmanip validate --strict:"
    echo "$output" | sed 's/^/    /'
    failures=$((failures + 1))
  fi
done
if [ "$blocks" -eq 0 ]; then
  echo "docs/tasks.md: no xml example found"
  failures=$((failures + 1))
fi

# The headers: only if xmllint is there to check them against the schema.
if command -v xmllint > /dev/null; then
  "$rkmanip" schema > "$work/vocabulary.xsd"
  namespace=$(sed -n 's/.*targetNamespace="\([^"]*\)".*/\1/p' "$work/vocabulary.xsd")
  for header in "$source"/manipulation/*/*.h "$source"/platform/common/*.h "$source"/platform/control/*.h \
    "$source"/platform/manipulator/*.h "$source"/simulation/*.h; do
    [ -e "$header" ] || continue
    # The first run of example lines of the opening comment, joined.
    awk 'NR == 1 && /^#pragma/ { next }
         /^\/\/   </ || (started && /^\/\/     /) { started = 1; sub(/^\/\/ +/, ""); printf "%s ", $0; next }
         started || !/^\/\// { exit }' "$header" > "$work/fragment"
    [ -s "$work/fragment" ] || continue
    sed -e 's/\.\.\.//g' "$work/fragment" > "$work/example.xml"
    grep -q 'xmlns=' "$work/example.xml" ||
      sed -i "s|^ *<\([A-Za-z]*\)|<\1 xmlns=\"$namespace\"|" "$work/example.xml"
    if ! output=$(xmllint --noout --schema "$work/vocabulary.xsd" "$work/example.xml" 2>&1); then
      echo "${header#"$source"/}:2: the example of this header is not what the reader accepts:"
      echo "$output" | grep -v 'fails to validate' | sed 's/^/    /'
      failures=$((failures + 1))
    fi
  done
else
  echo "xmllint not found: the header examples were not checked"
fi

if [ "$failures" -ne 0 ]; then
  echo "$failures example(s) failed"
  exit 1
fi
echo "$blocks guide examples pass validate --strict"
