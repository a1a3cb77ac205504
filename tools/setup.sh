#!/usr/bin/env bash
# Installs what building zgraphics needs from Debian's packages, if missing.
# Does nothing when everything is present; fails with a clear message if it cannot install.
set -euo pipefail

# Extra package names given as arguments are checked and installed too.
packages=(cmake ninja-build g++ pkg-config qtbase5-dev libeigen3-dev libgtest-dev libgmock-dev libbenchmark-dev fonts-dejavu-core "$@")
missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "zgraphics setup: installing ${missing[*]}" >&2
sudo=""
if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null 2>&1; then
        sudo="sudo"
    else
        echo "zgraphics setup: missing packages (${missing[*]}) and not root; install them with apt-get" >&2
        exit 1
    fi
fi
export DEBIAN_FRONTEND=noninteractive
if ! { $sudo apt-get update -qq && $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >&2; then
    echo "zgraphics setup: could not install ${missing[*]} with apt-get" >&2
    exit 1
fi
