#!/usr/bin/env bash
# Sets everything up, builds zgraphics with its tests, and runs all tests.
#   tools/run-tests.sh             Release build in build/
#   tools/run-tests.sh --sanitize  AddressSanitizer + UndefinedBehaviorSanitizer build in build-sanitize/
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/setup.sh"

build="$root/build"
flags=(-DCMAKE_BUILD_TYPE=Release)
if [ "${1:-}" = "--sanitize" ]; then
    build="$root/build-sanitize"
    flags=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DZG_SANITIZE=ON -DZG_BUILD_TOOLS=OFF)
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"
fi
cmake -S "$root" -B "$build" -G Ninja "${flags[@]}"
cmake --build "$build" -j 2
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j 2
