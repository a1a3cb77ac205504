#!/usr/bin/env bash
# Sets everything up, builds zgtool and runs it on its built-in sample shapes.
# The pictures go to zgtool-out/ at the project root; element lists to standard output.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/setup.sh"
cmake -S "$root" -B "$root/build" -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build "$root/build" -j 2 --target zgtool
mkdir -p "$root/zgtool-out"
cd "$root/zgtool-out"
QT_QPA_PLATFORM=offscreen "$root/build/tools/zgtool" "$@"
