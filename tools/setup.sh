#!/usr/bin/env bash
# Installs the packages of packaging/debian-packages.txt that are missing. Needs root (or sudo) only
# when something is.
set -euo pipefail
cd "$(dirname "$0")/.."

missing=()
while read -r package; do
    dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
        missing+=("$package")
done < <(grep -v '^#' packaging/debian-packages.txt)
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
        echo "setup: these packages are missing, and there is no sudo to install them: ${missing[*]}" >&2
        exit 1
    }
    as_root=(sudo)
fi
echo "setup: installing ${missing[*]}"
"${as_root[@]}" apt-get update -q
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends "${missing[@]}"
