#!/bin/sh
# Edits a copy of the bundled photograph and shows its fields before and after.
# Usage: tools/try.sh <build directory>
set -eu

build=$(cd "$1" && pwd)
photo=$(cd "$(dirname "$0")/.." && pwd)/examples/harbour.jpg
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
cp "$photo" harbour.jpg

echo
echo '$ tagdump harbour.jpg'
"$build/tagdump" harbour.jpg | tee before.txt

echo
echo '$ tagmend -a exp-time=1/125,artist="J. Doe",ip-caption="Harbour at dawn" -r copyright harbour.jpg'
"$build/tagmend" -a 'exp-time=1/125,artist="J. Doe",ip-caption="Harbour at dawn"' -r copyright harbour.jpg
"$build/tagdump" harbour.jpg >after.txt

echo
echo 'What changed ("-" before, "+" after):'
diff -U0 before.txt after.txt | grep -v -e '^---' -e '^+++' -e '^@@' || true

echo
echo '$ ls'
ls harbour*
# The original is kept, byte for byte; an edit that left no trace would have failed.
cmp "$photo" harbour-be.jpg
if cmp -s before.txt after.txt; then
  echo 'The edit changed nothing.' >&2
  exit 1
fi
