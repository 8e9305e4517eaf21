#!/usr/bin/env bash
# clang-tidy with the rules of .clang-tidy over the files named, or over all but tests and benchmarks. Its
# database of commands is one without precompiled headers: those of g++ are not clang's.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=build/tidy
[ -f "$folder/compile_commands.json" ] || cmake --preset release -B "$folder" -DZORVANE_PRECOMPILE=OFF >/dev/null
if [ $# -eq 0 ]; then
    mapfile -t files < <(git ls-files '*.cpp' | grep -v -E '^(tests|bench)/')
else
    files=("$@")
fi
printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -n 1 clang-tidy -p "$folder" --quiet
