# Sourced by the checks of what is installed: a stage with the installed files, thrown away at the end, and how to complain.
set -euo pipefail
build=$1
stage=$(mktemp -d "${TMPDIR:-/tmp}/daylark-stage.XXXXXX")
trap 'rm -rf "$stage"' EXIT
DESTDIR=$stage cmake --install "$build" --prefix /usr >"$stage/install.log" || { cat "$stage/install.log"; exit 1; }
share=$stage/usr/share
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}
finish() {
    [ "$failures" -eq 0 ] || exit 1
    echo "all as it should be"
}
