#!/usr/bin/env bash
# All that CI proves: format, the share of tests, layers, a release build with all tests, the core under
# the address and undefined-behaviour sanitizers with its tests.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)

step() { printf '\n== %s\n' "$1"; }

step "Format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror
step "Share of tests"
tools/test_share.sh
step "Layers"
python3 tools/check_layers.py
step "Measures of the scoring tool"
python3 tools/score_pairing.py --self-test
step "Languages and guides"
python3 tools/list_phrases.py --self-test
python3 tools/list_phrases.py --check installed/Languages/*.txt
python3 tools/make_guides.py --check
step "Build and tests (release)"
cmake --preset release >/dev/null
cmake --build build/release -j "$jobs"
ctest --preset release -j "$jobs"
step "Core under sanitizers"
cmake --preset asan >/dev/null
cmake --build build/asan -j "$jobs"
ctest --preset asan -j "$jobs"
