#!/usr/bin/env bash
# Lines of tests for each 100 lines of the code they test, blank lines apart; outside 25 to 33 is a
# failure.
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files -- "$@" | tr '\n' '\0' | xargs -0 -r cat | grep -c -v '^[[:space:]]*$' || true; }
tests=$(count 'tests/*.cpp' 'tests/*.h')
code=$(($(count '*.cpp' '*.h') - tests))
share=$((tests * 100 / (code > 0 ? code : 1)))
echo "tests: $tests lines of C++ for $code lines of code, $share for 100"
[ "$share" -ge 25 ] && [ "$share" -le 33 ]
