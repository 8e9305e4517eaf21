#!/usr/bin/env bash
# The long round before a release: everything of tools/test.sh, the thread sanitizer, each file
# compiled by itself, clang-tidy over all folders, the fuzzers for a minute each, the benchmarks.
# Needs clang, clang-tidy and libFuzzer's runtime besides what tools/setup.sh installs (packages
# clang, clang-tidy, libclang-rt-14-dev).
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)
seconds=${FUZZ_SECONDS:-60}

tools/test.sh

printf '\n== Thread sanitizer\n'
cmake --preset tsan >/dev/null
cmake --build build/tsan -j "$jobs"
ctest --preset tsan -j "$jobs"

printf '\n== Each file by itself\n'
tools/check_apart.py

printf '\n== clang-tidy\n'
tools/check_tidy.py

printf '\n== Fuzzers\n'
cmake --preset fuzz >/dev/null
cmake --build build/fuzz -j "$jobs"
# In a folder of its own, whatever names of files it makes up.
fuzz() {
    program="$PWD/$1"
    folder="$PWD/build/fuzz/runs/$(basename "$1")"
    mkdir -p "$folder/corpus" "$folder/work"
    (cd "$folder/work" && "$program" -max_total_time="$2" -timeout=10 -rss_limit_mb=2048 -artifact_prefix=../ \
        ../corpus) >"$program.log" 2>&1 || { tail -40 "$program.log"; return 1; }
    tail -1 "$1.log"
}
export -f fuzz
printf '%s\n' build/fuzz/bench/*_fuzz | xargs -P "$jobs" -I '{}' bash -c 'fuzz {} '"$seconds"

printf '\n== Benchmarks\n'
export QT_QPA_PLATFORM=offscreen
for bench in build/release/bench/*_bench; do
    "$bench" --benchmark_min_time=0.05
done
