#!/bin/bash
# run.sh BUILD SECONDS [SEED]: runs every fuzz target of a build directory for that long, as many at
# a time as the machine has processors. What a run found interesting stays in BUILD/fuzz/<target> and
# is where the next one begins; an input that failed is kept in BUILD/fuzz/findings, and shown so that
# it can be had from a log too. Seed 0 is another one every time.
set -euo pipefail
build=$(realpath "$1")  # targets change their directory
seconds=$2
seed=${3:-0}
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
      -seed="$seed" -max_total_time="$seconds" -max_len=$length -timeout=10 -rss_limit_mb=1024 \
      -close_fd_mask=3 -print_final_stats=1 >"$log" 2>&1; then
    echo "$target: $(sed -n 's/^Done //p' "$log"), $(grep -o 'cov: [0-9]*' "$log" | tail -1)"
  else
    echo "$target: FAILED, see $log"
    sed -n 's/.*Test unit written to //p' "$log" | while read -r finding; do
      # The program's own messages, closed above, hide nothing in a run of this input alone.
      "$build/fuzz/fuzz_$target" "$finding" 2>&1 | grep -a -m 5 -e ERROR -e FINDING -e 'runtime error'
      echo "base64 -d <<< $(base64 -w 0 "$finding") > ${finding##*/}"
    done
    return 1
  fi
}
export -f run_target
export build corpus seconds seed

find "$build/fuzz" -maxdepth 1 -name 'fuzz_*' -type f -executable -printf '%f\n' |
  sed 's/^fuzz_//' | sort |
  xargs -P "$(nproc)" -I '{}' nice bash -c 'run_target {}'
