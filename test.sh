#!/usr/bin/env bash
# Installs what is missing, builds and runs every test: unit, media, gui and e2e in the release build, then unit, media and
# short fuzz runs with address and undefined-behaviour sanitizers. Ends with ctest's closing lines.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$root/scripts/setup.sh"
install_packages build run test

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export XDG_CONFIG_HOME=$home/config XDG_DATA_HOME=$home/data XDG_RUNTIME_DIR=$home/run
mkdir -p "$XDG_CONFIG_HOME" "$XDG_DATA_HOME" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"

export GTEST_BRIEF=1 # a log tells what failed, not what passed

# run_tests PRESET [SELECTION...]: all tests, two at a time. One that fails may try once more by itself, and is named: whether it
# is the code or the crowd beside it, it is a fault to look for.
run_tests() {
    local preset=$1 failed
    shift
    ctest --preset "$preset" -j 2 "$@" && return 0
    failed=$(cut -d: -f2 "$root/build/$preset/Testing/Temporary/LastTestsFailed.log" | paste -sd' ')
    echo "FAILED AT FIRST ($preset), now once more alone: $failed"
    ctest --preset "$preset" --rerun-failed || return 1
    echo "passed only alone ($preset): $failed"
}

started=$SECONDS
build_preset release
echo "release built in $((SECONDS - started)) s"
sanitize_status=0
release_status=0
run_tests release || release_status=$?

started=$SECONDS
build_preset sanitize
echo "sanitizers built in $((SECONDS - started)) s"
export ASAN_OPTIONS=detect_leaks=1:allocator_may_return_null=1 UBSAN_OPTIONS=print_stacktrace=1
export LSAN_OPTIONS=suppressions=$root/scripts/leaks.supp:print_suppressions=0
run_tests sanitize -L 'unit|media|fuzz' || sanitize_status=$?
exit $((release_status || sanitize_status))
