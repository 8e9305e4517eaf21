#!/usr/bin/env bash
# Lines of tests for each 100 lines of the code they test, in all languages, blank lines apart;
# outside 25 to 33 is a failure. The second figure is all tests for the C++ code alone.
set -euo pipefail
cd "$(dirname "$0")/.."
count() { git ls-files -- "$@" | tr '\n' '\0' | xargs -0 -r cat | grep -c -v '^[[:space:]]*$' || true; }
tests=$(count 'tests/*.cpp' 'tests/*.h' 'tests/*.py')
cpp=$(count '*.cpp' '*.h' ':!tests')
code=$((cpp + $(count '*.py' '*.sh' ':!tests')))
share() { echo $((tests * 100 / ($1 > 0 ? $1 : 1))); }
echo "tests: $tests lines for $code lines of code, $(share "$code") for 100; $(share "$cpp") for 100 of C++"
[ "$(share "$code")" -ge 25 ] && [ "$(share "$code")" -le 33 ]
