#!/usr/bin/env bash
# Installs the pre-commit hook: layout of the changed files, layers, each file compiled by itself,
# clang-tidy where it is installed.
set -euo pipefail
cd "$(dirname "$0")/.."
hook=$(git rev-parse --git-path hooks/pre-commit)
cat >"$hook" <<'HOOK'
#!/usr/bin/env bash
set -e
changed=$(git diff --cached --name-only --diff-filter=ACM -- '*.cpp' '*.h')
[ -z "$changed" ] || echo "$changed" | xargs clang-format --dry-run --Werror
python3 tools/check_layers.py
files=$(git diff --cached --name-only --diff-filter=ACM -- '*.cpp')
[ -z "$files" ] || tools/check_apart.py $files
sources=$(git diff --cached --name-only --diff-filter=ACM -- '*.cpp' ':!tests' ':!bench')
if [ -n "$sources" ] && command -v clang-tidy >/dev/null; then
    tools/check_tidy.py $sources
fi
HOOK
chmod +x "$hook"
echo "installed $hook"
