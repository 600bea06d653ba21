#!/bin/sh
# The Debian package can be made, and lintian finds no error in it.
# Usage: package_is_clean.sh <build directory>
set -eu

for tool in dpkg-deb dpkg-shlibdeps lintian; do
  command -v $tool >/dev/null || { echo "$tool is not installed"; exit 77; }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cpack --config "$1/CPackConfig.cmake" -B "$work" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
lintian --allow-root --fail-on error "$work"/tagmend_*.deb
