#!/usr/bin/env bash
# Builds the libFuzzer harnesses of fuzz/ with clang, AddressSanitizer and
# UndefinedBehaviorSanitizer in build-fuzz/, and runs them.
#
#   fuzz/run.sh                      smoke run: every harness for 30 s
#   fuzz/run.sh --seconds 600        every harness for 600 s
#   fuzz/run.sh --runs 2000000       every harness for that many executions
#   fuzz/run.sh --runs 2000 --seed 1 the same executions on every machine (CI):
#                                    a fresh working corpus and a fixed seed
#   fuzz/run.sh ... NAME...          only the named harnesses (e.g. boolean_fuzzer)
#
# An input that runs longer than 60 s counts as a hang: the slowest known
# inputs (booleans on dozens of stacked contours) take about 13 s under the
# sanitizers, and twice that on a busy machine.
#
# The checked-in seeds (fuzz/corpus/NAME) are read, never written: each run
# grows a working corpus in build-fuzz/corpus/NAME. A finding stops the run
# with a non-zero exit; its input is saved in build-fuzz/artifacts/ and can
# be replayed with build-fuzz/fuzz/NAME FILE.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
seconds=30
runs=""
seed=""
names=()
while [ $# -gt 0 ]; do
    case "$1" in
        --seconds) seconds="$2"; shift 2 ;;
        --runs) runs="$2"; shift 2 ;;
        --seed) seed="$2"; shift 2 ;;
        *) names+=("$1"); shift ;;
    esac
done

"$root/tools/setup.sh" clang libclang-rt-14-dev

build="$root/build-fuzz"
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DZG_BUILD_FUZZ=ON -DZG_BUILD_TESTS=OFF -DZG_BUILD_TOOLS=OFF >/dev/null
cmake --build "$build" -j 2

if [ ${#names[@]} -eq 0 ]; then
    for source in "$root"/fuzz/*_fuzzer.cpp; do
        names+=("$(basename "$source" .cpp)")
    done
fi

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:allocator_may_return_null=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
mkdir -p "$build/artifacts"
for name in "${names[@]}"; do
    work="$build/corpus/$name"
    limit=(-max_total_time="$seconds")
    [ -n "$runs" ] && limit=(-runs="$runs")
    if [ -n "$seed" ]; then
        rm -rf "$work"
        limit+=(-seed="$seed")
    fi
    mkdir -p "$work"
    echo "== $name: ${limit[*]}"
    log="$build/$name.log"
    status=0
    "$build/fuzz/$name" "${limit[@]}" -timeout=60 -rss_limit_mb=4096 -max_len=2048 \
        -print_final_stats=1 -artifact_prefix="$build/artifacts/$name-" \
        "$work" "$root/fuzz/corpus/$name" >"$log" 2>&1 || status=$?
    grep -E '^(#[0-9]+ +DONE|stat::number_of_executed_units|stat::peak_rss_mb|INFO: seed corpus)' "$log" || true
    if [ "$status" -ne 0 ]; then
        tail -n 60 "$log" >&2
        echo "fuzz: $name found a problem (exit $status); its input is in $build/artifacts/" >&2
        exit 1
    fi
done
echo "fuzz: ${#names[@]} harnesses ran without a finding"
