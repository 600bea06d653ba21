#!/bin/sh
# Installs Debian packages for what this machine lacks. Each argument is what:package, where `what` is
# a command or, when it begins with "/", a file (a pattern: any such file).
set -eu

missing=
for pair in "$@"; do
  what=${pair%%:*}
  case $what in
    # shellcheck disable=SC2086  # the pattern is to expand
    /*) for file in $what; do [ -e "$file" ] && continue 2; done ;;
    *) command -v "$what" >/dev/null 2>&1 && continue ;;
  esac
  missing="$missing ${pair#*:}"
done
[ -n "$missing" ] || exit 0

if ! command -v apt-get >/dev/null 2>&1; then
  echo "Please install these packages (Debian's names):$missing" >&2
  exit 1
fi
as_root=
[ "$(id -u)" -eq 0 ] || as_root=sudo
echo "Installing:$missing"
install_packages() {
  # shellcheck disable=SC2086  # one word a package
  $as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install --yes --quiet=2 --no-install-recommends $missing
}
# The package lists of a fresh machine are empty or old.
install_packages 2>/dev/null || { $as_root apt-get update --quiet=2 && install_packages; }
