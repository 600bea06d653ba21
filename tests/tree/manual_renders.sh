#!/bin/sh
# The manual renders without a warning, in a terminal that knows only ASCII too.
# Usage: manual_renders.sh <manual>
set -eu

command -v man >/dev/null && command -v groff >/dev/null || { echo 'man is not installed'; exit 77; }
for locale in C C.UTF-8; do
  warnings=$(LC_ALL=$locale MANROFFSEQ='' MANWIDTH=80 \
    man --warnings=all --encoding=UTF-8 --ditroff --local-file "$1" 2>&1 >/dev/null)
  if [ -n "$warnings" ]; then
    echo "$warnings"
    exit 1
  fi
done
