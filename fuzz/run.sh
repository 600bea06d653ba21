#!/bin/bash
# run.sh BUILD SECONDS: runs every fuzz target of a build directory for that long, as many at a time
# as the machine has processors. What a run found interesting stays in BUILD/fuzz/<target> and is
# where the next one begins; an input that failed is named, and kept in BUILD/fuzz/findings.
set -euo pipefail
build=$(realpath "$1")  # targets change their directory
seconds=$2
corpus=$build/fuzz
mkdir -p "$corpus/findings" "$corpus/logs"
"$build/fuzz/make_seeds" "$corpus/seeds"

run_target() {
  local target=$1 words=text length=4096
  case $target in
    *_file | *_block) words=bytes length=16384 ;;
  esac
  local log=$corpus/logs/$target.log
  mkdir -p "$corpus/$target"
  if "$build/fuzz/fuzz_$target" "$corpus/$target" "$corpus/seeds/$target" \
      -dict="$corpus/seeds/$words.dict" -artifact_prefix="$corpus/findings/$target-" \
      -max_total_time="$seconds" -max_len=$length -timeout=10 -rss_limit_mb=1024 \
      -close_fd_mask=3 -print_final_stats=1 >"$log" 2>&1; then
    echo "$target: $(sed -n 's/^Done //p' "$log"), $(grep -o 'cov: [0-9]*' "$log" | tail -1)"
  else
    echo "$target: FAILED, see $log"
    grep -m 5 -e 'ERROR' -e 'FINDING' -e 'runtime error' -e 'Test unit written' "$log"
    return 1
  fi
}
export -f run_target
export build corpus seconds

find "$build/fuzz" -maxdepth 1 -name 'fuzz_*' -type f -executable -printf '%f\n' |
  sed 's/^fuzz_//' | sort |
  xargs -P "$(nproc)" -I '{}' nice bash -c 'run_target {}'
