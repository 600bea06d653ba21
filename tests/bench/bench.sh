#!/bin/sh
# Measures a build against plain copying and its limits: bench.sh [--quick] <tagmend> [directory]
set -eu
exec python3 "$(dirname "$0")/bench.py" "$@"
