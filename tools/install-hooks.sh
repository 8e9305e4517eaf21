#!/usr/bin/env bash
# Installs the pre-commit hook: layout of the changed lines, layers.
set -euo pipefail
cd "$(dirname "$0")/.."
hook=$(git rev-parse --git-path hooks/pre-commit)
cat >"$hook" <<'HOOK'
#!/usr/bin/env bash
set -e
changed=$(git diff --cached --name-only --diff-filter=ACM -- '*.cpp' '*.h')
[ -n "$changed" ] && echo "$changed" | xargs clang-format --dry-run --Werror
python3 tools/check_layers.py
HOOK
chmod +x "$hook"
echo "installed $hook"
