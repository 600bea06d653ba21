#!/bin/sh
# An install below DESTDIR and PREFIX puts every file in its place, and the installed program runs.
# Usage: installs.sh <build directory>
set -eu

stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
umask 022
DESTDIR=$stage cmake --install "$1" --prefix /opt/tools >/dev/null

cd "$stage/opt/tools"
cat >"$stage/expected" <<'END'
755 bin/tagmend
644 share/bash-completion/completions/tagmend
644 share/doc/tagmend/LICENSE
644 share/doc/tagmend/fields.md
644 share/fish/vendor_completions.d/tagmend.fish
644 share/man/man1/tagmend.1
644 share/zsh/site-functions/_tagmend
END
find . -type f -printf '%m %P\n' | sort -k2 >"$stage/found"
diff "$stage/expected" "$stage/found"

bin/tagmend -v | grep -q '^tagmend V'
