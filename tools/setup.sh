#!/usr/bin/env bash
# Installs the packages of packaging/debian-packages.txt that are missing. Needs root (or sudo) only
# when something is.
set -euo pipefail
cd "$(dirname "$0")/.."

is_installed() {
    dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

# A line is a package, or several parted by "|" of which one is enough.
missing=()
while IFS='|' read -r -a choices; do
    for package in "${choices[@]}"; do
        is_installed "$package" && continue 2
    done
    missing+=("${choices[*]}")
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
"${as_root[@]}" apt-get update -q

# The first of several that goes in without pushing out what the user has installed.
packages=()
for line in "${missing[@]}"; do
    read -r -a choices <<<"$line"
    chosen=${choices[0]}
    for package in "${choices[@]}"; do
        if apt-get install --simulate --no-remove "$package" >/dev/null 2>&1; then
            chosen=$package
            break
        fi
    done
    packages+=("$chosen")
done
echo "setup: installing ${packages[*]}"
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -q -y --no-install-recommends --no-remove "${packages[@]}"
