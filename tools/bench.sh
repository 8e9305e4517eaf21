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
for bench in build/release/bench/*_bench; do
    "$bench" --benchmark_min_time=0.1
done
