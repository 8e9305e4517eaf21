#!/usr/bin/env bash
# The share of test lines in all C++ lines, blank lines apart; outside 25 to 33 % is a failure.
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files -- "$@" | tr '\n' '\0' | xargs -0 -r cat | grep -c -v '^[[:space:]]*$' || true; }
all=$(count '*.cpp' '*.h')
tests=$(count 'tests/*.cpp' 'tests/*.h')
percent=$((tests * 100 / (all > 0 ? all : 1)))
echo "tests: $tests of $all lines of C++, $percent %"
[ "$percent" -ge 25 ] && [ "$percent" -le 33 ]
