#!/usr/bin/env bash
# All measurements of docs/PERFORMANCE.md on this machine.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake --build build/release -j "$(nproc)"
inputs=build/bench-inputs
[ -e "$inputs/unrelated.b" ] || tools/make_bench_inputs.py "$inputs"
tools/bench_engine.py build/release/bench/zv_engine_diff "$inputs"
tools/bench_run.py build/release/zorvane "$inputs"
tools/bench_readers.py build/release/zorvane build/bench-documents
tools/bench_trees.py build/release/zorvane build/bench-trees
export QT_QPA_PLATFORM=offscreen
for bench in build/release/bench/*_bench; do
    "$bench" --benchmark_min_time=0.1
done
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
for scale in 1 2; do
    QT_SCALE_FACTOR=$scale HOME=$home XDG_CONFIG_HOME=$home build/release/bench/zv_compare_window_times
done
