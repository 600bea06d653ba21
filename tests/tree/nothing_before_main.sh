#!/bin/sh
# No object file of an archive has code that runs before main: it would cost every run its time.
# Usage: nothing_before_main.sh <archive>
set -eu

found=$(readelf --section-headers --wide "$1" |
  awk '/^File: / { file = $2 } / \.(init_array|ctors)/ { print file }')
if [ -n "$found" ]; then
  echo "These files initialise something before main:"
  echo "$found"
  exit 1
fi
