#!/usr/bin/env bash
# Installs what is missing, builds a release and starts Daylark with the given movies, folders and sessions.
#   ./run.sh [PATH...]     start (without a display: the demo)
#   ./run.sh --build       build only
#   ./run.sh --package     build a Debian package of it; says where it lies
#   ./run.sh --demo        demo dailies: a whole review by itself without a display, or yours to try with one
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$root/scripts/setup.sh"

mode=start
case "${1:-}" in
    --build) mode=build ;;
    --package) mode=package ;;
    --demo) mode=demo ;;
    --help | -h) sed -n '2,6s/^# \?//p' "${BASH_SOURCE[0]}"; exit 0 ;;
esac
has_display() { [ -n "${WAYLAND_DISPLAY:-}" ] || [ -n "${DISPLAY:-}" ]; }
[ "$mode" != start ] || has_display || mode=demo

purposes=(build run)
[ "$mode" != demo ] || has_display || purposes+=(test)
install_packages "${purposes[@]}"
targets=(daylark daylark-tool)
[ "$mode" != demo ] || targets+=(daylark-demo-dailies daylark-demo-review)
[ "$mode" != package ] || targets+=(daylark-package-files)
build_preset release "${targets[@]}"

bin=$root/build/release/bin
case $mode in
    build) ;;
    package)
        (cd "$root/build/release" && cpack -G DEB)
        ;;
    start) exec "$bin/daylark" "$@" ;;
    demo)
        out=$PWD/demo-out
        if has_display; then
            mkdir -p "$out"
            "$bin/daylark-demo-dailies" "$out/dailies"
            exec "$bin/daylark" "$out/dailies/Day 1" "$out/dailies/Day 2" "$out/dailies/Effects"
        fi
        exec "$root/scripts/demo.sh" "$bin" "$out"
        ;;
esac
